#pragma once

/// @file
/// Numbers to work on that are the same everywhere, and what is made of them.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <bv/maths/tAreaAABB.h>
#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVector2.h>
#include <bv/maths/tVector3.h>
#include <bv/maths/tVolumeAABB.h>

namespace digest
{

using namespace bv::maths;

/// How often one component in so many is special: never, seldom, often.
inline constexpr unsigned int RARITIES[] = {0, 24, 4};

/// Numbers that are the same on every machine, and mixed so that the edges of the operations are met.
class Workload
{
    std::uint64_t state; ///< splitmix64

public:
    explicit Workload(std::uint64_t seed) noexcept : state{seed} {}

    [[nodiscard]] std::uint64_t Bits() noexcept
    {
        state += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }
    /// From 0 to below the bound.
    [[nodiscard]] unsigned int Below(unsigned int bound) noexcept
    {
        return static_cast<unsigned int>((Bits() >> 32) % bound);
    }
    [[nodiscard]] bool OneIn(unsigned int chances) noexcept { return Below(chances) == 0; }

    /// Uniform from -10 to 10.
    template <typename T>
    [[nodiscard]] T Plain() noexcept
    {
        return static_cast<T>(static_cast<double>(Bits() >> 11) * 0x1p-53 * 20 - 10);
    }
    /// Mostly a plain number, now and then a small integer, so that things touch and coincide.
    template <typename T>
    [[nodiscard]] T Usual() noexcept
    {
        return OneIn(4) ? static_cast<T>(static_cast<int>(Below(7)) - 3) : Plain<T>();
    }
    /// NaN, infinities, zeros, subnormals, the ends of the range, and the neighbourhood of the tolerances.
    template <typename T>
    [[nodiscard]] T Special() noexcept
    {
        using Limits = std::numeric_limits<T>;
        constexpr T VALUES[] = {Limits::quiet_NaN(),
                                Limits::infinity(),
                                T{0},
                                Limits::denorm_min(),
                                Limits::denorm_min() * 12345,
                                Limits::min() - Limits::denorm_min(),
                                Limits::min(),
                                Limits::max(),
                                Limits::max() / 2,
                                Limits::epsilon(),
                                Limits::epsilon() * 10,
                                Limits::epsilon() * 11,
                                T{1} + Limits::epsilon(),
                                T{1} - Limits::epsilon() / 2,
                                T{1} + Limits::epsilon() * 10,
                                T{1} + Limits::epsilon() * 50,
                                T{1} + Limits::epsilon() * 51,
                                T{1},
                                T{0.5},
                                T{8388608},
                                T{2147483648},
                                T{4294967296}};
        T const value = VALUES[Below(sizeof VALUES / sizeof *VALUES)];
        return OneIn(2) ? -value : value;
    }
    /// Any exponent and sign.
    template <typename T>
    [[nodiscard]] T Wide() noexcept
    {
        using Unsigned = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
        auto const value = std::bit_cast<T>(static_cast<Unsigned>(Bits()));
        return value == value ? value : T{0};
    }
    /// One number in `rarity` is special, and one has any exponent; 0 for neither.
    template <typename T>
    [[nodiscard]] T Number(unsigned int rarity) noexcept
    {
        if (rarity != 0 && OneIn(rarity))
            return Special<T>();
        if (rarity != 0 && OneIn(rarity))
            return Wide<T>();
        return Usual<T>();
    }
    /// The same, but no NaN, whose bits, and whether its text has a sign, are no promise.
    template <typename T>
    [[nodiscard]] T Ordered(unsigned int rarity) noexcept
    {
        T const number = Number<T>(rarity);
        return number == number ? number : T{7};
    }
    /// A neighbour of a value, within a hundred steps or within some tolerances of it.
    template <typename T>
    [[nodiscard]] T Near(T value) noexcept
    {
        using Unsigned = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
        if (OneIn(3))
        {
            T const near = value + (Plain<T>() * T{2}) * std::numeric_limits<T>::epsilon();
            return value == value ? near : value; // the bits of a sum that is NaN differ between processors
        }
        auto const steps = static_cast<Unsigned>(Below(120)) - Unsigned{60};
        return std::bit_cast<T>(static_cast<Unsigned>(std::bit_cast<Unsigned>(value) + steps));
    }

