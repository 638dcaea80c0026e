#pragma once

/// @file
/// What depth means to a projection and to the views made from it.

#include <cstdint>

namespace bv::maths
{

/// What a projection makes of the distance from the near to the far plane.
///
/// GetScreenView() takes the range of its matrix. tFrustum(matrix) takes it for MINUS_ONE_TO_ONE: of a matrix of
/// another range, it has the four sides right, but not the near and the far plane.
enum class DepthRange : std::uint32_t
{
    MINUS_ONE_TO_ONE = 0, ///< as OpenGL and tMatrix4::PerspectiveProjection() have it; any unknown value counts as this
    ZERO_TO_ONE = 1,      ///< as Direct3D, Metal and Vulkan have it
    ONE_TO_ZERO = 2       ///< reversed: 1 at the near plane, so that floating-point depths keep their precision afar
};

} // namespace bv::maths
