#pragma once

/// @file
/// The text type of the interface.

#include <compare>
#include <concepts>
#include <string>

#include "bv/Export.h"

namespace bv
{

/// Text, kept as UTF-8 and converted from and to UTF-16 on demand.
///
/// The text is always valid UTF-8 without a NUL inside: every way in validates or converts, and what is malformed gives
/// an empty string, without an exception and without a diagnostic. Comparison and search look at the bytes alone: no
/// normalisation, no case folding, no locale. Every string costs one allocation, and a second one for a text that
/// outgrows the short-string buffer of `std::string`; when memory runs out, the standard `std::bad_alloc` passes
/// through.
///
/// Wide text is UTF-16 on every platform, one unit to a `wchar_t`. Where `wchar_t` is wider than 16 bits, a wide text
/// that comes in may also hold a code point above 0xFFFF as a single element, so that `L"..."` literals work; a wide
/// text that goes out never does.
///
/// A string is not safe for use from two threads at once. ToWCharArray() counts as a change.
class BV_API String
{
    struct StringImpl;

    StringImpl* impl; ///< owned, never shared and never null

public:
    /// @name Construction
    /// @{
    /// The empty text.
    String();
    /// The same text, in a copy of its own.
    String(String const& other);
    /// From UTF-8, up to the first NUL. The string is empty when the pointer is null or the text is not valid UTF-8: a
    /// sequence cut short, a stray continuation byte, an overlong form, a surrogate, a code point above U+10FFFF.
    String(char const* text);
    /// From UTF-16, up to the first 0 unit. The string is empty when the pointer is null, when a surrogate stands
    /// without its partner, or when an element lies above 0x10FFFF.
    String(wchar_t const* text);
    /// Frees the text, and with it whatever ToCharArray() and ToWCharArray() handed out.
    virtual ~String();
    /// @}

    /// @name Access
    /// @{
    /// The text as UTF-8 with a NUL at its end. The bytes belong to the string and stay until it is next changed or
    /// destroyed.
    [[nodiscard]] char const* ToCharArray() const noexcept;
    /// The text as UTF-16 with a 0 unit at its end, converted anew by every call.
    ///
    /// The units belong to the string and stay until the next call on the same string, Clear() or the destructor;
    /// assignment and `+=` leave them standing with the old text.
    [[nodiscard]] wchar_t const* ToWCharArray() const;
    /// @}

    /// @name Queries
    /// @{
    /// Whether the bytes of the other text stand somewhere in this text, side by side. An empty text stands in every
    /// text, in the empty one, too.
    [[nodiscard]] bool Contains(String const& other) const noexcept;
    /// Whether the text has no bytes.
    [[nodiscard]] bool IsEmpty() const noexcept;
    /// @}

    /// @name Changes
    /// @{
    /// Empties the text, and frees what ToWCharArray() handed out.
    void Clear() noexcept;
    /// @}

    /// @name Operators
    /// @{
    /// Takes over a copy of the other text.
    String& operator=(String const& other);
    /// Takes over a UTF-8 text by the rules of the constructor: a null pointer or an invalid text empties the string.
    /// The text may be a part of this string.
    String& operator=(char const* text);
    /// Takes over a UTF-16 text by the rules of the constructor: a null pointer or an invalid text empties the string.
    /// The text may be a part of this string.
    String& operator=(wchar_t const* text);
    /// Whether both texts have the same bytes.
    [[nodiscard]] bool operator==(String const& other) const noexcept;
    /// Whether the texts differ in a byte or in length.
    [[nodiscard]] bool operator!=(String const& other) const noexcept;
    /// Whether this text comes first in the order of its bytes, taken as unsigned, which is the order of code points.
    /// A text comes after every text that it starts with.
    [[nodiscard]] bool operator<(String const& other) const noexcept;
    /// Whether the other text comes first, in the order of `<`.
    [[nodiscard]] bool operator>(String const& other) const noexcept;
    /// Which text comes first, in the order of `<`. Gives `<=` and `>=`, and `<` and `>` with a literal on the left.
    [[nodiscard]] std::strong_ordering operator<=>(String const& other) const noexcept;
    /// This text followed by the other one.
    [[nodiscard]] String operator+(String const& other);
    /// @copydoc operator+(String const&)
    [[nodiscard]] String operator+(String const& other) const;
    /// Appends the other text, which may be this string itself. Averaged over many calls, the time depends on the
    /// length of the other text alone: what is already there is not looked at, and is copied only when the room for it
    /// grows, each time by a constant factor. When memory runs out, the string stays as it was.
    String& operator+=(String const& other);
    /// @}

private:
    [[nodiscard]] std::string ToStdString() const;
    [[nodiscard]] std::wstring ToStdWString() const;
};

// A class that declares != itself has no == with the operands the other way round (P2468), so == stands outside.

/// Whether a UTF-8 or UTF-16 text, taken in by the rules of the constructor, has the same bytes. Gives `!=`, too.
template <typename Char>
requires std::constructible_from<String, Char const*>
[[nodiscard, gnu::always_inline]] inline bool operator==(Char const* left, String const& right)
{
    return String(left) == right;
}

/// A UTF-8 or UTF-16 text, taken in by the rules of the constructor, followed by a string.
template <typename Char>
requires std::constructible_from<String, Char const*>
[[nodiscard, gnu::always_inline]] inline String operator+(Char const* left, String const& right)
{
    return String(left) + right;
}

// The layout is a promise: the virtual table and one pointer.
static_assert(sizeof(String) == 2 * sizeof(void*));

} // namespace bv
