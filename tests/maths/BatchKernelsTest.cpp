// The loops behind the batch forms, each set by itself: a library chooses one of them, and its tests would see only
// that.

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Noise/Blocks.h"
#include "bv/maths/Noise.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/BatchData.h"
#include "support/Numbers.h"
#include "support/SameBits.h"

using namespace bv::maths;
using bv::test::ExpectSameBits;
using bv::test::INF;
using bv::test::LARGEST;
using bv::test::QUIET_NAN;
using bv::test::RandomMatrix;
using bv::test::RandomPoints;
using bv::test::SpecialPoints;

namespace
{

constexpr std::size_t COUNT = 1008; // a multiple of what every register holds

/// A part of each set of loops that this processor can run, by the set's name.
template <typename Part>
std::vector<std::pair<std::string, Part>> Sets()
{
    std::vector<std::pair<std::string, Part>> sets;
    for (KernelSet const& set : KernelSets())
        if (set.isSupported())
            sets.emplace_back(set.name, set.kernels());
    return sets;
}

template <typename T>
class BatchKernelsTest : public testing::Test
{
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(BatchKernelsTest, Precisions);

/// A loop leaves fewer elements than fill the widest vector.
void ExpectNearlyAll(std::size_t done, std::size_t count)
{
    EXPECT_LE(done, count);
    EXPECT_GT(done + 16, count);
}

/// The components of vectors, each in an array of its own.
template <typename T>
struct Separate
{
    std::vector<T> x, y, z;

    explicit Separate(std::vector<tVector3<T>> const& vectors)
    {
        for (tVector3<T> const& vector : vectors)
        {
            x.push_back(vector.x);
            y.push_back(vector.y);
            z.push_back(vector.z);
        }
    }
    tVector3<T> operator[](std::size_t i) const { return {x[i], y[i], z[i]}; }
};

template <typename T>
void Read(Streams<T>& streams, std::vector<tVector3<T>> const& vectors)
{
    streams.inStep = 3;
    streams.in[0] = &vectors[0].x;
    streams.in[1] = &vectors[0].y;
    streams.in[2] = &vectors[0].z;
}
template <typename T>
void Read(Streams<T>& streams, Separate<T> const& vectors)
{
    streams.inStep = 1;
    streams.in[0] = vectors.x.data();
    streams.in[1] = vectors.y.data();
    streams.in[2] = vectors.z.data();
}
template <typename T>
void Write(Streams<T>& streams, std::vector<tVector3<T>>& vectors)
{
    streams.outStep = 3;
    streams.out[0] = &vectors[0].x;
    streams.out[1] = &vectors[0].y;
    streams.out[2] = &vectors[0].z;
}
template <typename T>
void Write(Streams<T>& streams, Separate<T>& vectors)
{
    streams.outStep = 1;
    streams.out[0] = vectors.x.data();
    streams.out[1] = vectors.y.data();
    streams.out[2] = vectors.z.data();
}

/// Has a loop read and write vectors.
template <typename In, typename Out, typename T>
std::size_t Run(Loop<T> loop, T const* constants, unsigned int options, In const& in, Out& out, std::size_t count)
{
    Streams<T> streams{};
    Read(streams, in);
    Write(streams, out);
    return loop(constants, options, streams, count);
}

/// Runs a loop over vectors in each layout that it may find them in, and compares what it gives with a single form.
template <typename T, typename Single>
void ExpectVectors(Loop<T> loop, T const* constants, unsigned int options, std::vector<tVector3<T>> const& in,
                   Single single)
{
    std::vector<tVector3<T>> results(in.size());
    Separate<T> const apart(in);
    Separate<T> resultsApart(results);
    Separate<T> mixed(results);
    std::vector<tVector3<T>> inPlace = in;
    EXPECT_EQ(Run(loop, constants, options, in, results, in.size()), in.size());
    EXPECT_EQ(Run(loop, constants, options, apart, resultsApart, in.size()), in.size());
    EXPECT_EQ(Run(loop, constants, options, in, mixed, in.size()), in.size());
    EXPECT_EQ(Run(loop, constants, options, inPlace, inPlace, in.size()), in.size());
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        tVector3<T> const expected = single(in[i]);
        ExpectSameBits(results[i], expected);
        ExpectSameBits(resultsApart[i], expected);
        ExpectSameBits(mixed[i], expected);
        ExpectSameBits(inPlace[i], expected);
    }
}

TYPED_TEST(BatchKernelsTest, PointsAreProjectedAsBySingleForm)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
    {
        SCOPED_TRACE(name);
        std::mt19937 generator(1);
        auto const matrix = RandomMatrix<T>(generator);
        ExpectVectors(geometry.project, matrix.Get(), 0, RandomPoints<T>(generator, COUNT, 1, 10),
                      [&](tVector3<T> const& point) { return point.Transformed(matrix); });
    }
}

