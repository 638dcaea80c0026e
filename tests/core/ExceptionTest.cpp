#include "bv/Exception.h"

#include <functional>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <gtest/gtest.h>

#include "bv/FileIOException.h"
#include "bv/InvalidArgumentException.h"
#include "bv/InvalidObjectException.h"
#include "bv/NotImplementedException.h"
#include "bv/ObjectCreationException.h"
#include "bv/ObjectDeletionException.h"
#include "bv/OutOfMemoryException.h"
#include "bv/ThreadExitException.h"
#include "bv/maths/ArithmeticException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MathsException.h"
#include "bv/maths/MatrixException.h"
#include "support/Throws.h"

namespace
{

using namespace bv;
using namespace bv::maths;
using bv::test::ExpectThrows;

using ThrowFunction = void (*)(Exception const&);

// The tree: a conversion to a base is possible when, and only when, the base is on the way to the root.
template <typename Derived, typename... Bases>
constexpr bool DERIVES = (std::is_convertible_v<Derived*, Bases*> && ...);
static_assert(DERIVES<Exception, std::exception>);
static_assert(DERIVES<FileIOException, Exception> && DERIVES<InvalidArgumentException, Exception>);
static_assert(DERIVES<InvalidObjectException, Exception> && DERIVES<NotImplementedException, Exception>);
static_assert(DERIVES<ObjectCreationException, Exception> && DERIVES<ObjectDeletionException, Exception>);
static_assert(DERIVES<OutOfMemoryException, Exception> && DERIVES<ThreadExitException, Exception>);
static_assert(DERIVES<MathsException, Exception> && DERIVES<ArithmeticException, MathsException, Exception>);
static_assert(DERIVES<DivideByZeroException, ArithmeticException, MathsException, Exception>);
static_assert(DERIVES<MatrixException, MathsException, Exception>);

// And no other class of the family is: so many of its classes lie between the class and the root, both included.
template <typename T, typename... Family>
constexpr int CountBases()
{
    return (0 + ... + static_cast<int>(std::is_base_of_v<Family, T>));
}
template <typename T>
constexpr int DEPTH =
    CountBases<T, Exception, FileIOException, InvalidArgumentException, InvalidObjectException, NotImplementedException,
               ObjectCreationException, ObjectDeletionException, OutOfMemoryException, ThreadExitException,
               MathsException, ArithmeticException, DivideByZeroException, MatrixException>();
static_assert(DEPTH<Exception> == 1);
static_assert(DEPTH<FileIOException> == 2 && DEPTH<InvalidArgumentException> == 2);
static_assert(DEPTH<InvalidObjectException> == 2 && DEPTH<NotImplementedException> == 2);
static_assert(DEPTH<ObjectCreationException> == 2 && DEPTH<ObjectDeletionException> == 2);
static_assert(DEPTH<OutOfMemoryException> == 2 && DEPTH<ThreadExitException> == 2);
static_assert(DEPTH<MathsException> == 2 && DEPTH<ArithmeticException> == 3);
static_assert(DEPTH<DivideByZeroException> == 4 && DEPTH<MatrixException> == 3);

// Only the classes that have subclasses offer their subclasses a throw function, and nobody else.
template <typename T>
constexpr bool TAKES_THROW_FUNCTION =
    std::is_constructible_v<T, String const&, String const&, unsigned int, String const&, ThrowFunction> ||
    std::is_constructible_v<T, String const&, ThrowFunction>;

static_assert(std::is_same_v<decltype(std::declval<Exception const&>().Message()), String const&>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().Filename()), String const&>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().LineNumber()), unsigned int>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().FunctionName()), String const&>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().Where()), String const&>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().what()), char const*>);
static_assert(std::is_same_v<decltype(std::declval<Exception&>().Swap(std::declval<Exception&>())), void>);
static_assert(std::is_same_v<decltype(std::declval<Exception const&>().Rethrow()), void>);
static_assert(std::is_same_v<decltype(std::declval<Exception&>() = std::declval<Exception const&>()), Exception&>);
static_assert(
    noexcept(std::declval<Exception const&>().Message()) && noexcept(std::declval<Exception const&>().what()));
static_assert(
    noexcept(std::declval<Exception const&>().Filename()) && noexcept(std::declval<Exception const&>().LineNumber()));
static_assert(
    noexcept(std::declval<Exception const&>().FunctionName()) && noexcept(std::declval<Exception const&>().Where()));
static_assert(noexcept(std::declval<Exception&>().Swap(std::declval<Exception&>())));

