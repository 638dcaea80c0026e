// A matrix that the reader builds, and what it does to a cube.

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <string>

#include <emscripten/bind.h>
#include <emscripten/val.h>

#include "Values.h"
#include "bv/Exception.h"
#include "bv/maths/View.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"

namespace live
{

namespace
{

using bv::maths::Matrix4f;
using bv::maths::Vector2f;
using bv::maths::Vector3f;
using emscripten::val;

char const* GetState(Matrix4f const& matrix)
{
    if (matrix.IsIdentity())
        return "IDENTITY";
    if (matrix.IsDiagonal())
        return "DIAGONAL";
    return matrix.IsOrthonormal() ? "ORTHONORMAL" : "GENERAL";
}

/// Whether a matrix takes unit cubes to unit cubes, however much rounding has gone into it.
bool IsRotation(Matrix4f const& matrix)
{
    constexpr float DRIFT = 1e-3F; // of a long row of products; what was written to is farther off
    std::array<Vector3f, 3> axes;
    for (std::size_t axis = 0; axis < axes.size(); ++axis)
        axes[axis] = Vector3f(matrix[axis], matrix[4 + axis], matrix[8 + axis]);
    for (std::size_t a = 0; a < axes.size(); ++a)
    {
        for (std::size_t b = 0; b < axes.size(); ++b)
        {
            if (!(std::abs(axes[a].Dot(axes[b]) - (a == b ? 1.0F : 0.0F)) < DRIFT))
                return false;
        }
    }
    return true;
}

Matrix4f MakeOperation(std::string const& name, Vector3f const& numbers)
{
    float const angle = numbers.x * std::numbers::pi_v<float> / 180;
    if (name == "rotate-x")
        return Matrix4f::RotateX(angle);
    if (name == "rotate-y")
        return Matrix4f::RotateY(angle);
    if (name == "rotate-z")
        return Matrix4f::RotateZ(angle);
    if (name == "scale")
        return Matrix4f::Scale(numbers);
    return Matrix4f::Translate(numbers);
}

Vector3f GetCorner(unsigned index)
{
    auto const side = [&](unsigned axis) { return (index >> axis & 1) == 0 ? -0.5F : 0.5F; };
    return {side(0), side(1), side(2)};
}

class MatrixPanel
{
public:
    [[nodiscard]] val GetElements() const
    {
        val elements = val::array();
        for (std::size_t i = 0; i < Matrix4f::SIZE; ++i)
            elements.set(i, static_cast<double>(matrix_[i]));
        return elements;
    }
    [[nodiscard]] std::string GetStateName() const { return GetState(matrix_); }
    /// The state that a matrix of these elements gets when it is made.
    [[nodiscard]] std::string GetFreshStateName() const { return GetState(Matrix4f(matrix_.Get())); }
    /// Whether the elements deny the state.
    [[nodiscard]] bool IsStale() const
    {
        Matrix4f const fresh(matrix_.Get());
        if (matrix_.IsIdentity())
            return !fresh.IsIdentity();
        if (matrix_.IsDiagonal())
            return !fresh.IsDiagonal();
        return matrix_.IsOrthonormal() && !IsRotation(matrix_);
    }
    [[nodiscard]] double GetDeterminant() const { return static_cast<double>(matrix_.Determinant()); }

    void SetElement(std::size_t index, double value) { matrix_(index) = static_cast<float>(value); }
    void Classify() { matrix_ = Matrix4f(matrix_.Get()); }
    void Reset() { matrix_ = Matrix4f(); }
    void Transpose() { matrix_.Transpose(); }
    /// @return what was wrong; empty if nothing was.
    std::string Invert()
    {
        return GetFailure([&] { matrix_.Invert(); });
    }
    void MultiplyOnTheRight(std::string const& name, double x, double y, double z)
    {
        matrix_ = matrix_ * MakeOperation(name, ToVector(x, y, z));
    }
    void MultiplyOnTheLeft(std::string const& name, double x, double y, double z)
    {
        matrix_ = MakeOperation(name, ToVector(x, y, z)) * matrix_;
    }

    /// Where the matrix takes the eight corners of the cube; null for one that it takes to infinity.
    [[nodiscard]] val GetCorners() const
    {
        val corners = val::array();
        for (unsigned i = 0; i < 8; ++i)
            corners.set(i, ToValue(Transform(GetCorner(i))));
        return corners;
    }
    /// Where the corners show in a picture, those of the cube as it was and those of the transformed one; null for one
    /// that does not.
    [[nodiscard]] val Draw(double width, double height) const
    {
        Vector2f const size(static_cast<float>(width), static_cast<float>(height));
        Matrix4f const worldToClip = bv::maths::PerspectiveFromTangent(0.4F, size.x / size.y, 0.1F, 100.0F) *
                                     bv::maths::LookAt(Vector3f(2.6F, 2.2F, 5.4F), Vector3f(), Vector3f(0, 1, 0));
        auto const getPlace = [&](std::optional<Vector3f> const& point)
        { return point ? GetPixel(*point, worldToClip, size) : std::nullopt; };
        val before = val::array();
        val after = val::array();
        for (unsigned i = 0; i < 8; ++i)
        {
            before.set(i, ToValue(getPlace(GetCorner(i))));
            after.set(i, ToValue(getPlace(Transform(GetCorner(i)))));
        }
        val axes = val::array();
        Vector3f const ends[] = {{0, 0, 0}, {1.5F, 0, 0}, {0, 1.5F, 0}, {0, 0, 1.5F}};
        for (std::size_t i = 0; i < std::size(ends); ++i)
            axes.set(i, ToValue(getPlace(ends[i])));
        val drawing = val::object();
        drawing.set("before", before);
        drawing.set("after", after);
        drawing.set("axes", axes);
        return drawing;
    }

private:
    [[nodiscard]] std::optional<Vector3f> Transform(Vector3f const& point) const
    {
        std::optional<Vector3f> transformed;
        GetFailure([&] { transformed = point.Transformed(matrix_); });
        return transformed;
    }

    Matrix4f matrix_;
};

} // namespace

} // namespace live

EMSCRIPTEN_BINDINGS(matrix)
{
    using live::MatrixPanel;
    emscripten::class_<MatrixPanel>("MatrixPanel")
        .constructor<>()
        .function("getElements", &MatrixPanel::GetElements)
        .function("getState", &MatrixPanel::GetStateName)
        .function("getFreshState", &MatrixPanel::GetFreshStateName)
        .function("isStale", &MatrixPanel::IsStale)
        .function("getDeterminant", &MatrixPanel::GetDeterminant)
        .function("setElement", &MatrixPanel::SetElement)
        .function("classify", &MatrixPanel::Classify)
        .function("reset", &MatrixPanel::Reset)
        .function("transpose", &MatrixPanel::Transpose)
        .function("invert", &MatrixPanel::Invert)
        .function("multiplyOnTheRight", &MatrixPanel::MultiplyOnTheRight)
        .function("multiplyOnTheLeft", &MatrixPanel::MultiplyOnTheLeft)
        .function("getCorners", &MatrixPanel::GetCorners)
        .function("draw", &MatrixPanel::Draw);
}
