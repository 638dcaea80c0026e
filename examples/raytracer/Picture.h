#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Maths.h"
#include "OutputFile.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector3.h"

namespace raytracer
{

/// Rows of pixels from the top, each three bytes: red, green, blue, as a screen takes them.
class Picture
{
public:
    explicit Picture(Tuple2u const& size) : size_(size), bytes_(std::size_t{3} * size.x * size.y) {}

    [[nodiscard]] Tuple2u const& GetSize() const { return size_; }
    [[nodiscard]] std::uint8_t const* GetBytes() const { return bytes_.data(); }
    /// Stores light as the eye and the screen like it: bright parts compressed, and encoded for sRGB.
    void SetPixel(Tuple2u const& pixel, Colour const& light);
    /// How many pixels are not the same in another picture of this size.
    [[nodiscard]] std::size_t CountDifferences(Picture const& other) const;

private:
    Tuple2u size_;
    std::vector<std::uint8_t> bytes_;
};

/// Writes a PNG file.
/// @throws UserError when that cannot be done; nothing of the picture is left then.
void WritePng(Picture const& picture, OutputFile& file);

/// A square of linear light.
struct Texels
{
    unsigned side;
    std::vector<Colour> colours; ///< rows from the top
};

/// Reads a PNG file.
/// @throws UserError when it cannot be read or is not square.
Texels ReadSquare(std::string const& path);

} // namespace raytracer
