#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathBoxAlgo.h>
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
    return Name<T>(std::string("bounds/") + operation, library);
}

template <typename Vector, typename Box>
void TellCorners(std::vector<double>& numbers, Box const& box, Vector const& lower, Vector const& upper)
{
    bool const isValid = lower[0] <= upper[0] && lower[1] <= upper[1] && lower[2] <= upper[2];
    static_cast<void>(box);
    for (Vector const* corner : {&lower, &upper})
        for (int axis = 0; axis < 3; ++axis)
            numbers.push_back(isValid ? static_cast<double>((*corner)[axis]) : 0.0);
}

/// Eigen's vectors, in which a user writes what Eigen has not.
template <typename T>
struct EigenTypes
{
    using Vector = Eigen::Matrix<T, 3, 1>;
    using Box = Eigen::AlignedBox<T, 3>;
    using Matrix = Eigen::Matrix<T, 4, 4>;
    struct Sphere
    {
        Vector centre;
        T radius;
    };

    static Vector MakeVector(double const* n)
    {
        return {static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])};
    }
    static Box MakeBox(double const* n) { return {MakeVector(n), MakeVector(n + 3)}; }
};

template <typename T>
void AddEigen()
{
    using Types = EigenTypes<T>;
    using Box = typename Types::Box;
    using Vector = typename Types::Vector;
    using Matrix = typename Types::Matrix;
    using Sphere = typename Types::Sphere;
    auto const tellBox = [](std::vector<double>& numbers, Box const& box)
    { TellCorners<Vector>(numbers, box, box.min(), box.max()); };
    std::vector<Box> const boxes = Build(UnitBoxes(), 6, Types::MakeBox);
    std::vector<Box> const others = Build(OtherBoxes(), 6, Types::MakeBox);
    std::vector<Vector> const points = Build(UnitPoints(), 3, Types::MakeVector);

    AddAgreedMap(
        Row<T>("union", "Eigen"), [](Box const& a, Box const& b) { return a.merged(b); }, tellBox, boxes, others);
    AddAgreedMap(
        Row<T>("intersection", "Eigen"),
        [](Box const& a, Box const& b)
        {
            Box const common = a.intersection(b);
            return common.isEmpty() ? Box() : common;
        },
        tellBox, boxes, others);
    AddAgreedMap(
        Row<T>("overlaps", "Eigen"), [](Box const& a, Box const& b) { return a.intersects(b); }, TELL_NUMBER, boxes,
        others);
    AddAgreedMap(
        Row<T>("contains box", "Eigen"), [](Box const& a, Box const& b) { return a.contains(b); }, TELL_NUMBER, boxes,
        others);
    AddAgreedMap(
        Row<T>("surface", "Eigen"),
        [](Box const& box)
        {
            Vector const s = box.sizes();
            return (s.y() * s.z() + s.x() * s.z() + s.x() * s.y()) * T(2);
        },
        TELL_NUMBER, boxes);
    AddAgreedMap(
        Row<T>("closest point", "Eigen"),
        [](Box const& box, Vector const& point) -> Vector { return point.cwiseMax(box.min()).cwiseMin(box.max()); },
        TELL_VECTOR, boxes, points);
    AddAgreedMap(
        Row<T>("projected", "Eigen"),
        [](Box const& box, Matrix const& matrix)
        {
            Box image;
            for (int i = 0; i < 8; ++i)
                image.extend(
                    (matrix * box.corner(static_cast<typename Box::CornerType>(i)).homogeneous()).hnormalized());
            return image;
        },
        tellBox, boxes,
        Build(ProjectionNumbers(), 16,
              [](double const* n) {
                  return Matrix(Eigen::Map<Eigen::Matrix<double, 4, 4, Eigen::RowMajor> const>(n).template cast<T>());
              }));
    AddAgreedMap(
        Row<T>("sphere and point", "Eigen"),
        [](Sphere const& sphere, Vector const& point)
        {
            Vector const way = point - sphere.centre;
            T const squared = way.squaredNorm();
            if (squared <= sphere.radius * sphere.radius)
                return sphere;
            T const distance = std::sqrt(squared);
            T const radius = (sphere.radius + distance) * T(0.5);
            return Sphere{sphere.centre + way * ((radius - sphere.radius) / distance), radius};
        },
        [](std::vector<double>& numbers, Sphere const& sphere)
        { numbers.push_back(static_cast<double>(sphere.radius)); },
        Build(SphereNumbers(133), 4,
              [](double const* n) {
                  return Sphere{Types::MakeVector(n), static_cast<T>(n[3])};
              }),
        points);
}

