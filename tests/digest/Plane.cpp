#include <type_traits>

#include <bv/maths/tPlane.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Planes(Digests& digests, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const normal = work.OneIn(16) ? tVector3<T>() : work.Vector3<T>(rarity);
            tPlane<T> plane(normal, work.Number<T>(rarity));
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVector3<T> const direction =
                work.OneIn(6) ? plane.GetNormal().Cross(point) : work.Vector3<T>(rarity); // parallel, or almost so
            digests["construction"].Add(plane);
            digests["distance"].Add(plane.GetDistance(point), plane.GetAbsoluteDistance(point));
            tPlane<T> const& constant = plane;
            digests["intersection"].Try([&] { return constant.GetIntersection(point, direction); });
            digests["intersection"].Try([&] { return plane.GetIntersection(point, direction); });
            T const values[] = {point.x, point.y, point.z, direction.x};
            tPlane<T> second(values);
            digests["construction"].Add(second, tPlane<Other>(plane));
            digests["comparison"].Add(plane == second, plane != second, plane == plane);
            tPlane<Other> converted;
            converted = plane;
            digests["assigned"].Add(converted);
            second.SetOffset(direction.y);
            digests["changes"].Try([&] { return second.SetNormal(direction), second; });
            digests["changes"].Add(second, second.Set(direction, point.x));
            second = values;
            digests["construction"].Add(second);
        }
}

} // namespace

void RunPlanes()
{
    RunBoth("planes", Planes<float>, Planes<double>);
}

} // namespace digest
