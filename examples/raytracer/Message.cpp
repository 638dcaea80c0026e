#include "Message.h"

#include <algorithm>
#include <iostream>

namespace raytracer
{

namespace
{

bool IsControl(char character)
{
    return static_cast<unsigned char>(character) < ' ' || character == 0x7F;
}

/// Whether a byte of UTF-8 belongs to the character before it.
bool IsContinuation(char character)
{
    return (static_cast<unsigned char>(character) & 0xC0U) == 0x80U;
}

/// The text without its middle, when it is longer than this.
std::string Shorten(std::string_view text, std::size_t length)
{
    if (text.size() <= length)
        return std::string(text);
    std::size_t head = length / 2;
    std::size_t tail = text.size() - length / 2;
    while (head > 0 && IsContinuation(text[head]))
        --head;
    while (tail < text.size() && IsContinuation(text[tail]))
        ++tail;
    return std::string(text.substr(0, head)) + "..." + std::string(text.substr(tail));
}

} // namespace

std::string Quote(std::string_view word)
{
    constexpr std::size_t LONGEST = 60;
    std::string text = Shorten(word, LONGEST);
    std::ranges::replace_if(
        text, [](char character) { return character < ' ' || character > '~'; }, '?');
    return "'" + text + "'";
}

void Complain(std::string const& message)
{
    constexpr std::size_t LONGEST = 5000; // room for the longest path of Linux
    std::string line = Shorten(message, LONGEST);
    std::ranges::replace_if(line, IsControl, '?');
    std::cerr << "raytracer: " << line << '\n';
}

} // namespace raytracer
