// Included before everything else in the build that measures what the tests reach (-include): functions that are
// inlined by force are functions like others there, for the head of one that never stands by itself counts as never
// run. What is compiled for AVX keeps its own way, since the library holds no instances for it.
#ifndef __AVX__
#define always_inline noinline
#endif
