// Batch forms beside the single forms, with each set of loops that the processor has.

#include <functional>
#include <vector>

#include "Fuzz.h"
#include "Maths/Kernels/Kernels.h"
#include "bv/maths/Batch.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Intersect.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/View.h"
#include "bv/maths/tWatertightRay.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace bv::maths
{

namespace
{

std::vector<Kernels> FindSupported()
{
    std::vector<Kernels> supported;
    for (KernelSet const& set : KernelSets())
        if (set.isSupported())
            supported.push_back(set.kernels());
    return supported;
}

std::vector<Kernels> const& Supported()
{
    static std::vector<Kernels> const supported = FindSupported();
    return supported;
}

std::size_t chosen = 0;

} // namespace

// Takes the place of the library's own choice in this program.
Kernels const& ChosenKernels() noexcept
{
    return Supported()[chosen];
}

} // namespace bv::maths

namespace
{

template <typename T>
struct Arrays
{
    std::vector<tVector3<T>> points;
    std::vector<tVolumeAABB<T>> boxes;
    std::vector<tVolumeSphere<T>> spheres;
    std::vector<tMatrix4<T>> matrices;
    tMatrix4<T> matrix;
    tRay<T> ray;
    T tNear;
    T tFar;

    explicit Arrays(Input& input)
        : matrix{input.Matrix<T>()},
          ray{input.Vector3<T>(), input.Vector3<T>()},
          tNear{input.Number<T>()},
          tFar{input.Number<T>()}
    {
        for (unsigned count = input.Below(40); count > 0; --count)
        {
            points.push_back(input.Vector3<T>());
            boxes.emplace_back(points.back(), input.Vector3<T>());
            spheres.emplace_back(points.back(), input.Number<T>());
        }
        for (unsigned count = input.Below(6); count > 0; --count)
            matrices.push_back(input.Matrix<T>());
    }
};

bool IsSet(std::vector<std::uint64_t> const& bits, std::size_t index)
{
    return (bits[index / 64] >> (index % 64) & 1) != 0;
}

std::vector<std::uint64_t> Bits(std::size_t count)
{
    return std::vector<std::uint64_t>(GetBitWords(count), ~std::uint64_t{0});
}

template <typename T>
void Points(Arrays<T> const& a)
{
    std::vector<tVector3<T>> results(a.points.size());
    TransformDirections(a.matrix, a.points, results);
    for (std::size_t i = 0; i < results.size(); ++i)
        Require(IsSame(results[i], a.points[i].TransformedAsVector(a.matrix)), "directions are transformed as alone");
    NormaliseVectors(tVectorView<T const>(a.points), tVectorView<T>(results));
    for (std::size_t i = 0; i < results.size(); ++i)
        Require(IsSame(results[i], a.points[i].Normalised()), "vectors are normalised as alone");

    auto undivided = Bits(results.size());
    TryTransformPoints(a.matrix, a.points, results, undivided);
    bool isAnyRefused = false;
    for (std::size_t i = 0; i < results.size(); ++i)
    {
        bool isRefused = false;
        try
        {
            tVector3<T> const alone = a.points[i].Transformed(a.matrix);
            Require(IsSet(undivided, i) || IsSame(results[i], alone), "points are transformed as alone");
        }
        catch (DivideByZeroException const&)
        {
            isRefused = true;
        }
        Require(IsSet(undivided, i) == isRefused, "points that cannot be divided are marked");
        isAnyRefused = isAnyRefused || isRefused;
    }
    try
    {
        std::vector<tVector3<T>> all(a.points);
        TransformPoints(a.matrix, a.points, all);
        Require(!isAnyRefused, "points that cannot be divided are refused");
        for (std::size_t i = 0; i < all.size(); ++i)
            Require(IsSame(all[i], results[i]), "points are transformed as alone");
    }
    catch (DivideByZeroException const&)
    {
        Require(isAnyRefused, "only points that cannot be divided are refused");
    }
}

template <typename T>
void Boxes(Arrays<T> const& a)
{
    std::vector<tVolumeAABB<T>> results(a.boxes.size());
    TransformBoxes(a.matrix, a.boxes, results);
    for (std::size_t i = 0; i < results.size(); ++i)
        Require(IsSame(results[i], a.boxes[i] * a.matrix), "boxes are transformed as alone");
    if (a.boxes.empty())
        return;
    tVolumeAABB<T> together(a.boxes[0]);
    tVolumeAABB<T> alone(a.boxes[0]);
    ExpandBox(together, a.points);
    for (auto const& point : a.points)
        alone.Expand(point);
    Require(IsSame(together, alone), "a box grows as by one point after the other");
    for (bool const isExclusive : {false, true})
    {
        auto inside = Bits(a.points.size());
        std::size_t const count = FindPointsInside(a.boxes[0], isExclusive, a.points, inside);
        std::size_t expected = 0;
        for (std::size_t i = 0; i < a.points.size(); ++i)
        {
            bool const isInside = a.boxes[0].Contains(a.points[i], isExclusive);
            expected += isInside ? 1U : 0U;
            Require(IsSet(inside, i) == isInside, "points inside a box are found as alone");
        }
        Require(count == expected, "points inside a box are counted");
    }
    auto hits = Bits(a.boxes.size());
    std::vector<T> entries(a.boxes.size());
    ClipBoxes(a.ray, a.tNear, a.tFar, a.boxes, entries, hits);
    for (std::size_t i = 0; i < a.boxes.size(); ++i)
    {
        T first = a.tNear;
        T last = a.tFar;
        bool const isHit = a.ray.Clip(a.boxes[i], first, last);
        Require(IsSet(hits, i) == isHit, "a ray meets boxes as alone");
        Require(!isHit || IsSame(entries[i], first), "a ray enters boxes as alone");
    }
}

template <typename T>
void Spheres(Arrays<T> const& a)
{
    auto hits = Bits(a.spheres.size());
    std::vector<T> entries(a.spheres.size());
    std::vector<T> exits(a.spheres.size());
    ClipSpheres(a.ray, a.spheres, entries, exits, hits);
    for (std::size_t i = 0; i < a.spheres.size(); ++i)
    {
        T first = 0;
        T last = 0;
        bool const isHit = a.ray.Clip(a.spheres[i], first, last);
        Require(IsSet(hits, i) == isHit, "a ray meets spheres as alone");
        Require(!isHit || (IsSame(entries[i], first) && IsSame(exits[i], last)), "a ray clips spheres as alone");
    }
}

template <typename T, typename Ray>
void Triangles(Arrays<T> const& a, Ray const& ray)
{
    std::size_t const count = a.points.size() < 3 ? 0 : a.points.size() - 2;
    std::span<tVector3<T> const> const all(a.points);
    auto const from = [&](std::size_t first) { return count == 0 ? all.first(0) : all.subspan(first, count); };
    auto hits = Bits(count);
    std::vector<T> t(count);
    std::vector<T> u(count);
    std::vector<T> v(count);
    IntersectTriangles(ray, from(0), from(1), from(2), a.tNear, a.tFar, t, u, v, hits);
    for (std::size_t i = 0; i < count; ++i)
    {
        tTriangleHit<T> hit{};
        bool const isHit = IntersectTriangle(ray, all[i], all[i + 1], all[i + 2], a.tNear, a.tFar, hit);
        Require(IsSet(hits, i) == isHit, "a ray meets triangles as alone");
        Require(!isHit || (IsSame(t[i], hit.t) && IsSame(u[i], hit.u) && IsSame(v[i], hit.v)),
                "a ray meets triangles where it does alone");
    }
}

template <typename T>
void Matrices(Arrays<T> const& a)
{
    std::vector<tMatrix4<T>> results(a.matrices.size());
    MultiplyMatrices(a.matrix, a.matrices, results);
    for (std::size_t i = 0; i < results.size(); ++i)
        Require(IsSame(results[i], a.matrix * a.matrices[i]), "matrices are multiplied as alone");
    MultiplyMatrices(a.matrices, a.matrices, results);
    for (std::size_t i = 0; i < results.size(); ++i)
        Require(IsSame(results[i], a.matrices[i] * a.matrices[i]), "pairs of matrices are multiplied as alone");
    bool isSingular = false;
    std::vector<tMatrix4<T>> inverses;
    try
    {
        for (auto const& matrix : a.matrices)
            inverses.push_back(matrix.Inverted());
    }
    catch (MatrixException const&)
    {
        isSingular = true;
    }
    try
    {
        InvertMatrices(a.matrices, results);
        Require(!isSingular, "a singular matrix is refused");
        for (std::size_t i = 0; i < results.size(); ++i)
            Require(IsSame(results[i], inverses[i]), "matrices are inverted as alone");
    }
    catch (MatrixException const&)
    {
        Require(isSingular, "only a singular matrix is refused");
    }
}

template <typename T>
void Numbers(Arrays<T> const& a)
{
    std::vector<T> left;
    std::vector<T> right;
    for (auto const& point : a.points)
    {
        left.push_back(point.x);
        right.push_back(point.y);
    }
    auto equal = Bits(left.size());
    std::size_t const count = CompareNumbers(left, right, equal);
    std::size_t expected = 0;
    for (std::size_t i = 0; i < left.size(); ++i)
    {
        expected += IsEqual(left[i], right[i]) ? 1U : 0U;
        Require(IsSet(equal, i) == IsEqual(left[i], right[i]), "numbers are compared as alone");
    }
    Require(count == expected, "equal numbers are counted");
}

template <typename T>
void Views(Arrays<T> const& a)
{
    tFrustum<T> view;
    try
    {
        view = tFrustum<T>(a.matrix);
    }
    catch (bv::Exception const&)
    {
        return;
    }
    std::vector<typename tFrustum<T>::IntersectionResult> places(a.boxes.size());
    ClassifyBoxes(view, a.boxes, places);
    auto visible = Bits(a.boxes.size());
    FindVisibleBoxes(view, a.boxes, visible);
    for (std::size_t i = 0; i < a.boxes.size(); ++i)
    {
        Require(places[i] == view.ContainsAABB(a.boxes[i]), "boxes are seen as alone");
        Require(IsSet(visible, i) == (places[i] != tFrustum<T>::OUTSIDE), "boxes that are seen are found");
    }
}

template <typename T>
void Try(Input& input)
{
    Arrays<T> const arrays(input);
    for (chosen = 0; chosen < Supported().size(); ++chosen)
    {
        Points(arrays);
        Boxes(arrays);
        Spheres(arrays);
        Triangles(arrays, arrays.ray);
        Triangles(arrays, tWatertightRay<T>(arrays.ray));
        Matrices(arrays);
        Numbers(arrays);
        Views(arrays);
    }
    chosen = 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    if (input.Below(2) == 0)
        Try<float>(input);
    else
        Try<double>(input);
    return 0;
}
