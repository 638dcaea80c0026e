#include "bv/maths/tQuaternion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/Hash.h"
#include "bv/maths/Forward.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"
#include "values/QuaternionValues.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class QuaternionTest : public testing::Test
{
};

TYPED_TEST_SUITE(QuaternionTest, Precisions);

// Precisions convert where it is asked for, and nothing else converts.
static_assert(std::is_same_v<Quaternionf, tQuaternion<float>> && std::is_same_v<Quaterniond, tQuaternion<double>>);
static_assert(std::is_constructible_v<Quaternionf, Quaterniond> && std::is_constructible_v<Quaterniond, Quaternionf>);
static_assert(!std::is_convertible_v<Quaternionf, Quaterniond> && !std::is_convertible_v<Quaterniond, Quaternionf>);
static_assert(std::is_constructible_v<Quaternionf, Matrix4f const&> && !std::is_convertible_v<Matrix4f, Quaternionf>);
static_assert(!std::is_constructible_v<Quaternionf, float> && !std::is_constructible_v<Quaternionf, std::nullptr_t>);
static_assert(!std::is_convertible_v<float const*, Quaternionf> && !std::is_constructible_v<Quaternionf, Vector3f>);
static_assert(sizeof(Quaternionf) == 16 && alignof(Quaternionf) == 4);
static_assert(sizeof(Quaterniond) == 32 && alignof(Quaterniond) == 8);
static_assert(std::is_standard_layout_v<Quaternionf> && std::is_trivially_copyable_v<Quaternionf>);
static_assert(noexcept(Quaternionf() * Quaternionf()) && noexcept(Quaternionf().Rotate(Vector3f())));
static_assert(noexcept(Slerp(Quaternionf(), Quaternionf(), 0.5)) && noexcept(Quaterniond(Matrix4d())));
static_assert(std::is_same_v<decltype(2 * Quaternionf()), Quaternionf>);
// Known to the compiler.
static_assert((Quaternionf(1, 0, 0, 0) * Quaternionf(0, 1, 0, 0)).z == 1.0f && Quaterniond()[3] == 1.0);
static_assert(Quaterniond(0, 0, 1, 0).Rotate({1, 2, 3}).x == -1.0 && Quaternionf(0, 3, 0, 4).Inverted().y == -0.12f);
static_assert(Quaternionf(1, 2, 3, 4).IsSameRotation({-1, -2, -3, -4}));

template <typename T>
void ExpectSame(tQuaternion<T> const& actual, tQuaternion<T> const& expected)
{
    for (std::size_t i = 0; i < 4; ++i)
    {
        SCOPED_TRACE("component " + std::to_string(i));
        ExpectSameBits(actual[i], expected[i]);
    }
}

/// Equal as numbers: the sign of a zero does not matter.
template <typename T>
void ExpectNumbers(tQuaternion<T> const& actual, tQuaternion<T> const& expected)
{
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(actual[i], expected[i]) << "component " << i;
}

/// Every component within some epsilons of its expected value, on the scale of the longest.
template <typename T, typename Expected>
void ExpectNear(tQuaternion<T> const& actual, Expected const& expected, double epsilons, double scale = 1)
{
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(static_cast<double>(actual[i]), static_cast<double>(expected[i]),
                    epsilons * static_cast<double>(EPSILON<T>) * scale)
            << "component " << i;
}

template <typename T>
void ExpectNear(tVector3<T> const& actual, tVector3<T> const& expected, T epsilons)
{
    EXPECT_LE((actual - expected).Length(), epsilons * EPSILON<T>)
        << actual << " instead of " << expected << ", off by " << (actual - expected);
}

template <typename T>
bool IsAllNaN(tQuaternion<T> const& q)
{
    return IsNaN(q.x) && IsNaN(q.y) && IsNaN(q.z) && IsNaN(q.w);
}

template <typename T>
tQuaternion<T> RandomUnit(Random& random)
{
    for (;;)
    {
        tQuaternion<T> const q(random.Number(T{-1}, T{1}), random.Number(T{-1}, T{1}), random.Number(T{-1}, T{1}),
                               random.Number(T{-1}, T{1}));
        if (q.Length() > T(0.1))
            return q.Normalised();
    }
}

template <typename T>
tVector3<T> RandomDirection(Random& random)
{
    for (;;)
    {
        auto const v = random.Vector<tVector3<T>>(T{-1}, T{1});
        if (v.Length() > T(0.1))
            return v.Normalised();
    }
}

/// Any pattern, special values often among them.
template <typename T>
T AnyNumber(Random& random)
{
    return random.Below(2) == 0 ? SPECIAL_VALUES<T>[random.Below(SPECIAL_VALUES<T>.size())] : random.Any<T>();
}

template <typename T, typename Bits>
tQuaternion<T> FromPatterns(Bits const (&bits)[4])
{
    return {FromBits<T>(bits[0]), FromBits<T>(bits[1]), FromBits<T>(bits[2]), FromBits<T>(bits[3])};
}

template <typename T>
constexpr auto const& Values(auto const& ofFloat, auto const& ofDouble)
{
    if constexpr (sizeof(T) == sizeof(float))
        return ofFloat;
    else
        return ofDouble;
}

TYPED_TEST(QuaternionTest, IsTheIdentityByDefault)
{
    ExpectSame(tQuaternion<TypeParam>(), {0, 0, 0, 1});
}

