#include "bv/maths/Noise.h"

#include <string>

#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

#include "NoiseData.h"
#include "Topics.h"

namespace bench
{

using bv::maths::tVector2;
using bv::maths::tVector3;

void AddNoise()
{
    auto const name = [](std::string const& operation) { return Name<float>("noise/" + operation, "BvBaseUtils"); };
    auto const lines = Build(NoisePoints(), 3, [](double const* n) { return static_cast<float>(n[0]); });
    auto const planes =
        Build(NoisePoints(), 3,
              [](double const* n) { return tVector2<float>(static_cast<float>(n[0]), static_cast<float>(n[1])); });
    auto const spaces =
        Build(NoisePoints(), 3,
              [](double const* n) {
                  return tVector3<float>(static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2]));
              });
    AddMap(
        name("Noise1"), [](float x) { return bv::maths::Noise1(x); }, lines);
    AddMap(
        name("Noise2"), [](tVector2<float> const& p) { return bv::maths::Noise2(p); }, planes);
    AddMap(
        name("Noise3"), [](tVector3<float> const& p) { return bv::maths::Noise3(p); }, spaces);
    AddMap(
        name("Turbulence3 4 octaves"), [](tVector3<float> const& p) { return bv::maths::Turbulence3(p, 4); }, spaces);
    AddMap(
        name("Turbulence3 8 octaves"), [](tVector3<float> const& p) { return bv::maths::Turbulence3(p, 8); }, spaces);
}

} // namespace bench
