// The batch forms against the single forms: every length, every layout, special values, failures.

#include "bv/maths/Batch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Intersect.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector2.h"
#include "support/BatchData.h"
#include "support/GuardedMemory.h"
#include "support/MatrixState.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class BatchFormsTest : public testing::Test
{
};
TYPED_TEST_SUITE(BatchFormsTest, Precisions);

/// Lengths from 0 on, over the ends of registers, granules, blocks and words of bits.
std::vector<std::size_t> Lengths()
{
    std::vector<std::size_t> lengths;
    for (std::size_t n = 0; n <= 300; n += n < 40 ? 1 : 13)
        lengths.push_back(n);
    for (int const n : {63, 64, 65, 80, 127, 128, 129, 144, 255, 256, 257, 1024, 1025, 1100})
        lengths.push_back(static_cast<std::size_t>(n));
    return lengths;
}

/// A vertex as a renderer may have it.
template <typename T>
struct Vertex
{
    unsigned char tag;
    tVector3<T> position;
    T u;
    tVector3<T> normal;
};

/// Vectors in one of the layouts that a view takes.
template <typename T>
class Layout
{
    std::vector<tVector3<T>> array;
    std::vector<Vertex<T>> records;
    std::vector<T> x, y, z;
    int kind;

public:
    static constexpr int KINDS = 3;

    Layout(int which, std::vector<tVector3<T>> const& vectors)
        : array(vectors), records(vectors.size()), x(vectors.size()), y(vectors.size()), z(vectors.size()), kind{which}
    {
        for (std::size_t i = 0; i < vectors.size(); ++i)
        {
            records[i] = {77, vectors[i], 5, {}};
            x[i] = vectors[i].x;
            y[i] = vectors[i].y;
            z[i] = vectors[i].z;
        }
    }

    tVectorView<T> Get()
    {
        return kind == 0   ? tVectorView<T>(array)
               : kind == 1 ? tVectorView<T>(records, &Vertex<T>::position)
                           : tVectorView<T>(x, y, z);
    }
    /// That the view has not written to anything else.
    void ExpectIntact() const
    {
        for (Vertex<T> const& record : records)
        {
            EXPECT_EQ(record.tag, 77);
            ExpectSameBits(record.u, T{5});
            ExpectSameBits(record.normal, tVector3<T>());
        }
    }
};

/// Calls a batch form with arguments and results in every two layouts, and in place, and compares it with a single
/// form.
template <typename T, typename Batch, typename Single>
void ExpectVectors(std::vector<tVector3<T>> const& vectors, Batch batch, Single single)
{
    std::vector<tVector3<T>> expected;
    for (tVector3<T> const& vector : vectors)
        expected.push_back(single(vector));
    for (int from = 0; from < Layout<T>::KINDS; ++from)
        for (int to = -1; to < Layout<T>::KINDS; ++to)
        {
            Layout<T> in(from, vectors);
            Layout<T> out(to, std::vector<tVector3<T>>(vectors.size()));
            tVectorView<T> const results = to < 0 ? in.Get() : out.Get();
            batch(tVectorView<T const>(in.Get()), results);
            for (std::size_t i = 0; i < vectors.size(); ++i)
                ExpectSameBits(results[i], expected[i]);
            in.ExpectIntact();
            out.ExpectIntact();
        }
}

template <typename T>
std::vector<tMatrix4<T>> Matrices(std::mt19937& generator)
{
    std::vector<tMatrix4<T>> matrices{tMatrix4<T>(),
                                      tMatrix4<T>::Scale(tVector3<T>(2, -3, T(0.5))),
                                      tMatrix4<T>::RotateAxis(tVector3<T>(), tVector3<T>(1, 2, -1), 1),
                                      tMatrix4<T>::RotateAxis(tVector3<T>(3, 4, 5), tVector3<T>(1, 2, -1), 2),
                                      tMatrix4<T>::Translate(1, 2, 3),
                                      RandomMatrix<T>(generator)};
    for (std::uint32_t const state : STATES) // stale ones
        matrices.push_back(WithState(matrices.back(), state));
    return matrices;
}

/// The same matrix with (0, 0, 0, 1) for its fourth row.
template <typename T>
tMatrix4<T> Affine(tMatrix4<T> matrix)
{
    matrix(12) = matrix(13) = matrix(14) = 0;
    matrix(15) = 1;
    return matrix;
}

template <typename T>
std::vector<tVector3<T>> WithSpecial(std::vector<tVector3<T>> vectors, std::size_t count)
{
    auto const special = SpecialPoints<T>();
    for (std::size_t i = 0; i < count; ++i)
        vectors.push_back(special[i * 37 % special.size()]);
    return vectors;
}

TYPED_TEST(BatchFormsTest, PointsAreMovedAffinelyAsByAMatrixWithoutAProjectiveRow)
{
    using T = TypeParam;
    std::mt19937 generator(1);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
            ExpectVectors(
                WithSpecial(RandomPoints<T>(generator, length - length / 3, -10, 10), length / 3),
                [&](auto const& in, auto const& out) { TransformPointsAffinely(matrix, in, out); },
                [affine = Affine(matrix)](tVector3<T> const& point) { return point.Transformed(affine); });
}

TYPED_TEST(BatchFormsTest, PointsAreDividedWhereTheyCanBeAndMarkedElsewhere)
{
    using T = TypeParam;
    std::mt19937 generator(2);
    auto const projection = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 2, 1, 100);
    for (std::size_t const length : Lengths())
    {
        auto points = RandomPoints<T>(generator, length, -3, 3);
        for (std::size_t i = 0; i < length; i += 1 + generator() % 20)
            points[i].z = i % 3 == 0 ? T{0} : i % 3 == 1 ? TOLERANCE<T> / 2 : TOLERANCE<T>; // the last one can be
        for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
        {
            Layout<T> in(kind, points);
            std::vector<tVector3<T>> results(length);
            std::vector<std::uint64_t> bits(GetBitWords(length), ~std::uint64_t{0});
            std::size_t const count = TryTransformPoints(projection, in.Get(), results, bits);
            std::size_t marked = 0;
            for (std::size_t i = 0; i < length; ++i)
            {
                tVector3<T> const& p = points[i];
                bool const isMarked = (bits[i / 64] >> i % 64 & 1U) != 0;
                EXPECT_EQ(isMarked, std::abs(p.z) < TOLERANCE<T>) << i;
                marked += isMarked ? 1U : 0U;
                T const* const m = projection.Get();
                tVector3<T> const sums(m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3],
                                       m[4] * p.x + m[5] * p.y + m[6] * p.z + m[7],
                                       m[8] * p.x + m[9] * p.y + m[10] * p.z + m[11]);
                ExpectSameBits(results[i], isMarked ? sums : p.Transformed(projection));
            }
            EXPECT_EQ(count, marked);
            EXPECT_EQ(length % 64 != 0 ? bits.back() >> length % 64 : 0U, 0U);
        }
    }
}

