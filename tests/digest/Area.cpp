#include <type_traits>
#include <utility>

#include <bv/maths/tAreaAABB.h>
#include <bv/maths/tAreaDisc.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Areas(Digests& digests, Workload& work)
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
            digests["containment"].Add(box.Contains(point, false), box.Contains(point, true),
                                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true));
            digests["distance"].Add(box.DistanceSquared(point), box.Distance(point), box.Overlaps(disc));
            digests["measures"].Add(box.IsValid(), box.GetArea(), box.GetCentre(), box.GetDiagonal());
            digests["comparison"].Add(box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 3; ++axis)
            {
                digests["measures"].Try([&] { return box.GetLength(axis); });
                tAreaAABB<T> lower = other;
                tAreaAABB<T> upper;
                box.Split(axis, lower, upper);
                digests["halves"].Add(lower, upper);
                lower = box;
                lower.Split(axis, lower, upper);
                digests["halves"].Add(lower, upper);
            }
            tAreaAABB<T> grown = box;
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
            digests["conversions"].Add(tAreaAABB<Other>(box), tAreaAABB<T>(point));
            tAreaAABB<T> changed = box;
            changed.SetMin(point);
            digests["changes"].Add(changed);
            changed.SetMax(other.GetMin());
            digests["changes"].Add(changed);
            changed.GetMin().x = number;
            changed.GetMax() = point;
            digests["changes-by-corner"].Add(changed);
            tAreaAABB<Other> converted;
            converted = box;
            digests["assigned"].Add(converted);
            tAreaDisc<T> const second(work.Vector2<T>(rarity), point);
            digests["discs"].Add(disc.GetRadius(), disc.GetArea(), disc == second, disc == disc, second,
                                 tAreaDisc<Other>(disc));
            digests["disc-overlaps"].Add(disc.Contains(point), disc.Overlaps(second), second.Overlaps(disc),
                                         disc.Overlaps(box));
            tAreaDisc<T> moved = disc;
            moved.SetCentre(point);
            digests["disc-changes"].Add(moved);
            moved.SetRadius(number);
            digests["disc-changes"].Add(moved);
            Digest& copies = digests["disc-copies"];
            moved = second;
            copies.Add(moved, moved != disc, moved != second);
            tAreaDisc<T> assigned(point);
            assigned = std::move(moved);
            copies.Add(assigned);
            copies.Add(tAreaDisc<T>(std::move(assigned)));
            tAreaDisc<Other> convertedDisc{tVector2<Other>()};
            convertedDisc = disc;
            copies.Add(convertedDisc);
        }
}

} // namespace

void RunAreas()
{
    RunBoth("areas", Areas<float>, Areas<double>);
}

} // namespace digest
