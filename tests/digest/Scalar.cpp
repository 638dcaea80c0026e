#include <cstring>

#include <bv/maths/Integer.h>
#include <bv/maths/Reciprocal.h>
#include <bv/maths/Scalar.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void Scalars(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            T const low = work.Number<T>(rarity);
            T const high = work.Number<T>(rarity);
            T const x =
                work.OneIn(2) ? low + (high - low) * (work.Plain<T>() / T{20} + T{0.5}) : work.Number<T>(rarity);
            digests["smooth-steps"].Add(CubicSmoothStep(low, high, x), QuinticSmoothStep(low, high, x),
                                        SmoothStep(low, high, x));
            digests["saw-tooth"].Add(SawTooth(x, high));
        }
}

void Logarithms(Digest& digest, Workload& work)
{
    constexpr float PRECISIONS[] = {2.0F, 1.0F, 0.5F, 0.3F, 1e-3F, 1e-6F};
    for (int i = 0; i < 3000; ++i)
    {
        float const x = work.OneIn(2) ? work.Wide<float>() : work.Number<float>(4);
        digest.Add(Log2(x, PRECISIONS[work.Below(6)]));
    }
}

void Integers(Digests& digests, Workload& work)
{
    auto const add = [&](unsigned int value)
    {
        digests["logarithm"].Try([=] { return IntLog2(value); });
        digests["square-root"].Add(IntSqrt(value));
        digests["powers-of-two"].Add(RoundUpToPO2(value), RoundToNearestPO2(value));
    };
    for (unsigned int value = 0; value < 2000; ++value)
        add(value);
    for (unsigned int bit = 0; bit < 32; ++bit)
        for (unsigned int step = 0; step < 5; ++step)
            add((1U << bit) + step - 2);
    for (unsigned int i = 0; i < 3000; ++i)
        add(static_cast<unsigned int>(work.Bits()) >> work.Below(32));
}

void Reciprocals(Digest& digest, Workload& work)
{
    for (int i = 0; i < 4000; ++i)
    {
        float values[4];
        for (float& value : values)
            value = work.Number<float>(8);
        simd::FourFloats lanes;
        std::memcpy(&lanes, values, sizeof lanes);
        simd::FourFloats const results[] = {_mm_rcp_nr(lanes), _mm_rsqrt_nr(lanes)};
        for (simd::FourFloats const& result : results)
        {
            std::memcpy(values, &result, sizeof result);
            digest.Add(values[0], values[1], values[2], values[3]);
        }
    }
}

} // namespace

void RunScalars()
{
    RunBoth("scalars", Scalars<float>, Scalars<double>);
    Run("logarithms", Logarithms, ".float");
    Run("integers", Integers);
}

void RunReciprocals()
{
    Run("machine-dependent.reciprocals", Reciprocals, ".float");
}

} // namespace digest