template <typename T>
void AddImath()
{
    using Vector = Imath::Vec3<T>;
    using Box = Imath::Box<Vector>;
    using Matrix = Imath::Matrix44<T>;
    auto const makeVector = [](double const* n) { return Vector(Imath::V3d(n[0], n[1], n[2])); };
    auto const makeBox = [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); };
    auto const tellBox = [](std::vector<double>& numbers, Box const& box)
    { TellCorners<Vector>(numbers, box, box.min, box.max); };
    std::vector<Box> const boxes = Build(UnitBoxes(), 6, makeBox);
    std::vector<Box> const others = Build(OtherBoxes(), 6, makeBox);

    AddAgreedMap(
        Row<T>("union", "Imath"),
        [](Box const& a, Box const& b)
        {
            Box both = a;
            both.extendBy(b);
            return both;
        },
        tellBox, boxes, others);
    AddAgreedMap(
        Row<T>("overlaps", "Imath"), [](Box const& a, Box const& b) { return a.intersects(b); }, TELL_NUMBER, boxes,
        others);
    AddAgreedMap(
        Row<T>("surface", "Imath"),
        [](Box const& box)
        {
            Vector const s = box.size();
            return (s.y * s.z + s.x * s.z + s.x * s.y) * T(2);
        },
        TELL_NUMBER, boxes);
    AddAgreedMap(
        Row<T>("closest point", "Imath"), [](Box const& box, Vector const& point) { return Imath::clip(point, box); },
        TELL_VECTOR, boxes, Build(UnitPoints(), 3, makeVector));
    AddAgreedMap(
        Row<T>("projected", "Imath"),
        [](Box const& box, Matrix const& matrix) { return Imath::transform(box, matrix); }, tellBox, boxes,
        Build(ProjectionNumbers(), 16,
              [](double const* n)
              {
                  Matrix matrix; // for points as rows
                  for (int row = 0; row < 4; ++row)
                      for (int column = 0; column < 4; ++column)
                          matrix[column][row] = static_cast<T>(n[4 * row + column]);
                  return matrix;
              }));
}

struct CglmBox
{
    vec3 corners[2];
};

void AddCglm()
{
    auto const makeBox = [](double const* n)
    {
        CglmBox box;
        for (int i = 0; i < 6; ++i)
            box.corners[i / 3][i % 3] = static_cast<float>(n[i]);
        return box;
    };
    auto const tellBox = [](std::vector<double>& numbers, CglmBox const& box)
    { TellCorners<vec3>(numbers, box, box.corners[0], box.corners[1]); };
    std::vector<CglmBox> const boxes = Build(UnitBoxes(), 6, makeBox);
    std::vector<CglmBox> const others = Build(OtherBoxes(), 6, makeBox);
    AddAgreedMap(
        Row<float>("union", "cglm"),
        [](CglmBox const& a, CglmBox const& b)
        {
            CglmBox both;
            glm_aabb_merge(const_cast<vec3*>(a.corners), const_cast<vec3*>(b.corners), both.corners);
            return both;
        },
        tellBox, boxes, others);
    AddAgreedMap(
        Row<float>("overlaps", "cglm"),
        [](CglmBox const& a, CglmBox const& b)
        { return glm_aabb_aabb(const_cast<vec3*>(a.corners), const_cast<vec3*>(b.corners)); },
        TELL_NUMBER, boxes, others);
    AddAgreedMap(
        Row<float>("contains box", "cglm"),
        [](CglmBox const& a, CglmBox const& b)
        { return glm_aabb_contains(const_cast<vec3*>(a.corners), const_cast<vec3*>(b.corners)); },
        TELL_NUMBER, boxes, others);
}

/// What a user writes after the papers, with Eigen's vectors.
template <typename T>
class HandWritten
{
    using Types = EigenTypes<T>;
    using Vector = typename Types::Vector;
    using Sphere = typename Types::Sphere;
    using Cloud = std::vector<Vector>;

