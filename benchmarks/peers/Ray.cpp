#include <algorithm>
#include <array>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <xmmintrin.h>

#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtx/intersect.hpp>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathBoxAlgo.h>
#include <Imath/ImathLine.h>
#include <Imath/ImathPlane.h>
#include <Imath/ImathSphere.h>
#include <LinearMath/btAabbUtil2.h>

#include "Agreement.h"
#include "Bench.h"
#include "RayPackets.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

template <typename T>
std::string Row(std::string const& operation, char const* library)
{
    return Name<T>("ray/" + operation, library);
}

/// Each ray against all boxes: `begin(ray)` gives what a ray keeps while it meets boxes.
template <typename T, typename Ray, typename Box, typename Begin, typename Enter>
void AddRuns(std::string const& operation, char const* library, std::vector<Ray> const& rays,
             std::vector<Box> const& boxes, Begin begin, Enter enter)
{
    std::vector<T> entries(COUNT);
    AddRun(Row<T>(operation, library), RAY_COUNT * COUNT,
           [=]() mutable
           {
               T* const out = entries.data();
               benchmark::DoNotOptimize(out);
               for (std::size_t i = 0; i < RAY_COUNT; ++i)
               {
                   auto const state = begin(rays[i]);
                   for (std::size_t j = 0; j < COUNT; ++j)
                       out[j] = enter(state, boxes[j]);
               }
           });
}

/// The rows of a ray against boxes.
template <typename T, typename MakeRay, typename MakeBox, typename Begin, typename Enter>
void AddBoxes(char const* library, MakeRay makeRay, MakeBox makeBox, Begin begin, Enter enter)
{
    auto const rays = Build(RayNumbers(RAY_COUNT, 3), 6, makeRay);
    AddRuns<T>("box, mixed", library, rays, Build(MixedBoxes(), 6, makeBox), begin, enter);
    AddRuns<T>("box, mostly hits", library, rays, Build(HitBoxes(), 6, makeBox), begin, enter);
    AddMap(
        Row<T>("box, each its own ray", library),
        [=](auto const& ray, auto const& box) { return enter(begin(ray), box); },
        Build(RayNumbers(COUNT, 3), 6, makeRay), Build(MixedBoxes(), 6, makeBox));
}

template <typename T>
void AddImath()
{
    using Box = Imath::Box<Imath::Vec3<T>>;
    using Line = Imath::Line3<T>;
    using Plane = Imath::Plane3<T>;
    using Sphere = Imath::Sphere3<T>;
    using Vector = Imath::Vec3<T>;
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };
    auto const makeBox = [=](double const* n) { return Box(makeVector(n), makeVector(n + 3)); };
    auto const makeLine = [=](double const* n)
    {
        Line line;
        line.pos = makeVector(n);
        line.dir = makeVector(n + 3);
        return line;
    };

    AddMap(
        Row<T>("sphere", "Imath"),
        [](Line const& line, Sphere const& sphere)
        {
            T t;
            return sphere.intersectT(line, t) ? t : T{-1};
        },
        Build(RayNumbers(COUNT, 3), 6, makeLine),
        Build(SphereNumbers(201), 4, [=](double const* n) { return Sphere(makeVector(n), static_cast<T>(2 * n[3])); }));
    // the entry is a point, not a parameter
    AddBoxes<T>(
        "Imath", makeLine, makeBox, [](Line const& line) { return line; },
        [](Line const& line, Box const& box)
        {
            Vector entry(0);
            return Imath::intersects(box, line, entry) ? entry.x : T{-1};
        });
    Plane const plane(Vector(T(0.5), T(-0.25), T(0.75)), T(-0.125));
    AddOneToMany(Row<T>("plane distance", "Imath"), plane, Build(UnitPoints(), 3, makeVector),
                 [](Plane const& one, Vector const& point) { return one.distanceTo(point); });
}

template <typename T>
void AddEigen()
{
    using Vector = Eigen::Matrix<T, 3, 1>;
    using Plane = Eigen::Hyperplane<T, 3>;
    Plane const plane(Vector(T(0.5), T(-0.25), T(0.75)).normalized(), T(0.125));
    AddOneToMany(Row<T>("plane distance", "Eigen"), plane,
                 Build(UnitPoints(), 3,
                       [](double const* n) -> Vector
                       { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); }),
                 [](Plane const& one, Vector const& point) { return one.signedDistance(point); });
}

template <typename T>
struct GlmRay
{
    glm::vec<3, T> origin;
    glm::vec<3, T> direction;
};
template <typename T>
struct GlmSphere
{
    glm::vec<3, T> centre;
    T radiusSquared;
};

