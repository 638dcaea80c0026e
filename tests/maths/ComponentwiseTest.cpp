#include "bv/maths/Componentwise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"

namespace
{

using bv::maths::Abs;
using bv::maths::Ceil;
using bv::maths::Clamp;
using bv::maths::Floor;
using bv::maths::GetMaxAxis;
using bv::maths::GetMaxComponent;
using bv::maths::GetMinAxis;
using bv::maths::GetMinComponent;
using bv::maths::Lerp;
using bv::maths::Max;
using bv::maths::Min;
using bv::maths::tTuple2;
using bv::maths::tTuple3;
using bv::maths::tVector2;
using bv::maths::tVector3;
using bv::test::EPSILON;
using bv::test::ExpectSameBits;
using bv::test::HasSameBits;
using bv::test::INF;
using bv::test::IsNaN;
using bv::test::JustAbove;
using bv::test::JustBelow;
using bv::test::LARGEST;
using bv::test::QUIET_NAN;
using bv::test::Random;
using bv::test::SMALLEST_NORMAL;
using bv::test::SPECIAL_VALUES;
using bv::test::TINY;

template <typename V>
using Component = std::remove_cvref_t<decltype(V::x)>;

template <typename V>
constexpr std::size_t COUNT = sizeof(V) / sizeof(Component<V>);

/// The tuple or vector of the first two or three values.
template <typename V>
V Make(Component<V> x, Component<V> y, Component<V> z)
{
    if constexpr (COUNT<V> == 3)
        return V(x, y, z);
    else
        return V(x, y);
}

/// Calls a function for tuples and vectors in the plane and in space.
template <typename T, typename Function>
void ForEachShape(Function function)
{
    function(tTuple2<T>());
    function(tTuple3<T>());
    function(tVector2<T>());
    function(tVector3<T>());
}

/// Compares an operation with what a function of single numbers gives for the components, which it gets in every place.
template <typename V, typename Operation, typename Single, typename... Operands>
void ExpectEach(Operation operation, Single single, Operands const&... operands)
{
    V const actual = operation(operands...);
    for (std::size_t i = 0; i < COUNT<V>; ++i)
        ExpectSameBits(actual[i], single(operands[i]...));
}

/// Numbers that mean something to the operations: special ones, whole ones, halves and their neighbours.
template <typename T>
std::vector<T> Interesting()
{
    std::vector<T> values(SPECIAL_VALUES<T>.begin(), SPECIAL_VALUES<T>.end());
    for (T const value : {T(0.5), T(1), T(1.5), T(2), T(3), T(1 / EPSILON<T> / 2), T(1 / EPSILON<T>), T(2 / EPSILON<T>),
                          T(0x1p31), T(0x1p32), SMALLEST_NORMAL<T>})
        for (T const near : {value, JustBelow(value), JustAbove(value), T(value - T(0.5)), T(value + T(0.5))})
        {
            values.push_back(near);
            values.push_back(-near);
        }
    return values;
}

template <typename T>
class ComponentwiseTest : public testing::Test
{
};

TYPED_TEST_SUITE(ComponentwiseTest, bv::test::Precisions);

template <typename T>
class IntegerComponentwiseTest : public testing::Test
{
};

using Integers = testing::Types<int, unsigned int>;
TYPED_TEST_SUITE(IntegerComponentwiseTest, Integers);

TYPED_TEST(ComponentwiseTest, MinAndMaxKeepTheFirstOperandUnlessTheSecondIsStrictlyBeyondIt)
{
    using T = TypeParam;
    auto const smaller = [](T a, T b) { return !IsNaN(a) && !IsNaN(b) && a != b ? std::fmin(a, b) : a; };
    auto const larger = [](T a, T b) { return !IsNaN(a) && !IsNaN(b) && a != b ? std::fmax(a, b) : a; };
    std::vector<T> const values = Interesting<T>();
    for (std::size_t i = 0; i < values.size(); ++i)
        for (std::size_t j = 0; j < values.size(); ++j)
            ForEachShape<T>(
                [&](auto shape)
                {
                    using V = decltype(shape);
                    auto const at = [&](std::size_t index) { return values[index % values.size()]; };
                    V const a = Make<V>(at(i), at(i + 1), at(i + 2));
                    V const b = Make<V>(at(j), at(j + 3), at(j + 7));
                    ExpectEach<V>([](V const& v, V const& w) { return Min(v, w); }, smaller, a, b);
                    ExpectEach<V>([](V const& v, V const& w) { return Max(v, w); }, larger, a, b);
                });
}

TYPED_TEST(ComponentwiseTest, MinimumThatStartsAtInfinityTakesNoNoticeOfNaN)
{
    using T = TypeParam;
    tVector3<T> lowest(INF<T>, INF<T>, INF<T>);
    tVector3<T> highest = -lowest;
    tVector3<T> const points[] = {{QUIET_NAN<T>, 2, 3}, {1, QUIET_NAN<T>, 4}, {0, -1, QUIET_NAN<T>}};
    for (tVector3<T> const& point : points)
    {
        lowest = Min(lowest, point);
        highest = Max(highest, point);
    }
    ExpectSameBits(lowest, tVector3<T>(0, -1, 3));
    ExpectSameBits(highest, tVector3<T>(1, 2, 4));
}

TYPED_TEST(ComponentwiseTest, AbsDropsTheSignsOfZerosAndInfinitiesToo)
{
    using T = TypeParam;
    for (T const value : Interesting<T>())
        ForEachShape<T>(
            [&](auto shape)
            {
                using V = decltype(shape);
                ExpectEach<V>([](V const& v) { return Abs(v); }, [](T x) { return std::abs(x); },
                              Make<V>(value, -value, T(-0.0)));
            });
}

TYPED_TEST(ComponentwiseTest, ClampIsTheStandardOneWhereTheBoundsAreInOrder)
{
    using T = TypeParam;
    std::vector<T> const values = Interesting<T>();
    T const bounds[] = {-INF<T>, T(-2), T(-0.0), T(0), T(0.5), T(3), LARGEST<T>};
    for (T const value : values)
        for (T const low : bounds)
            for (T const high : bounds)
            {
                if (high < low)
                    continue;
                auto const clamped = [](T x, T lower, T upper) { return std::clamp(x, lower, upper); };
                ForEachShape<T>(
                    [&](auto shape)
                    {
                        using V = decltype(shape);
                        V const v = Make<V>(value, -value, value);
                        V const lower = Make<V>(low, low, -INF<T>);
                        V const upper = Make<V>(high, INF<T>, high);
                        ExpectEach<V>([](V const& x, V const& l, V const& h) { return Clamp(x, l, h); }, clamped, v,
                                      lower, upper);
                        ExpectEach<V>([&](V const& x) { return Clamp(x, low, high); },
                                      [&](T x) { return std::clamp(x, low, high); }, v);
                    });
            }
}

TYPED_TEST(ComponentwiseTest, ClampPassesNaNOnAndIgnoresBoundsThatAreNaN)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    tVector3<T> const ones(1, 1, 1);
    EXPECT_TRUE(IsNaN(Clamp(tVector2<T>(nan, 0), 0, 1).x));
    ExpectSameBits(Clamp(ones, tVector3<T>(nan, 2, nan), tVector3<T>(0, nan, nan)), tVector3<T>(0, 2, 1));
}

