#include "bv/maths/tPlane.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "bv/maths/DivideByZeroException.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"
#include "support/Throws.h"

namespace
{

using namespace bv::maths;
using namespace bv::test;

/// A plane whose normal is as it is given: reading one from a stream scales nothing.
template <typename T>
[[nodiscard]] tPlane<T> Unscaled(tVector3<T> const& normal, std::type_identity_t<T> offset)
{
    std::stringstream stream;
    normal.Serialise(stream);
    tPlane<T> plane;
    plane.Deserialise(stream);
    plane.SetOffset(offset);
    return plane;
}

template <typename T>
void ExpectPlane(tPlane<T> const& plane, std::type_identity_t<tVector3<T>> const& normal,
                 std::type_identity_t<T> offset)
{
    ExpectSameBits(plane.GetNormal(), normal);
    ExpectSameBits(plane.GetOffset(), offset);
}

template <typename T>
class PlaneTest : public testing::Test
{
protected:
    static constexpr T PARALLEL =
        static_cast<T>(std::is_same_v<T, float> ? 1.1920928955078125e-06 : 2.220446049250313e-15);
    /// Adding 1 to it, or taking 1 from it, changes nothing.
    static constexpr T LARGE = static_cast<T>(1e17);

    static tPlane<T> Raw(tVector3<T> const& normal, T offset) { return Unscaled(normal, offset); }
    static void Expect(tPlane<T> const& plane, tVector3<T> const& normal, T offset)
    {
        ExpectPlane(plane, normal, offset);
    }
    static std::string Function(char const* member)
    {
        return std::string("bv::maths::tPlane<") + TYPE_NAME<T> + ">::" + member;
    }
};

TYPED_TEST_SUITE(PlaneTest, Precisions);

TYPED_TEST(PlaneTest, IsFourNumbersWithTheOffsetFirst)
{
    using Plane = tPlane<TypeParam>;
    static_assert(sizeof(Plane) == 4 * sizeof(TypeParam) && alignof(Plane) == alignof(TypeParam));
    static_assert(!std::is_polymorphic_v<Plane> && std::is_trivially_copyable_v<Plane>);
    auto const plane = this->Raw({1, 2, 3}, 4);
    auto const fields = std::bit_cast<std::array<TypeParam, 4>>(plane);
    EXPECT_EQ(fields, (std::array<TypeParam, 4>{4, 1, 2, 3}));
}

TYPED_TEST(PlaneTest, PromisesItsTypesToTheCompiler)
{
    using T = TypeParam;
    using Plane = tPlane<T>;
    using Vector = tVector3<T>;
    using OtherPlane = tPlane<Other<T>>;
    static_assert(std::is_nothrow_default_constructible_v<Plane> && std::is_nothrow_copy_constructible_v<Plane>);
    static_assert(std::is_nothrow_constructible_v<Plane, Vector const&, T const&>);
    static_assert(std::is_nothrow_constructible_v<Plane, T const*>);
    static_assert(std::is_nothrow_move_constructible_v<Plane> && std::is_nothrow_move_assignable_v<Plane>);
    static_assert(std::is_convertible_v<OtherPlane, Plane> && std::is_nothrow_assignable_v<Plane&, OtherPlane const&>);
    static_assert(std::is_convertible_v<Plane, std::string>);
    static_assert(!std::is_constructible_v<Plane, std::nullptr_t>);
    static_assert(!std::is_assignable_v<Plane&, std::nullptr_t>);
    static_assert(!std::is_constructible_v<Plane, Other<T> const*>);
    static_assert(!std::is_constructible_v<Plane, Vector>);
    static_assert(std::is_same_v<decltype(std::declval<Plane const&>().GetNormal()), Vector const&>);
    static_assert(std::is_same_v<decltype(std::declval<Plane const&>().GetOffset()), T const&>);
    static_assert(std::is_same_v<decltype(std::declval<Plane&>().Set(Vector(), T())), Plane&>);
    static_assert(std::is_same_v<decltype(std::declval<Plane&>() = static_cast<T const*>(nullptr)), Plane&>);
    static_assert(std::is_same_v<decltype(std::declval<Plane&>().SetNormal(Vector())), void>);
    static_assert(std::is_same_v<decltype(std::declval<Plane&>().SetOffset(T())), void>);
    static_assert(std::is_same_v<decltype(std::declval<Plane const&>().GetDistance(Vector())), T>);
    static_assert(std::is_same_v<decltype(std::declval<Plane const&>().GetAbsoluteDistance(Vector())), T>);
    static_assert(std::is_same_v<decltype(std::declval<Plane const&>().GetIntersection(Vector(), Vector())), Vector>);
    static_assert(std::is_same_v<decltype(std::declval<Plane&>().GetIntersection(Vector(), Vector())), Vector>);
    static_assert(noexcept(std::declval<Plane const&>().GetDistance(Vector())));
    static_assert(noexcept(std::declval<Plane const&>().GetAbsoluteDistance(Vector())));
    static_assert(noexcept(std::declval<Plane&>().Set(Vector(), T())));
    static_assert(noexcept(std::declval<Plane&>().SetOffset(T())));
    static_assert(noexcept(std::declval<Plane const&>() == std::declval<Plane const&>()));
    static_assert(!noexcept(std::declval<Plane&>().SetNormal(Vector())));
    static_assert(!noexcept(std::declval<Plane const&>().GetIntersection(Vector(), Vector())));
    static_assert(Plane() == Plane());
    SUCCEED();
}

TYPED_TEST(PlaneTest, ZeroAndUnitAreConstantsOfTheElementType)
{
    static_assert(std::is_same_v<decltype(tPlane<TypeParam>::ZERO), TypeParam const>);
    static_assert(std::is_same_v<decltype(tPlane<TypeParam>::UNIT), TypeParam const>);
    ExpectSameBits(tPlane<TypeParam>::ZERO, TypeParam{0});
    ExpectSameBits(tPlane<TypeParam>::UNIT, TypeParam{1});
    TypeParam const* const unit = &tPlane<TypeParam>::UNIT; // the constants are objects, which the library holds
    EXPECT_EQ(*unit, TypeParam{1});
}

TYPED_TEST(PlaneTest, IsZeroByDefault)
{
    this->Expect({}, {}, 0);
}

TYPED_TEST(PlaneTest, ScalesNormalAndOffsetToUnitLength)
{
    tPlane<TypeParam> const plane({0, 0, 2}, -4);
    this->Expect(plane, {0, 0, 1}, -2);
    EXPECT_EQ(plane.GetDistance({0, 0, 5}), TypeParam{3});
    EXPECT_EQ(plane.GetDistance({0, 0, 0}), TypeParam{-2});
    this->Expect(tPlane<TypeParam>({0, 3, -4}, 10), {0, 3 * (TypeParam{1} / 5), -4 * (TypeParam{1} / 5)}, 2);
}

TYPED_TEST(PlaneTest, MultipliesTheNormalByTheReciprocalLengthAndDividesTheOffset)
{
    // The smallest whole number n for which n * (1 / n) is not 1, by element type; it is one step below.
    TypeParam const n = std::is_same_v<TypeParam, float> ? TypeParam{41} : TypeParam{49};
    TypeParam const below = 1 - EPSILON<TypeParam> / 2;
    this->Expect({{0, n, 0}, n}, {0, below, 0}, 1);
    this->Expect({{0, 0, -n}, -n}, {0, 0, -below}, -1);
    tPlane<TypeParam> plane;
    plane.Set({0, n, 0}, n);
    this->Expect(plane, {0, below, 0}, 1);
    TypeParam const values[] = {0, 0, n, -n};
    this->Expect(tPlane<TypeParam>(values), {0, 0, below}, -1);
    plane = values;
    this->Expect(plane, {0, 0, below}, -1);
}

TYPED_TEST(PlaneTest, SumsTheSquaredLengthFromXToZ)
{
    Random random(20240611);
    auto const next = [&random] { return random.Number<TypeParam>(-2000000, 2000000); };
    for (int i = 0; i < 1000; ++i)
    {
        TypeParam const x = next();
        TypeParam const y = next();
        TypeParam const z = next();
        TypeParam const offset = next();
        TypeParam const sumOfTwo = x * x + y * y;
        TypeParam const length = std::sqrt(sumOfTwo + z * z);
        TypeParam const reciprocal = 1 / length;
        this->Expect({{x, y, z}, offset}, {x * reciprocal, y * reciprocal, z * reciprocal}, offset / length);
    }
}

TYPED_TEST(PlaneTest, ReadsFourValuesAsNormalThenOffset)
{
    TypeParam const values[] = {0, -2, 0, 6};
    this->Expect(tPlane<TypeParam>(values), {0, -1, 0}, 3);
    tPlane<TypeParam> plane({1, 0, 0}, 9);
    EXPECT_EQ(&(plane = values), &plane);
    this->Expect(plane, {0, -1, 0}, 3);
}

TYPED_TEST(PlaneTest, SetReplacesAsConstructionDoes)
{
    tPlane<TypeParam> plane({1, 0, 0}, 9);
    EXPECT_EQ(&plane.Set({0, 0, 2}, -4), &plane);
    this->Expect(plane, {0, 0, 1}, -2);
}

TYPED_TEST(PlaneTest, SetReadsItsArgumentsBeforeItWrites)
{
    auto plane = this->Raw({0, 0, 4}, 8);
    plane.Set(plane.GetNormal(), plane.GetOffset());
    this->Expect(plane, {0, 0, 1}, 2);
    plane = this->Raw({0, 0, 4}, 8);
    plane.Set(plane.GetNormal(), plane.GetNormal().z);
    this->Expect(plane, {0, 0, 1}, 1);
    plane = this->Raw({2, 0, 0}, 3);
    plane = reinterpret_cast<TypeParam const*>(&plane); // offset, normal x, y, z taken for normal x, y, z, offset
    TypeParam const length = std::sqrt(TypeParam{13});
    this->Expect(plane, {3 * (1 / length), 2 * (1 / length), 0}, 0);
}

TYPED_TEST(PlaneTest, ZeroNormalGivesInfinitiesAndNaN)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    this->Expect({{0, 0, 0}, 1}, {nan, nan, nan}, INF<T>);   // 0 * (1 / 0); 1 / 0
    this->Expect({{0, 0, 0}, -1}, {nan, nan, nan}, -INF<T>); // -1 / 0
    this->Expect({{0, 0, 0}, 0}, {nan, nan, nan}, nan);      // 0 / 0
    T const tiny = SMALLEST_NORMAL<T>;                       // its square is 0
    this->Expect({{tiny, 0, -tiny}, 1}, {INF<T>, nan, -INF<T>}, INF<T>);
    T const values[] = {0, 0, 0, 1};
    this->Expect(values, {nan, nan, nan}, INF<T>);
}

