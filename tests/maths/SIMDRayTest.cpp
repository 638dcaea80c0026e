// Packets of four rays. This file is built at several levels of optimisation: which operand of min and max wins when
// one is NaN is a promise that no compiler may break by exchanging them.

#include "bv/maths/simd/SSERay.h"

#include <gtest/gtest.h>

namespace bv::test
{

using PacketTypes = testing::Types<maths::simd::SSERay>;

} // namespace bv::test

#include "maths/RayPacketTests.h"

#include "maths/PacketTriangleTests.h"

static_assert(bv::maths::simd::SSERay::WIDTH == 4);
