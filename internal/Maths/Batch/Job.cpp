#include "Maths/Batch/Job.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <string>

#include "bv/Assert.h"
#include "bv/InvalidArgumentException.h"

namespace bv::maths
{

void detail::ThrowDifferentLengths(char const* function)
{
    throw InvalidArgumentException(L"Spans of different lengths", "internal\\Maths\\Batch", __LINE__,
                                   (std::string("bv::maths::") + function).c_str());
}

namespace batch
{

namespace
{

#if defined NDEBUG
constexpr bool CHECKS_OVERLAP = false;
#else
constexpr bool CHECKS_OVERLAP = true;
#endif

/// The first address of numbers, and the one behind the last.
struct Range
{
    std::uintptr_t begin, end;

    explicit Range(Extent const& extent) noexcept
    {
        std::uintptr_t const last = extent.first + static_cast<std::uintptr_t>(extent.stride) * (extent.count - 1);
        begin = std::min(extent.first, last);
        end = std::max(extent.first, last) + extent.size;
    }
};

[[nodiscard]] bool OverlapPartly(Extent const& in, Extent const& out) noexcept
{
    if (in.count == 0 || out.count == 0)
        return false;
    Range const read(in);
    Range const written(out);
    if (read.begin >= written.end || written.begin >= read.end)
        return false;
    // Records may hold both, one beside the other. The stride of a single number says nothing.
    auto const magnitude = [](Extent const& extent)
    { return extent.count == 1 ? 0 : static_cast<std::uintptr_t>(extent.stride < 0 ? -extent.stride : extent.stride); };
    if (in.first == out.first && in.size == out.size && magnitude(in) == magnitude(out))
        return false;
    std::uintptr_t const stride = std::gcd(magnitude(in), magnitude(out));
    if (stride == 0)
        return true;
    std::uintptr_t const distance =
        in.first >= out.first ? (in.first - out.first) % stride : (stride - (out.first - in.first) % stride) % stride;
    return distance < out.size || distance + in.size > stride;
}

/// Elements that are copied at a time: those of a word of bits.
constexpr std::size_t BLOCK = 64;

[[nodiscard]] constexpr std::size_t Padded(std::size_t count) noexcept
{
    return (count + GRANULE - 1) / GRANULE * GRANULE;
}

/// Copies numbers to a block, whose end the last of them fills.
/// @param stride bytes from one number to the next.
template <typename T>
void ReadNumbers(T const* first, std::ptrdiff_t stride, std::size_t begin, std::size_t count, T* block) noexcept
{
    auto const* next = reinterpret_cast<char const*>(first) + static_cast<std::ptrdiff_t>(begin) * stride;
    for (std::size_t i = 0; i < count; ++i, next += stride)
        block[i] = *reinterpret_cast<T const*>(next);
    std::fill(block + count, block + Padded(count), block[count - 1]);
}

template <typename T>
void WriteNumbers(T const* block, T* first, std::ptrdiff_t stride, std::size_t begin, std::size_t count) noexcept
{
    auto* next = reinterpret_cast<char*>(first) + static_cast<std::ptrdiff_t>(begin) * stride;
    for (std::size_t i = 0; i < count; ++i, next += stride)
        *reinterpret_cast<T*>(next) = block[i];
}

} // namespace

void CheckOverlap([[maybe_unused]] Extent const& in, [[maybe_unused]] Extent const& out)
{
    if (CHECKS_OVERLAP && OverlapPartly(in, out))
        Assert();
}

template <typename T>
template <typename Number>
std::size_t Job<T>::Components<Number>::FindStep() const noexcept
{
    bool isSeparate = true;
    bool isTogether = together == 3 || together == 6;
    for (std::size_t i = 0; i < count; ++i)
    {
        bool const isArray = strides[i] == sizeof(T);
        isSeparate &= isArray;
        isTogether &= i < together
                          ? strides[i] == static_cast<std::ptrdiff_t>(together * sizeof(T)) && first[i] == first[0] + i
                          : isArray;
    }
    return isSeparate ? 1 : isTogether ? together : 0;
}

template <typename T>
void Job<T>::CheckLength(std::size_t length) const
{
    if (length != count)
        detail::ThrowDifferentLengths(function);
}

template <typename T>
Job<T>& Job<T>::Read(tNumberView<T const> const& numbers)
{
    CheckLength(numbers.size());
    in.Add(numbers);
    return *this;
}

template <typename T>
Job<T>& Job<T>::Read(tVectorView<T const> const& vectors)
{
    CheckLength(vectors.size());
    in.Add(vectors);
    return *this;
}

template <typename T>
Job<T>& Job<T>::Read(tBoxView<T const> const& boxes)
{
    return Read(boxes.GetMin()).Read(boxes.GetMax());
}

template <typename T>
Job<T>& Job<T>::Read(tRayView<T const> const& rays)
{
    return Read(rays.GetOrigins()).Read(rays.GetDirections());
}

template <typename T>
Job<T>& Job<T>::Read(tSphereView<T const> const& spheres)
{
    // Those of `float` are six numbers long, of which the last four count.
    constexpr std::ptrdiff_t STRIDE = 6 * sizeof(T);
    areSphereObjects =
        sizeof(tVolumeSphere<T>) == STRIDE && spheres.IsOfObjects() && spheres.GetRadiiSquared().GetStride() == STRIDE;
    return Read(spheres.GetCentres()).Read(spheres.GetRadiiSquared());
}

template <typename T>
Job<T>& Job<T>::Write(tNumberView<T> const& numbers)
{
    CheckLength(numbers.size());
    out.Add(numbers);
    return *this;
}

template <typename T>
Job<T>& Job<T>::Write(tVectorView<T> const& vectors)
{
    CheckLength(vectors.size());
    out.Add(vectors);
    return *this;
}

template <typename T>
Job<T>& Job<T>::Write(tBoxView<T> const& boxes)
{
    return Write(boxes.GetMin()).Write(boxes.GetMax());
}

template <typename T>
Job<T>& Job<T>::WriteCodes(std::span<std::uint32_t> results)
{
    CheckLength(results.size());
    codes = results;
    return *this;
}

template <typename T>
Job<T>& Job<T>::WriteBytes(std::span<std::uint8_t> results)
{
    CheckLength(results.size());
    bytes = results;
    return *this;
}

template <typename T>
Job<T>& Job<T>::WriteBits(BitSpan results)
{
    if (results.size() != GetBitWords(count))
        detail::ThrowDifferentLengths(function);
    bits = results;
    return *this;
}

template <typename T>
Job<T>& Job<T>::Extend(T* intervals) noexcept
{
    ends = intervals;
    return *this;
}

template <typename T>
Streams<T> Job<T>::GetDirectly(std::size_t inStep, std::size_t outStep) const noexcept
{
    Streams<T> streams{{}, {}, inStep, outStep, codes.data(), bytes.data(), bits.data(), ends};
    for (std::size_t i = 0; i < in.count; ++i)
        streams.in[i] = in.first[i];
    for (std::size_t i = 0; i < out.count; ++i)
        streams.out[i] = out.first[i];
    if (areSphereObjects)
        streams.in[0] = in.first[3] - 2;
    return streams;
}

template <typename T>
std::size_t Job<T>::Run(Loop<T> loop, T const* constants, unsigned int options) const
{
    if constexpr (CHECKS_OVERLAP)
        for (std::size_t i = 0; i < in.count; ++i)
        {
            Extent const read = Extent::Of(tNumberView<T const>(in.first[i], count, in.strides[i]));
            for (std::size_t k = 0; k < out.count; ++k)
                CheckOverlap(read, Extent::Of(tNumberView<T>(out.first[k], count, out.strides[k])));
            CheckOverlap(read, Extent::Of(codes));
            CheckOverlap(read, Extent::Of(bytes));
            CheckOverlap(read, Extent::Of(bits));
        }
    std::fill(bits.begin(), bits.end(), std::uint64_t{0}); // a loop may set but a few
    std::size_t const inStep = areSphereObjects ? 6 : in.FindStep();
    std::size_t const outStep = out.FindStep();
    std::size_t begin = 0;
    if (inStep != 0 && outStep != 0 && count >= GRANULE)
    {
        begin = count - count % GRANULE;
        std::size_t const done = loop(constants, options, GetDirectly(inStep, outStep), begin);
        if (done != begin)
            return done;
    }
    alignas(64) T inBlocks[COMPONENTS][BLOCK];
    alignas(64) T outBlocks[COMPONENTS][BLOCK];
    std::uint32_t codeBlock[BLOCK];
    std::uint8_t byteBlock[BLOCK];
    while (begin != count)
    {
        std::size_t const size = std::min(BLOCK, count - begin);
        std::uint64_t bitBlock = 0;
        Streams<T> streams{{},
                           {},
                           1,
                           1,
                           codes.empty() ? nullptr : codeBlock,
                           bytes.empty() ? nullptr : byteBlock,
                           bits.empty() ? nullptr : &bitBlock,
                           ends};
        for (std::size_t i = 0; i < in.count; ++i)
        {
            ReadNumbers(in.first[i], in.strides[i], begin, size, inBlocks[i]);
            streams.in[i] = inBlocks[i];
        }
        for (std::size_t i = 0; i < out.count; ++i)
            streams.out[i] = outBlocks[i];
        std::size_t const done = std::min(size, loop(constants, options, streams, Padded(size)));
        for (std::size_t i = 0; i < out.count; ++i)
            WriteNumbers(outBlocks[i], out.first[i], out.strides[i], begin, done);
        if (!codes.empty())
            std::copy_n(codeBlock, done, &codes[begin]);
        if (!bytes.empty())
            std::copy_n(byteBlock, done, &bytes[begin]);
        if (!bits.empty()) // those of a block lie in one word
            bits[begin / 64] |= (done == 64 ? bitBlock : bitBlock & ((std::uint64_t{1} << done) - 1)) << begin % 64;
        begin += done;
        if (done != size)
            return begin;
    }
    return count;
}

template <typename T>
std::size_t Job<T>::Count(Loop<T> loop, T const* constants, unsigned int options) const
{
    Run(loop, constants, options);
    std::size_t set = 0;
    for (std::uint64_t const word : bits)
        set += static_cast<std::size_t>(std::popcount(word));
    return set;
}

template class Job<float>;
template class Job<double>;

} // namespace batch

} // namespace bv::maths
