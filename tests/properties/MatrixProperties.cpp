#include <array>
#include <cmath>
#include <cstddef>

#include "bv/maths/View.h"
#include "properties/Draw.h"
#include "support/MatrixBits.h"
#include "support/Precisions.h"

// Bounds are worked out beside each property, with u for ROUNDING: a sum of n products that are each rounded is off by
// at most n u / (1 - n u) times the sum of the products' magnitudes, in any order (N. J. Higham, "Accuracy and
// Stability of Numerical Algorithms", 2002, 3.1). What is of the order of u * u is covered by rounding the factor of u
// up.

namespace
{

using namespace bv::maths;
using namespace bv::test;

using Square = std::array<std::array<Wide, 4>, 4>;

template <typename T>
[[nodiscard]] Square Exactly(tMatrix4<T> const& matrix)
{
    Square square{};
    for (std::size_t i = 0; i < 16; ++i)
        square[i / 4][i % 4] = Widened(matrix[i]);
    return square;
}

[[nodiscard]] Square Magnitudes(Square square)
{
    for (auto& row : square)
        for (Wide& element : row)
            element = std::fabs(element);
    return square;
}

[[nodiscard]] Square Product(Square const& a, Square const& b)
{
    Square product{};
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            for (std::size_t k = 0; k < 4; ++k)
                product[i][j] += a[i][k] * b[k][j];
    return product;
}

[[nodiscard]] Square Transpose(Square const& square)
{
    Square transpose{};
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            transpose[i][j] = square[j][i];
    return transpose;
}

/// The cofactors; with a sign of 1, instead of -1, what they are at most, for elements that are magnitudes.
[[nodiscard]] Square Cofactors(Square const& m, Wide sign)
{
    Square cofactors{};
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
        {
            std::array<std::size_t, 3> rows{};
            std::array<std::size_t, 3> columns{};
            for (std::size_t k = 0; k < 3; ++k)
            {
                rows[k] = k < i ? k : k + 1;
                columns[k] = k < j ? k : k + 1;
            }
            auto const at = [&](std::size_t row, std::size_t column) { return m[rows[row]][columns[column]]; };
            Wide const minor = at(0, 0) * (at(1, 1) * at(2, 2) + sign * at(1, 2) * at(2, 1)) +
                               sign * at(0, 1) * (at(1, 0) * at(2, 2) + sign * at(1, 2) * at(2, 0)) +
                               at(0, 2) * (at(1, 0) * at(2, 1) + sign * at(1, 1) * at(2, 0));
            cofactors[i][j] = (i + j) % 2 == 0 ? minor : sign * minor;
        }
    return cofactors;
}

/// The determinant from the cofactors, or what it is at most.
[[nodiscard]] Wide Determinant(Square const& m, Square const& cofactors)
{
    Wide determinant = 0;
    for (std::size_t j = 0; j < 4; ++j)
        determinant += m[0][j] * cofactors[0][j];
    return determinant;
}

/// Element by element, two matrices differ by at most a factor times the scale.
void AssertNear(Square const& a, Square const& b, Square const& scale, Wide factor)
{
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            RC_ASSERT(std::fabs(a[i][j] - b[i][j]) <= factor * scale[i][j]);
}

template <typename T>
class MatrixProperties : public testing::Test
{
};
TYPED_TEST_SUITE(MatrixProperties, Precisions);

TYPED_TEST(MatrixProperties, ProductsAssociate)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Matrix(T{8});
            auto const b = *Matrix(T{8});
            auto const c = *Matrix(T{8});
            // A product of two is off by 4u |A||B|, the next one adds as much: 8u |A||B||C| on either side.
            Square const scale =
                Product(Product(Magnitudes(Exactly(a)), Magnitudes(Exactly(b))), Magnitudes(Exactly(c)));
            AssertNear(Exactly((a * b) * c), Exactly(a * (b * c)), scale, 17 * ROUNDING<T>);
        });
}

TYPED_TEST(MatrixProperties, TheProductInPlaceIsTheProduct)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Matrix(T{8});
            auto const b = *Matrix(T{8});
            RC_PRE(StateOf(a) == GENERAL && StateOf(b) == GENERAL); // with other states, the two differ by rule
            tMatrix4<T> product = a;
            product *= b;
            RC_ASSERT(ElementsOf(product) == ElementsOf(a * b));
        });
}

TYPED_TEST(MatrixProperties, AMatrixTimesItsInverseIsTheIdentity)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const matrix = *Matrix(T{2});
            Square const m = Exactly(matrix);
            Square const cofactors = Cofactors(m, -1);
            Square const largest = Cofactors(Magnitudes(m), 1);
            Wide const determinant = Determinant(m, cofactors);
            Wide const largestDeterminant = Determinant(Magnitudes(m), largest);
            RC_PRE(std::fabs(determinant) > 0.01L * largestDeterminant && std::fabs(determinant) > 0.0001L);

            // A cofactor is a sum of six products of three elements: at most 2 roundings a product and 5 a sum, 7u of
            // what it is at most. The determinant has 4 roundings more. The cofactor is multiplied by the reciprocal of
            // the determinant: 2 more roundings.
            Square bound{};
            for (std::size_t i = 0; i < 4; ++i)
                for (std::size_t j = 0; j < 4; ++j)
                    bound[i][j] = (9 * largest[j][i] +
                                   11 * std::fabs(cofactors[j][i]) * largestDeterminant / std::fabs(determinant)) /
                                  std::fabs(determinant);
            tMatrix4<T> const inverse = matrix.Inverted();
            Square const identity = Exactly(tMatrix4<T>());
            AssertNear(Product(Exactly(inverse), m), identity, Product(bound, Magnitudes(m)), 1.1L * ROUNDING<T>);
            AssertNear(Product(m, Exactly(inverse)), identity, Product(Magnitudes(m), bound), 1.1L * ROUNDING<T>);
        });
}

