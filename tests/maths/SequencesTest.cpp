#include "bv/maths/Sequences.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <set>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "values/SequenceValues.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

static_assert(GetSobolPoint<double>(3).x == 0.75 && GetSobolPoint<float>(3).y == 0.25f); // known to the compiler
static_assert(GetRadicalInverse<double>(6, 2) == 0.375 && GetHaltonPoint<float>(1).x == 0.5f);
static_assert(GetR2Point<float>(0).x == 0.5f && ShiftAround(0.75, 0.5) == 0.25);
static_assert(GetOwenSobolPoint<double>(9, 1).x != GetOwenSobolPoint<double>(9, 2).x);
static_assert(GetShuffledIndex(9, 1) != GetShuffledIndex(9, 2));
static_assert(noexcept(GetHalton<float>(1, 2)) && noexcept(GetOwenSobol<double>(1, 2, 3)));

template <typename T>
using Point = tVector2<T>;

/// A sequence of points by index.
template <typename T>
using Sequence = std::function<Point<T>(std::uint32_t)>;

/// Seeds of every kind, small ones that differ in a bit among them.
constexpr std::uint32_t SEEDS[] = {0, 1, 2, 3, 42, 0x80000000U, 0xDEADBEEFU, 0xFFFFFFFFU};

/// Indices at which a run of 1024 or fewer starts.
constexpr std::uint32_t STARTS[] = {0, 1024, 7U << 20, 0xFFFFFC00U};

template <typename T>
class SequencesTest : public testing::Test
{
public:
    static T Expected(std::uint32_t single, std::uint64_t twice)
    {
        if constexpr (std::is_same_v<T, float>)
            return FromBits<float>(single);
        else
            return FromBits<double>(twice);
    }
};

TYPED_TEST_SUITE(SequencesTest, Precisions);

TYPED_TEST(SequencesTest, RadicalInversesMirrorTheDigits)
{
    using T = TypeParam;
    EXPECT_EQ(GetRadicalInverse<T>(0, 2), T{0});
    EXPECT_EQ(GetRadicalInverse<T>(6, 2), T{0.375});          // 110 gives 0.011
    EXPECT_EQ(GetRadicalInverse<T>(5, 3), T(7.0 / 9));        // 12 gives 0.21
    EXPECT_EQ(GetRadicalInverse<T>(1234, 10), T(4321 / 1e4)); // 0.4321
    EXPECT_EQ(GetRadicalInverse<T>(10, 16), T{0.625});        // A gives 0.A
    EXPECT_EQ(GetRadicalInverse<T>(0x10, 16), T(0x1p-8));     // 10 gives 0.01
}

TYPED_TEST(SequencesTest, RadicalInversesAreTheExactOnesRounded)
{
    using T = TypeParam;
    for (auto const& value : RADICAL_INVERSES)
    {
        SCOPED_TRACE(testing::Message() << "index " << value.index << ", base " << value.base);
        T const expected = TestFixture::Expected(value.single, value.twice);
        ExpectSameBits(GetRadicalInverse<T>(value.index, value.base), expected);
        auto const* const prime = std::find(std::begin(PRIMES), std::end(PRIMES), value.base);
        if (prime != std::end(PRIMES))
            ExpectSameBits(GetHalton<T>(value.index, static_cast<unsigned int>(prime - std::begin(PRIMES))), expected);
        if (value.base == 2)
            ExpectSameBits(GetHaltonPoint<T>(value.index).x, expected);
        if (value.base == 3)
            ExpectSameBits(GetHaltonPoint<T>(value.index).y, expected);
    }
}

TYPED_TEST(SequencesTest, HaltonDimensionsAreTheRadicalInversesInTheFirstPrimes)
{
    using T = TypeParam;
    static_assert(std::size(PRIMES) == HALTON_DIMENSIONS);
    Random random(1);
    for (unsigned int dimension = 0; dimension < HALTON_DIMENSIONS; ++dimension)
        for (int i = 0; i < 200; ++i)
        {
            std::uint32_t const index = i == 0 ? 0xFFFFFFFFU : random() >> random.Below(32);
            ExpectSameBits(GetHalton<T>(index, dimension), GetRadicalInverse<T>(index, PRIMES[dimension]));
        }
}

