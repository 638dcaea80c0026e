#include <cstddef>
#include <cstring>
#include <functional>
#include <ios>
#include <istream>
#include <new>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

#include "bv/Exception.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tOrientedBox.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"
#include "support/Precisions.h"

// Streams that fail at every byte of every form. What was written before is there, and what was read before is taken
// over, byte by byte; everything else is as it was, and the stream says that it failed.

namespace
{

using namespace bv::maths;

/// How a stream fails once its bytes are used up.
enum class Failure
{
    End,  ///< it takes or gives no more, as a full disk or the end of a file
    Throw ///< its buffer throws
};

/// Takes or gives only so many bytes.
class ShortBuffer : public std::streambuf
{
    std::string bytes;
    std::size_t left;
    Failure failure;

    void Fail() const
    {
        if (failure == Failure::Throw)
            throw std::runtime_error("the device is gone");
    }

public:
    ShortBuffer(std::string given, std::size_t count, Failure how) : bytes{std::move(given)}, left{count}, failure{how}
    {
    }
    [[nodiscard]] std::string const& Bytes() const { return bytes; }

protected:
    int_type overflow(int_type character) override
    {
        if (left == 0)
        {
            Fail();
            return traits_type::eof();
        }
        --left;
        bytes += traits_type::to_char_type(character);
        return character;
    }
    int_type underflow() override
    {
        if (left == 0)
        {
            Fail();
            return traits_type::eof();
        }
        return traits_type::to_int_type(bytes[bytes.size() - left]);
    }
    int_type uflow() override
    {
        int_type const character = underflow();
        if (character != traits_type::eof())
            --left;
        return character;
    }
};

using Write = std::function<void(std::ostream&)>;

std::string WrittenWhole(Write const& write)
{
    std::ostringstream stream;
    write(stream);
    return stream.str();
}

/// Writes to streams that fail after every number of bytes, in every way.
void ExpectWritesFail(Write const& write)
{
    std::string const whole = WrittenWhole(write);
    ASSERT_FALSE(whole.empty());
    for (std::size_t count = 0; count < whole.size(); ++count)
    {
        for (Failure const failure : {Failure::End, Failure::Throw})
        {
            ShortBuffer buffer("", count, failure);
            std::ostream stream(&buffer);
            EXPECT_NO_THROW(write(stream));
            EXPECT_TRUE(stream.bad());
            EXPECT_EQ(buffer.Bytes(), whole.substr(0, count));

            ShortBuffer other("", count, failure);
            std::ostream loud(&other);
            loud.exceptions(std::ios_base::badbit);
            if (failure == Failure::Throw)
                EXPECT_THROW(write(loud), std::runtime_error);
            else
                EXPECT_THROW(write(loud), std::ios_base::failure);
            EXPECT_EQ(other.Bytes(), whole.substr(0, count));
        }
    }
    ShortBuffer buffer("", whole.size(), Failure::Throw);
    std::ostream stream(&buffer);
    write(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(buffer.Bytes(), whole);
}

template <typename Value>
std::string BytesOf(Value const& value)
{
    return WrittenWhole([&](std::ostream& stream) { value.Serialise(stream); });
}

/// Reads one value over another from streams that fail after every number of bytes, in every way.
///
/// @param length how many of the bytes are read at all.
template <typename Value>
void ExpectReadsFail(Value const& value, Value const& old, std::size_t length)
{
    std::string const given = BytesOf(value).substr(0, length);
    std::string const kept = BytesOf(old);
    for (std::size_t at = 0; at < length; ++at)
        EXPECT_NE(given[at], kept[at]) << "would not show whether it was read";
    for (std::size_t count = 0; count < length; ++count)
    {
        std::string const mixed = given.substr(0, count) + kept.substr(count);
        for (Failure const failure : {Failure::End, Failure::Throw})
        {
            ShortBuffer buffer(given.substr(0, count), count, failure);
            std::istream stream(&buffer);
            Value target(old);
            EXPECT_NO_THROW(target.Deserialise(stream));
            EXPECT_TRUE(stream.fail());
            EXPECT_EQ(stream.bad(), failure == Failure::Throw);
            EXPECT_EQ(BytesOf(target), mixed) << count << " bytes";

            ShortBuffer other(given.substr(0, count), count, failure);
            std::istream loud(&other);
            loud.exceptions(std::ios_base::badbit | std::ios_base::failbit);
            Value loudTarget(old);
            if (failure == Failure::Throw)
                EXPECT_THROW(loudTarget.Deserialise(loud), std::runtime_error);
            else
                EXPECT_THROW(loudTarget.Deserialise(loud), std::ios_base::failure);
            EXPECT_EQ(BytesOf(loudTarget), mixed) << count << " bytes";
        }
    }
    ShortBuffer buffer(given, length, Failure::Throw);
    std::istream stream(&buffer);
    Value target(old);
    target.Deserialise(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(BytesOf(target), given + kept.substr(length));

    std::istringstream failed(given);
    failed.setstate(std::ios_base::failbit);
    Value untouched(old);
    untouched.Deserialise(failed);
    EXPECT_EQ(BytesOf(untouched), kept);
}

/// Both ways, with an old value whose every byte is another one.
template <typename Value>
void ExpectFailuresPass(Value const& value, Value const& old)
{
    ExpectWritesFail([&](std::ostream& stream) { value.Serialise(stream); });
    ExpectReadsFail(value, old, BytesOf(value).size());
}

/// A number whose bytes are all the same and unlike those of other numbers: 1 to 255.
template <typename T>
T Number(unsigned char byte)
{
    T number{};
    std::memset(&number, byte, sizeof(number));
    return number;
}

template <typename T>
tVector2<T> Two(unsigned char byte)
{
    return {Number<T>(byte), Number<T>(static_cast<unsigned char>(byte + 1))};
}

template <typename T>
tVector3<T> Three(unsigned char byte)
{
    return {Number<T>(byte), Number<T>(static_cast<unsigned char>(byte + 1)),
            Number<T>(static_cast<unsigned char>(byte + 2))};
}

template <typename T>
class ComponentFaults : public testing::Test
{
};
TYPED_TEST_SUITE(ComponentFaults, bv::test::Components);

TYPED_TEST(ComponentFaults, TuplesAndVectorsKeepWhatWasNotRead)
{
    using T = TypeParam;
    ExpectFailuresPass(Two<T>(1), Two<T>(5));
    ExpectFailuresPass(Three<T>(1), Three<T>(5));
    ExpectFailuresPass(tTuple2<T>(Number<T>(1), Number<T>(2)), tTuple2<T>(Number<T>(3), Number<T>(4)));
    ExpectFailuresPass(tTuple3<T>(Number<T>(1), Number<T>(2), Number<T>(3)),
                       tTuple3<T>(Number<T>(4), Number<T>(5), Number<T>(6)));
}

TYPED_TEST(ComponentFaults, TextsOfTuplesAndVectorsAreCutOff)
{
    using T = TypeParam;
    ExpectWritesFail([](std::ostream& stream) { stream << tTuple2<T>(12, 34); });
    ExpectWritesFail([](std::ostream& stream) { stream << tTuple3<T>(12, 34, 56); });
    ExpectWritesFail([](std::ostream& stream) { stream << tVector2<T>(12, 34); });
    ExpectWritesFail([](std::ostream& stream) { stream << tVector3<T>(12, 34, 56); });
}

template <typename T>
class StreamFaults : public testing::Test
{
};
TYPED_TEST_SUITE(StreamFaults, bv::test::Precisions);

TYPED_TEST(StreamFaults, ShapesKeepWhatWasNotRead)
{
    using T = TypeParam;
    ExpectFailuresPass(tAreaAABB<T>(Two<T>(1), Two<T>(3)), tAreaAABB<T>(Two<T>(5), Two<T>(7)));
    ExpectFailuresPass(tVolumeAABB<T>(Three<T>(1), Three<T>(4)), tVolumeAABB<T>(Three<T>(7), Three<T>(10)));
    ExpectFailuresPass(tQuaternion<T>(Number<T>(1), Number<T>(2), Number<T>(3), Number<T>(4)),
                       tQuaternion<T>(Number<T>(5), Number<T>(6), Number<T>(7), Number<T>(8)));
}

/// A shape of these bytes: its constructors would compute something else.
template <typename Shape>
Shape FromBytes(Shape shape, unsigned char first)
{
    std::string bytes = BytesOf(shape);
    for (char& byte : bytes)
        byte = static_cast<char>(first++);
    std::istringstream stream(bytes);
    shape.Deserialise(stream);
    return shape;
}

TYPED_TEST(StreamFaults, DiscsSpheresAndTurnedBoxesKeepWhatWasNotRead)
{
    using T = TypeParam;
    tAreaDisc<T> const disc{tVector2<T>()};
    ExpectFailuresPass(FromBytes(disc, 1), FromBytes(disc, 2));
    tVolumeSphere<T> const sphere{tVector3<T>()};
    ExpectFailuresPass(FromBytes(sphere, 1), FromBytes(sphere, 2));
    tOrientedBox<T> const box{tVolumeAABB<T>()};
    ExpectFailuresPass(FromBytes(box, 1), FromBytes(box, 2));
}

TYPED_TEST(StreamFaults, FramesKeepWhatWasNotRead)
{
    using Frame = tCoordinateFrame<TypeParam>;
    ExpectFailuresPass(Frame(Frame::RIGHT, Frame::UP, Frame::BACKWARDS),
                       Frame(Frame::UP, Frame::LEFT, Frame::FORWARDS));
}

TYPED_TEST(StreamFaults, MatricesKeepWhatWasNotReadAndTheirState)
{
    using T = TypeParam;
    tMatrix4<T> const identity;
    tMatrix4<T> const value = FromBytes(identity, 1);
    ExpectFailuresPass(value, FromBytes(identity, 2));
}

TYPED_TEST(StreamFaults, PlanesKeepTheirOffset)
{
    using T = TypeParam;
    tPlane<T> const plane({0, 1, 0}, 5);
    tPlane<T> const value = FromBytes(plane, 1);
    ExpectWritesFail([&](std::ostream& stream) { value.Serialise(stream); });
    ExpectReadsFail(value, FromBytes(plane, 2), 3 * sizeof(T)); // which is all that is read
}

TYPED_TEST(StreamFaults, TextsAreCutOff)
{
    using T = TypeParam;
    ExpectWritesFail([](std::ostream& stream) { stream << tPlane<T>({0, 1, 0}, 5); });
    ExpectWritesFail([](std::ostream& stream) { stream << tMatrix4<T>(); });
    ExpectWritesFail([](std::ostream& stream) { stream << tQuaternion<T>(1, 2, 3, 4); });
}

TEST(PlainStreamFaults, TheTextOfAnExceptionIsCutOff)
{
    ExpectWritesFail([](std::ostream& stream)
                     { stream << MatrixException(L"message \u00E9", "a file", 7, "a function"); });
}

} // namespace
