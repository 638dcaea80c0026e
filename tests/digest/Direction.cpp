#include <bv/maths/Direction.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename V, typename T>
void Operations(Digests& digests, V const& vector, V const& other, T ratio)
{
    digests["distance"].Add(Distance(vector, other), DistanceSquared(vector, other));
    digests["reflection"].Add(Reflect(vector, other), FaceForward(vector, other));
    digests["projection"].Add(Project(vector, other), Reject(vector, other));
    std::optional<V> const refracted = Refract(vector, other, ratio);
    digests["refraction"].Add(refracted.has_value(), refracted.value_or(V()));
    V first = vector;
    V second = other;
    digests["orthonormal"].Add(Orthonormalise(first, second), first, second);
}

template <typename T>
void Directions(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const vector = work.Direction<T>(rarity);
            tVector3<T> const other =
                work.OneIn(8) ? tVector3<T>(work.Near(vector.x), vector.y, vector.z) : work.Direction<T>(rarity);
            T const ratio = work.OneIn(2) ? T{0.75} : work.Number<T>(rarity);
            Operations(digests, vector, other, ratio);
            Operations(digests, tVector2<T>(vector.x, vector.y), tVector2<T>(other.x, other.y), ratio);
            tVector3<T> axes[] = {vector, other, work.Direction<T>(rarity)};
            digests["orthonormal"].Add(Orthonormalise(axes[0], axes[1], axes[2]), axes[0], axes[1], axes[2]);
            EvaluateOrthonormalBasis(vector, axes[0], axes[1]);
            digests["basis"].Add(axes[0], axes[1]);
        }
}

/// The arc tangent is that of the C library.
template <typename T>
void Angles(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1000; ++i)
        {
            tVector3<T> const a = work.Direction<T>(rarity);
            tVector3<T> const b = work.Direction<T>(rarity);
            digest.Add(GetAngle(a, b), GetAngle(tVector2<T>(a.x, a.y), tVector2<T>(b.x, b.y)));
        }
}

} // namespace

void RunDirections()
{
    RunBoth("directions", Directions<float>, Directions<double>);
}

void RunAngles()
{
    RunBoth("machine-dependent.angles", Angles<float>, Angles<double>);
}

} // namespace digest
