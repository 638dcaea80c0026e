// Texts of OBJ files: what the ray tracer lets through, its reader takes for what it says.

#include <charconv>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <tiny_obj_loader.h>

#include "Fuzz.h"
#include "Message.h"
#include "ObjText.h"
#include "UserError.h"

using namespace bv::fuzz;

namespace
{

/// A line of the geometry, in its words.
std::vector<std::string> Words(std::string const& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// Expects that the reader sees the same vertices and corners as there are in the text.
void RequireRead(std::string const& geometry)
{
    std::vector<double> coordinates;
    std::vector<int> corners;
    std::istringstream lines(geometry);
    for (std::string line; std::getline(lines, line);)
    {
        std::vector<std::string> const words = Words(line);
        Require(words.size() >= 1 && (words[0] == "v" || words[0] == "f"), "only vertices and faces are let through");
        if (words[0] == "v")
            for (std::size_t i = 1; i <= 3; ++i)
                coordinates.push_back(std::strtod(words.at(i).c_str(), nullptr));
        else if (words.size() > 3) // less is no face to the reader
            for (std::size_t i = 1; i < words.size(); ++i)
            {
                int const index = std::stoi(words[i]);
                corners.push_back(index > 0 ? index - 1 : static_cast<int>(coordinates.size() / 3) + index);
            }
    }

    tinyobj::ObjReaderConfig config;
    config.triangulate = false;
    tinyobj::ObjReader reader;
    if (!reader.ParseFromString(geometry, "", config))
        return; // it is refused as well
    auto const& read = reader.GetAttrib().vertices;
    Require(read.size() == coordinates.size(), "the reader finds every vertex");
    for (std::size_t i = 0; i < read.size(); ++i)
    {
        double const error = std::abs(static_cast<double>(read[i]) - coordinates[i]);
        Require(!std::isfinite(read[i]) || error <= 1e-5 * std::abs(coordinates[i]) + 1e-37,
                "the reader takes a coordinate for what it is");
    }
    std::size_t at = 0;
    for (auto const& shape : reader.GetShapes())
    {
        std::size_t count = 0;
        for (unsigned const size : shape.mesh.num_face_vertices)
            count += size;
        Require(count == shape.mesh.indices.size(), "the reader counts the corners of every face");
        for (auto const& index : shape.mesh.indices)
        {
            Require(at < corners.size() && index.vertex_index == corners[at], "the reader finds every corner");
            Require(static_cast<std::size_t>(index.vertex_index) < read.size() / 3, "every corner is there");
            ++at;
        }
    }
    Require(at == corners.size(), "the reader leaves no corner out");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    try
    {
        RequireRead(raytracer::GetGeometry("mesh", text));
    }
    catch (raytracer::UserError const& error)
    {
        std::string const message = error.what();
        Require(message.starts_with("mesh, line "), "what is wrong is said with its line");
        Require(message.size() < 200, "what is wrong is said in short");
        for (char const character : message)
            Require(character >= ' ' && character <= '~', "what is wrong is said in printable ASCII");
    }
    return 0;
}
