// A matrix at addresses that are no multiple of its alignment, as in records that were packed. The language leaves that
// open, and the processors that the library runs on take it; sanitizers report it, so this is built without them.

#include "bv/maths/tMatrix4.h"

#include <cstdint>
#include <cstring>
#include <new>

#include <gtest/gtest.h>

#include "bv/maths/tVector3.h"
#include "support/Precisions.h"

namespace
{

using bv::maths::tMatrix4;
using bv::maths::tVector3;

/// Memory for a matrix some bytes behind an address that is a multiple of 16.
template <typename T>
class Place
{
    alignas(16) unsigned char bytes[sizeof(tMatrix4<T>) + 16];
    std::size_t offset;

public:
    explicit Place(std::size_t behind) : bytes{}, offset{behind} {}
    [[nodiscard]] void* Get() { return bytes + offset; }
    /// What lies around the matrix is still zero.
    [[nodiscard]] bool IsIntact() const
    {
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            if ((i < offset || i >= offset + sizeof(tMatrix4<T>)) && bytes[i] != 0)
                return false;
        return true;
    }
};

template <typename T>
class MatrixPlacementTest : public testing::Test
{
};
TYPED_TEST_SUITE(MatrixPlacementTest, bv::test::Precisions);

template <typename T>
void ExpectElements(tMatrix4<T> const& m, T const (&expected)[16])
{
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(m.Get()) % 16, 0U);
    auto const* const begin = reinterpret_cast<unsigned char const*>(&m);
    auto const* const elements = reinterpret_cast<unsigned char const*>(m.Get());
    EXPECT_GE(elements, begin + 2 * sizeof(void*));
    EXPECT_LE(elements + sizeof expected, begin + sizeof m);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(m[i], expected[i]) << i;
}

TYPED_TEST(MatrixPlacementTest, ElementsAreAlignedAtEveryOffset)
{
    using T = TypeParam;
    T const upper[] = {1, 2, 0, 3, 0, 1, 0, 4, 0, 0, 1, 5, 0, 0, 0, 1};
    T const square[] = {1, 4, 0, 14, 0, 1, 0, 8, 0, 0, 1, 10, 0, 0, 0, 1};   // 3 + 2 * 4 + 3, 4 + 4, 5 + 5
    T const inverse[] = {1, -2, 0, 5, 0, 1, 0, -4, 0, 0, 1, -5, 0, 0, 0, 1}; // -(3 - 2 * 4), -4, -5
    for (std::size_t offset = 0; offset < 16; ++offset)
    {
        SCOPED_TRACE(offset);
        Place<T> first(offset);
        Place<T> second((5 * offset + 3) % 16);
        auto* const a = new (first.Get()) tMatrix4<T>(upper);
        ExpectElements(*a, upper);
        auto* const b = new (second.Get()) tMatrix4<T>(*a * *a);
        ExpectElements(*b, square);
        *b = a->Inverted();
        ExpectElements(*b, inverse);
        *b = *a;
        *b *= *a;
        ExpectElements(*b, square);
        b->Invert();
        a->Transpose();
        EXPECT_EQ((*a)[12], T{3});
        EXPECT_EQ(tVector3<T>(1, 1, 1).Transformed(*b).z, T{-9}); // 1 - 10
        EXPECT_TRUE(first.IsIntact() && second.IsIntact());
    }
}

TYPED_TEST(MatrixPlacementTest, ZeroedMemoryBecomesAMatrixAtEveryOffset)
{
    using T = TypeParam;
    T const values[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 17};
    tMatrix4<T> const source(values);
    for (std::size_t offset = 0; offset < 16; ++offset)
    {
        SCOPED_TRACE(offset);
        Place<T> place(offset); // zeros, and so a null pointer to the elements
        auto* const m = std::launder(static_cast<tMatrix4<T>*>(place.Get()));
        *m = source;
        ExpectElements(*m, values);
        *m = *m;
        ExpectElements(*m, values);
        EXPECT_TRUE(place.IsIntact());

        Place<T> itself(offset);
        auto* const own = std::launder(static_cast<tMatrix4<T>*>(itself.Get()));
        *own = *own;
        T const zeros[16] = {};
        ExpectElements(*own, zeros);
    }
}

} // namespace
