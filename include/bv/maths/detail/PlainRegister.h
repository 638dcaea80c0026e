#pragma once

/// @file
/// What stands for a register where the compiler has no vectors: an array of numbers, and the language's own operators
/// on each of them.

#include <cstddef>
#include <type_traits>

namespace bv::maths::detail
{

/// N numbers side by side. A comparison gives integers as wide as the numbers, -1 where it holds and 0 elsewhere.
template <typename T, std::size_t N>
struct tPlainRegister
{
    T lanes[N];

    constexpr T& operator[](std::size_t lane) noexcept { return lanes[lane]; }
    constexpr T const& operator[](std::size_t lane) const noexcept { return lanes[lane]; }

    /// f of the two numbers in each lane.
    template <typename F>
    [[nodiscard]] static constexpr auto Zip(tPlainRegister const& a, tPlainRegister const& b, F f) noexcept
    {
        tPlainRegister<decltype(f(a[0], b[0])), N> result{};
        for (std::size_t lane = 0; lane < N; ++lane)
            result[lane] = f(a[lane], b[lane]);
        return result;
    }

    [[nodiscard]] friend constexpr auto operator+(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x + y); });
    }
    [[nodiscard]] friend constexpr auto operator-(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x - y); });
    }
    [[nodiscard]] friend constexpr auto operator*(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x * y); });
    }
    [[nodiscard]] friend constexpr auto operator/(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x / y); });
    }
    [[nodiscard]] friend constexpr auto operator&(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x & y); });
    }
    [[nodiscard]] friend constexpr auto operator^(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x ^ y); });
    }
    [[nodiscard]] friend constexpr auto operator|(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return static_cast<T>(x | y); });
    }
    [[nodiscard]] friend constexpr auto operator~(tPlainRegister const& a) noexcept
    {
        return Zip(a, a, [](T x, T) { return static_cast<T>(~x); });
    }
    [[nodiscard]] friend constexpr auto operator<(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return -static_cast<Mask>(x < y); });
    }
    [[nodiscard]] friend constexpr auto operator==(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return -static_cast<Mask>(x == y); });
    }
    [[nodiscard]] friend constexpr auto operator<=(tPlainRegister const& a, tPlainRegister const& b) noexcept
    {
        return Zip(a, b, [](T x, T y) { return -static_cast<Mask>(x <= y); });
    }

private:
    using Mask = std::conditional_t<sizeof(T) == sizeof(int), int, long long>;
};

} // namespace bv::maths::detail
