#include "PacketWalk.h"
#include "bv/maths/Intersect.h"
#include "bv/maths/tReciprocalRay.h"
#include "bv/maths/tWatertightRay.h"

namespace raytracer
{

namespace
{

class ScalarPacket
{
public:
    explicit ScalarPacket(DepthRayf const* rays) : ray_(*rays), ready_(*rays) {}
    void LoadReach(Hit const* hits) { reach_ = hits->distance; }
    [[nodiscard]] unsigned Clip(VolumeAABBf const& box) const
    {
        float tNear = 0;
        float tFar = reach_;
        return ray_.Clip(box, tNear, tFar) ? 1 : 0;
    }
    [[nodiscard]] unsigned Intersect(Corners const& triangle, Meeting& meeting) const
    {
        bv::maths::TriangleHitf hit;
        bool const met = IntersectTriangle(ready_, triangle.a, triangle.b, triangle.c, 0, reach_, hit);
        if (met)
        {
            meeting.t[0] = hit.t;
            meeting.u[0] = hit.u;
            meeting.v[0] = hit.v;
        }
        return met ? 1 : 0;
    }

private:
    ReciprocalRayf ray_;
    WatertightRayf ready_;
    float reach_ = 0;
};

} // namespace

void WalkScalar(Walk const& walk)
{
    WalkWith<ScalarPacket>(walk);
}

} // namespace raytracer
