// Rays and packets of them against boxes, spheres and triangles of any numbers.

#include <array>
#include <cstring>

#include "Fuzz.h"
#include "bv/maths/Intersect.h"
#include "bv/maths/simd/PacketTriangles.h"
#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tDepthRay.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tReciprocalRay.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"
#include "bv/maths/tWatertightRay.h"

using namespace bv;
using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

using Packet = simd::SSERay;
using Numbers = std::array<float, Packet::WIDTH>;

Numbers ToNumbers(Packet::Vector const& vector)
{
    Numbers numbers{};
    std::memcpy(numbers.data(), &vector, sizeof(vector));
    return numbers;
}

Packet::Vector ToVector(Numbers const& numbers)
{
    Packet::Vector vector;
    std::memcpy(&vector, numbers.data(), sizeof(vector));
    return vector;
}

bool IsSet(float mask)
{
    return test::Bits(mask) != 0;
}

/// A hit is where the ray says, and lies within the interval that was asked for.
template <typename T, typename Ray>
void HitTriangle(Ray const& ray, tVector3<T> const (&corners)[3], T tNear, T tFar)
{
    tTriangleHit<T> hit{7, 7, 7};
    bool const isHit = IntersectTriangle(ray, corners[0], corners[1], corners[2], tNear, tFar, hit);
    if (!isHit)
        Require(hit.t == 7 && hit.u == 7 && hit.v == 7, "a miss writes nothing");
    else
        Require(hit.t >= tNear && hit.t <= tFar, "a hit lies within the interval");
}

template <typename T>
void Singles(Input& input)
{
    tRay<T> const ray(input.Vector3<T>(), input.Vector3<T>());
    tDepthRay<T, bv::IRayPayloadInternal> const deep(ray.origin, ray.direction);
    T const tNear = input.Number<T>();
    T const tFar = input.Number<T>();
    tVolumeAABB<T> const box(input.Vector3<T>(), input.Vector3<T>());
    T first = tNear;
    T last = tFar;
    bool const isHit = ray.Clip(box, first, last);
    if (isHit)
        Require(!(first < tNear) && !(last > tFar), "an interval only shrinks");
    T deepFirst = tNear;
    T deepLast = tFar;
    Require(deep.Clip(box, deepFirst, deepLast) == isHit && IsSame(first, deepFirst) && IsSame(last, deepLast),
            "a ray with a depth meets what the ray meets");

    tVolumeSphere<T> const sphere(input.Vector3<T>(), input.Number<T>());
    T entry = 7;
    T exit = 7;
    if (ray.Clip(sphere, entry, exit))
        Require(!(entry > exit), "a ray enters a sphere before it leaves it");
    else
        Require(entry == 7 && exit == 7, "a ray past a sphere writes nothing");

    tVector3<T> const corners[3] = {input.Vector3<T>(), input.Vector3<T>(), input.Vector3<T>()};
    HitTriangle(ray, corners, tNear, tFar);
    HitTriangle(tWatertightRay<T>(ray), corners, tNear, tFar);
}

/// Four rays at once, each of which counts as it would alone and in any place.
void Packets(Input& input)
{
    std::array<tDepthRay<float, bv::IRayPayloadInternal>, Packet::WIDTH> rays;
    Numbers tNear{};
    Numbers tFar{};
    for (std::size_t i = 0; i < rays.size(); ++i)
    {
        rays[i] = {input.Vector3<float>(), input.Vector3<float>()};
        tNear[i] = input.Number<float>();
        tFar[i] = input.Number<float>();
    }
    tVolumeAABB<float> const box(input.Vector3<float>(), input.Vector3<float>());
    std::array<tVector3<float>, 3> const corners{input.Vector3<float>(), input.Vector3<float>(),
                                                 input.Vector3<float>()};
    Packet packet;
    packet.Initialise(rays.data());
    Packet::Vector first = ToVector(tNear);
    Packet::Vector last = ToVector(tFar);
    Numbers const mask = ToNumbers(packet.Clip(box, first, last));

    simd::tPacketHits<Packet> hits{ToVector({7, 7, 7, 7}), ToVector({7, 7, 7, 7}), ToVector({7, 7, 7, 7})};
    simd::tWatertightPacket<Packet> const closed(packet);
    Numbers const hitMask = ToNumbers(
        simd::IntersectTriangle(closed, corners[0], corners[1], corners[2], ToVector(tNear), ToVector(tFar), hits));

    for (std::size_t i = 0; i < rays.size(); ++i)
    {
        Packet same; // the ray in every place
        std::array const copies{rays[i], rays[i], rays[i], rays[i]};
        same.Initialise(copies.data());
        Packet::Vector ownFirst = ToVector({tNear[i], tNear[i], tNear[i], tNear[i]});
        Packet::Vector ownLast = ToVector({tFar[i], tFar[i], tFar[i], tFar[i]});
        Numbers const ownMask = ToNumbers(same.Clip(box, ownFirst, ownLast));
        for (std::size_t j = 0; j < rays.size(); ++j)
            Require(IsSet(ownMask[j]) == IsSet(mask[i]) && IsSame(ToNumbers(ownFirst)[j], ToNumbers(first)[i]) &&
                        IsSame(ToNumbers(ownLast)[j], ToNumbers(last)[i]),
                    "a ray meets a box alike in every place of a packet");

        tTriangleHit<float> hit{7, 7, 7};
        bool const isHit = IntersectTriangle(tWatertightRay<float>(rays[i]), corners[0], corners[1], corners[2],
                                             tNear[i], tFar[i], hit);
        Require(isHit == IsSet(hitMask[i]), "a ray meets a triangle alone and in a packet");
        Require(IsSame(hit.t, ToNumbers(hits.t)[i]) && IsSame(hit.u, ToNumbers(hits.u)[i]) &&
                    IsSame(hit.v, ToNumbers(hits.v)[i]),
                "a ray meets a triangle at one place alone and in a packet");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    switch (input.Below(3))
    {
    case 0:
        Singles<float>(input);
        break;
    case 1:
        Singles<double>(input);
        break;
    default:
        Packets(input);
        break;
    }
    return 0;
}