TYPED_TEST(SequencesTest, ABaseMayBeAnyFromTwoOn)
{
    using T = TypeParam;
    EXPECT_TRUE(std::isnan(GetRadicalInverse<T>(7, 0)));
    EXPECT_TRUE(std::isnan(GetRadicalInverse<T>(7, 1)));
    // One digit: a share of the base. As many halves as 2^32 - 1 has would be 1 after rounding.
    constexpr std::uint32_t LARGEST_BASE = 0xFFFFFFFFU;
    ExpectSameBits(GetRadicalInverse<T>(3, LARGEST_BASE), static_cast<T>(3 / 4294967295.0));
    ExpectSameBits(GetRadicalInverse<T>(LARGEST_BASE, LARGEST_BASE), static_cast<T>(1 / 4294967295.0 / 4294967295.0));
    ExpectSameBits(GetRadicalInverse<float>(LARGEST_BASE - 1, LARGEST_BASE), std::nextafter(1.0F, 0.0F));
    ExpectSameBits(GetRadicalInverse<float>(LARGEST_BASE, 2), std::nextafter(1.0F, 0.0F));
    ExpectSameBits(GetHaltonPoint<float>(LARGEST_BASE).x, std::nextafter(1.0F, 0.0F));
    ExpectSameBits(GetRadicalInverse<double>(LARGEST_BASE, 2), 1 - 0x1p-32);
}

TYPED_TEST(SequencesTest, ADimensionBeyondTheLastIsNaN)
{
    using T = TypeParam;
    for (unsigned int const dimension : {64U, 65U, 0xFFFFFFFFU})
    {
        EXPECT_TRUE(std::isnan(GetHalton<T>(1, dimension)));
        EXPECT_TRUE(std::isnan(GetSobol<T>(1, dimension)));
        EXPECT_TRUE(std::isnan(GetOwenSobol<T>(1, dimension, 1)));
    }
    EXPECT_EQ(GetHalton<T>(1, 63), static_cast<T>(1.0 / 311));
    EXPECT_EQ(GetSobol<T>(1, 63), T{0.5});
    EXPECT_LT(GetOwenSobol<T>(1, 63, 1), T{1});
}

TYPED_TEST(SequencesTest, R2PointsAreTheMultiplesOfThePlasticNumber)
{
    using T = TypeParam;
    for (auto const& value : R2_POINTS)
    {
        SCOPED_TRACE(testing::Message() << "index " << value.index);
        Point<T> const point = GetR2Point<T>(value.index);
        ExpectSameBits(point.x, TestFixture::Expected(value.x, value.xTwice));
        ExpectSameBits(point.y, TestFixture::Expected(value.y, value.yTwice));
    }
}

TYPED_TEST(SequencesTest, SobolPointsAreTheGeneratorMatricesTimesTheIndex)
{
    using T = TypeParam;
    for (auto const& value : SOBOL)
    {
        SCOPED_TRACE(testing::Message() << "index " << value.index << ", dimension " << value.dimension);
        ExpectSameBits(GetSobol<T>(value.index, value.dimension), TestFixture::Expected(value.single, value.twice));
        ExpectSameBits(GetOwenSobol<T>(value.index, value.dimension, value.seed),
                       TestFixture::Expected(value.owen, value.owenTwice));
    }
}

TYPED_TEST(SequencesTest, PointsOfThePlaneAreTheFirstTwoDimensions)
{
    using T = TypeParam;
    Random random(2);
    for (std::uint32_t i = 0; i < 5000; ++i)
    {
        std::uint32_t const index = i < 1000 ? i : random();
        std::uint32_t const seed = random();
        ExpectSameBits(GetSobolPoint<T>(index), Point<T>(GetSobol<T>(index, 0), GetSobol<T>(index, 1)));
        ExpectSameBits(GetOwenSobolPoint<T>(index, seed),
                       Point<T>(GetOwenSobol<T>(index, 0, seed), GetOwenSobol<T>(index, 1, seed)));
        ExpectSameBits(GetHaltonPoint<T>(index), Point<T>(GetHalton<T>(index, 0), GetHalton<T>(index, 1)));
    }
}

TEST(SequencesTest, AFloatHasTheFirstDigitsOfTheDouble)
{
    auto const cut = [](double number) { return static_cast<float>(std::floor(number * 0x1p24) * 0x1p-24); };
    Random random(3);
    for (int i = 0; i < 5000; ++i)
    {
        std::uint32_t const index = random();
        std::uint32_t const seed = random();
        unsigned int const dimension = random.Below(SOBOL_DIMENSIONS);
        std::uint64_t const longIndex = std::uint64_t{seed} << 32 | index;
        ExpectSameBits(GetSobol<float>(index, dimension), cut(GetSobol<double>(index, dimension)));
        ExpectSameBits(GetOwenSobol<float>(index, dimension, seed), cut(GetOwenSobol<double>(index, dimension, seed)));
        ExpectSameBits(GetR2Point<float>(longIndex).x, cut(GetR2Point<double>(longIndex).x));
        ExpectSameBits(GetR2Point<float>(longIndex).y, cut(GetR2Point<double>(longIndex).y));
    }
}