TYPED_TEST(QuaternionTest, ReadsItsComponentsInOrder)
{
    TypeParam values[] = {1, 2, 3, 4};
    tQuaternion<TypeParam> q(values);
    ExpectSame(q, {1, 2, 3, 4});
    EXPECT_EQ(q.x, 1);
    EXPECT_EQ(q.w, 4);
    q[3] = 5;
    EXPECT_EQ(q.w, 5);
    EXPECT_EQ(&q[0], &q.x);
    EXPECT_EQ(&std::as_const(q)[2], &q.z);
    EXPECT_EQ(std::memcmp(&q, values, 3 * sizeof(TypeParam)), 0);
}

TYPED_TEST(QuaternionTest, ConvertsFromTheOtherPrecisionByRounding)
{
    tQuaternion<Other<TypeParam>> other(Other<TypeParam>(0.1), Other<TypeParam>(-0.2), 3, Other<TypeParam>(1e-3));
    tQuaternion<TypeParam> const q(other);
    for (std::size_t i = 0; i < 4; ++i)
        ExpectSameBits(q[i], static_cast<TypeParam>(other[i]));
}

TYPED_TEST(QuaternionTest, UnitsMultiplyAsHamiltonSays)
{
    using Q = tQuaternion<TypeParam>;
    Q const i(1, 0, 0, 0), j(0, 1, 0, 0), k(0, 0, 1, 0), one;
    ExpectNumbers(i * i, -one);
    ExpectNumbers(j * j, -one);
    ExpectNumbers(k * k, -one);
    ExpectNumbers(i * j, k);
    ExpectNumbers(j * k, i);
    ExpectNumbers(k * i, j);
    ExpectNumbers(j * i, -k);
    ExpectNumbers(k * j, -i);
    ExpectNumbers(i * k, -j);
    // (1 + 2i + 3j + 4k)(5 + 6i + 7j + 8k) = -60 + 12i + 30j + 24k
    ExpectNumbers(Q(2, 3, 4, 1) * Q(6, 7, 8, 5), Q(12, 30, 24, -60));
}

TYPED_TEST(QuaternionTest, TheProductIsTheWrittenSumToTheBit)
{
    using T = TypeParam;
    Random random(1843);
    for (int n = 0; n < 20000; ++n)
    {
        bool const isPlain = n % 2 == 0;
        std::array<T, 8> v{};
        for (T& number : v)
            number = isPlain ? random.Number(T{-2}, T{2}) : AnyNumber<T>(random);
        auto const [ax, ay, az, aw, bx, by, bz, bw] = v;
        tQuaternion<T> const product = tQuaternion<T>(ax, ay, az, aw) * tQuaternion<T>(bx, by, bz, bw);
        // Through memory, so that no compiler fuses a product with a sum.
        auto const times = [](T a, T b) { return Runtime(a * b); };
        ExpectSameBits(product.x, (times(aw, bx) + (times(ax, bw) + times(ay, bz))) - times(az, by));
        ExpectSameBits(product.y, (times(aw, by) + (times(ay, bw) + times(az, bx))) - times(ax, bz));
        ExpectSameBits(product.z, (times(aw, bz) + (times(az, bw) + times(ax, by))) - times(ay, bx));
        ExpectSameBits(product.w, (times(aw, bw) - (times(ax, bx) + times(ay, by))) - times(az, bz));
    }
}

TYPED_TEST(QuaternionTest, SumsAndScalarProductsGoByComponents)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Q const a(1, -2, 3, 4), b(5, 6, -7, 8);
    ExpectSame(a + b, Q(6, 4, -4, 12));
    ExpectSame(a - b, Q(-4, -8, 10, -4));
    ExpectSame(-Q(1, 0, -3, 4), Q(-1, T(-0.0), 3, -4));
    ExpectSame(a * T{2}, Q(2, -4, 6, 8));
    ExpectSame(2 * a, Q(2, -4, 6, 8));
    ExpectSame(a / T{2}, Q(T(0.5), -1, T(1.5), 2));
    ExpectSame(Q(1, 1, 1, 1) / T{49}, Q(T{1} / T{49}, T{1} / T{49}, T{1} / T{49}, T{1} / T{49}));
    Q c = a;
    ExpectSame(c += b, a + b);
    ExpectSame(c -= b, a);
    ExpectSame(c *= T{3}, Q(3, -6, 9, 12));
    ExpectSame(c /= T{3}, a);
    ExpectSame(c *= b, a * b);
    c = b;
    Q const& itself = c;
    ExpectSame(c *= itself, b * b);
    c = b;
    ExpectSame(c -= itself, Q(0, 0, 0, 0));
    c = b;
    ExpectSame(c *= c.w, Q(40, 48, -56, 64));
    c = b;
    ExpectSame(c /= c.w, Q(T(0.625), T(0.75), T(-0.875), 1));
}

TYPED_TEST(QuaternionTest, LengthsAndInversesAreThoseOfFourNumbers)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Q const q(1, 2, -4, 10);
    EXPECT_EQ(q.Dot({3, 5, 7, 11}), T{3 + 10 - 28 + 110});
    EXPECT_EQ(q.LengthSquared(), T{121});
    EXPECT_EQ(q.Length(), T{11});
    ExpectSame(q.Normalised(), q * (T{1} / T{11}));
    ExpectSame(q.Conjugated(), Q(-1, -2, 4, 10));
    ExpectSame(q.Inverted(), Q(T{-1} / T{121}, T{-2} / T{121}, T{4} / T{121}, T{10} / T{121}));
    Q r = q;
    ExpectSame(r.Conjugate(), q.Conjugated());
    r = q;
    ExpectSame(r.Invert(), q.Inverted());
    r = q;
    ExpectSame(r.Normalise(), q.Normalised());
    EXPECT_TRUE(IsAllNaN(Q(0, 0, 0, 0).Inverted()));
    EXPECT_TRUE(IsAllNaN(Q(0, 0, 0, 0).Normalised()));
    ExpectSame(Q(LARGEST<T>, 0, 0, 0).Normalised(), Q(0, 0, 0, 0)); // the square overflows
}

