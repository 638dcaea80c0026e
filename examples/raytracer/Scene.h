#pragma once

#include <optional>
#include <vector>

#include "Bvh.h"
#include "Maths.h"
#include "Mesh.h"
#include "Options.h"
#include "Sky.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tDifferential3.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tVolumeSphere.h"

namespace raytracer
{

/// What is to know about a hit for its light.
struct Surface
{
    Vector3f position;
    Vector3f start;  ///< the position, or above it where a smooth surface would be: where other rays start from
    Vector3f face;   ///< normal of the surface itself, towards the ray
    Vector3f normal; ///< normal that the light sees, smooth over a mesh, on the same side
    Differential3f footprint;    ///< change of the position by one pixel to the right and one down
    Differential3f normalChange; ///< change of the normal by the same
    Colour colour;
    float gloss = 0; ///< share of the light that is mirrored straight ahead
};

/// The mesh, the spheres around it, the floor under it and the sky.
class Scene
{
public:
    /// @throws UserError when the sky cannot be read.
    Scene(Options const& options, Mesh mesh, Vector3f const& eye);

    [[nodiscard]] Bvh const& GetBvh() const { return bvh_; }
    [[nodiscard]] Sky const& GetSky() const { return sky_; }

    /// Moves a hit to the nearest sphere or to the floor, if one is nearer.
    void FindClosestBeside(DepthRayf const& ray, Hit& hit) const;
    /// Whether a sphere or the floor is in the way within the distance of a hit.
    [[nodiscard]] bool IsBlockedBeside(DepthRayf const& ray, Hit const& hit) const;
    /// How far the floor is along a ray; infinity without one.
    [[nodiscard]] float GetFloorDistance(DepthRayf const& ray) const;
    /// The floor's colour in the mean.
    [[nodiscard]] Colour GetFloorColour() const;
    /// What is to know about a hit, which must be one.
    [[nodiscard]] Surface GetSurface(DepthRayf const& ray, Hit const& hit) const;

private:
    struct Ball
    {
        VolumeSpheref shape;
        Colour colour;
    };

    void AddSpheres(unsigned count);
    void SetTriangle(Surface& surface, DepthRayf const& ray, Hit const& hit) const;
    void SetSphere(Surface& surface, DepthRayf const& ray, Hit const& hit) const;
    void SetFloor(Surface& surface, DepthRayf const& ray, Hit const& hit) const;

    Mesh mesh_;
    Bvh bvh_;
    std::vector<Ball> spheres_;
    std::optional<Planef> floor_;
    Sky sky_;
    Material material_;
    Material sphereMaterial_;
    bool checkered_;
};

} // namespace raytracer
