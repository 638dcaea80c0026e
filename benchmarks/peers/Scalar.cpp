#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include <Imath/ImathFun.h>
#include <Imath/ImathMath.h>
#include <cglm/cglm.h>

#include "ScalarData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

/// The comparison that B. Dawson, "Comparing Floating Point Numbers", 2012, advises: near in absolute terms, or few
/// representable values apart.
template <typename T>
bool AlmostEqual(T a, T b)
{
    using Bits = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
    if (std::abs(a - b) < 10 * std::numeric_limits<T>::epsilon())
        return true;
    if (std::signbit(a) != std::signbit(b))
        return false;
    return std::abs(std::bit_cast<Bits>(a) - std::bit_cast<Bits>(b)) <= 50;
}

template <typename T, typename Equal>
void AddComparison(char const* library, Equal equal)
{
    for (auto const& [kind, text] : PAIRS)
    {
        auto const [a, b] = MakePairs<T>(kind);
        AddMap(Name<T>(std::string("scalar/IsEqual, ") + text, library), equal, a, b);
        AddFold(
            Name<T>(std::string("scalar/count IsEqual, ") + text, library), std::size_t{0},
            [=](std::size_t count, T x, T y) { return equal(x, y) ? count + 1 : count; }, a, b);
    }
}

template <typename T>
T Clamped(T low, T high, T x)
{
    T const t = (x - low) / (high - low);
    return t < 0 ? 0 : t > 1 ? 1 : t;
}

template <typename T>
void AddReals()
{
    AddComparison<T>("hand-written", [](T a, T b) { return AlmostEqual(a, b); });
    AddComparison<T>("Imath",
                     [](T a, T b)
                     {
                         return Imath::equalWithAbsError(a, b, 10 * std::numeric_limits<T>::epsilon()) ||
                                Imath::equalWithRelError(a, b, 50 * std::numeric_limits<T>::epsilon());
                     });

    StepArguments<T> const steps;
    AddMap(
        Name<T>("scalar/CubicSmoothStep", "hand-written"),
        [](T low, T high, T x)
        {
            T const t = Clamped(low, high, x);
            return t * t * (3 - 2 * t);
        },
        steps.low, steps.high, steps.value);
    AddMap(
        Name<T>("scalar/QuinticSmoothStep", "hand-written"),
        [](T low, T high, T x)
        {
            T const t = Clamped(low, high, x);
            return t * t * t * (t * (t * 6 - 15) + 10);
        },
        steps.low, steps.high, steps.value);
    AddMap(
        Name<T>("scalar/SmoothStep", "hand-written"),
        [](T low, T high, T x)
        {
            T const t = Clamped(low, high, x);
            return t < T(0.5) ? 2 * t * t : 1 - 2 * (1 - t) * (1 - t);
        },
        steps.low, steps.high, steps.value);
    AddMap(
        Name<T>("scalar/SawTooth", "std"),
        [](T x, T period)
        {
            T const remainder = std::fmod(x, period);
            return x < 0 ? remainder + period : remainder;
        },
        steps.value, steps.high);
}

} // namespace

void AddScalar()
{
    AddReals<float>();
    AddReals<double>();
    StepArguments<float> const steps;
    AddMap(
        Name<float>("scalar/CubicSmoothStep", "cglm"),
        [](float low, float high, float x) { return glm_smoothstep(low, high, x); }, steps.low, steps.high,
        steps.value);

    auto const integers = Integers();
    AddMap(
        "scalar/IntLog2/integer/std",
        [](unsigned int value) { return static_cast<unsigned char>(std::bit_width(value - 1)); }, integers);
    AddMap(
        "scalar/IntSqrt/integer/std",
        [](unsigned int value) { return static_cast<unsigned short>(std::sqrt(static_cast<double>(value))); },
        integers);
    AddMap(
        "scalar/RoundUpToPO2/integer/std", [](unsigned int value) { return std::bit_ceil(value); }, integers);
    AddMap(
        "scalar/RoundToNearestPO2/integer/hand-written",
        [](unsigned int value)
        {
            unsigned int const up = std::bit_ceil(value), down = up >> 1;
            return up - value <= value - down ? up : down;
        },
        integers);
}

} // namespace bench::peers