TYPED_TEST(QuaternionTest, DotAndInverseKeepTheWrittenOrder)
{
    using T = TypeParam;
    Random random(24);
    auto const times = [](T a, T b) { return Runtime(a * b); };
    for (int n = 0; n < 5000; ++n)
    {
        tQuaternion<T> const a(AnyNumber<T>(random), AnyNumber<T>(random), AnyNumber<T>(random), AnyNumber<T>(random));
        tQuaternion<T> const b = n % 2 == 0 ? a : RandomUnit<T>(random);
        T const dot = (times(a.x, b.x) + times(a.z, b.z)) + (times(a.y, b.y) + times(a.w, b.w));
        ExpectSameBits(a.Dot(b), dot);
        ExpectSameBits(a.Dot(b), b.Dot(a));
        T const squared = Runtime(b.LengthSquared());
        ExpectSame(b.Inverted(), {-b.x / squared, -b.y / squared, -b.z / squared, b.w / squared});
        ExpectSame(b.Normalised(), b * (T{1} / std::sqrt(squared)));
    }
}

TYPED_TEST(QuaternionTest, TurnsRightHandedAboutItsAxis)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    T const right = PI<T> / 2;
    ExpectNear(Q::RotateAxis({1, 0, 0}, right).Rotate({0, 1, 0}), tVector3<T>(0, 0, 1), T{2});
    ExpectNear(Q::RotateAxis({0, 1, 0}, right).Rotate({0, 0, 1}), tVector3<T>(1, 0, 0), T{2});
    ExpectNear(Q::RotateAxis({0, 0, 1}, right).Rotate({1, 0, 0}), tVector3<T>(0, 1, 0), T{2});
    ExpectNear(Q::RotateAxis({2, 2, 2}, right * 4 / 3).Rotate({1, 2, 3}), tVector3<T>(3, 1, 2), T{8});
}

TYPED_TEST(QuaternionTest, RotatesAsItsMatrixAndTheMatrixOfAxisAndAngleDo)
{
    using T = TypeParam;
    Random random(1840);
    for (int n = 0; n < 3000; ++n)
    {
        tVector3<T> const axis = RandomDirection<T>(random);
        T const angle = random.Number(T{-6}, T{6});
        tVector3<T> const v = RandomDirection<T>(random);
        auto const q = tQuaternion<T>::RotateAxis(axis, angle);
        auto const matrix = tMatrix4<T>::RotateAxis({}, axis, angle);
        ExpectNear(q.Rotate(v), v.TransformedAsVector(matrix), T{8});
        ExpectNear(q.Rotate(v), v.TransformedAsVector(q.GetMatrix()), T{8});
        EXPECT_TRUE(q.GetMatrix().IsOrthonormal());
        // Sums of a few products, each within half a step, on both sides.
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_NEAR(q.GetMatrix()[i], matrix[i], 6 * EPSILON<T>);
    }
}

TYPED_TEST(QuaternionTest, ProductsApplyTheirRightOperandFirst)
{
    using T = TypeParam;
    Random random(2);
    for (int n = 0; n < 1000; ++n)
    {
        tQuaternion<T> const a = RandomUnit<T>(random), b = RandomUnit<T>(random);
        tVector3<T> const v = RandomDirection<T>(random);
        ExpectNear((a * b).Rotate(v), a.Rotate(b.Rotate(v)), T{12});
        ExpectNear(a.Conjugated().Rotate(a.Rotate(v)), v, T{12});
        ExpectNear(a * a.Inverted(), tQuaternion<T>(), 3);
    }
}

TYPED_TEST(QuaternionTest, RotatesByTheWrittenFormulaToTheBit)
{
    using T = TypeParam;
    Random random(3);
    auto const times = [](T a, T b) { return Runtime(a * b); };
    auto const cross = [&](tVector3<T> const& a, tVector3<T> const& b)
    {
        return tVector3<T>(times(a.y, b.z) - times(a.z, b.y), times(a.z, b.x) - times(a.x, b.z),
                           times(a.x, b.y) - times(a.y, b.x));
    };
    for (int n = 0; n < 10000; ++n)
    {
        bool const isPlain = n % 2 == 0;
        auto const number = [&] { return isPlain ? random.Number(T{-2}, T{2}) : AnyNumber<T>(random); };
        tQuaternion<T> const q(number(), number(), number(), number());
        tVector3<T> const v(number(), number(), number());
        tVector3<T> const u(q.x, q.y, q.z);
        tVector3<T> const c = cross(u, v);
        tVector3<T> const t = c + c;
        tVector3<T> const d = cross(u, t);
        tVector3<T> const scaled(times(q.w, t.x), times(q.w, t.y), times(q.w, t.z));
        ExpectSameBits(q.Rotate(v), (v + scaled) + d);
    }
}

