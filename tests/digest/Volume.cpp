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
void Volumes(Digests& digests, Workload& work)
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
            digests["containment"].Add(box.Contains(point, false), box.Contains(point, true),
                                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true));
            digests["distance"].Add(box.DistanceSquared(point), box.Distance(point), box.Overlaps(sphere));
            digests["measures"].Add(box.IsValid(), box.GetVolume(), box.GetCentre(), box.GetDiagonal());
            digests["comparison"].Add(box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 4; ++axis)
            {
                digests["measures"].Try([&] { return box.GetLength(axis); });
                digests["measures"].Try([&] { return box.GetArea(axis); });
                tVolumeAABB<T> lower = other;
                tVolumeAABB<T> upper;
                box.Split(axis, lower, upper);
                digests["halves"].Add(lower, upper);
                upper = box;
                upper.Split(axis, lower, upper);
                digests["halves"].Add(lower, upper);
            }
            tVolumeAABB<T> grown = box;
            Digest& growth = digests["growth"];
            growth.Add(grown.ExpandAndSignal(other), grown);
            growth.Add(grown.ExpandAndSignal(point), grown);
            grown.Expand(number);
            growth.Add(grown);
            grown.Offset(number);
            growth.Add(grown);
            grown.Reset();
            grown.Expand(point);
            grown.Expand(other);
            growth.Add(grown);
            digests["conversions"].Add(tVolumeAABB<Other>(box), tVolumeAABB<T>(point));
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            digests["transforms"].Add(box * matrix);
            grown = box;
            digests["transforms"].Add(grown *= matrix);
            tVolumeAABB<T> changed = box;
            changed.SetMin(point);
            digests["changes"].Add(changed);
            changed.SetMax(other.GetMin());
            digests["changes"].Add(changed);
            changed.GetMin() = point;
            changed.GetMax().z = number;
            digests["changes-by-corner"].Add(changed);
            tVolumeAABB<Other> converted;
            converted = box;
            digests["assigned"].Add(converted);
        }
}

} // namespace

void RunVolumes()
{
    RunBoth("volumes", Volumes<float>, Volumes<double>);
}

} // namespace digest
