#include "bv/maths/Batch.h"

#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Noise.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/Allocations.h"
#include "support/BatchData.h"
#include "support/Breakpoint.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"
#include "support/Throws.h"
#include "support/Views.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

/// Every length up to several whole blocks of every kind of vector, and the way across block boundaries.
std::vector<std::size_t> Lengths()
{
    std::vector<std::size_t> lengths;
    for (std::size_t n = 0; n <= 40; ++n)
        lengths.push_back(n);
    for (std::size_t const n : std::initializer_list<std::size_t>{63, 64, 65, 72, 127, 128, 129, 200, 1000})
        lengths.push_back(n);
    return lengths;
}

template <typename Error, typename Action>
void ExpectDifferentLengths(Action&& action, std::string const& function)
{
    try
    {
        action();
        ADD_FAILURE() << function << " accepts spans of different lengths";
    }
    catch (Error const& error)
    {
        EXPECT_STREQ(error.Message().ToCharArray(), "Spans of different lengths");
        EXPECT_STREQ(error.Filename().ToCharArray(), "internal\\Maths\\Batch");
        EXPECT_EQ(error.FunctionName().ToCharArray(), "bv::maths::" + function);
        EXPECT_GT(error.LineNumber(), 0U);
    }
}

template <typename T>
class BatchTest : public testing::Test
{
};
TYPED_TEST_SUITE(BatchTest, Precisions);

template <typename T>
std::vector<tMatrix4<T>> Matrices(std::mt19937& generator)
{
    tVector3<T> const axis(1, 2, -1);
    tMatrix4<T> stale = RandomMatrix<T>(generator);
    tMatrix4<T> staleRotation = tMatrix4<T>::RotateX(1);
    staleRotation(3) = 5;
    return {tMatrix4<T>(),
            tMatrix4<T>::Scale(tVector3<T>(2, -3, T(0.5))),
            tMatrix4<T>::RotateAxis(tVector3<T>(), axis, 1),
            tMatrix4<T>::RotateAxis(tVector3<T>(3, 4, 5), axis, 2),
            tMatrix4<T>::Translate(1, 2, 3),
            tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 100),
            stale,
            staleRotation};
}

template <typename T>
std::vector<tVolumeAABB<T>> RandomBoxes(std::mt19937& generator, std::size_t count)
{
    std::vector<tVector3<T>> const corners = RandomPoints<T>(generator, 2 * count, -30, 30);
    std::vector<tVolumeAABB<T>> boxes(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        boxes[i].Expand(corners[2 * i]);
        boxes[i].Expand(corners[2 * i] + corners[2 * i + 1] * T(i % 4 == 0 ? 1 : 0.1));
    }
    return boxes;
}

TYPED_TEST(BatchTest, PointsAreTransformedAsOneByOneToTheBit)
{
    using T = TypeParam;
    std::mt19937 generator(1);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
        {
            std::vector<tVector3<T>> const points = RandomPoints<T>(generator, length, 1, 10); // in front of no eye
            std::vector<tVector3<T>> results(length);
            TransformPoints(matrix, points, results);
            for (std::size_t i = 0; i < length; ++i)
                ExpectSameBits(results[i], points[i].Transformed(matrix));
        }
}

TYPED_TEST(BatchTest, DirectionsAreTransformedAsOneByOneToTheBit)
{
    using T = TypeParam;
    std::mt19937 generator(2);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
        {
            std::vector<tVector3<T>> directions = RandomPoints<T>(generator, length, -10, 10);
            for (std::size_t i = 0; i < length; i += 3) // some of length 1, so that a rotation normalises them
                directions[i].Normalise();
            std::vector<tVector3<T>> results(length);
            TransformDirections(matrix, directions, results);
            for (std::size_t i = 0; i < length; ++i)
                ExpectSameBits(results[i], directions[i].TransformedAsVector(matrix));
        }
}

