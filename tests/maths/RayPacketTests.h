#pragma once

/// @file
/// The tests of the ray packets, for every width alike. The file that includes this one first names the packets to test
/// as `PacketTypes`.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace bv::test
{

using maths::DepthRayf;
using maths::Matrix4f;
using maths::Vector3f;
using maths::VolumeAABBf;

inline constexpr std::uint32_t HIT = 0xFFFFFFFFU;
inline constexpr std::uint32_t MISS = 0;

/// One ray of a packet, in numbers of its own.
struct Lane
{
    std::array<float, 3> origin{};
    std::array<float, 3> direction{};
    std::array<float, 3> invDirection{};
};

/// What the packets do, for one lane and step by step.
namespace model
{

/// The second operand when one is NaN. Of two zeros it is the second one, too.
[[nodiscard]] inline float Min(float a, float b)
{
    if (IsNaN(a) || IsNaN(b))
        return b;
    return a < b ? a : b;
}

[[nodiscard]] inline float Max(float a, float b)
{
    if (IsNaN(a) || IsNaN(b))
        return b;
    return a > b ? a : b;
}

inline void Invert(Lane& lane)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        lane.invDirection[axis] = 1.0F / lane.direction[axis];
}

[[nodiscard]] inline Lane Load(DepthRayf const& ray)
{
    Lane lane;
    lane.origin = {ray.origin.x, ray.origin.y, ray.origin.z};
    lane.direction = {ray.direction.x, ray.direction.y, ray.direction.z};
    Invert(lane);
    return lane;
}

[[nodiscard]] inline std::array<float, 3> Product(Elements<float> const& m, std::array<float, 3> const& v, float w)
{
    std::array<float, 3> result{};
    for (std::size_t row = 0; row < 3; ++row)
    {
        float sum = m[4 * row] * v[0];
        sum = sum + m[4 * row + 1] * v[1];
        sum = sum + m[4 * row + 2] * v[2];
        float const last = m[4 * row + 3] * w;
        result[row] = sum + last;
    }
    return result;
}

inline void Transform(Elements<float> const& m, Lane& lane)
{
    lane.origin = Product(m, lane.origin, 1.0F);
    lane.direction = Product(m, lane.direction, 0.0F);
    Invert(lane);
}

/// @return the mask of the lane.
inline std::uint32_t Clip(Lane const& lane, VolumeAABBf const& box, float& tNear, float& tFar)
{
    float const e = std::bit_cast<float>(0x35A00000U);
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        float const lower = box.GetMin()[axis];
        float const upper = box.GetMax()[axis];
        float const start = lane.origin[axis];
        float toLower = lower - start;
        float toUpper = upper - start;
        if (axis != 1)
        {
            float const raised = start + e;
            float const lowered = start - e;
            toLower = lower - raised;
            toUpper = upper - lowered;
        }
        float const t1 = toLower * lane.invDirection[axis];
        float const t2 = toUpper * lane.invDirection[axis];
        float const lo = Min(t1, t2);
        float const hi = Max(t1, t2);
        tNear = Max(tNear, lo);
        tFar = Min(tFar, hi);
    }
    if (IsNaN(tNear) || IsNaN(tFar))
        return MISS;
    return tNear <= tFar ? HIT : MISS;
}

} // namespace model

/// The numbers in a vector, lane 0 first.
template <typename Packet>
[[nodiscard]] std::array<float, Packet::WIDTH> Numbers(typename Packet::Vector const& vector)
{
    std::array<float, Packet::WIDTH> numbers{};
    static_assert(sizeof(numbers) == sizeof(vector));
    std::memcpy(numbers.data(), &vector, sizeof(numbers));
    return numbers;
}

template <typename Packet>
[[nodiscard]] typename Packet::Vector Vector(std::array<float, Packet::WIDTH> const& numbers)
{
    typename Packet::Vector vector;
    std::memcpy(&vector, numbers.data(), sizeof(vector));
    return vector;
}

template <typename Packet>
using Rays = std::array<DepthRayf, Packet::WIDTH>;

template <typename Packet>
[[nodiscard]] Packet MakePacket(Rays<Packet> const& rays)
{
    Packet packet;
    packet.Initialise(rays.data());
    return packet;
}

/// The lanes of a packet, read through its accessors.
template <typename Packet>
[[nodiscard]] std::array<Lane, Packet::WIDTH> LanesOf(Packet const& packet)
{
    std::array<Lane, Packet::WIDTH> lanes;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        auto const origin = Numbers<Packet>(packet.GetOrigin()[axis]);
        auto const direction = Numbers<Packet>(packet.GetDirection()[axis]);
        auto const invDirection = Numbers<Packet>(packet.GetInvDirection()[axis]);
        for (std::size_t i = 0; i < Packet::WIDTH; ++i)
        {
            lanes[i].origin[axis] = origin[i];
            lanes[i].direction[axis] = direction[i];
            lanes[i].invDirection[axis] = invDirection[i];
        }
    }
    return lanes;
}

