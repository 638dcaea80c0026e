#include <type_traits>
#include <utility>

#include <bv/maths/tVolumeAABB.h>
#include <bv/maths/tVolumeSphere.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Spheres(Digests& digests, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVector3<T> const centre = work.Vector3<T>(rarity);
            T const squaredRadius = work.Number<T>(rarity) * T{4};
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), squaredRadius);
            tVolumeSphere<T> second(centre, point);
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            digests["containment"].Add(sphere.Contains(point), second.Contains(point));
            digests["overlaps"].Add(sphere.Overlaps(second), second.Overlaps(sphere), sphere.Overlaps(box));
            digests["comparison"].Add(sphere == second, sphere != second, sphere == sphere);
            digests["construction"].Add(sphere.GetRadius(), second, tVolumeSphere<Other>(sphere));
            digests["transforms"].Add(sphere * work.AnyMatrix<T>(rarity));
            tVolumeSphere<T> copy(second);
            digests["copies"].Add(copy *= tMatrix4<T>::Scale(point));
            copy = sphere;
            digests["copies"].Add(copy);
            tVolumeSphere<T> assigned(point);
            assigned = std::move(copy);
            digests["copies"].Add(assigned);
            digests["copies"].Add(tVolumeSphere<T>(std::move(assigned)));
            tVolumeSphere<Other> converted{tVector3<Other>()};
            converted = sphere;
            digests["copies"].Add(converted);
            second.SetRadius(point.x);
            second.SetCentre(point);
            digests["construction"].Add(second);
        }
}

template <typename T>
void SphereVolumes(Digest& digest, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
        digest.Add(tVolumeSphere<T>(tVector3<T>(), work.Number<T>(8)).GetVolume());
}

} // namespace

void RunSpheres()
{
    RunBoth("spheres", Spheres<float>, Spheres<double>);
}

void RunSphereVolumes()
{
    RunBoth("machine-dependent.sphere-volumes", SphereVolumes<float>, SphereVolumes<double>);
}

} // namespace digest
