#define GLM_ENABLE_EXPERIMENTAL

#include <cmath>
#include <optional>

#include <Eigen/Dense>
#include <Imath/ImathMatrix.h>
#include <glm/ext/matrix_clip_space.hpp>
#include <glm/ext/matrix_projection.hpp>
#include <glm/ext/matrix_transform.hpp>
#include <glm/glm.hpp>
#include <glm/gtc/matrix_inverse.hpp>
#include <glm/gtc/quaternion.hpp>

#include "Topics.h"
#include "ViewData.h"

namespace bench::peers
{

namespace
{

/// GLM as it comes. Its matrices are made of columns.
namespace glm_as_it_comes
{

constexpr char const* LIBRARY = "GLM";

template <typename T>
using Matrix = glm::mat<4, 4, T>;
template <typename T>
using Vector = glm::vec<3, T>;

template <typename T>
std::vector<Vector<T>> MakeVectors(std::vector<double> const& numbers, std::size_t size, std::size_t first)
{
    return Build(numbers, size,
                 [first](double const* v) { return Vector<T>(T(v[first]), T(v[first + 1]), T(v[first + 2])); });
}

constexpr auto WRITE_MATRIX = [](auto const& matrix, std::vector<double>& numbers)
{
    for (int i = 0; i < 16; ++i)
        numbers.push_back(matrix[i % 4][i / 4]);
};

template <typename T>
void Add()
{
    auto const cameras = CameraArguments();
    AddAgreeing(
        Name<T>("view/LookAt", LIBRARY),
        [](Vector<T> const& eye, Vector<T> const& target, Vector<T> const& up) { return glm::lookAt(eye, target, up); },
        WRITE_MATRIX, MakeVectors<T>(cameras, 9, 0), MakeVectors<T>(cameras, 9, 3), MakeVectors<T>(cameras, 9, 6));
    AddAgreeing(
        Name<T>("view/perspective from a field of view", LIBRARY),
        [](LensArgument<T> const& a) { return glm::perspectiveRH_ZO(a.angle, a.aspect, a.nearPlane, a.farPlane); },
        WRITE_MATRIX, ManyLenses<T>());
    AddAgreeing(
        Name<T>("view/perspective from a tangent", LIBRARY),
        [](LensArgument<T> const& a)
        {
            T const top = a.nearPlane * a.angle;
            T const right = top * a.aspect;
            return glm::frustumRH_ZO(-right, right, -top, top, a.nearPlane, a.farPlane);
        },
        WRITE_MATRIX, ManyLenses<T>());

    Matrix<T> const projection =
        glm::perspective(2 * std::atan(T{TANGENT}), T{WIDTH / HEIGHT}, T{NEAR_PLANE}, T{FAR_PLANE});
    glm::vec<4, T> const viewport(0, 0, T{WIDTH}, T{HEIGHT});
    AddAgreeingBy(
        Name<T>("view/pixel of a point", LIBRARY), projection,
        [viewport](Matrix<T> const& matrix, Vector<T> const& point)
        { return glm::projectNO(point, Matrix<T>(1), matrix, viewport); },
        [](Vector<T> const& v, std::vector<double>& numbers) // y from the bottom, and depth from 0 to 1
        {
            numbers.insert(numbers.end(), {v.x, HEIGHT - v.y, 2 * v.z - 1});
        },
        MakeVectors<T>(VisiblePoints(), 3, 0));

    auto const general = Build(GeneralMatrices(1), 16,
                               [](double const* m)
                               {
                                   Matrix<T> matrix;
                                   for (int i = 0; i < 16; ++i)
                                       matrix[i % 4][i / 4] = static_cast<T>(m[i]);
                                   return matrix;
                               });
    AddAgreeing(
        Name<T>("view/inverse if there is one", LIBRARY), [](Matrix<T> const& m) { return glm::inverse(m); },
        WRITE_MATRIX, general);
    AddAgreeing(
        Name<T>("view/normal matrix", LIBRARY), [](Matrix<T> const& m) { return glm::inverseTranspose(m); },
        WRITE_MATRIX, general);

    auto const parts = PartArguments();
    auto const rotations =
        Build(parts, 10, [](double const* q) { return glm::qua<T>(T(q[3]), T(q[0]), T(q[1]), T(q[2])); });
    AddAgreeing(
        Name<T>("view/Compose", LIBRARY),
        [](Vector<T> const& translation, glm::qua<T> const& rotation, Vector<T> const& scale)
        { return glm::scale(glm::translate(Matrix<T>(1), translation) * glm::mat4_cast(rotation), scale); },
        WRITE_MATRIX, MakeVectors<T>(parts, 10, 4), rotations, MakeVectors<T>(parts, 10, 7));
}

} // namespace glm_as_it_comes

namespace eigen
{

constexpr char const* LIBRARY = "Eigen";

template <typename T>
using Matrix = Eigen::Matrix<T, 4, 4>;
template <typename T>
using Vector = Eigen::Matrix<T, 3, 1>;
template <typename T>
using Affine = Eigen::Transform<T, 3, Eigen::Affine>;

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
std::vector<Vector<T>> MakeVectors(std::vector<double> const& numbers, std::size_t size, std::size_t first)
{
    return Build(numbers, size,
                 [first](double const* v) { return Vector<T>(T(v[first]), T(v[first + 1]), T(v[first + 2])); });
}

constexpr auto WRITE_MATRIX = [](auto const& matrix, std::vector<double>& numbers)
{
    for (int i = 0; i < 16; ++i)
        numbers.push_back(matrix(i / 4, i % 4));
};

template <typename T>
void Add()
{
    Matrix<T> projection = Matrix<T>::Zero();
    projection(0, 0) = T{HEIGHT / WIDTH / TANGENT};
    projection(1, 1) = T{1 / TANGENT};
    projection(2, 2) = T{-(FAR_PLANE + NEAR_PLANE) / (FAR_PLANE - NEAR_PLANE)};
    projection(2, 3) = T{-2 * FAR_PLANE * NEAR_PLANE / (FAR_PLANE - NEAR_PLANE)};
    projection(3, 2) = -1;
    AddAgreeingBy(
        Name<T>("view/pixel of a point", LIBRARY), projection,
        [](Matrix<T> const& matrix, Vector<T> const& point) -> Vector<T>
        {
            Eigen::Matrix<T, 4, 1> const clip = matrix * point.homogeneous();
            T const q = 1 / clip.w();
            return {(clip.x() * q + 1) * T{WIDTH / 2}, (1 - clip.y() * q) * T{HEIGHT / 2}, clip.z() * q};
        },
        [](Vector<T> const& v, std::vector<double>& numbers) {
            numbers.insert(numbers.end(), {v.x(), v.y(), v.z()});
        },
        MakeVectors<T>(VisiblePoints(), 3, 0));

    auto const general = Make<T>(GeneralMatrices(1));
    AddAgreeing(
        Name<T>("view/inverse if there is one", LIBRARY),
        [](Matrix<T> const& m)
        {
            Matrix<T> inverse;
            bool isInvertible = false;
            m.computeInverseWithCheck(inverse, isInvertible);
            return isInvertible ? inverse : Matrix<T>(Matrix<T>::Zero());
        },
        WRITE_MATRIX, general);
    AddAgreeing(
        Name<T>("view/normal matrix", LIBRARY), [](Matrix<T> const& m) -> Matrix<T> { return m.inverse().transpose(); },
        WRITE_MATRIX, general);

    auto const parts = PartArguments();
    auto const rotations =
        Build(parts, 10, [](double const* q) { return Eigen::Quaternion<T>(T(q[3]), T(q[0]), T(q[1]), T(q[2])); });
    AddAgreeing(
        Name<T>("view/Compose", LIBRARY),
        [](Vector<T> const& translation, Eigen::Quaternion<T> const& rotation, Vector<T> const& scale)
        {
            Affine<T> result;
            result.fromPositionOrientationScale(translation, rotation, scale);
            result.makeAffine();
            return result;
        },
        WRITE_MATRIX, MakeVectors<T>(parts, 10, 4), rotations, MakeVectors<T>(parts, 10, 7));

    struct Parts
    {
        Vector<T> translation;
        Eigen::Quaternion<T> rotation;
        Eigen::Matrix<T, 3, 3> symmetric;
    };
    AddAgreeing(
        Name<T>("view/Decompose", LIBRARY),
        [](Matrix<T> const& m)
        {
            Affine<T> const transform(m);
            Eigen::Matrix<T, 3, 3> rotation;
            Parts result;
            transform.computeRotationScaling(&rotation, &result.symmetric);
            result.translation = transform.translation();
            result.rotation = rotation;
            return result;
        },
        [](Parts const& p, std::vector<double>& numbers)
        {
            auto const& s = p.symmetric;
            numbers.insert(numbers.end(), {s(0, 0), s(1, 1), s(2, 2), s(0, 1), s(0, 2), s(1, 2)});
        },
        Make<T>(AffineMatrices(1)));
}

} // namespace eigen

/// Imath multiplies rows from the left: every matrix is the transpose of ours.
namespace imath
{

constexpr char const* LIBRARY = "Imath";

template <typename T>
using Matrix = Imath::Matrix44<T>;

template <typename T>
void Add()
{
    auto const general = Build(GeneralMatrices(1), 16,
                               [](double const* m)
                               {
                                   Matrix<T> matrix;
                                   for (int i = 0; i < 16; ++i)
                                       matrix[i % 4][i / 4] = static_cast<T>(m[i]);
                                   return matrix;
                               });
    auto const write = [](Matrix<T> const& matrix, std::vector<double>& numbers)
    {
        for (int i = 0; i < 16; ++i)
            numbers.push_back(matrix[i % 4][i / 4]);
    };
    AddAgreeing(
        Name<T>("view/inverse if there is one", LIBRARY), [](Matrix<T> const& m) { return m.inverse(); }, write,
        general);
    AddAgreeing(
        Name<T>("view/normal matrix", LIBRARY), [](Matrix<T> const& m) { return m.inverse().transposed(); }, write,
        general);
}

} // namespace imath

/// What a renderer's own code would be.
namespace hand_written
{

constexpr char const* LIBRARY = "hand-written";

template <typename T>
struct Vector
{
    T x, y, z;
};

template <typename T>
Vector<T> Minus(Vector<T> const& a, Vector<T> const& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
template <typename T>
T Dot(Vector<T> const& a, Vector<T> const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
template <typename T>
Vector<T> Cross(Vector<T> const& a, Vector<T> const& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
template <typename T>
Vector<T> Unit(Vector<T> const& a)
{
    T const q = 1 / std::sqrt(Dot(a, a));
    return {a.x * q, a.y * q, a.z * q};
}

template <typename T>
std::vector<Vector<T>> MakeVectors(std::vector<double> const& numbers, std::size_t size, std::size_t first)
{
    return Build(numbers, size,
                 [first](double const* v) {
                     return Vector<T>{T(v[first]), T(v[first + 1]), T(v[first + 2])};
                 });
}

template <typename T>
using Matrix = std::array<T, 16>;

constexpr auto WRITE = [](auto const& matrix, std::vector<double>& numbers)
{
    for (auto const element : matrix)
        numbers.push_back(element);
};

template <typename T>
Matrix<T> Project(T m11, T m22, T nearPlane, T farPlane)
{
    T const m33 = farPlane / (nearPlane - farPlane);
    return {m11, 0, 0, 0, 0, m22, 0, 0, 0, 0, m33, nearPlane * m33, 0, 0, -1, 0};
}

template <typename T>
struct View
{
    Vector<T> eye, corner, right, down;
};

template <typename T>
struct Ray
{
    Vector<T> origin, direction;
};

template <typename T>
void Add()
{
    auto const cameras = CameraArguments();
    AddAgreeing(
        Name<T>("view/LookAt", LIBRARY),
        [](Vector<T> const& eye, Vector<T> const& target, Vector<T> const& up) -> Matrix<T>
        {
            Vector<T> const f = Unit(Minus(target, eye));
            Vector<T> const r = Unit(Cross(f, up));
            Vector<T> const u = Cross(r, f);
            return {r.x,  r.y,  r.z,  -Dot(r, eye), u.x, u.y, u.z, -Dot(u, eye),
                    -f.x, -f.y, -f.z, Dot(f, eye),  0,   0,   0,   1};
        },
        WRITE, MakeVectors<T>(cameras, 9, 0), MakeVectors<T>(cameras, 9, 3), MakeVectors<T>(cameras, 9, 6));
    AddAgreeing(
        Name<T>("view/perspective from a field of view", LIBRARY),
        [](LensArgument<T> const& a)
        {
            T const m22 = 1 / std::tan(a.angle / 2);
            return Project(m22 / a.aspect, m22, a.nearPlane, a.farPlane);
        },
        WRITE, ManyLenses<T>());
    AddAgreeing(
        Name<T>("view/perspective from a tangent", LIBRARY),
        [](LensArgument<T> const& a)
        {
            T const m22 = 1 / a.angle;
            return Project(m22 / a.aspect, m22, a.nearPlane, a.farPlane);
        },
        WRITE, ManyLenses<T>());

    T const top = T{TANGENT};
    T const side = T{TANGENT * WIDTH / HEIGHT};
    View<T> const view{{0, 0, 0}, {-side, top, -1}, {2 * side / T{WIDTH}, 0, 0}, {0, -2 * top / T{HEIGHT}, 0}};
    AddAgreeingBy(
        Name<T>("view/ray of a pixel", LIBRARY), view,
        [](View<T> const& v, std::array<T, 2> const& pixel) -> Ray<T>
        {
            auto const [x, y] = pixel;
            return {v.eye,
                    Unit(Vector<T>{v.corner.x + v.right.x * x + v.down.x * y, v.corner.y + v.right.y * x + v.down.y * y,
                                   v.corner.z + v.right.z * x + v.down.z * y})};
        },
        [](Ray<T> const& r, std::vector<double>& numbers) {
            numbers.insert(numbers.end(),
                           {r.origin.x, r.origin.y, r.origin.z, r.direction.x, r.direction.y, r.direction.z});
        },
        Build(PicturePoints(), 2,
              [](double const* v) {
                  return std::array<T, 2>{T(v[0]), T(v[1])};
              }));
    T const depth = T{FAR_PLANE - NEAR_PLANE};
    Matrix<T> const projection = {1 / side,
                                  0,
                                  0,
                                  0,
                                  0,
                                  1 / top,
                                  0,
                                  0,
                                  0,
                                  0,
                                  -T{FAR_PLANE + NEAR_PLANE} / depth,
                                  -2 * T{FAR_PLANE * NEAR_PLANE} / depth,
                                  0,
                                  0,
                                  -1,
                                  0};
    AddAgreeingBy(
        Name<T>("view/pixel of a point", LIBRARY), projection,
        [](Matrix<T> const& m, Vector<T> const& p) -> Vector<T>
        {
            T const w = m[12] * p.x + m[13] * p.y + m[14] * p.z + m[15];
            if (!(w > 0))
                return {};
            T const q = 1 / w;
            T const x = (m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3]) * q;
            T const y = (m[4] * p.x + m[5] * p.y + m[6] * p.z + m[7]) * q;
            T const z = (m[8] * p.x + m[9] * p.y + m[10] * p.z + m[11]) * q;
            return {(x + 1) * T{WIDTH / 2}, (1 - y) * T{HEIGHT / 2}, z};
        },
        [](Vector<T> const& v, std::vector<double>& numbers) {
            numbers.insert(numbers.end(), {v.x, v.y, v.z});
        },
        MakeVectors<T>(VisiblePoints(), 3, 0));
}

} // namespace hand_written

} // namespace

void AddView()
{
    glm_as_it_comes::Add<float>();
    glm_as_it_comes::Add<double>();
    eigen::Add<float>();
    eigen::Add<double>();
    imath::Add<float>();
    imath::Add<double>();
    hand_written::Add<float>();
    hand_written::Add<double>();
}

} // namespace bench::peers
