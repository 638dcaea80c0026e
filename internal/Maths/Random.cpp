// A generator keeps pointers to its own functions. They lead here, whatever module it was constructed in.

#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/RNGenerator.h"
