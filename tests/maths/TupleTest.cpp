#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sstream>
#include <type_traits>

#include <gtest/gtest.h>

#include "ComponentChecks.h"
#include "bv/maths/Forward.h"
#include "support/Numbers.h"
#include "values/TupleHashValues.h"

namespace elsewhere
{

/// Not a template, so that both kinds of lookup happen at once.
std::string PrintBoth(bv::maths::tTuple2<int> const& two, bv::maths::tTuple3<double> const& three)
{
    std::ostringstream stream;
    stream << Label{"two "} << two << Label{" three "} << three;
    return stream.str();
}

} // namespace elsewhere

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename V>
class TupleTest : public testing::Test
{
};

using Tuples = testing::Types<Tuple2i, Tuple2u, Tuple2f, Tuple2d, Tuple3i, Tuple3u, Tuple3f, Tuple3d>;
TYPED_TEST_SUITE(TupleTest, Tuples);

template <typename V>
class FloatingTupleTest : public testing::Test
{
};

using FloatingTuples = testing::Types<Tuple2f, Tuple2d, Tuple3f, Tuple3d>;
TYPED_TEST_SUITE(FloatingTupleTest, FloatingTuples);

// Precisions convert where it is asked for, and nothing else converts.
static_assert(std::is_constructible_v<Tuple2f, Tuple2d> && std::is_constructible_v<Tuple2d, Tuple2f>);
static_assert(std::is_constructible_v<Tuple3f, Tuple3d> && std::is_constructible_v<Tuple3d, Tuple3f>);
static_assert(!std::is_convertible_v<Tuple2f, Tuple2d> && !std::is_convertible_v<Tuple2d, Tuple2f>);
static_assert(!std::is_convertible_v<Tuple3f, Tuple3d> && !std::is_convertible_v<Tuple3d, Tuple3f>);
static_assert(!std::is_constructible_v<Tuple2i, Tuple2u> && !std::is_constructible_v<Tuple2u, Tuple2i>);
static_assert(!std::is_constructible_v<Tuple2i, Tuple2f> && !std::is_constructible_v<Tuple2f, Tuple2i>);
static_assert(!std::is_constructible_v<Tuple3d, Tuple3u> && !std::is_constructible_v<Tuple3u, Tuple3d>);
static_assert(!std::is_constructible_v<Tuple2f, Tuple3f> && !std::is_constructible_v<Tuple3f, Tuple2f>);
static_assert(!std::is_convertible_v<int, Tuple2i> && !std::is_constructible_v<Tuple2f, float>);
static_assert(!std::is_assignable_v<Tuple2f&, Tuple2d> && !std::is_assignable_v<Tuple3d&, Tuple3f>);
static_assert(offsetof(Tuple2i, x) == 0 && offsetof(Tuple2i, y) == 4);
static_assert(offsetof(Tuple2d, x) == 0 && offsetof(Tuple2d, y) == 8);
static_assert(offsetof(Tuple3u, x) == 0 && offsetof(Tuple3u, y) == 4 && offsetof(Tuple3u, z) == 8);
static_assert(offsetof(Tuple3d, x) == 0 && offsetof(Tuple3d, y) == 8 && offsetof(Tuple3d, z) == 16);
static_assert(Tuple3i(1, 2, 3)[2] == 3 && Tuple2f(Tuple2d(0.5, 2.0)).x == 0.5f); // known to the compiler

TYPED_TEST(TupleTest, IsItsComponentsAndNothingElse)
{
    bv::test::ExpectPlainLayout<TypeParam>();
}

TYPED_TEST(TupleTest, IsZeroByDefault)
{
    bv::test::ExpectZeroByDefault<TypeParam>();
}

TYPED_TEST(TupleTest, IsMadeFromConsecutiveValuesOnRequest)
{
    bv::test::ExpectExplicitConstructionFromAPointer<TypeParam>();
}

TYPED_TEST(TupleTest, GivesItsComponentsByNameAndByIndex)
{
    bv::test::ExpectAccessByNameAndIndex<TypeParam>();
}

TYPED_TEST(TupleTest, CopiesAreEqualAndIndependent)
{
    TypeParam original = MakeSample<TypeParam>();
    TypeParam copy(original);
    TypeParam assigned;
    assigned = original;
    original.x = 9;
    EXPECT_EQ(copy, MakeSample<TypeParam>());
    EXPECT_EQ(assigned, MakeSample<TypeParam>());
    EXPECT_NE(original, copy);
}

TYPED_TEST(TupleTest, IsEqualWhereEveryComponentIs)
{
    bv::test::ExpectEqualityComponentByComponent<TypeParam>();
}

