#include <stdexcept>

#include <bv/maths/tMatrix4.h>

#include "MatrixData.h"
#include "Topics.h"

namespace bench
{

namespace
{

using bv::maths::tMatrix4;
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

/// A row about rotations measures nothing of the kind when the matrices are not recognised as such.
template <typename T>
std::vector<tMatrix4<T>> MakeRotations(std::uint32_t seed)
{
    auto rotations = Make<T>(RotationMatrices(seed));
    for (auto const& rotation : rotations)
        if (!rotation.IsOrthonormal())
            throw std::logic_error("a rotation is not recognised");
    return rotations;
}

template <typename T>
std::vector<tMatrix4<T>> MakeDiagonals(std::uint32_t seed)
{
    auto diagonals = Make<T>(DiagonalMatrices(seed));
    for (auto const& diagonal : diagonals)
        if (!diagonal.IsDiagonal() || diagonal.IsIdentity())
            throw std::logic_error("a diagonal matrix is not recognised");
    return diagonals;
}

template <typename T>
void AddProducts()
{
    using Matrix = tMatrix4<T>;
    auto const product = [](Matrix const& a, Matrix const& b) { return a * b; };
    auto const general = Make<T>(GeneralMatrices(1));
    auto const identities = Make<T>(IdentityMatrices());
    auto const diagonals = MakeDiagonals<T>(3);
    auto const rotations = MakeRotations<T>(4);

    AddMap(Name<T>("matrix/product general", LIBRARY), product, general, Make<T>(GeneralMatrices(2)));
    AddMap(Name<T>("matrix/product identity left", LIBRARY), product, identities, general);
    AddMap(Name<T>("matrix/product identity right", LIBRARY), product, general, identities);
    AddMap(Name<T>("matrix/product diagonal left", LIBRARY), product, diagonals, general);
    AddMap(Name<T>("matrix/product diagonal right", LIBRARY), product, general, diagonals);
    AddMap(Name<T>("matrix/product rotation left", LIBRARY), product, rotations, general);
    AddMap(Name<T>("matrix/product rotation right", LIBRARY), product, general, rotations);
    AddMap(Name<T>("matrix/product rotations", LIBRARY), product, rotations, MakeRotations<T>(5));
    AddMap(
        Name<T>("matrix/product by a translation", LIBRARY),
        [](Matrix const& m, tVector3<T> const& offset) { return m * Matrix::Translate(offset); }, general,
        Build(Offsets(), 3, [](double const* v) { return tVector3<T>(T(v[0]), T(v[1]), T(v[2])); }));
    AddUpdate(
        Name<T>("matrix/product in place", LIBRARY), [](Matrix& a, Matrix const& b) { a *= b; }, general,
        Make<T>(ReflectionMatrices(6)));
}

template <typename T>
void AddQueries()
{
    using Matrix = tMatrix4<T>;
    auto const general = Make<T>(GeneralMatrices(1));
    auto const inverse = [](Matrix const& m) { return m.Inverted(); };
    auto const equal = [](Matrix const& a, Matrix const& b) { return a == b; };

    AddMap(Name<T>("matrix/inverse general", LIBRARY), inverse, general);
    AddMap(Name<T>("matrix/inverse rotation", LIBRARY), inverse, MakeRotations<T>(4));
    AddMap(Name<T>("matrix/inverse diagonal", LIBRARY), inverse, MakeDiagonals<T>(3));
    AddMap(
        Name<T>("matrix/transpose", LIBRARY), [](Matrix const& m) { return m.Transposed(); }, general);
    AddUpdate(
        Name<T>("matrix/transpose in place", LIBRARY), [](Matrix& m) { m.Transpose(); }, general);
    AddMap(
        Name<T>("matrix/determinant", LIBRARY), [](Matrix const& m) { return m.Determinant(); }, general);
    AddMap(Name<T>("matrix/== of equal", LIBRARY), equal, general, general);
    AddMap(Name<T>("matrix/== first differs", LIBRARY), equal, general, Make<T>(WithOtherFirst(GeneralMatrices(1))));
}

template <typename T>
void AddBuilders()
{
    AddMap(
        Name<T>("matrix/of sixteen values", LIBRARY),
        [](SixteenValues<T> const& v)
        {
            auto const& m = v.m;
            return tMatrix4<T>(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12], m[13],
                               m[14], m[15]);
        },
        ManyValues<T>());
    AddMap(
        Name<T>("matrix/RotateAxis", LIBRARY),
        [](RotationArgument<T> const& r)
        { return tMatrix4<T>::RotateAxis(tVector3<T>(r.point), tVector3<T>(r.direction), r.angle); },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<T>(r); }));
    AddMap(
        Name<T>("matrix/PerspectiveProjection", LIBRARY),
        [](ProjectionArgument<T> const& p)
        { return tMatrix4<T>::PerspectiveProjection(p.left, p.right, p.bottom, p.top, p.nearPlane, p.farPlane); },
        Build(ProjectionArguments(), 6, [](double const* p) { return ProjectionArgument<T>(p); }));
}

template <typename T>
void AddAll()
{
    AddProducts<T>();
    AddQueries<T>();
    AddBuilders<T>();
}

} // namespace

void AddMatrix()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench
