#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/maths/Bounds.h"
#include "bv/maths/Componentwise.h"
#include "bv/maths/Integer.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/RNGenerator.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"
#include "support/Views.h"

// What the compiler computes is written a second time where the program runs registers or instructions of its own: the
// same results, special values included.

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class ConstantEvaluationTest : public testing::Test
{
};
TYPED_TEST_SUITE(ConstantEvaluationTest, Precisions);

/// Results that do not fit, since there is no container in a constant.
template <typename Result, std::size_t COUNT>
class Results
{
    std::array<Result, COUNT> values{};
    std::size_t count = 0;

public:
    constexpr void Add(Result value) { values[count++] = value; }
    [[nodiscard]] constexpr bool IsFull() const { return count == COUNT; }
    [[nodiscard]] std::array<Result, COUNT> const& Get() const { return values; }
};

/// Compares what a function without arguments gives as a constant and at run time.
template <auto FUNCTION>
void ExpectTheSameAtRunTime()
{
    static constexpr auto COMPILED = FUNCTION();
    static_assert(COMPILED.IsFull());
    auto* const volatile function = FUNCTION; // what is called through it is not computed by the compiler
    auto const results = function();
    for (std::size_t i = 0; i < COMPILED.Get().size(); ++i)
        if constexpr (std::is_floating_point_v<std::remove_cvref_t<decltype(COMPILED.Get()[0])>>)
            EXPECT_TRUE(HasSameBits(results.Get()[i], COMPILED.Get()[i])) << "result " << i;
        else
            EXPECT_EQ(results.Get()[i], COMPILED.Get()[i]) << "result " << i;
}

/// Among these, any two can be subtracted but equal infinities.
template <typename T>
constexpr std::array<T, 6> NUMBERS = {T(0), T(-0.0), T(1), T(-1), INF<T>, -INF<T>};

/// Boxes, points and balls that have three chosen numbers along one axis and ordinary ones along the others.
template <typename Box, typename Use>
constexpr void ForNumbersOnEachAxis(Use use, bool withNaN)
{
    using V = std::remove_cvref_t<decltype(Box().GetMin())>;
    using T = decltype(V::x);
    constexpr std::size_t AXES = sizeof(V) / sizeof(T);
    auto const each = [&](auto step)
    {
        for (T const number : NUMBERS<T>)
            step(number);
        if (withNaN)
            step(QUIET_NAN<T>);
    };
    for (std::size_t axis = 0; axis < AXES; ++axis)
        each(
            [&](T lower)
            {
                each(
                    [&](T upper)
                    {
                        each(
                            [&](T value)
                            {
                                V min;
                                V max;
                                V point;
                                for (std::size_t i = 0; i < AXES; ++i)
                                {
                                    min[i] = i == axis ? lower : T{-2};
                                    max[i] = i == axis ? upper : T{2};
                                    point[i] = i == axis ? value : static_cast<T>(static_cast<int>(i) * 2 - 1);
                                }
                                use(Box(min, max), point);
                            });
                    });
            });
}

template <typename Box>
inline constexpr std::size_t AXES = sizeof(Box) / (2 * sizeof(decltype(Box().GetMin().x)));

/// How many boxes and points that makes, of 6 numbers or of 7.
template <typename Box>
inline constexpr std::size_t CASES = AXES<Box> * 6 * 6 * 6;
template <typename Box>
inline constexpr std::size_t CASES_WITH_NAN = AXES<Box> * 7 * 7 * 7;

template <typename Box>
constexpr auto ContainsOfAll()
{
    Results<bool, 2 * CASES_WITH_NAN<Box>> results;
    ForNumbersOnEachAxis<Box>(
        [&](Box const& box, auto const& point)
        {
            results.Add(box.Contains(point, false));
            results.Add(box.Contains(point, true));
        },
        true);
    return results;
}

template <typename Box>
constexpr auto ExpandOfAll()
{
    using T = decltype(Box().GetMin().x);
    Results<T, (2 * AXES<Box> + 1) * 2 * CASES_WITH_NAN<Box>> results;
    auto const add = [&](Box const& box, bool changed)
    {
        for (std::size_t axis = 0; axis < AXES<Box>; ++axis)
        {
            results.Add(box.GetMin()[axis]);
            results.Add(box.GetMax()[axis]);
        }
        results.Add(changed ? T{1} : T{0});
    };
    ForNumbersOnEachAxis<Box>(
        [&](Box const& box, auto const& point)
        {
            Box byPoint = box;
            bool const pointChanges = byPoint.ExpandAndSignal(point);
            add(byPoint, pointChanges);
            Box byBox(point, point);
            bool const boxChanges = byBox.ExpandAndSignal(box);
            add(byBox, boxChanges);
        },
        true);
    return results;
}

