#include <cstddef>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "bv/Environment.h"
#include "bv/FileIOException.h"
#include "bv/maths/Batch.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Forward.h"
#include "bv/maths/Noise.h"
#include "bv/maths/Percentage.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPlane.h"
#include "bv/maths/tTuple2.h"
#include "bv/maths/tVector3.h"
#include "support/Environment.h"
#include "support/StartingLine.h"

// The library keeps a few constants that are made when they are first used, the choice of loops for the processor among
// them. CTest runs each of these tests in a process of its own, so that many threads are the first to use them.

namespace
{

using namespace bv::maths;

constexpr std::size_t THREADS = 16;
constexpr std::size_t ROUNDS = 50;

/// Does the same in many threads that begin together, and after them once more alone.
template <typename Work>
void ExpectTheSameInEveryThread(Work const& work)
{
    using Result = std::invoke_result_t<Work>;
    std::vector<std::vector<Result>> results(THREADS);
    bv::test::StartingLine start(THREADS);
    std::vector<std::thread> threads;
    for (std::vector<Result>& own : results)
        threads.emplace_back(
            [&]
            {
                start.ArriveAndWait();
                for (std::size_t round = 0; round < ROUNDS; ++round)
                    own.push_back(work());
            });
    for (std::thread& thread : threads)
        thread.join();

    std::vector<Result> const alone(ROUNDS, work());
    for (std::vector<Result> const& own : results)
        EXPECT_EQ(own, alone);
}

/// Points in and between the cells of the noise, more than any processor looks at together.
std::vector<Vector3f> MakePoints()
{
    std::vector<Vector3f> points;
    for (int i = 0; i < 300; ++i)
        points.emplace_back(static_cast<float>(i) * 0.25F, static_cast<float>(i % 7) * 0.3F, static_cast<float>(-i));
    return points;
}

TEST(ThreadsTest, ManyThreadsReadTheEnvironment)
{
    bv::test::SetVariable("BV_THREADS_TEST", "a value that is longer than a short-string buffer");
    EXPECT_STREQ(bv::BvGetEnv("BV_THREADS_TEST").ToCharArray(), "a value that is longer than a short-string buffer");
    ExpectTheSameInEveryThread(
        []
        {
            return std::string(bv::BvGetEnv("BV_THREADS_TEST").ToCharArray()) + '|' +
                   bv::BvGetEnv("BV_THREADS_TEST_UNSET").ToCharArray();
        });
}

TEST(ThreadsTest, ManyThreadsPrint)
{
    auto const print = []
    {
        std::ostringstream stream;
        stream << Vector3d(0.1, 2, 1e-7) << '|' << tTuple2<int>(-3, 4) << '|' << tPlane<float>({0, 0, 1}, -2) << '|'
               << tMatrix4<double>();
        return stream.str();
    };
    ExpectTheSameInEveryThread(print);
    EXPECT_EQ(print().find("0.1, 2, 1e-07|-3, 4|"), 0U);
}

TEST(ThreadsTest, ManyThreadsThrowAndPrintExceptions)
{
    auto const print = []
    {
        std::ostringstream stream;
        stream << bv::FileIOException("message", "file", 12, "function") << bv::FileIOException(L"alone");
        try
        {
            static_cast<void>(Percentage(1, 2) / Percentage(0, 1));
        }
        catch (DivideByZeroException const& exception)
        {
            stream << exception;
        }
        return stream.str();
    };
    ExpectTheSameInEveryThread(print);
    std::string const text = print();
    EXPECT_EQ(text.substr(0, text.find("internal")), "'message' - file (12) : function.'alone' -  (0) : ."
                                                     "'Integer division by zero' - ");
}

TEST(ThreadsTest, ManyThreadsAskForTheFirstNoise)
{
    std::vector<Vector3f> const points = MakePoints();
    EXPECT_EQ(points.size(), 300U);
    ExpectTheSameInEveryThread(
        [&]
        {
            std::vector<float> values = {Noise3({1, 2, 3})};
            for (Vector3f const& point : points)
                values.push_back(Noise3(point) + Turbulence3(point, 4));
            return values;
        });
    EXPECT_EQ(Noise3({1, 2, 3}), 0.5F); // as at every point whose coordinates are whole numbers
}

TEST(ThreadsTest, ManyThreadsAskForTheFirstBatch)
{
    std::vector<Vector3f> const points = MakePoints();
    auto const makeNoise = [&]
    {
        std::vector<float> values(points.size());
        EvaluateNoise3(points, values);
        return values;
    };
    ExpectTheSameInEveryThread(makeNoise);
    std::vector<float> const together = makeNoise();
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_EQ(together[i], Noise3(points[i])) << i;
}

} // namespace
