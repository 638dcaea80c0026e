#include <cstddef>
#include <vector>

#include <bv/maths/Batch.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// How many items a view has, and those of parts of it.
template <typename View, typename Add>
void AddParts(Digest& digest, View const& view, Add add)
{
    digest.Add(view.size());
    for (std::size_t begin = 0; begin < view.size(); begin += 3)
    {
        View const part = view.GetPart(begin, (view.size() - begin) / 2);
        digest.Add(part.size());
        for (std::size_t i = 0; i < part.size(); ++i)
            add(digest, part, i);
    }
    digest.Add(view.GetPart(view.size(), 0).size(), View().size());
}

template <typename T>
void Objects(Digests& digests, Workload& work, std::size_t length)
{
    std::vector<tVector3<T>> points;
    std::vector<tVolumeAABB<T>> boxes;
    std::vector<tRay<T>> rays;
    std::vector<tVolumeSphere<T>> spheres;
    for (std::size_t i = 0; i < length; ++i)
    {
        points.push_back(work.Vector3<T>(24));
        boxes.push_back(work.Volume<T>(24));
        rays.emplace_back(points.back(), work.Vector3<T>(24));
        spheres.emplace_back(points.back(), work.Number<T>(24));
    }
    auto const addItem = [](Digest& digest, auto const& view, std::size_t i) { digest.Add(view[i]); };

    tVectorView<T> const vectors(points);
    AddParts(digests["vectors"], vectors, addItem);
    AddParts(digests["numbers"], tNumberView<T const>(vectors.GetAxis(1)), addItem);
    for (std::size_t i = 0; i < length; ++i)
        vectors.Set(i, vectors[length - 1 - i]);
    for (tVector3<T> const& point : points)
        digests["set"].Add(point);

    tBoxView<T const> const boxView(boxes);
    AddParts(digests["boxes"], boxView, addItem);
    AddParts(digests["box-corners"], boxView.GetMin(), addItem);
    AddParts(digests["box-corners"], boxView.GetMax(), addItem);

    tRayView<T const> const rayView(rays);
    digests["rays"].Add(rayView.size(), tRayView<T const>().size());
    for (std::size_t i = 0; i < rayView.size(); ++i)
        digests["rays"].Add(rayView[i].origin, rayView[i].direction);

    auto const addSphere = [](Digest& digest, tSphereView<T const> const& view, std::size_t i)
    { digest.Add(view.GetCentres()[i], view.GetRadiiSquared()[i], view.IsOfObjects()); };
    AddParts(digests["spheres"], tSphereView<T const>(spheres), addSphere);

    // The same from one array for each of the parts.
    tVectorView<T const> const centres(points);
    AddParts(digests["boxes"], tBoxView<T const>(centres, boxView.GetMax()), addItem);
    AddParts(digests["spheres"], tSphereView<T const>(centres, centres.GetAxis(2)), addSphere);
    tRayView<T const> const turned(centres, boxView.GetMin());
    for (std::size_t i = 0; i < turned.size(); ++i)
        digests["rays"].Add(turned[i].origin, turned[i].direction);
}

template <typename T>
void DifferentLengths(Digest& digest)
{
    std::vector<tVector3<T>> const points(3);
    tVectorView<T const> const three(points);
    tVectorView<T const> const two = three.GetPart(1, 2);
    digest.Try([&] { return tVectorView<T const>(three.GetAxis(0), three.GetAxis(1), two.GetAxis(2)).size(); });
    digest.Try([&] { return tBoxView<T const>(three, two).size(); });
    digest.Try([&] { return tRayView<T const>(two, three).size(); });
    digest.Try([&] { return tSphereView<T const>(three, two.GetAxis(0)).size(); });
}

template <typename T>
void Views(Digests& digests, Workload& work)
{
    for (std::size_t const length : {0U, 1U, 2U, 5U, 31U, 64U})
        Objects<T>(digests, work, length);
    DifferentLengths<T>(digests["different-lengths"]);
}

} // namespace

void RunBatchViews()
{
    RunBoth("batch-views", Views<float>, Views<double>);
}

} // namespace digest
