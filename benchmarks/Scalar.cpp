#include <bv/maths/Integer.h>
#include <bv/maths/IsEqual.h>
#include <bv/maths/Scalar.h>

#include "ScalarData.h"
#include "Topics.h"

namespace bench
{

namespace
{

constexpr char const* LIBRARY = "BvBaseUtils";

template <typename T>
void AddReals()
{
    for (auto const& [kind, text] : PAIRS)
    {
        auto const [a, b] = MakePairs<T>(kind);
        AddMap(
            Name<T>(std::string("scalar/IsEqual, ") + text, LIBRARY), [](T x, T y) { return bv::maths::IsEqual(x, y); },
            a, b);
        AddFold(
            Name<T>(std::string("scalar/count IsEqual, ") + text, LIBRARY), std::size_t{0},
            [](std::size_t count, T x, T y) { return bv::maths::IsEqual(x, y) ? count + 1 : count; }, a, b);
    }

    StepArguments<T> const steps;
    AddMap(
        Name<T>("scalar/CubicSmoothStep", LIBRARY),
        [](T low, T high, T x) { return bv::maths::CubicSmoothStep(low, high, x); }, steps.low, steps.high,
        steps.value);
    AddMap(
        Name<T>("scalar/QuinticSmoothStep", LIBRARY),
        [](T low, T high, T x) { return bv::maths::QuinticSmoothStep(low, high, x); }, steps.low, steps.high,
        steps.value);
    AddMap(
        Name<T>("scalar/SmoothStep", LIBRARY), [](T low, T high, T x) { return bv::maths::SmoothStep(low, high, x); },
        steps.low, steps.high, steps.value);
    AddMap(
        Name<T>("scalar/SawTooth", LIBRARY), [](T x, T period) { return bv::maths::SawTooth(x, period); }, steps.value,
        steps.high);
}

} // namespace

void AddScalar()
{
    AddReals<float>();
    AddReals<double>();

    auto const integers = Integers();
    auto const name = [](char const* operation) { return std::string(operation) + "/integer/" + LIBRARY; };
    AddMap(
        name("scalar/IntLog2"), [](unsigned int value) { return bv::maths::IntLog2(value); }, integers);
    AddMap(
        name("scalar/IntSqrt"), [](unsigned int value) { return bv::maths::IntSqrt(value); }, integers);
    AddMap(
        name("scalar/RoundUpToPO2"), [](unsigned int value) { return bv::maths::RoundUpToPO2(value); }, integers);
    AddMap(
        name("scalar/RoundToNearestPO2"), [](unsigned int value) { return bv::maths::RoundToNearestPO2(value); },
        integers);
}

} // namespace bench