TYPED_TEST(BatchFormsTest, TriedByADiagonalMatrixAllPointsCanBeDividedOrNone)
{
    using T = TypeParam;
    std::vector<tVector3<T>> const points(70, tVector3<T>(1, 2, 3));
    std::vector<tVector3<T>> results(70);
    std::vector<std::uint64_t> bits(2, 99);
    tMatrix4<T> matrix = tMatrix4<T>::Scale(tVector3<T>(2, 4, 8));
    EXPECT_EQ(TryTransformPoints(matrix, points, results, bits), 0U);
    EXPECT_EQ(bits, (std::vector<std::uint64_t>{0, 0}));
    ExpectSameBits(results[69], tVector3<T>(2, 8, 24));
    matrix(15) = TOLERANCE<T> / 2;
    EXPECT_EQ(TryTransformPoints(matrix, points, results, bits), 70U);
    EXPECT_EQ(bits, (std::vector<std::uint64_t>{~std::uint64_t{0}, 63}));
    ExpectSameBits(results[69], tVector3<T>(2, 8, 24));
    matrix(15) = 0.5;
    EXPECT_EQ(TryTransformPoints(matrix, points, results, bits), 0U);
    ExpectSameBits(results[69], tVector3<T>(4, 16, 48));
    EXPECT_EQ(TryTransformPoints(WithState(matrix, IDENTITY), points, results, bits), 0U);
    ExpectSameBits(results[69], points[69]);
}

TYPED_TEST(BatchFormsTest, ClipCoordinatesAreTheUndividedSums)
{
    using T = TypeParam;
    struct Point4
    {
        tVector3<T> xyz;
        T w;
    };
    std::mt19937 generator(3);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
        {
            auto const points = WithSpecial(RandomPoints<T>(generator, length - length / 4, -10, 10), length / 4);
            for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
            {
                Layout<T> in(kind, points);
                std::vector<tVector3<T>> results(length);
                std::vector<T> w(length);
                TransformPointsToClip(matrix, in.Get(), results, w);
                std::vector<Point4> four(length);
                if (length != 0)
                    TransformPointsToClip(matrix, in.Get(), tVectorView<T>(four, &Point4::xyz),
                                          tNumberView<T>(&four[0].w, length, sizeof(Point4)));
                for (std::size_t i = 0; i < length; ++i)
                {
                    T const* const m = matrix.Get();
                    auto const& [x, y, z] = std::tie(points[i].x, points[i].y, points[i].z);
                    tVector3<T> expected(m[0] * x + m[1] * y + m[2] * z + m[3], m[4] * x + m[5] * y + m[6] * z + m[7],
                                         m[8] * x + m[9] * y + m[10] * z + m[11]);
                    T expectedW = x * m[12] + y * m[13] + z * m[14] + m[15];
                    if (matrix.IsIdentity())
                    {
                        expected = points[i];
                        expectedW = 1;
                    }
                    else if (matrix.IsDiagonal())
                    {
                        expected = {x * m[0], y * m[5], z * m[10]};
                        expectedW = m[15];
                    }
                    ExpectSameBits(results[i], expected);
                    ExpectSameBits(w[i], expectedW);
                    ExpectSameBits(four[i].xyz, expected);
                    ExpectSameBits(four[i].w, expectedW);
                }
            }
        }
}

TYPED_TEST(BatchFormsTest, EveryLayoutOfPointsAndDirectionsIsTransformedAlike)
{
    using T = TypeParam;
    std::mt19937 generator(4);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
        {
            auto const points = RandomPoints<T>(generator, length, 1, 10);
            ExpectVectors(
                points, [&](auto const& in, auto const& out) { TransformPoints(matrix, in, out); },
                [&](tVector3<T> const& point) { return point.Transformed(matrix); });
            ExpectVectors(
                points, [&](auto const& in, auto const& out) { TransformDirections(matrix, in, out); },
                [&](tVector3<T> const& point) { return point.TransformedAsVector(matrix); });
        }
}

TYPED_TEST(BatchFormsTest, WhatIsCopiedIsWrittenUpToThePointThatThrowsAndNotBeyond)
{
    using T = TypeParam;
    auto const projection = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 100);
    for (std::size_t bad = 0; bad < 200; bad += 7)
        for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
        {
            std::vector<tVector3<T>> points(200, tVector3<T>(1, 2, 4));
            points[bad].z = 0;
            Layout<T> in(kind, points);
            Layout<T> out(1, std::vector<tVector3<T>>(200, tVector3<T>(9, 9, 9)));
            EXPECT_THROW(TransformPoints(projection, in.Get(), out.Get()), DivideByZeroException);
            EXPECT_THROW(TransformPoints(projection, in.Get(), in.Get()), DivideByZeroException);
            for (std::size_t i = 0; i < 200; ++i)
            {
                tVector3<T> const divided = tVector3<T>(1, 2, 4).Transformed(projection);
                ExpectSameBits(out.Get()[i], i < bad ? divided : tVector3<T>(9, 9, 9));
                ExpectSameBits(in.Get()[i], i < bad ? divided : points[i]);
            }
        }
}

TYPED_TEST(BatchFormsTest, VectorsAreNormalisedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(5);
    for (std::size_t const length : Lengths())
        ExpectVectors(
            WithSpecial(RandomPoints<T>(generator, length - length / 2, -10, 10), length / 2),
            [](auto const& in, auto const& out) { NormaliseVectors(in, out); },
            [](tVector3<T> const& vector) { return vector.Normalised(); });
}

/// Boxes of random and special numbers, in no order.
template <typename T>
std::vector<tVolumeAABB<T>> Boxes(std::mt19937& generator, std::size_t count)
{
    auto const special = SpecialPoints<T>();
    std::vector<tVolumeAABB<T>> boxes;
    for (std::size_t i = 0; i < count; ++i)
    {
        tVector3<T> const from = RandomPoints<T>(generator, 1, -30, 30)[0];
        tVector3<T> const size = RandomPoints<T>(generator, 1, 0, i % 4 == 0 ? T{30} : T{4})[0];
        boxes.emplace_back(from, from + size);
        if (i % 9 == 8)
            boxes.back() = tVolumeAABB<T>(special[generator() % special.size()], special[generator() % special.size()]);
        if (i % 31 == 30)
            boxes.back() = tVolumeAABB<T>();
    }
    return boxes;
}

/// A node of a hierarchy.
template <typename T>
struct Node
{
    int first;
    tVolumeAABB<T> box;
    unsigned char count;
};

/// Calls a function with boxes in each layout.
template <typename T, typename Function>
void ForLayouts(std::vector<tVolumeAABB<T>> const& boxes, Function function)
{
    function(tBoxView<T const>(boxes));
    std::vector<Node<T>> nodes;
    std::vector<tVector3<T>> lower;
    std::vector<tVector3<T>> upper;
    for (tVolumeAABB<T> const& box : boxes)
    {
        nodes.push_back({1, box, 2});
        lower.push_back(box.GetMin());
        upper.push_back(box.GetMax());
    }
    if (!nodes.empty())
        function(tBoxView<T const>(&nodes[0].box, nodes.size(), sizeof(Node<T>)));
    Layout<T> from(2, lower);
    Layout<T> to(2, upper);
    function(tBoxView<T const>(from.Get(), to.Get()));
    function(tBoxView<T const>(tVectorView<T const>(lower), tVectorView<T const>(upper)));
}

TYPED_TEST(BatchFormsTest, BoxesAreMovedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(6);
    for (tMatrix4<T> const& matrix : Matrices<T>(generator))
        for (std::size_t const length : Lengths())
        {
            auto const boxes = Boxes<T>(generator, length);
            ForLayouts<T>(boxes,
                          [&](tBoxView<T const> const& in)
                          {
                              std::vector<tVolumeAABB<T>> results(length);
                              TransformBoxes(matrix, in, results);
                              for (std::size_t i = 0; i < length; ++i)
                              {
                                  ExpectSameBits(results[i].GetMin(), (boxes[i] * matrix).GetMin());
                                  ExpectSameBits(results[i].GetMax(), (boxes[i] * matrix).GetMax());
                              }
                          });
            std::vector<tVolumeAABB<T>> inPlace = boxes;
            TransformBoxes(matrix, inPlace, inPlace);
            for (std::size_t i = 0; i < length; ++i)
                ExpectSameBits(inPlace[i].GetMax(), (boxes[i] * matrix).GetMax());
        }
}

TYPED_TEST(BatchFormsTest, PointsInABoxAreFoundAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(7);
    for (std::size_t const length : Lengths())
    {
        auto points = WithSpecial(RandomPoints<T>(generator, length - length / 3, -2, 2), length / 3);
        for (std::size_t i = 0; i < length; i += 5)
            points[i].x = i % 2 == 0 ? T{-1} : T{1}; // on a face
        tVolumeAABB<T> const box({-1, -1, T(-1.5)}, {1, T(1.5), 1});
        for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
            for (bool const exclusive : {false, true})
            {
                Layout<T> in(kind, points);
                std::vector<std::uint64_t> bits(GetBitWords(length), 1234);
                std::size_t const count = FindPointsInside(box, exclusive, in.Get(), bits);
                std::size_t expected = 0;
                for (std::size_t i = 0; i < length; ++i)
                {
                    bool const isInside = box.Contains(points[i], exclusive);
                    expected += isInside ? 1U : 0U;
                    EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, isInside) << i;
                }
                EXPECT_EQ(count, expected);
            }
    }
}

TYPED_TEST(BatchFormsTest, BoxesGrowByPointsInEveryLayout)
{
    using T = TypeParam;
    std::mt19937 generator(8);
    for (std::size_t const length : Lengths())
    {
        auto points = RandomPoints<T>(generator, length, -1, 1);
        for (std::size_t i = 0; i < length; ++i) // zeros of both signs are the highest and the lowest values
            points[i] = {generator() % 2 == 0 ? T{0} : -T{0}, std::abs(points[i].y), -std::abs(points[i].z)};
        tVolumeAABB<T> expected;
        for (tVector3<T> const& point : points)
            expected.Expand(point);
        for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
        {
            Layout<T> in(kind, points);
            tVolumeAABB<T> box;
            ExpandBox(box, in.Get());
            ExpectSameBits(box.GetMin(), expected.GetMin());
            ExpectSameBits(box.GetMax(), expected.GetMax());
        }
    }
}

template <typename T>
std::vector<tFrustum<T>> Views()
{
    return {tFrustum<T>(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 25)), tFrustum<T>(),
            tFrustum<T>(tMatrix4<T>::OrthogonalProjection(-20, 20, -10, 10, -15, 15)),
            tFrustum<T>(tMatrix4<T>::Scale(T{0}))}; // the last one has planes of NaN
}

template <typename T>
std::array<tPlane<T>, 6> PlanesOf(tFrustum<T> const& view)
{
    return {view.GetLeftPlane(), view.GetRightPlane(), view.GetBottomPlane(),
            view.GetTopPlane(),  view.GetNearPlane(),  view.GetFarPlane()};
}

/// The corner of a box along a normal, or against it.
template <typename T>
tVector3<T> CornerOf(tVolumeAABB<T> const& box, tVector3<T> const& normal, bool along)
{
    tVector3<T> corner;
    for (std::size_t axis = 0; axis < 3; ++axis)
        corner[axis] = (normal[axis] >= 0) == along ? box.GetMax()[axis] : box.GetMin()[axis];
    return corner;
}

/// What ClassifyBoxesByPlane() says, plane by plane.
template <typename T>
unsigned int ByPlane(tFrustum<T> const& view, unsigned int which, tVolumeAABB<T> const& box)
{
    unsigned int straddled = 0;
    for (unsigned int i = 0; i < 6; ++i)
        if (tPlane<T> const plane = PlanesOf(view)[i]; (which >> i & 1U) != 0)
        {
            if (plane.GetDistance(CornerOf(box, plane.GetNormal(), true)) < 0)
                return PLANES_OUTSIDE;
            if (plane.GetDistance(CornerOf(box, plane.GetNormal(), false)) < 0)
                straddled |= 1U << i;
        }
    return straddled;
}

TYPED_TEST(BatchFormsTest, BoxesInAViewAreClassifiedFoundAndListedAsOneByOne)
{
    using T = TypeParam;
    using Result = typename tFrustum<T>::IntersectionResult;
    std::mt19937 generator(9);
    for (tFrustum<T> const& view : Views<T>())
        for (std::size_t const length : Lengths())
        {
            auto const boxes = Boxes<T>(generator, length);
            std::vector<std::uint32_t> expected;
            for (std::size_t i = 0; i < length; ++i)
                if (view.ContainsAABB(boxes[i]) != tFrustum<T>::OUTSIDE)
                    expected.push_back(static_cast<std::uint32_t>(i));
            ForLayouts<T>(boxes,
                          [&](tBoxView<T const> const& in)
                          {
                              std::vector<Result> results(length);
                              std::vector<std::uint64_t> bits(GetBitWords(length), 55);
                              std::vector<std::uint32_t> indices(length);
                              ClassifyBoxes(view, in, std::span(results));
                              EXPECT_EQ(FindVisibleBoxes(view, in, bits), expected.size());
                              std::size_t const listed = ListVisibleBoxes(view, in, indices);
                              indices.resize(listed);
                              EXPECT_EQ(indices, expected);
                              for (std::size_t i = 0; i < length; ++i)
                              {
                                  EXPECT_EQ(results[i], view.ContainsAABB(boxes[i]));
                                  EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, results[i] != tFrustum<T>::OUTSIDE);
                              }
                          });
        }
}

