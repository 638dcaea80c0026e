#include <algorithm>

#include "Maths/Kernels/Kernels.h"

namespace bv::maths
{

Kernels const& ChosenKernels() noexcept
{
    static Kernels const kernels =
        std::ranges::find_if(KernelSets(), [](KernelSet const& set) { return set.isSupported(); })->kernels();
    return kernels;
}

} // namespace bv::maths
