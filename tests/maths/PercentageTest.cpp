#include "bv/maths/Percentage.h"

#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <numeric>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/DivideByZeroException.h"
#include "support/Numbers.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Throws.h"

namespace
{

using bv::maths::DivideByZeroException;
using bv::maths::Percentage;
using bv::test::ExpectSameBits;
using bv::test::INF;
using bv::test::Random;

using U64 = unsigned long long;

void ExpectFraction(Percentage const& actual, U64 numerator, U64 denominator)
{
    EXPECT_EQ(actual.GetNumerator(), numerator);
    EXPECT_EQ(actual.GetDenominator(), denominator);
}

/// Runs an operation on a value that reduces 0/0: it throws, and the value stays what it was.
template <typename Operation>
void ExpectReductionOfZeroByZero(Percentage value, Operation operation)
{
    U64 const numerator = value.GetNumerator();
    U64 const denominator = value.GetDenominator();
    bv::test::ExpectThrows<DivideByZeroException>([&] { operation(value); }, "Integer division by zero",
                                                  "bv::maths::Percentage::Reduce", "internal\\Maths\\Percentage", 24);
    ExpectFraction(value, numerator, denominator);
}

/// The same for a divisor of zero, which the operators refuse themselves.
template <typename Operation>
void ExpectDivisionByZero(Percentage value, unsigned int line, Operation operation)
{
    U64 const numerator = value.GetNumerator();
    U64 const denominator = value.GetDenominator();
    bv::test::ExpectThrows<DivideByZeroException>([&] { operation(value); }, "Integer division by zero",
                                                  "bv::maths::Percentage::operator /=", "internal\\Maths\\Percentage",
                                                  line);
    ExpectFraction(value, numerator, denominator);
}

/// 2^32 as a fraction: twice the largest power that a constructor takes.
Percentage TwoToThe32()
{
    return Percentage(0x80000000) * Percentage(2);
}

// The layout: two fields of 64 bits, in this order.
static_assert(sizeof(Percentage) == 16 && alignof(Percentage) == alignof(U64));
static_assert(std::is_trivially_copyable_v<Percentage> && std::is_standard_layout_v<Percentage>);
static_assert(!std::is_polymorphic_v<Percentage>);
static_assert(std::bit_cast<std::array<U64, 2>>(Percentage(2, 4)) == std::array<U64, 2>{1, 2});
static_assert(std::is_same_v<decltype(Percentage().GetNumerator()), U64>);
static_assert(std::is_same_v<decltype(Percentage().GetDenominator()), U64>);

// What converts: an integer to a fraction, and a fraction to its ratio.
static_assert(std::is_convertible_v<unsigned int, Percentage> && std::is_convertible_v<Percentage, float>);
static_assert(std::is_convertible_v<Percentage const, float>);
static_assert(!std::is_convertible_v<float, Percentage> && !std::is_constructible_v<Percentage, double>);
static_assert(!std::is_constructible_v<Percentage, double, int> && !std::is_constructible_v<Percentage, int, float>);
static_assert(!std::is_constructible_v<Percentage, float, float>);
static_assert(std::is_constructible_v<Percentage, int, int> && std::is_constructible_v<Percentage, short, U64>);
static_assert(std::is_nothrow_default_constructible_v<Percentage>);
static_assert(std::is_nothrow_constructible_v<Percentage, unsigned int>);
static_assert(!std::is_nothrow_constructible_v<Percentage, unsigned int, unsigned int>);
static_assert(std::is_nothrow_copy_assignable_v<Percentage> && std::is_nothrow_move_assignable_v<Percentage>);
static_assert(noexcept(static_cast<float>(std::declval<Percentage const&>())));

/// The operation has this type with a fraction on the left and such a value on the right, whether the fraction is a
/// constant, a variable or a temporary.
template <typename Type, typename Operation, typename R>
constexpr bool GIVES = (std::is_same_v<std::invoke_result_t<Operation, Percentage&, R>, Type> &&
                        std::is_same_v<std::invoke_result_t<Operation, Percentage const&, R>, Type> &&
                        std::is_same_v<std::invoke_result_t<Operation, Percentage, R>, Type>);

/// Fractions stay fractions with this on their right.
template <typename R>
constexpr bool STAYS_EXACT = (GIVES<Percentage, std::multiplies<>, R> && GIVES<Percentage, std::plus<>, R> &&
                              GIVES<Percentage, std::divides<>, R>);

/// None of the three operators compiles with this on the right, not even as `float` arithmetic.
template <typename L, typename R>
constexpr bool DOES_NOT_COMPILE = (!std::is_invocable_v<std::multiplies<>, L, R> &&
                                   !std::is_invocable_v<std::plus<>, L, R> &&
                                   !std::is_invocable_v<std::divides<>, L, R>);

static_assert(STAYS_EXACT<Percentage&> && STAYS_EXACT<Percentage const&> && STAYS_EXACT<Percentage>);
static_assert(STAYS_EXACT<unsigned int> && STAYS_EXACT<int> && STAYS_EXACT<unsigned int const&>);
static_assert(STAYS_EXACT<short> && STAYS_EXACT<unsigned char> && STAYS_EXACT<bool>);
static_assert(DOES_NOT_COMPILE<Percentage&, U64> && DOES_NOT_COMPILE<Percentage const&, U64>);
static_assert(DOES_NOT_COMPILE<Percentage&, long long> && DOES_NOT_COMPILE<Percentage const&, long long>);
// In place, where there is no other type to go to, a floating-point number does not compile.
template <typename P, typename R>
concept MultipliesInPlace = requires(P p, R r)
{
    p *= r;
};
template <typename P, typename R>
concept AddsInPlace = requires(P p, R r)
{
    p += r;
};
template <typename P, typename R>
concept DividesInPlace = requires(P p, R r)
{
    p /= r;
};
template <typename P, typename R>
constexpr bool CHANGES_IN_PLACE = (MultipliesInPlace<P, R> && AddsInPlace<P, R> && DividesInPlace<P, R>);
template <typename P, typename R>
constexpr bool DOES_NOT_CHANGE_IN_PLACE = (!MultipliesInPlace<P, R> && !AddsInPlace<P, R> && !DividesInPlace<P, R>);
static_assert(CHANGES_IN_PLACE<Percentage&, int> && CHANGES_IN_PLACE<Percentage&, Percentage>);
static_assert(DOES_NOT_CHANGE_IN_PLACE<Percentage&, float> && DOES_NOT_CHANGE_IN_PLACE<Percentage&, double>);
static_assert(CHANGES_IN_PLACE<Percentage&, U64> && CHANGES_IN_PLACE<Percentage&, long long>);
static_assert(DOES_NOT_CHANGE_IN_PLACE<Percentage const&, int>);

// A floating-point number, and any number on the left, works on the ratio.
static_assert(std::is_same_v<decltype(100 * Percentage()), float>);
static_assert(std::is_same_v<decltype(Percentage() * 100.0f), float>);
static_assert(std::is_same_v<decltype(std::declval<Percentage const&>() + 1.0f), float>);
static_assert(std::is_same_v<decltype(std::declval<Percentage&>() / 2.0), double>);
static_assert(std::is_same_v<decltype(std::declval<Percentage&>() *= Percentage()), Percentage&>);
static_assert(std::is_same_v<decltype(std::declval<Percentage&>() += Percentage()), Percentage&>);
static_assert(std::is_same_v<decltype(std::declval<Percentage&>() /= Percentage()), Percentage&>);
static_assert(std::is_same_v<decltype(std::declval<Percentage&>() /= 2u), Percentage&>);

// The binary operators have a form that is not const and one that is.
using ByFraction = Percentage (Percentage::*)(Percentage const&);
using ByInteger = Percentage (Percentage::*)(unsigned int);
using ConstByFraction = Percentage (Percentage::*)(Percentage const&) const;
using ConstByInteger = Percentage (Percentage::*)(unsigned int) const;
static_assert(std::is_same_v<decltype(static_cast<ByFraction>(&Percentage::operator*)), ByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ByFraction>(&Percentage::operator+)), ByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ByFraction>(&Percentage::operator/)), ByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ByInteger>(&Percentage::operator/)), ByInteger>);
static_assert(std::is_same_v<decltype(static_cast<ConstByFraction>(&Percentage::operator*)), ConstByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ConstByFraction>(&Percentage::operator+)), ConstByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ConstByFraction>(&Percentage::operator/)), ConstByFraction>);
static_assert(std::is_same_v<decltype(static_cast<ConstByInteger>(&Percentage::operator/)), ConstByInteger>);