TYPED_TEST(BatchFormsTest, AHierarchyPassesThePlanesDownThatItStillHasToTest)
{
    using T = TypeParam;
    std::mt19937 generator(10);
    std::size_t straddling = 0;
    for (tFrustum<T> const& view : Views<T>())
        for (unsigned int which = 0; which <= PLANES_ALL; ++which)
        {
            std::size_t const length = 50 + which;
            auto const boxes = Boxes<T>(generator, length);
            ForLayouts<T>(boxes,
                          [&](tBoxView<T const> const& in)
                          {
                              std::vector<std::uint8_t> results(length, 200);
                              ClassifyBoxesByPlane(view, which, in, results);
                              for (std::size_t i = 0; i < length; ++i)
                              {
                                  EXPECT_EQ(results[i], ByPlane(view, which, boxes[i])) << i;
                                  straddling += results[i] != 0 && results[i] != PLANES_OUTSIDE ? 1U : 0U;
                              }
                          });
        }
    EXPECT_GT(straddling, 100U);
}

template <typename T>
std::vector<tVolumeSphere<T>> Spheres(std::mt19937& generator, std::size_t count)
{
    auto const special = SpecialPoints<T>();
    std::vector<tVolumeSphere<T>> spheres;
    for (std::size_t i = 0; i < count; ++i)
    {
        tVector3<T> const centre = RandomPoints<T>(generator, 1, -30, 30)[0];
        spheres.emplace_back(centre, RandomPoints<T>(generator, 1, 0, 10)[0].x);
        if (i % 9 == 8)
            spheres.back().SetCentre(special[generator() % special.size()]);
        if (i % 11 == 10)
            spheres.back().SetRadius(special[generator() % special.size()].x);
    }
    return spheres;
}

/// Calls a function with spheres in each layout.
template <typename T, typename Function>
void ForLayouts(std::vector<tVolumeSphere<T>> const& spheres, Function function)
{
    function(tSphereView<T const>(spheres));
    std::vector<tVector3<T>> centres;
    std::vector<T> squares;
    for (tVolumeSphere<T> const& sphere : spheres)
    {
        centres.push_back(sphere.GetCentre());
        squares.push_back(sphere.GetRadiusSquared());
    }
    Layout<T> apart(2, centres);
    function(tSphereView<T const>(apart.Get(), tNumberView<T const>(squares)));
    function(tSphereView<T const>(tVectorView<T const>(centres), tNumberView<T const>(squares)));
}

TYPED_TEST(BatchFormsTest, OutsideABoxThatIsOutsideAllBoxesAreOutside)
{
    using T = TypeParam;
    std::mt19937 generator(10);
    auto const boxes = Boxes<T>(generator, 50);
    std::vector<std::uint8_t> results(50, 200);
    ClassifyBoxesByPlane(tFrustum<T>(), PLANES_OUTSIDE | PLANE_TOP, boxes, results);
    EXPECT_EQ(results, std::vector<std::uint8_t>(50, PLANES_OUTSIDE));
}

TYPED_TEST(BatchFormsTest, RecordsThatBeginWithASphereAreReadFromTheirFirstByteOn)
{
    using T = TypeParam;
    struct Record
    {
        T radiusSquared;
        tVector3<T> centre;
        T more[2];
    };
    // A block on the heap that begins with the first record: a sanitizer would notice a read in front of it.
    std::vector<Record> const records(64, Record{T{4}, tVector3<T>(0, 0, 10), {}});
    tSphereView<T const> const view(tVectorView<T const>(records, &Record::centre),
                                    tNumberView<T const>(&records[0].radiusSquared, 64, sizeof(Record)));
    std::vector<T> entries(64);
    std::vector<T> exits(64);
    std::vector<std::uint64_t> bits(1);
    tRay<T> const ray(tVector3<T>(0, 0, 0), tVector3<T>(0, 0, 1));
    EXPECT_EQ(ClipSpheres(ray, view, entries, exits, bits), 64U);
    EXPECT_EQ(entries, std::vector<T>(64, T{8}));
    EXPECT_EQ(exits, std::vector<T>(64, T{12}));
}

TYPED_TEST(BatchFormsTest, OneMemberOfARecordMayBecomeAnother)
{
    using T = TypeParam;
    tMatrix4<T> const matrix = tMatrix4<T>::Translate(1, 2, 3);
    for (std::size_t const length : Lengths())
    {
        std::vector<Vertex<T>> records(length, Vertex<T>{77, tVector3<T>(4, 5, 6), 8, {}});
        TransformPoints(matrix, tVectorView<T const>(records, &Vertex<T>::position),
                        tVectorView<T>(records, &Vertex<T>::normal));
        for (Vertex<T> const& record : records)
        {
            ExpectSameBits(record.position, tVector3<T>(4, 5, 6));
            ExpectSameBits(record.normal, tVector3<T>(5, 7, 9));
            EXPECT_EQ(record.u, T{8});
        }
    }
}

TYPED_TEST(BatchFormsTest, UnitDirectionsAreNormalisedInEveryLayout)
{
    using T = TypeParam;
    std::mt19937 generator(20);
    auto const rotation = tMatrix4<T>::RotateAxis(tVector3<T>(), tVector3<T>(1, 2, -1), 1);
    for (std::size_t const length : Lengths())
    {
        auto directions = WithSpecial(RandomPoints<T>(generator, length - length / 5, -1, 1), length / 5);
        for (std::size_t i = 0; i < length; i += 2)
            directions[i].Normalise();
        ExpectVectors(
            directions, [&](auto const& in, auto const& out) { TransformDirections(rotation, in, out); },
            [&](tVector3<T> const& direction) { return direction.TransformedAsVector(rotation); });
    }
}

