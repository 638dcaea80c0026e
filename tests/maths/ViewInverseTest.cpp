#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/Batch.h"
#include "bv/maths/View.h"
#include "support/Flags.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class ViewInverseTest : public testing::Test
{
};
TYPED_TEST_SUITE(ViewInverseTest, Precisions);

__extension__ using Wide = __int128;

/// The determinant of a matrix of whole numbers and the permanent of their magnitudes, exactly: the sums over all
/// permutations of the columns.
struct Sums
{
    Wide determinant = 0;
    Wide permanent = 0;

    explicit Sums(std::array<Wide, 16> const& m)
    {
        std::array<std::size_t, 4> columns = {0, 1, 2, 3};
        do
        {
            Wide product = 1;
            for (std::size_t row = 0; row < 4; ++row)
                product *= m[4 * row + columns[row]];
            bool isOdd = false;
            for (std::size_t i = 0; i < 4; ++i)
                for (std::size_t j = 0; j < i; ++j)
                    isOdd ^= columns[j] > columns[i];
            determinant += isOdd ? -product : product;
            permanent += product < 0 ? -product : product;
        } while (std::next_permutation(columns.begin(), columns.end()));
    }

    [[nodiscard]] long double GetRatio() const
    {
        auto const ratio = static_cast<long double>(determinant) / static_cast<long double>(permanent);
        return ratio < 0 ? -ratio : ratio;
    }
};

/// Whether the answer is the one that the exact sums ask for. Rows and columns are scaled by powers of two first.
template <typename T>
void ExpectRightAnswer(std::array<Wide, 16> const& m, Random& random, int scales, std::array<int, 3>& counts)
{
    int rows[4], columns[4];
    for (std::size_t i = 0; i < 4; ++i)
    {
        rows[i] = random.Whole(-scales, scales);
        columns[i] = random.Whole(-scales, scales);
    }
    Elements<T> elements{};
    for (std::size_t i = 0; i < 16; ++i)
        elements[i] = std::ldexp(static_cast<T>(m[i]), rows[i / 4] + columns[i % 4]);
    bool const hasInverse = TryInverted(MakeMatrix(elements, GENERAL)).has_value();
    long double const steps = Sums(m).GetRatio() / static_cast<long double>(EPSILON<T>);
    if (steps <= 3)
    {
        EXPECT_FALSE(hasInverse) << static_cast<double>(steps);
        ++counts[0];
    }
    else if (steps > 13)
    {
        EXPECT_TRUE(hasInverse) << static_cast<double>(steps);
        ++counts[2];
    }
    else
        ++counts[1];
}

/// A matrix that is neither singular nor anything in particular.
template <typename T>
[[nodiscard]] tMatrix4<T> Regular(Random& random)
{
    Elements<T> elements{};
    for (std::size_t i = 0; i < 16; ++i)
        elements[i] = random.Number(T{-1}, T{1}) + (i % 5 == 0 ? T{3} : T{0});
    return MakeMatrix(elements, GENERAL);
}

/// Rotation by some angles, times a factor, and an offset.
template <typename T>
[[nodiscard]] tMatrix4<T> Similarity(Random& random, T factor, T offset)
{
    tMatrix4<T> turn =
        tMatrix4<T>::RotateX(random.Number(T{-3}, T{3})) * tMatrix4<T>::RotateZ(random.Number(T{-3}, T{3}));
    Elements<T> elements = ElementsOf(turn);
    for (std::size_t row = 0; row < 3; ++row)
    {
        for (std::size_t column = 0; column < 3; ++column)
            elements[4 * row + column] *= factor;
        elements[4 * row + 3] = offset * random.Number(T(0.5), T{1});
    }
    return MakeMatrix(elements, GENERAL);
}

