// Boxes, spheres and discs of any numbers: growing, halving, meeting.

#include <vector>

#include "Fuzz.h"
#include "bv/maths/Bounds.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

template <typename Vector>
bool IsFiniteVector(Vector const& v)
{
    bool isFinite = std::isfinite(v.x) && std::isfinite(v.y);
    if constexpr (requires { v.z; })
        isFinite = isFinite && std::isfinite(v.z);
    return isFinite;
}

/// Operations that boxes in the plane and in space have in common.
template <typename Box, typename Vector>
void Grow(Box box, Box const& other, Vector const& point)
{
    Box const before(box);
    Box signalled(box);
    box.Expand(point);
    bool const hasGrown = signalled.ExpandAndSignal(point);
    Require(hasGrown || IsSame(before, box), "a box that does not signal has not grown");
    Require(IsSame(signalled, box), "growing with a signal grows alike");
    Require(IsSame(Union(before, point), box), "a union with a point is the box grown by it");
    if (IsFiniteVector(point) && IsFiniteVector(before.GetMin()) && IsFiniteVector(before.GetMax()))
    {
        Require(box.Contains(point, false), "a grown box holds the point");
        Require(Contains(box, before) || !before.IsValid(), "a box grows, and never shrinks");
    }
    Box grown(before);
    grown.Expand(other);
    Require(IsSame(Union(before, other), grown), "a union is the box grown by the other");
    Require(Overlaps(before, other) == Overlaps(other, before), "boxes overlap each other");
    Require((before == other) == !(before != other), "!= denies ==");
    Require(!before.Contains(point, true) || before.Contains(point, false), "to leave the upper ends out leaves less");
}

template <typename T>
void Space(Input& input)
{
    tVolumeAABB<T> const box(input.Vector3<T>(), input.Vector3<T>());
    tVolumeAABB<T> const other(input.Vector3<T>(), input.Vector3<T>());
    tVector3<T> const point = input.Vector3<T>();
    Grow(box, other, point);
    Grow(tVolumeAABB<T>(), box, point);
    T const square = box.DistanceSquared(point);
    Require(!box.Contains(point, false) || square == 0, "a point inside has no distance");
    Require(IsSame(box.Distance(point), std::sqrt(square)), "a distance is the root of its square");
    tVolumeSphere<T> const sphere(point, input.Number<T>());
    Require(sphere.Overlaps(box) == box.Overlaps(sphere), "spheres and boxes overlap each other");
    tVolumeSphere<T> const second(input.Vector3<T>(), input.Number<T>());
    Require(sphere.Overlaps(second) == second.Overlaps(sphere), "spheres overlap each other");
    tVolumeAABB<T> lower;
    tVolumeAABB<T> upper;
    for (unsigned char axis = 0; axis < 3; ++axis)
    {
        box.Split(axis, lower, upper);
        Require(IsSame(lower.GetMin(), box.GetMin()) && IsSame(upper.GetMax(), box.GetMax()),
                "halves keep the outer corners");
        Require(IsSame(lower.GetMax()[axis], upper.GetMin()[axis]), "halves meet");
    }
    tVector3<T> corners[8];
    GetCorners(box, corners);
    for (unsigned i = 0; i < 8; ++i)
        Require(IsSame(corners[i], GetCorner(box, i)), "corners are those of their numbers");
}

template <typename T>
void Plane(Input& input)
{
    tAreaAABB<T> const box(input.Vector2<T>(), input.Vector2<T>());
    tAreaAABB<T> const other(input.Vector2<T>(), input.Vector2<T>());
    tVector2<T> const point = input.Vector2<T>();
    Grow(box, other, point);
    Grow(tAreaAABB<T>(), box, point);
    T const square = box.DistanceSquared(point);
    Require(!box.Contains(point, false) || square == 0, "a point inside has no distance");
    Require(IsSame(box.Distance(point), std::sqrt(square)), "a distance is the root of its square");
    tAreaDisc<T> const disc(point, input.Number<T>());
    Require(disc.Overlaps(box) == box.Overlaps(disc), "discs and boxes overlap each other");
}

/// Spheres around points of ordinary size: each point is inside, within rounding.
template <typename T>
void Enclose(Input& input)
{
    std::vector<tVector3<T>> points;
    for (unsigned count = input.Below(12); count > 0; --count)
        points.emplace_back(input.Tame<T>(), input.Tame<T>(), input.Tame<T>());
    if (points.empty())
        return;
    std::span<tVector3<T> const> const all(points);
    auto const round = GetBoundingSphere(all);
    auto const smallest = GetSmallestSphere(all);
    tVolumeAABB<T> box;
    for (tVector3<T> const& point : points)
    {
        box.Expand(point);
        for (auto const* sphere : {&round, &smallest})
            Require((point - sphere->GetCentre()).Length() <=
                        sphere->GetRadius() * (1 + T(1e-4)) + T(1e-3), // the points reach up to 222 from the origin
                    "a sphere around points holds them");
    }
    Require(smallest.GetRadius() <= round.GetRadius() * (1 + T(1e-4)) + T(1e-3), "the smallest sphere is no larger");
    Require(smallest.GetRadius() <= box.GetDiagonal().Length() / 2 * (1 + T(1e-4)) + T(1e-3),
            "the smallest sphere is no larger than the one around the box");
}

template <typename T>
void Try(Input& input)
{
    Space<T>(input);
    Plane<T>(input);
    Enclose<T>(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    if (input.Below(2) == 0)
        Try<float>(input);
    else
        Try<double>(input);
    return 0;
}