// Known to the compiler.
static_assert((Percentage(1, 2) + Percentage(1, 3)).GetNumerator() == 5);
static_assert(static_cast<float>(Percentage(3, 4) / 3 * Percentage(2)) == 0.5f);

TEST(PercentageTest, IsZeroByZeroByDefault)
{
    ExpectFraction(Percentage(), 0, 0);
}

TEST(PercentageTest, AnIntegerStandsOverOne)
{
    ExpectFraction(Percentage(7), 7, 1);
    ExpectFraction(Percentage(0), 0, 1);
    ExpectFraction(Percentage(0xFFFFFFFF), 0xFFFFFFFF, 1);
    Percentage const implicit = 3u;
    ExpectFraction(implicit, 3, 1);
}

TEST(PercentageTest, TwoIntegersAreReduced)
{
    ExpectFraction(Percentage(2, 4), 1, 2);
    ExpectFraction(Percentage(4, 2), 2, 1);
    ExpectFraction(Percentage(84, 36), 7, 3);
    ExpectFraction(Percentage(5, 7), 5, 7);
    ExpectFraction(Percentage(9, 9), 1, 1);
    ExpectFraction(Percentage(0, 7), 0, 1);
    ExpectFraction(Percentage(5, 0), 1, 0);
    ExpectFraction(Percentage(0xFFFFFFFF, 0xFFFFFFFF), 1, 1);
    ExpectFraction(Percentage(0xFFFFFFFE, 0xFFFFFFFF), 0xFFFFFFFE, 0xFFFFFFFF);
    ExpectFraction(Percentage(0x80000000, 0x60000000), 4, 3);
}