/// That the product with the inverse is the identity, up to rounding by what the sums are made of.
template <typename T>
void ExpectInverse(tMatrix4<T> const& m, tMatrix4<T> const& inverse, T steps)
{
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
        {
            long double sum = 0;
            long double magnitudes = 0;
            for (std::size_t k = 0; k < 4; ++k)
            {
                long double const product =
                    static_cast<long double>(m[4 * row + k]) * static_cast<long double>(inverse[4 * k + column]);
                sum += product;
                magnitudes += product < 0 ? -product : product;
            }
            long double const error = sum - (row == column ? 1 : 0);
            EXPECT_LE(std::abs(error), static_cast<long double>(steps * EPSILON<T>) * magnitudes)
                << row << ", " << column;
        }
}

TYPED_TEST(ViewInverseTest, AMatrixFarFromSingularHasTheInverseOfTheMember)
{
    using T = TypeParam;
    Random random(21);
    for (int run = 0; run < 2000; ++run)
    {
        tMatrix4<T> const m = Regular<T>(random);
        auto const inverse = TryInverted(m);
        ASSERT_TRUE(inverse);
        ExpectSameMatrix(*inverse, m.Inverted());
    }
}

TYPED_TEST(ViewInverseTest, NeitherAScaleNorATranslationIsSingular)
{
    using T = TypeParam;
    Random random(22);
    int const last = sizeof(T) == sizeof(float) ? 36 : 300;
    for (int exponent = -last; exponent <= last; exponent += 2)
        for (int distance = -last / 3; distance <= last; distance += last / 6)
        {
            auto const factor = static_cast<T>(std::pow(10.0L, exponent));
            auto const offset = static_cast<T>(std::pow(10.0L, distance));
            if (std::abs(exponent - distance) >= last) // the inverse does not fit
                continue;
            tMatrix4<T> const m = Similarity(random, factor, offset);
            auto const inverse = TryInverted(m);
            ASSERT_TRUE(inverse) << factor << ", " << offset;
            EXPECT_EQ(StateOf(*inverse), GENERAL);
            ExpectInverse(m, *inverse, T{64});
        }
    for (T const factor : {T(0.01), T(1e-12), T(1e12)})
    {
        auto const inverse = TryInverted(MakeMatrix(Diagonal<T>(factor, factor, factor, 1), GENERAL));
        ASSERT_TRUE(inverse);
        for (std::size_t const i : {0U, 5U, 10U})
            EXPECT_NEAR((*inverse)[i] * factor, T{1}, 4 * EPSILON<T>);
    }
}

TYPED_TEST(ViewInverseTest, LinesMayBeOfAnyScales)
{
    using T = TypeParam;
    Random random(23);
    int const last = sizeof(T) == sizeof(float) ? 25 : 200; // an element has one of a row, and one of a column
    for (int run = 0; run < 2000; ++run)
    {
        tMatrix4<T> const m = Regular<T>(random);
        int rows[4], columns[4];
        for (std::size_t i = 0; i < 4; ++i)
        {
            rows[i] = random.Whole(-last, last);
            columns[i] = random.Whole(-last, last);
        }
        Elements<T> scaled{}, expected{};
        tMatrix4<T> const inverse = m.Inverted();
        for (std::size_t i = 0; i < 16; ++i)
        {
            scaled[i] = std::ldexp(m[i], rows[i / 4] + columns[i % 4]);
            expected[i] = std::ldexp(inverse[i], -columns[i / 4] - rows[i % 4]);
        }
        // Powers of two leave the digits alone.
        auto const actual = TryInverted(MakeMatrix(scaled, GENERAL));
        ASSERT_TRUE(actual);
        ExpectMatrix(*actual, expected, GENERAL);
    }
}

