#pragma once

/// @file
/// The rows on vectors component by component. A library is a structure of a `NAME`, a type `Vector`, `makeVector`,
/// `append`, and what its users write for each operation; what it has no operation for, it leaves out.

#include <string>
#include <vector>

#include "MatrixData.h"
#include "OperationRow.h"

namespace bench
{

/// Both operands of every row; a third one is a number from 0 to 1.
template <typename T, typename Library>
void AddComponentwiseRows()
{
    using Vector = typename Library::Vector;
    auto const a = Build(Vectors(301, COUNT), 3, Library::makeVector);
    auto const b = Build(Vectors(302, COUNT), 3, Library::makeVector);
    auto const share = Build(Numbers(303, COUNT, 0, 1), 1, [](double const* n) { return static_cast<T>(*n); });
    auto const row = [](char const* operation) { return std::string("componentwise/") + operation; };

    if constexpr (requires { Library::min(a[0], b[0]); })
        AddOperation<T, Library>(
            row("min"), [](Vector const& v, Vector const& w) -> Vector { return Library::min(v, w); }, a, b);
    if constexpr (requires { Library::abs(a[0]); })
        AddOperation<T, Library>(
            row("abs"), [](Vector const& v) -> Vector { return Library::abs(v); }, a);
    if constexpr (requires { Library::clamp(a[0]); })
        AddOperation<T, Library>(
            row("clamp"), [](Vector const& v) -> Vector { return Library::clamp(v); }, a);
    if constexpr (requires { Library::lerp(a[0], b[0], share[0]); })
        AddOperation<T, Library>(
            row("lerp"), [](Vector const& v, Vector const& w, T t) -> Vector { return Library::lerp(v, w, t); }, a, b,
            share);
    if constexpr (requires { Library::floor(a[0]); })
        AddOperation<T, Library>(
            row("floor"), [](Vector const& v) -> Vector { return Library::floor(v); }, a);
    if constexpr (requires { Library::ceil(a[0]); })
        AddOperation<T, Library>(
            row("ceil"), [](Vector const& v) -> Vector { return Library::ceil(v); }, a);
    if constexpr (requires { Library::minComponent(a[0]); })
        AddOperation<T, Library>(
            row("smallest component"), [](Vector const& v) { return Library::minComponent(v); }, a);
    if constexpr (requires { Library::maxAxis(a[0]); })
        AddOperation<T, Library>(
            row("largest axis"), [](Vector const& v) { return Library::maxAxis(v); }, a);
}

} // namespace bench
