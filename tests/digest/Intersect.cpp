#include <cstdint>
#include <cstring>
#include <vector>

#include <bv/maths/Batch.h>
#include <bv/maths/Intersect.h>
#include <bv/maths/simd/PacketTriangles.h>
#include <bv/maths/simd/SSERay.h>
#include <bv/maths/tReciprocalRay.h>

#include "PacketsOfEight.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// Three corners, which a ray often meets, now and then on an edge or a corner.
template <typename T>
struct Corners
{
    tVector3<T> a, b, c;

    Corners(Workload& work, tRay<T> const& ray, unsigned int rarity)
        : a{work.Vector3<T>(rarity)}, b{work.Vector3<T>(rarity)}, c{work.Vector3<T>(rarity)}
    {
        tVector3<T> const target = ray.origin + ray.direction * static_cast<T>(work.Below(8));
        switch (work.Below(4))
        {
        case 0: // a corner
            a = target;
            break;
        case 1: // the middle of an edge
            c = target + target - b;
            break;
        case 2: // inside
            c = target * T{3} - a - b;
            break;
        default:
            break;
        }
    }
};

template <typename T>
tRay<T> AnyRay(Workload& work, unsigned int rarity)
{
    tVector3<T> const origin = work.Vector3<T>(rarity);
    return {origin, work.Direction<T>(rarity)};
}

template <typename T>
void Intersections(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 6000; ++i)
        {
            tRay<T> const ray = AnyRay<T>(work, rarity);
            auto const [a, b, c] = Corners<T>(work, ray, rarity);
            T const tNear = work.OneIn(2) ? T{0} : work.Number<T>(rarity);
            T const tFar = work.OneIn(2) ? T{100} : work.Number<T>(rarity);
            tTriangleHit<T> hit{};
            digests["triangle"].Add(IntersectTriangle(ray, a, b, c, tNear, tFar, hit));
            digests["triangle"].Add(hit.t, hit.u, hit.v);
            digests["watertight-triangle"].Add(IntersectTriangle(tWatertightRay<T>(ray), a, b, c, tNear, tFar, hit));
            digests["watertight-triangle"].Add(hit.t, hit.u, hit.v);

            T t{}, u{}, v{};
            tPlane<T> const plane(a, work.Number<T>(rarity));
            digests["plane"].Add(IntersectPlane(ray, plane, tNear, tFar, t));
            digests["plane"].Add(t);
            digests["disc"].Add(IntersectDisc(ray, a, b, work.Number<T>(rarity), tNear, tFar, t));
            digests["disc"].Add(t);
            digests["barycentric"].Add(GetBarycentric(ray.origin, a, b, c, u, v));
            digests["barycentric"].Add(u, v);
            digests["triangle-in-box"].Add(OverlapsTriangle(work.Volume<T>(rarity), a, b, c));

            T lo = tNear;
            T hi = tFar;
            tVector3<T> const axis = work.Direction<T>(rarity);
            tOrientedBox<T> const turned(a, b, c, axis, work.Vector3<T>(rarity));
            digests["turned-box"].Add(ClipOrientedBox(ray, turned, lo, hi));
            digests["turned-box"].Add(lo, hi);
            lo = tNear;
            hi = tFar;
            digests["reciprocal-ray"].Add(tReciprocalRay<T>(ray).Clip(work.Volume<T>(rarity), lo, hi));
            digests["reciprocal-ray"].Add(lo, hi);

            tReciprocalRay<T> const reciprocal(ray);
            digests["reciprocals"].Add(reciprocal.GetOrigin(), reciprocal.GetReciprocal());
            tWatertightRay<T> const sheared(ray);
            digests["sheared-rays"].Add(sheared.GetAxis(0), sheared.GetAxis(1), sheared.GetAxis(2), sheared.GetStart(),
                                        sheared.GetShear());

            tDepthRay<T, bv::IRayPayloadInternal> depthRay(ray.origin, ray.direction);
            depthRay.dOriginDu = work.Vector3<T>(0);
            depthRay.dOriginDv = work.Vector3<T>(0);
            depthRay.dDirectionDu = work.Vector3<T>(0);
            depthRay.dDirectionDv = work.Vector3<T>(rarity);
            tDifferential3<T> position;
            tDifferential2<T> weights;
            digests["hit-differentials"].Add(GetHitDifferentials(depthRay, a, b, c, hit.t, position, weights));
            digests["hit-differentials"].Add(position, weights);
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            auto const moved = TransformRay(depthRay, matrix);
            digests["moved-ray"].Add(moved.origin, moved.direction, moved.dOriginDu, moved.dDirectionDv);
            tRay<T> const movedPlain = TransformRay(ray, matrix);
            digests["moved-plain-ray"].Add(movedPlain.origin, movedPlain.direction);
        }
}

