#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/Assert.h"
