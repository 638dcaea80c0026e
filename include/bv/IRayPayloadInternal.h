#pragma once

/// @file
/// The per-ray data of the renderer that owns the rays.

namespace bv
{

/// Data that a renderer hangs on its rays. The library carries the pointer and never looks behind it; each renderer
/// defines the class for itself.
class IRayPayloadInternal;

} // namespace bv
