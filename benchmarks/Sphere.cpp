#include <string>
#include <vector>

#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

#include "Bench.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
void AddPrecision()
{
    using Box = bv::maths::tVolumeAABB<T>;
    using Sphere = bv::maths::tVolumeSphere<T>;
    using Vector = bv::maths::tVector3<T>;

    auto const makeVector = [](double const* n)
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    auto const makeBox = [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); };
    auto const makeSphere = [&](double const* n)
    {
        Sphere sphere(makeVector(n));
        sphere.SetRadius(static_cast<T>(n[3]));
        return sphere;
    };
    std::vector<Sphere> const spheres = Build(SphereNumbers(201), 4, makeSphere);

    AddMap(
        Name<T>("sphere/contains", "BvBaseUtils"),
        [](Sphere const& sphere, Vector const& point) { return sphere.Contains(point); }, spheres,
        Build(UnitPoints(), 3, makeVector));
    AddMap(
        Name<T>("sphere/sphere", "BvBaseUtils"), [](Sphere const& a, Sphere const& b) { return a.Overlaps(b); },
        spheres, Build(SphereNumbers(203), 4, makeSphere));
    AddMap(
        Name<T>("sphere/box", "BvBaseUtils"), [](Sphere const& sphere, Box const& box) { return sphere.Overlaps(box); },
        spheres, Build(UnitBoxes(), 6, makeBox));
}

} // namespace

void AddSphere()
{
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
