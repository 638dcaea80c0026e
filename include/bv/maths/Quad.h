#pragma once

/// @file
/// Four numbers computed on side by side, for the arithmetic of matrices.

#include <cstddef>

#if defined __SSE2__ || defined _M_X64
#include <emmintrin.h>
#endif

namespace bv::maths::detail
{

// What is compiled for AVX is made of other registers, and so has names of its own, as has what is made of it: a
// program may hold both. Every function is inlined by force, so that none is left for the linker to share with code for
// other processors.
#if defined __AVX__
inline namespace avx
{
#endif

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
    /// One of four elements in every lane.
    template <int LANE>
    [[nodiscard, gnu::always_inline]] static tQuad Spread(T const* aligned) noexcept
    {
        return Broadcast(aligned[LANE]);
    }
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
    /// The first lane of this and of the other, and then the second of both.
    [[nodiscard, gnu::always_inline]] tQuad Interleaved(tQuad const& other) const noexcept
    {
        return {lanes[0], other.lanes[0], lanes[1], other.lanes[1]};
    }
    /// Whether a lane lies between the bound and its negative, both excluded.
    [[nodiscard, gnu::always_inline]] bool HasLaneWithin(T bound) const noexcept
    {
        for (T const lane : lanes)
            if (-bound < lane && lane < bound)
                return true;
        return false;
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

    /// Without AVX, the instruction for floating point writes over its operand, which has to be copied first.
    template <int ORDER>
    [[nodiscard, gnu::always_inline]] static __m128 Permuted(__m128 values) noexcept
    {
#if defined __AVX__
        return _mm_shuffle_ps(values, values, ORDER);
#else
        return _mm_castsi128_ps(_mm_shuffle_epi32(_mm_castps_si128(values), ORDER));
#endif
    }

public:
    [[gnu::always_inline]] tQuad(float a, float b, float c, float d) noexcept : lanes{_mm_setr_ps(a, b, c, d)} {}
    [[gnu::always_inline]] explicit tQuad(__m128 values) noexcept : lanes{values} {}
    [[gnu::always_inline]] explicit tQuad(float const* aligned) noexcept : lanes{_mm_load_ps(aligned)} {}
    [[nodiscard, gnu::always_inline]] static tQuad Broadcast(float value) noexcept
    {
        return tQuad(_mm_set1_ps(value));
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] static tQuad Spread(float const* aligned) noexcept
    {
        return tQuad(aligned).Shuffled<LANE, LANE, LANE, LANE>();
    }
    [[gnu::always_inline]] void Store(float* aligned) const noexcept
    {
        _mm_store_ps(aligned, lanes);
    }
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return tQuad(Permuted<_MM_SHUFFLE(D, C, B, A)>(lanes));
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
        // the plain shuffle: compilers see through it when several lanes are stored side by side
        return _mm_cvtss_f32(_mm_shuffle_ps(lanes, lanes, _MM_SHUFFLE(LANE, LANE, LANE, LANE)));
    }
    [[nodiscard, gnu::always_inline]] tQuad Interleaved(tQuad const& other) const noexcept
    {
        return tQuad(_mm_unpacklo_ps(lanes, other.lanes));
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneWithin(float bound) const noexcept
    {
        __m128 const sizes = _mm_andnot_ps(_mm_set1_ps(-0.0F), lanes);
        return _mm_movemask_ps(_mm_cmplt_ps(sizes, _mm_set1_ps(bound))) != 0;
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
#if defined __AVX__
        return tQuad(__builtin_shufflevector(lanes, other.lanes, LANE == 0 ? 4 : 0, LANE == 1 ? 5 : 1,
                                             LANE == 2 ? 6 : 2, LANE == 3 ? 7 : 3));
#else
        __m128 const chosen = _mm_castsi128_ps(_mm_setr_epi32(-(LANE == 0), -(LANE == 1), -(LANE == 2), -(LANE == 3)));
        return tQuad(_mm_or_ps(_mm_and_ps(chosen, other.lanes), _mm_andnot_ps(chosen, lanes)));
#endif
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

#if defined __AVX__

// Registers of 256 bits as compilers know them by themselves: the header with their names is a large one.

/// Four `double` in one register.
template <>
class tQuad<double>
{
    typedef double Lanes __attribute__((vector_size(32)));

    Lanes lanes;

    [[gnu::always_inline]] explicit tQuad(Lanes const& values) noexcept : lanes{values} {}
    [[nodiscard, gnu::always_inline]] static int Bits(auto const& masks) noexcept
    {
        return __builtin_ia32_movmskpd256(reinterpret_cast<Lanes>(masks));
    }

public:
    [[gnu::always_inline]] tQuad(double a, double b, double c, double d) noexcept : lanes{a, b, c, d} {}
    [[gnu::always_inline]] explicit tQuad(double const* aligned) noexcept
    {
        __builtin_memcpy(&lanes, aligned, sizeof lanes);
    }
    [[nodiscard, gnu::always_inline]] static tQuad Broadcast(double value) noexcept
    {
        return {value, value, value, value};
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] static tQuad Spread(double const* aligned) noexcept
    {
        return Broadcast(aligned[LANE]);
    }
    [[gnu::always_inline]] void Store(double* aligned) const noexcept
    {
        __builtin_memcpy(aligned, &lanes, sizeof lanes);
    }
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return tQuad(__builtin_shufflevector(lanes, lanes, A, B, C, D));
    }
    [[nodiscard, gnu::always_inline]] tQuad operator+(tQuad const& other) const noexcept
    {
        return tQuad(lanes + other.lanes);
    }
    [[nodiscard, gnu::always_inline]] tQuad operator-(tQuad const& other) const noexcept
    {
        return tQuad(lanes - other.lanes);
    }
    [[nodiscard, gnu::always_inline]] tQuad operator*(tQuad const& other) const noexcept
    {
        return tQuad(lanes * other.lanes);
    }
    [[nodiscard, gnu::always_inline]] tQuad operator/(tQuad const& other) const noexcept
    {
        return tQuad(lanes / other.lanes);
    }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] double Get() const noexcept
    {
        return lanes[LANE];
    }
    [[nodiscard, gnu::always_inline]] tQuad Interleaved(tQuad const& other) const noexcept
    {
        return tQuad(__builtin_shufflevector(lanes, other.lanes, 0, 4, 1, 5));
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneWithin(double bound) const noexcept
    {
        return Bits((lanes < bound) & (lanes > -bound)) != 0;
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneNotBelow(double bound) const noexcept
    {
        return Bits(lanes < bound) != 15;
    }
    [[nodiscard, gnu::always_inline]] tQuad WithoutLast() const noexcept { return With<3>(Broadcast(0)); }
    template <int LANE>
    [[nodiscard, gnu::always_inline]] tQuad With(tQuad const& other) const noexcept
    {
        return tQuad(__builtin_shufflevector(lanes, other.lanes, LANE == 0 ? 4 : 0, LANE == 1 ? 5 : 1,
                                             LANE == 2 ? 6 : 2, LANE == 3 ? 7 : 3));
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c, tQuad& d) noexcept
    {
        Lanes const oddAB = __builtin_shufflevector(a.lanes, b.lanes, 0, 4, 2, 6);
        Lanes const evenAB = __builtin_shufflevector(a.lanes, b.lanes, 1, 5, 3, 7);
        Lanes const oddCD = __builtin_shufflevector(c.lanes, d.lanes, 0, 4, 2, 6);
        Lanes const evenCD = __builtin_shufflevector(c.lanes, d.lanes, 1, 5, 3, 7);
        a.lanes = __builtin_shufflevector(oddAB, oddCD, 0, 1, 4, 5);
        b.lanes = __builtin_shufflevector(evenAB, evenCD, 0, 1, 4, 5);
        c.lanes = __builtin_shufflevector(oddAB, oddCD, 2, 3, 6, 7);
        d.lanes = __builtin_shufflevector(evenAB, evenCD, 2, 3, 6, 7);
    }
    [[gnu::always_inline]] static void Transpose(tQuad& a, tQuad& b, tQuad& c) noexcept
    {
        tQuad d = c;
        Transpose(a, b, c, d);
    }
};

#else

/// Four `double` in two 128-bit registers.
template <>
class tQuad<double>
{
    __m128d low;
    __m128d high;

    [[gnu::always_inline]] tQuad(__m128d first, __m128d second) noexcept : low{first}, high{second} {}

    /// Two of the four lanes. As with `float`, the instruction for integers needs no copy of its operand.
    template <int A, int B>
    [[nodiscard, gnu::always_inline]] __m128d Permuted() const noexcept
    {
        if constexpr (A / 2 != B / 2)
            return _mm_shuffle_pd(A < 2 ? low : high, B < 2 ? low : high, (A & 1) | (B & 1) << 1);
        else
        {
            constexpr int FROM_A = 2 * (A & 1);
            constexpr int FROM_B = 2 * (B & 1);
            return _mm_castsi128_pd(_mm_shuffle_epi32(_mm_castpd_si128(A < 2 ? low : high),
                                                      _MM_SHUFFLE(FROM_B + 1, FROM_B, FROM_A + 1, FROM_A)));
        }
    }

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
    template <int LANE>
    [[nodiscard, gnu::always_inline]] static tQuad Spread(double const* aligned) noexcept
    {
        return tQuad(aligned).Shuffled<LANE, LANE, LANE, LANE>();
    }
    [[gnu::always_inline]] void Store(double* aligned) const noexcept
    {
        _mm_store_pd(aligned, low);
        _mm_store_pd(aligned + 2, high);
    }
    template <int A, int B, int C, int D>
    [[nodiscard, gnu::always_inline]] tQuad Shuffled() const noexcept
    {
        return {Permuted<A, B>(), Permuted<C, D>()};
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
    [[nodiscard, gnu::always_inline]] tQuad Interleaved(tQuad const& other) const noexcept
    {
        return {_mm_unpacklo_pd(low, other.low), _mm_unpackhi_pd(low, other.low)};
    }
    [[nodiscard, gnu::always_inline]] bool HasLaneWithin(double bound) const noexcept
    {
        __m128d const signs = _mm_set1_pd(-0.0);
        __m128d const bounds = _mm_set1_pd(bound);
        return _mm_movemask_pd(_mm_or_pd(_mm_cmplt_pd(_mm_andnot_pd(signs, low), bounds),
                                         _mm_cmplt_pd(_mm_andnot_pd(signs, high), bounds))) != 0;
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
        tQuad const first(_mm_shuffle_pd(a.low, b.low, 0), _mm_shuffle_pd(c.low, d.low, 0));
        tQuad const second(_mm_shuffle_pd(a.low, b.low, 3), _mm_shuffle_pd(c.low, d.low, 3));
        tQuad const third(_mm_shuffle_pd(a.high, b.high, 0), _mm_shuffle_pd(c.high, d.high, 0));
        tQuad const fourth(_mm_shuffle_pd(a.high, b.high, 3), _mm_shuffle_pd(c.high, d.high, 3));
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

#endif

/// The rows of a matrix.
template <typename T>
struct tRows
{
    tQuad<T> row1, row2, row3, row4;
};

/// Four rows, one after the other.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> LoadRows(T const* aligned) noexcept
{
    using Quad = tQuad<T>;
    return {Quad(aligned), Quad(aligned + 4), Quad(aligned + 8), Quad(aligned + 12)};
}

/// The rows, each times its factor, summed from the first one on: a row of a product.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tQuad<T> Combine(T const* factors, tRows<T> const& rows) noexcept
{
    using Quad = tQuad<T>;
    return Quad::template Spread<0>(factors) * rows.row1 + Quad::template Spread<1>(factors) * rows.row2 +
           Quad::template Spread<2>(factors) * rows.row3 + Quad::template Spread<3>(factors) * rows.row4;
}

/// All rows of a product.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tRows<T> Multiply(T const* left, T const* right) noexcept
{
    tRows<T> const rows = LoadRows(right);
    return {Combine(left, rows), Combine(left + 4, rows), Combine(left + 8, rows), Combine(left + 12, rows)};
}

#if defined __AVX__

/// Two rows of `float` in one register.
typedef float TwoRows __attribute__((vector_size(32)));

/// Two rows that stand apart. They may have been stored one by one just before: a load over both would wait for that.
[[nodiscard, gnu::always_inline]] inline TwoRows LoadTwo(float const* first, float const* second) noexcept
{
    return __builtin_shufflevector(_mm_load_ps(first), _mm_load_ps(second), 0, 1, 2, 3, 4, 5, 6, 7);
}

/// A row in both halves of a register. GCC takes two instructions for it unless it is told of the one.
[[nodiscard, gnu::always_inline]] inline TwoRows LoadTwice(float const* row) noexcept
{
#if defined __clang__
    return LoadTwo(row, row);
#else
    return __builtin_ia32_vbroadcastf128_ps256(reinterpret_cast<__m128 const*>(row));
#endif
}

/// The second of two rows, for which the same is true.
[[nodiscard, gnu::always_inline]] inline __m128 SecondOf(TwoRows const& rows) noexcept
{
#if defined __clang__
    return __builtin_shufflevector(rows, rows, 4, 5, 6, 7);
#else
    return __builtin_ia32_vextractf128_ps256(rows, 1);
#endif
}

/// A row in both halves of a register, times one of four factors for each half.
template <int LANE>
[[nodiscard, gnu::always_inline]] inline TwoRows ScaledTwice(TwoRows const& factors, float const* row) noexcept
{
    constexpr int UPPER = LANE + 4;
    return __builtin_shufflevector(factors, factors, LANE, LANE, LANE, LANE, UPPER, UPPER, UPPER, UPPER) *
           LoadTwice(row);
}

/// Two rows of a product.
[[nodiscard, gnu::always_inline]] inline TwoRows CombineTwo(float const* factors, float const* rows) noexcept
{
    TwoRows const two = LoadTwo(factors, factors + 4);
    return ScaledTwice<0>(two, rows) + ScaledTwice<1>(two, rows + 4) + ScaledTwice<2>(two, rows + 8) +
           ScaledTwice<3>(two, rows + 12);
}

[[nodiscard, gnu::always_inline]] inline tRows<float> Multiply(float const* left, float const* right) noexcept
{
    using Quad = tQuad<float>;
    TwoRows const upper = CombineTwo(left, right);
    TwoRows const lower = CombineTwo(left + 8, right);
    return {Quad(__builtin_shufflevector(upper, upper, 0, 1, 2, 3)), Quad(SecondOf(upper)),
            Quad(__builtin_shufflevector(lower, lower, 0, 1, 2, 3)), Quad(SecondOf(lower))};
}

} // namespace avx

#endif

} // namespace bv::maths::detail
