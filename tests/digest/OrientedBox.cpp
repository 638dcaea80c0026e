#include <type_traits>

#include <bv/maths/tOrientedBox.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void AddBox(Digest& digest, tOrientedBox<T> const& box)
{
    digest.Add(box.GetCentre(), box.GetAxis(0), box.GetAxis(1), box.GetAxis(2), box.GetHalfExtents());
}

template <typename T>
void OrientedBoxes(Digests& digests, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2000; ++i)
        {
            tOrientedBox<T> const straight(work.Volume<T>(rarity));
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            tOrientedBox<T> const moved = straight * matrix;
            tOrientedBox<T> const again = moved * work.AnyMatrix<T>(rarity);
            tVector3<T> const centre = work.Vector3<T>(rarity);
            tVector3<T> const x = work.Vector3<T>(rarity);
            tVector3<T> const y = work.Vector3<T>(rarity);
            tVector3<T> const z = work.Vector3<T>(rarity);
            tOrientedBox<T> const any(centre, x, y, z, work.Vector3<T>(rarity));
            for (tOrientedBox<T> const& box : {straight, moved, again, any})
            {
                AddBox(digests["construction"], box);
                AddBox(digests["transforms"], box * matrix);
                AddBox<Other>(digests["construction"], box);
                tVector3<T> corners[8];
                box.GetCorners(corners);
                for (tVector3<T> const& corner : corners)
                {
                    digests["corners"].Add(corner);
                    digests["containment"].Add(box.Contains(corner));
                }
                for (unsigned int corner = 0; corner < 8; ++corner)
                    digests["single-corners"].Add(box.GetCorner(corner));
                tOrientedBox<T> inPlace = box;
                AddBox(digests["in-place"], inPlace *= matrix);
                tOrientedBox<Other> other;
                other = box;
                AddBox(digests["assigned"], other);
                digests["measures"].Add(box.IsValid(), box.GetVolume(), box == moved, box != straight);
                digests["containment"].Add(box.Contains(work.Vector3<T>(rarity)), box.Contains(box.GetCentre()));
                digests["measures"].Add(box.GetBound());
                tOrientedBox<T> changed = box;
                changed.SetCentre(centre);
                AddBox(digests["changes"], changed);
                changed.SetAxes(y, z, x);
                AddBox(digests["changes"], changed);
                changed.SetHalfExtents(centre);
                AddBox(digests["changes"], changed);
            }
        }
}

} // namespace

void RunOrientedBoxes()
{
    RunBoth("oriented-boxes", OrientedBoxes<float>, OrientedBoxes<double>);
}

} // namespace digest
