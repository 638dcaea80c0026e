#include <algorithm>

#include "Maths/Kernels/Kernels.h"

namespace bv::maths
{

Kernels const& ChosenKernels() noexcept
{
    static Kernels const kernels = []
    {
        auto const sets = KernelSets();
        return std::find_if(sets.begin(), sets.end(), [](KernelSet const& set) { return set.isSupported(); })
            ->kernels();
    }();
    return kernels;
}

} // namespace bv::maths
