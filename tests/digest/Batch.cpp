#include <array>
#include <vector>

#include <bv/maths/Batch.h>
#include <bv/maths/RNGenerator.h>

#include "Matrices.h"
#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// Lengths that end in and between registers, blocks and words of bits.
constexpr std::size_t LENGTHS[] = {0, 1, 3, 4, 5, 8, 15, 16, 17, 31, 40, 63, 64, 65, 100, 128, 131, 300};

template <typename Item>
void AddAll(Digest& digest, std::vector<Item> const& items)
{
    for (Item const& item : items)
        digest.Add(item);
}

template <typename T>
void AddMatrices(Digest& digest, std::vector<tMatrix4<T>> const& matrices)
{
    for (tMatrix4<T> const& matrix : matrices)
        AddWhole(digest, matrix);
}

/// As many as there are, made one after the other.
template <typename Make>
auto Several(std::size_t count, Make make)
{
    std::vector<decltype(make())> items;
    for (std::size_t i = 0; i < count; ++i)
        items.push_back(make());
    return items;
}

template <typename T>
tVolumeSphere<T> Sphere(Workload& work, unsigned int rarity)
{
    tVector3<T> const centre = work.Vector3<T>(rarity);
    return {centre, work.Number<T>(rarity)};
}

/// Runs a topic for every length, with special numbers more and more often.
template <typename Topic>
void ForLengths(Topic topic)
{
    for (unsigned int const rarity : RARITIES)
        for (std::size_t const length : LENGTHS)
            topic(rarity, length);
}

/// What a vertex buffer has beside a position.
template <typename T>
struct Vertex
{
    tVector3<T> position;
    T u, v;
};

template <typename T>
void Transforms(Digests& digests, Workload& work)
{
    ForLengths(
        [&](unsigned int rarity, std::size_t length)
        {
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            auto const points = Several(length, [&] { return work.Vector3<T>(rarity); });
            std::vector<tVector3<T>> results(length);
            std::vector<Vertex<T>> vertices(length);
            tVectorView<T> const positions(vertices, &Vertex<T>::position);
            std::vector<T> x(length);
            std::vector<T> y(length);
            std::vector<T> z(length);
            std::vector<std::uint64_t> bits(GetBitWords(length));
            digests["points"].Try(
                [&]
                {
                    TransformPoints(matrix, points, positions);
                    return true;
                });
            for (Vertex<T> const& vertex : vertices)
                digests["points"].Add(vertex.position);
            digests["try-points"].Add(TryTransformPoints(matrix, points, results, bits));
            AddAll(digests["try-points"], results);
            AddAll(digests["try-points"], bits);
            TransformPointsAffinely(matrix, points, tVectorView<T>(x, y, z));
            AddAll(digests["affine-points"], x);
            AddAll(digests["affine-points"], y);
            AddAll(digests["affine-points"], z);
            TransformPointsToClip(matrix, tVectorView<T>(x, y, z), results, x);
            AddAll(digests["clip-points"], results);
            AddAll(digests["clip-points"], x);
            TransformDirections(matrix, points, results);
            AddAll(digests["directions"], results);
            NormaliseVectors(results, results);
            AddAll(digests["normalised"], results);

            auto boxes = Several(length, [&] { return work.Volume<T>(rarity); });
            TransformBoxes(matrix, boxes, boxes);
            AddAll(digests["boxes"], boxes);

            auto const matrices = Several(length, [&] { return work.AnyMatrix<T>(rarity); });
            std::vector<tMatrix4<T>> others(length);
            digests["inverses"].Try(
                [&]
                {
                    InvertMatrices(matrices, others);
                    return true;
                });
            AddMatrices(digests["inverses"], others);
            MultiplyMatrices(matrix, matrices, others);
            AddMatrices(digests["products"], others);
            MultiplyMatrices(matrices, others, others);
            AddMatrices(digests["products"], others);
            digests["normal-matrices"].Try(
                [&]
                {
                    ComputeNormalMatrices(matrices, others);
                    return true;
                });
            AddMatrices(digests["normal-matrices"], others);
        });
}