TYPED_TEST(BatchFormsTest, SpheresInAViewAreClassifiedByTheirDistanceFromEachPlane)
{
    using T = TypeParam;
    using Result = typename tFrustum<T>::IntersectionResult;
    std::mt19937 generator(11);
    std::size_t counts[3] = {};
    for (tFrustum<T> const& view : Views<T>())
        for (std::size_t const length : Lengths())
        {
            auto const spheres = Spheres<T>(generator, length);
            std::vector<std::uint32_t> expected(length, tFrustum<T>::INSIDE);
            std::vector<std::uint32_t> visible;
            for (std::size_t i = 0; i < length; ++i)
            {
                T const radius = std::sqrt(spheres[i].GetRadiusSquared());
                for (tPlane<T> const& plane : PlanesOf(view))
                    if (plane.GetDistance(spheres[i].GetCentre()) < radius)
                        expected[i] = tFrustum<T>::INTERSECTING;
                for (tPlane<T> const& plane : PlanesOf(view))
                    if (plane.GetDistance(spheres[i].GetCentre()) < -radius)
                        expected[i] = tFrustum<T>::OUTSIDE;
                if (expected[i] != tFrustum<T>::OUTSIDE)
                    visible.push_back(static_cast<std::uint32_t>(i));
                ++counts[expected[i]];
            }
            ForLayouts<T>(spheres,
                          [&](tSphereView<T const> const& in)
                          {
                              std::vector<Result> results(length);
                              std::vector<std::uint64_t> bits(GetBitWords(length), 55);
                              std::vector<std::uint32_t> indices(length);
                              ClassifySpheres(view, in, std::span(results));
                              EXPECT_EQ(FindVisibleSpheres(view, in, bits), visible.size());
                              indices.resize(ListVisibleSpheres(view, in, indices));
                              EXPECT_EQ(indices, visible);
                              for (std::size_t i = 0; i < length; ++i)
                              {
                                  EXPECT_EQ(results[i], expected[i]) << i;
                                  EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, expected[i] != tFrustum<T>::OUTSIDE);
                              }
                          });
        }
    for (std::size_t const count : counts)
        EXPECT_GT(count, 100U);
}

/// Rays in every direction, along axes and in their planes, with special numbers.
template <typename T>
std::vector<tRay<T>> RaysOfAllKinds(std::mt19937& generator, std::size_t count)
{
    auto const special = SpecialPoints<T>();
    std::vector<tRay<T>> rays;
    for (std::size_t i = 0; i < count; ++i)
    {
        tVector3<T> direction = RandomPoints<T>(generator, 1, -1, 1)[0];
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (generator() % 5 == 0)
                direction[axis] = generator() % 2 == 0 ? T{0} : TOLERANCE<T>;
        rays.emplace_back(RandomPoints<T>(generator, 1, -40, 40)[0], direction.Normalised());
        if (i % 5 == 4) // on the border between along an axis and not
            rays.back().direction[generator() % 3] = TOLERANCE<T>;
        if (i % 7 == 6)
            rays.back().direction = special[generator() % special.size()];
        if (i % 13 == 12)
            rays.back().origin = special[generator() % special.size()];
    }
    return rays;
}

TYPED_TEST(BatchFormsTest, ARayMeetsBoxesAsOneByOne)
{
    using T = TypeParam;
    constexpr T INF = std::numeric_limits<T>::infinity();
    constexpr T NOT_A_NUMBER = std::numeric_limits<T>::quiet_NaN();
    std::mt19937 generator(12);
    T const intervals[][2] = {{0, INF}, {-INF, INF}, {0, 30}, {5, 2}, {NOT_A_NUMBER, 5}, {0, NOT_A_NUMBER}, {-9, -3}};
    std::size_t hitCount = 0;
    for (tRay<T> const& ray : RaysOfAllKinds<T>(generator, 300))
    {
        std::size_t const length = generator() % 150;
        auto boxes = Boxes<T>(generator, length);
        for (std::size_t i = 0; i < length; i += 3) // some that it meets
            boxes[i] = tVolumeAABB<T>(ray.origin + ray.direction * T(i) - tVector3<T>(1, 1, 1),
                                      ray.origin + ray.direction * T(i) + tVector3<T>(1, 1, 1));
        for (std::size_t i = 1; i < length; i += 7) // and some that begin where it does
            boxes[i] = tVolumeAABB<T>(ray.origin, ray.origin + tVector3<T>(1, 2, 3));
        for (auto const& [tNear, tFar] : intervals)
            ForLayouts<T>(boxes,
                          [&, from = tNear, to = tFar](tBoxView<T const> const& in)
                          {
                              std::vector<T> entries(length, 7);
                              std::vector<std::uint64_t> bits(GetBitWords(length), 55);
                              std::size_t const count = ClipBoxes(ray, from, to, in, entries, bits);
                              std::size_t expected = 0;
                              for (std::size_t i = 0; i < length; ++i)
                              {
                                  T lo = from;
                                  T hi = to;
                                  bool const hit = ray.Clip(boxes[i], lo, hi);
                                  expected += hit ? 1U : 0U;
                                  EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, hit) << i;
                                  ExpectSameBits(entries[i], hit ? lo : INF);
                              }
                              EXPECT_EQ(count, expected);
                              hitCount += count;
                          });
    }
    EXPECT_GT(hitCount, 1000U);
}

TYPED_TEST(BatchFormsTest, ARayMeetsTrianglesAsOneByOne)
{
    using T = TypeParam;
    constexpr T INF = std::numeric_limits<T>::infinity();
    std::mt19937 generator(19);
    T const intervals[][2] = {{0, INF}, {-INF, INF}, {0, 30}, {5, 2}};
    std::size_t hitCount = 0;
    std::vector<std::size_t> const lengths = Lengths();
    for (tRay<T> const& ray : RaysOfAllKinds<T>(generator, 120))
    {
        std::size_t const length = lengths[generator() % (lengths.size() - 6)];
        std::vector<tVector3<T>> corners[3];
        for (std::vector<tVector3<T>>& list : corners)
            list = RandomPoints<T>(generator, length, -40, 40);
        auto const special = SpecialPoints<T>();
        for (std::size_t i = 0; i < length; ++i)
        {
            if (i % 3 == 0) // at a corner, and at an edge
                corners[i % 2][i] = ray.origin + ray.direction * T(i + 1);
            if (i % 3 == 1)
                corners[1][i] = (ray.origin + ray.direction * T(4)) * T{2} - corners[0][i];
            if (i % 11 == 7)
                corners[2][i] = special[generator() % special.size()];
        }
        T const(&interval)[2] = intervals[generator() % 4];
        T const tNear = interval[0];
        T const tFar = interval[1];
        for (int kind = 0; kind < Layout<T>::KINDS; ++kind)
        {
            Layout<T> a(kind, corners[0]);
            Layout<T> b(kind == 0 ? 2 : kind, corners[1]);
            Layout<T> c(2, corners[2]);
            auto const expect = [&](auto const& from)
            {
                std::vector<T> t(length, 7);
                std::vector<T> u(length, 7);
                std::vector<T> v(length, 7);
                std::vector<std::uint64_t> bits(GetBitWords(length), 55);
                std::size_t const count =
                    IntersectTriangles(from, a.Get(), b.Get(), c.Get(), tNear, tFar, t, u, v, bits);
                std::size_t expected = 0;
                for (std::size_t i = 0; i < length; ++i)
                {
                    tTriangleHit<T> hit{INF, 0, 0};
                    bool const isHit =
                        IntersectTriangle(from, corners[0][i], corners[1][i], corners[2][i], tNear, tFar, hit);
                    expected += isHit ? 1U : 0U;
                    EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, isHit) << i;
                    ExpectSameBits(t[i], hit.t);
                    ExpectSameBits(u[i], hit.u);
                    ExpectSameBits(v[i], hit.v);
                }
                EXPECT_EQ(count, expected);
                hitCount += count;
            };
            expect(ray);
            expect(tWatertightRay<T>(ray));
        }
    }
    EXPECT_GT(hitCount, 1000U);
}