TYPED_TEST(BatchKernelsTest, ProjectionStopsInFrontOfTheVectorThatHoldsAPointThatCannotBeDivided)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
    {
        SCOPED_TRACE(name);
        auto const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 100);
        for (std::size_t bad = 0; bad < 40; ++bad)
        {
            std::mt19937 generator(2);
            auto points = RandomPoints<T>(generator, 48, 1, 10);
            points[bad].z = 0;
            std::vector<tVector3<T>> results(48);
            std::size_t const done = Run(geometry.project, matrix.Get(), 0, points, results, 48);
            EXPECT_LE(done, bad);
            EXPECT_GT(done + 16, bad);
            std::uint64_t undivided = 0;
            Streams<T> streams{};
            Read(streams, points);
            Write(streams, results);
            streams.bits = &undivided;
            EXPECT_EQ(geometry.project(matrix.Get(), 0, streams, 48), 48U);
            EXPECT_EQ(undivided, std::uint64_t{1} << bad);
        }
    }
}

TYPED_TEST(BatchKernelsTest, DirectionsAreRotatedAndNormalisedAsBySingleForm)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
    {
        SCOPED_TRACE(name);
        std::mt19937 generator(3);
        auto const rotation = tMatrix4<T>::RotateAxis(tVector3<T>(), tVector3<T>(3, -1, 2), 2);
        auto directions = RandomPoints<T>(generator, COUNT, -10, 10);
        for (std::size_t i = 0; i < COUNT; i += 1 + i % 5)
            directions[i].Normalise();
        ExpectVectors(geometry.rotate, rotation.Get(), 1, directions,
                      [&](tVector3<T> const& direction) { return direction.TransformedAsVector(rotation); });

        auto const general = RandomMatrix<T>(generator);
        auto special = SpecialPoints<T>();
        special.resize(special.size() / GRANULE * GRANULE);
        ExpectVectors(geometry.rotate, general.Get(), 0, special,
                      [&](tVector3<T> const& direction) { return direction.TransformedAsVector(general); });
        ExpectVectors<T>(geometry.normalise, nullptr, 0, special,
                         [&](tVector3<T> const& vector) { return vector.Normalised(); });
    }
}

TYPED_TEST(BatchKernelsTest, ABoxGrowsAsByOnePointAfterTheOther)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
        for (std::size_t first = 0; first < 64; ++first)
        {
            SCOPED_TRACE(name);
            std::mt19937 generator(static_cast<unsigned int>(first));
            auto points = RandomPoints<T>(generator, 96, T(-1), T(1));
            for (std::size_t i = 0; i < 30; ++i) // zeros of both signs are the highest and the lowest values
            {
                auto& point = points[generator() % 96];
                point.x = generator() % 2 == 0 ? T(0) : T(-0.0);
                point.y = std::abs(point.y);
                point.z = -std::abs(point.z);
            }
            tVolumeAABB<T> const empty;
            tVolumeAABB<T> expected;
            for (tVector3<T> const& point : points)
                expected.Expand(point);
            auto const expectGrown = [&, &grow = geometry.grow](auto const& in)
            {
                T ends[] = {empty.GetMin().x, empty.GetMin().y, empty.GetMin().z,
                            empty.GetMax().x, empty.GetMax().y, empty.GetMax().z};
                Streams<T> streams{};
                Read(streams, in);
                streams.ends = ends;
                EXPECT_EQ(grow(nullptr, 0, streams, 96), 96U);
                ExpectSameBits(tVector3<T>(ends), expected.GetMin());
                ExpectSameBits(tVector3<T>(ends + 3), expected.GetMax());
            };
            expectGrown(points);
            expectGrown(Separate<T>(points));
        }
}

