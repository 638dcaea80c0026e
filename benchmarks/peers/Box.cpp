#include <cmath>
#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathBoxAlgo.h>
#include <LinearMath/btAabbUtil2.h>
#include <cglm/cglm.h>

#include "Bench.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

template <typename T>
std::string Row(std::string const& operation, char const* library)
{
    return Name<T>("box/" + operation, library);
}

template <typename T, int MODE>
void AddEigenMotion(std::string const& operation, Motion motion)
{
    using Box = Eigen::AlignedBox<T, 3>;
    using Transform = Eigen::Transform<T, 3, MODE>;
    std::vector<Box> boxes =
        Build(UnitBoxes(), 6,
              [](double const* n) {
                  return Box(Eigen::Vector3d(n[0], n[1], n[2]).cast<T>(), Eigen::Vector3d(n[3], n[4], n[5]).cast<T>());
              });
    boxes.resize(MATRIX_COUNT);
    AddMap(
        Row<T>(operation, "Eigen"),
        [](Box const& box, Transform const& transform) { return box.transformed(transform); }, boxes,
        Build(MotionNumbers(motion), 16,
              [](double const* n)
              {
                  Transform transform;
                  for (int row = 0; row < 3; ++row)
                  {
                      for (int column = 0; column < 4; ++column)
                          transform.matrix()(row, column) = static_cast<T>(n[4 * row + column]);
                  }
                  transform.makeAffine();
                  return transform;
              }));
}

template <typename T>
void AddEigen()
{
    using Box = Eigen::AlignedBox<T, 3>;
    using Vector = Eigen::Matrix<T, 3, 1>;
    auto const makeVector = [](double const* n) -> Vector
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    std::vector<Box> const boxes =
        Build(UnitBoxes(), 6, [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); });
    std::vector<Vector> const points = Build(UnitPoints(), 3, makeVector);

    AddFold(
        Row<T>("grown by points", "Eigen"), Box(),
        [](Box total, Vector const& point)
        {
            total.extend(point);
            return total;
        },
        points);
    AddFold(
        Row<T>("grown by boxes", "Eigen"), Box(),
        [](Box total, Box const& box)
        {
            total.extend(box);
            return total;
        },
        boxes);
    AddMap(
        Row<T>("each grown by a point", "Eigen"),
        [](Box box, Vector const& point)
        {
            box.extend(point);
            return box;
        },
        boxes, points);
    AddMap(
        Row<T>("contains", "Eigen"), [](Box const& box, Vector const& point) { return box.contains(point); }, boxes,
        points);
    AddMap(
        Row<T>("distance", "Eigen"), [](Box const& box, Vector const& point) { return box.exteriorDistance(point); },
        boxes, points);
    AddMap(
        Row<T>("distance squared", "Eigen"),
        [](Box const& box, Vector const& point) { return box.squaredExteriorDistance(point); }, boxes, points);
    AddEigenMotion<T, Eigen::Affine>("times affine", Motion::AFFINE);
    AddEigenMotion<T, Eigen::Isometry>("times rotation", Motion::ROTATION);
    AddEigenMotion<T, Eigen::Affine>("times diagonal", Motion::DIAGONAL);
}

template <typename T>
void AddImathMotion(std::string const& operation, Motion motion)
{
    using Box = Imath::Box<Imath::Vec3<T>>;
    using Matrix = Imath::Matrix44<T>;
    std::vector<Box> boxes = Build(
        UnitBoxes(), 6,
        [](double const* n)
        { return Box(Imath::Vec3<T>(Imath::V3d(n[0], n[1], n[2])), Imath::Vec3<T>(Imath::V3d(n[3], n[4], n[5]))); });
    boxes.resize(MATRIX_COUNT);
    AddMap(
        Row<T>(operation, "Imath"),
        [](Box const& box, Matrix const& matrix) { return Imath::affineTransform(box, matrix); }, boxes,
        Build(MotionNumbers(motion), 16,
              [](double const* n)
              {
                  Matrix matrix; // for points as rows
                  for (int row = 0; row < 4; ++row)
                  {
                      for (int column = 0; column < 4; ++column)
                          matrix[column][row] = static_cast<T>(n[4 * row + column]);
                  }
                  return matrix;
              }));
}

