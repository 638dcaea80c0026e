#pragma once

#include <optional>
#include <string>

#include "Maths.h"
#include "bv/maths/Percentage.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector3.h"

namespace raytracer
{

/// How many rays go through the hierarchy at once: one, four (SSE), eight (AVX), or as many as the processor can.
enum class PacketKind
{
    Auto,
    Scalar,
    Sse,
    Avx
};

/// What a surface is made of.
enum class Material
{
    Plain,
    Marble,
    Wood,
    Mirror
};

/// What the mesh stands on.
enum class Floor
{
    None,
    Plain,
    Checker
};

/// Right, up, and out of the picture towards the viewer: the axes that the scene is described in.
inline constexpr CoordinateFramef WORLD{CoordinateFramef::RIGHT, CoordinateFramef::UP, CoordinateFramef::BACKWARDS};

/// The axes that cube maps are usually drawn in.
inline constexpr CoordinateFramef CUBE_MAP{CoordinateFramef::RIGHT, CoordinateFramef::UP, CoordinateFramef::FORWARDS};

/// The command line, read and checked.
struct Options
{
    std::string mesh;
    std::string output = "picture.png";
    Tuple2u size{960, 600};
    std::optional<AreaAABBf> crop; ///< pixels, whole numbers, within the picture

    std::optional<Vector3f> eye;
    std::optional<Vector3f> lookAt;
    float fov = 35; ///< degrees from the bottom of the picture to its top

    CoordinateFramef axes = WORLD;
    Material material = Material::Plain;
    unsigned spheres = 0;
    Material sphereMaterial = Material::Plain;
    Floor floor = Floor::Plain;
    std::string sky; ///< folder of the six faces; empty for the computed sky
    CoordinateFramef skyAxes = CUBE_MAP;

    unsigned samples = 4; ///< rays through each pixel
    unsigned ao = 16;     ///< rays from each hit to the sky; 0 for no shadows at all
    unsigned seed = 1;
    unsigned threads = 1;
    PacketKind packet = PacketKind::Auto;
    Percentage part{1}; ///< how much of the picture is drawn before the program stops
    bool compare = false;
};

/// Reads the command line.
/// @return nothing when it only asked for help, which is then on standard output.
/// @throws UserError for what is missing, unknown or out of range.
std::optional<Options> ReadOptions(int argc, char const* const* argv);

} // namespace raytracer
