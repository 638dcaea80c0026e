#include "Camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "UserError.h"

namespace raytracer
{

namespace
{

constexpr double NEAR_DISTANCE = 0.01;

/// Far enough along the usual line of sight for the sphere around the box to fit into the picture.
Vector3d GetUsualEye(VolumeAABBd const& box, Vector3d const& lookAt, double tangent, double aspect)
{
    Vector3d const towardsViewer(0.35, 0.3, 1);
    double const radius = box.GetDiagonal().Length() / 2;
    double const narrower = std::atan(tangent * std::min(1.0, aspect));
    return lookAt + towardsViewer.Normalised() * (radius / std::sin(narrower));
}

/// From the eye's axes (right, up, backwards) to the world's: first up or down, then around.
Matrix4d GetTurn(Vector3d const& forwards)
{
    Vector3d const origin;
    double const pitch = std::asin(std::clamp(forwards.y, -1.0, 1.0));
    double const yaw = std::atan2(-forwards.x, -forwards.z);
    return Matrix4d::RotateAxis(origin, {0, 1, 0}, yaw) * Matrix4d::RotateAxis(origin, {1, 0, 0}, pitch);
}

} // namespace

Camera::Camera(Options const& options, VolumeAABBf const& box)
    : size_(options.size.x, options.size.y), top_(std::tan(static_cast<double>(options.fov) * std::numbers::pi / 360))
{
    VolumeAABBd const bounds(box);
    Vector3d const lookAt = options.lookAt ? Vector3d(*options.lookAt) : bounds.GetCentre();
    eye_ = options.eye ? *options.eye : Vector3f(GetUsualEye(bounds, lookAt, top_, size_.x / size_.y));
    Vector3d const eye(eye_);
    Vector3d const forwards = lookAt - eye;
    if (!(forwards.LengthSquared() > 0))
        throw UserError("--eye and --look-at: the camera stands where it looks");

    far_ = bounds.Distance(eye) + 2 * bounds.GetDiagonal().Length() + 1;
    view_ = (Matrix4d::Translate(eye) * GetTurn(forwards.Normalised())).Inverted();
    AreaAABBd const picture(size_);
    frustum_ = GetView(picture);

    // The picture's corners on the near plane are those of the unit square, brought back through the projection.
    Matrix4d const toWorld = (GetProjection(picture) * view_).Inverted();
    auto const unproject = [&](double x, double y)
    { return (Vector3d(x, y, -1).Transformed(toWorld) - eye) / NEAR_DISTANCE; };
    Vector3d const topLeft = unproject(-1, 1);
    corner_ = Vector3f(topLeft);
    right_ = Vector3f((unproject(1, 1) - topLeft) / size_.x);
    down_ = Vector3f((unproject(-1, -1) - topLeft) / size_.y);
}

DepthRayf Camera::GetRay(Vector2f const& pixel) const
{
    Vector3f const along = corner_ + right_ * pixel.x + down_ * pixel.y;
    float const inverseLength = 1 / along.Length();
    DepthRayf ray(eye_, along * inverseLength);
    // Only what a step changes across the ray turns it.
    ray.dDirectionDu = (right_ - ray.direction * ray.direction.Dot(right_)) * inverseLength;
    ray.dDirectionDv = (down_ - ray.direction * ray.direction.Dot(down_)) * inverseLength;
    return ray;
}

Frustumf Camera::GetView(AreaAABBf const& window) const
{
    return Matrix4f(GetProjection(window) * view_);
}

Vector2f Camera::GetPixel(Vector3f const& point) const
{
    DepthRayf const ray(eye_, point - eye_);
    Vector2f const place = ray.IntersectScreen(frustum_); // from the bottom left, 1 on the other side
    return Vector2f(place.x, 1 - place.y) * Vector2f(size_);
}

Matrix4d Camera::GetProjection(AreaAABBd const& window) const
{
    double const step = 2 * top_ * NEAR_DISTANCE / size_.y; // one pixel on the near plane
    double const left = step * (window.GetMin().x - size_.x / 2);
    double const right = step * (window.GetMax().x - size_.x / 2);
    double const bottom = step * (size_.y / 2 - window.GetMax().y);
    double const top = step * (size_.y / 2 - window.GetMin().y);
    return Matrix4d::PerspectiveProjection(left, right, bottom, top, NEAR_DISTANCE, far_);
}

} // namespace raytracer