inline void ExpectSameLane(Lane const& actual, Lane const& expected)
{
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        ExpectSameBits(actual.origin[axis], expected.origin[axis]);
        ExpectSameBits(actual.direction[axis], expected.direction[axis]);
        ExpectSameBits(actual.invDirection[axis], expected.invDirection[axis]);
    }
}

/// Intervals of all lanes, and what clipping said about them.
template <typename Packet>
struct Clipped
{
    std::array<float, Packet::WIDTH> tNear;
    std::array<float, Packet::WIDTH> tFar;
    std::array<std::uint32_t, Packet::WIDTH> mask;
};

template <typename Packet>
[[nodiscard]] Clipped<Packet> Clip(Packet const& packet, VolumeAABBf const& box,
                                   std::array<float, Packet::WIDTH> const& tNear,
                                   std::array<float, Packet::WIDTH> const& tFar)
{
    typename Packet::Vector lower = Vector<Packet>(tNear);
    typename Packet::Vector upper = Vector<Packet>(tFar);
    typename Packet::Vector const mask = packet.Clip(box, lower, upper);
    Clipped<Packet> clipped{Numbers<Packet>(lower), Numbers<Packet>(upper), {}};
    std::memcpy(clipped.mask.data(), &mask, sizeof(mask));
    return clipped;
}

template <typename Packet>
class RayPacketTest : public testing::Test
{
protected:
    static constexpr std::size_t WIDTH = Packet::WIDTH;
    using Floats = std::array<float, WIDTH>;

    static Floats All(float value)
    {
        Floats floats{};
        floats.fill(value);
        return floats;
    }

    /// The same ray in every lane.
    static Packet Repeat(Vector3f const& origin, Vector3f const& direction)
    {
        Rays<Packet> rays;
        rays.fill(DepthRayf(origin, direction));
        return MakePacket<Packet>(rays);
    }

    /// Rays whose numbers are all different.
    static Rays<Packet> DifferentRays()
    {
        Rays<Packet> rays;
        float next = 1;
        for (DepthRayf& ray : rays)
        {
            ray.origin = {next, next + 1, next + 2};
            ray.direction = {next + 3, -next - 4, next + 5};
            next += 6;
        }
        return rays;
    }

    /// Clips one ray, in every lane, from one interval and expects one result in all of them.
    static void ExpectClip(Vector3f const& origin, Vector3f const& direction, VolumeAABBf const& box, float tNear,
                           float tFar, std::uint32_t mask, float expectedNear, float expectedFar)
    {
        auto const clipped = Clip(Repeat(origin, direction), box, All(tNear), All(tFar));
        for (std::size_t i = 0; i < WIDTH; ++i)
        {
            EXPECT_EQ(clipped.mask[i], mask) << "lane " << i;
            ExpectSameBits(clipped.tNear[i], expectedNear);
            ExpectSameBits(clipped.tFar[i], expectedFar);
        }
    }

    /// Clips rays against one box, packet by packet, and compares each lane with the model.
    ///
    /// @return the number of lanes that were hit, or -1 after a difference, which is reported.
    static int CompareWithModel(std::vector<DepthRayf> const& rays, std::vector<float> const& tNear,
                                std::vector<float> const& tFar, VolumeAABBf const& box)
    {
        int hits = 0;
        for (std::size_t first = 0; first < rays.size(); first += WIDTH)
        {
            Rays<Packet> group;
            Floats lower{};
            Floats upper{};
            for (std::size_t i = 0; i < WIDTH; ++i)
            {
                std::size_t const source = std::min(first + i, rays.size() - 1);
                group[i] = rays[source];
                lower[i] = tNear[source];
                upper[i] = tFar[source];
            }
            auto const clipped = Clip(MakePacket<Packet>(group), box, lower, upper);
            for (std::size_t i = 0; i < WIDTH; ++i)
            {
                float expectedNear = lower[i];
                float expectedFar = upper[i];
                std::uint32_t const mask = model::Clip(model::Load(group[i]), box, expectedNear, expectedFar);
                hits += mask == HIT ? 1 : 0;
                if (clipped.mask[i] == mask && HasSameBits(clipped.tNear[i], expectedNear) &&
                    HasSameBits(clipped.tFar[i], expectedFar))
                    continue;
                ADD_FAILURE() << "lane " << i << ": origin " << group[i].origin << "; direction " << group[i].direction
                              << "; box " << box.GetMin() << " to " << box.GetMax() << "; interval " << lower[i]
                              << " to " << upper[i] << ": " << clipped.mask[i] << ", " << clipped.tNear[i] << " to "
                              << clipped.tFar[i] << " instead of " << mask << ", " << expectedNear << " to "
                              << expectedFar;
                return -1;
            }
        }
        return hits;
    }
};

TYPED_TEST_SUITE(RayPacketTest, PacketTypes);