TYPED_TEST(PlaneTest, NormalTooLongToSquareVanishes)
{
    TypeParam const huge = LARGEST<TypeParam>;
    this->Expect({{huge, -huge, 0}, -1}, {0, -TypeParam{0}, 0}, -TypeParam{0}); // length +infinity
}

TYPED_TEST(PlaneTest, NaNSpreadsToEveryComponent)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    this->Expect({{1, nan, 0}, 1}, {nan, nan, nan}, nan);
    this->Expect({{0, 2, 0}, nan}, {0, 1, 0}, nan);
}

TYPED_TEST(PlaneTest, ConvertsEachComponentWithoutScaling)
{
    using Other = Other<TypeParam>;
    auto const source = Unscaled<Other>({Other(0.1), -3, Other(1e-50)}, Other(1e40));
    tPlane<TypeParam> const converted = source;
    this->Expect(converted, {static_cast<TypeParam>(Other(0.1)), -3, static_cast<TypeParam>(Other(1e-50))},
                 static_cast<TypeParam>(Other(1e40)));
    tPlane<TypeParam> assigned({1, 0, 0}, 1);
    EXPECT_EQ(&(assigned = source), &assigned);
    this->Expect(assigned, converted.GetNormal(), converted.GetOffset());
}

TEST(PlaneConversionTest, NarrowingRoundsToNearestAndOverflowsToInfinity)
{
    tPlane<double> wide;
    wide.SetOffset(1e40);
    EXPECT_EQ(tPlane<float>(wide).GetOffset(), INF<float>);
    wide.SetOffset(0.1);
    EXPECT_EQ(tPlane<float>(wide).GetOffset(), 0.1F);
    wide.SetNormal({0.6, 0.8, 0});
    EXPECT_EQ(tPlane<float>(wide).GetNormal().x, 0.6F);
    EXPECT_EQ(tPlane<float>(wide).GetNormal().y, 0.8F);
}

