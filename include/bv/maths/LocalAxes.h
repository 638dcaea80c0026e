#pragma once

/// @file
/// A pair of tangents for a surface normal.

#include "bv/Export.h"
#include "bv/maths/detail/Lanes.h"
#include "bv/maths/tVector3.h"

namespace bv::maths
{

/// Two axes that span, together with a surface normal, an orthonormal frame: for shading frames and sampling.
///
/// The second axis is perpendicular to the normal in the plane of its two larger components; the first is the product
/// normal x second. The triple (first, second, normal) is left-handed: second x first = normal. Ties between components
/// of smallest magnitude go to x before y and to y before z, so the axes jump where the smallest component changes.
/// Source: John F. Hughes, Tomas Moeller, "Building an Orthonormal Basis from a Unit Vector", 1999.
///
/// The arguments may be one and the same object; when both axes are, it ends as the first.
///
/// @param normal a unit vector; neither checked nor normalised. Any finite vector other than zero gives unit axes, as
///               long as its square neither overflows nor underflows; zero, infinities and NaN give NaN.
/// @param[out] first the first axis.
/// @param[out] second the second axis.
BV_INLINE void EvaluateLocalAxes(tVector3<float> const& normal, tVector3<float>& first,
                                 tVector3<float>& second) noexcept
{
    tVector3<float> const n = normal;
    float const magnitudeX = detail::Magnitude(n.x);
    float const magnitudeY = detail::Magnitude(n.y);
    float const magnitudeZ = detail::Magnitude(n.z);
    float smallest = magnitudeX > magnitudeY ? magnitudeY : magnitudeX;
    smallest = smallest > magnitudeZ ? magnitudeZ : smallest;

    tVector3<float> perpendicular;
    if (smallest == magnitudeX)
        perpendicular = {0.0F, -n.z, n.y};
    else if (smallest != magnitudeY)
        perpendicular = {-n.y, n.x, 0.0F};
    else
        perpendicular = {-n.z, 0.0F, n.x};

    second = perpendicular.Normalise();
    first = n.Cross(perpendicular).Normalised();
}

} // namespace bv::maths
