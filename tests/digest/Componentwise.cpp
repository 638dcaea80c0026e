#include <bv/maths/Componentwise.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename V>
void Extremes(Digest& digest, V const& value)
{
    digest.Add(GetMinComponent(value), GetMaxComponent(value), GetMinAxis(value), GetMaxAxis(value));
}

template <typename V, typename T>
void Operations(Digests& digests, V const& a, V const& b, V const& c, T share)
{
    digests["min-max"].Add(Min(a, b), Max(a, b));
    digests["clamp"].Add(Clamp(a, b, c), Clamp(a, b.x, c.y));
    digests["lerp"].Add(Lerp(a, b, share), Lerp(a, b, c), Lerp(a.x, b.y, c.x));
    digests["rounding"].Add(Abs(a), Floor(a), Ceil(a));
    Extremes(digests["extremes"], a);
}

template <typename T>
void Vectors(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const a = work.Vector3<T>(rarity);
            tVector3<T> const b = work.OneIn(4) ? tVector3<T>(work.Near(a.x), a.y, -a.z) : work.Vector3<T>(rarity);
            tVector3<T> const c = work.Vector3<T>(rarity);
            T const share = work.OneIn(3) ? work.Near(T{0.5}) : work.Number<T>(rarity) / T{8};
            Operations(digests, a, b, c, share);
            Operations(digests, tVector2<T>(a.x, a.y), tVector2<T>(b.x, b.y), tVector2<T>(c.x, c.y), share);
            Operations(digests, tTuple3<T>(a.x, a.y, a.z), tTuple3<T>(b.x, b.y, b.z), tTuple3<T>(c.x, c.y, c.z), share);
            Operations(digests, tTuple2<T>(a.x, a.y), tTuple2<T>(b.x, b.y), tTuple2<T>(c.x, c.y), share);
            tVector3<T> const anything{work.Wide<T>(), work.Wide<T>(), work.Wide<T>() / T(0x1p66)};
            digests["rounding"].Add(Floor(anything), Ceil(anything));
        }
}

template <typename T>
void Tuples(Digests& digests, Workload& work)
{
    auto const next = [&] { return static_cast<T>(work.OneIn(2) ? work.Below(5) : work.Bits()); };
    for (int i = 0; i < 3000; ++i)
    {
        T const numbers[] = {next(), next(), next(), next(), next(), next()};
        tTuple3<T> const a(numbers);
        tTuple3<T> const b(numbers + 3);
        tTuple2<T> const c(numbers + 1);
        tTuple2<T> const d(numbers + 2);
        digests["min-max"].Add(Min(a, b), Max(a, b), Min(c, d), Max(c, d));
        digests["clamp"].Add(Clamp(a, b, a), Clamp(a, c.x, b.x), Clamp(c, d, c), Clamp(c, a.x, b.x));
        if constexpr (std::is_signed_v<T>)
            digests["magnitude"].Add(Abs(a), Abs(c));
        Extremes(digests["extremes"], a);
        Extremes(digests["extremes"], c);
    }
}

} // namespace

void RunComponentwise()
{
    RunBoth("componentwise", Vectors<float>, Vectors<double>);
    Run("componentwise", Tuples<int>, ".int");
    Run("componentwise", Tuples<unsigned int>, ".unsigned");
}

} // namespace digest
