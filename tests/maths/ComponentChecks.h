#pragma once

/// @file
/// What tuples and vectors promise alike: their layout, their binary form and their text.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Streams.h"

namespace elsewhere
{

/// A type with an output operator in a namespace that knows nothing of the library, which hides all outer ones.
struct Label
{
    char const* text;
};

inline std::ostream& operator<<(std::ostream& stream, Label const& label)
{
    return stream << label.text;
}

template <typename V>
std::string Print(V const& value)
{
    std::ostringstream stream;
    stream << Label{"value "} << value;
    return stream.str();
}

} // namespace elsewhere

namespace bv::test
{

/// The type of the components.
template <typename V>
using Component = decltype(V::x);

/// Their number.
template <typename V>
inline constexpr std::size_t COUNT = sizeof(V) / sizeof(Component<V>);

/// The tuple or vector of the first two or three values.
template <typename V>
[[nodiscard]] constexpr V Make(std::array<Component<V>, 3> const& values)
{
    if constexpr (COUNT<V> == 3)
        return V(values[0], values[1], values[2]);
    else
        return V(values[0], values[1]);
}

/// The object as it lies in memory.
template <typename V>
[[nodiscard]] std::string Memory(V const& value)
{
    return std::string(reinterpret_cast<char const*>(&value), sizeof(value));
}

/// Three values of each type, with their bytes and their texts.
template <typename T>
struct Sample;

template <>
struct Sample<int>
{
    static constexpr std::array<int, 3> VALUES = {3, -4, 1234567};
    static constexpr char const* BYTES[] = {"03 00 00 00", "FC FF FF FF", "87 D6 12 00"};
    static constexpr char const* TEXTS[] = {"3", "-4", "1234567"};
};

template <>
struct Sample<unsigned int>
{
    static constexpr std::array<unsigned int, 3> VALUES = {3, 4294967292, 1234567};
    static constexpr char const* BYTES[] = {"03 00 00 00", "FC FF FF FF", "87 D6 12 00"};
    static constexpr char const* TEXTS[] = {"3", "4294967292", "1234567"};
};

template <>
struct Sample<float>
{
    static constexpr std::array<float, 3> VALUES = {0.5f, 1234567.0f, -2.0f};
    static constexpr char const* BYTES[] = {"00 00 00 3F", "38 B4 96 49", "00 00 00 C0"};
    static constexpr char const* TEXTS[] = {"0.5", "1.23457e+06", "-2"};
};

template <>
struct Sample<double>
{
    static constexpr std::array<double, 3> VALUES = {0.1, -2.0, 1e-7};
    static constexpr char const* BYTES[] = {"9A 99 99 99 99 99 B9 3F", "00 00 00 00 00 00 00 C0",
                                            "48 AF BC 9A F2 D7 7A 3E"};
    static constexpr char const* TEXTS[] = {"0.1", "-2", "1e-07"};
};

template <typename V>
[[nodiscard]] V MakeSample()
{
    return Make<V>(Sample<Component<V>>::VALUES);
}

/// The pieces of a sample, joined.
template <typename V>
[[nodiscard]] std::string Joined(char const* const (&pieces)[3], char const* separator)
{
    std::string joined = pieces[0];
    for (std::size_t i = 1; i < COUNT<V>; ++i)
        joined += separator + std::string(pieces[i]);
    return joined;
}

template <typename V>
[[nodiscard]] std::string SampleHex()
{
    return Hex(Native(Bytes(Joined<V>(Sample<Component<V>>::BYTES, " ")), sizeof(Component<V>)));
}

template <typename V>
[[nodiscard]] std::string SampleText()
{
    return Joined<V>(Sample<Component<V>>::TEXTS, ", ");
}

template <typename V>
[[nodiscard]] std::string Text(V const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

template <typename V>
void ExpectPlainLayout()
{
    using T = Component<V>;
    static_assert(sizeof(V) == COUNT<V> * sizeof(T) && alignof(V) == alignof(T));
    static_assert(std::is_standard_layout_v<V> && std::is_trivially_copyable_v<V> && !std::is_polymorphic_v<V>);
    static_assert(std::is_nothrow_default_constructible_v<V> && std::is_nothrow_copy_assignable_v<V>);
    V const value = MakeSample<V>();
    EXPECT_EQ(Hex(Memory(value)), SampleHex<V>());
}

template <typename V>
void ExpectZeroByDefault()
{
    EXPECT_EQ(Memory(V()), std::string(sizeof(V), '\0'));
    EXPECT_EQ(Memory(V{}), std::string(sizeof(V), '\0'));
}

/// Whether a literal 0, which is a null pointer to the compiler, too, makes a value.
template <typename V>
concept TakesZero = requires
{
    V(0);
};

template <typename V>
void ExpectExplicitConstructionFromAPointer()
{
    using T = Component<V>;
    static_assert(!TakesZero<V> && !std::is_constructible_v<V, int> && !std::is_constructible_v<V, std::nullptr_t>);
    static_assert(std::is_constructible_v<V, T const*> && !std::is_convertible_v<T const*, V>);
    static_assert(std::is_nothrow_constructible_v<V, T const*>);
    EXPECT_EQ(Memory(V(Sample<T>::VALUES.data())), Memory(MakeSample<V>()));
}

template <typename V>
void ExpectAccessByNameAndIndex()
{
    using T = Component<V>;
    static_assert(std::is_same_v<decltype(std::declval<V&>()[0]), T&>);
    static_assert(std::is_same_v<decltype(std::declval<V const&>()[0]), T const&>);
    static_assert(noexcept(std::declval<V&>()[0]));
    static_assert(noexcept(std::declval<V const&>()[0]));
    V value = MakeSample<V>();
    V const& constant = value;
    EXPECT_EQ(value.x, Sample<T>::VALUES[0]);
    EXPECT_EQ(value.y, Sample<T>::VALUES[1]);
    EXPECT_EQ(&value[0], &value.x);
    EXPECT_EQ(&value[1], &value.y);
    EXPECT_EQ(&constant[0], &value.x);
    EXPECT_EQ(&constant[1], &value.y);
    if constexpr (COUNT<V> == 3)
    {
        EXPECT_EQ(value.z, Sample<T>::VALUES[2]);
        EXPECT_EQ(&value[2], &value.z);
        EXPECT_EQ(&constant[2], &value.z);
    }
    for (std::size_t i = 0; i < COUNT<V>; ++i)
        value[i] = static_cast<T>(i + 7);
    EXPECT_EQ(Memory(value), Memory(Make<V>({7, 8, 9})));
}

template <typename V>
void ExpectEqualityComponentByComponent()
{
    using T = Component<V>;
    static_assert(std::is_same_v<decltype(V() == V()), bool> && std::is_same_v<decltype(V() != V()), bool>);
    static_assert(noexcept(V() == V()));
    static_assert(noexcept(V() != V()));
    static_assert(V() == V() && !(V() != V())); // known to the compiler
    V const value = Make<V>({1, 2, 3});
    EXPECT_TRUE(value == value);
    EXPECT_FALSE(value != value);
    for (std::size_t i = 0; i < COUNT<V>; ++i)
    {
        V other = value;
        other[i] = 4;
        EXPECT_FALSE(value == other) << i;
        EXPECT_TRUE(value != other) << i;
        EXPECT_FALSE(other == value) << i;
        other = value;
        if constexpr (std::is_floating_point_v<T>)
        {
            T const step = EPSILON<T> * (i == 0 ? T{1} : T{2}); // from 2 on twice as far
            other[i] += T{50} * step;
            EXPECT_TRUE(value == other) << i;
            EXPECT_FALSE(value != other) << i;
            other[i] += step;
            EXPECT_FALSE(value == other) << i;
            other[i] = QUIET_NAN<T>;
            EXPECT_TRUE(other == other) << i;
            EXPECT_FALSE(value == other) << i;
        }
        else
        {
            other[i] += 1;
            EXPECT_FALSE(value == other) << i;
            EXPECT_TRUE(value != other) << i;
        }
    }
}

template <typename V>
void ExpectRawNativeBytes()
{
    std::ostringstream stream;
    std::ostream& result = MakeSample<V>().Serialise(stream);
    EXPECT_EQ(&result, &stream);
    EXPECT_EQ(Hex(stream.str()), SampleHex<V>());
    MakeSample<V>().Serialise(stream); // nothing before, between or after
    EXPECT_EQ(Hex(stream.str()), SampleHex<V>() + " " + SampleHex<V>());
}

template <typename V>
void ExpectOneWriteAndOneReadForEachComponent()
{
    std::vector<std::streamsize> const expected(COUNT<V>, sizeof(Component<V>));
    RecordingBuffer written;
    std::ostream output(&written);
    MakeSample<V>().Serialise(output);
    EXPECT_EQ(written.sizes, expected);
    RecordingBuffer read;
    std::istream input(&read);
    V value = MakeSample<V>();
    value.Deserialise(input);
    EXPECT_EQ(read.sizes, expected);
    EXPECT_EQ(Memory(value), std::string(sizeof(V), '\0'));
}

template <typename V>
void ExpectUnformattedStreams()
{
    std::ostringstream output;
    output << std::setw(60) << std::setfill('*') << std::hex;
    MakeSample<V>().Serialise(output);
    EXPECT_EQ(Hex(output.str()), SampleHex<V>());
    EXPECT_EQ(output.width(), 60);
    // Bytes that formatted input would skip as white space.
    std::istringstream input(std::string(sizeof(V), ' '));
    V value;
    value.Deserialise(input);
    EXPECT_EQ(Memory(value), std::string(sizeof(V), ' '));
}

template <typename V>
void ExpectReadingBackTheSameBits()
{
    using T = Component<V>;
    using Pattern = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr Pattern ONES = std::numeric_limits<Pattern>::max();
    // Zeros of both signs, all ones, and, as floating-point values, NaNs with payloads, signalling ones among them.
    Pattern const patterns[] = {0,
                                ONES,
                                ONES / 2 + 1,
                                ONES / 2,
                                std::bit_cast<Pattern>(INF<T>) + 1,
                                static_cast<Pattern>(0x7FF812345678ABCD >> (64 - 8 * sizeof(T))),
                                Pattern{0x12345678},
                                1};
    for (std::size_t i = 0; i < std::size(patterns); ++i)
    {
        std::string bytes;
        for (std::size_t component = 0; component < COUNT<V>; ++component)
            bytes.append(reinterpret_cast<char const*>(&patterns[(i + component) % std::size(patterns)]), sizeof(T));
        std::stringstream stream(bytes);
        V value;
        std::istream& result = value.Deserialise(stream);
        EXPECT_EQ(&result, &stream);
        EXPECT_TRUE(stream.good()); // nothing was read past the end
        EXPECT_EQ(Hex(Memory(value)), Hex(bytes));
        std::stringstream again;
        value.Serialise(again);
        EXPECT_EQ(Hex(again.str()), Hex(bytes));
    }
}

template <typename V>
void ExpectAShortStreamToLeaveTheRestAlone()
{
    constexpr std::size_t BEGIN_OF_LAST = sizeof(V) - sizeof(Component<V>);
    for (std::size_t length = 0; length < sizeof(V); ++length)
    {
        std::istringstream stream(std::string(length, '\x55'));
        V value = MakeSample<V>();
        std::string expected = Memory(value);
        expected.replace(0, length, length, '\x55');
        value.Deserialise(stream);
        EXPECT_EQ(Hex(Memory(value)), Hex(expected)) << length;
        EXPECT_TRUE(stream.eof() && stream.fail()) << length;
        // The last component is asked for even when the stream has failed before, and then gets nothing.
        std::size_t const ofLast = length > BEGIN_OF_LAST ? length - BEGIN_OF_LAST : 0;
        EXPECT_EQ(stream.gcount(), static_cast<std::streamsize>(ofLast)) << length;
    }
}

template <typename V>
void ExpectAFailedStreamToBeReturnedAsItIs()
{
    V value = MakeSample<V>();
    std::istringstream input(std::string(sizeof(V), '\x55'));
    input.setstate(std::ios::failbit);
    EXPECT_EQ(&value.Deserialise(input), &input);
    EXPECT_EQ(Memory(value), Memory(MakeSample<V>()));
    std::ostringstream output;
    output.setstate(std::ios::badbit);
    EXPECT_EQ(&value.Serialise(output), &output);
    EXPECT_EQ(output.str(), "");
    EXPECT_TRUE(output.bad());
    EXPECT_EQ(&(output << value), &output);
    EXPECT_EQ(output.str(), "");
}

template <typename V>
void ExpectComponentsJoinedByCommas()
{
    std::ostringstream stream;
    std::ostream& result = stream << MakeSample<V>();
    EXPECT_EQ(&result, &stream);
    EXPECT_EQ(stream.str(), SampleText<V>());
}

template <typename V>
void ExpectTextWithoutTheFormatOfTheTarget()
{
    std::ostringstream stream;
    stream << std::hex << std::showbase << std::showpos << std::uppercase << std::fixed << std::setprecision(1);
    auto const flags = stream.flags();
    stream << MakeSample<V>();
    EXPECT_EQ(stream.str(), SampleText<V>());
    EXPECT_EQ(stream.flags(), flags);
    EXPECT_EQ(stream.precision(), 1);
    stream.str("");
    stream << std::scientific << std::oct << std::showpoint << MakeSample<V>();
    EXPECT_EQ(stream.str(), SampleText<V>());
}

template <typename V>
void ExpectWidthAndFillOnceForTheWholeText()
{
    std::string const text = SampleText<V>();
    std::string const padding(60 - text.size(), '*');
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(60) << MakeSample<V>();
    EXPECT_EQ(stream.str(), padding + text);
    EXPECT_EQ(stream.width(), 0);
    stream.str("");
    stream << MakeSample<V>() << std::left << std::setw(60) << MakeSample<V>();
    EXPECT_EQ(stream.str(), text + text + padding);
    stream.str("");
    stream << std::setw(2) << MakeSample<V>(); // never cut
    EXPECT_EQ(stream.str(), text);
}

template <typename V>
void ExpectTextThatNoLocaleChanges()
{
    GroupingGlobalLocale const locale;
    std::ostringstream stream; // takes the global locale
    V const value = std::is_floating_point_v<Component<V>> ? MakeSample<V>() : Make<V>({1234567, 7654321, 1234567});
    stream << value;
    if constexpr (std::is_floating_point_v<Component<V>>)
        EXPECT_EQ(stream.str(), SampleText<V>());
    else
        EXPECT_EQ(stream.str(), COUNT<V> == 3 ? "1234567, 7654321, 1234567" : "1234567, 7654321");
    stream.str("");
    stream << 1234567; // the stream itself keeps its locale
    EXPECT_EQ(stream.str(), "1'234'567");
}

template <typename V>
void ExpectTextFromEveryNamespace()
{
    EXPECT_EQ(elsewhere::Print(MakeSample<V>()), "value " + SampleText<V>());
    EXPECT_EQ(Text(MakeSample<V>()), SampleText<V>()); // from within the library's own namespace
}

/// What a fresh stream prints for a value.
template <typename T>
[[nodiscard]] std::string Plain(T value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

template <typename V>
void ExpectSpecialValuesAsTheStandardStreamPrintsThem()
{
    using T = Component<V>;
    T const infinity = INF<T>;
    T const nan = QUIET_NAN<T>;
    T const smallest = TINY<T>;
    std::string const third = COUNT<V> == 3 ? ", " + Plain(nan) : "";
    EXPECT_EQ(Text(Make<V>({infinity, -infinity, nan})), Plain(infinity) + ", " + Plain(-infinity) + third);
    std::string const largest = COUNT<V> == 3 ? ", " + Plain(LARGEST<T>) : "";
    EXPECT_EQ(Text(Make<V>({T(-0.0), smallest, LARGEST<T>})), "-0, " + Plain(smallest) + largest);
}

} // namespace bv::test