TYPED_TEST(MatrixProperties, TheTransposeOfAProductIsTheProductOfTheTransposes)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Matrix(T{8});
            auto const b = *Matrix(T{8});
            Square const scale = Product(Magnitudes(Exactly(a)), Magnitudes(Exactly(b)));
            AssertNear(Transpose(Exactly(a * b)), Exactly(b.Transposed() * a.Transposed()), Transpose(scale),
                       9 * ROUNDING<T>); // 4u on either side
        });
}

TYPED_TEST(MatrixProperties, TheTransposeOfTheTransposeIsTheMatrix)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const matrix = *Matrix(T{8});
            RC_ASSERT(Exactly(matrix.Transposed()) == Transpose(Exactly(matrix)));
            RC_ASSERT(ElementsOf(matrix.Transposed().Transposed()) == ElementsOf(matrix));
        });
}

TYPED_TEST(MatrixProperties, TheDeterminantOfAProductIsTheProductOfTheDeterminants)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Matrix(T{2});
            auto const b = *Matrix(T{2});
            auto const product = a * b;
            // The determinant alone is off by 11u of what it is at most; see the inverse. That of the product has each
            // element 4u off, and so each of its products of four 16u.
            auto const most = [](Square const& m) { return Determinant(Magnitudes(m), Cofactors(Magnitudes(m), 1)); };
            Wide const ofProduct = most(Product(Magnitudes(Exactly(a)), Magnitudes(Exactly(b))));
            Wide const ofBoth = most(Exactly(a)) * most(Exactly(b));
            Wide const difference =
                Widened(product.Determinant()) - Widened(a.Determinant()) * Widened(b.Determinant());
            RC_ASSERT(std::fabs(difference) <= 1.1L * ROUNDING<T> * (27 * ofProduct + 22 * ofBoth));
        });
}

TYPED_TEST(MatrixProperties, MovingByAProductIsMovingTwice)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const a = *Matrix(T{8}, true);
            auto const b = *Matrix(T{8}, true);
            auto const point = *Vector(T{8});
            std::array<Wide, 4> const magnitudes = {std::fabs(Widened(point.x)), std::fabs(Widened(point.y)),
                                                    std::fabs(Widened(point.z)), 1};
            Square const scale = Product(Magnitudes(Exactly(a)), Magnitudes(Exactly(b)));
            auto const once = point.Transformed(a * b);
            auto const twice = point.Transformed(b).Transformed(a);
            // As for products of three; w is exactly 1.
            for (std::size_t i = 0; i < 3; ++i)
            {
                Wide sum = 0;
                for (std::size_t j = 0; j < 4; ++j)
                    sum += scale[i][j] * magnitudes[j];
                RC_ASSERT(std::fabs(Widened(once[i]) - Widened(twice[i])) <= 17 * ROUNDING<T> * sum);
            }
        });
}

TYPED_TEST(MatrixProperties, APartedMatrixComesTogetherAgain)
{
    using T = TypeParam;
    ExpectAlways(
        []
        {
            auto const matrix = *Matrix(T{8}, true);
            auto const parts = Decompose(matrix);
            RC_ASSERT(parts.has_value());
            // The parts are worked out in double precision. The Jacobi method takes at most six sweeps of three turns
            // for columns like these, each with errors of 4u, which count once for the rotation and once for the rest;
            // length and normalisation add 10u: 154u of double precision, relative to the length F of the matrix.
            // Rounded, the rotation's components are u off and so its elements 4u, and those of the other part u. The
            // matrix of a quaternion is 15u off. In a sum of three products of these, elements of a rotation with
            // elements of at most F: 3 (4 + 15 + 1) u F, and 3u of the sum itself, which is at most 2F: 66u.
            Square const m = Exactly(matrix);
            Wide squares = 0;
            for (std::size_t i = 0; i < 3; ++i)
                for (std::size_t j = 0; j < 3; ++j)
                    squares += m[i][j] * m[i][j];
            Wide const bound = (154 * ROUNDING<double> + 66 * ROUNDING<T>)*1.1L * std::sqrt(squares);
            Square const again = Exactly(Compose(*parts));
            for (std::size_t i = 0; i < 3; ++i)
            {
                for (std::size_t j = 0; j < 3; ++j)
                    RC_ASSERT(std::fabs(again[i][j] - m[i][j]) <= bound);
                RC_ASSERT(again[i][3] == m[i][3]);
            }
        });
}

} // namespace
