// Two numbers, and the two tests of IsEqual().

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include "bv/maths/IsEqual.h"

namespace live
{

namespace
{

using emscripten::val;

template <typename T>
using Bits = std::conditional_t<sizeof(T) == sizeof(float), std::uint32_t, std::uint64_t>;

template <typename T>
Bits<T> GetBits(T number)
{
    return __builtin_bit_cast(Bits<T>, number);
}

/// The number of a pattern among all, which ascends with the value; the two zeros share one.
template <typename T>
Bits<T> GetPlace(T number)
{
    constexpr Bits<T> SIGN = Bits<T>{1} << (8 * sizeof(T) - 1);
    Bits<T> const bits = GetBits(number);
    return (bits & SIGN) != 0 ? SIGN - (bits & ~SIGN) : SIGN + bits;
}

std::string ToHexadecimal(std::uint64_t bits, unsigned digits)
{
    std::string text(digits, '0');
    for (; digits > 0; bits >>= 4)
        text[--digits] = "0123456789ABCDEF"[bits & 15];
    return "0x" + text;
}

template <typename T>
val Compare(T a, T b)
{
    constexpr Bits<T> MOST_STEPS = 50;
    Bits<T> const difference = GetPlace(a) - GetPlace(b);
    Bits<T> const steps = GetPlace(a) < GetPlace(b) ? Bits<T>{0} - difference : difference;
    T const distance = std::abs(a - b);
    val comparison = val::object();
    comparison.set("bitsOfA", ToHexadecimal(GetBits(a), 2 * sizeof(T)));
    comparison.set("bitsOfB", ToHexadecimal(GetBits(b), 2 * sizeof(T)));
    comparison.set("steps", std::to_string(steps));
    comparison.set("areFewSteps", difference + MOST_STEPS <= 2 * MOST_STEPS);
    comparison.set("distance", static_cast<double>(distance));
    comparison.set("isSmallDistance", distance < bv::maths::TOLERANCE<T>);
    comparison.set("areEqual", bv::maths::IsEqual(a, b));
    return comparison;
}

val CompareFloats(double a, double b)
{
    return Compare(static_cast<float>(a), static_cast<float>(b));
}

val CompareDoubles(double a, double b)
{
    return Compare(a, b);
}

double GetNextFloat(double number, bool isUp)
{
    float const infinity = std::numeric_limits<float>::infinity();
    return static_cast<double>(std::nextafter(static_cast<float>(number), isUp ? infinity : -infinity));
}

double GetNextDouble(double number, bool isUp)
{
    double const infinity = std::numeric_limits<double>::infinity();
    return std::nextafter(number, isUp ? infinity : -infinity);
}

} // namespace

} // namespace live

EMSCRIPTEN_BINDINGS(comparison)
{
    emscripten::function("compareFloats", &live::CompareFloats);
    emscripten::function("compareDoubles", &live::CompareDoubles);
    emscripten::function("getNextFloat", &live::GetNextFloat);
    emscripten::function("getNextDouble", &live::GetNextDouble);
}
