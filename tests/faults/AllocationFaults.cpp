#include <array>
#include <cmath>
#include <cstddef>
#include <exception>
#include <functional>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "bv/Environment.h"
#include "bv/Exception.h"
#include "bv/FileIOException.h"
#include "bv/InvalidArgumentException.h"
#include "bv/InvalidObjectException.h"
#include "bv/NotImplementedException.h"
#include "bv/ObjectCreationException.h"
#include "bv/ObjectDeletionException.h"
#include "bv/OutOfMemoryException.h"
#include "bv/String.h"
#include "bv/ThreadExitException.h"
#include "bv/maths/ArithmeticException.h"
#include "bv/maths/Batch.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Integer.h"
#include "bv/maths/MathsException.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/Percentage.h"
#include "bv/maths/View.h"
#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tQuaternion.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tTuple3.h"
#include "bv/maths/tVector2.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/Environment.h"
#include "support/FailingAllocations.h"
#include "support/Precisions.h"

// Every allocation of every operation that allocates fails, once and for good.

namespace
{

using namespace bv;
using namespace bv::maths;
using namespace bv::test;

constexpr char LONG_TEXT[] = "a text that is far too long for the short-string buffer of any standard library";
constexpr wchar_t LONG_WIDE_TEXT[] = L"a text that is far too long for the short-string buffer of any standard library";

/// How an action ended: well, for want of memory, or with an exception of the library.
enum class End
{
    Well,
    NoMemory,
    Raised
};

using Action = std::function<void()>;

/// Runs an action that may raise this exception of the library, and no other.
template <typename Expected>
End Try(Action const& action)
{
    try
    {
        action();
        return End::Well;
    }
    catch (std::bad_alloc const&)
    {
        return End::NoMemory;
    }
    catch (Expected const& exception)
    {
        EXPECT_TRUE(typeid(exception) == typeid(Expected));
        // Its texts can be asked for and shown, whatever became of them.
        FixedStream stream;
        stream << exception;
        EXPECT_FALSE(stream.Text().empty());
        return End::Raised;
    }
}

/// Lets every allocation of the action fail in its turn, alone and with all that follow, and expects that nothing is
/// left behind, that the action ends as it ought to or for want of memory, and what `isKept` says.
template <typename Expected>
void ExpectEveryFailurePasses(End expected, Action const& action, std::function<bool()> const& isKept)
{
    ASSERT_EQ(Try<Expected>(action), expected); // and whatever is made once for all, is made
    std::size_t const count = Measure([&] { EXPECT_EQ(Try<Expected>(action), expected); }).calls;
    EXPECT_GE(count, 1U) << "allocates nothing";
    for (std::size_t i = 0; i < count; ++i)
    {
        for (bool const forGood : {false, true})
        {
            End end = End::Well;
            Use const use = Measure(
                [&]
                {
                    if (forGood)
                    {
                        LittleMemory const memory(i);
                        end = Try<Expected>(action);
                    }
                    else
                    {
                        OneFailure const memory(i);
                        end = Try<Expected>(action);
                    }
                });
            EXPECT_EQ(use.blocks, 0) << "allocation " << i;
            EXPECT_TRUE(end == expected || end == End::NoMemory) << "allocation " << i;
            EXPECT_TRUE(isKept()) << "allocation " << i;
        }
    }
    NoMemoryForExceptions const memory;
    Use const use = Measure([&] { EXPECT_EQ(Try<Expected>(action), expected); });
    EXPECT_EQ(use.blocks, 0);
    EXPECT_TRUE(isKept());
}

/// An operation that raises an exception of exactly this class, and changes nothing.
template <typename Expected>
void ExpectRaised(
    Action const& action, std::function<bool()> const& isKept = [] { return true; })
{
    ExpectEveryFailurePasses<Expected>(End::Raised, action, isKept);
}

/// A value whose text comes whole, or not at all.
template <typename Value>
void ExpectTextWholeOrNone(Value const& value, std::string_view whole)
{
    ExpectEveryFailurePasses<Exception>(
        End::Well,
        [&]
        {
            FixedStream stream;
            try
            {
                stream << value;
            }
            catch (std::bad_alloc const&)
            {
                EXPECT_EQ(stream.Text(), "");
                throw;
            }
            EXPECT_EQ(stream.Text(), whole);
        },
        [] { return true; });
}

template <typename T>
class AllocationFaults : public testing::Test
{
};
TYPED_TEST_SUITE(AllocationFaults, bv::test::Precisions);

TYPED_TEST(AllocationFaults, ATextIsWholeOrThereIsNone)
{
    using T = TypeParam;
    // Longer than what any standard library keeps within the string itself.
    T const third = T{1} / 3;
    T const small = -third / 1024 / 1024;
    ExpectTextWholeOrNone(tTuple2<T>(small, small), "-3.17891e-07, -3.17891e-07");
    ExpectTextWholeOrNone(tTuple3<T>(third, -third, third), "0.333333, -0.333333, 0.333333");
    ExpectTextWholeOrNone(tVector2<T>(small, small), "-3.17891e-07, -3.17891e-07");
    ExpectTextWholeOrNone(tVector3<T>(third, third, third), "0.333333, 0.333333, 0.333333");
    ExpectTextWholeOrNone(tQuaternion<T>(third, third, third, third), "0.333333, 0.333333, 0.333333, 0.333333");
    ExpectTextWholeOrNone(tPlane<T>({T(-0.6), T(-0.8), 0}, T{-1234567}), "-0.6, -0.8, 0, -1.23457e+06");
    T const elements[16] = {third, 0, 0, 1, 0, third, 0, 2, 0, 0, third, 3, 0, 0, 0, 1};
    ExpectTextWholeOrNone(tMatrix4<T>(elements),
                          "0.333333\t0\t0\t1\n0\t0.333333\t0\t2\n0\t0\t0.333333\t3\n0\t0\t0\t1\n");
}

TYPED_TEST(AllocationFaults, TheTextOfAMatrixOrPlaneIsWholeOrThereIsNone)
{
    using T = TypeParam;
    T const elements[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, T{0.125}};
    tMatrix4<T> const matrix(elements);
    tPlane<T> const plane({T(0.6), T(0.8), 0}, T{1.0 / 1024 / 1024});
    auto const expectWhole = [](auto const& value, char const* whole)
    {
        ExpectEveryFailurePasses<Exception>(
            End::Well, [&] { EXPECT_EQ(static_cast<std::string>(value), whole); }, [] { return true; });
    };
    expectWhole(matrix, "1\t2\t3\t4\n5\t6\t7\t8\n9\t10\t11\t12\n13\t14\t15\t0.125\n");
    expectWhole(plane, "0.6, 0.8, 0, 9.53674e-07");
}

TYPED_TEST(AllocationFaults, WhatIsRefusedChangesNothing)
{
    using T = TypeParam;
    tMatrix4<T> singular(std::array<T, 16>{}.data());
    auto const isZero = [&] { return singular(0) == 0 && singular(15) == 0; };
    ExpectRaised<MatrixException>([&] { singular.Invert(); }, isZero);
    ExpectRaised<MatrixException>([&] { static_cast<void>(singular.Inverted()); }, isZero);
    ExpectRaised<InvalidArgumentException>(
        [&] { static_cast<void>(tMatrix4<T>::PerspectiveProjection(1, 1, 0, 1, 1, 2)); });

    tVector3<T> vector(1, 2, 3);
    auto const isKept = [&] { return vector.x == 1 && vector.y == 2 && vector.z == 3; };
    ExpectRaised<DivideByZeroException>([&] { vector.Transform(singular); }, isKept);
    ExpectRaised<DivideByZeroException>([&] { static_cast<void>(vector.Transformed(singular)); }, isKept);

    ExpectRaised<InvalidArgumentException>([] { static_cast<void>(tAreaAABB<T>({0, 0}, {1, 1}).GetLength(2)); });
    ExpectRaised<InvalidArgumentException>(
        [] {
            static_cast<void>(tVolumeAABB<T>({0, 0, 0}, {1, 1, 1}).GetLength(3));
        });
    ExpectRaised<InvalidArgumentException>([] { static_cast<void>(tVolumeAABB<T>({0, 0, 0}, {1, 1, 1}).GetArea(3)); });

    tPlane<T> plane({0, 1, 0}, 5);
    ExpectRaised<InvalidArgumentException>(
        [&] {
            plane.SetNormal({3, 4, 5});
        },
        [&] { return plane.GetNormal().y == 1 && plane.GetOffset() == 5; });
    ExpectRaised<DivideByZeroException>([&] { static_cast<void>(plane.GetIntersection({}, {1, 0, 0})); });

    using Frame = tCoordinateFrame<T>;
    Frame frame(Frame::RIGHT, Frame::UP, Frame::BACKWARDS);
    ExpectRaised<InvalidArgumentException>([] { Frame(Frame::UP, Frame::UP, Frame::UP); });
    // As its header says, this one holds the wrong directions.
    ExpectRaised<InvalidArgumentException>([&] { frame.Set(Frame::UP, Frame::UP, Frame::LEFT); },
                                           [&] { return frame.GetX() == Frame::UP && frame.GetZ() == Frame::LEFT; });
}

TYPED_TEST(AllocationFaults, WrongViewsAreRefused)
{
    using T = TypeParam;
    ExpectRaised<InvalidArgumentException>([] { static_cast<void>(PerspectiveFromTangent(T{0}, 1, 1, 2)); });
    ExpectRaised<InvalidArgumentException>([] { static_cast<void>(PerspectiveFromFieldOfView(T{4}, 1, 1, 2)); });
    ExpectRaised<InvalidArgumentException>(
        [] { static_cast<void>(bv::maths::PerspectiveProjection(T{0}, 0, 0, 1, 1, 2)); });
    ExpectRaised<InvalidArgumentException>(
        [] { static_cast<void>(bv::maths::OrthographicProjection(T{0}, 0, 0, 1, 1, 2)); });
}

TYPED_TEST(AllocationFaults, SpansOfDifferentLengthsAreRefused)
{
    using T = TypeParam;
    std::vector<tVector3<T>> const points(5);
    std::vector<tVector3<T>> results(4, tVector3<T>(7, 7, 7));
    tMatrix4<T> const matrix;
    ExpectRaised<InvalidArgumentException>([&] { TransformPoints(matrix, points, results); },
                                           [&] { return results.front().x == 7 && results.back().z == 7; });
}

TEST(PlainAllocationFaults, NumbersThatCannotBeComputedAreRefused)
{
    ExpectRaised<InvalidArgumentException>([] { static_cast<void>(IntLog2(0)); });
    Percentage part(1, 2);
    auto const isHalf = [&] { return part.GetNumerator() == 1 && part.GetDenominator() == 2; };
    ExpectRaised<DivideByZeroException>([&] { part /= 0U; }, isHalf);
    ExpectRaised<DivideByZeroException>([&] { part /= Percentage(0, 1); }, isHalf);
    ExpectRaised<DivideByZeroException>([] { Percentage(0, 0); });
}

TEST(PlainAllocationFaults, TextsOfTheEnvironmentComeWholeOrNotAtAll)
{
    SetVariable("BV_TEST_FAULTS", LONG_TEXT);
    ExpectEveryFailurePasses<Exception>(
        End::Well, [] { EXPECT_STREQ(BvGetEnv("BV_TEST_FAULTS").ToCharArray(), LONG_TEXT); }, [] { return true; });
}

TEST(PlainAllocationFaults, AStringIsAsItWasWhenAnOperationFails)
{
    String const source = LONG_TEXT;
    String target = "old";
    std::function<bool()> const isOld = [&] { return std::string_view(target.ToCharArray()) == "old"; };
    auto const expectPasses = [&](Action const& action)
    { ExpectEveryFailurePasses<Exception>(End::Well, action, isOld); };
    expectPasses([] { String(); });
    expectPasses([&] { String copy(source); });
    expectPasses([] { String{LONG_TEXT}; });
    expectPasses([] { String{LONG_WIDE_TEXT}; });
    expectPasses([&] { static_cast<void>(target + source); });
    expectPasses([&] { static_cast<void>(String(source).ToWCharArray()); });
    for (int change = 0; change < 4; ++change)
    {
        expectPasses(
            [&]
            {
                String copy(target);
                try
                {
                    switch (change)
                    {
                    case 0:
                        copy = source;
                        break;
                    case 1:
                        copy = LONG_TEXT;
                        break;
                    case 2:
                        copy = LONG_WIDE_TEXT;
                        break;
                    default:
                        copy += source;
                        break;
                    }
                }
                catch (std::bad_alloc const&)
                {
                    EXPECT_STREQ(copy.ToCharArray(), "old");
                    throw;
                }
            });
    }
}

template <typename T>
class ExceptionFaults : public testing::Test
{
};
using Exceptions =
    testing::Types<Exception, FileIOException, InvalidArgumentException, InvalidObjectException,
                   ObjectCreationException, ObjectDeletionException, OutOfMemoryException, ThreadExitException,
                   MathsException, ArithmeticException, DivideByZeroException, MatrixException>;
TYPED_TEST_SUITE(ExceptionFaults, Exceptions);

TYPED_TEST(ExceptionFaults, EveryWayToMakeThrowAndCopyOnePasses)
{
    using Own = TypeParam;
    String const text = LONG_TEXT;
    Own const source(text, text, 7, text);
    std::function<bool()> const isKept = [&]
    { return source.LineNumber() == 7 && source.Message() == text && source.FunctionName() == text; };
    auto const expectPasses = [&](Action const& action)
    { ExpectEveryFailurePasses<Exception>(End::Well, action, isKept); };
    expectPasses([&] { Own(text, text, 7, text); });
    expectPasses([&] { Own{text}; });
    expectPasses([&] { Own copy(source); });
    expectPasses([&] { Own converted(static_cast<Exception const&>(source)); });
    ExpectRaised<Own>([&] { source.Rethrow(); }, isKept);
    ExpectRaised<Own>([&] { throw Own(text, text, 7, text); });
    if constexpr (!std::is_same_v<Own, Exception>)
        ExpectRaised<Own>([&] { Own::Throw(source); }, isKept);
}

TYPED_TEST(ExceptionFaults, AnAssignmentThatFailsLeavesTheTargetAsItWas)
{
    using Own = TypeParam;
    String const text = LONG_TEXT;
    Own const source(text, text, 7, text);
    Own const old("old", "file", 1, "function");
    ExpectEveryFailurePasses<Exception>(
        End::Well,
        [&]
        {
            Own target(old);
            bool const isComplete = target.LineNumber() == 1;
            try
            {
                target = source;
            }
            catch (std::bad_alloc const&)
            {
                EXPECT_EQ(target.LineNumber(), isComplete ? 1U : 0U);
                EXPECT_STREQ(target.Message().ToCharArray(), isComplete ? "old" : "");
                throw;
            }
        },
        [] { return true; });
}

TYPED_TEST(ExceptionFaults, ItsTextIsShownWhenNoMemoryIsLeft)
{
    TypeParam const exception("message that is too long for the short-string buffer", "file", 7, "function");
    FixedStream stream;
    {
        LittleMemory const memory(0);
        stream.width(100); // is not kept, and does not remain
        stream << exception << '!';
    }
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.Text(), "'message that is too long for the short-string buffer' - file (7) : function.!");
}

TYPED_TEST(ExceptionFaults, ItIsCaughtAndShownWhenNoMemoryIsLeft)
{
    String const text = LONG_TEXT;
    bool isCaught = false;
    FixedStream stream;
    {
        LittleMemory const memory(0);
        try
        {
            throw TypeParam(text);
        }
        catch (TypeParam const& exception)
        {
            isCaught = true;
            stream << exception;
        }
        catch (std::bad_alloc const&)
        {
        }
    }
    EXPECT_TRUE(isCaught);
    EXPECT_EQ(stream.Text(), "'' - .");
}

TEST(PlainAllocationFaults, AnExceptionWithoutArgumentsPassesToo)
{
    ExpectRaised<NotImplementedException>([] { throw NotImplementedException(); });
    ExpectRaised<NotImplementedException>([] { NotImplementedException().Rethrow(); });
}

} // namespace
