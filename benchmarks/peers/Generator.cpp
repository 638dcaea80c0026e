#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include <pcg_random.hpp>

#include "Bench.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

struct Sample2D
{
    float x, y;
};

struct Sample3D
{
    float x, y, z;
};

/// The library's generator, as it was published, written plainly.
class Kiss
{
    std::uint32_t z = 362436069;
    std::uint32_t w = 521288629;
    std::uint32_t shift = 123456789;
    std::uint32_t congruential = 380116160;

public:
    std::uint32_t operator()()
    {
        z = 36969 * (z & 65535) + (z >> 16);
        w = 18000 * (w & 65535) + (w >> 16);
        shift ^= shift << 17;
        shift ^= shift >> 13;
        shift ^= shift << 5;
        congruential = 69069 * congruential + 1234567;
        return (((z << 16) + w) ^ congruential) + shift;
    }
};

/// Fills an array by draws from one generator.
template <typename Generator, typename Draw>
void AddDraws(std::string const& name, Draw draw)
{
    using Out = decltype(draw(std::declval<Generator&>()));
    auto const generator = std::make_shared<Generator>();
    std::shared_ptr<Out[]> const out(new Out[COUNT]());
    AddRun("generator/" + name, COUNT,
           [=]
           {
               Generator& source = *generator;
               Out* const results = out.get();
               benchmark::DoNotOptimize(results);
               for (std::size_t i = 0; i < COUNT; ++i)
                   results[i] = draw(source);
           });
}

/// The rows of one generator, and of one way to make its integers floats.
template <typename Generator, typename ToFloat>
void AddFloats(std::string const& library, ToFloat toFloat)
{
    AddDraws<Generator>("floats/float/" + library, toFloat);
    AddDraws<Generator>("2D samples/float/" + library,
                        [=](Generator& source) {
                            return Sample2D{toFloat(source), toFloat(source)};
                        });
    AddDraws<Generator>("3D samples/float/" + library,
                        [=](Generator& source) {
                            return Sample3D{toFloat(source), toFloat(source), toFloat(source)};
                        });
}

template <typename Generator>
void AddAll(std::string const& library)
{
    AddDraws<Generator>("integers/32 bit/" + library,
                        [](Generator& source) { return static_cast<std::uint32_t>(source()); });
    AddFloats<Generator>(library + " uniform_real_distribution",
                         [](Generator& source) { return std::uniform_real_distribution<float>()(source); });
    AddFloats<Generator>(library + " generate_canonical",
                         [](Generator& source) { return std::generate_canonical<float, 24>(source); });
}

} // namespace

void AddGenerator()
{
    AddAll<std::mt19937>("mt19937");
    AddAll<std::minstd_rand>("minstd_rand");
    AddAll<pcg32>("pcg32");
    AddFloats<pcg32>("pcg32 ldexp", [](pcg32& source) { return std::ldexp(static_cast<float>(source() >> 8), -24); });
    AddFloats<pcg32>("pcg32 product", [](pcg32& source) { return static_cast<float>(source() >> 8) * 0x1p-24F; });
    AddDraws<Kiss>("integers/32 bit/hand-written", [](Kiss& source) { return source(); });
    AddFloats<Kiss>("hand-written", [](Kiss& source) { return static_cast<float>(source() >> 9) * 0x1p-23F; });
}

} // namespace bench::peers
