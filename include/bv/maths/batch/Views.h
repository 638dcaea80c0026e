#pragma once

/// @file
/// Where the objects of a batch lie: in an array, as members of the records of an array (a vertex buffer), or component
/// by component in arrays of numbers.
///
/// A view refers to numbers and owns none of them. It is small, and made for a call. All three layouts are one type, so
/// that each batch form takes any of them for each of its arguments, and mixed. Arrays of objects and of numbers are
/// the fast ones; other distances are copied to and fro, some dozens at a time.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <type_traits>

#include "bv/Export.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

namespace bv::maths
{

namespace detail
{

/// Raises the error of spans that ought to have one length.
[[noreturn, gnu::cold]] BV_API void ThrowDifferentLengths(char const* function);

/// An object of T where Like is none, and a constant one where Like is.
template <typename T, typename Like>
using ConstLike = std::conditional_t<std::is_const_v<Like>, T const, T>;

/// What one can make a std::span of objects from: arrays, vectors, spans. Older standard libraries make one of all that
/// has a size and an address, as the views below have.
template <typename Range, typename Object>
concept ArrayOf = std::is_convertible_v<Range, std::span<Object>> && requires(Range&& range)
{
    std::begin(range);
};

} // namespace detail

/// Numbers that lie a fixed number of bytes apart.
///
/// @tparam T `float` or `double`, `const` where the numbers are only read.
template <typename T>
class tNumberView
{
    T* first;
    std::size_t count;
    std::ptrdiff_t stride;

public:
    /// No numbers.
    [[gnu::always_inline]] constexpr tNumberView() noexcept : first{}, count{0}, stride{sizeof(T)} {}
    /// An array of numbers.
    template <detail::ArrayOf<T> Range>
    [[gnu::always_inline]] tNumberView(Range&& numbers) noexcept : tNumberView(std::span<T>(numbers))
    {
    }
    /// @copydoc tNumberView(Range&&)
    [[gnu::always_inline]] tNumberView(std::span<T> numbers) noexcept
        : tNumberView(numbers.data(), numbers.size(), sizeof(T))
    {
    }
    /// Numbers from a first one on.
    /// @param numbers the first one.
    /// @param length how many there are.
    /// @param bytes from one to the next.
    [[gnu::always_inline]] tNumberView(T* numbers, std::size_t length, std::ptrdiff_t bytes) noexcept
        : first{numbers}, count{length}, stride{bytes}
    {
    }
    /// The same numbers, to be read.
    template <typename U>
    requires(std::is_same_v<U const, T>) [[gnu::always_inline]] tNumberView(tNumberView<U> const& other) noexcept
        : tNumberView(other.data(), other.size(), other.GetStride())
    {
    }

    /// How many there are.
    [[nodiscard, gnu::always_inline]] std::size_t size() const noexcept { return count; }
    /// The first one.
    [[nodiscard, gnu::always_inline]] T* data() const noexcept { return first; }
    /// Bytes from one to the next.
    [[nodiscard, gnu::always_inline]] std::ptrdiff_t GetStride() const noexcept { return stride; }
    /// Some of the numbers, from an index on, which are not checked.
    [[nodiscard, gnu::always_inline]] tNumberView GetPart(std::size_t begin, std::size_t length) const noexcept
    {
        return {length == 0 ? first : &(*this)[begin], length, stride};
    }
    /// A number by its index, which is not checked.
    [[nodiscard, gnu::always_inline]] T& operator[](std::size_t index) const noexcept
    {
        using Byte = detail::ConstLike<char, T>;
        return *reinterpret_cast<T*>(reinterpret_cast<Byte*>(first) + static_cast<std::ptrdiff_t>(index) * stride);
    }
};

/// Vectors of three components.
///
/// @tparam T `float` or `double`, `const` where the vectors are only read.
template <typename T>
class tVectorView
{
    tNumberView<T> axes[3];

public:
    /// What the view refers to.
    using Vector = detail::ConstLike<tVector3<std::remove_const_t<T>>, T>;