TYPED_TEST(QuaternionTest, TheMatrixIsTheWrittenFormulaToTheBit)
{
    using T = TypeParam;
    Random random(4);
    auto const times = [](T a, T b) { return Runtime(a * b); };
    for (int n = 0; n < 5000; ++n)
    {
        T const size = n % 3 == 0 ? T{1} : random.Number(T(0.01), T{100});
        auto const [x, y, z, w] = RandomUnit<T>(random) * size;
        T const s = T{2} / tQuaternion<T>(x, y, z, w).LengthSquared();
        T const xs = times(x, s), ys = times(y, s), zs = times(z, s);
        T const xx = times(x, xs), yy = times(y, ys), zz = times(z, zs);
        T const xy = times(x, ys), yz = times(y, zs), zx = times(z, xs);
        T const wx = times(w, xs), wy = times(w, ys), wz = times(w, zs);
        ExpectMatrix(tQuaternion<T>(x, y, z, w).GetMatrix(),
                     {1 - (yy + zz), xy - wz, zx + wy, 0, xy + wz, 1 - (zz + xx), yz - wx, 0, zx - wy, yz + wx,
                      1 - (xx + yy), 0, 0, 0, 0, 1},
                     ORTHONORMAL);
    }
}

TYPED_TEST(QuaternionTest, TheMatrixOfNoTurnIsTheIdentity)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    T const numbers[] = {1, -1, T(0.5), 0, T(-0.0), TINY<T>, INF<T>};
    for (T const w : numbers)
        ExpectMatrix(Q(0, T(-0.0), 0, w).GetMatrix(), IDENTITY_ELEMENTS<T>, IDENTITY);
    // However small a turn is, it is one.
    T const turn = T{2} * TINY<T>;
    ExpectMatrix(Q(TINY<T>, 0, 0, 1).GetMatrix(), {1, 0, 0, 0, 0, 1, -turn, 0, 0, turn, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    // Half a turn about z.
    ExpectValues(Q(0, 0, 1, 0).GetMatrix(), {-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    EXPECT_TRUE(IsNaN(Q(0, 0, 0, QUIET_NAN<T>).GetMatrix()[0]));
    EXPECT_TRUE(IsNaN(Q(QUIET_NAN<T>, 0, 0, 1).GetMatrix()[0]));
    EXPECT_TRUE(IsNaN(Q(INF<T>, 0, 0, 1).GetMatrix()[5]));
    EXPECT_TRUE(IsNaN(Q(TINY<T>, 0, 0, 0).GetMatrix()[5]));
}

template <typename T>
void ExpectBackFromMatrix(tQuaternion<T> const& q)
{
    tQuaternion<T> const back(q.GetMatrix());
    // An element is off by up to two epsilons, and divided by four times a component of at least 1/2.
    ExpectNear(back, back.Dot(q) < 0 ? -q : q, 4);
    EXPECT_NEAR(back.Length(), T{1}, EPSILON<T> * 2);
    T const largest = std::max({std::abs(back.x), std::abs(back.y), std::abs(back.z), std::abs(back.w)});
    EXPECT_TRUE(std::max({back.x, back.y, back.z, back.w}) > T(0.49) || largest < T(0.51));
}

TYPED_TEST(QuaternionTest, ComesBackFromItsMatrix)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Random random(1978);
    for (int n = 0; n < 5000; ++n)
    {
        Q q = RandomUnit<T>(random);
        // Half turns, turns about an axis, and those where the largest components tie.
        for (std::size_t i = 0; i < 4; ++i)
            if (random.Below(4) == 0)
                q[i] = random.Below(2) == 0 ? T{0} : random.Number(T{-1}, T{1}) * std::sqrt(EPSILON<T>);
        if (q.Length() > T(0.1))
            ExpectBackFromMatrix(q.Normalised());
    }
    T const signs[] = {T(-0.5), T(0.5)};
    for (T const x : signs)
        for (T const y : signs)
            for (T const z : signs)
                ExpectBackFromMatrix(Q(x, y, z, T(0.5)));
    ExpectNumbers(Q(tMatrix4<T>(-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)), Q(0, 0, 1, 0));
    ExpectNumbers(Q(tMatrix4<T>(1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1)), Q(1, 0, 0, 0));
    ExpectNumbers(Q(tMatrix4<T>(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1)), Q(0, 1, 0, 0));
    ExpectNumbers(Q(tMatrix4<T>(0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1)), Q(T(0.5), T(0.5), T(0.5), T(0.5)));
}

TYPED_TEST(QuaternionTest, GoesByTheStateOfAMatrix)
{
    using T = TypeParam;
    tMatrix4<T> const turn = tMatrix4<T>::RotateX(T{1});
    ExpectSame(tQuaternion<T>(WithState(turn, IDENTITY)), tQuaternion<T>());
    for (std::uint32_t const state : {DIAGONAL, ORTHONORMAL, GENERAL, UNKNOWN})
        ExpectSame(tQuaternion<T>(WithState(turn, state)), tQuaternion<T>(turn));
    // A translation makes no difference.
    tMatrix4<T> moved = turn;
    moved(3) = moved(7) = moved(11) = T{100};
    ExpectSame(tQuaternion<T>(moved), tQuaternion<T>(turn));
}

TYPED_TEST(QuaternionTest, IsMadeFromAxisAndAngle)
{
    using T = TypeParam;
    for (auto const& value : Values<T>(AXIS_FLOAT, AXIS_DOUBLE))
    {
        tVector3<T> const axis(FromBits<T>(value.axis[0]), FromBits<T>(value.axis[1]), FromBits<T>(value.axis[2]));
        auto const q = tQuaternion<T>::RotateAxis(axis, FromBits<T>(value.angle));
        // Each component for itself, so that a small angle keeps its digits: a sine, a length and a quotient.
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(static_cast<double>(q[i]) / value.result[i], 1, 4 * static_cast<double>(EPSILON<T>))
                << "component " << i;
    }
}

TYPED_TEST(QuaternionTest, NoAngleAndNoAxisAreTheIdentity)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    ExpectSame(Q::RotateAxis({0, T(-0.0), 0}, T{2}), Q());
    ExpectSame(Q::RotateAxis({0, 0, 0}, QUIET_NAN<T>), Q());
    ExpectNumbers(Q::RotateAxis({1, 2, 3}, T{0}), Q());
    T const half = std::sin(T(0.5));
    ExpectNear(Q::RotateAxis({TINY<T>, 0, 0}, T{1}), Q(half, 0, 0, std::cos(T(0.5))), 1);
    ExpectNear(Q::RotateAxis({0, LARGEST<T>, 0}, T{1}), Q(0, half, 0, std::cos(T(0.5))), 1);
    // Half of the angle divided by the length: a normal number keeps its digits, and one below all numbers is 0.
    T const least = std::numeric_limits<T>::min();
    ExpectNumbers(Q::RotateAxis({1, 0, 0}, 3 * least), Q(T(1.5) * least, 0, 0, 1));
    ExpectNumbers(Q::RotateAxis({0, 4, 0}, 12 * least), Q(0, 6 * least, 0, 1));
    ExpectNumbers(Q::RotateAxis({0, 0, 1 / EPSILON<T>}, least), Q());
    EXPECT_TRUE(IsNaN(Q::RotateAxis({INF<T>, 0, 0}, T{1}).x));
    EXPECT_TRUE(IsNaN(Q::RotateAxis({1, 0, 0}, QUIET_NAN<T>).w));
}

TYPED_TEST(QuaternionTest, TurnsOneDirectionToAnother)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Random random(1999);
    for (int n = 0; n < 20000; ++n)
    {
        tVector3<T> const a = RandomDirection<T>(random);
        // Any, near the first, or near its opposite at every distance down to far below a step.
        tVector3<T> b = RandomDirection<T>(random);
        if (n % 3 != 0)
        {
            T const distance = static_cast<T>(std::pow(10.0, -random.Number(0.0, sizeof(T) == 4 ? 12.0 : 24.0)));
            b = (n % 3 == 1 ? a : -a) + b * distance;
        }
        T const sizes[] = {1, T(0.001), 7, T(1e15), T(1e-15)};
        Q const q = Q::RotateBetween(a * sizes[random.Below(5)], b * sizes[random.Below(5)]);
        tVector3<T> const unit = b.Normalised();
        EXPECT_NEAR(q.Length(), T{1}, 2 * EPSILON<T>);
        ExpectNear(q.Rotate(a), unit, T{8});
        // By the smallest angle: the axis is perpendicular to both, and the real part is not negative.
        EXPECT_GE(q.w, 0);
        EXPECT_NEAR(tVector3<T>(q.x, q.y, q.z).Dot(a), T{0}, 4 * EPSILON<T>);
    }
}

