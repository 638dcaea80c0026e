#include <cmath>
#include <cstddef>

#include "bv/maths/Direction.h"
#include "bv/maths/LocalAxes.h"
#include "bv/maths/tQuaternion.h"
#include "properties/Draw.h"
#include "support/Precisions.h"

// Bounds are worked out beside each property, with u for ROUNDING; a little is added for what is of the order of u * u.
//
// Normalised() multiplies by 1 / sqrt(x * x + y * y + z * z). The sum is 3u off, its root 1.5u + u, the reciprocal and
// the products add u each: components are 4.5u off, and so is the length. (Of a quaternion, whose sum is one of pairs,
// too.)

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
[[nodiscard]] Wide ExactDot(tVector3<T> const& a, tVector3<T> const& b)
{
    return Widened(a.x) * Widened(b.x) + Widened(a.y) * Widened(b.y) + Widened(a.z) * Widened(b.z);
}

/// Three axes have length 1 and are at right angles to each other, up to an error.
template <typename T>
void AssertOrthonormal(tVector3<T> const& a, tVector3<T> const& b, tVector3<T> const& c, Wide roundings)
{
    Wide const bound = roundings * 1.01L * ROUNDING<T>;
    for (tVector3<T> const* axis : {&a, &b, &c})
        RC_ASSERT(std::fabs(std::sqrt(ExactDot(*axis, *axis)) - 1) <= bound);
    RC_ASSERT(std::fabs(ExactDot(a, b)) <= bound);
    RC_ASSERT(std::fabs(ExactDot(b, c)) <= bound);
    RC_ASSERT(std::fabs(ExactDot(c, a)) <= bound);
}

template <typename T>
class RotationProperties : public testing::Test
{
};
TYPED_TEST_SUITE(RotationProperties, Precisions);

TYPED_TEST(RotationProperties, TheBasisAroundANormalIsOrthonormalAndRightHanded)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const normal = *Direction<T>();
            tVector3<T> first, second;
            EvaluateOrthonormalBasis(normal, first, second);
            // Of a normal whose squared length is 1 + e, e up to 9u, the formulas give products and squared lengths
            // that are e off: 1 / |s + z| and |x y| / |s + z| are at most 1. Each component has at most five roundings
            // of numbers up to 1, of which the other vector takes a share of up to sqrt(3) in a product: 9u + 2 * 9u.
            AssertOrthonormal(first, second, normal, 27);
            RC_ASSERT(first.Cross(second).Dot(normal) > 0);
        });
}

TYPED_TEST(RotationProperties, OrthonormalisedAxesAreOrthonormalAndKeepTheirSides)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Direction<T>();
            auto const b = *Direction<T>();
            auto const c = *Direction<T>();
            Wide const volume = ExactDot(a.Cross(b), c);
            RC_PRE(std::fabs(volume) > 0.001L && ExactDot(a, b) * ExactDot(a, b) < 0.999L);
            auto first = a;
            auto second = b;
            auto third = c;
            RC_ASSERT(Orthonormalise(first, second, third));
            // The first axis has length 1 to 4.5u. The second time that the part along it is taken off, that part is
            // small: what is left of it is 9u of a small number, 3u of the sum and 4u of product and difference, 7u of
            // the vector. Normalising keeps angles but for the 1u of its products, times 3. The third axis is a vector
            // product, each component of which is 2u of two products off, 4u with all components, and has the lengths
            // of both axes.
            AssertOrthonormal(first, second, third, 14);
            RC_ASSERT(first.Dot(a) > 0 && second.Dot(b) > 0 && third.Dot(c) > 0);
            RC_ASSERT((ExactDot(first.Cross(second), third) > 0) == (volume > 0));
        });
}

