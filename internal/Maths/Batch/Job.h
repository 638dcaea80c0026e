#pragma once

/// @file
/// The way from the arguments of a batch form to a loop: what lies as a loop takes it is handed on, the rest is copied
/// to blocks and back, and so are the elements that fill no granule.

#include <cstddef>
#include <cstdint>
#include <span>

#include "Maths/Kernels/Kernels.h"
#include "bv/maths/batch/Views.h"

namespace bv::maths::batch
{

/// Numbers of a batch in memory.
struct Extent
{
    std::uintptr_t first;
    std::size_t count;
    std::ptrdiff_t stride; ///< bytes from one to the next
    std::size_t size;      ///< bytes of one

    template <typename T>
    [[nodiscard]] static Extent Of(tNumberView<T> const& numbers) noexcept
    {
        return {reinterpret_cast<std::uintptr_t>(numbers.data()), numbers.size(), numbers.GetStride(), sizeof(T)};
    }
    template <typename T>
    [[nodiscard]] static Extent Of(std::span<T> objects) noexcept
    {
        return {reinterpret_cast<std::uintptr_t>(objects.data()), objects.size(), sizeof(T), sizeof(T)};
    }
};

/// Stops a debug build where what is read and what is written have memory in common in another way than element on
/// element.
void CheckOverlap(Extent const& in, Extent const& out);

/// What a batch form reads and writes, element by element.
/// @tparam T `float` or `double`.
template <typename T>
class Job
{
    static constexpr std::size_t COMPONENTS = Streams<T>::COMPONENTS;

    /// Components, the first of which may lie one behind the other in objects.
    template <typename Number>
    struct Components
    {
        Number* first[COMPONENTS];
        std::ptrdiff_t strides[COMPONENTS]; ///< bytes from one number to the next
        std::size_t count = 0;
        std::size_t together = 0; ///< how many may; 3 or 6

        void Add(tNumberView<Number> const& numbers) noexcept
        {
            first[count] = numbers.data();
            strides[count++] = numbers.GetStride();
        }
        void Add(tVectorView<Number> const& vectors) noexcept
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
                Add(vectors.GetAxis(axis));
            together = count;
        }
        /// The step of a loop, or 0 where there is no way but to copy.
        [[nodiscard]] std::size_t FindStep() const noexcept;
    };

    char const* function;
    std::size_t count;
    Components<T const> in;
    Components<T> out;
    bool areSphereObjects = false;
    std::span<std::uint32_t> codes;
    std::span<std::uint8_t> bytes;
    BitSpan bits;
    T* ends = nullptr;

public:
    /// @param name of the batch form.
    /// @param size the number of elements, from which no argument may differ.
    Job(char const* name, std::size_t size) noexcept : function{name}, count{size} {}

    /// @name Arguments
    /// @{
    Job& Read(tNumberView<T const> const& numbers);
    Job& Read(tVectorView<T const> const& vectors);
    Job& Read(tBoxView<T const> const& boxes);
    Job& Read(tRayView<T const> const& rays);
    Job& Read(tSphereView<T const> const& spheres);
    Job& Write(tNumberView<T> const& numbers);
    Job& Write(tVectorView<T> const& vectors);
    Job& Write(tBoxView<T> const& boxes);
    Job& WriteCodes(std::span<std::uint32_t> results);
    Job& WriteBytes(std::span<std::uint8_t> results);
    Job& WriteBits(BitSpan results);
    /// The ends of intervals, the lower ones first, that the elements extend.
    Job& Extend(T* intervals) noexcept;
    /// @}

    /// Has a loop do all of it. Bits are 0 before it begins.
    /// @return how many are done; fewer if the loop stops.
    std::size_t Run(Loop<T> loop, T const* constants = nullptr, unsigned int options = 0) const;
    /// Runs, and counts the bits that are set.
    std::size_t Count(Loop<T> loop, T const* constants = nullptr, unsigned int options = 0) const;

private:
    void CheckLength(std::size_t length) const;
    [[nodiscard]] Streams<T> GetDirectly(std::size_t inStep, std::size_t outStep) const noexcept;
};

extern template class Job<float>;
extern template class Job<double>;

} // namespace bv::maths::batch
