// GLM as it comes. GlmIntrinsics.cpp compiles this file once more, with GLM's namespace renamed, so that both forms of
// its inline functions stand side by side in one program.
#ifdef BENCH_GLM_INTRINSICS
#define GLM_FORCE_INTRINSICS
#define GLM_FORCE_DEFAULT_ALIGNED_GENTYPES
#define glm glm_with_intrinsics
#define BENCH_GLM glm_intrinsics
#else
#define BENCH_GLM glm_plain
#endif
#define GLM_ENABLE_EXPERIMENTAL

#include <glm/ext/matrix_clip_space.hpp>
#include <glm/ext/matrix_relational.hpp>
#include <glm/ext/matrix_transform.hpp>
#include <glm/ext/scalar_relational.hpp>
#include <glm/glm.hpp>
#include <glm/gtc/epsilon.hpp>
#include <glm/gtc/round.hpp>
#include <glm/gtx/integer.hpp>

#include "MatrixData.h"

#include "ScalarData.h"
#include "Topics.h"
#include <limits>

namespace bench::BENCH_GLM
{

#ifdef BENCH_GLM_INTRINSICS
constexpr char const* LIBRARY = "GLM (intrinsics)";
#else
constexpr char const* LIBRARY = "GLM";
#endif

} // namespace bench::BENCH_GLM

#include "GlmQuaternion.h"
#include "GlmScene.h"
#include "GlmVectors.h"

namespace bench::BENCH_GLM
{

namespace
{

template <typename T>
using Matrix = glm::mat<4, 4, T>;
template <typename T>
using Matrix3 = glm::mat<3, 3, T>;
template <typename T>
using Vector3 = glm::vec<3, T>;
template <typename T>
using Vector4 = glm::vec<4, T>;

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
std::vector<Vector3<T>> MakeVectors(std::vector<double> const& numbers)
{
    return Build(numbers, 3, [](double const* v) { return Vector3<T>(T(v[0]), T(v[1]), T(v[2])); });
}

template <typename T>
void AddMatrices()
{
    auto const product = [](Matrix<T> const& a, Matrix<T> const& b) { return a * b; };
    auto const general = Make<T>(GeneralMatrices(1));
    auto const identities = Make<T>(IdentityMatrices());
    auto const diagonals = Make<T>(DiagonalMatrices(3));
    auto const rotations = Make<T>(RotationMatrices(4));

    AddMap(Name<T>("matrix/product general", LIBRARY), product, general, Make<T>(GeneralMatrices(2)));
    AddMap(Name<T>("matrix/product identity left", LIBRARY), product, identities, general);
    AddMap(Name<T>("matrix/product identity right", LIBRARY), product, general, identities);
    AddMap(
        Name<T>("matrix/product diagonal left", LIBRARY),
        [](Matrix<T> const& d, Matrix<T> const& m)
        {
            Vector4<T> const diagonal(d[0][0], d[1][1], d[2][2], d[3][3]);
            return Matrix<T>(m[0] * diagonal, m[1] * diagonal, m[2] * diagonal, m[3] * diagonal);
        },
        diagonals, general);
    AddMap(
        Name<T>("matrix/product diagonal right", LIBRARY),
        [](Matrix<T> const& m, Matrix<T> const& d)
        { return Matrix<T>(m[0] * d[0][0], m[1] * d[1][1], m[2] * d[2][2], m[3] * d[3][3]); },
        general, diagonals);
    AddMap(Name<T>("matrix/product rotation left", LIBRARY), product, rotations, general);
    AddMap(Name<T>("matrix/product rotation right", LIBRARY), product, general, rotations);
    AddMap(Name<T>("matrix/product rotations", LIBRARY), product, rotations, Make<T>(RotationMatrices(5)));
    AddMap(
        Name<T>("matrix/product by a translation", LIBRARY),
        [](Matrix<T> const& m, Vector3<T> const& offset) { return glm::translate(m, offset); }, general,
        MakeVectors<T>(Offsets()));
    AddUpdate(
        Name<T>("matrix/product in place", LIBRARY), [](Matrix<T>& a, Matrix<T> const& b) { a *= b; }, general,
        Make<T>(ReflectionMatrices(6)));

    AddMap(
        Name<T>("matrix/inverse general", LIBRARY), [](Matrix<T> const& m) { return glm::inverse(m); }, general);
    AddMap(
        Name<T>("matrix/inverse rotation", LIBRARY), [](Matrix<T> const& m) { return glm::transpose(m); }, rotations);
    AddMap(
        Name<T>("matrix/inverse diagonal", LIBRARY),
        [](Matrix<T> const& m)
        {
            Matrix<T> result(0);
            for (int i = 0; i < 4; ++i)
                result[i][i] = 1 / m[i][i];
            return result;
        },
        diagonals);
    AddMap(
        Name<T>("matrix/transpose", LIBRARY), [](Matrix<T> const& m) { return glm::transpose(m); }, general);
    AddUpdate(
        Name<T>("matrix/transpose in place", LIBRARY), [](Matrix<T>& m) { m = glm::transpose(m); }, general);
    AddMap(
        Name<T>("matrix/determinant", LIBRARY), [](Matrix<T> const& m) { return glm::determinant(m); }, general);
    auto const equal = [](Matrix<T> const& a, Matrix<T> const& b) { return glm::all(glm::equal(a, b, T(1e-6))); };
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
            Vector3<T> const point(r.point[0], r.point[1], r.point[2]);
            Vector3<T> const direction(r.direction[0], r.direction[1], r.direction[2]);
            Matrix<T> result = glm::rotate(Matrix<T>(1), r.angle, direction);
            result[3] = Vector4<T>(point - Matrix3<T>(result) * point, T(1));
            return result;
        },
        Build(RotationArguments(), 7, [](double const* r) { return RotationArgument<T>(r); }));
    AddMap(
        Name<T>("matrix/PerspectiveProjection", LIBRARY),
        [](ProjectionArgument<T> const& p)
        { return glm::frustumRH_NO(p.left, p.right, p.bottom, p.top, p.nearPlane, p.farPlane); },
        Build(ProjectionArguments(), 6, [](double const* p) { return ProjectionArgument<T>(p); }));
}

