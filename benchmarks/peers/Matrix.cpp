#include <stdexcept>

#include <Eigen/Dense>
#include <Imath/ImathFrustum.h>
#include <Imath/ImathMatrix.h>
#include <LinearMath/btTransform.h>
#include <cglm/cglm.h>

#include "MatrixData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

namespace eigen
{

constexpr char const* LIBRARY = "Eigen";

template <typename T>
using Matrix = Eigen::Matrix<T, 4, 4>;
template <typename T>
using Vector = Eigen::Matrix<T, 3, 1>;
template <typename T>
using Isometry = Eigen::Transform<T, 3, Eigen::Isometry>;
template <typename T>
using Projective = Eigen::Transform<T, 3, Eigen::Projective>;

template <typename T>
std::vector<Matrix<T>> Make(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* m)
                 {
                     Matrix<T> matrix;
                     for (int i = 0; i < 16; ++i)
                         matrix(i / 4, i % 4) = static_cast<T>(m[i]);
                     return matrix;
                 });
}

template <typename T>
std::vector<Projective<T>> MakeProjective(std::vector<double> const& numbers)
{
    std::vector<Projective<T>> transforms;
    for (Matrix<T> const& matrix : Make<T>(numbers))
        transforms.emplace_back(matrix);
    return transforms;
}

template <typename T>
std::vector<Isometry<T>> MakeIsometries(std::vector<double> const& numbers)
{
    std::vector<Isometry<T>> isometries;
    for (Matrix<T> const& matrix : Make<T>(numbers))
        isometries.emplace_back(matrix);
    return isometries;
}

