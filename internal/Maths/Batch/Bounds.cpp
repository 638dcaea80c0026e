#include "bv/maths/batch/Bounds.h"

#include <algorithm>
#include <bit>

#include "Maths/Batch/Job.h"
#include "bv/maths/tVolumeAABB.h"

namespace bv::maths
{

namespace
{

using namespace batch;

/// The planes of a view as the loops take them: four numbers each, in the order in which the view has them.
template <typename T>
struct Planes
{
    T numbers[24];

    explicit Planes(tFrustum<T> const& frustum) noexcept
    {
        T* next = numbers;
        for (tPlane<T> const* const plane :
             {&frustum.GetLeftPlane(), &frustum.GetRightPlane(), &frustum.GetBottomPlane(), &frustum.GetTopPlane(),
              &frustum.GetNearPlane(), &frustum.GetFarPlane()})
            for (T const number :
                 {plane->GetNormal().x, plane->GetNormal().y, plane->GetNormal().z, plane->GetOffset()})
                *next++ = number;
    }
};

/// Codes are results.
template <typename Result>
[[nodiscard]] std::span<std::uint32_t> Codes(std::span<Result> results) noexcept
{
    static_assert(sizeof(Result) == sizeof(std::uint32_t));
    return {reinterpret_cast<std::uint32_t*>(results.data()), results.size()};
}

/// Lists the visible ones of shapes, some at a time.
/// @param find finds the visible ones from an index on, so many.
template <typename Find>
std::size_t List(std::size_t count, std::span<std::uint32_t> indices, Find find, char const* function)
{
    if (indices.size() != count)
        detail::ThrowDifferentLengths(function);
    constexpr std::size_t WORDS = 16;
    std::uint64_t words[WORDS];
    std::size_t found = 0;
    for (std::size_t begin = 0; begin < count; begin += 64 * WORDS)
    {
        std::size_t const size = std::min(64 * WORDS, count - begin);
        BitSpan const visible(words, GetBitWords(size));
        find(begin, size, visible);
        for (std::size_t word = 0; word < visible.size(); ++word)
            for (std::uint64_t bits = visible[word]; bits != 0; bits &= bits - 1)
                indices[found++] =
                    static_cast<std::uint32_t>(begin + 64 * word + static_cast<std::size_t>(std::countr_zero(bits)));
    }
    return found;
}

} // namespace

template <typename T>
void ExpandBox(tVolumeAABB<T>& box, tVectorsIn<T> points) noexcept
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    tVector3<T> const& min = box.GetMin();
    tVector3<T> const& max = box.GetMax();
    T ends[] = {min.x, min.y, min.z, max.x, max.y, max.z};
    Job<T>("ExpandBox", points.size()).Read(points).Extend(ends).Run(kernels.grow);
    box = tVolumeAABB<T>(tVector3<T>(ends), tVector3<T>(ends + 3));
}

template <typename T>
std::size_t FindPointsInside(tVolumeAABB<T> const& box, bool exclusiveMax, tVectorsIn<T> points, BitSpan inside)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    tVector3<T> const& min = box.GetMin();
    tVector3<T> const& max = box.GetMax();
    T const corners[] = {min.x, min.y, min.z, max.x, max.y, max.z};
    Job<T> job("FindPointsInside", points.size());
    return job.Read(points).WriteBits(inside).Count(kernels.contain, corners, exclusiveMax ? 1 : 0);
}

template <typename T>
void ClassifyBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes,
                   std::span<typename tFrustum<T>::IntersectionResult> results)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClassifyBoxes", boxes.size());
    job.Read(boxes).WriteCodes(Codes(results)).Run(kernels.classify, Planes<T>(frustum).numbers, PLANES_ALL);
}

template <typename T>
void ClassifyBoxesByPlane(tFrustum<T> const& frustum, unsigned int planes, tBoxesIn<T> boxes,
                          std::span<std::uint8_t> results)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClassifyBoxesByPlane", boxes.size());
    job.Read(boxes).WriteBytes(results);
    if ((planes & PLANES_OUTSIDE) != 0)
        std::fill(results.begin(), results.end(), std::uint8_t{PLANES_OUTSIDE});
    else
        job.Run(kernels.classify, Planes<T>(frustum).numbers, planes);
}

