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
void AddVectorResults(Digests& digests, Vector const& a, Vector const& b, T s)
{
    digests["sums"].Add(a + b, a - b, -a);
    digests["products"].Add(a * s, s * a, a * b);
    digests["quotients"].Add(a / s, a / b);
    digests["lengths"].Add(a.Dot(b), a.LengthSquared(), a.Length(), a.Normalised());
    digests["comparison"].Add(a.IsInfinite(), a == b, a == a);
    Digest& inPlace = digests["in-place"];
    Vector c = a;
    inPlace.Add(c += b);
    inPlace.Add(c -= a);
    inPlace.Add(c *= s);
    inPlace.Add(c *= b);
    inPlace.Add(c /= s);
    inPlace.Add(c /= b);
    inPlace.Add(c.Normalise());
    c = a;
    Vector const& itself = c;
    inPlace.Add(c /= itself);
    c = a;
    inPlace.Add(c *= itself);
}

template <typename T>
void Vectors(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
    {
        for (int i = 0; i < 1500; ++i)
        {
            tVector2<T> const a = work.Vector2<T>(rarity);
            tVector2<T> b = work.Vector2<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y)};
            AddVectorResults(digests, a, b, work.Number<T>(rarity));
            digests["components"].Add(a[0], a[1]);
        }
        for (int i = 0; i < 1500; ++i)
        {
            tVector3<T> const a = work.Vector3<T>(rarity);
            tVector3<T> b = work.Vector3<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y), work.Near(a.z)};
            AddVectorResults(digests, a, b, work.Number<T>(rarity));
            digests["components"].Add(a[0], a[1], a[2]);
            digests["cross-products"].Add(a.Cross(b));
        }
        for (int i = 0; i < 300; ++i)
        {
            using Other = std::conditional_t<sizeof(T) == 4, double, float>;
            tVector3<Other> const a = work.Vector3<Other>(rarity);
            digests["conversions"].Add(tVector3<T>(a), tVector2<T>(tVector2<Other>(a.x, a.y)),
                                       tTuple3<T>(tTuple3<Other>(a.x, a.y, a.z)), tTuple2<T>(tTuple2<Other>(a.x, a.y)));
        }
    }
}

template <typename T>
void Equality(Digests& digests, Workload& work)
{
    for (int i = 0; i < 20000; ++i)
    {
        T const a = work.Number<T>(4);
        T const b = work.OneIn(2) ? work.Near(a) : work.Number<T>(4);
        digests["numbers"].Add(IsEqual(a, b), IsEqual(b, a), IsEqual(a, a), IsEqual(a, -b));
        tTuple3<T> const p(a, b, a);
        digests["tuples"].Add(p == tTuple3<T>(b, a, a), tTuple2<T>(a, b) == tTuple2<T>(b, a));
    }
}

} // namespace

void RunVectors()
{
    RunBoth("vectors", Vectors<float>, Vectors<double>);
    RunBoth("equality", Equality<float>, Equality<double>);
}

} // namespace digest
