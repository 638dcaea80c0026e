// Has the batch forms of this program use the loops that an environment variable names, whatever the processor.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Maths/Kernels/Kernels.h"

namespace bv::maths
{

namespace
{

constexpr int SKIPPED = 77;

[[nodiscard]] Kernels FindKernels()
{
    char const* const name = std::getenv("BV_TEST_KERNELS");
    for (KernelSet const& set : KernelSets())
        if (name != nullptr && std::strcmp(set.name, name) == 0)
        {
            if (set.isSupported())
                return set.kernels();
            std::printf("This processor has no %s.\n", name);
            std::exit(SKIPPED);
        }
    std::printf("BV_TEST_KERNELS names no set of loops.\n");
    std::exit(EXIT_FAILURE);
}

} // namespace

Kernels const& ChosenKernels() noexcept
{
    static Kernels const kernels = FindKernels();
    return kernels;
}

} // namespace bv::maths
