#include <Eigen/Dense>
#include <Imath/ImathMatrix.h>
#include <LinearMath/btTransform.h>
#include <cglm/cglm.h>

#include "MatrixData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

/// Rows of one matrix over an array, and of as many matrices as vectors.
template <typename T, typename Matrix, typename Vector, typename Transform>
void AddBoth(std::string const& operation, char const* library, Transform transform,
             std::vector<Matrix> const& matrices, std::vector<Vector> const& vectors)
{
    AddMap(
        Name<T>("transform/" + operation + ", one matrix", library),
        [matrix = matrices[0], transform](Vector const& v) { return transform(matrix, v); }, vectors);
    AddMapBy(Name<T>("transform/" + operation + ", one matrix, prepared", library), matrices[0], transform, vectors);
    AddMap(Name<T>("transform/" + operation + ", many matrices", library), transform, matrices,
           std::vector<Vector>(vectors.begin(), vectors.begin() + MATRIX_COUNT));
}

/// The rows of one library: how it makes its types, and what a user writes for each row.
template <typename T, typename Library>
void AddTransforms(Library const& library)
{
    constexpr char const* name = Library::NAME;
    auto const points = Build(Vectors(11, COUNT), 3, library.makeVector);
    auto const units = Build(UnitVectors(12, COUNT), 3, library.makeVector);
    auto const rotations = Build(RotationMatrices(4), 16, library.makeAffine);
    auto const affine = Build(AffineMatrices(1), 16, library.makeAffine);
    if constexpr (Library::HAS_PROJECTIVE)
        AddBoth<T>("point with division", name, library.projected, Build(GeneralMatrices(1), 16, library.makeGeneral),
                   points);
    AddBoth<T>("point affine", name, library.moved, affine, points);
    AddBoth<T>("direction", name, library.turned, affine, points);
    AddBoth<T>("direction rotated", name, library.turned, rotations, points);
    AddBoth<T>("unit direction rotated", name, library.turnedUnit, rotations, units);

    auto const a = Build(Vectors(13, COUNT), 3, library.makeVector);
    auto const b = Build(Vectors(14, COUNT), 3, library.makeVector);
    AddMap(Name<T>("vector/dot", name), library.dot, a, b);
    AddMap(Name<T>("vector/cross", name), library.cross, a, b);
    AddMap(Name<T>("vector/normalise", name), library.normalised, a);
    AddMap(Name<T>("vector/index", name), library.component, a, Indices());
}

template <typename T>
struct EigenRows
{
    static constexpr char const* NAME = "Eigen";
    static constexpr bool HAS_PROJECTIVE = true;

    using Matrix = Eigen::Matrix<T, 4, 4>;
    using Affine = Eigen::Transform<T, 3, Eigen::Affine>;
    using Vector = Eigen::Matrix<T, 3, 1>;

    static Matrix makeGeneral(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix(i / 4, i % 4) = static_cast<T>(m[i]);
        return matrix;
    }
    static Affine makeAffine(double const* m) { return Affine(makeGeneral(m)); }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }

    static constexpr auto projected = [](Matrix const& m, Vector const& v) -> Vector
    { return (m * v.homogeneous()).hnormalized(); };
    static constexpr auto moved = [](Affine const& m, Vector const& v) -> Vector { return m * v; };
    static constexpr auto turned = [](Affine const& m, Vector const& v) -> Vector { return m.linear() * v; };
    static constexpr auto turnedUnit = [](Affine const& m, Vector const& v) -> Vector
    { return (m.linear() * v).normalized(); };
    static constexpr auto dot = [](Vector const& v, Vector const& w) { return v.dot(w); };
    static constexpr auto cross = [](Vector const& v, Vector const& w) -> Vector { return v.cross(w); };
    static constexpr auto normalised = [](Vector const& v) -> Vector { return v.normalized(); };
    static constexpr auto component = [](Vector const& v, unsigned int i) { return v[i]; };
};

/// Imath multiplies rows from the left: every matrix is the transpose of ours.
template <typename T>
struct ImathRows
{
    static constexpr char const* NAME = "Imath";
    static constexpr bool HAS_PROJECTIVE = true;

    using Matrix = Imath::Matrix44<T>;
    using Vector = Imath::Vec3<T>;

