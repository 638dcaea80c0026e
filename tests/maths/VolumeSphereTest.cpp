#include "bv/maths/tVolumeSphere.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/Allocations.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"

using bv::maths::tMatrix4;
using bv::maths::tVector3;
using bv::maths::tVolumeAABB;
using bv::maths::tVolumeSphere;
using namespace bv::test;

namespace
{

/// The four numbers of a sphere, to the bit.
template <typename T>
void ExpectSphere(tVolumeSphere<T> const& sphere, std::type_identity_t<T> squaredRadius, tVector3<T> const& centre)
{
    ExpectSameBits(sphere.GetRadiusSquared(), squaredRadius);
    ExpectSameBits(sphere.GetCentre(), centre);
}

template <typename T>
class VolumeSphereTest : public testing::Test
{
};
TYPED_TEST_SUITE(VolumeSphereTest, Precisions);

// What holds when the program is compiled.

template <typename T>
constexpr bool KeepsItsShape()
{
    using Sphere = tVolumeSphere<T>;
    using Vector = tVector3<T>;
    static_assert(std::is_polymorphic_v<Sphere> && std::has_virtual_destructor_v<Sphere> && !std::is_final_v<Sphere>);
    static_assert(std::is_nothrow_destructible_v<Sphere> && !std::is_abstract_v<Sphere>);
    static_assert(std::is_nothrow_constructible_v<Sphere, Vector> &&
                  std::is_nothrow_constructible_v<Sphere, Vector, T> &&
                  std::is_nothrow_constructible_v<Sphere, Vector, Vector>);
    static_assert(std::is_nothrow_copy_constructible_v<Sphere> && std::is_nothrow_move_constructible_v<Sphere>);
    static_assert(std::is_nothrow_copy_assignable_v<Sphere> && std::is_nothrow_move_assignable_v<Sphere>);
    static_assert(std::is_nothrow_constructible_v<Sphere, tVolumeSphere<Other<T>>> &&
                  std::is_nothrow_assignable_v<Sphere&, tVolumeSphere<Other<T>>>);
    static_assert(std::is_convertible_v<tVolumeSphere<Other<T>>, Sphere> && std::is_convertible_v<Vector, Sphere>);
    static_assert(!std::is_default_constructible_v<Sphere> && !std::is_convertible_v<T, Sphere> &&
                  !std::is_convertible_v<tVector3<Other<T>>, Sphere> && !std::is_convertible_v<tVolumeAABB<T>, Sphere>);
    return true;
}
static_assert(KeepsItsShape<float>() && KeepsItsShape<double>());

template <typename T>
constexpr bool KeepsItsSignatures(tVolumeSphere<T>& sphere, tVolumeSphere<T> const& constant, tVector3<T> const& point,
                                  tVolumeAABB<T> const& box, tMatrix4<T> const& matrix, std::ostream& out,
                                  std::istream& in)
{
    using Sphere = tVolumeSphere<T>;
    static_assert(std::is_same_v<decltype(sphere.GetCentre()), tVector3<T> const&>);
    static_assert(std::is_same_v<decltype(sphere.SetCentre(point)), void> &&
                  std::is_same_v<decltype(sphere.SetRadius(T{})), void>);
    static_assert(std::is_same_v<decltype(constant.GetRadiusSquared()), T> &&
                  std::is_same_v<decltype(constant.GetRadius()), T> &&
                  std::is_same_v<decltype(constant.GetVolume()), T>);
    static_assert(std::is_same_v<decltype(constant.Contains(point)), bool> &&
                  std::is_same_v<decltype(constant.Overlaps(constant)), bool> &&
                  std::is_same_v<decltype(constant.Overlaps(box)), bool>);
    static_assert(std::is_same_v<decltype(constant == constant), bool> &&
                  std::is_same_v<decltype(constant != constant), bool>);
    static_assert(std::is_same_v<decltype(constant * matrix), Sphere> &&
                  std::is_same_v<decltype(sphere *= matrix), Sphere&>);
    static_assert(std::is_same_v<decltype(constant.Serialise(out)), std::ostream&> &&
                  std::is_same_v<decltype(sphere.Deserialise(in)), std::istream&>);
    static_assert(std::is_same_v<decltype(sphere = constant), Sphere&> &&
                  std::is_same_v<decltype(sphere = tVolumeSphere<Other<T>>({0, 0, 0})), Sphere&>);
    static_assert(noexcept(constant.GetCentre()));
    static_assert(noexcept(sphere.SetCentre(point)));
    static_assert(noexcept(sphere.SetRadius(T{})));
    static_assert(noexcept(constant.GetRadiusSquared()));
    static_assert(noexcept(constant.GetRadius()));
    static_assert(noexcept(constant.GetVolume()));
    static_assert(noexcept(constant.Contains(point)));
    static_assert(noexcept(constant.Overlaps(constant)));
    static_assert(noexcept(constant.Overlaps(box)));
    static_assert(noexcept(constant == constant));
    static_assert(noexcept(constant != constant));
    static_assert(noexcept(constant * matrix));
    static_assert(noexcept(sphere *= matrix));
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename T>
constexpr bool WorksInConstants()
{
    tVolumeSphere<T> sphere({1, 2, 3}, 4);
    bool const good = sphere.Contains({2, 3, 4}) && !sphere.Contains({3, 2, 3}) && sphere.GetRadiusSquared() == 4;
    sphere.SetRadius(4);
    sphere.SetCentre({0, 0, 0});
    return good && sphere.GetRadiusSquared() == 16 && sphere == tVolumeSphere<T>({-4, 0, 0}, {4, 0, 0}) &&
           sphere != tVolumeSphere<T>({0, 0, 0}) && tVolumeSphere<T>(tVolumeSphere<Other<T>>(sphere)) == sphere &&
           sphere.Overlaps(tVolumeAABB<T>({3, 0, 0}, {9, 9, 9}));
}
static_assert(WorksInConstants<float>() && WorksInConstants<double>());

// Layout and the virtual destructor.

TYPED_TEST(VolumeSphereTest, TheDispatchTableComesFirstThenTheSquaredRadiusThenTheCentre)
{
    tVolumeSphere<TypeParam> const sphere({3, 5, 9}, TypeParam{7});
    auto const* const bytes = reinterpret_cast<unsigned char const*>(&sphere);
    auto const* const centre = reinterpret_cast<unsigned char const*>(&sphere.GetCentre());
    EXPECT_EQ(centre - bytes,
              static_cast<std::ptrdiff_t>(std::max(sizeof(void*), sizeof(TypeParam)) + sizeof(TypeParam)));
    TypeParam numbers[4];
    std::memcpy(numbers, centre - sizeof(TypeParam), sizeof(numbers));
    EXPECT_EQ(numbers[0], TypeParam{7});
    EXPECT_EQ(numbers[1], TypeParam{3});
    EXPECT_EQ(numbers[2], TypeParam{5});
    EXPECT_EQ(numbers[3], TypeParam{9});
    tVolumeSphere<TypeParam> const other({0, 0, 0});
    EXPECT_EQ(std::memcmp(bytes, static_cast<void const*>(&other), sizeof(void*)), 0); // one table for the class
}

template <typename T>
class tCountedSphere : public tVolumeSphere<T>
{
    int& destroyed;

public:
    explicit tCountedSphere(int& counter) : tVolumeSphere<T>({1, 2, 3}, T{4}), destroyed{counter} {}
    ~tCountedSphere() override { ++destroyed; }
};

TYPED_TEST(VolumeSphereTest, ADerivedShapeIsDeletedThroughAPointerToTheSphere)
{
    int destroyed = 0;
    std::unique_ptr<tVolumeSphere<TypeParam>> sphere = std::make_unique<tCountedSphere<TypeParam>>(destroyed);
    ExpectSphere(*sphere, 4, {1, 2, 3});
    EXPECT_EQ(destroyed, 0);
    sphere.reset();
    EXPECT_EQ(destroyed, 1);
}

TYPED_TEST(VolumeSphereTest, AssigningLeavesTheTypeOfADerivedShape)
{
    int destroyed = 0;
    {
        tCountedSphere<TypeParam> derived(destroyed);
        tVolumeSphere<TypeParam>& sphere = derived;
        sphere = tVolumeSphere<TypeParam>({4, 5, 6}, TypeParam{7});
        ExpectSphere(sphere, 7, {4, 5, 6});
        EXPECT_TRUE(dynamic_cast<tCountedSphere<TypeParam>*>(&sphere) != nullptr);
    }
    EXPECT_EQ(destroyed, 1);
}

// Construction and assignment.

TYPED_TEST(VolumeSphereTest, ASphereFromAPointHasRadiusZero)
{
    using Vector = tVector3<TypeParam>;
    ExpectSphere(tVolumeSphere<TypeParam>(Vector(1, 2, 3)), 0, {1, 2, 3});
    tVolumeSphere<TypeParam> const implicit = Vector(TypeParam{-0.0}, QUIET_NAN<TypeParam>, 3);
    ExpectSphere(implicit, 0, {TypeParam{-0.0}, QUIET_NAN<TypeParam>, 3});
}

TYPED_TEST(VolumeSphereTest, ASphereFromACentreAndAValueKeepsTheValueUnsquared)
{
    using Sphere = tVolumeSphere<TypeParam>;
    Sphere sphere({1, 2, 3}, TypeParam{9});
    ExpectSphere(sphere, 9, {1, 2, 3});
    EXPECT_EQ(sphere.GetRadius(), TypeParam{3});
    sphere.SetRadius(9);
    ExpectSphere(sphere, 81, {1, 2, 3});
    EXPECT_EQ(sphere.GetRadius(), TypeParam{9});
    ExpectSphere(Sphere({1, 2, 3}, TypeParam{-4}), -4, {1, 2, 3});
    ExpectSphere(Sphere({1, 2, 3}, TypeParam{-0.0}), TypeParam{-0.0}, {1, 2, 3});
    ExpectSphere(Sphere({1, 2, 3}, QUIET_NAN<TypeParam>), QUIET_NAN<TypeParam>, {1, 2, 3});
    ExpectSphere(Sphere({1, 2, 3}, 4), 4, {1, 2, 3}); // an integer is a value, too
}

TYPED_TEST(VolumeSphereTest, ASphereThroughTwoPointsHasTheirDistanceAsDiameter)
{
    using Vector = tVector3<TypeParam>;
    using Sphere = tVolumeSphere<TypeParam>;
    ExpectSphere(Sphere(Vector(1, 2, 3), Vector(5, 8, 15)), 49, {3, 5, 9}); // (16 + 36 + 144) / 4
    ExpectSphere(Sphere(Vector(5, 8, 15), Vector(1, 2, 3)), 49, {3, 5, 9});
    ExpectSphere(Sphere({-1, 0, 0}, {2, 0, 0}), TypeParam(2.25), {TypeParam(0.5), 0, 0});
    ExpectSphere(Sphere(Vector(3, -5, 7), Vector(3, -5, 7)), 0, {3, -5, 7});
}

TYPED_TEST(VolumeSphereTest, TheSphereThroughTwoPointsIsComputedAsWrittenToTheBit)
{
    Random random(20246);
    auto const number = [&random] { return random.Number<TypeParam>(-100, 100); };
    for (int round = 0; round < 1000; ++round)
    {
        TypeParam const px = number();
        TypeParam const py = number();
        TypeParam const pz = number();
        TypeParam const qx = number();
        TypeParam const qy = number();
        TypeParam const qz = number();
        TypeParam sum = (qx - px) * (qx - px);
        sum += (qy - py) * (qy - py);
        sum += (qz - pz) * (qz - pz);
        TypeParam const half = TypeParam(0.5);
        ExpectSphere(tVolumeSphere<TypeParam>({px, py, pz}, {qx, qy, qz}), sum * TypeParam(0.25),
                     {(px + qx) * half, (py + qy) * half, (pz + qz) * half});
    }
    TypeParam const lost = LOST<TypeParam>;
    TypeParam const quarter = TypeParam(0.25);
    EXPECT_EQ(tVolumeSphere<TypeParam>({0, 0, 0}, {1, lost, lost}).GetRadiusSquared(), quarter);
    EXPECT_EQ(tVolumeSphere<TypeParam>({0, 0, 0}, {lost, lost, 1}).GetRadiusSquared(),
              NEXT_AFTER_ONE<TypeParam> * quarter);
}

TYPED_TEST(VolumeSphereTest, CopiesAndMovesTakeTheFourNumbers)
{
    using Sphere = tVolumeSphere<TypeParam>;
    Sphere original({1, TypeParam{-0.0}, 3}, INF<TypeParam>);
    Sphere const copied(original);
    Sphere const moved(std::move(original));
    Sphere copyAssigned({9, 9, 9});
    Sphere moveAssigned({9, 9, 9});
    EXPECT_EQ(&(copyAssigned = copied), &copyAssigned);
    EXPECT_EQ(&(moveAssigned = Sphere(copied)), &moveAssigned);
    Sphere& self = copyAssigned;
    copyAssigned = self;
    for (Sphere const& sphere : {copied, moved, copyAssigned, moveAssigned})
        ExpectSphere(sphere, INF<TypeParam>, {1, TypeParam{-0.0}, 3});
}

TEST(VolumeSphereConversionTest, NarrowingRoundsEachNumberToNearest)
{
    // 1 + 2^-24 is a tie that goes to the even 1; 1 + 3 * 2^-24 one that goes to 1 + 2^-22; 2^-150 to 0.
    tVolumeSphere<double> const wide({1 + 0x1p-24, -0x1p-150, 0.1}, 1 + 3 * 0x1p-24);
    tVolumeSphere<float> const constructed(wide);
    ExpectSphere(constructed, 1 + 0x1p-22F, {1.0F, -0.0F, 0.1F});
    tVolumeSphere<float> assigned({9, 9, 9});
    EXPECT_EQ(&(assigned = wide), &assigned);
    ExpectSphere(assigned, 1 + 0x1p-22F, {1.0F, -0.0F, 0.1F});
}

TEST(VolumeSphereConversionTest, NarrowingBeyondTheRangeGivesInfinities)
{
    tVolumeSphere<double> const wide({-1e300, 1e39, -1e39}, 1e300);
    ExpectSphere(tVolumeSphere<float>(wide), INF<float>, {-INF<float>, INF<float>, -INF<float>});
    tVolumeSphere<float> assigned({9, 9, 9});
    assigned = wide;
    ExpectSphere(assigned, INF<float>, {-INF<float>, INF<float>, -INF<float>});
}

TEST(VolumeSphereConversionTest, WideningKeepsEachNumber)
{
    tVolumeSphere<float> const narrow({0.1F, -0.0F, 7.0F}, 0x1p-149F);
    tVolumeSphere<double> const constructed = narrow;
    ExpectSphere(constructed, 0x1p-149, {0x1.99999ap-4, -0.0, 7.0});
    tVolumeSphere<double> assigned({9, 9, 9});
    EXPECT_EQ(&(assigned = narrow), &assigned);
    ExpectSphere(assigned, 0x1p-149, {0x1.99999ap-4, -0.0, 7.0});
}

// Access.

TYPED_TEST(VolumeSphereTest, TheCentreIsReadByReferenceAndSetWhole)
{
    tVolumeSphere<TypeParam> sphere({1, 2, 3}, TypeParam{9});
    tVector3<TypeParam> const& centre = sphere.GetCentre();
    sphere.SetCentre({5, QUIET_NAN<TypeParam>, 7});
    ExpectSphere(sphere, 9, {5, QUIET_NAN<TypeParam>, 7});
    EXPECT_EQ(centre.x, TypeParam{5});
    sphere.SetCentre(sphere.GetCentre());
    ExpectSphere(sphere, 9, {5, QUIET_NAN<TypeParam>, 7});
}

TYPED_TEST(VolumeSphereTest, SettingTheRadiusSquaresIt)
{
    tVolumeSphere<TypeParam> sphere({1, 2, 3});
    sphere.SetRadius(-3);
    ExpectSphere(sphere, 9, {1, 2, 3});
    EXPECT_EQ(sphere.GetRadius(), TypeParam{3});
    sphere.SetRadius(LARGEST<TypeParam>);
    ExpectSphere(sphere, INF<TypeParam>, {1, 2, 3});
    sphere.SetRadius(SMALLEST_NORMAL<TypeParam>);
    ExpectSphere(sphere, 0, {1, 2, 3});
}

TYPED_TEST(VolumeSphereTest, TheRadiusIsTheRootOfTheSquaredRadius)
{
    using Sphere = tVolumeSphere<TypeParam>;
    ExpectSameBits(Sphere({0, 0, 0}, TypeParam{2}).GetRadius(), std::sqrt(TypeParam{2}));
    ExpectSameBits(Sphere({0, 0, 0}, TypeParam{0}).GetRadius(), TypeParam{0});
    EXPECT_EQ(Sphere({0, 0, 0}, INF<TypeParam>).GetRadius(), INF<TypeParam>);
    EXPECT_TRUE(std::isnan(Sphere({0, 0, 0}, TypeParam{-1}).GetRadius()));
}

// Volume.

TEST(VolumeSphereVolumeTest, TheUnitSphereHasTheSinglePrecisionConstantInBothInstances)
{
    EXPECT_EQ(std::bit_cast<std::uint32_t>(tVolumeSphere<float>({0, 0, 0}, 1.0F).GetVolume()), 0x40860A92U);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(tVolumeSphere<double>({0, 0, 0}, 1.0).GetVolume()), 0x4010C15240000000U);
    EXPECT_EQ(tVolumeSphere<double>({0, 0, 0}, 1.0).GetVolume(), 4.188790321350098);
}

TYPED_TEST(VolumeSphereTest, TheVolumeIsTheSquaredRadiusToThePowerOfOneAndAHalfTimesTheConstant)
{
    using Sphere = tVolumeSphere<TypeParam>;
    // The C library's pow stands in between: some units of the last place are allowed to it.
    TypeParam const tolerance = 8 * EPSILON<TypeParam>;
    for (TypeParam radius = TypeParam(0.125); radius < 1000; radius *= TypeParam(1.75))
    {
        TypeParam const expected = radius * radius * radius * TypeParam(4.188790321350098);
        TypeParam const volume = Sphere({1, 2, 3}, radius * radius).GetVolume();
        EXPECT_NEAR(volume / expected, TypeParam{1}, tolerance) << radius;
    }
    EXPECT_EQ(Sphere({1, 2, 3}, TypeParam{0}).GetVolume(), TypeParam{0});
    EXPECT_EQ(Sphere({1, 2, 3}, INF<TypeParam>).GetVolume(), INF<TypeParam>);
    EXPECT_TRUE(std::isnan(Sphere({1, 2, 3}, TypeParam{-1}).GetVolume()));
    // A power that is no odd integer takes -infinity to +infinity; the squared radius times its root would be NaN.
    EXPECT_EQ(Sphere({0, 0, 0}, -INF<TypeParam>).GetVolume(), INF<TypeParam>);
    EXPECT_TRUE(std::isnan(Sphere({1, 2, 3}, QUIET_NAN<TypeParam>).GetVolume()));
}

// Containment.

TYPED_TEST(VolumeSphereTest, APointIsContainedWhenItIsNearerThanTheRadius)
{
    tVolumeSphere<TypeParam> const sphere({2, -1, 3}, TypeParam{9});
    for (int x = -4; x <= 4; ++x)
        for (int y = -4; y <= 4; ++y)
            for (int z = -4; z <= 4; ++z)
                EXPECT_EQ(sphere.Contains({TypeParam(2 + x), TypeParam(y - 1), TypeParam(3 + z)}),
                          x * x + y * y + z * z < 9)
                    << x << ", " << y << ", " << z;
}

TYPED_TEST(VolumeSphereTest, APointOnTheSurfaceIsOutside)
{
    using Vector = tVector3<TypeParam>;
    tVolumeSphere<TypeParam> const sphere({2, -1, 3}, TypeParam{49});
    tVolumeSphere<TypeParam> const larger({2, -1, 3}, std::nextafter(TypeParam{49}, TypeParam{50}));
    for (Vector const& point : {Vector(9, -1, 3), Vector(-5, -1, 3), Vector(2, 6, 3), Vector(2, -8, 3),
                                Vector(2, -1, 10), Vector(2, -1, -4), Vector(4, 2, 9), Vector(-4, -3, 0)})
    {
        EXPECT_FALSE(sphere.Contains(point)) << point;
        EXPECT_TRUE(larger.Contains(point)) << point;
    }
}

TYPED_TEST(VolumeSphereTest, ContainmentIsSummedFromXToZ)
{
    TypeParam const lost = LOST<TypeParam>;
    tVolumeSphere<TypeParam> const sphere({0, 0, 0}, NEXT_AFTER_ONE<TypeParam>);
    EXPECT_TRUE(sphere.Contains({1, lost, lost}));
    EXPECT_TRUE(sphere.Contains({lost, 1, -lost}));
    EXPECT_FALSE(sphere.Contains({lost, lost, 1}));
}

TYPED_TEST(VolumeSphereTest, ASphereOfNoOrNegativeSquaredRadiusContainsNothing)
{
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}, -INF<TypeParam>, QUIET_NAN<TypeParam>})
    {
        tVolumeSphere<TypeParam> const sphere({1, 2, 3}, squaredRadius);
        EXPECT_FALSE(sphere.Contains({1, 2, 3})) << squaredRadius;
        EXPECT_FALSE(sphere.Contains({1, 2, 4})) << squaredRadius;
    }
}

TYPED_TEST(VolumeSphereTest, APointWithANaNIsNowhereInside)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    for (TypeParam const squaredRadius : {TypeParam{1}, INF<TypeParam>})
    {
        tVolumeSphere<TypeParam> const sphere({0, 0, 0}, squaredRadius);
        EXPECT_FALSE(sphere.Contains({nan, 0, 0}));
        EXPECT_FALSE(sphere.Contains({0, nan, 0}));
        EXPECT_FALSE(sphere.Contains({0, 0, nan}));
        EXPECT_TRUE(sphere.Contains({0, 0, 0}));
    }
    EXPECT_FALSE(tVolumeSphere<TypeParam>({0, 0, 0}, INF<TypeParam>).Contains({0, 0, INF<TypeParam>}));
}

// Overlap of two spheres.

TYPED_TEST(VolumeSphereTest, SpheresOverlapWhenTheirCentresAreNearerThanTheSumOfTheirRadii)
{
    for (int x = -5; x <= 5; ++x)
        for (int y = -5; y <= 5; ++y)
            for (int z = -5; z <= 5; ++z)
                for (int r = 0; r <= 3; ++r)
                    for (int s = 0; s <= 3; ++s)
                    {
                        tVolumeSphere<TypeParam> const a({1, 2, 3}, TypeParam(r * r));
                        tVolumeSphere<TypeParam> const b({TypeParam(1 + x), TypeParam(2 + y), TypeParam(3 + z)},
                                                         TypeParam(s * s));
                        EXPECT_EQ(a.Overlaps(b), x * x + y * y + z * z < (r + s) * (r + s))
                            << x << ", " << y << ", " << z << ": " << r << ", " << s;
                    }
}

