#include <vector>

#include "bv/maths/tFrustum.h"
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
void AddPrecision()
{
    using Box = bv::maths::tVolumeAABB<T>;
    using Frustum = bv::maths::tFrustum<T>;
    using Matrix = bv::maths::tMatrix4<T>;
    using Vector = bv::maths::tVector3<T>;

    std::vector<Matrix> matrices;
    for (View const& view : ManyViews())
        matrices.emplace_back(view.projection.data());
    AddMap(
        Name<T>("frustum/from matrix", "BvBaseUtils"), [](Matrix const& matrix) { return Frustum(matrix); }, matrices);

    auto const makeVector = [](double const* n)
    { return Vector(static_cast<T>(n[0]), static_cast<T>(n[1]), static_cast<T>(n[2])); };
    std::vector<Box> const boxes =
        Build(SceneBoxes(), 6, [&](double const* n) { return Box(makeVector(n), makeVector(n + 3)); });
    Frustum const frustum{Matrix(MainView().projection.data())};
    AddMap(
        Name<T>("frustum/classifies boxes", "BvBaseUtils"),
        [frustum](Box const& box) __attribute__((always_inline)) { return frustum.ContainsAABB(box); }, boxes);
    AddMap(
        Name<T>("frustum/sees boxes", "BvBaseUtils"),
        [frustum](Box const& box)
            __attribute__((always_inline)) { return frustum.ContainsAABB(box) != Frustum::OUTSIDE; },
        boxes);
}

} // namespace

void AddFrustum()
{
    AddPrecision<float>();
    AddPrecision<double>();
}

} // namespace bench
