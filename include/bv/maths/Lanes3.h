#pragma once

/// @file
/// Three numbers of a shape side by side, in the registers of SSE2 where there are such, and a square root that calls
/// nothing.
///
/// Everything here is forced into its caller: its code depends on the flags of the file that includes it.

#include <cmath>

#if defined __SSE2__
#include <emmintrin.h>
#endif

namespace bv::maths::detail
{

/// Three numbers x, y and z, or three masks that comparisons give. Where an operand of a minimum or maximum is NaN, or
/// both are zeros, the second one is the result. This is the plain form, whose masks are 1 or 0.
template <typename T>
struct tLanes3
{
    using Lanes = tLanes3;

    T x, y, z;

    /// The three numbers of a vector.
    [[nodiscard, gnu::always_inline]] static inline Lanes Load(void const* three) noexcept
    {
        auto const* const numbers = static_cast<T const*>(three);
        return {numbers[0], numbers[1], numbers[2]};
    }
    /// The first three of four numbers.
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadFirst(void const* numbers) noexcept
    {
        return Load(numbers);
    }
    /// The last three of six numbers.
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadLast(void const* numbers) noexcept
    {
        return Load(static_cast<T const*>(numbers) + 3);
    }
    /// One number in all three.
    [[nodiscard, gnu::always_inline]] static inline Lanes Broadcast(T value) noexcept { return {value, value, value}; }
    [[nodiscard, gnu::always_inline]] inline T X() const noexcept { return x; }
    [[nodiscard, gnu::always_inline]] inline T Y() const noexcept { return y; }
    [[nodiscard, gnu::always_inline]] inline T Z() const noexcept { return z; }
    /// One bit for each mask, x the lowest.
    [[nodiscard, gnu::always_inline]] inline int Bits() const noexcept
    {
        return (x != 0 ? 1 : 0) | (y != 0 ? 2 : 0) | (z != 0 ? 4 : 0);
    }
    /// Whether all three masks are set.
    [[nodiscard, gnu::always_inline]] inline bool All() const noexcept { return Bits() == 7; }

