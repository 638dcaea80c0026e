#include "bv/maths/RNGenerator.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/SameBits.h"
#include "values/RandomValues.h"

namespace
{

using bv::maths::RNGenerator;
using bv::test::ExpectSameBits;
using bv::test::RANDOM_SEQUENCES;
using Vector2 = bv::maths::tVector2<float>;
using Vector3 = bv::maths::tVector3<float>;
using FloatAndInteger = std::pair<float, unsigned int>;
using State = std::array<std::uint32_t, 4>;

static_assert(!std::is_polymorphic_v<RNGenerator>);
static_assert(std::is_standard_layout_v<RNGenerator>);
static_assert(std::is_trivially_copyable_v<RNGenerator>);
static_assert(std::is_trivially_destructible_v<RNGenerator>);
static_assert(sizeof(RNGenerator) == 16 + 3 * sizeof(int(RNGenerator::*)()));
static_assert(std::is_nothrow_default_constructible_v<RNGenerator>);
static_assert(std::is_nothrow_constructible_v<RNGenerator, unsigned int>);
static_assert(std::is_nothrow_copy_constructible_v<RNGenerator> && std::is_nothrow_copy_assignable_v<RNGenerator>);
static_assert(std::is_convertible_v<unsigned int, RNGenerator>);
static_assert(std::is_same_v<decltype(&RNGenerator::SetSeed), RNGenerator& (RNGenerator::*)(unsigned int) noexcept>);
static_assert(std::is_same_v<decltype(&RNGenerator::GetInteger), unsigned int (RNGenerator::*)() noexcept>);
static_assert(std::is_same_v<decltype(&RNGenerator::GetFloat), float (RNGenerator::*)() noexcept>);
static_assert(std::is_same_v<decltype(&RNGenerator::GetVector2D), Vector2 (RNGenerator::*)() noexcept>);
static_assert(std::is_same_v<decltype(&RNGenerator::GetVector3D), Vector3 (RNGenerator::*)() noexcept>);
static_assert(std::is_same_v<decltype(&RNGenerator::GetFloatAndInteger), FloatAndInteger (RNGenerator::*)() noexcept>);

// Known to the compiler, too.
constexpr unsigned int FirstDraw(unsigned int seed)
{
    return RNGenerator(seed).GetInteger();
}
static_assert(FirstDraw(0) == RANDOM_SEQUENCES[0].draws[0] && FirstDraw(1) == RANDOM_SEQUENCES[1].draws[0]);
static_assert(RNGenerator(12345).GetVector3D().z >= 0.0F && RNGenerator(12345).GetVector2D().y < 1.0F &&
              RNGenerator(12345).GetFloatAndInteger().second == RANDOM_SEQUENCES[2].draws[1]);

/// The four words that an object of this layout begins with: z, w, jsr, jcong.
State StateOf(RNGenerator const& generator)
{
    State state;
    std::memcpy(state.data(), &generator, sizeof(state));
    return state;
}

/// What follows the state: the three pointers.
std::vector<unsigned char> PointersOf(RNGenerator const& generator)
{
    std::vector<unsigned char> bytes(sizeof(generator) - sizeof(State));
    std::memcpy(bytes.data(), reinterpret_cast<unsigned char const*>(&generator) + sizeof(State), bytes.size());
    return bytes;
}

/// A generator whose vector and pair operations have been given other implementations, in the bytes behind the state.
struct OtherGenerator : RNGenerator
{
    Vector2 Other2D() noexcept { return {0.25F, 0.75F}; }
    Vector3 Other3D() noexcept { return {0.125F, 0.375F, 0.625F}; }
    FloatAndInteger OtherPair() noexcept { return {0.5F, 42U}; }

    OtherGenerator()
    {
        auto const other2D = static_cast<Vector2 (RNGenerator::*)() noexcept>(&OtherGenerator::Other2D);
        auto const other3D = static_cast<Vector3 (RNGenerator::*)() noexcept>(&OtherGenerator::Other3D);
        auto const otherPair = static_cast<FloatAndInteger (RNGenerator::*)() noexcept>(&OtherGenerator::OtherPair);
        unsigned char* const bytes = reinterpret_cast<unsigned char*>(static_cast<RNGenerator*>(this));
        std::memcpy(bytes + sizeof(State), &other2D, sizeof(other2D));
        std::memcpy(bytes + sizeof(State) + sizeof(other2D), &other3D, sizeof(other3D));
        std::memcpy(bytes + sizeof(State) + sizeof(other2D) + sizeof(other3D), &otherPair, sizeof(otherPair));
    }
};

/// The float of a draw, by another way: its top 23 bits as a fraction.
float FloatOf(unsigned int draw)
{
    return std::ldexp(static_cast<float>(draw >> 9), -23);
}

/// Whether two generators give the same draws from here on.
bool GiveTheSame(RNGenerator a, RNGenerator b)
{
    for (int i = 0; i < 100; ++i)
        if (a.GetInteger() != b.GetInteger())
            return false;
    return true;
}

TEST(RNGeneratorTest, DrawsTheSequenceOfTheIndependentModel)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        SCOPED_TRACE(sequence.seed);
        RNGenerator generator(sequence.seed);
        for (std::uint32_t const draw : sequence.draws)
            ASSERT_EQ(generator.GetInteger(), draw);
    }
}

