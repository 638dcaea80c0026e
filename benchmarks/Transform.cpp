#include <bv/maths/tMatrix4.h>
#include <bv/maths/tPreparedTransform.h>
#include <bv/maths/tVector3.h>

#include "MatrixData.h"
#include "Topics.h"

namespace bench
{

namespace
{

using bv::maths::tMatrix4;
using bv::maths::tPreparedTransform;
using bv::maths::tVector3;

constexpr char const* LIBRARY = "BvBaseUtils";

template <typename T>
std::vector<tMatrix4<T>> Make(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* m)
                 {
                     T elements[16];
                     for (std::size_t i = 0; i < 16; ++i)
                         elements[i] = static_cast<T>(m[i]);
                     return tMatrix4<T>(elements);
                 });
}

template <typename T>
std::vector<tVector3<T>> MakeVectors(std::vector<double> const& numbers)
{
    return Build(numbers, 3, [](double const* v) { return tVector3<T>(T(v[0]), T(v[1]), T(v[2])); });
}

template <typename T>
void AddTransforms()
{
    using Matrix = tMatrix4<T>;
    using Vector = tVector3<T>;
    auto const general = Make<T>(GeneralMatrices(1));
    auto const affine = Make<T>(AffineMatrices(1));
    auto const rotations = Make<T>(RotationMatrices(4));
    auto const points = MakeVectors<T>(Vectors(11, COUNT));
    auto const units = MakeVectors<T>(UnitVectors(12, COUNT));
    auto const fewPoints = MakeVectors<T>(Vectors(11, MATRIX_COUNT));
    auto const fewUnits = MakeVectors<T>(UnitVectors(12, MATRIX_COUNT));

    auto const point = [](Matrix const& m, Vector const& v) { return v.Transformed(m); };
    auto const direction = [](Matrix const& m, Vector const& v) { return v.TransformedAsVector(m); };
    auto const oneMatrix = [](Matrix const& m, auto transform)
    { return [=](Vector const& v) { return transform(m, v); }; };

    AddMap(Name<T>("transform/point with division, one matrix", LIBRARY), oneMatrix(general[0], point), points);
    AddMap(Name<T>("transform/point with division, many matrices", LIBRARY), point, general, fewPoints);
    AddMap(Name<T>("transform/point affine, one matrix", LIBRARY), oneMatrix(affine[0], point), points);
    AddMap(Name<T>("transform/point affine, many matrices", LIBRARY), point, affine, fewPoints);
    AddMap(Name<T>("transform/direction, one matrix", LIBRARY), oneMatrix(general[0], direction), points);
    AddMap(Name<T>("transform/direction, many matrices", LIBRARY), direction, general, fewPoints);
    AddMap(Name<T>("transform/direction rotated, one matrix", LIBRARY), oneMatrix(rotations[0], direction), points);
    AddMap(Name<T>("transform/direction rotated, many matrices", LIBRARY), direction, rotations, fewPoints);
    AddMap(Name<T>("transform/unit direction rotated, one matrix", LIBRARY), oneMatrix(rotations[0], direction), units);
    AddMap(Name<T>("transform/unit direction rotated, many matrices", LIBRARY), direction, rotations, fewUnits);
}

template <typename T>
void AddPreparedTransforms()
{
    using Prepared = tPreparedTransform<T>;
    using Vector = tVector3<T>;
    auto const points = MakeVectors<T>(Vectors(11, COUNT));
    auto const units = MakeVectors<T>(UnitVectors(12, COUNT));
    Prepared const general(Make<T>(GeneralMatrices(1))[0]);
    Prepared const affine(Make<T>(AffineMatrices(1))[0]);
    Prepared const rotation(Make<T>(RotationMatrices(4))[0]);
    auto const point = [](Prepared const& map, Vector const& v) { return map(v); };
    auto const direction = [](Prepared const& map, Vector const& v) { return map.Direction(v); };

    AddMapBy(Name<T>("transform/point with division, one matrix, prepared", LIBRARY), general, point, points);
    AddMapBy(Name<T>("transform/point affine, one matrix, prepared", LIBRARY), affine, point, points);
    AddMapBy(Name<T>("transform/direction, one matrix, prepared", LIBRARY), affine, direction, points);
    AddMapBy(Name<T>("transform/direction rotated, one matrix, prepared", LIBRARY), rotation, direction, points);
    AddMapBy(Name<T>("transform/unit direction rotated, one matrix, prepared", LIBRARY), rotation, direction, units);
}

template <typename T>
void AddVectors()
{
    using Vector = tVector3<T>;
    auto const a = MakeVectors<T>(Vectors(13, COUNT));
    auto const b = MakeVectors<T>(Vectors(14, COUNT));

    AddMap(
        Name<T>("vector/dot", LIBRARY), [](Vector const& v, Vector const& w) { return v.Dot(w); }, a, b);
    AddMap(
        Name<T>("vector/cross", LIBRARY), [](Vector const& v, Vector const& w) { return v.Cross(w); }, a, b);
    AddMap(
        Name<T>("vector/normalise", LIBRARY), [](Vector const& v) { return v.Normalised(); }, a);
    AddMap(
        Name<T>("vector/index", LIBRARY), [](Vector const& v, unsigned int i) { return v[i]; }, a, Indices());
}

template <typename T>
void AddAll()
{
    AddTransforms<T>();
    AddPreparedTransforms<T>();
    AddVectors<T>();
}

} // namespace

void AddTransform()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench
