#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathBoxAlgo.h>
#include <Imath/ImathSphere.h>
#include <cglm/cglm.h>

#include "Bench.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

/// Eigen has no sphere: a user keeps a centre and a radius.
template <typename T>
struct EigenSphere
{
    Eigen::Matrix<T, 3, 1> centre;
    T radius;
};

template <typename T>
void AddEigen()
{
    using Box = Eigen::AlignedBox<T, 3>;
    using Sphere = EigenSphere<T>;
    using Vector = Eigen::Matrix<T, 3, 1>;
    auto const makeVector = [](double const* n) -> Vector
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    auto const makeSphere = [&](double const* n) { return Sphere{makeVector(n), static_cast<T>(n[3])}; };
    std::vector<Sphere> const spheres = Build(SphereNumbers(201), 4, makeSphere);

    AddMap(
        Name<T>("sphere/contains", "Eigen"),
        [](Sphere const& sphere, Vector const& point)
        { return (point - sphere.centre).squaredNorm() < sphere.radius * sphere.radius; },
        spheres, Build(UnitPoints(), 3, makeVector));
    AddMap(
        Name<T>("sphere/sphere", "Eigen"),
        [](Sphere const& a, Sphere const& b)
        {
            T const reach = a.radius + b.radius;
            return (a.centre - b.centre).squaredNorm() < reach * reach;
        },
        spheres, Build(SphereNumbers(203), 4, makeSphere));
    AddMap(
        Name<T>("sphere/box", "Eigen"),
        [](Sphere const& sphere, Box const& box)
        { return box.squaredExteriorDistance(sphere.centre) < sphere.radius * sphere.radius; },
        spheres, Build(UnitBoxes(), 6, [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); }));
}

template <typename T>
void AddImath()
{
    using Box = Imath::Box<Imath::Vec3<T>>;
    using Sphere = Imath::Sphere3<T>;
    using Vector = Imath::Vec3<T>;
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };
    auto const makeSphere = [&](double const* n) { return Sphere(makeVector(n), static_cast<T>(n[3])); };
    std::vector<Sphere> const spheres = Build(SphereNumbers(201), 4, makeSphere);

    AddMap(
        Name<T>("sphere/contains", "Imath"),
        [](Sphere const& sphere, Vector const& point)
        { return (point - sphere.center).length2() < sphere.radius * sphere.radius; },
        spheres, Build(UnitPoints(), 3, makeVector));
    AddMap(
        Name<T>("sphere/sphere", "Imath"),
        [](Sphere const& a, Sphere const& b)
        {
            T const reach = a.radius + b.radius;
            return (a.center - b.center).length2() < reach * reach;
        },
        spheres, Build(SphereNumbers(203), 4, makeSphere));
    AddMap(
        Name<T>("sphere/box", "Imath"),
        [](Sphere const& sphere, Box const& box) {
            return (sphere.center - Imath::closestPointInBox(sphere.center, box)).length2() <
                   sphere.radius * sphere.radius;
        },
        spheres, Build(UnitBoxes(), 6, [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); }));
}

struct CglmVector
{
    vec3 v;
};
struct CglmSphere
{
    vec4 v; ///< centre and radius
};
struct CglmBox
{
    vec3 corners[2];
};

void AddCglm()
{
    auto const makeSphere = [](double const* n)
    {
        CglmSphere sphere;
        for (int i = 0; i < 4; ++i)
            sphere.v[i] = static_cast<float>(n[i]);
        return sphere;
    };
    std::vector<CglmSphere> const spheres = Build(SphereNumbers(201), 4, makeSphere);

    AddMap(
        Name<float>("sphere/contains", "cglm"),
        [](CglmSphere const& sphere, CglmVector const& point)
        { return glm_sphere_point(const_cast<float*>(sphere.v), const_cast<float*>(point.v)); },
        spheres,
        Build(UnitPoints(), 3,
              [](double const* n) {
                  return CglmVector{{static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])}};
              }));
    AddMap(
        Name<float>("sphere/sphere", "cglm"),
        [](CglmSphere const& a, CglmSphere const& b)
        { return glm_sphere_sphere(const_cast<float*>(a.v), const_cast<float*>(b.v)); },
        spheres, Build(SphereNumbers(203), 4, makeSphere));
    AddMap(
        Name<float>("sphere/box", "cglm"),
        [](CglmSphere const& sphere, CglmBox const& box)
        { return glm_aabb_sphere(const_cast<vec3*>(box.corners), const_cast<float*>(sphere.v)); },
        spheres,
        Build(UnitBoxes(), 6,
              [](double const* n)
              {
                  CglmBox box;
                  for (int i = 0; i < 6; ++i)
                      box.corners[i / 3][i % 3] = static_cast<float>(n[i]);
                  return box;
              }));
}

} // namespace

void AddSphere()
{
    AddEigen<float>();
    AddEigen<double>();
    AddImath<float>();
    AddImath<double>();
    AddCglm();
}

} // namespace bench::peers
