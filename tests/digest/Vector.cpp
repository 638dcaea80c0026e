#include <type_traits>

#include <bv/maths/IsEqual.h>
#include <bv/maths/tTuple2.h>
#include <bv/maths/tTuple3.h>
#include <bv/maths/tVector2.h>
#include <bv/maths/tVector3.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T, typename Vector>
void AddVectorResults(Digest& digest, Vector const& a, Vector const& b, T s)
{
    digest.Add(a + b, a - b, -a, a * s, s * a, a * b, a / s, a / b);
    digest.Add(a.Dot(b), a.LengthSquared(), a.Length(), a.Normalised(), a.IsInfinite(), a == b, a == a);
    Vector c = a;
    digest.Add(c += b);
    digest.Add(c -= a);
    digest.Add(c *= s);
    digest.Add(c *= b);
    digest.Add(c /= s);
    digest.Add(c /= b);
    digest.Add(c.Normalise());
    c = a;
    Vector const& itself = c;
    digest.Add(c /= itself);
    c = a;
    digest.Add(c *= itself);
}

template <typename T>
void Vectors(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
    {
        for (int i = 0; i < 1500; ++i)
        {
            tVector2<T> const a = work.Vector2<T>(rarity);
            tVector2<T> b = work.Vector2<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y)};
            AddVectorResults(digest, a, b, work.Number<T>(rarity));
            digest.Add(a[0], a[1]);
        }
        for (int i = 0; i < 1500; ++i)
        {
            tVector3<T> const a = work.Vector3<T>(rarity);
            tVector3<T> b = work.Vector3<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y), work.Near(a.z)};
            AddVectorResults(digest, a, b, work.Number<T>(rarity));
            digest.Add(a.Cross(b), a[0], a[1], a[2]);
        }
        for (int i = 0; i < 300; ++i)
        {
            using Other = std::conditional_t<sizeof(T) == 4, double, float>;
            tVector3<Other> const a = work.Vector3<Other>(rarity);
            digest.Add(tVector3<T>(a), tVector2<T>(tVector2<Other>(a.x, a.y)),
                       tTuple3<T>(tTuple3<Other>(a.x, a.y, a.z)), tTuple2<T>(tTuple2<Other>(a.x, a.y)));
        }
    }
}

template <typename T>
void Equality(Digest& digest, Workload& work)
{
    for (int i = 0; i < 20000; ++i)
    {
        T const a = work.Number<T>(4);
        T const b = work.OneIn(2) ? work.Near(a) : work.Number<T>(4);
        digest.Add(IsEqual(a, b), IsEqual(b, a), IsEqual(a, a), IsEqual(a, -b));
        tTuple3<T> const p(a, b, a);
        digest.Add(p == tTuple3<T>(b, a, a), tTuple2<T>(a, b) == tTuple2<T>(b, a));
    }
}

} // namespace

void RunVectors()
{
    RunBoth("vectors", Vectors<float>, Vectors<double>);
    RunBoth("equality", Equality<float>, Equality<double>);
}

} // namespace digest
