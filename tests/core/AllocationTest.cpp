#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <typeinfo>

#include <gtest/gtest.h>

#include "bv/Exception.h"
#include "bv/FileIOException.h"
#include "bv/NotImplementedException.h"
#include "bv/String.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MatrixException.h"
#include "support/FailingAllocations.h"

namespace
{

using namespace bv;
using namespace bv::maths;
using namespace bv::test;

constexpr char LONG_TEXT[] = "a text that is far too long for the short-string buffer of any standard library";
constexpr wchar_t LONG_WIDE_TEXT[] = L"a text that is far too long for the short-string buffer of any standard library";

TEST(StringAllocationTest, AShortTextCostsOneAllocation)
{
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    for (auto const& make :
         std::initializer_list<std::function<String*()>>{
             [&] { return new (place) String; },
             [&] { return new (place) String("short"); },
             [&] { return new (place) String(""); },
             [&] { return new (place) String("\xFF"); },
             [&] { return new (place) String(static_cast<char const*>(nullptr)); },
             [&] { return new (place) String(static_cast<wchar_t const*>(nullptr)); },
         })
    {
        Use const use = Measure([&] { text = make(); });
        EXPECT_EQ(use.calls, 1U) << text->ToCharArray();
        EXPECT_EQ(use.blocks, 1) << text->ToCharArray();
        EXPECT_EQ(Measure([&] { text->~String(); }).blocks, -1);
    }
}

TEST(StringAllocationTest, ALongTextCostsASecondAllocation)
{
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    Use const use = Measure([&] { text = new (place) String(LONG_TEXT); });
    EXPECT_EQ(use.calls, 2U);
    EXPECT_EQ(use.blocks, 2);
    EXPECT_EQ(Measure([&] { text->~String(); }).blocks, -2);
}

TEST(StringAllocationTest, ACopyCostsWhatATextOfThatLengthCosts)
{
    String const shortText = "short";
    String const longText = LONG_TEXT;
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    EXPECT_EQ(Measure([&] { text = new (place) String(shortText); }).calls, 1U);
    EXPECT_EQ(Measure([&] { text->~String(); }).blocks, -1);
    EXPECT_EQ(Measure([&] { text = new (place) String(longText); }).calls, 2U);
    EXPECT_EQ(Measure([&] { text->~String(); }).blocks, -2);
}

TEST(StringAllocationTest, ACopyLeavesTheWideFormBehind)
{
    String const source = LONG_TEXT;
    static_cast<void>(source.ToWCharArray());
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    EXPECT_EQ(Measure([&] { text = new (place) String(source); }).blocks, 2);
    text->~String();
}

TEST(StringAllocationTest, AWideTextLeavesNothingElseBehind)
{
    alignas(String) std::byte place[sizeof(String)];
    String* text = nullptr;
    EXPECT_EQ(Measure([&] { text = new (place) String(L"short"); }).blocks, 1);
    text->~String();
    EXPECT_EQ(Measure([&] { text = new (place) String(LONG_WIDE_TEXT); }).blocks, 2);
    text->~String();
    wchar_t const lone[] = {L'a', static_cast<wchar_t>(0xD83D), 0};
    EXPECT_EQ(Measure([&] { text = new (place) String(lone); }).blocks, 1);
    EXPECT_TRUE(text->IsEmpty());
    text->~String();
}

TEST(StringAllocationTest, EveryCallForTheWideFormAllocatesAnewAndFreesTheOneBefore)
{
    String const text = LONG_TEXT;
    Use const first = Measure([&] { static_cast<void>(text.ToWCharArray()); });
    EXPECT_EQ(first.blocks, 2); // the std::wstring and its units
    Use const second = Measure([&] { static_cast<void>(text.ToWCharArray()); });
    EXPECT_EQ(second.blocks, 0);
    EXPECT_EQ(second.calls, first.calls);
}

TEST(StringAllocationTest, ClearFreesTheWideForm)
{
    String text = LONG_TEXT;
    static_cast<void>(text.ToWCharArray());
    Use const use = Measure([&] { text.Clear(); });
    EXPECT_EQ(use.blocks, -2);
    EXPECT_EQ(use.calls, 0U);
    EXPECT_EQ(Measure([&] { text.Clear(); }).blocks, 0);
}

TEST(StringAllocationTest, AssignmentKeepsTheWideForm)
{
    String text = LONG_TEXT;
    String const other = "other";
    static_cast<void>(text.ToWCharArray());
    EXPECT_EQ(Measure([&] { text = other; }).blocks, 0);
    EXPECT_EQ(Measure([&] { text += other; }).blocks, 0);
    EXPECT_EQ(Measure([&] { text = "narrow"; }).blocks, 0);
    EXPECT_EQ(Measure([&] { text = L"wide"; }).blocks, 0);
    EXPECT_EQ(Measure([&] { text.Clear(); }).blocks, -2);
}

TEST(StringAllocationTest, TheDestructorFreesTheTextAndTheWideForm)
{
    EXPECT_EQ(Measure(
                  []
                  {
                      String const text = LONG_TEXT;
                      static_cast<void>(text.ToWCharArray());
                  })
                  .blocks,
              0);
}

TEST(StringAllocationTest, QueriesAllocateNothing)
{
    String const text = LONG_TEXT;
    String const other = "other";
    bool any = false;
    EXPECT_EQ(Measure(
                  [&]
                  {
                      any = text == other || text != text || text < text || text > text || text.Contains(other) ||
                            text.IsEmpty() || text.ToCharArray() == nullptr;
                  })
                  .calls,
              0U);
    EXPECT_FALSE(any);
}

TEST(StringAllocationTest, MemoryExhaustionPassesOutOfTheConstructors)
{
    String const source = LONG_TEXT;
    ExpectEachFailurePasses(1, [] { String const text; });
    ExpectEachFailurePasses(2, [] { String const text = LONG_TEXT; });
    ExpectEachFailurePasses(2, [] { String const text = LONG_WIDE_TEXT; });
    ExpectEachFailurePasses(2, [&] { String const text = source; });
}

TEST(StringAllocationTest, MemoryExhaustionLeavesTheTargetOfAChangeAsItWas)
{
    String const source = LONG_TEXT;
    auto const expectKept = [](std::size_t least, auto&& change)
    {
        String text = "old";
        ExpectEachFailurePasses(
            least, [&] { change(text); }, [&] { EXPECT_STREQ(text.ToCharArray(), "old"); });
    };
    expectKept(1, [&](String& text) { text = source; });
    expectKept(1, [](String& text) { text = LONG_TEXT; });
    expectKept(1, [](String& text) { text = LONG_WIDE_TEXT; });
    expectKept(1, [&](String& text) { text += source; });
    expectKept(2, [&](String& text) { static_cast<void>(text + source); });
}

TEST(StringAllocationTest, MemoryExhaustionLeavesAStringThatIsAppendedToItselfAsItWas)
{
    String text = LONG_TEXT;
    ExpectEachFailurePasses(
        1, [&] { text += text; }, [&] { EXPECT_STREQ(text.ToCharArray(), LONG_TEXT); });
    EXPECT_EQ(text, (std::string(LONG_TEXT) + LONG_TEXT).c_str());
}

TEST(StringAllocationTest, MemoryExhaustionPassesOutOfTheWideConversion)
{
    String const text = LONG_TEXT;
    ExpectEachFailurePasses(2,
                            [&]
                            {
                                String const copy = text;
                                static_cast<void>(copy.ToWCharArray());
                            });
    EXPECT_STREQ(text.ToWCharArray(), LONG_WIDE_TEXT);
    // The wide form of the call before is freed first, and stays away when there is no memory for the new one.
    bool failed = false;
    Use const use = Measure(
        [&]
        {
            LittleMemory const memory(0);
            try
            {
                static_cast<void>(text.ToWCharArray());
            }
            catch (std::bad_alloc const&)
            {
                failed = true;
            }
        });
    EXPECT_TRUE(failed);
    EXPECT_EQ(use.blocks, -2);
    EXPECT_STREQ(text.ToCharArray(), LONG_TEXT);
    EXPECT_STREQ(text.ToWCharArray(), LONG_WIDE_TEXT);
}

TEST(ExceptionAllocationTest, ADestroyedExceptionLeavesNothingBehind)
{
    EXPECT_EQ(Measure([] { Exception(LONG_WIDE_TEXT, LONG_TEXT, 1, LONG_TEXT); }).blocks, 0);
    EXPECT_EQ(Measure([] { DivideByZeroException(LONG_WIDE_TEXT, LONG_TEXT, 1, LONG_TEXT); }).blocks, 0);
    EXPECT_EQ(Measure([] { MatrixException const exception(LONG_WIDE_TEXT); }).blocks, 0);
    EXPECT_EQ(Measure([] { NotImplementedException const exception; }).blocks, 0);
    EXPECT_EQ(Measure([] { std::unique_ptr<std::exception>(new FileIOException(LONG_TEXT)); }).blocks, 0);
}

TEST(ExceptionAllocationTest, CopiesAndRethrownObjectsLeaveNothingBehind)
{
    MatrixException const source(LONG_WIDE_TEXT, LONG_TEXT, 1, LONG_TEXT);
    EXPECT_EQ(Measure(
                  [&]
                  {
                      MatrixException copy(source);
                      FileIOException converted(copy);
                      converted.Swap(copy);
                      try
                      {
                          source.Rethrow();
                      }
                      catch (MatrixException const& caught)
                      {
                          copy = caught;
                      }
                  })
                  .blocks,
              0);
}

TEST(ExceptionAllocationTest, AssignmentFreesThePrivateObjectThatItReplaces)
{
    Exception target(LONG_WIDE_TEXT, LONG_TEXT, 1, LONG_TEXT);
    Exception const source(LONG_WIDE_TEXT, LONG_TEXT, 2, LONG_TEXT);
    EXPECT_EQ(Measure([&] { target = source; }).blocks, 0);
    EXPECT_EQ(target.LineNumber(), 2U);
    MatrixException matrixTarget(LONG_WIDE_TEXT, LONG_TEXT, 1, LONG_TEXT);
    MatrixException const matrixSource(LONG_WIDE_TEXT, LONG_TEXT, 2, LONG_TEXT);
    EXPECT_EQ(Measure([&] { matrixTarget = matrixSource; }).blocks, 0);
    EXPECT_EQ(Measure([&] { matrixTarget = matrixTarget; }).blocks, 0);
    EXPECT_EQ(matrixTarget.LineNumber(), 2U);
}

TEST(ExceptionAllocationTest, MemoryExhaustionWhileTheTextsAreBuiltPasses)
{
    String const text = LONG_TEXT;
    // The first allocation is the non-throwing one. The four texts follow, with two allocations each.
    for (std::size_t count = 1;; ++count)
    {
        bool failed = false;
        Use const use = Measure(
            [&]
            {
                LittleMemory const memory(count);
                try
                {
                    FileIOException const exception(text, text, 1, text);
                }
                catch (std::bad_alloc const&)
                {
                    failed = true;
                }
            });
        EXPECT_EQ(use.blocks, 0) << "after " << count << " allocations";
        if (!failed)
        {
            EXPECT_GE(count, 9U);
            return;
        }
        ASSERT_LT(count, 1000U);
    }
}

TEST(ExceptionAllocationTest, MemoryExhaustionInAnAssignmentLeavesTheTargetAsItWas)
{
    String const text = LONG_TEXT;
    Exception const source(text, text, 2, text);
    Exception target("old", "file", 1, "function");
    for (std::size_t count = 1; target.LineNumber() == 1; ++count)
    {
        LittleMemory const memory(count);
        try
        {
            target = source;
        }
        catch (std::bad_alloc const&)
        {
            EXPECT_STREQ(target.Message().ToCharArray(), "old");
            EXPECT_STREQ(target.Where().ToCharArray(), "file (1) : function");
        }
        ASSERT_LT(count, 1000U);
    }
    EXPECT_STREQ(target.Message().ToCharArray(), LONG_TEXT);
}

/// Expects what an exception shows that had no memory for its texts.
void ExpectWithoutTexts(Exception const& exception)
{
    EXPECT_TRUE(exception.Message().IsEmpty());
    EXPECT_TRUE(exception.Filename().IsEmpty());
    EXPECT_EQ(exception.LineNumber(), 0U);
    EXPECT_TRUE(exception.FunctionName().IsEmpty());
    EXPECT_TRUE(exception.Where().IsEmpty());
    EXPECT_STREQ(exception.what(), "Brevane exception");
    FixedStream stream;
    stream << exception;
    EXPECT_EQ(stream.Text(), "'' - .");
}

/// Expects what a copy of such an exception shows.
void ExpectUnknownLocation(Exception const& exception)
{
    EXPECT_TRUE(exception.Message().IsEmpty());
    EXPECT_TRUE(exception.Filename().IsEmpty());
    EXPECT_EQ(exception.LineNumber(), 0U);
    EXPECT_TRUE(exception.FunctionName().IsEmpty());
    EXPECT_STREQ(exception.Where().ToCharArray(), "<unknown location>");
    EXPECT_STREQ(exception.what(), "Brevane exception");
    FixedStream stream;
    stream << exception;
    EXPECT_EQ(stream.Text(), "'' - <unknown location>.");
}

template <typename T>
T MakeWithoutTexts()
{
    NoMemoryForExceptions const noMemory;
    return T("message", "file", 7, "function");
}

TEST(ExceptionAllocationTest, WithoutMemoryForItsTextsAnExceptionIsStillConstructed)
{
    ExpectWithoutTexts(MakeWithoutTexts<Exception>());
    ExpectWithoutTexts(MakeWithoutTexts<DivideByZeroException>());
    NoMemoryForExceptions const noMemory;
    ExpectWithoutTexts(Exception("message"));
    ExpectWithoutTexts(MatrixException(L"message"));
    ExpectWithoutTexts(NotImplementedException());
}

TEST(ExceptionAllocationTest, AllExceptionsWithoutTextsShareOneEmptyString)
{
    Exception const first = MakeWithoutTexts<Exception>();
    MatrixException const second = MakeWithoutTexts<MatrixException>();
    String const* const shared = &first.Message();
    EXPECT_EQ(&first.Filename(), shared);
    EXPECT_EQ(&first.FunctionName(), shared);
    EXPECT_EQ(&first.Where(), shared);
    EXPECT_EQ(&second.Message(), shared);
    EXPECT_EQ(&second.Filename(), shared);
    EXPECT_EQ(&second.FunctionName(), shared);
    EXPECT_EQ(&second.Where(), shared);
}

TEST(ExceptionAllocationTest, AnExceptionWithoutTextsIsReadAndWrittenWithoutMemory)
{
    String const text = "text";
    FixedStream stream;
    bool empty = false;
    {
        LittleMemory const memory(0);
        Exception const exception(text, text, 7, text);
        empty = exception.Message().IsEmpty() && exception.Filename().IsEmpty() && exception.LineNumber() == 0 &&
                exception.FunctionName().IsEmpty() && exception.Where().IsEmpty();
        stream << exception;
    }
    EXPECT_TRUE(empty);
    EXPECT_EQ(stream.Text(), "'' - .");
}

TEST(ExceptionAllocationTest, WithoutAnyMemoryAnExceptionIsStillConstructed)
{
    String const text = "text";
    std::optional<Exception> located;
    std::optional<Exception> message;
    std::optional<DivideByZeroException> subclass;
    std::optional<NotImplementedException> missing;
    std::optional<DivideByZeroException> copy;
    bool failed = false;
    {
        LittleMemory const memory(0);
        try
        {
            located.emplace(text, text, 7U, text);
            message.emplace(text);
            subclass.emplace(text);
            missing.emplace();
            copy.emplace(*subclass);
        }
        catch (std::bad_alloc const&)
        {
            failed = true;
        }
    }
    ASSERT_FALSE(failed);
    ExpectWithoutTexts(*located);
    ExpectWithoutTexts(*message);
    ExpectWithoutTexts(*subclass);
    ExpectWithoutTexts(*missing);
    ExpectWithoutTexts(*copy);
}

TEST(ExceptionAllocationTest, WithoutMemoryForItsTextsAnExceptionIsStillThrownAndCaughtByItsClass)
{
    bool caught = false;
    try
    {
        throw MakeWithoutTexts<DivideByZeroException>();
    }
    catch (ArithmeticException const& exception)
    {
        caught = true;
        EXPECT_TRUE(typeid(exception) == typeid(DivideByZeroException));
        ExpectWithoutTexts(exception);
    }
    EXPECT_TRUE(caught);
}

TEST(ExceptionAllocationTest, ACopyOfAnExceptionWithoutTextsHasAnUnknownLocation)
{
    MatrixException const source = MakeWithoutTexts<MatrixException>();
    ExpectUnknownLocation(MatrixException(source));
    ExpectUnknownLocation(FileIOException(static_cast<Exception const&>(source)));
    ExpectUnknownLocation(Exception(source));
    Exception assigned("old", "file", 1, "function");
    assigned = source;
    ExpectUnknownLocation(assigned);
    ExpectWithoutTexts(source);
}

TEST(ExceptionAllocationTest, ACopyThatFindsNoMemoryHasNoTexts)
{
    MatrixException const source("message", "file", 7, "function");
    MatrixException const withoutTexts = MakeWithoutTexts<MatrixException>();
    NoMemoryForExceptions const noMemory;
    ExpectWithoutTexts(MatrixException(source));
    ExpectWithoutTexts(FileIOException(static_cast<Exception const&>(source)));
    ExpectWithoutTexts(MatrixException(withoutTexts));
    Exception assigned(source);
    assigned = source;
    ExpectWithoutTexts(assigned);
    EXPECT_STREQ(source.Message().ToCharArray(), "message");
}

TEST(ExceptionAllocationTest, AnExceptionWithoutTextsIsRethrownWithItsClass)
{
    MatrixException const source = MakeWithoutTexts<MatrixException>();
    bool caught = false;
    try
    {
        source.Rethrow();
    }
    catch (Exception const& exception)
    {
        caught = true;
        EXPECT_TRUE(typeid(exception) == typeid(MatrixException));
        ExpectUnknownLocation(exception);
    }
    EXPECT_TRUE(caught);
}

TEST(ExceptionAllocationTest, SwapExchangesTextsWithAnExceptionThatHasNone)
{
    MatrixException with("message", "file", 7, "function");
    FileIOException without = MakeWithoutTexts<FileIOException>();
    with.Swap(without);
    ExpectWithoutTexts(with);
    EXPECT_STREQ(without.Message().ToCharArray(), "message");
    EXPECT_STREQ(without.Where().ToCharArray(), "file (7) : function");
}

} // namespace
