#define BENCH_GLM_INTRINSICS
#include "Glm.cpp"