TYPED_TEST(VolumeSphereTest, UnitSpheresTwoApartTouchAndALittleNearerOverlap)
{
    using Sphere = tVolumeSphere<TypeParam>;
    TypeParam const one = 1;
    Sphere const sphere({0, 0, 0}, one);
    EXPECT_FALSE(sphere.Overlaps(Sphere({2, 0, 0}, one)));
    EXPECT_FALSE(sphere.Overlaps(Sphere({0, -2, 0}, one)));
    EXPECT_FALSE(sphere.Overlaps(Sphere({0, 0, 2}, one)));
    EXPECT_TRUE(sphere.Overlaps(Sphere({TypeParam(1.999), 0, 0}, one)));
    EXPECT_TRUE(sphere.Overlaps(Sphere({0, TypeParam(-1.999), 0}, one)));
    EXPECT_TRUE(sphere.Overlaps(Sphere({0, 0, TypeParam(1.999)}, one)));
    EXPECT_TRUE(sphere.Overlaps(sphere));
    EXPECT_TRUE(sphere.Overlaps(Sphere({0, 0, 0})));  // a point inside
    EXPECT_FALSE(sphere.Overlaps(Sphere({0, 0, 1}))); // a point on the surface
}

TYPED_TEST(VolumeSphereTest, ASphereOfNoOrNegativeSquaredRadiusOverlapsNoOther)
{
    using Sphere = tVolumeSphere<TypeParam>;
    for (TypeParam const squaredRadius : {TypeParam{0}, TypeParam{-1}, TypeParam{-4}, QUIET_NAN<TypeParam>})
    {
        Sphere const sphere({1, 2, 3}, squaredRadius);
        EXPECT_FALSE(sphere.Overlaps(sphere)) << squaredRadius;
        EXPECT_FALSE(sphere.Overlaps(Sphere({1, 2, 3}, TypeParam{-4}))) << squaredRadius;
        EXPECT_FALSE(Sphere({1, 2, 3}, TypeParam{-4}).Overlaps(sphere)) << squaredRadius;
    }
    EXPECT_FALSE(Sphere({1, 2, 3}, TypeParam{-1}).Overlaps(Sphere({1, 2, 3}, TypeParam{9})));
    EXPECT_FALSE(Sphere({1, 2, 3}, TypeParam{9}).Overlaps(Sphere({1, 2, 3}, TypeParam{-1})));
    EXPECT_FALSE(Sphere({0, 0, 0}, INF<TypeParam>).Overlaps(Sphere({0, 0, QUIET_NAN<TypeParam>}, TypeParam{1})));
}

