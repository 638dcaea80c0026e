#include <cstddef>
#include <string>
#include <vector>

#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

#include "Agreement.h"
#include "Bench.h"
#include "RayPackets.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
using Box = bv::maths::tVolumeAABB<T>;
template <typename T>
using Ray = bv::maths::tRay<T>;
template <typename T>
using Vector = bv::maths::tVector3<T>;
using bv::maths::simd::SSERay;

template <typename T>
std::string Row(std::string const& operation)
{
    return Name<T>("ray/" + operation, "BvBaseUtils");
}

template <typename T>
Vector<T> MakeVector(double const* n)
{
    return {static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
}

template <typename T>
Box<T> MakeBox(double const* n)
{
    return {MakeVector<T>(n), MakeVector<T>(n + 3)};
}

template <typename T>
Ray<T> MakeRay(double const* n)
{
    return {MakeVector<T>(n), MakeVector<T>(n + 3)};
}

/// Where a ray enters a box, or -1.
template <typename T>
[[gnu::always_inline]] inline T Enter(Ray<T> const& ray, Box<T> const& box)
{
    T tNear = 0;
    T tFar = 1000;
    return ray.Clip(box, tNear, tFar) ? tNear : T{-1};
}

/// Each ray against all boxes.
template <typename T>
void AddRuns(std::string const& operation, std::vector<double> const& boxNumbers)
{
    std::vector<Ray<T>> const rays = Build(RayNumbers(RAY_COUNT, 3), 6, MakeRay<T>);
    std::vector<Box<T>> const boxes = Build(boxNumbers, 6, MakeBox<T>);
    std::vector<T> entries(COUNT);
    AddRun(Row<T>(operation), RAY_COUNT * COUNT,
           [=]() mutable
           {
               T* const out = entries.data();
               benchmark::DoNotOptimize(out);
               for (std::size_t i = 0; i < RAY_COUNT; ++i)
               {
                   Ray<T> const ray = rays[i]; // a copy, which no result can lie in
                   for (std::size_t j = 0; j < COUNT; ++j)
                       out[j] = Enter(ray, boxes[j]);
               }
           });
    AddNumbers(Row<T>(operation),
               [=]
               {
                   std::vector<double> numbers;
                   for (Ray<T> const& ray : rays)
                       for (Box<T> const& box : boxes)
                           numbers.push_back(static_cast<double>(Enter(ray, box)));
                   return numbers;
               });
}

template <typename T>
void AddPrecision()
{
    using Plane = bv::maths::tPlane<T>;
    using Sphere = bv::maths::tVolumeSphere<T>;

    std::vector<Ray<T>> const rays = Build(RayNumbers(COUNT, 3), 6, MakeRay<T>);
    AddMap(
        Row<T>("sphere"),
        [](Ray<T> const& ray, Sphere const& sphere)
        {
            T tNear;
            T tFar;
            return ray.Clip(sphere, tNear, tFar) ? tNear : T{-1};
        },
        rays,
        Build(SphereNumbers(201), 4,
              [](double const* n)
              {
                  Sphere sphere(MakeVector<T>(n));
                  sphere.SetRadius(static_cast<T>(2 * n[3]));
                  return sphere;
              }));
    AddRuns<T>("box, mixed", MixedBoxes());
    AddRuns<T>("box, mostly hits", HitBoxes());
    AddMap(
        Row<T>("box, each its own ray"), [](Ray<T> const& ray, Box<T> const& box) { return Enter(ray, box); }, rays,
        Build(MixedBoxes(), 6, MakeBox<T>));

    Plane const plane(Vector<T>(T(0.5), T(-0.25), T(0.75)), T(0.125));
    AddOneToMany(Row<T>("plane distance"), plane, Build(UnitPoints(), 3, MakeVector<T>),
                 [](Plane const& one, Vector<T> const& point) { return one.GetDistance(point); });
}

[[gnu::always_inline]] inline int ClipFour(SSERay const& packet, Box<float> const& box)
{
    __m128 tNear = _mm_setzero_ps();
    __m128 tFar = _mm_set1_ps(1000.0F);
    return _mm_movemask_ps(packet.Clip(box, tNear, tFar));
}

void AddFourRays()
{
    std::vector<SSERay> const packets = Build(RayNumbers(COUNT, 3), 4 * 6,
                                              [](double const* n)
                                              {
                                                  bv::maths::DepthRayf group[4];
                                                  for (bv::maths::DepthRayf& ray : group)
                                                  {
                                                      ray.origin = MakeVector<float>(n);
                                                      ray.direction = MakeVector<float>(n + 3);
                                                      n += 6;
                                                  }
                                                  SSERay packet;
                                                  packet.Initialise(group);
                                                  return packet;
                                              });
    std::vector<Box<float>> const boxes = Build(MixedBoxes(), 6, MakeBox<float>);
    Box<float> const box = boxes.front();
    SSERay const packet = packets.front();
    AddMap(
        Row<float>("four rays, one box"), [box](SSERay const& each) { return ClipFour(each, box); }, packets);
    AddMap(
        Row<float>("four rays, many boxes"), [packet](Box<float> const& each) { return ClipFour(packet, each); },
        boxes);
}

} // namespace

void AddRay()
{
    AddPrecision<float>();
    AddPrecision<double>();
    AddFourRays();
    AddEightRays("BvBaseUtils", avx::MakePackets, avx::ClipPackets, avx::ClipBoxes, RayNumbers(COUNT, 3), MixedBoxes());
}

} // namespace bench
