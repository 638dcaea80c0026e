#include "bv/maths/tDifferential3.h"

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

using bv::maths::tDifferential3;
using bv::maths::tMatrix4;
using bv::maths::tVector3;
using namespace bv::test;

/// What each instance promises to the compiler.
template <typename T>
struct Promises
{
    using D = tDifferential3<T>;
    using V = tVector3<T>;
    using M = tMatrix4<T>;
    using OtherPrecision = tDifferential3<Other<T>>;

    static_assert(sizeof(D) == 6 * sizeof(T) && alignof(D) == alignof(T));
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
    static_assert(std::is_same_v<decltype(&D::TransformAsVector), D& (D::*)(M const&) noexcept>);
    static_assert(std::is_same_v<decltype(&D::TransformedAsVector), D (D::*)(M const&) const noexcept>);
    static_assert(std::is_same_v<decltype(&D::Transform), D& (D::*)(M const&, V const&, T const&) noexcept>);
    static_assert(std::is_same_v<decltype(&D::Transformed), D (D::*)(M const&, V const&, T const&) const noexcept>);
    static_assert(!std::is_constructible_v<D, OtherPrecision> && !std::is_assignable_v<D&, OtherPrecision>);
    static_assert(!std::is_constructible_v<D, V>);

    static constexpr D SAMPLE{{1, 2, 3}, {4, 5, 6}}; // known to the compiler
    static_assert(SAMPLE[D::DIFF_V].x == 4 && (-SAMPLE)[D::DIFF_U].y == -2 && (SAMPLE * T{2} + SAMPLE)[1].z == 18 &&
                  !SAMPLE.IsNull() && !SAMPLE.IsInfinite() && D().IsNull());
};
template struct Promises<float>;
template struct Promises<double>;

template <typename T>
class Differential3Test : public testing::Test
{
};

TYPED_TEST_SUITE(Differential3Test, Precisions);

template <typename T>
void ExpectIs(tDifferential3<T> const& actual, std::type_identity_t<tVector3<T>> const& u,
              std::type_identity_t<tVector3<T>> const& v)
{
    ExpectSameBits(actual[tDifferential3<T>::DIFF_U], u);
    ExpectSameBits(actual[tDifferential3<T>::DIFF_V], v);
}

/// A projective matrix in state GENERAL, with its fourth row to be chosen.
template <typename T>
tMatrix4<T> WithFourthRow(T m41, T m42, T m43)
{
    return {1, 2, 0, 9, 0, 1, 3, 9, 4, 0, 1, 9, m41, m42, m43, 5};
}

TYPED_TEST(Differential3Test, BeginsWithZeroInBothDerivatives)
{
    tDifferential3<TypeParam> const differential;
    ExpectIs(differential, {0, 0, 0}, {0, 0, 0});
}

