#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathFrustum.h>
#include <Imath/ImathFrustumTest.h>
#include <Imath/ImathSphere.h>
#include <cglm/cglm.h>

#include "BoundsData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

template <typename T>
std::string Row(char const* operation, char const* library)
{
    return Name<T>(std::string("visibility/") + operation, library);
}

template <typename T>
void AddImath()
{
    using Matrix = Imath::Matrix44<T>;
    using Sphere = Imath::Sphere3<T>;
    using Test = Imath::FrustumTest<T>;
    using Vector = Imath::Vec3<T>;
    Imath::Frustum<T> const frustum(static_cast<T>(View::NEAR_PLANE), static_cast<T>(View::FAR_PLANE),
                                    static_cast<T>(-View::RIGHT), static_cast<T>(View::RIGHT),
                                    static_cast<T>(View::TOP), static_cast<T>(-View::TOP));
    Matrix camera; // for points as rows
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            camera[column][row] = static_cast<T>(MainView().camera[4 * row + column]);
    Test const test(frustum, camera);
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };

    AddAgreedMapBy(
        Row<T>("sees points", "Imath"), test,
        [](Test const& test, Vector const& point) __attribute__((always_inline)) { return test.isVisible(point); },
        TELL_NUMBER, Build(ScenePoints(), 3, makeVector));
    std::vector<Sphere> const spheres =
        Build(SceneSpheres(), 4, [&](double const* n) { return Sphere(makeVector(n), static_cast<T>(n[3])); });
    AddAgreedMapBy(
        Row<T>("sees spheres", "Imath"), test,
        [](Test const& test, Sphere const& sphere) __attribute__((always_inline)) { return test.isVisible(sphere); },
        TELL_NUMBER, spheres);
    AddAgreedMapBy(
        Row<T>("classifies spheres", "Imath"), test,
        [](Test const& test, Sphere const& sphere) __attribute__((always_inline)) {
            return !test.isVisible(sphere) ? 0 : test.completelyContains(sphere) ? 2 : 1;
        },
        TELL_NUMBER, spheres);
}

/// Eigen has no frustum: a user keeps six planes as the rows of a matrix, which gives all distances at once.
template <typename T>
struct Six
{
    Eigen::Matrix<T, 6, 3> normals;
    Eigen::Matrix<T, 6, 1> offsets;
};

template <typename T>
struct TurnedBox
{
    Eigen::Matrix<T, 3, 1> centre;
    Eigen::Matrix<T, 3, 3> axes; ///< its columns
    Eigen::Matrix<T, 3, 1> halves;
};

template <typename T>
void AddEigen()
{
    using Matrix = Eigen::Matrix<T, 4, 4>;
    using Vector = Eigen::Matrix<T, 3, 1>;
    using Distances = Eigen::Matrix<T, 6, 1>;
    using Corners = std::array<Vector, 8>;
    using Box = TurnedBox<T>;
    struct Sphere
    {
        Vector centre;
        T radius;
    };
    auto const makeVector = [](double const* n) -> Vector
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    auto const makeMatrix = [](View const& view) -> Matrix {
        return Eigen::Map<Eigen::Matrix<double, 4, 4, Eigen::RowMajor> const>(view.projection.data())
            .template cast<T>();
    };
    Matrix const matrix = makeMatrix(MainView());
    Six<T> six;
    for (int i = 0; i < 6; ++i)
    {
        Eigen::Matrix<T, 1, 4> const plane = matrix.row(3) + (i % 2 == 0 ? T(1) : T(-1)) * matrix.row(i / 2);
        six.normals.row(i) = plane.template head<3>() / plane.template head<3>().norm();
        six.offsets[i] = plane[3] / plane.template head<3>().norm();
    }

    AddAgreedMapBy(
        Row<T>("sees points", "Eigen"), six, [](Six<T> const& six, Vector const& point) __attribute__((always_inline)) {
            return (six.normals * point + six.offsets).minCoeff() >= 0;
        },
        TELL_NUMBER, Build(ScenePoints(), 3, makeVector));
    std::vector<Sphere> const spheres = Build(SceneSpheres(), 4,
                                              [&](double const* n) {
                                                  return Sphere{makeVector(n), static_cast<T>(n[3])};
                                              });
    AddAgreedMapBy(
        Row<T>("sees spheres", "Eigen"), six,
        [](Six<T> const& six, Sphere const& sphere) __attribute__((always_inline)) {
            return (six.normals * sphere.centre + six.offsets).minCoeff() >= -sphere.radius;
        },
        TELL_NUMBER, spheres);
    AddAgreedMapBy(
        Row<T>("classifies spheres", "Eigen"), six,
        [](Six<T> const& six, Sphere const& sphere) __attribute__((always_inline)) {
            T const distance = (six.normals * sphere.centre + six.offsets).minCoeff();
            return distance < -sphere.radius ? 0 : distance < sphere.radius ? 1 : 2;
        },
        TELL_NUMBER, spheres);
    AddAgreedMapBy(
        Row<T>("classifies turned boxes", "Eigen"), six,
        [](Six<T> const& six, Box const& box) __attribute__((always_inline)) {
            Distances const distances = six.normals * box.centre + six.offsets;
            Distances const reaches = (six.normals * box.axes).cwiseAbs() * box.halves;
            if ((distances + reaches).minCoeff() < 0)
                return 0;
            return (distances - reaches).minCoeff() < 0 ? 1 : 2;
        },
        TELL_NUMBER,
        Build(TurnedBoxes(), 15,
              [&](double const* n)
              {
                  Box box;
                  box.centre = makeVector(n);
                  for (int axis = 0; axis < 3; ++axis)
                      box.axes.col(axis) = makeVector(n + 3 + 3 * axis);
                  box.halves = makeVector(n + 12);
                  return box;
              }));
    std::vector<Matrix> matrices;
    for (View const& view : ManyViews())
        matrices.push_back(makeMatrix(view));
    AddAgreedMap(
        Row<T>("corners of a view", "Eigen"),
        [](Matrix const& view)
        {
            Matrix const inverse = view.inverse();
            Corners corners;
            for (int i = 0; i < 8; ++i)
                corners[i] =
                    (inverse * Eigen::Matrix<T, 4, 1>(T(i % 2 * 2 - 1), T(i / 2 % 2 * 2 - 1), T(i / 4 * 2 - 1), T(1)))
                        .hnormalized();
            return corners;
        },
        [](std::vector<double>& numbers, Corners const& corners)
        {
            for (Vector const& corner : corners)
                TELL_VECTOR(numbers, corner);
        },
        matrices);
}

struct CglmMatrix
{
    mat4 m;
};
struct CglmCorners
{
    vec4 corners[8];
};

void AddCglm()
{
    std::vector<CglmMatrix> matrices;
    for (View const& view : ManyViews())
    {
        CglmMatrix& matrix = matrices.emplace_back(); // column by column
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                matrix.m[column][row] = static_cast<float>(view.projection[4 * row + column]);
    }
    AddMap(
        Row<float>("corners of a view", "cglm"),
        [](CglmMatrix const& matrix)
        {
            CglmMatrix inverse;
            CglmCorners corners;
            glm_mat4_inv(const_cast<vec4*>(matrix.m), inverse.m);
            glm_frustum_corners(inverse.m, corners.corners);
            return corners;
        },
        matrices);
}

} // namespace

void AddVisibility()
{
    AddImath<float>();
    AddImath<double>();
    AddEigen<float>();
    AddEigen<double>();
    AddCglm();
}

} // namespace bench::peers
