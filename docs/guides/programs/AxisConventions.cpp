// From one axis convention to another.
#include <iostream>

#include <bv/maths/tCoordinateFrame.h>

using namespace bv::maths;

int main()
{
    //! [frames]
    using Frame = CoordinateFramef;
    Frame const zUp;                                                  // x right, y forwards, z up
    Frame const yUp(Frame::RIGHT, Frame::UP, Frame::BACKWARDS);       // as OpenGL's cameras have it
    Frame const leftHanded(Frame::RIGHT, Frame::UP, Frame::FORWARDS); // as Direct3D has it
    auto const getName = [](Frame const& frame)
    { return frame.GetHandedness() == Frame::RIGHT_HANDED ? "right-handed" : "left-handed"; };
    std::cout << getName(zUp) << ", " << getName(yUp) << ", " << getName(leftHanded) << '\n';
    //! [frames]

    //! [convert]
    Vector3f const modelled(1, 2, 3); // 1 to the right, 2 forwards, 3 up
    Matrix4f const toYUp = yUp.CreateRotationMatrix(zUp);
    Matrix4f const toLeftHanded = leftHanded.CreateRotationMatrix(zUp);
    std::cout << "y up: " << modelled.Transformed(toYUp) << '\n';
    std::cout << "left-handed: " << modelled.Transformed(toLeftHanded) << '\n';
    std::cout << "back again: " << modelled.Transformed(toYUp).Transformed(zUp.CreateRotationMatrix(yUp)) << '\n';
    //! [convert]

    //! [mirror]
    Matrix4f const classified(toLeftHanded.Get());
    std::cout << "determinant by its state: " << toLeftHanded.Determinant() << '\n';
    std::cout << "determinant by its elements: " << classified.Determinant() << '\n';
    //! [mirror]
}
