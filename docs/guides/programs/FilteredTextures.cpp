// A checkered floor up to the horizon, without a filter and filtered over what each pixel covers.
// Usage: FilteredTextures [PICTURE.png]
#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>

#include <bv/Exception.h>
#include <bv/maths/Intersect.h>
#include <bv/maths/Scalar.h>
#include <bv/maths/View.h>
#include <bv/maths/tDepthRay.h>
#include <bv/maths/tDifferential3.h>
#include <bv/maths/tPixelRays.h>
#include <bv/maths/tPlane.h>

#include "Picture.h"

using namespace bv::maths;

namespace
{

//! [ray]
/// The ray through a point of the picture, and how its direction changes from pixel to pixel.
DepthRayf GetRay(PixelRaysf const& rays, Vector2f const& pixel)
{
    Rayf const plain = rays(pixel);
    DepthRayf ray(plain.origin, plain.direction);
    float const scale = 1 / rays.GetDirection(pixel).Length();
    auto const turn = [&](Vector3f const& step) { return (step - ray.direction * ray.direction.Dot(step)) * scale; };
    ray.dDirectionDu = turn(rays.GetStepRight());
    ray.dDirectionDv = turn(rays.GetStepDown());
    return ray;
}
//! [ray]

//! [footprint]
/// How the point where a ray meets a plane changes from pixel to pixel. H. Igehy, "Tracing Ray Differentials", 1999.
Differential3f GetFootprint(DepthRayf const& ray, float t, Vector3f const& normal)
{
    auto const slide = [&](Vector3f const& dOrigin, Vector3f const& dDirection)
    {
        Vector3f const change = dOrigin + dDirection * t;
        return change - ray.direction * (change.Dot(normal) / ray.direction.Dot(normal));
    };
    return {slide(ray.dOriginDu, ray.dDirectionDu), slide(ray.dOriginDv, ray.dDirectionDv)};
}
//! [footprint]

float GetChecker(Vector3f const& point)
{
    bool const isFirstAlongX = SawTooth(point.x, 2.0F) < 1;
    bool const isFirstAlongZ = SawTooth(point.z, 2.0F) < 1;
    return isFirstAlongX == isFirstAlongZ ? 0.9F : 0.1F;
}

//! [filter]
/// Mean of a pattern that is 1 and -1 in turn, over a stretch of one axis: from its integral, which is a triangle wave.
float GetMean(float middle, float width)
{
    auto const integral = [](float x) { return -std::abs(SawTooth(x, 2.0F) - 1); };
    return (integral(middle + width / 2) - integral(middle - width / 2)) / width;
}

float GetFilteredChecker(Vector3f const& point, Differential3f const& footprint)
{
    Vector3f const u = footprint[Differential3f::DIFF_U];
    Vector3f const v = footprint[Differential3f::DIFF_V];
    float const x = GetMean(point.x, std::abs(u.x) + std::abs(v.x));
    float const z = GetMean(point.z, std::abs(u.z) + std::abs(v.z));
    return 0.5F + 0.4F * x * z;
}
//! [filter]

void DrawFloors(PixelRaysf const& rays, Planef const& floor, char const* path)
{
    constexpr unsigned int WIDTH = 280;
    constexpr unsigned int HEIGHT = 160;
    constexpr unsigned int GAP = 8;
    Picture picture({2 * WIDTH + GAP, HEIGHT});
    for (unsigned int y = 0; y < HEIGHT; ++y)
    {
        for (unsigned int x = 0; x < WIDTH; ++x)
        {
            Vector2f const pixel(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
            DepthRayf const ray = GetRay(rays, pixel);
            float plain = 0.7F; // the sky
            float filtered = 0.7F;
            float t = 0;
            if (IntersectPlane(ray, floor, 0.0F, 1e6F, t))
            {
                Vector3f const point = ray.origin + ray.direction * t;
                plain = GetChecker(point);
                filtered = GetFilteredChecker(point, GetFootprint(ray, t, floor.GetNormal()));
            }
            picture.Draw(x, y, plain);
            picture.Draw(WIDTH + GAP + x, y, filtered);
        }
    }
    picture.Write(path);
}

} // namespace

int main(int count, char const* const* arguments)
try
{
    // A camera one unit above the floor that looks along it. A pixel is 1/100 of the distance high.
    Vector2f const size(280, 160);
    Matrix4f const camera = PlaceCamera(Vector3f(0.3F, 1, 0), Vector3f(0.3F, 1, -1), Vector3f(0, 1, 0));
    PixelRaysf const rays(size, PerspectiveFromTangent(0.8F, size.x / size.y, 0.1F, 100), camera);
    Planef const floor(Vector3f(0, 1, 0), 0);

    for (float const below : {40.0F, 10.0F, 5.0F}) // pixels below the horizon
    {
        DepthRayf const ray = GetRay(rays, Vector2f(140, 80 + below));
        float t = 0;
        if (!IntersectPlane(ray, floor, 0.0F, 1e6F, t))
            continue;
        Differential3f const footprint = GetFootprint(ray, t, floor.GetNormal());
        std::cout << std::setprecision(3) << below
                  << " pixels below the horizon: " << footprint[Differential3f::DIFF_U].Length() << " wide, "
                  << footprint[Differential3f::DIFF_V].Length() << " long\n";
    }
    if (count > 1)
        DrawFloors(rays, floor, arguments[1]);
}
catch (bv::Exception const& failure)
{
    std::cerr << failure.Message().ToCharArray() << '\n';
    return 1;
}