TYPED_TEST(PlaneTest, CopiesAndMovesMemberByMember)
{
    auto const source = this->Raw({2, -0.0, QUIET_NAN<TypeParam>}, 5);
    tPlane<TypeParam> copy(source);
    this->Expect(copy, source.GetNormal(), 5);
    tPlane<TypeParam> assigned;
    EXPECT_EQ(&(assigned = source), &assigned);
    this->Expect(assigned, source.GetNormal(), 5);
    assigned = tPlane<TypeParam>();
    this->Expect(assigned, {}, 0);
    assigned = std::move(copy);
    this->Expect(assigned, source.GetNormal(), 5);
    tPlane<TypeParam> const moved(std::move(assigned));
    this->Expect(moved, source.GetNormal(), 5);
}

TYPED_TEST(PlaneTest, SetNormalStoresAUnitVectorAndLeavesTheOffset)
{
    tPlane<TypeParam> plane({1, 0, 0}, 7);
    plane.SetNormal({0, -1, 0});
    this->Expect(plane, {0, -1, 0}, 7);
    plane.SetNormal(plane.GetNormal());
    this->Expect(plane, {0, -1, 0}, 7);
}

TYPED_TEST(PlaneTest, SetNormalAcceptsALengthWithinTheToleranceAsItIs)
{
    TypeParam const e = EPSILON<TypeParam>;
    tPlane<TypeParam> plane({1, 0, 0}, 7);
    plane.SetNormal({0, 0, 1 + 20 * e}); // squared length 1 + 40 e: 40 steps from 1
    this->Expect(plane, {0, 0, 1 + 20 * e}, 7);
    plane.SetNormal({0, 1 - 4 * e, 0}); // squared length 1 - 8 e
    this->Expect(plane, {0, 1 - 4 * e, 0}, 7);
}