/// An exception with four values that all differ from the defaults.
template <typename T>
T Make()
{
    return T(L"m\u00E9ssage", "internal\\Maths\\Unit", 4711, "bv::maths::tUnit<float>::Act");
}

void ExpectMade(Exception const& exception)
{
    EXPECT_STREQ(exception.Message().ToCharArray(), "m\xC3\xA9ssage");
    EXPECT_STREQ(exception.Filename().ToCharArray(), "internal\\Maths\\Unit");
    EXPECT_EQ(exception.LineNumber(), 4711U);
    EXPECT_STREQ(exception.FunctionName().ToCharArray(), "bv::maths::tUnit<float>::Act");
    EXPECT_STREQ(exception.Where().ToCharArray(), "internal\\Maths\\Unit (4711) : bv::maths::tUnit<float>::Act");
}

/// Runs the action and expects that it throws exactly `Expected`, holding what Make() gives.
template <typename Expected>
void ExpectThrowsMade(std::function<void()> const& action)
{
    ExpectThrows<Expected>(action, "m\xC3\xA9ssage", "bv::maths::tUnit<float>::Act", "internal\\Maths\\Unit", 4711);
}

template <typename T>
class EveryExceptionTest : public testing::Test
{
};

using EveryException =
    testing::Types<Exception, FileIOException, InvalidArgumentException, InvalidObjectException,
                   NotImplementedException, ObjectCreationException, ObjectDeletionException, OutOfMemoryException,
                   ThreadExitException, MathsException, ArithmeticException, DivideByZeroException, MatrixException>;
TYPED_TEST_SUITE(EveryExceptionTest, EveryException);

TYPED_TEST(EveryExceptionTest, TheInterfaceIsTheSameForTheWholeFamily)
{
    using T = TypeParam;
    static_assert(sizeof(T) == sizeof(std::exception) + 2 * sizeof(void*));
    static_assert(std::is_polymorphic_v<T> && std::has_virtual_destructor_v<T>);
    static_assert(std::is_default_constructible_v<T> == std::is_same_v<T, NotImplementedException>);
    static_assert(std::is_constructible_v<T, String const&> == !std::is_same_v<T, NotImplementedException>);
    static_assert(!std::is_convertible_v<String const&, T> && !std::is_convertible_v<wchar_t const*, T>);
    static_assert(std::is_copy_constructible_v<T> && std::is_convertible_v<Exception const&, T>);
    static_assert(std::is_same_v<decltype(&T::what), char const* (Exception::*)() const noexcept>, "not overridden");
    static_assert(std::is_same_v<decltype(std::declval<T&>() = std::declval<T const&>()), T&>);
    static_assert(std::is_same_v<decltype(&T::Throw), ThrowFunction>);
    static_assert(!TAKES_THROW_FUNCTION<T>);
    EXPECT_TRUE((DERIVES<T, Exception, std::exception>));
}

TYPED_TEST(EveryExceptionTest, FourValuesAreKept)
{
    ExpectMade(Make<TypeParam>());
}

TYPED_TEST(EveryExceptionTest, TheWhatTextIsOneConstant)
{
    TypeParam const exception = Make<TypeParam>();
    EXPECT_STREQ(exception.what(), "Brevane exception");
    EXPECT_STREQ(static_cast<std::exception const&>(exception).what(), "Brevane exception");
    EXPECT_EQ(exception.what(), Make<Exception>().what());
    EXPECT_STREQ(TypeParam(exception).what(), "Brevane exception");
}

TYPED_TEST(EveryExceptionTest, AMessageAloneHasAnEmptyLocationAndLineZero)
{
    auto const expectNoLocation = [](Exception const& exception)
    {
        EXPECT_TRUE(exception.Filename().IsEmpty());
        EXPECT_EQ(exception.LineNumber(), 0U);
        EXPECT_TRUE(exception.FunctionName().IsEmpty());
        EXPECT_STREQ(exception.Where().ToCharArray(), " (0) : ");
    };
    if constexpr (std::is_same_v<TypeParam, NotImplementedException>)
    {
        NotImplementedException const exception;
        EXPECT_TRUE(exception.Message().IsEmpty());
        expectNoLocation(exception);
    }
    else
    {
        TypeParam const exception(L"message");
        EXPECT_STREQ(exception.Message().ToCharArray(), "message");
        expectNoLocation(exception);
    }
}

