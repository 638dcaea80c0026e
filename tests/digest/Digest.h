#pragma once

/// @file
/// A hash over the results of a topic.

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <bv/Exception.h>
#include <bv/String.h>
#include <bv/maths/tAreaAABB.h>
#include <bv/maths/tAreaDisc.h>
#include <bv/maths/tDifferential2.h>
#include <bv/maths/tDifferential3.h>
#include <bv/maths/tFrustum.h>
#include <bv/maths/tMatrix4.h>
#include <bv/maths/tPlane.h>
#include <bv/maths/tTuple2.h>
#include <bv/maths/tTuple3.h>
#include <bv/maths/tVector2.h>
#include <bv/maths/tVector3.h>
#include <bv/maths/tVolumeAABB.h>
#include <bv/maths/tVolumeSphere.h>

namespace digest
{

using namespace bv::maths;

/// Whether raw bytes, which stand in the order of the machine, are those on record.
inline constexpr bool IS_LITTLE_ENDIAN = std::endian::native == std::endian::little;

template <typename T>
concept Whole = std::integral<T> || std::is_enum_v<T>;

/// FNV-1a, 64 bits, over the bytes of results. Every NaN counts as the same one, since the bits of a NaN are no
/// promise.
class Digest
{
    std::uint64_t hash = 14695981039346656037U;

public:
    [[nodiscard]] std::uint64_t GetHash() const noexcept { return hash; }

    template <typename First, typename Second, typename... More>
    void Add(First const& first, Second const& second, More const&... more)
    {
        Add(first);
        Add(second);
        (Add(more), ...);
    }

    /// `long` and `std::size_t` count for eight bytes, however many they have.
    template <Whole Integer>
    void Add(Integer value)
    {
        constexpr bool IS_LONG = std::is_same_v<Integer, long> || std::is_same_v<Integer, unsigned long>;
        auto bits = static_cast<std::uint64_t>(value);
        for (std::size_t i = 0; i < (IS_LONG ? sizeof(std::uint64_t) : sizeof(Integer)); ++i, bits >>= 8)
            AddByte(static_cast<unsigned char>(bits));
    }
    void Add(float value) { Add(value == value ? std::bit_cast<std::uint32_t>(value) : 0x7FC00000U); }
    void Add(double value) { Add(value == value ? std::bit_cast<std::uint64_t>(value) : 0x7FF8000000000000U); }
    void Add(std::string_view bytes)
    {
        Add(bytes.size());
        for (char const byte : bytes)
            AddByte(static_cast<unsigned char>(byte));
    }
    void Add(char const* text) { Add(std::string_view(text)); }
    void Add(bv::String const& text) { Add(text.ToCharArray()); }

    template <typename T>
    void Add(tTuple2<T> const& tuple)
    {
        Add(tuple.x, tuple.y);
    }
    template <typename T>
    void Add(tTuple3<T> const& tuple)
    {
        Add(tuple.x, tuple.y, tuple.z);
    }
    template <typename T>
    void Add(tVector2<T> const& vector)
    {
        Add(vector.x, vector.y);
    }
    template <typename T>
    void Add(tVector3<T> const& vector)
    {
        Add(vector.x, vector.y, vector.z);
    }
    template <typename T>
    void Add(tAreaAABB<T> const& box)
    {
        Add(box.GetMin(), box.GetMax());
    }
    template <typename T>
    void Add(tVolumeAABB<T> const& box)
    {
        Add(box.GetMin(), box.GetMax());
    }
    template <typename T>
    void Add(tAreaDisc<T> const& disc)
    {
        Add(disc.GetCentre(), disc.GetRadiusSquared());
    }
    template <typename T>
    void Add(tVolumeSphere<T> const& sphere)
    {
        Add(sphere.GetCentre(), sphere.GetRadiusSquared());
    }
    template <typename T>
    void Add(tPlane<T> const& plane)
    {
        Add(plane.GetNormal(), plane.GetOffset());
    }
    template <typename T>
    void Add(tFrustum<T> const& frustum)
    {
        Add(frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetBottomPlane(), frustum.GetTopPlane(),
            frustum.GetNearPlane(), frustum.GetFarPlane());
    }
    template <typename T>
    void Add(tDifferential2<T> const& differential)
    {
        Add(differential[0], differential[1]);
    }
    template <typename T>
    void Add(tDifferential3<T> const& differential)
    {
        Add(differential[0], differential[1]);
    }
    /// Elements and state.
    template <typename T>
    void Add(tMatrix4<T> const& matrix)
    {
        for (std::size_t i = 0; i < tMatrix4<T>::SIZE; ++i)
            Add(matrix[i]);
        Add(matrix.IsIdentity(), matrix.IsDiagonal(), matrix.IsOrthonormal());
    }

    /// Adds what a call returns, or all that its exception says.
    template <typename Call>
    void Try(Call call)
    {
        try
        {
            Add(call());
        }
        catch (bv::Exception const& exception)
        {
            Add(typeid(exception).name(), exception.Message(), exception.Filename(), exception.LineNumber(),
                exception.FunctionName(), exception.Where(), exception.what());
        }
    }

private:
    void AddByte(unsigned char byte) noexcept { hash = (hash ^ byte) * 1099511628211U; }
};

/// The hashes of a topic's parts, in the order in which they are first asked for.
class Digests
{
    std::list<std::pair<std::string_view, Digest>> parts;

public:
    [[nodiscard]] Digest& operator[](std::string_view part)
    {
        for (auto& [name, digest] : parts)
            if (name == part)
                return digest;
        return parts.emplace_back(part, Digest()).second;
    }
    [[nodiscard]] auto begin() const noexcept { return parts.begin(); }
    [[nodiscard]] auto end() const noexcept { return parts.end(); }
};

} // namespace digest
