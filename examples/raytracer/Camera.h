#pragma once

#include "Maths.h"
#include "Options.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace raytracer
{

/// The eye, and the picture in front of it. Pixels are counted from the top left corner of the picture; the middle of
/// the first is at (0.5, 0.5).
class Camera
{
public:
    /// Stands where the options say, or so that the box fills the picture.
    /// @throws UserError when the camera would stand where it looks.
    Camera(Options const& options, VolumeAABBf const& box);

    [[nodiscard]] Vector3f const& GetEye() const { return eye_; }
    /// The ray through a point of the picture, with its derivatives by one pixel to the right and one down.
    [[nodiscard]] DepthRayf GetRay(Vector2f const& pixel) const;
    /// The part of the view that a window of the picture shows.
    [[nodiscard]] Frustumf GetView(AreaAABBf const& window) const;
    /// Where in the picture a point of the scene shows.
    [[nodiscard]] Vector2f GetPixel(Vector3f const& point) const;

private:
    [[nodiscard]] Matrix4d GetProjection(AreaAABBd const& window) const;

    Vector2d size_;
    Vector3f eye_;
    Vector3f corner_; ///< from the eye to the top left corner of the picture, one unit in front of it
    Vector3f right_;  ///< along one pixel
    Vector3f down_;   ///< along one pixel
    double top_;      ///< half the height of the picture, one unit in front of the eye
    double far_;
    Matrix4d view_; ///< from the world to the eye, which looks down its -z axis
    Frustumf frustum_;
};

} // namespace raytracer
