#pragma once

/// @file
/// Floating-point exceptions, as <cfenv> means the word: the flags that arithmetic leaves behind.

#include <cfenv>
#include <cmath>
#include <string>

namespace bv::test
{

#if !defined FE_INVALID // as in WebAssembly, where no flag is ever raised
inline constexpr int FE_INVALID = 0;
inline constexpr int FE_DIVBYZERO = 0;
inline constexpr int FE_OVERFLOW = 0;
#endif

/// Those that a program may turn into traps.
inline constexpr int TRAPS = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW;

/// Makes the compiler forget what it knows of a value, and when it could be computed.
template <typename T>
void Hide(T& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// The flags that a computation raises, out of TRAPS. Its operands lie in memory and its results are looked at there,
/// so that no compiler moves a part of it out of between.
template <typename Computation>
[[gnu::noinline]] int Raised(Computation const& computation)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    asm volatile("" : : : "memory");
    auto result = computation();
    Hide(result);
    return std::fetestexcept(TRAPS);
}

/// Such as "FE_INVALID FE_OVERFLOW".
[[nodiscard]] inline std::string NameOfFlags(int flags)
{
    std::string name;
    if ((flags & FE_INVALID) != 0)
        name += " FE_INVALID";
    if ((flags & FE_DIVBYZERO) != 0)
        name += " FE_DIVBYZERO";
    if ((flags & FE_OVERFLOW) != 0)
        name += " FE_OVERFLOW";
    return name.empty() ? "none" : name.substr(1);
}

/// A number whose every operation is made at run time, at its place and on its own, as it is written: nothing is
/// computed ahead, left out, or several at a time.
template <typename T>
class PlainNumber
{
    T value;

public:
    PlainNumber(T number) : value{number} {}

    [[nodiscard]] T Get() const { return value; }

    friend PlainNumber operator+(PlainNumber a, PlainNumber b)
    {
        return Apply(a, b, [](T x, T y) { return x + y; });
    }
    friend PlainNumber operator-(PlainNumber a, PlainNumber b)
    {
        return Apply(a, b, [](T x, T y) { return x - y; });
    }
    friend PlainNumber operator*(PlainNumber a, PlainNumber b)
    {
        return Apply(a, b, [](T x, T y) { return x * y; });
    }
    friend PlainNumber operator/(PlainNumber a, PlainNumber b)
    {
        return Apply(a, b, [](T x, T y) { return x / y; });
    }
    friend PlainNumber Root(PlainNumber a)
    {
        return Apply(a, a, [](T x, T) { return std::sqrt(x); });
    }
    friend bool operator<(PlainNumber a, PlainNumber b) { return a.value < b.value; }
    friend bool operator>(PlainNumber a, PlainNumber b) { return a.value > b.value; }
    friend bool operator<=(PlainNumber a, PlainNumber b) { return a.value <= b.value; }
    friend bool operator>=(PlainNumber a, PlainNumber b) { return a.value >= b.value; }

private:
    template <typename Operation>
    static PlainNumber Apply(PlainNumber a, PlainNumber b, Operation operation)
    {
        Hide(a);
        Hide(b);
        T volatile result = operation(a.value, b.value);
        return PlainNumber(result);
    }
};

} // namespace bv::test
