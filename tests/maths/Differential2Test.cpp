#include "bv/maths/tDifferential2.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::tDifferential2;
using bv::maths::tVector2;
using namespace bv::test;

/// What each instance promises to the compiler.
template <typename T>
struct Promises
{
    using D = tDifferential2<T>;
    using V = tVector2<T>;
    using OtherPrecision = tDifferential2<Other<T>>;

    static_assert(sizeof(D) == 4 * sizeof(T) && alignof(D) == alignof(T));
    static_assert(std::is_standard_layout_v<D> && std::is_trivially_copyable_v<D> && !std::is_polymorphic_v<D>);
    static_assert(std::is_same_v<decltype(D::DIFF_U), std::size_t const> && D::DIFF_U == 0);
    static_assert(std::is_same_v<decltype(D::DIFF_V), std::size_t const> && D::DIFF_V == 1);
    static_assert(std::is_nothrow_default_constructible_v<D> && std::is_nothrow_constructible_v<D, V, V>);
    static_assert(std::is_nothrow_copy_assignable_v<D> && std::is_nothrow_move_assignable_v<D>);
    static_assert(std::is_same_v<decltype(std::declval<D const&>()[0]), V const&>);
    static_assert(std::is_same_v<decltype(std::declval<D&>()[0]), V const&>); // to read only, in any object
    static_assert(std::is_same_v<decltype(std::declval<D&>()(0)), V&> && !std::is_invocable_v<D const&, std::size_t>);
    static_assert(std::is_same_v<decltype(&D::GetRadius), T (D::*)() const noexcept>);
    static_assert(std::is_same_v<decltype(&D::IsNull), bool (D::*)() const noexcept>);
    static_assert(std::is_same_v<decltype(&D::IsInfinite), bool (D::*)() const noexcept>);
    static_assert(!std::is_constructible_v<D, OtherPrecision> && !std::is_assignable_v<D&, OtherPrecision>);
    static_assert(!std::is_constructible_v<D, V>);

    static constexpr D SAMPLE{{1, 2}, {3, 4}}; // known to the compiler
    static_assert(SAMPLE[D::DIFF_V].x == 3 && (-SAMPLE)[D::DIFF_U].y == -2 && (SAMPLE * T{2} + SAMPLE)[1].y == 12 &&
                  !SAMPLE.IsNull() && !SAMPLE.IsInfinite() && D().IsNull());
};
template struct Promises<float>;
template struct Promises<double>;

template <typename T>
class Differential2Test : public testing::Test
{
};

TYPED_TEST_SUITE(Differential2Test, Precisions);

template <typename T>
void ExpectIs(tDifferential2<T> const& actual, std::type_identity_t<tVector2<T>> const& u,
              std::type_identity_t<tVector2<T>> const& v)
{
    ExpectSameBits(actual[tDifferential2<T>::DIFF_U], u);
    ExpectSameBits(actual[tDifferential2<T>::DIFF_V], v);
}

TYPED_TEST(Differential2Test, BeginsWithZeroInBothDerivatives)
{
    tDifferential2<TypeParam> const differential;
    ExpectIs(differential, {0, 0}, {0, 0});
}

TYPED_TEST(Differential2Test, KeepsTheDerivativesThatItIsGiven)
{
    tDifferential2<TypeParam> const differential({1, 2}, {3, 4});
    ExpectIs(differential, {1, 2}, {3, 4});
}

TYPED_TEST(Differential2Test, LaysOutTheDerivativeByUBeforeTheOneByV)
{
    tDifferential2<TypeParam> const differential({1, 2}, {3, 4});
    TypeParam scalars[4];
    std::memcpy(scalars, &differential, sizeof(scalars));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(scalars[i], static_cast<TypeParam>(i + 1));
}

TYPED_TEST(Differential2Test, SetOfTwoVectorsStoresBoth)
{
    tDifferential2<TypeParam> differential;
    differential.Set({1, -2}, {3, QUIET_NAN<TypeParam>});
    ExpectIs(differential, {1, -2}, {3, QUIET_NAN<TypeParam>});
}

