#include "Scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "Textures.h"
#include "bv/maths/Direction.h"
#include "bv/maths/Intersect.h"

namespace raytracer
{

namespace
{

constexpr Colour PLAIN_FLOOR(0.40F, 0.39F, 0.38F);

void Paint(Surface& surface, Material material, Colour const& plain, Vector3f const& texturePoint)
{
    switch (material)
    {
    case Material::Plain:
        surface.colour = plain;
        surface.gloss = 0;
        break;
    case Material::Marble:
        surface.colour = GetMarble(texturePoint, surface.footprint);
        surface.gloss = 0.04F;
        break;
    case Material::Wood:
        surface.colour = GetWood(texturePoint, surface.footprint);
        surface.gloss = 0.03F;
        break;
    case Material::Mirror:
        surface.colour = plain * 0.1F;
        surface.gloss = 0.9F;
        break;
    }
}

constexpr float WIDEST = 1e3F;

/// A footprint in which nothing of a texture is left but its mean.
Differential3f Widest()
{
    return Differential3f({WIDEST, 0, 0}, {0, 0, WIDEST});
}

/// The footprint, unless a ray only grazes the surface, where a pixel covers it without bound: then a very wide one.
Differential3f Bound(Differential3f const& footprint)
{
    return footprint.GetRadius() < WIDEST ? footprint : Widest();
}

/// How the place of a hit on a plane changes. Igehy, "Tracing Ray Differentials", 1999.
Differential3f GetPlaneFootprint(DepthRayf const& ray, float distance, Vector3f const& normal)
{
    auto const slide = [&](Vector3f const& originChange, Vector3f const& directionChange)
    {
        Vector3f const change = originChange + directionChange * distance;
        return change - ray.direction * (change.Dot(normal) / ray.direction.Dot(normal));
    };
    return Bound({slide(ray.dOriginDu, ray.dDirectionDu), slide(ray.dOriginDv, ray.dDirectionDv)});
}

/// How a vector's direction, as a unit vector, changes when the vector does.
Differential3f GetUnitChange(Vector3f const& vector, Differential3f const& change)
{
    Vector3f const unit = vector.Normalised();
    Vector3f const& u = change[Differential3f::DIFF_U];
    Vector3f const& v = change[Differential3f::DIFF_V];
    return Differential3f(u - unit * unit.Dot(u), v - unit * unit.Dot(v)) * (1 / vector.Length());
}

} // namespace

Scene::Scene(Options const& options, Mesh mesh, Vector3f const& eye)
    : mesh_(std::move(mesh)),
      bvh_(mesh_, eye),
      sky_(options.sky.empty() ? ComputeSky() : LoadSky(options.sky, options.skyAxes)),
      material_(options.material),
      sphereMaterial_(options.sphereMaterial),
      checkered_(options.floor == Floor::Checker)
{
    if (options.floor != Floor::None)
        floor_ = Planef({0, 1, 0}, 0);
    AddSpheres(options.spheres);
}

/// On the floor, in a ring around the mesh, in three sizes.
void Scene::AddSpheres(unsigned count)
{
    constexpr float FIRST_ANGLE = 0.9F; // from the x axis to the viewer, so that the first stands in front
    constexpr std::array RADII{0.34F, 0.22F, 0.28F};
    std::array const colours{Colour(0.70F, 0.17F, 0.10F), Colour(0.75F, 0.55F, 0.13F), Colour(0.12F, 0.42F, 0.45F),
                             Colour(0.55F, 0.55F, 0.58F), Colour(0.18F, 0.27F, 0.60F)};
    Vector3f const half = mesh_.bounds.GetDiagonal() * 0.5F;
    float const ring = std::max(half.x, half.z) + 0.35F;
    for (unsigned i = 0; i < count; ++i)
    {
        float const turn = 2 * std::numbers::pi_v<float> * static_cast<float>(i) / static_cast<float>(count);
        float const angle = FIRST_ANGLE + turn;
        float const radius = RADII[i % RADII.size()];
        spheres_.push_back({VolumeSpheref({ring * std::cos(angle), radius, ring * std::sin(angle)}, radius * radius),
                            colours[i % colours.size()]});
    }
}

/// A ray that leaves a sphere may seem, by rounding, to meet it again at once.
void Scene::FindClosestBeside(DepthRayf const& ray, Hit& hit) const
{
    constexpr float LEAST_DISTANCE = 1e-3F;
    for (std::uint32_t i = 0; i < spheres_.size(); ++i)
    {
        float tNear = 0;
        float tFar = 0;
        if (!ray.Clip(spheres_[i].shape, tNear, tFar))
            continue;
        float const distance = tNear > 0 ? tNear : tFar; // from inside, the far side shows
        if (distance > LEAST_DISTANCE && distance < hit.distance)
            hit = {distance, i, 0, 0, Hit::What::Sphere};
    }
    if (!floor_)
        return;
    float distance = 0;
    if (IntersectPlane(ray, *floor_, 0, hit.distance, distance))
        hit = {distance, 0, 0, 0, Hit::What::Floor};
}

bool Scene::IsBlockedBeside(DepthRayf const& ray, Hit const& hit) const
{
    Hit beside = hit;
    FindClosestBeside(ray, beside);
    return beside.distance < hit.distance;
}

float Scene::GetFloorDistance(DepthRayf const& ray) const
{
    constexpr float INFINITE = std::numeric_limits<float>::infinity();
    float distance = INFINITE;
    return floor_ && IntersectPlane(ray, *floor_, 0, INFINITE, distance) ? distance : INFINITE;
}

Colour Scene::GetFloorColour() const
{
    return checkered_ ? GetChecker({}, Widest()) : PLAIN_FLOOR;
}

Surface Scene::GetSurface(DepthRayf const& ray, Hit const& hit) const
{
    Surface surface{};
    surface.position = ray.origin + ray.direction * hit.distance;
    surface.start = surface.position;
    switch (hit.what)
    {
    case Hit::What::Triangle:
        SetTriangle(surface, ray, hit);
        break;
    case Hit::What::Sphere:
        SetSphere(surface, ray, hit);
        break;
    case Hit::What::Floor:
        SetFloor(surface, ray, hit);
        break;
    case Hit::What::Nothing:
        break;
    }
    return surface;
}

/// The start of other rays is lifted to where a smooth surface would be, so that the edges of the triangles do not show
/// in the shadows. Hanika, "Hacking the Shadow Terminator", Ray Tracing Gems II, 2021.
void Scene::SetTriangle(Surface& surface, DepthRayf const& ray, Hit const& hit) const
{
    Triangle const& triangle = mesh_.triangles[hit.index];
    surface.face = FaceForward(triangle.GetCross().Normalised(), -ray.direction);
    surface.footprint = GetPlaneFootprint(ray, hit.distance, surface.face);

    std::array normals = triangle.normals;
    std::array const weights{1 - hit.u - hit.v, hit.u, hit.v};
    for (std::size_t i = 0; i < weights.size(); ++i)
    {
        normals[i] = FaceForward(normals[i], surface.face);
        float const height = (surface.position - triangle.corners[i]).Dot(normals[i]);
        surface.start -= normals[i] * (weights[i] * std::min(0.0F, height));
    }
    Vector3f const toB = normals[1] - normals[0];
    Vector3f const toC = normals[2] - normals[0];
    Vector3f const sideB = triangle.corners[1] - triangle.corners[0];
    Vector3f const sideC = triangle.corners[2] - triangle.corners[0];
    auto const change = [&](Vector3f const& way)
    {
        float u = 0;
        float v = 0;
        return GetBarycentric(way, {}, sideB, sideC, u, v) ? toB * u + toC * v : Vector3f();
    };
    Vector3f const smooth = normals[0] + toB * hit.u + toC * hit.v;
    surface.normal = FaceForward(smooth.Normalised(), surface.face);
    surface.normalChange = GetUnitChange(
        smooth, {change(surface.footprint[Differential3f::DIFF_U]), change(surface.footprint[Differential3f::DIFF_V])});
    Paint(surface, material_, {0.62F, 0.50F, 0.40F}, surface.position);
}

void Scene::SetSphere(Surface& surface, DepthRayf const& ray, Hit const& hit) const
{
    Ball const& ball = spheres_[hit.index];
    float tNear = 0;
    float tFar = 0;
    Vector2f nearChange;
    Vector2f farChange;
    if (ray.ClipDiff(ball.shape, tNear, tFar, nearChange, farChange))
    {
        Vector2f const change = tNear > 0 ? nearChange : farChange;
        surface.footprint = Bound({ray.dOriginDu + ray.dDirectionDu * hit.distance + ray.direction * change.x,
                                   ray.dOriginDv + ray.dDirectionDv * hit.distance + ray.direction * change.y});
    }
    Vector3f const outwards = surface.position - ball.shape.GetCentre();
    surface.face = FaceForward(outwards.Normalised(), -ray.direction);
    surface.normal = surface.face;
    surface.normalChange = surface.footprint * (surface.normal.Dot(outwards) / ball.shape.GetRadiusSquared());
    Paint(surface, sphereMaterial_, ball.colour, outwards);
}

void Scene::SetFloor(Surface& surface, DepthRayf const& ray, Hit const& hit) const
{
    surface.face = FaceForward(floor_->GetNormal(), -ray.direction);
    surface.normal = surface.face;
    surface.footprint = GetPlaneFootprint(ray, hit.distance, surface.face);
    surface.colour = checkered_ ? GetChecker(surface.position, surface.footprint) : PLAIN_FLOOR;
}

} // namespace raytracer
