#pragma once

/// @file
/// The rows on directions. A library is a structure of a `NAME`, types `Vector` and `Axes` (of two or three vectors),
/// `makeVector`, `append`, and what its users write for each operation; what it has no operation for, it leaves out.
/// (An angle by the arc cosine, which loses half of the digits near 0 and pi, is another operation.)

#include <cstddef>
#include <string>
#include <vector>

#include "MatrixData.h"
#include "OperationRow.h"

namespace bench
{

/// From glass into air: much is reflected totally.
inline constexpr double REFRACTION = 1.5;

/// Unit vectors, and others that do not point to their side: six numbers each.
inline std::vector<double> FacingVectors()
{
    std::vector<double> const vectors = UnitVectors(316, COUNT);
    std::vector<double> const normals = UnitVectors(317, COUNT);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < vectors.size(); i += 3)
    {
        double dot = 0;
        for (std::size_t axis = 0; axis < 3; ++axis)
            dot += vectors[i + axis] * normals[i + axis];
        for (std::size_t axis = 0; axis < 3; ++axis)
            numbers.push_back(vectors[i + axis]);
        for (std::size_t axis = 0; axis < 3; ++axis)
            numbers.push_back(dot > 0 ? -normals[i + axis] : normals[i + axis]);
    }
    return numbers;
}

template <typename T, typename Library>
void AddDirectionRows()
{
    using Vector = typename Library::Vector;
    auto const a = Build(Vectors(311, COUNT), 3, Library::makeVector);
    auto const b = Build(Vectors(312, COUNT), 3, Library::makeVector);
    auto const c = Build(Vectors(313, COUNT), 3, Library::makeVector);
    auto const units = Build(UnitVectors(314, COUNT), 3, Library::makeVector);
    auto const normals = Build(UnitVectors(315, COUNT), 3, Library::makeVector);
    auto const row = [](char const* operation) { return std::string("direction/") + operation; };

    if constexpr (requires { Library::distance(a[0], b[0]); })
        AddOperation<T, Library>(
            row("distance"), [](Vector const& v, Vector const& w) { return Library::distance(v, w); }, a, b);
    if constexpr (requires { Library::angle(a[0], b[0]); })
        AddOperation<T, Library>(
            row("angle"), [](Vector const& v, Vector const& w) { return Library::angle(v, w); }, units, normals);
    if constexpr (requires { Library::reflect(a[0], b[0]); })
        AddOperation<T, Library>(
            row("reflect"), [](Vector const& v, Vector const& n) -> Vector { return Library::reflect(v, n); }, units,
            normals);
    if constexpr (requires { Library::refract(a[0], b[0]); })
        AddOperation<T, Library>(
            row("refract"), [](Vector const& v, Vector const& n) -> Vector { return Library::refract(v, n); },
            // The normal on the side that the light comes from, as some libraries want it.
            Build(FacingVectors(), 6, [](double const* n) { return Library::makeVector(n); }),
            Build(FacingVectors(), 6, [](double const* n) { return Library::makeVector(n + 3); }));
    if constexpr (requires { Library::faceForward(a[0], b[0]); })
        AddOperation<T, Library>(
            row("face forward"), [](Vector const& v, Vector const& w) -> Vector { return Library::faceForward(v, w); },
            a, b);
    if constexpr (requires { Library::project(a[0], b[0]); })
        AddOperation<T, Library>(
            row("project"), [](Vector const& v, Vector const& w) -> Vector { return Library::project(v, w); }, a, b);
    if constexpr (requires { Library::reject(a[0], b[0]); })
        AddOperation<T, Library>(
            row("reject"), [](Vector const& v, Vector const& w) -> Vector { return Library::reject(v, w); }, a, b);
    if constexpr (requires { Library::orthonormal(a[0], b[0], c[0]); })
        AddOperation<T, Library>(
            row("orthonormalise three"),
            [](Vector const& u, Vector const& v, Vector const& w) { return Library::orthonormal(u, v, w); }, a, b, c);
    if constexpr (requires { Library::basis(a[0]); })
        AddOperation<T, Library>(
            row("basis"), [](Vector const& n) { return Library::basis(n); }, normals);
}

} // namespace bench
