#pragma once

/// @file
/// Arguments for properties, drawn by RapidCheck, and the test that a property holds for all of them.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/Numbers.h"

namespace bv::test
{

/// Wide enough for errors of `double` to show.
using Wide = long double;

template <typename T>
[[nodiscard]] constexpr Wide Widened(T number)
{
    return static_cast<Wide>(number);
}

/// The error of one rounding, relative to the result.
template <typename T>
inline constexpr Wide ROUNDING = std::numeric_limits<T>::digits == 24 ? 0x1p-24L : 0x1p-53L;

/// Draws arguments until the property has held as often as it should. What a property draws, it draws by `*`.
template <typename Property>
void ExpectAlways(Property const& property)
{
    EXPECT_TRUE(rc::check(testing::UnitTest::GetInstance()->current_test_info()->name(), property));
}

/// A whole number from 0 to below a bound, each as likely as any other; simpler ones are nearer to 0.
[[nodiscard]] inline rc::Gen<std::uint64_t> Whole(std::uint64_t bound)
{
    constexpr int ANY_SIZE = 100; // RapidCheck begins with small numbers otherwise
    return rc::gen::resize(ANY_SIZE, rc::gen::inRange<std::uint64_t>(0, bound));
}

/// A number between the bound, a power of two, and its opposite: a multiple of the bound times two roundings. So it is
/// exact, and no product of a few of them underflows.
template <typename T>
[[nodiscard]] rc::Gen<T> Number(T bound)
{
    constexpr std::uint64_t STEPS = std::uint64_t{1} << std::numeric_limits<T>::digits;
    return rc::gen::map(Whole(2 * STEPS),
                        [=](std::uint64_t number)
                        {
                            T const magnitude = static_cast<T>(number / 2) * (bound / static_cast<T>(STEPS));
                            return number % 2 == 0 ? magnitude : -magnitude;
                        });
}

/// Any bits.
template <typename T>
[[nodiscard]] rc::Gen<T> AnyNumber()
{
    constexpr std::uint64_t WORD = std::uint64_t{1} << 32;
    return rc::gen::apply([](std::uint64_t upper, std::uint64_t lower)
                          { return FromBits<T>(static_cast<Pattern<T>>(upper << 32 | lower)); },
                          Whole(WORD), Whole(WORD));
}

template <typename T>
[[nodiscard]] rc::Gen<maths::tVector3<T>> Vector(T bound)
{
    return rc::gen::apply([](T x, T y, T z) { return maths::tVector3<T>(x, y, z); }, Number(bound), Number(bound),
                          Number(bound));
}

/// A direction of length 1, up to the roundings of Normalised().
template <typename T>
[[nodiscard]] rc::Gen<maths::tVector3<T>> Direction()
{
    return rc::gen::map(rc::gen::suchThat(Vector(T{1}), [](auto const& v) { return v.LengthSquared() > T(0.0001); }),
                        [](auto const& v) { return v.Normalised(); });
}

/// A quaternion of length 1, in the same way.
template <typename T>
[[nodiscard]] rc::Gen<maths::tQuaternion<T>> Rotation()
{
    auto const any = rc::gen::apply([](T x, T y, T z, T w) { return maths::tQuaternion<T>(x, y, z, w); }, Number(T{1}),
                                    Number(T{1}), Number(T{1}), Number(T{1}));
    return rc::gen::map(rc::gen::suchThat(any, [](auto const& q) { return q.LengthSquared() > T(0.0001); }),
                        [](auto const& q) { return q.Normalised(); });
}

/// A box that is valid.
template <typename T>
[[nodiscard]] rc::Gen<maths::tVolumeAABB<T>> Box(T bound)
{
    return rc::gen::apply(
        [](auto const& a, auto const& b)
        {
            maths::tVolumeAABB<T> box(a, a);
            box.Expand(b);
            return box;
        },
        Vector(bound), Vector(bound));
}

/// A matrix of any sixteen elements; with an affine one's fourth row, of twelve.
template <typename T>
[[nodiscard]] rc::Gen<maths::tMatrix4<T>> Matrix(T bound, bool isAffine = false)
{
    return rc::gen::map(rc::gen::container<std::vector<T>>(16, Number(bound)),
                        [=](std::vector<T> elements)
                        {
                            if (isAffine)
                                for (std::size_t column = 0; column < 4; ++column)
                                    elements[12 + column] = column == 3 ? T{1} : T{0};
                            return maths::tMatrix4<T>(elements.data());
                        });
}

} // namespace bv::test
