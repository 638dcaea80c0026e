#include <bv/maths/View.h>

#include "Topics.h"
#include "ViewData.h"

namespace bench
{

namespace
{

using namespace bv::maths;

constexpr char const* LIBRARY = "BvBaseUtils";

template <typename T>
tVector3<T> ToVector(double const* v)
{
    return {T(v[0]), T(v[1]), T(v[2])};
}

template <typename T>
std::vector<tVector3<T>> MakeVectors(std::vector<double> const& numbers, std::size_t size, std::size_t first)
{
    return Build(numbers, size, [first](double const* v) { return ToVector<T>(v + first); });
}

template <typename T>
std::vector<tMatrix4<T>> MakeMatrices(std::vector<double> const& numbers)
{
    return Build(numbers, 16,
                 [](double const* m)
                 {
                     T elements[16];
                     for (std::size_t i = 0; i < 16; ++i)
                         elements[i] = static_cast<T>(m[i]);
                     return tMatrix4<T>(elements);
                 });
}

constexpr auto WRITE_MATRIX = [](auto const& matrix, std::vector<double>& numbers)
{
    for (std::size_t i = 0; i < 16; ++i)
        numbers.push_back(matrix[i]);
};
constexpr auto WRITE_OPTIONAL_MATRIX = [](auto const& matrix, std::vector<double>& numbers)
{
    if (matrix)
        WRITE_MATRIX(*matrix, numbers);
};
constexpr auto WRITE_VECTOR = [](auto const& v, std::vector<double>& numbers) {
    numbers.insert(numbers.end(), {v.x, v.y, v.z});
};

template <typename T>
void AddCameras()
{
    auto const arguments = CameraArguments();
    AddAgreeing(
        Name<T>("view/LookAt", LIBRARY),
        [](tVector3<T> const& eye, tVector3<T> const& target, tVector3<T> const& up)
        { return LookAt(eye, target, up); },
        WRITE_MATRIX, MakeVectors<T>(arguments, 9, 0), MakeVectors<T>(arguments, 9, 3),
        MakeVectors<T>(arguments, 9, 6));
    AddAgreeing(
        Name<T>("view/perspective from a field of view", LIBRARY),
        [](LensArgument<T> const& a)
        { return PerspectiveFromFieldOfView<T>(a.angle, a.aspect, a.nearPlane, a.farPlane, DepthRange::ZERO_TO_ONE); },
        WRITE_MATRIX, ManyLenses<T>());
    AddAgreeing(
        Name<T>("view/perspective from a tangent", LIBRARY),
        [](LensArgument<T> const& a)
        { return PerspectiveFromTangent<T>(a.angle, a.aspect, a.nearPlane, a.farPlane, DepthRange::ZERO_TO_ONE); },
        WRITE_MATRIX, ManyLenses<T>());
}

template <typename T>
void AddPixels()
{
    tVector2<T> const size(T{WIDTH}, T{HEIGHT});
    tMatrix4<T> const projection =
        PerspectiveFromTangent<T>(T{TANGENT}, T{WIDTH / HEIGHT}, T{NEAR_PLANE}, T{FAR_PLANE});
    tPixelRays<T> const rays(size, projection, tMatrix4<T>());
    AddAgreeingBy(
        Name<T>("view/ray of a pixel", LIBRARY), rays,
        [](tPixelRays<T> const& all, tVector2<T> const& pixel) { return all(pixel); },
        [](tRay<T> const& ray, std::vector<double>& numbers)
        {
            WRITE_VECTOR(ray.origin, numbers);
            WRITE_VECTOR(ray.direction, numbers);
        },
        Build(PicturePoints(), 2, [](double const* v) { return tVector2<T>(T(v[0]), T(v[1])); }));
    AddAgreeingBy(
        Name<T>("view/pixel of a point", LIBRARY), projection,
        [size](tMatrix4<T> const& matrix, tVector3<T> const& point)
        { return GetPixel(point, matrix, size).value_or(tVector3<T>()); },
        WRITE_VECTOR, MakeVectors<T>(VisiblePoints(), 3, 0));
}

template <typename T>
void AddInverses()
{
    auto const general = MakeMatrices<T>(GeneralMatrices(1));
    AddAgreeing(
        Name<T>("view/inverse if there is one", LIBRARY), [](tMatrix4<T> const& m) { return TryInverted(m); },
        WRITE_OPTIONAL_MATRIX, general);
    AddAgreeing(
        Name<T>("view/normal matrix", LIBRARY), [](tMatrix4<T> const& m) { return GetNormalMatrix(m); },
        WRITE_OPTIONAL_MATRIX, general);
}

template <typename T>
void AddParts()
{
    auto const arguments = PartArguments();
    auto const rotations =
        Build(arguments, 10, [](double const* q) { return tQuaternion<T>(T(q[0]), T(q[1]), T(q[2]), T(q[3])); });
    AddAgreeing(
        Name<T>("view/Compose", LIBRARY),
        [](tVector3<T> const& translation, tQuaternion<T> const& rotation, tVector3<T> const& scale)
        { return Compose(translation, rotation, scale); },
        WRITE_MATRIX, MakeVectors<T>(arguments, 10, 4), rotations, MakeVectors<T>(arguments, 10, 7));
    AddAgreeing(
        Name<T>("view/Decompose", LIBRARY),
        [](tMatrix4<T> const& m) { return Decompose(m).value_or(tMatrixParts<T>()); },
        [](tMatrixParts<T> const& parts, std::vector<double>& numbers)
        {
            WRITE_VECTOR(parts.scale, numbers);
            WRITE_VECTOR(parts.shear, numbers);
        },
        MakeMatrices<T>(AffineMatrices(1)));
}

template <typename T>
void AddAll()
{
    AddCameras<T>();
    AddPixels<T>();
    AddInverses<T>();
    AddParts<T>();
}

} // namespace

void AddView()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench
