#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <png.h>

#include <bv/FileIOException.h>
#include <bv/maths/tTuple2.h>

/// A picture in shades of grey, transparent where nothing is drawn.
class Picture
{
    bv::maths::Tuple2u size;
    std::vector<unsigned char> pixels; ///< shade and opacity of each, row by row from the top

public:
    explicit Picture(bv::maths::Tuple2u const& pictureSize)
        : size{pictureSize}, pixels(std::size_t{2} * pictureSize.x * pictureSize.y)
    {
    }

    /// @param shade from 0, black, to 1, white; what is outside counts as the nearest of them.
    void Draw(unsigned int x, unsigned int y, float shade)
    {
        std::size_t const index = 2 * (std::size_t{y} * size.x + x);
        float const clamped = shade < 0 ? 0.0F : (shade > 1 ? 1.0F : shade);
        pixels[index] = static_cast<unsigned char>(clamped * 255 + 0.5F);
        pixels[index + 1] = 255;
    }

    /// @throws bv::FileIOException where the file cannot be written.
    void Write(std::string const& path) const
    {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = size.x;
        image.height = size.y;
        image.format = PNG_FORMAT_GA;
        if (png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) == 0)
            throw bv::FileIOException((path + ": " + image.message).c_str());
    }
};