template <typename T>
void Batches(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (std::size_t length = 0; length < 200; length += 7)
        {
            tRay<T> const ray = AnyRay<T>(work, rarity);
            std::vector<tVector3<T>> a, b, c;
            for (std::size_t i = 0; i < length; ++i)
            {
                Corners<T> const corners(work, ray, rarity);
                a.push_back(corners.a);
                b.push_back(corners.b);
                c.push_back(corners.c);
            }
            std::vector<T> t(length), u(length), v(length);
            std::vector<std::uint64_t> bits(GetBitWords(length));
            auto const add = [&](Digest& digest, auto const& from)
            {
                digest.Add(IntersectTriangles(from, a, b, c, 0, 100, t, u, v, bits));
                for (std::size_t i = 0; i < length; ++i)
                    digest.Add(t[i], u[i], v[i]);
                for (std::uint64_t const word : bits)
                    digest.Add(word);
            };
            add(digests["fast"], ray);
            add(digests["watertight"], tWatertightRay<T>(ray));
        }
}

void MeetFour(DepthRayf const* rays, Vector3f const (&corners)[3], PacketMeetings& results)
{
    auto const& [a, b, c] = corners;
    for (int half = 0; half < 8; half += 4)
    {
        simd::SSERay packet;
        packet.Initialise(rays + half);
        simd::tPacketHits<simd::SSERay> hits{};
        simd::FourFloats const lo{};
        simd::FourFloats const hi{100.0F, 100.0F, 100.0F, 100.0F};
        for (int test = 0; test < 2; ++test)
        {
            simd::FourFloats const mask =
                test == 0 ? IntersectTriangle(packet, a, b, c, lo, hi, hits)
                          : IntersectTriangle(simd::tWatertightPacket<simd::SSERay>(packet), a, b, c, lo, hi, hits);
            std::memcpy(results.mask[test] + half, &mask, sizeof mask);
            std::memcpy(results.hits[test][0] + half, &hits.t, sizeof hits.t);
            std::memcpy(results.hits[test][1] + half, &hits.u, sizeof hits.u);
            std::memcpy(results.hits[test][2] + half, &hits.v, sizeof hits.v);
        }
    }
}

/// The same topic for either width: what it adds does not depend on it.
template <typename Meet>
void Packets(Digests& digests, Workload& work, Meet meet)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            DepthRayf rays[8];
            for (DepthRayf& ray : rays)
                static_cast<tRay<float>&>(ray) = AnyRay<float>(work, rarity);
            Corners<float> const corners(work, rays[work.Below(8)], rarity);
            PacketMeetings results{};
            meet(rays, {corners.a, corners.b, corners.c}, results);
            for (int test = 0; test < 2; ++test)
                for (int k = 0; k < 8; ++k)
                    digests[test == 0 ? "fast" : "watertight"].Add(results.mask[test][k], results.hits[test][0][k],
                                                                   results.hits[test][1][k], results.hits[test][2][k]);
        }
}

} // namespace

void RunIntersections()
{
    RunBoth("intersections", Intersections<float>, Intersections<double>);
    RunBoth("batch-triangles", Batches<float>, Batches<double>);
    Run(
        "packet-triangles-sse", [](Digests& digests, Workload& work) { Packets(digests, work, MeetFour); }, ".float");
    if (HasEightLanes())
        Run(
            "packet-triangles-avx", [](Digests& digests, Workload& work) { Packets(digests, work, MeetEight); },
            ".float");
}

} // namespace digest