TEST(PercentageTest, TwoZerosAreADivisionByZero)
{
    bv::test::ExpectThrows<DivideByZeroException>([] { Percentage(0, 0); }, "Integer division by zero",
                                                  "bv::maths::Percentage::Reduce", "internal\\Maths\\Percentage", 24);
}

TEST(PercentageTest, CopiesBothFields)
{
    Percentage const original(3, 7);
    Percentage copy(original);
    ExpectFraction(copy, 3, 7);
    Percentage assigned(1);
    EXPECT_EQ(&(assigned = original), &assigned);
    ExpectFraction(assigned, 3, 7);
    EXPECT_EQ(&(assigned = Percentage(2, 9)), &assigned);
    ExpectFraction(assigned, 2, 9);
    Percentage moved(2);
    moved = std::move(copy);
    ExpectFraction(moved, 3, 7);
    moved = Percentage();
    ExpectFraction(moved, 0, 0);
}

TEST(PercentageTest, ConvertsToItsRatio)
{
    ExpectSameBits<float>(Percentage(1, 2), 0.5f);
    ExpectSameBits<float>(Percentage(1, 3), 1.0f / 3.0f);
    ExpectSameBits<float>(Percentage(7), 7.0f);
    ExpectSameBits<float>(Percentage(250, 100), 2.5f);
    Percentage const constant(3, 4);
    float const ratio = constant;
    ExpectSameBits(ratio, 0.75f);
    ExpectSameBits(100 * constant, 75.0f);
}

TEST(PercentageTest, ConvertsZerosOfEveryFormToZero)
{
    ExpectSameBits<float>(Percentage(), 0.0f);
    ExpectSameBits<float>(Percentage(0), 0.0f);
    ExpectSameBits<float>(Percentage(0, 7), 0.0f);
    ExpectSameBits<float>(Percentage(5) * Percentage(0), 0.0f);
}

