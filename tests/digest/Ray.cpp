#include <bv/maths/tDepthRay.h>
#include <bv/maths/tRay.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Rays(Digests& digests, Workload& work)
{
    using DepthRay = tDepthRay<T, bv::IRayPayloadInternal>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 6000; ++i)
        {
            tVector3<T> const origin = work.Vector3<T>(rarity);
            DepthRay ray(origin, work.Direction<T>(rarity));
            ray.dOriginDu = work.Vector3<T>(0);
            ray.dOriginDv = work.Vector3<T>(0);
            ray.dDirectionDu = work.Vector3<T>(0);
            ray.dDirectionDv = work.Vector3<T>(rarity);
            T const tNear = work.OneIn(2) ? T{0} : work.Number<T>(rarity);
            T const tFar = work.OneIn(2) ? T{100} : work.Number<T>(rarity);

            T lo = tNear;
            T hi = tFar;
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            digests["boxes"].Add(ray.Clip(box, lo, hi));
            digests["boxes"].Add(lo, hi);

            lo = tNear;
            hi = tFar;
            T const squaredRadius = work.Number<T>(rarity) * T{4};
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), squaredRadius);
            digests["spheres"].Add(ray.Clip(sphere, lo, hi));
            digests["spheres"].Add(lo, hi);

            lo = tNear;
            hi = tFar;
            tVector2<T> dNear;
            tVector2<T> dFar;
            digests["sphere-differentials"].Add(ray.ClipDiff(sphere, lo, hi, dNear, dFar));
            digests["sphere-differentials"].Add(lo, hi, dNear, dFar);
        }
}

} // namespace

void RunRays()
{
    RunBoth("rays", Rays<float>, Rays<double>);
}

} // namespace digest