TYPED_TEST(BatchTest, DirectionsCloseToLengthOneAreNormalisedWhereOneByOneTheyAre)
{
    using T = TypeParam;
    std::mt19937 generator(3);
    auto const matrix = tMatrix4<T>::RotateAxis(tVector3<T>(), tVector3<T>(1, 2, 3), 1);
    std::vector<tVector3<T>> directions;
    for (int steps = -300; steps <= 300; ++steps) // on both sides of every tolerance
        for (T const scale : {T(1), T(10), T(1000), T(100000)})
            directions.push_back({1 + T(steps) * scale * EPSILON<T> / 4, 0, 0});
    std::vector<tVector3<T>> results(directions.size());
    TransformDirections(matrix, directions, results);
    for (std::size_t i = 0; i < directions.size(); ++i)
        ExpectSameBits(results[i], directions[i].TransformedAsVector(matrix));
}

TYPED_TEST(BatchTest, InfinitiesNotANumberAndSignedZerosAreTransformedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(4);
    std::vector<tVector3<T>> const points = SpecialPoints<T>();
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
    {
        std::vector<tVector3<T>> results(points.size());
        TransformDirections(matrix, points, results);
        for (std::size_t i = 0; i < points.size(); ++i)
            ExpectSameBits(results[i], points[i].TransformedAsVector(matrix));
        if (matrix[12] != 0 || matrix[14] != 0)
            continue; // a projection divides by zero
        TransformPoints(matrix, points, results);
        for (std::size_t i = 0; i < points.size(); ++i)
            ExpectSameBits(results[i], points[i].Transformed(matrix));
    }
}

TYPED_TEST(BatchTest, TransformsWorkInPlaceAndAtAnyAddress)
{
    using T = TypeParam;
    std::mt19937 generator(5);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t first = 0; first < 5; ++first) // vectors of 12 or 24 bytes: other alignments each time
        {
            std::vector<tVector3<T>> const points = RandomPoints<T>(generator, 50, 1, 10);
            std::vector<tVector3<T>> inPlace = points;
            std::span<tVector3<T>> const part = std::span(inPlace).subspan(first, 40);
            TransformPoints(matrix, part, part);
            for (std::size_t i = 0; i < points.size(); ++i)
                ExpectSameBits(inPlace[i], i < first || i >= first + 40 ? points[i] : points[i].Transformed(matrix));

            inPlace = points;
            TransformDirections(matrix, part, part);
            for (std::size_t i = 0; i < points.size(); ++i)
                ExpectSameBits(inPlace[i],
                               i < first || i >= first + 40 ? points[i] : points[i].TransformedAsVector(matrix));
        }
}

TYPED_TEST(BatchTest, APointThatCannotBeDividedThrowsAndTheResultsInFrontOfItStand)
{
    using T = TypeParam;
    std::string const name = std::string("bv::maths::tVector3<") + bv::test::TYPE_NAME<T> + ">::Transformed";
    auto const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 100);
    std::mt19937 generator(6);
    for (std::size_t bad = 0; bad < 35; ++bad)
    {
        std::vector<tVector3<T>> points = RandomPoints<T>(generator, 35, 1, 10);
        points[bad].z = 0;
        std::vector<tVector3<T>> results(35, tVector3<T>(7, 7, 7));
        ExpectThrows<DivideByZeroException>([&] { TransformPoints(matrix, points, results); },
                                            "Attempt to divide vector by zero scalar value", name,
                                            "internal\\Maths\\Vector3", 111);
        for (std::size_t i = 0; i < 35; ++i)
            ExpectSameBits(results[i], i < bad ? points[i].Transformed(matrix) : tVector3<T>(7, 7, 7));
    }
}

TYPED_TEST(BatchTest, APointWhoseWIsTheToleranceIsDividedAndOneBelowItThrows)
{
    using T = TypeParam;
    // w is the z of the point.
    tMatrix4<T> const matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0);
    for (T const sign : {T(1), T(-1)})
        for (std::size_t place = 0; place < 20; ++place)
        {
            std::vector<tVector3<T>> points(20, tVector3<T>(1, 2, 3));
            std::vector<tVector3<T>> results(20);
            points[place].z = sign * TOLERANCE<T>;
            TransformPoints(matrix, points, results);
            for (std::size_t i = 0; i < points.size(); ++i)
                ExpectSameBits(results[i], points[i].Transformed(matrix));
            points[place].z = sign * std::nextafter(TOLERANCE<T>, T(0));
            EXPECT_THROW(TransformPoints(matrix, points, results), DivideByZeroException);
        }
}

