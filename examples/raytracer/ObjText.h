#pragma once

#include <string>

namespace raytracer
{

/// The vertices and the faces, by their vertices alone, of the text of a Wavefront OBJ file, a line each, as they mean
/// it: the OBJ reader takes what is no number for zero, what is too large for another one, and faces of many corners
/// for smaller ones.
///
/// @param path of the file, for messages.
/// @throws UserError for a vertex without three finite coordinates, and for a face that names what is not there or has
/// too many corners.
std::string GetGeometry(std::string const& path, std::string const& text);

} // namespace raytracer