template <typename T>
void AddImath()
{
    using Box = Imath::Box<Imath::Vec3<T>>;
    using Vector = Imath::Vec3<T>;
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };
    std::vector<Box> const boxes =
        Build(UnitBoxes(), 6, [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); });
    std::vector<Vector> const points = Build(UnitPoints(), 3, makeVector);

    AddFold(
        Row<T>("grown by points", "Imath"), Box(),
        [](Box total, Vector const& point)
        {
            total.extendBy(point);
            return total;
        },
        points);
    AddFold(
        Row<T>("grown by boxes", "Imath"), Box(),
        [](Box total, Box const& box)
        {
            total.extendBy(box);
            return total;
        },
        boxes);
    AddMap(
        Row<T>("each grown by a point", "Imath"),
        [](Box box, Vector const& point)
        {
            box.extendBy(point);
            return box;
        },
        boxes, points);
    AddMap(
        Row<T>("contains", "Imath"), [](Box const& box, Vector const& point) { return box.intersects(point); }, boxes,
        points);
    AddMap(
        Row<T>("distance", "Imath"),
        [](Box const& box, Vector const& point) { return (point - Imath::closestPointInBox(point, box)).length(); },
        boxes, points);
    AddMap(
        Row<T>("distance squared", "Imath"),
        [](Box const& box, Vector const& point) { return (point - Imath::closestPointInBox(point, box)).length2(); },
        boxes, points);
    AddImathMotion<T>("times affine", Motion::AFFINE);
    AddImathMotion<T>("times rotation", Motion::ROTATION);
    AddImathMotion<T>("times diagonal", Motion::DIAGONAL);
}

/// Bullet has no type for a box: its functions take two corners.
struct BulletBox
{
    btVector3 min;
    btVector3 max;
};

void AddBulletMotion(std::string const& operation, Motion motion, std::vector<BulletBox> boxes)
{
    boxes.resize(MATRIX_COUNT);
    AddMap(
        Row<float>(operation, "Bullet"),
        [](BulletBox const& box, btTransform const& transform)
        {
            BulletBox moved;
            btTransformAabb(box.min, box.max, 0, transform, moved.min, moved.max);
            return moved;
        },
        boxes,
        Build(MotionNumbers(motion), 16,
              [](double const* n)
              {
                  float m[12];
                  for (int i = 0; i < 12; ++i)
                      m[i] = static_cast<float>(n[i]);
                  return btTransform(btMatrix3x3(m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10]),
                                     btVector3(m[3], m[7], m[11]));
              }));
}

void AddBullet()
{
    auto const makeVector = [](double const* n)
    { return btVector3(static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])); };
    std::vector<BulletBox> const boxes = Build(UnitBoxes(), 6,
                                               [&](double const* n) {
                                                   return BulletBox{makeVector(n), makeVector(n + 3)};
                                               });
    std::vector<btVector3> const points = Build(UnitPoints(), 3, makeVector);
    BulletBox const empty{btVector3(INFINITY, INFINITY, INFINITY), btVector3(-INFINITY, -INFINITY, -INFINITY)};

    AddFold(
        Row<float>("grown by points", "Bullet"), empty,
        [](BulletBox total, btVector3 const& point)
        {
            total.min.setMin(point);
            total.max.setMax(point);
            return total;
        },
        points);
    AddFold(
        Row<float>("grown by boxes", "Bullet"), empty,
        [](BulletBox total, BulletBox const& box)
        {
            total.min.setMin(box.min);
            total.max.setMax(box.max);
            return total;
        },
        boxes);
    AddMap(
        Row<float>("each grown by a point", "Bullet"),
        [](BulletBox box, btVector3 const& point)
        {
            box.min.setMin(point);
            box.max.setMax(point);
            return box;
        },
        boxes, points);
    AddMap(
        Row<float>("contains", "Bullet"),
        [](BulletBox const& box, btVector3 const& point) { return TestPointAgainstAabb2(box.min, box.max, point); },
        boxes, points);
    AddBulletMotion("times affine", Motion::AFFINE, boxes);
    AddBulletMotion("times rotation", Motion::ROTATION, boxes);
    AddBulletMotion("times diagonal", Motion::DIAGONAL, boxes);
}