TYPED_TEST(BatchFormsTest, RaysMeetASphereAndARaySpheresAsOneByOne)
{
    using T = TypeParam;
    constexpr T INF = std::numeric_limits<T>::infinity();
    std::mt19937 generator(13);
    std::size_t hitCount = 0;
    auto const expect = [&](tRay<T> const& ray, tVolumeSphere<T> const& sphere, T entry, T exit, bool isMarked)
    {
        T tNear = INF;
        T tFar = -INF;
        bool const hit = ray.Clip(sphere, tNear, tFar);
        EXPECT_EQ(isMarked, hit);
        ExpectSameBits(entry, tNear);
        ExpectSameBits(exit, tFar);
        hitCount += hit ? 1U : 0U;
    };
    for (std::size_t const length : Lengths())
    {
        auto const rays = RaysOfAllKinds<T>(generator, length);
        auto const spheres = Spheres<T>(generator, length);
        std::vector<T> entries(length);
        std::vector<T> exits(length);
        std::vector<std::uint64_t> bits(GetBitWords(length));
        tVolumeSphere<T> const sphere(tVector3<T>(1, 2, 3), T{15});
        tRay<T> const ray(tVector3<T>(0, 1, 2), tVector3<T>(1, 2, -2) / T{3});

        std::vector<tVector3<T>> origins;
        std::vector<tVector3<T>> directions;
        for (tRay<T> const& each : rays)
        {
            origins.push_back(each.origin);
            directions.push_back(each.direction);
        }
        Layout<T> from(2, origins);
        Layout<T> along(2, directions);
        for (tRayView<T const> const& view :
             {tRayView<T const>(rays), tRayView<T const>(from.Get(), along.Get()),
              tRayView<T const>(tVectorView<T const>(origins), tVectorView<T const>(directions))})
        {
            ClipRays(view, sphere, entries, exits, bits);
            for (std::size_t i = 0; i < length; ++i)
                expect(rays[i], sphere, entries[i], exits[i], (bits[i / 64] >> i % 64 & 1U) != 0);
        }
        ForLayouts<T>(spheres,
                      [&](tSphereView<T const> const& in)
                      {
                          ClipSpheres(ray, in, entries, exits, bits);
                          for (std::size_t i = 0; i < length; ++i)
                              expect(ray, spheres[i], entries[i], exits[i], (bits[i / 64] >> i % 64 & 1U) != 0);
                      });
    }
    EXPECT_GT(hitCount, 500U);
}

template <typename T>
void ExpectSameMatrix(tMatrix4<T> const& actual, tMatrix4<T> const& expected)
{
    EXPECT_EQ(StateOf(actual), StateOf(expected));
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(actual[i], expected[i]);
}

/// Matrices of every state, mostly general, stale ones and special elements among them; none of them is singular.
template <typename T>
std::vector<tMatrix4<T>> ManyMatrices(std::mt19937& generator, std::size_t count)
{
    auto const kinds = Matrices<T>(generator);
    std::vector<tMatrix4<T>> matrices;
    while (matrices.size() < count)
    {
        tMatrix4<T> matrix = generator() % 4 == 0 ? kinds[generator() % kinds.size()] : RandomMatrix<T>(generator);
        if (generator() % 16 == 0)
            matrix(generator() % 16) = SPECIAL_VALUES<T>[generator() % std::size(SPECIAL_VALUES<T>)];
        try
        {
            static_cast<void>(matrix.Inverted());
            matrices.push_back(matrix);
        }
        catch (MatrixException const&)
        {
        }
    }
    return matrices;
}

TYPED_TEST(BatchFormsTest, MatricesAreInvertedTransposedAndMultipliedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(14);
    for (std::size_t const length : Lengths())
    {
        auto const lefts = ManyMatrices<T>(generator, length);
        auto const rights = ManyMatrices<T>(generator, length);
        tMatrix4<T> const one = RandomMatrix<T>(generator);
        std::vector<tMatrix4<T>> inverses(length);
        std::vector<tMatrix4<T>> normals(length);
        std::vector<tMatrix4<T>> products(length);
        std::vector<tMatrix4<T>> pairs(length);
        std::vector<tMatrix4<T>> inPlace = lefts;
        InvertMatrices(lefts, inverses);
        ComputeNormalMatrices(lefts, normals);
        MultiplyMatrices(one, rights, products);
        MultiplyMatrices(lefts, rights, pairs);
        InvertMatrices(inPlace, inPlace);
        for (std::size_t i = 0; i < length; ++i)
        {
            ExpectSameMatrix(inverses[i], lefts[i].Inverted());
            ExpectSameMatrix(inPlace[i], lefts[i].Inverted());
            ExpectSameMatrix(normals[i], lefts[i].Inverted().Transposed());
            ExpectSameMatrix(products[i], one * rights[i]);
            ExpectSameMatrix(pairs[i], lefts[i] * rights[i]);
        }
    }
}

TYPED_TEST(BatchFormsTest, AFactorMayLieAmongTheResults)
{
    using T = TypeParam;
    std::mt19937 generator(15);
    auto matrices = ManyMatrices<T>(generator, 20);
    auto const before = matrices;
    MultiplyMatrices(matrices[3], matrices, matrices);
    for (std::size_t i = 0; i < 20; ++i)
        ExpectSameMatrix(matrices[i], before[3] * before[i]);
}

TYPED_TEST(BatchFormsTest, ASingularMatrixThrowsAndTheResultsInFrontOfItStand)
{
    using T = TypeParam;
    std::mt19937 generator(16);
    for (std::size_t bad = 0; bad < 70; bad += 3)
    {
        std::vector<tMatrix4<T>> matrices;
        for (std::size_t i = 0; i < 70; ++i)
            matrices.push_back(RandomMatrix<T>(generator));
        T const zeros[16] = {};
        T ones[16];
        std::fill(std::begin(ones), std::end(ones), T{1});
        matrices[bad] = bad % 2 == 0 ? WithState(tMatrix4<T>(zeros), GENERAL) : tMatrix4<T>(ones);
        auto const mark = tMatrix4<T>::Scale(T{7});
        std::vector<tMatrix4<T>> results(70, mark);
        std::vector<tMatrix4<T>> normals(70, mark);
        EXPECT_THROW(InvertMatrices(matrices, results), MatrixException);
        EXPECT_THROW(ComputeNormalMatrices(matrices, normals), MatrixException);
        for (std::size_t i = 0; i < 70; ++i)
        {
            ExpectSameMatrix(results[i], i < bad ? matrices[i].Inverted() : mark);
            ExpectSameMatrix(normals[i], i < bad ? matrices[i].Inverted().Transposed() : mark);
        }
    }
}

