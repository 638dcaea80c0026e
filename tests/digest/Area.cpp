#include <type_traits>

#include <bv/maths/tAreaAABB.h>
#include <bv/maths/tAreaDisc.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Areas(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tAreaAABB<T> const box = work.Area<T>(rarity);
            tAreaAABB<T> const other = work.Area<T>(rarity);
            tVector2<T> const point = work.Vector2<T>(rarity);
            T const number = work.Number<T>(rarity);
            tAreaDisc<T> const disc(work.Vector2<T>(rarity), number);
            digest.Add(box.IsValid(), box.Contains(point, false), box.Contains(point, true),
                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true), box.DistanceSquared(point),
                       box.Distance(point), box.GetArea(), box.GetCentre(), box.GetDiagonal(), box.Overlaps(disc),
                       box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 3; ++axis)
            {
                digest.Try([&] { return box.GetLength(axis); });
                tAreaAABB<T> lower = other;
                tAreaAABB<T> upper;
                box.Split(axis, lower, upper);
                digest.Add(lower, upper);
                lower = box;
                lower.Split(axis, lower, upper);
                digest.Add(lower, upper);
            }
            tAreaAABB<T> grown = box;
            digest.Add(grown.ExpandAndSignal(other), grown);
            digest.Add(grown.ExpandAndSignal(point), grown);
            grown.Expand(number);
            digest.Add(grown);
            grown.Offset(number);
            digest.Add(grown);
            grown.Reset();
            grown.Expand(point);
            grown.Expand(other);
            digest.Add(grown, tAreaAABB<Other>(box), tAreaAABB<T>(point));
            tAreaDisc<T> const second(work.Vector2<T>(rarity), point);
            digest.Add(disc.GetRadius(), disc.GetArea(), disc.Contains(point), disc.Overlaps(second),
                       second.Overlaps(disc), disc.Overlaps(box), disc == second, disc == disc, second,
                       tAreaDisc<Other>(disc));
        }
}

} // namespace

void RunAreas()
{
    RunBoth("areas-and-discs", Areas<float>, Areas<double>);
}

} // namespace digest