TYPED_TEST(BatchTest, ADiagonalMatrixWithoutAFourthElementThrowsForEveryPoint)
{
    using T = TypeParam;
    tMatrix4<T> const matrix(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 0);
    std::vector<tVector3<T>> points(9, tVector3<T>(1, 2, 3));
    ExpectThrows<DivideByZeroException>([&] { TransformPoints(matrix, points, points); },
                                        "Attempt to divide vector by zero scalar value",
                                        std::string("bv::maths::tVector3<") + bv::test::TYPE_NAME<T> + ">::Transformed",
                                        "internal\\Maths\\Vector3", 96);
    for (tVector3<T> const& point : points)
        ExpectSameBits(point, tVector3<T>(1, 2, 3));
}

TYPED_TEST(BatchTest, InPlaceThePointsBehindOneThatCannotBeDividedStayAsTheyAre)
{
    using T = TypeParam;
    auto const matrix = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 100);
    std::mt19937 generator(13);
    for (std::size_t bad = 0; bad < 30; ++bad)
    {
        std::vector<tVector3<T>> points = RandomPoints<T>(generator, 30, 1, 10);
        points[bad].z = 0;
        std::vector<tVector3<T>> inPlace = points;
        EXPECT_THROW(TransformPoints(matrix, inPlace, inPlace), DivideByZeroException);
        for (std::size_t i = 0; i < 30; ++i)
            ExpectSameBits(inPlace[i], i < bad ? points[i].Transformed(matrix) : points[i]);
    }
}

TYPED_TEST(BatchTest, AMatrixThatIsCalledTheIdentityLeavesPointsAndDirectionsAsTheyAre)
{
    using T = TypeParam;
    tMatrix4<T> stale;
    stale(0) = 7;
    stale(15) = 0;
    std::vector<tVector3<T>> const points(20, tVector3<T>(1, 2, 3));
    std::vector<tVector3<T>> results(20);
    TransformPoints(stale, points, results);
    for (tVector3<T> const& result : results)
        ExpectSameBits(result, tVector3<T>(1, 2, 3));
    TransformDirections(stale, points, results);
    for (tVector3<T> const& result : results)
        ExpectSameBits(result, tVector3<T>(1, 2, 3));
}

TYPED_TEST(BatchTest, InfinitiesAndNotANumberAreDividedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(14);
    tMatrix4<T> const matrix = RandomMatrix<T>(generator);
    std::vector<tVector3<T>> points;
    for (tVector3<T> const& point : SpecialPoints<T>())
        if (T const w = point.x * matrix[12] + point.y * matrix[13] + point.z * matrix[14] + matrix[15];
            !(std::abs(w) < T(0.25)))
            points.push_back(point);
    ASSERT_GT(points.size(), 500U);
    std::vector<tVector3<T>> results(points.size());
    TransformPoints(matrix, points, results);
    for (std::size_t i = 0; i < points.size(); ++i)
        ExpectSameBits(results[i], points[i].Transformed(matrix));
}

TYPED_TEST(BatchTest, BoxesMayLieAtAnyAddress)
{
    using T = TypeParam;
    std::mt19937 generator(15);
    tFrustum<T> const frustum(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 25));
    std::vector<tVolumeAABB<T>> const boxes = RandomBoxes<T>(generator, 60);
    auto const points = RandomPoints<T>(generator, 60, -5, 5);
    for (std::size_t first = 0; first < 5; ++first)
    {
        std::vector<typename tFrustum<T>::IntersectionResult> results(53);
        ClassifyBoxes(frustum, std::span(boxes).subspan(first, 50), std::span(results).subspan(first % 3, 50));
        tVolumeAABB<T> grown;
        tVolumeAABB<T> expected;
        ExpandBox(grown, std::span(points).subspan(first, 50));
        for (std::size_t i = 0; i < 50; ++i)
        {
            EXPECT_EQ(results[first % 3 + i], frustum.ContainsAABB(boxes[first + i]));
            expected.Expand(points[first + i]);
        }
        ExpectSameBits(grown.GetMin(), expected.GetMin());
        ExpectSameBits(grown.GetMax(), expected.GetMax());
    }
}