struct CglmVector
{
    vec3 v;
};
struct CglmBox
{
    vec3 corners[2];
};
struct CglmMatrix
{
    mat4 m;
};

void AddCglmMotion(std::string const& operation, Motion motion, std::vector<CglmBox> boxes)
{
    boxes.resize(MATRIX_COUNT);
    AddMap(
        Row<float>(operation, "cglm"),
        [](CglmBox const& box, CglmMatrix const& matrix)
        {
            CglmBox moved;
            glm_aabb_transform(const_cast<vec3*>(box.corners), const_cast<vec4*>(matrix.m), moved.corners);
            return moved;
        },
        boxes,
        Build(MotionNumbers(motion), 16,
              [](double const* n)
              {
                  CglmMatrix matrix; // column by column
                  for (int row = 0; row < 4; ++row)
                  {
                      for (int column = 0; column < 4; ++column)
                          matrix.m[column][row] = static_cast<float>(n[4 * row + column]);
                  }
                  return matrix;
              }));
}

void AddCglm()
{
    std::vector<CglmBox> const boxes = Build(UnitBoxes(), 6,
                                             [](double const* n)
                                             {
                                                 CglmBox box;
                                                 for (int i = 0; i < 6; ++i)
                                                     box.corners[i / 3][i % 3] = static_cast<float>(n[i]);
                                                 return box;
                                             });
    std::vector<CglmVector> const points =
        Build(UnitPoints(), 3,
              [](double const* n) {
                  return CglmVector{{static_cast<float>(n[0]), static_cast<float>(n[1]), static_cast<float>(n[2])}};
              });
    CglmBox empty;
    glm_aabb_invalidate(empty.corners);

    AddFold(
        Row<float>("grown by points", "cglm"), empty,
        [](CglmBox total, CglmVector const& point)
        {
            glm_vec3_minv(total.corners[0], const_cast<float*>(point.v), total.corners[0]);
            glm_vec3_maxv(total.corners[1], const_cast<float*>(point.v), total.corners[1]);
            return total;
        },
        points);
    AddFold(
        Row<float>("grown by boxes", "cglm"), empty,
        [](CglmBox total, CglmBox const& box)
        {
            glm_aabb_merge(total.corners, const_cast<vec3*>(box.corners), total.corners);
            return total;
        },
        boxes);
    AddMap(
        Row<float>("each grown by a point", "cglm"),
        [](CglmBox box, CglmVector const& point)
        {
            glm_vec3_minv(box.corners[0], const_cast<float*>(point.v), box.corners[0]);
            glm_vec3_maxv(box.corners[1], const_cast<float*>(point.v), box.corners[1]);
            return box;
        },
        boxes, points);
    AddMap(
        Row<float>("contains", "cglm"),
        [](CglmBox const& box, CglmVector const& point)
        { return glm_aabb_point(const_cast<vec3*>(box.corners), const_cast<float*>(point.v)); },
        boxes, points);
    AddCglmMotion("times affine", Motion::AFFINE, boxes);
    AddCglmMotion("times rotation", Motion::ROTATION, boxes);
    AddCglmMotion("times diagonal", Motion::DIAGONAL, boxes);
}

} // namespace

void AddBox()
{
    AddEigen<float>();
    AddEigen<double>();
    AddImath<float>();
    AddImath<double>();
    AddBullet();
    AddCglm();
}

} // namespace bench::peers
