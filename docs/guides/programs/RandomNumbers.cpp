// Random numbers, how they are spread, and what seeds are worth.
// Usage: RandomNumbers [PICTURE.svg]
#include <array>
#include <cstddef>
#include <fstream>
#include <iostream>

#include <bv/FileIOException.h>
#include <bv/maths/RNGenerator.h>
#include <bv/maths/tVector2.h>

using namespace bv::maths;

namespace
{

constexpr unsigned int SIDE = 200; // of each plot

//! [histogram]
/// How often numbers fall into each of forty equal parts of [0, 1).
std::array<unsigned int, 40> CountNumbers(unsigned int draws)
{
    std::array<unsigned int, 40> counts{};
    RNGenerator generator(1);
    for (unsigned int i = 0; i < draws; ++i)
        ++counts[static_cast<std::size_t>(generator.GetFloat() * 40)];
    return counts;
}
//! [histogram]

void DrawHistogram(std::ostream& svg, unsigned int draws)
{
    unsigned int x = 0;
    for (unsigned int const count : CountNumbers(draws))
    {
        unsigned int const height = count / 8;
        svg << "<rect class=\"mark\" x=\"" << x << "\" y=\"" << SIDE - height << "\" width=\"4\" height=\"" << height
            << "\"/>\n";
        x += 5;
    }
    svg << "<path class=\"line\" d=\"M0 " << SIDE - draws / 40 / 8 << "h" << SIDE << "\"/>\n";
}

void DrawPoint(std::ostream& svg, Vector2f const& point)
{
    svg << "<circle class=\"mark\" cx=\"" << static_cast<int>(point.x * SIDE) << "\" cy=\""
        << static_cast<int>(point.y * SIDE) << "\" r=\"1\"/>\n";
}

//! [points]
/// Points made of the low 8 bits of two draws each.
void DrawLowBits(std::ostream& svg, unsigned int seed)
{
    RNGenerator generator(seed);
    for (int i = 0; i < 600; ++i)
    {
        unsigned int const x = generator.GetInteger() % 256;
        unsigned int const y = generator.GetInteger() % 256;
        DrawPoint(svg, Vector2f(static_cast<float>(x), static_cast<float>(y)) / 256);
    }
}
//! [points]

void DrawPlot(std::ostream& svg, char const* title, unsigned int left, void (*draw)(std::ostream&, unsigned int),
              unsigned int argument)
{
    svg << "<g transform=\"translate(" << left << " 40)\">\n<text y=\"-12\">" << title
        << "</text>\n<rect class=\"frame\" width=\"" << SIDE << "\" height=\"" << SIDE << "\"/>\n";
    draw(svg, argument);
    svg << "</g>\n";
}

void DrawPlots(char const* path)
{
    std::ofstream svg(path);
    svg << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 700 260\" width=\"700\" height=\"260\" "
           "role=\"img\">\n"
           "<title>A histogram of random numbers, and points made of low bits, with a good seed and with a bad "
           "one</title>\n"
           "<style>.paper{fill:#fff}.frame{fill:none;stroke:#999}.mark{fill:#2a6f97}.line{stroke:#c1440e;stroke-width:"
           "2}"
           "text{font:14px "
           "sans-serif;fill:#222}@media(prefers-color-scheme:dark){.paper{fill:#1d2126}.mark{fill:#7cc0e8}"
           ".line{stroke:#ff9b6b}text{fill:#e6e6e6}}</style>\n"
           "<rect class=\"paper\" width=\"700\" height=\"260\"/>\n";
    DrawPlot(svg, "40,000 numbers in 40 parts", 20, DrawHistogram, 40000);
    DrawPlot(svg, "600 points of low bits, seed 1", 250, DrawLowBits, 1);
    DrawPlot(svg, "the same, seed 32768", 480, DrawLowBits, 32768);
    svg << "</svg>\n";
    svg.close();
    if (!svg)
        throw bv::FileIOException(path);
}

} // namespace

int main(int count, char const* const* arguments)
try
{
    std::cout << std::boolalpha;

    //! [draws]
    RNGenerator generator(1);
    RNGenerator copy = generator; // goes on with the same numbers
    std::cout << "a draw: " << generator.GetInteger() << ", and of the copy: " << copy.GetInteger() << '\n';
    std::cout << "started anew: " << generator.SetSeed(1).GetInteger() << '\n';
    //! [draws]

    //! [seeds]
    std::cout << "seeds 1 and 32769: " << RNGenerator(1).GetInteger() << ", " << RNGenerator(32769).GetInteger()
              << '\n';
    std::cout << "the last two bits with seed 32768:";
    RNGenerator poor(32768);
    for (int i = 0; i < 12; ++i)
        std::cout << ' ' << poor.GetInteger() % 4;
    std::cout << '\n';
    //! [seeds]

    if (count > 1)
        DrawPlots(arguments[1]);
}
catch (bv::Exception const& failure)
{
    std::cerr << "cannot write " << failure.Message().ToCharArray() << '\n';
    return 1;
}
