// Noise and its sums, and swatches of 1 to 10 octaves.
// Usage: NoiseAndTurbulence [PICTURE.png]
#include <iostream>

#include <bv/Exception.h>
#include <bv/maths/Noise.h>
#include <bv/maths/tVector2.h>
#include <bv/maths/tVector3.h>

#include "Picture.h"

using namespace bv::maths;

namespace
{

//! [swatches]
/// Ten squares in two rows, with one octave in the first and ten in the last. Each shows four cells of the first
/// octave.
void DrawSwatches(char const* path)
{
    constexpr unsigned int SIDE = 112;
    constexpr unsigned int GAP = 8;
    constexpr unsigned int COLUMNS = 5;
    constexpr float CELLS = 4;
    Picture picture({COLUMNS * SIDE + (COLUMNS - 1) * GAP, 2 * SIDE + GAP});
    for (unsigned int octaves = 1; octaves <= 10; ++octaves)
    {
        unsigned int const left = (octaves - 1) % COLUMNS * (SIDE + GAP);
        unsigned int const top = (octaves - 1) / COLUMNS * (SIDE + GAP);
        for (unsigned int y = 0; y < SIDE; ++y)
        {
            for (unsigned int x = 0; x < SIDE; ++x)
            {
                Vector2f const point(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
                picture.Draw(left + x, top + y, Turbulence2(point * (CELLS / SIDE), octaves));
            }
        }
    }
    picture.Write(path);
}
//! [swatches]

} // namespace

int main(int count, char const* const* arguments)
try
{
    std::cout << std::boolalpha;

    //! [values]
    Vector3f const point(0.3F, 1.7F, 2.9F);
    std::cout << "at whole numbers: " << Noise3(Vector3f(1, 2, 3)) << '\n';
    std::cout << "with period 256: " << (Noise2(Vector2f(256.5F, -255.25F)) == Noise2(Vector2f(0.5F, 0.75F))) << '\n';
    std::cout << "no octave: " << Turbulence3(point, 0) << '\n';
    std::cout << "one octave is the noise: " << (Turbulence3(point, 1) == Noise3(point)) << '\n';
    std::cout << "eleven octaves are ten: " << (Turbulence3(point, 11) == Turbulence3(point, 10)) << '\n';
    //! [values]

    if (count > 1)
        DrawSwatches(arguments[1]);
}
catch (bv::Exception const& failure)
{
    std::cerr << failure.Message().ToCharArray() << '\n';
    return 1;
}
