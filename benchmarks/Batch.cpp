#include "bv/maths/Batch.h"

#include <memory>
#include <string>
#include <vector>

#include "bv/maths/Noise.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVolumeAABB.h"

#include "BatchData.h"
#include "Maths/Kernels/Kernels.h"
#include "NoiseData.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench
{

namespace
{

using namespace bv::maths;

/// A row over shared arrays: `run(in, out)`.
template <typename Out, typename In, typename Run>
void AddArrays(std::string const& name, std::vector<In> in, Run run)
{
    auto const from = std::make_shared<std::vector<In> const>(std::move(in));
    auto const to = std::shared_ptr<Out[]>(new Out[from->size()]());
    AddRun(name, from->size(),
           [=]
           {
               Out* results = to.get();
               benchmark::DoNotOptimize(results);
               run(std::span<In const>(*from), std::span<Out>(to.get(), from->size()));
           });
}

template <typename T>
tMatrix4<T> MakeMatrix(std::array<double, 16> const& numbers)
{
    return tMatrix4<T>(tMatrix4<double>(numbers.data()));
}
template <>
tMatrix4<double> MakeMatrix(std::array<double, 16> const& numbers)
{
    return tMatrix4<double>(numbers.data());
}

/// Each row twice: the batch form, and a loop over the single form, which is a row of its own among the peers.
template <typename Out, typename T, typename In, typename Batch, typename Single>
void AddBoth(std::string const& operation, std::vector<In> const& in, Batch batch, Single single)
{
    AddArrays<Out>(Name<T>("batch/" + operation, "BvBaseUtils"), in, batch);
    AddArrays<Out>(Name<T>("batch/" + operation, "BvBaseUtils' single form"), in,
                   [=](auto from, auto to)
                   {
                       for (std::size_t i = 0; i < from.size(); ++i)
                           to[i] = single(from[i]);
                   });
}

template <typename T>
void AddGeometry(std::size_t count)
{
    std::vector<T> const coordinates = BatchCoordinates<T>(count);
    std::vector<tVector3<T>> points;
    points.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        points.emplace_back(coordinates.data() + 3 * i);
    auto const projective = MakeMatrix<T>(PROJECTIVE);
    auto const affine = MakeMatrix<T>(AFFINE);
    std::string const size = SizeName(count);
    AddBoth<tVector3<T>, T>(
        "transform points" + size, points, [=](auto in, auto out) { TransformPoints(projective, in, out); },
        [=](auto const& point) { return point.Transformed(projective); });
    AddBoth<tVector3<T>, T>(
        "transform directions" + size, points, [=](auto in, auto out) { TransformDirections(affine, in, out); },
        [=](auto const& point) { return point.TransformedAsVector(affine); });

    auto const shared = std::make_shared<std::vector<tVector3<T>> const>(std::move(points));
    AddRun(Name<T>("batch/grow a box" + size, "BvBaseUtils"), count,
           [=]
           {
               tVolumeAABB<T> box;
               ExpandBox(box, *shared);
               benchmark::DoNotOptimize(box);
           });
    AddRun(Name<T>("batch/grow a box" + size, "BvBaseUtils' single form"), count,
           [=]
           {
               tVolumeAABB<T> box;
               for (tVector3<T> const& point : *shared)
                   box.Expand(point);
               benchmark::DoNotOptimize(box);
           });
}

template <typename T>
void AddFrustumRows()
{
    using Result = typename tFrustum<T>::IntersectionResult;
    auto const vector = [](double const* n)
    { return tVector3<T>(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    auto const boxes =
        Build(SceneBoxes(), 6, [&](double const* n) { return tVolumeAABB<T>(vector(n), vector(n + 3)); });
    tFrustum<T> const frustum(tMatrix4<T>(MainView().projection.data()));
    AddBoth<Result, T>(
        "classify boxes", boxes, [=](auto in, auto out) { ClassifyBoxes(frustum, in, out); },
        [=](auto const& box) { return frustum.ContainsAABB(box); });
    auto const bits = std::make_shared<std::vector<std::uint64_t>>(GetBitWords(boxes.size()));
    AddBoth<bool, T>(
        "find visible boxes", boxes, [=](auto in, auto) { FindVisibleBoxes(frustum, in, *bits); },
        [=](auto const& box) { return frustum.ContainsAABB(box) != tFrustum<T>::OUTSIDE; });
}

/// Vectors of three components, drawn from a range.
template <typename T>
std::vector<tVector3<T>> Vectors(unsigned int seed, double low, double high)
{
    return Build(Numbers(seed, 3 * COUNT, low, high), 3,
                 [](double const* n)
                 { return tVector3<T>(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); });
}

/// What the bits of a batch of the usual size go to.
std::shared_ptr<std::vector<std::uint64_t>> MakeBits()
{
    return std::make_shared<std::vector<std::uint64_t>>(GetBitWords(COUNT));
}

template <typename T>
void AddPointRows()
{
    auto const affine = MakeMatrix<T>(AFFINE);
    auto const projective = MakeMatrix<T>(PROJECTIVE);
    auto const points = Vectors<T>(172, 1, 10);
    auto const bits = MakeBits();
    AddBoth<tVector3<T>, T>(
        "transform points affinely", points, [=](auto in, auto out) { TransformPointsAffinely(affine, in, out); },
        [=](auto const& point) { return point.Transformed(affine); });
    AddBoth<tVector3<T>, T>(
        "try to transform points", points, [=](auto in, auto out) { TryTransformPoints(projective, in, out, *bits); },
        [=](auto const& point) { return point.Transformed(projective); });
    AddBoth<tVector3<T>, T>(
        "normalise", points, [](auto in, auto out) { NormaliseVectors(in, out); },
        [](auto const& vector) { return vector.Normalised(); });
    tVolumeAABB<T> const box({2, 2, 2}, {7, 8, 9});
    AddBoth<bool, T>(
        "points in a box", points, [=](auto in, auto) { FindPointsInside(box, false, in, *bits); },
        [=](auto const& point) { return box.Contains(point, false); });
    std::vector<T> const numbers =
        Build(Numbers(173, COUNT, -1, 1), 1, [](double const* n) { return static_cast<T>(n[0]); });
    AddBoth<bool, T>(
        "IsEqual", numbers, [=](auto in, auto) { CompareNumbers(in, numbers, *bits); },
        [](T number) { return IsEqual(number, T{0.5}); });
}

template <typename T>
void AddShapeRows()
{
    auto const corners = Vectors<T>(174, -10, 10);
    auto const affine = MakeMatrix<T>(AFFINE);
    auto const bits = MakeBits();
    auto const exits = std::make_shared<std::vector<T>>(COUNT);
    std::vector<tVolumeAABB<T>> boxes;
    std::vector<tVolumeSphere<T>> spheres;
    std::vector<tRay<T>> rays;
    std::vector<tMatrix4<T>> matrices;
    for (tVector3<T> const& corner : corners)
    {
        boxes.emplace_back(corner, corner + tVector3<T>(2, 3, 1));
        spheres.emplace_back(corner, T{2});
        rays.emplace_back(corner, (-corner).Normalised());
        matrices.push_back(affine * tMatrix4<T>::Translate(corner) + affine);
    }
    tRay<T> const ray({-12, -11, -13}, tVector3<T>(3, 2, 4).Normalised());
    AddBoth<tVolumeAABB<T>, T>(
        "transform boxes", boxes, [=](auto in, auto out) { TransformBoxes(affine, in, out); },
        [=](auto const& box) { return box * affine; });
    AddBoth<T, T>(
        "one ray, many boxes", boxes, [=](auto in, auto out) { ClipBoxes(ray, T{0}, T{100}, in, out, *bits); },
        [=](auto const& box)
        {
            T tNear = 0;
            T tFar = 100;
            return ray.Clip(box, tNear, tFar) ? tNear : T{-1};
        });
    AddBoth<T, T>(
        "one ray, many spheres", spheres, [=](auto in, auto out) { ClipSpheres(ray, in, out, *exits, *bits); },
        [=](auto const& sphere)
        {
            T tNear = -1;
            T tFar = -1;
            return ray.Clip(sphere, tNear, tFar) ? tNear : T{-1};
        });
    tVolumeSphere<T> const sphere({1, 2, 3}, T{5});
    AddBoth<T, T>(
        "many rays, one sphere", rays,
        [=](auto in, auto out) { ClipRays(tRayView<T const>(in), sphere, out, *exits, *bits); },
        [=](auto const& each)
        {
            T tNear = -1;
            T tFar = -1;
            return each.Clip(sphere, tNear, tFar) ? tNear : T{-1};
        });
    AddBoth<tMatrix4<T>, T>(
        "invert matrices", std::vector(matrices.begin(), matrices.begin() + 64),
        [](auto in, auto out) { InvertMatrices(in, out); }, [](auto const& matrix) { return matrix.Inverted(); });
}

void AddNoiseRows()
{
    auto const lines = Build(NoisePoints(), 3, [](double const* n) { return static_cast<float>(n[0]); });
    auto const planes =
        Build(NoisePoints(), 3,
              [](double const* n) { return tVector2<float>(static_cast<float>(n[0]), static_cast<float>(n[1])); });
    auto const spaces =
        Build(NoisePoints(), 3,
              [](double const* n) {
                  return tVector3<float>(static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2]));
              });
    AddBoth<float, float>(
        "Noise1", lines, [](auto in, auto out) { EvaluateNoise1(in, out); }, [](float x) { return Noise1(x); });
    AddBoth<float, float>(
        "Noise2", planes, [](auto in, auto out) { EvaluateNoise2(in, out); }, [](auto const& p) { return Noise2(p); });
    AddBoth<float, float>(
        "Noise3", spaces, [](auto in, auto out) { EvaluateNoise3(in, out); }, [](auto const& p) { return Noise3(p); });
    for (unsigned int const octaves : {4U, 8U})
        AddBoth<float, float>(
            "Turbulence3 " + std::to_string(octaves) + " octaves", spaces,
            [=](auto in, auto out) { EvaluateTurbulence3(in, octaves, out); },
            [=](auto const& p) { return Turbulence3(p, octaves); });
    // The library takes the widest registers that there are; what it does on a processor without them is of interest,
    // too.
    auto const sets = KernelSets();
    if (sets.size() > 1 && sets[0].isSupported())
        for (unsigned int const octaves : {1U, 4U, 8U})
            AddArrays<float>(
                Name<float>(octaves == 1 ? "batch/Noise3" : "batch/Turbulence3 " + std::to_string(octaves) + " octaves",
                            std::string("BvBaseUtils with ") + sets[1].name),
                spaces,
                [=, kernels = NoiseKernels<tVector3<float>>(sets[1].kernels())](auto in, auto out)
                { kernels.turbulences(in.data(), octaves, out.data(), in.size()); });
    auto const generator = std::make_shared<RNGenerator>(1U);
    AddBoth<float, float>(
        "generator floats", lines, [=](auto, auto out) { GetFloats(*generator, out); },
        [=](float) { return generator->GetFloat(); });
}

} // namespace

void AddBatch()
{
    for (std::size_t const count : {COUNT, LARGE_COUNT})
    {
        AddGeometry<float>(count);
        AddGeometry<double>(count);
    }
    AddFrustumRows<float>();
    AddFrustumRows<double>();
    AddPointRows<float>();
    AddPointRows<double>();
    AddShapeRows<float>();
    AddShapeRows<double>();
    AddNoiseRows();
}

} // namespace bench
