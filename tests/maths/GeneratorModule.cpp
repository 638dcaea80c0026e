#include "GeneratorModule.h"

#include <new>

#include "bv/maths/RNGenerator.h"

extern "C" __attribute__((visibility("default"))) void ConstructInModule(void* memory, unsigned int seed)
{
    new (memory) bv::maths::RNGenerator(seed);
}
