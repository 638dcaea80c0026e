#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <Eigen/Dense>
#include <Imath/ImathBox.h>
#include <Imath/ImathBoxAlgo.h>
#include <Imath/ImathFrustum.h>
#include <Imath/ImathFrustumTest.h>
#include <Imath/ImathLine.h>
#include <Imath/ImathMatrix.h>
#include <cglm/cglm.h>

#include "SceneRows.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

/// Affine transforms leave out the fourth row; boxes and rays are tested all axes at once.
template <typename T>
struct EigenOperations
{
    static constexpr char const* NAME = "Eigen";

    using Matrix = Eigen::Matrix<T, 4, 4>;
    using Affine = Eigen::Transform<T, 3, Eigen::Affine>;
    using Vector = Eigen::Matrix<T, 3, 1>;
    using Box = Eigen::AlignedBox<T, 3>;
    using View = std::array<Eigen::Hyperplane<T, 3>, 6>;

    static Matrix makeMatrix(double const* m)
    {
        return Eigen::Map<Eigen::Matrix<double, 4, 4, Eigen::RowMajor> const>(m).template cast<T>();
    }
    static Affine makeAffine(double const* m) { return Affine(makeMatrix(m)); }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static Box makeBox(double const* b) { return Box(makeVector(b), makeVector(b + 3)); }

    static Matrix chain(Matrix const& a, Matrix const& b, Matrix const& c, Matrix const& d) { return a * b * c * d; }

    static Matrix product(Matrix const& a, Matrix const& b) { return a * b; }
    static Matrix inverse(Matrix const& m) { return m.inverse(); }
    static View view(Matrix const& combined)
    {
        View planes;
        for (int axis = 0; axis < 3; ++axis)
        {
            planes[2 * axis].coeffs() = (combined.row(3) + combined.row(axis)).transpose();
            planes[2 * axis + 1].coeffs() = (combined.row(3) - combined.row(axis)).transpose();
        }
        for (Eigen::Hyperplane<T, 3>& plane : planes)
            plane.normalize();
        return planes;
    }

    static Affine composed(Affine const& parent, Affine const& local) { return parent * local; }
    static Affine inverted(Affine const& m) { return m.inverse(); }
    static Box moved(Box const& box, Affine const& m)
    {
        Vector const centre = m * box.center();
        Vector const half = m.linear().cwiseAbs() * (box.sizes() / 2);
        return Box(centre - half, centre + half);
    }
    static View mainView() { return view(makeMatrix(MainView().projection.data())); }
    static std::size_t cull(View const& view, std::vector<Box> const& boxes, std::uint32_t* visible)
    {
        return ListVisible(boxes, visible,
                           [&](Box const& box)
                           {
                               Vector const centre = box.center();
                               Vector const half = box.sizes() / 2;
                               for (Eigen::Hyperplane<T, 3> const& plane : view)
                                   if (plane.signedDistance(centre) + plane.normal().cwiseAbs().dot(half) < 0)
                                       return false;
                               return true;
                           });
    }

    static Vector skinned(Affine const* bones, Influences<T> const& influences, Vector const& point)
    {
        Vector sum = Vector::Zero();
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
            sum += (bones[influences.bones[i]] * point) * influences.weights[i];
        return sum;
    }

    static Vector normalised(Vector const& v) { return v.normalized(); }
    static T enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        Eigen::Array<T, 3, 1> const reciprocal = direction.cwiseInverse();
        Eigen::Array<T, 3, 1> const low = (box.min() - origin).array() * reciprocal;
        Eigen::Array<T, 3, 1> const high = (box.max() - origin).array() * reciprocal;
        T const tNear = std::max(T{0}, low.min(high).maxCoeff());
        T const tFar = low.max(high).minCoeff();
        return tNear <= tFar ? tNear : T{-1};
    }

    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 16; ++i)
            numbers.push_back(static_cast<double>(m(i / 4, i % 4)));
    }
    static void append(std::vector<double>& numbers, Affine const& m) { append(numbers, m.matrix()); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        for (int i = 0; i < 3; ++i)
            numbers.push_back(static_cast<double>(v[i]));
    }
    static void append(std::vector<double>& numbers, Box const& box)
    {
        append(numbers, box.min());
        append(numbers, box.max());
    }
    static void append(std::vector<double>& numbers, View const& view)
    {
        for (Eigen::Hyperplane<T, 3> const& plane : view)
            for (int i = 0; i < 4; ++i)
                numbers.push_back(static_cast<double>(plane.coeffs()[i]));
    }
};