TYPED_TEST(Differential3Test, KeepsTheDerivativesThatItIsGiven)
{
    tDifferential3<TypeParam> const differential({1, 2, 3}, {4, 5, 6});
    ExpectIs(differential, {1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(Differential3Test, LaysOutTheDerivativeByUBeforeTheOneByV)
{
    tDifferential3<TypeParam> const differential({1, 2, 3}, {4, 5, 6});
    TypeParam scalars[6];
    std::memcpy(scalars, &differential, sizeof(scalars));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(scalars[i], static_cast<TypeParam>(i + 1));
}

TYPED_TEST(Differential3Test, SetOfTwoVectorsStoresBoth)
{
    tDifferential3<TypeParam> differential;
    differential.Set({1, -2, 3}, {3, QUIET_NAN<TypeParam>, 4});
    ExpectIs(differential, {1, -2, 3}, {3, QUIET_NAN<TypeParam>, 4});
}

TYPED_TEST(Differential3Test, SetOfOneVectorStoresItTwice)
{
    tDifferential3<TypeParam> differential({1, 2, 3}, {4, 5, 6});
    differential.Set({5, -6, 7});
    ExpectIs(differential, {5, -6, 7}, {5, -6, 7});
}

TYPED_TEST(Differential3Test, SetTakesItsOwnDerivatives)
{
    using D = tDifferential3<TypeParam>;
    D differential({1, 2, 3}, {4, 5, 6});
    differential.Set(differential[D::DIFF_V], differential[D::DIFF_U]);
    ExpectIs(differential, {4, 5, 6}, {1, 2, 3});
    differential.Set(differential[D::DIFF_V]);
    ExpectIs(differential, {1, 2, 3}, {1, 2, 3});
}

TYPED_TEST(Differential3Test, CopiesAndMovesMemberByMember)
{
    tDifferential3<TypeParam> source({1, 2, 3}, {4, 5, 6});
    tDifferential3<TypeParam> copy;
    EXPECT_EQ(&(copy = source), &copy);
    ExpectIs(copy, {1, 2, 3}, {4, 5, 6});
    tDifferential3<TypeParam> moved;
    EXPECT_EQ(&(moved = std::move(source)), &moved);
    ExpectIs(moved, {1, 2, 3}, {4, 5, 6});
    source(0).x = 9;
    ExpectIs(copy, {1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(Differential3Test, SquareBracketsReadAndRoundBracketsWrite)
{
    using D = tDifferential3<TypeParam>;
    D differential({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(&differential(0), &differential[0]);
    EXPECT_EQ(&differential(1), &differential[1]);
    EXPECT_EQ(&differential[1], &differential[0] + 1);
    differential(D::DIFF_V).z = 7;
    differential(D::DIFF_U) = {8, 9, 10};
    ExpectIs(differential, {8, 9, 10}, {4, 5, 7});
}

TYPED_TEST(Differential3Test, UnaryPlusCopiesAndUnaryMinusNegates)
{
    tDifferential3<TypeParam> const differential({1, -2, 3}, {0, INF<TypeParam>, 4});
    ExpectIs(+differential, {1, -2, 3}, {0, INF<TypeParam>, 4});
    ExpectIs(-differential, {-1, 2, -3}, {TypeParam{-0.0}, -INF<TypeParam>, -4});
    ExpectIs(differential, {1, -2, 3}, {0, INF<TypeParam>, 4});
}

TYPED_TEST(Differential3Test, AddsAndSubtractsVectorByVector)
{
    tDifferential3<TypeParam> const a({1, 2, 3}, {4, 5, 6});
    tDifferential3<TypeParam> const b({10, 30, 50}, {70, 90, 110});
    ExpectIs(a + b, {11, 32, 53}, {74, 95, 116});
    ExpectIs(a - b, {-9, -28, -47}, {-66, -85, -104});
    tDifferential3<TypeParam> inPlace = a;
    EXPECT_EQ(&(inPlace += b), &inPlace);
    ExpectIs(inPlace, {11, 32, 53}, {74, 95, 116});
    EXPECT_EQ(&(inPlace -= b), &inPlace);
    ExpectIs(inPlace, {1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(Differential3Test, AddsAndSubtractsItself)
{
    tDifferential3<TypeParam> differential({1, 2, 3}, {4, 5, 6});
    tDifferential3<TypeParam> const& itself = differential;
    differential += itself;
    ExpectIs(differential, {2, 4, 6}, {8, 10, 12});
    differential -= itself;
    ExpectIs(differential, {0, 0, 0}, {0, 0, 0});
}

TYPED_TEST(Differential3Test, AScalarScalesBothVectors)
{
    tDifferential3<TypeParam> differential({1, 2, 3}, {4, -5, 6});
    ExpectIs(differential * TypeParam{3}, {3, 6, 9}, {12, -15, 18});
    EXPECT_EQ(&(differential *= TypeParam{3}), &differential);
    ExpectIs(differential, {3, 6, 9}, {12, -15, 18});
}

TYPED_TEST(Differential3Test, AVectorScalesBothVectorsComponentByComponent)
{
    tDifferential3<TypeParam> differential({1, 2, 3}, {4, -5, 6});
    tVector3<TypeParam> const factors(10, 100, 1000);
    ExpectIs(differential * factors, {10, 200, 3000}, {40, -500, 6000});
    EXPECT_EQ(&(differential *= factors), &differential);
    ExpectIs(differential, {10, 200, 3000}, {40, -500, 6000});
}

TYPED_TEST(Differential3Test, DivisionByAScalarMultipliesByItsReciprocal)
{
    using T = TypeParam;
    tDifferential3<T> differential({5, 7, 2}, {9, 12, 7});
    EXPECT_EQ(&(differential /= T{3}), &differential);
    T const third = T{1} / T{3};
    ExpectIs(differential, {5 * third, 7 * third, 2 * third}, {9 * third, 12 * third, 7 * third});
    EXPECT_NE(differential[0].x, T{5} / T{3}); // one step beside the quotient
    EXPECT_NE(differential[1].z, T{7} / T{3});
}

TYPED_TEST(Differential3Test, DivisionByAVectorIsTrueDivision)
{
    using T = TypeParam;
    tDifferential3<T> differential({5, 7, 5}, {-7, 5, 7});
    EXPECT_EQ(&(differential /= tVector3<T>(3, 48, 6)), &differential);
    ExpectIs(differential, {T{5} / T{3}, T{7} / T{48}, T{5} / T{6}}, {T{-7} / T{3}, T{5} / T{48}, T{7} / T{6}});
    EXPECT_NE(differential[0].x, 5 * (T{1} / T{3}));
    EXPECT_NE(differential[0].y, 7 * (T{1} / T{48}));
    EXPECT_NE(differential[0].z, 5 * (T{1} / T{6}));
}

TYPED_TEST(Differential3Test, DivisionByZeroFollowsIeeeArithmetic)
{
    using T = TypeParam;
    tDifferential3<T> byScalar({1, -1, 0}, {0, 2, -3});
    byScalar /= T{0};
    ExpectIs(byScalar, {INF<T>, -INF<T>, QUIET_NAN<T>}, {QUIET_NAN<T>, INF<T>, -INF<T>});
    tDifferential3<T> byVector({1, -1, 1}, {0, 2, 4});
    byVector /= tVector3<T>(0, T{-0.0}, 2);
    ExpectIs(byVector, {INF<T>, INF<T>, T{0.5}}, {QUIET_NAN<T>, -INF<T>, 2});
}

TYPED_TEST(Differential3Test, OperandsMayBePartsOfTheDifferential)
{
    using T = TypeParam;
    using D = tDifferential3<T>;
    D const original({2, 4, 8}, {16, 32, 64});

    D d = original;
    d *= d(0).x;
    ExpectIs(d, {4, 8, 16}, {32, 64, 128});
    d = original;
    d *= d(1).x;
    ExpectIs(d, {32, 64, 128}, {256, 512, 1024});
    d = original;
    d *= d[0];
    ExpectIs(d, {4, 16, 64}, {32, 128, 512});
    d = original;
    d *= d[1];
    ExpectIs(d, {32, 128, 512}, {256, 1024, 4096});
    d = original;
    d /= d(0).x;
    ExpectIs(d, {1, 2, 4}, {8, 16, 32});
    d = original;
    d /= d(1).x;
    ExpectIs(d, {T{0.125}, T{0.25}, T{0.5}}, {1, 2, 4});
    d = original;
    d /= d[0];
    ExpectIs(d, {1, 1, 1}, {8, 8, 8});
    d = original;
    d /= d[1];
    ExpectIs(d, {T{0.125}, T{0.125}, T{0.125}}, {1, 1, 1});
}

TYPED_TEST(Differential3Test, RadiusIsTheGeometricMeanOfTheLengths)
{
    using T = TypeParam;
    EXPECT_EQ(tDifferential3<T>({3, 4, 0}, {0, 1, 0}).GetRadius(), std::sqrt(T{5}));
    EXPECT_EQ(tDifferential3<T>({1, 2, 2}, {2, 3, 6}).GetRadius(), std::sqrt(T{7} * T{3}));
    EXPECT_EQ(tDifferential3<T>({-3, 4, 1}, {0, 0, 0}).GetRadius(), T{0});
    EXPECT_EQ(tDifferential3<T>().GetRadius(), T{0});
    T const ofUnevenLengths = std::sqrt(std::sqrt(T{22}) * std::sqrt(T{6}));
    EXPECT_EQ(tDifferential3<T>({1, 2, 1}, {3, 2, 3}).GetRadius(), ofUnevenLengths);
}

TYPED_TEST(Differential3Test, RadiusOfOneVectorSetTwiceIsItsLength)
{
    tDifferential3<TypeParam> differential;
    differential.Set({2, -3, 6});
    EXPECT_EQ(differential.GetRadius(), TypeParam{7});
}

TYPED_TEST(Differential3Test, RadiusTakesEachLengthByItself)
{
    // The product of the squared lengths would overflow, and that of the lengths does not.
    using T = TypeParam;
    T const large = std::ldexp(T{1}, std::numeric_limits<T>::max_exponent / 2 - 1);
    EXPECT_EQ(tDifferential3<T>({large, 0, 0}, {0, 0, large}).GetRadius(), large);
    EXPECT_EQ(tDifferential3<T>({large * large, 0, 0}, {0, 1, 0}).GetRadius(), INF<T>); // the square of one alone does
    EXPECT_TRUE(std::isnan(tDifferential3<T>({QUIET_NAN<T>, 0, 0}, {0, 1, 0}).GetRadius()));
    EXPECT_TRUE(std::isnan(tDifferential3<T>({INF<T>, 0, 0}, {0, 0, 0}).GetRadius()));
}

TYPED_TEST(Differential3Test, OneNullDerivativeMakesItNull)
{
    using D = tDifferential3<TypeParam>;
    EXPECT_TRUE(D().IsNull());
    EXPECT_TRUE(D({0, 0, 0}, {1, 1, 1}).IsNull());
    EXPECT_TRUE(D({1, 1, 1}, {0, 0, 0}).IsNull());
    EXPECT_TRUE(D({TypeParam{-0.0}, 0, 0}, {1, 1, 1}).IsNull());
    EXPECT_FALSE(D({1, 1, 1}, {1, 1, 1}).IsNull());
    EXPECT_FALSE(D({0, 0, 1}, {1, 0, 0}).IsNull());
    EXPECT_FALSE(D({0, 1, 0}, {0, 1, 0}).IsNull());
    EXPECT_FALSE(D({1, 0, 0}, {0, 0, 1}).IsNull());
}

TYPED_TEST(Differential3Test, NullIsMeantWithinTheTolerance)
{
    using T = TypeParam;
    using D = tDifferential3<T>;
    T const epsilon = 10 * EPSILON<T>;
    T const within = epsilon * T{0.75};
    T const beyond = epsilon * T{1.5};
    EXPECT_TRUE(D({within, -within, within}, {1, 1, 1}).IsNull());
    EXPECT_TRUE(D({1, 1, 1}, {-within, within, -within}).IsNull());
    EXPECT_FALSE(D({within, within, beyond}, {within, -beyond, within}).IsNull());
    EXPECT_FALSE(D({-beyond, within, within}, {within, within, -beyond}).IsNull());
    EXPECT_FALSE(D({QUIET_NAN<T>, 0, 0}, {0, 0, QUIET_NAN<T>}).IsNull());
    EXPECT_TRUE(D({QUIET_NAN<T>, 0, 0}, {0, 0, 0}).IsNull());
}

TYPED_TEST(Differential3Test, OneInfiniteDerivativeMakesItInfinite)
{
    using T = TypeParam;
    using D = tDifferential3<T>;
    tVector3<T> const infinite(INF<T>, INF<T>, INF<T>);
    EXPECT_TRUE(D(infinite, {1, 1, 1}).IsInfinite());
    EXPECT_TRUE(D({1, 1, 1}, infinite).IsInfinite());
    EXPECT_TRUE(D(infinite, infinite).IsInfinite());
    EXPECT_TRUE(D({QUIET_NAN<T>, 0, 0}, infinite).IsInfinite());
    EXPECT_FALSE(D().IsInfinite());
    EXPECT_FALSE(D({INF<T>, INF<T>, 1}, {1, INF<T>, INF<T>}).IsInfinite()); // each needs +infinity throughout
    EXPECT_FALSE(D(-infinite, -infinite).IsInfinite());
    EXPECT_FALSE(D({INF<T>, QUIET_NAN<T>, INF<T>}, {1, 1, 1}).IsInfinite());
}

TYPED_TEST(Differential3Test, TransformAsVectorAppliesTheLinearPartToBoth)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = WithFourthRow<T>(1, 1, 1);
    tDifferential3<T> differential({1, 2, 3}, {-1, 0, 1});
    // (1 + 2*2, 2 + 3*3, 4*1 + 3) and (-1, 3, -4 + 1); the fourth row and column have no part in it.
    ExpectIs(differential.TransformedAsVector(matrix), {5, 11, 7}, {-1, 3, -3});
    ExpectIs(differential, {1, 2, 3}, {-1, 0, 1});
    EXPECT_EQ(&differential.TransformAsVector(matrix), &differential);
    ExpectIs(differential, {5, 11, 7}, {-1, 3, -3});
}

TYPED_TEST(Differential3Test, TransformAsVectorIgnoresATranslation)
{
    using T = TypeParam;
    tDifferential3<T> differential({1, 2, 3}, {4, 5, 6});
    differential.TransformAsVector(tMatrix4<T>::Translate(7, 8, 9));
    ExpectIs(differential, {1, 2, 3}, {4, 5, 6});
}

TYPED_TEST(Differential3Test, TransformAsVectorIsThatOfEachVectorInEveryState)
{
    using T = TypeParam;
    tDifferential3<T> const differential({T(0.6), T(0.8), 0},
                                         {4, -5, 6}); // a unit vector, which a rotation renormalises
    tMatrix4<T> stale;
    stale(0) = 5; // still in state IDENTITY
    for (tMatrix4<T> const& matrix : {tMatrix4<T>(), stale, tMatrix4<T>::Scale(tVector3<T>(2, 3, 4)),
                                      tMatrix4<T>::RotateZ(T(0.7)), WithFourthRow<T>(1, 2, 3)})
    {
        tVector3<T> const u = differential[0].TransformedAsVector(matrix);
        tVector3<T> const v = differential[1].TransformedAsVector(matrix);
        ExpectIs(differential.TransformedAsVector(matrix), u, v);
        tDifferential3<T> inPlace = differential;
        ExpectIs(inPlace.TransformAsVector(matrix), u, v);
    }
    ExpectIs(differential.TransformedAsVector(stale), {T(0.6), T(0.8), 0}, {4, -5, 6});
    ExpectIs(differential.TransformedAsVector(tMatrix4<T>::Scale(T{2})), {T(1.2), T(1.6), 0}, {8, -10, 12});
}

TYPED_TEST(Differential3Test, TransformDifferentiatesTheProjection)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = WithFourthRow<T>(1, -2, 3);
    tVector3<T> const position(2, 4, -8);
    tDifferential3<T> differential({1, 2, 3}, {-1, 0, 1});
    // u: s = 1 - 4 + 9 = 6; ((5, 11, 7) - 6 * (2, 4, -8)) / 4. v: s = -1 + 3 = 2; ((-1, 3, -3) - 2 * (2, 4, -8)) / 4.
    tVector3<T> const u(T{-1.75}, T{-3.25}, T{13.75});
    tVector3<T> const v(T{-1.25}, T{-1.25}, T{3.25});
    ExpectIs(differential.Transformed(matrix, position, 4), u, v);
    ExpectIs(differential, {1, 2, 3}, {-1, 0, 1});
    EXPECT_EQ(&differential.Transform(matrix, position, 4), &differential);
    ExpectIs(differential, u, v);
}

TYPED_TEST(Differential3Test, TransformAgreesWithFiniteDifferences)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 10);
    tVector3<T> const point(T{0.5}, T{-0.25}, T{-3});
    tVector3<T> const position = point.Transformed(matrix);
    tDifferential3<T> const differential({1, T{0.5}, T{-0.25}}, {T{0.25}, T{-1}, T{0.75}});
    tDifferential3<T> const projected = differential.Transformed(matrix, position, 3); // w = -z

    // Central differences: an error of the order of the squared step, and rounding over the step.
    T const step = std::is_same_v<T, float> ? T{0.0078125} : T{0.0000152587890625};
    T const error = std::is_same_v<T, float> ? T(0.0001) : T(0.000000001);
    for (std::size_t i = 0; i < 2; ++i)
    {
        tVector3<T> const slope = ((point + differential[i] * step).Transformed(matrix) -
                                   (point - differential[i] * step).Transformed(matrix)) /
                                  (2 * step);
        EXPECT_NEAR((projected[i] - slope).Length(), T{0}, error);
    }
}

TYPED_TEST(Differential3Test, TransformByAnAffineMatrixWithWeightOneIsTransformAsVector)
{
    using T = TypeParam;
    tDifferential3<T> const differential({T(0.1), T(0.2), T(0.3)}, {T(-0.7), T(0.9), T(11.3)});
    tVector3<T> const position(T(0.3), T{-7}, T(2.2));
    for (tMatrix4<T> const& matrix : {WithFourthRow<T>(0, 0, 0), tMatrix4<T>::RotateX(T(0.4)), tMatrix4<T>::Scale(T{3}),
                                      tMatrix4<T>::Translate(1, 2, 3), tMatrix4<T>()})
    {
        tDifferential3<T> const expected = differential.TransformedAsVector(matrix);
        ExpectIs(differential.Transformed(matrix, position, 1), expected[0], expected[1]);
    }
}

TYPED_TEST(Differential3Test, TransformMultipliesByTheReciprocalOfTheWeight)
{
    using T = TypeParam;
    T const third = T{1} / T{3};
    tDifferential3<T> const differential({5, 7, 1}, {2, 5, 7});
    ExpectIs(differential.Transformed(tMatrix4<T>(), tVector3<T>(), 3), {5 * third, 7 * third, third},
             {2 * third, 5 * third, 7 * third});
    EXPECT_NE(differential.Transformed(tMatrix4<T>(), tVector3<T>(), 3)[0].x, T{5} / T{3});
}

TYPED_TEST(Differential3Test, TransformSubtractsBeforeItMultipliesByTheReciprocal)
{
    using T = TypeParam;
    T const third = T{1} / T{3};
    tMatrix4<T> const matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 1, 0, 1); // s = d.y
    ExpectIs(tDifferential3<T>({7, 1, 0}, {7, 1, 0}).Transformed(matrix, {1, 0, 0}, 3), {6 * third, third, 0},
             {6 * third, third, 0});
    EXPECT_NE(6 * third, 7 * third - third); // one step beside it
}

TYPED_TEST(Differential3Test, TransformReadsTheFourthRowWhateverTheStateSays)
{
    using T = TypeParam;
    tMatrix4<T> stale; // stays in state IDENTITY, so that the vectors are not transformed
    stale(tMatrix4<T>::IDX_11) = 100;
    stale(tMatrix4<T>::IDX_41) = 1;
    stale(tMatrix4<T>::IDX_42) = 10;
    stale(tMatrix4<T>::IDX_43) = 100;
    stale(tMatrix4<T>::IDX_44) = 1000;
    // s = 321 and 1
    ExpectIs(tDifferential3<T>({1, 2, 3}, {1, 0, 0}).Transformed(stale, {1, -1, 2}, T{0.5}), {-640, 646, -1278},
             {0, 2, -4});
}

TYPED_TEST(Differential3Test, TransformTakesTheSumFromTheVectorBeforeItChanges)
{
    using T = TypeParam;
    tMatrix4<T> const matrix(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 1, 1, 1);
    // s = 3, not 6: (2, 2, 2) - 3 * (1, 0, 0); and s = 6 for v: (2, 4, 6) - 6 * (1, 0, 0).
    ExpectIs(tDifferential3<T>({1, 1, 1}, {1, 2, 3}).Transformed(matrix, {1, 0, 0}, 1), {-1, 2, 2}, {-4, 4, 6});
}

TYPED_TEST(Differential3Test, TransformAddsFromXToZ)
{
    using T = TypeParam;
    T const large = std::ldexp(T{1}, std::numeric_limits<T>::digits + 1); // swallows 1 on either side
    // (1 + large) - large = 0, whereas 1 + (large - large) = 1; and (large - large) + 1 = 1.
    tMatrix4<T> const matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 1, 1, 1);
    tDifferential3<T> const differential({1, large, -large}, {large, -large, 1});
    ExpectIs(differential.Transformed(matrix, {0, 0, 8}, 1), {1, large, -large}, {large, -large, -7});
}

TYPED_TEST(Differential3Test, TransformByZeroWeightFollowsIeeeArithmetic)
{
    using T = TypeParam;
    tDifferential3<T> differential({1, -2, 0}, {0, 3, 4});
    differential.Transform(tMatrix4<T>(), tVector3<T>(), 0);
    ExpectIs(differential, {INF<T>, -INF<T>, QUIET_NAN<T>}, {QUIET_NAN<T>, INF<T>, INF<T>});
}

TYPED_TEST(Differential3Test, PositionAndWeightMayBePartsOfTheDifferential)
{
    using T = TypeParam;
    using D = tDifferential3<T>;
    tMatrix4<T> const matrix = WithFourthRow<T>(1, -2, 3);
    D const original({1, 2, 4}, {-1, 8, 1});
    for (std::size_t i = 0; i < 2; ++i)
        for (std::size_t j = 0; j < 3; ++j)
        {
            tVector3<T> const position = original[i];
            T const weight = original[1 - i][j];
            D const expected = original.Transformed(matrix, position, weight);
            D differential = original;
            differential.Transform(matrix, differential(i), differential(1 - i)[j]);
            ExpectIs(differential, expected[0], expected[1]);
        }
}

} // namespace