TYPED_TEST(ComponentwiseTest, ClampGivesTheUpperOfBoundsThatAreInTheWrongOrder)
{
    using T = TypeParam;
    ExpectSameBits(Clamp(tVector3<T>(0, 2, 4), 3, 1), tVector3<T>(1, 1, 1));
}

TYPED_TEST(ComponentwiseTest, LerpGivesBothEndsExactly)
{
    using T = TypeParam;
    Random random(1);
    for (int i = 0; i < 100000; ++i)
    {
        T const a = random.Any<T>();
        T const b = random.Any<T>();
        if (!std::isfinite(b - a))
            continue;
        EXPECT_EQ(Lerp(a, b, T{0}), a);
        EXPECT_EQ(Lerp(a, b, T{1}), b);
        T const t = random.Number<T>(-2, 2);
        EXPECT_EQ(Lerp(a, a, t), a);
    }
}

TYPED_TEST(ComponentwiseTest, LerpIsNearTheExactValue)
{
    using T = TypeParam;
    using Wide = std::conditional_t<std::is_same_v<T, float>, double, long double>;
    Random random(2);
    for (int i = 0; i < 100000; ++i)
    {
        T const a = random.Number<T>(-10, 10);
        T const b = random.Number<T>(-10, 10);
        T const t = random.Number<T>(-1, 2);
        Wide const from = static_cast<Wide>(a);
        Wide const exact = from + (static_cast<Wide>(b) - from) * static_cast<Wide>(t);
        // Difference, product and sum, each with half a step of numbers up to 20, 20 and 30.
        Wide const bound = static_cast<Wide>(EPSILON<T>) * (Wide{16} / 2 + Wide{16} / 2 + Wide{16} / 2);
        EXPECT_LE(std::abs(static_cast<Wide>(Lerp(a, b, t)) - exact), bound) << a << ' ' << b << ' ' << t;
    }
}

