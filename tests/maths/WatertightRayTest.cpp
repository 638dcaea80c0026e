// Rays through a closed mesh, aimed at its edges and corners.

#include "bv/maths/tWatertightRay.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/maths/Intersect.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

using namespace bv::maths;
using namespace bv::test;

namespace
{

template <typename T>
class WatertightRayTest : public testing::Test
{
};
TYPED_TEST_SUITE(WatertightRayTest, Precisions);

/// Of each precision: ten million in all. Without optimisation a ray takes a hundred times as long.
#if defined __OPTIMIZE__ && !defined __SANITIZE_ADDRESS__
constexpr std::size_t RAYS = 5'000'000;
#else
constexpr std::size_t RAYS = 50'000;
#endif

using Face = std::array<std::uint32_t, 3>;

/// An icosahedron whose faces are parted into four, and those again, with corners at distances of 1 to 1.25 from (0, 0,
/// 0): every ray from there meets it.
template <typename T>
struct Mesh
{
    std::vector<tVector3<T>> corners;
    std::vector<Face> faces;
    std::vector<std::vector<Face>> around; ///< the faces at each corner

    explicit Mesh(Random& random)
    {
        T const g = T(1.618033988749895);
        corners = {{-1, g, 0},  {1, g, 0},  {-1, -g, 0}, {1, -g, 0}, {0, -1, g},  {0, 1, g},
                   {0, -1, -g}, {0, 1, -g}, {g, 0, -1},  {g, 0, 1},  {-g, 0, -1}, {-g, 0, 1}};
        faces = {{0, 11, 5},  {0, 5, 1},  {0, 1, 7},  {0, 7, 10}, {0, 10, 11}, {1, 5, 9}, {5, 11, 4},
                 {11, 10, 2}, {10, 7, 6}, {7, 1, 8},  {3, 9, 4},  {3, 4, 2},   {3, 2, 6}, {3, 6, 8},
                 {3, 8, 9},   {4, 9, 5},  {2, 4, 11}, {6, 2, 10}, {8, 6, 7},   {9, 8, 1}};
        Part();
        Part();
        for (tVector3<T>& corner : corners)
            corner = corner.Normalised() * random.Number(T{1}, T(1.25));
        around.resize(corners.size());
        for (Face const& face : faces)
            for (std::uint32_t const corner : face)
                around[corner].push_back(face);
    }

private:
    void Part()
    {
        std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> middles;
        auto const middle = [&](std::uint32_t i, std::uint32_t k)
        {
            auto const [place, isNew] =
                middles.try_emplace({std::min(i, k), std::max(i, k)}, static_cast<std::uint32_t>(corners.size()));
            if (isNew)
                corners.push_back((corners[i] + corners[k]).Normalised());
            return place->second;
        };
        for (tVector3<T>& corner : corners)
            corner.Normalise();
        std::vector<Face> parts;
        for (auto const& [i, j, k] : faces)
        {
            std::uint32_t const ij = middle(i, j), jk = middle(j, k), ki = middle(k, i);
            parts.insert(parts.end(), {Face{i, ij, ki}, Face{j, jk, ij}, Face{k, ki, jk}, Face{ij, jk, ki}});
        }
        faces = parts;
    }
};

template <typename Ray, typename T>
bool MeetsOne(Ray const& ray, Mesh<T> const& mesh, std::vector<Face> const& faces)
{
    tTriangleHit<T> hit;
    for (auto const& [i, j, k] : faces)
        if (IntersectTriangle(ray, mesh.corners[i], mesh.corners[j], mesh.corners[k], 0, 10, hit))
            return true;
    return false;
}

TYPED_TEST(WatertightRayTest, NoneSlipsThroughAClosedMesh)
{
    using T = TypeParam;
    Random random(10);
    Mesh<T> const mesh(random);
    std::array<tVector3<T>, 64> origins{}; // every second one is (0, 0, 0)
    for (std::size_t i = 1; i < origins.size(); i += 2)
        origins[i] = random.Vector<tVector3<T>>(T(-0.3), T(0.3));
    std::size_t slipped = 0;
    std::size_t fastSlipped = 0;
    for (std::size_t n = 0; n < RAYS; ++n)
    {
        // Whatever the rounding, a ray at a point of an edge passes through a face at one of its ends.
        std::uint32_t const bits = random();
        Face const& face = mesh.faces[bits % mesh.faces.size()];
        std::uint32_t const from = face[bits >> 16 & 1U];
        std::uint32_t const to = face[2];
        bool const isAtCorner = (bits >> 17 & 1U) != 0;
        tVector3<T> const& start = mesh.corners[from];
        T const share = isAtCorner ? T{0} : static_cast<T>(bits >> 8) * T(0x1p-24);
        tVector3<T> const target = start + (mesh.corners[to] - start) * share;
        tVector3<T> const& origin = origins[bits >> 18 & 63U];
        tRay<T> const ray(origin, target - origin);
        tWatertightRay<T> const prepared(ray);
        if (!MeetsOne(prepared, mesh, mesh.around[from]) && !MeetsOne(prepared, mesh, mesh.around[to]))
            ++slipped;
        if (n % 16 == 0 && !MeetsOne(ray, mesh, mesh.around[from]) && !MeetsOne(ray, mesh, mesh.around[to]))
            ++fastSlipped;
    }
    EXPECT_EQ(slipped, 0U);
    // The fast test, with which some do, shows that these rays are hard to hold.
    EXPECT_GT(fastSlipped, 0U);
}

TYPED_TEST(WatertightRayTest, ARayAlongAnAxisMeetsEveryTriangleAroundACorner)
{
    using T = TypeParam;
    // A fan of eight triangles around the corner at (0.1, 0.2, .), whose heights differ.
    tVector3<T> const hub(T(0.1), T(0.2), T(0.3));
    tWatertightRay<T> const ray(tRay<T>({T(0.1), T(0.2), 5}, {0, 0, -1}));
    T const steps[][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}, {1, 0}};
    for (std::size_t i = 0; i < 8; ++i)
    {
        tVector3<T> const b(steps[i][0], steps[i][1], T(0.7));
        tVector3<T> const c(steps[i + 1][0], steps[i + 1][1], T(-0.9));
        tTriangleHit<T> hit;
        ASSERT_TRUE(IntersectTriangle(ray, hub, b, c, 0, 10, hit)) << i;
        ExpectSameBits(hit.u, T{0});
        ExpectSameBits(hit.v, T{0});
        ExpectSameBits(hit.t, T{5} - T(0.3));
    }
}

