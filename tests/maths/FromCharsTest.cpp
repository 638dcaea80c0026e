#include "bv/maths/FromChars.h"

#include <cstddef>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"

namespace
{

using namespace bv::maths;
using bv::test::ExpectSameBits;
using bv::test::INF;
using bv::test::IsNaN;

/// A value, how many characters made it, and what went wrong.
template <typename Value>
struct Reading
{
    Value value;
    std::size_t length;
    std::errc error;
};

template <typename Value>
Reading<Value> Read(std::string_view text, Value const& before = Value())
{
    Reading<Value> reading{before, 0, {}};
    auto const result = FromChars(text.data(), text.data() + text.size(), reading.value);
    reading.length = static_cast<std::size_t>(result.ptr - text.data());
    reading.error = result.ec;
    return reading;
}

template <typename Value>
std::string Written(Value const& value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

template <typename T>
class FromCharsTest : public testing::Test
{
};
TYPED_TEST_SUITE(FromCharsTest, bv::test::Precisions);

TYPED_TEST(FromCharsTest, ReadsAVectorAndStopsBehindIt)
{
    auto const reading = Read<tVector3<TypeParam>>("1, -2.5, 3e2, 4");
    EXPECT_EQ(reading.error, std::errc{});
    EXPECT_EQ(reading.length, 12U); // "1, -2.5, 3e2"
    ExpectSameBits(reading.value, tVector3<TypeParam>{1, TypeParam(-2.5), 300});
}

TYPED_TEST(FromCharsTest, ReadsEveryTypeThatIsWritten)
{
    using T = TypeParam;
    ExpectSameBits(Read<tVector2<T>>("0.5, -0").value, tVector2<T>{T(0.5), -T{0}});
    auto const quaternion = Read<tQuaternion<T>>("1, 2, 3, 4").value;
    ExpectSameBits(quaternion.x, T{1});
    ExpectSameBits(quaternion.y, T{2});
    ExpectSameBits(quaternion.z, T{3});
    ExpectSameBits(quaternion.w, T{4});
    auto const tuple2 = Read<tTuple2<T>>("7, 8").value;
    ExpectSameBits(tuple2.x, T{7});
    ExpectSameBits(tuple2.y, T{8});
    auto const tuple3 = Read<tTuple3<T>>("7, 8, 9").value;
    ExpectSameBits(tuple3.z, T{9});
    auto const plane = Read<tPlane<T>>("0, 1, 0, -5").value;
    ExpectSameBits(plane.GetNormal(), tVector3<T>{0, 1, 0});
    ExpectSameBits(plane.GetOffset(), T{-5});
}

TEST(FromCharsIntegerTest, ReadsTuplesOfIntegers)
{
    auto const pair = Read<Tuple2i>("-2147483648, 2147483647");
    EXPECT_EQ(pair.error, std::errc{});
    EXPECT_EQ(pair.value, (Tuple2i{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}));
    auto const triple = Read<Tuple3u>("0, 1, 4294967295");
    EXPECT_EQ(triple.error, std::errc{});
    EXPECT_EQ(triple.value, (Tuple3u{0, 1, 4294967295U}));
    EXPECT_EQ(Read<Tuple2i>("1, 2147483648").error, std::errc::result_out_of_range);
    EXPECT_EQ(Read<Tuple2u>("1, -2").error, std::errc::invalid_argument);
    auto const cut = Read<Tuple2i>("1, 2.5"); // the fraction belongs to what follows
    EXPECT_EQ(cut.error, std::errc{});
    EXPECT_EQ(cut.length, 4U);
}

TYPED_TEST(FromCharsTest, ReadsAMatrixAndClassifiesIt)
{
    std::string const text = "1\t2\t3\t4\n5\t6\t7\t8\n9\t10\t11\t12\n13\t14\t15\t16\n";
    auto const reading = Read<tMatrix4<TypeParam>>(text, tMatrix4<TypeParam>());
    EXPECT_EQ(reading.error, std::errc{});
    EXPECT_EQ(reading.length, text.size());
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(reading.value[i], TypeParam(i + 1));
    EXPECT_FALSE(reading.value.IsIdentity());

    auto const scaling = Read<tMatrix4<TypeParam>>("2\t0\t0\t0\n0\t2\t0\t0\n0\t0\t2\t0\n0\t0\t0\t1");
    EXPECT_EQ(scaling.error, std::errc{}); // the last newline may be missing
    EXPECT_TRUE(scaling.value.IsDiagonal());
    EXPECT_FALSE(scaling.value.IsIdentity());
}

TYPED_TEST(FromCharsTest, ScalesAPlane)
{
    auto const plane = Read<tPlane<TypeParam>>("0, 0, 2, 6").value; // z = -3
    ExpectSameBits(plane.GetNormal(), tVector3<TypeParam>{0, 0, 1});
    ExpectSameBits(plane.GetOffset(), TypeParam{3});
}

TYPED_TEST(FromCharsTest, ReadsInfinitiesAndNaN)
{
    auto const reading = Read<tVector3<TypeParam>>("inf, -inf, nan");
    EXPECT_EQ(reading.error, std::errc{});
    ExpectSameBits(reading.value.x, INF<TypeParam>);
    ExpectSameBits(reading.value.y, -INF<TypeParam>);
    EXPECT_TRUE(IsNaN(reading.value.z));
    auto const negative = Read<tVector2<TypeParam>>("-nan, 0");
    EXPECT_EQ(negative.error, std::errc{});
    EXPECT_TRUE(IsNaN(negative.value.x));
}

TYPED_TEST(FromCharsTest, ReadsBackWhatIsWrittenWithSixDigits)
{
    using T = TypeParam;
    // Each has six digits at most, so nothing is lost.
    T const numbers[]{0, -T{0}, 1, T(-0.125), T(1e30), T(-123456), T(0.03125), INF<T>};
    for (T const x : numbers)
        for (T const y : numbers)
        {
            tVector3<T> const vector{x, y, x};
            auto const reading = Read<tVector3<T>>(Written(vector));
            EXPECT_EQ(reading.error, std::errc{});
            ExpectSameBits(reading.value, vector);
        }
    tMatrix4<T> const matrix = tMatrix4<T>::Translate(T(0.5), T(-2), T(1000));
    auto const reading = Read<tMatrix4<T>>(Written(matrix));
    EXPECT_EQ(reading.error, std::errc{});
    EXPECT_EQ(reading.length, Written(matrix).size());
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(reading.value[i], matrix[i]);
}

TYPED_TEST(FromCharsTest, RefusesWhatIsNoValueAndChangesNothing)
{
    using V = tVector3<TypeParam>;
    for (std::string_view const text :
         {"",         "1",        "1, 2",     "1, 2, ",  "1, 2,3",   "1,2, 3",  "1 2 3",
          " 1, 2, 3", "+1, 2, 3", "a, 2, 3",  "1, b, 3", "1, 2, c",  "1\t2\t3", "(1, 2, 3)",
          "1; 2; 3",  "1, , 3",   "1,  2, 3", "-, 1, 2", "e1, 2, 3", "1, 2-3",  "1-2, 3"})
    {
        auto const reading = Read<V>(text, V{7, 8, 9});
        EXPECT_EQ(reading.error, std::errc::invalid_argument) << text;
        EXPECT_EQ(reading.length, 0U) << text;
        ExpectSameBits(reading.value, V{7, 8, 9});
    }
}

TYPED_TEST(FromCharsTest, RefusesAMatrixOfTheWrongShape)
{
    using M = tMatrix4<TypeParam>;
    M const before = M::Scale(2);
    for (std::string_view const text : {"1\t0\t0\t0\n0\t1\t0\t0\n0\t0\t1\t0\n0\t0\t0\n",    // 15 elements
                                        "1\t0\t0\t0\t0\t1\t0\t0\n0\t0\t1\t0\n0\t0\t0\t1\n", // no end of the first line
                                        "1, 0, 0, 0\n0, 1, 0, 0\n0, 0, 1, 0\n0, 0, 0, 1\n", // commas
                                        "1\t0\t0\t0\r\n0\t1\t0\t0\r\n0\t0\t1\t0\r\n0\t0\t0\t1"}) // other ends of lines
    {
        auto const reading = Read<M>(text, before);
        EXPECT_EQ(reading.error, std::errc::invalid_argument) << text;
        EXPECT_EQ(reading.length, 0U) << text;
        for (std::size_t i = 0; i < 16; ++i)
            ExpectSameBits(reading.value[i], before[i]);
    }
}

TYPED_TEST(FromCharsTest, SaysWhereANumberDoesNotFitItsType)
{
    using V = tVector3<TypeParam>;
    for (std::string_view const text : {"1e999, 2, 3", "1, -1e999, 3", "1, 2, 1e-999"})
    {
        auto const reading = Read<V>(std::string(text) + " and more", V{7, 8, 9});
        EXPECT_EQ(reading.error, std::errc::result_out_of_range) << text;
        EXPECT_EQ(reading.length, text.size()) << text;
        ExpectSameBits(reading.value, V{7, 8, 9});
    }
    // What is no value at all is said first, wherever it stands.
    EXPECT_EQ((Read<V>("1e999, 2, x").error), std::errc::invalid_argument);
}

TEST(FromCharsPrecisionTest, TheTypeOfTheElementsDecidesWhatFits)
{
    EXPECT_EQ(Read<Vector2f>("1e39, 0").error, std::errc::result_out_of_range);
    EXPECT_EQ(Read<Vector2d>("1e39, 0").error, std::errc{});
    // 16777217 lies halfway between two floats and goes to the even one; a double holds it.
    ExpectSameBits(Read<Vector2f>("16777217, 0").value.x, 16777216.0F);
    ExpectSameBits(Read<Vector2d>("16777217, 0").value.x, 16777217.0);
}

TYPED_TEST(FromCharsTest, ZeroFitsWithEveryExponent)
{
    using V = tVector2<TypeParam>;
    auto const reading = Read<V>("0e999, -0.00E-999", V{7, 8});
    EXPECT_EQ(reading.error, std::errc{});
    ExpectSameBits(reading.value, V{0, -TypeParam{0}});
    auto const small = Read<V>("0.0001e-999, 0", V{7, 8});
    EXPECT_EQ(small.error, std::errc::result_out_of_range);
    ExpectSameBits(small.value, V{7, 8});
}

TYPED_TEST(FromCharsTest, ReadsNothingPastTheEnd)
{
    // Between digits of a longer text, and at the very first character.
    std::string_view const text = "1, 2, 34";
    tVector3<TypeParam> vector;
    auto const result = FromChars(text.data(), text.data() + 7, vector);
    EXPECT_EQ(result.ec, std::errc{});
    EXPECT_EQ(result.ptr, text.data() + 7);
    ExpectSameBits(vector, tVector3<TypeParam>{1, 2, 3});
    EXPECT_EQ(FromChars(text.data(), text.data(), vector).ec, std::errc::invalid_argument);
}

} // namespace