template <typename T>
void Add()
{
    auto const product = [](Matrix<T> const& a, Matrix<T> const& b) -> Matrix<T> { return a * b; };
    auto const general = Make<T>(GeneralMatrices(1));
    auto const identities = Make<T>(IdentityMatrices());
    auto const diagonals = Make<T>(DiagonalMatrices(3));
    auto const rotations = MakeIsometries<T>(RotationMatrices(4));

    AddMap(Name<T>("matrix/product general", LIBRARY), product, general, Make<T>(GeneralMatrices(2)));
    AddMap(Name<T>("matrix/product identity left", LIBRARY), product, identities, general);
    AddMap(Name<T>("matrix/product identity right", LIBRARY), product, general, identities);
    AddMap(
        Name<T>("matrix/product diagonal left", LIBRARY),
        [](Matrix<T> const& d, Matrix<T> const& m) -> Matrix<T> { return d.diagonal().asDiagonal() * m; }, diagonals,
        general);
    AddMap(
        Name<T>("matrix/product diagonal right", LIBRARY),
        [](Matrix<T> const& m, Matrix<T> const& d) -> Matrix<T> { return m * d.diagonal().asDiagonal(); }, general,
        diagonals);
    AddMap(
        Name<T>("matrix/product rotation left", LIBRARY),
        [](Isometry<T> const& r, Matrix<T> const& m) -> Matrix<T> { return r * m; }, rotations, general);
    AddMap(
        Name<T>("matrix/product rotation right", LIBRARY),
        [](Matrix<T> const& m, Isometry<T> const& r) -> Matrix<T> { return m * r.matrix(); }, general, rotations);
    AddMap(
        Name<T>("matrix/product rotations", LIBRARY),
        [](Isometry<T> const& a, Isometry<T> const& b) -> Isometry<T> { return a * b; }, rotations,
        MakeIsometries<T>(RotationMatrices(5)));
    AddMap(
        Name<T>("matrix/product by a translation", LIBRARY),
        [](Projective<T> const& m, Vector<T> const& offset) -> Projective<T>
        { return m * Eigen::Translation<T, 3>(offset); },
        MakeProjective<T>(GeneralMatrices(1)),
        Build(Offsets(), 3, [](double const* v) { return Vector<T>(T(v[0]), T(v[1]), T(v[2])); }));
    AddUpdate(
        Name<T>("matrix/product in place", LIBRARY), [](Matrix<T>& a, Matrix<T> const& b) { a *= b; }, general,
        Make<T>(ReflectionMatrices(6)));

    AddMap(
        Name<T>("matrix/inverse general", LIBRARY), [](Matrix<T> const& m) -> Matrix<T> { return m.inverse(); },
        general);
    AddMap(
        Name<T>("matrix/inverse rotation", LIBRARY), [](Isometry<T> const& m) -> Isometry<T> { return m.inverse(); },
        rotations);
    AddMap(
        Name<T>("matrix/inverse diagonal", LIBRARY),
        [](Matrix<T> const& m) -> Matrix<T> { return m.diagonal().cwiseInverse().asDiagonal(); }, diagonals);
    AddMap(
        Name<T>("matrix/transpose", LIBRARY), [](Matrix<T> const& m) -> Matrix<T> { return m.transpose(); }, general);
    AddUpdate(
        Name<T>("matrix/transpose in place", LIBRARY), [](Matrix<T>& m) { m.transposeInPlace(); }, general);
    AddMap(
        Name<T>("matrix/determinant", LIBRARY), [](Matrix<T> const& m) { return m.determinant(); }, general);
    auto const equal = [](Matrix<T> const& a, Matrix<T> const& b) { return ((a - b).array().abs() <= T(1e-6)).all(); };
    AddMap(Name<T>("matrix/== of equal", LIBRARY), equal, general, general);
    AddMap(Name<T>("matrix/== first differs", LIBRARY), equal, general, Make<T>(WithOtherFirst(GeneralMatrices(1))));

    AddMap(
        Name<T>("matrix/of sixteen values", LIBRARY),
        [](SixteenValues<T> const& v)
        {
            auto const& m = v.m;
            Matrix<T> result;
            result << m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12], m[13], m[14],
                m[15];
            return result;
        },
        ManyValues<T>());
    AddMap(
        Name<T>("matrix/RotateAxis", LIBRARY),
        [](RotationArgument<T> const& r)
        {
            Vector<T> const point(r.point);
            Eigen::AngleAxis<T> const rotation(r.angle, Vector<T>(r.direction).normalized());
            Isometry<T> result;
            result.linear() = rotation.toRotationMatrix();
            result.translation() = point - result.linear() * point;
            result.makeAffine();
            return result;
        },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<T>(r); }));
    AddMap(
        Name<T>("matrix/PerspectiveProjection", LIBRARY),
        [](ProjectionArgument<T> const& p)
        {
            T const width = p.right - p.left, height = p.top - p.bottom, depth = p.farPlane - p.nearPlane;
            Matrix<T> result = Matrix<T>::Zero();
            result(0, 0) = 2 * p.nearPlane / width;
            result(0, 2) = (p.right + p.left) / width;
            result(1, 1) = 2 * p.nearPlane / height;
            result(1, 2) = (p.top + p.bottom) / height;
            result(2, 2) = -(p.farPlane + p.nearPlane) / depth;
            result(2, 3) = -2 * p.farPlane * p.nearPlane / depth;
            result(3, 2) = -1;
            return result;
        },
        Build(ProjectionArguments(), 6, [](double const* p) { return ProjectionArgument<T>(p); }));
}

} // namespace eigen

/// Imath multiplies rows from the left: every matrix is the transpose of ours, and the operands change sides.
namespace imath
{

constexpr char const* LIBRARY = "Imath";

template <typename T>
using Matrix = Imath::Matrix44<T>;
template <typename T>
using Vector = Imath::Vec3<T>;

template <typename T>
std::vector<Matrix<T>> Make(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* m)
                 {
                     Matrix<T> matrix;
                     for (int i = 0; i < 16; ++i)
                         matrix[i % 4][i / 4] = static_cast<T>(m[i]);
                     return matrix;
                 });
}

