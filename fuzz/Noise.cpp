// Noise and random numbers: in their ranges, and the same alone and together.

#include <cmath>
#include <vector>

#include "Fuzz.h"
#include "bv/maths/Batch.h"
#include "bv/maths/Noise.h"
#include "bv/maths/RNGenerator.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

bool IsIn(float low, float value, float high)
{
    return value >= low && value <= high;
}

/// Whether the value lies within the range, as it does where no octave of the place is infinite.
bool IsInRange(tVector3<float> const& place, float low, float value, float high)
{
    constexpr float FARTHEST = 1e30F;
    bool const isNear = std::abs(place.x) < FARTHEST && std::abs(place.y) < FARTHEST && std::abs(place.z) < FARTHEST;
    return !isNear || IsIn(low, value, high);
}

void Evaluate(Input& input)
{
    std::size_t const count = input.Below(70);
    unsigned const octaves = input.Below(13);
    std::vector<float> line(count);
    std::vector<tVector2<float>> plane(count);
    std::vector<tVector3<float>> space(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        tVector3<float> const point = input.Vector3<float>();
        line[i] = point.x;
        plane[i] = {point.x, point.y};
        space[i] = point;
    }
    std::vector<float> noise(count);
    std::vector<float> turbulence(count);
    EvaluateNoise1(line, noise);
    EvaluateTurbulence1(line, octaves, turbulence);
    for (std::size_t i = 0; i < count; ++i)
    {
        Require(IsInRange({line[i], 0, 0}, 0.25F, noise[i], 0.75F), "noise along a line lies in [0.25, 0.75]");
        Require(IsSame(noise[i], Noise1(line[i])), "noise along a line is the same alone");
        Require(IsSame(noise[i], Noise3({line[i], 0, 0})), "noise along a line is that in space");
        Require(IsSame(turbulence[i], Turbulence1(line[i], octaves)), "turbulence along a line is the same alone");
        Require(octaves == 0 ? turbulence[i] == 0 : IsInRange({line[i], 0, 0}, 0.25F, turbulence[i], 0.75F),
                "turbulence stays in its range");
    }
    EvaluateNoise2(plane, noise);
    EvaluateTurbulence2(plane, octaves, turbulence);
    for (std::size_t i = 0; i < count; ++i)
    {
        Require(IsInRange({plane[i].x, plane[i].y, 0}, 0, noise[i], 1), "noise in the plane lies in [0, 1]");
        Require(IsSame(noise[i], Noise2(plane[i])), "noise in the plane is the same alone");
        Require(IsSame(noise[i], Noise3({plane[i].x, plane[i].y, 0})), "noise in the plane is that in space");
        Require(IsSame(turbulence[i], Turbulence2(plane[i], octaves)), "turbulence in the plane is the same alone");
    }
    EvaluateNoise3(space, noise);
    EvaluateTurbulence3(space, octaves, turbulence);
    for (std::size_t i = 0; i < count; ++i)
    {
        Require(IsInRange(space[i], -0.0134F, noise[i], 1.0183F), "noise in space stays in its range");
        Require(IsSame(noise[i], Noise3(space[i])), "noise in space is the same alone");
        Require(IsSame(turbulence[i], Turbulence3(space[i], octaves)), "turbulence in space is the same alone");
        Require(octaves != 1 || IsSame(turbulence[i], noise[i]), "one octave is the noise");
    }
}

void Draw(Input& input)
{
    RNGenerator alone(input.Take<std::uint32_t>());
    RNGenerator together(alone);
    for (unsigned steps = input.Below(8); steps > 0; --steps)
    {
        std::size_t const count = input.Below(40);
        switch (input.Below(4))
        {
        case 0:
        {
            std::vector<float> numbers(count);
            GetFloats(together, numbers);
            for (float const number : numbers)
            {
                Require(IsIn(0, number, 1), "random numbers lie in [0, 1]");
                Require(IsSame(number, alone.GetFloat()), "random numbers are the same alone");
            }
            break;
        }
        case 1:
        {
            std::vector<tVector2<float>> vectors(count);
            GetVectors2D(together, vectors);
            for (auto const& vector : vectors)
                Require(IsSame(vector, alone.GetVector2D()), "random vectors in the plane are the same alone");
            break;
        }
        case 2:
        {
            std::vector<tVector3<float>> vectors(count);
            GetVectors3D(together, vectors);
            for (auto const& vector : vectors)
                Require(IsSame(vector, alone.GetVector3D()), "random vectors in space are the same alone");
            break;
        }
        default:
        {
            auto const seed = input.Take<std::uint32_t>();
            alone.SetSeed(seed);
            together.SetSeed(seed);
            break;
        }
        }
        Require(alone.GetInteger() == together.GetInteger(), "both forms draw as many numbers");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    Draw(input);
    Evaluate(input);
    return 0;
}
