#include "bv/maths/tCoordinateFrame.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bv/InvalidArgumentException.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/SameBits.h"
#include "support/Streams.h"
#include "support/Throws.h"

namespace
{

using bv::InvalidArgumentException;
using bv::maths::tCoordinateFrame;
using bv::maths::tMatrix4;
using bv::maths::tVector3;
using namespace bv::test;

using Code = unsigned char;
using Codes = std::array<Code, 3>;

// A second way to see the codes, without tables: half the code is the axis, and odd codes point against it.
int AxisOf(int code)
{
    return code / 2;
}
int SignOf(int code)
{
    return code % 2 == 0 ? 1 : -1;
}
bool IsDirection(int code)
{
    return code < 6;
}
bool IsValid(Codes const& codes)
{
    return std::set<int>{AxisOf(codes[0]), AxisOf(codes[1]), AxisOf(codes[2])}.size() == 3;
}

/// All triples of these codes.
std::vector<Codes> Triples(std::vector<Code> const& codes)
{
    std::vector<Codes> triples;
    for (Code const x : codes)
        for (Code const y : codes)
            for (Code const z : codes)
                triples.push_back({x, y, z});
    return triples;
}

std::vector<Code> const DIRECTIONS = {0, 1, 2, 3, 4, 5};
std::vector<Code> const ALL_KINDS = {0, 1, 2, 3, 4, 5, 6, 7, 8, 127, 128, 254, 255};

/// The 48 frames whose axes are three directions.
std::vector<Codes> ValidFrames()
{
    std::vector<Codes> frames;
    for (Codes const& codes : Triples(DIRECTIONS))
        if (IsValid(codes))
            frames.push_back(codes);
    return frames;
}

/// A frame of any codes, valid or not: reading does not check them.
template <typename T>
tCoordinateFrame<T> AnyFrame(Codes const& codes)
{
    std::istringstream stream(std::string(codes.begin(), codes.end()));
    tCoordinateFrame<T> frame;
    frame.Deserialise(stream);
    return frame;
}

template <typename T>
void ExpectCodes(tCoordinateFrame<T> const& frame, Codes const& codes)
{
    EXPECT_EQ(int{frame.GetX()}, int{codes[0]});
    EXPECT_EQ(int{frame.GetY()}, int{codes[1]});
    EXPECT_EQ(int{frame.GetZ()}, int{codes[2]});
}

std::string Name(Codes const& codes)
{
    return std::to_string(codes[0]) + " " + std::to_string(codes[1]) + " " + std::to_string(codes[2]);
}

template <typename T>
class CoordinateFrameTest : public testing::Test
{
public:
    static std::string FunctionName(std::string const& member)
    {
        return std::string("bv::maths::tCoordinateFrame<") + bv::test::TYPE_NAME<T> + ">::" + member;
    }
    template <typename Action>
    static void ExpectIncorrectFrame(Action&& action, std::string const& member, unsigned int line)
    {
        bv::test::ExpectThrows<InvalidArgumentException>(action, "Incorrectly defined coordinate frame",
                                                         FunctionName(member), "internal\\Maths\\CoordinateFrame",
                                                         line);
    }
};

TYPED_TEST_SUITE(CoordinateFrameTest, Precisions);

template <typename T>
concept ShowsItsAxes = requires(tCoordinateFrame<T> frame, Code code)
{
    frame.GetAxisVector(code);
};
template <typename T>
concept ShowsItsFaces = requires(tCoordinateFrame<T> frame, Code code)
{
    frame.CubeMapIndex(code, code, code);
};

template <typename T>
constexpr bool CheckTypes()
{
    using F = tCoordinateFrame<T>;
    static_assert(std::is_same_v<decltype(F::RIGHT), Code const> && F::RIGHT == 0 && F::LEFT == 1);
    static_assert(std::is_same_v<decltype(F::FORWARDS), Code const> && F::FORWARDS == 2 && F::BACKWARDS == 3);
    static_assert(std::is_same_v<decltype(F::UP), Code const> && F::UP == 4 && F::DOWN == 5);
    static_assert(F::LEFT_HANDED == 0 && F::RIGHT_HANDED == 1);
    static_assert(sizeof(typename F::Handedness) == 4 && std::is_convertible_v<typename F::Handedness, int>);
    static_assert(sizeof(F) == 3 && alignof(F) == 1 && !std::is_polymorphic_v<F>);
    static_assert(std::is_standard_layout_v<F> && std::is_trivially_copyable_v<F>);
    static_assert(std::bit_cast<Codes>(F(4, 0, 2)) == Codes{4, 0, 2}); // x, y, z
    static_assert(std::is_nothrow_default_constructible_v<F> && !std::is_convertible_v<Code, F>);
    static_assert(std::is_same_v<decltype(F().GetX()), Code>);
    static_assert(noexcept(F().GetX()));
    static_assert(std::is_same_v<decltype(std::declval<F&>().Set(0, 2, 4)), F&>);
    static_assert(std::is_same_v<decltype(std::declval<F const&>().GetVector(0)), tVector3<T>>);
    static_assert(std::is_same_v<decltype(std::declval<F const&>().CreateRotationMatrix(F())), tMatrix4<T>>);
    static_assert(!ShowsItsAxes<T> && !ShowsItsFaces<T>);
    // Known to the compiler.
    static_assert(F().GetHandedness() == F::RIGHT_HANDED && F(0, 4, 2).GetVector(F::DOWN).y == -1);
    static_assert(F().Set(F::UP, F::RIGHT, F::FORWARDS).GetX() == F::UP);
    return true;
}
static_assert(CheckTypes<float>() && CheckTypes<double>());
static_assert(!std::is_constructible_v<tCoordinateFrame<float>, tCoordinateFrame<double>>);

TYPED_TEST(CoordinateFrameTest, LooksRightForwardsAndUpByDefault)
{
    ExpectCodes(tCoordinateFrame<TypeParam>(), {0, 2, 4});
}

TYPED_TEST(CoordinateFrameTest, KeepsItsCodes)
{
    using Frame = tCoordinateFrame<TypeParam>;
    Frame const frame(Frame::UP, Frame::LEFT, Frame::BACKWARDS);
    ExpectCodes(frame, {4, 1, 3});
    tCoordinateFrame<TypeParam> copy(frame);
    ExpectCodes(copy, {4, 1, 3});
    tCoordinateFrame<TypeParam> assigned;
    EXPECT_EQ(&(assigned = frame), &assigned);
    ExpectCodes(assigned, {4, 1, 3});
    assigned = tCoordinateFrame<TypeParam>();
    ExpectCodes(assigned, {0, 2, 4});
    assigned = std::move(copy);
    ExpectCodes(assigned, {4, 1, 3});
}

TYPED_TEST(CoordinateFrameTest, SetReplacesTheCodesAndReturnsTheFrame)
{
    tCoordinateFrame<TypeParam> frame;
    EXPECT_EQ(&frame.Set(5, 3, 1), &frame);
    ExpectCodes(frame, {5, 3, 1});
    frame.Set(frame.GetY(), frame.GetZ(), frame.GetX());
    ExpectCodes(frame, {3, 1, 5});
}

TYPED_TEST(CoordinateFrameTest, IsValidWhereItsAxesBelongToThreePairs)
{
    int valid = 0;
    for (Codes const& codes : Triples(ALL_KINDS))
    {
        tCoordinateFrame<TypeParam> frame;
        if (IsValid(codes))
        {
            ExpectCodes(tCoordinateFrame<TypeParam>(codes[0], codes[1], codes[2]), codes);
            frame.Set(codes[0], codes[1], codes[2]);
            valid += IsDirection(codes[0]) && IsDirection(codes[1]) && IsDirection(codes[2]);
        }
        else
        {
            EXPECT_THROW(tCoordinateFrame<TypeParam>(codes[0], codes[1], codes[2]), InvalidArgumentException);
            EXPECT_THROW(frame.Set(codes[0], codes[1], codes[2]), InvalidArgumentException) << Name(codes);
        }
        ExpectCodes(frame, codes); // stored before they are looked at
    }
    EXPECT_EQ(valid, 48);
}

TYPED_TEST(CoordinateFrameTest, TheConstructorReportsAnIncorrectFrame)
{
    using Frame = tCoordinateFrame<TypeParam>;
    TestFixture::ExpectIncorrectFrame([] { Frame(Frame::RIGHT, Frame::LEFT, Frame::UP); }, "tCoordinateFrame", 46);
    TestFixture::ExpectIncorrectFrame([] { Frame(Frame::RIGHT, Frame::UP, Frame::RIGHT); }, "tCoordinateFrame", 46);
    TestFixture::ExpectIncorrectFrame([] { Frame(Frame::UP, Frame::LEFT, Frame::RIGHT); }, "tCoordinateFrame", 46);
    TestFixture::ExpectIncorrectFrame([] { Frame(6, 7, Frame::RIGHT); }, "tCoordinateFrame", 46);
}

TYPED_TEST(CoordinateFrameTest, SetReportsAnIncorrectFrameAndKeepsIt)
{
    using Frame = tCoordinateFrame<TypeParam>;
    Frame frame(Frame::DOWN, Frame::BACKWARDS, Frame::LEFT);
    TestFixture::ExpectIncorrectFrame([&] { frame.Set(Frame::RIGHT, Frame::LEFT, Frame::UP); }, "Set", 68);
    ExpectCodes(frame, {0, 1, 4});
    TestFixture::ExpectIncorrectFrame([&] { frame.Set(254, 2, 255); }, "Set", 68);
    ExpectCodes(frame, {254, 2, 255});
}

TYPED_TEST(CoordinateFrameTest, CodesThatAreNoDirectionPassWhereTheirPairsDiffer)
{
    using Frame = tCoordinateFrame<TypeParam>;
    for (Code const code : {Code{6}, Code{7}, Code{255}})
    {
        ExpectCodes(Frame(code, 2, 4), {code, 2, 4});
        ExpectCodes(Frame(0, code, 4), {0, code, 4});
        ExpectCodes(Frame(0, 2, code), {0, 2, code});
    }
    ExpectCodes(Frame(6, 9, 255), {6, 9, 255});
}

TYPED_TEST(CoordinateFrameTest, GetVectorOfTheDefaultFrameIsTheDirectionItself)
{
    using T = TypeParam;
    using Frame = tCoordinateFrame<T>;
    T const zero = -T{0};
    Frame const frame;
    ExpectSameBits(frame.GetVector(Frame::RIGHT), {1, 0, 0});
    ExpectSameBits(frame.GetVector(Frame::LEFT), {-1, zero, zero});
    ExpectSameBits(frame.GetVector(Frame::FORWARDS), {0, 1, 0});
    ExpectSameBits(frame.GetVector(Frame::BACKWARDS), {zero, -1, zero});
    ExpectSameBits(frame.GetVector(Frame::UP), {0, 0, 1});
    ExpectSameBits(frame.GetVector(Frame::DOWN), {zero, zero, -1});
}

TYPED_TEST(CoordinateFrameTest, GetVectorNamesTheAxisOfEveryFrame)
{
    using T = TypeParam;
    for (Codes const& codes : ValidFrames())
    {
        tCoordinateFrame<T> const frame(codes[0], codes[1], codes[2]);
        for (Code const direction : DIRECTIONS)
        {
            SCOPED_TRACE(Name(codes) + ", " + std::to_string(direction));
            tVector3<T> expected;
            for (std::size_t axis = 0; axis < 3; ++axis)
                if (AxisOf(codes[axis]) == AxisOf(direction))
                {
                    expected[axis] = 1;
                    expected *= static_cast<T>(SignOf(codes[axis]) * SignOf(direction)); // zeros, too
                }
            ExpectSameBits(frame.GetVector(direction), expected);
        }
    }
}

TYPED_TEST(CoordinateFrameTest, GetVectorOfADirectionOutsideTheFrameIsMinusZ)
{
    using T = TypeParam;
    tVector3<T> const minusZ(-T{0}, -T{0}, -1);
    for (Code const code : std::vector<Code>{6, 7, 8, 128, 254, 255})
        ExpectSameBits(tCoordinateFrame<T>().GetVector(code), minusZ);
    ExpectSameBits(AnyFrame<T>({0, 1, 4}).GetVector(2), minusZ); // FORWARDS, in a frame without it
    ExpectSameBits(tCoordinateFrame<T>(6, 2, 4).GetVector(0), minusZ);
    ExpectSameBits(tCoordinateFrame<T>(6, 2, 4).GetVector(1), minusZ);
}

TYPED_TEST(CoordinateFrameTest, GetVectorComparesCodesAloneAndTheSameBeforeTheOpposite)
{
    using T = TypeParam;
    T const zero = -T{0};
    // LEFT is the y axis here, although x is its opposite; the first axis that fits wins.
    ExpectSameBits(AnyFrame<T>({0, 1, 4}).GetVector(1), {0, 1, 0});
    ExpectSameBits(AnyFrame<T>({0, 1, 4}).GetVector(0), {1, 0, 0});
    ExpectSameBits(AnyFrame<T>({4, 1, 0}).GetVector(0), {0, 0, 1});
    ExpectSameBits(AnyFrame<T>({2, 2, 2}).GetVector(2), {1, 0, 0});
    ExpectSameBits(AnyFrame<T>({2, 2, 2}).GetVector(3), {-1, zero, zero});
    ExpectSameBits(AnyFrame<T>({0, 2, 2}).GetVector(3), {zero, -1, zero});
    // Codes that are no direction are compared like any other.
    ExpectSameBits(tCoordinateFrame<T>(6, 255, 2).GetVector(6), {1, 0, 0});
    ExpectSameBits(tCoordinateFrame<T>(6, 255, 2).GetVector(7), {-1, zero, zero});
    ExpectSameBits(tCoordinateFrame<T>(6, 255, 2).GetVector(255), {0, 1, 0});
    ExpectSameBits(tCoordinateFrame<T>(6, 255, 2).GetVector(254), {zero, -1, zero});
}

TYPED_TEST(CoordinateFrameTest, HandednessOfWellKnownFrames)
{
    using Frame = tCoordinateFrame<TypeParam>;
    EXPECT_EQ(Frame().GetHandedness(), Frame::RIGHT_HANDED);
    EXPECT_EQ(Frame(Frame::UP, Frame::RIGHT, Frame::FORWARDS).GetHandedness(), Frame::RIGHT_HANDED);
    EXPECT_EQ(Frame(Frame::RIGHT, Frame::UP, Frame::FORWARDS).GetHandedness(), Frame::LEFT_HANDED);
    EXPECT_EQ(Frame(Frame::RIGHT, Frame::UP, Frame::BACKWARDS).GetHandedness(), Frame::RIGHT_HANDED);
    EXPECT_EQ(Frame(Frame::LEFT, Frame::FORWARDS, Frame::UP).GetHandedness(), Frame::LEFT_HANDED);
}

TYPED_TEST(CoordinateFrameTest, HandednessIsTheParityOfTheAxesAndSigns)
{
    using Frame = tCoordinateFrame<TypeParam>;
    int right = 0;
    for (Codes const& codes : ValidFrames())
    {
        int parity = SignOf(codes[0]) * SignOf(codes[1]) * SignOf(codes[2]);
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = i + 1; j < 3; ++j)
                if (AxisOf(codes[i]) > AxisOf(codes[j]))
                    parity = -parity;
        EXPECT_EQ(Frame(codes[0], codes[1], codes[2]).GetHandedness(),
                  parity > 0 ? Frame::RIGHT_HANDED : Frame::LEFT_HANDED)
            << Name(codes);
        right += parity > 0;
    }
    EXPECT_EQ(right, 24);
}