TEST(RNGeneratorTest, SetsTheStateOfTheIndependentModel)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        SCOPED_TRACE(sequence.seed);
        EXPECT_EQ(StateOf(RNGenerator(sequence.seed)), std::to_array(sequence.state));
    }
}

TEST(RNGeneratorTest, BeginsWithItsFourStateWordsInOrder)
{
    EXPECT_EQ(StateOf(RNGenerator()), (State{0x6BAC0001, 0x7514BC8F, 0x210E57E2, 0x7F8D0F3F}));
    EXPECT_EQ(StateOf(RNGenerator(0)), (State{0x6BAC0001, 0x7514BC8F, 0x210E57E2, 0x7F8D0F3F}));
    EXPECT_EQ(StateOf(RNGenerator(1)), (State{0x791E0000, 0x2FC20001, 0x255EBC8F, 0x726457E1}));
}

TEST(RNGeneratorTest, EveryDrawAdvancesAllFourWords)
{
    // From z = w = jsr = jcong = 0 only the congruential generator moves; from another state each word takes its step.
    RNGenerator generator(32768);
    generator.GetInteger();
    EXPECT_EQ(StateOf(generator), (State{0, 0, 0, 1234567}));

    // 0x255EBC8F, shifted left by 17 and added without carry, gives 0x5C40BC8F, right by 13 0x5C425E8A, left by 5
    // 0xD4098FCA.
    generator.SetSeed(1); // 0x791E0000, 0x2FC20001, 0x255EBC8F, 0x726457E1
    generator.GetInteger();
    EXPECT_EQ(StateOf(generator), (State{36969U * 0x0000U + 0x791EU, 18000U * 0x0001U + 0x2FC2U, 0xD4098FCAU,
                                         69069U * 0x726457E1U + 1234567U}));
}

TEST(RNGeneratorTest, SetSeedStartsTheSequenceFromItsBeginning)
{
    RNGenerator generator(7);
    unsigned int const first = generator.GetInteger();
    unsigned int const second = generator.GetInteger();
    generator.GetVector3D();
    generator.SetSeed(7);
    EXPECT_EQ(StateOf(generator), StateOf(RNGenerator(7)));
    EXPECT_EQ(generator.GetInteger(), first);
    EXPECT_EQ(generator.GetInteger(), second);
}

TEST(RNGeneratorTest, SetSeedGivesTheGeneratorItself)
{
    RNGenerator generator;
    EXPECT_EQ(&generator.SetSeed(3), &generator);
    EXPECT_EQ(generator.SetSeed(1).GetInteger(), RANDOM_SEQUENCES[1].draws[0]);
}

TEST(RNGeneratorTest, SetSeedLeavesThePointersAlone)
{
    RNGenerator generator;
    std::vector<unsigned char> const before = PointersOf(generator);
    generator.SetSeed(99);
    EXPECT_EQ(PointersOf(generator), before);
}

TEST(RNGeneratorTest, SeedZeroStandsFor426954)
{
    EXPECT_EQ(StateOf(RNGenerator(0)), StateOf(RNGenerator(426954)));
    EXPECT_TRUE(GiveTheSame(RNGenerator(), RNGenerator(0)));
    EXPECT_TRUE(GiveTheSame(RNGenerator(), RNGenerator(970))); // 426954 modulo 2^15
    EXPECT_FALSE(GiveTheSame(RNGenerator(), RNGenerator(32768)));
}

TEST(RNGeneratorTest, OnlyTheLow15BitsOfASeedTell)
{
    for (unsigned int seed = 1; seed < 32768; seed += 331)
    {
        State const state = StateOf(RNGenerator(seed));
        EXPECT_EQ(StateOf(RNGenerator(seed + 32768)), state) << seed;
        EXPECT_EQ(StateOf(RNGenerator(seed | 0xFFFF8000)), state) << seed;
        EXPECT_NE(StateOf(RNGenerator(seed ^ 0x4000)), state) << seed;
        EXPECT_NE(StateOf(RNGenerator(seed + 1)), state) << seed;
    }
}

