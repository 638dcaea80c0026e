#include <bv/maths/LocalAxes.h>
#include <bv/maths/PositionOffset.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

void Axes(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<float> normal = work.Vector3<float>(rarity);
            if (work.OneIn(2))
                normal.Normalise();
            tVector3<float> first;
            tVector3<float> second;
            EvaluateLocalAxes(normal, first, second);
            digest.Add(first, second);
            EvaluateLocalAxes(normal, normal, second);
            digest.Add(normal, second);
        }
}

template <typename T>
void Offsets(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> position = work.Vector3<T>(rarity);
            if (work.OneIn(3))
                position = position * static_cast<T>(1U << work.Below(31));
            digest.Add(GetPositionOffset(position, work.Vector3<T>(rarity)));
        }
}

} // namespace

void RunLocalAxes()
{
    Run("local-axes", Axes, ".float");
    RunBoth("position-offsets", Offsets<float>, Offsets<double>);
}

} // namespace digest
