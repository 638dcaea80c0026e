#include "Sky.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Options.h"
#include "UserError.h"
#include "bv/maths/Componentwise.h"
#include "bv/maths/Noise.h"
#include "bv/maths/Scalar.h"

namespace raytracer
{

namespace
{

/// A place on a face: right and down from its middle, -1 to 1.
struct Place
{
    float right;
    float down;
};

/// Where a direction, in the map's axes, meets a face, as cube maps have it: seen from inside, with the +y face's lower
/// edge at +z. Greene, "Environment Mapping and Other Applications of World Projections", 1986.
Place GetPlace(std::size_t face, Vector3f const& d)
{
    switch (face)
    {
    case 0:
        return {-d.z / d.x, -d.y / d.x};
    case 1:
        return {-d.z / d.x, d.y / d.x};
    case 2:
        return {d.x / d.y, d.z / d.y};
    case 3:
        return {-d.x / d.y, d.z / d.y};
    case 4:
        return {d.x / d.z, -d.y / d.z};
    default:
        return {d.x / d.z, d.y / d.z};
    }
}

/// The direction to a place, the other way round.
Vector3f GetDirection(std::size_t face, Place const& place)
{
    switch (face)
    {
    case 0:
        return {1, -place.down, -place.right};
    case 1:
        return {-1, -place.down, place.right};
    case 2:
        return {place.right, 1, place.down};
    case 3:
        return {place.right, -1, -place.down};
    case 4:
        return {place.right, -place.down, 1};
    default:
        return {-place.right, -place.down, -1};
    }
}

/// The face that a direction goes through.
std::size_t GetFace(Vector3f const& d)
{
    std::size_t const axis = GetMaxAxis(Abs(d));
    return 2 * axis + (d[axis] > 0 ? 0 : 1);
}

/// Light at a place, between the middles of the four texels around it.
Colour GetBetween(Texels const& texels, Place const& place)
{
    auto const side = static_cast<float>(texels.side);
    auto const along = [&](float coordinate) { return std::clamp((coordinate + 1) / 2 * side - 0.5F, 0.0F, side - 1); };
    float const x = along(place.right);
    float const y = along(place.down);
    auto const left = static_cast<std::size_t>(x);
    auto const top = static_cast<std::size_t>(y);
    std::size_t const right = std::min<std::size_t>(left + 1, texels.side - 1);
    std::size_t const bottom = std::min<std::size_t>(top + 1, texels.side - 1);
    Colour const* const upper = &texels.colours[top * texels.side];
    Colour const* const lower = &texels.colours[bottom * texels.side];
    float const u = x - static_cast<float>(left);
    float const v = y - static_cast<float>(top);
    return (upper[left] * (1 - u) + upper[right] * u) * (1 - v) + (lower[left] * (1 - u) + lower[right] * u) * v;
}

/// Half as wide: each texel the mean of four. Of an odd side the last row and column are left out.
Texels Halve(Texels const& texels)
{
    Texels half{texels.side / 2, {}};
    for (std::size_t y = 0; y < half.side; ++y)
    {
        for (std::size_t x = 0; x < half.side; ++x)
        {
            Colour const* const upper = &texels.colours[2 * y * texels.side + 2 * x];
            Colour const* const lower = upper + texels.side;
            half.colours.push_back((upper[0] + upper[1] + lower[0] + lower[1]) * 0.25F);
        }
    }
    return half;
}

/// Light of the computed sky. Directions are in the axes right, up, forwards.
Colour GetComputedLight(Vector3f const& d)
{
    Colour const ground(0.42F, 0.40F, 0.37F);
    Colour const haze(0.80F, 0.86F, 0.92F);
    Colour const blue(0.13F, 0.30F, 0.70F);
    Colour const cloud(1.5F, 1.47F, 1.42F);
    if (d.y <= 0)
        return Lerp(haze, ground, bv::maths::SmoothStep(0.0F, 0.25F, -d.y));

    float const depth = (1 - d.y) * (1 - d.y) * (1 - d.y);
    Colour light = Lerp(blue, haze, depth);
    Vector3f const ceiling = d * (1.6F / (d.y + 0.12F)); // where the line of sight meets the clouds
    float const cover = bv::maths::Turbulence3({ceiling.x, 4.2F, ceiling.z}, 6);
    float const above = bv::maths::SmoothStep(0.02F, 0.3F, d.y);
    light = Lerp(light, cloud, bv::maths::CubicSmoothStep(0.5F, 0.72F, cover) * above);

    Vector3f const sun(SUN.x, SUN.y, -SUN.z); // the world counts z backwards
    float const nearness = std::max(0.0F, d.Dot(sun));
    return light + Colour(6.0F, 5.2F, 3.6F) * std::pow(nearness, 600.0F) +
           Colour(0.35F, 0.28F, 0.15F) * std::pow(nearness, 12.0F);
}

} // namespace

Sky::Sky(Faces faces, CoordinateFramef const& axes) : toMap_(axes.CreateRotationMatrix(WORLD))
{
    axes.MapCubeMap(WORLD, faceOf_.data());
    for (std::size_t face = 0; face < faces.size(); ++face)
    {
        Pyramid& pyramid = pyramids_[face];
        pyramid.push_back(std::move(faces[face]));
        while (pyramid.back().side > 1)
            pyramid.push_back(Halve(pyramid.back()));
    }
}

float Sky::GetLevel(float width) const
{
    // A face is two radians wide, nearly; where one texel is wider than the cone, the map itself is as fine as it gets.
    float const texels = width / 2 * static_cast<float>(pyramids_[0].front().side);
    auto const coarsest = static_cast<float>(pyramids_[0].size() - 1);
    return texels > 1 ? std::min(bv::maths::Log2(texels, 1.0F / 64), coarsest) : 0;
}

Colour Sky::GetLight(Vector3f const& direction, float level) const
{
    std::size_t const face = faceOf_[GetFace(direction)];
    Place const place = GetPlace(face, direction.TransformedAsVector(toMap_));
    Pyramid const& pyramid = pyramids_[face];
    auto const finer = static_cast<std::size_t>(level);
    float const share = level - static_cast<float>(finer);
    if (finer + 1 >= pyramid.size())
        return pyramid.back().colours.front();
    Colour const light = GetBetween(pyramid[finer], place);
    return share > 0 ? Lerp(light, GetBetween(pyramid[finer + 1], place), share) : light;
}

Sky LoadSky(std::string const& folder, CoordinateFramef const& axes)
{
    constexpr std::array NAMES{"px.png", "nx.png", "py.png", "ny.png", "pz.png", "nz.png"};
    Sky::Faces faces;
    for (std::size_t face = 0; face < faces.size(); ++face)
    {
        std::string const path = folder + "/" + NAMES[face];
        faces[face] = ReadSquare(path);
        if (faces[face].side != faces[0].side)
            throw UserError(path + ": is not as large as " + NAMES[0]);
    }
    return {std::move(faces), axes};
}

Sky ComputeSky()
{
    constexpr unsigned SIDE = 256;
    Sky::Faces faces;
    for (std::size_t face = 0; face < faces.size(); ++face)
    {
        faces[face].side = SIDE;
        for (unsigned y = 0; y < SIDE; ++y)
        {
            for (unsigned x = 0; x < SIDE; ++x)
            {
                Place const place{(static_cast<float>(x) + 0.5F) * 2 / SIDE - 1,
                                  (static_cast<float>(y) + 0.5F) * 2 / SIDE - 1};
                faces[face].colours.push_back(GetComputedLight(GetDirection(face, place).Normalised()));
            }
        }
    }
    return {std::move(faces), CUBE_MAP};
}

} // namespace raytracer