    template <typename T>
    [[nodiscard]] tVector2<T> Vector2(unsigned int rarity) noexcept
    {
        T const x = Number<T>(rarity);
        return {x, Number<T>(rarity)};
    }
    template <typename T>
    [[nodiscard]] tVector3<T> Vector3(unsigned int rarity) noexcept
    {
        T const x = Number<T>(rarity);
        T const y = Number<T>(rarity);
        return {x, y, Number<T>(rarity)};
    }
    /// Along an axis or in a plane of two, now and then; of unit length or not.
    template <typename T>
    [[nodiscard]] tVector3<T> Direction(unsigned int rarity) noexcept
    {
        tVector3<T> direction = Vector3<T>(rarity);
        if (OneIn(3))
            for (std::size_t axis = 0; axis < 3; ++axis)
                if (OneIn(2))
                    direction[axis] = OneIn(2) ? T{0} : -T{0};
        return OneIn(2) ? Normalised(direction) : direction;
    }
    /// Zero times infinity is a NaN whose sign differs between processors: here it is negative.
    template <typename T>
    [[nodiscard]] static tVector3<T> Normalised(tVector3<T> const& direction) noexcept
    {
        tVector3<T> unit = direction.Normalised();
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (direction[axis] == direction[axis] && unit[axis] != unit[axis])
                unit[axis] = -std::numeric_limits<T>::quiet_NaN();
        return unit;
    }
    /// Corners in order, mostly; sometimes the empty box, or any two corners.
    template <typename T>
    [[nodiscard]] tAreaAABB<T> Area(unsigned int rarity) noexcept
    {
        if (OneIn(16))
            return {};
        tVector2<T> const a = Vector2<T>(rarity);
        tVector2<T> const b = Vector2<T>(rarity);
        if (OneIn(16))
            return {a, b};
        return {{a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y}, {a.x < b.x ? b.x : a.x, a.y < b.y ? b.y : a.y}};
    }
    template <typename T>
    [[nodiscard]] tVolumeAABB<T> Volume(unsigned int rarity) noexcept
    {
        if (OneIn(16))
            return {};
        tVector3<T> const a = Vector3<T>(rarity);
        tVector3<T> const b = Vector3<T>(rarity);
        if (OneIn(16))
            return {a, b};
        return {{a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y, a.z < b.z ? a.z : b.z},
                {a.x < b.x ? b.x : a.x, a.y < b.y ? b.y : a.y, a.z < b.z ? b.z : a.z}};
    }

    /// A product that is rounded. Of sums and differences of products in turn, GCC 12 makes one fused instruction where
    /// the processor has it, whatever -ffp-contract says; not of the results of a call.
    template <typename T>
    [[nodiscard, gnu::noinline]] static T Times(T a, T b) noexcept
    {
        return a * b;
    }

    /// The nine elements of a rotation, from a quaternion, by plain arithmetic.
    template <typename T>
    void Rotation(T (&m)[9]) noexcept
    {
        // Now and then one that turns by so little that its diagonal is that of the identity.
        bool const isSlight = OneIn(4);
        T const a = isSlight ? T{1} : Usual<T>() + T{11};
        T const b = isSlight ? static_cast<T>(sizeof(T) == sizeof(float) ? 1e-4 : 1e-8) : Usual<T>();
        T const c = isSlight ? T{0} : Usual<T>();
        T const d = isSlight ? T{0} : Usual<T>();
        T const aa = Times(a, a), ab = Times(a, b), ac = Times(a, c), ad = Times(a, d), bb = Times(b, b);
        T const bc = Times(b, c), bd = Times(b, d), cc = Times(c, c), cd = Times(c, d), dd = Times(d, d);
        T const n = aa + bb + cc + dd;
        T const values[] = {aa + bb - cc - dd, T{2} * (bc - ad), T{2} * (bd + ac), T{2} * (bc + ad), aa - bb + cc - dd,
                            T{2} * (cd - ab),  T{2} * (bd - ac), T{2} * (cd + ab), aa - bb - cc + dd};
        for (std::size_t i = 0; i < 9; ++i)
            m[i] = values[i] / n;
    }

    /// A matrix that has a state by construction: 0 identity, 1 diagonal, 2 rotation, 3 general.
    template <typename T>
    [[nodiscard]] tMatrix4<T> Fresh(unsigned int kind, unsigned int rarity) noexcept
    {
        if (kind == 0)
            return {};
        if (kind == 1)
        {
            if (OneIn(4))
                return tMatrix4<T>::Scale({T{4}, T{0.5}, T{0.5}}); // determinant 1
            return tMatrix4<T>::Scale(Vector3<T>(rarity));
        }
        if (kind == 2)
        {
            T r[9];
            Rotation(r);
            if (OneIn(2))
                return {tVector3<T>(r[0], r[3], r[6]), tVector3<T>(r[1], r[4], r[7]), tVector3<T>(r[2], r[5], r[8])};
            return {r[0], r[1], r[2], T{0}, r[3], r[4], r[5], T{0}, r[6], r[7], r[8], T{0}, T{0}, T{0}, T{0}, T{1}};
        }
        T values[16];
        for (T& value : values)
            value = Number<T>(rarity);
        if (OneIn(2))
        {
            values[12] = values[13] = values[14] = T{0};
            values[15] = T{1};
        }
        return tMatrix4<T>(values);
    }
    /// The same, and sometimes with elements that its state knows nothing of.
    template <typename T>
    [[nodiscard]] tMatrix4<T> Matrix(unsigned int kind, unsigned int rarity) noexcept
    {
        tMatrix4<T> matrix = Fresh<T>(kind, rarity);
        if (OneIn(3))
        {
            if (OneIn(2)) // a rotation or a scale that also moves
                for (std::size_t i = 3; i < 12; i += 4)
                    matrix(i) = Number<T>(rarity);
            else
                for (std::size_t i = 0; i < 16; ++i)
                    if (OneIn(2))
                        matrix(i) = Number<T>(rarity);
        }
        return matrix;
    }
    template <typename T>
    [[nodiscard]] tMatrix4<T> AnyMatrix(unsigned int rarity) noexcept
    {
        unsigned int const kind = Below(4);
        return Matrix<T>(kind, rarity);
    }
};

} // namespace digest
