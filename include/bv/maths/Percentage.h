#pragma once

/// @file
/// An exact fraction for progress and proportions.

#include <concepts>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/Forward.h"
#include "bv/maths/detail/Place.h"

namespace bv::maths
{

namespace detail
{

/// A Percentage, constant or not.
template <typename P>
concept AnyPercentage = std::same_as<std::remove_cvref_t<P>, Percentage>;

/// The integers that an `unsigned int` can take up, modulo 2^32.
template <typename N>
concept IntegerUpTo32Bits = std::integral<N> && sizeof(N) <= sizeof(unsigned int);

/// The integers that it cannot.
template <typename N>
concept LongerInteger = std::integral<N> && sizeof(N) > sizeof(unsigned int);

} // namespace detail

/// Exact non-negative fraction in lowest terms, for progress and proportions that are combined many times without
/// drifting.
///
/// 0/0 means zero; it is the default value and the result of every product with zero. Where an operation would have to
/// reduce 0/0 it throws, and the value stays what it was before. Products are formed in 64 bits and wrap unnoticed.
///
/// An integer of at most 32 bits on the right of `+`, `*` and `/` is taken as an `unsigned int`, and the result is a
/// fraction; a longer one does not compile. The constructors and the forms in place convert any integer to `unsigned
/// int`, a longer one modulo 2^32. All other arithmetic with numbers goes through the conversion to `float`: with p =
/// 1/3, `p * 100` is the fraction 100/3, while `p * 100.0f` and `100 * p` are of type `float`. So do comparisons, of
/// two fractions, too: those that `float` cannot tell apart are equal. Compare the fields to tell all apart.
class BV_API Percentage
{
    unsigned long long numerator;
    unsigned long long denominator;

public:
    /// @name Construction
    /// @{
    /// 0/0, which means zero.
    [[gnu::always_inline]] BV_INLINE constexpr Percentage() noexcept : numerator{0}, denominator{0} {}
    /// n/1.
    [[gnu::always_inline]] BV_INLINE constexpr Percentage(unsigned int n) noexcept : numerator{n}, denominator{1} {}
    /// n/d in lowest terms, so n/0 gives 1/0.
    /// @throws DivideByZeroException for 0/0.
    [[gnu::always_inline]] BV_INLINE constexpr Percentage(unsigned int n, unsigned int d);
    /// A ratio is no fraction: it would be cut to an integer. Nor is one of its fields.
    template <std::floating_point N>
    Percentage(N ratio) = delete;
    /// A field is an integer.
    template <std::floating_point N, typename D>
    Percentage(N n, D d) = delete;
    /// A field is an integer.
    template <std::integral N, std::floating_point D>
    Percentage(N n, D d) = delete;
    /// @}

    /// @name Access
    /// @{
    /// Upper field of the fraction.
    [[nodiscard]] BV_INLINE constexpr unsigned long long GetNumerator() const noexcept { return numerator; }
    /// Lower field of the fraction.
    [[nodiscard]] BV_INLINE constexpr unsigned long long GetDenominator() const noexcept { return denominator; }
    /// The ratio, not multiplied by 100: each field rounded to `float`, then divided. A zero numerator gives 0 over any
    /// denominator; any other over zero gives +infinity.
    [[nodiscard]] BV_INLINE constexpr operator float() const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Multiplies. A zero numerator on either side gives 0/0.
    BV_INLINE constexpr Percentage& operator*=(Percentage const& other);
    /// Adds. Adding zero changes nothing; adding to zero copies the other value.
    /// @throws DivideByZeroException when both fields of the sum wrap to 0.
    BV_INLINE constexpr Percentage& operator+=(Percentage const& other);
    /// Divides by a fraction. Zero stays as it is.
    /// @throws DivideByZeroException when the other numerator is 0, and for 1/0 divided by 1/0.
    BV_INLINE constexpr Percentage& operator/=(Percentage const& other);
    /// Divides by an integer. Unlike a division by a fraction this reduces zero, too: 0/x gives 0/1.
    /// @throws DivideByZeroException when d is 0, and for 0/0 divided by anything.
    BV_INLINE constexpr Percentage& operator/=(unsigned int d);
    /// The quotient by a floating-point number is no fraction.
    template <std::floating_point N>
    Percentage& operator/=(N d) = delete;
    /// @}

    /// @name Operators
    /// Each works on a copy and throws as its compound form does. Constants and variables have the same ones, so that
    /// neither turns into a `float` on the way.
    /// @{
    /// Product with a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator*(Percentage const& other)
    {
        return Percentage(*this) *= other;
    }
    /// Product with a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator*(Percentage const& other) const
    {
        return Percentage(*this) *= other;
    }
    /// Sum with a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator+(Percentage const& other)
    {
        return Percentage(*this) += other;
    }
    /// Sum with a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator+(Percentage const& other) const
    {
        return Percentage(*this) += other;
    }
    /// Quotient by a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator/(Percentage const& other)
    {
        return Percentage(*this) /= other;
    }
    /// Quotient by a fraction.
    [[nodiscard]] BV_INLINE constexpr Percentage operator/(Percentage const& other) const
    {
        return Percentage(*this) /= other;
    }
    /// Quotient by an integer.
    [[nodiscard]] BV_INLINE constexpr Percentage operator/(unsigned int d) { return Percentage(*this) /= d; }
    /// Quotient by an integer.
    [[nodiscard]] BV_INLINE constexpr Percentage operator/(unsigned int d) const { return Percentage(*this) /= d; }