TEST(PercentageTest, ConvertsAnythingElseOverZeroToInfinity)
{
    ExpectSameBits<float>(Percentage(5, 0), INF<float>);
    ExpectSameBits<float>(Percentage(1, 0), INF<float>);
}

TEST(PercentageTest, RoundsEachFieldBeforeItDivides)
{
    // 2^25 + 1 rounds to 2^25, and 2^25 / 25 = 1342177.28 to 1342177.25. The exact ratio, 1342177.32, would round to
    // 1342177.375.
    ExpectSameBits<float>(Percentage(0x2000001, 25), 1342177.25f);
    // 2^32 - 2 and 2^32 - 1 both round to 2^32.
    ExpectSameBits<float>(Percentage(0xFFFFFFFE, 0xFFFFFFFF), 1.0f);
    // Fields beyond 32 bits: 2^63 and more.
    Percentage const large = TwoToThe32() * Percentage(0x80000000);
    ExpectFraction(large, U64{1} << 63, 1);
    ExpectSameBits<float>(large, 0x1p63f);
    ExpectSameBits<float>(Percentage(1) / large, 0x1p-63f);
    Percentage const largest = large + Percentage(0x7FFFFFFF) * TwoToThe32();
    ExpectFraction(largest, 0xFFFFFFFF00000000, 1);
    ExpectSameBits<float>(largest, 0x1p64f);
}

TEST(PercentageTest, ComparesRatiosAsFloatHasThem)
{
    EXPECT_TRUE(Percentage(1, 2) < Percentage(2, 3));
    EXPECT_TRUE(Percentage(2, 4) == Percentage(1, 2));
    EXPECT_TRUE(Percentage() == Percentage(0, 7)); // both are zero, over different denominators
    // 2^32 - 2 and 2^32 - 1 both round to 2^32.
    EXPECT_TRUE(Percentage(0xFFFFFFFE, 0xFFFFFFFF) == Percentage(1));
}

TEST(PercentageTest, MultipliesAndReduces)
{
    ExpectFraction(Percentage(2, 3) * Percentage(3, 4), 1, 2);
    ExpectFraction(Percentage(5) * Percentage(1, 5), 1, 1);
    ExpectFraction(Percentage(7, 3) * Percentage(2, 5), 14, 15);
    Percentage p(2, 3);
    EXPECT_EQ(&(p *= Percentage(9, 4)), &p);
    ExpectFraction(p, 3, 2);
    ExpectFraction(Percentage(1, 0) * Percentage(6, 7), 1, 0);
    ExpectFraction(Percentage(1, 0) * Percentage(1, 0), 1, 0);
}

TEST(PercentageTest, AProductWithZeroIsZeroByZero)
{
    ExpectFraction(Percentage(3, 4) * Percentage(0), 0, 0);
    ExpectFraction(Percentage(0, 7) * Percentage(3, 4), 0, 0);
    ExpectFraction(Percentage(0) * Percentage(0), 0, 0);
    ExpectFraction(Percentage() * Percentage(3, 4), 0, 0);
    ExpectFraction(Percentage(3, 4) * Percentage(), 0, 0);
    ExpectFraction(Percentage(1, 0) * Percentage(0), 0, 0);
    Percentage p(3, 4);
    p *= Percentage(0);
    ExpectFraction(p, 0, 0);
}

TEST(PercentageTest, AddsOverACommonDenominator)
{
    ExpectFraction(Percentage(1, 4) + Percentage(1, 4), 1, 2);
    ExpectFraction(Percentage(1, 7) + Percentage(3, 7), 4, 7);
    ExpectFraction(Percentage(2, 3) + Percentage(1, 3), 1, 1);
    ExpectFraction(Percentage(1, 0) + Percentage(1, 0), 1, 0); // 2/0
}

