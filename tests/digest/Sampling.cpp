#include <bv/maths/Sampling.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// A coordinate of the square: on a fine grid, anywhere, on an edge, or of no square at all.
template <typename T>
T Coordinate(Workload& work, unsigned int rarity)
{
    if (rarity != 0 && work.OneIn(rarity))
        return work.Number<T>(rarity);
    if (work.OneIn(16))
        return static_cast<T>(work.Below(9)) / T{8};
    if (work.OneIn(4))
        return static_cast<T>(static_cast<double>(work.Bits() >> 11) * 0x1p-53);
    return static_cast<T>(static_cast<double>(work.Bits() >> 40) * 0x1p-24);
}

template <typename T>
void Samples(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            T const x = Coordinate<T>(work, rarity);
            tVector2<T> const square(x, Coordinate<T>(work, rarity));
            tVector3<T> const normal = work.Direction<T>(rarity);
            T const cosine = work.OneIn(4) ? work.Number<T>(rarity) : work.Plain<T>() / T{10};
            digests["disc"].Add(SquareToDisc(square));
            digests["triangle"].Add(SquareToTriangle(square));
            digests["sphere"].Add(SquareToSphere(square));
            digests["hemisphere"].Add(SquareToHemisphere(square), SquareToHemisphere(square, normal));
            digests["cosine-hemisphere"].Add(SquareToCosineHemisphere(square),
                                             SquareToCosineHemisphere(square, normal));
            digests["cone"].Add(SquareToCone(square, cosine), SquareToCone(square, normal, cosine));

            tVector3<T> const a = work.Vector3<T>(rarity);
            tVector3<T> const b = work.Vector3<T>(rarity);
            digests["triangle"].Add(SquareToTriangle(square, a, b, normal), GetTriangleDensity(a, b, normal));
        }
}

template <typename T>
void Inverses(Digests& digests, Workload& work)
{
    digests["sphere"].Add(GetSphereDensity<T>());
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            T const scale = work.OneIn(4) ? T{1} : T(0.0625);
            tVector2<T> const point = work.Vector2<T>(rarity) * scale;
            tVector3<T> const direction = work.Direction<T>(rarity);
            tVector3<T> const normal = work.Direction<T>(rarity);
            T const cosine = work.OneIn(4) ? work.Number<T>(rarity) : work.Plain<T>() / T{10};
            digests["disc"].Add(DiscToSquare(point), GetDiscDensity(point));
            digests["triangle"].Add(TriangleToSquare(tVector3<T>(point.x, point.y, cosine)));
            digests["sphere"].Add(SphereToSquare(direction));
            digests["hemisphere"].Add(HemisphereToSquare(direction), HemisphereToSquare(direction, normal));
            digests["cosine-hemisphere"].Add(CosineHemisphereToSquare(direction),
                                             CosineHemisphereToSquare(direction, normal));
            digests["cone"].Add(ConeToSquare(direction, cosine), ConeToSquare(direction, normal, cosine));
            digests["hemisphere"].Add(GetHemisphereDensity(direction), GetHemisphereDensity(direction, normal));
            digests["cosine-hemisphere"].Add(GetCosineHemisphereDensity(direction),
                                             GetCosineHemisphereDensity(direction, normal));
            digests["cone"].Add(GetConeDensity(direction, cosine), GetConeDensity(direction, normal, cosine));
        }
}

template <typename T>
void Sequences(Digests& digests, Workload& work)
{
    for (std::uint32_t i = 0; i < 4000; ++i)
    {
        std::uint64_t const longIndex = work.Bits() >> work.Below(64);
        auto const index = i < 500 ? i : i < 600 ? 500 - i : static_cast<std::uint32_t>(longIndex);
        auto const seed = static_cast<std::uint32_t>(work.Bits() >> work.Below(64));
        unsigned int const dimension = work.Below(66);
        std::uint32_t const base = work.OneIn(8) ? seed : work.Below(500);
        digests["halton"].Add(GetRadicalInverse<T>(index, base), GetHalton<T>(index, dimension),
                              GetHaltonPoint<T>(index));
        digests["r2"].Add(GetR2Point<T>(longIndex));
        digests["sobol"].Add(GetSobol<T>(index, dimension), GetSobolPoint<T>(index));
        digests["owen-sobol"].Add(GetOwenSobol<T>(index, dimension, seed), GetOwenSobolPoint<T>(index, seed));
        digests["shuffled-index"].Add(GetShuffledIndex(index, seed));

        T const x = Coordinate<T>(work, 24);
        T const y = Coordinate<T>(work, 24);
        digests["shifted"].Add(ShiftAround(GetR2Point<T>(index), tVector2<T>(x, y)), ShiftAround(x, y));
    }
}

} // namespace

void RunSamples()
{
    RunBoth("samples", Samples<float>, Samples<double>);
    RunBoth("samples-inverse", Inverses<float>, Inverses<double>);
    RunBoth("sequences", Sequences<float>, Sequences<double>);
}

} // namespace digest
