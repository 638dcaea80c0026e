#include "ObjText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

#include "Message.h"
#include "UserError.h"

namespace raytracer
{

namespace
{

constexpr unsigned MAX_CORNERS = 255;

/// Takes the first line off a text. Its end is that of any system, as the OBJ reader has it.
std::string_view TakeLine(std::string_view& text)
{
    std::size_t const length = std::min(text.find_first_of("\r\n"), text.size());
    std::string_view const line = text.substr(0, length);
    text.remove_prefix(length);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    return line;
}

/// Takes the first word off a line, which is empty when there is none.
std::string_view TakeWord(std::string_view& line)
{
    constexpr char BLANKS[] = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(BLANKS), line.size()));
    std::size_t const length = std::min(line.find_first_of(BLANKS), line.size());
    std::string_view const word = line.substr(0, length);
    line.remove_prefix(length);
    return word;
}

/// Reads the number that the whole word stands for, also with a plus sign.
template <typename Number>
bool ReadWhole(std::string_view word, Number& number)
{
    word.remove_prefix(word.starts_with('+') && !word.starts_with("+-") ? 1 : 0);
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
}

/// What is wrong with a vertex; empty if nothing is.
std::string FindFaultOfVertex(std::string_view words)
{
    for (unsigned axis = 0; axis < 3; ++axis)
    {
        std::string_view const word = TakeWord(words);
        float coordinate = 0;
        if (!ReadWhole(word, coordinate) || !std::isfinite(coordinate))
            return Quote(word) + " is not a finite coordinate";
    }
    return {};
}

/// The part of a corner's word that names its vertex.
std::string_view GetName(std::string_view word)
{
    return word.substr(0, word.find('/'));
}

/// What is wrong with a face after so many vertices, of so many in the whole file; empty if nothing is.
std::string FindFaultOfFace(std::string_view words, std::size_t before, std::size_t all)
{
    unsigned corners = 0;
    for (std::string_view word = TakeWord(words); !word.empty(); word = TakeWord(words))
    {
        std::string_view const name = GetName(word);
        int index = 0;
        bool const isThere = ReadWhole(name, index) && index != 0 &&
                             (index > 0 ? static_cast<std::size_t>(index) <= all
                                        : static_cast<std::size_t>(-static_cast<long long>(index)) <= before);
        if (!isThere)
            return "a face names vertex " + Quote(name) + " of " + std::to_string(all);
        if (++corners > MAX_CORNERS)
            return "a face has more than " + std::to_string(MAX_CORNERS) + " corners";
    }
    return {};
}

/// Adds a face by its vertices alone: the reader stops at what it cannot read of the rest.
void AppendFace(std::string& geometry, std::string_view words)
{
    geometry += 'f';
    for (std::string_view word = TakeWord(words); !word.empty(); word = TakeWord(words))
        geometry.append(" ").append(GetName(word));
    geometry += '\n';
}

std::size_t CountVertices(std::string_view text)
{
    std::size_t count = 0;
    while (!text.empty())
    {
        std::string_view line = TakeLine(text);
        count += TakeWord(line) == "v" ? 1U : 0U;
    }
    return count;
}

} // namespace

std::string GetGeometry(std::string const& path, std::string const& text)
{
    std::size_t const vertexCount = CountVertices(text);
    std::string geometry;
    std::size_t vertices = 0;
    std::string_view rest = text;
    for (std::size_t number = 1; !rest.empty(); ++number)
    {
        std::string_view const line = TakeLine(rest);
        std::string_view words = line;
        std::string_view const kind = TakeWord(words);
        std::string fault;
        if (kind == "v")
        {
            fault = FindFaultOfVertex(words);
            ++vertices;
        }
        else if (kind == "f")
            fault = FindFaultOfFace(words, vertices, vertexCount);
        else
            continue;
        if (!fault.empty())
            throw UserError(path + ", line " + std::to_string(number) + ": " + fault);
        if (kind == "f")
            AppendFace(geometry, words);
        else
            geometry.append(line).push_back('\n');
    }
    return geometry;
}

} // namespace raytracer