TEST(PercentageTest, AddsOverDifferentDenominators)
{
    ExpectFraction(Percentage(1, 2) + Percentage(1, 3), 5, 6);
    ExpectFraction(Percentage(1, 6) + Percentage(1, 3), 1, 2); // 9/18
    ExpectFraction(Percentage(3) + Percentage(1, 2), 7, 2);
    ExpectFraction(Percentage(1, 0) + Percentage(1, 2), 1, 0); // 2/0
    Percentage p(1, 2);
    EXPECT_EQ(&(p += Percentage(2, 5)), &p);
    ExpectFraction(p, 9, 10);
}

TEST(PercentageTest, AddingZeroChangesNothing)
{
    ExpectFraction(Percentage(3, 4) + Percentage(0), 3, 4);
    ExpectFraction(Percentage(3, 4) + Percentage(), 3, 4);
    ExpectFraction(Percentage() + Percentage(0), 0, 0); // the other zero is not taken over
    ExpectFraction(Percentage(0) + Percentage(), 0, 1);
    ExpectFraction(Percentage() + Percentage(), 0, 0);
}

TEST(PercentageTest, AddingToZeroCopies)
{
    ExpectFraction(Percentage() + Percentage(1, 3), 1, 3);
    ExpectFraction(Percentage(0) + Percentage(1, 3), 1, 3);
    ExpectFraction(Percentage() + Percentage(5, 0), 1, 0);
}

TEST(PercentageTest, DividesByAFraction)
{
    ExpectFraction(Percentage(1, 2) / Percentage(1, 4), 2, 1);
    ExpectFraction(Percentage(2, 3) / Percentage(4, 9), 3, 2);
    ExpectFraction(Percentage(3) / Percentage(1, 0), 0, 1);    // 0/1
    ExpectFraction(Percentage(3, 5) / Percentage(1, 0), 0, 1); // 0/5
    ExpectFraction(Percentage(1, 0) / Percentage(5), 1, 0);
    Percentage p(1, 2);
    EXPECT_EQ(&(p /= Percentage(3, 5)), &p);
    ExpectFraction(p, 5, 6);
}

TEST(PercentageTest, DividingZeroByAFractionChangesNothing)
{
    ExpectFraction(Percentage(0) / Percentage(1, 2), 0, 1);
    ExpectFraction(Percentage() / Percentage(1, 2), 0, 0);
    ExpectFraction(Percentage() / Percentage(1, 0), 0, 0);
}

TEST(PercentageTest, DividesByAnInteger)
{
    ExpectFraction(Percentage(3, 4) / 3u, 1, 4);
    ExpectFraction(Percentage(3, 4) / 5u, 3, 20);
    ExpectFraction(Percentage(6) / 4u, 3, 2);
    ExpectFraction(Percentage(1, 0) / 5u, 1, 0);
    ExpectFraction(Percentage(1, 0xFFFFFFFF) / 0xFFFFFFFFu, 1, 0xFFFFFFFE00000001); // a product of 64 bits
    Percentage p(3, 4);
    EXPECT_EQ(&(p /= 3u), &p);
    ExpectFraction(p, 1, 4);
}

TEST(PercentageTest, DividingZeroByAnIntegerReducesIt)
{
    ExpectFraction(Percentage(0, 7) / 2u, 0, 1);
    ExpectFraction(Percentage(0) / 12u, 0, 1);
    Percentage p(0);
    p /= 5u;
    ExpectFraction(p, 0, 1);
}

TEST(PercentageTest, DivisionByAZeroFractionThrows)
{
    for (Percentage const& value : {Percentage(), Percentage(0), Percentage(3, 4), Percentage(1, 0)})
        for (Percentage const& zero : {Percentage(), Percentage(0), Percentage(0, 5)})
        {
            ExpectDivisionByZero(value, 155, [&](Percentage& p) { p /= zero; });
            ExpectDivisionByZero(value, 155, [&](Percentage& p) { p = p / zero; });
            ExpectDivisionByZero(value, 155, [&](Percentage& p) { p = std::as_const(p) / zero; });
        }
}

