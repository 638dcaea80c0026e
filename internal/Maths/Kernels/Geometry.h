#pragma once

/// @file
/// The loops over points and boxes. Sums and products stand in the order of the single forms.

#include <limits>

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Lanes/Points.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Geometry
{
    using V = Register<T, BYTES>;
    using M = Mask<V>;
    using Vectors = Points<V, 3>;
    using Result = typename tFrustum<T>::IntersectionResult;
    static constexpr std::size_t LANES = COUNT<V>;

    [[gnu::always_inline]] static Vectors LoadVectors(tVector3<T> const* vectors) noexcept
    {
        return LoadPoints<V, 3>(Numbers<T>(vectors));
    }

    /// The elements of a matrix, each in all lanes: results that are written might, for all the compiler knows, be the
    /// matrix, which it would read again for every register of them.
    struct Coefficients
    {
        V m[16];

        [[gnu::always_inline]] explicit Coefficients(T const* matrix) noexcept
        {
            for (int i = 0; i < 16; ++i)
                m[i] = Broadcast<V>(matrix[i]);
        }
    };

    static std::size_t Project(T const* matrix, tVector3<T> const* points, tVector3<T>* results, std::size_t count)
    {
        Coefficients const coefficients(matrix);
        V const* const m = coefficients.m;
        std::size_t done = 0;
        for (; done + LANES <= count; done += LANES)
        {
            auto const [x, y, z] = LoadVectors(points + done).axes;
            V const w = x * m[12] + y * m[13] + z * m[14] + m[15];
            if (Any(Magnitude(w) < TOLERANCE<T>))
                break;
            V const reciprocal = T{1} / w;
            Vectors const projected{(m[0] * x + m[1] * y + m[2] * z + m[3]) * reciprocal,
                                    (m[4] * x + m[5] * y + m[6] * z + m[7]) * reciprocal,
                                    (m[8] * x + m[9] * y + m[10] * z + m[11]) * reciprocal};
            StorePoints(projected, Numbers<T>(results + done));
        }
        return done;
    }

    /// Where IsEqual(value, 1) holds: from 50 representable values below to 50 above, which its tolerance lies within.
    [[gnu::always_inline]] static M IsOne(V const& value) noexcept
    {
        constexpr T EPSILON = std::numeric_limits<T>::epsilon();
        return Both(value >= T{1} - 50 * EPSILON / 2, value <= T{1} + 50 * EPSILON);
    }

    [[gnu::always_inline]] static void NormaliseWhere(M const& mask, Vectors& vectors) noexcept
    {
        if (!Any(mask))
            return;
        auto const [x, y, z] = vectors.axes;
        V const reciprocal = T{1} / SquareRoots(x * x + y * y + z * z);
        for (V& component : vectors.axes)
            component = Select(mask, component * reciprocal, component);
    }

    static std::size_t Rotate(T const* matrix, bool normalises, tVector3<T> const* directions, tVector3<T>* results,
                              std::size_t count)
    {
        Coefficients const coefficients(matrix);
        V const* const m = coefficients.m;
        std::size_t done = 0;
        for (; done + LANES <= count; done += LANES)
        {
            auto const [x, y, z] = LoadVectors(directions + done).axes;
            Vectors rotated{m[0] * x + m[1] * y + m[2] * z, m[4] * x + m[5] * y + m[6] * z,
                            m[8] * x + m[9] * y + m[10] * z};
            if (normalises)
                NormaliseWhere(IsOne(x * x + y * y + z * z), rotated);
            StorePoints(rotated, Numbers<T>(results + done));
        }
        return done;
    }

    static std::size_t Grow(T* from, T* to, tVector3<T> const* points, std::size_t count)
    {
        constexpr T INFINITE = std::numeric_limits<T>::infinity();
        V const infinity = Broadcast<V>(INFINITE);
        Vectors low{infinity, infinity, infinity};
        Vectors high{-infinity, -infinity, -infinity};
        std::size_t done = 0;
        for (; done + LANES <= count; done += LANES)
#pragma GCC unroll 3
            for (std::size_t i = 0; i < 3; ++i)
            {
                V const numbers = Load<V>(Numbers<T>(points + done) + i * LANES);
                low.axes[i] = Min(numbers, low.axes[i]);
                high.axes[i] = Max(numbers, high.axes[i]);
            }
        auto const lower = [](auto const& a, auto const& b) { return a < b ? a : b; };
        auto const higher = [](auto const& a, auto const& b) { return a > b ? a : b; };
        Fold(low, lower, points, from);
        Fold(high, higher, points, to);
        return done;
    }

    /// Moves the ends of a box to those of lanes, which lie as points do in memory. Zeros of both signs are equal, and
    /// the single form keeps the one that it meets first.
    template <typename W, typename Choose>
    [[gnu::always_inline]] static void Fold(Points<W, 3> const& lanes, Choose choose, tVector3<T> const* points,
                                            T* ends) noexcept
    {
        if constexpr (sizeof(W) > 16)
        {
            auto const [a, b] = Split(lanes.axes[0]);
            auto const [c, d] = Split(lanes.axes[1]);
            auto const [e, f] = Split(lanes.axes[2]);
            Fold(Points<HalfRegister<W>, 3>{choose(a, d), choose(b, e), choose(c, f)}, choose, points, ends);
        }
        else
        {
            T numbers[3 * COUNT<W>];
            __builtin_memcpy(numbers, lanes.axes, sizeof numbers);
            for (std::size_t axis = 0; axis < 3; ++axis)
            {
                T end = ends[axis];
                for (std::size_t i = axis; i < 3 * COUNT<W>; i += 3)
                    end = choose(numbers[i], end);
                ends[axis] = end == 0 && ends[axis] != 0 ? FirstZero(points, axis) : end;
            }
        }
    }

    /// The component along an axis of the first point where it is 0; there is one.
    [[gnu::cold]] static T FirstZero(tVector3<T> const* points, std::size_t axis) noexcept
    {
        for (;; ++points)
        {
            T const value = axis == 0 ? points->x : axis == 1 ? points->y : points->z;
            if (value == 0)
                return value;
        }
    }

    /// The corners of boxes, lower and upper, and their components.
    struct Boxes
    {
        V corners[2][3];
    };

    /// Corners lie in memory like points: lower, upper, lower, upper and so on. Half of the boxes of a part come from
    /// one part of points, half from the next.
    [[gnu::always_inline]] static Boxes LoadBoxes(tVolumeAABB<T> const* boxes) noexcept
    {
        constexpr std::size_t STRIDE = 6 * PART<V>;
        T const* const numbers = Numbers<T>(boxes);
        Vectors const first = LoadPoints<V, 3>(numbers, STRIDE);
        Vectors const second = LoadPoints<V, 3>(numbers + STRIDE / 2, STRIDE);
        Boxes result;
#pragma GCC unroll 3
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            result.corners[0][axis] = EverySecond<0>(first.axes[axis], second.axes[axis]);
            result.corners[1][axis] = EverySecond<1>(first.axes[axis], second.axes[axis]);
        }
        return result;
    }

    /// Of boxes and a plane: the components of the corners that lie farthest along its normal, and of those that lie
    /// nearest.
    struct Corners
    {
        V const* farthest[3];
        V const* nearest[3];

        Corners(T const* normal, Boxes const& boxes) noexcept
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
            {
                bool const isUpper = normal[axis] >= T{0};
                farthest[axis] = &boxes.corners[isUpper ? 1 : 0][axis];
                nearest[axis] = &boxes.corners[isUpper ? 0 : 1][axis];
            }
        }
    };

    /// Signed distances of corners from a plane, in the order of tPlane::GetDistance().
    [[gnu::always_inline]] static V Distance(T const* plane, V const* const (&corner)[3]) noexcept
    {
        return ((plane[1] * *corner[1] + plane[0] * *corner[0]) + plane[2] * *corner[2]) + plane[3];
    }

    static std::size_t Classify(T const* planes, tVolumeAABB<T> const* boxes, Result* results, std::size_t count)
    {
        using Narrow = Register<std::int32_t, LANES * sizeof(std::int32_t)>;
        Boxes box{};
        Corners const corners[] = {{planes, box},      {planes + 4, box},  {planes + 8, box},
                                   {planes + 12, box}, {planes + 16, box}, {planes + 20, box}};
        std::size_t done = 0;
        for (; done + LANES <= count; done += LANES)
        {
            box = LoadBoxes(boxes + done);
            // A distance that is NaN is not the smaller one, just as it is not below 0.
            V farthest{};
            V nearest{};
            for (std::size_t plane = 0; plane < 6; ++plane)
            {
                farthest = Min(Distance(planes + 4 * plane, corners[plane].farthest), farthest);
                nearest = Min(Distance(planes + 4 * plane, corners[plane].nearest), nearest);
            }
            // Outside where a plane has all of the box behind it, intersecting where one has a part, else inside.
            V const straddles =
                Select(nearest < T{0}, Broadcast<V>(Result::INTERSECTING), Broadcast<V>(Result::INSIDE));
            V const result = Select(farthest < T{0}, Broadcast<V>(Result::OUTSIDE), straddles);
            Store(__builtin_convertvector(result, Narrow), Numbers<std::int32_t>(results + done));
        }
        return done;
    }
};

} // namespace

} // namespace bv::maths