/// Imath multiplies rows from the left: every matrix is the transpose of ours, and the operands change sides.
template <typename T>
struct ImathOperations
{
    static constexpr char const* NAME = "Imath";

    using Matrix = Imath::Matrix44<T>;
    using Affine = Matrix;
    using Vector = Imath::Vec3<T>;
    using Box = Imath::Box<Vector>;
    /// The planes of a matrix; its own frustum has those of a camera and the sides of its view.
    using View = std::array<Imath::Plane3<T>, 6>;

    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix[i % 4][i / 4] = static_cast<T>(m[i]);
        return matrix;
    }
    static Affine makeAffine(double const* m) { return makeMatrix(m); }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static Box makeBox(double const* b) { return Box(makeVector(b), makeVector(b + 3)); }

    static Matrix chain(Matrix const& a, Matrix const& b, Matrix const& c, Matrix const& d) { return d * c * b * a; }

    static Matrix product(Matrix const& a, Matrix const& b) { return b * a; }
    static Matrix inverse(Matrix const& m) { return m.inverse(); }
    static View view(Matrix const& combined)
    {
        View planes;
        for (int axis = 0; axis < 3; ++axis)
        {
            planes[static_cast<std::size_t>(2 * axis)] = MakePlane(combined, axis, T{1});
            planes[static_cast<std::size_t>(2 * axis + 1)] = MakePlane(combined, axis, T{-1});
        }
        return planes;
    }

    static Affine composed(Affine const& parent, Affine const& local) { return local * parent; }
    static Affine inverted(Affine const& m) { return m.inverse(); }
    static Box moved(Box const& box, Affine const& m) { return Imath::affineTransform(box, m); }
    static Imath::FrustumTest<T> mainView()
    {
        return Imath::FrustumTest<T>(
            Imath::Frustum<T>(static_cast<T>(bench::View::NEAR_PLANE), static_cast<T>(bench::View::FAR_PLANE),
                              static_cast<T>(-bench::View::RIGHT), static_cast<T>(bench::View::RIGHT),
                              static_cast<T>(bench::View::TOP), static_cast<T>(-bench::View::TOP)),
            makeMatrix(MainView().camera.data()));
    }
    static std::size_t cull(Imath::FrustumTest<T> const& test, std::vector<Box> const& boxes, std::uint32_t* visible)
    {
        return ListVisible(boxes, visible, [&](Box const& box) { return test.isVisible(box); });
    }

    static Vector skinned(Affine const* bones, Influences<T> const& influences, Vector const& point)
    {
        Vector sum(0);
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
        {
            Affine const& bone = bones[influences.bones[i]];
            Vector turned;
            bone.multDirMatrix(point, turned);
            sum += (turned + Vector(bone[3][0], bone[3][1], bone[3][2])) * influences.weights[i];
        }
        return sum;
    }

    static Vector normalised(Vector const& v) { return v.normalized(); }
    static T enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        Imath::Line3<T> line; // its constructor takes two points
        line.pos = origin;
        line.dir = direction;
        Vector entry;
        return Imath::intersects(box, line, entry) ? (entry - origin).dot(direction) : T{-1};
    }

    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 16; ++i)
            numbers.push_back(static_cast<double>(m[i % 4][i / 4]));
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        for (int i = 0; i < 3; ++i)
            numbers.push_back(static_cast<double>(v[i]));
    }
    static void append(std::vector<double>& numbers, Box const& box)
    {
        append(numbers, box.min);
        append(numbers, box.max);
    }
    static void append(std::vector<double>& numbers, View const& view)
    {
        for (Imath::Plane3<T> const& plane : view)
        {
            append(numbers, plane.normal);
            numbers.push_back(static_cast<double>(-plane.distance)); // its planes lie at normal * point = distance
        }
    }

