// Packets of eight rays, and those of four in code compiled for AVX. See SIMDRayTest.cpp.

#include "bv/maths/simd/AVXRay.h"
#include "bv/maths/simd/SSERay.h"

#include <gtest/gtest.h>

namespace bv::test
{

using PacketTypes = testing::Types<maths::simd::AVXRay, maths::simd::SSERay>;

} // namespace bv::test

#include "maths/RayPacketTests.h"

#include "maths/PacketTriangleTests.h"

static_assert(bv::maths::simd::AVXRay::WIDTH == 8);
