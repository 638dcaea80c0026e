// Turns, bases and parts of matrices: those of ordinary numbers within rounding, those of any numbers without harm.

#include <cmath>
#include <limits>

#include "Fuzz.h"
#include "bv/maths/Bounds.h"
#include "bv/maths/Direction.h"
#include "bv/maths/LocalAxes.h"
#include "bv/maths/View.h"
#include "bv/maths/tMatrixParts.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tVolumeAABB.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

template <typename T>
constexpr T SLACK = 64 * std::numeric_limits<T>::epsilon();

template <typename T>
bool IsNear(tVector3<T> const& a, tVector3<T> const& b, T slack)
{
    return (a - b).Length() <= slack;
}

/// A turn as quaternion, as matrix and as inverse.
template <typename T>
void Turn(Input& input)
{
    tQuaternion<T> const any(input.Number<T>(), input.Number<T>(), input.Number<T>(), input.Number<T>());
    tQuaternion<T> changed(any);
    Require(IsSame(changed.Normalise().w, any.Normalised().w), "quaternions are changed as they are copied");
    tVector3<T> const anywhere = input.Vector3<T>();
    static_cast<void>(any.Rotate(anywhere));
    static_cast<void>(tQuaternion<T>(any.GetMatrix()));

    tQuaternion<T> const rough(input.Tame<T>(), input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    tVector3<T> const point(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    if (rough.Dot(rough) < T(0.01))
        return;
    tQuaternion<T> const turn = rough.Normalised();
    T const slack = SLACK<T> * (1 + point.Length());
    tVector3<T> const turned = turn.Rotate(point);
    Require(std::abs(turned.Length() - point.Length()) <= slack, "a turn keeps lengths");
    Require(IsNear(turn.Conjugated().Rotate(turned), point, slack), "the conjugate turns back");
    Require(IsNear(point.TransformedAsVector(turn.GetMatrix()), turned, slack), "the matrix of a turn turns alike");
    Require(IsNear(tQuaternion<T>(turn.GetMatrix()).Rotate(point), turned, slack), "a turn comes back from its matrix");
    Require(IsNear((turn * turn).Rotate(point), turn.Rotate(turned), slack), "a product turns twice");
}

/// Axes around any direction.
template <typename T>
void Span(Input& input)
{
    tVector3<T> const rough(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    if (rough.Length() < T(0.1))
        return;
    tVector3<T> const normal = rough.Normalised();
    if constexpr (std::is_same_v<T, float>)
    {
        tVector3<T> u;
        tVector3<T> v;
        EvaluateLocalAxes(normal, u, v);
        Require(std::abs(u.Dot(normal)) <= SLACK<T> && std::abs(v.Dot(normal)) <= SLACK<T> &&
                    std::abs(u.Dot(v)) <= SLACK<T>,
                "local axes stand upright on each other");
        Require(std::abs(u.Length() - 1) <= SLACK<T> && std::abs(v.Length() - 1) <= SLACK<T>,
                "local axes have length 1");
    }
    tVector3<T> const direction(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    T const slack = SLACK<T> * (1 + direction.Length());
    Require(std::abs(Reflect(direction, normal).Length() - direction.Length()) <= slack, "a reflection keeps lengths");
    Require(IsNear(Reflect(Reflect(direction, normal), normal), direction, slack), "two reflections cancel");
}

/// A matrix taken apart and put together.
template <typename T>
void Divide(Input& input)
{
    static_cast<void>(Decompose(input.Matrix<T>()));
    T elements[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int i = 0; i < 12; ++i)
        elements[i] = input.Tame<T>();
    tMatrix4<T> const matrix(elements);
    T const determinant = matrix.Determinant();
    auto const parts = Decompose(matrix);
    if (!parts || std::abs(determinant) < 1)
        return;
    tMatrix4<T> const whole = Compose(*parts);
    for (std::size_t i = 0; i < 16; ++i)
        Require(std::abs(whole[i] - matrix[i]) <= 4096 * SLACK<T> * 256, "the parts of a matrix make the matrix");
}

/// A turned box holds what the box held.
template <typename T>
void Box(Input& input)
{
    tVector3<T> const lower(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    tVector3<T> const size(std::abs(input.Tame<T>()), std::abs(input.Tame<T>()), std::abs(input.Tame<T>()));
    tVolumeAABB<T> const box(lower, lower + size);
    tOrientedBox<T> const turned(box, tMatrix4<T>::RotateAxis({}, tVector3<T>(1, 2, 2) / T{3}, input.Tame<T>()));
    tVolumeAABB<T> bound = turned.GetBound();
    bound.Offset(SLACK<T> * 1000);
    for (unsigned i = 0; i < 8; ++i)
        Require(bound.Contains(turned.GetCorner(i), false), "the bound of a turned box holds its corners");
    // Each extent is wrong by a share of the longest, and so is the volume by that share of its faces.
    T const slack = SLACK<T> * (1 + size.Length());
    Require(std::abs(turned.GetVolume() - box.GetVolume()) <= slack * (1 + GetSurfaceArea(box)),
            "a turn keeps the volume");
}

template <typename T>
void Try(Input& input)
{
    Turn<T>(input);
    Span<T>(input);
    Divide<T>(input);
    Box<T>(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    if (input.Below(2) == 0)
        Try<float>(input);
    else
        Try<double>(input);
    return 0;
}
