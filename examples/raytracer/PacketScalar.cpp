#include "PacketWalk.h"
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
    [[nodiscard]] unsigned Intersect(Corners const& triangle, TriangleHitf* hits) const
    {
        return IntersectTriangle(ready_, triangle.a, triangle.b, triangle.c, 0, reach_, *hits) ? 1 : 0;
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