/// That the values for a range of parameters, which rise, neither fall nor leave the interval from a to b.
template <typename T>
void ExpectMonotone(T a, T b, std::vector<T> const& parameters)
{
    T const direction = a <= b ? T{1} : T{-1};
    T previous = a;
    for (T const t : parameters)
    {
        T const value = Lerp(a, b, t);
        EXPECT_GE((value - previous) * direction, T{0}) << std::hexfloat << a << ' ' << b << ' ' << t;
        previous = value;
    }
    EXPECT_GE((b - previous) * direction, T{0}) << std::hexfloat << a << ' ' << b;
}

TYPED_TEST(ComponentwiseTest, LerpIsMonotoneWhereItsHalvesMeet)
{
    using T = TypeParam;
    T const half{0.5};
    T const before = JustBelow(half);
    std::vector<T> const around = {JustBelow(before), before, half, JustAbove(half), JustAbove(JustAbove(half))};
    Random random(3);
    for (int i = 0; i < 200000; ++i)
    {
        // Near each other or far apart, of any sign, down to subnormal numbers.
        T const scale = i % 8 == 0 ? TINY<T> * 64 : T{1};
        T const a = std::ldexp(random.Number<T>(-1, 1), random.Whole(-4, 4)) * scale;
        T const b = i % 3 == 0 ? bv::test::Steps(a, random.Whole(0, 9))
                               : std::ldexp(random.Number<T>(-1, 1), random.Whole(-30, 4)) * scale;
        ExpectMonotone(a, b, around);
    }
}

TYPED_TEST(ComponentwiseTest, LerpIsMonotoneOverTheWholeWay)
{
    using T = TypeParam;
    Random random(4);
    for (int i = 0; i < 2000; ++i)
    {
        T const a = random.Number<T>(-10, 10);
        T const b = i % 2 == 0 ? random.Number<T>(-10, 10) : bv::test::Steps(a, random.Whole(0, 20));
        std::vector<T> parameters;
        for (int step = 0; step < 50; ++step)
        {
            T const t = random.Number<T>(0, 1);
            parameters.insert(parameters.end(), {t, std::nextafter(t, T{1})});
        }
        std::sort(parameters.begin(), parameters.end());
        ExpectMonotone(a, b, parameters);
    }
}

