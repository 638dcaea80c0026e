#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "bv/String.h"
#include "bv/maths/FromChars.h"
#include "properties/Draw.h"
#include "support/MatrixBits.h"
#include "support/Precisions.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;
using bv::String;

template <typename Value>
[[nodiscard]] std::string TextOf(Value const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

template <typename T>
[[nodiscard]] rc::Gen<T> AnyFinite()
{
    return rc::gen::suchThat(AnyNumber<T>(), [](T number) { return std::isfinite(number); });
}

template <typename T>
class TextProperties : public testing::Test
{
};
TYPED_TEST_SUITE(TextProperties, Precisions);

TYPED_TEST(TextProperties, TheTextOfAVectorReadsBackWithinItsSixDigits)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            tVector3<T> const vector(*AnyFinite<T>(), *AnyFinite<T>(), *AnyFinite<T>());
            std::string const text = TextOf(vector);
            tVector3<T> read;
            auto const result = FromChars(text.data(), text.data() + text.size(), read);
            RC_ASSERT(result.ec == std::errc{} && result.ptr == text.data() + text.size());
            // Half a unit of the sixth digit is at most 5e-6 of the number; reading rounds once more, below the normal
            // numbers to a multiple of the smallest one. Six digits survive that.
            for (std::size_t i = 0; i < 3; ++i)
                RC_ASSERT(std::fabs(Widened(read[i]) - Widened(vector[i])) <=
                          5.001e-6L * std::fabs(Widened(vector[i])) + Widened(TINY<T>));
            RC_ASSERT(TextOf(read) == text);
        });
}

TYPED_TEST(TextProperties, BytesReadBackToTheBit)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const elements = *rc::gen::container<std::vector<T>>(16, AnyNumber<T>());
            auto const state = static_cast<std::uint32_t>(*Whole(std::uint64_t{1} << 32));
            auto const matrix = WithState(tMatrix4<T>(elements.data()), state);
            std::stringstream stream;
            matrix.Serialise(stream);
            tMatrix4<T> read;
            read.Deserialise(stream);
            for (std::size_t i = 0; i < 16; ++i)
                RC_ASSERT(Bits(read[i]) == Bits(elements[i]));
            RC_ASSERT(StateOf(read) == state);
        });
}

/// Code points but NUL and surrogates, all lengths in UTF-8 as likely as each other.
[[nodiscard]] rc::Gen<std::vector<std::uint32_t>> CodePoints()
{
    auto const point = rc::gen::apply(
        [](std::uint64_t length, std::uint64_t number)
        {
            constexpr std::uint64_t STARTS[] = {0x1, 0x80, 0x800, 0x10000, 0x110000};
            std::uint64_t const start = STARTS[length];
            auto const value = static_cast<std::uint32_t>(start + number % (STARTS[length + 1] - start));
            return value >= 0xD800 && value < 0xE000 ? value - 0x800 : value;
        },
        Whole(4), Whole(0x100000));
    return rc::gen::container<std::vector<std::uint32_t>>(point);
}

/// One code point an element, which is UTF-16 where an element has 16 bits.
[[nodiscard]] std::wstring WideOf(std::vector<std::uint32_t> const& points)
{
    std::wstring text;
    for (std::uint32_t const point : points)
    {
        if (sizeof(wchar_t) == 2 && point > 0xFFFF)
        {
            text.push_back(static_cast<wchar_t>(0xD7C0 + (point >> 10)));
            text.push_back(static_cast<wchar_t>(0xDC00 + (point & 0x3FF)));
        }
        else
            text.push_back(static_cast<wchar_t>(point));
    }
    return text;
}

[[nodiscard]] String StringOf(std::vector<std::uint32_t> const& points)
{
    return String(WideOf(points).c_str());
}

TEST(StringProperties, WideTextComesBack)
{
    ExpectAlways(
        []
        {
            String const string = StringOf(*CodePoints());
            RC_ASSERT(String(string.ToWCharArray()) == string);
            RC_ASSERT(String(string.ToCharArray()) == string);
        });
}

TEST(StringProperties, JoinedTextIsTheTextOfBoth)
{
    ExpectAlways(
        []
        {
            auto points = *CodePoints();
            auto const more = *CodePoints();
            String const left = StringOf(points);
            String const right = StringOf(more);
            points.insert(points.end(), more.begin(), more.end());
            String const both = StringOf(points);
            RC_ASSERT(left + right == both);
            String grown = left;
            grown += right;
            RC_ASSERT(grown == both);
            RC_ASSERT(both.Contains(left) && both.Contains(right));
            RC_ASSERT(both.IsEmpty() == points.empty());
        });
}

TEST(StringProperties, TheOrderIsThatOfCodePoints)
{
    ExpectAlways(
        []
        {
            auto const a = *CodePoints();
            auto b = a; // with the same beginning, as a rule
            b.resize(*Whole(a.size() + 1));
            auto const more = *CodePoints();
            b.insert(b.end(), more.begin(), more.end());
            RC_ASSERT((StringOf(a) < StringOf(b)) == (a < b));
            RC_ASSERT((StringOf(a) > StringOf(b)) == (b < a));
            RC_ASSERT((StringOf(a) == StringOf(b)) == (a == b));
        });
}

} // namespace
