#pragma once

/// @file
/// Tests of packets of rays by hand, for files that are compiled for different processors: all of it is forced inline.

#include <cstddef>

namespace bench::peers
{

/// Vectors of as many rays as a register of the compiler holds.
template <typename V>
struct Lanes3
{
    V x, y, z;

    [[gnu::always_inline]] friend Lanes3 operator-(Lanes3 const& a, Lanes3 const& b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    [[gnu::always_inline]] friend Lanes3 operator+(Lanes3 const& a, Lanes3 const& b)
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
};

template <typename V>
[[gnu::always_inline]] inline V DotLanes(Lanes3<V> const& a, Lanes3<V> const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <typename V>
[[gnu::always_inline]] inline Lanes3<V> CrossLanes(Lanes3<V> const& a, Lanes3<V> const& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <typename V>
[[gnu::always_inline]] inline Lanes3<V> SpreadCorner(float const* n)
{
    return {V{} + n[0], V{} + n[1], V{} + n[2]};
}

template <typename V>
struct PacketOf
{
    Lanes3<V> origin, direction;

    /// From rays of six numbers each.
    [[gnu::always_inline]] explicit PacketOf(float const* rays)
    {
        V* const vectors[] = {&origin.x, &origin.y, &origin.z, &direction.x, &direction.y, &direction.z};
        for (std::size_t lane = 0; lane < sizeof(V) / sizeof(float); ++lane)
            for (std::size_t j = 0; j < 6; ++j)
                (*vectors[j])[lane] = rays[6 * lane + j];
    }
};

/// Moeller and Trumbore's test without a branch.
template <typename V>
[[gnu::always_inline]] inline void MeetTrianglesByHand(float const* rays, float const* triangles, std::size_t count,
                                                       float* results)
{
    PacketOf<V> const packet(rays);
    V const zero{};
    for (std::size_t i = 0; i < count; ++i)
    {
        Lanes3<V> const a = SpreadCorner<V>(triangles + 9 * i);
        Lanes3<V> const toB = SpreadCorner<V>(triangles + 9 * i + 3) - a;
        Lanes3<V> const toC = SpreadCorner<V>(triangles + 9 * i + 6) - a;
        Lanes3<V> const p = CrossLanes(packet.direction, toC);
        V const inverse = 1.0F / DotLanes(toB, p);
        Lanes3<V> const s = packet.origin - a;
        Lanes3<V> const q = CrossLanes(s, toB);
        V const u = DotLanes(s, p) * inverse;
        V const v = DotLanes(packet.direction, q) * inverse;
        V const t = DotLanes(toC, q) * inverse;
        auto const hits = (u >= zero) & (v >= zero) & (u + v <= 1.0F) & (t >= zero) & (t <= 1000.0F);
        *reinterpret_cast<V*>(results + sizeof(V) / sizeof(float) * i) = hits ? t : zero - 1.0F;
    }
}

/// The test by Pluecker coordinates, which decides the side of an edge alike for both triangles: T. Davidovic et al.,
/// "3D Rasterization: A Bridge between Rasterization and Ray Casting", 2012.
template <typename V>
[[gnu::always_inline]] inline void MeetMeshByHand(float const* rays, float const* triangles, std::size_t count,
                                                  float* results)
{
    PacketOf<V> const packet(rays);
    V const zero{};
    for (std::size_t i = 0; i < count; ++i)
    {
        Lanes3<V> const a = SpreadCorner<V>(triangles + 9 * i) - packet.origin;
        Lanes3<V> const b = SpreadCorner<V>(triangles + 9 * i + 3) - packet.origin;
        Lanes3<V> const c = SpreadCorner<V>(triangles + 9 * i + 6) - packet.origin;
        Lanes3<V> const toA = c - a;
        Lanes3<V> const toB = a - b;
        Lanes3<V> const toC = b - c;
        V const ofA = DotLanes(CrossLanes(toC, b + c), packet.direction);
        V const ofB = DotLanes(CrossLanes(toA, c + a), packet.direction);
        V const ofC = DotLanes(CrossLanes(toB, a + b), packet.direction);
        auto const positive = (ofA >= zero) & (ofB >= zero) & (ofC >= zero);
        auto const negative = (ofA <= zero) & (ofB <= zero) & (ofC <= zero);
        Lanes3<V> const normal = CrossLanes(toA, toB);
        V const t = DotLanes(normal, a) / DotLanes(normal, packet.direction);
        auto const hits = (positive | negative) & (t >= zero) & (t <= 1000.0F);
        *reinterpret_cast<V*>(results + sizeof(V) / sizeof(float) * i) = hits ? t : zero - 1.0F;
    }
}

} // namespace bench::peers