TYPED_TEST(ComponentwiseTest, LerpOfVectorsIsThatOfTheirComponents)
{
    using T = TypeParam;
    Random random(5);
    for (int i = 0; i < 2000; ++i)
        ForEachShape<T>(
            [&](auto shape)
            {
                using V = decltype(shape);
                auto const make = [&](T low, T high)
                { return Make<V>(random.Number(low, high), random.Number(low, high), random.Number(low, high)); };
                V const a = make(-10, 10);
                V const b = make(-10, 10);
                V const t = make(-1, 2);
                ExpectEach<V>([](V const& v, V const& w, V const& s) { return Lerp(v, w, s); },
                              [](T v, T w, T s) { return Lerp(v, w, s); }, a, b, t);
                ExpectEach<V>([&](V const& v, V const& w) { return Lerp(v, w, t.x); },
                              [&](T v, T w) { return Lerp(v, w, t.x); }, a, b);
            });
}

TYPED_TEST(ComponentwiseTest, LerpGoesOnBeyondItsEndsAndTakesAScalarOfAnyType)
{
    using T = TypeParam;
    tVector3<T> const a(1, 2, 3);
    tVector3<T> const b(3, 6, 11);
    ExpectSameBits(Lerp(a, b, 0.25), tVector3<T>(1.5, 3, 5));
    ExpectSameBits(Lerp(a, b, T{0.75}), tVector3<T>(2.5, 5, 9));
    ExpectSameBits(Lerp(a, b, -1), tVector3<T>(-1, -2, -5));
    ExpectSameBits(Lerp(a, b, 2), tVector3<T>(5, 10, 19));
    ExpectSameBits(Lerp(a, b, {0, 1, 2}), tVector3<T>(1, 6, 19));
}

TYPED_TEST(ComponentwiseTest, LerpIsNotFiniteWhereTheDifferenceIsNot)
{
    using T = TypeParam;
    EXPECT_TRUE(IsNaN(Lerp(-LARGEST<T>, LARGEST<T>, T{0}))); // infinity times 0
    EXPECT_EQ(Lerp(-LARGEST<T>, LARGEST<T>, T{0.25}), INF<T>);
    EXPECT_TRUE(IsNaN(Lerp(T{0}, INF<T>, T{0})));
    EXPECT_TRUE(IsNaN(Lerp(T{0}, T{1}, QUIET_NAN<T>)));
    EXPECT_TRUE(IsNaN(Lerp(QUIET_NAN<T>, T{1}, T{1})));
}

