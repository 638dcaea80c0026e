#include <bv/maths/tDifferential2.h>
#include <bv/maths/tDifferential3.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Differentials(Digests& digests, Workload& work)
{
    auto const add = [&](auto const& a, auto const& b, T s, auto const& factors)
    {
        digests["arithmetic"].Add(+a, -a, a + b, a - b, a * s, a * factors);
        digests["radius"].Add(a.GetRadius(), a.IsNull(), a.IsInfinite());
        Digest& inPlace = digests["in-place"];
        auto c = a;
        inPlace.Add(c += b);
        inPlace.Add(c -= a);
        inPlace.Add(c *= s);
        inPlace.Add(c *= factors);
        inPlace.Add(c /= s);
        inPlace.Add(c /= factors);
        c.Set(a[0]);
        inPlace.Add(c /= c(0).x);
        inPlace.Add(c /= c(1));
        c.Set(b[1], a[0]);
        digests["set"].Add(c);
    };
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1500; ++i)
        {
            tVector2<T> const u2 = work.OneIn(6) ? tVector2<T>() : work.Vector2<T>(rarity);
            tVector2<T> const v2 = work.OneIn(6) ? tVector2<T>() : work.Vector2<T>(rarity);
            tVector2<T> const w2 = work.Vector2<T>(rarity);
            add(tDifferential2<T>(u2, v2), tDifferential2<T>(w2, u2), work.Number<T>(rarity), v2);
            tVector3<T> const u3 = work.OneIn(6) ? tVector3<T>() : work.Vector3<T>(rarity);
            tVector3<T> const v3 = work.OneIn(6) ? tVector3<T>() : work.Vector3<T>(rarity);
            tVector3<T> const w3 = work.Vector3<T>(rarity);
            tDifferential3<T> const d(u3, v3);
            add(d, tDifferential3<T>(w3, u3), work.Number<T>(rarity), v3);
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            T const weight = work.Number<T>(rarity);
            digests["transforms"].Add(d.TransformedAsVector(matrix), d.Transformed(matrix, w3, weight));
            tDifferential3<T> changed = d;
            digests["transforms"].Add(changed.TransformAsVector(matrix), changed);
            digests["transforms"].Add(changed.Transform(matrix, w3, weight), changed);
        }
}

} // namespace

void RunDifferentials()
{
    RunBoth("differentials", Differentials<float>, Differentials<double>);
}

} // namespace digest
