#include "GeneratorModule.h"

#include <cstddef>
#include <cstring>
#include <new>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "bv/maths/RNGenerator.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::RNGenerator;
using bv::test::ExpectSameBits;

/// A generator that a module of the program constructed, which is unloaded by now.
class OrphanedGenerator
{
    alignas(RNGenerator) std::byte memory[sizeof(RNGenerator)] = {};

public:
    OrphanedGenerator(char const* path, unsigned int seed)
    {
        void* const module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr)
        {
            ADD_FAILURE() << dlerror();
            return;
        }
        auto const construct = reinterpret_cast<ConstructingFunction>(dlsym(module, CONSTRUCT_IN_MODULE));
        construct(memory, seed);
        dlclose(module);
        EXPECT_EQ(dlopen(path, RTLD_NOW | RTLD_NOLOAD), nullptr); // or the test would tell nothing
    }

    RNGenerator& operator*() { return *std::launder(reinterpret_cast<RNGenerator*>(memory)); }
};

/// The modules are compiled without and with optimisation.
class GeneratorModuleTest : public testing::TestWithParam<char const*>
{
};

INSTANTIATE_TEST_SUITE_P(Modules, GeneratorModuleTest, testing::Values(BV_GENERATOR_MODULE_O0, BV_GENERATOR_MODULE_O2));

TEST_P(GeneratorModuleTest, AGeneratorSurvivesTheModuleThatConstructedIt)
{
    OrphanedGenerator orphan(GetParam(), 12345);
    RNGenerator own(12345);
    ExpectSameBits((*orphan).GetVector2D(), own.GetVector2D());
    ExpectSameBits((*orphan).GetVector3D(), own.GetVector3D());
    EXPECT_EQ((*orphan).GetFloatAndInteger(), own.GetFloatAndInteger());
}

TEST_P(GeneratorModuleTest, AGeneratorPointsIntoTheLibraryWhereverItIsConstructed)
{
    OrphanedGenerator orphan(GetParam(), 12345);
    RNGenerator const own(12345);
    EXPECT_EQ(std::memcmp(&*orphan, &own, sizeof(own)), 0);
}

TEST_P(GeneratorModuleTest, ACopyOfAGeneratorSurvivesToo)
{
    RNGenerator copy = *OrphanedGenerator(GetParam(), 7);
    RNGenerator own(7);
    ExpectSameBits(copy.GetVector3D(), own.GetVector3D());
    ExpectSameBits(copy.GetVector2D(), own.GetVector2D());
    EXPECT_EQ(copy.GetFloatAndInteger(), own.GetFloatAndInteger());
}

} // namespace