TYPED_TEST(EveryExceptionTest, AThrownObjectIsCaughtByItsOwnClassWithAllItHolds)
{
    ExpectThrowsMade<TypeParam>([] { throw Make<TypeParam>(); });
    EXPECT_THROW(throw Make<TypeParam>(), TypeParam);
    EXPECT_THROW(throw Make<TypeParam>(), Exception);
    EXPECT_THROW(throw Make<TypeParam>(), std::exception);
}

TYPED_TEST(EveryExceptionTest, ThrowThrowsACopyOfAnyExceptionAsItsOwnClass)
{
    ExpectThrowsMade<TypeParam>([] { TypeParam::Throw(Make<Exception>()); });
    ExpectThrowsMade<TypeParam>([] { TypeParam::Throw(Make<TypeParam>()); });
    ExpectThrowsMade<TypeParam>([] { TypeParam::Throw(Make<MatrixException>()); });
}

TYPED_TEST(EveryExceptionTest, RethrowKeepsTheClass)
{
    TypeParam const exception = Make<TypeParam>();
    Exception const& root = exception;
    ExpectThrowsMade<TypeParam>([&] { root.Rethrow(); });
    ExpectMade(exception);
}

TYPED_TEST(EveryExceptionTest, RethrowKeepsTheClassOfAnExceptionWithoutALocation)
{
    if constexpr (std::is_same_v<TypeParam, NotImplementedException>)
        ExpectThrows<TypeParam>([] { NotImplementedException().Rethrow(); }, "", "", "", 0);
    else
        ExpectThrows<TypeParam>([] { TypeParam("message").Rethrow(); }, "message", "", "", 0);
}

TYPED_TEST(EveryExceptionTest, RethrowKeepsTheClassOfWhatWasThrownAndCaughtAsTheRoot)
{
    try
    {
        throw TypeParam(L"m\u00E9ssage", "internal\\Maths\\Unit", 4711, "bv::maths::tUnit<float>::Act");
    }
    catch (Exception const& caught)
    {
        ExpectThrowsMade<TypeParam>([&] { caught.Rethrow(); });
    }
}

TYPED_TEST(EveryExceptionTest, ACopyHoldsTheSameAndForgetsTheThrowFunction)
{
    TypeParam const source = Make<TypeParam>();
    TypeParam const copy(source);
    ExpectMade(copy);
    EXPECT_NE(&copy.Message(), &source.Message());
    EXPECT_NE(copy.Message().ToCharArray(), source.Message().ToCharArray());
    ExpectThrowsMade<Exception>([&] { copy.Rethrow(); });
    ExpectThrowsMade<TypeParam>([&] { source.Rethrow(); });
}

TYPED_TEST(EveryExceptionTest, AConversionFromTheRootHoldsTheSameAndForgetsTheThrowFunction)
{
    Exception const source = Make<Exception>();
    TypeParam const converted(source);
    ExpectMade(converted);
    ExpectThrowsMade<Exception>([&] { converted.Rethrow(); });
    MatrixException const other = Make<MatrixException>();
    TypeParam const fromOther(static_cast<Exception const&>(other));
    ExpectMade(fromOther);
    ExpectThrowsMade<Exception>([&] { fromOther.Rethrow(); });
}

TYPED_TEST(EveryExceptionTest, WhatRethrowThrewHasForgottenItsThrowFunction)
{
    try
    {
        Make<TypeParam>().Rethrow();
    }
    catch (Exception const& caught)
    {
        EXPECT_TRUE(typeid(caught) == typeid(TypeParam));
        ExpectThrowsMade<Exception>([&] { caught.Rethrow(); });
    }
}

TYPED_TEST(EveryExceptionTest, AssignmentTakesOverTheValuesAndForgetsTheThrowFunction)
{
    TypeParam const source = Make<TypeParam>();
    TypeParam target("other", "elsewhere", 1, "bv::Other");
    TypeParam& result = target = source;
    EXPECT_EQ(&result, &target);
    ExpectMade(target);
    ExpectMade(source);
    ExpectThrowsMade<Exception>([&] { target.Rethrow(); });
    ExpectThrowsMade<TypeParam>([&] { source.Rethrow(); });
}

TYPED_TEST(EveryExceptionTest, SelfAssignmentKeepsTheValues)
{
    TypeParam exception = Make<TypeParam>();
    TypeParam const& itself = exception;
    exception = itself;
    ExpectMade(exception);
}

