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
    [[nodiscard, gnu::always_inline]] tQuad operator/(tQuad const& other) const noexcept
    {
        return {lanes[0] / other.lanes[0], lanes[1] / other.lanes[1], lanes[2] / other.lanes[2],
                lanes[3] / other.lanes[3]};
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] T Get() const noexcept
    {
        return lanes[LANE];
    }
    /// Whether a lane is not below the bound, or NaN.
    [[nodiscard, gnu::always_inline]] bool HasLaneNotBelow(T bound) const noexcept
    {
        return !(lanes[0] < bound && lanes[1] < bound && lanes[2] < bound && lanes[3] < bound);
    }
    /// With 0 in the last lane.
    [[nodiscard, gnu::always_inline]] tQuad WithoutLast() const noexcept
    {
        return {lanes[0], lanes[1], lanes[2], T{0}};
    }
    /// With one lane of another quad.
    template <int LANE>
    [[nodiscard, gnu::always_inline]] tQuad With(tQuad const& other) const noexcept
    {
        tQuad result = *this;
        result.lanes[LANE] = other.lanes[LANE];
        return result;
    }
    /// Turns four rows into four columns.
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c, tQuad& d) noexcept
    {
        tQuad const first(a.lanes[0], b.lanes[0], c.lanes[0], d.lanes[0]);
        tQuad const second(a.lanes[1], b.lanes[1], c.lanes[1], d.lanes[1]);
        tQuad const third(a.lanes[2], b.lanes[2], c.lanes[2], d.lanes[2]);
        tQuad const fourth(a.lanes[3], b.lanes[3], c.lanes[3], d.lanes[3]);
        a = first;
        b = second;
        c = third;
        d = fourth;
    }
    /// Turns three rows into their first three columns, which have anything in the last lane.
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c) noexcept
    {
        tQuad d = c;
        Transpose(a, b, c, d);
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
    [[nodiscard, gnu::always_inline]] tQuad operator/(tQuad const& other) const noexcept
    {
        return tQuad(_mm_div_ps(lanes, other.lanes));
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] float Get() const noexcept
    {
        return _mm_cvtss_f32(_mm_shuffle_ps(lanes, lanes, _MM_SHUFFLE(LANE, LANE, LANE, LANE)));
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneNotBelow(float bound) const noexcept
    {
        return _mm_movemask_ps(_mm_cmpnlt_ps(lanes, _mm_set1_ps(bound))) != 0;
    }
    [[nodiscard, gnu::always_inline]] tQuad WithoutLast() const noexcept
    {
        return tQuad(_mm_and_ps(lanes, _mm_castsi128_ps(_mm_setr_epi32(-1, -1, -1, 0))));
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] tQuad With(tQuad const& other) const noexcept
    {
        __m128 const chosen = _mm_castsi128_ps(_mm_setr_epi32(-(LANE == 0), -(LANE == 1), -(LANE == 2), -(LANE == 3)));
        return tQuad(_mm_or_ps(_mm_and_ps(chosen, other.lanes), _mm_andnot_ps(chosen, lanes)));
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c, tQuad& d) noexcept
    {
        __m128 const lowAB = _mm_unpacklo_ps(a.lanes, b.lanes);
        __m128 const highAB = _mm_unpackhi_ps(a.lanes, b.lanes);
        __m128 const lowCD = _mm_unpacklo_ps(c.lanes, d.lanes);
        __m128 const highCD = _mm_unpackhi_ps(c.lanes, d.lanes);
        a.lanes = _mm_movelh_ps(lowAB, lowCD);
        b.lanes = _mm_movehl_ps(lowCD, lowAB);
        c.lanes = _mm_movelh_ps(highAB, highCD);
        d.lanes = _mm_movehl_ps(highCD, highAB);
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c) noexcept
    {
        __m128 const lowAB = _mm_unpacklo_ps(a.lanes, b.lanes);
        __m128 const highAB = _mm_unpackhi_ps(a.lanes, b.lanes);
        a.lanes = _mm_movelh_ps(lowAB, c.lanes);
        b.lanes = _mm_shuffle_ps(lowAB, c.lanes, _MM_SHUFFLE(3, 1, 3, 2));
        c.lanes = _mm_shuffle_ps(highAB, c.lanes, _MM_SHUFFLE(3, 2, 1, 0));
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
    [[nodiscard, gnu::always_inline]] tQuad operator/(tQuad const& other) const noexcept
    {
        return {_mm_div_pd(low, other.low), _mm_div_pd(high, other.high)};
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] double Get() const noexcept
    {
        __m128d const pair = LANE < 2 ? low : high;
        return _mm_cvtsd_f64((LANE & 1) != 0 ? _mm_unpackhi_pd(pair, pair) : pair);
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneNotBelow(double bound) const noexcept
    {
        __m128d const bounds = _mm_set1_pd(bound);
        return _mm_movemask_pd(_mm_or_pd(_mm_cmpnlt_pd(low, bounds), _mm_cmpnlt_pd(high, bounds))) != 0;
    }
    [[nodiscard, gnu::always_inline]] tQuad WithoutLast() const noexcept
    {
        return {low, _mm_move_sd(_mm_setzero_pd(), high)};
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] tQuad With(tQuad const& other) const noexcept
    {
        if constexpr (LANE == 0)
            return {_mm_move_sd(low, other.low), high};
        else if constexpr (LANE == 1)
            return {_mm_move_sd(other.low, low), high};
        else if constexpr (LANE == 2)
            return {low, _mm_move_sd(high, other.high)};
        else
            return {low, _mm_move_sd(other.high, high)};
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c, tQuad& d) noexcept
    {
        tQuad const first(_mm_unpacklo_pd(a.low, b.low), _mm_unpacklo_pd(c.low, d.low));
        tQuad const second(_mm_unpackhi_pd(a.low, b.low), _mm_unpackhi_pd(c.low, d.low));
        tQuad const third(_mm_unpacklo_pd(a.high, b.high), _mm_unpacklo_pd(c.high, d.high));
        tQuad const fourth(_mm_unpackhi_pd(a.high, b.high), _mm_unpackhi_pd(c.high, d.high));
        a = first;
        b = second;
        c = third;
        d = fourth;
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c) noexcept
    {
        tQuad const first(_mm_unpacklo_pd(a.low, b.low), c.low);
        tQuad const second(_mm_unpackhi_pd(a.low, b.low), _mm_unpackhi_pd(c.low, c.low));
        tQuad const third(_mm_unpacklo_pd(a.high, b.high), c.high);
        a = first;
        b = second;
        c = third;
    }
};

#endif

} // namespace bv::maths::detail
