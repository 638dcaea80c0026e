// From a camera to its frustum, to a ray, and back to a pixel.
#include <iostream>
#include <optional>

#include <bv/maths/View.h>
#include <bv/maths/tFrustum.h>
#include <bv/maths/tPixelRays.h>

using namespace bv::maths;

namespace
{

char const* GetName(Frustumf::IntersectionResult result)
{
    switch (result)
    {
    case Frustumf::INSIDE:
        return "INSIDE";
    case Frustumf::INTERSECTING:
        return "INTERSECTING";
    default:
        return "OUTSIDE";
    }
}

} // namespace

int main()
{
    //! [matrices]
    Vector2f const size(800, 600);
    Vector3f const eye(0, 0, 5);
    Vector3f const target(0, 0, 0);
    Vector3f const up(0, 1, 0);
    Matrix4f const projection = PerspectiveFromTangent(1.0F, size.x / size.y, 1, 9);
    Matrix4f const worldToClip = projection * LookAt(eye, target, up); // the view matrix is applied first
    //! [matrices]

    //! [frustum]
    Frustumf const view(worldToClip);
    VolumeAABBf const ahead(Vector3f(-1, -1, -1), Vector3f(1, 1, 1));
    VolumeAABBf const atTheEdge(Vector3f(6, -1, -1), Vector3f(8, 1, 1));
    VolumeAABBf const beside(Vector3f(20, -1, -1), Vector3f(21, 1, 1));
    std::cout << "ahead: " << GetName(view.ContainsAABB(ahead)) << '\n';
    std::cout << "at the edge: " << GetName(view.ContainsAABB(atTheEdge)) << '\n';
    std::cout << "beside: " << GetName(view.ContainsAABB(beside)) << '\n';
    //! [frustum]

    //! [ray]
    PixelRaysf const rays(size, projection, PlaceCamera(eye, target, up));
    Rayf const ray = rays(Vector2f(400, 300)); // the middle of the picture
    float entry = 0;
    float exit = 100;
    if (ray.Clip(ahead, entry, exit))
        std::cout << "the ray is in the box from " << entry << " to " << exit << '\n';
    //! [ray]

    //! [pixel]
    if (std::optional<Vector3f> const place = GetPixel(target, worldToClip, size))
    {
        std::cout << "the target shows at " << place->x << ", " << place->y << ", depth " << place->z << '\n';
        std::cout << "which is " << GetViewDistance(place->z, projection) << " away\n";
    }
    //! [pixel]
}
