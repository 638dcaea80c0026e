#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtx/intersect.hpp>

#include <Eigen/Dense>
#include <Imath/ImathLine.h>
#include <Imath/ImathLineAlgo.h>
#include <Imath/ImathPlane.h>

#include "Bench.h"
#include "RayPackets.h"
#include "Topics.h"
#include "TriangleData.h"
#include "peers/PacketKernels.h"

namespace bench::peers
{

namespace
{

template <typename T>
std::string Row(std::string const& operation, char const* library)
{
    return Name<T>("intersect/" + operation, library);
}

template <typename Vector>
struct Triangle
{
    Vector a, b, c;
};
template <typename Vector>
struct Ray
{
    Vector origin, direction;
};

/// The rows that a library has a test for: `meetTriangle(ray, triangle)`, `meetPlane(ray, plane)`.
template <typename T, typename MakeVector, typename MeetTriangle>
void AddTriangles(char const* library, std::vector<char const*> const& operations, MakeVector makeVector,
                  MeetTriangle meetTriangle)
{
    using Vector = decltype(makeVector(nullptr));
    auto const rays = Build(TriangleRays(), 6,
                            [=](double const* n) {
                                return Ray<Vector>{makeVector(n), makeVector(n + 3)};
                            });
    auto const triangles = Build(TriangleNumbers(), 9,
                                 [=](double const* n) {
                                     return Triangle<Vector>{makeVector(n), makeVector(n + 3), makeVector(n + 6)};
                                 });
    for (char const* const operation : operations)
        AddMeetings<T>(
            Row<T>(operation, library), rays, triangles, [](Ray<Vector> const& ray) { return ray; }, meetTriangle);
}

template <typename T>
void AddGlm()
{
    using Vector = glm::vec<3, T>;
    auto const makeVector = [](double const* n) { return Vector(n[0], n[1], n[2]); };
    AddTriangles<T>("GLM", {"triangle", "many triangles"}, makeVector,
                    [](Ray<Vector> const& ray, Triangle<Vector> const& triangle)
                    {
                        glm::vec<2, T> weights;
                        T t;
                        bool const isHit = glm::intersectRayTriangle(ray.origin, ray.direction, triangle.a, triangle.b,
                                                                     triangle.c, weights, t);
                        return isHit && t >= 0 && t <= 1000 ? t : T{-1};
                    });
}

template <typename T>
void AddImath()
{
    using Vector = Imath::Vec3<T>;
    using Plane = Imath::Plane3<T>;
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };
    auto const rays = Build(TriangleRays(), 6,
                            [=](double const* n)
                            {
                                Imath::Line3<T> line;
                                line.pos = makeVector(n);
                                line.dir = makeVector(n + 3);
                                return line;
                            });
    auto const triangles = Build(TriangleNumbers(), 9,
                                 [=](double const* n) {
                                     return Triangle<Vector>{makeVector(n), makeVector(n + 3), makeVector(n + 6)};
                                 });
    auto const keep = [](Imath::Line3<T> const& line) { return line; };
    // A point and not a parameter: the numbers of this row are not compared.
    for (char const* const operation : {"triangle", "many triangles"})
    {
        std::vector<T> results(COUNT);
        AddRun(Row<T>(operation, "Imath"), rays.size() * COUNT,
               [=]() mutable
               {
                   T* const out = results.data();
                   benchmark::DoNotOptimize(out);
                   for (auto const& ray : rays)
                       for (std::size_t i = 0; i < COUNT; ++i)
                       {
                           Vector point, weights;
                           bool isFront;
                           out[i] = Imath::intersect(ray, triangles[i].a, triangles[i].b, triangles[i].c, point,
                                                     weights, isFront)
                                        ? point.x
                                        : T{-1};
                       }
               });
    }
    auto const planes = Build(Numbers(119, 4 * COUNT, -1, 1), 4,
                              [=](double const* n)
                              {
                                  T const length = makeVector(n).length();
                                  return Plane(makeVector(n), -static_cast<T>(n[3]) / length);
                              });
    AddMeetings<T>(Row<T>("plane", "Imath"), rays, planes, keep,
                   [](Imath::Line3<T> const& line, Plane const& plane)
                   {
                       T t;
                       return plane.intersectT(line, t) && t >= 0 && t <= 1000 ? t : T{-1};
                   });
}

/// Moeller and Trumbore's test, as it is mostly written: a branch as soon as a coordinate is out of range.
template <typename T, typename Vector, typename Dot, typename Cross>
[[gnu::always_inline]] inline T MeetByHand(Ray<Vector> const& ray, Triangle<Vector> const& triangle, Dot dot,
                                           Cross cross)
{
    Vector const toB = triangle.b - triangle.a;
    Vector const toC = triangle.c - triangle.a;
    Vector const p = cross(ray.direction, toC);
    T const determinant = dot(toB, p);
    if (determinant == 0)
        return -1;
    T const inverse = 1 / determinant;
    Vector const s = ray.origin - triangle.a;
    T const u = dot(s, p) * inverse;
    if (u < 0 || u > 1)
        return -1;
    Vector const q = cross(s, toB);
    T const v = dot(ray.direction, q) * inverse;
    if (v < 0 || u + v > 1)
        return -1;
    T const t = dot(toC, q) * inverse;
    return t >= 0 && t <= 1000 ? t : T{-1};
}

template <typename T>
void AddEigen()
{
    using Vector = Eigen::Matrix<T, 3, 1>;
    using Plane = Eigen::Hyperplane<T, 3>;
    auto const makeVector = [](double const* n) -> Vector
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    AddTriangles<T>("Eigen", {"triangle"}, makeVector,
                    [](Ray<Vector> const& ray, Triangle<Vector> const& triangle)
                    {
                        return MeetByHand<T>(
                            ray, triangle, [](Vector const& a, Vector const& b) { return a.dot(b); },
                            [](Vector const& a, Vector const& b) -> Vector { return a.cross(b); });
                    });
    AddMeetings<T>(
        Row<T>("plane", "Eigen"),
        Build(TriangleRays(), 6,
              [=](double const* n) {
                  return Ray<Vector>{makeVector(n), makeVector(n + 3)};
              }),
        Build(Numbers(119, 4 * COUNT, -1, 1), 4,
              [=](double const* n)
              {
                  T const length = makeVector(n).norm();
                  return Plane(makeVector(n) / length, static_cast<T>(n[3]) / length);
              }),
        [](Ray<Vector> const& ray) { return Eigen::ParametrizedLine<T, 3>(ray.origin, ray.direction); },
        [](Eigen::ParametrizedLine<T, 3> const& line, Plane const& plane)
        {
            T const t = line.intersectionParameter(plane);
            return t >= 0 && t <= 1000 ? t : T{-1};
        });
}

template <typename T>
struct Plain
{
    T x, y, z;

