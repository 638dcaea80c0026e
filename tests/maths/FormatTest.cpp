// The formatters of {fmt}, and those of the standard library where it has them: the same tests for both.

#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/FileIOException.h"
#include "bv/Fmt.h"
#include "bv/Format.h"
#include "bv/InvalidArgumentException.h"
#include "bv/InvalidObjectException.h"
#include "bv/NotImplementedException.h"
#include "bv/ObjectCreationException.h"
#include "bv/ObjectDeletionException.h"
#include "bv/OutOfMemoryException.h"
#include "bv/ThreadExitException.h"
#include "bv/maths/ArithmeticException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Fmt.h"
#include "bv/maths/Format.h"
#include "bv/maths/FromChars.h"
#include "bv/maths/MathsException.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "support/Numbers.h"
#include "support/SameBits.h"

#include <fmt/xchar.h>

namespace
{

using namespace bv::maths;
using bv::String;
using bv::test::ExpectSameBits;
using bv::test::INF;
using bv::test::QUIET_NAN;

/// {fmt}, with the element type of the vectors.
template <typename T>
struct OfFmt
{
    using Element = T;

    template <typename Value>
    static std::string Format(char const* format, Value const& value)
    {
        return fmt::format(fmt::runtime(format), value);
    }
    template <typename Value>
    static std::wstring Format(wchar_t const* format, Value const& value)
    {
        return fmt::format(fmt::runtime(format), value);
    }
    using Error = fmt::format_error;
};

#if defined __cpp_lib_format

/// The standard library, likewise.
template <typename T>
struct OfTheStandard
{
    using Element = T;