TYPED_TEST(BatchKernelsTest, AnEndOfABoxThatIsZeroKeepsItsSign)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
        for (T const zero : {T(0), T(-0.0)})
        {
            SCOPED_TRACE(name);
            std::vector<tVector3<T>> const points(96, tVector3<T>(-zero, -zero, -zero));
            auto const expectKept = [&, &grow = geometry.grow](auto const& in)
            {
                T ends[] = {zero, zero, T(-1), zero, T(1), zero};
                Streams<T> streams{};
                Read(streams, in);
                streams.ends = ends;
                EXPECT_EQ(grow(nullptr, 0, streams, 96), 96U);
                ExpectSameBits(tVector3<T>(ends), tVector3<T>(zero, zero, T(-1)));
                ExpectSameBits(tVector3<T>(ends + 3), tVector3<T>(zero, T(1), zero));
            };
            expectKept(points);
            expectKept(Separate<T>(points));
        }
}

TYPED_TEST(BatchKernelsTest, BoxesAreMovedAndClassifiedAsBySingleForm)
{
    using T = TypeParam;
    for (auto const& [name, geometry] : Sets<GeometryKernels<T>>())
    {
        SCOPED_TRACE(name);
        std::mt19937 generator(5);
        auto const corners = RandomPoints<T>(generator, 2 * COUNT, -30, 30);
        std::vector<tVolumeAABB<T>> boxes(COUNT);
        for (std::size_t i = 0; i < COUNT; ++i)
        {
            boxes[i].Expand(corners[2 * i]);
            boxes[i].Expand(corners[2 * i] + corners[2 * i + 1] * T(0.2));
        }
        Streams<T> streams{};
        streams.inStep = streams.outStep = 6;
        std::vector<tVolumeAABB<T>> moved(COUNT);
        for (std::size_t i = 0; i < 6; ++i)
        {
            streams.in[i] = &boxes[0].GetMin().x + i;
            streams.out[i] = &moved[0].GetMin().x + i;
        }
        tFrustum<T> const frustum(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 25));
        T planes[24];
        T* next = planes;
        for (tPlane<T> const& plane : {frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetTopPlane(),
                                       frustum.GetBottomPlane(), frustum.GetFarPlane(), frustum.GetNearPlane()})
            for (T const value : {plane.GetNormal().x, plane.GetNormal().y, plane.GetNormal().z, plane.GetOffset()})
                *next++ = value;
        std::vector<std::uint32_t> results(COUNT);
        streams.codes = results.data();
        EXPECT_EQ(geometry.classify(planes, 63, streams, COUNT), COUNT);
        std::size_t counts[3] = {};
        for (std::size_t i = 0; i < COUNT; ++i)
        {
            EXPECT_EQ(results[i], frustum.ContainsAABB(boxes[i])) << i;
            ++counts[results[i]];
        }
        for (std::size_t const count : counts)
            EXPECT_GT(count, 10U);

        auto const matrix = RandomMatrix<T>(generator);
        EXPECT_EQ(geometry.moveBoxes(matrix.Get(), 0, streams, COUNT), COUNT);
        for (std::size_t i = 0; i < COUNT; ++i)
        {
            ExpectSameBits(moved[i].GetMin(), (boxes[i] * matrix).GetMin());
            ExpectSameBits(moved[i].GetMax(), (boxes[i] * matrix).GetMax());
        }
    }
}

/// The generator, word by word, as its author wrote it.
unsigned int Draw(GeneratorState& state)
{
    state.z = 36969 * (state.z & 65535) + (state.z >> 16);
    state.w = 18000 * (state.w & 65535) + (state.w >> 16);
    state.jcong = 69069 * state.jcong + 1234567;
    state.jsr ^= state.jsr << 17;
    state.jsr ^= state.jsr >> 13;
    state.jsr ^= state.jsr << 5;
    return (((state.z << 16) + state.w) ^ state.jcong) + state.jsr;
}