/// 0 in place of what is no number: equal infinities are subtracted.
template <typename Box, typename V>
constexpr bool HasNoDistance(Box const& box, V const& point)
{
    using T = decltype(V::x);
    for (std::size_t axis = 0; axis < AXES<Box>; ++axis)
    {
        bool const isInfinite = point[axis] == INF<T> || point[axis] == -INF<T>;
        if (isInfinite && (point[axis] == box.GetMin()[axis] || point[axis] == box.GetMax()[axis]))
            return true;
    }
    return false;
}

template <typename Box>
constexpr auto DistancesOfAll()
{
    using T = decltype(Box().GetMin().x);
    Results<T, CASES<Box>> results;
    ForNumbersOnEachAxis<Box>([&](Box const& box, auto const& point)
                              { results.Add(HasNoDistance(box, point) ? T{0} : box.DistanceSquared(point)); },
                              false);
    return results;
}

template <typename Box, typename Ball>
constexpr auto OverlapsOfAll()
{
    using T = decltype(Box().GetMin().x);
    constexpr std::array<T, 7> LIMITS = {T(0), T(-0.0), T(-1), T(1), T(4), INF<T>, QUIET_NAN<T>};
    Results<bool, 7 * CASES<Box>> results;
    ForNumbersOnEachAxis<Box>(
        [&](Box const& box, auto const& point)
        {
            for (T const limit : LIMITS)
                results.Add(!HasNoDistance(box, point) && box.Overlaps(Ball(point, limit)));
        },
        false);
    return results;
}

template <typename T>
constexpr auto ClassesOfAll()
{
    constexpr std::array<T, 5> PARTS = {T(0), T(-0.0), T(1), T(-1), T(0.5)};
    Results<typename tFrustum<T>::IntersectionResult, 5 * 5 * 5 * 3 * 2> results;
    std::size_t k = 0;
    for (T const x : PARTS)
        for (T const y : PARTS)
            for (T const z : PARTS)
                for (T const offset : {T{0}, T{1}, T{-1}})
                {
                    auto const view = FrustumOf<T>(k++ % 6, {offset, x, y, z});
                    results.Add(view.ContainsAABB(tVolumeAABB<T>({-1, 0, T(-0.5)}, {0, 1, 2})));
                    results.Add(view.ContainsAABB(tVolumeAABB<T>({1, 1, 1}, {1, 1, 1})));
                }
    return results;
}

template <typename T>
constexpr auto EqualityOfAll()
{
    constexpr std::array<T, 16> VALUES = {T(0),
                                          T(-0.0),
                                          TINY<T>,
                                          SMALLEST_NORMAL<T>,
                                          Steps(TOLERANCE<T>, -1),
                                          TOLERANCE<T>,
                                          T(1),
                                          Steps(T(1), 50),
                                          Steps(T(1), 51),
                                          T(2),
                                          T(-2),
                                          LARGEST<T>,
                                          -LARGEST<T>,
                                          INF<T>,
                                          -INF<T>,
                                          QUIET_NAN<T>};
    Results<bool, 2 * 16 * 16> results;
    for (T const a : VALUES)
        for (T const b : VALUES)
        {
            results.Add(IsEqual(a, b));
            results.Add(tTuple2<T>(a, b) == tTuple2<T>(b, a));
        }
    return results;
}

constexpr auto IntegersOfAll()
{
    Results<std::uint32_t, 4 * 33 * 5> results;
    for (unsigned int bit = 0; bit <= 32; ++bit)
        for (unsigned int step = 0; step < 5; ++step)
        {
            auto const value = static_cast<unsigned int>((std::uint64_t{1} << bit) + step - 2);
            results.Add(value == 0 ? 99 : IntLog2(value));
            results.Add(IntSqrt(value));
            results.Add(RoundUpToPO2(value));
            results.Add(RoundToNearestPO2(value));
        }
    return results;
}

constexpr auto DrawsOfAll()
{
    Results<float, 5 * 8> results;
    for (unsigned int const seed : {0U, 1U, 7U, 25814U, 4294967295U})
    {
        RNGenerator generator(seed);
        for (int i = 0; i < 2; ++i)
        {
            results.Add(generator.GetFloat());
            auto const vector = generator.GetVector3D();
            results.Add(vector.x);
            results.Add(vector.y);
            results.Add(vector.z);
        }
    }
    return results;
}

