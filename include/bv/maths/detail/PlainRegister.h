#pragma once

/// @file
/// What stands for a register where the compiler has no vectors: an array of numbers, and the language's own operators
/// on each of them.

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace bv::maths::detail
{

template <typename T, std::size_t N>
struct tPlainRegister;

/// An operand: a register, or one number for all lanes.
template <typename T, std::size_t N>
struct tPlainOperand
{
    tPlainRegister<T, N> lanes;

    constexpr tPlainOperand(tPlainRegister<T, N> const& numbers) noexcept : lanes(numbers) {}
    constexpr tPlainOperand(T number) noexcept : lanes{}
    {
        for (T& lane : lanes.lanes)
            lane = number;
    }
};

/// N numbers side by side. A comparison gives integers as wide as the numbers, -1 where it holds and 0 elsewhere.
template <typename T, std::size_t N>
struct alignas(N * sizeof(T)) tPlainRegister
{
    T lanes[N];

    constexpr T& operator[](std::size_t lane) noexcept { return lanes[lane]; }
    constexpr T const& operator[](std::size_t lane) const noexcept { return lanes[lane]; }

private:
    using Operand = tPlainOperand<T, N>;
    using Narrow = std::conditional_t<sizeof(T) == 1, std::int8_t, std::int16_t>;
    using Wide = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
    using Mask = std::conditional_t<sizeof(T) <= 2, Narrow, Wide>;

    /// f of the two numbers in each lane.
    template <typename Result, typename F>
    [[nodiscard]] static constexpr tPlainRegister<Result, N> Zip(Operand const& a, Operand const& b, F f) noexcept
    {
        tPlainRegister<Result, N> result{};
        for (std::size_t lane = 0; lane < N; ++lane)
            result[lane] = static_cast<Result>(f(a.lanes[lane], b.lanes[lane]));
        return result;
    }

    template <typename F>
    [[nodiscard]] static constexpr tPlainRegister Compute(Operand const& a, Operand const& b, F f) noexcept
    {
        return Zip<T>(a, b, f);
    }
    template <typename F>
    [[nodiscard]] static constexpr tPlainRegister<Mask, N> Compare(Operand const& a, Operand const& b, F f) noexcept
    {
        return Zip<Mask>(a, b, [f](T x, T y) { return f(x, y) ? -1 : 0; });
    }

public:
    /// @name Arithmetic
    /// @{
    [[nodiscard]] friend constexpr tPlainRegister operator+(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x + y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator-(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x - y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator*(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x * y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator/(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x / y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator-(tPlainRegister const& a) noexcept
    {
        return Compute(a, a, [](T x, T) { return -x; });
    }
    constexpr tPlainRegister& operator+=(Operand const& other) noexcept { return *this = *this + other; }
    /// @}

    /// @name Bits
    /// @{
    [[nodiscard]] friend constexpr tPlainRegister operator&(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x & y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator^(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x ^ y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator|(Operand const& a, Operand const& b) noexcept
    {
        return Compute(a, b, [](T x, T y) { return x | y; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator~(tPlainRegister const& a) noexcept
    {
        return Compute(a, a, [](T x, T) { return ~x; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator<<(tPlainRegister const& a, int bits) noexcept
    {
        return Compute(a, a, [bits](T x, T) { return x << bits; });
    }
    [[nodiscard]] friend constexpr tPlainRegister operator>>(tPlainRegister const& a, int bits) noexcept
    {
        return Compute(a, a, [bits](T x, T) { return x >> bits; });
    }
    constexpr tPlainRegister& operator|=(Operand const& other) noexcept { return *this = *this | other; }
    constexpr tPlainRegister& operator^=(Operand const& other) noexcept { return *this = *this ^ other; }
    constexpr tPlainRegister& operator<<=(int bits) noexcept { return *this = *this << bits; }
    /// @}

    /// @name Comparisons
    /// @{
    [[nodiscard]] friend constexpr auto operator<(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x < y; });
    }
    [[nodiscard]] friend constexpr auto operator<=(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x <= y; });
    }
    [[nodiscard]] friend constexpr auto operator>(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x > y; });
    }
    [[nodiscard]] friend constexpr auto operator>=(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x >= y; });
    }
    [[nodiscard]] friend constexpr auto operator==(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x == y; });
    }
    [[nodiscard]] friend constexpr auto operator!=(Operand const& a, Operand const& b) noexcept
    {
        return Compare(a, b, [](T x, T y) { return x != y; });
    }
    /// @}
};

} // namespace bv::maths::detail
