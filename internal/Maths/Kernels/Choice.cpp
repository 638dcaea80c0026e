// The only code that asks what processor this is.

#include "Maths/Kernels/Kernels.h"
#include "bv/detail/Platform.h"

namespace bv::maths
{

namespace
{

#if BV_GNU && defined __x86_64__
[[nodiscard]] bool HasAvx2() noexcept
{
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}

[[nodiscard]] bool HasAvx512() noexcept
{
    return HasAvx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512vbmi");
}
#endif

constexpr KernelSet SETS[] = {
#if BV_GNU && defined __x86_64__
    {"AVX-512", HasAvx512, Avx512Kernels},
    {"AVX2", HasAvx2, Avx2Kernels},
#endif
    {"baseline", []() noexcept { return true; }, BaselineKernels},
};

} // namespace

std::span<KernelSet const> KernelSets() noexcept
{
    return SETS;
}

} // namespace bv::maths
