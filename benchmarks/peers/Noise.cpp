#include <string>

#include <libnoise/module/perlin.h>
#include <libnoise/noisegen.h>
#define STB_PERLIN_IMPLEMENTATION
#include <stb/stb_perlin.h>

#include "NoiseData.h"
#include "Topics.h"
#include "peers/ReferenceNoise.h"

namespace bench::peers
{

namespace
{

struct Point
{
    float x, y, z;
};

std::string Row(std::string const& operation, std::string const& library)
{
    return Name<float>("noise/" + operation, library);
}

} // namespace

void AddNoise()
{
    auto const points =
        Build(NoisePoints(), 3,
              [](double const* n) {
                  return Point{static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])};
              });
    AddMap(
        Row("Noise1", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x); }, points);
    AddMap(
        Row("Noise2", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x, p.y); }, points);
    AddMap(
        Row("Noise3", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x, p.y, p.z); }, points);

    AddMap(
        Row("Noise3", "stb_perlin"), [](Point const& p) { return stb_perlin_noise3(p.x, p.y, p.z, 0, 0, 0); }, points);
    AddMap(
        Row("Noise3", "libnoise"),
        [](Point const& p)
        {
            return static_cast<float>(noise::GradientCoherentNoise3D(static_cast<double>(p.x), static_cast<double>(p.y),
                                                                     static_cast<double>(p.z), 0, noise::QUALITY_BEST));
        },
        points);
    for (int const octaves : {4, 8})
    {
        std::string const operation = "Turbulence3 " + std::to_string(octaves) + " octaves";
        AddMap(
            Row(operation, "hand-written"), [=](Point const& p) { return ReferenceTurbulence(p.x, p.y, p.z, octaves); },
            points);
        AddMap(
            Row(operation, "stb_perlin"),
            [=](Point const& p) { return stb_perlin_fbm_noise3(p.x, p.y, p.z, 2.0F, 0.5F, octaves); }, points);
        noise::module::Perlin perlin;
        perlin.SetOctaveCount(octaves);
        perlin.SetNoiseQuality(noise::QUALITY_BEST);
        auto const shared = std::make_shared<noise::module::Perlin>(perlin);
        AddMap(
            Row(operation, "libnoise"),
            [=](Point const& p)
            {
                return static_cast<float>(
                    shared->GetValue(static_cast<double>(p.x), static_cast<double>(p.y), static_cast<double>(p.z)));
            },
            points);
    }
}

} // namespace bench::peers