TEST(VolumeSphereOverlapTest, NegativeSquaredRadiiWhoseProductOverflowsOrUnderflowsGiveWhatTheFormulaGives)
{
    tVolumeSphere<float> const large({0, 0, 0}, -1e30F); // twice the root of an infinite product, less 2e30
    EXPECT_TRUE(large.Overlaps(large));
    EXPECT_TRUE(large.Overlaps(tVolumeSphere<float>({0, 0, 1e18F}, -1e30F)));
    tVolumeSphere<float> const small({0, 0, 0}, -1e-30F); // the root of -0 is no NaN, and 1e-20 - 1e-30 is above 0
    EXPECT_TRUE(small.Overlaps(tVolumeSphere<float>({0, 0, 0}, 1e-20F)));
    EXPECT_FALSE(small.Overlaps(small));
}

TEST(VolumeSphereOverlapTest, TheSumOfTheSquaredRadiiIsFormedBeforeTheRootIsAdded)
{
    // Spheres that touch exactly, in numbers that are not exact. In single precision: radii 1923 and 179/16, twice
    // their product is 43027.125, and 3697929 + 125.16015625 rounds to 3698054.25; the sum of the two, 3741081.375,
    // rounds to the even 3741081.5, above the squared distance 1934.1875^2, which rounds to 3741081.25. With the root
    // added to either square first, the result would be 3741081.25, too, and the spheres would be apart.
    tVolumeSphere<float> const single({0, 0, 0}, 3697929.0F);
    EXPECT_TRUE(single.Overlaps(tVolumeSphere<float>({1934.1875F, 0, 0}, 125.16015625F)));
    EXPECT_TRUE(single.Overlaps(tVolumeSphere<float>({0, 0, -1934.1875F}, 125.16015625F)));
    // The same in double precision: radii 39671637 and 63436043/8.
    tVolumeSphere<double> const wide({0, 0, 0}, 39671637.0 * 39671637.0);
    EXPECT_TRUE(wide.Overlaps(tVolumeSphere<double>({0, 39671637.0 + 7929505.375, 0}, 7929505.375 * 7929505.375)));
}