TYPED_TEST(Differential2Test, SetOfOneVectorStoresItTwice)
{
    tDifferential2<TypeParam> differential({1, 2}, {3, 4});
    differential.Set({5, -6});
    ExpectIs(differential, {5, -6}, {5, -6});
}

TYPED_TEST(Differential2Test, SetTakesItsOwnDerivatives)
{
    using D = tDifferential2<TypeParam>;
    D differential({1, 2}, {3, 4});
    differential.Set(differential[D::DIFF_V], differential[D::DIFF_U]);
    ExpectIs(differential, {3, 4}, {1, 2});
    differential.Set(differential[D::DIFF_V]);
    ExpectIs(differential, {1, 2}, {1, 2});
}

TYPED_TEST(Differential2Test, CopiesAndMovesMemberByMember)
{
    tDifferential2<TypeParam> source({1, 2}, {3, 4});
    tDifferential2<TypeParam> copy;
    EXPECT_EQ(&(copy = source), &copy);
    ExpectIs(copy, {1, 2}, {3, 4});
    tDifferential2<TypeParam> moved;
    EXPECT_EQ(&(moved = std::move(source)), &moved);
    ExpectIs(moved, {1, 2}, {3, 4});
    source(0).x = 9;
    ExpectIs(copy, {1, 2}, {3, 4});
}

TYPED_TEST(Differential2Test, SquareBracketsReadAndRoundBracketsWrite)
{
    using D = tDifferential2<TypeParam>;
    D differential({1, 2}, {3, 4});
    EXPECT_EQ(&differential(0), &differential[0]);
    EXPECT_EQ(&differential(1), &differential[1]);
    EXPECT_EQ(&differential[1], &differential[0] + 1);
    differential(D::DIFF_V).x = 7;
    differential(D::DIFF_U) = {5, 6};
    ExpectIs(differential, {5, 6}, {7, 4});
}

TYPED_TEST(Differential2Test, UnaryPlusCopiesAndUnaryMinusNegates)
{
    tDifferential2<TypeParam> const differential({1, -2}, {0, INF<TypeParam>});
    ExpectIs(+differential, {1, -2}, {0, INF<TypeParam>});
    ExpectIs(-differential, {-1, 2}, {TypeParam{-0.0}, -INF<TypeParam>});
    ExpectIs(differential, {1, -2}, {0, INF<TypeParam>});
}

TYPED_TEST(Differential2Test, AddsAndSubtractsVectorByVector)
{
    tDifferential2<TypeParam> const a({1, 2}, {3, 4});
    tDifferential2<TypeParam> const b({10, 30}, {50, 70});
    ExpectIs(a + b, {11, 32}, {53, 74});
    ExpectIs(a - b, {-9, -28}, {-47, -66});
    tDifferential2<TypeParam> inPlace = a;
    EXPECT_EQ(&(inPlace += b), &inPlace);
    ExpectIs(inPlace, {11, 32}, {53, 74});
    EXPECT_EQ(&(inPlace -= b), &inPlace);
    ExpectIs(inPlace, {1, 2}, {3, 4});
}

TYPED_TEST(Differential2Test, AddsAndSubtractsItself)
{
    tDifferential2<TypeParam> differential({1, 2}, {3, 4});
    tDifferential2<TypeParam> const& itself = differential;
    differential += itself;
    ExpectIs(differential, {2, 4}, {6, 8});
    differential -= itself;
    ExpectIs(differential, {0, 0}, {0, 0});
}

TYPED_TEST(Differential2Test, AScalarScalesBothVectors)
{
    tDifferential2<TypeParam> differential({1, 2}, {3, -4});
    ExpectIs(differential * TypeParam{3}, {3, 6}, {9, -12});
    EXPECT_EQ(&(differential *= TypeParam{3}), &differential);
    ExpectIs(differential, {3, 6}, {9, -12});
}

