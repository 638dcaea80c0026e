#include "bv/maths/Sampling.h"

#include "Bench.h"
#include "SamplingData.h"
#include "Topics.h"

namespace bench
{

namespace
{

using namespace bv::maths;

constexpr char const* LIBRARY = "BvBaseUtils";

template <typename T>
void AddAll()
{
    using Square = tVector2<T>;
    using Vector = tVector3<T>;
    auto const squares = Squares<Square>();
    auto const normals = Normals<Vector>(63);
    auto const directions = Normals<Vector>(64);
    constexpr T COSINE = static_cast<T>(CONE);

    AddRow<T>(
        LIBRARY, "disc", [](Square const& s) { return SquareToDisc(s); }, squares);
    AddRow<T>(
        LIBRARY, "disc, inverse", [](Square const& p) { return DiscToSquare(p); }, DiscPoints<Square>());
    AddRow<T>(
        LIBRARY, "triangle", [](Square const& s) { return SquareToTriangle(s); }, squares);
    AddRow<T>(
        LIBRARY, "sphere", [](Square const& s) { return SquareToSphere(s); }, squares);
    AddRow<T>(
        LIBRARY, "sphere, inverse", [](Vector const& d) { return SphereToSquare(d); }, directions);
    AddRow<T>(
        LIBRARY, "hemisphere", [](Square const& s) { return SquareToHemisphere(s); }, squares);
    AddRow<T>(
        LIBRARY, "cosine hemisphere", [](Square const& s) { return SquareToCosineHemisphere(s); }, squares);
    AddRow<T>(
        LIBRARY, "cosine hemisphere around a normal",
        [](Square const& s, Vector const& n) { return SquareToCosineHemisphere(s, n); }, squares, normals);
    AddRow<T>(
        LIBRARY, "cone around an axis", [](Square const& s, Vector const& n) { return SquareToCone(s, n, COSINE); },
        squares, normals);
    AddRow<T>(
        LIBRARY, "density, cone around an axis",
        [](Vector const& d, Vector const& n) { return GetConeDensity(d, n, COSINE); }, directions, normals);

    auto const indices = Indices();
    AddRow<T>(
        LIBRARY, "Halton, base 3", [](std::uint32_t i) { return GetRadicalInverse<T>(i, 3); }, indices);
    AddRow<T>(
        LIBRARY, "Halton, dimension 9", [](std::uint32_t i) { return GetHalton<T>(i, 9); }, indices);
    AddRow<T>(
        LIBRARY, "R2", [](std::uint32_t i) { return GetR2Point<T>(i); }, indices);
    AddRow<T>(
        LIBRARY, "Sobol", [](std::uint32_t i) { return GetSobolPoint<T>(i); }, indices);
    AddRow<T>(
        LIBRARY, "Sobol, dimension 9", [](std::uint32_t i) { return GetSobol<T>(i, 9); }, indices);
    AddRow<T>(
        LIBRARY, "scrambled Sobol", [](std::uint32_t i) { return GetOwenSobolPoint<T>(i, SCRAMBLE); }, indices);
    AddRow<T>(
        LIBRARY, "scrambled Sobol, dimension 9", [](std::uint32_t i) { return GetOwenSobol<T>(i, 9, SCRAMBLE); },
        indices);
}

} // namespace

void AddSampling()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench
