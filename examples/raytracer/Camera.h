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
    /// The camera that stands where the options say, or so that the box fills the picture.
    /// @throws UserError when the camera would stand where it looks.
    [[nodiscard]] static Camera Place(Options const& options, VolumeAABBf const& box);

    [[nodiscard]] Vector3f const& GetEye() const { return eye_; }
    /// The ray through a point of the picture, with its derivatives by a step to the right and one down.
    /// @param step in pixels.
    [[nodiscard]] DepthRayf GetRay(Vector2f const& pixel, float step) const;
    /// The part of the view that a window of the picture shows.
    [[nodiscard]] Frustumf GetView(AreaAABBf const& window) const;
    /// Where in the picture a point of the scene shows; its middle for a point behind the eye.
    [[nodiscard]] Vector2f GetPixel(Vector3f const& point) const;

private:
    Camera(Vector2f const& size, Vector3f const& eye, Matrix4f const& worldToClip, PixelRaysf const& rays);

    Vector2f size_;
    Vector3f eye_;
    Matrix4f worldToClip_;
    Vector3f corner_; ///< from the eye to the top left corner of the picture, one unit in front of it
    Vector3f right_;  ///< along one pixel
    Vector3f down_;   ///< along one pixel
};

} // namespace raytracer
