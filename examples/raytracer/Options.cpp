#include "Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iostream>
#include <iterator>
#include <map>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "Message.h"
#include "UserError.h"
#include "bv/InvalidArgumentException.h"
#include "bv/String.h"

namespace raytracer
{

namespace
{

constexpr unsigned MAX_SIDE = 16384;

std::vector<std::string> SplitAt(char separator, std::string const& text)
{
    std::vector<std::string> parts{""};
    for (char const character : text)
    {
        if (character == separator)
            parts.emplace_back();
        else
            parts.back() += character;
    }
    return parts;
}

/// The number that the whole text stands for.
template <typename Number>
std::optional<Number> ReadNumber(std::string const& text)
{
    Number number{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// As many numbers as the array holds, and nothing else.
template <typename Number, std::size_t COUNT>
std::optional<std::array<Number, COUNT>> ReadNumbers(char separator, std::string const& text)
{
    std::vector<std::string> const parts = SplitAt(separator, text);
    if (parts.size() != COUNT)
        return std::nullopt;
    std::array<Number, COUNT> numbers{};
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        std::optional<Number> const number = ReadNumber<Number>(parts[i]);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    return numbers;
}

[[noreturn]] void Refuse(std::string const& option, std::string const& text, std::string const& wanted)
{
    throw UserError(option + ": " + Quote(text) + " is not " + wanted);
}

Tuple2u ReadSize(std::string const& text)
{
    auto const numbers = ReadNumbers<unsigned, 2>('x', text);
    if (!numbers || std::ranges::any_of(*numbers, [](unsigned side) { return side == 0 || side > MAX_SIDE; }))
        Refuse("--size", text, "WIDTHxHEIGHT with both sides from 1 to " + std::to_string(MAX_SIDE));
    return {(*numbers)[0], (*numbers)[1]};
}

Vector3f ReadPoint(std::string const& option, std::string const& text)
{
    auto const numbers = ReadNumbers<float, 3>(',', text);
    if (!numbers || std::ranges::any_of(*numbers, [](float number) { return !(std::abs(number) <= 1e4F); }))
        Refuse(option, text, "X,Y,Z with numbers from -10000 to 10000");
    return Vector3f(numbers->data());
}

float ReadFov(std::string const& text)
{
    std::optional<float> const degrees = ReadNumber<float>(text);
    if (!degrees || !(*degrees >= 1 && *degrees <= 150))
        Refuse("--fov", text, "a number of degrees from 1 to 150");
    return *degrees;
}

CoordinateFramef ReadAxes(std::string const& option, std::string const& text)
{
    static std::map<std::string, unsigned char> const DIRECTIONS{{"right", CoordinateFramef::RIGHT},
                                                                 {"left", CoordinateFramef::LEFT},
                                                                 {"forwards", CoordinateFramef::FORWARDS},
                                                                 {"backwards", CoordinateFramef::BACKWARDS},
                                                                 {"up", CoordinateFramef::UP},
                                                                 {"down", CoordinateFramef::DOWN}};
    std::vector<unsigned char> codes;
    for (std::string const& name : SplitAt(',', text))
    {
        auto const direction = DIRECTIONS.find(name);
        if (direction == DIRECTIONS.end())
            Refuse(option, text, "three of right, left, forwards, backwards, up, down, joined by commas");
        codes.push_back(direction->second);
    }
    if (codes.size() != 3)
        Refuse(option, text, "three directions, for the x, y and z axes");
    try
    {
        return {codes[0], codes[1], codes[2]};
    }
    catch (bv::InvalidArgumentException const& error)
    {
        throw UserError(option + ": " + Quote(text) + ": " + error.Message().ToCharArray());
    }
}

AreaAABBf ReadCrop(std::string const& text, Tuple2u const& size)
{
    auto const numbers = ReadNumbers<unsigned, 4>(',', text);
    if (numbers)
    {
        auto const [left, top, right, bottom] = *numbers;
        if (left < right && right <= size.x && top < bottom && bottom <= size.y)
            return {{static_cast<float>(left), static_cast<float>(top)},
                    {static_cast<float>(right), static_cast<float>(bottom)}};
    }
    Refuse("--crop", text,
           "X0,Y0,X1,Y1 with X0 < X1 and Y0 < Y1 inside " + std::to_string(size.x) + "x" + std::to_string(size.y));
}

Percentage ReadPart(std::string const& text)
{
    auto const numbers = ReadNumbers<unsigned, 2>('/', text);
    if (!numbers || (*numbers)[0] > (*numbers)[1] || (*numbers)[1] == 0)
        Refuse("--part", text, "a fraction from 0/1 to 1/1");
    return {(*numbers)[0], (*numbers)[1]};
}

/// CLI11 may explain itself in several lines; the first says it.
std::string FirstLine(std::string const& text)
{
    return text.substr(0, text.find('\n'));
}

} // namespace

std::optional<Options> ReadOptions(int argc, char const* const* argv)
{
    Options options;
    options.threads = std::max(1U, std::thread::hardware_concurrency());

    std::string size = "960x600";
    std::string crop;
    std::string eye;
    std::string lookAt;
    std::string fov = "35";
    std::string axes = "right,up,backwards";
    std::string skyAxes = "right,up,forwards";
    std::string part = "1/1";
    std::string const material = "plain, marble, wood or mirror";
    std::map<std::string, Material> const materials{{"plain", Material::Plain},
                                                    {"marble", Material::Marble},
                                                    {"wood", Material::Wood},
                                                    {"mirror", Material::Mirror}};
    std::map<std::string, Floor> const floors{
        {"none", Floor::None}, {"plain", Floor::Plain}, {"checker", Floor::Checker}};
    std::map<std::string, PacketKind> const packets{
        {"auto", PacketKind::Auto}, {"scalar", PacketKind::Scalar}, {"sse", PacketKind::Sse}, {"avx", PacketKind::Avx}};

    CLI::App app("Draws a Wavefront OBJ mesh, set on a floor at the origin and scaled to two units, as a PNG picture.",
                 "raytracer");
    auto const choice = [&](std::string const& name, auto& value, auto const& values, std::string const& description)
    {
        return app.add_option(name, value, description)
            ->transform(CLI::CheckedTransformer(values, CLI::ignore_case).description(""))
            ->type_name("NAME");
    };
    auto const count =
        [&](std::string const& name, unsigned& value, unsigned least, unsigned most, std::string const& description)
    { return app.add_option(name, value, description)->capture_default_str()->check(CLI::Range(least, most)); };

    app.add_option("mesh", options.mesh, "the mesh, a Wavefront OBJ file")->required()->type_name("FILE");
    app.add_option("-o,--output", options.output, "the picture, a PNG file")->capture_default_str()->type_name("FILE");
    app.add_option("-s,--size", size, "width and height in pixels")->capture_default_str()->type_name("WxH");
    app.add_option("--crop", crop, "draw this window of the picture only, in pixels from the top left")
        ->type_name("X0,Y0,X1,Y1");
    app.add_option("--part", part, "stop when this part of the tiles is drawn")
        ->capture_default_str()
        ->type_name("N/M");

    app.add_option("--eye", eye, "where the camera stands (default: so that the mesh fills the picture)")
        ->type_name("X,Y,Z")
        ->group("Camera");
    app.add_option("--look-at", lookAt, "what it looks at (default: the middle of the mesh)")
        ->type_name("X,Y,Z")
        ->group("Camera");
    app.add_option("--fov", fov, "view from bottom to top")
        ->capture_default_str()
        ->type_name("DEGREES")
        ->group("Camera");

    app.add_option("--axes", axes, "where the x, y and z axes of the mesh file point")
        ->capture_default_str()
        ->type_name("X,Y,Z")
        ->group("Scene");
    choice("--material", options.material, materials, "of the mesh: " + material)->group("Scene");
    count("--spheres", options.spheres, 0, 64, "how many spheres stand around the mesh")->group("Scene");
    choice("--sphere-material", options.sphereMaterial, materials, "of the spheres: " + material)->group("Scene");
    choice("--floor", options.floor, floors, "none, plain or checker")->group("Scene");
    app.add_option("--sky", options.sky, "folder of a cube map: px.png, nx.png, py.png, ny.png, pz.png, nz.png")
        ->type_name("FOLDER")
        ->group("Scene");
    app.add_option("--sky-axes", skyAxes, "where the x, y and z axes of the cube map point")
        ->capture_default_str()
        ->type_name("X,Y,Z")
        ->group("Scene");

    count("--samples", options.samples, 1, 1024, "rays through each pixel")->group("Quality");
    count("--ao", options.ao, 0, 4096, "rays from each hit to the sky, 0 for no shadows")->group("Quality");
    app.add_option("--seed", options.seed, "of the random numbers")->capture_default_str()->group("Quality");

    count("--threads", options.threads, 1, 256, "how many tiles are drawn at once")->group("Work");
    choice("--packet", options.packet, packets, "rays traced at once: auto, scalar (1), sse (4) or avx (8)")
        ->group("Work");
    app.add_flag("--compare", options.compare, "draw again with single rays and count the pixels that differ")
        ->group("Work");

    try
    {
        app.parse(argc, argv);
    }
    catch (CLI::CallForHelp const&)
    {
        std::cout << app.help();
        return std::nullopt;
    }
    catch (CLI::ParseError const& error)
    {
        throw UserError(FirstLine(error.what()));
    }

    options.size = ReadSize(size);
    if (!crop.empty())
        options.crop = ReadCrop(crop, options.size);
    if (!eye.empty())
        options.eye = ReadPoint("--eye", eye);
    if (!lookAt.empty())
        options.lookAt = ReadPoint("--look-at", lookAt);
    options.fov = ReadFov(fov);
    options.axes = ReadAxes("--axes", axes);
    options.skyAxes = ReadAxes("--sky-axes", skyAxes);
    options.part = ReadPart(part);
    return options;
}

} // namespace raytracer
