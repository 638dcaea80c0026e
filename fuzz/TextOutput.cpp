// Text of any numbers: that of C's "%g" in the classic locale, whatever the stream is set to.

#include <concepts>
#include <iomanip>
#include <ostream>
#include <string>

#include "Fuzz.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

template <std::floating_point T>
std::string TextOf(T number)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%g", static_cast<double>(number));
    return text;
}

std::string TextOf(int number)
{
    return std::to_string(number);
}

std::string TextOf(unsigned int number)
{
    return std::to_string(number);
}

template <typename T, typename... Ts>
std::string Joined(T first, Ts... others)
{
    std::string text = TextOf(first);
    ((text += ", " + TextOf(others)), ...);
    return text;
}

template <typename Value>
void RequireText(Value const& value, std::string const& expected, unsigned width)
{
    static Memory memory;
    static std::ostream stream(&memory);
    static auto const flags = []
    {
        stream << std::hex << std::showpos << std::setprecision(2) << std::fixed << std::setfill('*');
        return stream.flags();
    }();
    memory.Clear();
    stream << std::setw(static_cast<int>(width)) << value;
    std::string padded(width > expected.size() ? width - expected.size() : 0, '*');
    padded += expected;
    Require(memory.Written() == padded, "a text does not depend on how the stream shows numbers");
    Require(stream.good() && stream.flags() == flags && stream.precision() == 2 && stream.fill() == '*' &&
                stream.width() == 0,
            "a stream shows numbers as before, and the width is used up");
}

template <typename T>
void Tuples(T x, T y, T z, unsigned width)
{
    std::string const two = Joined(x, y);
    std::string const three = two + ", " + TextOf(z);
    RequireText(tTuple2<T>(x, y), two, width);
    RequireText(tTuple3<T>(x, y, z), three, width);
    RequireText(tVector2<T>(x, y), two, width);
    RequireText(tVector3<T>(x, y, z), three, width);
}

template <typename T>
void Shapes(Input& input, unsigned width)
{
    T const x = input.Number<T>();
    T const y = input.Number<T>();
    T const z = input.Number<T>();
    T const w = input.Number<T>();
    Tuples(x, y, z, width);
    RequireText(tQuaternion<T>(x, y, z, w), Joined(x, y, z, w), width);
    tMatrix4<T> const matrix = input.Matrix<T>();
    std::string rows;
    for (std::size_t i = 0; i < 16; ++i)
        rows += TextOf(matrix[i]) + (i % 4 == 3 ? '\n' : '\t');
    Require(static_cast<std::string>(matrix) == rows, "a matrix is shown by rows");
    RequireText(matrix, rows, width);
    tPlane<T> const plane({x, y, z}, w);
    tVector3<T> const normal = plane.GetNormal();
    std::string const numbers = Joined(normal.x, normal.y, normal.z, plane.GetOffset());
    Require(static_cast<std::string>(plane) == numbers, "a plane is shown by its numbers");
    RequireText(plane, numbers, width);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    unsigned const width = input.Below(80);
    Shapes<float>(input, width);
    Shapes<double>(input, width);
    auto const x = input.Take<int>();
    auto const y = input.Take<int>();
    auto const z = input.Take<int>();
    Tuples(x, y, z, width);
    Tuples(static_cast<unsigned>(x), static_cast<unsigned>(y), static_cast<unsigned>(z), width);
    return 0;
}
