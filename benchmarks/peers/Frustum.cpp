#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <emmintrin.h>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathFrustum.h>
#include <Imath/ImathFrustumTest.h>
#include <cglm/cglm.h>

#include "Bench.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

enum Place : std::uint32_t
{
    OUTSIDE,
    INTERSECTING,
    INSIDE
};

/// Imath makes the planes from the sides of the view and the camera's matrix.
template <typename T>
void AddImath()
{
    using Box = Imath::Box<Imath::Vec3<T>>;
    using Matrix = Imath::Matrix44<T>;
    using Test = Imath::FrustumTest<T>;
    using Vector = Imath::Vec3<T>;
    Imath::Frustum<T> const frustum(static_cast<T>(View::NEAR_PLANE), static_cast<T>(View::FAR_PLANE),
                                    static_cast<T>(-View::RIGHT), static_cast<T>(View::RIGHT),
                                    static_cast<T>(View::TOP), static_cast<T>(-View::TOP));
    auto const makeMatrix = [](View const& view)
    {
        Matrix matrix; // for points as rows
        for (int row = 0; row < 4; ++row)
        {
            for (int column = 0; column < 4; ++column)
                matrix[column][row] = static_cast<T>(view.camera[4 * row + column]);
        }
        return matrix;
    };

    std::vector<Matrix> matrices;
    for (View const& view : ManyViews())
        matrices.push_back(makeMatrix(view));
    AddMap(
        Name<T>("frustum/from matrix", "Imath"),
        [frustum](Matrix const& matrix)
        {
            std::array<Imath::Plane3<T>, 6> planes;
            frustum.planes(planes.data(), matrix);
            return planes;
        },
        matrices);

    Test const test(frustum, makeMatrix(MainView()));
    std::vector<Box> const boxes =
        Build(SceneBoxes(), 6,
              [](double const* n)
              { return Box(Vector(Imath::V3d(n[0], n[1], n[2])), Vector(Imath::V3d(n[3], n[4], n[5]))); });
    AddMap(
        Name<T>("frustum/classifies boxes", "Imath"),
        [test](Box const& box) __attribute__((always_inline)) {
            return !test.isVisible(box) ? OUTSIDE : test.completelyContains(box) ? INSIDE : INTERSECTING;
        },
        boxes);
    AddMap(
        Name<T>("frustum/sees boxes", "Imath"),
        [test](Box const& box) __attribute__((always_inline)) { return test.isVisible(box); }, boxes);
}

/// Eigen has no frustum, but the planes of one are sums of rows, and its planes know their distance from a point.
template <typename T>
void AddEigen()
{
    using Matrix = Eigen::Matrix<T, 4, 4>;
    using Planes = std::array<Eigen::Hyperplane<T, 3>, 6>;
    auto const makePlanes = [](Matrix const& matrix)
    {
        Planes planes;
        for (int axis = 0; axis < 3; ++axis)
        {
            planes[2 * axis].coeffs() = (matrix.row(3) + matrix.row(axis)).transpose();
            planes[2 * axis + 1].coeffs() = (matrix.row(3) - matrix.row(axis)).transpose();
        }
        for (Eigen::Hyperplane<T, 3>& plane : planes)
            plane.normalize();
        return planes;
    };
    auto const makeMatrix = [](View const& view)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix(i / 4, i % 4) = static_cast<T>(view.projection[i]);
        return matrix;
    };
    std::vector<Matrix> matrices;
    for (View const& view : ManyViews())
        matrices.push_back(makeMatrix(view));
    AddMap(Name<T>("frustum/from matrix", "Eigen"), makePlanes, matrices);
}

struct CglmMatrix
{
    mat4 m;
};
struct CglmPlanes
{
    vec4 planes[6];
};
struct CglmBox
{
    vec3 corners[2];
};

CglmMatrix MakeCglmMatrix(View const& view)
{
    CglmMatrix matrix; // column by column
    for (int row = 0; row < 4; ++row)
    {
        for (int column = 0; column < 4; ++column)
            matrix.m[column][row] = static_cast<float>(view.projection[4 * row + column]);
    }
    return matrix;
}

[[gnu::always_inline]] inline CglmPlanes MakeCglmPlanes(CglmMatrix const& matrix)
{
    CglmPlanes planes;
    glm_frustum_planes(const_cast<vec4*>(matrix.m), planes.planes);
    return planes;
}

CglmBox MakeCglmBox(double const* n)
{
    CglmBox box;
    for (int i = 0; i < 6; ++i)
        box.corners[i / 3][i % 3] = static_cast<float>(n[i]);
    return box;
}

