#include <type_traits>

#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVolumeAABB.h>
#include <bv/maths/tVolumeSphere.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Volumes(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            tVolumeAABB<T> const other = work.Volume<T>(rarity);
            tVector3<T> const point = work.Vector3<T>(rarity);
            T const number = work.Number<T>(rarity);
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), number);
            digest.Add(box.IsValid(), box.Contains(point, false), box.Contains(point, true),
                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true), box.DistanceSquared(point),
                       box.Distance(point), box.GetVolume(), box.GetCentre(), box.GetDiagonal(), box.Overlaps(sphere),
                       box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 4; ++axis)
            {
                digest.Try([&] { return box.GetLength(axis); });
                digest.Try([&] { return box.GetArea(axis); });
                tVolumeAABB<T> lower = other;
                tVolumeAABB<T> upper;
                box.Split(axis, lower, upper);
                digest.Add(lower, upper);
                upper = box;
                upper.Split(axis, lower, upper);
                digest.Add(lower, upper);
            }
            tVolumeAABB<T> grown = box;
            digest.Add(grown.ExpandAndSignal(other), grown);
            digest.Add(grown.ExpandAndSignal(point), grown);
            grown.Expand(number);
            digest.Add(grown);
            grown.Offset(number);
            digest.Add(grown);
            grown.Reset();
            grown.Expand(point);
            grown.Expand(other);
            digest.Add(grown, tVolumeAABB<Other>(box), tVolumeAABB<T>(point));
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            digest.Add(box * matrix);
            grown = box;
            digest.Add(grown *= matrix);
        }
}

} // namespace

void RunVolumes()
{
    RunBoth("volumes", Volumes<float>, Volumes<double>);
}

} // namespace digest