// A third of a turn about (-1, -1, -1), where a.b is exactly -|a||b| / 2: the plain way, whose roundings, worked out
// one by one, leave each number one step short of a half; the other way gives the half.
TYPED_TEST(QuaternionTest, DirectionsAThirdOfATurnApartAreTakenAsTheyAre)
{
    using T = TypeParam;
    bool const isFloat = std::is_same_v<T, float>;
    tVector3<T> const from(T(0.0625), isFloat ? T(-1.125) : T(-1.15625), isFloat ? T(1.0625) : T(1.09375));
    T const nearHalf = std::nextafter(T(0.5), T(0));
    ExpectNumbers(tQuaternion<T>::RotateBetween(from, {from.y, from.z, from.x}),
                  tQuaternion<T>(-nearHalf, -nearHalf, -nearHalf, nearHalf));
}

TYPED_TEST(QuaternionTest, OppositeDirectionsAreHalfATurnApart)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    // The product of the direction and the axis that it has least of.
    ExpectNumbers(Q::RotateBetween({1, 0, 0}, {-1, 0, 0}), Q(0, 0, 1, 0));
    ExpectNumbers(Q::RotateBetween({0, 2, 0}, {0, -5, 0}), Q(0, 0, -1, 0));
    ExpectNumbers(Q::RotateBetween({0, 0, 1}, {0, 0, -1}), Q(0, 1, 0, 0));
    ExpectNear(Q::RotateBetween({3, 1, 4}, {-3, -1, -4}), Q(T(-0.8), 0, T(0.6), 0), 2);
    // One that is not quite the opposite says about which axis.
    ExpectNumbers(Q::RotateBetween({1, 0, 0}, {-1, TINY<T>, 0}), Q(0, 0, 1, 0));
    ExpectNumbers(Q::RotateBetween({1, 0, 0}, {-1, 0, TINY<T>}), Q(0, -1, 0, 0));
    ExpectNumbers(Q::RotateBetween({1, 0, 0}, {-1, -TINY<T>, 0}), Q(0, 0, -1, 0));
}

