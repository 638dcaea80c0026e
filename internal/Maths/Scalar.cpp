#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Scalar.h"

#include <limits>

#include "bv/maths/IsEqual.h"

namespace bv::maths
{

float Log2(float x, float precision) noexcept
{
    if (!(x > 0.0f))
        return -std::numeric_limits<float>::infinity();
    if (x == std::numeric_limits<float>::infinity())
        return x;

    float result = 0.0f;
    while (x < 1.0f)
    {
        x = x + x;
        result = result - 1.0f;
    }
    while (x >= 2.0f)
    {
        x = x * 0.5f;
        result = result + 1.0f;
    }

    float weight = 1.0f;
    if (weight < precision)
        return result;
    // With a precision of 0 or less the loop never ends; only one with a side effect, such as this read, may do so.
    float const volatile lastWeight = precision;
    do
    {
        x = x * x;
        weight = weight * 0.5f;
        if (x >= 2.0f)
        {
            x = x * 0.5f;
            result = result + weight;
        }
    } while (weight >= lastWeight);
    return result;
}

template BV_TEMPLATE_INSTANCE float CubicSmoothStep(float, float, float);
template BV_TEMPLATE_INSTANCE double CubicSmoothStep(double, double, double);
template BV_TEMPLATE_INSTANCE float QuinticSmoothStep(float, float, float);
template BV_TEMPLATE_INSTANCE double QuinticSmoothStep(double, double, double);
template BV_TEMPLATE_INSTANCE float SmoothStep(float, float, float);
template BV_TEMPLATE_INSTANCE double SmoothStep(double, double, double);
template BV_TEMPLATE_INSTANCE float SawTooth(float, float);
template BV_TEMPLATE_INSTANCE double SawTooth(double, double);

} // namespace bv::maths