template <typename T>
void Add()
{
    auto const product = [](Matrix<T> const& a, Matrix<T> const& b) { return b * a; };
    auto const general = Make<T>(GeneralMatrices(1));
    auto const identities = Make<T>(IdentityMatrices());
    auto const diagonals = Make<T>(DiagonalMatrices(3));
    auto const rotations = Make<T>(RotationMatrices(4));

    AddMap(Name<T>("matrix/product general", LIBRARY), product, general, Make<T>(GeneralMatrices(2)));
    AddMap(Name<T>("matrix/product identity left", LIBRARY), product, identities, general);
    AddMap(Name<T>("matrix/product identity right", LIBRARY), product, general, identities);
    AddMap(Name<T>("matrix/product diagonal left", LIBRARY), product, diagonals, general);
    AddMap(Name<T>("matrix/product diagonal right", LIBRARY), product, general, diagonals);
    AddMap(Name<T>("matrix/product rotation left", LIBRARY), product, rotations, general);
    AddMap(Name<T>("matrix/product rotation right", LIBRARY), product, general, rotations);
    AddMap(Name<T>("matrix/product rotations", LIBRARY), product, rotations, Make<T>(RotationMatrices(5)));
    AddMap(
        Name<T>("matrix/product by a translation", LIBRARY),
        [](Matrix<T> m, Vector<T> const& offset)
        {
            m.translate(offset);
            return m;
        },
        general, Build(Offsets(), 3, [](double const* v) { return Vector<T>(T(v[0]), T(v[1]), T(v[2])); }));
    AddUpdate(
        Name<T>("matrix/product in place", LIBRARY), [](Matrix<T>& a, Matrix<T> const& b) { a = b * a; }, general,
        Make<T>(ReflectionMatrices(6)));

    AddMap(
        Name<T>("matrix/inverse general", LIBRARY), [](Matrix<T> const& m) { return m.inverse(); }, general);
    AddMap(
        Name<T>("matrix/inverse rotation", LIBRARY), [](Matrix<T> const& m) { return m.transposed(); }, rotations);
    AddMap(
        Name<T>("matrix/inverse diagonal", LIBRARY),
        [](Matrix<T> const& m)
        { return Matrix<T>(1 / m[0][0], 0, 0, 0, 0, 1 / m[1][1], 0, 0, 0, 0, 1 / m[2][2], 0, 0, 0, 0, 1 / m[3][3]); },
        diagonals);
    AddMap(
        Name<T>("matrix/transpose", LIBRARY), [](Matrix<T> const& m) { return m.transposed(); }, general);
    AddUpdate(
        Name<T>("matrix/transpose in place", LIBRARY), [](Matrix<T>& m) { m.transpose(); }, general);
    AddMap(
        Name<T>("matrix/determinant", LIBRARY), [](Matrix<T> const& m) { return m.determinant(); }, general);
    auto const equal = [](Matrix<T> const& a, Matrix<T> const& b) { return a.equalWithAbsError(b, T(1e-6)); };
    AddMap(Name<T>("matrix/== of equal", LIBRARY), equal, general, general);
    AddMap(Name<T>("matrix/== first differs", LIBRARY), equal, general, Make<T>(WithOtherFirst(GeneralMatrices(1))));

    AddMap(
        Name<T>("matrix/of sixteen values", LIBRARY),
        [](SixteenValues<T> const& v)
        {
            auto const& m = v.m;
            return Matrix<T>(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12], m[13],
                             m[14], m[15]);
        },
        ManyValues<T>());
    AddMap(
        Name<T>("matrix/RotateAxis", LIBRARY),
        [](RotationArgument<T> const& r)
        {
            Vector<T> const point(r.point[0], r.point[1], r.point[2]);
            Matrix<T> result;
            result.setAxisAngle(Vector<T>(r.direction[0], r.direction[1], r.direction[2]), r.angle);
            Vector<T> turned;
            result.multDirMatrix(point, turned);
            for (int i = 0; i < 3; ++i)
                result[3][i] = point[i] - turned[i];
            return result;
        },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<T>(r); }));
    AddMap(
        Name<T>("matrix/PerspectiveProjection", LIBRARY),
        [](ProjectionArgument<T> const& p)
        { return Imath::Frustum<T>(p.nearPlane, p.farPlane, p.left, p.right, p.top, p.bottom).projectionMatrix(); },
        Build(ProjectionArguments(), 6, [](double const* p) { return ProjectionArgument<T>(p); }));
}

} // namespace imath