/// Whether there is an opposite.
template <typename V>
concept Negates = requires(V const& value)
{
    -value;
};

static_assert(Negates<Tuple2i> && Negates<Tuple3i> && Negates<Tuple2f> && Negates<Tuple3d>);
static_assert(!Negates<Tuple2u> && !Negates<Tuple3u>);
static_assert(std::is_same_v<decltype(-Tuple2i()), Tuple2i>&& noexcept(-Tuple3d()));
static_assert((Tuple3i(1, 2, 3) * 2 + Tuple3i(1, 1, 1) - Tuple3i(0, 0, 7) / 2)[2] == 4); // 6 + 1 - 3, while compiling

TYPED_TEST(TupleTest, AddsAndSubtractsComponentByComponent)
{
    TypeParam const a = Make<TypeParam>({7, 9, 12});
    TypeParam const b = Make<TypeParam>({2, 4, 5});
    static_assert(std::is_same_v<decltype(a + b), TypeParam>&& noexcept(a + b)&& noexcept(a - b));
    EXPECT_EQ(a + b, Make<TypeParam>({9, 13, 17}));
    EXPECT_EQ(a - b, Make<TypeParam>({5, 5, 7}));
    TypeParam sum = a;
    EXPECT_EQ(&(sum += b), &sum);
    EXPECT_EQ(sum, Make<TypeParam>({9, 13, 17}));
    EXPECT_EQ(&(sum -= a), &sum);
    EXPECT_EQ(sum, b);
}

TYPED_TEST(TupleTest, IsMultipliedAndDividedByAScalar)
{
    Component<TypeParam> const three = 3;
    TypeParam const a = Make<TypeParam>({6, 9, 12});
    static_assert(std::is_same_v<decltype(a * three), TypeParam>&& noexcept(a * three)&& noexcept(a / three));
    EXPECT_EQ(a * three, Make<TypeParam>({18, 27, 36}));
    EXPECT_EQ(a / three, Make<TypeParam>({2, 3, 4}));
    TypeParam product = a;
    EXPECT_EQ(&(product *= three), &product);
    EXPECT_EQ(product, Make<TypeParam>({18, 27, 36}));
    EXPECT_EQ(&(product /= three), &product);
    EXPECT_EQ(product, a);
}

TYPED_TEST(TupleTest, ReadsItsOperandsBeforeItChanges)
{
    TypeParam const a = Make<TypeParam>({2, 4, 6});
    TypeParam value = a;
    value /= value.x;
    EXPECT_EQ(value, Make<TypeParam>({1, 2, 3}));
    value = a;
    value *= value.x;
    EXPECT_EQ(value, Make<TypeParam>({4, 8, 12}));
    value = a;
    TypeParam const& same = value;
    value += same;
    EXPECT_EQ(value, Make<TypeParam>({4, 8, 12}));
    value -= same;
    EXPECT_EQ(value, TypeParam());
}

TYPED_TEST(FloatingTupleTest, IsDividedComponentByComponentWithoutAReciprocal)
{
    using T = Component<TypeParam>;
    T const third = T{1} / T{3};
    EXPECT_EQ(Memory(Make<TypeParam>({1, 5, 0}) / T{3}), Memory(Make<TypeParam>({third, T{5} / T{3}, 0})));
    EXPECT_NE(T{5} / T{3}, T{5} * third); // else this test would tell nothing
    T const infinity = std::numeric_limits<T>::infinity();
    EXPECT_EQ(Make<TypeParam>({1, -1, 1}) / T{0}, Make<TypeParam>({infinity, -infinity, infinity}));
}

TYPED_TEST(FloatingTupleTest, ChangesTheSignOfZerosToo)
{
    using T = Component<TypeParam>;
    EXPECT_EQ(Memory(-Make<TypeParam>({T(-0.0), 0, 2})), Memory(Make<TypeParam>({0, T(-0.0), -2})));
}

TEST(TupleArithmeticTest, OfIntegersIsThatOfTheLanguage)
{
    EXPECT_EQ(Tuple3i(7, -7, 8) / 2, Tuple3i(3, -3, 4)); // cut towards zero
    EXPECT_EQ(Tuple2i(7, -7) / -2, Tuple2i(-3, 3));
    EXPECT_EQ(-Tuple3i(1, -2, 0), Tuple3i(-1, 2, 0));
    EXPECT_EQ(-Tuple2i(1, -2), Tuple2i(-1, 2));
    EXPECT_EQ(Tuple3u(1, 0, 5) - Tuple3u(2, 1, 5), Tuple3u(4294967295, 4294967295, 0)); // modulo 2^32
    EXPECT_EQ(Tuple2u(2147483648, 3) * 2, Tuple2u(0, 6));
    EXPECT_EQ(Tuple2u(4294967295, 7) / 2, Tuple2u(2147483647, 3));
}

TYPED_TEST(TupleTest, SerialisesRawNativeBytes)
{
    bv::test::ExpectRawNativeBytes<TypeParam>();
}

TYPED_TEST(TupleTest, WritesAndReadsEachComponentOnce)
{
    bv::test::ExpectOneWriteAndOneReadForEachComponent<TypeParam>();
}

TYPED_TEST(TupleTest, WritesAndReadsUnformatted)
{
    bv::test::ExpectUnformattedStreams<TypeParam>();
}

TYPED_TEST(TupleTest, ReadsBackTheSameBits)
{
    bv::test::ExpectReadingBackTheSameBits<TypeParam>();
}

TYPED_TEST(TupleTest, KeepsWhatAShortStreamDoesNotReach)
{
    bv::test::ExpectAShortStreamToLeaveTheRestAlone<TypeParam>();
}

TYPED_TEST(TupleTest, ReturnsAFailedStreamAsItIs)
{
    bv::test::ExpectAFailedStreamToBeReturnedAsItIs<TypeParam>();
}

TYPED_TEST(TupleTest, PrintsItsComponentsJoinedByCommas)
{
    bv::test::ExpectComponentsJoinedByCommas<TypeParam>();
}

TYPED_TEST(TupleTest, PrintsWithoutTheFormatOfTheTarget)
{
    bv::test::ExpectTextWithoutTheFormatOfTheTarget<TypeParam>();
}

TYPED_TEST(TupleTest, IsPaddedAsOneText)
{
    bv::test::ExpectWidthAndFillOnceForTheWholeText<TypeParam>();
}

TYPED_TEST(TupleTest, PrintsTheSameInEveryLocale)
{
    bv::test::ExpectTextThatNoLocaleChanges<TypeParam>();
}

TYPED_TEST(TupleTest, PrintsFromEveryNamespace)
{
    bv::test::ExpectTextFromEveryNamespace<TypeParam>();
}

TYPED_TEST(TupleTest, PrintsByTheOperatorAtGlobalScope)
{
    std::ostringstream stream;
    EXPECT_EQ(&::operator<<(stream, MakeSample<TypeParam>()), &stream);
    EXPECT_EQ(stream.str(), bv::test::SampleText<TypeParam>());
}

TYPED_TEST(FloatingTupleTest, PrintsSpecialValuesAsTheStandardStreamDoes)
{
    bv::test::ExpectSpecialValuesAsTheStandardStreamPrintsThem<TypeParam>();
}

TEST(TupleTextTest, IsPlainText)
{
    EXPECT_EQ(Text(Tuple2i(3, -4)), "3, -4");
    EXPECT_EQ(Text(Tuple3u(0, 4294967295, 10)), "0, 4294967295, 10");
    EXPECT_EQ(Text(Tuple2f(0.5f, 1234567)), "0.5, 1.23457e+06");
    EXPECT_EQ(Text(Tuple3d(2, 0.1, 100000)), "2, 0.1, 100000");
    EXPECT_EQ(elsewhere::PrintBoth({1, 2}, {0.5, 1, 2}), "two 1, 2 three 0.5, 1, 2");
}

TEST(TupleConversionTest, RoundsToNearest)
{
    EXPECT_EQ(Tuple2f(Tuple2d(0.1, 1 + 0x1p-24)).x, 0.1f);
    EXPECT_EQ(Tuple2f(Tuple2d(0.1, 1 + 0x1p-24)).y, 1.0f);             // a tie goes to even
    EXPECT_EQ(Tuple3f(Tuple3d(1 + 0x1.8p-23, 2, -3)).x, 1 + 0x1p-22f); // and so does this one
    EXPECT_EQ(Tuple3f(Tuple3d(1e300, 2, -3)).x, INF<float>);
    EXPECT_EQ(Tuple3f(Tuple3d(1, 2, -3)).y, 2.0f);
    EXPECT_EQ(Tuple3f(Tuple3d(1, 2, -3)).z, -3.0f);
}

TEST(TupleConversionTest, WidensExactly)
{
    EXPECT_EQ(Tuple2d(Tuple2f(0.1f, -2)).x, 0x1.99999Ap-4);
    EXPECT_EQ(Tuple2d(Tuple2f(0.1f, -2)).y, -2.0);
    EXPECT_EQ(Tuple3d(Tuple3f(1, 0x1p-149f, 3)).y, 0x1p-149);
    EXPECT_EQ(Tuple3d(Tuple3f(1, 0x1p-149f, 3)).z, 3.0);
}

