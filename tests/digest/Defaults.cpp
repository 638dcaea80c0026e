#include <memory>

#include <bv/Environment.h>
#include <bv/IRayPayloadInternal.h>
#include <bv/maths/tDepthRay.h>
#include <bv/maths/tFrustum.h>
#include <bv/maths/tPreparedTransform.h>
#include <bv/maths/tReciprocalRay.h>
#include <bv/maths/tWatertightRay.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// What objects are before anything is said of them; made at run time, where the compiler does not know them.
template <typename T>
void Defaults(Digests& digests, Workload& work)
{
    auto const ray = std::make_unique<tRay<T>>();
    digests["rays"].Add(ray->origin, ray->direction);
    auto const depthRay = std::make_unique<tDepthRay<T, bv::IRayPayloadInternal>>();
    digests["rays"].Add(depthRay->origin, depthRay->direction, depthRay->tMin, depthRay->tMax, depthRay->dOriginDu,
                        depthRay->dOriginDv, depthRay->dDirectionDu, depthRay->dDirectionDv,
                        depthRay->payload == nullptr);
    auto const reciprocal = std::make_unique<tReciprocalRay<T>>();
    digests["rays"].Add(reciprocal->GetOrigin(), reciprocal->GetReciprocal());
    auto const sheared = std::make_unique<tWatertightRay<T>>();
    digests["rays"].Add(sheared->GetAxis(0), sheared->GetAxis(1), sheared->GetAxis(2), sheared->GetStart(),
                        sheared->GetShear());
    digests["differentials"].Add(tDifferential2<T>(), tDifferential3<T>());
    digests["frustum"].Add(*std::make_unique<tFrustum<T>>());
    auto const map = std::make_unique<tPreparedTransform<T>>();
    for (int i = 0; i < 10; ++i)
    {
        tVector3<T> const vector = work.Vector3<T>(4);
        digests["prepared-transform"].Add((*map)(vector), map->Direction(vector));
    }
}

/// What every machine has: no value for a name without a variable.
void Environment(Digest& digest, Workload&)
{
    digest.Add(bv::BvGetEnv(nullptr), bv::BvGetEnv("BV_DIGEST_A_NAME_THAT_NOBODY_SETS"));
}

} // namespace

void RunDefaults()
{
    RunBoth("defaults", Defaults<float>, Defaults<double>);
    Run("environment", Environment);
}

} // namespace digest
