#pragma once

/// @file
/// What ModuleTest.cpp asks of the module that it loads.

/// Throws the class of this number, from code of the module or, through its throw function, from code of the library.
using ThrowingFunction = void (*)(int number, bool throughLibrary);

inline constexpr char THROW_FROM_MODULE[] = "ThrowFromModule"; ///< the name that the module exports
