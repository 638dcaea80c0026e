// The packets stand in their headers whole, and no code of theirs is in the library: what is compiled for a wider
// processor must not be reachable from code that is not. This file compiles them for the processor of the library.

#include "bv/maths/simd/SSERay.h"

#if BV_AVX || !BV_SSE2
#include "bv/maths/simd/AVXRay.h"
#endif
