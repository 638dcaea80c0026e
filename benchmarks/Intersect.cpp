#include "bv/maths/Intersect.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bv/maths/batch/Rays.h"
#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tReciprocalRay.h"

#include "Bench.h"
#include "PacketMeetings.h"
#include "RayPackets.h"
#include "Topics.h"
#include "TriangleData.h"

namespace bench
{

namespace
{

using namespace bv::maths;

template <typename T>
std::string Row(std::string const& operation)
{
    return Name<T>("intersect/" + operation, "BvBaseUtils");
}

template <typename T>
tVector3<T> MakeVector(double const* n)
{
    return {static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
}

template <typename T>
tRay<T> MakeRay(double const* n)
{
    return {MakeVector<T>(n), MakeVector<T>(n + 3)};
}

template <typename T>
struct Triangle
{
    tVector3<T> a, b, c;
};

/// Corners component by component, and what the ray makes of them.
template <typename T>
struct ManyTriangles
{
    std::array<std::vector<T>, 9> components;
    std::vector<T> t, u, v;
    std::vector<std::uint64_t> bits;

    explicit ManyTriangles(std::vector<double> const& numbers) : t(COUNT), u(COUNT), v(COUNT), bits(GetBitWords(COUNT))
    {
        for (std::size_t i = 0; i < numbers.size(); ++i)
            components[i % 9].push_back(static_cast<T>(numbers[i]));
    }

    template <typename Ray>
    void Meet(Ray const& ray)
    {
        auto const& n = components;
        IntersectTriangles(ray, tVectorView<T const>(n[0], n[1], n[2]), tVectorView<T const>(n[3], n[4], n[5]),
                           tVectorView<T const>(n[6], n[7], n[8]), 0, 1000, t, u, v, bits);
    }
};

/// One ray against all triangles at once.
template <typename T, typename Begin>
void AddMany(std::string const& operation, std::vector<tRay<T>> const& rays, Begin begin)
{
    auto const triangles = std::make_shared<ManyTriangles<T>>(TriangleNumbers());
    AddRun(Row<T>(operation), rays.size() * COUNT,
           [=]
           {
               for (tRay<T> const& ray : rays)
               {
                   triangles->Meet(begin(ray));
                   benchmark::ClobberMemory();
               }
           });
    AddNumbers(Row<T>(operation),
               [=]
               {
                   std::vector<double> entries;
                   for (tRay<T> const& ray : rays)
                   {
                       triangles->Meet(begin(ray));
                       for (T const t : triangles->t)
                           entries.push_back(t <= 1000 ? static_cast<double>(t) : -1.0);
                   }
                   return entries;
               });
}

template <typename T>
void AddPrecision()
{
    std::vector<tRay<T>> const rays = Build(TriangleRays(), 6, MakeRay<T>);
    auto const triangles = Build(TriangleNumbers(), 9,
                                 [](double const* n) {
                                     return Triangle<T>{MakeVector<T>(n), MakeVector<T>(n + 3), MakeVector<T>(n + 6)};
                                 });
    auto const meet = [](auto const& ray, Triangle<T> const& triangle)
    {
        tTriangleHit<T> hit;
        return IntersectTriangle(ray, triangle.a, triangle.b, triangle.c, 0, 1000, hit) ? hit.t : T{-1};
    };
    auto const keep = [](tRay<T> const& ray) { return ray; };
    auto const prepare = [](tRay<T> const& ray) { return tWatertightRay<T>(ray); };
    AddMeetings<T>(Row<T>("triangle"), rays, triangles, keep, meet);
    AddMeetings<T>(Row<T>("triangle, watertight"), rays, triangles, prepare, meet);
    AddMany<T>("many triangles", rays, keep);
    AddMany<T>("many triangles, watertight", rays, prepare);

    auto const planes = Build(Numbers(119, 4 * COUNT, -1, 1), 4,
                              [](double const* n) { return tPlane<T>(MakeVector<T>(n), static_cast<T>(n[3])); });
    AddMeetings<T>(Row<T>("plane"), rays, planes, keep,
                   [](tRay<T> const& ray, tPlane<T> const& plane)
                   {
                       T t;
                       return IntersectPlane(ray, plane, 0, 1000, t) ? t : T{-1};
                   });
    auto const boxes =
        Build(MixedBoxes(), 6, [](double const* n) { return tVolumeAABB<T>(MakeVector<T>(n), MakeVector<T>(n + 3)); });
    AddMeetings<T>(
        Row<T>("box, reciprocals"), rays, boxes, [](tRay<T> const& ray) { return tReciprocalRay<T>(ray); },
        [](tReciprocalRay<T> const& ray, tVolumeAABB<T> const& box)
        {
            T tNear = 0;
            T tFar = 1000;
            return ray.Clip(box, tNear, tFar) ? tNear : T{-1};
        });
}

template <typename T>
void AddShapes()
{
    struct Disc
    {
        tVector3<T> centre, normal;
        T radius;
    };
    std::vector<tRay<T>> const rays = Build(TriangleRays(), 6, MakeRay<T>);
    auto const keep = [](auto const& shape) { return shape; };
    AddMeetings<T>(Row<T>("disc"), rays,
                   Build(DiscNumbers(), 7,
                         [](double const* n) {
                             return Disc{MakeVector<T>(n), MakeVector<T>(n + 3), static_cast<T>(n[6])};
                         }),
                   keep,
                   [](tRay<T> const& ray, Disc const& disc)
                   {
                       T t;
                       return IntersectDisc(ray, disc.centre, disc.normal, disc.radius, 0, 1000, t) ? t : T{-1};
                   });
    AddMeetings<T>(Row<T>("turned box"), rays,
                   Build(TurnedBoxNumbers(), 15,
                         [](double const* n)
                         {
                             return tOrientedBox<T>(MakeVector<T>(n), MakeVector<T>(n + 3), MakeVector<T>(n + 6),
                                                    MakeVector<T>(n + 9), MakeVector<T>(n + 12));
                         }),
                   keep,
                   [](tRay<T> const& ray, tOrientedBox<T> const& box)
                   {
                       T tNear = 0;
                       T tFar = 1000;
                       return ClipOrientedBox(ray, box, tNear, tFar) ? tNear : T{-1};
                   });
    AddMovedRays<T>(
        Row<T>("moved ray"), Build(MovedRays(), 6, MakeRay<T>), tMatrix4<T>(tMatrix4<double>(RayMotion().data())),
        [](tRay<T> const& ray, tMatrix4<T> const& motion) { return TransformRay(ray, motion); },
        [](std::vector<double>& numbers, tRay<T> const& ray)
        {
            for (tVector3<T> const& v : {ray.origin, ray.direction})
                numbers.insert(numbers.end(),
                               {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)});
        });
    auto const triangles = Build(TriangleNumbers(), 9,
                                 [](double const* n) {
                                     return Triangle<T>{MakeVector<T>(n), MakeVector<T>(n + 3), MakeVector<T>(n + 6)};
                                 });
    AddMeetings<T>(
        Row<T>("triangle in box"),
        Build(CellNumbers(), 6, [](double const* n) { return tVolumeAABB<T>(MakeVector<T>(n), MakeVector<T>(n + 3)); }),
        triangles, keep,
        [](tVolumeAABB<T> const& box, Triangle<T> const& triangle)
        { return static_cast<T>(OverlapsTriangle(box, triangle.a, triangle.b, triangle.c)); });
    AddMeetings<T>(Row<T>("barycentric coordinates"), Build(TrianglePoints(), 3, MakeVector<T>), triangles, keep,
                   [](tVector3<T> const& point, Triangle<T> const& triangle)
                   {
                       T u, v;
                       return GetBarycentric(point, triangle.a, triangle.b, triangle.c, u, v) ? u + v * 2 : T{-1};
                   });
}

void AddPackets()
{
    using simd::SSERay;
    AddPacketMeetings(Row<float>("four rays, triangle"), SSERay::WIDTH,
                      [](float const* rays, float const* triangles, std::size_t count, float* results)
                      { MeetAll<SSERay>(LoadPacket<SSERay>(rays), triangles, count, results); });
    AddPacketMeetings(Row<float>("four rays, triangle, watertight"), SSERay::WIDTH,
                      [](float const* rays, float const* triangles, std::size_t count, float* results)
                      {
                          simd::tWatertightPacket<SSERay> const ready(LoadPacket<SSERay>(rays));
                          MeetAll<SSERay>(ready, triangles, count, results);
                      });
    if (!__builtin_cpu_supports("avx"))
        return;
    AddPacketMeetings(Row<float>("eight rays, triangle"), EIGHT, avx::MeetTriangles);
    AddPacketMeetings(Row<float>("eight rays, triangle, watertight"), EIGHT, avx::MeetMesh);
}

} // namespace

void AddIntersect()
{
    AddShapes<float>();
    AddShapes<double>();
    AddPackets();
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
