// What a matrix knows of itself, and what happens where that is no longer true.
#include <cmath>
#include <iostream>
#include <numbers>

#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVector3.h>

using namespace bv::maths;

namespace
{

char const* GetState(Matrix4f const& matrix)
{
    if (matrix.IsIdentity())
        return "IDENTITY";
    if (matrix.IsDiagonal())
        return "DIAGONAL";
    return matrix.IsOrthonormal() ? "ORTHONORMAL" : "GENERAL";
}

/// Where a matrix takes a point, in whole numbers.
void ShowWhere(char const* text, Matrix4f const& matrix, Vector3f const& point)
{
    Vector3f const moved = point.Transformed(matrix);
    std::cout << text << std::lround(moved.x) << ", " << std::lround(moved.y) << ", " << std::lround(moved.z) << '\n';
}

} // namespace

int main()
{
    //! [states]
    std::cout << "Matrix4f(): " << GetState(Matrix4f()) << '\n';
    std::cout << "Scale(2): " << GetState(Matrix4f::Scale(2)) << '\n';
    std::cout << "RotateX(1): " << GetState(Matrix4f::RotateX(1)) << '\n';
    std::cout << "Translate(1, 2, 3): " << GetState(Matrix4f::Translate(1, 2, 3)) << '\n';
    //! [states]

    //! [stale]
    Matrix4f matrix;              // IDENTITY
    matrix(Matrix4f::IDX_14) = 5; // the element changes, the state does not
    std::cout << "written to: " << GetState(matrix) << '\n';
    ShowWhere("it takes the origin to ", matrix, Vector3f(0, 0, 0));

    matrix = matrix.Get(); // reads the sixteen elements, and looks at them
    std::cout << "classified: " << GetState(matrix) << '\n';
    ShowWhere("it takes the origin to ", matrix, Vector3f(0, 0, 0));
    //! [stale]

    //! [axis]
    // A quarter turn about the line x = 1, y = 0. Its fourth column is a translation, its state is ORTHONORMAL.
    Matrix4f const turn = Matrix4f::RotateAxis(Vector3f(1, 0, 0), Vector3f(0, 0, 1), std::numbers::pi_v<float> / 2);
    ShowWhere("a quarter turn about x = 1: ", turn, Vector3f(2, 0, 0));
    ShowWhere("two as ORTHONORMAL, which drop the translation: ", turn * turn, Vector3f(2, 0, 0));
    Matrix4f const general(turn.Get());
    ShowWhere("two as GENERAL: ", general * general, Vector3f(2, 0, 0));
    //! [axis]

    //! [diagonal]
    Matrix4f inPlace = Matrix4f::Scale(2);
    inPlace *= Matrix4f::Scale(3);
    std::cout << "Scale(2) * Scale(3): " << (Matrix4f::Scale(2) * Matrix4f::Scale(3))[0] << '\n';
    std::cout << "Scale(2) *= Scale(3): " << inPlace[0] << '\n';
    //! [diagonal]
}