template <typename T>
void Shapes(Digests& digests, Workload& work)
{
    ForLengths(
        [&](unsigned int rarity, std::size_t length)
        {
            auto const points = Several(length, [&] { return work.Vector3<T>(rarity); });
            auto const boxes = Several(length, [&] { return work.Volume<T>(rarity); });
            auto const spheres = Several(length, [&] { return Sphere<T>(work, rarity); });
            tFrustum<T> const view(tMatrix4<T>::PerspectiveProjection(-1, 1, T(-0.75), T(0.75), 1, 12) *
                                   work.Fresh<T>(2, 0));
            std::vector<std::uint64_t> bits(GetBitWords(length));
            std::vector<std::uint32_t> indices(length);
            std::vector<std::uint8_t> bytes(length);
            std::vector<typename tFrustum<T>::IntersectionResult> results(length);
            tVolumeAABB<T> box = work.Volume<T>(rarity);
            digests["points-inside"].Add(FindPointsInside(box, work.OneIn(2), points, bits));
            AddAll(digests["points-inside"], bits);
            ExpandBox(box, points);
            digests["expanded-box"].Add(box);
            ClassifyBoxes(view, boxes, std::span(results));
            AddAll(digests["boxes"], results);
            ClassifyBoxesByPlane(view, work.Below(PLANES_ALL + 1), boxes, bytes);
            AddAll(digests["boxes-by-plane"], bytes);
            digests["visible-boxes"].Add(FindVisibleBoxes(view, boxes, bits), ListVisibleBoxes(view, boxes, indices));
            AddAll(digests["visible-boxes"], bits);
            AddAll(digests["visible-boxes"], indices);
            ClassifySpheres(view, spheres, std::span(results));
            AddAll(digests["spheres"], results);
            indices.assign(length, 0);
            digests["visible-spheres"].Add(FindVisibleSpheres(view, spheres, bits),
                                           ListVisibleSpheres(view, spheres, indices));
            AddAll(digests["visible-spheres"], bits);
            AddAll(digests["visible-spheres"], indices);
        });
}

template <typename T>
void Rays(Digests& digests, Workload& work)
{
    ForLengths(
        [&](unsigned int rarity, std::size_t length)
        {
            auto const boxes = Several(length, [&] { return work.Volume<T>(rarity); });
            auto const spheres = Several(length, [&] { return Sphere<T>(work, rarity); });
            auto const makeRay = [&]
            {
                tVector3<T> const origin = work.Vector3<T>(rarity);
                return tRay<T>(origin, work.Direction<T>(rarity));
            };
            auto const rays = Several(length, makeRay);
            tRay<T> const ray = makeRay();
            std::vector<T> entries(length);
            std::vector<T> exits(length);
            std::vector<std::uint64_t> bits(GetBitWords(length));
            T const tNear = work.Number<T>(rarity);
            digests["boxes"].Add(ClipBoxes(ray, tNear, tNear + T{20}, boxes, entries, bits));
            AddAll(digests["boxes"], entries);
            AddAll(digests["boxes"], bits);
            digests["spheres"].Add(ClipSpheres(ray, spheres, entries, exits, bits));
            AddAll(digests["spheres"], entries);
            AddAll(digests["spheres"], exits);
            AddAll(digests["spheres"], bits);
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), T{5});
            digests["one-sphere"].Add(ClipRays(tRayView<T const>(rays), sphere, entries, exits, bits));
            AddAll(digests["one-sphere"], entries);
            AddAll(digests["one-sphere"], exits);
            AddAll(digests["one-sphere"], bits);
        });
}

template <typename T>
void Numbers(Digests& digests, Workload& work)
{
    ForLengths(
        [&](unsigned int rarity, std::size_t length)
        {
            auto const a = Several(length, [&] { return work.Number<T>(rarity); });
            std::vector<T> b = a;
            for (T& number : b)
                number = work.Near(number);
            std::vector<std::uint64_t> bits(GetBitWords(length));
            digests["comparison"].Add(CompareNumbers(a, b, bits));
            AddAll(digests["comparison"], bits);
            tExtremes<T> const ends = FindExtremes(tNumberView<T const>(a));
            digests["extremes"].Add(ends.min, ends.max);
        });
}

void Draws(Digests& digests, Workload& work)
{
    RNGenerator generator(work.Below(32768));
    for (std::size_t const length : LENGTHS)
    {
        std::vector<float> numbers(10 * length);
        std::vector<tVector2<float>> two(length);
        std::vector<tVector3<float>> three(length);
        GetFloats(generator, numbers);
        GetVectors2D(generator, two);
        GetVectors3D(generator, three);
        AddAll(digests["generator"], numbers);
        AddAll(digests["generator"], two);
        AddAll(digests["generator"], three);
        std::vector<float> results(length);
        std::vector<float> const line(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(length));
        EvaluateNoise1(line, results);
        AddAll(digests["noise-1"], results);
        EvaluateNoise2(two, results);
        AddAll(digests["noise-2"], results);
        EvaluateNoise3(three, results);
        AddAll(digests["noise-3"], results);
        EvaluateTurbulence1(line, 3, results);
        AddAll(digests["turbulence-1"], results);
        EvaluateTurbulence2(two, 4, results);
        AddAll(digests["turbulence-2"], results);
        EvaluateTurbulence3(three, 5, results);
        AddAll(digests["turbulence-3"], results);
    }
}

} // namespace

void RunBatches()
{
    RunBoth("batch-transforms", Transforms<float>, Transforms<double>);
    RunBoth("batch-shapes", Shapes<float>, Shapes<double>);
    RunBoth("batch-rays", Rays<float>, Rays<double>);
    RunBoth("batch-numbers", Numbers<float>, Numbers<double>);
    Run("batch-draws", Draws);
}

} // namespace digest