TEST(RNGeneratorTest, MultiplesOf32768LeaveTheCongruentialGeneratorAlone)
{
    for (unsigned int const seed : {32768U, 65536U, 0x80000000U, 0xFFFF8000U})
    {
        RNGenerator generator(seed);
        EXPECT_EQ(StateOf(generator), (State{0, 0, 0, 0}));
        EXPECT_EQ(generator.GetInteger(), 1234567U);
        EXPECT_EQ(generator.GetInteger(), 69069U * 1234567U + 1234567U);
        EXPECT_EQ(StateOf(generator)[0] | StateOf(generator)[1] | StateOf(generator)[2], 0U);
    }
}

TEST(RNGeneratorTest, ACopyContinuesWithTheSameSequence)
{
    RNGenerator source(5);
    source.GetInteger();
    RNGenerator copy(source);
    RNGenerator assigned;
    assigned = source;
    for (int i = 0; i < 1000; ++i)
    {
        unsigned int const draw = source.GetInteger();
        ASSERT_EQ(copy.GetInteger(), draw);
        ASSERT_EQ(assigned.GetInteger(), draw);
    }
}

TEST(RNGeneratorTest, ACopyIsIndependentOfItsSource)
{
    RNGenerator source(5);
    RNGenerator copy(source);
    copy.GetVector3D();
    EXPECT_TRUE(GiveTheSame(source, RNGenerator(5)));
    source.SetSeed(6);
    copy.SetSeed(5);
    EXPECT_TRUE(GiveTheSame(copy, RNGenerator(5)));
}

TEST(RNGeneratorTest, AssignmentCopiesStateAndPointers)
{
    RNGenerator source(5);
    source.GetInteger();
    RNGenerator target(77);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(StateOf(target), StateOf(source));
    EXPECT_EQ(PointersOf(target), PointersOf(source));
    RNGenerator const& itself = target;
    target = itself;
    EXPECT_EQ(StateOf(target), StateOf(source));
}

TEST(RNGeneratorTest, GetFloatIsTheTop23BitsOfOneDraw)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        RNGenerator generator(sequence.seed);
        for (std::uint32_t const draw : sequence.draws)
        {
            float const value = generator.GetFloat();
            ExpectSameBits(value, FloatOf(draw));
            EXPECT_GE(value, 0.0F);
            EXPECT_LT(value, 1.0F);
        }
    }
}

TEST(RNGeneratorTest, GetVector2DIsTwoDrawsXFirst)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        RNGenerator generator(sequence.seed);
        for (std::size_t i = 0; i + 2 <= 1000; i += 2)
            ExpectSameBits(generator.GetVector2D(),
                           Vector2(FloatOf(sequence.draws[i]), FloatOf(sequence.draws[i + 1])));
    }
}

TEST(RNGeneratorTest, GetVector3DIsThreeDrawsXThenYThenZ)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        RNGenerator generator(sequence.seed);
        for (std::size_t i = 0; i + 3 <= 1000; i += 3)
            ExpectSameBits(generator.GetVector3D(), Vector3(FloatOf(sequence.draws[i]), FloatOf(sequence.draws[i + 1]),
                                                            FloatOf(sequence.draws[i + 2])));
    }
}

TEST(RNGeneratorTest, GetFloatAndIntegerIsAFloatAndAWholeDraw)
{
    for (auto const& sequence : RANDOM_SEQUENCES)
    {
        RNGenerator generator(sequence.seed);
        for (std::size_t i = 0; i + 2 <= 1000; i += 2)
        {
            auto const [number, integer] = generator.GetFloatAndInteger();
            ExpectSameBits(number, FloatOf(sequence.draws[i]));
            EXPECT_EQ(integer, sequence.draws[i + 1]);
        }
    }
}

TEST(RNGeneratorTest, EachOperationConsumesItsNumberOfDraws)
{
    auto const& draws = RANDOM_SEQUENCES[0].draws;
    RNGenerator generator;
    generator.GetFloat(); // draw 0
    EXPECT_EQ(generator.GetInteger(), draws[1]);
    generator.GetVector2D(); // 2, 3
    EXPECT_EQ(generator.GetInteger(), draws[4]);
    generator.GetVector3D(); // 5, 6, 7
    EXPECT_EQ(generator.GetInteger(), draws[8]);
    generator.GetFloatAndInteger(); // 9, 10
    EXPECT_EQ(generator.GetInteger(), draws[11]);
}

