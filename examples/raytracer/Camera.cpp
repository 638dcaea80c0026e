#include "Camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "UserError.h"
#include "bv/maths/Direction.h"
#include "bv/maths/View.h"
#include "bv/maths/Visibility.h"
#include "bv/maths/tPixelRays.h"

namespace raytracer
{

namespace
{

constexpr double NEAR_DISTANCE = 0.01;
constexpr Vector3d UP(0, 1, 0);

/// Far enough along the usual line of sight for the sphere around the box to fit into the picture.
Vector3d GetUsualEye(VolumeAABBd const& box, Vector3d const& lookAt, double tangent, double aspect)
{
    Vector3d const towardsViewer(0.35, 0.3, 1);
    double const radius = box.GetDiagonal().Length() / 2;
    double const narrower = tangent * std::min(1.0, aspect);
    return lookAt + towardsViewer.Normalised() * (radius * std::sqrt(1 + 1 / (narrower * narrower))); // over the sine
}

} // namespace

Camera Camera::Place(Options const& options, VolumeAABBf const& box)
{
    double const tangent = std::tan(static_cast<double>(options.fov) * std::numbers::pi / 360);
    Vector2d const size(options.size.x, options.size.y);
    double const aspect = size.x / size.y;
    VolumeAABBd const bounds(box);
    Vector3d const lookAt = options.lookAt ? Vector3d(*options.lookAt) : bounds.GetCentre();
    Vector3f const eye = options.eye ? *options.eye : Vector3f(GetUsualEye(bounds, lookAt, tangent, aspect));
    if (!(DistanceSquared(lookAt, Vector3d(eye)) > 0))
        throw UserError("--eye and --look-at: the camera stands where it looks");
    double const farthest = bounds.Distance(Vector3d(eye)) + 2 * bounds.GetDiagonal().Length() + 1;
    Matrix4d const projection = bv::maths::PerspectiveFromTangent(tangent, aspect, NEAR_DISTANCE, farthest);
    Matrix4f const worldToClip(projection * LookAt(Vector3d(eye), lookAt, UP));
    Matrix4f const cameraToWorld(PlaceCamera(Vector3d(eye), lookAt, UP));
    return {Vector2f(size), eye, worldToClip, PixelRaysf(Vector2f(size), Matrix4f(projection), cameraToWorld)};
}

Camera::Camera(Vector2f const& size, Vector3f const& eye, Matrix4f const& worldToClip, PixelRaysf const& rays)
    : size_(size),
      eye_(eye),
      worldToClip_(worldToClip),
      corner_(rays.GetDirection({0, 0})),
      right_(rays.GetStepRight()),
      down_(rays.GetStepDown())
{
}

DepthRayf Camera::GetRay(Vector2f const& pixel, float step) const
{
    Vector3f const along = corner_ + right_ * pixel.x + down_ * pixel.y;
    float const inverseLength = 1 / along.Length();
    DepthRayf ray(eye_, along * inverseLength);
    // Only what a step changes across the ray turns it.
    float const scale = step * inverseLength;
    ray.dDirectionDu = (right_ - ray.direction * ray.direction.Dot(right_)) * scale;
    ray.dDirectionDv = (down_ - ray.direction * ray.direction.Dot(down_)) * scale;
    return ray;
}

Frustumf Camera::GetView(AreaAABBf const& window) const
{
    // The screen is from -1 to 1 wide and high, and counts upwards.
    Vector2f const scale = Vector2f(2, -2) / size_;
    Vector2f const topLeft = window.GetMin() * scale + Vector2f(-1, 1);
    Vector2f const bottomRight = window.GetMax() * scale + Vector2f(-1, 1);
    return GetScreenView(worldToClip_, AreaAABBf({topLeft.x, bottomRight.y}, {bottomRight.x, topLeft.y}));
}

Vector2f Camera::GetPixel(Vector3f const& point) const
{
    std::optional<Vector3f> const place = bv::maths::GetPixel(point, worldToClip_, size_);
    return place ? Vector2f(place->x, place->y) : size_ * 0.5F;
}

} // namespace raytracer
