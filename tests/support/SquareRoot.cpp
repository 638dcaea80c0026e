// Expected values come from std::sqrt, which compilers without optimisation leave to the C library. That of MinGW-w64
// computes the root of a double in 80 bits and rounds twice, and raises no flag for that of a negative float. The
// processor does both right.
#include <emmintrin.h>

extern "C" double sqrt(double x)
{
    return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(x)));
}

extern "C" float sqrtf(float x)
{
    return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(x)));
}