TYPED_TEST(ViewInverseTest, RowsThatDependOnOthersUpToRoundingHaveNone)
{
    using T = TypeParam;
    Random random(24);
    for (int run = 0; run < 2000; ++run)
    {
        Elements<T> m = ElementsOf(Regular<T>(random));
        bool const isColumn = random.Below(2) == 0;
        std::size_t const step = isColumn ? 4 : 1;
        std::size_t const line = isColumn ? 1 : 4;
        auto const order = random.Below(4);
        std::size_t const a = order * line, b = (order + 1) % 4 * line, c = (order + 2) % 4 * line;
        T const factor = random.Number(T{-2}, T{2});
        int const exponent = random.Whole(-15, 15);
        for (std::size_t i = 0; i < 4; ++i)
        {
            // Of one sign, so that only the sum's last digit is lost.
            m[a + i * step] = std::abs(m[a + i * step]);
            m[b + i * step] = std::copysign(m[b + i * step], factor);
            m[c + i * step] = std::ldexp(m[a + i * step] + m[b + i * step] * factor, exponent);
        }
        EXPECT_FALSE(TryInverted(MakeMatrix(m, GENERAL)));
    }
    // A multiple of another line, lines of zeros, and no number but zero.
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({1, 2, 3, 4, 3, 6, 9, 12, 0, 1, 5, 2, 1, 0, 0, 7}, GENERAL)));
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({1, 0, 3, 4, 3, 0, 8, 12, 0, 0, 5, 2, 1, 0, 0, 7}, GENERAL)));
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({1, 2, 3, 4, 0, 0, 0, 0, 0, 1, 5, 2, 1, 0, 0, 7}, GENERAL)));
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({}, GENERAL)));
    EXPECT_FALSE(TryInverted(MakeMatrix(Ramp<T>(1, 1), GENERAL)));
    // Two rows with a single element in the same column: the products are all 0.
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({1, 0, 0, 0, 5, 0, 0, 0, 1, 2, 3, 4, 4, 3, 2, 1}, GENERAL)));
}

TYPED_TEST(ViewInverseTest, ExactSumsOfWholeNumbersGiveTheSameAnswer)
{
    using T = TypeParam;
    Random random(25);
    std::array<int, 3> counts{};
    int const last = sizeof(T) == sizeof(float) ? 1 << 22 : 1 << 29;
    for (int run = 0; run < 3000; ++run)
    {
        std::array<Wide, 16> m{};
        for (Wide& element : m)
            element = random.Whole(-last, last) / (1 << random.Below(12));
        for (std::size_t i = 0; i < 4; ++i) // the last row is near to the sum or the difference of others
            m[12 + i] = m[i] / 2 - m[4 + i] / 2;
        m[12 + random.Below(4)] += random.Whole(-8, 8);
        ExpectRightAnswer<T>(m, random, 20, counts);
    }
    // Sums of 30 bits are far from singular unless they are so exactly; of 22 bits, there are many in between.
    EXPECT_GT(counts[0], sizeof(T) == sizeof(float) ? 100 : 0);
    EXPECT_GT(counts[2], 200);
}

TYPED_TEST(ViewInverseTest, ExactSumsOfBlocksGiveTheSameAnswer)
{
    using T = TypeParam;
    Random random(26);
    std::array<int, 3> counts{};
    constexpr int DIGITS = std::numeric_limits<T>::digits - 1;
    auto const whole = [&](int digits) -> Wide
    { return static_cast<Wide>(random.Number<double>(0.5, 1) * static_cast<double>(1LL << digits)); };
    for (int run = 0; run < 6000; ++run)
    {
        // a / b and c / d agree in all digits but the last few.
        Wide const a = whole(DIGITS), b = whole(DIGITS), c = whole(DIGITS);
        Wide const d = b * c / a + random.Whole(-1, 1) * (1 << random.Below(6));
        if (d > Wide{1} << std::numeric_limits<T>::digits || d == 0)
            continue;
        std::array<Wide, 16> m = {a, b, 0, 0, c, d, 0, 0, random.Whole(-9, 9), random.Whole(-9, 9), 3, 1, 4, 5, 1, 2};
        auto const p = random.Below(4);
        for (std::size_t i = 0; i < 4; ++i)
        {
            std::swap(m[i], m[4 * p + i]);
            if (random.Below(2) == 0)
                m[4 * i + 1] = -m[4 * i + 1];
        }
        ExpectRightAnswer<T>(m, random, 10, counts);
    }
    for (int const count : counts)
        EXPECT_GT(count, 100);
}