TYPED_TEST(CoordinateFrameTest, HandednessOfAnyFrameIsThatOfTheProductOfXAndY)
{
    using Frame = tCoordinateFrame<TypeParam>;
    for (Codes const& codes : Triples(ALL_KINDS))
    {
        // In whole numbers, so that zeros have no sign.
        int axes[3][3] = {};
        for (std::size_t i = 0; i < 3; ++i)
            if (IsDirection(codes[i]))
                axes[i][AxisOf(codes[i])] = SignOf(codes[i]);
        bool isProduct = true;
        for (int i = 0; i < 3; ++i)
        {
            int const j = (i + 1) % 3;
            int const k = (i + 2) % 3;
            isProduct = isProduct && axes[0][j] * axes[1][k] - axes[0][k] * axes[1][j] == axes[2][i];
        }
        EXPECT_EQ(AnyFrame<TypeParam>(codes).GetHandedness(), isProduct ? Frame::RIGHT_HANDED : Frame::LEFT_HANDED)
            << Name(codes);
    }
    EXPECT_EQ(Frame(0, 2, 6).GetHandedness(), Frame::LEFT_HANDED);                  // z is not a zero vector
    EXPECT_EQ(AnyFrame<TypeParam>({0, 1, 6}).GetHandedness(), Frame::RIGHT_HANDED); // zero is the product
}