TYPED_TEST(QuaternionTest, DirectionsOfAnyLengthAreTurned)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    T const root = static_cast<T>(0.70710678118654752440);
    ExpectNumbers(Q::RotateBetween({3, 0, 0}, {T(0.5), 0, 0}), Q());
    ExpectNear(Q::RotateBetween({TINY<T>, 0, 0}, {0, LARGEST<T>, 0}), Q(0, 0, root, root), 1);
    ExpectNear(Q::RotateBetween({LARGEST<T>, 0, 0}, {0, 0, LARGEST<T>}), Q(0, -root, 0, root), 1);
    ExpectNumbers(Q::RotateBetween({0, 0, 0}, {0, 1, 0}), Q());
    ExpectNumbers(Q::RotateBetween({0, 1, 0}, {0, 0, 0}), Q());
    EXPECT_TRUE(IsAllNaN(Q::RotateBetween({QUIET_NAN<T>, 0, 0}, {0, 1, 0})));
    EXPECT_TRUE(IsAllNaN(Q::RotateBetween({1, 0, 0}, {0, INF<T>, 0})));
    for (int exponent = std::numeric_limits<T>::min_exponent; exponent < std::numeric_limits<T>::max_exponent;
         ++exponent)
    {
        T const size = std::ldexp(T{1}, exponent);
        ExpectNear(Q::RotateBetween({size, 0, 0}, {0, size, 0}), Q(0, 0, root, root), 1);
        ExpectNear(Q::RotateAxis({0, size, 0}, PI<T>), Q(0, 1, 0, 0), 1);
        ExpectSameBits(Q(0, 0, -size, size).GetAxis(), tVector3<T>(0, 0, -1));
        EXPECT_EQ(Q(0, 0, -size, size).GetAngle(), PI<T> / 2);
    }
    // A small angle keeps its digits.
    T const small = sizeof(T) == 4 ? T(1e-12) : T(1e-30);
    EXPECT_NEAR(Q::RotateBetween({1, 0, 0}, {1, small, 0}).z / (small / 2), T{1}, 2 * EPSILON<T>);
}

TYPED_TEST(QuaternionTest, GivesItsAxisAndAngleBack)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    EXPECT_EQ(Q().GetAngle(), T{0});
    ExpectSameBits(Q().GetAxis(), tVector3<T>(1, 0, 0));
    EXPECT_EQ(Q(0, 0, 0, -2).GetAngle(), 2 * PI<T>);
    EXPECT_EQ(Q(0, 3, 0, 0).GetAngle(), PI<T>);
    ExpectSameBits(Q(0, -3, 0, 0).GetAxis(), tVector3<T>(0, -1, 0));
    EXPECT_EQ(Q(0, 0, TINY<T>, TINY<T>).GetAngle(), PI<T> / 2);
    EXPECT_EQ(Q(0, 0, LARGEST<T>, LARGEST<T>).GetAngle(), PI<T> / 2);
    ExpectSameBits(Q(0, 0, TINY<T>, 1).GetAxis(), tVector3<T>(0, 0, 1));
    EXPECT_EQ(Q(0, 0, TINY<T>, 1).GetAngle(), 2 * TINY<T>);
    EXPECT_TRUE(IsNaN(Q(0, 0, QUIET_NAN<T>, 1).GetAxis().x));
    EXPECT_TRUE(IsNaN(Q(QUIET_NAN<T>, 0, 0, 1).GetAngle()));
    Random random(5);
    for (int n = 0; n < 2000; ++n)
    {
        Q const q = RandomUnit<T>(random);
        EXPECT_GE(q.GetAngle(), 0);
        EXPECT_LE(q.GetAngle(), 2 * PI<T>);
        ExpectNear(Q::RotateAxis(q.GetAxis(), q.GetAngle()), q, 5);
        EXPECT_NEAR((-q).GetAngle(), 2 * PI<T> - q.GetAngle(), 8 * EPSILON<T>);
    }
}

TYPED_TEST(QuaternionTest, SlerpIsTheArcOfHigherPrecision)
{
    using T = TypeParam;
    for (auto const& value : Values<T>(SLERP_FLOAT, SLERP_DOUBLE))
    {
        T const t = FromBits<T>(value.t);
        tQuaternion<T> const slerp = Slerp(FromPatterns<T>(value.a), FromPatterns<T>(value.b), t);
        // Two products and a sum, of operands whose length is off by a step; beyond the ends, both weights grow.
        ExpectNear(slerp, value.result, t < 0 || t > 1 ? 12 : 3);
    }
}

TYPED_TEST(QuaternionTest, SlerpMeetsBothEnds)
{
    using T = TypeParam;
    Random random(6);
    for (int n = 0; n < 2000; ++n)
    {
        tQuaternion<T> const a = RandomUnit<T>(random), b = RandomUnit<T>(random);
        tQuaternion<T> const end = a.Dot(b) < 0 ? -b : b;
        ExpectNumbers(Slerp(a, b, 0), a);
        ExpectNumbers(Slerp(a, b, 1), end);
        ExpectNear(Slerp(a, a, random.Number(T{0}, T{1})), a, 2);
        ExpectNear(Slerp(a, b, 0.5), (a + end).Normalised(), 3);
        ExpectNear(Slerp(a, b, 0.25), Slerp(a, Slerp(a, b, 0.5), 0.5), 4);
        // The angle is shared out evenly, and no length is lost.
        T const t = random.Number(T{0}, T{1});
        tQuaternion<T> const at = Slerp(a, b, t);
        EXPECT_NEAR(at.Length(), T{1}, 3 * EPSILON<T>);
        T const angle = 2 * std::atan2((end - a).Length(), (end + a).Length());
        EXPECT_NEAR(2 * std::atan2((at - a).Length(), (at + a).Length()), angle * t, 4 * EPSILON<T>);
    }
}