void AddCglm()
{
    std::vector<CglmMatrix> matrices;
    for (View const& view : ManyViews())
        matrices.push_back(MakeCglmMatrix(view));
    AddMap(
        Name<float>("frustum/from matrix", "cglm"), [](CglmMatrix const& matrix) { return MakeCglmPlanes(matrix); },
        matrices);
    AddMap(
        Name<float>("frustum/sees boxes", "cglm"),
        [planes = MakeCglmPlanes(MakeCglmMatrix(MainView()))](CglmBox const& box) __attribute__((always_inline)) {
            return glm_aabb_frustum(const_cast<vec3*>(box.corners), const_cast<vec4*>(planes.planes));
        },
        Build(SceneBoxes(), 6, MakeCglmBox));
}

/// Six planes, four to a vector, kept with the magnitudes of their normals: what a user writes who culls many boxes and
/// knows that all of them are valid. The last plane stands three times.
struct PlanesOfFour
{
    struct Group
    {
        __m128 normal[3];
        __m128 magnitude[3];
        __m128 offset;
    };
    Group groups[2];
};

/// Adds the distances of a box's centre from four planes, and the reach of the box along their normals, to those that
/// the box may be outside of, and to those that it may straddle.
[[gnu::always_inline]] inline void TestGroup(PlanesOfFour::Group const& group, __m128 const (&centre)[3],
                                             __m128 const (&half)[3], __m128& outside, __m128& straddles)
{
    __m128 const distance =
        _mm_add_ps(_mm_add_ps(_mm_mul_ps(group.normal[0], centre[0]), _mm_mul_ps(group.normal[1], centre[1])),
                   _mm_add_ps(_mm_mul_ps(group.normal[2], centre[2]), group.offset));
    __m128 const reach =
        _mm_add_ps(_mm_add_ps(_mm_mul_ps(group.magnitude[0], half[0]), _mm_mul_ps(group.magnitude[1], half[1])),
                   _mm_mul_ps(group.magnitude[2], half[2]));
    outside = _mm_or_ps(outside, _mm_cmplt_ps(_mm_add_ps(distance, reach), _mm_setzero_ps()));
    straddles = _mm_or_ps(straddles, _mm_cmplt_ps(_mm_sub_ps(distance, reach), _mm_setzero_ps()));
}

[[gnu::always_inline]] inline Place Classify(PlanesOfFour const& planes, CglmBox const& box)
{
    __m128 centre[3];
    __m128 half[3];
    for (int axis = 0; axis < 3; ++axis)
    {
        __m128 const lower = _mm_set1_ps(box.corners[0][axis]);
        __m128 const upper = _mm_set1_ps(box.corners[1][axis]);
        centre[axis] = _mm_mul_ps(_mm_add_ps(upper, lower), _mm_set1_ps(0.5F));
        half[axis] = _mm_mul_ps(_mm_sub_ps(upper, lower), _mm_set1_ps(0.5F));
    }
    __m128 outside = _mm_setzero_ps();
    __m128 straddles = _mm_setzero_ps();
    TestGroup(planes.groups[0], centre, half, outside, straddles);
    TestGroup(planes.groups[1], centre, half, outside, straddles);
    if (_mm_movemask_ps(outside) != 0)
        return OUTSIDE;
    return _mm_movemask_ps(straddles) != 0 ? INTERSECTING : INSIDE;
}

void AddHandWritten()
{
    CglmPlanes const planes = MakeCglmPlanes(MakeCglmMatrix(MainView()));
    PlanesOfFour fours;
    for (int group = 0; group < 2; ++group)
    {
        alignas(16) float lanes[4][4];
        for (int lane = 0; lane < 4; ++lane)
        {
            for (int i = 0; i < 4; ++i)
                lanes[i][lane] = planes.planes[group == 0 ? lane : lane == 0 ? 4 : 5][i];
        }
        for (int axis = 0; axis < 3; ++axis)
        {
            fours.groups[group].normal[axis] = _mm_load_ps(lanes[axis]);
            fours.groups[group].magnitude[axis] = _mm_andnot_ps(_mm_set1_ps(-0.0F), _mm_load_ps(lanes[axis]));
        }
        fours.groups[group].offset = _mm_load_ps(lanes[3]);
    }
    std::vector<CglmBox> const boxes = Build(SceneBoxes(), 6, MakeCglmBox);
    AddMap(
        Name<float>("frustum/classifies boxes", "hand-written"),
        [fours](CglmBox const& box) __attribute__((always_inline)) { return Classify(fours, box); }, boxes);
    AddMap(
        Name<float>("frustum/sees boxes", "hand-written"),
        [fours](CglmBox const& box) __attribute__((always_inline)) { return Classify(fours, box) != OUTSIDE; }, boxes);
}

} // namespace

void AddFrustum()
{
    AddImath<float>();
    AddImath<double>();
    AddEigen<float>();
    AddEigen<double>();
    AddCglm();
    AddHandWritten();
}

} // namespace bench::peers
