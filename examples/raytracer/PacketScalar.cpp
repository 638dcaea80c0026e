#include "PacketWalk.h"

namespace raytracer
{

namespace
{

class ScalarPacket
{
public:
    void Load(DepthRayf const* rays, Hit const* hits)
    {
        ray_ = rays;
        LoadReach(hits);
    }
    void LoadReach(Hit const* hits) { reach_ = hits->distance; }
    [[nodiscard]] unsigned Clip(VolumeAABBf const& box) const
    {
        float tNear = 0;
        float tFar = reach_;
        return ray_->Clip(box, tNear, tFar) ? 1 : 0;
    }

private:
    DepthRayf const* ray_;
    float reach_;
};

} // namespace

void WalkScalar(Walk const& walk)
{
    WalkWith<ScalarPacket>(walk);
}

} // namespace raytracer