TYPED_TEST(ViewInverseTest, TheStateDecidesWhatIsLookedAt)
{
    using T = TypeParam;
    Elements<T> const singular = Ramp<T>(2, 1);
    for (std::uint32_t const state : {IDENTITY, DIAGONAL, ORTHONORMAL})
    {
        tMatrix4<T> const m = MakeMatrix(singular, state);
        auto const inverse = TryInverted(m);
        ASSERT_TRUE(inverse);
        ExpectSameMatrix(*inverse, m.Inverted());
    }
    EXPECT_FALSE(TryInverted(MakeMatrix(singular, GENERAL)));
    EXPECT_FALSE(TryInverted(MakeMatrix(singular, UNKNOWN)));
    Random random(27);
    tMatrix4<T> const regular = Regular<T>(random);
    ExpectSameMatrix(TryInverted(WithState(regular, UNKNOWN)).value(), regular.Inverted());
    tMatrix4<T> const broken = MakeMatrix(Ramp(QUIET_NAN<T>, T{0}), ORTHONORMAL);
    EXPECT_TRUE(IsNaN(TryInverted(broken).value()[0]));
}

TYPED_TEST(ViewInverseTest, ADiagonalMatrixHasAnInverseUnlessAReciprocalIsMissing)
{
    using T = TypeParam;
    for (T const factor : {T(0.01), T(1e-12), T(1e12), SMALLEST_NORMAL<T>, LARGEST<T>, T{-3}})
        for (std::size_t place = 0; place < 4; ++place)
        {
            Elements<T> m = Diagonal<T>(2, 4, 8, 1);
            m[5 * place] = factor;
            m[1] = 7; // stale
            Elements<T> expected = m;
            for (std::size_t i = 0; i < 16; i += 5)
                expected[i] = 1 / Runtime(m[i]);
            ExpectMatrix(TryInverted(MakeMatrix(m, DIAGONAL)).value(), expected, DIAGONAL);
        }
    for (T const factor : {T{0}, T{-0.0}, TINY<T>, INF<T>, -INF<T>, QUIET_NAN<T>})
        for (std::size_t place = 0; place < 4; ++place)
        {
            Elements<T> m = Diagonal<T>(2, 4, 8, 1);
            m[5 * place] = factor;
            EXPECT_FALSE(TryInverted(MakeMatrix(m, DIAGONAL)));
            EXPECT_FALSE(TryInverted(MakeMatrix(m, GENERAL)));
        }
}

TYPED_TEST(ViewInverseTest, AnElementThatIsNoNumberLeavesNoInverse)
{
    using T = TypeParam;
    Random random(28);
    for (T const broken : {QUIET_NAN<T>, INF<T>, -INF<T>})
        for (std::size_t i = 0; i < 16; ++i)
        {
            Elements<T> m = ElementsOf(Regular<T>(random));
            m[i] = broken;
            EXPECT_FALSE(TryInverted(MakeMatrix(m, GENERAL)));
        }
}

TYPED_TEST(ViewInverseTest, WhatDoesNotFitHasNoInverse)
{
    using T = TypeParam;
    // 1 / TINY is too large; the elements of the second are balanced only by each other, at the square of any range.
    EXPECT_FALSE(TryInverted(MakeMatrix(Diagonal<T>(TINY<T>, 1, 1, 1), GENERAL)));
    T const small = std::sqrt(SMALLEST_NORMAL<T>);
    EXPECT_FALSE(TryInverted(MakeMatrix<T>({1, 1, 1, 1, 1, small, 0, 0, 1, 0, small, 0, 1, 0, 0, small}, GENERAL)));
}