    /// No vectors.
    [[gnu::always_inline]] constexpr tVectorView() noexcept {}
    /// An array of vectors.
    template <detail::ArrayOf<Vector> Range>
    [[gnu::always_inline]] tVectorView(Range&& vectors) noexcept : tVectorView(std::span<Vector>(vectors))
    {
    }
    /// @copydoc tVectorView(Range&&)
    [[gnu::always_inline]] tVectorView(std::span<Vector> vectors) noexcept
        : tVectorView(vectors.data(), vectors.size(), sizeof(Vector))
    {
    }
    /// One member of each record: `tVectorView<float const>(vertices, &Vertex::position)`.
    template <typename Records, typename Record>
    requires(detail::ArrayOf<Records, detail::ConstLike<Record, T>>)
        [[gnu::always_inline]] tVectorView(Records&& records, tVector3<std::remove_const_t<T>> Record::*member) noexcept
        : tVectorView(std::span<detail::ConstLike<Record, T>>(records), member, 0)
    {
    }
    /// Vectors from a first one on.
    /// @param vectors the first one.
    /// @param length how many there are.
    /// @param bytes from one to the next.
    [[gnu::always_inline]] tVectorView(Vector* vectors, std::size_t length, std::ptrdiff_t bytes) noexcept
    {
        if (length == 0)
            return;
        axes[0] = {&vectors->x, length, bytes};
        axes[1] = {&vectors->y, length, bytes};
        axes[2] = {&vectors->z, length, bytes};
    }
    /// Component by component.
    /// @throws bv::InvalidArgumentException for different lengths.
    [[gnu::always_inline]] tVectorView(tNumberView<T> x, tNumberView<T> y, tNumberView<T> z) : axes{x, y, z}
    {
        if (x.size() != y.size() || x.size() != z.size())
            detail::ThrowDifferentLengths("tVectorView");
    }
    /// The same vectors, to be read.
    template <typename U>
    requires(std::is_same_v<U const, T>) [[gnu::always_inline]] tVectorView(tVectorView<U> const& other) noexcept
        : axes{other.GetAxis(0), other.GetAxis(1), other.GetAxis(2)}
    {
    }

    /// How many there are.
    [[nodiscard, gnu::always_inline]] std::size_t size() const noexcept { return axes[0].size(); }
    /// One component of each: 0 = x, 1 = y, 2 = z.
    [[nodiscard, gnu::always_inline]] tNumberView<T> const& GetAxis(std::size_t axis) const noexcept
    {
        return axes[axis];
    }
    /// Some of the vectors, from an index on, which are not checked.
    [[nodiscard, gnu::always_inline]] tVectorView GetPart(std::size_t begin, std::size_t count) const noexcept
    {
        tVectorView part;
        for (std::size_t axis = 0; axis < 3; ++axis)
            part.axes[axis] = axes[axis].GetPart(begin, count);
        return part;
    }
    /// A copy of a vector by its index, which is not checked.
    [[nodiscard, gnu::always_inline]] tVector3<std::remove_const_t<T>> operator[](std::size_t index) const noexcept
    {
        return {axes[0][index], axes[1][index], axes[2][index]};
    }
    /// Writes a vector by its index, which is not checked.
    [[gnu::always_inline]] void Set(std::size_t index, tVector3<T> const& vector) const noexcept
    {
        axes[0][index] = vector.x;
        axes[1][index] = vector.y;
        axes[2][index] = vector.z;
    }

private:
    template <typename Record>
    [[gnu::always_inline]] tVectorView(std::span<Record> records,
                                       tVector3<std::remove_const_t<T>> std::remove_const_t<Record>::*member,
                                       int) noexcept
        : tVectorView(records.empty() ? nullptr : &(records.data()->*member), records.size(), sizeof(Record))
    {
    }
};

/// Axis-aligned boxes in space.
///
/// @tparam T `float` or `double`, `const` where the boxes are only read.
template <typename T>
class tBoxView
{
    tVectorView<T> lower, upper;

public:
    /// What the view refers to.
    using Box = detail::ConstLike<tVolumeAABB<std::remove_const_t<T>>, T>;

    /// No boxes.
    [[gnu::always_inline]] constexpr tBoxView() noexcept {}
    /// An array of boxes.
    template <detail::ArrayOf<Box> Range>
    [[gnu::always_inline]] tBoxView(Range&& boxes) noexcept : tBoxView(std::span<Box>(boxes))
    {
    }
    /// @copydoc tBoxView(Range&&)
    [[gnu::always_inline]] tBoxView(std::span<Box> boxes) noexcept : tBoxView(boxes.data(), boxes.size(), sizeof(Box))
    {
    }
    /// Boxes from a first one on, such as those in the nodes of a hierarchy.
    /// @param boxes the first one.
    /// @param length how many there are.
    /// @param bytes from one to the next.
    [[gnu::always_inline]] tBoxView(Box* boxes, std::size_t length, std::ptrdiff_t bytes) noexcept
    {
        if (length == 0)
            return;
        lower = {&boxes->GetMin(), length, bytes};
        upper = {&boxes->GetMax(), length, bytes};
    }
    /// Corner by corner.
    /// @throws bv::InvalidArgumentException for different lengths.
    [[gnu::always_inline]] tBoxView(tVectorView<T> lowerCorners, tVectorView<T> upperCorners)
        : lower{lowerCorners}, upper{upperCorners}
    {
        if (lower.size() != upper.size())
            detail::ThrowDifferentLengths("tBoxView");
    }
    /// The same boxes, to be read.
    template <typename U>
    requires(std::is_same_v<U const, T>) [[gnu::always_inline]] tBoxView(tBoxView<U> const& other) noexcept
        : lower{other.GetMin()}, upper{other.GetMax()}
    {
    }

    /// How many there are.
    [[nodiscard, gnu::always_inline]] std::size_t size() const noexcept { return lower.size(); }
    /// The lower corners.
    [[nodiscard, gnu::always_inline]] tVectorView<T> const& GetMin() const noexcept { return lower; }
    /// The upper corners.
    [[nodiscard, gnu::always_inline]] tVectorView<T> const& GetMax() const noexcept { return upper; }
    /// Some of the boxes, from an index on, which are not checked.
    [[nodiscard, gnu::always_inline]] tBoxView GetPart(std::size_t begin, std::size_t count) const noexcept
    {
        tBoxView part;
        part.lower = lower.GetPart(begin, count);
        part.upper = upper.GetPart(begin, count);
        return part;
    }
    /// A copy of a box by its index, which is not checked.
    [[nodiscard, gnu::always_inline]] tVolumeAABB<std::remove_const_t<T>> operator[](std::size_t index) const noexcept
    {
        return {lower[index], upper[index]};
    }
};

/// Rays, to be read.
///
/// @tparam T `float const` or `double const`.
template <typename T>
class tRayView
{
    static_assert(std::is_const_v<T>);
    tVectorView<T> origins, directions;

public:
    /// What the view refers to.
    using Ray = tRay<std::remove_const_t<T>> const;

    /// No rays.
    [[gnu::always_inline]] constexpr tRayView() noexcept {}
    /// An array of rays.
    template <detail::ArrayOf<Ray> Range>
    [[gnu::always_inline]] tRayView(Range&& rays) noexcept : tRayView(std::span<Ray>(rays))
    {
    }
    /// @copydoc tRayView(Range&&)
    [[gnu::always_inline]] tRayView(std::span<Ray> rays) noexcept : tRayView(rays.data(), rays.size(), sizeof(Ray)) {}
    /// Rays from a first one on.
    /// @param rays the first one.
    /// @param length how many there are.
    /// @param bytes from one to the next.
    [[gnu::always_inline]] tRayView(Ray* rays, std::size_t length, std::ptrdiff_t bytes) noexcept
    {
        if (length == 0)
            return;
        origins = {&rays->origin, length, bytes};
        directions = {&rays->direction, length, bytes};
    }
    /// Origins and directions.
    /// @throws bv::InvalidArgumentException for different lengths.
    [[gnu::always_inline]] tRayView(tVectorView<T> from, tVectorView<T> along) : origins{from}, directions{along}
    {
        if (origins.size() != directions.size())
            detail::ThrowDifferentLengths("tRayView");
    }

