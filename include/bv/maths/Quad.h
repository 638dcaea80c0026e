#pragma once

/// @file
/// Four numbers computed on side by side, for the arithmetic of matrices.

#include <cstddef>

#if defined __SSE2__ || defined _M_X64
#include <emmintrin.h>
#endif

namespace bv::maths::detail
{

/// Four elements side by side, a row of a matrix, computed on lane by lane: each lane has the bits that the same scalar
/// operations give. Loads and stores are for addresses aligned to 16 bytes.
template <typename T>
class tQuad
{
    T lanes[4];

public:
    [[gnu::always_inline]] tQuad(T a, T b, T c, T d) noexcept : lanes{a, b, c, d} {}
    [[gnu::always_inline]] explicit tQuad(T const* aligned) noexcept
        : lanes{aligned[0], aligned[1], aligned[2], aligned[3]}
    {
    }
    [[nodiscard, gnu::always_inline]] static tQuad Broadcast(T value) noexcept { return {value, value, value, value}; }
    [[gnu::always_inline]] void Store(T* aligned) const noexcept
    {
        for (std::size_t lane = 0; lane < 4; ++lane)
            aligned[lane] = lanes[lane];
    }
    /// The quad whose lanes are the lanes A, B, C and D of this one.
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return {lanes[A], lanes[B], lanes[C], lanes[D]};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator+(tQuad const& other) const noexcept
    {
        return {lanes[0] + other.lanes[0], lanes[1] + other.lanes[1], lanes[2] + other.lanes[2],
                lanes[3] + other.lanes[3]};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator-(tQuad const& other) const noexcept
    {
        return {lanes[0] - other.lanes[0], lanes[1] - other.lanes[1], lanes[2] - other.lanes[2],
                lanes[3] - other.lanes[3]};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator*(tQuad const& other) const noexcept
    {
        return {lanes[0] * other.lanes[0], lanes[1] * other.lanes[1], lanes[2] * other.lanes[2],
                lanes[3] * other.lanes[3]};
    }
};

#if defined __SSE2__ || defined _M_X64

/// Four `float` in one 128-bit register.
template <>
class tQuad<float>
{
    __m128 lanes;

    [[gnu::always_inline]] explicit tQuad(__m128 values) noexcept : lanes{values} {}

public:
    [[gnu::always_inline]] tQuad(float a, float b, float c, float d) noexcept : lanes{_mm_setr_ps(a, b, c, d)} {}
    [[gnu::always_inline]] explicit tQuad(float const* aligned) noexcept : lanes{_mm_load_ps(aligned)} {}
    [[nodiscard, gnu::always_inline]] static tQuad Broadcast(float value) noexcept { return tQuad(_mm_set1_ps(value)); }
    [[gnu::always_inline]] void Store(float* aligned) const noexcept { _mm_store_ps(aligned, lanes); }
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return tQuad(_mm_shuffle_ps(lanes, lanes, _MM_SHUFFLE(D, C, B, A)));
    }
    [[nodiscard, gnu::always_inline]] tQuad operator+(tQuad const& other) const noexcept
    {
        return tQuad(_mm_add_ps(lanes, other.lanes));
    }
    [[nodiscard, gnu::always_inline]] tQuad operator-(tQuad const& other) const noexcept
    {
        return tQuad(_mm_sub_ps(lanes, other.lanes));
    }
    [[nodiscard, gnu::always_inline]] tQuad operator*(tQuad const& other) const noexcept
    {
        return tQuad(_mm_mul_ps(lanes, other.lanes));
    }
};

/// Four `double` in two 128-bit registers.
template <>
class tQuad<double>
{
    __m128d low;
    __m128d high;

    [[gnu::always_inline]] tQuad(__m128d first, __m128d second) noexcept : low{first}, high{second} {}

public:
    [[gnu::always_inline]] tQuad(double a, double b, double c, double d) noexcept
        : low{_mm_setr_pd(a, b)}, high{_mm_setr_pd(c, d)}
    {
    }
    [[gnu::always_inline]] explicit tQuad(double const* aligned) noexcept
        : low{_mm_load_pd(aligned)}, high{_mm_load_pd(aligned + 2)}
    {
    }
    [[nodiscard, gnu::always_inline]] static tQuad Broadcast(double value) noexcept
    {
        return {_mm_set1_pd(value), _mm_set1_pd(value)};
    }
    [[gnu::always_inline]] void Store(double* aligned) const noexcept
    {
        _mm_store_pd(aligned, low);
        _mm_store_pd(aligned + 2, high);
    }
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return {_mm_shuffle_pd(A < 2 ? low : high, B < 2 ? low : high, (A & 1) | (B & 1) << 1),
                _mm_shuffle_pd(C < 2 ? low : high, D < 2 ? low : high, (C & 1) | (D & 1) << 1)};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator+(tQuad const& other) const noexcept
    {
        return {_mm_add_pd(low, other.low), _mm_add_pd(high, other.high)};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator-(tQuad const& other) const noexcept
    {
        return {_mm_sub_pd(low, other.low), _mm_sub_pd(high, other.high)};
    }
    [[nodiscard, gnu::always_inline]] tQuad operator*(tQuad const& other) const noexcept
    {
        return {_mm_mul_pd(low, other.low), _mm_mul_pd(high, other.high)};
    }
};

#endif

} // namespace bv::maths::detail
