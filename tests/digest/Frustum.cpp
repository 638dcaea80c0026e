#include <cstdint>

#include <bv/maths/Visibility.h>
#include <bv/maths/tFrustum.h>
#include <bv/maths/tRay.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
tMatrix4<T> View(Workload& work, unsigned int rarity)
{
    if (work.OneIn(8))
        return work.AnyMatrix<T>(rarity);
    T const side = work.Plain<T>() / T{20} + T{1};
    T const nearPlane = work.Plain<T>() / T{20} + T{0.75};
    tMatrix4<T> const projection =
        tMatrix4<T>::PerspectiveProjection(-side, side * T{0.75}, -side, side, nearPlane, nearPlane + T{12});
    tMatrix4<T> const rotation = work.Fresh<T>(2, 0);
    return projection * rotation * tMatrix4<T>::Translate(work.Vector3<T>(rarity));
}

template <typename T>
void Frusta(Digests& digests, Workload& work)
{
    using Frustum = tFrustum<T>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 400; ++i)
        {
            tMatrix4<T> const matrix = View<T>(work, rarity);
            Frustum frustum;
            digests["planes"].Try(
                [&]
                {
                    frustum = Frustum(matrix);
                    return true;
                });
            digests["planes"].Add(frustum);
            Frustum const byPlanes(frustum.GetFarPlane(), frustum.GetLeftPlane(), frustum.GetTopPlane(),
                                   frustum.GetNearPlane(), frustum.GetRightPlane(), frustum.GetBottomPlane());
            digests["by-planes"].Add(byPlanes);
            for (unsigned int corner = 0; corner < 8; ++corner)
                digests["single-corners"].Add(GetCorner(frustum, corner));
            for (std::uint32_t edge = 0; edge < 6; ++edge)
                digests["edges"].Add(frustum.GetEdgeVector(static_cast<typename Frustum::Edge>(edge)));
            for (int k = 0; k < 40; ++k)
            {
                tVolumeAABB<T> box = work.Volume<T>(rarity);
                if (work.OneIn(2))
                    box = {box.GetMin(), box.GetMin() + tVector3<T>(T{0.5}, T{0.25}, T{0.75})};
                digests["boxes"].Add(frustum.ContainsAABB(box));
            }
            for (int k = 0; k < 10; ++k)
            {
                tVector3<T> const origin = work.Vector3<T>(rarity);
                tRay<T> const ray(origin, work.Vector3<T>(rarity));
                digests["near-plane"].Try([&] { return frustum.IntersectNear(ray); });
                digests["screen"].Add(ray.IntersectScreen(frustum));
            }
        }
}

} // namespace

void RunFrusta()
{
    RunBoth("frusta", Frusta<float>, Frusta<double>);
}

} // namespace digest