TYPED_TEST(PlaneTest, SetNormalRefusesAnyOtherLengthAndChangesNothing)
{
    using T = TypeParam;
    T const e = EPSILON<T>;
    tVector3<T> const refused[] = {{0, 0, 2}, {0, 0, T(0.5)},       {0, 0, 0},     {0, 0, 1 + 26 * e},
                                   {1, 1, 0}, {1, QUIET_NAN<T>, 0}, {INF<T>, 0, 0}};
    for (tVector3<T> const& normal : refused)
    {
        tPlane<T> plane({1, 0, 0}, 7);
        ExpectThrows<bv::InvalidArgumentException>([&] { plane.SetNormal(normal); }, "Normal vector must be normalised",
                                                   this->Function("SetNormal"), "internal\\Maths\\Plane", 137);
        this->Expect(plane, {1, 0, 0}, 7);
    }
}

TYPED_TEST(PlaneTest, SetOffsetStoresWhateverItIsGiven)
{
    tPlane<TypeParam> plane({0, 1, 0}, 7);
    for (TypeParam const offset : {TypeParam{-3}, -TypeParam{0}, INF<TypeParam>, QUIET_NAN<TypeParam>})
    {
        plane.SetOffset(offset);
        this->Expect(plane, {0, 1, 0}, offset);
    }
    plane.SetOffset(plane.GetNormal().y);
    this->Expect(plane, {0, 1, 0}, 1);
}

