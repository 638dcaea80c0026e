#pragma once

/// @file
/// The root of the exceptions.

#include <exception>
#include <iosfwd>
#include <string>

#include "bv/Export.h"
#include "bv/String.h"

namespace bv
{

/// Root of all exceptions of the library: a message, and the place where it was raised.
///
/// Every class of the family remembers a throw function, which throws a fresh object of that class; through it
/// Rethrow() keeps the type of an exception that is known by its root only. A copy forgets the throw function. So does
/// an assignment, since it takes its value from a copy; only a temporary of its own class hands a subclass its throw
/// function, too.
///
/// An exception whose private object finds no memory is still constructed and still thrown with its type: its texts are
/// then empty and its line is 0. When memory runs out later, while the texts are built or copied, the standard
/// `std::bad_alloc` passes through.
class BV_API Exception : public std::exception
{
    struct ExceptionImpl;

    ExceptionImpl* impl;                     ///< owned; null when there was no memory for it
    void (*throwFunction)(Exception const&); ///< throws an object of the class that was constructed, or null

public:
    /// Throws a copy of its argument, as a class of its own choice, and never returns.
    using ThrowFunction = void (*)(Exception const&);

    /// @name Construction
    /// @{
    /// An exception raised here. The file name is kept as it is; the location text becomes
    /// `file (line) : function`.
    Exception(String const& message, String const& file, unsigned int line, String const& function);
    /// An exception without a location: file and function are empty, the line is 0, the location text is " (0) : ".
    explicit Exception(String const& message);
    /// The same texts and line in a copy of their own, the location text included. The throw function is not copied:
    /// Rethrow() on a copy throws a plain Exception. A copy of an exception that had no memory for its texts has the
    /// location text "<unknown location>".
    Exception(Exception const& other);
    /// Frees the texts.
    ~Exception() override;
    /// @}

    /// @name Access
    /// @{
    /// What went wrong.
    [[nodiscard]] String const& Message() const noexcept;
    /// The source file that raised the exception.
    [[nodiscard]] String const& Filename() const noexcept;
    /// The line of that file, or 0.
    [[nodiscard]] unsigned int LineNumber() const noexcept;
    /// The qualified name of the function that raised the exception.
    [[nodiscard]] String const& FunctionName() const noexcept;
    /// The location text: file, " (", line, ") : ", function.
    [[nodiscard]] String const& Where() const noexcept;
    /// Always "Brevane exception", for every class and every object; what can be told stands in Message() and Where().
    [[nodiscard]] char const* what() const noexcept override;
    /// @}

    /// @name Changes
    /// @{
    /// Exchanges the texts, the line and the throw function with another exception. The classes stay as they are.
    void Swap(Exception& other) noexcept;
    /// @}

    /// @name Throwing
    /// @{
    /// Throws a copy of any exception as an Exception.
    [[noreturn]] static void Throw(Exception const& exception);
    /// Throws a copy of this exception, as the class of the library that it was constructed as; a plain Exception, if
    /// this is itself a copy, as what Rethrow() has thrown is. Where handlers stand in handlers, `throw;` keeps the
    /// class. Of a program's own subclass it throws what that hands to the protected constructors of Exception and
    /// bv::maths::MathsException. The other classes have none: a subclass of InvalidArgumentException, say, is thrown
    /// as InvalidArgumentException.
    [[noreturn]] void Rethrow() const;
    /// @}

    /// @name Operators
    /// @{
    /// Takes over the texts and the line of another exception, and forgets the throw function.
    Exception& operator=(Exception const& other);
    /// @}

protected:
    /// @name Construction of a subclass
    /// @{
    /// As the public constructor of four arguments, with the throw function of the subclass.
    Exception(String const& message, String const& file, unsigned int line, String const& function,
              ThrowFunction ownThrow);
    /// As the public constructor of one argument, with the throw function of the subclass.
    Exception(String const& message, ThrowFunction ownThrow);
    /// @}
};

namespace detail
{
/// The text of `<<` and of the formatters.
[[nodiscard]] BV_API std::string GetText(Exception const& exception);
} // namespace detail

/// Writes the message between single quotes, " - ", the location text and a full stop, as one string: piece by piece,
/// and at no width, where there is no memory left for it.
BV_API std::ostream& operator<<(std::ostream& stream, Exception const& exception);

// The layout is a promise: the virtual table, the pointer to the texts, the throw function.
static_assert(sizeof(Exception) == 3 * sizeof(void*));

} // namespace bv