TYPED_TEST(BatchTest, ABoxGrowsAsByOnePointAfterTheOther)
{
    using T = TypeParam;
    std::mt19937 generator(7);
    for (std::size_t const length : Lengths())
        for (bool const startsEmpty : {true, false})
        {
            std::vector<tVector3<T>> const points = RandomPoints<T>(generator, length, -10, 10);
            tVolumeAABB<T> expected;
            if (!startsEmpty)
                expected = tVolumeAABB<T>(tVector3<T>(-9, 1, 3), tVector3<T>(-1, 9, 4));
            tVolumeAABB<T> box = expected;
            for (tVector3<T> const& point : points)
                expected.Expand(point);
            ExpandBox(box, points);
            ExpectSameBits(box.GetMin(), expected.GetMin());
            ExpectSameBits(box.GetMax(), expected.GetMax());
        }
}

TYPED_TEST(BatchTest, OfZerosOfBothSignsTheFirstCountsForABox)
{
    using T = TypeParam;
    std::mt19937 generator(8);
    for (int round = 0; round < 2000; ++round)
    {
        std::vector<tVector3<T>> points(30);
        for (tVector3<T>& point : points)
        {
            T const choices[] = {T(0), T(-0.0), T(1), T(round % 2 == 0 ? 2 : -1)};
            point = {choices[generator() % 4], choices[generator() % 4], choices[generator() % 4]};
        }
        tVolumeAABB<T> expected;
        if (round % 3 == 0)
            expected = tVolumeAABB<T>(tVector3<T>(T(-0.0), 0, 1), tVector3<T>(0, T(-0.0), 1));
        tVolumeAABB<T> box = expected;
        for (tVector3<T> const& point : points)
            expected.Expand(point);
        ExpandBox(box, points);
        ExpectSameBits(box.GetMin(), expected.GetMin());
        ExpectSameBits(box.GetMax(), expected.GetMax());
    }
}

TYPED_TEST(BatchTest, NotANumberMovesNoFaceAndStaysInABoxThatHasIt)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    std::vector<tVector3<T>> points = SpecialPoints<T>();
    for (tVolumeAABB<T> const& start :
         {tVolumeAABB<T>(), tVolumeAABB<T>(tVector3<T>(nan, 0, 0), tVector3<T>(1, nan, 1))})
    {
        tVolumeAABB<T> expected = start;
        tVolumeAABB<T> box = start;
        for (tVector3<T> const& point : points)
            expected.Expand(point);
        ExpandBox(box, points);
        ExpectSameBits(box.GetMin(), expected.GetMin());
        ExpectSameBits(box.GetMax(), expected.GetMax());
    }
}

template <typename T>
void ExpectClassifiedAsOneByOne(tFrustum<T> const& frustum, std::vector<tVolumeAABB<T>> const& boxes)
{
    std::vector<typename tFrustum<T>::IntersectionResult> results(boxes.size());
    ClassifyBoxes(frustum, boxes, std::span(results));
    for (std::size_t i = 0; i < boxes.size(); ++i)
        EXPECT_EQ(results[i], frustum.ContainsAABB(boxes[i])) << i;
}

TYPED_TEST(BatchTest, BoxesAreClassifiedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(9);
    for (int round = 0; round < 20; ++round)
    {
        tVector3<T> const axis = RandomPoints<T>(generator, 1, -1, 1)[0];
        tFrustum<T> const frustum(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 25) *
                                  tMatrix4<T>::RotateAxis(tVector3<T>(), axis, T(round)));
        for (std::size_t const length : Lengths())
            ExpectClassifiedAsOneByOne(frustum, RandomBoxes<T>(generator, length));
    }
}