TYPED_TEST(PlaneTest, DistanceIsPositiveOnTheSideOfTheNormal)
{
    tPlane<TypeParam> const plane({0, 1, 0}, -2);
    EXPECT_EQ(plane.GetDistance({9, 5, -9}), TypeParam{3});
    EXPECT_EQ(plane.GetDistance({9, 2, -9}), TypeParam{0});
    EXPECT_EQ(plane.GetDistance({9, -1, -9}), TypeParam{-3});
}

TYPED_TEST(PlaneTest, DistanceSumsYAndXThenZThenTheOffset)
{
    TypeParam const huge = this->LARGE;
    auto const plane = this->Raw({1, 1, 1}, 1);
    EXPECT_EQ(plane.GetDistance({1, huge, -huge}), TypeParam{1}); // (huge + 1) - huge is 0
    EXPECT_EQ(plane.GetDistance({huge, 1, -huge}), TypeParam{1}); // the same
    EXPECT_EQ(plane.GetDistance({huge, -huge, 1}), TypeParam{2}); // 0 + 1, and 1
    auto const distant = this->Raw({1, 1, 1}, huge);
    EXPECT_EQ(distant.GetDistance({0, 1, -huge}), TypeParam{0}); // 1 - huge is -huge
}

TYPED_TEST(PlaneTest, DistanceFollowsIeeeArithmetic)
{
    tPlane<TypeParam> const plane({0, 1, 0}, -2);
    ExpectSameBits(plane.GetDistance({0, INF<TypeParam>, 0}), INF<TypeParam>);
    ExpectSameBits(plane.GetDistance({0, QUIET_NAN<TypeParam>, 0}), QUIET_NAN<TypeParam>);
    ExpectSameBits(plane.GetDistance({INF<TypeParam>, 0, 0}), QUIET_NAN<TypeParam>); // 0 * infinity
    ExpectSameBits(tPlane<TypeParam>().GetDistance({1, 2, 3}), TypeParam{0});
}

TYPED_TEST(PlaneTest, AbsoluteDistanceHasNoSign)
{
    tPlane<TypeParam> const plane({0, 1, 0}, -2);
    ExpectSameBits(plane.GetAbsoluteDistance({0, 5, 0}), TypeParam{3});
    ExpectSameBits(plane.GetAbsoluteDistance({0, -1, 0}), TypeParam{3});
    ExpectSameBits(plane.GetAbsoluteDistance({0, -INF<TypeParam>, 0}), INF<TypeParam>);
    ExpectSameBits(plane.GetAbsoluteDistance({0, QUIET_NAN<TypeParam>, 0}), QUIET_NAN<TypeParam>);
    auto const zero = this->Raw({0, 0, 0}, -TypeParam{0});
    ExpectSameBits(zero.GetDistance({-1, -1, -1}), -TypeParam{0});
    ExpectSameBits(zero.GetAbsoluteDistance({-1, -1, -1}), TypeParam{0});
}

TYPED_TEST(PlaneTest, IntersectionIsWhereTheLineMeetsThePlane)
{
    tPlane<TypeParam> plane({0, 0, 1}, -2);
    ExpectSameBits(plane.GetIntersection({1, 2, 0}, {1, 0, 1}), {3, 2, 2});
    ExpectSameBits(std::as_const(plane).GetIntersection({1, 2, 0}, {1, 0, 1}), {3, 2, 2});
    this->Expect(plane, {0, 0, 1}, -2);
}

TYPED_TEST(PlaneTest, IntersectionLooksBothWaysAlongTheLine)
{
    tPlane<TypeParam> const plane({0, 0, 1}, -2);
    ExpectSameBits(plane.GetIntersection({1, 2, 0}, {-4, 0, -4}), {3, 2, 2}); // t = -1/2
}

TYPED_TEST(PlaneTest, IntersectionOfALineFromThePlaneIsItsPoint)
{
    tPlane<TypeParam> const plane({0, 0, 1}, -2);
    ExpectSameBits(plane.GetIntersection({5, 7, 2}, {3, 1, 8}), {5, 7, 2});
    TypeParam const zero{0}; // t = -0, and -0 + -0 * 3 is -0
    ExpectSameBits(plane.GetIntersection({-zero, 7, 2}, {3, 1, 8}), {-zero, 7, 2});
}

TYPED_TEST(PlaneTest, IntersectionRefusesADirectionAlongThePlane)
{
    using T = TypeParam;
    T const below = std::nextafter(this->PARALLEL, T{0});
    for (tVector3<T> const& direction : {tVector3<T>(1, 1, 0), {0, 0, 0}, {0, 0, below}, {5, 0, -below}})
    {
        tPlane<T> plane({0, 0, 1}, -2);
        tPlane<T> const constant = plane;
        auto const intersect = [&] { static_cast<void>(plane.GetIntersection({1, 2, 3}, direction)); };
        auto const intersectConstant = [&] { static_cast<void>(constant.GetIntersection({1, 2, 3}, direction)); };
        ExpectThrows<DivideByZeroException>(intersect, "Direction is parallel to the plane",
                                            this->Function("GetIntersection"), "internal\\Maths\\Plane", 157);
        ExpectThrows<DivideByZeroException>(intersectConstant, "Direction is parallel to the plane",
                                            this->Function("GetIntersection"), "internal\\Maths\\Plane", 157);
        this->Expect(plane, {0, 0, 1}, -2);
    }
}

TYPED_TEST(PlaneTest, IntersectionAcceptsADenominatorOfExactlyTheTolerance)
{
    using T = TypeParam;
    T const e = this->PARALLEL;
    tPlane<T> const plane({0, 0, 1}, -1);
    for (T const z : {e, -e})
    {
        T const t = -(T{0} + T{-1}) / z;
        ExpectSameBits(plane.GetIntersection({0, 0, 0}, {1, 0, z}), {t, 0, t * z});
    }
}

TYPED_TEST(PlaneTest, IntersectionLetsNaNPass)
{
    using T = TypeParam;
    T const nan = QUIET_NAN<T>;
    tPlane<T> const plane({0, 0, 1}, -2);
    ExpectSameBits(plane.GetIntersection({1, 2, 3}, {0, 0, nan}), {nan, nan, nan});
    ExpectSameBits(tPlane<T>({0, 0, 0}, 1).GetIntersection({1, 2, 3}, {0, 0, 1}), {nan, nan, nan});
    ExpectSameBits(plane.GetIntersection({nan, 2, 3}, {0, 0, 1}), {nan, nan, nan}); // 0 * NaN in the distance
    ExpectSameBits(plane.GetIntersection({1, 2, 3}, {0, 0, INF<T>}), {1, 2, nan});  // t = -0
}

TYPED_TEST(PlaneTest, IntersectionSumsFromXToZ)
{
    using T = TypeParam;
    T const huge = this->LARGE;
    auto const plane = this->Raw({1, 1, 1}, 0);
    auto const parallel = [&] { static_cast<void>(plane.GetIntersection({0, 0, 0}, {huge, 1, -huge})); };
    ExpectThrows<DivideByZeroException>(parallel, "Direction is parallel to the plane",
                                        this->Function("GetIntersection"), "internal\\Maths\\Plane", 157);
    EXPECT_NO_THROW(static_cast<void>(plane.GetIntersection({0, 0, 0}, {huge, -huge, 1})));
    // The distance of the point: (huge + 1) - huge is 0, and so the point itself is the result.
    ExpectSameBits(plane.GetIntersection({huge, 1, -huge}, {0, 0, 2}), {huge, 1, -huge});
    ExpectSameBits(plane.GetIntersection({1, huge, -huge}, {2, 0, 0}), {1, huge, -huge});
    // The offset comes last: (1 - huge) + huge is 0.
    auto const distant = this->Raw({1, 1, 1}, huge);
    ExpectSameBits(distant.GetIntersection({1, -huge, 0}, {0, 2, 0}), {1, -huge, 0});
    ExpectSameBits(distant.GetIntersection({1, 0, -huge}, {0, 2, 0}), {1, 0, -huge});
}