template <typename T>
std::size_t FindVisibleBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes, BitSpan visible)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("FindVisibleBoxes", boxes.size());
    return job.Read(boxes).WriteBits(visible).Count(kernels.classify, Planes<T>(frustum).numbers, PLANES_ALL);
}

template <typename T>
std::size_t ListVisibleBoxes(tFrustum<T> const& frustum, tBoxesIn<T> boxes, std::span<std::uint32_t> indices)
{
    return List(
        boxes.size(), indices,
        [&](std::size_t begin, std::size_t count, BitSpan visible)
        { FindVisibleBoxes(frustum, boxes.GetPart(begin, count), visible); },
        "ListVisibleBoxes");
}

template <typename T>
void ClassifySpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres,
                     std::span<typename tFrustum<T>::IntersectionResult> results)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClassifySpheres", spheres.size());
    job.Read(spheres).WriteCodes(Codes(results)).Run(kernels.classifySpheres, Planes<T>(frustum).numbers);
}

template <typename T>
std::size_t FindVisibleSpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres, BitSpan visible)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("FindVisibleSpheres", spheres.size());
    return job.Read(spheres).WriteBits(visible).Count(kernels.classifySpheres, Planes<T>(frustum).numbers);
}

template <typename T>
std::size_t ListVisibleSpheres(tFrustum<T> const& frustum, tSpheresIn<T> spheres, std::span<std::uint32_t> indices)
{
    return List(
        spheres.size(), indices,
        [&](std::size_t begin, std::size_t count, BitSpan visible)
        { FindVisibleSpheres(frustum, spheres.GetPart(begin, count), visible); },
        "ListVisibleSpheres");
}

template BV_TEMPLATE_INSTANCE void ExpandBox(tVolumeAABB<float>&, tVectorsIn<float>) noexcept;
template BV_TEMPLATE_INSTANCE void ExpandBox(tVolumeAABB<double>&, tVectorsIn<double>) noexcept;
template BV_TEMPLATE_INSTANCE std::size_t FindPointsInside(tVolumeAABB<float> const&, bool, tVectorsIn<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t FindPointsInside(tVolumeAABB<double> const&, bool, tVectorsIn<double>,
                                                           BitSpan);
template BV_TEMPLATE_INSTANCE void ClassifyBoxes(tFrustum<float> const&, tBoxesIn<float>,
                                                 std::span<tFrustum<float>::IntersectionResult>);
template BV_TEMPLATE_INSTANCE void ClassifyBoxes(tFrustum<double> const&, tBoxesIn<double>,
                                                 std::span<tFrustum<double>::IntersectionResult>);
template BV_TEMPLATE_INSTANCE void ClassifyBoxesByPlane(tFrustum<float> const&, unsigned int, tBoxesIn<float>,
                                                        std::span<std::uint8_t>);
template BV_TEMPLATE_INSTANCE void ClassifyBoxesByPlane(tFrustum<double> const&, unsigned int, tBoxesIn<double>,
                                                        std::span<std::uint8_t>);
template BV_TEMPLATE_INSTANCE std::size_t FindVisibleBoxes(tFrustum<float> const&, tBoxesIn<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t FindVisibleBoxes(tFrustum<double> const&, tBoxesIn<double>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ListVisibleBoxes(tFrustum<float> const&, tBoxesIn<float>,
                                                           std::span<std::uint32_t>);
template BV_TEMPLATE_INSTANCE std::size_t ListVisibleBoxes(tFrustum<double> const&, tBoxesIn<double>,
                                                           std::span<std::uint32_t>);
template BV_TEMPLATE_INSTANCE void ClassifySpheres(tFrustum<float> const&, tSpheresIn<float>,
                                                   std::span<tFrustum<float>::IntersectionResult>);
template BV_TEMPLATE_INSTANCE void ClassifySpheres(tFrustum<double> const&, tSpheresIn<double>,
                                                   std::span<tFrustum<double>::IntersectionResult>);
template BV_TEMPLATE_INSTANCE std::size_t FindVisibleSpheres(tFrustum<float> const&, tSpheresIn<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t FindVisibleSpheres(tFrustum<double> const&, tSpheresIn<double>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ListVisibleSpheres(tFrustum<float> const&, tSpheresIn<float>,
                                                             std::span<std::uint32_t>);
template BV_TEMPLATE_INSTANCE std::size_t ListVisibleSpheres(tFrustum<double> const&, tSpheresIn<double>,
                                                             std::span<std::uint32_t>);

} // namespace bv::maths