TYPED_TEST(Differential2Test, AVectorScalesBothVectorsComponentByComponent)
{
    tDifferential2<TypeParam> differential({1, 2}, {3, -4});
    tVector2<TypeParam> const factors(10, 100);
    ExpectIs(differential * factors, {10, 200}, {30, -400});
    EXPECT_EQ(&(differential *= factors), &differential);
    ExpectIs(differential, {10, 200}, {30, -400});
}

TYPED_TEST(Differential2Test, DivisionByAScalarMultipliesByItsReciprocal)
{
    using T = TypeParam;
    tDifferential2<T> differential({5, 7}, {9, 12});
    EXPECT_EQ(&(differential /= T{3}), &differential);
    T const third = T{1} / T{3};
    ExpectIs(differential, {5 * third, 7 * third}, {9 * third, 12 * third});
    EXPECT_NE(differential[0].x, T{5} / T{3}); // one step beside the quotient
    EXPECT_NE(differential[0].y, T{7} / T{3});
}

TYPED_TEST(Differential2Test, DivisionByAVectorIsTrueDivision)
{
    using T = TypeParam;
    tDifferential2<T> differential({5, 7}, {-7, 5});
    EXPECT_EQ(&(differential /= tVector2<T>(3, 48)), &differential);
    ExpectIs(differential, {T{5} / T{3}, T{7} / T{48}}, {T{-7} / T{3}, T{5} / T{48}});
    EXPECT_NE(differential[0].x, 5 * (T{1} / T{3}));
    EXPECT_NE(differential[0].y, 7 * (T{1} / T{48}));
}

TYPED_TEST(Differential2Test, DivisionByZeroFollowsIeeeArithmetic)
{
    using T = TypeParam;
    tDifferential2<T> byScalar({1, -1}, {0, 2});
    byScalar /= T{0};
    ExpectIs(byScalar, {INF<T>, -INF<T>}, {QUIET_NAN<T>, INF<T>});
    tDifferential2<T> byVector({1, -1}, {0, 2});
    byVector /= tVector2<T>(0, T{-0.0});
    ExpectIs(byVector, {INF<T>, INF<T>}, {QUIET_NAN<T>, -INF<T>});
}

TYPED_TEST(Differential2Test, OperandsMayBePartsOfTheDifferential)
{
    using T = TypeParam;
    using D = tDifferential2<T>;
    D const original({2, 4}, {8, 16});

    D d = original;
    d *= d(0).x;
    ExpectIs(d, {4, 8}, {16, 32});
    d = original;
    d *= d(1).y;
    ExpectIs(d, {32, 64}, {128, 256});
    d = original;
    d *= d[0];
    ExpectIs(d, {4, 16}, {16, 64});
    d = original;
    d *= d[1];
    ExpectIs(d, {16, 64}, {64, 256});
    d = original;
    d /= d(0).x;
    ExpectIs(d, {1, 2}, {4, 8});
    d = original;
    d /= d(1).x;
    ExpectIs(d, {T{0.25}, T{0.5}}, {1, 2});
    d = original;
    d /= d[0];
    ExpectIs(d, {1, 1}, {4, 4});
    d = original;
    d /= d[1];
    ExpectIs(d, {T{0.25}, T{0.25}}, {1, 1});
}

TYPED_TEST(Differential2Test, RadiusIsTheGeometricMeanOfTheLengths)
{
    using T = TypeParam;
    EXPECT_EQ(tDifferential2<T>({3, 4}, {0, 1}).GetRadius(), std::sqrt(T{5}));
    EXPECT_EQ(tDifferential2<T>({3, 4}, {12, 5}).GetRadius(), std::sqrt(T{13} * T{5}));
    EXPECT_EQ(tDifferential2<T>({-3, 4}, {0, 0}).GetRadius(), T{0});
    EXPECT_EQ(tDifferential2<T>().GetRadius(), T{0});
    T const ofUnevenLengths = std::sqrt(std::sqrt(T{13}) * std::sqrt(T{5}));
    EXPECT_EQ(tDifferential2<T>({1, 2}, {3, 2}).GetRadius(), ofUnevenLengths);
}

