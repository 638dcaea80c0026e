// Programs of operations on fractions, beside the same on two integers.

#include <array>
#include <numeric>

#include "Fuzz.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Percentage.h"

using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

/// A fraction by the book: computed modulo 2^64, then reduced.
struct Model
{
    std::uint64_t numerator = 0;
    std::uint64_t denominator = 0;

    /// @return whether there is such a fraction.
    bool Set(std::uint64_t n, std::uint64_t d)
    {
        std::uint64_t const divisor = std::gcd(n, d);
        if (divisor == 0)
            return false;
        numerator = n / divisor;
        denominator = d / divisor;
        return true;
    }
    bool Multiply(Model const& other)
    {
        if (numerator == 0 || other.numerator == 0)
        {
            *this = {};
            return true;
        }
        return Set(numerator * other.numerator, denominator * other.denominator);
    }
    bool Add(Model const& other)
    {
        if (other.numerator == 0)
            return true;
        if (numerator == 0)
        {
            *this = other;
            return true;
        }
        if (denominator == other.denominator)
            return Set(numerator + other.numerator, denominator);
        return Set(other.denominator * numerator + denominator * other.numerator, denominator * other.denominator);
    }
    bool Divide(Model const& other)
    {
        if (other.numerator == 0)
            return false;
        return numerator == 0 || Set(other.denominator * numerator, denominator * other.numerator);
    }
    bool Divide(unsigned number) { return number != 0 && Set(numerator, number * denominator); }
};

void RequireSame(Percentage const& value, Model const& model)
{
    Require(value.GetNumerator() == model.numerator && value.GetDenominator() == model.denominator,
            "a fraction is what integers make of it");
    float const quotient = model.numerator == 0 ? 0.0F
                           : model.numerator == model.denominator
                               ? 1.0F
                               : static_cast<float>(model.numerator) / static_cast<float>(model.denominator);
    Require(static_cast<float>(value) == quotient, "a fraction as a number is the quotient");
}

/// Runs the operation in place and as a copy, and expects that they fail where the model does.
template <typename InPlace, typename Copy>
void Run(Percentage& value, bool isPossible, InPlace const& inPlace, Copy const& copy)
{
    Percentage const before(value);
    Percentage copied;
    bool isDone = true;
    try
    {
        copied = copy(before);
    }
    catch (DivideByZeroException const&)
    {
        isDone = false;
    }
    Require(isDone == isPossible, "what cannot be computed is refused, and nothing else");
    try
    {
        inPlace(value);
        Require(isDone, "a form in place refuses what the copying form refuses");
        Require(value.GetNumerator() == copied.GetNumerator() && value.GetDenominator() == copied.GetDenominator(),
                "a form in place does what the copying form does");
    }
    catch (DivideByZeroException const&)
    {
        Require(!isDone, "a form in place refuses nothing else");
        Require(value.GetNumerator() == before.GetNumerator() && value.GetDenominator() == before.GetDenominator(),
                "what is refused changes nothing");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    std::array<Percentage, 4> values;
    std::array<Model, 4> models;
    // Numbers overflow after fewer operations than these.
    for (unsigned left = 20; left > 0 && !input.IsUsedUp(); --left)
    {
        unsigned const operation = input.Below(6);
        unsigned const to = input.Below(4);
        unsigned const from = input.Below(4);
        Percentage& value = values[to];
        Percentage const other = values[from];
        Model changed = models[to];
        auto const number = input.Below(2) == 0 ? input.Take<std::uint32_t>() : input.Take<std::uint8_t>();
        bool isPossible = true;
        switch (operation)
        {
        case 0:
        {
            auto const denominator = input.Below(2) == 0 ? input.Take<std::uint32_t>() : input.Take<std::uint8_t>();
            isPossible = changed.Set(number, denominator);
            try
            {
                value = Percentage(number, denominator);
                Require(isPossible, "0/0 is refused");
            }
            catch (DivideByZeroException const&)
            {
                Require(!isPossible, "only 0/0 is refused");
            }
            break;
        }
        case 1:
            value = Percentage(number);
            changed = {number, 1};
            break;
        case 2:
            isPossible = changed.Multiply(models[from]);
            Run(
                value, isPossible, [&](Percentage& p) { p *= other; }, [&](Percentage const& p) { return p * other; });
            break;
        case 3:
            isPossible = changed.Add(models[from]);
            Run(
                value, isPossible, [&](Percentage& p) { p += other; }, [&](Percentage const& p) { return p + other; });
            break;
        case 4:
            isPossible = changed.Divide(models[from]);
            Run(
                value, isPossible, [&](Percentage& p) { p /= other; }, [&](Percentage const& p) { return p / other; });
            break;
        default:
            isPossible = changed.Divide(number);
            Run(
                value, isPossible, [&](Percentage& p) { p /= number; },
                [&](Percentage const& p) { return p / number; });
            break;
        }
        if (isPossible)
            models[to] = changed;
        RequireSame(value, models[to]);
    }
    return 0;
}