TYPED_TEST(VolumeSphereTest, TheSquaredDistanceOfTheCentresIsSummedFromXToZ)
{
    // Beside a point, the squared sum of the radii is the squared radius itself.
    TypeParam const lost = LOST<TypeParam>;
    tVolumeSphere<TypeParam> const sphere({0, 0, 0}, NEXT_AFTER_ONE<TypeParam>);
    EXPECT_TRUE(sphere.Overlaps(tVolumeSphere<TypeParam>({1, lost, lost})));
    EXPECT_TRUE(sphere.Overlaps(tVolumeSphere<TypeParam>({lost, 1, lost})));
    EXPECT_FALSE(sphere.Overlaps(tVolumeSphere<TypeParam>({lost, lost, 1})));
}

TYPED_TEST(VolumeSphereTest, TheProductOfTheSquaredRadiiOverflowsAndUnderflowsAsItIs)
{
    // Radii 2^40 or 2^300 and distance 2^50 or 2^400: apart, but the product of the squares is infinite.
    bool const single = sizeof(TypeParam) == sizeof(float);
    TypeParam const square = std::ldexp(TypeParam{1}, single ? 80 : 600);
    tVolumeSphere<TypeParam> const large({0, 0, 0}, square);
    EXPECT_TRUE(large.Overlaps(tVolumeSphere<TypeParam>({std::ldexp(TypeParam{1}, single ? 50 : 400), 0, 0}, square)));
    // Radii 2^-40 or 2^-300 and a distance of 1.75 times that: they overlap, but the product of the squares is 0.
    TypeParam const least = std::ldexp(TypeParam{1}, single ? -80 : -600);
    tVolumeSphere<TypeParam> const small({0, 0, 0}, least);
    EXPECT_FALSE(
        small.Overlaps(tVolumeSphere<TypeParam>({0, std::ldexp(TypeParam(1.75), single ? -40 : -300), 0}, least)));
}

