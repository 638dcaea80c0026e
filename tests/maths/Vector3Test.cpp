#include "bv/maths/tVector3.h"

#include <cmath>
#include <cstddef>
#include <sstream>
#include <type_traits>

#include <gtest/gtest.h>

#include "ComponentChecks.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace elsewhere
{

/// Not a template, so that both kinds of lookup happen at once.
std::string PrintTwo(bv::maths::tVector3<float> const& one, bv::maths::tVector3<int> const& other)
{
    std::ostringstream stream;
    stream << Label{"one "} << one << Label{" other "} << other;
    return stream.str();
}

} // namespace elsewhere

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class Vector3Test : public testing::Test
{
};

TYPED_TEST_SUITE(Vector3Test, Precisions);

/// The stream operations exist for integers, too.
template <typename T>
class Vector3StreamTest : public testing::Test
{
};

TYPED_TEST_SUITE(Vector3StreamTest, Components);

// Precisions convert where it is asked for, and nothing else converts.
static_assert(std::is_constructible_v<Vector3f, Vector3d> && std::is_constructible_v<Vector3d, Vector3f>);
static_assert(!std::is_convertible_v<Vector3f, Vector3d> && !std::is_convertible_v<Vector3d, Vector3f>);
static_assert(!std::is_assignable_v<Vector3f&, Vector3d> && !std::is_assignable_v<Vector3d&, Vector3f>);
static_assert(!std::is_constructible_v<Vector3f, tVector3<int>> && !std::is_constructible_v<tVector3<int>, Vector3f>);
static_assert(!std::is_constructible_v<Vector3f, tVector2<float>>);
static_assert(!std::is_constructible_v<Vector3f, tTuple3<float>> && !std::is_constructible_v<tTuple3<float>, Vector3f>);
static_assert(!std::is_base_of_v<tTuple3<float>, Vector3f>);
static_assert(!std::is_constructible_v<Vector3f, float> && !std::is_convertible_v<int, Vector3d>);
static_assert(offsetof(Vector3f, x) == 0 && offsetof(Vector3f, y) == 4 && offsetof(Vector3f, z) == 8);
static_assert(offsetof(Vector3d, x) == 0 && offsetof(Vector3d, y) == 8 && offsetof(Vector3d, z) == 16);
static_assert(std::is_same_v<decltype(Vector3f().Cross(Vector3f())), Vector3f>);
static_assert(noexcept(Vector3f().Cross({})));
// What the arithmetic returns.
static_assert(std::is_same_v<decltype(-Vector3f()), Vector3f>);
static_assert(noexcept(-Vector3f()));
static_assert(std::is_same_v<decltype(2.0f * Vector3f()), Vector3f>);
static_assert(noexcept(2.0f * Vector3f()));
static_assert(std::is_same_v<decltype(Vector3d() / 2.0), Vector3d>);
static_assert(noexcept(Vector3d() / 2.0));
static_assert(std::is_same_v<decltype(Vector3d().Dot(Vector3d())), double>);
static_assert(noexcept(Vector3d().Dot(Vector3d())));
static_assert(std::is_same_v<decltype(Vector3f().Length()), float>);
static_assert(noexcept(Vector3f().Length()));
static_assert(std::is_same_v<decltype(std::declval<Vector3f&>().Normalise()), Vector3f&>);
static_assert(std::is_same_v<decltype(std::declval<Vector3f&>() += Vector3f()), Vector3f&>);
static_assert(std::is_same_v<decltype(std::declval<Vector3f&>() /= 2.0f), Vector3f&>);
static_assert(std::is_same_v<decltype(Vector3d().IsInfinite()), bool>);
static_assert(noexcept(Vector3d().IsInfinite()));
// Known to the compiler.
static_assert((Vector3f(1, 2, 3) + 2.0f * Vector3f(3, 4, 5))[2] == 13.0f &&
              Vector3d(1, 0, 0).Cross({0, 1, 0}).z == 1.0);

