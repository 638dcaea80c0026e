#include <cstdint>
#include <vector>

#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPreparedTransform.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

#include "SceneRows.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
struct Operations
{
    static constexpr char const* NAME = "BvBaseUtils";

    using Matrix = bv::maths::tMatrix4<T>;
    using Affine = Matrix;
    using Vector = bv::maths::tVector3<T>;
    using Box = bv::maths::tVolumeAABB<T>;
    using View = bv::maths::tFrustum<T>;

    static Matrix makeMatrix(double const* m) { return Matrix(m); }
    static Affine makeAffine(double const* m) { return Matrix(m); }
    static Vector makeVector(double const* v)
    {
        return Vector(static_cast<T>(v[0]), static_cast<T>(v[1]), static_cast<T>(v[2]));
    }
    static Box makeBox(double const* b) { return Box(makeVector(b), makeVector(b + 3)); }

    static Matrix chain(Matrix const& a, Matrix const& b, Matrix const& c, Matrix const& d) { return a * b * c * d; }

    static Matrix product(Matrix const& a, Matrix const& b) { return a * b; }
    static Matrix inverse(Matrix const& m) { return m.Inverted(); }
    static View view(Matrix const& combined) { return View(combined); }

    static Affine composed(Affine const& parent, Affine const& local) { return parent * local; }
    static Affine inverted(Affine const& m) { return m.Inverted(); }
    static Box moved(Box const& box, Affine const& m) { return box * m; }
    static View mainView() { return View(Matrix(MainView().projection.data())); }
    static std::size_t cull(View const& view, std::vector<Box> const& boxes, std::uint32_t* visible)
    {
        return ListVisible(boxes, visible, [view](Box const& box) { return view.ContainsAABB(box) != View::OUTSIDE; });
    }

    using Bone = bv::maths::tPreparedTransform<T>;
    static Bone prepared(Affine const& bone) { return Bone(bone); }
    static Vector skinned(Bone const* bones, Influences<T> const& influences, Vector const& point)
    {
        Vector sum;
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
            sum += bones[influences.bones[i]](point) * influences.weights[i];
        return sum;
    }

    static Vector normalised(Vector const& v) { return v.Normalised(); }
    static T enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        T tNear = 0;
        T tFar = 1000;
        return bv::maths::tRay<T>(origin, direction).Clip(box, tNear, tFar) ? tNear : T{-1};
    }

    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (std::size_t i = 0; i < 16; ++i)
            numbers.push_back(static_cast<double>(m[i]));
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        for (unsigned int i = 0; i < 3; ++i)
            numbers.push_back(static_cast<double>(v[i]));
    }
    static void append(std::vector<double>& numbers, Box const& box)
    {
        append(numbers, box.GetMin());
        append(numbers, box.GetMax());
    }
    static void append(std::vector<double>& numbers, View const& view)
    {
        for (auto const* plane : {&view.GetLeftPlane(), &view.GetRightPlane(), &view.GetBottomPlane(),
                                  &view.GetTopPlane(), &view.GetNearPlane(), &view.GetFarPlane()})
        {
            append(numbers, plane->GetNormal());
            numbers.push_back(static_cast<double>(plane->GetOffset()));
        }
    }
};

} // namespace

void AddScene()
{
    AddSceneRows<float, Operations<float>>();
    AddSceneRows<double, Operations<double>>();
}

} // namespace bench