TYPED_TEST(SequencesTest, EveryNumberLiesFromZeroToBelowOne)
{
    using T = TypeParam;
    auto const expect = [](T number) { EXPECT_TRUE(number >= T{0} && number < T{1}) << number; };
    Random random(4);
    for (int i = 0; i < 20000; ++i)
    {
        std::uint32_t const index = i < 64 ? 0xFFFFFFFFU - static_cast<std::uint32_t>(i) : random();
        unsigned int const dimension = random.Below(SOBOL_DIMENSIONS);
        expect(GetHalton<T>(index, dimension));
        expect(GetSobol<T>(index, dimension));
        expect(GetOwenSobol<T>(index, dimension, random()));
        expect(GetR2Point<T>(std::uint64_t{index} << random.Below(33)).x);
        expect(ShiftAround(static_cast<T>(random.Number<T>(0, 1)), std::nextafter(T{1}, T{0})));
    }
}

/// The number of the cell of 2^bits equal ones that a number of [0, 1) lies in.
template <typename T>
std::size_t CellOf(T number, unsigned int bits)
{
    return static_cast<std::size_t>(std::ldexp(number, static_cast<int>(bits)));
}

/// Whether in each of the 2^bits cells of the square, of every shape that halving gives, lie as many of the 2^k points
/// from a start on as its area says: 2^(k - bits).
template <typename T>
bool IsNet(Sequence<T> const& sequence, std::uint32_t start, unsigned int k, unsigned int bits)
{
    for (unsigned int bitsOfX = 0; bitsOfX <= bits; ++bitsOfX)
    {
        std::vector<unsigned int> counts(std::size_t{1} << bits);
        for (std::uint32_t i = 0; i < 1U << k; ++i)
        {
            Point<T> const point = sequence(start + i);
            ++counts[CellOf(point.x, bitsOfX) << (bits - bitsOfX) | CellOf(point.y, bits - bitsOfX)];
        }
        if (std::any_of(counts.begin(), counts.end(), [=](unsigned int count) { return count != 1U << (k - bits); }))
            return false;
    }
    return true;
}

TYPED_TEST(SequencesTest, EveryElementaryIntervalHoldsOneSobolPoint)
{
    using T = TypeParam;
    for (unsigned int k = 0; k <= 10; ++k)
        for (std::uint32_t const start : STARTS)
            EXPECT_TRUE(IsNet<T>(&GetSobolPoint<T>, start, k, k)) << k << " from " << start;
}

TYPED_TEST(SequencesTest, EveryElementaryIntervalHoldsOneScrambledPoint)
{
    using T = TypeParam;
    for (std::uint32_t const seed : SEEDS)
        for (unsigned int k = 0; k <= 10; ++k)
            for (std::uint32_t const start : STARTS)
            {
                SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << k << " from " << start);
                EXPECT_TRUE(IsNet<T>([=](auto i) { return GetOwenSobolPoint<T>(i, seed); }, start, k, k));
            }
}

TYPED_TEST(SequencesTest, ShuffledRunsAreNetsToo)
{
    using T = TypeParam;
    for (std::uint32_t const seed : SEEDS)
        EXPECT_TRUE(
            IsNet<T>([=](auto i) { return GetOwenSobolPoint<T>(GetShuffledIndex(i, seed), seed ^ 1); }, 512, 9, 9));
}

TYPED_TEST(SequencesTest, TheCheckOfNetsTellsOtherSequencesApart)
{
    using T = TypeParam;
    EXPECT_FALSE(IsNet<T>(&GetHaltonPoint<T>, 0, 8, 8));
    EXPECT_FALSE(IsNet<T>(&GetR2Point<T>, 0, 8, 8));
    EXPECT_FALSE(IsNet<T>(&GetSobolPoint<T>, 1, 8, 8)); // a start that is no multiple
}

TYPED_TEST(SequencesTest, EachSobolDimensionHasOnePointInEachEqualPart)
{
    using T = TypeParam;
    for (unsigned int dimension = 0; dimension < SOBOL_DIMENSIONS; ++dimension)
        for (std::uint32_t const start : STARTS)
        {
            std::set<std::size_t> plain;
            std::set<std::size_t> scrambled;
            for (std::uint32_t i = 0; i < 1024; ++i)
            {
                plain.insert(CellOf(GetSobol<T>(start + i, dimension), 10));
                scrambled.insert(CellOf(GetOwenSobol<T>(start + i, dimension, 5 * dimension + start), 10));
            }
            EXPECT_EQ(plain.size(), 1024U) << dimension;
            EXPECT_EQ(scrambled.size(), 1024U) << dimension;
        }
}

TYPED_TEST(SequencesTest, PairsOfDimensionsAreNetsOfTheQualityThatTheirDegreesSay)
{
    using T = TypeParam;
    // Degrees of the primitive polynomials modulo 2 in order: x + 1, one of degree 2, two of 3, two of 4, six of 5. The
    // quality of two is the sum of their degrees less one each (Sobol, 1967); that of the first dimension counts 0.
    constexpr unsigned int LESS_ONE[] = {0, 0, 1, 2, 2, 3, 3, 4, 4, 4, 4, 4};
    for (unsigned int first = 0; first < std::size(LESS_ONE); ++first)
        for (unsigned int second = first + 1; second < std::size(LESS_ONE); ++second)
        {
            unsigned int const quality = LESS_ONE[first] + LESS_ONE[second];
            auto const plain = [=](std::uint32_t i) { return Point<T>(GetSobol<T>(i, first), GetSobol<T>(i, second)); };
            auto const scrambled = [=](std::uint32_t i)
            { return Point<T>(GetOwenSobol<T>(i, first, 9), GetOwenSobol<T>(i, second, 9)); };
            EXPECT_TRUE(IsNet<T>(plain, 1024, 10, 10 - quality)) << first << ", " << second;
            EXPECT_TRUE(IsNet<T>(scrambled, 1024, 10, 10 - quality)) << first << ", " << second;
        }
}

TYPED_TEST(SequencesTest, RunsOfHaltonPointsFillTheCellsOfTheirBases)
{
    using T = TypeParam;
    // The product of 2^5 and 3^3: each of so many indices in a row has a cell of its own, wherever they start.
    for (std::uint32_t const start : {0U, 1U, 864U, 123456U})
    {
        std::set<std::pair<long, long>> cells;
        for (std::uint32_t i = start; i < start + 864; ++i)
        {
            Point<T> const point = GetHaltonPoint<T>(i);
            double const y = static_cast<double>(point.y) * 27 + 1e-4; // edges are rounded; no other is so near to them
            cells.emplace(static_cast<long>(point.x * T{32}), static_cast<long>(y));
        }
        EXPECT_EQ(cells.size(), 864U);
    }
}

/// How many binary digits behind the point two numbers have in common at the front.
template <typename T>
int CommonDigits(T a, T b, int most)
{
    int digits = 0;
    while (digits < most && std::floor(std::ldexp(a, digits + 1)) == std::floor(std::ldexp(b, digits + 1)))
        ++digits;
    return digits;
}

TYPED_TEST(SequencesTest, ScramblingKeepsHowManyDigitsTwoNumbersShare)
{
    using T = TypeParam;
    constexpr int MOST = sizeof(T) == sizeof(float) ? 24 : 32;
    Random random(5);
    for (int i = 0; i < 5000; ++i)
    {
        std::uint32_t const a = random();
        std::uint32_t const b = random.Below(4) == 0 ? random() : a ^ (random() << random.Below(32));
        unsigned int const dimension = random.Below(SOBOL_DIMENSIONS);
        std::uint32_t const seed = random() >> random.Below(32);
        EXPECT_EQ(CommonDigits(GetOwenSobol<T>(a, dimension, seed), GetOwenSobol<T>(b, dimension, seed), MOST),
                  CommonDigits(GetSobol<T>(a, dimension), GetSobol<T>(b, dimension), MOST));
    }
}

/// The sum of (count - expected)^2 / expected, and what five standard deviations above its mean are: for so many cells
/// less one of freedom f, f + 5 sqrt(2 f).
void ExpectEven(std::vector<unsigned int> const& counts)
{
    double total = 0;
    for (unsigned int const count : counts)
        total += count;
    double const expected = total / static_cast<double>(counts.size());
    double sum = 0;
    for (unsigned int const count : counts)
        sum += (count - expected) * (count - expected) / expected;
    double const freedom = static_cast<double>(counts.size()) - 1;
    EXPECT_LT(sum, freedom + 5 * std::sqrt(2 * freedom));
    EXPECT_GT(sum, freedom - 5 * std::sqrt(2 * freedom));
}

