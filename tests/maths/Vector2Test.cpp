#include "bv/maths/tVector2.h"

#include <cmath>
#include <cstddef>
#include <sstream>
#include <type_traits>

#include <gtest/gtest.h>

#include "ComponentChecks.h"
#include "bv/maths/Forward.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace elsewhere
{

/// Not a template, so that both kinds of lookup happen at once.
std::string PrintTwo(bv::maths::tVector2<float> const& one, bv::maths::tVector2<int> const& other)
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
class Vector2Test : public testing::Test
{
};

TYPED_TEST_SUITE(Vector2Test, Precisions);

/// The stream operations exist for integers, too.
template <typename T>
class Vector2StreamTest : public testing::Test
{
};

TYPED_TEST_SUITE(Vector2StreamTest, Components);

// Precisions convert where it is asked for, and nothing else converts.
static_assert(std::is_constructible_v<Vector2f, Vector2d> && std::is_constructible_v<Vector2d, Vector2f>);
static_assert(!std::is_convertible_v<Vector2f, Vector2d> && !std::is_convertible_v<Vector2d, Vector2f>);
static_assert(!std::is_assignable_v<Vector2f&, Vector2d> && !std::is_assignable_v<Vector2d&, Vector2f>);
static_assert(!std::is_constructible_v<Vector2f, tVector2<int>> && !std::is_constructible_v<tVector2<int>, Vector2f>);
static_assert(!std::is_constructible_v<Vector2f, tVector3<float>>);
static_assert(!std::is_constructible_v<Vector2f, tTuple2<float>> && !std::is_constructible_v<tTuple2<float>, Vector2f>);
static_assert(!std::is_base_of_v<tTuple2<float>, Vector2f>);
static_assert(!std::is_constructible_v<Vector2f, float> && !std::is_convertible_v<int, Vector2d>);
static_assert(offsetof(Vector2f, x) == 0 && offsetof(Vector2f, y) == 4);
static_assert(offsetof(Vector2d, x) == 0 && offsetof(Vector2d, y) == 8);
// What the arithmetic returns.
static_assert(std::is_same_v<decltype(-Vector2f()), Vector2f>);
static_assert(noexcept(-Vector2f()));
static_assert(std::is_same_v<decltype(2.0f * Vector2f()), Vector2f>);
static_assert(noexcept(2.0f * Vector2f()));
static_assert(std::is_same_v<decltype(Vector2d() / 2.0), Vector2d>);
static_assert(noexcept(Vector2d() / 2.0));
static_assert(std::is_same_v<decltype(Vector2d().Dot(Vector2d())), double>);
static_assert(noexcept(Vector2d().Dot(Vector2d())));
static_assert(std::is_same_v<decltype(Vector2f().Length()), float>);
static_assert(noexcept(Vector2f().Length()));
static_assert(std::is_same_v<decltype(std::declval<Vector2f&>().Normalise()), Vector2f&>);
static_assert(std::is_same_v<decltype(std::declval<Vector2f&>() += Vector2f()), Vector2f&>);
static_assert(std::is_same_v<decltype(std::declval<Vector2f&>() /= 2.0f), Vector2f&>);
static_assert(std::is_same_v<decltype(Vector2d().IsInfinite()), bool>);
static_assert(noexcept(Vector2d().IsInfinite()));
// Known to the compiler.
static_assert((Vector2f(1, 2) + 2.0f * Vector2f(3, 4))[1] == 10.0f && Vector2d(1, 2).Dot({3, 4}) == 11.0);

TYPED_TEST(Vector2StreamTest, IsItsComponentsAndNothingElse)
{
    bv::test::ExpectPlainLayout<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, SerialisesRawNativeBytes)
{
    bv::test::ExpectRawNativeBytes<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, WritesAndReadsEachComponentOnce)
{
    bv::test::ExpectOneWriteAndOneReadForEachComponent<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, WritesAndReadsUnformatted)
{
    bv::test::ExpectUnformattedStreams<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, ReadsBackTheSameBits)
{
    bv::test::ExpectReadingBackTheSameBits<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, KeepsWhatAShortStreamDoesNotReach)
{
    bv::test::ExpectAShortStreamToLeaveTheRestAlone<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, ReturnsAFailedStreamAsItIs)
{
    bv::test::ExpectAFailedStreamToBeReturnedAsItIs<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, PrintsItsComponentsJoinedByCommas)
{
    bv::test::ExpectComponentsJoinedByCommas<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, PrintsWithoutTheFormatOfTheTarget)
{
    bv::test::ExpectTextWithoutTheFormatOfTheTarget<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, IsPaddedAsOneText)
{
    bv::test::ExpectWidthAndFillOnceForTheWholeText<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, PrintsTheSameInEveryLocale)
{
    bv::test::ExpectTextThatNoLocaleChanges<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, PrintsFromEveryNamespace)
{
    bv::test::ExpectTextFromEveryNamespace<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2StreamTest, PrintsByTheOperatorOfTheMathsNamespace)
{
    std::ostringstream stream;
    EXPECT_EQ(&bv::maths::operator<<(stream, MakeSample<tVector2<TypeParam>>()), &stream);
    EXPECT_EQ(stream.str(), bv::test::SampleText<tVector2<TypeParam>>());
}

TYPED_TEST(Vector2Test, PrintsSpecialValuesAsTheStandardStreamDoes)
{
    bv::test::ExpectSpecialValuesAsTheStandardStreamPrintsThem<tVector2<TypeParam>>();
}

TEST(Vector2TextTest, IsPlainText)
{
    EXPECT_EQ(Text(Vector2f(2, 0.5f)), "2, 0.5");
    EXPECT_EQ(elsewhere::PrintTwo({1, 2.5f}, {3, -4}), "one 1, 2.5 other 3, -4");
    std::ostringstream stream;
    stream.width(12);
    stream << Vector2f(1, 2);
    EXPECT_EQ(stream.str(), "        1, 2");
}

TYPED_TEST(Vector2Test, IsZeroByDefault)
{
    bv::test::ExpectZeroByDefault<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2Test, IsMadeFromConsecutiveValuesOnRequest)
{
    bv::test::ExpectExplicitConstructionFromAPointer<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2Test, GivesItsComponentsByNameAndByIndex)
{
    bv::test::ExpectAccessByNameAndIndex<tVector2<TypeParam>>();
}

TYPED_TEST(Vector2Test, CopiesAreEqualAndIndependent)
{
    auto original = MakeSample<tVector2<TypeParam>>();
    auto const copy(original);
    tVector2<TypeParam> assigned;
    assigned = original;
    original.x = 9;
    ExpectSameBits(copy, MakeSample<tVector2<TypeParam>>());
    ExpectSameBits(assigned, MakeSample<tVector2<TypeParam>>());
    EXPECT_NE(original, copy);
}

TYPED_TEST(Vector2Test, IsEqualWhereEveryComponentIs)
{
    bv::test::ExpectEqualityComponentByComponent<tVector2<TypeParam>>();
}

TEST(Vector2ConversionTest, RoundsToNearestAndWidensExactly)
{
    ExpectSameBits(Vector2f(Vector2d(0.1, 1 + 0x1p-24)), {0.1f, 1.0f}); // a tie goes to even
    ExpectSameBits(Vector2f(Vector2d(1e300, -0.0)), {INF<float>, -0.0f});
    ExpectSameBits(Vector2d(Vector2f(0.1f, 0x1p-149f)), {0x1.99999Ap-4, 0x1p-149});
}

TYPED_TEST(Vector2Test, AddsAndSubtractsComponentByComponent)
{
    tVector2<TypeParam> const a(1, 2);
    tVector2<TypeParam> const b(10, -20);
    ExpectSameBits(a + b, {11, -18});
    ExpectSameBits(a - b, {-9, 22});
    tVector2<TypeParam> c = a;
    EXPECT_EQ(&(c += b), &c);
    ExpectSameBits(c, {11, -18});
    EXPECT_EQ(&(c -= a), &c);
    ExpectSameBits(c, b);
}

TYPED_TEST(Vector2Test, NegatesEveryComponentAndTheSignOfZeros)
{
    using T = TypeParam;
    ExpectSameBits(-tVector2<T>(1, -2), {-1, 2});
    ExpectSameBits(-tVector2<T>(0, -T{0}), {-T{0}, 0});
}

TYPED_TEST(Vector2Test, MultipliesByAScalarOnEitherSide)
{
    tVector2<TypeParam> const a(1, -2);
    ExpectSameBits(a * TypeParam{3}, {3, -6});
    ExpectSameBits(TypeParam{3} * a, {3, -6});
    ExpectSameBits(a * 3, {3, -6}); // an integer will do
    ExpectSameBits(3 * a, {3, -6});
    tVector2<TypeParam> b = a;
    EXPECT_EQ(&(b *= TypeParam{3}), &b);
    ExpectSameBits(b, {3, -6});
}

TYPED_TEST(Vector2Test, MultipliesAndDividesByAVectorComponentByComponent)
{
    tVector2<TypeParam> const a(6, -8);
    tVector2<TypeParam> const b(3, 4);
    ExpectSameBits(a * b, {18, -32});
    ExpectSameBits(a / b, {2, -2});
    tVector2<TypeParam> c = a;
    EXPECT_EQ(&(c *= b), &c);
    ExpectSameBits(c, {18, -32});
    EXPECT_EQ(&(c /= b), &c);
    ExpectSameBits(c, a);
}

TYPED_TEST(Vector2Test, DividesTrulyByAScalar)
{
    using T = TypeParam;
    // 41 (float) and 49 (double) times their rounded reciprocals are less than 1.
    T const divisor = std::is_same_v<T, float> ? T{41} : T{49};
    ASSERT_NE(divisor * (T{1} / divisor), T{1});
    tVector2<T> a(divisor, -divisor);
    ExpectSameBits(a / divisor, {1, -1});
    EXPECT_EQ(&(a /= divisor), &a);
    ExpectSameBits(a, {1, -1});
}

TYPED_TEST(Vector2Test, DividesByZeroAsTheArithmeticDoes)
{
    using T = TypeParam;
    ExpectSameBits(tVector2<T>(1, -2) / T{0}, {INF<T>, -INF<T>});
    ExpectSameBits(tVector2<T>(1, 0) / T{0}, {INF<T>, QUIET_NAN<T>});
    ExpectSameBits(tVector2<T>(1, 2) / tVector2<T>(-T{0}, 2), {-INF<T>, 1});
}

TYPED_TEST(Vector2Test, OperandsMayBeTheVectorItself)
{
    using V = tVector2<TypeParam>;
    V v(2, 3);
    V const& same = v;
    ExpectSameBits(v += same, V(4, 6));
    ExpectSameBits(v *= same, V(16, 36));
    ExpectSameBits(v /= v.x, V(1, 2.25));
    ExpectSameBits(v *= v.y, V(2.25, 5.0625));
    ExpectSameBits(v /= same, V(1, 1));
    ExpectSameBits(v -= same, V(0, 0));
}

TYPED_TEST(Vector2Test, DotSumsFromXToY)
{
    using T = TypeParam;
    EXPECT_EQ((tVector2<T>(1, 2).Dot({10, 20})), T{50}); // 10 + 40
    EXPECT_EQ((tVector2<T>(3, -2).Dot({2, 3})), T{0});
    T const epsilon = EPSILON<T>;
    // Both products are rounded before they are added: (1 + e)^2 loses its e^2.
    EXPECT_EQ((tVector2<T>(1 + epsilon, 1 + 2 * epsilon).Dot({1 + epsilon, -1})), T{0});
}

TYPED_TEST(Vector2Test, LengthIsTheRootOfTheSquaredLength)
{
    using T = TypeParam;
    EXPECT_EQ((tVector2<T>(3, -4).LengthSquared()), T{25});
    EXPECT_EQ((tVector2<T>(3, -4).Length()), T{5});
    EXPECT_EQ((tVector2<T>(0, 0).Length()), T{0});
    EXPECT_EQ((tVector2<T>(1, 1).Length()), std::sqrt(T{2}));
    EXPECT_EQ((tVector2<T>(-INF<T>, 1).Length()), INF<T>);
    EXPECT_TRUE(std::isnan((tVector2<T>(QUIET_NAN<T>, 1).Length())));
}

TYPED_TEST(Vector2Test, LengthOverflowsAndUnderflowsWithItsSquare)
{
    using T = TypeParam;
    EXPECT_EQ((tVector2<T>(LARGEST<T>, 0).Length()), INF<T>);
    EXPECT_EQ((tVector2<T>(SMALLEST_NORMAL<T>, 0).Length()), T{0});
}

TYPED_TEST(Vector2Test, NormalisesByTheReciprocalOfTheLength)
{
    using T = TypeParam;
    tVector2<T> v(3, -4);
    T const fifth = T{1} / T{5};
    ExpectSameBits(v.Normalised(), {3 * fifth, -4 * fifth});
    ExpectSameBits(v, {3, -4});
    EXPECT_EQ(&v.Normalise(), &v);
    ExpectSameBits(v, {3 * fifth, -4 * fifth});
    // A product with the reciprocal, not a quotient: that would be 1.
    T const length = std::is_same_v<T, float> ? T{41} : T{49};
    T const product = length * (T{1} / length);
    ASSERT_NE(product, T{1});
    ExpectSameBits(tVector2<T>(0, length).Normalised(), {0, product});
}

TYPED_TEST(Vector2Test, NormalisingZeroOrInfinityFollowsTheArithmetic)
{
    using T = TypeParam;
    ExpectSameBits(tVector2<T>(0, 0).Normalised(), {QUIET_NAN<T>, QUIET_NAN<T>});
    ExpectSameBits(tVector2<T>(INF<T>, -1).Normalised(), {QUIET_NAN<T>, -T{0}});
    T const smallest = SMALLEST_NORMAL<T>; // its square vanishes
    ExpectSameBits(tVector2<T>(smallest, -smallest).Normalised(), {INF<T>, -INF<T>});
}

TYPED_TEST(Vector2Test, IsInfiniteWhereEveryComponentIsPlusInfinity)
{
    using T = TypeParam;
    T const values[] = {INF<T>, -INF<T>, QUIET_NAN<T>, T{1}, LARGEST<T>};
    for (T const x : values)
        for (T const y : values)
            EXPECT_EQ((tVector2<T>(x, y).IsInfinite()), x == INF<T> && y == INF<T>) << x << ", " << y;
    EXPECT_TRUE((tVector2<T>(INF<T>, INF<T>).IsInfinite()));
    EXPECT_FALSE((tVector2<T>(INF<T>, 1).IsInfinite()));
    EXPECT_FALSE((tVector2<T>(-INF<T>, -INF<T>).IsInfinite()));
}
} // namespace