/// Element of row i and column j, both from 0, to the bit: the product of two unit vectors, whose zeros carry the
/// product of the signs.
template <typename T>
T RotationElement(int frameCode, int targetCode)
{
    int const frameSign = IsDirection(frameCode) ? SignOf(frameCode) : 1;
    int const targetSign = IsDirection(targetCode) ? SignOf(targetCode) : 1;
    bool const isSameAxis =
        IsDirection(frameCode) && IsDirection(targetCode) && AxisOf(frameCode) == AxisOf(targetCode);
    return static_cast<T>(frameSign * targetSign) * (isSameAxis ? T{1} : T{0});
}

template <typename T>
void ExpectRotation(tMatrix4<T> const& matrix, Codes const& frame, Codes const& target)
{
    SCOPED_TRACE(Name(frame) + " to " + Name(target));
    for (std::size_t j = 0; j < 3; ++j)
    {
        T column[3];
        bool isZero = true;
        for (std::size_t i = 0; i < 3; ++i)
        {
            column[i] = RotationElement<T>(frame[i], target[j]);
            isZero = isZero && column[i] == T{0};
        }
        for (std::size_t i = 0; i < 3; ++i)
            ExpectSameBits(matrix[4 * i + j], isZero ? QUIET_NAN<T> : column[i]);
        ExpectSameBits(matrix[12 + j], T{0});
        ExpectSameBits(matrix[4 * j + 3], T{0});
    }
    ExpectSameBits(matrix[15], T{1});
}

