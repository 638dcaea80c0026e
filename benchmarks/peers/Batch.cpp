#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathMatrix.h>
#include <Imath/ImathVec.h>
#include <pcg_random.hpp>
#include <stb/stb_perlin.h>

#include "BatchData.h"
#include "NoiseData.h"
#include "Topics.h"
#include "peers/ReferenceNoise.h"

namespace bench::peers
{

namespace
{

template <typename T>
using Coordinates = std::shared_ptr<std::vector<T> const>;

/// What memory gives: as many bytes copied as a transformation reads and writes, or read as growing a box does.
template <typename T>
void AddMemory(Coordinates<T> const& in, std::string const& size)
{
    std::size_t const count = in->size() / 3;
    auto const out = std::make_shared<std::vector<T>>(in->size());
    auto const copy = [=]
    {
        std::memcpy(out->data(), in->data(), in->size() * sizeof(T));
        benchmark::DoNotOptimize(out->data());
    };
    AddRun(Name<T>("batch/transform points" + size, "memcpy"), count, copy);
    AddRun(Name<T>("batch/transform directions" + size, "memcpy"), count, copy);
    // The C library looks for a byte that is not there with the widest registers of the processor.
    auto const ones = std::make_shared<std::vector<char> const>(in->size() * sizeof(T), '\1');
    AddRun(Name<T>("batch/grow a box" + size, "memchr"), count,
           [=] { benchmark::DoNotOptimize(std::memchr(ones->data(), 0, ones->size())); });
}

template <typename T>
void AddEigen(Coordinates<T> const& in, std::string const& size)
{
    using Points = Eigen::Matrix<T, 3, Eigen::Dynamic>;
    using Matrix = Eigen::Matrix<T, 4, 4>;
    std::size_t const count = in->size() / 3;
    auto const columns = static_cast<Eigen::Index>(count);
    auto const points = std::make_shared<Points const>(Eigen::Map<Points const>(in->data(), 3, columns));
    auto const out = std::make_shared<Points>(3, columns);
    Matrix const projective =
        Eigen::Map<Eigen::Matrix<double, 4, 4, Eigen::RowMajor> const>(PROJECTIVE.data()).template cast<T>();
    Matrix const affine =
        Eigen::Map<Eigen::Matrix<double, 4, 4, Eigen::RowMajor> const>(AFFINE.data()).template cast<T>();
    AddRun(Name<T>("batch/transform points" + size, "Eigen"), count,
           [=]
           {
               for (Eigen::Index i = 0; i < columns; ++i)
                   out->col(i) = (projective * points->col(i).homogeneous()).hnormalized();
               benchmark::DoNotOptimize(out->data());
           });
    AddRun(Name<T>("batch/transform directions" + size, "Eigen"), count,
           [=]
           {
               out->noalias() = affine.template topLeftCorner<3, 3>().lazyProduct(*points);
               benchmark::DoNotOptimize(out->data());
           });
    AddRun(Name<T>("batch/grow a box" + size, "Eigen"), count,
           [=]
           {
               Eigen::Matrix<T, 3, 1> const low = points->rowwise().minCoeff();
               Eigen::Matrix<T, 3, 1> const high = points->rowwise().maxCoeff();
               Eigen::AlignedBox<T, 3> box(low, high);
               benchmark::DoNotOptimize(box);
           });
}

template <typename T>
void AddImath(Coordinates<T> const& in, std::string const& size)
{
    using Vector = Imath::Vec3<T>;
    std::size_t const count = in->size() / 3;
    auto const points = std::make_shared<std::vector<Vector>>(count);
    auto const out = std::make_shared<std::vector<Vector>>(count);
    for (std::size_t i = 0; i < count; ++i)
        (*points)[i] = Vector((*in)[3 * i], (*in)[3 * i + 1], (*in)[3 * i + 2]);
    auto const make = [](std::array<double, 16> const& numbers)
    {
        Imath::Matrix44<T> matrix; // vectors are rows here
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                matrix[column][row] = static_cast<T>(numbers[static_cast<std::size_t>(4 * row + column)]);
        return matrix;
    };
    AddRun(Name<T>("batch/transform points" + size, "Imath"), count,
           [=, matrix = make(PROJECTIVE)]
           {
               for (std::size_t i = 0; i < count; ++i)
                   matrix.multVecMatrix((*points)[i], (*out)[i]);
               benchmark::DoNotOptimize(out->data());
           });
    AddRun(Name<T>("batch/transform directions" + size, "Imath"), count,
           [=, matrix = make(AFFINE)]
           {
               for (std::size_t i = 0; i < count; ++i)
                   matrix.multDirMatrix((*points)[i], (*out)[i]);
               benchmark::DoNotOptimize(out->data());
           });
    AddRun(Name<T>("batch/grow a box" + size, "Imath"), count,
           [=]
           {
               Imath::Box<Vector> box;
               for (Vector const& point : *points)
                   box.extendBy(point);
               benchmark::DoNotOptimize(box);
           });
}

template <typename T>
void AddGeometry(std::size_t count)
{
    auto const in = std::make_shared<std::vector<T> const>(BatchCoordinates<T>(count));
    AddEigen<T>(in, SizeName(count));
    AddImath<T>(in, SizeName(count));
    if (count == LARGE_COUNT)
        AddMemory<T>(in, SizeName(count));
}

void AddNoiseRows()
{
    auto const coordinates = std::make_shared<std::vector<double> const>(NoisePoints());
    struct Point
    {
        float x, y, z;
    };
    auto const points =
        Build(NoisePoints(), 3,
              [](double const* n) {
                  return Point{static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])};
              });
    auto const row = [](std::string const& operation, std::string const& library)
    { return Name<float>("batch/" + operation, library); };
    AddMap(
        row("Noise1", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x); }, points);
    AddMap(
        row("Noise2", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x, p.y); }, points);
    AddMap(
        row("Noise3", "hand-written"), [](Point const& p) { return ReferenceNoise(p.x, p.y, p.z); }, points);
    AddMap(
        row("Noise3", "stb_perlin"), [](Point const& p) { return stb_perlin_noise3(p.x, p.y, p.z, 0, 0, 0); }, points);
    for (int const octaves : {4, 8})
    {
        std::string const operation = "Turbulence3 " + std::to_string(octaves) + " octaves";
        AddMap(
            row(operation, "hand-written"), [=](Point const& p) { return ReferenceTurbulence(p.x, p.y, p.z, octaves); },
            points);
        AddMap(
            row(operation, "stb_perlin"),
            [=](Point const& p) { return stb_perlin_fbm_noise3(p.x, p.y, p.z, 2.0F, 0.5F, octaves); }, points);
    }

    auto const out = std::make_shared<std::vector<float>>(COUNT);
    auto const pcg = std::make_shared<pcg32>(1U);
    AddRun(row("generator floats", "pcg-cpp"), COUNT,
           [=]
           {
               for (float& result : *out)
                   result = static_cast<float>((*pcg)() >> 8) * 0x1p-24F;
               benchmark::DoNotOptimize(out->data());
           });
    auto const twister = std::make_shared<std::mt19937>(1U);
    AddRun(row("generator floats", "std::mt19937"), COUNT,
           [=]
           {
               for (float& result : *out)
                   result = static_cast<float>((*twister)() >> 8) * 0x1p-24F;
               benchmark::DoNotOptimize(out->data());
           });
}

} // namespace

void AddBatch()
{
    for (std::size_t const count : {COUNT, LARGE_COUNT})
    {
        AddGeometry<float>(count);
        AddGeometry<double>(count);
    }
    AddNoiseRows();
}

} // namespace bench::peers