TYPED_TEST(ComponentwiseTest, FloorAndCeilAreThoseOfTheStandardLibraryToTheBit)
{
    using T = TypeParam;
    std::vector<T> values = Interesting<T>();
    Random random(6);
    for (int i = 0; i < 50000; ++i)
    {
        values.push_back(random.Any<T>());
        values.push_back(std::ldexp(random.Number<T>(-1, 1), random.Whole(-3, 60)));
        values.push_back(static_cast<T>(random.Whole(-1000, 1000)) / 2);
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        ForEachShape<T>(
            [&](auto shape)
            {
                using V = decltype(shape);
                V const value = Make<V>(values[i], values[(i + 1) % values.size()], values[(i + 2) % values.size()]);
                ExpectEach<V>([](V const& v) { return Floor(v); }, [](T x) { return std::floor(x); }, value);
                ExpectEach<V>([](V const& v) { return Ceil(v); }, [](T x) { return std::ceil(x); }, value);
            });
}

TYPED_TEST(ComponentwiseTest, FloorAndCeilKeepTheSignOfZero)
{
    using T = TypeParam;
    ExpectSameBits(Floor(tVector3<T>(T(-0.0), 0, T(0.5))), tVector3<T>(T(-0.0), 0, 0));
    ExpectSameBits(Ceil(tVector3<T>(T(-0.0), 0, T(-0.5))), tVector3<T>(T(-0.0), 0, T(-0.0)));
}

/// The component that a comparison of each with the best before it leaves, and its index.
template <typename V, typename Better>
std::pair<Component<V>, unsigned char> Best(V const& value, Better better)
{
    std::size_t best = 0;
    for (std::size_t i = 1; i < COUNT<V>; ++i)
        if (better(value[i], value[best]))
            best = i;
    return {value[best], static_cast<unsigned char>(best)};
}

template <typename V>
bool IsSame(Component<V> a, Component<V> b)
{
    if constexpr (std::is_floating_point_v<Component<V>>)
        return HasSameBits(a, b);
    else
        return a == b;
}

/// Over all choices of three of the values.
template <typename V>
void ExpectExtremes(std::vector<Component<V>> const& values)
{
    using T = Component<V>;
    for (T const x : values)
        for (T const y : values)
            for (T const z : values)
            {
                V const value = Make<V>(x, y, z);
                auto const [smallest, minAxis] = Best(value, [](T a, T b) { return a < b; });
                auto const [largest, maxAxis] = Best(value, [](T a, T b) { return a > b; });
                EXPECT_TRUE(IsSame<V>(GetMinComponent(value), smallest)) << x << ' ' << y << ' ' << z;
                EXPECT_TRUE(IsSame<V>(GetMaxComponent(value), largest)) << x << ' ' << y << ' ' << z;
                EXPECT_EQ(GetMinAxis(value), minAxis) << x << ' ' << y << ' ' << z;
                EXPECT_EQ(GetMaxAxis(value), maxAxis) << x << ' ' << y << ' ' << z;
            }
}

TYPED_TEST(ComponentwiseTest, ExtremesAreTheFirstOfEqualComponents)
{
    using T = TypeParam;
    std::vector<T> const values(SPECIAL_VALUES<T>.begin(), SPECIAL_VALUES<T>.end());
    ForEachShape<T>([&](auto shape) { ExpectExtremes<decltype(shape)>(values); });
    EXPECT_EQ(GetMaxAxis(tVector3<T>(2, 2, 2)), 0);
    EXPECT_EQ(GetMinAxis(tVector3<T>(3, 2, 2)), 1);
}

TYPED_TEST(ComponentwiseTest, ExtremesPassOverNaNBehindTheFirstComponentAlone)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    EXPECT_EQ(GetMinComponent(tVector3<T>(2, nan, 1)), T{1});
    EXPECT_EQ(GetMinAxis(tVector3<T>(2, nan, 1)), 2);
    EXPECT_EQ(GetMaxComponent(tVector3<T>(2, 3, nan)), T{3});
    EXPECT_TRUE(IsNaN(GetMaxComponent(tVector3<T>(nan, 3, 4))));
    EXPECT_EQ(GetMaxAxis(tVector3<T>(nan, 3, 4)), 0);
}

TYPED_TEST(IntegerComponentwiseTest, TuplesOfIntegersAreCompared)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    std::vector<T> const values = {Limits::min(), Limits::max(), 0, 1, 2, static_cast<T>(-1), Limits::max() / 2};
    ExpectExtremes<tTuple2<T>>(values);
    ExpectExtremes<tTuple3<T>>(values);
    for (T const a : values)
        for (T const b : values)
        {
            EXPECT_TRUE(Min(tTuple2<T>(a, b), tTuple2<T>(b, 1)) == tTuple2<T>(std::min(a, b), std::min<T>(b, 1)));
            EXPECT_TRUE(Max(tTuple2<T>(a, b), tTuple2<T>(b, 1)) == tTuple2<T>(std::max(a, b), std::max<T>(b, 1)));
            EXPECT_TRUE(Min(tTuple3<T>(a, b, 1), tTuple3<T>(b, a, b)) ==
                        tTuple3<T>(std::min(a, b), std::min(a, b), std::min<T>(1, b)));
            EXPECT_TRUE(Max(tTuple3<T>(a, b, 1), tTuple3<T>(b, a, b)) ==
                        tTuple3<T>(std::max(a, b), std::max(a, b), std::max<T>(1, b)));
            EXPECT_TRUE(Clamp(tTuple2<T>(a, b), 1, 5) == tTuple2<T>(std::clamp<T>(a, 1, 5), std::clamp<T>(b, 1, 5)));
            EXPECT_TRUE(Clamp(tTuple2<T>(a, b), {1, 2}, {5, 4}) ==
                        tTuple2<T>(std::clamp<T>(a, 1, 5), std::clamp<T>(b, 2, 4)));
            EXPECT_TRUE(Clamp(tTuple3<T>(a, b, a), {1, 2, 3}, {5, 4, 3}) ==
                        tTuple3<T>(std::clamp<T>(a, 1, 5), std::clamp<T>(b, 2, 4), 3));
            EXPECT_TRUE(Clamp(tTuple3<T>(a, b, 7), 2, 1) == tTuple3<T>(1, 1, 1));
        }
}