TYPED_TEST(WatertightRayTest, RunsAlongTheFirstOfTheLargestComponents)
{
    using T = TypeParam;
    auto const along = [](T x, T y, T z) { return tWatertightRay<T>(tRay<T>({}, {x, y, z})).GetAxis(2); };
    EXPECT_EQ(along(-3, 2, 1), 0U);
    EXPECT_EQ(along(1, -3, 2), 1U);
    EXPECT_EQ(along(1, 2, -3), 2U);
    EXPECT_EQ(along(2, -2, 2), 0U);
    EXPECT_EQ(along(1, 2, -2), 1U);
    EXPECT_EQ(along(2, 1, -2), 0U);
    tWatertightRay<T> const ray(tRay<T>({1, 2, 3}, {1, -4, 2}));
    EXPECT_EQ(ray.GetAxis(0), 2U);
    EXPECT_EQ(ray.GetAxis(1), 0U);
    ExpectSameBits(ray.GetStart(), tVector3<T>(3, 1, 2));
    ExpectSameBits(ray.GetShear(), tVector3<T>(T(-0.5), T(-0.25), T(-0.25)));
    tTriangleHit<T> hit;
    EXPECT_FALSE(IntersectTriangle(tWatertightRay<T>(), {-1, -1, 0}, {3, -1, 0}, {-1, 3, 0}, -9, 9, hit));
}

} // namespace
