#pragma once

/// @file
/// What GeneratorModuleTest.cpp asks of the module that it loads.

/// Constructs a generator of this seed in memory of the caller, which has room for one.
using ConstructingFunction = void (*)(void* memory, unsigned int seed);

inline constexpr char CONSTRUCT_IN_MODULE[] = "ConstructInModule"; ///< the name that the module exports