TYPED_TEST(CoordinateFrameTest, RotationToTheSameFrameIsTheIdentity)
{
    for (Codes const& codes : ValidFrames())
    {
        tCoordinateFrame<TypeParam> const frame(codes[0], codes[1], codes[2]);
        tMatrix4<TypeParam> const matrix = frame.CreateRotationMatrix(frame);
        EXPECT_TRUE(matrix.IsIdentity()) << Name(codes);
        EXPECT_EQ(matrix, tMatrix4<TypeParam>()) << Name(codes);
    }
}

TYPED_TEST(CoordinateFrameTest, RotationHoldsTheTargetAxesAsColumns)
{
    using T = TypeParam;
    using Frame = tCoordinateFrame<T>;
    // x of the target points up, which is z here, y right, which is x here, and z back, which is -y here.
    tMatrix4<T> const matrix = Frame().CreateRotationMatrix(Frame::UP, Frame::RIGHT, Frame::BACKWARDS);
    T const zero = -T{0};
    T const expected[] = {0, 1, zero, 0, 0, 0, -1, 0, 1, 0, zero, 0, 0, 0, 0, 1};
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(matrix[i], expected[i]);
}

TYPED_TEST(CoordinateFrameTest, RotationBetweenAllValidFramesIsExact)
{
    using T = TypeParam;
    std::vector<Codes> const frames = ValidFrames();
    ASSERT_EQ(frames.size(), 48u);
    for (Codes const& from : frames)
        for (Codes const& to : frames)
        {
            tCoordinateFrame<T> const frame(from[0], from[1], from[2]);
            tCoordinateFrame<T> const target(to[0], to[1], to[2]);
            ExpectRotation(frame.CreateRotationMatrix(to[0], to[1], to[2]), from, to);
            ExpectRotation(frame.CreateRotationMatrix(target), from, to);
        }
}

TYPED_TEST(CoordinateFrameTest, RotationColumnsAreTheVectorsOfTheTargetAxes)
{
    using T = TypeParam;
    for (Codes const& from : ValidFrames())
        for (Codes const& to : ValidFrames())
        {
            tCoordinateFrame<T> const frame(from[0], from[1], from[2]);
            tMatrix4<T> const matrix = frame.CreateRotationMatrix(to[0], to[1], to[2]);
            for (std::size_t j = 0; j < 3; ++j)
                EXPECT_EQ(frame.GetVector(to[j]), tVector3<T>(matrix[j], matrix[4 + j], matrix[8 + j]))
                    << Name(from) << " to " << Name(to);
        }
}

TYPED_TEST(CoordinateFrameTest, RotationIsClassifiedFromItsAxes)
{
    using Frame = tCoordinateFrame<TypeParam>;
    EXPECT_TRUE(Frame().CreateRotationMatrix(Frame()).IsIdentity());
    tMatrix4<TypeParam> const mirror = Frame().CreateRotationMatrix(Frame::LEFT, Frame::FORWARDS, Frame::UP);
    EXPECT_TRUE(mirror.IsDiagonal() && !mirror.IsIdentity());
    // A change of hands is orthonormal for the constructor from axes, although its determinant is -1.
    tMatrix4<TypeParam> const swapped = Frame().CreateRotationMatrix(Frame::FORWARDS, Frame::RIGHT, Frame::UP);
    EXPECT_TRUE(swapped.IsOrthonormal() && !swapped.IsDiagonal());
}