TEST(PercentageTest, DivisionByTheIntegerZeroThrows)
{
    for (Percentage const& value : {Percentage(), Percentage(0), Percentage(3, 4), Percentage(1, 0)})
    {
        ExpectDivisionByZero(value, 71, [](Percentage& p) { p /= 0u; });
        ExpectDivisionByZero(value, 71, [](Percentage& p) { p = p / 0u; });
        ExpectDivisionByZero(value, 71, [](Percentage& p) { p = std::as_const(p) / 0u; });
        ExpectDivisionByZero(value, 71, [](Percentage& p) { p = p / 0; });
    }
}

TEST(PercentageTest, ADivisionThatComesToZeroByZeroThrows)
{
    ExpectReductionOfZeroByZero(Percentage(), [](Percentage& p) { p /= 2u; });
    ExpectReductionOfZeroByZero(Percentage(), [](Percentage& p) { p = p / 2; });
    ExpectReductionOfZeroByZero(Percentage(3) * Percentage(0), [](Percentage& p) { p /= 1u; });
    ExpectReductionOfZeroByZero(Percentage(1, 0), [](Percentage& p) { p /= Percentage(1, 0); });
    ExpectReductionOfZeroByZero(Percentage(1, 0),
                                [](Percentage& p)
                                {
                                    Percentage const& same = p;
                                    p /= same;
                                });
    ExpectReductionOfZeroByZero(Percentage(1, 0), [](Percentage& p) { p = p / Percentage(7, 0); });
}

TEST(PercentageTest, ProductsWrapUnnoticed)
{
    Percentage const factor = TwoToThe32();
    ExpectFraction(factor, U64{1} << 32, 1);
    ExpectFraction(factor * factor, 0, 1); // 2^64 / 1
    ExpectFraction(Percentage(1) / factor / factor, 1, 0);
    ExpectFraction(factor * (factor + Percentage(3)), U64{3} << 32, 1);
    ExpectFraction(Percentage(1) / factor / 0x80000000u / 2u, 1, 0);
}

TEST(PercentageTest, ASumThatWrapsToZeroByZeroThrowsAndChangesNothing)
{
    // 1/2^32 + (2^32 - 3)/(3 * 2^32): numerator 3 * 2^32 + 2^32 * (2^32 - 3) = 2^64, denominator 3 * 2^64.
    Percentage const factor = TwoToThe32();
    Percentage const one = Percentage(1) / factor;
    Percentage const other = Percentage(4294967293, 3) / factor;
    ExpectFraction(one, 1, U64{1} << 32);
    ExpectFraction(other, 4294967293, U64{3} << 32);
    ExpectReductionOfZeroByZero(one, [&](Percentage& p) { p += other; });
    ExpectReductionOfZeroByZero(one, [&](Percentage& p) { p = p + other; });
    ExpectReductionOfZeroByZero(other, [&](Percentage& p) { p += one; });
}

TEST(PercentageTest, ASumOfNumeratorsWraps)
{
    // (2^63 + 1) + (2^63 - 1) over 1
    Percentage const half = TwoToThe32() * Percentage(0x80000000);
    Percentage const above = half + Percentage(1);
    Percentage const below = Percentage(0x7FFFFFFF) * TwoToThe32() + Percentage(0xFFFFFFFF);
    ExpectFraction(above, (U64{1} << 63) + 1, 1);
    ExpectFraction(below, (U64{1} << 63) - 1, 1);
    ExpectFraction(above + below, 0, 1);
}

TEST(PercentageTest, OperandsMayBeTheValueItself)
{
    Percentage p(3, 4);
    Percentage const& same = p;
    ExpectFraction(p += same, 3, 2);
    ExpectFraction(p *= same, 9, 4);
    ExpectFraction(p /= same, 1, 1);
    p = Percentage(3, 4);
    ExpectFraction(p * p, 9, 16);
    ExpectFraction(p + p, 3, 2);
    ExpectFraction(p / p, 1, 1);
    p = same;
    ExpectFraction(p, 3, 4);
    Percentage zero;
    Percentage const& sameZero = zero;
    ExpectFraction(zero += sameZero, 0, 0);
    ExpectFraction(zero *= sameZero, 0, 0);
}

