#pragma once

/// @file
/// Streams to test with: bytes as text, a buffer that keeps a record, and a global locale that groups digits.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <ios>
#include <locale>
#include <streambuf>
#include <string>
#include <vector>

namespace bv::test
{

/// The bytes in hexadecimal, such as "00 00 80 3F".
[[nodiscard]] inline std::string Hex(std::string const& bytes)
{
    constexpr char DIGITS[] = "0123456789ABCDEF";
    std::string text;
    for (char const byte : bytes)
    {
        if (!text.empty())
            text += ' ';
        auto const value = static_cast<unsigned char>(byte);
        text += DIGITS[value >> 4];
        text += DIGITS[value & 15];
    }
    return text;
}

/// The bytes of numbers in the order in which the machine stores them, and back.
/// @param bytes the least significant one of each number first.
/// @param size that of a number.
[[nodiscard]] inline std::string Native(std::string bytes, std::size_t size)
{
    if constexpr (std::endian::native == std::endian::big)
        for (auto number = bytes.begin(); number != bytes.end(); number += static_cast<std::ptrdiff_t>(size))
            std::reverse(number, number + static_cast<std::ptrdiff_t>(size));
    return bytes;
}

/// The bytes that such a text names.
[[nodiscard]] inline std::string Bytes(std::string const& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 3)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

/// Keeps the size of every block that is written to it or read from it. Reading gives zeros.
class RecordingBuffer : public std::streambuf
{
public:
    std::vector<std::streamsize> sizes;

protected:
    std::streamsize xsputn(char const*, std::streamsize size) override
    {
        sizes.push_back(size);
        return size;
    }
    std::streamsize xsgetn(char* target, std::streamsize size) override
    {
        sizes.push_back(size);
        for (std::streamsize i = 0; i < size; ++i)
            target[i] = 0;
        return size;
    }
};

/// While it lives, the global locale writes 1234.5 as 1'234,5.
class GroupingGlobalLocale
{
    struct Punctuation : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '\''; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale previous;

public:
    GroupingGlobalLocale() : previous{std::locale::global(std::locale(std::locale::classic(), new Punctuation))} {}
    ~GroupingGlobalLocale() { std::locale::global(previous); }
    GroupingGlobalLocale(GroupingGlobalLocale const&) = delete;
    GroupingGlobalLocale& operator=(GroupingGlobalLocale const&) = delete;
};

} // namespace bv::test