TYPED_TEST(EveryExceptionTest, ATemporaryIsAssignedWithoutACopyInTheSubclasses)
{
    TypeParam target("other", "elsewhere", 1, "bv::Other");
    target = Make<TypeParam>();
    ExpectMade(target);
    // A subclass takes its argument by value, and a temporary becomes that argument; the root makes a copy.
    ExpectThrowsMade<TypeParam>([&] { target.Rethrow(); });
}

TYPED_TEST(EveryExceptionTest, AnExceptionIsDestroyedThroughTheRoot)
{
    struct Derived : TypeParam
    {
        bool& destroyed;
        explicit Derived(bool& flag) : TypeParam(Make<TypeParam>()), destroyed(flag) {}
        ~Derived() override { destroyed = true; }
    };
    bool destroyed = false;
    std::exception const* const exception = new Derived(destroyed);
    delete exception;
    EXPECT_TRUE(destroyed);
}

TYPED_TEST(EveryExceptionTest, TextOutputHoldsTheMessageAndTheLocation)
{
    std::ostringstream stream;
    std::ostream& result = stream << Make<TypeParam>();
    EXPECT_EQ(&result, &stream);
    EXPECT_EQ(stream.str(), "'m\xC3\xA9ssage' - internal\\Maths\\Unit (4711) : bv::maths::tUnit<float>::Act.");
}

TEST(ExceptionTest, TheLocationTextHoldsFileLineAndFunction)
{
    FileIOException const exception("x", "src/f", 12, "bv::F");
    EXPECT_STREQ(exception.Message().ToCharArray(), "x");
    EXPECT_STREQ(exception.Where().ToCharArray(), "src/f (12) : bv::F");
}

TEST(ExceptionTest, TheLineIsWrittenAsAnUnsignedNumber)
{
    EXPECT_STREQ(Exception("m", "f", 0, "g").Where().ToCharArray(), "f (0) : g");
    EXPECT_STREQ(Exception("m", "f", 2147483648U, "g").Where().ToCharArray(), "f (2147483648) : g");
    Exception const last("m", "f", std::numeric_limits<unsigned int>::max(), "g");
    EXPECT_STREQ(last.Where().ToCharArray(), "f (4294967295) : g");
    EXPECT_EQ(last.LineNumber(), 4294967295U);
}

TEST(ExceptionTest, FileAndFunctionMayBeEmpty)
{
    EXPECT_STREQ(Exception("m", "", 7, "").Where().ToCharArray(), " (7) : ");
    EXPECT_STREQ(Exception("m", "f", 7, "").Where().ToCharArray(), "f (7) : ");
    EXPECT_STREQ(Exception("m", "", 7, "g").Where().ToCharArray(), " (7) : g");
    EXPECT_TRUE(Exception("", "f", 7, "g").Message().IsEmpty());
}

TEST(ExceptionTest, TheFileNameIsNotTrimmed)
{
    Exception const exception("m", "C:\\projects\\core\\String.cpp", 7, "g");
    EXPECT_STREQ(exception.Filename().ToCharArray(), "C:\\projects\\core\\String.cpp");
    EXPECT_STREQ(exception.Where().ToCharArray(), "C:\\projects\\core\\String.cpp (7) : g");
}

TEST(ExceptionTest, TheLocationTextMayHoldAnyCharacter)
{
    Exception const exception("m", L"\u4E16\\f", 7, L"\U0001F600");
    EXPECT_STREQ(exception.Where().ToCharArray(), "\xE4\xB8\x96\\f (7) : \xF0\x9F\x98\x80");
}

/// Digits in groups of two, as a global locale of the program may write them.
class Grouping : public std::numpunct<char>
{
protected:
    [[nodiscard]] char do_thousands_sep() const override { return '_'; }
    [[nodiscard]] std::string do_grouping() const override { return "\2"; }
};

TEST(ExceptionTest, AGlobalLocaleDoesNotGroupTheDigitsOfTheLine)
{
    std::locale const before = std::locale::global(std::locale(std::locale(), new Grouping));
    std::ostringstream grouped;
    grouped << 12345;
    Exception const exception("m", "f", 12345, "g");
    std::locale::global(before);
    ASSERT_EQ(grouped.str(), "1_23_45");
    EXPECT_STREQ(exception.Where().ToCharArray(), "f (12345) : g");
}

