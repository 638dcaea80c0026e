// What touches, what overlaps, and what moves.
#include <iostream>

#include <bv/maths/Bounds.h>
#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVolumeAABB.h>
#include <bv/maths/tVolumeSphere.h>

using namespace bv::maths;

int main()
{
    std::cout << std::boolalpha;

    //! [touching]
    VolumeAABBf const box(Vector3f(0, 0, 0), Vector3f(1, 1, 1));
    VolumeAABBf const neighbour(Vector3f(1, 0, 0), Vector3f(2, 1, 1));
    VolumeSpheref const ball(Vector3f(2, 0.5F, 0.5F), 1); // touches the box in (1, 0.5, 0.5)
    Vector3f const onBoth(1, 0.5F, 0.5F);
    std::cout << "the point is in the box: " << box.Contains(onBoth, false) << '\n';
    std::cout << "the point is in the box without its upper faces: " << box.Contains(onBoth, true) << '\n';
    std::cout << "the point is in its neighbour: " << neighbour.Contains(onBoth, true) << '\n';
    std::cout << "the point is in the ball: " << ball.Contains(onBoth) << '\n';
    std::cout << "box and ball overlap: " << box.Overlaps(ball) << '\n';
    std::cout << "box and neighbour overlap: " << Overlaps(box, neighbour) << '\n';
    std::cout << "what they share is a box: " << Intersection(box, neighbour).IsValid() << '\n';
    //! [touching]

    //! [empty]
    VolumeAABBf bounds; // empty
    std::cout << "the empty box is valid: " << bounds.IsValid() << '\n';
    bounds.Expand(Vector3f(3, 4, 5));
    bounds.Expand(Vector3f(1, 6, 5));
    std::cout << "grown by two points: " << bounds.GetMin() << " to " << bounds.GetMax() << '\n';
    //! [empty]

    //! [radius]
    VolumeSpheref sphere(Vector3f(0, 0, 0), 9); // the square of the radius
    std::cout << "radius: " << sphere.GetRadius() << '\n';
    sphere.SetRadius(1); // the radius
    std::cout << "squared radius: " << sphere.GetRadiusSquared() << '\n';
    //! [radius]

    //! [moved]
    Matrix4f const move = Matrix4f::Translate(Vector3f(1, 2, 3));
    VolumeAABBf const moved = GetBound(sphere) * move;
    std::cout << "the sphere's box, moved: " << moved.GetMin() << " to " << moved.GetMax() << '\n';
    std::cout << "the sphere itself stays: " << (sphere * move).GetCentre() << '\n';
    //! [moved]
}