    static Sphere Ritter(Cloud const& points)
    {
        std::size_t lowest[3] = {};
        std::size_t highest[3] = {};
        for (std::size_t i = 0; i < points.size(); ++i)
            for (int axis = 0; axis < 3; ++axis)
            {
                if (points[i][axis] < points[lowest[axis]][axis])
                    lowest[axis] = i;
                if (points[i][axis] > points[highest[axis]][axis])
                    highest[axis] = i;
            }
        int widest = 0;
        T span = 0;
        for (int axis = 0; axis < 3; ++axis)
            if (T const squared = (points[highest[axis]] - points[lowest[axis]]).squaredNorm(); squared > span)
            {
                span = squared;
                widest = axis;
            }
        Sphere sphere{(points[highest[widest]] + points[lowest[widest]]) * T(0.5), std::sqrt(span) * T(0.5)};
        for (Vector const& point : points)
        {
            Vector const way = point - sphere.centre;
            T const squared = way.squaredNorm();
            if (squared <= sphere.radius * sphere.radius)
                continue;
            T const distance = std::sqrt(squared);
            T const beyond = (distance - sphere.radius) * T(0.5);
            sphere.centre += way * (beyond / distance);
            sphere.radius += beyond;
        }
        return sphere;
    }

    /// Welzl's recursion over a shuffled copy whose points move to the front.
    struct Search
    {
        Cloud points;
        Vector support[4];

        Sphere Around(std::size_t count) const
        {
            if (count == 0)
                return {Vector::Zero(), T(-1)};
            if (count == 1)
                return {support[0], T(0)};
            Eigen::Matrix<double, 3, 3> gram = Eigen::Matrix3d::Identity();
            Eigen::Vector3d right = Eigen::Vector3d::Zero();
            Eigen::Vector3d ways[3];
            for (std::size_t i = 1; i < count; ++i)
                ways[i - 1] = (support[i] - support[0]).template cast<double>();
            for (std::size_t i = 0; i + 1 < count; ++i)
            {
                for (std::size_t k = 0; k + 1 < count; ++k)
                    gram(static_cast<int>(i), static_cast<int>(k)) = 2 * ways[i].dot(ways[k]);
                right[static_cast<int>(i)] = ways[i].squaredNorm();
            }
            Eigen::Vector3d const shares = gram.inverse() * right;
            Eigen::Vector3d centre = Eigen::Vector3d::Zero();
            for (std::size_t i = 0; i + 1 < count; ++i)
                centre += ways[i] * shares[static_cast<int>(i)];
            return {support[0] + centre.template cast<T>(), static_cast<T>(centre.norm())};
        }

        Sphere Find(std::size_t end, std::size_t count)
        {
            Sphere sphere = Around(count);
            if (count == 4)
                return sphere;
            for (std::size_t i = 0; i < end; ++i)
            {
                T const reach = sphere.radius * (T(1) + T(16) * std::numeric_limits<T>::epsilon());
                if (sphere.radius >= 0 && (points[i] - sphere.centre).squaredNorm() <= reach * reach)
                    continue;
                support[count] = points[i];
                sphere = Find(i, count + 1);
                std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(i),
                            points.begin() + static_cast<std::ptrdiff_t>(i) + 1);
            }
            return sphere;
        }
    };

    static Sphere Smallest(Cloud const& points)
    {
        Search search{points, {}};
        std::minstd_rand generator(1);
        std::shuffle(search.points.begin(), search.points.end(), generator);
        return search.Find(points.size(), 0);
    }

public:
    static void Add()
    {
        std::vector<Cloud> clouds;
        for (std::vector<double> const numbers = CloudNumbers(); clouds.size() < CLOUD_COUNT;)
        {
            clouds.emplace_back();
            for (std::size_t i = 0; i < CLOUD; ++i)
                clouds.back().push_back(Types::MakeVector(numbers.data() + 3 * (CLOUD * (clouds.size() - 1) + i)));
        }
        AddMap(
            Row<T>("sphere of 128 points", "hand-written"), [](Cloud const& cloud) { return Ritter(cloud); }, clouds);
        AddAgreedMap(
            Row<T>("smallest sphere of 128 points", "hand-written"), [](Cloud const& cloud) { return Smallest(cloud); },
            [](std::vector<double>& numbers, Sphere const& sphere)
            { numbers.push_back(static_cast<double>(sphere.radius)); },
            clouds);
    }
};

} // namespace

void AddBounds()
{
    AddEigen<float>();
    AddEigen<double>();
    AddImath<float>();
    AddImath<double>();
    AddCglm();
    HandWritten<float>::Add();
    HandWritten<double>::Add();
}

} // namespace bench::peers
