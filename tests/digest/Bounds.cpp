#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <bv/maths/Bounds.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Bounds(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVolumeAABB<T> const a = work.Volume<T>(rarity);
            tVolumeAABB<T> const b = work.Volume<T>(rarity);
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVolumeSphere<T> const sphere{work.Vector3<T>(rarity), work.Number<T>(rarity)};
            digests["unions"].Add(Union(a, b), Union(a, point), Intersection(a, b));
            digests["overlaps"].Add(Overlaps(a, b), Contains(a, b), Contains(b, a));
            digests["measures"].Add(GetSurfaceArea(a), GetClosestPoint(a, point), GetBound(sphere));
            tVector3<T> corners[8];
            GetCorners(a, corners);
            for (tVector3<T> const& corner : corners)
                digests["corners"].Add(corner);
            std::optional<tVolumeAABB<T>> const image = ProjectBox(a, work.AnyMatrix<T>(rarity));
            digests["projected"].Add(image.has_value(), image.value_or(tVolumeAABB<T>()));

            tAreaAABB<T> const c = work.Area<T>(rarity);
            tAreaAABB<T> const d = work.Area<T>(rarity);
            tVector2<T> const flat = work.Vector2<T>(rarity);
            tAreaDisc<T> const disc{work.Vector2<T>(rarity), work.Number<T>(rarity)};
            digests["unions-2d"].Add(Union(c, d), Union(c, flat), Intersection(c, d));
            digests["overlaps-2d"].Add(Overlaps(c, d), Contains(c, d));
            digests["measures-2d"].Add(GetPerimeter(c), GetClosestPoint(c, flat), GetBound(disc));
            digests["corners"].Add(GetCorner(c, 1), GetCorner(c, 2));
            tVector2<T> flatCorners[4];
            GetCorners(c, flatCorners);
            for (tVector2<T> const& corner : flatCorners)
                digests["corners-2d"].Add(corner);
            for (unsigned int corner = 0; corner < 8; ++corner)
                digests["single-corners"].Add(GetCorner(a, corner));
        }
}

template <typename T>
void BoundingSpheres(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1000; ++i)
        {
            tVolumeSphere<T> const sphere{work.Vector3<T>(rarity), work.Number<T>(rarity)};
            tVolumeSphere<T> const other{work.Vector3<T>(rarity), work.Number<T>(rarity)};
            tAreaDisc<T> const disc{work.Vector2<T>(rarity), work.Number<T>(rarity)};
            tAreaDisc<T> const flat{work.Vector2<T>(rarity), work.Number<T>(rarity)};
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVector2<T> const flatPoint = work.Vector2<T>(rarity);
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            digests["unions"].Add(Union(sphere, other), Union(sphere, point));
            digests["unions-2d"].Add(Union(disc, flat), Union(disc, flatPoint));
            digests["around-boxes"].Add(GetBoundingSphere(box), GetBoundingDisc(work.Area<T>(rarity)));

            std::vector<tVector3<T>> points;
            std::vector<tVector2<T>> flatPoints;
            unsigned int const count = work.Below(i % 16 == 0 ? 300 : 12);
            unsigned int const seldom = rarity == 0 ? 0 : rarity * 16;
            for (unsigned int k = 0; k < count; ++k)
            {
                points.push_back(work.Vector3<T>(seldom));
                flatPoints.push_back(work.Vector2<T>(seldom));
            }
            digests["around-points"].Add(GetBoundingSphere(points), GetBoundingDisc(flatPoints));
            digests["smallest"].Add(GetSmallestSphere(points), GetSmallestDisc(flatPoints));
        }
}

} // namespace

void RunBounds()
{
    RunBoth("bounds", Bounds<float>, Bounds<double>);
    RunBoth("bounding-spheres", BoundingSpheres<float>, BoundingSpheres<double>);
}

} // namespace digest