private:
    static Imath::Plane3<T> MakePlane(Matrix const& combined, int axis, T sign)
    {
        Vector const normal(combined[0][3] + sign * combined[0][axis], combined[1][3] + sign * combined[1][axis],
                            combined[2][3] + sign * combined[2][axis]);
        T const reciprocal = 1 / normal.length();
        Imath::Plane3<T> plane;
        plane.normal = normal * reciprocal;
        plane.distance = -(combined[3][3] + sign * combined[3][axis]) * reciprocal;
        return plane;
    }
};

/// cglm's functions take their operands as arrays that are not constant.
struct CglmOperations
{
    static constexpr char const* NAME = "cglm";

    struct Matrix
    {
        mat4 m;

        vec4* Get() const { return const_cast<vec4*>(m); }
    };
    using Affine = Matrix;
    struct Vector
    {
        vec3 v;

        float* Get() const { return const_cast<float*>(v); }

        friend Vector operator+(Vector const& a, Vector const& b)
        {
            Vector sum;
            glm_vec3_add(a.Get(), b.Get(), sum.v);
            return sum;
        }
        friend Vector operator*(Vector const& v, float factor)
        {
            Vector product;
            glm_vec3_scale(v.Get(), factor, product.v);
            return product;
        }
    };
    struct Box
    {
        vec3 corners[2];

        vec3* Get() const { return const_cast<vec3*>(corners); }
    };
    struct View
    {
        vec4 planes[6];
    };

    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix.m[i % 4][i / 4] = static_cast<float>(m[i]);
        return matrix;
    }
    static Affine makeAffine(double const* m) { return makeMatrix(m); }
    static Vector makeVector(double const* v)
    {
        return {{static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])}};
    }
    static Box makeBox(double const* b)
    {
        Box box;
        for (int i = 0; i < 6; ++i)
            box.corners[i / 3][i % 3] = static_cast<float>(b[i]);
        return box;
    }

    static Matrix chain(Matrix const& a, Matrix const& b, Matrix const& c, Matrix const& d)
    {
        return product(product(product(a, b), c), d);
    }

    static Matrix product(Matrix const& a, Matrix const& b)
    {
        Matrix result;
        glm_mat4_mul(a.Get(), b.Get(), result.m);
        return result;
    }
    static Matrix inverse(Matrix const& m)
    {
        Matrix result;
        glm_mat4_inv(m.Get(), result.m);
        return result;
    }
    static View view(Matrix const& combined)
    {
        View result;
        glm_frustum_planes(combined.Get(), result.planes);
        return result;
    }

    static Affine composed(Affine const& parent, Affine const& local)
    {
        Affine result;
        glm_mul(parent.Get(), local.Get(), result.m);
        return result;
    }
    static Affine inverted(Affine const& m) { return inverse(m); } // its own inverse of a transform takes no scale
    static Box moved(Box const& box, Affine const& m)
    {
        Box result;
        glm_aabb_transform(box.Get(), m.Get(), result.corners);
        return result;
    }
    static View mainView() { return view(makeMatrix(MainView().projection.data())); }
    static std::size_t cull(View const& view, std::vector<Box> const& boxes, std::uint32_t* visible)
    {
        return ListVisible(boxes, visible,
                           [&](Box const& box) { return glm_aabb_frustum(box.Get(), const_cast<vec4*>(view.planes)); });
    }

    static Vector skinned(Affine const* bones, Influences<float> const& influences, Vector const& point)
    {
        vec4 sum = GLM_VEC4_ZERO_INIT;
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
        {
            vec4* const columns = bones[influences.bones[i]].Get();
            float const weight = influences.weights[i];
            glm_vec4_muladds(columns[0], point.v[0] * weight, sum);
            glm_vec4_muladds(columns[1], point.v[1] * weight, sum);
            glm_vec4_muladds(columns[2], point.v[2] * weight, sum);
            glm_vec4_muladds(columns[3], weight, sum);
        }
        Vector result;
        glm_vec3(sum, result.v);
        return result;
    }

    static Vector normalised(Vector const& v)
    {
        Vector result;
        glm_vec3_normalize_to(v.Get(), result.v);
        return result;
    }
    static float enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        Vector low;
        Vector high;
        glm_vec3_sub(box.Get()[0], origin.Get(), low.v);
        glm_vec3_sub(box.Get()[1], origin.Get(), high.v);
        glm_vec3_div(low.v, direction.Get(), low.v);
        glm_vec3_div(high.v, direction.Get(), high.v);
        Vector first;
        Vector last;
        glm_vec3_minv(low.v, high.v, first.v);
        glm_vec3_maxv(low.v, high.v, last.v);
        float const tNear = glm_max(0, glm_vec3_max(first.v));
        return tNear <= glm_vec3_min(last.v) ? tNear : -1.0F;
    }

    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 16; ++i)
            numbers.push_back(static_cast<double>(m.m[i % 4][i / 4]));
    }
    static void append(std::vector<double>& numbers, Vector const& v) { numbers.insert(numbers.end(), v.v, v.v + 3); }
    static void append(std::vector<double>& numbers, Box const& box)
    {
        for (auto const& corner : box.corners)
            numbers.insert(numbers.end(), corner, corner + 3);
    }
    static void append(std::vector<double>& numbers, View const& view)
    {
        for (auto const& plane : view.planes)
            numbers.insert(numbers.end(), plane, plane + 4);
    }
};