namespace cglm
{

constexpr char const* LIBRARY = "cglm";

struct Matrix
{
    mat4 m;

    /// cglm's functions take their operands as arrays that are not constant.
    vec4* Get() const { return const_cast<vec4*>(m); }
};

struct Offset
{
    vec3 v;
};

std::vector<Matrix> Make(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* m)
                 {
                     Matrix matrix;
                     for (int i = 0; i < 16; ++i)
                         matrix.m[i % 4][i / 4] = static_cast<float>(m[i]);
                     return matrix;
                 });
}

void Add()
{
    auto const product = [](Matrix const& a, Matrix const& b)
    {
        Matrix result;
        glm_mat4_mul(a.Get(), b.Get(), result.m);
        return result;
    };
    auto const general = Make(GeneralMatrices(1));
    auto const identities = Make(IdentityMatrices());
    auto const diagonals = Make(DiagonalMatrices(3));
    auto const rotations = Make(RotationMatrices(4));

    AddMap(Name<float>("matrix/product general", LIBRARY), product, general, Make(GeneralMatrices(2)));
    AddMap(Name<float>("matrix/product identity left", LIBRARY), product, identities, general);
    AddMap(Name<float>("matrix/product identity right", LIBRARY), product, general, identities);
    AddMap(Name<float>("matrix/product diagonal left", LIBRARY), product, diagonals, general);
    AddMap(
        Name<float>("matrix/product diagonal right", LIBRARY),
        [](Matrix const& m, Matrix const& d)
        {
            Matrix result;
            for (int column = 0; column < 4; ++column)
                glm_vec4_scale(m.Get()[column], d.m[column][column], result.m[column]);
            return result;
        },
        general, diagonals);
    AddMap(Name<float>("matrix/product rotation left", LIBRARY), product, rotations, general);
    AddMap(
        Name<float>("matrix/product rotation right", LIBRARY),
        [](Matrix const& a, Matrix const& b)
        {
            Matrix result;
            glm_mul_rot(a.Get(), b.Get(), result.m);
            return result;
        },
        general, rotations);
    AddMap(
        Name<float>("matrix/product rotations", LIBRARY),
        [](Matrix const& a, Matrix const& b)
        {
            Matrix result;
            glm_mul_rot(a.Get(), b.Get(), result.m);
            return result;
        },
        rotations, Make(RotationMatrices(5)));
    AddMap(
        Name<float>("matrix/product by a translation", LIBRARY),
        [](Matrix const& m, Offset const& offset)
        {
            Matrix result;
            glm_translate_to(m.Get(), const_cast<float*>(offset.v), result.m);
            return result;
        },
        general,
        Build(Offsets(), 3,
              [](double const* v) {
                  return Offset{{float(v[0]), float(v[1]), float(v[2])}};
              }));
    AddUpdate(
        Name<float>("matrix/product in place", LIBRARY),
        [](Matrix& a, Matrix const& b) { glm_mat4_mul(a.m, b.Get(), a.m); }, general, Make(ReflectionMatrices(6)));

    AddMap(
        Name<float>("matrix/inverse general", LIBRARY),
        [](Matrix const& m)
        {
            Matrix result;
            glm_mat4_inv(m.Get(), result.m);
            return result;
        },
        general);
    AddMap(
        Name<float>("matrix/inverse rotation", LIBRARY),
        [](Matrix const& m)
        {
            Matrix result;
            glm_mat4_transpose_to(m.Get(), result.m);
            return result;
        },
        rotations);
    AddMap(
        Name<float>("matrix/inverse diagonal", LIBRARY),
        [](Matrix const& m)
        {
            Matrix result = {GLM_MAT4_ZERO_INIT};
            for (int i = 0; i < 4; ++i)
                result.m[i][i] = 1 / m.m[i][i];
            return result;
        },
        diagonals);
    AddMap(
        Name<float>("matrix/transpose", LIBRARY),
        [](Matrix const& m)
        {
            Matrix result;
            glm_mat4_transpose_to(m.Get(), result.m);
            return result;
        },
        general);
    AddUpdate(
        Name<float>("matrix/transpose in place", LIBRARY), [](Matrix& m) { glm_mat4_transpose(m.m); }, general);
    AddMap(
        Name<float>("matrix/determinant", LIBRARY), [](Matrix const& m) { return glm_mat4_det(m.Get()); }, general);
    auto const equal = [](Matrix const& a, Matrix const& b)
    {
        for (int column = 0; column < 4; ++column)
            if (!glm_vec4_eqv_eps(a.Get()[column], b.Get()[column]))
                return false;
        return true;
    };
    AddMap(Name<float>("matrix/== of equal", LIBRARY), equal, general, general);
    AddMap(Name<float>("matrix/== first differs", LIBRARY), equal, general, Make(WithOtherFirst(GeneralMatrices(1))));

    AddMap(
        Name<float>("matrix/of sixteen values", LIBRARY),
        [](SixteenValues<float> const& v)
        {
            auto const& m = v.m;
            return Matrix{{{m[0], m[1], m[2], m[3]},
                           {m[4], m[5], m[6], m[7]},
                           {m[8], m[9], m[10], m[11]},
                           {m[12], m[13], m[14], m[15]}}};
        },
        ManyValues<float>());
    AddMap(
        Name<float>("matrix/RotateAxis", LIBRARY),
        [](RotationArgument<float> const& r)
        {
            Matrix result;
            glm_rotate_atm(result.m, const_cast<float*>(r.point), r.angle, const_cast<float*>(r.direction));
            return result;
        },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<float>(r); }));
    AddMap(
        Name<float>("matrix/PerspectiveProjection", LIBRARY),
        [](ProjectionArgument<float> const& p)
        {
            Matrix result;
            glm_frustum_rh_no(p.left, p.right, p.bottom, p.top, p.nearPlane, p.farPlane, result.m);
            return result;
        },
        Build(ProjectionArguments(), 6, [](double const* p) { return ProjectionArgument<float>(p); }));
}

} // namespace cglm