TYPED_TEST(Vector3StreamTest, IsItsComponentsAndNothingElse)
{
    bv::test::ExpectPlainLayout<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, SerialisesRawNativeBytes)
{
    bv::test::ExpectRawNativeBytes<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, WritesAndReadsEachComponentOnce)
{
    bv::test::ExpectOneWriteAndOneReadForEachComponent<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, WritesAndReadsUnformatted)
{
    bv::test::ExpectUnformattedStreams<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, ReadsBackTheSameBits)
{
    bv::test::ExpectReadingBackTheSameBits<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, KeepsWhatAShortStreamDoesNotReach)
{
    bv::test::ExpectAShortStreamToLeaveTheRestAlone<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, ReturnsAFailedStreamAsItIs)
{
    bv::test::ExpectAFailedStreamToBeReturnedAsItIs<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, PrintsItsComponentsJoinedByCommas)
{
    bv::test::ExpectComponentsJoinedByCommas<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, PrintsWithoutTheFormatOfTheTarget)
{
    bv::test::ExpectTextWithoutTheFormatOfTheTarget<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, IsPaddedAsOneText)
{
    bv::test::ExpectWidthAndFillOnceForTheWholeText<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, PrintsTheSameInEveryLocale)
{
    bv::test::ExpectTextThatNoLocaleChanges<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, PrintsFromEveryNamespace)
{
    bv::test::ExpectTextFromEveryNamespace<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3StreamTest, PrintsByTheOperatorOfTheMathsNamespace)
{
    std::ostringstream stream;
    EXPECT_EQ(&bv::maths::operator<<(stream, MakeSample<tVector3<TypeParam>>()), &stream);
    EXPECT_EQ(stream.str(), bv::test::SampleText<tVector3<TypeParam>>());
}

TYPED_TEST(Vector3Test, PrintsSpecialValuesAsTheStandardStreamDoes)
{
    bv::test::ExpectSpecialValuesAsTheStandardStreamPrintsThem<tVector3<TypeParam>>();
}

TEST(Vector3TextTest, IsPlainText)
{
    EXPECT_EQ(Text(Vector3d(0.1, 2, 1e-7)), "0.1, 2, 1e-07");
    EXPECT_EQ(elsewhere::PrintTwo({1, 2.5f, 1e6f}, {3, -4, 5}), "one 1, 2.5, 1e+06 other 3, -4, 5");
}

TYPED_TEST(Vector3Test, IsZeroByDefault)
{
    bv::test::ExpectZeroByDefault<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3Test, IsMadeFromConsecutiveValuesOnRequest)
{
    bv::test::ExpectExplicitConstructionFromAPointer<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3Test, GivesItsComponentsByNameAndByIndex)
{
    bv::test::ExpectAccessByNameAndIndex<tVector3<TypeParam>>();
}

TYPED_TEST(Vector3Test, CopiesAreEqualAndIndependent)
{
    auto original = MakeSample<tVector3<TypeParam>>();
    auto const copy(original);
    tVector3<TypeParam> assigned;
    assigned = original;
    original.x = 9;
    ExpectSameBits(copy, MakeSample<tVector3<TypeParam>>());
    ExpectSameBits(assigned, MakeSample<tVector3<TypeParam>>());
    EXPECT_NE(original, copy);
}

TYPED_TEST(Vector3Test, IsEqualWhereEveryComponentIs)
{
    bv::test::ExpectEqualityComponentByComponent<tVector3<TypeParam>>();
}

TEST(Vector3ConversionTest, RoundsToNearestAndWidensExactly)
{
    ExpectSameBits(Vector3f(Vector3d(0.1, 1 + 0x1p-24, -3)), {0.1f, 1.0f, -3.0f}); // a tie goes to even
    ExpectSameBits(Vector3f(Vector3d(1e300, -0.0, 1)), {INF<float>, -0.0f, 1.0f});
    ExpectSameBits(Vector3d(Vector3f(0.1f, 0x1p-149f, 7)), {0x1.99999Ap-4, 0x1p-149, 7.0});
}

TYPED_TEST(Vector3Test, AddsAndSubtractsComponentByComponent)
{
    tVector3<TypeParam> const a(1, 2, 3);
    tVector3<TypeParam> const b(10, -20, 40);
    ExpectSameBits(a + b, {11, -18, 43});
    ExpectSameBits(a - b, {-9, 22, -37});
    tVector3<TypeParam> c = a;
    EXPECT_EQ(&(c += b), &c);
    ExpectSameBits(c, {11, -18, 43});
    EXPECT_EQ(&(c -= a), &c);
    ExpectSameBits(c, b);
}

TYPED_TEST(Vector3Test, NegatesEveryComponentAndTheSignOfZeros)
{
    using T = TypeParam;
    ExpectSameBits(-tVector3<T>(1, -2, 3), {-1, 2, -3});
    ExpectSameBits(-tVector3<T>(0, -T{0}, 0), {-T{0}, 0, -T{0}});
}

TYPED_TEST(Vector3Test, MultipliesByAScalarOnEitherSide)
{
    tVector3<TypeParam> const a(1, -2, 4);
    ExpectSameBits(a * TypeParam{3}, {3, -6, 12});
    ExpectSameBits(TypeParam{3} * a, {3, -6, 12});
    ExpectSameBits(a * 3, {3, -6, 12}); // an integer will do
    ExpectSameBits(3 * a, {3, -6, 12});
    tVector3<TypeParam> b = a;
    EXPECT_EQ(&(b *= TypeParam{3}), &b);
    ExpectSameBits(b, {3, -6, 12});
}

TYPED_TEST(Vector3Test, MultipliesAndDividesByAVectorComponentByComponent)
{
    tVector3<TypeParam> const a(6, -8, 10);
    tVector3<TypeParam> const b(3, 4, -5);
    ExpectSameBits(a * b, {18, -32, -50});
    ExpectSameBits(a / b, {2, -2, -2});
    tVector3<TypeParam> c = a;
    EXPECT_EQ(&(c *= b), &c);
    ExpectSameBits(c, {18, -32, -50});
    EXPECT_EQ(&(c /= b), &c);
    ExpectSameBits(c, a);
}

TYPED_TEST(Vector3Test, DividesTrulyByAScalar)
{
    using T = TypeParam;
    // 41 (float) and 49 (double) times their rounded reciprocals are less than 1.
    T const divisor = std::is_same_v<T, float> ? T{41} : T{49};
    ASSERT_NE(divisor * (T{1} / divisor), T{1});
    tVector3<T> a(divisor, -divisor, divisor);
    ExpectSameBits(a / divisor, {1, -1, 1});
    EXPECT_EQ(&(a /= divisor), &a);
    ExpectSameBits(a, {1, -1, 1});
}

TYPED_TEST(Vector3Test, DividesByZeroAsTheArithmeticDoes)
{
    using T = TypeParam;
    ExpectSameBits(tVector3<T>(1, -2, 0) / T{0}, {INF<T>, -INF<T>, QUIET_NAN<T>});
    ExpectSameBits(tVector3<T>(1, 2, 3) / tVector3<T>(-T{0}, 2, 0), {-INF<T>, 1, INF<T>});
}

TYPED_TEST(Vector3Test, OperandsMayBeTheVectorItself)
{
    using V = tVector3<TypeParam>;
    V v(2, 3, 5);
    V const& same = v;
    ExpectSameBits(v += same, V(4, 6, 10));
    ExpectSameBits(v *= same, V(16, 36, 100));
    ExpectSameBits(v /= v.x, V(1, 2.25, 6.25));
    ExpectSameBits(v *= v.y, V(2.25, 5.0625, 14.0625));
    ExpectSameBits(v /= same, V(1, 1, 1));
    ExpectSameBits(v -= same, V(0, 0, 0));
}

TYPED_TEST(Vector3Test, DotSumsFromXToZ)
{
    using T = TypeParam;
    EXPECT_EQ((tVector3<T>(1, 2, 3).Dot({10, 20, 30})), T{140}); // 10 + 40 + 90
    EXPECT_EQ((tVector3<T>(3, -2, 1).Dot({2, 3, 0})), T{0});
    // A quarter and a half of an epsilon vanish beside 1 one after the other; together they would not.
    T const epsilon = EPSILON<T>;
    EXPECT_EQ((tVector3<T>(1, epsilon / 4, epsilon / 2).Dot({1, 1, 1})), T{1});
    EXPECT_EQ((tVector3<T>(epsilon / 4, epsilon / 2, 1).Dot({1, 1, 1})), 1 + epsilon);
    // Every product is rounded before it is added: (1 + e)^2 loses its e^2.
    EXPECT_EQ((tVector3<T>(1 + epsilon, 1 + 2 * epsilon, 0).Dot({1 + epsilon, -1, 0})), T{0});
}

TYPED_TEST(Vector3Test, CrossIsRightHanded)
{
    using T = TypeParam;
    tVector3<T> const x(1, 0, 0);
    tVector3<T> const y(0, 1, 0);
    tVector3<T> const z(0, 0, 1);
    ExpectSameBits(x.Cross(y), z);
    ExpectSameBits(y.Cross(z), x);
    ExpectSameBits(z.Cross(x), y);
    EXPECT_EQ(y.Cross(x), -z);
    ExpectSameBits(x.Cross(x), {0, 0, 0});
    // (2*7 - 3*6, 3*5 - 1*7, 1*6 - 2*5) = (-4, 8, -4)
    ExpectSameBits(tVector3<T>(1, 2, 3).Cross({5, 6, 7}), {-4, 8, -4});
}

TYPED_TEST(Vector3Test, CrossRoundsEachProductOnItsOwn)
{
    using T = TypeParam;
    T const e = EPSILON<T>;
    // (1 + e)(1 + e) - 1 * (1 + 2e): the square loses its e^2, in every component in turn.
    ExpectSameBits(tVector3<T>(0, 1 + e, 1).Cross({0, 1 + 2 * e, 1 + e}), {0, 0, 0});
    ExpectSameBits(tVector3<T>(1, 0, 1 + e).Cross({1 + e, 0, 1 + 2 * e}), {0, 0, 0});
    ExpectSameBits(tVector3<T>(1 + e, 1, 0).Cross({1 + 2 * e, 1 + e, 0}), {0, 0, 0});
}

