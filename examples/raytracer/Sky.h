#pragma once

#include <array>
#include <string>
#include <vector>

#include "Maths.h"
#include "Picture.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"

namespace raytracer
{

/// Towards the sun.
inline Vector3f const SUN = Vector3f(-0.55F, 0.75F, 0.5F).Normalised();

/// The light that comes from far away, painted on the six faces of a cube, each with smaller and smaller copies.
class Sky
{
public:
    using Faces = std::array<Texels, 6>; ///< +x, -x, +y, -y, +z, -z of the map's own axes

    /// @param axes where the axes of the map point.
    Sky(Faces faces, CoordinateFramef const& axes);

    /// How coarse a copy shows no more than a cone of this width, in radians, would.
    [[nodiscard]] float GetLevel(float width) const;
    /// Light from a direction of unit length, as a copy of this level has it: 0 is the map itself, each level halves
    /// it.
    [[nodiscard]] Colour GetLight(Vector3f const& direction, float level) const;

private:
    using Pyramid = std::vector<Texels>; ///< a face, then each copy half as wide, down to one texel

    std::array<Pyramid, 6> pyramids_;
    std::array<unsigned char, 6> faceOf_{}; ///< the map's face for each face of the world's axes
    Matrix4f toMap_;                        ///< from the world's axes to the map's
};

/// Reads the six faces from a folder: px.png, nx.png, py.png, ny.png, pz.png and nz.png.
/// @throws UserError when one is missing.
Sky LoadSky(std::string const& folder, CoordinateFramef const& axes);

/// A summer day: clouds, haze at the horizon, and bright ground.
Sky ComputeSky();

} // namespace raytracer
