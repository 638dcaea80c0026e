// Objects read from arbitrary bytes: they hold these bytes, copies are like them, and queries stay within them.

#include <istream>
#include <string>
#include <string_view>

#include "Fuzz.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/ArithmeticException.h"
#include "bv/maths/Bounds.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"

using namespace bv;
using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

/// Reads an object over another one.
/// @param length how many bytes are read.
template <typename Value>
Value Read(std::string const& bytes, Value value, std::size_t length)
{
    static Memory memory;
    static std::istream stream(&memory);
    std::string expected = BytesOf(value);
    stream.clear();
    memory.Give(bytes);
    value.Deserialise(stream);
    Require(stream.fail() == (bytes.size() < length), "a stream that ends early says so");
    std::string_view const given = std::string_view(bytes).substr(0, length);
    expected.replace(0, given.size(), given);
    Require(BytesOf(value) == expected, "an object holds what was read, and no more");
    Value const copy(value);
    Require(BytesOf(copy) == expected, "a copy holds the same");
    return copy;
}

template <typename Value>
Value Read(std::string const& bytes, Value const& value)
{
    return Read(bytes, value, BytesOf(value).size());
}

template <typename T>
void ReadVectors(std::string const& bytes)
{
    tVector3<T> const v = Read(bytes, tVector3<T>());
    tVector2<T> const w = Read(bytes, tVector2<T>());
    Require(w.x == v.x || v.x != v.x, "vectors of two and three components begin alike");
    auto const three = Read(bytes, tTuple3<T>());
    auto const two = Read(bytes, tTuple2<T>());
    Require(three.GetHash32() == tTuple3<T>(three).GetHash32() && two.GetHash8() == tTuple2<T>(two).GetHash8(),
            "equal tuples have equal hashes");
}

template <typename T>
void ReadShapes(std::string const& bytes)
{
    auto const area = Read(bytes, tAreaAABB<T>());
    Require(area.IsValid() == (area.GetMin().x <= area.GetMax().x && area.GetMin().y <= area.GetMax().y),
            "a valid box is one in order");
    auto const box = Read(bytes, tVolumeAABB<T>());
    Require(box.Contains(box.GetMin(), false) == (box.GetMin().x <= box.GetMax().x &&
                                                  box.GetMin().y <= box.GetMax().y && box.GetMin().z <= box.GetMax().z),
            "a box in order holds its lower corner");
    auto const disc = Read(bytes, tAreaDisc<T>(tVector2<T>()));
    auto const sphere = Read(bytes, tVolumeSphere<T>(tVector3<T>()));
    Require(IsSame(disc.GetRadiusSquared(), sphere.GetRadiusSquared()), "discs and spheres begin with the same number");
    Require(disc.Overlaps(area) == area.Overlaps(disc), "discs and boxes overlap each other");
    Require(sphere.Overlaps(box) == box.Overlaps(sphere), "spheres and boxes overlap each other");
    Require(Overlaps(box, box) ==
                (box.GetMin().x < box.GetMax().x && box.GetMin().y < box.GetMax().y && box.GetMin().z < box.GetMax().z),
            "a box overlaps itself, unless it has no inside");
    auto const turned = Read(bytes, tOrientedBox<T>());
    tVector3<T> corners[8];
    turned.GetCorners(corners);
    for (unsigned i = 0; i < 8; ++i)
        Require(IsSame(turned.GetCorner(i), corners[i]), "the corners of a turned box are those of its corner numbers");
}

template <typename T>
void ReadFrames(std::string const& bytes)
{
    auto const frame = Read(bytes, tCoordinateFrame<T>());
    unsigned char const x = frame.GetX();
    unsigned char const y = frame.GetY();
    unsigned char const z = frame.GetZ();
    bool const isRefused = x / 2 == y / 2 || y / 2 == z / 2 || x / 2 == z / 2;
    try
    {
        tCoordinateFrame<T> const checked(x, y, z);
        Require(!isRefused, "a frame is refused for two axes of one pair");
        tMatrix4<T> const turn = checked.CreateRotationMatrix(frame);
        if (std::max({x, y, z}) > 5)
            return; // of directions that there are none of
        Require(IsSame(checked.GetVector(x), tVector3<T>(1, 0, 0)), "x runs along x");
        for (std::size_t i = 0; i < 16; ++i)
            Require(turn[i] == (i % 5 == 0 ? T{1} : T{0}), "a frame is not turned against itself");
        unsigned char faces[6];
        checked.MapCubeMap(frame, faces);
        for (unsigned char i = 0; i < 6; ++i)
            Require(faces[i] == i, "a frame's cube map is its own");
    }
    catch (InvalidArgumentException const&)
    {
        Require(isRefused, "a frame is refused for nothing else");
    }
}

template <typename T>
void ReadAll(std::string const& bytes)
{
    ReadVectors<T>(bytes);
    ReadShapes<T>(bytes);
    ReadFrames<T>(bytes);
    static_cast<void>(Read(bytes, tQuaternion<T>()));
    auto const plane = Read(bytes, tPlane<T>({0, 1, 0}, 5), 3 * sizeof(T));
    Require(IsSame(plane.GetAbsoluteDistance({1, 2, 3}), std::abs(plane.GetDistance({1, 2, 3}))),
            "an absolute distance is that of the distance");
    auto const matrix = Read(bytes, tMatrix4<T>());
    Require(IsSame(tMatrix4<T>(matrix) = matrix, matrix), "a matrix can be assigned");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const bytes(reinterpret_cast<char const*>(data), size);
    ReadAll<float>(bytes);
    ReadAll<double>(bytes);
    return 0;
}