TYPED_TEST(BatchTest, BoxesThatTouchAPlaneAreClassifiedByProductsSummedFromXToZ)
{
    using T = TypeParam;
    Random random(16);
    for (int i = 0; i < 300; ++i)
        for (bool const isFarthest : {true, false})
        {
            auto const [plane, box, otherOrdersReject] = DrawTouchingCorner<T>(random, isFarthest);
            if (!otherOrdersReject)
                continue;
            std::vector<tVolumeAABB<T>> const boxes(37, box); // more than two blocks, and some beyond
            std::vector<typename tFrustum<T>::IntersectionResult> results(boxes.size());
            ClassifyBoxes(FrustumOf(static_cast<std::size_t>(i % 6), plane), boxes, std::span(results));
            for (auto const result : results)
                ASSERT_EQ(result, isFarthest ? tFrustum<T>::INTERSECTING : tFrustum<T>::INSIDE) << "case " << i;
        }
}

TYPED_TEST(BatchTest, EveryAnswerOccursAmongTheClassifiedBoxes)
{
    using T = TypeParam;
    // Looking down -z at depth 1 to 10: wholly inside, across the near plane, and behind the eye.
    tFrustum<T> const frustum(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 10));
    std::vector<tVolumeAABB<T>> boxes;
    for (int i = 0; i < 8; ++i)
    {
        boxes.emplace_back(tVector3<T>(-1, -1, -5), tVector3<T>(1, 1, -4));
        boxes.emplace_back(tVector3<T>(-T(0.1), -T(0.1), -2), tVector3<T>(T(0.1), T(0.1), 0));
        boxes.emplace_back(tVector3<T>(-1, -1, 1), tVector3<T>(1, 1, 2));
    }
    std::vector<typename tFrustum<T>::IntersectionResult> results(boxes.size());
    ClassifyBoxes(frustum, boxes, std::span(results));
    for (std::size_t i = 0; i < boxes.size(); i += 3)
    {
        EXPECT_EQ(results[i], tFrustum<T>::INSIDE);
        EXPECT_EQ(results[i + 1], tFrustum<T>::INTERSECTING);
        EXPECT_EQ(results[i + 2], tFrustum<T>::OUTSIDE);
    }
}

TYPED_TEST(BatchTest, EmptyInvertedAndNotANumberBoxesAndPlanesAreClassifiedAsOneByOne)
{
    using T = TypeParam;
    T const inf = INF<T>;
    T const nan = QUIET_NAN<T>;
    std::vector<tVolumeAABB<T>> boxes;
    T const values[] = {0, T(-0.0), 1, -1, 3, inf, -inf, nan};
    for (T const low : values)
        for (T const high : values)
            for (T const other : {T(0), nan, inf})
                boxes.emplace_back(tVector3<T>(low, other, low), tVector3<T>(high, high, other));
    boxes.emplace_back();
    ExpectClassifiedAsOneByOne(tFrustum<T>(), boxes);
    ExpectClassifiedAsOneByOne(tFrustum<T>(tMatrix4<T>()), boxes);
    ExpectClassifiedAsOneByOne(tFrustum<T>(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 10)), boxes);
    ExpectClassifiedAsOneByOne(tFrustum<T>(tMatrix4<T>::Scale(T{0})), boxes); // planes of NaN
}

TYPED_TEST(BatchTest, SpansOfDifferentLengthsAreAnErrorAndNothingIsWritten)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::RotateX(1);
    std::vector<tVector3<T>> const points(20, tVector3<T>(1, 2, 3));
    for (std::size_t const length : std::initializer_list<std::size_t>{0, 19, 21})
    {
        std::vector<tVector3<T>> results(length, tVector3<T>(9, 9, 9));
        ExpectDifferentLengths<bv::InvalidArgumentException>([&] { TransformPoints(matrix, points, results); },
                                                             "TransformPoints");
        ExpectDifferentLengths<bv::InvalidArgumentException>([&] { TransformDirections(matrix, points, results); },
                                                             "TransformDirections");
        for (tVector3<T> const& result : results)
            ExpectSameBits(result, tVector3<T>(9, 9, 9));

        using Result = typename tFrustum<T>::IntersectionResult;
        std::vector<Result> classes(length, static_cast<Result>(77));
        std::vector<tVolumeAABB<T>> const boxes(20);
        ExpectDifferentLengths<bv::InvalidArgumentException>(
            [&] { ClassifyBoxes(tFrustum<T>(), boxes, std::span(classes)); }, "ClassifyBoxes");
        for (Result const result : classes)
            EXPECT_EQ(result, static_cast<Result>(77));
    }
}