TEST(ExceptionTest, AnObjectCaughtByAnyOfItsBasesIsTheSameObject)
{
    void const* thrown = nullptr;
    bool caught = false;
    try
    {
        try
        {
            try
            {
                try
                {
                    try
                    {
                        throw Make<DivideByZeroException>();
                    }
                    catch (DivideByZeroException const& exception)
                    {
                        thrown = dynamic_cast<void const*>(&exception);
                        throw;
                    }
                }
                catch (ArithmeticException const& exception)
                {
                    EXPECT_EQ(dynamic_cast<void const*>(&exception), thrown);
                    throw;
                }
            }
            catch (MathsException const& exception)
            {
                EXPECT_EQ(dynamic_cast<void const*>(&exception), thrown);
                throw;
            }
        }
        catch (Exception const& exception)
        {
            EXPECT_EQ(dynamic_cast<void const*>(&exception), thrown);
            ExpectMade(exception);
            throw;
        }
    }
    catch (std::exception const& exception)
    {
        EXPECT_EQ(dynamic_cast<void const*>(&exception), thrown);
        EXPECT_STREQ(exception.what(), "Brevane exception");
        caught = true;
    }
    EXPECT_TRUE(caught);
}

TEST(ExceptionTest, AnObjectIsNotCaughtByAClassBesideItsOwn)
{
    bool caught = false;
    try
    {
        throw Make<MatrixException>();
    }
    catch (ArithmeticException const&)
    {
        ADD_FAILURE() << "a matrix exception is no arithmetic exception";
    }
    catch (InvalidArgumentException const&)
    {
        ADD_FAILURE() << "a matrix exception is no invalid argument exception";
    }
    catch (MathsException const&)
    {
        caught = true;
    }
    EXPECT_TRUE(caught);
}

/// A program's own class under one that hands on no throw function.
class LeafOfAProgram : public InvalidArgumentException
{
public:
    using InvalidArgumentException::InvalidArgumentException;
};

TEST(ExceptionTest, RethrowOfAProgramsOwnSubclassThrowsTheClassOfTheLibrary)
{
    LeafOfAProgram const leaf("message", "file", 7, "function");
    bool caught = false;
    try
    {
        leaf.Rethrow();
    }
    catch (LeafOfAProgram const&)
    {
        ADD_FAILURE() << "nobody knows how to throw this class";
    }
    catch (InvalidArgumentException const& failure)
    {
        caught = true;
        EXPECT_STREQ(failure.Message().ToCharArray(), "message");
        EXPECT_EQ(failure.LineNumber(), 7U);
    }
    EXPECT_TRUE(caught);
}

TEST(ExceptionTest, SwapExchangesEverythingIncludingTheThrowFunction)
{
    MatrixException made = Make<MatrixException>();
    FileIOException other("other", "elsewhere", 1, "bv::Other");
    String const* const message = &made.Message();
    made.Swap(other);
    EXPECT_EQ(&other.Message(), message); // the private objects themselves change hands
    ExpectMade(other);
    EXPECT_STREQ(made.Message().ToCharArray(), "other");
    EXPECT_STREQ(made.Filename().ToCharArray(), "elsewhere");
    EXPECT_EQ(made.LineNumber(), 1U);
    EXPECT_STREQ(made.FunctionName().ToCharArray(), "bv::Other");
    EXPECT_STREQ(made.Where().ToCharArray(), "elsewhere (1) : bv::Other");
    ExpectThrowsMade<MatrixException>([&] { other.Rethrow(); });
    ExpectThrows<FileIOException>([&] { made.Rethrow(); }, "other", "bv::Other", "elsewhere", 1);
}

TEST(ExceptionTest, SwapWithACopyPassesTheMissingThrowFunctionOn)
{
    MatrixException made = Make<MatrixException>();
    MatrixException copy(made);
    made.Swap(copy);
    ExpectThrowsMade<Exception>([&] { made.Rethrow(); });
    ExpectThrowsMade<MatrixException>([&] { copy.Rethrow(); });
}

TEST(ExceptionTest, SwapWithItselfChangesNothing)
{
    MatrixException exception = Make<MatrixException>();
    exception.Swap(exception);
    ExpectMade(exception);
    ExpectThrowsMade<MatrixException>([&] { exception.Rethrow(); });
}

TEST(ExceptionTest, TheRootAssignsFromASubclassByItsRoot)
{
    Exception target("other", "elsewhere", 1, "bv::Other");
    MatrixException const source = Make<MatrixException>();
    target = source;
    ExpectMade(target);
    ExpectThrowsMade<Exception>([&] { target.Rethrow(); });
}

TEST(ExceptionTest, ASubclassAssignsFromTheRootThroughItsConversion)
{
    MatrixException target("other", "elsewhere", 1, "bv::Other");
    Exception const source = Make<Exception>();
    target = source;
    ExpectMade(target);
    ExpectThrowsMade<Exception>([&] { target.Rethrow(); });
}

