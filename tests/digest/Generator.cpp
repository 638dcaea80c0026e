#include <bv/maths/RNGenerator.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

void Generators(Digests& digests, Workload& work)
{
    for (unsigned int i = 0; i < 200; ++i)
    {
        unsigned int const seed = i < 8 ? i : i < 16 ? i * 32768U : static_cast<unsigned int>(work.Bits());
        RNGenerator generator(seed);
        for (int k = 0; k < 40; ++k)
        {
            digests["integers"].Add(generator.GetInteger());
            digests["floats"].Add(generator.GetFloat());
            digests["vectors"].Add(generator.GetVector2D());
            digests["vectors"].Add(generator.GetVector3D());
            auto const [number, integer] = generator.GetFloatAndInteger();
            digests["pairs"].Add(number, integer);
        }
        RNGenerator copy(generator);
        digests["copies"].Add(copy.GetInteger());
        digests["copies"].Add(generator.GetInteger());
        digests["seeds"].Add(generator.SetSeed(seed / 3).GetFloat());
        RNGenerator first;
        digests["seeds"].Add(first.GetInteger());
    }
}

} // namespace

void RunGenerators()
{
    Run("generator", Generators);
}

} // namespace digest