template <typename Box>
constexpr Box CubeOf(decltype(Box().GetMin().x) lower, decltype(Box().GetMin().x) upper)
{
    Box cube;
    for (std::size_t axis = 0; axis < AXES<Box>; ++axis)
    {
        cube.GetMin()[axis] = lower;
        cube.GetMax()[axis] = upper;
    }
    return cube;
}

/// Two boxes that differ along one axis.
template <typename Box>
constexpr auto PairsOfAll()
{
    using V = std::remove_cvref_t<decltype(Box().GetMin())>;
    using T = decltype(V::x);
    constexpr std::array<T, 5> ENDS = {T(0), T(-0.0), T(1), INF<T>, QUIET_NAN<T>};
    Results<bool, 2 * AXES<Box> * 5 * 5 * 5 * 5> results;
    Box first = CubeOf<Box>(T{-1}, T{1});
    Box second = CubeOf<Box>(T(-0.5), T(0.5));
    for (std::size_t axis = 0; axis < AXES<Box>; ++axis)
    {
        for (T const firstLower : ENDS)
            for (T const firstUpper : ENDS)
                for (T const secondLower : ENDS)
                    for (T const secondUpper : ENDS)
                    {
                        first.GetMin()[axis] = firstLower;
                        first.GetMax()[axis] = firstUpper;
                        second.GetMin()[axis] = secondLower;
                        second.GetMax()[axis] = secondUpper;
                        results.Add(Overlaps(first, second));
                        results.Add(Contains(first, second));
                    }
        first = CubeOf<Box>(T{-1}, T{1});
        second = CubeOf<Box>(T(-0.5), T(0.5));
    }
    return results;
}

template <typename V>
constexpr auto WholeNumbersOfAll()
{
    using T = decltype(V::x);
    constexpr std::size_t COUNT = sizeof(V) / sizeof(T);
    constexpr T ALL_WHOLE = sizeof(T) == sizeof(float) ? T(0x1p23) : T(0x1p52); // from here on, every number is whole
    constexpr std::array<T, 17> VALUES = {T(0),
                                          T(-0.0),
                                          TINY<T>,
                                          -TINY<T>,
                                          T(0.5),
                                          T(-0.5),
                                          T(-1),
                                          Steps(T(1), -1),
                                          T(2.5),
                                          ALL_WHOLE - T(0.5),
                                          -ALL_WHOLE,
                                          T(0.5) - ALL_WHOLE,
                                          LARGEST<T>,
                                          -LARGEST<T>,
                                          INF<T>,
                                          -INF<T>,
                                          ALL_WHOLE / 2 + T(0.5)};
    Results<T, 17 * COUNT * 2 * COUNT> results;
    for (T const number : VALUES)
        for (std::size_t axis = 0; axis < COUNT; ++axis)
        {
            V value;
            for (std::size_t i = 0; i < COUNT; ++i)
                value[i] = i == axis ? number : T(1.5);
            V const floor = Floor(value);
            V const ceil = Ceil(value);
            for (std::size_t i = 0; i < COUNT; ++i)
            {
                results.Add(floor[i]);
                results.Add(ceil[i]);
            }
        }
    return results;
}

template <typename V>
constexpr auto MixturesOfAll()
{
    using T = decltype(V::x);
    constexpr std::array<T, 5> ENDS = {T(0), T(-0.0), T(1), T(-3), T(0.1)};
    constexpr std::array<T, 7> PARTS = {T(0), T(-0.0), T(0.5), Steps(T(0.5), -1), T(1), T(2), T(-1)};
    Results<T, 5 * 5 * 7 * 4> results;
    for (T const a : ENDS)
        for (T const b : ENDS)
            for (T const t : PARTS)
            {
                V first;
                V second;
                V parts;
                first[1] = a;
                second[1] = b;
                parts[1] = t;
                results.Add(Lerp(a, b, t));
                results.Add(Lerp(first, second, t)[1]);
                results.Add(Lerp(first, second, parts)[1]);
                results.Add(Lerp(second, first, parts)[0]);
            }
    return results;
}

