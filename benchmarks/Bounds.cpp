#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "bv/maths/Bounds.h"
#include "bv/maths/tMatrix4.h"

#include "BoundsData.h"
#include "Topics.h"

namespace bench
{

namespace
{

/// What a row keeps of a sphere, which has no default.
template <typename T>
struct Kept
{
    bv::maths::tVector3<T> centre;
    T radiusSquared;

    Kept() = default;
    Kept(bv::maths::tVolumeSphere<T> const& sphere)
        : centre{sphere.GetCentre()}, radiusSquared{sphere.GetRadiusSquared()}
    {
    }
};

template <typename T>
void AddPrecision()
{
    using Box = bv::maths::tVolumeAABB<T>;
    using Matrix = bv::maths::tMatrix4<T>;
    using Sphere = bv::maths::tVolumeSphere<T>;
    using Vector = bv::maths::tVector3<T>;
    auto const name = [](char const* operation) { return Name<T>(std::string("bounds/") + operation, "BvBaseUtils"); };
    auto const makeVector = [](double const* n)
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    auto const makeBox = [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); };
    auto const makeSphere = [&](double const* n)
    {
        Sphere sphere(makeVector(n));
        sphere.SetRadius(static_cast<T>(n[3]));
        return sphere;
    };
    auto const tellBox = [](std::vector<double>& numbers, Box const& box)
    {
        Box const shown = box.IsValid() ? box : Box(Vector(), Vector());
        TELL_VECTOR(numbers, shown.GetMin());
        TELL_VECTOR(numbers, shown.GetMax());
    };
    auto const tellRadius = [](std::vector<double>& numbers, Kept<T> const& sphere)
    { numbers.push_back(std::sqrt(static_cast<double>(sphere.radiusSquared))); };
    std::vector<Box> const boxes = Build(UnitBoxes(), 6, makeBox);
    std::vector<Box> const others = Build(OtherBoxes(), 6, makeBox);
    std::vector<Vector> const points = Build(UnitPoints(), 3, makeVector);

    AddAgreedMap(
        name("union"), [](Box const& a, Box const& b) { return Union(a, b); }, tellBox, boxes, others);
    AddAgreedMap(
        name("intersection"), [](Box const& a, Box const& b) { return Intersection(a, b); }, tellBox, boxes, others);
    AddAgreedMap(
        name("overlaps"), [](Box const& a, Box const& b) { return Overlaps(a, b); }, TELL_NUMBER, boxes, others);
    AddAgreedMap(
        name("contains box"), [](Box const& a, Box const& b) { return Contains(a, b); }, TELL_NUMBER, boxes, others);
    AddAgreedMap(
        name("surface"), [](Box const& box) { return GetSurfaceArea(box); }, TELL_NUMBER, boxes);
    AddAgreedMap(
        name("closest point"), [](Box const& box, Vector const& point) { return GetClosestPoint(box, point); },
        TELL_VECTOR, boxes, points);
    AddAgreedMap(
        name("projected"), [](Box const& box, Matrix const& matrix) { return ProjectBox(box, matrix).value_or(Box()); },
        tellBox, boxes, Build(ProjectionNumbers(), 16, [](double const* n) { return Matrix(n); }));
    AddAgreedMap(
        name("sphere and point"),
        [](Sphere const& sphere, Vector const& point) -> Kept<T> { return Union(sphere, point); }, tellRadius,
        Build(SphereNumbers(133), 4, makeSphere), points);

    std::vector<std::vector<Vector>> clouds;
    for (std::vector<double> const numbers = CloudNumbers(); clouds.size() < CLOUD_COUNT;)
    {
        clouds.emplace_back();
        for (std::size_t i = 0; i < CLOUD; ++i)
            clouds.back().push_back(makeVector(numbers.data() + 3 * (CLOUD * (clouds.size() - 1) + i)));
    }
    AddMap(
        name("sphere of 128 points"),
        [](std::vector<Vector> const& cloud) -> Kept<T> { return bv::maths::GetBoundingSphere(cloud); }, clouds);
    AddAgreedMap(
        name("smallest sphere of 128 points"),
        [](std::vector<Vector> const& cloud) -> Kept<T> { return bv::maths::GetSmallestSphere(cloud); }, tellRadius,
        clouds);
}

} // namespace

void AddBounds()
{
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