    // A plain `p * 2` would waver between the fraction and the `float`; these match what stands there exactly.
    /// Product with an integer, which is a fraction.
    template <detail::AnyPercentage P, detail::IntegerUpTo32Bits N>
    [[nodiscard, gnu::always_inline]] friend constexpr Percentage operator*(P&& percentage, N n)
    {
        return Percentage(percentage) *= static_cast<unsigned int>(n);
    }
    /// Sum with an integer, which is a fraction.
    template <detail::AnyPercentage P, detail::IntegerUpTo32Bits N>
    [[nodiscard, gnu::always_inline]] friend constexpr Percentage operator+(P&& percentage, N n)
    {
        return Percentage(percentage) += static_cast<unsigned int>(n);
    }
    /// Quotient by an integer, which is a fraction.
    template <detail::AnyPercentage P, detail::IntegerUpTo32Bits N>
    [[nodiscard, gnu::always_inline]] friend constexpr Percentage operator/(P&& percentage, N d)
    {
        return Percentage(percentage) /= static_cast<unsigned int>(d);
    }
    /// A longer integer would be cut.
    template <detail::AnyPercentage P, detail::LongerInteger N>
    friend Percentage operator/(P&& percentage, N d) = delete;
    /// Product with a floating-point number, which is one.
    template <detail::AnyPercentage P, std::floating_point N>
    [[nodiscard, gnu::always_inline]] friend constexpr N operator*(P&& percentage, N n) noexcept
    {
        return static_cast<N>(static_cast<float>(percentage)) * n;
    }
    /// Sum with a floating-point number, which is one.
    template <detail::AnyPercentage P, std::floating_point N>
    [[nodiscard, gnu::always_inline]] friend constexpr N operator+(P&& percentage, N n) noexcept
    {
        return static_cast<N>(static_cast<float>(percentage)) + n;
    }
    /// Quotient by a floating-point number, which is one.
    template <detail::AnyPercentage P, std::floating_point N>
    [[nodiscard, gnu::always_inline]] friend constexpr N operator/(P&& percentage, N d) noexcept
    {
        return static_cast<N>(static_cast<float>(percentage)) / d;
    }
    /// @}

private:
    template <typename U>
    [[nodiscard, gnu::always_inline]] static constexpr U GreatestCommonDivisor(U a, U b);
    [[gnu::always_inline]] constexpr void Reduce();
    // Where failures say that they were raised; see Place.
    static constexpr detail::Place REDUCTION{"bv::maths::Percentage::Reduce", 24};
    static constexpr detail::Place DIVISION_BY_FRACTION{"bv::maths::Percentage::operator /=", 155};
    static constexpr detail::Place DIVISION_BY_INTEGER{"bv::maths::Percentage::operator /=", 71};

    [[noreturn, gnu::cold]] static void ThrowDivisionByZero(detail::Place const& place);
};

/// Euclid's algorithm; never 0, since both fields are divided by the result.
template <typename U>
constexpr U Percentage::GreatestCommonDivisor(U a, U b)
{
    while (b != 0)
    {
        U const remainder = a % b;
        a = b;
        b = remainder;
    }
    if (a == 0)
        ThrowDivisionByZero(REDUCTION);
    return a;
}

BV_INLINE constexpr Percentage::Percentage(unsigned int n, unsigned int d) : numerator{n}, denominator{d}
{
    unsigned int const divisor = GreatestCommonDivisor(n, d);
    numerator = n / divisor;
    denominator = d / divisor;
}

BV_INLINE constexpr Percentage::operator float() const noexcept
{
    if (numerator == 0)
        return 0.0f;
    if (numerator == denominator)
        return 1.0f;
    return static_cast<float>(numerator) / static_cast<float>(denominator);
}

// The compound operators work on a copy and assign it whole: the right operand may be this value, and nothing has
// changed when the reduction throws.

BV_INLINE constexpr Percentage& Percentage::operator*=(Percentage const& other)
{
    if (numerator == 0 || other.numerator == 0)
        return *this = Percentage();
    Percentage product(*this);
    product.numerator *= other.numerator;
    product.denominator *= other.denominator;
    product.Reduce();
    return *this = product;
}

BV_INLINE constexpr Percentage& Percentage::operator+=(Percentage const& other)
{
    if (other.numerator == 0)
        return *this;
    if (numerator == 0)
        return *this = other;
    Percentage sum(*this);
    if (denominator == other.denominator)
    {
        sum.numerator += other.numerator;
    }
    else
    {
        sum.numerator = other.denominator * numerator + denominator * other.numerator;
        sum.denominator *= other.denominator;
    }
    sum.Reduce();
    return *this = sum;
}

BV_INLINE constexpr Percentage& Percentage::operator/=(Percentage const& other)
{
    if (other.numerator == 0)
        ThrowDivisionByZero(DIVISION_BY_FRACTION);
    if (numerator == 0)
        return *this;
    Percentage quotient(*this);
    quotient.numerator *= other.denominator;
    quotient.denominator *= other.numerator;
    quotient.Reduce();
    return *this = quotient;
}

BV_INLINE constexpr Percentage& Percentage::operator/=(unsigned int d)
{
    if (d == 0)
        ThrowDivisionByZero(DIVISION_BY_INTEGER);
    Percentage quotient(*this);
    quotient.denominator *= d;
    quotient.Reduce();
    return *this = quotient;
}

constexpr void Percentage::Reduce()
{
    unsigned long long const divisor = GreatestCommonDivisor(numerator, denominator);
    numerator /= divisor;
    denominator /= divisor;
}

static_assert(sizeof(Percentage) == 2 * sizeof(unsigned long long) && sizeof(unsigned long long) == 8);

} // namespace bv::maths