TEST(LocalAxesProperties, LocalAxesAreOrthonormalAndLeftHanded)
{
    ExpectAlways(
        []
        {
            auto const normal = *Direction<float>();
            tVector3<float> first, second;
            EvaluateLocalAxes(normal, first, second);
            // The second axis is at right angles to the normal but for the roundings of its products by the reciprocal
            // length: 2u. The first one is a vector product, 4u off, normalised: 3u. Lengths are 4.5u off.
            AssertOrthonormal(first, second, normal, 9);
            RC_ASSERT(second.Cross(first).Dot(normal) > 0);
        });
}

TYPED_TEST(RotationProperties, AQuaternionTurnsAsItsMatrixDoes)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const q = *Rotation<T>();
            auto const vector = *Vector(T{8});
            // The matrix is that of the quaternion at length 1: its elements are at most 15u off, those beside the
            // diagonal 7u, so that a row is 29u off; sums of three products of the vector, 3u of the magnitudes: 6u. No
            // renormalisation, since the vector is not of length 1. A quaternion of length 1 + 4.5u turns a vector by
            // 9u of t and u x t more, which are at most 2 and 2 in length: 36u. Of Rotate()'s roundings: a vector
            // product is 2 * sqrt(2) u off; t = 2 u x v is so 6u, w t 7u, the sum 2u, u x t 6u + 6u, the last sum 3u.
            tMatrix4<T> const matrix = q.GetMatrix();
            RC_PRE(matrix.IsOrthonormal() && std::fabs(vector.LengthSquared() - 1) > T(0.001));
            auto const turned = vector.TransformedAsVector(matrix);
            auto const rotated = q.Rotate(vector);
            Wide const length = std::sqrt(ExactDot(vector, vector));
            for (std::size_t i = 0; i < 3; ++i)
                RC_ASSERT(std::fabs(Widened(turned[i]) - Widened(rotated[i])) <=
                          (29 + 6 + 36 + 24) * 1.1L * ROUNDING<T> * length);
        });
}

TYPED_TEST(RotationProperties, TheMatrixOfAProductIsTheProductOfTheMatrices)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const p = *Rotation<T>();
            auto const q = *Rotation<T>();
            auto const left = (p * q).GetMatrix();
            auto const right = p.GetMatrix() * q.GetMatrix();
            // On the right, each row is 29u off, which the other matrix's column weighs by at most 1, on either side,
            // and sums of three products 3u of up to sqrt(3): 2 * 29u + 6u. On the left, each component of the product
            // is 4u off, 8u together, which changes elements by up to four times as much; the matrix itself is 15u off.
            for (std::size_t i = 0; i < 16; ++i)
                RC_ASSERT(std::fabs(Widened(left[i]) - Widened(right[i])) <= (64 + 32 + 15) * 1.1L * ROUNDING<T>);
        });
}

TYPED_TEST(RotationProperties, AQuaternionComesBackFromItsMatrix)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const q = *Rotation<T>();
            tQuaternion<T> const back(q.GetMatrix());
            // The components that count are taken from sums of elements, up to 4 * 15u + 3u off a quarter of which at
            // least half is one of the components: 63u / 2 each, 63u together; length 1 to 4.5u for either.
            Wide dot = 0;
            for (std::size_t i = 0; i < 4; ++i)
                dot += Widened(q[i]) * Widened(back[i]);
            Wide const sign = dot < 0 ? -1 : 1;
            for (std::size_t i = 0; i < 4; ++i)
                RC_ASSERT(std::fabs(Widened(back[i]) - sign * Widened(q[i])) <= (63 + 9) * 1.1L * ROUNDING<T>);
        });
}

TYPED_TEST(RotationProperties, TheConjugateTurnsBack)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const q = *Rotation<T>();
            auto const vector = *Vector(T{8});
            auto const back = q.Conjugated().Rotate(q.Rotate(vector));
            // Twice what Rotate() is off: 36u for the length of the quaternion and 24u for its roundings.
            Wide const length = std::sqrt(ExactDot(vector, vector));
            for (std::size_t i = 0; i < 3; ++i)
                RC_ASSERT(std::fabs(Widened(back[i]) - Widened(vector[i])) <= 120 * 1.1L * ROUNDING<T> * length);
        });
}

} // namespace