template <typename T>
void AddGlm()
{
    auto const makeVector = [](double const* n) { return glm::vec<3, T>(n[0], n[1], n[2]); };
    AddMap(
        Row<T>("sphere", "GLM"),
        [](GlmRay<T> const& ray, GlmSphere<T> const& sphere)
        {
            T t;
            return glm::intersectRaySphere(ray.origin, ray.direction, sphere.centre, sphere.radiusSquared, t) ? t
                                                                                                              : T{-1};
        },
        Build(RayNumbers(COUNT, 3), 6,
              [=](double const* n) {
                  return GlmRay<T>{makeVector(n), makeVector(n + 3)};
              }),
        Build(SphereNumbers(201), 4,
              [=](double const* n)
              {
                  T const radius = static_cast<T>(2 * n[3]);
                  return GlmSphere<T>{makeVector(n), radius * radius};
              }));
}

struct BulletRay
{
    btVector3 origin;
    btVector3 direction;
};
/// What Bullet's own tree makes of a ray before it meets boxes.
struct BulletState
{
    btVector3 origin;
    btVector3 inverse;
    unsigned int sign[3];
};
struct BulletBox
{
    btVector3 bounds[2];
};

void AddBullet()
{
    auto const makeVector = [](double const* n)
    { return btVector3(static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])); };
    AddBoxes<float>(
        "Bullet",
        [=](double const* n) {
            return BulletRay{makeVector(n), makeVector(n + 3)};
        },
        [=](double const* n) {
            return BulletBox{{makeVector(n), makeVector(n + 3)}};
        },
        [](BulletRay const& ray)
        {
            BulletState state;
            state.origin = ray.origin;
            for (int axis = 0; axis < 3; ++axis)
            {
                btScalar const along = ray.direction[axis];
                state.inverse[axis] = along == 0 ? btScalar(BT_LARGE_FLOAT) : 1 / along;
                state.sign[axis] = state.inverse[axis] < 0;
            }
            return state;
        },
        [](BulletState const& state, BulletBox const& box)
        {
            btScalar entry = 0;
            return btRayAabb2(state.origin, state.inverse, state.sign, box.bounds, entry, 0, 1000) ? entry : -1.0F;
        });
}

/// A box as two corners, and what a user keeps of a ray that meets many of them.
template <typename T>
struct SlabBox
{
    T lower[3];
    T upper[3];
};
template <typename T>
struct SlabRay
{
    T origin[3];
    T reciprocal[3];
};

/// Where a ray enters a box, or -1: the three slabs without a branch, for rays that run along no axis.
template <typename T>
[[gnu::always_inline]] inline T EnterSlabs(SlabRay<T> const& ray, SlabBox<T> const& box)
{
    T tNear = 0;
    T tFar = 1000;
    for (int axis = 0; axis < 3; ++axis)
    {
        T const a = (box.lower[axis] - ray.origin[axis]) * ray.reciprocal[axis];
        T const b = (box.upper[axis] - ray.origin[axis]) * ray.reciprocal[axis];
        tNear = std::max(tNear, std::min(a, b));
        tFar = std::min(tFar, std::max(a, b));
    }
    return tNear <= tFar ? tNear : T{-1};
}

template <typename T>
void AddSlabs()
{
    using Six = std::array<T, 6>;
    auto const makeRay = [](double const* n)
    {
        Six ray;
        std::transform(n, n + 6, ray.begin(), [](double number) { return static_cast<T>(number); });
        return ray;
    };
    auto const makeBox = [](double const* n)
    {
        SlabBox<T> box;
        for (int axis = 0; axis < 3; ++axis)
        {
            box.lower[axis] = static_cast<T>(n[axis]);
            box.upper[axis] = static_cast<T>(n[axis + 3]);
        }
        return box;
    };
    auto const begin = [](Six const& ray) {
        return SlabRay<T>{{ray[0], ray[1], ray[2]}, {1 / ray[3], 1 / ray[4], 1 / ray[5]}};
    };
    AddBoxes<T>("hand-written", makeRay, makeBox, begin, EnterSlabs<T>);

    auto const rays = Build(RayNumbers(RAY_COUNT, 3), 6, makeRay);
    for (auto const& [operation, boxes] : {std::pair("box, mixed", MixedBoxes()), {"box, mostly hits", HitBoxes()}})
        AddNumbers(Row<T>(operation, "hand-written"),
                   [=, boxes = Build(boxes, 6, makeBox)]
                   {
                       std::vector<double> entries;
                       for (Six const& ray : rays)
                           for (SlabBox<T> const& box : boxes)
                               entries.push_back(static_cast<double>(EnterSlabs(begin(ray), box)));
                       return entries;
                   });
}