/// The arithmetic itself: three rows of four numbers, and a box as two corners.
template <typename T>
struct HandWritten
{
    static constexpr char const* NAME = "hand-written";

    struct Affine
    {
        T m[3][4];
    };
    struct Vector
    {
        T x, y, z;

        friend Vector operator+(Vector const& a, Vector const& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
        friend Vector operator*(Vector const& v, T factor) { return {v.x * factor, v.y * factor, v.z * factor}; }
    };
    struct Box
    {
        Vector lower, upper;
    };

    static Affine makeAffine(double const* m)
    {
        Affine affine;
        for (int i = 0; i < 12; ++i)
            affine.m[i / 4][i % 4] = static_cast<T>(m[i]);
        return affine;
    }
    static Vector makeVector(double const* v)
    {
        return {static_cast<T>(v[0]), static_cast<T>(v[1]), static_cast<T>(v[2])};
    }
    static Box makeBox(double const* b) { return {makeVector(b), makeVector(b + 3)}; }

    /// The bones are blended first, and the vertex is moved once.
    static Vector skinned(Affine const* bones, Influences<T> const& influences, Vector const& point)
    {
        T blend[12] = {};
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
        {
            T const* const bone = bones[influences.bones[i]].m[0];
            for (std::size_t j = 0; j < 12; ++j)
                blend[j] += bone[j] * influences.weights[i];
        }
        return {blend[0] * point.x + blend[1] * point.y + blend[2] * point.z + blend[3],
                blend[4] * point.x + blend[5] * point.y + blend[6] * point.z + blend[7],
                blend[8] * point.x + blend[9] * point.y + blend[10] * point.z + blend[11]};
    }

    static Vector normalised(Vector const& v) { return v * (1 / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z)); }
    static T enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        T tNear = 0;
        T tFar = 1000;
        Narrow(origin.x, 1 / direction.x, box.lower.x, box.upper.x, tNear, tFar);
        Narrow(origin.y, 1 / direction.y, box.lower.y, box.upper.y, tNear, tFar);
        Narrow(origin.z, 1 / direction.z, box.lower.z, box.upper.z, tNear, tFar);
        return tNear <= tFar ? tNear : T{-1};
    }

    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)});
    }

private:
    static void Narrow(T origin, T reciprocal, T lower, T upper, T& tNear, T& tFar)
    {
        T const a = (lower - origin) * reciprocal;
        T const b = (upper - origin) * reciprocal;
        tNear = std::max(tNear, std::min(a, b));
        tFar = std::min(tFar, std::max(a, b));
    }
};

} // namespace

void AddScene()
{
    AddSceneRows<float, EigenOperations<float>>();
    AddSceneRows<double, EigenOperations<double>>();
    AddSceneRows<float, ImathOperations<float>>();
    AddSceneRows<double, ImathOperations<double>>();
    AddSceneRows<float, CglmOperations>();
    AddSceneRows<float, HandWritten<float>>();
    AddSceneRows<double, HandWritten<double>>();
}

} // namespace bench::peers