TYPED_TEST(Vector3Test, LengthIsTheRootOfTheSquaredLength)
{
    using T = TypeParam;
    EXPECT_EQ((tVector3<T>(2, -3, 6).LengthSquared()), T{49});
    EXPECT_EQ((tVector3<T>(2, -3, 6).Length()), T{7});
    EXPECT_EQ((tVector3<T>(0, 0, 0).Length()), T{0});
    EXPECT_EQ((tVector3<T>(1, 1, 1).Length()), std::sqrt(T{3}));
    EXPECT_EQ((tVector3<T>(-INF<T>, 1, 0).Length()), INF<T>);
    EXPECT_TRUE(std::isnan((tVector3<T>(1, QUIET_NAN<T>, 1).Length())));
}

TYPED_TEST(Vector3Test, SquaredLengthSumsFromXToZ)
{
    using T = TypeParam;
    // s is a power of two: beside 1, its square is a quarter of an epsilon (double) or half of one (float), and
    // vanishes twice in a row; in the other order the two squares add up first.
    T const s = std::is_same_v<T, float> ? T(0x1p-12) : T(0x1p-27);
    EXPECT_EQ((tVector3<T>(1, s, s).LengthSquared()), T{1});
    T const t = T{1.25} * s; // 1.5625 of it
    T const epsilon = EPSILON<T>;
    EXPECT_EQ((tVector3<T>(t, t, 1).LengthSquared()), 1 + (std::is_same_v<T, float> ? 2 : 1) * epsilon);
}

TYPED_TEST(Vector3Test, LengthOverflowsAndUnderflowsWithItsSquare)
{
    using T = TypeParam;
    EXPECT_EQ((tVector3<T>(LARGEST<T>, 0, 0).Length()), INF<T>);
    EXPECT_EQ((tVector3<T>(0, 0, SMALLEST_NORMAL<T>).Length()), T{0});
}

TYPED_TEST(Vector3Test, NormalisesByTheReciprocalOfTheLength)
{
    using T = TypeParam;
    tVector3<T> v(2, -3, 6);
    T const seventh = T{1} / T{7};
    ExpectSameBits(v.Normalised(), {2 * seventh, -3 * seventh, 6 * seventh});
    ExpectSameBits(v, {2, -3, 6});
    EXPECT_EQ(&v.Normalise(), &v);
    ExpectSameBits(v, {2 * seventh, -3 * seventh, 6 * seventh});
    // A product with the reciprocal, not a quotient: that would be 1.
    T const length = std::is_same_v<T, float> ? T{41} : T{49};
    T const product = length * (T{1} / length);
    ASSERT_NE(product, T{1});
    ExpectSameBits(tVector3<T>(0, length, -T{0}).Normalised(), {0, product, -T{0}});
}

TYPED_TEST(Vector3Test, NormalisingZeroOrInfinityFollowsTheArithmetic)
{
    using T = TypeParam;
    ExpectSameBits(tVector3<T>(0, 0, 0).Normalised(), {QUIET_NAN<T>, QUIET_NAN<T>, QUIET_NAN<T>});
    ExpectSameBits(tVector3<T>(INF<T>, -1, 1).Normalised(), {QUIET_NAN<T>, -T{0}, 0});
    T const smallest = SMALLEST_NORMAL<T>; // its square vanishes
    ExpectSameBits(tVector3<T>(smallest, -smallest, 0).Normalised(), {INF<T>, -INF<T>, QUIET_NAN<T>});
}

TYPED_TEST(Vector3Test, IsInfiniteWhereEveryComponentIsPlusInfinity)
{
    using T = TypeParam;
    T const values[] = {INF<T>, -INF<T>, QUIET_NAN<T>, T{1}, LARGEST<T>};
    for (T const x : values)
        for (T const y : values)
            for (T const z : values)
                EXPECT_EQ((tVector3<T>(x, y, z).IsInfinite()), x == INF<T> && y == INF<T> && z == INF<T>)
                    << x << ", " << y << ", " << z;
    EXPECT_TRUE((tVector3<T>(INF<T>, INF<T>, INF<T>).IsInfinite()));
    EXPECT_FALSE((tVector3<T>(INF<T>, INF<T>, 1).IsInfinite()));
    EXPECT_FALSE((tVector3<T>(-INF<T>, -INF<T>, -INF<T>).IsInfinite()));
}
} // namespace
