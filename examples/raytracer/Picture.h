#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Maths.h"
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

/// The place of a PNG file. A picture is written beside it and moved there when it is whole, so that what stood there
/// stays as it was until then.
class PngFile
{
public:
    /// @throws UserError when no file can be written there.
    explicit PngFile(std::string const& path);

    /// @throws UserError when the picture cannot be written; nothing of it is left then.
    void Write(Picture const& picture) const;

private:
    std::string path_;
    std::string temporary_;
};

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