TYPED_TEST(ViewInverseTest, OrdinaryMatricesRaiseNoFlag)
{
    using T = TypeParam;
    Random random(29);
    for (T const factor : {T{1}, T(1e-12), T(1e12), T(1e-36), T(1e36)})
    {
        tMatrix4<T> const m = Similarity(random, factor, T{1});
        EXPECT_EQ(Raised([&] { return TryInverted(m)->Get()[0]; }), 0) << factor;
    }
    tMatrix4<T> const flat = MakeMatrix(Diagonal<T>(0, 1, 1, 1), DIAGONAL);
    EXPECT_EQ(Raised([&] { return TryInverted(flat).has_value(); }), 0);
}

// Normals

TYPED_TEST(ViewInverseTest, NormalMatricesAreThoseOfTheBatchForm)
{
    using T = TypeParam;
    Random random(30);
    std::vector<tMatrix4<T>> matrices;
    for (int i = 0; i < 200; ++i)
        matrices.push_back(Regular<T>(random));
    matrices.push_back(tMatrix4<T>());
    matrices.push_back(tMatrix4<T>::Scale(tVector3<T>(2, 3, 4)));
    matrices.push_back(tMatrix4<T>::RotateX(1));
    matrices.push_back(tMatrix4<T>::Translate(1, 2, 3));
    matrices.push_back(tMatrix4<T>::RotateAxis({1, 2, 3}, {3, 2, 1}, 1));
    for (std::uint32_t const state : STATES)
        matrices.push_back(WithState(matrices[0], state));
    std::vector<tMatrix4<T>> expected(matrices.size());
    ComputeNormalMatrices(std::span<tMatrix4<T> const>(matrices), std::span<tMatrix4<T>>(expected));
    for (std::size_t i = 0; i < matrices.size(); ++i)
    {
        auto const actual = GetNormalMatrix(matrices[i]);
        ASSERT_TRUE(actual);
        ExpectSameMatrix(*actual, expected[i]);
        tVector3<T> const normal = random.Vector<tVector3<T>>(-1, 1);
        ExpectSameBits(TransformNormal(matrices[i], normal).value(), normal.TransformedAsVector(expected[i]));
    }
}

TYPED_TEST(ViewInverseTest, ATransformedNormalStaysPerpendicularToItsSurface)
{
    using T = TypeParam;
    Random random(31);
    for (int run = 0; run < 500; ++run)
    {
        tMatrix4<T> const m = Regular<T>(random) * tMatrix4<T>::Scale(tVector3<T>(1, T(0.01), T(0.01)));
        Elements<T> affine = ElementsOf(m);
        affine[12] = affine[13] = affine[14] = 0;
        affine[15] = 1;
        tMatrix4<T> const matrix = MakeMatrix(affine, GENERAL);
        auto const a = random.Vector<tVector3<T>>(-1, 1);
        auto const b = random.Vector<tVector3<T>>(-1, 1);
        auto const normal = TransformNormal(matrix, a.Cross(b));
        ASSERT_TRUE(normal);
        tVector3<T> const expected = a.TransformedAsVector(matrix).Cross(b.TransformedAsVector(matrix));
        // The product of vectors is the normal times the determinant, by sums in which the smallest of 1e-4 counts.
        T const sine = normal->Cross(expected).Length() / (normal->Length() * expected.Length());
        EXPECT_LT(sine, 3000 * EPSILON<T>);
    }
}

TYPED_TEST(ViewInverseTest, AFlatMatrixTurnsNoNormals)
{
    using T = TypeParam;
    tMatrix4<T> const flat = tMatrix4<T>::Scale(tVector3<T>(1, 0, 1));
    EXPECT_FALSE(GetNormalMatrix(flat));
    EXPECT_FALSE(TransformNormal<T>(flat, {0, 1, 0}));
    auto const small = TransformNormal<T>(tMatrix4<T>::Scale(T(1e-12)), {0, 2, 0});
    ASSERT_TRUE(small);
    EXPECT_NEAR(small->y * T(1e-12), T{2}, 4 * EPSILON<T>);
}

} // namespace