/// Bullet has no 4x4 matrix: a rotation and an offset, in single precision.
namespace bullet
{

constexpr char const* LIBRARY = "Bullet";

std::vector<btTransform> Make(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* numbersOfOne)
                 {
                     btScalar m[16];
                     for (int i = 0; i < 16; ++i)
                         m[i] = static_cast<btScalar>(numbersOfOne[i]);
                     return btTransform(btMatrix3x3(m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10]),
                                        btVector3(m[3], m[7], m[11]));
                 });
}

void Add()
{
    auto const rotations = Make(RotationMatrices(4));
    AddMap(
        Name<float>("matrix/product rotations", LIBRARY),
        [](btTransform const& a, btTransform const& b) { return a * b; }, rotations, Make(RotationMatrices(5)));
    AddMap(
        Name<float>("matrix/inverse rotation", LIBRARY), [](btTransform const& m) { return m.inverse(); }, rotations);
    AddMap(
        Name<float>("matrix/RotateAxis", LIBRARY),
        [](RotationArgument<float> const& r)
        {
            btVector3 const point(r.point[0], r.point[1], r.point[2]);
            btVector3 const direction(r.direction[0], r.direction[1], r.direction[2]);
            btMatrix3x3 const rotation(btQuaternion(direction, r.angle));
            return btTransform(rotation, point - rotation * point);
        },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<float>(r); }));
}

} // namespace bullet

} // namespace

void AddMatrix()
{
    eigen::Add<float>();
    eigen::Add<double>();
    imath::Add<float>();
    imath::Add<double>();
    cglm::Add();
    bullet::Add();
}

} // namespace bench::peers
