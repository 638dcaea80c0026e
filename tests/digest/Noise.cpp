#include <bv/maths/Noise.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

tVector3<float> NoisePoint(Workload& work)
{
    unsigned int const kind = work.Below(8);
    if (kind == 0)
        return work.Vector3<float>(3);
    tVector3<float> const point = work.Vector3<float>(0);
    if (kind == 1)
        return point * 1e6F;
    if (kind == 2)
        return point * 2.5e8F; // on both sides of 2^31
    if (kind == 3)
        return point * 1e-6F; // on both sides of 0
    return kind == 4 ? point * 100.0F : point;
}

void Noises(Digests& digests, Workload& work)
{
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<float> const point = NoisePoint(work);
        digests["1"].Add(Noise1(point.x));
        digests["2"].Add(Noise2({point.x, point.y}));
        digests["3"].Add(Noise3(point));
    }
    for (int i = -300; i <= 300; ++i)
        for (float const fraction : {0.0F, 0.25F, 0.5F, 0.99999994F})
        {
            float const x = static_cast<float>(i) + fraction;
            digests["1"].Add(Noise1(x));
            digests["2"].Add(Noise2({x, 0.5F}), Noise2({0.5F, x}));
            digests["3"].Add(Noise3({0.5F, 0.25F, x}), Noise3({x, x, x}));
        }
}

void Turbulences(Digests& digests, Workload& work)
{
    for (int i = 0; i < 2500; ++i)
    {
        tVector3<float> const point = NoisePoint(work);
        unsigned int const octaves = work.OneIn(16) ? 4000000000U : work.Below(13);
        digests["1"].Add(Turbulence1(point.x, octaves));
        digests["2"].Add(Turbulence2({point.x, point.y}, octaves));
        digests["3"].Add(Turbulence3(point, octaves));
    }
}

} // namespace

void RunNoise()
{
    Run("noise", Noises, ".float");
    Run("turbulence", Turbulences, ".float");
}

} // namespace digest
