// Functions of numbers, beside slow and obvious forms of them.

#include <cmath>
#include <limits>

#include "Fuzz.h"
#include "bv/Hash.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/Integer.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/Scalar.h"
#include "bv/maths/Sequences.h"

using namespace bv;
using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

void Integers(unsigned value)
{
    unsigned logarithm = 0;
    while (logarithm < 32 && (std::uint64_t{1} << logarithm) < value)
        ++logarithm;
    try
    {
        Require(IntLog2(value) == logarithm && value != 0, "a logarithm is the first power that reaches the value");
    }
    catch (bv::InvalidArgumentException const&)
    {
        Require(value == 0, "only 0 has no logarithm");
    }
    std::uint64_t const root = IntSqrt(value);
    Require(root * root <= value && (root + 1) * (root + 1) > value, "a root is rounded down");
    std::uint64_t const above = value == 0 ? 0 : std::uint64_t{1} << logarithm;
    Require(RoundUpToPO2(value) == static_cast<unsigned>(above), "the power of two above");
    std::uint64_t const below = above == value ? above : above / 2;
    std::uint64_t const nearest = above - value <= value - below ? above : below; // a tie goes up
    Require(RoundToNearestPO2(value) == static_cast<unsigned>(nearest), "the nearest power of two");
}

/// Steps from 0 to a number, as an integer that wraps around.
template <typename T>
test::Pattern<T> Place(T number)
{
    constexpr test::Pattern<T> SIGN = test::Pattern<T>{1} << (8 * sizeof(T) - 1);
    test::Pattern<T> const bits = test::Bits(number);
    return (bits & SIGN) != 0 ? static_cast<test::Pattern<T>>(SIGN - bits) : bits;
}

template <typename T>
void Reals(Input& input)
{
    T const a = input.Number<T>();
    T const b = input.Number<T>();
    T const c = input.Number<T>();
    test::Pattern<T> const steps = Place(a) - Place(b);
    test::Pattern<T> const back = Place(b) - Place(a);
    T const tolerance = 10 * std::numeric_limits<T>::epsilon();
    bool const isEqual = steps <= 50 || back <= 50 || (a - b) * (a - b) < tolerance * tolerance;
    Require(IsEqual(a, b) == isEqual, "numbers are equal within 50 steps or the tolerance");
    Require(IsEqual(b, a) == isEqual, "numbers are equal to each other");

    for (T const step : {SmoothStep(a, b, c), CubicSmoothStep(a, b, c), QuinticSmoothStep(a, b, c)})
    {
        Require(!(a >= c) || step == 0, "a step begins with 0");
        Require(a >= c || !(c >= b) || step == 1, "a step ends with 1");
        // Each curve rises, but rounding may go past an end by a few steps.
        T const slack = 16 * std::numeric_limits<T>::epsilon();
        Require(!(a < c && c < b) || !std::isfinite(b - a) || (step >= -slack && step <= 1 + slack),
                "a step lies between 0 and 1");
    }
    T const remainder = std::fmod(a, b);
    Require(IsSame(SawTooth(a, b), a >= 0 ? remainder : remainder + b), "a saw tooth is the remainder of its period");
}

template <typename T>
void Sequences(Input& input)
{
    auto const index = input.Take<std::uint32_t>();
    auto const seed = input.Take<std::uint32_t>();
    for (unsigned dimension = 0; dimension < 4; ++dimension)
        for (T const x :
             {GetHalton<T>(index, dimension), GetSobol<T>(index, dimension), GetOwenSobol<T>(index, dimension, seed)})
            Require(x >= 0 && x < 1, "points lie in [0, 1)");
    auto const point = GetR2Point<T>(std::uint64_t{index} << 32 | seed);
    Require(point.x >= 0 && point.x < 1 && point.y >= 0 && point.y < 1, "points of R2 lie in [0, 1)");
    Require(GetShuffledIndex(index, seed) != GetShuffledIndex(index ^ 1, seed), "a shuffle keeps indices apart");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    auto const value = input.Take<std::uint32_t>();
    Integers(value);
    Integers(value >> input.Below(32));
    Reals<float>(input);
    Reals<double>(input);
    Sequences<float>(input);
    Sequences<double>(input);

    float const x = input.Number<float>();
    float const precision = std::ldexp(1.0F, -static_cast<int>(input.Below(20)));
    float const logarithm = Log2(x, precision);
    if (x > 0 && std::isfinite(x))
        Require(std::abs(static_cast<double>(logarithm) - std::log2(static_cast<double>(x))) <=
                    static_cast<double>(precision) + 1e-3,
                "a logarithm is as exact as it was asked for");
    else
        Require(std::isinf(logarithm) == true && (logarithm > 0) == (x > 0), "what has no logarithm is infinite");

    // The hash by pieces is the hash of no less than all: another last byte gives another value.
    std::string bytes = input.Rest();
    unsigned const hash = bv::GetJenkinsHash(bytes.data(), bytes.size(), value);
    unsigned char const small = bv::GetPearsonHash(bytes.data(), bytes.size(), 7);
    if (!bytes.empty())
    {
        bytes.back() = static_cast<char>(bytes.back() ^ 1);
        Require(bv::GetPearsonHash(bytes.data(), bytes.size(), 7) != small,
                "a table of its own values tells bytes apart");
        Require(bv::GetJenkinsHash(bytes.data(), bytes.size(), value) != hash, "one byte changes the hash");
    }
    return 0;
}
