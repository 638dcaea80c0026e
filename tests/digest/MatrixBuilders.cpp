#include <limits>

#include <bv/maths/tMatrix4.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// A neighbour of a number. What lies beyond infinity is a NaN that signals, which WebAssembly does not keep on its way
/// through a call: instead of it, what is as equal to infinity.
template <typename T>
T Quiet(T value, T near)
{
    using Bits = detail::Integer<T>;
    Bits const beyond = detail::BitsAs<Bits>(near);
    Bits const start = detail::BitsAs<Bits>(value);
    if (near == near || value != value || beyond < start)
        return near;
    return beyond - 50 <= start ? value : std::numeric_limits<T>::quiet_NaN();
}

template <typename T>
void Builders(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1500; ++i)
        {
            T const factor = work.OneIn(4) ? work.Near(T{1}) : work.Number<T>(rarity);
            AddWhole(digests["scale"], tMatrix4<T>::Scale(factor));
            AddWhole(digests["scale"], tMatrix4<T>::Scale(work.Vector3<T>(rarity)));
            tVector3<T> offset = work.Vector3<T>(rarity);
            AddWhole(digests["translation"], tMatrix4<T>::Translate(offset.x, offset.y, offset.z));
            if (work.OneIn(4))
                offset = offset * (std::numeric_limits<T>::epsilon() * T{5});
            AddWhole(digests["translation"], tMatrix4<T>::Translate(offset));
            T sides[6];
            for (T& side : sides)
                side = work.Number<T>(rarity);
            if (work.OneIn(4))
                sides[1] = Quiet(sides[0], work.Near(sides[0]));
            auto const add = [&](Digest& digest, auto projection)
            {
                digest.Try(
                    [&]
                    {
                        Digest inner;
                        AddWhole(inner, projection(sides[0], sides[1], sides[2], sides[3], sides[4], sides[5]));
                        return inner.GetHash();
                    });
            };
            add(digests["orthogonal-projection"],
                [](auto const&... s) { return tMatrix4<T>::OrthogonalProjection(s...); });
            add(digests["perspective-projection"],
                [](auto const&... s) { return tMatrix4<T>::PerspectiveProjection(s...); });
        }
}

template <typename T>
void Rotations(Digest& digest, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
    {
        T const angle = work.OneIn(8) ? work.Special<T>() : work.OneIn(8) ? work.Near(T{0}) : work.Plain<T>();
        AddWhole(digest, tMatrix4<T>::RotateX(angle));
        AddWhole(digest, tMatrix4<T>::RotateY(angle));
        AddWhole(digest, tMatrix4<T>::RotateZ(angle));
        tVector3<T> const point = work.Vector3<T>(0);
        tVector3<T> const direction = work.OneIn(16) ? tVector3<T>() : work.Vector3<T>(0);
        AddWhole(digest, tMatrix4<T>::RotateAxis(point, direction, angle));
    }
}

} // namespace

void RunMatrixBuilders()
{
    RunBoth("matrix-builders", Builders<float>, Builders<double>);
}

void RunRotations()
{
    RunBoth("machine-dependent.rotations", Rotations<float>, Rotations<double>);
}

} // namespace digest
