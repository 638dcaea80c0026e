#include <cerrno>

#include <png.h>

#include "Picture.h"
#include "UserError.h"

namespace raytracer
{

void WritePng(Picture const& picture, OutputFile& file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.GetSize().x;
    image.height = picture.GetSize().y;
    image.format = PNG_FORMAT_RGB;
    errno = 0;
    if (png_image_write_to_stdio(&image, file.GetStream(), 0, picture.GetBytes(), 0, nullptr) == 0)
        file.Refuse(image.message);
    file.Publish();
}

Texels ReadSquare(std::string const& path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        throw UserError(path + ": " + image.message);
    if (image.width != image.height)
    {
        png_image_free(&image);
        throw UserError(path + ": is not square");
    }
    image.format = PNG_FORMAT_LINEAR_Y | PNG_FORMAT_FLAG_COLOR; // sixteen bits each of linear light
    std::vector<png_uint_16> numbers(PNG_IMAGE_SIZE(image) / sizeof(png_uint_16));
    png_color const black{};
    if (png_image_finish_read(&image, &black, numbers.data(), 0, nullptr) == 0)
        throw UserError(path + ": " + image.message);

    Texels texels{image.width, {}};
    for (std::size_t at = 0; at + 2 < numbers.size(); at += 3)
        texels.colours.push_back(Colour(numbers[at], numbers[at + 1], numbers[at + 2]) / 65535.0F);
    return texels;
}

} // namespace raytracer
