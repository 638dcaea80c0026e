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
    auto const to = std::make_shared<std::vector<Out>>(from->size());
    AddRun(name, from->size(),
           [=]
           {
               Out* results = to->data();
               benchmark::DoNotOptimize(results);
               run(std::span<In const>(*from), std::span<Out>(*to));
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
    AddNoiseRows();
}

} // namespace bench
