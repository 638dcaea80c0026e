#include <bv/maths/RNGenerator.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

void Generators(Digest& digest, Workload& work)
{
    for (unsigned int i = 0; i < 200; ++i)
    {
        unsigned int const seed = i < 8 ? i : i < 16 ? i * 32768U : static_cast<unsigned int>(work.Bits());
        RNGenerator generator(seed);
        for (int k = 0; k < 40; ++k)
        {
            digest.Add(generator.GetInteger());
            digest.Add(generator.GetFloat());
            digest.Add(generator.GetVector2D());
            digest.Add(generator.GetVector3D());
            auto const [number, integer] = generator.GetFloatAndInteger();
            digest.Add(number, integer);
        }
        RNGenerator copy(generator);
        digest.Add(copy.GetInteger());
        digest.Add(generator.GetInteger());
        digest.Add(generator.SetSeed(seed / 3).GetFloat());
        RNGenerator first;
        digest.Add(first.GetInteger());
    }
}

} // namespace

void RunGenerators()
{
    Run("generator", Generators);
}

} // namespace digest