TYPED_TEST(BatchTest, EmptySpansAreFine)
{
    using T = TypeParam;
    TransformPoints(tMatrix4<T>::Scale(tVector3<T>()), {}, {});
    TransformDirections(tMatrix4<T>(), {}, {});
    ClassifyBoxes(tFrustum<T>(), {}, {});
    tVolumeAABB<T> box;
    ExpandBox(box, {});
    ExpectSameBits(box.GetMin(), tVolumeAABB<T>().GetMin());
    ExpectSameBits(box.GetMax(), tVolumeAABB<T>().GetMax());
}

template <typename Point>
struct NoiseForms;

template <>
struct NoiseForms<float>
{
    static constexpr char const* NOISE = "EvaluateNoise1";
    static constexpr char const* TURBULENCE = "EvaluateTurbulence1";
    static float Make(float x, float, float) { return x; }
    static float Noise(float x) { return Noise1(x); }
    static float Turbulence(float x, unsigned int octaves) { return Turbulence1(x, octaves); }
    static void Noise(std::span<float const> in, std::span<float> out) { EvaluateNoise1(in, out); }
    static void Turbulence(std::span<float const> in, unsigned int octaves, std::span<float> out)
    {
        EvaluateTurbulence1(in, octaves, out);
    }
};

template <>
struct NoiseForms<tVector2<float>>
{
    static constexpr char const* NOISE = "EvaluateNoise2";
    static constexpr char const* TURBULENCE = "EvaluateTurbulence2";
    static tVector2<float> Make(float x, float y, float) { return {x, y}; }
    static float Noise(tVector2<float> const& point) { return Noise2(point); }
    static float Turbulence(tVector2<float> const& point, unsigned int octaves) { return Turbulence2(point, octaves); }
    static void Noise(std::span<tVector2<float> const> in, std::span<float> out) { EvaluateNoise2(in, out); }
    static void Turbulence(std::span<tVector2<float> const> in, unsigned int octaves, std::span<float> out)
    {
        EvaluateTurbulence2(in, octaves, out);
    }
};

template <>
struct NoiseForms<tVector3<float>>
{
    static constexpr char const* NOISE = "EvaluateNoise3";
    static constexpr char const* TURBULENCE = "EvaluateTurbulence3";
    static tVector3<float> Make(float x, float y, float z) { return {x, y, z}; }
    static float Noise(tVector3<float> const& point) { return Noise3(point); }
    static float Turbulence(tVector3<float> const& point, unsigned int octaves) { return Turbulence3(point, octaves); }
    static void Noise(std::span<tVector3<float> const> in, std::span<float> out) { EvaluateNoise3(in, out); }
    static void Turbulence(std::span<tVector3<float> const> in, unsigned int octaves, std::span<float> out)
    {
        EvaluateTurbulence3(in, octaves, out);
    }
};

template <typename Point>
class BatchNoiseTest : public testing::Test
{
};
using Points = testing::Types<float, tVector2<float>, tVector3<float>>;
TYPED_TEST_SUITE(BatchNoiseTest, Points);

template <typename Point>
std::vector<Point> NoisePoints(std::mt19937& generator, std::size_t count, float scale)
{
    std::vector<Point> points(count);
    for (Point& point : points)
    {
        auto const coordinate = [&] { return (static_cast<float>(generator()) * 0x1p-31F - 1.0F) * scale; };
        float const x = coordinate();
        float const y = coordinate();
        float const z = coordinate();
        point = NoiseForms<Point>::Make(x, y, z);
    }
    return points;
}