TEST(GeneratorKernelsTest, EverySetDrawsTheSequenceFromAnyState)
{
    // The multiply-with-carry words have states that no step leads to, and two that stay as they are.
    constexpr std::uint32_t Z_END = 36969U * 65536U - 1U;
    constexpr std::uint32_t W_END = 18000U * 65536U - 1U;
    std::vector<GeneratorState> starts{{0, 0, 0, 0},
                                       {Z_END, W_END, 1, 1},
                                       {Z_END + 1, W_END + 1, 2, 2},
                                       {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF},
                                       {1, 1, 0x80000000, 0},
                                       {0xFFFF, 0xFFFF, 3, 7},
                                       {Z_END - 1, W_END - 1, 5, 6},
                                       {2 * W_END, 2 * W_END, 9, 9}};
    std::mt19937 generator(7);
    for (int i = 0; i < 20; ++i)
    {
        GeneratorState state{};
        for (std::uint32_t* const word : {&state.z, &state.w, &state.jsr, &state.jcong})
            *word = static_cast<std::uint32_t>(generator());
        starts.push_back(state);
    }
    for (auto const& [name, kernels] : Sets<GeneratorKernels>())
        for (GeneratorState const& start : starts)
        {
            SCOPED_TRACE(name);
            GeneratorState state = start;
            GeneratorState expected = start;
            std::vector<float> results(5000);
            std::size_t const done = kernels.draw(state, results.data(), results.size());
            EXPECT_LE(done, results.size());
            EXPECT_GT(done + 1024, results.size());
            for (std::size_t i = 0; i < done; ++i)
                ASSERT_EQ(results[i], static_cast<float>(Draw(expected) >> 9) * 0x1p-23F) << i;
            EXPECT_EQ(state.z, expected.z);
            EXPECT_EQ(state.w, expected.w);
            EXPECT_EQ(state.jsr, expected.jsr);
            EXPECT_EQ(state.jcong, expected.jcong);
        }
}

template <typename Point>
class NoiseKernelsTest : public testing::Test
{
};
using Points = testing::Types<float, tVector2<float>, tVector3<float>>;
TYPED_TEST_SUITE(NoiseKernelsTest, Points);

/// The first coordinates of a point.
template <typename Point>
Point First(tVector3<float> const& point)
{
    if constexpr (std::is_same_v<Point, float>)
        return point.x;
    else if constexpr (std::is_same_v<Point, tVector2<float>>)
        return {point.x, point.y};
    else
        return point;
}

float Noise(float x)
{
    return Noise1(x);
}
float Noise(tVector2<float> const& point)
{
    return Noise2(point);
}
float Noise(tVector3<float> const& point)
{
    return Noise3(point);
}

float Turbulence(float x, unsigned int octaves)
{
    return Turbulence1(x, octaves);
}
float Turbulence(tVector2<float> const& point, unsigned int octaves)
{
    return Turbulence2(point, octaves);
}
float Turbulence(tVector3<float> const& point, unsigned int octaves)
{
    return Turbulence3(point, octaves);
}

template <typename Point>
using Loop = decltype(NoiseKernels<Point>::turbulences);

/// The look-ups by bytes are here without the processor's instructions, too, so that their order is tested everywhere.
template <typename Point>
std::vector<std::pair<std::string, Loop<Point>>> Loops()
{
    std::vector<std::pair<std::string, Loop<Point>>> loops{
        {"bytes, 16", NoiseBlock<Point, 16, ByteHashes>::Turbulence},
        {"bytes, 32", NoiseBlock<Point, 32, ByteHashes>::Turbulence},
        {"bytes, 64", NoiseBlock<Point, 64, ByteHashes>::Turbulence},
        {"tables, 32", NoiseBlock<Point, 32, TableHashes>::Turbulence}};
    for (auto const& [name, kernels] : Sets<NoiseKernels<Point>>())
        loops.emplace_back(name, kernels.turbulences);
    return loops;
}

