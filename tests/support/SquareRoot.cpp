// Expected values come from std::sqrt(double), which compilers without optimisation leave to the C library. That of
// MinGW-w64 computes in 80 bits and rounds twice; the processor rounds once.
#include <emmintrin.h>

extern "C" double sqrt(double x)
{
    return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(x)));
}
