#include <bv/maths/Visibility.h>
#include <bv/maths/tAreaAABB.h>

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
    tMatrix4<T> const projection = work.OneIn(2) ? tMatrix4<T>::PerspectiveProjection(-side, side, -1, side, 1, 12)
                                                 : tMatrix4<T>::OrthogonalProjection(-side, side, -1, side, 1, 12);
    tMatrix4<T> const rotation = work.Fresh<T>(2, 0);
    return projection * rotation * tMatrix4<T>::Translate(work.Vector3<T>(rarity));
}

template <typename T>
void AddView(Digests& digests, tFrustum<T> const& view)
{
    digests["planes"].Add(view);
    tVector3<T> corners[8];
    GetCorners(view, corners);
    for (tVector3<T> const& corner : corners)
        digests["corners"].Add(corner);
}

template <typename T>
void Visibility(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 400; ++i)
        {
            tMatrix4<T> const matrix = View<T>(work, rarity);
            tOrientedBox<T> const room{work.Volume<T>(rarity), work.AnyMatrix<T>(rarity)}; // drawn in this order
            for (tFrustum<T> const& view : {tFrustum<T>(matrix), GetParallelView(room),
                                            GetScreenView(matrix, tAreaAABB<T>({T(-0.25), T(-0.5)}, {1, T(0.75)})),
                                            GetScreenView(matrix, work.Area<T>(rarity))})
            {
                AddView(digests, view);
                for (int k = 0; k < 10; ++k)
                {
                    tVolumeSphere<T> const sphere{work.Vector3<T>(rarity), work.Number<T>(rarity)};
                    tOrientedBox<T> const box{work.Volume<T>(rarity), work.AnyMatrix<T>(rarity)};
                    digests["points"].Add(Classify(view, work.Vector3<T>(rarity)));
                    digests["spheres"].Add(Classify(view, sphere));
                    digests["turned-boxes"].Add(Classify(view, box));
                }
            }
        }
}

} // namespace

void RunVisibility()
{
    RunBoth("visibility", Visibility<float>, Visibility<double>);
}

} // namespace digest