TYPED_TEST(RayPacketTest, IsNineVectorsAtTheirNaturalAlignment)
{
    using Packet = TypeParam;
    using Lanes = typename Packet::Vector;
    static_assert(Packet::WIDTH == 4 || Packet::WIDTH == 8);
    static_assert(sizeof(Lanes) == Packet::WIDTH * sizeof(float));
    static_assert(sizeof(Packet) == 9 * sizeof(Lanes) && alignof(Packet) == sizeof(Lanes));
    static_assert(!std::is_polymorphic_v<Packet> && std::is_standard_layout_v<Packet>);
    // Constructor and destructor do nothing, and copies are plain copies.
    static_assert(std::is_trivially_default_constructible_v<Packet> && std::is_trivially_destructible_v<Packet>);
    static_assert(std::is_trivially_copyable_v<Packet>);
    auto const packets = std::make_unique<Packet[]>(3);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&packets[i]) % sizeof(Lanes), 0U);
}

TYPED_TEST(RayPacketTest, PromisesItsTypesToTheCompiler)
{
    using Packet = TypeParam;
    using Lanes = typename Packet::Vector;
    DepthRayf const* const rays = nullptr;
    static_assert(std::is_same_v<decltype(std::declval<Packet&>().Initialise(rays)), void>);
    static_assert(std::is_same_v<decltype(std::declval<Packet&>().Transform(Matrix4f())), Packet&>);
    static_assert(sizeof(decltype(std::declval<Packet const&>().Clip(VolumeAABBf(), std::declval<Lanes&>(),
                                                                     std::declval<Lanes&>()))) == sizeof(Lanes));
    static_assert(noexcept(std::declval<Packet&>().Initialise(rays)));
    static_assert(noexcept(std::declval<Packet&>().Transform(Matrix4f())));
    static_assert(
        noexcept(std::declval<Packet const&>().Clip(VolumeAABBf(), std::declval<Lanes&>(), std::declval<Lanes&>())));
    static_assert(noexcept(std::declval<Packet const&>().GetOrigin()));
    static_assert(noexcept(std::declval<Packet const&>().GetDirection()));
    static_assert(noexcept(std::declval<Packet const&>().GetInvDirection()));
    SUCCEED();
}

TYPED_TEST(RayPacketTest, HoldsOriginThenDirectionThenInverse)
{
    TypeParam const packet = MakePacket<TypeParam>(this->DifferentRays());
    auto const* const start = reinterpret_cast<char const*>(&packet);
    std::size_t const size = sizeof(typename TypeParam::Vector);
    EXPECT_EQ(reinterpret_cast<char const*>(packet.GetOrigin()), start);
    EXPECT_EQ(reinterpret_cast<char const*>(packet.GetDirection()), start + 3 * size);
    EXPECT_EQ(reinterpret_cast<char const*>(packet.GetInvDirection()), start + 6 * size);
}

TYPED_TEST(RayPacketTest, LaneIHoldsRayI)
{
    auto const rays = this->DifferentRays();
    TypeParam const packet = MakePacket<TypeParam>(rays);
    auto const lanes = LanesOf(packet);
    for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
    {
        Lane expected;
        expected.origin = {rays[i].origin.x, rays[i].origin.y, rays[i].origin.z};
        expected.direction = {rays[i].direction.x, rays[i].direction.y, rays[i].direction.z};
        expected.invDirection = {1 / rays[i].direction.x, 1 / rays[i].direction.y, 1 / rays[i].direction.z};
        ExpectSameLane(lanes[i], expected);
    }
}

TYPED_TEST(RayPacketTest, ReadsExactlyAsManyRaysAsItHasLanes)
{
    // A block on the heap that ends with the last ray: a sanitizer would notice a read beyond it.
    std::vector<DepthRayf> const exact(TypeParam::WIDTH, DepthRayf({1, 2, 3}, {4, 5, 6}));
    TypeParam packet;
    packet.Initialise(exact.data());
    auto const lanes = LanesOf(packet);
    std::vector<DepthRayf> more(exact);
    more.emplace_back(Vector3f(QUIET_NAN<float>, 7, 8), Vector3f(9, 10, 11));
    TypeParam again;
    again.Initialise(more.data());
    for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
    {
        ExpectSameLane(lanes[i], model::Load(exact[i]));
        ExpectSameLane(LanesOf(again)[i], lanes[i]);
    }
}

TYPED_TEST(RayPacketTest, PacketsAreFilledWithPlainRaysWhereverTheyLie)
{
    for (std::size_t count = 0; count <= 3 * TypeParam::WIDTH + 1; ++count)
    {
        std::vector<maths::Rayf> rays(count);
        std::vector<float> components[6];
        for (std::size_t i = 0; i < count; ++i)
        {
            auto const x = static_cast<float>(i);
            rays[i] = {{x, x + 100, x + 200}, {x + 300, x + 400, x + 500}};
            for (std::size_t axis = 0; axis < 6; ++axis)
                components[axis].push_back(x + 100 * static_cast<float>(axis));
        }
        maths::tVectorView<float const> const from(components[0], components[1], components[2]);
        maths::tVectorView<float const> const along(components[3], components[4], components[5]);
        for (auto const& view : {maths::tRayView<float const>(rays), maths::tRayView<float const>(from, along)})
        {
            std::vector<TypeParam> packets((count + TypeParam::WIDTH - 1) / TypeParam::WIDTH);
            maths::simd::FillPackets(view, packets);
            for (std::size_t i = 0; i < packets.size() * TypeParam::WIDTH; ++i)
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    auto const ray = static_cast<float>(std::min(i, count - 1));
                    float const origin = ray + 100 * static_cast<float>(axis);
                    TypeParam const& packet = packets[i / TypeParam::WIDTH];
                    EXPECT_EQ(packet.GetOrigin()[axis][i % TypeParam::WIDTH], origin);
                    EXPECT_EQ(packet.GetDirection()[axis][i % TypeParam::WIDTH], origin + 300);
                    EXPECT_EQ(packet.GetInvDirection()[axis][i % TypeParam::WIDTH], 1 / (origin + 300));
                }
            packets.emplace_back();
            EXPECT_THROW(maths::simd::FillPackets(view, std::span(packets)), bv::InvalidArgumentException);
        }
    }
}

TYPED_TEST(RayPacketTest, LoadsNeitherDifferentialsNorPayload)
{
    auto rays = this->DifferentRays();
    auto const expected = LanesOf(MakePacket<TypeParam>(rays));
    for (DepthRayf& ray : rays)
    {
        ray.tMin = ray.tMax = QUIET_NAN<float>;
        ray.dOriginDu = ray.dOriginDv = ray.dDirectionDu = ray.dDirectionDv = {QUIET_NAN<float>, INF<float>, 5};
        ray.payload = reinterpret_cast<bv::IRayPayloadInternal*>(std::uintptr_t{1});
    }
    auto const actual = LanesOf(MakePacket<TypeParam>(rays));
    for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
        ExpectSameLane(actual[i], expected[i]);
}

TYPED_TEST(RayPacketTest, TheInverseOfAZeroIsTheInfinityOfItsSign)
{
    std::pair<float, float> const cases[] = {{0.0F, INF<float>},
                                             {-0.0F, -INF<float>},
                                             {INF<float>, 0.0F},
                                             {-INF<float>, -0.0F},
                                             {TINY<float>, INF<float>},
                                             {-TINY<float>, -INF<float>},
                                             {QUIET_NAN<float>, QUIET_NAN<float>},
                                             {0.25F, 4.0F},
                                             {LARGEST<float>, 1 / LARGEST<float>}};
    for (auto const& [direction, inverse] : cases)
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            Vector3f vector(1, 1, 1);
            vector[axis] = direction;
            for (Lane const& lane : LanesOf(this->Repeat({0, 0, 0}, vector)))
                for (std::size_t other = 0; other < 3; ++other)
                    ExpectSameBits(lane.invDirection[other], other == axis ? inverse : 1.0F);
        }
}

TYPED_TEST(RayPacketTest, TheInverseIsATrueQuotient)
{
    Random random(20240619);
    auto const next = [&random] { return random.Any<float>(); };
    for (int i = 0; i < 5000; ++i)
    {
        Rays<TypeParam> rays;
        for (DepthRayf& ray : rays)
            ray.direction = {next(), next(), next()};
        auto const lanes = LanesOf(MakePacket<TypeParam>(rays));
        for (std::size_t lane = 0; lane < TypeParam::WIDTH; ++lane)
            for (std::size_t axis = 0; axis < 3; ++axis)
                ASSERT_TRUE(HasSameBits(lanes[lane].invDirection[axis], 1.0F / rays[lane].direction[axis]))
                    << rays[lane].direction[axis];
    }
}

TYPED_TEST(RayPacketTest, AssignmentCopiesAllNineVectors)
{
    TypeParam const source = MakePacket<TypeParam>(this->DifferentRays());
    TypeParam target = this->Repeat({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(std::memcmp(&target, &source, sizeof(source)), 0);
    TypeParam const copy(source);
    EXPECT_EQ(std::memcmp(&copy, &source, sizeof(source)), 0);
    TypeParam const& itself = target;
    target = itself;
    EXPECT_EQ(std::memcmp(&target, &source, sizeof(source)), 0);
}

// Transformation

TYPED_TEST(RayPacketTest, AnIdentityMatrixLeavesEveryBit)
{
    auto rays = this->DifferentRays();
    rays[0].direction = {-0.0F, INF<float>, QUIET_NAN<float>};
    rays[1].origin = {-0.0F, INF<float>, QUIET_NAN<float>};
    TypeParam packet = MakePacket<TypeParam>(rays);
    TypeParam const before = packet;
    EXPECT_EQ(&packet.Transform(Matrix4f()), &packet);
    EXPECT_EQ(std::memcmp(&packet, &before, sizeof(packet)), 0);
}

TYPED_TEST(RayPacketTest, TheStateIdentityCountsAndNotTheElements)
{
    TypeParam packet = MakePacket<TypeParam>(this->DifferentRays());
    TypeParam const before = packet;
    packet.Transform(MakeMatrix<float>(Ramp<float>(1, 1), 0));
    EXPECT_EQ(std::memcmp(&packet, &before, sizeof(packet)), 0);
    // The elements of the identity in another state are a product like any other: -0 becomes 0.
    TypeParam zeros = this->Repeat({-0.0F, 1, 2}, {-0.0F, 1, 2});
    zeros.Transform(MakeMatrix<float>(IDENTITY_ELEMENTS<float>, 3));
    for (Lane const& lane : LanesOf(zeros))
    {
        ExpectSameBits(lane.origin[0], 0.0F);
        ExpectSameBits(lane.direction[0], 0.0F);
        ExpectSameBits(lane.invDirection[0], INF<float>);
    }
}

TYPED_TEST(RayPacketTest, ATranslationMovesTheOriginsAlone)
{
    auto const rays = this->DifferentRays();
    TypeParam packet = MakePacket<TypeParam>(rays);
    EXPECT_EQ(&packet.Transform(Matrix4f::Translate(10, 20, 30)), &packet);
    auto const lanes = LanesOf(packet);
    for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
    {
        Lane expected = model::Load(rays[i]);
        expected.origin = {expected.origin[0] + 10, expected.origin[1] + 20, expected.origin[2] + 30};
        ExpectSameLane(lanes[i], expected);
    }
}

TYPED_TEST(RayPacketTest, ATransformationMultipliesByThreeRowsInEveryStateButIdentity)
{
    auto const rays = this->DifferentRays();
    // Row 4 would change everything if it were read.
    Elements<float> const m = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, QUIET_NAN<float>, INF<float>, 0, 0};
    for (std::uint32_t const state : {1U, 2U, 3U, 77U})
    {
        TypeParam packet = MakePacket<TypeParam>(rays);
        packet.Transform(MakeMatrix<float>(m, state));
        auto const lanes = LanesOf(packet);
        for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
        {
            Vector3f const& o = rays[i].origin;
            Vector3f const& d = rays[i].direction;
            Lane expected; // small whole numbers, so exact in every order
            expected.origin = {o.x + 2 * o.y + 3 * o.z + 4, 5 * o.x + 6 * o.y + 7 * o.z + 8,
                               9 * o.x + 10 * o.y + 11 * o.z + 12};
            expected.direction = {d.x + 2 * d.y + 3 * d.z, 5 * d.x + 6 * d.y + 7 * d.z, 9 * d.x + 10 * d.y + 11 * d.z};
            model::Invert(expected);
            ExpectSameLane(lanes[i], expected);
        }
    }
}

TYPED_TEST(RayPacketTest, ATransformationSumsFromXToW)
{
    constexpr float LARGE = 1e9F; // adding 1 to it changes nothing
    TypeParam packet = this->Repeat({LARGE, 1, -LARGE}, {1, LARGE, -LARGE});
    packet.Transform(MakeMatrix<float>({1, 1, 1, 1, 1, 1, 1, LARGE, 1, 1, 1, -LARGE, 0, 0, 0, 1}, 3));
    for (Lane const& lane : LanesOf(packet))
    {
        ExpectSameBits(lane.origin[0], 1.0F);    // ((large + 1) - large) + 1
        ExpectSameBits(lane.origin[1], LARGE);   // 0 + large
        ExpectSameBits(lane.origin[2], -LARGE);  // 0 - large
        ExpectSameBits(lane.direction[0], 0.0F); // (1 + large) - large
        ExpectSameBits(lane.invDirection[0], INF<float>);
    }
}

TYPED_TEST(RayPacketTest, TheFourthColumnTimesZeroIsAddedToDirections)
{
    TypeParam packet = this->Repeat({1, 2, 3}, {4, -0.0F, -0.0F});
    packet.Transform(
        MakeMatrix<float>({1, 0, 0, INF<float>, 0, 1, 0, QUIET_NAN<float>, -0.0F, 1, 1, -5, 0, 0, 0, 1}, 3));
    for (Lane const& lane : LanesOf(packet))
    {
        ExpectSameBits(lane.direction[0], QUIET_NAN<float>); // 4 + infinity * 0
        ExpectSameBits(lane.direction[1], QUIET_NAN<float>);
        ExpectSameBits(lane.direction[2], -0.0F); // -0 - 0 - 0 + -5 * 0
        ExpectSameBits(lane.invDirection[2], -INF<float>);
        ExpectSameBits(lane.origin[0], INF<float>);
        ExpectSameBits(lane.origin[1], QUIET_NAN<float>);
        ExpectSameBits(lane.origin[2], 0.0F); // 2 + 3 - 5
    }
}

TYPED_TEST(RayPacketTest, DirectionsAreNotRenormalised)
{
    TypeParam packet = this->Repeat({1, 1, 1}, {0, 1, 0});
    packet.Transform(Matrix4f::Scale(4));
    for (Lane const& lane : LanesOf(packet))
    {
        EXPECT_EQ(lane.direction[1], 4.0F);
        EXPECT_EQ(lane.invDirection[1], 0.25F);
        EXPECT_EQ(lane.origin[1], 4.0F);
    }
}

TYPED_TEST(RayPacketTest, RandomTransformationsAgreeWithTheModel)
{
    Random random(20240620);
    float const specials[] = {0.0F,        -0.0F,        INF<float>,    -INF<float>, QUIET_NAN<float>,
                              TINY<float>, -TINY<float>, LARGEST<float>};
    auto const next = [&]
    {
        if (random.Below(16) == 0)
            return specials[random.Below(8)];
        return random.Number<float>(-2000, 2000);
    };
    for (int i = 0; i < 2000; ++i)
    {
        Rays<TypeParam> rays;
        for (DepthRayf& ray : rays)
            ray = DepthRayf{{next(), next(), next()}, {next(), next(), next()}};
        Elements<float> m{};
        for (float& element : m)
            element = next();
        TypeParam packet = MakePacket<TypeParam>(rays);
        packet.Transform(MakeMatrix<float>(m, 3));
        auto const lanes = LanesOf(packet);
        for (std::size_t lane = 0; lane < TypeParam::WIDTH; ++lane)
        {
            Lane expected = model::Load(rays[lane]);
            model::Transform(m, expected);
            ExpectSameLane(lanes[lane], expected);
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "case " << i;
    }
}

// Clipping

TYPED_TEST(RayPacketTest, ClipNarrowsToThePartInsideTheBox)
{
    // In y nothing is widened, so the numbers are exact.
    this->ExpectClip({0, -5, 0}, {0, 1, 0}, {{-1, -1, -1}, {1, 1, 1}}, 0, 100, HIT, 4, 6);
    this->ExpectClip({0, 5, 0}, {0, -2, 0}, {{-1, -1, -1}, {1, 1, 1}}, 0, 100, HIT, 2, 3);
    this->ExpectClip({0, -5, 0}, {0, 1, 0}, {{-1, -1, -1}, {1, 1, 1}}, 4.5F, 5.5F, HIT, 4.5F, 5.5F);
}

TYPED_TEST(RayPacketTest, ClipWidensTheSlabsOfXAndZAndNotThatOfY)
{
    float const e = std::bit_cast<float>(0x35A00000U);
    // From 0 along an axis to the slab from 1 to 2: the differences are exact.
    VolumeAABBf const slabX({1, -1, -1}, {2, 1, 1});
    VolumeAABBf const slabY({-1, 1, -1}, {1, 2, 1});
    VolumeAABBf const slabZ({-1, -1, 1}, {1, 1, 2});
    this->ExpectClip({0, 0, 0}, {1, 0, 0}, slabX, 0, 100, HIT, 1 - e, 2 + e);
    this->ExpectClip({0, 0, 0}, {0, 1, 0}, slabY, 0, 100, HIT, 1, 2);
    this->ExpectClip({0, 0, 0}, {0, 0, 1}, slabZ, 0, 100, HIT, 1 - e, 2 + e);
}

TYPED_TEST(RayPacketTest, ARayAlongTheOutsideOfAFaceHitsWithinTheWideningOnly)
{
    float const e = std::bit_cast<float>(0x35A00000U);
    VolumeAABBf const box({0, 0, 0}, {8, 8, 8});
    // Along y, just beside the box in x or z.
    this->ExpectClip({-e / 2, 1, 1}, {0, 1, 0}, box, 0, 100, HIT, 0, 7);
    this->ExpectClip({1, 1, -e / 2}, {0, 1, 0}, box, 0, 100, HIT, 0, 7);
    this->ExpectClip({-2 * e, 1, 1}, {0, 1, 0}, box, 0, 100, MISS, INF<float>, 7);
    this->ExpectClip({1, 1, -2 * e}, {0, 1, 0}, box, 0, 100, MISS, INF<float>, 7);
    // Along x, beside the box in y, by as little as there is.
    this->ExpectClip({1, -TINY<float>, 1}, {1, 0, 0}, box, 0, 100, MISS, INF<float>, 7 + e);
}

TYPED_TEST(RayPacketTest, AZeroDirectionStrictlyInsideKeepsTheInterval)
{
    for (float const zero : {0.0F, -0.0F})
    {
        this->ExpectClip({0.5F, 0.5F, 0.5F}, {zero, zero, zero}, {{0, 0, 0}, {1, 1, 1}}, -3, 8, HIT, -3, 8);
        this->ExpectClip({0.5F, -2, 0.5F}, {zero, 1, zero}, {{0, 0, 0}, {1, 1, 1}}, 0, 100, HIT, 2, 3);
    }
}

TYPED_TEST(RayPacketTest, AZeroDirectionStrictlyOutsideGivesAnEmptyInterval)
{
    // Both parameters are the same infinity: it becomes the near end, or minus infinity the far end.
    this->ExpectClip({2, 0.5F, 0.5F}, {0, 0, 0}, {{0, 0, 0}, {1, 1, 1}}, 0, 100, MISS, 0, -INF<float>);
    this->ExpectClip({-2, 0.5F, 0.5F}, {0, 0, 0}, {{0, 0, 0}, {1, 1, 1}}, 0, 100, MISS, INF<float>, 100);
    this->ExpectClip({0.5F, 2, 0.5F}, {0, 0, 0}, {{0, 0, 0}, {1, 1, 1}}, 0, 100, MISS, 0, -INF<float>);
    this->ExpectClip({0.5F, 0.5F, -2}, {0, -0.0F, -0.0F}, {{0, 0, 0}, {1, 1, 1}}, 0, 100, MISS, 0, -INF<float>);
}

TYPED_TEST(RayPacketTest, OnTheLowerYFaceAParallelRayTakesTheUpperFaceForBothEnds)
{
    VolumeAABBf const box({0, 0, 0}, {1, 1, 1});
    // t1 = 0 * infinity is NaN, t2 = +infinity: lo = hi = t2, which empties every finite interval.
    this->ExpectClip({0.5F, 0, 0.5F}, {0, 0, 0}, box, 0, 100, MISS, INF<float>, 100);
    this->ExpectClip({0.5F, 0, 0.5F}, {0, 0, 0}, box, 0, INF<float>, HIT, INF<float>, INF<float>);
    // With -0, t2 = -infinity.
    this->ExpectClip({0.5F, 0, 0.5F}, {0, -0.0F, 0}, box, 0, 100, MISS, 0, -INF<float>);
    // On the lower faces of x and z, the widening avoids the NaN.
    this->ExpectClip({0, 0.5F, 0.5F}, {0, 0, 0}, box, 0, 100, HIT, 0, 100);
    this->ExpectClip({0.5F, 0.5F, 0}, {0, 0, 0}, box, 0, 100, HIT, 0, 100);
}

TYPED_TEST(RayPacketTest, OnTheUpperYFaceAParallelRayMakesTheIntervalNaN)
{
    VolumeAABBf const box({0, 0, 0}, {1, 1, 1});
    // t2 is NaN, and so are lo and hi. They replace the running values; z, strictly inside, replaces them again by its
    // own infinities, which are the second operands.
    this->ExpectClip({0.5F, 1, 0.5F}, {0, 0, 0}, box, 0, 100, HIT, -INF<float>, INF<float>);
    this->ExpectClip({0.5F, 1, 0.5F}, {0, 0, 1}, box, 0, 100, HIT, -0.5F - std::bit_cast<float>(0x35A00000U),
                     0.5F + std::bit_cast<float>(0x35A00000U));
    // On the upper faces of x and z, the widening avoids the NaN.
    this->ExpectClip({1, 0.5F, 1}, {0, 0, 0}, box, 0, 100, HIT, 0, 100);
}

TYPED_TEST(RayPacketTest, FarOutTheWideningIsLostInTheRounding)
{
    // 1000 + e is 1000: in z, too, the upper face makes the interval NaN, and nothing follows to replace it.
    VolumeAABBf const box({0, 0, 0}, {1, 1, 1000});
    this->ExpectClip({0.5F, 0.5F, 1000}, {0, 0, 0}, box, 0, 100, MISS, QUIET_NAN<float>, QUIET_NAN<float>);
}

TYPED_TEST(RayPacketTest, ANaNInTheCallersIntervalIsReplaced)
{
    VolumeAABBf const box({-1, -1, -1}, {1, 1, 1});
    this->ExpectClip({0, -5, 0}, {0, 1, 0}, box, QUIET_NAN<float>, 100, HIT, 4, 6);
    this->ExpectClip({0, -5, 0}, {0, 1, 0}, box, 0, QUIET_NAN<float>, HIT, 4, 6);
}

TYPED_TEST(RayPacketTest, ABoxBehindIsAHitUnlessTheIntervalRulesItOut)
{
    VolumeAABBf const box({-1, -1, -1}, {1, 1, 1});
    this->ExpectClip({0, 5, 0}, {0, 1, 0}, box, -100, 100, HIT, -6, -4);
    this->ExpectClip({0, 5, 0}, {0, 1, 0}, box, 0, 100, MISS, 0, -4);
}

TYPED_TEST(RayPacketTest, EveryAxisNarrowsAMissToo)
{
    float const e = std::bit_cast<float>(0x35A00000U);
    // x: 2 to 3, y: 5 to 6 and so a miss, z: 7 to 8.
    this->ExpectClip({0, 0, 0}, {1, 1, 1}, {{2, 5, 7}, {3, 6, 8}}, 0, 100, MISS, 7 - e, 3 + e);
}

TYPED_TEST(RayPacketTest, AnIntervalOfOnePointIsAHit)
{
    this->ExpectClip({0, 0, 0}, {0, 1, 0}, {{-1, 2, -1}, {1, 3, 1}}, 0, 2, HIT, 2, 2);
    this->ExpectClip({0, 0, 0}, {0, 1, 0}, {{-1, 2, -1}, {1, 3, 1}}, 0, std::nextafter(2.0F, 0.0F), MISS, 2,
                     std::nextafter(2.0F, 0.0F));
}

TYPED_TEST(RayPacketTest, OfEqualZerosTheSecondOperandIsTaken)
{
    // The entry and the exit are +0 in y: they replace the -0 of the interval.
    this->ExpectClip({0, 0, 0}, {0, 1, 0}, {{-1, 0, -1}, {1, 0, 1}}, -0.0F, -0.0F, HIT, 0.0F, 0.0F);
}

TYPED_TEST(RayPacketTest, EachLaneHasItsOwnMask)
{
    Rays<TypeParam> rays;
    std::array<std::uint32_t, TypeParam::WIDTH> expected{};
    for (std::size_t i = 0; i < TypeParam::WIDTH; ++i)
    {
        bool const hits = i % 3 != 1;
        rays[i] = DepthRayf({hits ? 0.0F : 5.0F, -5, 0}, {0, 1, 0});
        expected[i] = hits ? HIT : MISS;
    }
    auto const clipped = Clip(MakePacket<TypeParam>(rays), {{-1, -1, -1}, {1, 1, 1}}, this->All(0), this->All(100));
    EXPECT_EQ(clipped.mask, expected);
}

TYPED_TEST(RayPacketTest, ClipLeavesThePacketAndTheBoxAlone)
{
    TypeParam const packet = MakePacket<TypeParam>(this->DifferentRays());
    TypeParam const before = packet;
    VolumeAABBf const box({-1, -1, -1}, {1, 1, 1});
    static_cast<void>(Clip(packet, box, this->All(0), this->All(100)));
    EXPECT_EQ(std::memcmp(&packet, &before, sizeof(packet)), 0);
    ExpectSameBits(box.GetMin(), Vector3f(-1, -1, -1));
    ExpectSameBits(box.GetMax(), Vector3f(1, 1, 1));
}

TYPED_TEST(RayPacketTest, RandomRaysAndBoxesAgreeWithTheModel)
{
    Random random(20240621);
    auto const uniform = [&random] { return random.Number<float>(-10, 10); };
    auto const direction = [&]
    {
        switch (random.Below(16))
        {
        case 0:
            return 0.0F;
        case 1:
            return -0.0F;
        case 2:
            return random.Any<float>();
        default:
            return uniform();
        }
    };
    int hits = 0;
    for (int i = 0; i < 2000; ++i)
    {
        Vector3f const a{uniform(), uniform(), uniform()};
        Vector3f const b{uniform(), uniform(), uniform()};
        VolumeAABBf box(a, a);
        box.Expand(b);
        auto const start = [&](std::size_t axis)
        {
            switch (random.Below(16))
            {
            case 0:
                return box.GetMin()[axis];
            case 1:
                return box.GetMax()[axis];
            case 2:
                return random.Any<float>();
            default:
                return uniform();
            }
        };
        std::vector<DepthRayf> rays;
        std::vector<float> tNear;
        std::vector<float> tFar;
        for (int ray = 0; ray < 64; ++ray)
        {
            rays.push_back(DepthRayf{{start(0), start(1), start(2)}, {direction(), direction(), direction()}});
            tNear.push_back(ray % 2 == 0 ? 0.0F : uniform());
            tFar.push_back(ray % 2 == 0 ? 100.0F : uniform());
        }
        int const found = this->CompareWithModel(rays, tNear, tFar, box);
        ASSERT_GE(found, 0) << "box " << i;
        hits += found;
    }
    EXPECT_GT(hits, 10000); // of 128,000
}

TYPED_TEST(RayPacketTest, EverySpecialValueOnEveryAxisAgreesWithTheModel)
{
    float const values[] = {0.0F,         -0.0F, INF<float>, -INF<float>,    QUIET_NAN<float>, TINY<float>,
                            -TINY<float>, 1.0F,  -1.0F,      LARGEST<float>, 1000.0F};
    float const ends[] = {0.0F, -0.0F, INF<float>, -INF<float>, QUIET_NAN<float>, 1.0F};
    int hits = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        std::vector<DepthRayf> rays;
        std::vector<float> tNear;
        std::vector<float> tFar;
        for (float const origin : values)
            for (float const direction : values)
                for (float const lower : ends)
                    for (float const upper : ends)
                    {
                        DepthRayf ray({0, 0, 0}, {1, 1, 1});
                        ray.origin[axis] = origin;
                        ray.direction[axis] = direction;
                        rays.push_back(ray);
                        tNear.push_back(lower);
                        tFar.push_back(upper);
                    }
        for (float const lower : values)
            for (float const upper : values)
            {
                // The other two axes are unbounded: they give minus and plus infinity.
                VolumeAABBf box({-INF<float>, -INF<float>, -INF<float>}, {INF<float>, INF<float>, INF<float>});
                box.GetMin()[axis] = lower;
                box.GetMax()[axis] = upper;
                int const found = this->CompareWithModel(rays, tNear, tFar, box);
                ASSERT_GE(found, 0) << "axis " << axis;
                hits += found;
            }
    }
    EXPECT_GT(hits, 100000);
}

} // namespace bv::test
