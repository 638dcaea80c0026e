// The output of tuples beside a program's own operators at global scope, declared before and after those of the
// library.

#include <ostream>
#include <sstream>
#include <string>

namespace before
{

template <typename T>
struct Thing
{
};

} // namespace before

template <typename T>
std::ostream& operator<<(std::ostream& stream, before::Thing<T> const&)
{
    return stream << "thing";
}

/// Takes everything, as that of a log does.
template <typename Stream, typename Value>
Stream& operator<<(Stream& stream, Value const& value) requires requires
{
    value.LogName();
}
{
    stream << value.LogName();
    return stream;
}

#include "BvBaseUtils.h"

namespace after
{

template <typename T>
struct Thing
{
};

struct Named
{
    [[nodiscard]] static char const* LogName() { return "named"; }
};

} // namespace after

template <typename T>
std::ostream& operator<<(std::ostream& stream, after::Thing<T> const&)
{
    return stream << "other thing";
}

/// Fits tuples and vectors, too, but less well than the operators that know of them.
template <typename Value>
std::ostream& operator<<(std::ostream& stream, Value const& value) requires requires
{
    value.x;
}
{
    return stream << "something";
}

#include <gtest/gtest.h>

template <typename Value>
std::string PrintAtGlobalScope(Value const& value)
{
    std::ostringstream stream;
    stream << value << ' ' << before::Thing<int>() << ' ' << after::Thing<int>();
    return stream.str();
}

std::string PrintAPairAtGlobalScope(bv::maths::tTuple2<int> const& pair)
{
    std::ostringstream stream;
    stream << pair;
    return stream.str();
}

namespace elsewhere
{

struct Label
{
};

/// Hides the operators of outer namespaces.
std::ostream& operator<<(std::ostream& stream, Label const&)
{
    return stream << "label";
}

template <typename Value>
std::string Print(Value const& value)
{
    std::ostringstream stream;
    stream << Label() << ' ' << value;
    return stream.str();
}

std::string PrintATriple(bv::maths::tTuple3<double> const& triple)
{
    std::ostringstream stream;
    stream << Label() << ' ' << triple;
    return stream.str();
}

} // namespace elsewhere

namespace bv::maths
{

std::string PrintWithin(tTuple2<unsigned int> const& pair, tTuple3<float> const& triple, tVector3<int> const& vector)
{
    std::ostringstream stream;
    stream << pair << "; " << triple << "; " << vector;
    return stream.str();
}

} // namespace bv::maths

namespace
{

using namespace bv::maths;

/// Whether the library's namespace has an output operator for a value of another.
template <typename Value>
concept HasOperatorInTheLibrary = requires(std::ostream& stream, Value const& value)
{
    bv::maths::operator<<(stream, value);
};

static_assert(!HasOperatorInTheLibrary<before::Thing<int>> && !HasOperatorInTheLibrary<after::Named>);
static_assert(HasOperatorInTheLibrary<Vector3f>); // so that the above tells something

TEST(TupleOutputTest, WorksBesideTheOperatorsOfAProgram)
{
    EXPECT_EQ(PrintAtGlobalScope(Tuple2i(1, -2)), "1, -2 thing other thing");
    EXPECT_EQ(PrintAtGlobalScope(Tuple3f(0.5F, 1, 2)), "0.5, 1, 2 thing other thing");
    EXPECT_EQ(PrintAtGlobalScope(Vector2d(0.5, 1)), "0.5, 1 thing other thing");
    EXPECT_EQ(PrintAtGlobalScope(Matrix4f()).substr(0, 8), "1\t0\t0\t0\n");
    EXPECT_EQ(PrintAPairAtGlobalScope({3, 4}), "3, 4");
}

TEST(TupleOutputTest, IsFoundFromNamespacesThatHideTheOperator)
{
    EXPECT_EQ(elsewhere::Print(Tuple2u(1, 2)), "label 1, 2");
    EXPECT_EQ(elsewhere::Print(Tuple3i(1, 2, 3)), "label 1, 2, 3");
    EXPECT_EQ(elsewhere::PrintATriple({0.5, 1, 2}), "label 0.5, 1, 2");
    EXPECT_EQ(bv::maths::PrintWithin({1, 2}, {0.5F, 1, 2}, {3, 4, 5}), "1, 2; 0.5, 1, 2; 3, 4, 5");
}

TEST(TupleOutputTest, LeavesTheOperatorsOfAProgramAlone)
{
    std::ostringstream stream;
    stream << after::Named();
    EXPECT_EQ(stream.str(), "named");
    ::operator<<(stream, Tuple2i(5, 6)); // that at global scope, by its name
    EXPECT_EQ(stream.str(), "named5, 6");
}

} // namespace
