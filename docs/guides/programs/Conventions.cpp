// The conventions, each shown by a result.
#include <iostream>
#include <numbers>
#include <optional>

#include <bv/maths/View.h>
#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVector3.h>

using namespace bv::maths;

namespace
{

void ShowOrder()
{
    //! [order]
    Matrix4f const move = Matrix4f::Translate(Vector3f(3, 0, 0));
    Matrix4f const turn(0, -1, 0, 0, // a quarter turn about z: x goes to y
                        1, 0, 0, 0,  //
                        0, 0, 1, 0,  //
                        0, 0, 0, 1);
    Vector3f const point(1, 0, 0);
    std::cout << "turned, then moved: " << point.Transformed(move * turn) << '\n';
    std::cout << "moved, then turned: " << point.Transformed(turn * move) << '\n';
    //! [order]
}

void ShowTranslation()
{
    //! [translation]
    Matrix4f const m = Matrix4f::Translate(Vector3f(5, 6, 7));
    std::cout << "elements 3, 7 and 11: " << m[3] << ' ' << m[7] << ' ' << m[Matrix4f::IDX_34] << '\n';
    std::cout << "row 0, column 3: " << m[Tuple2u(0, 3)] << '\n';
    std::cout << "a point moves: " << Vector3f(1, 0, 0).Transformed(m) << '\n';
    std::cout << "a direction does not: " << Vector3f(1, 0, 0).TransformedAsVector(m) << '\n';
    //! [translation]
}

void ShowHandedness()
{
    //! [handedness]
    std::cout << "x cross y: " << Vector3f(1, 0, 0).Cross(Vector3f(0, 1, 0)) << '\n';
    Matrix4f const turn = Matrix4f::RotateZ(std::numbers::pi_v<float> / 2);
    bool const isCounterClockwise = Vector3f(1, 0, 0).Transformed(turn) == Vector3f(0, 1, 0);
    std::cout << "a quarter turn about z takes x to y: " << isCounterClockwise << '\n';
    //! [handedness]
}

//! [depth]
void ShowDepths(char const* name, DepthRange range)
{
    Matrix4f const projection = PerspectiveFromTangent(1.0F, 1, 1, 3, range); // from 1 to 3 in front of the eye
    std::cout << name << ": near " << Vector3f(0, 0, -1).Transformed(projection).z << ", far "
              << Vector3f(0, 0, -3).Transformed(projection).z << '\n';
}
//! [depth]

void ShowPixel()
{
    //! [pixel]
    Matrix4f const projection = PerspectiveFromTangent(1.0F, 2, 1, 3);
    std::optional<Vector3f> const middle = GetPixel(Vector3f(0, 0, -2), projection, Vector2f(640, 320));
    std::optional<Vector3f> const corner = GetPixel(Vector3f(-4, 2, -2), projection, Vector2f(640, 320));
    std::cout << "straight ahead: " << middle->x << ", " << middle->y << '\n';
    std::cout << "up to the left: " << corner->x << ", " << corner->y << '\n';
    //! [pixel]
}

} // namespace

int main()
{
    std::cout << std::boolalpha;
    ShowOrder();
    ShowTranslation();
    ShowHandedness();
    ShowDepths("MINUS_ONE_TO_ONE", DepthRange::MINUS_ONE_TO_ONE);
    ShowDepths("ZERO_TO_ONE", DepthRange::ZERO_TO_ONE);
    ShowDepths("ONE_TO_ZERO", DepthRange::ONE_TO_ZERO);
    ShowPixel();
}