TYPED_TEST(QuaternionTest, SlerpGoesOnAlongTheArc)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Q const end = Q::RotateAxis({0, 0, 1}, T{1});
    for (T const t : {T(-3), T(-0.5), T(1.5), T(2), T(7)})
        ExpectNear(Slerp(Q(), end, t), Q::RotateAxis({0, 0, 1}, t), 12);
    ExpectNumbers(Slerp(Q(), Q(), T{5}), Q());
    EXPECT_TRUE(IsAllNaN(Slerp(Q(1, 1, 1, 1), Q(1, 0, 1, 1), QUIET_NAN<T>)));
    EXPECT_TRUE(IsNaN(Slerp(Q(), Q(QUIET_NAN<T>, 0, 0, 1), T(0.5)).x));
    EXPECT_TRUE(IsNaN(Slerp(Q(QUIET_NAN<T>, 0, 0, 1), Q(), T(0.5)).x));
}

TYPED_TEST(QuaternionTest, NlerpIsTheNormalisedChord)
{
    using T = TypeParam;
    Random random(7);
    for (int n = 0; n < 2000; ++n)
    {
        tQuaternion<T> const a = RandomUnit<T>(random), b = RandomUnit<T>(random);
        tQuaternion<T> const end = a.Dot(b) < 0 ? -b : b;
        T const t = random.Number(T{0}, T{1});
        ExpectSame(Nlerp(a, b, t), (a * (T{1} - t) + end * t).Normalised());
        ExpectNear(Nlerp(a, b, 0), a, 3);
        ExpectNear(Nlerp(a, b, 1), end, 3);
        // The same great circle and the same middle.
        ExpectNear(Nlerp(a, b, 0.5), Slerp(a, b, 0.5), 3);
    }
    // Half turns about one axis: from 0 to 180 degrees, a quarter of the way is off by 4 degrees.
    tQuaternion<T> const half(0, 0, 1, 0);
    double const quarter = static_cast<double>(Nlerp(tQuaternion<T>(), half, 0.25).GetAngle());
    EXPECT_NEAR(quarter, 2 * std::atan2(0.25, 0.75), 1e-6);
    EXPECT_TRUE(IsAllNaN(Nlerp(half, half, QUIET_NAN<T>)));
}

TYPED_TEST(QuaternionTest, ExponentialLogarithmAndPowerAreThoseOfHigherPrecision)
{
    using T = TypeParam;
    for (auto const& value : Values<T>(QUATERNION_FLOAT, QUATERNION_DOUBLE))
    {
        tQuaternion<T> const q = FromPatterns<T>(value.q);
        auto const scale = [](double const(&v)[4]) {
            return std::max({1.0, std::abs(v[0]), std::abs(v[1]), std::abs(v[2]), std::abs(v[3])});
        };
        ExpectNear(Exp(q), value.exponential, 4, scale(value.exponential));
        ExpectNear(Log(q), value.logarithm, 3, scale(value.logarithm));
        // An angle and a logarithm of up to 3, times an exponent of up to 3.
        ExpectNear(Pow(q, FromBits<T>(value.exponent)), value.power, 16, scale(value.power));
    }
}

TYPED_TEST(QuaternionTest, ExponentialUndoesTheLogarithm)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Random random(8);
    for (int n = 0; n < 1000; ++n)
    {
        Q const q = RandomUnit<T>(random) * random.Number(T(0.25), T{4});
        ExpectNear(Exp(Log(q)), q, 8, 4);
        ExpectNear(Pow(q, 2), q * q, 16, 16);
        ExpectNear(Pow(q, -1), q.Inverted(), 8, 4);
        ExpectNear(Pow(q, 1), q, 6, 4);
        ExpectNumbers(Pow(q, 0), Q());
    }
    ExpectNumbers(Exp(Q(0, 0, 0, 0)), Q());
    ExpectNumbers(Log(Q()), Q(0, 0, 0, 0));
    // Half a rotation vector.
    ExpectNear(Exp(Q(0, T(0.5), 0, 0)), Q::RotateAxis({0, 1, 0}, T{1}), 1);
    ExpectNear(Exp(Q(TINY<T>, 0, 0, 0)), Q(TINY<T>, 0, 0, 1), 0);
    // A negative real number has no axis: x is taken.
    ExpectNumbers(Log(Q(0, 0, 0, -1)), Q(PI<T>, 0, 0, 0));
    ExpectNear(Pow(Q(0, 0, 0, -1), 0.5), Q(1, 0, 0, 0), 1);
    ExpectNumbers(Log(Q(0, 0, 0, 0)), Q(0, 0, 0, -INF<T>));
    ExpectNumbers(Log(Q(0, 0, 0, T(-0.0))), Q(PI<T>, 0, 0, -INF<T>));
    ExpectNumbers(Pow(Q(0, 0, 0, 0), 2), Q(0, 0, 0, 0));
    ExpectNumbers(Pow(Q(0, 0, 0, 0), 0), Q());
    EXPECT_TRUE(IsAllNaN(Log(Q(QUIET_NAN<T>, 1, 1, 1))));
    EXPECT_TRUE(IsAllNaN(Exp(Q(QUIET_NAN<T>, 1, 1, 1))));
    EXPECT_TRUE(IsAllNaN(Pow(Q(QUIET_NAN<T>, 1, 1, 1), T{2})));
}

