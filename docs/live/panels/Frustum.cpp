// A view frustum, a box, and where the box lies.

#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <optional>

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include "Values.h"
#include "bv/maths/View.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace live
{

namespace
{

using bv::maths::Frustumf;
using bv::maths::Matrix4f;
using bv::maths::Planef;
using bv::maths::Vector3f;
using bv::maths::VolumeAABBf;
using emscripten::val;

/// The view of a camera at the origin that looks along -z, turned about the y axis.
Matrix4f GetWorldToClip(val const& camera)
{
    constexpr float RADIANS = std::numbers::pi_v<float> / 180;
    float const turn = camera["turn"].as<float>() * RADIANS;
    Vector3f const target(std::sin(turn), 0, -std::cos(turn));
    return bv::maths::PerspectiveFromFieldOfView(camera["fieldOfView"].as<float>() * RADIANS, 4.0F / 3,
                                                 camera["near"].as<float>(), camera["far"].as<float>()) *
           bv::maths::LookAt(Vector3f(), target, Vector3f(0, 1, 0));
}

/// The corner of a box that lies farthest along a direction.
Vector3f GetCornerAlong(VolumeAABBf const& box, Vector3f const& direction)
{
    Vector3f const& low = box.GetMin();
    Vector3f const& high = box.GetMax();
    return {direction.x < 0 ? low.x : high.x, direction.y < 0 ? low.y : high.y, direction.z < 0 ? low.z : high.z};
}

val DescribePlane(char const* name, Planef const& plane, VolumeAABBf const& box)
{
    val description = val::object();
    description.set("name", std::string(name));
    description.set("normal", ToValue(plane.GetNormal()));
    description.set("offset", static_cast<double>(plane.GetOffset()));
    description.set("highest", static_cast<double>(plane.GetDistance(GetCornerAlong(box, plane.GetNormal()))));
    description.set("lowest", static_cast<double>(plane.GetDistance(GetCornerAlong(box, -plane.GetNormal()))));
    return description;
}

val DescribePlanes(Frustumf const& view, VolumeAABBf const& box)
{
    val planes = val::array();
    planes.set(0, DescribePlane("left", view.GetLeftPlane(), box));
    planes.set(1, DescribePlane("right", view.GetRightPlane(), box));
    planes.set(2, DescribePlane("bottom", view.GetBottomPlane(), box));
    planes.set(3, DescribePlane("top", view.GetTopPlane(), box));
    planes.set(4, DescribePlane("near", view.GetNearPlane(), box));
    planes.set(5, DescribePlane("far", view.GetFarPlane(), box));
    return planes;
}

/// The eight corners of a view, where the matrix back from clip space takes those of the cube from -1 to 1.
val GetCorners(Matrix4f const& worldToClip)
{
    val corners = val::array();
    std::optional<Matrix4f> const clipToWorld = TryInverted(worldToClip);
    if (!clipToWorld)
        return corners;
    for (unsigned i = 0; i < 8; ++i)
    {
        auto const side = [&](unsigned axis) { return (i >> axis & 1) == 0 ? -1.0F : 1.0F; };
        corners.set(i, ToValue(Vector3f(side(0), side(1), side(2)).Transformed(*clipToWorld)));
    }
    return corners;
}

/// @param camera its `turn` and `fieldOfView` in degrees, and the distances of its `near` and `far` plane.
/// @param shape a box, by its middle, `x`, `y` and `z`, and the length of its sides, `size`.
val ClassifyBox(val const& camera, val const& shape)
{
    val description = val::object();
    std::string const failure = GetFailure(
        [&]
        {
            Matrix4f const worldToClip = GetWorldToClip(camera);
            Frustumf const view(worldToClip);
            Vector3f const middle(shape["x"].as<float>(), shape["y"].as<float>(), shape["z"].as<float>());
            float const half = shape["size"].as<float>() / 2;
            VolumeAABBf const box(middle - Vector3f(half, half, half), middle + Vector3f(half, half, half));
            constexpr char const* RESULTS[] = {"OUTSIDE", "INTERSECTING", "INSIDE"};
            description.set("result", std::string(RESULTS[view.ContainsAABB(box)]));
            description.set("planes", DescribePlanes(view, box));
            description.set("corners", GetCorners(worldToClip));
            description.set("low", ToValue(box.GetMin()));
            description.set("high", ToValue(box.GetMax()));
        });
    description.set("failure", failure);
    return description;
}

} // namespace

} // namespace live

EMSCRIPTEN_BINDINGS(frustum)
{
    emscripten::function("classifyBox", &live::ClassifyBox);
}