TYPED_TEST(CoordinateFrameTest, RotationToAnythingButADirectionHoldsNaN)
{
    using T = TypeParam;
    using Frame = tCoordinateFrame<T>;
    tMatrix4<T> const matrix = Frame().CreateRotationMatrix(6, Frame::RIGHT, 255);
    for (std::size_t i = 0; i < 3; ++i)
    {
        EXPECT_TRUE(std::isnan(matrix[4 * i]));
        EXPECT_FALSE(std::isnan(matrix[4 * i + 1]));
        EXPECT_TRUE(std::isnan(matrix[4 * i + 2]));
    }
    ExpectRotation(matrix, {0, 2, 4}, {6, 0, 255});
}

TYPED_TEST(CoordinateFrameTest, RotationBetweenAnyFramesFollowsTheSameFormula)
{
    using T = TypeParam;
    // One frame of each kind: no direction at one, two or three axes, one pair twice.
    for (Codes const& from : {Codes{6, 2, 4}, Codes{0, 7, 8}, Codes{6, 9, 255}, Codes{1, 3, 5}})
        for (Codes const& to : Triples({0, 1, 2, 3, 4, 5, 6, 255}))
        {
            ExpectRotation(AnyFrame<T>(from).CreateRotationMatrix(to[0], to[1], to[2]), from, to);
            ExpectRotation(AnyFrame<T>(from).CreateRotationMatrix(AnyFrame<T>(to)), from, to);
        }
}

TYPED_TEST(CoordinateFrameTest, RotationFromAFrameWithOnePairTwiceIsNormalised)
{
    using T = TypeParam;
    // RIGHT has length sqrt(2) in the axes RIGHT, LEFT and UP: (1, -1, 0). It is divided by it through the reciprocal.
    tMatrix4<T> const matrix = AnyFrame<T>({0, 1, 4}).CreateRotationMatrix(0, 4, 5);
    T const reciprocal = T{1} / std::sqrt(T{2});
    T const zero = -T{0};
    T const expected[] = {reciprocal, 0, zero, 0, -reciprocal, zero, 0, 0, 0, 1, -1, 0, 0, 0, 0, 1};
    for (std::size_t i = 0; i < 16; ++i)
        ExpectSameBits(matrix[i], expected[i]);
}