TYPED_TEST(SequencesTest, OverSeedsEachScrambledPointIsSpreadEvenly)
{
    using T = TypeParam;
    for (std::uint32_t const index : {0U, 1U, 2U, 77U, 0x12345678U})
    {
        std::vector<unsigned int> counts(64);
        std::vector<unsigned int> lowest(64);
        for (std::uint32_t seed = 0; seed < 6400; ++seed)
        {
            Point<T> const point = GetOwenSobolPoint<T>(index, seed);
            ++counts[CellOf(point.x, 3) * 8 + CellOf(point.y, 3)];
            // The last six digits that the type has.
            int const digits = std::numeric_limits<T>::digits;
            ++lowest[static_cast<std::size_t>(std::fmod(std::ldexp(point.x, digits), T{64}))];
        }
        ExpectEven(counts);
        ExpectEven(lowest);
    }
}

TEST(SequencesTest, ShuffledIndicesAreThoseOfTheScript)
{
    for (auto const& value : SHUFFLES)
        EXPECT_EQ(GetShuffledIndex(value.index, value.seed), value.place) << value.index << ", " << value.seed;
}

TEST(SequencesTest, ShuffledRunsAreRunsInAnotherOrder)
{
    for (std::uint32_t const seed : SEEDS)
        for (unsigned int k = 0; k <= 10; ++k)
        {
            std::set<std::uint32_t> places;
            for (std::uint32_t i = 0; i < 1U << k; ++i)
                places.insert(GetShuffledIndex((3U << k) + i, seed));
            EXPECT_EQ(places.size(), std::size_t{1} << k);
            EXPECT_EQ(*places.begin() >> k, *places.rbegin() >> k);
            EXPECT_EQ(*places.begin() & ((1U << k) - 1), 0U);
        }
}

/// Star discrepancy of points of the plane: the largest difference between the share of them in a box at the origin and
/// its area. L. De Clerck, "A method for exact calculation of the stardiscrepancy of plane sets applied to the
/// sequences of Hammersley", 1986.
template <typename T>
double StarDiscrepancy(std::vector<Point<T>> points)
{
    std::sort(points.begin(), points.end(), [](auto const& a, auto const& b) { return a.x < b.x; });
    double const count = static_cast<double>(points.size());
    std::vector<double> heights = {0, 1};
    double largest = 0;
    for (std::size_t i = 0; i <= points.size(); ++i)
    {
        double const left = i == 0 ? 0 : static_cast<double>(points[i - 1].x);
        double const right = i == points.size() ? 1 : static_cast<double>(points[i].x);
        if (i != 0)
        {
            auto const height = static_cast<double>(points[i - 1].y);
            heights.insert(std::upper_bound(heights.begin() + 1, heights.end() - 1, height), height);
        }
        for (std::size_t k = 0; k + 1 < heights.size(); ++k)
        {
            double const share = static_cast<double>(k) / count;
            largest =
                std::max({largest, std::abs(share - left * heights[k]), std::abs(share - right * heights[k + 1])});
        }
    }
    return largest;
}

TEST(SequencesTest, StarDiscrepanciesAreThoseOfEveryBox)
{
    Random random(6);
    for (int round = 0; round < 20; ++round)
    {
        std::vector<Point<double>> points;
        std::vector<double> edges = {1};
        for (int i = 0; i < 12; ++i)
        {
            points.push_back(random.Vector<Point<double>>(0, 1));
            edges.insert(edges.end(), {points.back().x, points.back().y});
        }
        double largest = 0;
        for (double const x : edges)
            for (double const y : edges)
                for (bool const isClosed : {false, true})
                {
                    auto const inside =
                        std::count_if(points.begin(), points.end(),
                                      [=](auto const& point)
                                      { return isClosed ? point.x <= x && point.y <= y : point.x < x && point.y < y; });
                    largest = std::max(largest, std::abs(static_cast<double>(inside) / 12 - x * y));
                }
        EXPECT_NEAR(StarDiscrepancy(points), largest, 1e-12);
    }
    // One point at the middle: the box up to it is empty, or holds all.
    EXPECT_EQ(StarDiscrepancy(std::vector<Point<double>>{{0.5, 0.5}}), 0.75);
}

