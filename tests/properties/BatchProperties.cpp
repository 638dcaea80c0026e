#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "bv/maths/Batch.h"
#include "bv/maths/Noise.h"
#include "properties/Draw.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

// The batch forms give what the single forms give, to the bit, for arrays of every length and numbers of any bits.

namespace
{

using namespace bv::maths;
using namespace bv::test;

/// Up to so many values of a generator.
template <typename Value>
[[nodiscard]] std::vector<Value> Some(rc::Gen<Value> const& generator)
{
    auto const length = static_cast<std::size_t>(*Whole(70));
    return *rc::gen::container<std::vector<Value>>(length, generator);
}

/// A vector of any bits, or, as often, of ordinary numbers.
template <typename T>
[[nodiscard]] rc::Gen<tVector3<T>> AnyVector()
{
    auto const any = rc::gen::apply([](T x, T y, T z) { return tVector3<T>(x, y, z); }, AnyNumber<T>(), AnyNumber<T>(),
                                    AnyNumber<T>());
    return rc::gen::oneOf(any, Vector(T{8}));
}

template <typename V>
[[nodiscard]] bool HaveSameBits(V const& a, V const& b)
{
    return HasSameBits(a.x, b.x) && HasSameBits(a.y, b.y) && HasSameBits(a.z, b.z);
}

template <typename T>
class BatchProperties : public testing::Test
{
};
TYPED_TEST_SUITE(BatchProperties, Precisions);

TYPED_TEST(BatchProperties, PointsAreTransformedAsOneByOne)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const matrix = *Matrix(T{8}, true);
            auto const points = Some(AnyVector<T>());
            std::vector<tVector3<T>> results(points.size());
            TransformPoints(matrix, points, results);
            for (std::size_t i = 0; i < points.size(); ++i)
                RC_ASSERT(HaveSameBits(results[i], points[i].Transformed(matrix)));
            TransformDirections(matrix, points, results);
            for (std::size_t i = 0; i < points.size(); ++i)
                RC_ASSERT(HaveSameBits(results[i], points[i].TransformedAsVector(matrix)));
        });
}

TYPED_TEST(BatchProperties, VectorsAreNormalisedAsOneByOne)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const vectors = Some(AnyVector<T>());
            std::vector<tVector3<T>> results(vectors.size());
            NormaliseVectors(vectors, results);
            for (std::size_t i = 0; i < vectors.size(); ++i)
                RC_ASSERT(HaveSameBits(results[i], vectors[i].Normalised()));
        });
}

TYPED_TEST(BatchProperties, ABoxGrowsAsByOneAfterTheOther)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const points = Some(AnyVector<T>());
            tVolumeAABB<T> together, single;
            ExpandBox(together, points);
            for (auto const& point : points)
                single.Expand(point);
            RC_ASSERT(HaveSameBits(together.GetMin(), single.GetMin()));
            RC_ASSERT(HaveSameBits(together.GetMax(), single.GetMax()));
        });
}

TYPED_TEST(BatchProperties, PointsAreFoundInABoxAsOneByOne)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const box = *Box(T{8});
            bool const exclusiveMax = *Whole(2) == 1;
            auto const points = Some(AnyVector<T>());
            std::vector<std::uint64_t> bits(GetBitWords(points.size()));
            std::size_t const count = FindPointsInside(box, exclusiveMax, points, bits);
            std::size_t expected = 0;
            for (std::size_t i = 0; i < points.size(); ++i)
            {
                bool const isInside = box.Contains(points[i], exclusiveMax);
                RC_ASSERT(((bits[i / 64] >> (i % 64)) & 1) == (isInside ? 1U : 0U));
                expected += isInside ? 1 : 0;
            }
            RC_ASSERT(count == expected);
        });
}

TYPED_TEST(BatchProperties, BoxesInAViewAreClassifiedAsOneByOne)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            tFrustum<T> const frustum(tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, 16) *
                                      (*Rotation<T>()).GetMatrix());
            auto const boxes = Some(Box(T{16}));
            std::vector<typename tFrustum<T>::IntersectionResult> results(boxes.size());
            ClassifyBoxes(frustum, boxes, std::span(results));
            for (std::size_t i = 0; i < boxes.size(); ++i)
                RC_ASSERT(results[i] == frustum.ContainsAABB(boxes[i]));
        });
}

TEST(NoiseProperties, NoiseIsEvaluatedAsOneByOne)
{
    ExpectAlways(
        []
        {
            auto const points = Some(AnyVector<float>());
            std::vector<float> results(points.size());
            EvaluateNoise3(points, results);
            for (std::size_t i = 0; i < points.size(); ++i)
                RC_ASSERT(HasSameBits(results[i], Noise3(points[i])));
        });
}

} // namespace