// Overlap with a box.

TYPED_TEST(VolumeSphereTest, ASphereAndABoxGiveTheSameAnswerFromBothSides)
{
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 1, 3});
    for (int x = -4; x <= 6; ++x)
        for (int y = -4; y <= 5; ++y)
            for (int z = -4; z <= 7; ++z)
                for (int const squaredRadius : {-1, 0, 1, 2, 3, 4, 5, 6, 9, 12, 14, 16, 17})
                {
                    int const dx = x - std::clamp(x, 0, 2);
                    int const dy = y - std::clamp(y, 0, 1);
                    int const dz = z - std::clamp(z, 0, 3);
                    int const squaredDistance = dx * dx + dy * dy + dz * dz;
                    bool const expected = squaredDistance == 0 || squaredDistance < squaredRadius;
                    tVolumeSphere<TypeParam> const sphere({TypeParam(x), TypeParam(y), TypeParam(z)},
                                                          TypeParam(squaredRadius));
                    EXPECT_EQ(sphere.Overlaps(box), expected) << sphere.GetCentre() << ": " << squaredRadius;
                    EXPECT_EQ(box.Overlaps(sphere), expected) << sphere.GetCentre() << ": " << squaredRadius;
                }
}

TYPED_TEST(VolumeSphereTest, ASphereThatOnlyTouchesABoxDoesNotOverlapIt)
{
    using Sphere = tVolumeSphere<TypeParam>;
    tVolumeAABB<TypeParam> const box({0, 0, 0}, {2, 2, 2});
    TypeParam const above9 = std::nextafter(TypeParam{9}, TypeParam{10});
    for (tVector3<TypeParam> const& centre :
         {tVector3<TypeParam>(-3, 1, 1), tVector3<TypeParam>(5, 1, 1), tVector3<TypeParam>(1, -3, 1),
          tVector3<TypeParam>(1, 5, 1), tVector3<TypeParam>(1, 1, -3), tVector3<TypeParam>(1, 1, 5),
          tVector3<TypeParam>(3, 4, 4)})
    {
        EXPECT_FALSE(Sphere(centre, TypeParam{9}).Overlaps(box)) << centre;
        EXPECT_TRUE(Sphere(centre, above9).Overlaps(box)) << centre;
    }
    EXPECT_TRUE(Sphere({1, 1, 1}).Overlaps(box));
    EXPECT_TRUE(Sphere({1, 1, 1}, TypeParam{-1}).Overlaps(box));
    EXPECT_FALSE(Sphere({3, 1, 1}, TypeParam{-1}).Overlaps(box));
    EXPECT_FALSE(Sphere({0, 0, 0}, TypeParam{1}).Overlaps(tVolumeAABB<TypeParam>()));
    TypeParam const lost = LOST<TypeParam>;
    EXPECT_TRUE(Sphere({-1, -lost, -lost}, NEXT_AFTER_ONE<TypeParam>).Overlaps(box));
    EXPECT_FALSE(Sphere({-lost, -lost, -1}, NEXT_AFTER_ONE<TypeParam>).Overlaps(box));
}