    static Matrix makeGeneral(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix[i % 4][i / 4] = static_cast<T>(m[i]);
        return matrix;
    }
    static Matrix makeAffine(double const* m) { return makeGeneral(m); }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }

    static constexpr auto projected = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        m.multVecMatrix(v, result);
        return result;
    };
    static constexpr auto moved = [](Matrix const& m, Vector const& v)
    {
        Vector turned;
        m.multDirMatrix(v, turned);
        return turned + Vector(m[3][0], m[3][1], m[3][2]);
    };
    static constexpr auto turned = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        m.multDirMatrix(v, result);
        return result;
    };
    static constexpr auto turnedUnit = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        m.multDirMatrix(v, result);
        return result.normalized();
    };
    static constexpr auto dot = [](Vector const& v, Vector const& w) { return v.dot(w); };
    static constexpr auto cross = [](Vector const& v, Vector const& w) { return v.cross(w); };
    static constexpr auto normalised = [](Vector const& v) { return v.normalized(); };
    static constexpr auto component = [](Vector const& v, unsigned int i) { return v[static_cast<int>(i)]; };
};

/// cglm's functions take their operands as arrays that are not constant.
struct CglmRows
{
    static constexpr char const* NAME = "cglm";
    static constexpr bool HAS_PROJECTIVE = true;

    struct Matrix
    {
        mat4 m;

        vec4* Get() const { return const_cast<vec4*>(m); }
    };
    struct Vector
    {
        vec3 v;

        float* Get() const { return const_cast<float*>(v); }
    };

    static Matrix makeGeneral(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix.m[i % 4][i / 4] = static_cast<float>(m[i]);
        return matrix;
    }
    static Matrix makeAffine(double const* m) { return makeGeneral(m); }
    static Vector makeVector(double const* v)
    {
        return {{static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])}};
    }

    static constexpr auto projected = [](Matrix const& m, Vector const& v)
    {
        vec4 homogeneous;
        glm_vec4(v.Get(), 1, homogeneous);
        glm_mat4_mulv(m.Get(), homogeneous, homogeneous);
        Vector result;
        glm_vec3_scale(homogeneous, 1 / homogeneous[3], result.v);
        return result;
    };
    static constexpr auto moved = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        glm_mat4_mulv3(m.Get(), v.Get(), 1, result.v);
        return result;
    };
    static constexpr auto turned = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        glm_mat4_mulv3(m.Get(), v.Get(), 0, result.v);
        return result;
    };
    static constexpr auto turnedUnit = [](Matrix const& m, Vector const& v)
    {
        Vector result;
        glm_mat4_mulv3(m.Get(), v.Get(), 0, result.v);
        glm_vec3_normalize(result.v);
        return result;
    };
    static constexpr auto dot = [](Vector const& v, Vector const& w) { return glm_vec3_dot(v.Get(), w.Get()); };
    static constexpr auto cross = [](Vector const& v, Vector const& w)
    {
        Vector result;
        glm_vec3_cross(v.Get(), w.Get(), result.v);
        return result;
    };
    static constexpr auto normalised = [](Vector const& v)
    {
        Vector result;
        glm_vec3_normalize_to(v.Get(), result.v);
        return result;
    };
    static constexpr auto component = [](Vector const& v, unsigned int i) { return v.v[i]; };
};

/// Bullet has no projective matrix: a 3x3 matrix and an offset, in single precision.
struct BulletRows
{
    static constexpr char const* NAME = "Bullet";
    static constexpr bool HAS_PROJECTIVE = false;

    using Vector = btVector3;

    static btTransform makeAffine(double const* numbers)
    {
        btScalar m[16];
        for (int i = 0; i < 16; ++i)
            m[i] = static_cast<btScalar>(numbers[i]);
        return btTransform(btMatrix3x3(m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10]),
                           btVector3(m[3], m[7], m[11]));
    }
    static Vector makeVector(double const* v) { return Vector(btScalar(v[0]), btScalar(v[1]), btScalar(v[2])); }

    static constexpr auto moved = [](btTransform const& m, Vector const& v) { return m * v; };
    static constexpr auto turned = [](btTransform const& m, Vector const& v) { return m.getBasis() * v; };
    static constexpr auto turnedUnit = [](btTransform const& m, Vector const& v)
    { return (m.getBasis() * v).normalized(); };
    static constexpr auto dot = [](Vector const& v, Vector const& w) { return v.dot(w); };
    static constexpr auto cross = [](Vector const& v, Vector const& w) { return v.cross(w); };
    static constexpr auto normalised = [](Vector const& v) { return v.normalized(); };
    static constexpr auto component = [](Vector const& v, unsigned int i) { return v[static_cast<int>(i)]; };
};

} // namespace

void AddTransform()
{
    AddTransforms<float>(EigenRows<float>());
    AddTransforms<double>(EigenRows<double>());
    AddTransforms<float>(ImathRows<float>());
    AddTransforms<double>(ImathRows<double>());
    AddTransforms<float>(CglmRows());
    AddTransforms<float>(BulletRows());
}

} // namespace bench::peers
