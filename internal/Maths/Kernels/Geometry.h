#pragma once

/// @file
/// The loops over points and boxes. Sums and products stand in the order of the single forms.

#include <iterator>

#include "Maths/Kernels/Kernels.h"
#include "Maths/Kernels/Lanes/Vectors.h"
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
    using V = Lanes<T, BYTES>;
    using M = Mask<V>;
    using Narrow = Lanes<std::int32_t, sizeof(std::int32_t) * BYTES / sizeof(T)>;
    static constexpr std::size_t COUNT = BYTES / sizeof(T); ///< lanes
    static constexpr std::size_t STRIDE = 3 * 16;           ///< bytes of the points that fill three times 16 bytes

    using Points = Vectors<V, 3>;

    [[gnu::always_inline]] static Points LoadPoints(void const* points) noexcept
    {
        if constexpr (BYTES == 64)
            return LoadPermuted<V>(points);
        else
            return LoadVectors<T, BYTES, 3>(points);
    }

    /// The elements of a matrix, each in all lanes: results that are written might, for all the compiler knows, be the
    /// matrix, which it would read again for every vector of them.
    struct Coefficients
    {
        V m[16];

        explicit Coefficients(T const* matrix) noexcept
        {
            for (std::size_t i = 0; i < 16; ++i)
                m[i] = Broadcast<V>(matrix[i]);
        }
    };

    static std::size_t Project(T const* matrix, tVector3<T> const* points, tVector3<T>* results, std::size_t count)
    {
        Coefficients const coefficients(matrix);
        V const* const m = coefficients.m;
        std::size_t done = 0;
        for (; done + COUNT <= count; done += COUNT)
        {
            auto const [x, y, z] = LoadPoints(points + done).components;
            V const w = x * m[12] + y * m[13] + z * m[14] + m[15];
            M const isBelow = w < TOLERANCE<T>;
            M const isAbove = w > -TOLERANCE<T>;
            if (Any(isBelow & isAbove))
                break;
            V const reciprocal = T{1} / w;
            StoreVectors(Points{(m[0] * x + m[1] * y + m[2] * z + m[3]) * reciprocal,
                                (m[4] * x + m[5] * y + m[6] * z + m[7]) * reciprocal,
                                (m[8] * x + m[9] * y + m[10] * z + m[11]) * reciprocal},
                         results + done);
        }
        return done;
    }

    /// Where IsEqual(value, 1) holds. The bits of a number that is that close to 1 ascend with it.
    [[gnu::always_inline]] static M IsOne(V value) noexcept
    {
        using I = Integer<T>;
        constexpr I ONE = sizeof(T) == sizeof(float) ? I{0x3F800000} : static_cast<I>(0x3FF0000000000000);
        constexpr I STEPS = 50;
        constexpr T SQUARED = TOLERANCE<T> * TOLERANCE<T>;
        M const bits = Bits<M>(value);
        V const difference = value - T{1};
        return ((bits >= ONE - STEPS) & (bits <= ONE + STEPS)) | (difference * difference < SQUARED);
    }

    static std::size_t Rotate(T const* matrix, bool normalises, tVector3<T> const* directions, tVector3<T>* results,
                              std::size_t count)
    {
        Coefficients const coefficients(matrix);
        V const* const m = coefficients.m;
        std::size_t done = 0;
        for (; done + COUNT <= count; done += COUNT)
        {
            auto const [x, y, z] = LoadPoints(directions + done).components;
            Points rotated{m[0] * x + m[1] * y + m[2] * z, m[4] * x + m[5] * y + m[6] * z,
                           m[8] * x + m[9] * y + m[10] * z};
            if (normalises)
                NormaliseWhere(IsOne(x * x + y * y + z * z), rotated);
            StoreVectors(rotated, results + done);
        }
        return done;
    }

    [[gnu::always_inline]] static void NormaliseWhere(M mask, Points& p) noexcept
    {
        if (!Any(mask))
            return;
        auto const& [x, y, z] = p.components;
        V const reciprocal = T{1} / SquareRoot(x * x + y * y + z * z);
        for (V& component : p.components)
            component = SelectBySign(mask, component * reciprocal, component);
    }

    /// COUNT points that are all the same one, as they lie in memory.
    [[gnu::always_inline]] static Points Repeat(T const* point) noexcept
    {
        T lanes[3 * COUNT];
        for (std::size_t i = 0; i < 3 * COUNT; i += 3)
            __builtin_memcpy(lanes + i, point, 3 * sizeof(T));
        return {{Load<V>(lanes), Load<V>(lanes + COUNT), Load<V>(lanes + 2 * COUNT)}};
    }

    static std::size_t Grow(T* lower, T* upper, tVector3<T> const* points, std::size_t count)
    {
        auto [low0, low1, low2] = Repeat(lower).components;
        auto [high0, high1, high2] = Repeat(upper).components;
        std::size_t done = 0;
        for (; done + COUNT <= count; done += COUNT)
        {
            auto const* const bytes = reinterpret_cast<std::byte const*>(points + done);
            V const first = Load<V>(bytes);
            V const second = Load<V>(bytes + BYTES);
            V const third = Load<V>(bytes + 2 * BYTES);
            low0 = Min(first, low0);
            low1 = Min(second, low1);
            low2 = Min(third, low2);
            high0 = Max(first, high0);
            high1 = Max(second, high1);
            high2 = Max(third, high2);
        }
        Join({{low0, low1, low2}}, lower, points, [](T value, T end) { return value < end; });
        Join({{high0, high1, high2}}, upper, points, [](T value, T end) { return value > end; });
        return done;
    }

    /// Joins the lanes of each component, which lie as in points. Zeros of both signs are equal, and the single form
    /// keeps the one that it meets first: where the lanes do not agree on it, the points tell.
    template <typename Beyond>
    static void Join(Points const& grown, T* ends, tVector3<T> const* points, Beyond beyond) noexcept
    {
        T lanes[3 * COUNT];
        __builtin_memcpy(lanes, grown.components, sizeof lanes);
        for (std::size_t component = 0; component < 3; ++component)
        {
            T end = lanes[component];
            for (std::size_t i = component; i < 3 * COUNT; i += 3)
                end = beyond(lanes[i], end) ? lanes[i] : end;
            ends[component] = end;
            for (std::size_t i = component; i < 3 * COUNT; i += 3)
                if (end == T{0} && lanes[i] == T{0} && __builtin_signbit(lanes[i]) != __builtin_signbit(end))
                {
                    ends[component] = FirstZero(points, component);
                    break;
                }
        }
    }

    [[gnu::cold]] static T FirstZero(tVector3<T> const* points, std::size_t component) noexcept
    {
        for (;; ++points)
        {
            T const value = component == 0 ? points->x : component == 1 ? points->y : points->z;
            if (value == T{0})
                return value;
        }
    }

    /// The corners of boxes, lower and upper, and their components.
    struct Boxes
    {
        V corners[2][3];
    };

    [[gnu::always_inline]] static void PickCorners(V first, V second, V& lower, V& upper) noexcept
    {
        if constexpr (sizeof(T) == sizeof(float))
        {
            lower = Pick<0, 2, 0, 2>(first, second);
            upper = Pick<1, 3, 1, 3>(first, second);
        }
        else
        {
            lower = Pick<0, 0>(first, second);
            upper = Pick<1, 1>(first, second);
        }
    }

    /// Corners lie in memory like points: lower, upper, lower, upper and so on. Each 16 bytes of lanes take half of
    /// their boxes from one vector of them and half from the next.
    [[gnu::always_inline]] static Boxes LoadBoxes(void const* boxes) noexcept
    {
        auto const* const bytes = static_cast<std::byte const*>(boxes);
        Points const first = LoadVectors<T, BYTES, 3>(bytes, 2 * STRIDE);
        Points const second = LoadVectors<T, BYTES, 3>(bytes + STRIDE, 2 * STRIDE);
        Boxes result;
#pragma GCC unroll 3
        for (std::size_t axis = 0; axis < 3; ++axis)
            PickCorners(first.components[axis], second.components[axis], result.corners[0][axis],
                        result.corners[1][axis]);
        return result;
    }

    /// Signed distances of points from a plane, in the order of tPlane::GetDistance().
    [[gnu::always_inline]] static V Distance(T const* plane, V x, V y, V z) noexcept
    {
        return ((plane[1] * y + plane[0] * x) + plane[2] * z) + plane[3];
    }

    /// Where the components of two opposite corners stand in the bytes of Boxes: of the corner that lies farthest along
    /// a normal, and of the one that lies nearest.
    struct Corners
    {
        std::size_t farthest[3], nearest[3];

        explicit Corners(T const* normal) noexcept
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
            {
                bool const isUpper = normal[axis] >= T{0};
                farthest[axis] = ((isUpper ? 3 : 0) + axis) * BYTES;
                nearest[axis] = ((isUpper ? 0 : 3) + axis) * BYTES;
            }
        }
    };

    [[gnu::always_inline]] static V CornerDistance(T const* plane, Boxes const& boxes,
                                                   std::size_t const (&corner)[3]) noexcept
    {
        auto const* const bytes = reinterpret_cast<std::byte const*>(&boxes);
        return Distance(plane, Load<V>(bytes + corner[0]), Load<V>(bytes + corner[1]), Load<V>(bytes + corner[2]));
    }

    static std::size_t Classify(T const* planes, tVolumeAABB<T> const* boxes,
                                typename tFrustum<T>::IntersectionResult* results, std::size_t count)
    {
        Corners const corners[] = {Corners(planes),      Corners(planes + 4),  Corners(planes + 8),
                                   Corners(planes + 12), Corners(planes + 16), Corners(planes + 20)};
        std::size_t done = 0;
        for (; done + COUNT <= count; done += COUNT)
        {
            Boxes const box = LoadBoxes(boxes + done);
            // A distance that is NaN is not the smaller one, just as it is not below 0.
            V farthest{};
            V nearest{};
            for (std::size_t plane = 0; plane < std::size(corners); ++plane)
            {
                farthest = Min(CornerDistance(planes + 4 * plane, box, corners[plane].farthest), farthest);
                nearest = Min(CornerDistance(planes + 4 * plane, box, corners[plane].nearest), nearest);
            }
            // OUTSIDE where a plane has all of the box behind it, INTERSECTING where one has a part, else INSIDE.
            M const isOutside = farthest < T{0};
            M const straddles = nearest < T{0};
            M const result = (straddles + 2) & ~isOutside;
            Store(__builtin_convertvector(result, Narrow), results + done);
        }
        return done;
    }
};

} // namespace

} // namespace bv::maths