// Equality.

TYPED_TEST(VolumeSphereTest, EqualityToleratesSmallDifferencesInEveryNumber)
{
    using Sphere = tVolumeSphere<TypeParam>;
    TypeParam const three = 3;
    Sphere const sphere({1, 2, 4}, three);
    EXPECT_TRUE(sphere == sphere);
    EXPECT_FALSE(sphere != sphere);
    TypeParam const epsilon = EPSILON<TypeParam>;
    auto const changed = [&](TypeParam change)
    {
        return std::to_array({Sphere({1, 2, 4}, three + change), Sphere({1 + change, 2, 4}, three),
                              Sphere({1, 2 + change, 4}, three), Sphere({1, 2, 4 + change}, three)});
    };
    for (Sphere const& near : changed(8 * epsilon)) // below the tolerance of ten epsilons
    {
        EXPECT_TRUE(sphere == near);
        EXPECT_FALSE(sphere != near);
    }
    for (Sphere const& far : changed(256 * epsilon)) // above it, and at least 64 values away
    {
        EXPECT_FALSE(sphere == far);
        EXPECT_TRUE(sphere != far);
    }
}

TYPED_TEST(VolumeSphereTest, InequalityIsTheNegationOfEqualityEvenWithANaN)
{
    tVolumeSphere<TypeParam> const sphere({1, 2, 3}, QUIET_NAN<TypeParam>);
    EXPECT_TRUE(sphere == sphere); // one bit pattern
    EXPECT_FALSE(sphere != sphere);
    EXPECT_FALSE(sphere == tVolumeSphere<TypeParam>({1, 2, 3}, TypeParam{1}));
    EXPECT_TRUE(sphere != tVolumeSphere<TypeParam>({1, 2, 3}, TypeParam{1}));
}

// Multiplication by a matrix.

TYPED_TEST(VolumeSphereTest, NoMatrixChangesASphere)
{
    TypeParam const nan = QUIET_NAN<TypeParam>;
    TypeParam const projective[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 17};
    TypeParam const broken[16] = {nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan, nan};
    for (tMatrix4<TypeParam> const& matrix :
         {tMatrix4<TypeParam>(), tMatrix4<TypeParam>::Translate({5, 6, 7}), tMatrix4<TypeParam>::Scale(2),
          tMatrix4<TypeParam>::RotateX(1), tMatrix4<TypeParam>(projective), tMatrix4<TypeParam>(broken)})
    {
        tVolumeSphere<TypeParam> sphere({1, TypeParam{-0.0}, 3}, TypeParam{4});
        tVolumeSphere<TypeParam> const product = sphere * matrix;
        ExpectSphere(product, 4, {1, TypeParam{-0.0}, 3});
        EXPECT_TRUE(product == sphere);
        EXPECT_EQ(&(sphere *= matrix), &sphere);
        ExpectSphere(sphere, 4, {1, TypeParam{-0.0}, 3});
    }
}