    template <typename Value>
    static std::string Format(char const* format, Value const& value)
    {
        return std::vformat(format, std::make_format_args(value));
    }
    template <typename Value>
    static std::wstring Format(wchar_t const* format, Value const& value)
    {
        return std::vformat(format, std::make_wformat_args(value));
    }
    using Error = std::format_error;
};

using Formatters = testing::Types<OfFmt<float>, OfFmt<double>, OfTheStandard<float>, OfTheStandard<double>>;

#else

using Formatters = testing::Types<OfFmt<float>, OfFmt<double>>;

#endif

template <typename Formatter>
class FormatTest : public testing::Test
{
};
TYPED_TEST_SUITE(FormatTest, Formatters);

template <typename Value>
std::string Written(Value const& value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

TYPED_TEST(FormatTest, WritesEachComponentInTheFormatOfANumber)
{
    using T = typename TypeParam::Element;
    EXPECT_EQ(TypeParam::Format("{:.3f}", tVector3<T>{1, T(-2.5), T(0.0625)}), "1.000, -2.500, 0.062"); // ties to even
    EXPECT_EQ(TypeParam::Format("<{:>6.1f}>", tVector2<T>{1, -2}), "<   1.0,   -2.0>");
    EXPECT_EQ(TypeParam::Format("{:+}", tTuple2<T>{1, -2}), "+1, -2");
    EXPECT_EQ(TypeParam::Format("{:04}", tTuple3<int>{1, -2, 30}), "0001, -002, 0030");
    EXPECT_EQ(TypeParam::Format("{:#x}", tTuple2<unsigned int>{255, 16}), "0xff, 0x10");
    EXPECT_EQ(TypeParam::Format("{:.1e}", tQuaternion<T>{0, 0, 0, 1}), "0.0e+00, 0.0e+00, 0.0e+00, 1.0e+00");
    EXPECT_EQ(TypeParam::Format("{:.2f}", tPlane<T>({0, 0, 1}, -5)), "0.00, 0.00, 1.00, -5.00");
}

TYPED_TEST(FormatTest, WritesAMatrixInFourLines)
{
    using T = typename TypeParam::Element;
    EXPECT_EQ(TypeParam::Format("{:.1f}", tMatrix4<T>::Translate(1, 2, 3)),
              "1.0\t0.0\t0.0\t1.0\n0.0\t1.0\t0.0\t2.0\n0.0\t0.0\t1.0\t3.0\n0.0\t0.0\t0.0\t1.0\n");
}

TYPED_TEST(FormatTest, WritesWhatStreamsWriteInFormatG)
{
    using T = typename TypeParam::Element;
    for (T const number : {T{0}, -T{0}, T{1}, T(1) / 3, T(-123456789), T(1e-30), INF<T>, -INF<T>, QUIET_NAN<T>})
    {
        tVector3<T> const vector{number, 1, number};
        EXPECT_EQ(TypeParam::Format("{:g}", vector), Written(vector));
    }
    tMatrix4<T> const matrix = tMatrix4<T>::RotateX(T(0.3));
    EXPECT_EQ(TypeParam::Format("{:g}", matrix), Written(matrix));
    tPlane<T> const plane({1, 2, 3}, 4);
    EXPECT_EQ(TypeParam::Format("{:g}", plane), Written(plane));
    tQuaternion<T> const quaternion{1, 2, T(0.1), 4};
    EXPECT_EQ(TypeParam::Format("{:g}", quaternion), Written(quaternion));
}

TYPED_TEST(FormatTest, WritesNumbersThatReadBackWithTheSameBits)
{
    using T = typename TypeParam::Element;
    tVector3<T> const vector{T(1) / 3, std::numeric_limits<T>::denorm_min(), -std::numeric_limits<T>::max()};
    std::string const text = TypeParam::Format("{}", vector);
    tVector3<T> read;
    auto const result = FromChars(text.data(), text.data() + text.size(), read);
    EXPECT_EQ(result.ec, std::errc{});
    EXPECT_EQ(result.ptr, text.data() + text.size());
    ExpectSameBits(read, vector);
}

TYPED_TEST(FormatTest, WritesNoMoreDigitsThanNeeded)
{
    using T = typename TypeParam::Element;
    EXPECT_EQ(TypeParam::Format("{}", tVector2<T>{T(0.1), T(-0.5)}), "0.1, -0.5");
    EXPECT_EQ(TypeParam::Format("{}", tTuple3<int>{-1, 0, 2}), "-1, 0, 2");
}

TYPED_TEST(FormatTest, WritesWideText)
{
    using T = typename TypeParam::Element;
    EXPECT_EQ(TypeParam::Format(L"{:.1f}", tVector2<T>{1, -2}), L"1.0, -2.0");
}

TYPED_TEST(FormatTest, RefusesAFormatThatNumbersDoNotHave)
{
    using T = typename TypeParam::Element;
    EXPECT_THROW((void)TypeParam::Format("{:s}", tVector2<T>{1, 2}), typename TypeParam::Error);
    EXPECT_THROW((void)TypeParam::Format("{:.2f}", tTuple2<int>{1, 2}), typename TypeParam::Error);
    EXPECT_THROW((void)TypeParam::Format("{:d}", String("text")), typename TypeParam::Error);
}

TYPED_TEST(FormatTest, WritesStringsAsText)
{
    EXPECT_EQ(TypeParam::Format("{}", String("Brücke")), "Brücke");
    EXPECT_EQ(TypeParam::Format("{:>7}|", String("abc")), "    abc|");
    EXPECT_EQ(TypeParam::Format("{:.2}", String("abc")), "ab");
    EXPECT_EQ(TypeParam::Format("<{}>", String()), "<>");
}

/// Such as `FileIOException`, known by its own class.
template <typename Formatter, typename Exception>
void ExpectText()
{
    Exception const exception("no such file", "unit", 12, "Read");
    EXPECT_EQ(Formatter::Format("{}", exception), "'no such file' - unit (12) : Read.");
    EXPECT_EQ(Formatter::Format("{}", exception), Written(exception));
    EXPECT_EQ(Formatter::Format("{:*<35}", exception), "'no such file' - unit (12) : Read.*");
}

TYPED_TEST(FormatTest, WritesEveryExceptionAsStreamsDo)
{
    ExpectText<TypeParam, bv::Exception>();
    ExpectText<TypeParam, bv::FileIOException>();
    ExpectText<TypeParam, bv::InvalidArgumentException>();
    ExpectText<TypeParam, bv::InvalidObjectException>();
    ExpectText<TypeParam, bv::NotImplementedException>();
    ExpectText<TypeParam, bv::ObjectCreationException>();
    ExpectText<TypeParam, bv::ObjectDeletionException>();
    ExpectText<TypeParam, bv::OutOfMemoryException>();
    ExpectText<TypeParam, bv::ThreadExitException>();
    ExpectText<TypeParam, MathsException>();
    ExpectText<TypeParam, ArithmeticException>();
    ExpectText<TypeParam, DivideByZeroException>();
    ExpectText<TypeParam, MatrixException>();
}

} // namespace