/// Four rays by hand: the nine vectors of the library's packet.
struct FourRays
{
    __m128 origin[3];
    __m128 direction[3];
    __m128 inverse[3];
};
struct Corners
{
    float lower[3];
    float upper[3];
};

/// The test with the operands of each minimum and maximum the way round that the library has them.
[[gnu::always_inline]] inline int Clip(FourRays const& rays, Corners const& box)
{
    __m128 const margin = _mm_set1_ps(0x1.4p-20F);
    __m128 const xBelow = _mm_add_ps(rays.origin[0], margin);
    __m128 const xAbove = _mm_sub_ps(rays.origin[0], margin);
    __m128 const zBelow = _mm_add_ps(rays.origin[2], margin);
    __m128 const zAbove = _mm_sub_ps(rays.origin[2], margin);

    __m128 const x1 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.lower[0]), xBelow), rays.inverse[0]);
    __m128 const x2 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.upper[0]), xAbove), rays.inverse[0]);
    __m128 const y1 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.lower[1]), rays.origin[1]), rays.inverse[1]);
    __m128 const y2 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.upper[1]), rays.origin[1]), rays.inverse[1]);
    __m128 const z1 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.lower[2]), zBelow), rays.inverse[2]);
    __m128 const z2 = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(box.upper[2]), zAbove), rays.inverse[2]);

    __m128 tNear = _mm_max_ps(_mm_setzero_ps(), _mm_min_ps(x1, x2));
    __m128 tFar = _mm_min_ps(_mm_set1_ps(1000.0F), _mm_max_ps(x1, x2));
    tNear = _mm_max_ps(tNear, _mm_min_ps(y1, y2));
    tFar = _mm_min_ps(tFar, _mm_max_ps(y1, y2));
    tNear = _mm_max_ps(tNear, _mm_min_ps(z1, z2));
    tFar = _mm_min_ps(tFar, _mm_max_ps(z1, z2));
    return _mm_movemask_ps(_mm_cmple_ps(tNear, tFar));
}

void AddFourRays()
{
    std::vector<FourRays> const packets = Build(RayNumbers(COUNT, 3), 4 * 6,
                                                [](double const* n)
                                                {
                                                    alignas(16) float lanes[9][4];
                                                    for (int lane = 0; lane < 4; ++lane)
                                                    {
                                                        for (int i = 0; i < 6; ++i)
                                                            lanes[i][lane] = static_cast<float>(n[6 * lane + i]);
                                                        for (int i = 3; i < 6; ++i)
                                                            lanes[i + 3][lane] = 1 / lanes[i][lane];
                                                    }
                                                    FourRays rays;
                                                    for (int axis = 0; axis < 3; ++axis)
                                                    {
                                                        rays.origin[axis] = _mm_load_ps(lanes[axis]);
                                                        rays.direction[axis] = _mm_load_ps(lanes[axis + 3]);
                                                        rays.inverse[axis] = _mm_load_ps(lanes[axis + 6]);
                                                    }
                                                    return rays;
                                                });
    std::vector<Corners> const boxes = Build(MixedBoxes(), 6,
                                             [](double const* n)
                                             {
                                                 Corners box;
                                                 for (int axis = 0; axis < 3; ++axis)
                                                 {
                                                     box.lower[axis] = static_cast<float>(n[axis]);
                                                     box.upper[axis] = static_cast<float>(n[axis + 3]);
                                                 }
                                                 return box;
                                             });
    AddMap(
        Row<float>("four rays, one box", "hand-written"),
        [box = boxes.front()](FourRays const& rays) { return Clip(rays, box); }, packets);
    AddMap(
        Row<float>("four rays, many boxes", "hand-written"),
        [rays = packets.front()](Corners const& box) { return Clip(rays, box); }, boxes);
}

} // namespace

void AddRay()
{
    AddImath<float>();
    AddImath<double>();
    AddEigen<float>();
    AddEigen<double>();
    AddGlm<float>();
    AddGlm<double>();
    AddBullet();
    AddSlabs<float>();
    AddSlabs<double>();
    AddFourRays();
    AddEightRays("hand-written", avx::MakePackets, avx::ClipPackets, avx::ClipBoxes, RayNumbers(COUNT, 3),
                 MixedBoxes());
}

} // namespace bench::peers