    [[nodiscard, gnu::always_inline]] friend inline Lanes operator+(Lanes a, Lanes b) noexcept
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator-(Lanes a, Lanes b) noexcept
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator*(Lanes a, Lanes b) noexcept
    {
        return {a.x * b.x, a.y * b.y, a.z * b.z};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator/(Lanes a, Lanes b) noexcept
    {
        return {a.x / b.x, a.y / b.y, a.z / b.z};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator&(Lanes a, Lanes b) noexcept { return a * b; }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<(Lanes a, Lanes b) noexcept
    {
        return {static_cast<T>(a.x < b.x), static_cast<T>(a.y < b.y), static_cast<T>(a.z < b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<=(Lanes a, Lanes b) noexcept
    {
        return {static_cast<T>(a.x <= b.x), static_cast<T>(a.y <= b.y), static_cast<T>(a.z <= b.z)};
    }
    /// Whether none of the three is NaN.
    [[nodiscard, gnu::always_inline]] inline bool IsOrdered() const noexcept { return x == x && y == y && z == z; }
    /// Raises the lower end of an interval to each of three numbers above it, and lowers the upper end, x first.
    [[gnu::always_inline]] static inline void Narrow(Lanes first, Lanes last, T& tNear, T& tFar) noexcept
    {
        for (T const value : {first.x, first.y, first.z})
            tNear = value > tNear ? value : tNear;
        for (T const value : {last.x, last.y, last.z})
            tFar = value < tFar ? value : tFar;
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Min(Lanes a, Lanes b) noexcept
    {
        return {a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y, a.z < b.z ? a.z : b.z};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Max(Lanes a, Lanes b) noexcept
    {
        return {b.x < a.x ? a.x : b.x, b.y < a.y ? a.y : b.y, b.z < a.z ? a.z : b.z};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Magnitude(Lanes a) noexcept
    {
        return {std::abs(a.x), std::abs(a.y), std::abs(a.z)};
    }
    /// 0 where the mask is set, a elsewhere.
    [[nodiscard, gnu::always_inline]] static inline Lanes Unless(Lanes mask, Lanes a) noexcept
    {
        return {mask.x != 0 ? 0 : a.x, mask.y != 0 ? 0 : a.y, mask.z != 0 ? 0 : a.z};
    }
};

#if defined __SSE2__

/// The square root as the processor rounds it: that of std::sqrt(), which may also call a function to set `errno`.
[[nodiscard, gnu::always_inline]] inline float SquareRoot(float value) noexcept
{
    return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set1_ps(value)));
}

/// @copydoc SquareRoot(float)
[[nodiscard, gnu::always_inline]] inline double SquareRoot(double value) noexcept
{
    __m128d const lane = _mm_set1_pd(value);
    return _mm_cvtsd_f64(_mm_sqrt_sd(lane, lane));
}

/// That of any other type.
template <typename T>
[[nodiscard, gnu::always_inline]] inline auto SquareRoot(T value) noexcept
{
    return std::sqrt(value);
}

/// The smaller of two numbers, b when one is NaN or both are zeros: one instruction, which no compiler weaves into
/// vectors that it has to put together first.
[[nodiscard, gnu::always_inline]] inline float Smaller(float a, float b) noexcept
{
    return _mm_cvtss_f32(_mm_min_ss(_mm_set_ss(a), _mm_set_ss(b)));
}

/// The larger of two numbers, in the same way.
[[nodiscard, gnu::always_inline]] inline float Larger(float a, float b) noexcept
{
    return _mm_cvtss_f32(_mm_max_ss(_mm_set_ss(a), _mm_set_ss(b)));
}

/// Lowers the first two numbers at `ends` to those at `values` that are below them.
/// @return whether one of them moved.
[[gnu::always_inline]] inline bool LowerPair(void* ends, void const* values) noexcept
{
    __m128d const end = _mm_loadu_pd(static_cast<double const*>(ends));
    __m128d const value = _mm_loadu_pd(static_cast<double const*>(values));
    _mm_storeu_pd(static_cast<double*>(ends), _mm_min_pd(value, end));
    return _mm_movemask_pd(_mm_cmplt_pd(value, end)) != 0;
}

/// Raises the first two numbers at `ends` to those at `values` that are above them.
/// @return whether one of them moved.
[[gnu::always_inline]] inline bool RaisePair(void* ends, void const* values) noexcept
{
    __m128d const end = _mm_loadu_pd(static_cast<double const*>(ends));
    __m128d const value = _mm_loadu_pd(static_cast<double const*>(values));
    _mm_storeu_pd(static_cast<double*>(ends), _mm_max_pd(value, end));
    return _mm_movemask_pd(_mm_cmplt_pd(end, value)) != 0;
}

/// Four in a register, whose highest counts for nothing; masks are all bits or none.
template <>
struct tLanes3<float>
{
    using Lanes = tLanes3;

    __m128 xyz;

    /// The three numbers of a vector.
    [[nodiscard, gnu::always_inline]] static inline Lanes Load(void const* three) noexcept
    {
        __m128 const xy = _mm_castsi128_ps(_mm_loadl_epi64(static_cast<__m128i const*>(three)));
        return {_mm_movelh_ps(xy, _mm_load_ss(static_cast<float const*>(three) + 2))};
    }
    /// The first three of four numbers.
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadFirst(void const* numbers) noexcept
    {
        return {_mm_loadu_ps(static_cast<float const*>(numbers))};
    }
    /// The last three of six numbers.
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadLast(void const* numbers) noexcept
    {
        __m128 const last = _mm_loadu_ps(static_cast<float const*>(numbers) + 2);
        return {_mm_shuffle_ps(last, last, _MM_SHUFFLE(3, 3, 2, 1))};
    }
    /// One number in all three.
    [[nodiscard, gnu::always_inline]] static inline Lanes Broadcast(float value) noexcept
    {
        return {_mm_set1_ps(value)};
    }
    [[nodiscard, gnu::always_inline]] inline float X() const noexcept { return _mm_cvtss_f32(xyz); }
    [[nodiscard, gnu::always_inline]] inline float Y() const noexcept
    {
        return _mm_cvtss_f32(_mm_shuffle_ps(xyz, xyz, _MM_SHUFFLE(1, 1, 1, 1)));
    }
    [[nodiscard, gnu::always_inline]] inline float Z() const noexcept { return _mm_cvtss_f32(_mm_movehl_ps(xyz, xyz)); }
    /// One bit for each mask, x the lowest.
    [[nodiscard, gnu::always_inline]] inline int Bits() const noexcept { return _mm_movemask_ps(xyz) & 7; }
    /// Whether all three masks are set.
    [[nodiscard, gnu::always_inline]] inline bool All() const noexcept { return Bits() == 7; }

    [[nodiscard, gnu::always_inline]] friend inline Lanes operator+(Lanes a, Lanes b) noexcept
    {
        return {_mm_add_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator-(Lanes a, Lanes b) noexcept
    {
        return {_mm_sub_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator*(Lanes a, Lanes b) noexcept
    {
        return {_mm_mul_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator/(Lanes a, Lanes b) noexcept
    {
        return {_mm_div_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator&(Lanes a, Lanes b) noexcept
    {
        return {_mm_and_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<(Lanes a, Lanes b) noexcept
    {
        return {_mm_cmplt_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<=(Lanes a, Lanes b) noexcept
    {
        return {_mm_cmple_ps(a.xyz, b.xyz)};
    }
    /// Whether none of the three is NaN.
    [[nodiscard, gnu::always_inline]] inline bool IsOrdered() const noexcept
    {
        return Lanes{_mm_cmpunord_ps(xyz, xyz)}.Bits() == 0;
    }
    /// Raises the lower end of an interval to each of three numbers above it, and lowers the upper end, x first. The
    /// upper numbers are negated, so that one maximum does both.
    [[gnu::always_inline]] static inline void Narrow(Lanes first, Lanes last, float& tNear, float& tFar) noexcept
    {
        __m128 const sign = _mm_set1_ps(-0.0F);
        __m128 const negated = _mm_xor_ps(last.xyz, sign);
        __m128 const xy = _mm_unpacklo_ps(first.xyz, negated);
        __m128 const z = _mm_unpackhi_ps(first.xyz, negated);
        __m128 ends = _mm_max_ps(xy, _mm_setr_ps(tNear, -tFar, tNear, -tFar));
        ends = _mm_max_ps(_mm_movehl_ps(xy, xy), ends);
        ends = _mm_max_ps(z, ends);
        tNear = _mm_cvtss_f32(ends);
        tFar = -_mm_cvtss_f32(_mm_shuffle_ps(ends, ends, _MM_SHUFFLE(1, 1, 1, 1)));
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Min(Lanes a, Lanes b) noexcept
    {
        return {_mm_min_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Max(Lanes a, Lanes b) noexcept
    {
        return {_mm_max_ps(a.xyz, b.xyz)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Magnitude(Lanes a) noexcept
    {
        return {_mm_andnot_ps(_mm_set1_ps(-0.0F), a.xyz)};
    }
    /// 0 where the mask is set, a elsewhere.
    [[nodiscard, gnu::always_inline]] static inline Lanes Unless(Lanes mask, Lanes a) noexcept
    {
        return {_mm_andnot_ps(mask.xyz, a.xyz)};
    }
};

/// The third number has a register of its own. Its minima and maxima are those of whole registers: GCC takes the ones
/// of single numbers for commutative.
template <>
struct tLanes3<double>
{
    using Lanes = tLanes3;

    __m128d xy;
    __m128d z;

    [[nodiscard, gnu::always_inline]] static inline Lanes Load(void const* three) noexcept
    {
        auto const* const numbers = static_cast<double const*>(three);
        return {_mm_loadu_pd(numbers), _mm_load_sd(numbers + 2)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadFirst(void const* numbers) noexcept
    {
        return Load(numbers);
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes LoadLast(void const* numbers) noexcept
    {
        return Load(static_cast<double const*>(numbers) + 3);
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Broadcast(double value) noexcept
    {
        __m128d const both = _mm_set1_pd(value);
        return {both, both};
    }
    [[nodiscard, gnu::always_inline]] inline double X() const noexcept { return _mm_cvtsd_f64(xy); }
    [[nodiscard, gnu::always_inline]] inline double Y() const noexcept
    {
        return _mm_cvtsd_f64(_mm_unpackhi_pd(xy, xy));
    }
    [[nodiscard, gnu::always_inline]] inline double Z() const noexcept { return _mm_cvtsd_f64(z); }
    [[nodiscard, gnu::always_inline]] inline int Bits() const noexcept
    {
        return _mm_movemask_pd(xy) | (_mm_movemask_pd(z) & 1) << 2;
    }
    [[nodiscard, gnu::always_inline]] inline bool All() const noexcept
    {
        return _mm_movemask_pd(_mm_and_pd(xy, _mm_unpacklo_pd(z, z))) == 3;
    }

    [[nodiscard, gnu::always_inline]] friend inline Lanes operator+(Lanes a, Lanes b) noexcept
    {
        return {_mm_add_pd(a.xy, b.xy), _mm_add_sd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator-(Lanes a, Lanes b) noexcept
    {
        return {_mm_sub_pd(a.xy, b.xy), _mm_sub_sd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator*(Lanes a, Lanes b) noexcept
    {
        return {_mm_mul_pd(a.xy, b.xy), _mm_mul_pd(a.z, b.z)}; // Clang would clear the rest of a single product
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator/(Lanes a, Lanes b) noexcept
    {
        return {_mm_div_pd(a.xy, b.xy), _mm_div_sd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator&(Lanes a, Lanes b) noexcept
    {
        return {_mm_and_pd(a.xy, b.xy), _mm_and_pd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<(Lanes a, Lanes b) noexcept
    {
        return {_mm_cmplt_pd(a.xy, b.xy), _mm_cmplt_sd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] friend inline Lanes operator<=(Lanes a, Lanes b) noexcept
    {
        return {_mm_cmple_pd(a.xy, b.xy), _mm_cmple_sd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] inline bool IsOrdered() const noexcept
    {
        return Lanes{_mm_cmpunord_pd(xy, xy), _mm_cmpunord_sd(z, z)}.Bits() == 0;
    }
    [[gnu::always_inline]] static inline void Narrow(Lanes first, Lanes last, double& tNear, double& tFar) noexcept
    {
        __m128d const sign = _mm_set1_pd(-0.0);
        __m128d const negated = _mm_xor_pd(last.xy, sign);
        __m128d ends = _mm_max_pd(_mm_unpacklo_pd(first.xy, negated), _mm_setr_pd(tNear, -tFar));
        ends = _mm_max_pd(_mm_unpackhi_pd(first.xy, negated), ends);
        ends = _mm_max_pd(_mm_unpacklo_pd(first.z, _mm_xor_pd(last.z, sign)), ends);
        tNear = _mm_cvtsd_f64(ends);
        tFar = -_mm_cvtsd_f64(_mm_unpackhi_pd(ends, ends));
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Min(Lanes a, Lanes b) noexcept
    {
        return {_mm_min_pd(a.xy, b.xy), _mm_min_pd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Max(Lanes a, Lanes b) noexcept
    {
        return {_mm_max_pd(a.xy, b.xy), _mm_max_pd(a.z, b.z)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Magnitude(Lanes a) noexcept
    {
        __m128d const sign = _mm_set1_pd(-0.0);
        return {_mm_andnot_pd(sign, a.xy), _mm_andnot_pd(sign, a.z)};
    }
    [[nodiscard, gnu::always_inline]] static inline Lanes Unless(Lanes mask, Lanes a) noexcept
    {
        return {_mm_andnot_pd(mask.xy, a.xy), _mm_andnot_pd(mask.z, a.z)};
    }
};

/// Moves a box of six numbers, the lower corner first, by the first three rows of a matrix. Each row gives its three
/// products at once, and the rows are then turned, so that every bound is summed from the translation on, x first.
[[gnu::always_inline]] inline void MoveBox(void const* box, float const* matrix, void* moved) noexcept
{
    __m128 const lowerAndX = _mm_loadu_ps(static_cast<float const*>(box));
    __m128 const yz =
        _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<__m128i const*>(static_cast<float const*>(box) + 4)));
    __m128 const xxyz = _mm_shuffle_ps(lowerAndX, yz, _MM_SHUFFLE(1, 0, 3, 3));
    __m128 const upper = _mm_shuffle_ps(xxyz, xxyz, _MM_SHUFFLE(3, 3, 2, 1));
    __m128 const row0 = _mm_loadu_ps(matrix);
    __m128 const row1 = _mm_loadu_ps(matrix + 4);
    __m128 const row2 = _mm_loadu_ps(matrix + 8);
    // the fourth number of each is the translation, whatever the product beside it
    __m128 const a0 = row0 * lowerAndX;
    __m128 const a1 = row1 * lowerAndX;
    __m128 const a2 = row2 * lowerAndX;
    __m128 const b0 = row0 * upper;
    __m128 const b1 = row1 * upper;
    __m128 const b2 = row2 * upper;
    __m128 const lower0 = _mm_min_ps(a0, b0);
    __m128 const lower1 = _mm_min_ps(a1, b1);
    __m128 const lower2 = _mm_min_ps(a2, b2);
    __m128 const upper0 = _mm_max_ps(b0, a0);
    __m128 const upper1 = _mm_max_ps(b1, a1);
    __m128 const upper2 = _mm_max_ps(b2, a2);

    // lower x, y, z and upper x; then upper y and z
    __m128 const xy01 = _mm_unpacklo_ps(lower0, lower1);
    __m128 const xy23 = _mm_unpacklo_ps(lower2, upper0);
    __m128 const z01 = _mm_unpackhi_ps(lower0, lower1);
    __m128 const z23 = _mm_unpackhi_ps(lower2, upper0);
    __m128 const xy45 = _mm_unpacklo_ps(upper1, upper2);
    __m128 const z45 = _mm_unpackhi_ps(upper1, upper2);
    __m128 const row01 = _mm_unpackhi_ps(row0, row1);
    __m128 const row20 = _mm_unpackhi_ps(row2, row0);
    __m128 const row12 = _mm_unpackhi_ps(row1, row2);
    __m128 const first = ((_mm_movehl_ps(row20, row01) + _mm_movelh_ps(xy01, xy23)) + _mm_movehl_ps(xy23, xy01)) +
                         _mm_movelh_ps(z01, z23);
    __m128 const last = ((_mm_movehl_ps(row12, row12) + xy45) + _mm_movehl_ps(xy45, xy45)) + z45;
    _mm_storeu_ps(static_cast<float*>(moved), first);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(static_cast<float*>(moved) + 4), _mm_castps_si128(last));
}

/// The same column by column, all three rows at a time.
[[gnu::always_inline]] inline void MoveBox(void const* box, double const* matrix, void* moved) noexcept
{
    using Lanes = tLanes3<double>;
    auto const* const corners = static_cast<double const*>(box);
    Lanes lower{_mm_setr_pd(matrix[3], matrix[7]), _mm_set_sd(matrix[11])};
    Lanes upper = lower;
    for (int axis = 0; axis < 3; ++axis)
    {
        Lanes const column{_mm_setr_pd(matrix[axis], matrix[4 + axis]), _mm_set_sd(matrix[8 + axis])};
        Lanes const a = column * Lanes::Broadcast(corners[axis]);
        Lanes const b = column * Lanes::Broadcast(corners[3 + axis]);
        lower = lower + Lanes::Min(a, b);
        upper = upper + Lanes::Max(b, a);
    }
    auto* const results = static_cast<double*>(moved);
    _mm_storeu_pd(results, lower.xy);
    _mm_store_sd(results + 2, lower.z);
    _mm_storeu_pd(results + 3, upper.xy);
    _mm_store_sd(results + 5, upper.z);
}

#else

/// The square root.
template <typename T>
[[nodiscard, gnu::always_inline]] inline T SquareRoot(T value) noexcept
{
    return std::sqrt(value);
}

/// Moves a box of six numbers, the lower corner first, by the first three rows of a matrix: each bound is summed from
/// the translation on, x first.
template <typename T>
[[gnu::always_inline]] inline void MoveBox(void const* box, T const* matrix, void* moved) noexcept
{
    auto const* const corners = static_cast<T const*>(box);
    auto* const results = static_cast<T*>(moved);
    for (int row = 0; row < 3; ++row)
    {
        T lower = matrix[4 * row + 3];
        T upper = lower;
        for (int axis = 0; axis < 3; ++axis)
        {
            T const a = matrix[4 * row + axis] * corners[axis];
            T const b = matrix[4 * row + axis] * corners[3 + axis];
            lower += a < b ? a : b;
            upper += b > a ? b : a;
        }
        results[row] = lower;
        results[3 + row] = upper;
    }
}

#endif

} // namespace bv::maths::detail
