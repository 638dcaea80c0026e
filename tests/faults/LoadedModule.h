#pragma once

/// @file
/// What LoadedLibrary.cpp asks of the modules that it loads. It knows nothing of the library itself.

#include <cstddef>
#include <exception>

namespace bv::test
{

/// Which operation of the library is to fail.
enum class Fault : int
{
    SingularMatrix,
    WrongAxis,
    DivisionByZero,
    LogarithmOfZero,
    WrongFrame,
    DifferentLengths
};
inline constexpr int FAULT_COUNT = 6;

/// Lets an operation of the library fail.
using RaisingFunction = void (*)(Fault fault);
/// Rethrows an exception, catches it by its class, rethrows that by its own throw function, catches it again by its
/// class, and writes the name of the class and what the exception shows.
using DescribingFunction = void (*)(std::exception_ptr const& failure, char* text, std::size_t size);

inline constexpr char RAISE[] = "BvTestRaise";
inline constexpr char DESCRIBE[] = "BvTestDescribe";

} // namespace bv::test