TYPED_TEST(BatchNoiseTest, NoiseHasTheBitsOfTheSingleForm)
{
    std::mt19937 generator(10);
    for (float const scale : {1.0F, 300.0F, 1e6F, 1e11F})
        for (std::size_t const length : Lengths())
        {
            auto const points = NoisePoints<TypeParam>(generator, length, scale);
            std::vector<float> results(length);
            NoiseForms<TypeParam>::Noise(points, results);
            for (std::size_t i = 0; i < length; ++i)
                ExpectSameBits(results[i], NoiseForms<TypeParam>::Noise(points[i]));
        }
}

TYPED_TEST(BatchNoiseTest, TurbulenceHasTheBitsOfTheSingleForm)
{
    std::mt19937 generator(11);
    for (unsigned int octaves = 0; octaves <= 12; ++octaves)
        for (std::size_t const length : Lengths())
        {
            auto const points = NoisePoints<TypeParam>(generator, length, 50.0F);
            std::vector<float> results(length, -1.0F);
            NoiseForms<TypeParam>::Turbulence(points, octaves, results);
            for (std::size_t i = 0; i < length; ++i)
                ExpectSameBits(results[i], NoiseForms<TypeParam>::Turbulence(points[i], octaves));
        }
}

TYPED_TEST(BatchNoiseTest, SpecialCoordinatesHaveTheBitsOfTheSingleForm)
{
    float const inf = INF<float>;
    float const nan = QUIET_NAN<float>;
    float const values[] = {0.0F,           -0.0F,           1.0F,   -1.0F,   0.5F,    -0x1p-30F,
                            0x1p-140F,      255.75F,         256.0F, 0x1p23F, 0x1p31F, -0x1p31F,
                            0x1.fffffep30F, 0x1.fffffep127F, inf,    -inf,    nan};
    std::vector<TypeParam> points;
    for (float const x : values)
        for (float const y : values)
            for (float const z : values)
                points.push_back(NoiseForms<TypeParam>::Make(x, y, z));
    std::vector<float> results(points.size());
    NoiseForms<TypeParam>::Noise(points, results);
    for (std::size_t i = 0; i < points.size(); ++i)
        ExpectSameBits(results[i], NoiseForms<TypeParam>::Noise(points[i]));
    NoiseForms<TypeParam>::Turbulence(points, 10, results);
    for (std::size_t i = 0; i < points.size(); ++i)
        ExpectSameBits(results[i], NoiseForms<TypeParam>::Turbulence(points[i], 10));
}

TYPED_TEST(BatchNoiseTest, SpansOfDifferentLengthsAreAnErrorAndNothingIsWritten)
{
    using Forms = NoiseForms<TypeParam>;
    std::vector<TypeParam> const points(20);
    std::vector<float> results(19, 9.0F);
    ExpectDifferentLengths<bv::InvalidArgumentException>([&] { Forms::Noise(points, results); }, Forms::NOISE);
    ExpectDifferentLengths<bv::InvalidArgumentException>([&] { Forms::Turbulence(points, 4, results); },
                                                         Forms::TURBULENCE);
    EXPECT_EQ(results, std::vector<float>(19, 9.0F));
}

TYPED_TEST(BatchNoiseTest, EmptySpansAreFine)
{
    NoiseForms<TypeParam>::Noise({}, {});
    NoiseForms<TypeParam>::Turbulence({}, 4, {});
}

TEST(BatchNoiseTest, NoiseOfALineWorksInPlace)
{
    std::mt19937 generator(12);
    std::vector<float> const coordinates = NoisePoints<float>(generator, 150, 300.0F);
    std::vector<float> values = coordinates;
    EvaluateNoise1(values, values);
    for (std::size_t i = 0; i < values.size(); ++i)
        ExpectSameBits(values[i], Noise1(coordinates[i]));
    values = coordinates;
    EvaluateTurbulence1(values, 5, values);
    for (std::size_t i = 0; i < values.size(); ++i)
        ExpectSameBits(values[i], Turbulence1(coordinates[i], 5));
}