// Streams.

std::string const SINGLE_BYTES("\x00\x00\x10\x41" // 9
                               "\x00\x00\x80\x3F" // 1
                               "\x01\x00\x00\x80" // the least subnormal number, negative
                               "\x00\x00\x00\xC0" // -2
                               ,
                               16);
std::string const DOUBLE_BYTES("\x00\x00\x00\x00\x00\x00\x22\x40"
                               "\x00\x00\x00\x00\x00\x00\xF0\x3F"
                               "\x01\x00\x00\x00\x00\x00\x00\x80"
                               "\x00\x00\x00\x00\x00\x00\x00\xC0",
                               32);

template <typename T>
std::string ExampleBytes()
{
    return Native(sizeof(T) == sizeof(float) ? SINGLE_BYTES : DOUBLE_BYTES, sizeof(T));
}

template <typename T>
tVolumeSphere<T> ExampleSphere()
{
    tVolumeSphere<T> sphere({1, -TINY<T>, -2});
    sphere.SetRadius(3); // the stream holds 9
    return sphere;
}

TYPED_TEST(VolumeSphereTest, TheStreamHoldsTheRawSquaredRadiusAndCentre)
{
    std::ostringstream stream;
    stream << std::setw(50) << std::setfill('*') << std::hex << std::setprecision(2); // none of it matters
    EXPECT_EQ(&ExampleSphere<TypeParam>().Serialise(stream), &stream);
    EXPECT_EQ(stream.str(), ExampleBytes<TypeParam>());
    EXPECT_EQ(stream.str().size(), 4 * sizeof(TypeParam));
    EXPECT_EQ(stream.width(), 50);
}

TYPED_TEST(VolumeSphereTest, ReadingTakesTheSameNumbersInTheSameOrder)
{
    std::istringstream stream(ExampleBytes<TypeParam>() + "rest");
    tVolumeSphere<TypeParam> sphere({7, 7, 7});
    EXPECT_EQ(&sphere.Deserialise(stream), &stream);
    ExpectSphere(sphere, 9, {1, -TINY<TypeParam>, -2});
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TYPED_TEST(VolumeSphereTest, WritingAndReadingKeepsTheSquaredRadiusToTheBit)
{
    Random random(20247);
    for (int round = 0; round < 1000; ++round)
    {
        std::stringstream stream;
        // Any bits, NaN included. A stream computes nothing, so that even the bits of a NaN are the same.
        auto const bits = round == 0 ? Bits(QUIET_NAN<TypeParam>) + 1 : Bits(random.Any<TypeParam>());
        tVolumeSphere<TypeParam>({1, 2, 3}, std::bit_cast<TypeParam>(bits)).Serialise(stream);
        tVolumeSphere<TypeParam> sphere({7, 7, 7});
        sphere.Deserialise(stream);
        EXPECT_EQ(Bits(sphere.GetRadiusSquared()), bits);
        ExpectSameBits(sphere.GetCentre(), {1, 2, 3});
    }
}

TYPED_TEST(VolumeSphereTest, ReadingChecksNothing)
{
    std::stringstream stream;
    tVolumeSphere<TypeParam>({QUIET_NAN<TypeParam>, INF<TypeParam>, 0}, TypeParam{-4}).Serialise(stream);
    tVolumeSphere<TypeParam> sphere({7, 7, 7});
    sphere.Deserialise(stream);
    ExpectSphere(sphere, -4, {QUIET_NAN<TypeParam>, INF<TypeParam>, 0});
}

TYPED_TEST(VolumeSphereTest, AStreamThatEndsEarlyLeavesTheRemainingNumbers)
{
    std::istringstream stream(ExampleBytes<TypeParam>().substr(0, 2 * sizeof(TypeParam)));
    tVolumeSphere<TypeParam> sphere({6, 7, 8});
    EXPECT_EQ(&sphere.Deserialise(stream), &stream);
    ExpectSphere(sphere, 9, {1, 7, 8});
    EXPECT_TRUE(stream.fail());
}

// Cost.

TYPED_TEST(VolumeSphereTest, NoOperationAllocates)
{
    tVolumeSphere<TypeParam> const other({1, 1, 1}, TypeParam{4});
    tMatrix4<TypeParam> const matrix;
    TypeParam sum = 0;
    std::size_t const count = bv::test::CountAllocations(
        [&]
        {
            tVolumeSphere<TypeParam> sphere({0, 0, 0}, {2, 2, 2});
            sphere.SetRadius(2);
            sphere.SetCentre({1, 1, 1});
            sphere *= matrix;
            sum += sphere.GetVolume() + sphere.GetRadius();
            bool const all = sphere.Contains({1, 1, 1}) && sphere.Overlaps(other) && sphere == other * matrix &&
                             sphere.Overlaps(tVolumeAABB<TypeParam>({0, 0, 0}, {1, 1, 1}));
            sum += all ? TypeParam{1} : TypeParam{0};
        });
    EXPECT_EQ(count, 0U);
    EXPECT_GT(sum, TypeParam{36}); // 8 * 4 pi / 3 + 2 + 1
}

} // namespace