    [[gnu::always_inline]] friend Plain operator-(Plain const& a, Plain const& b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
};

/// Woop's watertight test as the paper has it, without the products in higher precision, which are hardly ever needed.
template <typename T>
struct ShearedRay
{
    std::array<T, 3> origin;
    int kx, ky, kz;
    T sx, sy, sz;

    explicit ShearedRay(std::array<T, 6> const& ray) : origin{ray[0], ray[1], ray[2]}
    {
        T const* const d = ray.data() + 3;
        kz = std::abs(d[0]) > std::abs(d[1]) ? (std::abs(d[0]) > std::abs(d[2]) ? 0 : 2)
                                             : (std::abs(d[1]) > std::abs(d[2]) ? 1 : 2);
        kx = (kz + 1) % 3;
        ky = (kx + 1) % 3;
        if (d[kz] < 0)
            std::swap(kx, ky);
        sx = d[kx] / d[kz];
        sy = d[ky] / d[kz];
        sz = 1 / d[kz];
    }

    [[gnu::always_inline]] T Meet(std::array<std::array<T, 3>, 3> const& corners) const
    {
        T x[3], y[3], z[3];
        for (std::size_t i = 0; i < 3; ++i)
        {
            std::array<T, 3> const& p = corners[i];
            T const along = p[static_cast<std::size_t>(kz)] - origin[static_cast<std::size_t>(kz)];
            x[i] = p[static_cast<std::size_t>(kx)] - origin[static_cast<std::size_t>(kx)] - sx * along;
            y[i] = p[static_cast<std::size_t>(ky)] - origin[static_cast<std::size_t>(ky)] - sy * along;
            z[i] = sz * along;
        }
        T const u = x[2] * y[1] - y[2] * x[1];
        T const v = x[0] * y[2] - y[0] * x[2];
        T const w = x[1] * y[0] - y[1] * x[0];
        if ((u < 0 || v < 0 || w < 0) && (u > 0 || v > 0 || w > 0))
            return -1;
        T const sum = u + v + w;
        if (sum == 0)
            return -1;
        T const t = (u * z[0] + v * z[1] + w * z[2]) / sum;
        return t >= 0 && t <= 1000 ? t : T{-1};
    }
};

/// A ray and a box for the slab test of T. Ize, "Robust BVH Ray Traversal", 2013.
template <typename T>
struct SlabRay
{
    T origin[3], reciprocal[3];