TEST(PercentageTest, BinaryOperatorsLeaveTheirOperandsAlone)
{
    Percentage p(2, 3);
    Percentage const q(3, 5);
    ExpectFraction(p * q, 2, 5);
    ExpectFraction(p + q, 19, 15);
    ExpectFraction(p / q, 10, 9);
    ExpectFraction(p / 2u, 1, 3);
    ExpectFraction(p, 2, 3);
    ExpectFraction(q, 3, 5);
}

TEST(PercentageTest, ConstantsStayFractions)
{
    Percentage const p(1, 3);
    Percentage const q(1, 6);
    ExpectFraction(p * q, 1, 18);
    ExpectFraction(p + q, 1, 2);
    ExpectFraction(p / q, 2, 1);
    ExpectFraction(p / 2u, 1, 6);
}

TEST(PercentageTest, PlainIntegersStayFractions)
{
    Percentage p(1, 3);
    Percentage const q(1, 3);
    ExpectFraction(p * 100, 100, 3);
    ExpectFraction(q * 100, 100, 3);
    ExpectFraction(p * 100u, 100, 3);
    ExpectFraction(p + 2, 7, 3);
    ExpectFraction(q + 2u, 7, 3);
    ExpectFraction(p / 2, 1, 6);
    ExpectFraction(q / 2, 1, 6);
    ExpectFraction(Percentage(1, 3) / 2 * 3 + 1, 3, 2);
    p *= 6u;
    ExpectFraction(p, 2, 1);
    p += 1u;
    ExpectFraction(p, 3, 1);
}

TEST(PercentageTest, FloatingPointNumbersWorkOnTheRatio)
{
    Percentage p(3, 4);
    Percentage const third(1, 3);
    ExpectSameBits(p * 100.0f, 75.0f);
    ExpectSameBits(p + 0.5f, 1.25f);
    ExpectSameBits(p / 0.5f, 1.5f);
    ExpectSameBits(third * 3.0f, 1.0f / 3.0f * 3.0f);
    ExpectSameBits(third * 1.0, 0x1.555556p-2); // 1/3 as a float
    ExpectSameBits(third + 0.0, 0x1.555556p-2);
    ExpectSameBits(third / 1.0, 0x1.555556p-2);
    ExpectSameBits(p - third, 0.75f - 1.0f / 3.0f);
    ExpectSameBits(Percentage(1, 0) * 0.5f, INF<float>);
}

TEST(PercentageTest, NegativeIntegersWrapAsTheyConvert)
{
    ExpectFraction(Percentage(1) * -1, 0xFFFFFFFF, 1);
    ExpectFraction(Percentage(1) / -1, 1, 0xFFFFFFFF);
}

TEST(PercentageTest, AgreesWithFractionsThatAreReducedOnce)
{
    // The fields go in unreduced, and no product or sum here passes 64 bits.
    auto const expect = [](Percentage const& actual, U64 numerator, U64 denominator)
    {
        U64 a = numerator;
        U64 b = denominator;
        while (b != 0)
            a = std::exchange(b, a % b);
        ASSERT_EQ(actual.GetNumerator(), numerator / a);
        ASSERT_EQ(actual.GetDenominator(), denominator / a);
    };
    Random random(161803);
    auto const draw = [&](int i) { return 1 + (random() >> (i % 31)) % 0xFFFFFFFF; };
    for (int i = 0; i < 100000; ++i)
    {
        unsigned int const n = draw(i);
        unsigned int const d = draw(i / 31);
        unsigned int const m = draw(i / 7);
        unsigned int const e = draw(i / 3);
        expect(Percentage(n, d), n, d);
        expect(Percentage(n, d) * Percentage(m, e), U64{n} * m, U64{d} * e);
        expect(Percentage(n, d) / Percentage(m, e), U64{n} * e, U64{d} * m);
        expect(Percentage(n, d) / m, n, U64{d} * m);
        expect(Percentage(n / 4 + 1, d) + Percentage(m / 4 + 1, e), U64{n / 4 + 1} * e + U64{m / 4 + 1} * d,
               U64{d} * e);
    }
}

} // namespace
