#include <cstddef>
#include <string>
#include <vector>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

#include "Bench.h"
#include "ShapeData.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
using Box = bv::maths::tVolumeAABB<T>;
template <typename T>
using Vector = bv::maths::tVector3<T>;
template <typename T>
using Matrix = bv::maths::tMatrix4<T>;

template <typename T>
std::string Row(std::string const& operation)
{
    return Name<T>("box/" + operation, "BvBaseUtils");
}

template <typename T>
Vector<T> MakeVector(double const* n)
{
    return {static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
}

template <typename T>
Box<T> MakeBox(double const* n)
{
    return {MakeVector<T>(n), MakeVector<T>(n + 3)};
}

template <typename T>
void AddMotion(std::string const& operation, Motion motion)
{
    std::vector<Box<T>> boxes = Build(UnitBoxes(), 6, MakeBox<T>);
    boxes.resize(MATRIX_COUNT);
    AddMap(
        Row<T>(operation), [](Box<T> const& box, Matrix<T> const& matrix) { return box * matrix; }, boxes,
        Build(MotionNumbers(motion), 16, [](double const* n) { return Matrix<T>(n); }));
}

template <typename T>
void AddPrecision()
{
    std::vector<Box<T>> const boxes = Build(UnitBoxes(), 6, MakeBox<T>);
    std::vector<Vector<T>> const points = Build(UnitPoints(), 3, MakeVector<T>);

    AddFold(
        Row<T>("grown by points"), Box<T>(),
        [](Box<T> total, Vector<T> const& point)
        {
            total.Expand(point);
            return total;
        },
        points);
    AddFold(
        Row<T>("grown by boxes"), Box<T>(),
        [](Box<T> total, Box<T> const& box)
        {
            total.Expand(box);
            return total;
        },
        boxes);
    AddMap(
        Row<T>("each grown by a point"),
        [](Box<T> box, Vector<T> const& point)
        {
            box.Expand(point);
            return box;
        },
        boxes, points);
    AddMap(
        Row<T>("contains"), [](Box<T> const& box, Vector<T> const& point) { return box.Contains(point, false); }, boxes,
        points);
    AddMap(
        Row<T>("distance"), [](Box<T> const& box, Vector<T> const& point) { return box.Distance(point); }, boxes,
        points);
    AddMap(
        Row<T>("distance squared"),
        [](Box<T> const& box, Vector<T> const& point) { return box.DistanceSquared(point); }, boxes, points);
    AddMotion<T>("times affine", Motion::AFFINE);
    AddMotion<T>("times rotation", Motion::ROTATION);
    AddMotion<T>("times diagonal", Motion::DIAGONAL);
}

} // namespace

void AddBox()
{
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