TEST(ExceptionTest, AnAssignedCopyDoesNotFollowLaterChanges)
{
    Exception source = Make<Exception>();
    Exception const copy(source);
    source = Exception("other", "elsewhere", 1, "bv::Other");
    ExpectMade(copy);
    EXPECT_STREQ(source.Message().ToCharArray(), "other");
}

TEST(ExceptionTest, TheLocationTextIsCopiedAndNotBuiltAnew)
{
    Exception const source = Make<Exception>();
    // Only a write through the const pointer can part the location text from the values that it was built from.
    const_cast<char*>(source.Where().ToCharArray())[0] = '!';
    EXPECT_STREQ(Exception(source).Where().ToCharArray(),
                 "!nternal\\Maths\\Unit (4711) : bv::maths::tUnit<float>::Act");
    EXPECT_STREQ(Exception(source).Filename().ToCharArray(), "internal\\Maths\\Unit");
}

/// A class of a program that builds on the family, with a throw function of its own.
template <typename Base>
class OwnException : public Base
{
public:
    OwnException(String const& message, String const& file, unsigned int line, String const& function)
        : Base(message, file, line, function, &Throw)
    {
    }
    explicit OwnException(String const& message) : Base(message, &Throw) {}
    explicit OwnException(Exception const& other) : Base(other) {}
    [[noreturn]] static void Throw(Exception const& exception) { throw OwnException(exception); }
};

template <typename T>
class BaseExceptionTest : public testing::Test
{
};

using BaseException = testing::Types<Exception, MathsException, ArithmeticException>;
TYPED_TEST_SUITE(BaseExceptionTest, BaseException);

TYPED_TEST(BaseExceptionTest, ASubclassPassesItsThrowFunctionDownToTheRoot)
{
    using Own = OwnException<TypeParam>;
    Own const exception = Make<Own>();
    ExpectMade(exception);
    ExpectThrowsMade<Own>([&] { static_cast<Exception const&>(exception).Rethrow(); });
}

TYPED_TEST(BaseExceptionTest, ASubclassPassesItsThrowFunctionDownWithAMessageAlone)
{
    using Own = OwnException<TypeParam>;
    ExpectThrows<Own>([] { Own("message").Rethrow(); }, "message", "", "", 0);
}

/// A class whose throw function breaks the rule and returns.
class ReturningException : public Exception
{
public:
    static inline Exception const* given = nullptr;
    explicit ReturningException(String const& message) : Exception(message, &Return) {}
    static void Return(Exception const& exception) { given = &exception; }
};

TEST(ExceptionTest, RethrowCallsTheThrowFunctionWithTheExceptionItself)
{
    ReturningException const exception("message");
    // Rethrow() never returns, even when the throw function does.
    ExpectThrows<Exception>([&] { exception.Rethrow(); }, "message", "", "", 0);
    EXPECT_EQ(ReturningException::given, &exception);
}

TEST(ExceptionTest, TextOutputOfAnExceptionWithoutALocationKeepsItsFixedPieces)
{
    std::ostringstream stream;
    stream << Exception("message") << NotImplementedException();
    EXPECT_EQ(stream.str(), "'message' -  (0) : .'' -  (0) : .");
}

TEST(ExceptionTest, TextOutputGoesIntoTheStreamAsOneString)
{
    Exception const exception("m", "f", 12345, "g");
    std::ostringstream stream;
    stream << std::setw(30) << std::setfill('*') << exception << '|' << exception;
    EXPECT_EQ(stream.str(), "**********'m' - f (12345) : g.|'m' - f (12345) : g.");
    stream.str("");
    stream << std::left << std::setw(24) << exception << '|';
    EXPECT_EQ(stream.str(), "'m' - f (12345) : g.****|");
}

TEST(ExceptionTest, TextOutputIgnoresTheNumberSettingsOfTheStream)
{
    Exception const exception("m", "f", 12345, "g");
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new Grouping));
    stream << std::hex << std::showbase << std::uppercase << std::setprecision(2) << exception;
    EXPECT_EQ(stream.str(), "'m' - f (12345) : g.");
}

TEST(ExceptionTest, TextOutputIsFoundWithoutNamingTheNamespace)
{
    std::ostringstream stream;
    stream << Make<DivideByZeroException>();
    EXPECT_EQ(stream.str().substr(0, 12), "'m\xC3\xA9ssage' -");
}

} // namespace