template <typename T>
constexpr auto QuaternionsOfAll()
{
    constexpr std::array<T, 4> PARTS = {T(-0.0), T(1), T(-0.3), T(7e-5)};
    constexpr tQuaternion<T> OTHER(T(0.7), T(-0.0), T(-1.1), T(3));
    Results<T, 4 * 4 * 4 * 4 * (4 * 4 + 3)> results;
    auto const add = [&](tQuaternion<T> const& q)
    {
        for (std::size_t i = 0; i < 4; ++i)
            results.Add(q[i]);
    };
    for (T const x : PARTS)
        for (T const y : PARTS)
            for (T const z : PARTS)
                for (T const w : PARTS)
                {
                    tQuaternion<T> const q(x, y, z, w);
                    add(q * OTHER);
                    add(OTHER * q);
                    add(q / T{3});
                    add(q.LengthSquared() > T{0} ? q.Inverted() : q); // 0 / 0 is no constant
                    tVector3<T> const rotated = q.Rotate({T(0.1), T(-2), T(-0.0)});
                    for (std::size_t i = 0; i < 3; ++i)
                        results.Add(rotated[i]);
                }
    return results;
}

TYPED_TEST(ConstantEvaluationTest, BoxesContainTheSamePoints)
{
    ExpectTheSameAtRunTime<&ContainsOfAll<tAreaAABB<TypeParam>>>();
    ExpectTheSameAtRunTime<&ContainsOfAll<tVolumeAABB<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, BoxesGrowAlike)
{
    ExpectTheSameAtRunTime<&ExpandOfAll<tAreaAABB<TypeParam>>>();
    ExpectTheSameAtRunTime<&ExpandOfAll<tVolumeAABB<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, BoxesAreAsFar)
{
    ExpectTheSameAtRunTime<&DistancesOfAll<tAreaAABB<TypeParam>>>();
    ExpectTheSameAtRunTime<&DistancesOfAll<tVolumeAABB<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, BoxesOverlapTheSameBalls)
{
    ExpectTheSameAtRunTime<&OverlapsOfAll<tAreaAABB<TypeParam>, tAreaDisc<TypeParam>>>();
    ExpectTheSameAtRunTime<&OverlapsOfAll<tVolumeAABB<TypeParam>, tVolumeSphere<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, ViewsClassifyBoxesAlike)
{
    ExpectTheSameAtRunTime<&ClassesOfAll<TypeParam>>();
}

TYPED_TEST(ConstantEvaluationTest, TheSameNumbersAreEqual)
{
    ExpectTheSameAtRunTime<&EqualityOfAll<TypeParam>>();
}

TYPED_TEST(ConstantEvaluationTest, PairsOfBoxesOverlapAndContainAlike)
{
    ExpectTheSameAtRunTime<&PairsOfAll<tAreaAABB<TypeParam>>>();
    ExpectTheSameAtRunTime<&PairsOfAll<tVolumeAABB<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, TheSameWholeNumbersAreNext)
{
    ExpectTheSameAtRunTime<&WholeNumbersOfAll<tTuple2<TypeParam>>>();
    ExpectTheSameAtRunTime<&WholeNumbersOfAll<tVector3<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, MixturesAreTheSame)
{
    ExpectTheSameAtRunTime<&MixturesOfAll<tVector2<TypeParam>>>();
    ExpectTheSameAtRunTime<&MixturesOfAll<tTuple3<TypeParam>>>();
}

TYPED_TEST(ConstantEvaluationTest, QuaternionsMultiplyDivideAndRotateAlike)
{
    ExpectTheSameAtRunTime<&QuaternionsOfAll<TypeParam>>();
}

TEST(ConstantEvaluationOfIntegersTest, IntegersHaveTheSameLogarithmsAndRoots)
{
    ExpectTheSameAtRunTime<&IntegersOfAll>();
}

TEST(ConstantEvaluationOfDrawsTest, GeneratorsDrawTheSameNumbers)
{
    ExpectTheSameAtRunTime<&DrawsOfAll>();
}

// That the compiler computes the right results, by example.

template <typename T>
constexpr bool ContainsItsLowerFacesAlways()
{
    tVolumeAABB<T> const box({0, 0, 0}, {1, 2, 3});
    static_assert(tVolumeAABB<T>({0, 0, 0}, {1, 2, 3}).Contains({0, 0, 0}, true));
    return box.Contains({0, 1, 1}, false) && box.Contains({1, 1, 1}, false) && box.Contains({T(0.5), 0, 1}, false) &&
           box.Contains({T(0.5), 2, 1}, false) && box.Contains({T(0.5), 1, 0}, false) &&
           box.Contains({T(0.5), 1, 3}, false) && box.Contains({0, 1, 1}, true) && box.Contains({T(0.5), 0, 1}, true) &&
           box.Contains({T(0.5), 1, 0}, true);
}
static_assert(ContainsItsLowerFacesAlways<float>() && ContainsItsLowerFacesAlways<double>());