TEST(IntegerTupleTest, MagnitudesOfIntegersButForTheSmallest)
{
    constexpr int SMALLEST = std::numeric_limits<int>::min();
    EXPECT_TRUE(Abs(tTuple3<int>(-3, 0, 4)) == tTuple3<int>(3, 0, 4));
    EXPECT_TRUE(Abs(tTuple2<int>(SMALLEST, SMALLEST + 1)) == tTuple2<int>(SMALLEST, -(SMALLEST + 1)));
}

TYPED_TEST(ComponentwiseTest, ResultsMayOverwriteOperands)
{
    using T = TypeParam;
    tVector3<T> a(1, 5, -2);
    tVector3<T> const b(3, 2, 0);
    a = Min(a, b);
    ExpectSameBits(a, tVector3<T>(1, 2, -2));
    a = Lerp(a, a, a);
    ExpectSameBits(a, tVector3<T>(1, 2, -2));
    a = Clamp(a, a, b);
    ExpectSameBits(a, tVector3<T>(1, 2, -2));
}

/// What the compiler computes by itself, in the order of the operations.
template <typename T>
constexpr std::array<tVector3<T>, 8> Known(tVector3<T> const& a, tVector3<T> const& b)
{
    return {Min(a, b), Max(a, b), Abs(a), Clamp(a, -1, 1), Lerp(a, b, 0.25), Lerp(a, b, b), Floor(a), Ceil(a)};
}

TYPED_TEST(ComponentwiseTest, CompilersComputeWhatProgramsDo)
{
    using T = TypeParam;
    constexpr tVector3<T> A(T(-0.0), T(-1.75), T(1e30));
    constexpr tVector3<T> B(T(0.3), T(-2.5), T(4));
    static constexpr auto KNOWN = Known(A, B);
    auto const atRunTime = Known(tVector3<T>(bv::test::Runtime(A.x), bv::test::Runtime(A.y), bv::test::Runtime(A.z)),
                                 tVector3<T>(bv::test::Runtime(B.x), bv::test::Runtime(B.y), bv::test::Runtime(B.z)));
    for (std::size_t i = 0; i < KNOWN.size(); ++i)
        ExpectSameBits(atRunTime[i], KNOWN[i]);
    static_assert(GetMinComponent(A) == T(-1.75) && GetMaxComponent(A) == T(1e30) && GetMinAxis(A) == 1 &&
                  GetMaxAxis(A) == 2);
    static_assert(noexcept(Lerp(A, B, 1))&& noexcept(Floor(A))&& noexcept(GetMaxAxis(A)));
}

/// Whether there is such an operation for a type.
template <typename V>
concept HasFloor = requires(V const& v)
{
    Floor(v);
};
template <typename V>
concept HasAbs = requires(V const& v)
{
    Abs(v);
};
template <typename V>
concept HasLerp = requires(V const& v)
{
    Lerp(v, v, 1);
};

static_assert(HasFloor<tTuple2<float>> && !HasFloor<tTuple2<int>> && !HasFloor<float>);
static_assert(HasAbs<tTuple3<int>> && !HasAbs<tTuple3<unsigned int>>);
static_assert(HasLerp<tVector3<float>> && HasLerp<double> && !HasLerp<tTuple2<int>> && !HasLerp<int>);

} // namespace
