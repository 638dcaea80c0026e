// What is equal to what, and why.
#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <limits>
#include <optional>

#include <bv/Exception.h>
#include <bv/maths/IsEqual.h>
#include <bv/maths/View.h>
#include <bv/maths/tMatrix4.h>

using namespace bv::maths;

namespace
{

//! [steps]
/// How many representable numbers a positive number lies behind another.
int CountSteps(float from, float to)
{
    return std::bit_cast<std::int32_t>(to) - std::bit_cast<std::int32_t>(from);
}

void Compare(char const* text, float a, float b)
{
    std::cout << text << ": " << CountSteps(a, b) << " steps, " << (IsEqual(a, b) ? "equal" : "different") << '\n';
}
//! [steps]

} // namespace

int main()
{
    std::cout << std::boolalpha;

    //! [large]
    Compare("100000 and 100000.375", 100000, 100000.375F);
    Compare("100000 and 100000.5", 100000, 100000.5F);
    Compare("0 and 0.000001", 0, 1e-6F);
    Compare("0 and 0.000002", 0, 2e-6F);
    Compare("1e-9 and 1e-8", 1e-9F, 1e-8F);
    //! [large]

    //! [chain]
    float const step = std::numeric_limits<float>::epsilon(); // from 1 to the next number
    float const a = 1;
    float const b = a + 40 * step;
    float const c = b + 40 * step;
    std::cout << "a and b: " << IsEqual(a, b) << ", b and c: " << IsEqual(b, c) << ", a and c: " << IsEqual(a, c)
              << '\n';
    //! [chain]

    //! [singular]
    Matrix4f const small = Matrix4f::Scale(0.01F);                         // DIAGONAL
    Matrix4f const moved = Matrix4f::Translate(Vector3f(1, 0, 0)) * small; // GENERAL, of determinant 0.000001
    std::cout << "a scale of 0.01, inverted: " << small.Inverted()[0] << '\n';
    try
    {
        std::cout << moved.Inverted()[0] << '\n';
    }
    catch (bv::Exception const& failure)
    {
        std::cout << "the same, moved: " << failure.Message().ToCharArray() << '\n';
    }
    if (std::optional<Matrix4f> const inverse = TryInverted(moved))
        std::cout << "TryInverted: " << (*inverse)[0] << '\n';
    //! [singular]
}
