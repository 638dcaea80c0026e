#pragma once

/// @file
/// The distances of a box's corners from several planes at a time, in the registers of SSE2.
///
/// Everything here is forced into its caller: its code depends on the flags of the file that includes it.

#if defined __SSE2__
#include <emmintrin.h>

namespace bv::maths::detail
{

/// One number for each of several planes.
template <typename T>
struct tPlaneVector;

template <>
struct tPlaneVector<float>
{
    using Vector = __m128; ///< of four planes

    [[nodiscard, gnu::always_inline]] static inline Vector Broadcast(float value) noexcept
    {
        return _mm_set1_ps(value);
    }
    [[nodiscard, gnu::always_inline]] static inline Vector Xor(Vector a, Vector b) noexcept { return _mm_xor_ps(a, b); }
    [[nodiscard, gnu::always_inline]] static inline Vector And(Vector a, Vector b) noexcept { return _mm_and_ps(a, b); }
    /// All bits set where a is not negative, all clear elsewhere.
    [[nodiscard, gnu::always_inline]] static inline Vector IsUpward(Vector a) noexcept
    {
        return _mm_cmple_ps(_mm_setzero_ps(), a);
    }
    /// One bit for each number below 0.
    [[nodiscard, gnu::always_inline]] static inline int Negative(Vector a) noexcept
    {
        return _mm_movemask_ps(_mm_cmplt_ps(a, _mm_setzero_ps()));
    }
};

template <>
struct tPlaneVector<double>
{
    using Vector = __m128d; ///< of two planes

    [[nodiscard, gnu::always_inline]] static inline Vector Broadcast(double value) noexcept
    {
        return _mm_set1_pd(value);
    }
    [[nodiscard, gnu::always_inline]] static inline Vector Xor(Vector a, Vector b) noexcept { return _mm_xor_pd(a, b); }
    [[nodiscard, gnu::always_inline]] static inline Vector And(Vector a, Vector b) noexcept { return _mm_and_pd(a, b); }
    [[nodiscard, gnu::always_inline]] static inline Vector IsUpward(Vector a) noexcept
    {
        return _mm_cmple_pd(_mm_setzero_pd(), a);
    }
    [[nodiscard, gnu::always_inline]] static inline int Negative(Vector a) noexcept
    {
        return _mm_movemask_pd(_mm_cmplt_pd(a, _mm_setzero_pd()));
    }
};

/// Several planes, component by component.
template <typename T>
struct tPlaneLanes
{
    using Vector = typename tPlaneVector<T>::Vector;

    Vector offset;
    Vector x;
    Vector y;
    Vector z;

    /// Signed distances of as many points, summed y, x, z, offset.
    [[nodiscard, gnu::always_inline]] inline Vector Distance(Vector atX, Vector atY, Vector atZ) const noexcept
    {
        return ((y * atY + x * atX) + z * atZ) + offset;
    }
};

/// Four planes, number by number: unlike loads of whole planes, these are kept by a loop that stores something else.
template <typename Plane>
[[nodiscard, gnu::always_inline]] inline tPlaneLanes<float> LoadPlanes(Plane const& a, Plane const& b, Plane const& c,
                                                                       Plane const& d) noexcept
{
    return {_mm_setr_ps(a.GetOffset(), b.GetOffset(), c.GetOffset(), d.GetOffset()),
            _mm_setr_ps(a.GetNormal().x, b.GetNormal().x, c.GetNormal().x, d.GetNormal().x),
            _mm_setr_ps(a.GetNormal().y, b.GetNormal().y, c.GetNormal().y, d.GetNormal().y),
            _mm_setr_ps(a.GetNormal().z, b.GetNormal().z, c.GetNormal().z, d.GetNormal().z)};
}

/// Two planes, number by number.
template <typename Plane>
[[nodiscard, gnu::always_inline]] inline tPlaneLanes<double> LoadPlanes(Plane const& a, Plane const& b) noexcept
{
    return {_mm_setr_pd(a.GetOffset(), b.GetOffset()), _mm_setr_pd(a.GetNormal().x, b.GetNormal().x),
            _mm_setr_pd(a.GetNormal().y, b.GetNormal().y), _mm_setr_pd(a.GetNormal().z, b.GetNormal().z)};
}

/// A box whose corners are chosen plane by plane, axis by axis.
template <typename T>
class tCornerLanes
{
    using Lanes = tPlaneVector<T>;
    using Vector = typename Lanes::Vector;

    Vector lower[3];
    Vector upper[3];
    Vector difference[3]; ///< the bits in which the two differ

public:
    /// The box of these six numbers, the lower corner first.
    [[gnu::always_inline]] inline explicit tCornerLanes(T const* lowerCorner, T const* upperCorner) noexcept
        : lower{Lanes::Broadcast(lowerCorner[0]), Lanes::Broadcast(lowerCorner[1]), Lanes::Broadcast(lowerCorner[2])},
          upper{Lanes::Broadcast(upperCorner[0]), Lanes::Broadcast(upperCorner[1]), Lanes::Broadcast(upperCorner[2])},
          difference{Lanes::Xor(lower[0], upper[0]), Lanes::Xor(lower[1], upper[1]), Lanes::Xor(lower[2], upper[2])}
    {
    }

    /// Bits of the planes whose farthest corner along the normal lies behind them, and of those whose nearest does.
    [[gnu::always_inline]] inline void Test(tPlaneLanes<T> const& planes, int& rejected, int& straddled) const noexcept
    {
        Vector const x = Lanes::And(Lanes::IsUpward(planes.x), difference[0]);
        Vector const y = Lanes::And(Lanes::IsUpward(planes.y), difference[1]);
        Vector const z = Lanes::And(Lanes::IsUpward(planes.z), difference[2]);
        rejected |=
            Lanes::Negative(planes.Distance(Lanes::Xor(lower[0], x), Lanes::Xor(lower[1], y), Lanes::Xor(lower[2], z)));
        straddled |=
            Lanes::Negative(planes.Distance(Lanes::Xor(upper[0], x), Lanes::Xor(upper[1], y), Lanes::Xor(upper[2], z)));
    }

    /// The same for two planes that stand twice each: one pass sees both of their corners.
    [[gnu::always_inline]] inline void TestTwo(tPlaneLanes<T> const& planes, int& rejected,
                                               int& straddled) const noexcept requires(sizeof(T) == sizeof(float))
    {
        Vector const nearest = _mm_castsi128_ps(_mm_set_epi32(-1, -1, 0, 0));
        Vector const x = Lanes::And(Lanes::Xor(Lanes::IsUpward(planes.x), nearest), difference[0]);
        Vector const y = Lanes::And(Lanes::Xor(Lanes::IsUpward(planes.y), nearest), difference[1]);
        Vector const z = Lanes::And(Lanes::Xor(Lanes::IsUpward(planes.z), nearest), difference[2]);
        int const bits =
            Lanes::Negative(planes.Distance(Lanes::Xor(lower[0], x), Lanes::Xor(lower[1], y), Lanes::Xor(lower[2], z)));
        rejected |= bits & 3;
        straddled |= bits & 12;
    }
};

} // namespace bv::maths::detail

#endif