    /// How many there are.
    [[nodiscard, gnu::always_inline]] std::size_t size() const noexcept { return origins.size(); }
    /// The origins.
    [[nodiscard, gnu::always_inline]] tVectorView<T> const& GetOrigins() const noexcept { return origins; }
    /// The directions.
    [[nodiscard, gnu::always_inline]] tVectorView<T> const& GetDirections() const noexcept { return directions; }
    /// A copy of a ray by its index, which is not checked.
    [[nodiscard, gnu::always_inline]] tRay<std::remove_const_t<T>> operator[](std::size_t index) const noexcept
    {
        return {origins[index], directions[index]};
    }
};

/// Spheres, to be read, with the squares of their radii.
///
/// @tparam T `float const` or `double const`.
template <typename T>
class tSphereView
{
    static_assert(std::is_const_v<T>);
    tVectorView<T> centres;
    tNumberView<T> radiiSquared;
    bool isOfObjects = false;

public:
    /// What the view refers to.
    using Sphere = tVolumeSphere<std::remove_const_t<T>> const;

    /// No spheres.
    [[gnu::always_inline]] constexpr tSphereView() noexcept {}
    /// An array of spheres.
    template <detail::ArrayOf<Sphere> Range>
    [[gnu::always_inline]] tSphereView(Range&& spheres) noexcept : tSphereView(std::span<Sphere>(spheres))
    {
    }
    /// @copydoc tSphereView(Range&&)
    [[gnu::always_inline]] tSphereView(std::span<Sphere> spheres) noexcept
        : tSphereView(spheres.data(), spheres.size(), sizeof(Sphere))
    {
    }
    /// Spheres from a first one on.
    /// @param spheres the first one.
    /// @param length how many there are.
    /// @param bytes from one to the next.
    [[gnu::always_inline]] tSphereView(Sphere* spheres, std::size_t length, std::ptrdiff_t bytes) noexcept
    {
        if (length == 0)
            return;
        centres = {&spheres->GetCentre(), length, bytes};
        radiiSquared = {&spheres->GetCentre().x - 1, length, bytes}; // kept in front of the centre
        isOfObjects = true;
    }
    /// Centres and the squares of the radii.
    /// @throws bv::InvalidArgumentException for different lengths.
    [[gnu::always_inline]] tSphereView(tVectorView<T> centrePoints, tNumberView<T> squares)
        : centres{centrePoints}, radiiSquared{squares}
    {
        if (centres.size() != radiiSquared.size())
            detail::ThrowDifferentLengths("tSphereView");
    }

    /// How many there are.
    [[nodiscard, gnu::always_inline]] std::size_t size() const noexcept { return centres.size(); }
    /// The centres.
    [[nodiscard, gnu::always_inline]] tVectorView<T> const& GetCentres() const noexcept { return centres; }
    /// The squares of the radii.
    [[nodiscard, gnu::always_inline]] tNumberView<T> const& GetRadiiSquared() const noexcept { return radiiSquared; }
    /// Whether these are objects, and not numbers that may stand anywhere.
    [[nodiscard, gnu::always_inline]] bool IsOfObjects() const noexcept { return isOfObjects; }
    /// Some of the spheres, from an index on, which are not checked.
    [[nodiscard, gnu::always_inline]] tSphereView GetPart(std::size_t begin, std::size_t count) const noexcept
    {
        tSphereView part;
        part.centres = centres.GetPart(begin, count);
        part.radiiSquared = radiiSquared.GetPart(begin, count);
        part.isOfObjects = isOfObjects;
        return part;
    }
};

/// One bit for each element of a batch: element i is bit i % 64 of word i / 64. The bits behind the last element are 0.
using BitSpan = std::span<std::uint64_t>;

/// The number of words that hold one bit for each of so many elements.
[[nodiscard, gnu::always_inline]] constexpr std::size_t GetBitWords(std::size_t count) noexcept
{
    return (count + 63) / 64;
}

} // namespace bv::maths
