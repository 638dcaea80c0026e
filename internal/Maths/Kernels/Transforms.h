#pragma once

/// @file
/// The loops over points and directions that a matrix moves. Sums and products stand in the order of the single forms.

#include <limits>

#include "Maths/Kernels/Lanes/Arrays.h"
#include "bv/maths/IsEqual.h"

namespace bv::maths
{

namespace
{

template <typename T, std::size_t BYTES>
struct Transforms
{
    using V = Register<T, BYTES>;
    using M = Mask<V>;
    using Lanes = VectorLanes<V>;
    static constexpr std::size_t LANES = COUNT<V>;

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

        /// A row times the points, whose fourth component is 1.
        template <int ROW>
        [[nodiscard, gnu::always_inline]] V Point(Lanes const& points) const noexcept
        {
            return Direction<ROW>(points) + m[4 * ROW + 3];
        }
        /// A row times the directions, whose fourth component is 0.
        template <int ROW>
        [[nodiscard, gnu::always_inline]] V Direction(Lanes const& directions) const noexcept
        {
            auto const& [x, y, z] = directions.axes;
            return m[4 * ROW] * x + m[4 * ROW + 1] * y + m[4 * ROW + 2] * z;
        }
    };

    static std::size_t Project(T const* matrix, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        Coefficients const rows(matrix);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            Lanes const point = LoadVectors<V>(streams, i);
            V w = rows.template Point<3>(point);
            M const isTooSmall = Magnitude(w) < TOLERANCE<T>;
            if (Any(isTooSmall))
            {
                if (streams.bits == nullptr)
                    return i;
                streams.bits[i / 64] |= BitsAt(isTooSmall, i);
                w = Select(isTooSmall, Broadcast<V>(T{1}), w);
            }
            V const reciprocal = T{1} / w;
            StoreVectors(Lanes{rows.template Point<0>(point) * reciprocal, rows.template Point<1>(point) * reciprocal,
                               rows.template Point<2>(point) * reciprocal},
                         streams, i);
        }
        return count;
    }

    /// With (0, 0, 0, 1) for the fourth row, w is 1, and NaN where a component is infinite or NaN; so is its
    /// reciprocal.
    static std::size_t Move(T const* matrix, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        Coefficients const rows(matrix);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            Lanes const point = LoadVectors<V>(streams, i);
            auto const& [x, y, z] = point.axes;
            V const w = x * T{0} + y * T{0} + z * T{0} + T{1};
            StoreVectors(Lanes{rows.template Point<0>(point) * w, rows.template Point<1>(point) * w,
                               rows.template Point<2>(point) * w},
                         streams, i);
        }
        return count;
    }

    static std::size_t ToClip(T const* matrix, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        Coefficients const rows(matrix);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            Lanes const point = LoadVectors<V>(streams, i);
            StoreVectors(
                Lanes{rows.template Point<0>(point), rows.template Point<1>(point), rows.template Point<2>(point)},
                streams, i);
            Store(rows.template Point<3>(point), streams.out[3] + i);
        }
        return count;
    }

    /// Where IsEqual(value, 1) holds: from 50 representable values below to 50 above, which its tolerance lies within.
    [[gnu::always_inline]] static M IsOne(V const& value) noexcept
    {
        constexpr T EPSILON = std::numeric_limits<T>::epsilon();
        return Both(value >= T{1} - 50 * EPSILON / 2, value <= T{1} + 50 * EPSILON);
    }

    [[nodiscard, gnu::always_inline]] static V LengthSquared(Lanes const& vectors) noexcept
    {
        auto const& [x, y, z] = vectors.axes;
        return x * x + y * y + z * z;
    }

    [[nodiscard, gnu::always_inline]] static Lanes Normalised(Lanes const& vectors) noexcept
    {
        V const reciprocal = T{1} / SquareRoots(LengthSquared(vectors));
        auto const& [x, y, z] = vectors.axes;
        return {x * reciprocal, y * reciprocal, z * reciprocal};
    }

    static std::size_t Rotate(T const* matrix, unsigned int normalises, Streams<T> const& streams, std::size_t count)
    {
        Coefficients const rows(matrix);
        for (std::size_t i = 0; i < count; i += LANES)
        {
            Lanes const direction = LoadVectors<V>(streams, i);
            Lanes rotated{rows.template Direction<0>(direction), rows.template Direction<1>(direction),
                          rows.template Direction<2>(direction)};
            if (normalises != 0)
            {
                M const mask = IsOne(LengthSquared(direction));
                if (Any(mask))
                {
                    Lanes const unit = Normalised(rotated);
                    for (std::size_t axis = 0; axis < 3; ++axis)
                        rotated.axes[axis] = Select(mask, unit.axes[axis], rotated.axes[axis]);
                }
            }
            StoreVectors(rotated, streams, i);
        }
        return count;
    }

    static std::size_t Normalise(T const*, unsigned int, Streams<T> const& streams, std::size_t count)
    {
        for (std::size_t i = 0; i < count; i += LANES)
            StoreVectors(Normalised(LoadVectors<V>(streams, i)), streams, i);
        return count;
    }
};

} // namespace

} // namespace bv::maths
