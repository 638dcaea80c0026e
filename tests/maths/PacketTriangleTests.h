#pragma once

/// @file
/// Packets of rays against triangles, for every width alike, beside the single form. Included behind RayPacketTests.h.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

#include "bv/maths/Intersect.h"
#include "bv/maths/simd/PacketTriangles.h"
#include "support/Numbers.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace bv::test
{

template <typename Packet>
class PacketTriangleTest : public testing::Test
{
};
TYPED_TEST_SUITE(PacketTriangleTest, PacketTypes);

/// One number a ray, as a packet takes and gives them.
template <typename Packet>
using PacketNumbers = std::array<float, Packet::WIDTH>;

template <typename Packet>
[[nodiscard]] typename Packet::Vector ToVector(PacketNumbers<Packet> const& numbers)
{
    typename Packet::Vector vector;
    std::memcpy(&vector, numbers.data(), sizeof vector);
    return vector;
}

template <typename Packet>
[[nodiscard]] PacketNumbers<Packet> ToNumbers(typename Packet::Vector const& vector)
{
    PacketNumbers<Packet> numbers;
    std::memcpy(numbers.data(), &vector, sizeof vector);
    return numbers;
}

/// Intersects a packet and each of its rays with a triangle, and compares.
/// @return how many hits there are.
template <typename Packet, typename Prepared, typename Single>
int ExpectAsSingly(Prepared const& packet, std::array<maths::DepthRayf, Packet::WIDTH> const& rays,
                   Vector3f const (&corners)[3], PacketNumbers<Packet> const& tNear, PacketNumbers<Packet> const& tFar)
{
    using maths::IntersectTriangle;
    auto const& [a, b, c] = corners;
    PacketNumbers<Packet> before{};
    before.fill(77);
    maths::simd::tPacketHits<Packet> hits{ToVector<Packet>(before), ToVector<Packet>(before), ToVector<Packet>(before)};
    typename Packet::Vector const mask =
        maths::simd::IntersectTriangle(packet, a, b, c, ToVector<Packet>(tNear), ToVector<Packet>(tFar), hits);
    PacketNumbers<Packet> const t = ToNumbers<Packet>(hits.t);
    PacketNumbers<Packet> const u = ToNumbers<Packet>(hits.u);
    PacketNumbers<Packet> const v = ToNumbers<Packet>(hits.v);
    int count = 0;
    for (std::size_t lane = 0; lane < Packet::WIDTH; ++lane)
    {
        SCOPED_TRACE(lane);
        maths::tTriangleHit<float> expected{77, 77, 77};
        bool const isHit = IntersectTriangle(Single(rays[lane]), a, b, c, tNear[lane], tFar[lane], expected);
        EXPECT_EQ(Bits(ToNumbers<Packet>(mask)[lane]), isHit ? HIT : MISS);
        ExpectSameBits(t[lane], expected.t);
        ExpectSameBits(u[lane], expected.u);
        ExpectSameBits(v[lane], expected.v);
        count += isHit ? 1 : 0;
    }
    return count;
}

/// Both tests.
template <typename Packet>
int ExpectBothAsSingly(std::array<maths::DepthRayf, Packet::WIDTH> const& rays, Vector3f const (&corners)[3],
                       PacketNumbers<Packet> const& tNear, PacketNumbers<Packet> const& tFar)
{
    Packet packet;
    packet.Initialise(rays.data());
    maths::simd::tWatertightPacket<Packet> const prepared(packet);
    return ExpectAsSingly<Packet, Packet, maths::tRay<float>>(packet, rays, corners, tNear, tFar) +
           ExpectAsSingly<Packet, maths::simd::tWatertightPacket<Packet>, maths::tWatertightRay<float>>(
               prepared, rays, corners, tNear, tFar);
}

TYPED_TEST(PacketTriangleTest, EachRayMeetsATriangleAsItDoesAlone)
{
    Random random(21);
    int hits = 0;
    for (int i = 0; i < 3000; ++i)
    {
        Vector3f const corners[] = {random.Vector<Vector3f>(-2, 2), random.Vector<Vector3f>(-2, 2),
                                    random.Vector<Vector3f>(-2, 2)};
        std::array<maths::DepthRayf, TypeParam::WIDTH> rays;
        PacketNumbers<TypeParam> tNear{};
        PacketNumbers<TypeParam> tFar{};
        for (std::size_t lane = 0; lane < TypeParam::WIDTH; ++lane)
        {
            // At the triangle, often at one of its corners, or along an axis.
            float const u = random.Number(-0.2F, 1.0F);
            float const v = random.Number(-0.2F, 1.2F - u);
            Vector3f const target = random.Below(3) == 0
                                        ? corners[random.Below(3)]
                                        : corners[0] + (corners[1] - corners[0]) * u + (corners[2] - corners[0]) * v;
            Vector3f origin = random.Vector<Vector3f>(-4, 4);
            if (random.Below(4) == 0)
            {
                origin = target;
                origin[random.Below(3)] -= 2;
            }
            rays[lane] = maths::DepthRayf(origin, target - origin);
            tNear[lane] = random.Number(-1.0F, 0.8F);
            tFar[lane] = random.Number(0.5F, 2.0F);
        }
        hits += ExpectBothAsSingly<TypeParam>(rays, corners, tNear, tFar);
    }
    EXPECT_GT(hits, 3000);
}

TYPED_TEST(PacketTriangleTest, SpecialNumbersAreWhatTheyAreAlone)
{
    Random random(22);
    auto const number = [&]() -> float
    {
        std::uint32_t const kind = random.Below(24);
        return kind < SPECIAL_VALUES<float>.size() ? SPECIAL_VALUES<float>[kind]
               : kind < 20                         ? static_cast<float>(random.Whole(-2, 2))
                                                   : random.Number(-2.0F, 2.0F);
    };
    for (int i = 0; i < 4000; ++i)
    {
        Vector3f corners[3];
        for (Vector3f& corner : corners)
            corner = {number(), number(), number()};
        std::array<maths::DepthRayf, TypeParam::WIDTH> rays;
        PacketNumbers<TypeParam> tNear{};
        PacketNumbers<TypeParam> tFar{};
        for (std::size_t lane = 0; lane < TypeParam::WIDTH; ++lane)
        {
            rays[lane] = maths::DepthRayf({number(), number(), number()}, {number(), number(), number()});
            tNear[lane] = random.Below(4) == 0 ? number() : -INF<float>;
            tFar[lane] = random.Below(4) == 0 ? number() : INF<float>;
        }
        ExpectBothAsSingly<TypeParam>(rays, corners, tNear, tFar);
    }
}

} // namespace bv::test