template <typename T>
constexpr bool ContainsNothingBeyondItsFaces()
{
    tVolumeAABB<T> const box({0, 0, 0}, {1, 2, 3});
    bool contains = false;
    for (bool const exclusive : {false, true})
        for (tVector3<T> const& point :
             {tVector3<T>(-TINY<T>, 1, 1), tVector3<T>(NEXT_AFTER_ONE<T>, 1, 1), tVector3<T>(T(0.5), -TINY<T>, 1),
              tVector3<T>(T(0.5), T(2.5), 1), tVector3<T>(T(0.5), 1, -TINY<T>), tVector3<T>(T(0.5), 1, T(3.5))})
            contains = contains || box.Contains(point, exclusive);
    return !contains && !box.Contains({1, 1, 1}, true) && !box.Contains({T(0.5), 2, 1}, true) &&
           !box.Contains({T(0.5), 1, 3}, true) && !tVolumeAABB<T>().Contains({0, 0, 0}, false);
}
static_assert(ContainsNothingBeyondItsFaces<float>() && ContainsNothingBeyondItsFaces<double>());

/// One plane at a time: x >= 1 is inside.
template <typename T>
constexpr bool ClassifiesBoxesByEachPlane()
{
    using Frustum = tFrustum<T>;
    for (std::size_t k = 0; k < 6; ++k)
    {
        Frustum const view = FrustumOf<T>(k, {T{-1}, T{1}, T{0}, T{0}});
        if (view.ContainsAABB({{0, 0, 0}, {T(0.5), 9, 9}}) != Frustum::OUTSIDE ||
            view.ContainsAABB({{0, 0, 0}, {1, 9, 9}}) != Frustum::INTERSECTING || // it touches
            view.ContainsAABB({{0, 0, 0}, {2, 9, 9}}) != Frustum::INTERSECTING ||
            view.ContainsAABB({{1, 0, 0}, {2, 9, 9}}) != Frustum::INSIDE)
            return false;
    }
    return Frustum().ContainsAABB({{0, 0, 0}, {1, 1, 1}}) == Frustum::INSIDE;
}
static_assert(ClassifiesBoxesByEachPlane<float>() && ClassifiesBoxesByEachPlane<double>());

/// Where a normal is zero, of either sign, the corner along it is the upper one: the lower one is infinite here, and
/// its product with zero no constant.
template <typename T>
constexpr bool TakesTheUpperCornerAlongZero()
{
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (T const zero : {T(0), T(-0.0)})
        {
            tVector3<T> normal(zero, zero, zero);
            tVolumeAABB<T> box({-INF<T>, -INF<T>, -INF<T>}, {2, 2, 2});
            normal[axis] = 1;
            box.GetMin()[axis] = 0;
            auto const view = FrustumOf<T>(0, {T{-3}, normal.x, normal.y, normal.z});
            if (view.ContainsAABB(box) != tFrustum<T>::OUTSIDE)
                return false;
        }
    return true;
}
static_assert(TakesTheUpperCornerAlongZero<float>() && TakesTheUpperCornerAlongZero<double>());

/// A plane that rejects decides, whether another one is straddled or not.
template <typename T>
constexpr bool RejectsWhateverElseIsStraddled()
{
    ViewNumbers<T> view{};
    view.left = {T{-1}, T{1}, T{0}, T{0}};
    view.near = {T{-1}, T{0}, T{0}, T{1}};
    return FrustumOf(view).ContainsAABB({{0, 0, 0}, {2, 2, T(0.5)}}) == tFrustum<T>::OUTSIDE &&
           FrustumOf(view).ContainsAABB({{0, 0, 0}, {T(0.5), 2, 2}}) == tFrustum<T>::OUTSIDE &&
           FrustumOf(view).ContainsAABB({{0, 0, 1}, {2, 2, 2}}) == tFrustum<T>::INTERSECTING &&
           FrustumOf(view).ContainsAABB({{1, 0, 0}, {2, 2, 2}}) == tFrustum<T>::INTERSECTING;
}
static_assert(RejectsWhateverElseIsStraddled<float>() && RejectsWhateverElseIsStraddled<double>());

static_assert(IsEqual(LARGEST<float>, -LARGEST<float>) == false && IsEqual(INF<double>, INF<double>));

} // namespace
