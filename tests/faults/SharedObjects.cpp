#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "bv/Hash.h"
#include "bv/String.h"
#include "bv/maths/Batch.h"
#include "bv/maths/IsEqual.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/Reciprocal.h"
#include "bv/maths/View.h"
#include "bv/maths/tFrustum.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tPreparedTransform.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"
#include "support/StartingLine.h"

// Objects that many threads read at once, without a lock: what is constant, writes nothing. A sanitizer of threads
// reports it if something does; without one, the results show it.

namespace
{

using namespace bv;
using namespace bv::maths;

constexpr std::size_t THREADS = 16;

/// Reads in threads that begin together, and expects of each what one alone reads.
template <typename Read>
void ExpectTheSameInEveryThread(Read const& read)
{
    std::array<std::string, THREADS> results;
    bv::test::StartingLine start(THREADS);
    std::vector<std::thread> threads;
    for (std::string& result : results)
        threads.emplace_back(
            [&]
            {
                start.ArriveAndWait();
                for (int round = 0; round < 20; ++round)
                    result = read();
            });
    for (std::thread& thread : threads)
        thread.join();
    std::string const alone = read();
    EXPECT_FALSE(alone.empty());
    for (std::string const& result : results)
        EXPECT_EQ(result, alone);
}

TEST(SharedObjects, AreReadAsTexts)
{
    String const text = "a text that is too long for the short-string buffer";
    String const part = "long";
    ExpectTheSameInEveryThread(
        [&]
        {
            String const copy(text);
            bool const holds = text.Contains(part) && text == copy && text > part && !text.IsEmpty();
            return (text + part).ToCharArray() + std::to_string(FNVHash32(text)) + (holds ? "yes" : "no");
        });
}

TEST(SharedObjects, AreReadAsExceptions)
{
    MatrixException const exception(L"message", "file", 7, "function");
    ExpectTheSameInEveryThread(
        [&]
        {
            std::ostringstream stream;
            stream << exception << MatrixException(exception);
            try
            {
                exception.Rethrow();
            }
            catch (MatrixException const& caught)
            {
                stream << caught.LineNumber();
            }
            return stream.str();
        });
}

TEST(SharedObjects, AreReadAsMatricesViewsAndBoxes)
{
    tMatrix4<float> const matrix = PerspectiveFromTangent(0.5F, 1.5F, 1.0F, 100.0F) *
                                   LookAt(tVector3<float>(3, 4, 5), tVector3<float>(), tVector3<float>(0, 1, 0));
    tFrustum<float> const view(matrix);
    tPreparedTransform<float> const prepared(matrix);
    tVolumeAABB<float> const box({-1, -1, -1}, {1, 1, 1});
    ExpectTheSameInEveryThread(
        [&]
        {
            std::ostringstream stream;
            stream << matrix * matrix << matrix.Inverted() << matrix.Determinant() << prepared({1, 2, 3})
                   << view.ContainsAABB(box) << (box * matrix).GetMax() << view.GetLeftPlane();
            matrix.Serialise(stream);
            return stream.str();
        });
}

TEST(SharedObjects, AreReadByBatchForms)
{
    std::vector<tVector3<float>> const points(100, tVector3<float>(1, 2, 3));
    tMatrix4<float> const matrix = tMatrix4<float>::Translate(1, 1, 1);
    ExpectTheSameInEveryThread(
        [&]
        {
            std::vector<tVector3<float>> results(points.size());
            TransformPoints(matrix, points, results);
            std::ostringstream stream;
            stream << results.front() << results.back();
            return stream.str();
        });
}

TEST(SharedObjects, AreReadAsConstantsOfFunctions)
{
    ExpectTheSameInEveryThread(
        []
        {
            std::array<float, 4> numbers{4, 4, 4, 4};
            simd::FourFloats four;
            std::memcpy(&four, numbers.data(), sizeof(four));
            simd::FourFloats const sums = _mm_rcp_nr(four) + _mm_rsqrt_nr(four);
            std::memcpy(numbers.data(), &sums, sizeof(sums));
            float const near = numbers[0];
            return std::to_string(near) + (IsEqual(1.0F, 1.0F + 1e-6F) && IsEqual(1.0, 1.0 + 1e-15) ? "yes" : "no");
        });
}

} // namespace
