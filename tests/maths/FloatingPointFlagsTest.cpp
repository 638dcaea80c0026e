#include <cmath>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tAreaDisc.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tRay.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVolumeAABB.h"
#include "bv/maths/tVolumeSphere.h"
#include "support/Flags.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"

#if defined __GLIBC__ && !defined __aarch64__ // whose processors need not have traps
#include <csetjmp>
#include <csignal>
#endif

// Programs are debugged with traps for invalid operations, divisions by zero and overflow switched on. Ordinary, empty
// and infinite operands raise none of these but where the formula of an operation does so itself.

namespace
{

using namespace bv::maths;
using namespace bv::test;

template <typename T>
class FloatingPointFlagsTest : public testing::Test
{
};
TYPED_TEST_SUITE(FloatingPointFlagsTest, Precisions);

// The formulas, one operation after the other. They look at every axis, component and plane, since how far an operation
// looks beyond the one that decides is its own affair.

template <typename T>
using Plain = PlainNumber<T>;

template <typename T>
bool DiffersByFormula(T a, T b)
{
    using Signed = std::make_signed_t<Pattern<T>>;
    constexpr Pattern<T> SIGN = Pattern<T>{1} << (8 * sizeof(T) - 1);
    auto const mapped = [](T value) { return (Bits(value) & SIGN) != 0 ? SIGN - Bits(value) : Bits(value); };
    auto const distance = static_cast<Signed>(mapped(a) - mapped(b));
    if (distance >= -50 && distance <= 50)
        return false;
    T const difference = (Plain<T>(a) - b).Get();
    return !(difference < TOLERANCE<T> && difference > -TOLERANCE<T>);
}

template <typename V>
bool VectorsDifferByFormula(V const& a, V const& b)
{
    bool differ = false;
    for (std::size_t axis = 0; axis < sizeof(V) / sizeof(a.x); ++axis)
        differ = DiffersByFormula(a[axis], b[axis]) || differ;
    return differ;
}

template <typename Box>
bool BoxesDifferByFormula(Box const& a, Box const& b)
{
    bool const differ = VectorsDifferByFormula(a.GetMin(), b.GetMin());
    return VectorsDifferByFormula(a.GetMax(), b.GetMax()) || differ;
}

template <typename V>
auto DotByFormula(V const& a, V const& b)
{
    using T = decltype(V::x);
    Plain<T> sum = Plain<T>(a.x) * b.x + Plain<T>(a.y) * b.y;
    if constexpr (requires { a.z; })
        sum = sum + Plain<T>(a.z) * b.z;
    return sum;
}

template <typename T>
T ChordByFormula(tRay<T> const& ray, tVolumeSphere<T> const& sphere)
{
    auto const from = [&](std::size_t axis) { return Plain<T>(ray.origin[axis]) - sphere.GetCentre()[axis]; };
    tVector3<T> const l(from(0).Get(), from(1).Get(), from(2).Get());
    Plain<T> const b = DotByFormula(ray.direction, l);
    Plain<T> const discriminant = (b * b + sphere.GetRadiusSquared()) - DotByFormula(l, l);
    if (!(discriminant >= T{0}))
        return T{0};
    Plain<T> const s = Root(discriminant);
    return ((Plain<T>(T{0}) - b - s) + (s - b)).Get();
}

template <typename T>
bool SphereContainsByFormula(tVolumeSphere<T> const& sphere, tVector3<T> const& point)
{
    Plain<T> sum(T{0});
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        Plain<T> const d = Plain<T>(point[axis]) - sphere.GetCentre()[axis];
        sum = sum + d * d;
    }
    return sum < sphere.GetRadiusSquared();
}

template <typename Ball>
bool BallsOverlapByFormula(Ball const& a, Ball const& b)
{
    using T = decltype(a.GetRadiusSquared());
    Plain<T> const product = Plain<T>(a.GetRadiusSquared()) * b.GetRadiusSquared();
    Plain<T> const sum = Plain<T>(a.GetRadiusSquared()) + b.GetRadiusSquared();
    auto d = a.GetCentre();
    for (std::size_t axis = 0; axis < sizeof(d) / sizeof(T); ++axis)
        d[axis] = (Plain<T>(a.GetCentre()[axis]) - b.GetCentre()[axis]).Get();
    return Plain<T>(T{2}) * Root(product) + sum > DotByFormula(d, d);
}

template <typename T>
bool ClassifiedByFormula(tFrustum<T> const& frustum, tVolumeAABB<T> const& box)
{
    bool straddles = false;
    for (tPlane<T> const* plane : {&frustum.GetLeftPlane(), &frustum.GetRightPlane(), &frustum.GetTopPlane(),
                                   &frustum.GetBottomPlane(), &frustum.GetFarPlane(), &frustum.GetNearPlane()})
    {
        tVector3<T> const& n = plane->GetNormal();
        tVector3<T> p;
        tVector3<T> q;
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            p[axis] = n[axis] >= T{0} ? box.GetMax()[axis] : box.GetMin()[axis];
            q[axis] = n[axis] >= T{0} ? box.GetMin()[axis] : box.GetMax()[axis];
        }
        straddles = DotByFormula(n, p) + plane->GetOffset() < T{0} || straddles;
        straddles = DotByFormula(n, q) + plane->GetOffset() < T{0} || straddles;
    }
    return straddles;
}

// Operands

/// Clang computes two numbers of type `float` in one register with two zeros, which raise FE_INVALID where the two meet
/// an infinite factor or a divisor of zero. With it, plain arithmetic has other operands.
#if defined __clang__
template <typename T>
constexpr bool FILLS_UP_WITH_ZEROS = sizeof(T) == sizeof(float);
#else
template <typename T>
constexpr bool FILLS_UP_WITH_ZEROS = false;
#endif

/// Where there are random ones, this many of each.
constexpr int ROUNDS = 4000;

/// Ordinary numbers, now and then infinite ones, zeros, and numbers whose reciprocal overflows.
template <typename T>
T Draw(Random& random)
{
    switch (random.Below(12))
    {
    case 0:
        return INF<T>;
    case 1:
        return -INF<T>;
    case 2:
        return T{0};
    case 3:
        return -T{0};
    case 4:
        return TINY<T>;
    case 5:
    case 6:
        return static_cast<T>(random.Whole(-2, 2));
    default:
        return random.Number<T>(-10, 10);
    }
}

/// A number that is neither infinite nor zero.
template <typename T>
T DrawFinite(Random& random)
{
    return random.Number<T>(T(0.5), 10) * (random.Below(2) == 0 ? T{1} : T{-1});
}

template <typename V>
V DrawVector(Random& random)
{
    V vector;
    for (std::size_t axis = 0; axis < sizeof(V) / sizeof(vector.x); ++axis)
        vector[axis] = Draw<decltype(V::x)>(random);
    return vector;
}

/// Empty, ordinary, of no extent, infinite, inverted.
template <typename Box>
Box DrawBox(Random& random)
{
    using V = std::remove_cvref_t<decltype(Box().GetMin())>;
    Box box;
    unsigned int const kind = random.Below(6);
    if (kind == 0)
        return box;
    if (kind == 1)
        return Box(DrawVector<V>(random), DrawVector<V>(random));
    V const a = kind == 2 ? DrawVector<V>(random) : random.Vector<V>(-4, 4);
    box.Expand(a);
    if (kind > 3)
        box.Expand(kind == 4 ? DrawVector<V>(random) : random.Vector<V>(-4, 4));
    return box;
}

/// One like another, the same one, or one almost the same.
template <typename V>
V DrawLike(Random& random, V const& other)
{
    V vector = random.Below(2) == 0 ? other : DrawVector<V>(random);
    if (random.Below(4) == 0 && std::abs(vector.y) < INF<decltype(V::x)>)
        vector.y = Steps(vector.y, static_cast<int>(random.Below(3)));
    return vector;
}

template <typename Box>
testing::Message Description(Box const& box)
{
    return testing::Message() << "box from " << box.GetMin() << " to " << box.GetMax();
}

// Operations, each handed to `use` with a name and its formula.

template <typename T, typename Use>
void ForComparisons(Random& random, Use use)
{
    using V2 = tVector2<T>;
    using V3 = tVector3<T>;
    T a = Draw<T>(random);
    T b = random.Below(3) == 0 ? a : Draw<T>(random);
    use(
        "IsEqual", [&] { return IsEqual(a, b); }, [&] { return DiffersByFormula(a, b); });
    V2 two = DrawVector<V2>(random);
    V2 otherTwo = DrawLike(random, two);
    use(
        "tVector2 ==", [&] { return two == otherTwo; }, [&] { return VectorsDifferByFormula(two, otherTwo); });
    V3 three = DrawVector<V3>(random);
    V3 otherThree = DrawLike(random, three);
    use(
        "tVector3 ==", [&] { return three == otherThree; }, [&] { return VectorsDifferByFormula(three, otherThree); });
    use(
        "tTuple3 ==", [&] { return tTuple3<T>(three.x, a, b) == tTuple3<T>(otherThree.x, a, b); },
        [&] { return DiffersByFormula(three.x, otherThree.x); });
    auto area = DrawBox<tAreaAABB<T>>(random);
    auto otherArea = random.Below(2) == 0 ? area : DrawBox<tAreaAABB<T>>(random);
    use(
        "tAreaAABB ==", [&] { return area == otherArea; }, [&] { return BoxesDifferByFormula(area, otherArea); });
    auto volume = DrawBox<tVolumeAABB<T>>(random);
    auto otherVolume = random.Below(2) == 0 ? volume : DrawBox<tVolumeAABB<T>>(random);
    use(
        "tVolumeAABB ==", [&] { return volume == otherVolume; },
        [&] { return BoxesDifferByFormula(volume, otherVolume); });
    tAreaDisc<T> disc(two, a);
    tAreaDisc<T> otherDisc(otherTwo, b);
    use(
        "tAreaDisc ==", [&] { return disc == otherDisc; },
        [&] {
            return VectorsDifferByFormula(tVector3<T>(a, two.x, two.y), {b, otherTwo.x, otherTwo.y});
        });
    tVolumeSphere<T> sphere(three, a);
    tVolumeSphere<T> otherSphere(otherThree, b);
    use(
        "tVolumeSphere ==", [&] { return sphere == otherSphere; },
        [&]
        {
            bool const differ = DiffersByFormula(a, b);
            return VectorsDifferByFormula(three, otherThree) || differ;
        });
}

template <typename T, typename Use>
void ForVectors(Random& random, Use use)
{
    using V = tVector3<T>;
    V a = DrawVector<V>(random);
    V b = DrawVector<V>(random);
    T s = Draw<T>(random);
    if (FILLS_UP_WITH_ZEROS<T>)
    {
        s = DrawFinite<T>(random);
        for (V* const vector : {&a, &b})
            for (std::size_t axis = 0; axis < 3; ++axis)
                (*vector)[axis] = DrawFinite<T>(random);
    }
    SCOPED_TRACE(testing::Message() << a << " and " << b << ", " << s);
    auto const each = [&](auto operation)
    {
        V result;
        for (std::size_t axis = 0; axis < 3; ++axis)
            result[axis] = operation(Plain<T>(a[axis]), Plain<T>(b[axis])).Get();
        return result;
    };
    use(
        "tVector3 +", [&] { return a + b; }, [&] { return each([](auto x, auto y) { return x + y; }); });
    use(
        "tVector3 -", [&] { return a - b; }, [&] { return each([](auto x, auto y) { return x - y; }); });
    use(
        "tVector3 * tVector3", [&] { return a * b; }, [&] { return each([](auto x, auto y) { return x * y; }); });
    use(
        "tVector3 * T", [&] { return a * s; }, [&] { return each([&](auto x, auto) { return x * s; }); });
    use(
        "tVector3::Dot", [&] { return a.Dot(b); }, [&] { return DotByFormula(a, b).Get(); });
    use(
        "tVector3::Length", [&] { return a.Length(); }, [&] { return Root(DotByFormula(a, a)).Get(); });
    use(
        "tVector3::Normalised", [&] { return a.Normalised(); },
        [&]
        {
            Plain<T> const k = Plain<T>(T{1}) / Root(DotByFormula(a, a));
            return each([&](auto x, auto) { return x * k; });
        });
    use(
        "tVector3::Cross", [&] { return a.Cross(b); },
        [&]
        {
            auto const minor = [&](std::size_t i, std::size_t k)
            { return (Plain<T>(a[i]) * b[k] - Plain<T>(a[k]) * b[i]).Get(); };
            return V(minor(1, 2), minor(2, 0), minor(0, 1));
        });
    tVector2<T> two(a.x, a.y);
    tVector2<T> otherTwo(b.x, b.y);
    use(
        "tVector2::Dot", [&] { return two.Dot(otherTwo); }, [&] { return DotByFormula(two, otherTwo).Get(); });
}

/// What boxes in the plane and in space do alike.
template <typename Box, typename Use>
void ForBoxes(Random& random, std::string const& name, Use use)
{
    using V = std::remove_cvref_t<decltype(Box().GetMin())>;
    using T = decltype(V::x);
    constexpr std::size_t AXES = sizeof(V) / sizeof(T);
    auto const nothing = [] { return 0; };
    Box box = DrawBox<Box>(random);
    Box other = DrawBox<Box>(random);
    V point = DrawVector<V>(random);
    T number = Draw<T>(random);
    T factor = FILLS_UP_WITH_ZEROS<T> ? DrawFinite<T>(random) : number;
    SCOPED_TRACE(Description(box) << " and " << point << ", " << number);
    use(
        name + "::IsValid", [&] { return box.IsValid(); }, nothing);
    use(
        name + "::Contains, closed", [&] { return box.Contains(point, false); }, nothing);
    use(
        name + "::Contains, half-open", [&] { return box.Contains(point, true); }, nothing);
    use(
        name + "::Expand, point",
        [&]
        {
            Box grown = box;
            grown.Expand(point);
            return grown;
        },
        nothing);
    use(
        name + "::Expand, box",
        [&]
        {
            Box grown = box;
            grown.Expand(other);
            return grown;
        },
        nothing);
    use(
        name + "::ExpandAndSignal, point",
        [&]
        {
            Box grown = box;
            return grown.ExpandAndSignal(point);
        },
        nothing);
    use(
        name + "::ExpandAndSignal, box",
        [&]
        {
            Box grown = box;
            return grown.ExpandAndSignal(other);
        },
        nothing);
    use(
        name + "::Expand, factor",
        [&]
        {
            Box grown = box;
            grown.Expand(factor);
            return grown;
        },
        [&]
        {
            Box grown = box;
            for (std::size_t axis = 0; axis < AXES; ++axis)
            {
                Plain<T> const lower = box.GetMin()[axis];
                Plain<T> const upper = box.GetMax()[axis];
                Plain<T> const centre = (upper + lower) * T(0.5);
                grown.GetMax()[axis] = (upper + (upper - centre) * factor).Get();
                grown.GetMin()[axis] = (lower + (lower - centre) * factor).Get();
            }
            return grown;
        });
}

template <typename T, typename Use>
void ForShapes(Random& random, Use use)
{
    ForBoxes<tAreaAABB<T>>(random, "tAreaAABB", use);
    ForBoxes<tVolumeAABB<T>>(random, "tVolumeAABB", use);
    auto point = DrawVector<tVector3<T>>(random);
    tVolumeSphere<T> sphere(DrawVector<tVector3<T>>(random), Draw<T>(random));
    tVolumeSphere<T> other(point, Draw<T>(random));
    use(
        "tVolumeSphere::Contains", [&] { return sphere.Contains(point); },
        [&] { return SphereContainsByFormula(sphere, point); });
    use(
        "tVolumeSphere::Overlaps", [&] { return sphere.Overlaps(other); },
        [&] { return BallsOverlapByFormula(sphere, other); });
    tAreaDisc<T> disc(DrawVector<tVector2<T>>(random), Draw<T>(random));
    tAreaDisc<T> otherDisc(DrawVector<tVector2<T>>(random), Draw<T>(random));
    use(
        "tAreaDisc::Overlaps", [&] { return disc.Overlaps(otherDisc); },
        [&] { return BallsOverlapByFormula(disc, otherDisc); });
}

