#include <array>
#include <string>
#include <vector>

#include "bv/maths/Visibility.h"
#include "bv/maths/tMatrix4.h"

#include "BoundsData.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
void AddPrecision()
{
    using Box = bv::maths::tOrientedBox<T>;
    using Frustum = bv::maths::tFrustum<T>;
    using Matrix = bv::maths::tMatrix4<T>;
    using Sphere = bv::maths::tVolumeSphere<T>;
    using Vector = bv::maths::tVector3<T>;
    auto const name = [](char const* operation)
    { return Name<T>(std::string("visibility/") + operation, "BvBaseUtils"); };
    auto const makeVector = [](double const* n)
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    Frustum const frustum{Matrix(MainView().projection.data())};

    AddAgreedMapBy(
        name("sees points"), frustum, [](Frustum const& frustum, Vector const& point) __attribute__((always_inline)) {
            return Classify(frustum, point) != Frustum::OUTSIDE;
        },
        TELL_NUMBER, Build(ScenePoints(), 3, makeVector));
    std::vector<Sphere> const spheres = Build(SceneSpheres(), 4,
                                              [&](double const* n)
                                              {
                                                  Sphere sphere(makeVector(n));
                                                  sphere.SetRadius(static_cast<T>(n[3]));
                                                  return sphere;
                                              });
    AddAgreedMapBy(
        name("sees spheres"), frustum, [](Frustum const& frustum, Sphere const& sphere) __attribute__((always_inline)) {
            return Classify(frustum, sphere) != Frustum::OUTSIDE;
        },
        TELL_NUMBER, spheres);
    AddAgreedMapBy(
        name("classifies spheres"), frustum,
        [](Frustum const& frustum, Sphere const& sphere)
            __attribute__((always_inline)) { return Classify(frustum, sphere); },
        TELL_NUMBER, spheres);
    AddAgreedMapBy(
        name("classifies turned boxes"), frustum,
        [](Frustum const& frustum, Box const& box) __attribute__((always_inline)) { return Classify(frustum, box); },
        TELL_NUMBER,
        Build(TurnedBoxes(), 15,
              [&](double const* n) {
                  return Box(makeVector(n), makeVector(n + 3), makeVector(n + 6), makeVector(n + 9),
                             makeVector(n + 12));
              }));
    std::vector<Matrix> matrices;
    for (View const& view : ManyViews())
        matrices.emplace_back(view.projection.data());
    AddAgreedMap(
        name("corners of a view"),
        [](Matrix const& matrix)
        {
            std::array<Vector, 8> corners;
            Vector all[8];
            GetCorners(Frustum(matrix), all);
            for (std::size_t i = 0; i < 8; ++i)
                corners[i] = all[i];
            return corners;
        },
        [](std::vector<double>& numbers, std::array<Vector, 8> const& corners)
        {
            for (Vector const& corner : corners)
                TELL_VECTOR(numbers, corner);
        },
        matrices);
}

} // namespace

void AddVisibility()
{
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