TYPED_TEST(BatchFormsTest, NumbersAreComparedAsOneByOne)
{
    using T = TypeParam;
    std::mt19937 generator(17);
    for (std::size_t const length : Lengths())
    {
        std::vector<T> a(length);
        std::vector<T> b(length);
        for (std::size_t i = 0; i < length; ++i)
        {
            std::size_t const which = generator() % std::size(SPECIAL_VALUES<T>);
            a[i] = i % 3 == 0 ? SPECIAL_VALUES<T>[which] : RandomNumber(generator, T{-2}, T{2});
            b[i] = i % 5 == 0 ? SPECIAL_VALUES<T>[generator() % std::size(SPECIAL_VALUES<T>)] : a[i];
            int const steps = static_cast<int>(generator() % 120) - 60;
            if (i % 5 != 0)
                for (int k = 0; k < std::abs(steps); ++k)
                    b[i] = std::nextafter(b[i], steps < 0 ? T{-9} : T{9});
        }
        std::vector<std::uint64_t> bits(GetBitWords(length), 55);
        std::size_t const count = CompareNumbers(a, b, bits);
        std::size_t expected = 0;
        for (std::size_t i = 0; i < length; ++i)
        {
            EXPECT_EQ((bits[i / 64] >> i % 64 & 1U) != 0, IsEqual(a[i], b[i])) << a[i] << " " << b[i];
            expected += IsEqual(a[i], b[i]) ? 1U : 0U;
        }
        EXPECT_EQ(count, expected);
    }
}

TYPED_TEST(BatchFormsTest, NumbersAtTheToleranceAndOfOppositeSignAreNotEqual)
{
    using T = TypeParam;
    // The patterns of opposite signs are counted through 0: 2 and -0 are a quarter of all patterns apart.
    T const pairs[][2] = {{TOLERANCE<T>, T{0}}, {T{0}, -TOLERANCE<T>}, {T{2}, -T{0}}, {-T{0}, T{2}},
                          {-T{2}, T{0}},        {T{4}, -T{0}},         {T{2}, -T{2}}, {T{0}, -T{2}}};
    for (std::size_t const length : Lengths())
    {
        std::vector<T> a(length);
        std::vector<T> b(length);
        for (std::size_t i = 0; i < length; ++i)
        {
            a[i] = pairs[i % std::size(pairs)][0];
            b[i] = pairs[i % std::size(pairs)][1];
        }
        std::vector<std::uint64_t> bits(GetBitWords(length), 55);
        EXPECT_EQ(CompareNumbers(a, b, bits), 0U);
        EXPECT_EQ(bits, std::vector<std::uint64_t>(bits.size()));
    }
}

TYPED_TEST(BatchFormsTest, ExtremesAreTheEndsOfAnIntervalThatGrows)
{
    using T = TypeParam;
    std::mt19937 generator(18);
    for (std::size_t const length : Lengths())
        for (int const kind : {0, 1, 2})
        {
            std::vector<Vertex<T>> records(length);
            std::vector<T> numbers(length);
            T lowest = std::numeric_limits<T>::infinity();
            T highest = -lowest;
            for (std::size_t i = 0; i < length; ++i)
            {
                numbers[i] = kind == 0              ? RandomNumber(generator, T{-5}, T{5})
                             : kind == 1            ? SPECIAL_VALUES<T>[generator() % std::size(SPECIAL_VALUES<T>)]
                             : generator() % 2 == 0 ? T{0}
                                                    : -T{0};
                records[i].u = numbers[i];
                lowest = numbers[i] < lowest ? numbers[i] : lowest;
                highest = numbers[i] > highest ? numbers[i] : highest;
            }
            tExtremes<T> const ends = FindExtremes(tNumberView<T const>(numbers));
            ExpectSameBits(ends.min, lowest);
            ExpectSameBits(ends.max, highest);
            if (length == 0)
                continue;
            tExtremes<T> const strided = FindExtremes(tNumberView<T const>(&records[0].u, length, sizeof(Vertex<T>)));
            ExpectSameBits(strided.min, lowest);
            ExpectSameBits(strided.max, highest);
        }
}

#if defined __linux__
TYPED_TEST(BatchFormsTest, NothingIsReadOrWrittenBehindTheLastElement)
{
    using T = TypeParam;
    struct Record
    {
        T tag;
        tVector3<T> vector;
    };
    std::mt19937 generator(31);
    auto const matrix = RandomMatrix<T>(generator);
    GuardedMemory const sources(1200 * sizeof(Record));
    GuardedMemory const targets(1200 * sizeof(Record));
    for (std::size_t const length : Lengths())
    {
        auto const vectors = RandomPoints<T>(generator, length, -10, 10);
        auto const in = sources.Last<tVector3<T>>(length);
        auto const out = targets.Last<tVector3<T>>(length);
        std::copy(vectors.begin(), vectors.end(), in.begin());
        TransformDirections(matrix, in, out);
        for (std::size_t i = 0; i < length; ++i)
            ExpectSameBits(out[i], vectors[i].TransformedAsVector(matrix));

        auto const records = sources.Last<Record>(length);
        auto const results = targets.Last<Record>(length);
        for (std::size_t i = 0; i < length; ++i)
            records[i].vector = vectors[i];
        TransformDirections(matrix, tVectorView<T const>(records, &Record::vector),
                            tVectorView<T>(results, &Record::vector));
        for (std::size_t i = 0; i < length; ++i)
            ExpectSameBits(results[i].vector, vectors[i].TransformedAsVector(matrix));
        if (length == 0)
            continue;
        // Each of these numbers is the last of its record.
        T highest = vectors[0].z;
        for (tVector3<T> const& vector : vectors)
            highest = std::max(highest, vector.z);
        ExpectSameBits(FindExtremes(tNumberView<T const>(&records[0].vector.z, length, sizeof(Record))).max, highest);
    }
}
#endif

TYPED_TEST(BatchFormsTest, EveryDifferentLengthIsAnError)
{
    using T = TypeParam;
    std::vector<tVector3<T>> vectors(20);
    std::vector<tVector3<T>> fewer(19);
    std::vector<tVolumeAABB<T>> boxes(20);
    std::vector<tVolumeSphere<T>> spheres(20, tVolumeSphere<T>(tVector3<T>(), T{1}));
    std::vector<tRay<T>> rays(20);
    std::vector<tMatrix4<T>> matrices(20);
    std::vector<tMatrix4<T>> fewerMatrices(19);
    std::vector<T> numbers(20);
    std::vector<T> fewerNumbers(19);
    std::vector<std::uint64_t> bits(1);
    std::vector<std::uint64_t> moreBits(2);
    std::vector<std::uint32_t> indices(19);
    std::vector<std::uint8_t> bytes(19);
    std::vector<typename tFrustum<T>::IntersectionResult> codes(19);
    tMatrix4<T> const matrix = tMatrix4<T>::Translate(1, 2, 3);
    tFrustum<T> const view;
    tVolumeAABB<T> const box;
    tVolumeSphere<T> const sphere(tVector3<T>(), T{1});
    tRay<T> const ray;
    std::pair<char const*, std::function<void()>> const calls[] = {
        {"TransformPoints", [&] { TransformPoints(matrix, vectors, fewer); }},
        {"TransformDirections", [&] { TransformDirections(matrix, vectors, fewer); }},
        {"TransformPointsAffinely", [&] { TransformPointsAffinely(matrix, vectors, fewer); }},
        {"TryTransformPoints", [&] { TryTransformPoints(matrix, vectors, fewer, bits); }},
        {"TryTransformPoints", [&] { TryTransformPoints(matrix, vectors, vectors, moreBits); }},
        {"TransformPointsToClip", [&] { TransformPointsToClip(matrix, vectors, fewer, numbers); }},
        {"TransformPointsToClip", [&] { TransformPointsToClip(matrix, vectors, vectors, fewerNumbers); }},
        {"NormaliseVectors", [&] { NormaliseVectors(vectors, fewer); }},
        {"TransformBoxes", [&] { TransformBoxes(matrix, boxes, std::span(boxes).first(3)); }},
        {"InvertMatrices", [&] { InvertMatrices(matrices, fewerMatrices); }},
        {"ComputeNormalMatrices", [&] { ComputeNormalMatrices(matrices, fewerMatrices); }},
        {"MultiplyMatrices", [&] { MultiplyMatrices(matrix, matrices, fewerMatrices); }},
        {"MultiplyMatrices", [&] { MultiplyMatrices(matrices, fewerMatrices, fewerMatrices); }},
        {"MultiplyMatrices", [&] { MultiplyMatrices(fewerMatrices, matrices, fewerMatrices); }},
        {"FindPointsInside", [&] { FindPointsInside(box, false, vectors, moreBits); }},
        {"ClassifyBoxes", [&] { ClassifyBoxes(view, boxes, std::span(codes)); }},
        {"ClassifyBoxesByPlane", [&] { ClassifyBoxesByPlane(view, PLANES_ALL, boxes, bytes); }},
        {"FindVisibleBoxes", [&] { FindVisibleBoxes(view, boxes, moreBits); }},
        {"ListVisibleBoxes", [&] { ListVisibleBoxes(view, boxes, indices); }},
        {"ClassifySpheres", [&] { ClassifySpheres(view, spheres, std::span(codes)); }},
        {"FindVisibleSpheres", [&] { FindVisibleSpheres(view, spheres, moreBits); }},
        {"ListVisibleSpheres", [&] { ListVisibleSpheres(view, spheres, indices); }},
        {"ClipBoxes", [&] { ClipBoxes(ray, T{0}, T{1}, boxes, fewerNumbers, bits); }},
        {"ClipBoxes", [&] { ClipBoxes(ray, T{0}, T{1}, boxes, numbers, moreBits); }},
        {"ClipRays", [&] { ClipRays(tRayView<T const>(rays), sphere, fewerNumbers, numbers, bits); }},
        {"ClipRays", [&] { ClipRays(tRayView<T const>(rays), sphere, numbers, fewerNumbers, bits); }},
        {"ClipRays", [&] { ClipRays(tRayView<T const>(rays), sphere, numbers, numbers, moreBits); }},
        {"ClipSpheres", [&] { ClipSpheres(ray, spheres, fewerNumbers, numbers, bits); }},
        {"ClipSpheres", [&] { ClipSpheres(ray, spheres, numbers, numbers, moreBits); }},
        {"IntersectTriangles",
         [&] { IntersectTriangles(ray, vectors, fewer, vectors, 0, 1, numbers, numbers, numbers, bits); }},
        {"IntersectTriangles",
         [&] { IntersectTriangles(ray, vectors, vectors, fewer, 0, 1, numbers, numbers, numbers, bits); }},
        {"IntersectTriangles",
         [&] { IntersectTriangles(ray, vectors, vectors, vectors, 0, 1, fewerNumbers, numbers, numbers, bits); }},
        {"IntersectTriangles",
         [&] { IntersectTriangles(tWatertightRay<T>(ray), vectors, vectors, vectors, 0, 1, numbers, numbers, fewerNumbers, bits); }},
        {"IntersectTriangles",
         [&] { IntersectTriangles(ray, vectors, vectors, vectors, 0, 1, numbers, numbers, numbers, moreBits); }},
        {"CompareNumbers", [&] { CompareNumbers(numbers, fewerNumbers, bits); }},
        {"CompareNumbers", [&] { CompareNumbers(numbers, numbers, moreBits); }},
        {"tVectorView", [&] { tVectorView<T>(numbers, numbers, fewerNumbers); }},
        {"tBoxView", [&] { tBoxView<T>(tVectorView<T>(vectors), tVectorView<T>(fewer)); }},
        {"tRayView", [&] { tRayView<T const>(tVectorView<T const>(vectors), tVectorView<T const>(fewer)); }},
        {"tSphereView", [&] { tSphereView<T const>(tVectorView<T const>(vectors), fewerNumbers); }},
    };
    for (auto const& [name, call] : calls)
        try
        {
            call();
            ADD_FAILURE() << name << " accepts different lengths";
        }
        catch (bv::InvalidArgumentException const& error)
        {
            EXPECT_STREQ(error.Message().ToCharArray(), "Spans of different lengths");
            EXPECT_STREQ(error.Filename().ToCharArray(), "internal\\Maths\\Batch");
            EXPECT_EQ(error.FunctionName().ToCharArray(), std::string("bv::maths::") + name);
        }
    for (tVector3<T> const& vector : fewer)
        ExpectSameBits(vector, tVector3<T>());
    for (tMatrix4<T> const& untouched : fewerMatrices)
        EXPECT_TRUE(untouched.IsIdentity());
}

TEST(BatchFormsGeneratorTest, VectorsAreDrawnInTheOrderOfTheirComponents)
{
    for (std::size_t const length : std::initializer_list<std::size_t>{0, 1, 2, 5, 100, 700, 2000})
    {
        RNGenerator many(42);
        RNGenerator one(42);
        std::vector<tVector2<float>> two(length);
        std::vector<tVector3<float>> three(length);
        GetVectors2D(many, two);
        GetVectors3D(many, three);
        for (tVector2<float> const& vector : two)
            ExpectSameBits(vector, one.GetVector2D());
        for (tVector3<float> const& vector : three)
            ExpectSameBits(vector, one.GetVector3D());
        EXPECT_EQ(many.GetInteger(), one.GetInteger());
    }
}

} // namespace