    explicit SlabRay(std::array<T, 6> const& ray)
        : origin{ray[0], ray[1], ray[2]}, reciprocal{1 / ray[3], 1 / ray[4], 1 / ray[5]}
    {
    }

    [[gnu::always_inline]] T Meet(std::array<T, 6> const& box) const
    {
        constexpr T WIDER = sizeof(T) == sizeof(float) ? T(1.00000024) : T(1.0000000000000004);
        T tNear = 0;
        T tFar = 1000;
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            T const a = (box[axis] - origin[axis]) * reciprocal[axis];
            T const b = (box[axis + 3] - origin[axis]) * reciprocal[axis];
            tNear = std::max(tNear, std::min(a, b));
            tFar = std::min(tFar, std::max(a, b) * WIDER);
        }
        return tNear <= tFar ? tNear : T{-1};
    }
};

template <typename T>
void AddHandWritten()
{
    using Vector = Plain<T>;
    auto const makeSix = [](double const* n)
    {
        std::array<T, 6> six;
        std::transform(n, n + 6, six.begin(), [](double number) { return static_cast<T>(number); });
        return six;
    };
    auto const rays = Build(TriangleRays(), 6, makeSix);
    AddTriangles<T>(
        "hand-written", {"triangle", "many triangles"},
        [](double const* n) {
            return Vector{static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
        },
        [](Ray<Vector> const& ray, Triangle<Vector> const& triangle)
        {
            return MeetByHand<T>(
                ray, triangle, [](Vector const& a, Vector const& b) { return a.x * b.x + a.y * b.y + a.z * b.z; },
                [](Vector const& a, Vector const& b) {
                    return Vector{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
                });
        });
    auto const corners = Build(TriangleNumbers(), 9,
                               [](double const* n)
                               {
                                   std::array<std::array<T, 3>, 3> triangle;
                                   for (std::size_t i = 0; i < 9; ++i)
                                       triangle[i / 3][i % 3] = static_cast<T>(n[i]);
                                   return triangle;
                               });
    for (char const* const operation : {"triangle, watertight", "many triangles, watertight"})
        AddMeetings<T>(
            Row<T>(operation, "hand-written"), rays, corners,
            [](std::array<T, 6> const& ray) { return ShearedRay<T>(ray); },
            [](ShearedRay<T> const& ray, auto const& triangle) { return ray.Meet(triangle); });
    AddMeetings<T>(
        Row<T>("box, reciprocals", "hand-written"), rays, Build(MixedBoxes(), 6, makeSix),
        [](std::array<T, 6> const& ray) { return SlabRay<T>(ray); },
        [](SlabRay<T> const& ray, std::array<T, 6> const& box) { return ray.Meet(box); });
}

template <typename T>
[[gnu::always_inline]] inline T DotByHand(Plain<T> const& a, Plain<T> const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <typename T>
[[gnu::always_inline]] inline Plain<T> CrossByHand(Plain<T> const& a, Plain<T> const& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <typename T>
struct PlainDisc
{
    Plain<T> centre, normal;
    T radius;

    [[gnu::always_inline]] T Meet(Ray<Plain<T>> const& ray) const
    {
        T const along = DotByHand(normal, ray.direction);
        if (along == 0)
            return -1;
        Plain<T> const from = ray.origin - centre;
        T const t = -DotByHand(normal, from) / along;
        if (!(t >= 0 && t <= 1000))
            return -1;
        Plain<T> const way{from.x + ray.direction.x * t, from.y + ray.direction.y * t, from.z + ray.direction.z * t};
        return DotByHand(way, way) <= radius * radius ? t : T{-1};
    }
};

/// Slabs along the axes of the box.
template <typename T>
struct PlainTurnedBox
{
    Plain<T> centre;
    std::array<Plain<T>, 3> axes;
    std::array<T, 3> half;

    [[gnu::always_inline]] T Meet(Ray<Plain<T>> const& ray) const
    {
        Plain<T> const from = ray.origin - centre;
        T tNear = 0;
        T tFar = 1000;
        for (std::size_t i = 0; i < 3; ++i)
        {
            T const inverse = 1 / DotByHand(ray.direction, axes[i]);
            T const at = DotByHand(from, axes[i]);
            T const a = (-half[i] - at) * inverse;
            T const b = (half[i] - at) * inverse;
            tNear = std::max(tNear, std::min(a, b));
            tFar = std::min(tFar, std::max(a, b));
        }
        return tNear <= tFar ? tNear : T{-1};
    }
};

/// Whether a product of an edge and an axis separates: the edge's two components in the plane of the other axes, two
/// corners and the half extents there.
template <typename T>
[[gnu::always_inline]] inline bool Separates(T y, T z, T ay, T az, T by, T bz, T halfY, T halfZ)
{
    T const p = y * az - z * ay;
    T const q = y * bz - z * by;
    T const reach = std::abs(y) * halfZ + std::abs(z) * halfY;
    return std::min(p, q) > reach || std::max(p, q) < -reach;
}

template <typename T>
[[gnu::always_inline]] inline bool SeparatesByEdge(Plain<T> const& edge, Plain<T> const& a, Plain<T> const& b,
                                                   Plain<T> const& half)
{
    return Separates(edge.y, edge.z, a.y, a.z, b.y, b.z, half.y, half.z) ||
           Separates(edge.z, edge.x, a.z, a.x, b.z, b.x, half.z, half.x) ||
           Separates(edge.x, edge.y, a.x, a.y, b.x, b.y, half.x, half.y);
}

template <typename T>
[[gnu::always_inline]] inline bool LieBeyond(T a, T b, T c, T half)
{
    return std::min({a, b, c}) > half || std::max({a, b, c}) < -half;
}

/// Akenine-Moeller's thirteen axes: the faces, the edges, the plane.
template <typename T>
[[gnu::always_inline]] inline bool OverlapByHand(std::array<T, 6> const& box, Triangle<Plain<T>> const& triangle)
{
    Plain<T> const centre{(box[0] + box[3]) / 2, (box[1] + box[4]) / 2, (box[2] + box[5]) / 2};
    Plain<T> const half{(box[3] - box[0]) / 2, (box[4] - box[1]) / 2, (box[5] - box[2]) / 2};
    Plain<T> const a = triangle.a - centre;
    Plain<T> const b = triangle.b - centre;
    Plain<T> const c = triangle.c - centre;
    if (LieBeyond(a.x, b.x, c.x, half.x) || LieBeyond(a.y, b.y, c.y, half.y) || LieBeyond(a.z, b.z, c.z, half.z))
        return false;
    if (SeparatesByEdge(b - a, a, c, half) || SeparatesByEdge(c - b, b, a, half) || SeparatesByEdge(a - c, c, b, half))
        return false;
    Plain<T> const normal = CrossByHand(b - a, c - a);
    T const reach = std::abs(normal.x) * half.x + std::abs(normal.y) * half.y + std::abs(normal.z) * half.z;
    return std::abs(DotByHand(normal, a)) <= reach;
}

/// C. Ericson, "Real-Time Collision Detection", 2005.
template <typename T>
[[gnu::always_inline]] inline T GetWeightsByHand(Plain<T> const& point, Triangle<Plain<T>> const& triangle)
{
    Plain<T> const toB = triangle.b - triangle.a;
    Plain<T> const toC = triangle.c - triangle.a;
    Plain<T> const way = point - triangle.a;
    T const bb = DotByHand(toB, toB);
    T const bc = DotByHand(toB, toC);
    T const cc = DotByHand(toC, toC);
    T const pb = DotByHand(way, toB);
    T const pc = DotByHand(way, toC);
    T const inverse = 1 / (bb * cc - bc * bc);
    return (cc * pb - bc * pc) * inverse + (bb * pc - bc * pb) * inverse * 2;
}

template <typename T>
void AddShapesByHand()
{
    using Vector = Plain<T>;
    auto const makeVector = [](double const* n) {
        return Vector{static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
    };
    auto const makeRay = [=](double const* n) { return Ray<Vector>{makeVector(n), makeVector(n + 3)}; };
    auto const rays = Build(TriangleRays(), 6, makeRay);
    auto const keep = [](auto const& shape) { return shape; };
    auto const meet = [](Ray<Vector> const& ray, auto const& shape) { return shape.Meet(ray); };
    AddMeetings<T>(Row<T>("disc", "hand-written"), rays,
                   Build(DiscNumbers(), 7,
                         [=](double const* n) {
                             return PlainDisc<T>{makeVector(n), makeVector(n + 3), static_cast<T>(n[6])};
                         }),
                   keep, meet);
    AddMeetings<T>(Row<T>("turned box", "hand-written"), rays,
                   Build(TurnedBoxNumbers(), 15,
                         [=](double const* n)
                         {
                             return PlainTurnedBox<T>{
                                 makeVector(n),
                                 {makeVector(n + 3), makeVector(n + 6), makeVector(n + 9)},
                                 {static_cast<T>(n[12]), static_cast<T>(n[13]), static_cast<T>(n[14])}};
                         }),
                   keep, meet);
    auto const triangles = Build(TriangleNumbers(), 9,
                                 [=](double const* n) {
                                     return Triangle<Vector>{makeVector(n), makeVector(n + 3), makeVector(n + 6)};
                                 });
    AddMeetings<T>(Row<T>("triangle in box", "hand-written"),
                   Build(CellNumbers(), 6,
                         [](double const* n)
                         {
                             std::array<T, 6> box;
                             std::transform(n, n + 6, box.begin(),
                                            [](double number) { return static_cast<T>(number); });
                             return box;
                         }),
                   triangles, keep,
                   [](std::array<T, 6> const& box, Triangle<Vector> const& triangle)
                   { return static_cast<T>(OverlapByHand(box, triangle)); });
    AddMeetings<T>(Row<T>("barycentric coordinates", "hand-written"), Build(TrianglePoints(), 3, makeVector), triangles,
                   keep, GetWeightsByHand<T>);
}

template <typename Vector>
void AppendRay(std::vector<double>& numbers, Ray<Vector> const& ray)
{
    for (Vector const& v : {ray.origin, ray.direction})
        numbers.insert(numbers.end(),
                       {static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2])});
}

template <typename T>
void AddMovedRays()
{
    using GlmRay = Ray<glm::vec<3, T>>;
    using GlmMatrix = glm::mat<4, 4, T>;
    GlmMatrix glmMotion;
    std::vector<double> const motion = RayMotion();
    for (int i = 0; i < 16; ++i)
        glmMotion[i % 4][i / 4] = static_cast<T>(motion[static_cast<std::size_t>(i)]);
    bench::AddMovedRays<T>(
        Row<T>("moved ray", "GLM"),
        Build(MovedRays(), 6,
              [](double const* n) {
                  return GlmRay{{n[0], n[1], n[2]}, {n[3], n[4], n[5]}};
              }),
        glmMotion,
        [](GlmRay const& ray, GlmMatrix const& by)
        {
            using Four = glm::vec<4, T>;
            return GlmRay{glm::vec<3, T>(by * Four(ray.origin, 1)), glm::vec<3, T>(by * Four(ray.direction, 0))};
        },
        AppendRay<glm::vec<3, T>>);

    using Vector = Eigen::Matrix<T, 3, 1>;
    using EigenMotion = Eigen::Transform<T, 3, Eigen::AffineCompact>;
    EigenMotion eigenMotion;
    eigenMotion.matrix() = Eigen::Map<Eigen::Matrix<double, 3, 4, Eigen::RowMajor> const>(motion.data()).cast<T>();
    bench::AddMovedRays<T>(
        Row<T>("moved ray", "Eigen"),
        Build(MovedRays(), 6,
              [](double const* n)
              {
                  return Ray<Vector>{Eigen::Map<Eigen::Vector3d const>(n).cast<T>(),
                                     Eigen::Map<Eigen::Vector3d const>(n + 3).cast<T>()};
              }),
        eigenMotion,
        [](Ray<Vector> const& ray, EigenMotion const& by) {
            return Ray<Vector>{by * ray.origin, by.linear() * ray.direction};
        },
        AppendRay<Vector>);
}

void AddPackets()
{
    using Four = float __attribute__((vector_size(16)));
    auto const row = [](char const* operation) { return Row<float>(operation, "hand-written"); };
    AddPacketMeetings(row("four rays, triangle"), 4, MeetTrianglesByHand<Four>);
    AddPacketMeetings(row("four rays, triangle, watertight"), 4, MeetMeshByHand<Four>);
    if (!__builtin_cpu_supports("avx"))
        return;
    AddPacketMeetings(row("eight rays, triangle"), EIGHT, avx::MeetTriangles);
    AddPacketMeetings(row("eight rays, triangle, watertight"), EIGHT, avx::MeetMesh);
}

} // namespace

void AddIntersect()
{
    AddShapesByHand<float>();
    AddShapesByHand<double>();
    AddMovedRays<float>();
    AddMovedRays<double>();
    AddPackets();
    AddGlm<float>();
    AddGlm<double>();
    AddImath<float>();
    AddImath<double>();
    AddEigen<float>();
    AddEigen<double>();
    AddHandWritten<float>();
    AddHandWritten<double>();
}

} // namespace bench::peers