template <typename Point>
void ExpectTurbulences(Loop<Point> loop, std::vector<tVector3<float>> const& from, unsigned int octaves)
{
    std::vector<Point> points;
    for (tVector3<float> const& point : from)
        points.push_back(First<Point>(point));
    std::vector<float> results(points.size(), -7.0F);
    std::size_t const done = loop(points.data(), octaves, results.data(), points.size());
    ExpectNearlyAll(done, points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        ExpectSameBits(results[i], i < done ? Turbulence(points[i], octaves) : -7.0F);
}

TYPED_TEST(NoiseKernelsTest, EverySetHasTheBitsOfTheSingleForm)
{
    for (auto const& [name, loop] : Loops<TypeParam>())
    {
        SCOPED_TRACE(name);
        std::mt19937 generator(6);
        for (float const scale : {2.0F, 300.0F, 1e7F, 1e20F})
            for (unsigned int const octaves : {1U, 2U, 5U, 10U, 11U})
                ExpectTurbulences<TypeParam>(loop, RandomPoints<float>(generator, COUNT, -scale, scale), octaves);
        for (std::size_t count = 0; count <= 300; ++count)
            ExpectTurbulences<TypeParam>(loop, RandomPoints<float>(generator, count, -300, 300), 2);
        ExpectTurbulences<TypeParam>(loop, SpecialPoints<float>(), 10);
    }
}

TYPED_TEST(NoiseKernelsTest, CoordinatesBeyondTheIntegersLeaveThoseBesideThemAlone)
{
    float const values[] = {0x1p31F, -0x1p31F, 1e20F, -LARGEST<float>, INF<float>, QUIET_NAN<float>};
    std::mt19937 generator(7);
    auto points = RandomPoints<float>(generator, COUNT, -300, 300);
    for (std::size_t i = 0; i < points.size(); i += 3)
        points[i][i % 9 / 3] = values[i / 9 % std::size(values)];
    for (auto const& [name, loop] : Loops<TypeParam>())
    {
        SCOPED_TRACE(name);
        for (unsigned int const octaves : {1U, 10U})
            ExpectTurbulences<TypeParam>(loop, points, octaves);
    }
}

TYPED_TEST(NoiseKernelsTest, NoOctaveIsLeftToTheSingleForm)
{
    std::vector<TypeParam> const points(100);
    for (auto const& [name, loop] : Loops<TypeParam>())
    {
        SCOPED_TRACE(name);
        std::vector<float> results(100, -7.0F);
        EXPECT_EQ(loop(points.data(), 0, results.data(), points.size()), 0U);
        EXPECT_EQ(results, std::vector<float>(100, -7.0F));
    }
}

/// One point for every entry of the tables along x and y.
std::vector<tVector3<float>> PointsInAllCells()
{
    std::vector<tVector3<float>> points;
    for (int x = 0; x < 256; ++x)
        for (int y = 0; y < 256; ++y)
            points.emplace_back(static_cast<float>(x) + 0.3F, static_cast<float>(y) + 0.6F,
                                static_cast<float>((x * 7 + y * 13) % 256) + 0.4F);
    return points;
}

TYPED_TEST(NoiseKernelsTest, EveryEntryOfTheTablesIsReached)
{
    auto const points = PointsInAllCells();
    for (auto const& [name, loop] : Loops<TypeParam>())
    {
        SCOPED_TRACE(name);
        ExpectTurbulences<TypeParam>(loop, points, 1);
    }
}

template <typename Point>
void ExpectSameSingleNoise(NoiseKernels<Point> const& kernels, std::vector<tVector3<float>> const& points)
{
    for (tVector3<float> const& from : points)
    {
        auto const point = First<Point>(from);
        ExpectSameBits(kernels.noise(point), Noise(point));
        for (unsigned int const octaves : {0U, 1U, 3U, 10U, 11U})
            ExpectSameBits(kernels.turbulence(point, octaves), Turbulence(point, octaves));
    }
}

// Which of the sets the library has chosen, its tests against the independent model say that it is right.
TYPED_TEST(NoiseKernelsTest, EverySetHasTheSingleFormOfTheOneThatTheLibraryChooses)
{
    for (auto const& [name, kernels] : Sets<NoiseKernels<TypeParam>>())
    {
        SCOPED_TRACE(name);
        std::mt19937 generator(7);
        for (float const scale : {2.0F, 300.0F, 1e7F, 1e20F})
            ExpectSameSingleNoise(kernels, RandomPoints<float>(generator, COUNT, -scale, scale));
        ExpectSameSingleNoise(kernels, SpecialPoints<float>());
        ExpectSameSingleNoise(kernels, PointsInAllCells());
    }
}

TEST(KernelSetsTest, TheBaselineIsTheLastSetAndRunsEverywhere)
{
    ASSERT_FALSE(KernelSets().empty());
    EXPECT_STREQ(KernelSets().back().name, "baseline");
    EXPECT_TRUE(KernelSets().back().isSupported());
}

TEST(KernelSetsTest, TheFirstSetThatTheProcessorSupportsIsChosen)
{
    EXPECT_EQ(ChosenKernels().draw, Sets<GeneratorKernels>().front().second.draw);
}

} // namespace