template <typename T, typename Use>
void ForRays(Random& random, Use use)
{
    tRay<T> ray(random.Below(4) == 0 ? DrawVector<tVector3<T>>(random) : random.Vector<tVector3<T>>(-5, 5),
                DrawVector<tVector3<T>>(random));
    T tNear = 0;
    T tFar = random.Below(2) == 0 ? INF<T> : T{100};
    tVolumeSphere<T> sphere(random.Vector<tVector3<T>>(-5, 5), Draw<T>(random));
    use(
        "tRay::Clip, sphere",
        [&]
        {
            T from = tNear, to = tFar;
            return ray.Clip(sphere, from, to);
        },
        [&] { return ChordByFormula(ray, sphere); });
}

template <typename T, typename Use>
void ForViews(Random& random, Use use)
{
    tMatrix4<T> const view = tMatrix4<T>::PerspectiveProjection(-1, 1, -1, 1, 1, random.Number<T>(2, 20)) *
                             tMatrix4<T>::Translate(random.Vector<tVector3<T>>(-3, 3));
    tFrustum<T> frustum(random.Below(3) == 0 ? tMatrix4<T>::OrthogonalProjection(-2, 2, -2, 2, -2, 2) : view);
    auto box = DrawBox<tVolumeAABB<T>>(random);
    use(
        "tFrustum::ContainsAABB", [&] { return frustum.ContainsAABB(box); },
        [&] { return ClassifiedByFormula(frustum, box); });
}

/// Expects that operations raise no flag that their formulas do not raise, and names each that does once.
class Judge
{
    std::set<std::string> named;

public:
    template <typename Operation, typename Formula>
    void operator()(std::string const& name, Operation const& operation, Formula const& formula)
    {
        int const allowed = Raised(formula);
        int const raised = Raised(operation);
        if ((raised & ~allowed) != 0 && named.insert(name).second)
            ADD_FAILURE() << name << " raises " << NameOfFlags(raised) << ", its formula " << NameOfFlags(allowed);
    }
};

/// Draws operands and has their operations judged.
template <typename Test>
void Repeat(unsigned int seed, Test test)
{
    Random random(seed);
    Judge judge;
    for (int round = 0; round < ROUNDS; ++round)
        test(random, std::ref(judge));
}

TYPED_TEST(FloatingPointFlagsTest, ComparingRaisesNoMoreThanItsDefinition)
{
    Repeat(1, [](Random& random, auto judge) { ForComparisons<TypeParam>(random, judge); });
}

TYPED_TEST(FloatingPointFlagsTest, VectorsRaiseNoMoreThanTheirFormulas)
{
    Repeat(2, [](Random& random, auto judge) { ForVectors<TypeParam>(random, judge); });
}

TYPED_TEST(FloatingPointFlagsTest, ShapesRaiseNoMoreThanTheirFormulas)
{
    Repeat(3, [](Random& random, auto judge) { ForShapes<TypeParam>(random, judge); });
}

TYPED_TEST(FloatingPointFlagsTest, RaysRaiseNoMoreThanTheirFormulas)
{
    Repeat(4, [](Random& random, auto judge) { ForRays<TypeParam>(random, judge); });
}

TYPED_TEST(FloatingPointFlagsTest, ViewsRaiseNoMoreThanTheirFormulas)
{
    Repeat(5, [](Random& random, auto judge) { ForViews<TypeParam>(random, judge); });
}

TYPED_TEST(FloatingPointFlagsTest, EqualInfinitiesAndEmptyBoxesCompareInSilence)
{
    TypeParam infinity = INF<TypeParam>;
    TypeParam negative = -infinity;
    tVolumeAABB<TypeParam> empty;
    tVolumeAABB<TypeParam> emptyToo;
    EXPECT_EQ(Raised([&] { return IsEqual(infinity, infinity) && IsEqual(negative, negative); }), 0);
    EXPECT_EQ(Raised([&] { return IsEqual(infinity, negative); }), 0);
    EXPECT_EQ(Raised([&] { return empty == emptyToo; }), 0);
    EXPECT_EQ(Raised([&] { return empty != emptyToo; }), 0);
    TypeParam largest = LARGEST<TypeParam>;
    TypeParam zero = 0;
    EXPECT_EQ(Raised([&] { return IsEqual(largest, zero); }), 0);               // nothing is squared
    EXPECT_EQ(Raised([&] { return IsEqual(largest, infinity); }), 0);           // one step
    EXPECT_EQ(Raised([&] { return IsEqual(largest, -largest); }), FE_OVERFLOW); // the difference does not fit
}

TEST(FloatingPointFlagsOfTheTestTest, FormulasRaiseWhatTheyShould)
{
    double infinity = INF<double>;
    double zero = 0;
    double largest = LARGEST<double>;
    using P = Plain<double>;
    EXPECT_EQ(Raised([&] { return P(infinity) - infinity; }), FE_INVALID);
    EXPECT_EQ(Raised([&] { return P(infinity) * zero; }), FE_INVALID);
    EXPECT_EQ(Raised([&] { return P(1.0) / zero; }), FE_DIVBYZERO);
    EXPECT_EQ(Raised([&] { return P(largest) + largest; }), FE_OVERFLOW);
    EXPECT_EQ(Raised([&] { return P(infinity) + infinity; }), 0);
    EXPECT_EQ(Raised([&] { return infinity - infinity; }), FE_INVALID);
    EXPECT_EQ(Raised([&] { return 1.0 / zero; }), FE_DIVBYZERO);
}

#if defined __GLIBC__ && !defined __aarch64__ // whose processors need not have traps

sigjmp_buf afterTheTrap;

extern "C" void LeaveByTheTrap(int)
{
    siglongjmp(afterTheTrap, 1);
}

/// Whether a computation runs into a trap.
template <typename Computation>
bool RunsIntoATrap(Computation const& computation)
{
    struct sigaction action = {};
    struct sigaction before = {};
    action.sa_handler = &LeaveByTheTrap;
    sigaction(SIGFPE, &action, &before);
    std::feclearexcept(FE_ALL_EXCEPT);
    bool volatile trapped = true;
    if (sigsetjmp(afterTheTrap, 1) == 0)
    {
        feenableexcept(TRAPS);
        auto result = computation();
        Hide(result);
        trapped = false;
    }
    fedisableexcept(FE_ALL_EXCEPT);
    std::feclearexcept(FE_ALL_EXCEPT);
    sigaction(SIGFPE, &before, nullptr);
    return trapped;
}

TYPED_TEST(FloatingPointFlagsTest, EverythingRunsWithTrapsOnWhereTheFormulasDo)
{
    using T = TypeParam;
    T zero = 0;
    ASSERT_TRUE(RunsIntoATrap([&] { return T{1} / zero; }));
    int operations = 0;
    std::set<std::string> named;
    auto const use = [&](std::string const& name, auto const& operation, auto const& formula)
    {
        if (Raised(formula) != 0)
            return;
        ++operations;
        if (RunsIntoATrap(operation) && named.insert(name).second)
            ADD_FAILURE() << name;
    };
    Random random(6);
    for (int round = 0; round < ROUNDS; ++round)
    {
        ForComparisons<T>(random, use);
        ForVectors<T>(random, use);
        ForShapes<T>(random, use);
        ForRays<T>(random, use);
        ForViews<T>(random, use);
    }
    EXPECT_GT(operations, 20 * ROUNDS);
}

#endif

} // namespace