TEST(BatchGeneratorTest, ABufferHoldsTheDrawsInOrderAndTheGeneratorGoesOnBehindThem)
{
    for (unsigned int const seed : {0U, 1U, 12345U, 32768U, 4294967295U})
        for (std::size_t const length : std::initializer_list<std::size_t>{0, 1, 2, 7, 8, 9, 100, 511, 512, 513, 1024,
                                                                           2047, 2048, 2049, 5000, 16384, 20000})
        {
            RNGenerator one(seed);
            RNGenerator many(seed);
            std::vector<float> results(length);
            GetFloats(many, results);
            for (std::size_t i = 0; i < length; ++i)
                ASSERT_EQ(results[i], one.GetFloat()) << "seed " << seed << ", draw " << i << " of " << length;
            for (int i = 0; i < 20; ++i)
                ASSERT_EQ(many.GetInteger(), one.GetInteger()) << "seed " << seed << " after " << length;
        }
}

TEST(BatchGeneratorTest, BuffersInARowGoOnWithTheSameSequence)
{
    RNGenerator one(7);
    RNGenerator many(7);
    for (std::size_t const length : std::initializer_list<std::size_t>{3000, 1, 4096, 5, 2048})
    {
        std::vector<float> results(length);
        GetFloats(many, results);
        for (float const result : results)
            ASSERT_EQ(result, one.GetFloat());
    }
}

TEST(BatchTest, NothingIsAllocated)
{
    std::vector<tVector3<float>> points(1000, tVector3<float>(1, 2, 3));
    std::vector<float> values(1000);
    std::vector<tVolumeAABB<float>> const boxes(1000);
    std::vector<tFrustum<float>::IntersectionResult> classes(1000);
    RNGenerator generator;
    tVolumeAABB<float> box;
    auto const matrix = tMatrix4<float>::RotateX(1);
    EvaluateNoise1(values, values); // the first call asks the processor

    EXPECT_EQ(bv::test::CountAllocations(
                  [&]
                  {
                      TransformPoints(matrix, points, points);
                      TransformDirections(matrix, points, points);
                      ExpandBox(box, points);
                      ClassifyBoxes(tFrustum<float>(), boxes, std::span(classes));
                      EvaluateNoise3(points, values);
                      EvaluateTurbulence3(points, 4, values);
                      GetFloats(generator, values);
                  }),
              0U);
}

#if !defined NDEBUG && GTEST_HAS_DEATH_TEST
TEST(BatchDeathTest, DebugBuildsStopAtAPartialOverlap)
{
    std::vector<tVector3<float>> points(30, tVector3<float>(1, 2, 3));
    std::span<tVector3<float>> const all(points);
    auto const matrix = tMatrix4<float>::RotateX(1);
    auto const& stops = bv::test::ENDED_AT_BREAKPOINT;
    EXPECT_EXIT(TransformPoints(matrix, all.first(20), all.subspan(1, 20)), stops, "");
    EXPECT_EXIT(TransformDirections(matrix, all.subspan(10, 20), all.first(20)), stops, "");
    TransformPoints(matrix, all.first(15), all.last(15)); // side by side

    std::vector<float> values(60);
    std::span<float> const floats(values);
    EXPECT_EXIT(EvaluateNoise1(floats.first(20), floats.subspan(19, 20)), stops, "");
    EvaluateNoise1(floats.first(20), floats.subspan(20, 20));

    // One memory as arguments and results of different types is an overlap from the first byte on.
    alignas(tVector3<float>) std::byte memory[240] = {};
    std::span<tVector3<float> const> const spaces(reinterpret_cast<tVector3<float> const*>(memory), 20);
    std::span<float> const over(reinterpret_cast<float*>(memory), 20);
    EXPECT_EXIT(EvaluateNoise3(spaces, over), stops, "");
    EXPECT_EXIT(EvaluateTurbulence3(spaces, 2, over), stops, "");
}
#endif

} // namespace
