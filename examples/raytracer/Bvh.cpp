#include "Bvh.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <span>

#include "bv/maths/Bounds.h"

namespace raytracer
{

namespace
{

constexpr std::size_t LEAF_SIZE = 4;
constexpr std::size_t BIN_COUNT = 16;

/// Triangles as the build sees them.
struct Item
{
    VolumeAABBf box;
    Vector3f centre;
    std::uint32_t triangle;
};

VolumeAABBf GetBounds(std::span<Item const> items)
{
    VolumeAABBf box;
    for (Item const& item : items)
        box.Expand(item.box);
    return box;
}

/// Splits boxes where the surface area heuristic says that rays are tested least (MacDonald, Booth, "Heuristics for Ray
/// Tracing Using Space Subdivision", 1990), with the candidates binned (Wald, "On Fast Construction of SAH-based
/// Bounding Volume Hierarchies", 2007).
class Builder
{
public:
    Builder(Mesh const& mesh, Vector3f const& eye) : eye_(eye)
    {
        for (Triangle const& triangle : mesh.triangles)
        {
            Item item;
            for (Vector3f const& corner : triangle.corners)
                item.box.Expand(corner);
            item.centre = item.box.GetCentre();
            item.triangle = static_cast<std::uint32_t>(items.size());
            items.push_back(item);
        }
        nodes.emplace_back();
        Build(0, 0, items.size(), 1);
    }

    std::vector<Item> items; ///< in the order of the leaves
    std::vector<Node> nodes;

private:
    struct Bin
    {
        VolumeAABBf box;
        std::size_t count = 0;

        void Add(Bin const& other)
        {
            box.Expand(other.box);
            count += other.count;
        }
        [[nodiscard]] float GetCost() const { return count == 0 ? 0 : GetSurfaceArea(box) * static_cast<float>(count); }
    };

    struct Split
    {
        unsigned char axis = 0;
        std::size_t bin = 0; ///< items up to this bin go to one side, the others to the other
        float cost = std::numeric_limits<float>::infinity();
    };

    void Build(std::size_t index, std::size_t first, std::size_t last, std::size_t depth)
    {
        VolumeAABBf const box = GetBounds({&items[first], &items[last - 1] + 1});
        std::size_t const middle = depth < Bvh::MAX_DEPTH ? Divide(box, first, last) : first;
        if (middle == first)
        {
            nodes[index] = {box, static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last - first)};
            return;
        }
        std::size_t const children = nodes.size();
        nodes[index] = {box, static_cast<std::uint32_t>(children), 0};
        nodes.resize(children + 2);
        bool const swapped = GetBounds({&items[middle], &items[last - 1] + 1}).DistanceSquared(eye_) <
                             GetBounds({&items[first], &items[middle]}).DistanceSquared(eye_);
        Build(children + (swapped ? 1 : 0), first, middle, depth + 1);
        Build(children + (swapped ? 0 : 1), middle, last, depth + 1);
    }

    /// Sorts the items into two groups.
    /// @return where the second begins; `first` when they had better stay together.
    std::size_t Divide(VolumeAABBf const& box, std::size_t first, std::size_t last)
    {
        std::size_t const count = last - first;
        if (count == 1)
            return first;
        VolumeAABBf centres;
        for (std::size_t i = first; i < last; ++i)
            centres.Expand(items[i].centre);
        Split const split = FindSplit(centres, first, last);
        bool const pays = split.cost + GetSurfaceArea(box) < GetSurfaceArea(box) * static_cast<float>(count);
        if (split.cost == std::numeric_limits<float>::infinity() || (count <= LEAF_SIZE && !pays))
            return first;
        auto const middle = std::partition(
            items.begin() + static_cast<std::ptrdiff_t>(first), items.begin() + static_cast<std::ptrdiff_t>(last),
            [&](Item const& item) { return GetBin(centres, split.axis, item.centre) <= split.bin; });
        return static_cast<std::size_t>(middle - items.begin());
    }

    [[nodiscard]] Split FindSplit(VolumeAABBf const& centres, std::size_t first, std::size_t last) const
    {
        Split best;
        for (unsigned char axis = VolumeAABBf::AXIS_X; axis <= VolumeAABBf::AXIS_Z; ++axis)
        {
            if (!(centres.GetLength(axis) > 0))
                continue;
            std::array<Bin, BIN_COUNT> bins;
            for (std::size_t i = first; i < last; ++i)
                bins[GetBin(centres, axis, items[i].centre)].Add({items[i].box, 1});

            std::array<float, BIN_COUNT> upperCost{}; // of the bins from an index on
            Bin upper;
            for (std::size_t i = BIN_COUNT; i-- > 1;)
            {
                upper.Add(bins[i]);
                upperCost[i] = upper.GetCost();
            }
            Bin lower;
            for (std::size_t i = 0; i + 1 < BIN_COUNT; ++i)
            {
                lower.Add(bins[i]);
                float const cost = lower.GetCost() + upperCost[i + 1];
                if (lower.count > 0 && lower.count < last - first && cost < best.cost)
                    best = {axis, i, cost};
            }
        }
        return best;
    }

    [[nodiscard]] static std::size_t GetBin(VolumeAABBf const& centres, unsigned char axis, Vector3f const& centre)
    {
        float const place = (centre[axis] - centres.GetMin()[axis]) / centres.GetLength(axis);
        return std::min(static_cast<std::size_t>(place * static_cast<float>(BIN_COUNT)), BIN_COUNT - 1);
    }

    Vector3f eye_;
};

/// More than a box test can be wrong by, for rays that start or end within the given reach: many steps of rounding.
float GetPadding(VolumeAABBf const& bounds, Vector3f const& eye)
{
    constexpr float SHARE = 4e-6F;
    constexpr float LEAST_REACH = 20;
    float const size = bounds.GetDiagonal().Length();
    return SHARE * std::max(LEAST_REACH, bounds.Distance(eye) + 2 * size);
}

} // namespace

Bvh::Bvh(Mesh& mesh, Vector3f const& eye)
{
    Builder builder(mesh, eye);
    std::vector<Triangle> sorted;
    for (Item const& item : builder.items)
    {
        auto const& [a, b, c] = sorted.emplace_back(mesh.triangles[item.triangle]).corners;
        triangles_.push_back({a, b, c});
    }
    mesh.triangles = std::move(sorted);

    nodes_ = std::move(builder.nodes);
    float const padding = GetPadding(mesh.bounds, eye);
    for (Node& node : nodes_)
        node.box.Offset(padding);
}

std::vector<std::uint32_t> Bvh::GetVisible(Frustumf const& view) const
{
    constexpr std::size_t ENOUGH = 8;
    std::vector<std::uint32_t> visible{0};
    for (bool refined = true; refined && visible.size() < ENOUGH;)
    {
        refined = false;
        std::vector<std::uint32_t> next;
        for (std::uint32_t const index : visible)
        {
            Node const& node = nodes_[index];
            Frustumf::IntersectionResult const place = view.ContainsAABB(node.box);
            if (place == Frustumf::OUTSIDE)
                continue;
            if (place == Frustumf::INSIDE || node.count > 0)
            {
                next.push_back(index);
                continue;
            }
            next.push_back(node.first);
            next.push_back(node.first + 1);
            refined = true;
        }
        visible = std::move(next);
    }
    return visible;
}

} // namespace raytracer