TYPED_TEST(Differential2Test, RadiusOfOneVectorSetTwiceIsItsLength)
{
    tDifferential2<TypeParam> differential;
    differential.Set({3, -4});
    EXPECT_EQ(differential.GetRadius(), TypeParam{5});
}

TYPED_TEST(Differential2Test, RadiusTakesEachLengthByItself)
{
    // The product of the squared lengths would overflow, and that of the lengths does not.
    using T = TypeParam;
    T const large = std::ldexp(T{1}, std::numeric_limits<T>::max_exponent / 2 - 1);
    EXPECT_EQ(tDifferential2<T>({large, 0}, {0, large}).GetRadius(), large);
    EXPECT_EQ(tDifferential2<T>({large * large, 0}, {0, 1}).GetRadius(), INF<T>); // the square of one alone does
    EXPECT_TRUE(std::isnan(tDifferential2<T>({QUIET_NAN<T>, 0}, {0, 1}).GetRadius()));
    EXPECT_TRUE(std::isnan(tDifferential2<T>({INF<T>, 0}, {0, 0}).GetRadius()));
}

TYPED_TEST(Differential2Test, OneNullDerivativeMakesItNull)
{
    using D = tDifferential2<TypeParam>;
    EXPECT_TRUE(D().IsNull());
    EXPECT_TRUE(D({0, 0}, {1, 1}).IsNull());
    EXPECT_TRUE(D({1, 1}, {0, 0}).IsNull());
    EXPECT_TRUE(D({TypeParam{-0.0}, 0}, {1, 1}).IsNull());
    EXPECT_FALSE(D({1, 1}, {1, 1}).IsNull());
    EXPECT_FALSE(D({0, 1}, {1, 0}).IsNull());
    EXPECT_FALSE(D({1, 0}, {0, 1}).IsNull());
}

TYPED_TEST(Differential2Test, NullIsMeantWithinTheTolerance)
{
    using T = TypeParam;
    using D = tDifferential2<T>;
    T const epsilon = 10 * EPSILON<T>;
    T const within = epsilon * T{0.75};
    T const beyond = epsilon * T{1.5};
    EXPECT_TRUE(D({within, -within}, {1, 1}).IsNull());
    EXPECT_TRUE(D({1, 1}, {-within, within}).IsNull());
    EXPECT_FALSE(D({within, beyond}, {within, -beyond}).IsNull());
    EXPECT_FALSE(D({-beyond, within}, {beyond, within}).IsNull());
    EXPECT_FALSE(D({QUIET_NAN<T>, 0}, {0, QUIET_NAN<T>}).IsNull());
    EXPECT_TRUE(D({QUIET_NAN<T>, 0}, {0, 0}).IsNull());
}

TYPED_TEST(Differential2Test, OneInfiniteDerivativeMakesItInfinite)
{
    using T = TypeParam;
    using D = tDifferential2<T>;
    tVector2<T> const infinite(INF<T>, INF<T>);
    EXPECT_TRUE(D(infinite, {1, 1}).IsInfinite());
    EXPECT_TRUE(D({1, 1}, infinite).IsInfinite());
    EXPECT_TRUE(D(infinite, infinite).IsInfinite());
    EXPECT_TRUE(D({QUIET_NAN<T>, 0}, infinite).IsInfinite());
    EXPECT_FALSE(D().IsInfinite());
    EXPECT_FALSE(D({INF<T>, 1}, {1, INF<T>}).IsInfinite()); // each needs +infinity throughout
    EXPECT_FALSE(D(-infinite, -infinite).IsInfinite());
    EXPECT_FALSE(D({INF<T>, QUIET_NAN<T>}, {1, 1}).IsInfinite());
}

} // namespace