TYPED_TEST(PlaneTest, IntersectionDividesByTheDenominator)
{
    // 41 and 49: see above. A multiplication by the reciprocal would give a step below 1.
    TypeParam const n = std::is_same_v<TypeParam, float> ? TypeParam{41} : TypeParam{49};
    tPlane<TypeParam> const plane({0, 0, 1}, -n);
    ExpectSameBits(plane.GetIntersection({0, 0, 0}, {1, 0, n}), {1, 0, n});
}

TYPED_TEST(PlaneTest, EqualityIsTolerantInEachComponent)
{
    using T = TypeParam;
    T const near = 1 + 8 * EPSILON<T>;
    T const far = 1 + 60 * EPSILON<T>;
    tPlane<T> const plane = this->Raw({1, 1, 1}, 1);
    EXPECT_TRUE(plane == plane);
    EXPECT_TRUE(plane == this->Raw({near, near, near}, near));
    EXPECT_FALSE(plane != this->Raw({near, near, near}, near));
    for (tPlane<T> const& other :
         {this->Raw({far, 1, 1}, 1), this->Raw({1, far, 1}, 1), this->Raw({1, 1, far}, 1), this->Raw({1, 1, 1}, far)})
    {
        EXPECT_FALSE(plane == other);
        EXPECT_TRUE(plane != other);
    }
}

TYPED_TEST(PlaneTest, EqualityToleratesSmallDifferencesOfAnySteps)
{
    using T = TypeParam;
    T const near = this->PARALLEL / 2; // very many steps from 0
    T const far = this->PARALLEL;      // not below the tolerance any more
    tPlane<T> const plane;
    EXPECT_TRUE(plane == this->Raw({near, -near, near}, -near));
    EXPECT_FALSE(plane != this->Raw({near, -near, near}, -near));
    for (tPlane<T> const& other :
         {this->Raw({far, 0, 0}, 0), this->Raw({0, far, 0}, 0), this->Raw({0, 0, far}, 0), this->Raw({0, 0, 0}, far)})
    {
        EXPECT_FALSE(plane == other);
        EXPECT_TRUE(plane != other);
    }
}

TYPED_TEST(PlaneTest, EqualityComparesNaNAsIsEqualDoes)
{
    auto const plane = this->Raw({QUIET_NAN<TypeParam>, 0, 0}, QUIET_NAN<TypeParam>);
    EXPECT_TRUE(plane == plane);
    EXPECT_FALSE(plane == tPlane<TypeParam>());
    EXPECT_TRUE(plane != tPlane<TypeParam>());
}

TEST(PlaneBytesTest, SerialiseWritesTheNormalThenTheOffset)
{
    std::ostringstream singles;
    EXPECT_EQ(&tPlane<float>({0, -2, 0}, 4).Serialise(singles), &singles);
    EXPECT_EQ(Hex(Native(singles.str(), 4)), "00 00 00 00 00 00 80 BF 00 00 00 00 00 00 00 40"); // 0, -1, 0, 2
    std::ostringstream doubles;
    EXPECT_EQ(&tPlane<double>({0, 0, 2}, -3).Serialise(doubles), &doubles);
    EXPECT_EQ(Hex(Native(doubles.str(), 8)), "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "  // 0, 0,
                                             "00 00 00 00 00 00 F0 3F 00 00 00 00 00 00 F8 BF"); // 1, -1.5
}

