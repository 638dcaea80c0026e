#pragma once

#include <vector>

#include "Maths.h"
#include "Scene.h"
#include "Tracer.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tVector3.h"

namespace raytracer
{

/// Which of its many directions a pixel tries: the same spread for every pixel, shifted by random numbers of its own.
struct Spread
{
    Vector3f shift;
    unsigned first = 0; ///< how many directions this pixel has tried before
};

/// The light that comes along a ray.
class Shader
{
public:
    /// @param skyRays how many rays each hit sends to the sky; 0 for light without shadows.
    Shader(Scene const& scene, Tracer& tracer, unsigned skyRays);

    [[nodiscard]] Colour GetLight(DepthRayf const& ray, Hit const& hit, Spread const& spread, unsigned mirrors = 0);

private:
    [[nodiscard]] Colour GetSkyLight(Surface const& surface, Spread const& spread);
    [[nodiscard]] Colour GetFloorLight();
    [[nodiscard]] Colour GetSunLight(Surface const& surface, Spread const& spread);
    [[nodiscard]] Colour GetMirrored(DepthRayf const& ray, Surface const& surface, Vector3f const& normal,
                                     Spread const& spread, unsigned mirrors);

    Scene const& scene_;
    Tracer& tracer_;
    unsigned skyRays_;
    float blurred_; ///< level of the sky for rays that stand for a part of it
    float haze_;    ///< level of the sky that the far floor fades into
    std::vector<DepthRayf> rays_;
    std::vector<Hit> hits_;
    std::vector<Vector3f> places_; ///< just above the floor, where rays to the sky met it
};

} // namespace raytracer