/// Rows of one matrix over an array, and of as many matrices as vectors.
template <typename T, typename Transform>
void AddBoth(std::string const& operation, Transform transform, std::vector<Matrix<T>> const& matrices,
             std::vector<Vector3<T>> const& vectors)
{
    AddMap(
        Name<T>("transform/" + operation + ", one matrix", LIBRARY),
        [matrix = matrices[0], transform](Vector3<T> const& v) { return transform(matrix, v); }, vectors);
    AddMapBy(Name<T>("transform/" + operation + ", one matrix, prepared", LIBRARY), matrices[0], transform, vectors);
    AddMap(Name<T>("transform/" + operation + ", many matrices", LIBRARY), transform, matrices,
           std::vector<Vector3<T>>(vectors.begin(), vectors.begin() + MATRIX_COUNT));
}

template <typename T>
void AddTransforms()
{
    auto const projected = [](Matrix<T> const& m, Vector3<T> const& v)
    {
        Vector4<T> const h = m * Vector4<T>(v, T(1));
        return Vector3<T>(h) * (1 / h.w);
    };
    auto const moved = [](Matrix<T> const& m, Vector3<T> const& v) { return Vector3<T>(m * Vector4<T>(v, T(1))); };
    auto const turned = [](Matrix<T> const& m, Vector3<T> const& v) { return Matrix3<T>(m) * v; };
    auto const turnedUnit = [](Matrix<T> const& m, Vector3<T> const& v) { return glm::normalize(Matrix3<T>(m) * v); };
    auto const points = MakeVectors<T>(Vectors(11, COUNT));
    auto const rotations = Make<T>(RotationMatrices(4));
    auto const affine = Make<T>(AffineMatrices(1));

    AddBoth<T>("point with division", projected, Make<T>(GeneralMatrices(1)), points);
    AddBoth<T>("point affine", moved, affine, points);
    AddBoth<T>("direction", turned, affine, points);
    AddBoth<T>("direction rotated", turned, rotations, points);
    AddBoth<T>("unit direction rotated", turnedUnit, rotations, MakeVectors<T>(UnitVectors(12, COUNT)));

    auto const a = MakeVectors<T>(Vectors(13, COUNT));
    auto const b = MakeVectors<T>(Vectors(14, COUNT));
    AddMap(
        Name<T>("vector/dot", LIBRARY), [](Vector3<T> const& v, Vector3<T> const& w) { return glm::dot(v, w); }, a, b);
    AddMap(
        Name<T>("vector/cross", LIBRARY), [](Vector3<T> const& v, Vector3<T> const& w) { return glm::cross(v, w); }, a,
        b);
    AddMap(
        Name<T>("vector/normalise", LIBRARY), [](Vector3<T> const& v) { return glm::normalize(v); }, a);
    AddMap(
        Name<T>("vector/index", LIBRARY), [](Vector3<T> const& v, unsigned int i) { return v[static_cast<int>(i)]; }, a,
        Indices());
}

