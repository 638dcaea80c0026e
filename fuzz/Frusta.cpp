// Views of any matrix and any planes: what they see of boxes, spheres and points.

#include <vector>

#include "Fuzz.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/Bounds.h"
#include "bv/maths/View.h"
#include "bv/maths/Visibility.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

template <typename T>
std::vector<tPlane<T>> PlanesOf(tFrustum<T> const& view)
{
    return {view.GetLeftPlane(), view.GetRightPlane(), view.GetBottomPlane(),
            view.GetTopPlane(),  view.GetNearPlane(),  view.GetFarPlane()};
}

/// More than the distance of such a point from a plane can be wrong by.
template <typename T>
T Slack(tPlane<T> const& plane, tVector3<T> const& point)
{
    return 64 * std::numeric_limits<T>::epsilon() * (1 + point.Length() + std::abs(plane.GetOffset()));
}

/// A box with a corner well inside of all planes is not outside, and one with all corners inside is inside.
template <typename T>
void RequireSeen(tFrustum<T> const& view, tVolumeAABB<T> const& box)
{
    auto const place = view.ContainsAABB(box);
    bool areAllInside = true;
    for (unsigned i = 0; i < 8; ++i)
    {
        tVector3<T> const corner = GetCorner(box, i);
        bool isInside = true;
        bool isClearlyOutside = false;
        for (tPlane<T> const& plane : PlanesOf(view))
        {
            isInside = isInside && plane.GetDistance(corner) > Slack(plane, corner);
            isClearlyOutside = isClearlyOutside || plane.GetDistance(corner) < -Slack(plane, corner);
        }
        Require(!isInside || place != tFrustum<T>::OUTSIDE, "a box that is seen is never called outside");
        Require(!isClearlyOutside || place != tFrustum<T>::INSIDE, "a box that sticks out is never called inside");
        areAllInside = areAllInside && isInside;
    }
    Require(!areAllInside || place == tFrustum<T>::INSIDE, "a box whose corners are inside is inside");
}

template <typename T>
void Look(Input& input, tFrustum<T> const& view)
{
    for (unsigned count = input.Below(4); count > 0; --count)
    {
        tVolumeAABB<T> const box(input.Vector3<T>(), input.Vector3<T>());
        static_cast<void>(view.ContainsAABB(box));
        static_cast<void>(Classify(view, tOrientedBox<T>(box)));
        tVector3<T> const point = input.Vector3<T>();
        auto const place = Classify(view, point);
        Require(place == tFrustum<T>::INSIDE || place == tFrustum<T>::OUTSIDE || place == tFrustum<T>::INTERSECTING,
                "a point has one of three places");
        static_cast<void>(Classify(view, tVolumeSphere<T>(point, input.Number<T>())));
    }
}

template <typename T>
void Try(Input& input)
{
    try
    {
        Look(input, tFrustum<T>(input.Matrix<T>()));
    }
    catch (bv::InvalidArgumentException const&)
    {
        // a matrix that no view can be made of
    }
    auto const plane = [&] { return tPlane<T>(input.Vector3<T>(), input.Number<T>()); };
    std::vector<tPlane<T>> planes;
    for (int i = 0; i < 6; ++i)
        planes.push_back(plane());
    Look(input, tFrustum<T>(planes[0], planes[1], planes[2], planes[3], planes[4], planes[5]));

    // Views of ordinary cameras.
    tVector3<T> const eye(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    tVector3<T> const target(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    T const tangent = T(0.1) + std::abs(input.Tame<T>()) / 64;
    if ((target - eye).Length() < T{0.5} || std::abs((target - eye).Normalised().y) > T(0.99))
        return;
    tMatrix4<T> const matrix =
        PerspectiveFromTangent(tangent, T{1.5}, T{0.5}, T{500}) * LookAt(eye, target, tVector3<T>(0, 1, 0));
    tFrustum<T> const view(matrix);
    for (int i = 0; i < 4; ++i)
    {
        tVector3<T> const corner(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
        tVector3<T> const size(std::abs(input.Tame<T>()), std::abs(input.Tame<T>()), std::abs(input.Tame<T>()));
        RequireSeen(view, tVolumeAABB<T>(corner, corner + size));
    }
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
