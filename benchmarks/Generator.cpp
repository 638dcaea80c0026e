#include <memory>

#include "Bench.h"
#include "Topics.h"
#include "bv/maths/RNGenerator.h"

namespace bench
{

namespace
{

using bv::maths::RNGenerator;

/// Fills an array by draws from one generator.
template <typename Draw>
void AddDraws(char const* name, Draw draw)
{
    using Out = decltype(draw(std::declval<RNGenerator&>()));
    auto const generator = std::make_shared<RNGenerator>(1);
    std::shared_ptr<Out[]> const out(new Out[COUNT]());
    AddRun(std::string("generator/") + name + "/BvBaseUtils", COUNT,
           [=]
           {
               RNGenerator& source = *generator;
               Out* const results = out.get();
               benchmark::DoNotOptimize(results);
               for (std::size_t i = 0; i < COUNT; ++i)
                   results[i] = draw(source);
           });
}

} // namespace

void AddGenerator()
{
    AddDraws("integers/32 bit", [](RNGenerator& source) { return source.GetInteger(); });
    AddDraws("floats/float", [](RNGenerator& source) { return source.GetFloat(); });
    AddDraws("2D samples/float", [](RNGenerator& source) { return source.GetVector2D(); });
    AddDraws("3D samples/float", [](RNGenerator& source) { return source.GetVector3D(); });
}

} // namespace bench