TYPED_TEST(QuaternionTest, LogarithmsAndPowersAreOfAnyLength)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    // Powers of two whose squares underflow and overflow.
    int const down = sizeof(T) == sizeof(float) ? -90 : -700, up = -down;
    T const small = std::ldexp(T{1}, down), large = std::ldexp(T{1}, up);
    auto const expectLogarithm = [](Q const& logarithm, tVector3<T> const& vector, double real)
    {
        ExpectNear(tVector3<T>(logarithm.x, logarithm.y, logarithm.z), vector, T{1});
        EXPECT_NEAR(static_cast<double>(logarithm.w), real, static_cast<double>(EPSILON<T>) * std::abs(real));
    };
    // A sine and an arc tangent so small are the angle.
    ExpectNumbers(Log(Q(0, small, 0, 1)), Q(0, small, 0, 0));
    ExpectNumbers(Pow(Q(0, small, 0, 1), 2), Q(0, 2 * small, 0, 1));
    expectLogarithm(Log(Q(0, 0, large, 0)), {0, 0, PI<T> / 2}, up * std::log(2.0));
    expectLogarithm(Log(Q(small, 0, 0, small)), {PI<T> / 4, 0, 0}, (down + 0.5) * std::log(2.0));
    T const root = std::ldexp(T{1}, up / 2), diagonal = std::sqrt(T(0.5));
    ExpectNear(Pow(Q(0, 0, large, 0), T(0.5)) / root, Q(0, 0, diagonal, diagonal), 1);
}

TYPED_TEST(QuaternionTest, EqualityIsTolerantAndKnowsSigns)
{
    using T = TypeParam;
    using Q = tQuaternion<T>;
    Q const q = Q(1, -2, 3, 4).Normalised();
    for (std::size_t i = 0; i < 4; ++i)
    {
        Q near = q, far = q;
        near[i] = Steps(q[i], 50);
        far[i] = q[i] + T{100} * EPSILON<T>;
        EXPECT_TRUE(q == near);
        EXPECT_FALSE(q != near);
        EXPECT_TRUE(q != far);
        EXPECT_TRUE(q.IsSameRotation(near));
        EXPECT_TRUE(q.IsSameRotation(-near));
        EXPECT_FALSE(q.IsSameRotation(far));
        EXPECT_FALSE(q.IsSameRotation(-far));
    }
    EXPECT_FALSE(q == -q);
    EXPECT_FALSE(q.IsSameRotation(q.Conjugated()));
}

TYPED_TEST(QuaternionTest, HashesItsBytesFromTheLastComponentOn)
{
    using T = TypeParam;
    tQuaternion<T> const q(1, T(-0.0), T(0.25), -3);
    unsigned int wide = 0;
    unsigned char narrow = 0;
    for (std::size_t i = 4; i-- > 0;)
    {
        wide = bv::GetJenkinsHash(&q[i], sizeof(T), wide);
        narrow = bv::GetPearsonHash(&q[i], sizeof(T), narrow);
    }
    EXPECT_EQ(q.GetHash32(), wide);
    EXPECT_EQ(q.GetHash8(), narrow);
    EXPECT_NE(q.GetHash32(), tQuaternion<T>(1, T{0}, T(0.25), -3).GetHash32());
}

TYPED_TEST(QuaternionTest, StreamsRawNativeBytes)
{
    using T = TypeParam;
    tQuaternion<T> const q(1, -2, T(0.5), QUIET_NAN<T>);
    std::stringstream stream;
    EXPECT_EQ(&q.Serialise(stream), &stream);
    std::string const bytes = stream.str();
    ASSERT_EQ(bytes.size(), sizeof(q));
    EXPECT_EQ(std::memcmp(bytes.data(), &q, sizeof(q)), 0);
    tQuaternion<T> back;
    EXPECT_EQ(&back.Deserialise(stream), &stream);
    EXPECT_EQ(std::memcmp(&back, &q, sizeof(q)), 0);
    // One block for each component.
    RecordingBuffer buffer;
    std::iostream recording(&buffer);
    q.Serialise(recording);
    EXPECT_EQ(buffer.sizes, std::vector<std::streamsize>(4, sizeof(T)));
    back.Deserialise(recording);
    EXPECT_EQ(buffer.sizes, std::vector<std::streamsize>(8, sizeof(T)));
    // A stream that ends early leaves the rest.
    std::istringstream brief(bytes.substr(0, 2 * sizeof(T)));
    tQuaternion<T> partly(7, 8, 9, 10);
    partly.Deserialise(brief);
    ExpectSame(partly, {1, -2, 9, 10});
}

TYPED_TEST(QuaternionTest, PrintsItsComponentsJoinedByCommas)
{
    tQuaternion<TypeParam> const q(TypeParam(0.5), -2, 1234567, TypeParam(0.25));
    GroupingGlobalLocale const locale;
    std::ostringstream stream;
    stream.precision(2);
    stream << std::showpos << q << '|';
    EXPECT_EQ(stream.str(), "0.5, -2, 1.23457e+06, 0.25|");
    std::ostringstream padded;
    padded.width(12);
    padded.fill('*');
    padded << tQuaternion<TypeParam>() << tQuaternion<TypeParam>();
    EXPECT_EQ(padded.str(), "**0, 0, 0, 10, 0, 0, 1");
}

} // namespace