TEST(RNGeneratorTest, TheVectorAndPairOperationsCallThroughThePointers)
{
    OtherGenerator other;
    ExpectSameBits(other.GetVector2D(), Vector2(0.25F, 0.75F));
    ExpectSameBits(other.GetVector3D(), Vector3(0.125F, 0.375F, 0.625F));
    EXPECT_EQ(other.GetFloatAndInteger(), FloatAndInteger(0.5F, 42U));
    EXPECT_EQ(other.GetInteger(), RANDOM_SEQUENCES[0].draws[0]); // which does not, and nothing was drawn before

    static_cast<RNGenerator&>(other) = RNGenerator(); // brings its own pointers along
    ExpectSameBits(other.GetVector2D(), RNGenerator().GetVector2D());
    ExpectSameBits(other.SetSeed(0).GetVector3D(), RNGenerator().GetVector3D());
    EXPECT_EQ(other.SetSeed(0).GetFloatAndInteger(), RNGenerator().GetFloatAndInteger());
}

TEST(RNGeneratorTest, GetFloatCanBeZeroAndIsAtMostOneLessAStep)
{
    RNGenerator generator(25814); // draw 488 has its top 23 bits all 0, as values/random_values.py finds
    for (int i = 0; i < 488; ++i)
        generator.GetInteger();
    ExpectSameBits(generator.GetFloat(), 0.0F);

    generator.SetSeed(19025); // draw 952 has them all 1
    for (int i = 0; i < 952; ++i)
        generator.GetInteger();
    ExpectSameBits(generator.GetFloat(), 1.0F - std::ldexp(1.0F, -23));
}

TEST(RNGeneratorTest, TenMillionFloatsAreUniform)
{
    constexpr int COUNT = 10'000'000;
    RNGenerator generator(1);
    float largest = 0.0F;
    bool allMultiples = true;
    double sum = 0.0;
    double squares = 0.0;
    double products = 0.0; // of neighbours
    double previous = 0.5;
    std::array<int, 256> buckets{};
    for (int i = 0; i < COUNT; ++i)
    {
        float const value = generator.GetFloat();
        float const scaled = value * 8388608.0F; // 2^23
        allMultiples = allMultiples && scaled == std::floor(scaled) && value >= 0.0F;
        largest = value > largest ? value : largest;
        double const centred = static_cast<double>(value) - 0.5;
        sum += centred;
        squares += centred * centred;
        products += centred * previous;
        previous = centred;
        ++buckets[static_cast<std::size_t>(value * 256.0F)];
    }
    EXPECT_LT(largest, 1.0F);
    EXPECT_TRUE(allMultiples);
    // Within five standard deviations: 1/sqrt(12 n) for the mean, 1/sqrt(180 n) for the variance, 1/(12 sqrt(n)) for
    // the covariance. Chi-squared with 255 degrees of freedom has mean 255 and variance 510.
    EXPECT_NEAR(sum / COUNT, 0.0, 5.0 / std::sqrt(12.0 * COUNT));
    EXPECT_NEAR(squares / COUNT, 1.0 / 12.0, 5.0 / std::sqrt(180.0 * COUNT));
    EXPECT_NEAR(products / COUNT, 0.0, 5.0 / (12.0 * std::sqrt(COUNT)));
    double chiSquared = 0.0;
    for (int const bucket : buckets)
        chiSquared += std::pow(bucket - COUNT / 256.0, 2.0) / (COUNT / 256.0);
    EXPECT_NEAR(chiSquared, 255.0, 5.0 * std::sqrt(510.0));
}

TEST(RNGeneratorTest, EveryBitOfAMillionIntegersIsFair)
{
    constexpr int COUNT = 1'000'000;
    RNGenerator generator(2);
    std::array<int, 32> ones{};
    for (int i = 0; i < COUNT; ++i)
    {
        unsigned int const draw = generator.GetInteger();
        for (unsigned int bit = 0; bit < 32; ++bit)
            ones[bit] += static_cast<int>(draw >> bit & 1U);
    }
    for (int const count : ones)
        EXPECT_NEAR(count, COUNT / 2, 5.0 * std::sqrt(COUNT) / 2.0); // five standard deviations
}

TEST(RNGeneratorTest, AMillionPointsFillTheCubeEvenly)
{
    constexpr int COUNT = 1'000'000;
    RNGenerator generator(3);
    std::array<int, 512> cells{};
    for (int i = 0; i < COUNT; ++i)
    {
        Vector3 const point = generator.GetVector3D() * 8.0F;
        ++cells[static_cast<std::size_t>(point.x) * 64 + static_cast<std::size_t>(point.y) * 8 +
                static_cast<std::size_t>(point.z)];
    }
    double chiSquared = 0.0;
    for (int const cell : cells)
        chiSquared += std::pow(cell - COUNT / 512.0, 2.0) / (COUNT / 512.0);
    EXPECT_NEAR(chiSquared, 511.0, 5.0 * std::sqrt(1022.0)); // 511 degrees of freedom
}

} // namespace
