#include "bv/maths/Reciprocal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::_mm_rcp_nr;
using bv::maths::_mm_rsqrt_nr;
using bv::maths::simd::FourFloats;
using namespace bv::test;

using Lanes = std::array<float, 4>;

FourFloats Packed(Lanes const& lanes)
{
    return FourFloats{lanes[0], lanes[1], lanes[2], lanes[3]};
}

Lanes Unpacked(FourFloats const& value)
{
    Lanes lanes;
    std::memcpy(lanes.data(), &value, sizeof value);
    return lanes;
}

/// What the processor knows of a reciprocal, or the quotient.
FourFloats Estimate(FourFloats const& value)
{
#if BV_SSE2
    return _mm_rcp_ps(value);
#else
    return 1.0f / value;
#endif
}

/// The same of the reciprocal of a root.
FourFloats RootEstimate(FourFloats const& value)
{
#if BV_SSE2
    return _mm_rsqrt_ps(value);
#else
    Lanes const lanes = Unpacked(value);
    return 1.0f / Packed({std::sqrt(lanes[0]), std::sqrt(lanes[1]), std::sqrt(lanes[2]), std::sqrt(lanes[3])});
#endif
}

Lanes Reciprocal(Lanes const& a)
{
    return Unpacked(_mm_rcp_nr(Packed(a)));
}
Lanes ReciprocalRoot(Lanes const& a)
{
    return Unpacked(_mm_rsqrt_nr(Packed(a)));
}

static_assert(noexcept(_mm_rcp_nr(FourFloats{})) && noexcept(_mm_rsqrt_nr(FourFloats{})));
static_assert(sizeof(_mm_rcp_nr(FourFloats{})) == 16 && sizeof(_mm_rsqrt_nr(FourFloats{})) == 16);

/// Fills four lanes at a time with floats whose patterns are spread over a range, and runs a check on them.
template <typename Check>
void ForManyFloats(float lowest, float highest, Check check)
{
    auto const first = std::bit_cast<std::uint32_t>(lowest);
    auto const last = std::bit_cast<std::uint32_t>(highest);
    Random random(4711);
    for (int i = 0; i < 100000; ++i)
    {
        Lanes lanes;
        for (float& lane : lanes)
            lane = std::bit_cast<float>(first + random() % (last - first + 1));
        check(lanes);
    }
    check(Lanes{lowest, highest, lowest, highest});
}

// The estimates are good to 1.5 * 2^-12. One step squares that error, to 2.25 * 2^-24, and has three roundings of at
// most 2^-24 each; for the root it is one and a half times the square, and four roundings.
constexpr double RECIPROCAL_BOUND = 6 * 0x1p-24;
constexpr double ROOT_BOUND = 8 * 0x1p-24;

TEST(ReciprocalTest, ReciprocalIsGoodToSixParts)
{
    double worst = 0;
    for (float const sign : {1.0f, -1.0f})
        ForManyFloats(0x1p-126f, 0x1p125f,
                      [&](Lanes lanes)
                      {
                          for (float& lane : lanes)
                              lane *= sign;
                          Lanes const results = Reciprocal(lanes);
                          for (std::size_t i = 0; i < 4; ++i)
                          {
                              double const product = static_cast<double>(lanes[i]) * static_cast<double>(results[i]);
                              worst = std::max(worst, std::abs(product - 1));
                          }
                      });
    EXPECT_LT(worst, RECIPROCAL_BOUND);
}

TEST(ReciprocalTest, ReciprocalRootIsGoodToEightParts)
{
    double worst = 0;
    ForManyFloats(0x1p-126f, LARGEST<float>,
                  [&](Lanes const& lanes)
                  {
                      Lanes const results = ReciprocalRoot(lanes);
                      for (std::size_t i = 0; i < 4; ++i)
                      {
                          double const root = std::sqrt(static_cast<double>(lanes[i]));
                          worst = std::max(worst, std::abs(root * static_cast<double>(results[i]) - 1));
                      }
                  });
    EXPECT_LT(worst, ROOT_BOUND);
}

TEST(ReciprocalTest, OneStepRefinesTheEstimateInTheStatedOrder)
{
    // The same formulas lane by lane in plain floats, from the same estimates; every float, subnormals included.
    ForManyFloats(0.0f, INF<float>,
                  [](Lanes const& lanes)
                  {
                      Lanes const estimates = Unpacked(Estimate(Packed(lanes)));
                      Lanes const rootEstimates = Unpacked(RootEstimate(Packed(lanes)));
                      Lanes const results = Reciprocal(lanes);
                      Lanes const rootResults = ReciprocalRoot(lanes);
                      for (std::size_t i = 0; i < 4; ++i)
                      {
                          float const a = lanes[i];
                          float const r = estimates[i];
                          float const product = a * r;
                          ExpectSameBits(results[i], r * (2.0f - product));
                          float const q = rootEstimates[i];
                          float const once = a * q;
                          float const twice = once * q;
                          float const rest = 3.0f - twice;
                          float const scaled = rest * q;
                          ExpectSameBits(rootResults[i], scaled * 0.5f);
                      }
                  });
}

TEST(ReciprocalTest, LanesDoNotTouchEachOther)
{
    Lanes const values{2.0f, 0.3f, 700.0f, 1e-5f};
    Lanes const results = Reciprocal(values);
    Lanes const rootResults = ReciprocalRoot(values);
    for (std::size_t lane = 0; lane < 4; ++lane)
        for (std::size_t place = 0; place < 4; ++place)
        {
            Lanes others{QUIET_NAN<float>, 0.0f, INF<float>, -1.0f};
            others[place] = values[lane];
            ExpectSameBits(Reciprocal(others)[place], results[lane]);
            ExpectSameBits(ReciprocalRoot(others)[place], rootResults[lane]);
        }
}

TEST(ReciprocalTest, ReciprocalOfZeroInfinityAndNaNIsNaN)
{
    // The estimate of zero is infinity and that of infinity is zero; the step multiplies the two.
    for (float const value : {0.0f, -0.0f, INF<float>, -INF<float>, QUIET_NAN<float>})
        for (float const result : Reciprocal({value, value, value, value}))
            EXPECT_TRUE(std::isnan(result)) << value;
}

TEST(ReciprocalTest, ReciprocalRootOfZeroInfinityNaNAndNegativeValuesIsNaN)
{
    for (float const value : {0.0f, -0.0f, INF<float>, -INF<float>, QUIET_NAN<float>, -1.0f, -4.0f})
        for (float const result : ReciprocalRoot({value, value, value, value}))
            EXPECT_TRUE(std::isnan(result)) << value;
}

TEST(ReciprocalTest, TheArgumentMayBeTheResult)
{
    Lanes const values{2.0f, 4.0f, 8.0f, 16.0f};
    FourFloats packed = Packed(values);
    packed = _mm_rcp_nr(packed);
    EXPECT_EQ(Unpacked(packed), Reciprocal(values));
    packed = Packed(values);
    packed = _mm_rsqrt_nr(packed);
    EXPECT_EQ(Unpacked(packed), ReciprocalRoot(values));
}

} // namespace