template <typename T>
double DiscrepancyOf(Sequence<T> const& sequence, std::uint32_t start, std::uint32_t count)
{
    std::vector<Point<T>> points;
    for (std::uint32_t i = 0; i < count; ++i)
        points.push_back(sequence(start + i));
    return StarDiscrepancy(points);
}

/// What the first points of a (0, 2)-sequence in base 2 do not exceed: of 2^m points, times their number, m / 2 + 3 / 2
/// (H. Niederreiter, "Point sets and sequences with small discrepancy", 1987), and of others the sum over the nets that
/// they consist of.
double BoundOfNets(std::uint32_t count)
{
    double sum = 0;
    for (unsigned int m = 0; m < 32; ++m)
        sum += (count >> m & 1) != 0 ? 0.5 * m + 1.5 : 0;
    return sum / count;
}

/// J. H. Halton, 1960, with the constants of H. Niederreiter, "Random Number Generation and Quasi-Monte Carlo Methods",
/// 1992, theorem 3.6, for the bases 2 and 3.
double BoundOfHalton(double count)
{
    double const logarithm = std::log(count);
    return (2 + (logarithm / (2 * std::log(2.0)) + 1.5) * (2 * logarithm / (2 * std::log(3.0)) + 2)) / count;
}

constexpr std::uint32_t COUNTS[] = {1, 2, 4, 16, 64, 100, 256, 500, 777, 1000, 1024};

TYPED_TEST(SequencesTest, SobolPointsHaveTheDiscrepancyOfNets)
{
    using T = TypeParam;
    for (std::uint32_t const count : COUNTS)
    {
        EXPECT_LE(DiscrepancyOf<T>(&GetSobolPoint<T>, 0, count), BoundOfNets(count)) << count;
        for (std::uint32_t const seed : SEEDS)
            EXPECT_LE(DiscrepancyOf<T>([=](auto i) { return GetOwenSobolPoint<T>(i, seed); }, 1024, count),
                      BoundOfNets(count))
                << count << ", seed " << seed;
    }
}

TYPED_TEST(SequencesTest, HaltonPointsHaveTheDiscrepancyThatTheTheoremSays)
{
    using T = TypeParam;
    for (std::uint32_t const count : COUNTS)
        EXPECT_LT(DiscrepancyOf<T>(&GetHaltonPoint<T>, 0, count), BoundOfHalton(count)) << count;
}

TYPED_TEST(SequencesTest, R2PointsHaveALowerDiscrepancyThanHaltonPointsMay)
{
    using T = TypeParam;
    // No theorem is known. Random points have about 1 / sqrt(count), and twice as much as this.
    for (std::uint32_t const count : COUNTS)
        for (std::uint32_t const start : {0U, 1000U, 0xF0000000U})
        {
            double const discrepancy = DiscrepancyOf<T>(&GetR2Point<T>, start, count);
            EXPECT_LT(discrepancy, BoundOfHalton(count)) << count;
            EXPECT_LT(discrepancy, count < 256 ? 1 : 0.5 / std::sqrt(count)) << count;
        }
}

TYPED_TEST(SequencesTest, ShiftedNumbersGoAroundTheCircle)
{
    using T = TypeParam;
    ExpectSameBits(ShiftAround<T>(T{0.25}, T{0.5}), T{0.75});
    ExpectSameBits(ShiftAround<T>(T{0.75}, T{0.5}), T{0.25});
    ExpectSameBits(ShiftAround<T>(T{0.5}, T{0.5}), T{0});
    ExpectSameBits(ShiftAround<T>(T{0}, T{0}), T{0});
    // A sum that rounds to 1 goes on at 0.
    T const largest = std::nextafter(T{1}, T{0});
    ExpectSameBits(ShiftAround<T>(largest, TINY<T>), largest);
    ExpectSameBits(ShiftAround<T>(largest, EPSILON<T> / T{3}), T{0});
    ExpectSameBits(ShiftAround<T>(largest, largest), largest - EPSILON<T> / T{2});
    EXPECT_TRUE(std::isnan(ShiftAround<T>(QUIET_NAN<T>, T{0.5})));
    EXPECT_TRUE(std::isnan(ShiftAround<T>(T{0.5}, QUIET_NAN<T>)));
    ExpectSameBits(ShiftAround(Point<T>(T{0.75}, T{0.25}), Point<T>(T{0.5}, T{0.5})), Point<T>(T{0.25}, T{0.75}));
    EXPECT_TRUE((std::is_same_v<decltype(ShiftAround(T{0.5}, 0.5)), T>)); // the shift may be of the other precision
}

} // namespace