TYPED_TEST(PlaneTest, SerialiseWritesOneBlockForEachNumber)
{
    RecordingBuffer buffer;
    std::iostream stream(&buffer);
    tPlane<TypeParam>({0, 0, 1}, 2).Serialise(stream);
    std::streamsize const size = sizeof(TypeParam);
    EXPECT_EQ(buffer.sizes, (std::vector<std::streamsize>{size, size, size, size}));
}

TYPED_TEST(PlaneTest, DeserialiseReadsTheNormalAlone)
{
    std::stringstream stream;
    tPlane<TypeParam>({0, 0, 2}, -4).Serialise(stream);
    tPlane<TypeParam> plane({1, 0, 0}, 7);
    EXPECT_EQ(&plane.Deserialise(stream), &stream);
    this->Expect(plane, {0, 0, 1}, 7);
    TypeParam unread = 0;
    stream.read(reinterpret_cast<char*>(&unread), sizeof(unread));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(unread, TypeParam{-2});
    EXPECT_EQ(stream.peek(), std::char_traits<char>::eof());
}

TYPED_TEST(PlaneTest, DeserialiseChecksAndScalesNothing)
{
    std::stringstream stream;
    tVector3<TypeParam>(2, QUIET_NAN<TypeParam>, -0.0).Serialise(stream);
    tPlane<TypeParam> plane({1, 0, 0}, 7);
    plane.Deserialise(stream);
    this->Expect(plane, {2, QUIET_NAN<TypeParam>, -0.0}, 7);
}

TYPED_TEST(PlaneTest, DeserialiseOfAShortStreamKeepsWhatItCouldNotRead)
{
    std::stringstream stream;
    TypeParam const x = 5;
    stream.write(reinterpret_cast<char const*>(&x), sizeof(x));
    tPlane<TypeParam> plane({0, 1, 0}, 7);
    plane.Deserialise(stream);
    this->Expect(plane, {5, 1, 0}, 7);
    EXPECT_TRUE(stream.fail());
}

TYPED_TEST(PlaneTest, TextIsNormalThenOffset)
{
    tPlane<TypeParam> const plane({0, 0, 1}, -2);
    std::string const text = plane;
    EXPECT_EQ(text, "0, 0, 1, -2");
    std::ostringstream stream;
    EXPECT_EQ(&(stream << plane), &stream);
    EXPECT_EQ(stream.str(), "0, 0, 1, -2");
    EXPECT_EQ(std::string(this->Raw({TypeParam(0.1), TypeParam(1234567), TypeParam(1e-7)}, TypeParam(0.5))),
              "0.1, 1.23457e+06, 1e-07, 0.5");
}

TYPED_TEST(PlaneTest, TextTakesOnlyWidthAndFillFromTheStreamOnce)
{
    std::ostringstream stream;
    stream << std::setprecision(1) << std::hex << std::showpos << std::scientific << std::setfill('*') << std::setw(15);
    stream << this->Raw({0, TypeParam(0.125), 1}, -2) << '|';
    EXPECT_EQ(stream.str(), "0, 0.125, 1, -2|"); // 15 characters
    stream.str("");
    stream << std::setw(14) << tPlane<TypeParam>({0, 0, 1}, -2) << tPlane<TypeParam>();
    EXPECT_EQ(stream.str(), "***0, 0, 1, -20, 0, 0, 0");
    stream.str("");
    stream << std::left << std::setw(13) << tPlane<TypeParam>({0, 0, 1}, -2);
    EXPECT_EQ(stream.str(), "0, 0, 1, -2**");
}

TYPED_TEST(PlaneTest, TextDoesNotChangeWithTheGlobalLocale)
{
    GroupingGlobalLocale const locale;
    std::ostringstream stream;
    stream << this->Raw({1000, TypeParam(0.5), 0}, 12345);
    EXPECT_EQ(stream.str(), "1000, 0.5, 0, 12345");
    EXPECT_EQ(std::string(this->Raw({1000, TypeParam(0.5), 0}, 12345)), "1000, 0.5, 0, 12345");
}

} // namespace
