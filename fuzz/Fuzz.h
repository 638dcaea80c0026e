#pragma once

/// @file
/// What the fuzz targets share: values from the bytes of an input, and properties that hold for every one of them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/MatrixState.h"
#include "support/Numbers.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace bv::fuzz
{

/// Ends the program, and so reports the input, when a property does not hold.
inline void Require(bool holds, char const* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

/// Takes values off the bytes of an input. Once they are used up, everything is zero.
class Input
{
    std::uint8_t const* next;
    std::size_t left;

public:
    Input(std::uint8_t const* data, std::size_t size) : next{data}, left{size} {}

    [[nodiscard]] bool IsUsedUp() const { return left == 0; }

    template <typename T>
    T Take()
    {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        std::size_t const count = std::min(left, sizeof(T));
        if (count > 0)
            std::memcpy(&value, next, count);
        next += count;
        left -= count;
        return value;
    }

    unsigned Below(unsigned end) { return Take<std::uint8_t>() % end; }

    /// A number: a special one, a small whole one, a fraction, or any bits.
    template <typename T>
    T Number()
    {
        switch (Below(4))
        {
        case 0:
            return test::SPECIAL_VALUES<T>[Below(static_cast<unsigned>(std::size(test::SPECIAL_VALUES<T>)))];
        case 1:
            return Take<std::int8_t>();
        case 2:
            return static_cast<T>(Take<std::int16_t>()) / 256;
        default:
            return Take<T>();
        }
    }

    /// A number that arithmetic does nothing odd with: of magnitude up to 128, in steps of 1/256.
    template <typename T>
    T Tame()
    {
        return static_cast<T>(Take<std::int16_t>()) / 256;
    }

    template <typename T>
    maths::tVector2<T> Vector2()
    {
        T const x = Number<T>();
        return {x, Number<T>()};
    }

    template <typename T>
    maths::tVector3<T> Vector3()
    {
        T const x = Number<T>();
        T const y = Number<T>();
        return {x, y, Number<T>()};
    }

    /// A matrix of any elements that says any state.
    template <typename T>
    maths::tMatrix4<T> Matrix()
    {
        T elements[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        for (unsigned changes = Below(17); changes > 0; --changes)
        {
            unsigned const place = Below(16);
            elements[place] = Number<T>();
        }
        maths::tMatrix4<T> const matrix(elements);
        switch (Below(3))
        {
        case 0:
            return matrix;
        case 1:
            return test::WithState(matrix, Below(4));
        default:
            return test::WithState(matrix, Take<std::uint32_t>());
        }
    }

    /// What is left, as text.
    std::string Rest()
    {
        std::string text(reinterpret_cast<char const*>(next), left);
        next += left;
        left = 0;
        return text;
    }
};

template <typename T>
bool IsSame(T a, T b) requires std::is_floating_point_v<T>
{
    return (test::IsNaN(a) && test::IsNaN(b)) || test::Bits(a) == test::Bits(b);
}

template <typename T>
bool IsSame(maths::tVector2<T> const& a, maths::tVector2<T> const& b)
{
    return IsSame(a.x, b.x) && IsSame(a.y, b.y);
}

template <typename T>
bool IsSame(maths::tVector3<T> const& a, maths::tVector3<T> const& b)
{
    return IsSame(a.x, b.x) && IsSame(a.y, b.y) && IsSame(a.z, b.z);
}

template <typename T>
bool IsSame(maths::tMatrix4<T> const& a, maths::tMatrix4<T> const& b)
{
    for (std::size_t i = 0; i < 16; ++i)
        if (!IsSame(a[i], b[i]))
            return false;
    return test::StateOf(a) == test::StateOf(b);
}

/// Same boxes, spheres, planes and the like, which show two vectors, or a vector and a number.
template <typename Box>
bool IsSame(Box const& a, Box const& b) requires requires
{
    a.GetMax();
}
{
    return IsSame(a.GetMin(), b.GetMin()) && IsSame(a.GetMax(), b.GetMax());
}

template <typename Round>
bool IsSame(Round const& a, Round const& b) requires requires
{
    a.GetRadiusSquared();
}
{
    return IsSame(a.GetCentre(), b.GetCentre()) && IsSame(a.GetRadiusSquared(), b.GetRadiusSquared());
}

template <typename T>
bool IsFinite(maths::tVector3<T> const& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Memory that streams write to and read from. It allocates nothing, which would take most of the time.
class Memory : public std::streambuf
{
    char bytes[1024];

public:
    /// Forgets what was written.
    void Clear() { setp(bytes, bytes + sizeof(bytes)); }
    [[nodiscard]] std::string_view Written() const { return {pbase(), pptr()}; }
    /// What is to be read, which must outlive the reading.
    void Give(std::string const& text)
    {
        char* const begin = const_cast<char*>(text.data()); // nothing is put back
        setg(begin, begin, begin + text.size());
    }
};

/// The bytes that the value writes to a stream. All are written to one stream, since to make one takes longer than all
/// else that is done with a value.
template <typename Value>
std::string BytesOf(Value const& value)
{
    static Memory memory;
    static std::ostream stream(&memory);
    memory.Clear();
    value.Serialise(stream);
    Require(stream.good(), "memory takes all bytes");
    return std::string(memory.Written());
}

} // namespace bv::fuzz