using Faces = std::array<int, 6>;

/// The map, from entries that start at 77; the bytes behind them stay what they are.
template <typename T>
Faces CubeMap(tCoordinateFrame<T> const& frame, tCoordinateFrame<T> const& given)
{
    Code faces[8] = {77, 77, 77, 77, 77, 77, 77, 77};
    frame.MapCubeMap(given, faces);
    EXPECT_EQ(faces[6], 77);
    EXPECT_EQ(faces[7], 77);
    Code again[6] = {77, 77, 77, 77, 77, 77};
    frame.MapCubeMap(given.GetX(), given.GetY(), given.GetZ(), again);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(faces[i], again[i]);
    return {faces[0], faces[1], faces[2], faces[3], faces[4], faces[5]};
}

TYPED_TEST(CoordinateFrameTest, CubeMapOfTheSameFrameKeepsItsFaces)
{
    for (Codes const& codes : ValidFrames())
    {
        tCoordinateFrame<TypeParam> const frame(codes[0], codes[1], codes[2]);
        EXPECT_EQ(CubeMap(frame, frame), (Faces{0, 1, 2, 3, 4, 5})) << Name(codes);
    }
}

TYPED_TEST(CoordinateFrameTest, CubeMapGivesTheFaceOfTheSameDirection)
{
    using Frame = tCoordinateFrame<TypeParam>;
    // The default frame looks right with +x; the other looks right with +y, face 2, and up with +x.
    EXPECT_EQ(CubeMap(Frame(Frame::UP, Frame::RIGHT, Frame::FORWARDS), Frame()), (Faces{2, 3, 4, 5, 0, 1}));
    EXPECT_EQ(CubeMap(Frame(), Frame(Frame::UP, Frame::RIGHT, Frame::FORWARDS)), (Faces{4, 5, 0, 1, 2, 3}));
    EXPECT_EQ(CubeMap(Frame(), Frame(Frame::LEFT, Frame::UP, Frame::BACKWARDS)), (Faces{1, 0, 4, 5, 3, 2}));
}

TYPED_TEST(CoordinateFrameTest, CubeMapBetweenAllValidFramesMatchesDirections)
{
    using Frame = tCoordinateFrame<TypeParam>;
    for (Codes const& own : ValidFrames())
        for (Codes const& given : ValidFrames())
        {
            Faces const faces = CubeMap(Frame(own[0], own[1], own[2]), Frame(given[0], given[1], given[2]));
            for (std::size_t face = 0; face < 6; ++face)
            {
                // Odd faces lie against their axis.
                int const direction = given[face / 2] ^ static_cast<int>(face % 2);
                auto const found = static_cast<std::size_t>(faces[face]);
                ASSERT_LT(found, 6u);
                EXPECT_EQ(own[found / 2] ^ static_cast<int>(found % 2), direction)
                    << Name(given) << " in " << Name(own) << ", face " << face;
            }
        }
}

TYPED_TEST(CoordinateFrameTest, CubeMapLeavesTheEntriesOfAnythingButADirectionAlone)
{
    using Frame = tCoordinateFrame<TypeParam>;
    EXPECT_EQ(CubeMap(Frame(), Frame(6, 2, 5)), (Faces{77, 77, 2, 3, 5, 4}));
    EXPECT_EQ(CubeMap(Frame(), Frame(1, 255, 4)), (Faces{1, 0, 77, 77, 4, 5}));
    EXPECT_EQ(CubeMap(Frame(), Frame(0, 2, 7)), (Faces{0, 1, 2, 3, 77, 77}));
    // A direction that the frame does not contain has no face either.
    EXPECT_EQ(CubeMap(Frame(6, 2, 4), Frame()), (Faces{77, 77, 2, 3, 4, 5}));
    EXPECT_EQ(CubeMap(Frame(6, 8, 10), Frame()), (Faces{77, 77, 77, 77, 77, 77}));
}

TYPED_TEST(CoordinateFrameTest, CubeMapOfAFrameWithOnePairTwiceTakesTheFirstAxis)
{
    using Frame = tCoordinateFrame<TypeParam>;
    // RIGHT is +x and -y of the frame, x is looked at first; LEFT likewise. FORWARDS is no axis.
    EXPECT_EQ(CubeMap(AnyFrame<TypeParam>({0, 1, 4}), Frame()), (Faces{0, 1, 77, 77, 4, 5}));
    EXPECT_EQ(CubeMap(AnyFrame<TypeParam>({1, 0, 4}), Frame()), (Faces{1, 0, 77, 77, 4, 5}));
    EXPECT_EQ(CubeMap(AnyFrame<TypeParam>({2, 5, 4}), Frame()), (Faces{77, 77, 0, 1, 3, 2}));
}

TYPED_TEST(CoordinateFrameTest, SerialisesThreeBytes)
{
    std::ostringstream stream;
    using Frame = tCoordinateFrame<TypeParam>;
    Frame const frame(Frame::UP, Frame::LEFT, Frame::BACKWARDS);
    EXPECT_EQ(&frame.Serialise(stream), &stream);
    EXPECT_EQ(Hex(stream.str()), "04 01 03");
}

TYPED_TEST(CoordinateFrameTest, WritesAndReadsEachByteOnItsOwn)
{
    bv::test::RecordingBuffer written;
    std::ostream output(&written);
    tCoordinateFrame<TypeParam>().Serialise(output);
    EXPECT_EQ(written.sizes, (std::vector<std::streamsize>{1, 1, 1}));
    bv::test::RecordingBuffer read;
    std::istream input(&read);
    tCoordinateFrame<TypeParam> frame;
    frame.Deserialise(input);
    EXPECT_EQ(read.sizes, (std::vector<std::streamsize>{1, 1, 1}));
    ExpectCodes(frame, {0, 0, 0});
}

TYPED_TEST(CoordinateFrameTest, DeserialisesAnyThreeBytes)
{
    for (Codes const& codes : Triples({0, 1, 5, 6, 9, 10, 32, 255})) // tabulator, line feed and blank among them
    {
        std::istringstream stream(std::string(codes.begin(), codes.end()) + "x");
        tCoordinateFrame<TypeParam> frame;
        EXPECT_EQ(&frame.Deserialise(stream), &stream);
        ExpectCodes(frame, codes);
        EXPECT_EQ(stream.get(), 'x'); // nothing more was read
        std::ostringstream again;
        frame.Serialise(again);
        EXPECT_EQ(again.str(), std::string(codes.begin(), codes.end()));
    }
}

TYPED_TEST(CoordinateFrameTest, KeepsTheCodesThatAShortStreamDoesNotReach)
{
    tCoordinateFrame<TypeParam> frame(5, 3, 1);
    std::istringstream empty;
    EXPECT_EQ(&frame.Deserialise(empty), &empty);
    ExpectCodes(frame, {5, 3, 1});
    EXPECT_TRUE(empty.fail());
    EXPECT_EQ(empty.gcount(), 0);
    std::istringstream one(std::string(1, '\x0'));
    frame.Deserialise(one);
    ExpectCodes(frame, {0, 3, 1});
    EXPECT_EQ(one.gcount(), 0); // each code is a read of its own, so the last one gets nothing
    std::istringstream two("\x4\x1");
    frame.Deserialise(two);
    ExpectCodes(frame, {4, 1, 1});
    EXPECT_EQ(two.gcount(), 0);
    std::istringstream failed("\x1\x2\x3");
    failed.setstate(std::ios::failbit);
    frame.Deserialise(failed);
    ExpectCodes(frame, {4, 1, 1});
}

} // namespace