/// The number with these bits, whose bytes stand as on a little-endian machine: so, hashes of bytes are the same.
template <typename T, typename Pattern>
T LeastSignificantFirst(Pattern bits)
{
    static_assert(sizeof(T) == sizeof(Pattern));
    std::string const bytes = Native(Memory(bits), sizeof(bits));
    T number;
    std::memcpy(&number, bytes.data(), sizeof(number));
    return number;
}

/// Compares the hashes of tuples with values that were computed elsewhere.
template <typename V, typename Values>
void ExpectHashes(Values const& values)
{
    for (auto const& value : values)
    {
        V tuple;
        for (std::size_t i = 0; i < COUNT<V>; ++i)
            tuple[i] = LeastSignificantFirst<Component<V>>(value.components[i]);
        EXPECT_EQ(tuple.GetHash32(), value.hash32) << tuple;
        EXPECT_EQ(tuple.GetHash8(), value.hash8) << tuple;
    }
}

TEST(TupleHashTest, OfPairsAgreesWithTheChainOfHashes)
{
    ExpectHashes<Tuple2i>(bv::test::TUPLE2_INTEGER_HASHES);
    ExpectHashes<Tuple2u>(bv::test::TUPLE2_INTEGER_HASHES); // equal bits hash alike
    ExpectHashes<Tuple2f>(bv::test::TUPLE2_FLOAT_HASHES);
    ExpectHashes<Tuple2d>(bv::test::TUPLE2_DOUBLE_HASHES);
}

TEST(TupleHashTest, OfTriplesAgreesWithTheChainOfHashes)
{
    ExpectHashes<Tuple3i>(bv::test::TUPLE3_INTEGER_HASHES);
    ExpectHashes<Tuple3u>(bv::test::TUPLE3_INTEGER_HASHES);
    ExpectHashes<Tuple3f>(bv::test::TUPLE3_FLOAT_HASHES);
    ExpectHashes<Tuple3d>(bv::test::TUPLE3_DOUBLE_HASHES);
}

TEST(TupleHashTest, OfOneAndTwoIsKnown)
{
    Tuple2i const signedPair(LeastSignificantFirst<int>(1), LeastSignificantFirst<int>(2));
    EXPECT_EQ(signedPair.GetHash32(), 3800763682u);
    EXPECT_EQ(signedPair.GetHash8(), 204);
    Tuple2u const unsignedPair(LeastSignificantFirst<unsigned int>(1), LeastSignificantFirst<unsigned int>(2));
    EXPECT_EQ(unsignedPair.GetHash32(), 3800763682u);
    EXPECT_EQ(unsignedPair.GetHash8(), 204);
}

TEST(TupleHashTest, DependsOnTheOrderOfTheComponents)
{
    EXPECT_NE(Tuple2f(1, 2).GetHash32(), Tuple2f(2, 1).GetHash32());
    EXPECT_NE(Tuple2f(1, 2).GetHash8(), Tuple2f(2, 1).GetHash8());
}

TEST(TupleHashTest, TellsTheZerosApart)
{
    EXPECT_EQ(Tuple2f(0.0f, 1.0f), Tuple2f(-0.0f, 1.0f));
    EXPECT_NE(Tuple2f(0.0f, 1.0f).GetHash32(), Tuple2f(-0.0f, 1.0f).GetHash32());
    EXPECT_NE(Tuple2f(0.0f, 1.0f).GetHash8(), Tuple2f(-0.0f, 1.0f).GetHash8());
    EXPECT_NE(Tuple3d(1.0, 0.0, 1.0).GetHash32(), Tuple3d(1.0, -0.0, 1.0).GetHash32());
    EXPECT_NE(Tuple3d(1.0, 0.0, 1.0).GetHash8(), Tuple3d(1.0, -0.0, 1.0).GetHash8());
}

TEST(TupleHashTest, HasTheWidthOfItsName)
{
    static_assert(std::is_same_v<decltype(Tuple2i().GetHash32()), unsigned int>);
    static_assert(std::is_same_v<decltype(Tuple3d().GetHash8()), unsigned char>);
    static_assert(noexcept(Tuple2i().GetHash32()));
    static_assert(noexcept(Tuple3d().GetHash8()));
    EXPECT_EQ(Tuple2i().GetHash32(), 0u); // zeros mix to zero
    EXPECT_EQ(Tuple3d().GetHash32(), 0u);
}

} // namespace