template <typename T, typename Equal>
void AddComparison(std::string const& library, Equal equal)
{
    for (auto const& [kind, text] : PAIRS)
    {
        auto const [a, b] = MakePairs<T>(kind);
        AddMap(Name<T>(std::string("scalar/IsEqual, ") + text, library), equal, a, b);
        AddFold(
            Name<T>(std::string("scalar/count IsEqual, ") + text, library), std::size_t{0},
            [=](std::size_t count, T x, T y) { return equal(x, y) ? count + 1 : count; }, a, b);
    }
}

template <typename T>
void AddScalars()
{
    AddComparison<T>(std::string(LIBRARY) + " epsilon",
                     [](T a, T b) { return glm::epsilonEqual(a, b, 10 * std::numeric_limits<T>::epsilon()); });
    AddComparison<T>(std::string(LIBRARY) + " ULPs", [](T a, T b) { return glm::equal(a, b, 50); });

    StepArguments<T> const steps;
    AddMap(
        Name<T>("scalar/CubicSmoothStep", LIBRARY), [](T low, T high, T x) { return glm::smoothstep(low, high, x); },
        steps.low, steps.high, steps.value);
}

} // namespace

void Add()
{
    AddMatrices<float>();
    AddMatrices<double>();
    AddTransforms<float>();
    AddTransforms<double>();
    AddScalars<float>();
    AddScalars<double>();
    AddQuaternionRows<float, QuaternionOperations<float>>();
    AddQuaternionRows<double, QuaternionOperations<double>>();
    AddSceneRows<float, SceneOperations<float>>();
    AddSceneRows<double, SceneOperations<double>>();
    AddComponentwiseRows<float, VectorOperations<float>>();
    AddComponentwiseRows<double, VectorOperations<double>>();
    AddDirectionRows<float, VectorOperations<float>>();
    AddDirectionRows<double, VectorOperations<double>>();

    auto const integers = Integers();
    auto const name = [](char const* operation) { return std::string(operation) + "/integer/" + LIBRARY; };
    AddMap(
        name("scalar/IntSqrt"), [](unsigned int value) { return glm::sqrt(value); }, integers);
    AddMap(
        name("scalar/RoundUpToPO2"), [](unsigned int value) { return glm::ceilPowerOfTwo(value); }, integers);
    AddMap(
        name("scalar/RoundToNearestPO2"), [](unsigned int value) { return glm::roundPowerOfTwo(value); }, integers);
}

} // namespace bench::BENCH_GLM
