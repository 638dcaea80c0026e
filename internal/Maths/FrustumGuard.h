#pragma once

/// @file
/// What a frustum makes of a plane that cannot be set.

#include "Maths/Text.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/detail/Place.h"

namespace bv::maths
{

// Where the failure says that it was raised; see Place.
inline constexpr detail::Place SET_PLANES{"tFrustum", 112};

template <typename T>
[[noreturn, gnu::cold]] void RaiseInvalidViewMatrix()
{
    throw InvalidArgumentException(L"Attempt to setup viewing frustum from invalid matrix", "internal\\Maths\\Frustum",
                                   SET_PLANES.line, FunctionName<T>("tFrustum", SET_PLANES.member).c_str());
}

/// Sets the planes of a frustum. A division by zero while doing so means that the matrix they come from is invalid, and
/// is reported as that; every other exception passes through. It stands apart from its only user so that it can be seen
/// at work: planes, as they are, divide without a check.
template <typename T, typename Setting>
void SetPlanes(Setting const& set)
{
    try
    {
        set();
    }
    catch (DivideByZeroException const&)
    {
        RaiseInvalidViewMatrix<T>();
    }
}

} // namespace bv::maths
