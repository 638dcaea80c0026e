#include "bv/maths/tMatrix4.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <limits>
#include <locale>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/MatrixBits.h"
#include "support/Numbers.h"
#include "support/Precisions.h"
#include "support/Random.h"
#include "support/SameBits.h"
#include "support/Streams.h"

using bv::maths::IsEqual;
using bv::maths::tMatrix4;
using bv::maths::TOLERANCE;
using bv::maths::tTuple2;
using bv::maths::tVector3;
using namespace bv::test;

namespace
{

constexpr std::size_t OFF_DIAGONAL[] = {1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14};

/// The value that lies this many representable values above 1.
template <typename T>
T AboveOne(int steps)
{
    return T{1} + static_cast<T>(steps) * EPSILON<T>;
}

/// A rotation by a right angle about z: exact, and not diagonal.
template <typename T>
Elements<T> QuarterTurn()
{
    return {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

template <typename T>
Elements<T> With(Elements<T> elements, std::size_t index, T value)
{
    elements[index] = value;
    return elements;
}

template <typename T>
tMatrix4<T> Classified(Elements<T> const& elements)
{
    return tMatrix4<T>(elements.data());
}

/// An angle so small that its cosine rounds to 1, while its sine is far from 0.
template <typename T>
constexpr T TILT = std::is_same_v<T, float> ? T(1e-4) : T(1e-9);

/// Bytes for one matrix at a chosen distance from an address aligned to 16 bytes.
template <typename T>
class Storage
{
    alignas(16) unsigned char bytes[sizeof(tMatrix4<T>) + 16];

public:
    /// A default matrix at this distance.
    tMatrix4<T>& Place(std::size_t distance) { return *new (bytes + distance) tMatrix4<T>(); }
    /// A matrix constructed from these arguments at this distance.
    template <typename... Arguments>
    tMatrix4<T>& Construct(std::size_t distance, Arguments const&... arguments)
    {
        return *new (bytes + distance) tMatrix4<T>(arguments...);
    }
    /// The same as Place(), with every byte then set to zero.
    tMatrix4<T>& PlaceZeros(std::size_t distance)
    {
        tMatrix4<T>& matrix = Place(distance);
        std::memset(static_cast<void*>(&matrix), 0, sizeof(matrix));
        return matrix;
    }
};

/// How many of the 16 bytes that a matrix has more than its elements lie before them, at this distance.
constexpr std::size_t RoomBeforeElements(std::size_t distance)
{
    return (16 - (distance + 2 * sizeof(void*)) % 16) % 16; // the state and the pointer come first
}

template <typename T>
bool IsAlignedInside(tMatrix4<T> const& matrix)
{
    auto const begin = reinterpret_cast<std::uintptr_t>(&matrix);
    auto const first = reinterpret_cast<std::uintptr_t>(matrix.Get());
    return first % 16 == 0 && first >= begin && first + 16 * sizeof(T) <= begin + sizeof(matrix);
}

template <typename T>
class Matrix4Test : public testing::Test
{
};
TYPED_TEST_SUITE(Matrix4Test, Precisions);

template <typename T>
constexpr bool HAS_PLAIN_LAYOUT =
    std::is_standard_layout_v<tMatrix4<T>> && !std::is_polymorphic_v<tMatrix4<T>> &&
    !std::is_trivially_copyable_v<tMatrix4<T>> && sizeof(tMatrix4<T>) == 2 * sizeof(void*) + 16 * sizeof(T) + 16;
static_assert(HAS_PLAIN_LAYOUT<float> && HAS_PLAIN_LAYOUT<double>);

template <typename T>
constexpr bool ConvertsLikeAMatrix()
{
    using M = tMatrix4<T>;
    static_assert(std::is_convertible_v<tMatrix4<Other<T>> const&, M> && std::is_convertible_v<M, std::string>);
    static_assert(std::is_convertible_v<T const*, M> && std::is_convertible_v<Other<T> const*, M>);
    static_assert(!std::is_convertible_v<int const*, M> && !std::is_convertible_v<T, M>);
    static_assert(!std::is_constructible_v<M, std::nullptr_t> && !std::is_assignable_v<M&, std::nullptr_t>);
    static_assert(!std::is_constructible_v<M, T const*, typename M::State>);
    static_assert(!std::is_constructible_v<M, typename M::State>);
    return true;
}
static_assert(ConvertsLikeAMatrix<float>() && ConvertsLikeAMatrix<double>());

// What is private: none of these compiles.
template <typename M>
concept NamesItsRows = requires
{
    M::ROW_1;
};
template <typename M>
concept ShowsItsRows = requires(M const& m)
{
    m.GetRow(0);
};
template <typename M>
concept ShowsItsIndices = requires(M const& m)
{
    m.GetIndex(tTuple2<unsigned int>());
};
template <typename M>
concept SetsItsState = requires(M& m)
{
    m.SetState();
};
template <typename M>
concept SetsItsMemory = requires(M& m)
{
    m.InitMemory();
};
template <typename M>
constexpr bool HIDES_ITS_INSIDE =
    !(NamesItsRows<M> || ShowsItsRows<M> || ShowsItsIndices<M> || SetsItsState<M> || SetsItsMemory<M>);
static_assert(HIDES_ITS_INSIDE<tMatrix4<float>> && HIDES_ITS_INSIDE<tMatrix4<double>>);

template <typename T>
constexpr bool KeepsItsSignatures(tMatrix4<T>& matrix, tMatrix4<T> const& constant, tTuple2<unsigned int> const& place)
{
    using M = tMatrix4<T>;
    static_assert(std::is_same_v<decltype(constant[0]), T const&>);
    static_assert(std::is_same_v<decltype(constant[place]), T const&>);
    static_assert(std::is_same_v<decltype(matrix(0)), T&>);
    static_assert(std::is_same_v<decltype(matrix(place)), T&>);
    static_assert(std::is_same_v<decltype(constant.GetElement(0)), T const&>);
    static_assert(std::is_same_v<decltype(constant.GetElement(place)), T const&>);
    static_assert(std::is_same_v<decltype(matrix.GetElement(0)), T&>);
    static_assert(std::is_same_v<decltype(matrix.GetElement(place)), T&>);
    static_assert(std::is_same_v<decltype(matrix.Get()), T const*>);
    static_assert(std::is_same_v<decltype(constant == constant), bool>);
    static_assert(std::is_same_v<decltype(constant != constant), bool>);
    static_assert(std::is_same_v<decltype(constant.IsDiagonal()), bool>);
    static_assert(std::is_same_v<decltype(matrix = static_cast<T const*>(nullptr)), M&>);
    static_assert(noexcept(constant.IsIdentity()));
    static_assert(noexcept(constant[0]));
    static_assert(noexcept(constant == constant));
    static_assert(noexcept(constant.Determinant()));
    static_assert(std::is_nothrow_default_constructible_v<M> && std::is_nothrow_copy_constructible_v<M>);
    static_assert(std::is_nothrow_copy_assignable_v<M>);
    return true;
}
[[maybe_unused]] constexpr auto SINGLE_SIGNATURES = KeepsItsSignatures<float>;
[[maybe_unused]] constexpr auto DOUBLE_SIGNATURES = KeepsItsSignatures<double>;

template <typename M>
constexpr bool HasStatedConstants()
{
    static_assert(M::IDX_11 == 0 && M::IDX_12 == 1 && M::IDX_13 == 2 && M::IDX_14 == 3);
    static_assert(M::IDX_21 == 4 && M::IDX_22 == 5 && M::IDX_23 == 6 && M::IDX_24 == 7);
    static_assert(M::IDX_31 == 8 && M::IDX_32 == 9 && M::IDX_33 == 10 && M::IDX_34 == 11);
    static_assert(M::IDX_41 == 12 && M::IDX_42 == 13 && M::IDX_43 == 14 && M::IDX_44 == 15);
    static_assert(sizeof(M::IDX_11) == 8 && std::is_unsigned_v<std::remove_cv_t<decltype(M::IDX_44)>>);
    static_assert(M::SIZE == 16 && std::is_same_v<decltype(M::SIZE), unsigned char const>);
    static_assert(M::ROWSIZE == 4 && std::is_same_v<decltype(M::ROWSIZE), unsigned char const>);
    static_assert(std::is_same_v<decltype(M::BYTESIZE), unsigned char const>);
    static_assert(M::IDENTITY == 0 && M::DIAGONAL == 1 && M::ORTHONORMAL == 2 && M::GENERAL == 3);
    static_assert(sizeof(typename M::State) == 4);
    return true;
}
static_assert(HasStatedConstants<tMatrix4<float>>() && HasStatedConstants<tMatrix4<double>>());
static_assert(tMatrix4<float>::BYTESIZE == 64 && tMatrix4<double>::BYTESIZE == 128);

TYPED_TEST(Matrix4Test, ConstantsHaveAddresses)
{
    using M = tMatrix4<TypeParam>;
    unsigned long long const* const last = &M::IDX_44;
    unsigned char const* const sizes[] = {&M::SIZE, &M::ROWSIZE, &M::BYTESIZE};
    EXPECT_EQ(*last, 15u);
    EXPECT_EQ(*sizes[0], 16);
    EXPECT_EQ(*sizes[1], 4);
    EXPECT_EQ(*sizes[2], 16 * sizeof(TypeParam));
}

// Construction

TYPED_TEST(Matrix4Test, TheDefaultMatrixIsTheIdentity)
{
    tMatrix4<TypeParam> const m;
    ExpectMatrix(m, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    EXPECT_TRUE(m.IsIdentity());
    EXPECT_TRUE(m.IsDiagonal());
    EXPECT_TRUE(m.IsOrthonormal());
}

TYPED_TEST(Matrix4Test, SixteenValuesStandRowByRow)
{
    tMatrix4<TypeParam> const m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
    EXPECT_EQ(m[tMatrix4<TypeParam>::IDX_14], TypeParam{4});
    EXPECT_EQ(m[tMatrix4<TypeParam>::IDX_41], TypeParam{13});
}

TYPED_TEST(Matrix4Test, SixteenValuesAreClassified)
{
    using M = tMatrix4<TypeParam>;
    EXPECT_EQ(StateOf(M(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)), IDENTITY);
    EXPECT_EQ(StateOf(M(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1)), DIAGONAL);
    EXPECT_EQ(StateOf(M(0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)), ORTHONORMAL);
    EXPECT_EQ(StateOf(M(0, -1, 0, 5, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)), GENERAL);
}

TYPED_TEST(Matrix4Test, APointerGivesSixteenValuesRowByRowClassified)
{
    Elements<TypeParam> const values = Ramp<TypeParam>(-3, TypeParam{0.5});
    ExpectMatrix(tMatrix4<TypeParam>(values.data()), values, GENERAL);
    ExpectMatrix(Classified(Diagonal<TypeParam>(2, 3, 4, 1)), Diagonal<TypeParam>(2, 3, 4, 1), DIAGONAL);
    ExpectMatrix(Classified(QuarterTurn<TypeParam>()), QuarterTurn<TypeParam>(), ORTHONORMAL);
}

TYPED_TEST(Matrix4Test, APointerNeedsNoMoreThanTheAlignmentOfItsType)
{
    alignas(16) TypeParam values[17];
    for (std::size_t i = 0; i < 17; ++i)
        values[i] = static_cast<TypeParam>(i);
    TypeParam const* const source = values + 1; // 4 or 8 bytes beyond an aligned address
    ExpectMatrix(tMatrix4<TypeParam>(source), Ramp<TypeParam>(1, 1), GENERAL);
    tMatrix4<TypeParam> assigned;
    assigned = source;
    ExpectMatrix(assigned, Ramp<TypeParam>(1, 1), GENERAL);
}

TYPED_TEST(Matrix4Test, ACopyHasTheElementsAndTheStateEvenAStaleOne)
{
    for (std::uint32_t const state : {0u, 1u, 2u, 3u, 4u, 7u, 0xFFFFFFFFu})
    {
        tMatrix4<TypeParam> const original = MakeMatrix(Ramp<TypeParam>(1, 1), state);
        tMatrix4<TypeParam> const copy(original);
        ExpectMatrix(copy, Ramp<TypeParam>(1, 1), state);
        tMatrix4<TypeParam> assigned;
        EXPECT_EQ(&(assigned = original), &assigned);
        ExpectMatrix(assigned, Ramp<TypeParam>(1, 1), state);
    }
}

TYPED_TEST(Matrix4Test, AStaleStateAfterAnElementWriteIsCopied)
{
    tMatrix4<TypeParam> original;
    original(1) = 5;
    tMatrix4<TypeParam> const copy(original);
    tMatrix4<TypeParam> assigned(Ramp<TypeParam>(1, 1).data());
    assigned = original;
    ExpectMatrix(copy, With(IDENTITY_ELEMENTS<TypeParam>, 1, TypeParam{5}), IDENTITY);
    ExpectMatrix(assigned, With(IDENTITY_ELEMENTS<TypeParam>, 1, TypeParam{5}), IDENTITY);
}

TYPED_TEST(Matrix4Test, ACopyStandsOnItsOwn)
{
    tMatrix4<TypeParam> original;
    tMatrix4<TypeParam> copy(original);
    tMatrix4<TypeParam> assigned;
    assigned = original;
    original(5) = 9;
    EXPECT_NE(copy.Get(), original.Get());
    EXPECT_NE(assigned.Get(), original.Get());
    EXPECT_TRUE(IsAlignedInside(copy));
    EXPECT_TRUE(IsAlignedInside(assigned));
    ExpectMatrix(copy, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
    ExpectMatrix(assigned, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
}

TYPED_TEST(Matrix4Test, EveryBitOfAnElementIsCopied)
{
    using Limits = std::numeric_limits<TypeParam>;
    Elements<TypeParam> const values = {TypeParam{-0.0},
                                        Limits::denorm_min(),
                                        -Limits::infinity(),
                                        Limits::quiet_NaN(),
                                        Limits::max(),
                                        Limits::min(),
                                        0,
                                        1,
                                        2,
                                        3,
                                        4,
                                        5,
                                        6,
                                        7,
                                        8,
                                        -Limits::denorm_min()};
    tMatrix4<TypeParam> const original(values.data());
    tMatrix4<TypeParam> const copy(original);
    EXPECT_EQ(std::memcmp(original.Get(), values.data(), sizeof(values)), 0);
    EXPECT_EQ(std::memcmp(copy.Get(), values.data(), sizeof(values)), 0);
}

TYPED_TEST(Matrix4Test, AssigningAMatrixToItselfChangesNothing)
{
    tMatrix4<TypeParam> m = MakeMatrix(Ramp<TypeParam>(1, 1), ORTHONORMAL);
    tMatrix4<TypeParam> const& same = m;
    m = same;
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), ORTHONORMAL);
}

TYPED_TEST(Matrix4Test, AssigningFromAPointerClassifies)
{
    tMatrix4<TypeParam> m;
    EXPECT_EQ(&(m = QuarterTurn<TypeParam>().data()), &m);
    ExpectMatrix(m, QuarterTurn<TypeParam>(), ORTHONORMAL);
    m = Ramp<TypeParam>(1, 1).data();
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
    m = Diagonal<TypeParam>(1, 1, 1, 2).data();
    ExpectMatrix(m, Diagonal<TypeParam>(1, 1, 1, 2), DIAGONAL);
    m = IDENTITY_ELEMENTS<TypeParam>.data();
    ExpectMatrix(m, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
}

TYPED_TEST(Matrix4Test, AssigningItsOwnElementsReclassifiesAMatrix)
{
    tMatrix4<TypeParam> m;
    m(1) = 5;
    m = m.Get();
    ExpectMatrix(m, With(IDENTITY_ELEMENTS<TypeParam>, 1, TypeParam{5}), GENERAL);
}

TYPED_TEST(Matrix4Test, AssignedElementsMayOverlapTheMatrixAtAnyOffset)
{
    // With pointers of 8 bytes, all 16 are behind the elements of an aligned object, and 8 on each side in another.
    for (std::size_t const distance : {std::size_t{0}, std::size_t{8}})
    {
        std::size_t const room = RoomBeforeElements(distance);
        auto const before = static_cast<std::ptrdiff_t>(room / sizeof(TypeParam));
        auto const after = static_cast<std::ptrdiff_t>((16 - room) / sizeof(TypeParam));
        for (std::ptrdiff_t offset = -before; offset <= after; ++offset)
        {
            Storage<TypeParam> storage;
            tMatrix4<TypeParam>& m = storage.Place(distance);
            TypeParam* const first = &m(0);
            for (std::ptrdiff_t i = -before; i < 16 + after; ++i)
                first[i] = static_cast<TypeParam>(i);
            m = first + offset;
            ExpectMatrix(m, Ramp<TypeParam>(static_cast<TypeParam>(offset), 1), GENERAL);
        }
    }
}

TYPED_TEST(Matrix4Test, ElementsAreAlignedWhateverTheAlignmentOfTheObject)
{
    for (std::size_t const distance : {std::size_t{0}, std::size_t{8}})
    {
        Storage<TypeParam> storage;
        Storage<TypeParam> otherStorage;
        tMatrix4<TypeParam>& m = storage.Place(distance);
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(&m) % 16, distance);
        EXPECT_TRUE(IsAlignedInside(m));
        tMatrix4<TypeParam>& other = otherStorage.Place(8 - distance);
        other = Ramp<TypeParam>(1, 1).data();
        EXPECT_TRUE(IsAlignedInside(other));
        m = other;
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
        m += other;
        m *= MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, GENERAL);
        ExpectMatrix(m, Ramp<TypeParam>(2, 2), GENERAL);
    }
}

TYPED_TEST(Matrix4Test, EveryConstructorAlignsTheElements)
{
    using T = TypeParam;
    using V = tVector3<T>;
    Elements<T> const values = Ramp<T>(1, 1);
    Elements<Other<T>> const otherValues = Ramp<Other<T>>(1, 1);
    tMatrix4<T> const matrix(values.data());
    tMatrix4<Other<T>> const otherMatrix(otherValues.data());
    for (std::size_t const distance : {std::size_t{0}, std::size_t{8}})
    {
        Storage<T> storage;
        auto const expectAligned = [&](tMatrix4<T> const& m, Elements<T> const& elements, std::uint32_t state)
        {
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(&m) % 16, distance);
            EXPECT_TRUE(IsAlignedInside(m));
            ExpectMatrix(m, elements, state);
        };
        expectAligned(storage.Construct(distance), IDENTITY_ELEMENTS<T>, IDENTITY);
        expectAligned(storage.Construct(distance, T{1}, T{2}, T{3}, T{4}, T{5}, T{6}, T{7}, T{8}, T{9}, T{10}, T{11},
                                        T{12}, T{13}, T{14}, T{15}, T{16}),
                      values, GENERAL);
        expectAligned(storage.Construct(distance, values.data()), values, GENERAL);
        expectAligned(storage.Construct(distance, V(1, 2, 3), V(4, 5, 6), V(7, 8, 9)),
                      {1, 4, 7, 0, 2, 5, 8, 0, 3, 6, 9, 0, 0, 0, 0, 1}, GENERAL);
        expectAligned(storage.Construct(distance, matrix), values, GENERAL);
        expectAligned(storage.Construct(distance, otherMatrix), values, GENERAL);
        expectAligned(storage.Construct(distance, otherValues.data()), values, GENERAL);
    }
}

TYPED_TEST(Matrix4Test, AMatrixSurvivesTheGrowthOfItsContainer)
{
    std::vector<tMatrix4<TypeParam>> matrices;
    for (int i = 0; i < 40; ++i)
        matrices.emplace_back(Ramp(static_cast<TypeParam>(i), TypeParam{1}).data());
    for (int i = 0; i < 40; ++i)
    {
        tMatrix4<TypeParam> const& m = matrices[static_cast<std::size_t>(i)];
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, Ramp(static_cast<TypeParam>(i), TypeParam{1}), GENERAL);
    }
}

TYPED_TEST(Matrix4Test, TheStateComesFirstThenThePointerThenTheElements)
{
    Storage<TypeParam> storage;
    tMatrix4<TypeParam>& m = storage.Place(0);
    m = Ramp<TypeParam>(1, 1).data();
    unsigned char bytes[sizeof(m)];
    std::memcpy(bytes, static_cast<void const*>(&m), sizeof(m));
    std::uint32_t state = 0;
    std::memcpy(&state, bytes, sizeof(state));
    TypeParam const* pointer = nullptr;
    std::memcpy(&pointer, bytes + sizeof(void*), sizeof(pointer));
    EXPECT_EQ(state, GENERAL);
    EXPECT_EQ(pointer, m.Get());
    std::size_t const first = 2 * sizeof(void*) + RoomBeforeElements(0);
    EXPECT_EQ(std::memcmp(bytes + first, Ramp<TypeParam>(1, 1).data(), 16 * sizeof(TypeParam)), 0);
}

// Raw memory filled with zeros

TYPED_TEST(Matrix4Test, ZeroFilledMemoryIsRepairedByEveryAssignment)
{
    using U = Other<TypeParam>;
    tMatrix4<TypeParam> const matrix(Ramp<TypeParam>(1, 1).data());
    tMatrix4<U> const otherMatrix(Ramp<U>(1, 1).data());
    Elements<TypeParam> const values = Ramp<TypeParam>(1, 1);
    Elements<U> const otherValues = Ramp<U>(1, 1);
    for (std::size_t const distance : {std::size_t{0}, std::size_t{8}})
    {
        Storage<TypeParam> storage;
        tMatrix4<TypeParam>& m = storage.PlaceZeros(distance);
        EXPECT_EQ(m.Get(), nullptr);
        m = matrix;
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, values, GENERAL);
        storage.PlaceZeros(distance) = values.data();
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, values, GENERAL);
        storage.PlaceZeros(distance) = otherMatrix;
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, values, GENERAL);
        storage.PlaceZeros(distance) = otherValues.data();
        EXPECT_TRUE(IsAlignedInside(m));
        ExpectMatrix(m, values, GENERAL);
    }
}

TYPED_TEST(Matrix4Test, ZeroFilledMemoryIsRepairedByCompoundAssignment)
{
    tMatrix4<TypeParam> const matrix(Ramp<TypeParam>(1, 1).data());
    Storage<TypeParam> storage;
    tMatrix4<TypeParam>& m = storage.PlaceZeros(8);
    m += matrix;
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
    storage.PlaceZeros(8) -= matrix;
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Ramp<TypeParam>(-1, -1), GENERAL);
    storage.PlaceZeros(8) *= matrix; // its state says that it is the identity
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
    storage.PlaceZeros(8) *= tMatrix4<TypeParam>();
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Elements<TypeParam>{}, IDENTITY);
}

TYPED_TEST(Matrix4Test, ZeroFilledMemoryIsRepairedByDeserialise)
{
    std::ostringstream out;
    tMatrix4<TypeParam>(Ramp<TypeParam>(1, 1).data()).Serialise(out);
    std::istringstream in(out.str());
    Storage<TypeParam> storage;
    tMatrix4<TypeParam>& m = storage.PlaceZeros(8);
    m.Deserialise(in);
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), GENERAL);
}

TYPED_TEST(Matrix4Test, ZeroFilledMemoryIsRepairedByInvertAndTranspose)
{
    Storage<TypeParam> storage;
    tMatrix4<TypeParam>& m = storage.PlaceZeros(8);
    m.Invert();
    EXPECT_TRUE(IsAlignedInside(m));
    ExpectMatrix(m, Elements<TypeParam>{}, IDENTITY);
    storage.PlaceZeros(0).Transpose();
    tMatrix4<TypeParam> const& transposed = *std::launder(reinterpret_cast<tMatrix4<TypeParam>*>(&storage));
    EXPECT_TRUE(IsAlignedInside(transposed));
    ExpectMatrix(transposed, Elements<TypeParam>{}, IDENTITY);
}

TYPED_TEST(Matrix4Test, AClearedPointerIsRepairedByInvertAndTransposeInOtherStates)
{
    for (std::uint32_t const state : {ORTHONORMAL, GENERAL})
        for (bool const inverts : {false, true})
        {
            Storage<TypeParam> storage;
            tMatrix4<TypeParam>& m = storage.Place(0);
            m = MakeMatrix(QuarterTurn<TypeParam>(), state);
            std::memset(reinterpret_cast<char*>(&m) + sizeof(void*), 0, sizeof(void*));
            ASSERT_EQ(m.Get(), nullptr);
            if (inverts)
                m.Invert();
            else
                m.Transpose();
            ASSERT_TRUE(IsAlignedInside(m));
            // The elements are where they were, and both turn the turn back.
            tMatrix4<TypeParam> expected = MakeMatrix(QuarterTurn<TypeParam>(), state);
            ExpectValues(m, ElementsOf(expected.Transpose()), state);
        }
}

// Classification of elements

TYPED_TEST(Matrix4Test, ElementsWithinTheToleranceOfTheIdentityAreTheIdentity)
{
    TypeParam const one = AboveOne<TypeParam>(50);
    TypeParam const zero = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    for (std::size_t i = 0; i < 16; ++i)
    {
        TypeParam const value = i % 5 == 0 ? one : zero;
        EXPECT_EQ(StateOf(Classified(With(IDENTITY_ELEMENTS<TypeParam>, i, value))), IDENTITY) << i;
    }
    Elements<TypeParam> all;
    for (std::size_t i = 0; i < 16; ++i)
        all[i] = i % 5 == 0 ? one : -zero;
    ExpectMatrix(Classified(all), all, IDENTITY); // the elements stay as they are
}

TYPED_TEST(Matrix4Test, AnElementOffTheDiagonalThatIsNotZeroMakesAMatrixGeneral)
{
    for (std::size_t const i : OFF_DIAGONAL)
        for (TypeParam const value : {TOLERANCE<TypeParam>, -TOLERANCE<TypeParam>, TypeParam{0.5}, TypeParam{-1},
                                      QUIET_NAN<TypeParam>, INF<TypeParam>})
        {
            // Twice on the diagonal, so that no determinant or length can make it a rotation.
            Elements<TypeParam> const values = With(Diagonal<TypeParam>(2, 2, 2, 2), i, value);
            EXPECT_EQ(StateOf(Classified(values)), GENERAL) << i << ": " << value;
        }
}

TYPED_TEST(Matrix4Test, ADiagonalThatIsNotAllOnesIsDiagonal)
{
    for (std::size_t i = 0; i < 16; i += 5)
        for (TypeParam const value : {TypeParam{0}, TypeParam{-1}, TypeParam{2}, AboveOne<TypeParam>(51),
                                      TypeParam(0.99), QUIET_NAN<TypeParam>, INF<TypeParam>})
            EXPECT_EQ(StateOf(Classified(With(IDENTITY_ELEMENTS<TypeParam>, i, value))), DIAGONAL)
                << i << ": " << value;
    EXPECT_EQ(StateOf(Classified(Elements<TypeParam>{})), DIAGONAL);
    EXPECT_EQ(StateOf(Classified(Diagonal<TypeParam>(2, 3, 4, 1))), DIAGONAL);
    EXPECT_EQ(StateOf(Classified(Diagonal<TypeParam>(-1, 1, 1, 1))), DIAGONAL);
    // Two mirrors make a rotation, but the diagonal decides first.
    EXPECT_EQ(StateOf(Classified(Diagonal<TypeParam>(-1, -1, 1, 1))), DIAGONAL);
}

TYPED_TEST(Matrix4Test, NegativeZerosAreZeros)
{
    Elements<TypeParam> values = IDENTITY_ELEMENTS<TypeParam>;
    for (std::size_t const i : OFF_DIAGONAL)
        values[i] = TypeParam{-0.0};
    EXPECT_EQ(StateOf(Classified(values)), IDENTITY);
}

TYPED_TEST(Matrix4Test, ARotationIsOrthonormal)
{
    TypeParam const c = std::sqrt(TypeParam{3}) / 2; // 30 degrees
    TypeParam const s = TypeParam{0.5};
    EXPECT_EQ(StateOf(Classified<TypeParam>({c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})), ORTHONORMAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1})), ORTHONORMAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1})), ORTHONORMAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1})), ORTHONORMAL);
}

TYPED_TEST(Matrix4Test, ARotationThatInvolvesTheFourthCoordinateIsOrthonormal)
{
    EXPECT_EQ(StateOf(Classified<TypeParam>({0, 0, 0, -1, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0})), ORTHONORMAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({0, 0, 0, 1, 0, 0, -1, 0, 0, 1, 0, 0, -1, 0, 0, 0})), ORTHONORMAL);
}

TYPED_TEST(Matrix4Test, ARotationWithATranslationIsGeneral)
{
    TypeParam const c = std::sqrt(TypeParam{3}) / 2;
    TypeParam const s = TypeParam{0.5};
    EXPECT_EQ(StateOf(Classified<TypeParam>({c, -s, 0, 1, s, c, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1})), GENERAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({1, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})), GENERAL);
}

TYPED_TEST(Matrix4Test, AMirrorIsGeneral)
{
    // Orthonormal columns, determinant -1.
    EXPECT_EQ(StateOf(Classified<TypeParam>({0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})), GENERAL);
    EXPECT_EQ(StateOf(Classified<TypeParam>({0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1})), GENERAL);
}

TYPED_TEST(Matrix4Test, TheDeterminantThatClassifiesIsThatOfTheElementsWhateverTheStateWas)
{
    Elements<TypeParam> const mirror = {0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (std::uint32_t const before : {IDENTITY, DIAGONAL, ORTHONORMAL, GENERAL, 7u})
    {
        tMatrix4<TypeParam> m = MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, before);
        m = mirror.data();
        ExpectMatrix(m, mirror, GENERAL);
    }
}

TYPED_TEST(Matrix4Test, EachColumnOfARotationHasLengthOne)
{
    // A factor of 1 + 40 steps stays within 50 steps of 1 as a determinant, but its square does not.
    for (std::size_t column = 0; column < 4; ++column)
    {
        Elements<TypeParam> slightlyLong = QuarterTurn<TypeParam>();
        Elements<TypeParam> tooLong = slightlyLong;
        for (std::size_t i = column; i < 16; i += 4)
        {
            slightlyLong[i] *= AboveOne<TypeParam>(20);
            tooLong[i] *= AboveOne<TypeParam>(40);
        }
        EXPECT_EQ(StateOf(Classified(slightlyLong)), ORTHONORMAL) << column;
        EXPECT_EQ(StateOf(Classified(tooLong)), GENERAL) << column;
    }
}

TYPED_TEST(Matrix4Test, TheDeterminantOfARotationIsOne)
{
    // Three columns of 1 + 20 steps each: the squares are 1 + 40 steps, but the product is 1 + 60 steps.
    Elements<TypeParam> values = QuarterTurn<TypeParam>();
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 2; ++column)
            values[4 * row + column] *= AboveOne<TypeParam>(20);
    EXPECT_EQ(StateOf(Classified(values)), ORTHONORMAL);
    for (std::size_t row = 0; row < 4; ++row)
        values[4 * row + 2] *= AboveOne<TypeParam>(20);
    EXPECT_EQ(StateOf(Classified(values)), GENERAL);
}

TYPED_TEST(Matrix4Test, TheColumnsOfARotationArePerpendicularInPairs)
{
    // One column tilted towards another: lengths and determinant round to 1, one scalar product is off.
    for (std::size_t const i : OFF_DIAGONAL)
    {
        Elements<TypeParam> const tilted = With(IDENTITY_ELEMENTS<TypeParam>, i, TILT<TypeParam>);
        tMatrix4<TypeParam> const m(tilted.data());
        ExpectMatrix(m, tilted, GENERAL);
        EXPECT_EQ(m.Determinant(), TypeParam{1}) << i;
    }
}

TYPED_TEST(Matrix4Test, ScalarProductsOfColumnsAreZeroWithinTheTolerance)
{
    TypeParam const below = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    EXPECT_EQ(StateOf(Classified(With(QuarterTurn<TypeParam>(), 2, below))), ORTHONORMAL);
    EXPECT_EQ(StateOf(Classified(With(QuarterTurn<TypeParam>(), 2, TOLERANCE<TypeParam>))), GENERAL);
}

TYPED_TEST(Matrix4Test, NonFiniteElementsBesideTheDiagonalAreGeneral)
{
    for (TypeParam const value : {QUIET_NAN<TypeParam>, INF<TypeParam>})
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_EQ(StateOf(Classified(With(QuarterTurn<TypeParam>(), i, value))), GENERAL) << i;
}

/// The rules once more, written down one after the other.
template <typename T>
std::uint32_t ExpectedState(Elements<T> const& m, std::array<int, 4> const& rows = {1, 2, 3, 4})
{
    auto const at = [&](int row, int column) { return m[static_cast<std::size_t>(4 * (row - 1) + (column - 1))]; };
    bool offDiagonalIsZero = true;
    bool diagonalIsOne = true;
    for (int row = 1; row <= 4; ++row)
        for (int column = 1; column <= 4; ++column)
            if (row == column)
                diagonalIsOne = diagonalIsOne && IsEqual(at(row, column), T{1});
            else
                offDiagonalIsZero = offDiagonalIsZero && IsEqual(at(row, column), T{0});
    if (offDiagonalIsZero)
        return diagonalIsOne ? IDENTITY : DIAGONAL;
    if (!IsEqual(MakeMatrix(m, GENERAL).Determinant(), T{1}))
        return GENERAL;
    for (int a = 1; a <= 4; ++a)
        for (int b = a; b <= 4; ++b)
        {
            T dot = at(rows[0], a) * at(rows[0], b);
            for (std::size_t i = 1; i < 4; ++i)
                dot += at(rows[i], a) * at(rows[i], b);
            if (!IsEqual(dot, a == b ? T{1} : T{0}))
                return GENERAL;
        }
    return ORTHONORMAL;
}

TYPED_TEST(Matrix4Test, AnyMatrixNearARotationIsClassifiedByTheRules)
{
    Random random(20240317);
    int counts[4] = {};
    for (int run = 0; run < 4000; ++run)
    {
        auto const angle = run % 10 == 0 ? TypeParam{0} : random.Number<TypeParam>(-4, 4);
        TypeParam const c = std::cos(angle);
        TypeParam const s = std::sin(angle);
        Elements<TypeParam> values = {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        // A change of the order of the tolerance in one place, and in every fifth run a change of the diagonal, too.
        values[random.Below(16)] += random.Number<TypeParam>(-3, 3) * TOLERANCE<TypeParam>;
        if (run % 5 == 0)
            values[5 * random.Below(4)] *= static_cast<TypeParam>(1 + run % 3);
        std::uint32_t const expected = ExpectedState(values);
        ++counts[expected];
        EXPECT_EQ(StateOf(Classified(values)), expected) << "run " << run;
    }
    for (int const count : counts)
        EXPECT_GT(count, 30);
}

/// A rotation by a random quaternion.
template <typename T>
Elements<T> RandomRotation(Random& random)
{
    T const a = random.Number<T>(1, 2);
    T const b = random.Number<T>(-2, 2);
    T const c = random.Number<T>(-2, 2);
    T const d = random.Number<T>(-2, 2);
    T const k = 2 / (a * a + b * b + c * c + d * d);
    return {1 - k * (c * c + d * d),
            k * (b * c - a * d),
            k * (b * d + a * c),
            0,
            k * (b * c + a * d),
            1 - k * (b * b + d * d),
            k * (c * d - a * b),
            0,
            k * (b * d - a * c),
            k * (c * d + a * b),
            1 - k * (b * b + c * c),
            0,
            0,
            0,
            0,
            1};
}

/// Expects the state that sums from the first row on give, for matrices of which many have another one when the rows
/// are summed in another order.
template <typename T, typename Change>
void ExpectSumsFromTheFirstRowOn(unsigned int seed, Change change)
{
    Random random(seed);
    int otherwise = 0;
    for (int run = 0; run < 4000; ++run)
    {
        Elements<T> m = RandomRotation<T>(random);
        change(random, m);
        std::uint32_t const expected = ExpectedState(m);
        EXPECT_EQ(StateOf(Classified(m)), expected) << "run " << run;
        if (ExpectedState(m, {2, 3, 1, 4}) != expected || ExpectedState(m, {3, 1, 2, 4}) != expected)
            ++otherwise;
    }
    EXPECT_GT(otherwise, 100);
}

TYPED_TEST(Matrix4Test, TheSquaresOfAColumnAreSummedFromTheFirstRowOn)
{
    using T = TypeParam;
    // Columns whose squared length is just about 50 steps from 1: half as many epsilons more than 1 in their length, or
    // a quarter less.
    ExpectSumsFromTheFirstRowOn<T>(1,
                                   [](Random& random, Elements<T>& m)
                                   {
                                       std::size_t const column = random.Below(3);
                                       T const epsilons =
                                           random.Below(2) == 0 ? random.Number<T>(24, 26) : random.Number<T>(-13, -12);
                                       for (std::size_t row = 0; row < 3; ++row)
                                           m[4 * row + column] += m[4 * row + column] * (epsilons * EPSILON<T>);
                                   });
}

TYPED_TEST(Matrix4Test, TheProductsOfTwoColumnsAreSummedFromTheFirstRowOn)
{
    using T = TypeParam;
    // Columns whose product is just about the tolerance: one leans towards the other by so much.
    ExpectSumsFromTheFirstRowOn<T>(2,
                                   [](Random& random, Elements<T>& m)
                                   {
                                       std::size_t const column = random.Below(3);
                                       T const share = random.Number<T>(T(0.9), T(1.1)) * TOLERANCE<T>;
                                       for (std::size_t row = 0; row < 3; ++row)
                                           m[4 * row + column] += m[4 * row + (column + 1) % 3] * share;
                                   });
}

// Three axes

TYPED_TEST(Matrix4Test, ThreeAxesAreTheFirstThreeColumns)
{
    tMatrix4<TypeParam> const m({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    ExpectMatrix<TypeParam>(m, {1, 4, 7, 0, 2, 5, 8, 0, 3, 6, 9, 0, 0, 0, 0, 1}, GENERAL);
}

template <typename T>
std::uint32_t StateOfAxes(tVector3<T> const& a, tVector3<T> const& b, tVector3<T> const& c)
{
    return StateOf(tMatrix4<T>(a, b, c));
}

TYPED_TEST(Matrix4Test, TheThreeAxesOfTheWorldAreTheIdentity)
{
    EXPECT_EQ(StateOfAxes<TypeParam>({1, 0, 0}, {0, 1, 0}, {0, 0, 1}), IDENTITY);
    TypeParam const one = AboveOne<TypeParam>(50);
    TypeParam const zero = -std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    EXPECT_EQ(StateOfAxes<TypeParam>({one, zero, zero}, {zero, one, zero}, {zero, zero, one}), IDENTITY);
}

TYPED_TEST(Matrix4Test, AxesAlongTheAxesOfTheWorldAreDiagonal)
{
    TypeParam const zero = std::nextafter(TOLERANCE<TypeParam>, TypeParam{0});
    TypeParam const one = AboveOne<TypeParam>(51);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, 0}, {0, 3, 0}, {0, 0, 4}), DIAGONAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({one, 0, 0}, {0, 1, 0}, {0, 0, 1}), DIAGONAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({1, 0, 0}, {0, one, 0}, {0, 0, 1}), DIAGONAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({1, 0, 0}, {0, 1, 0}, {0, 0, one}), DIAGONAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({-1, zero, zero}, {zero, 1, zero}, {zero, zero, 1}), DIAGONAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 0, 0}, {0, 0, 0}, {0, 0, 0}), DIAGONAL);
    TypeParam const nan = QUIET_NAN<TypeParam>;
    EXPECT_EQ(StateOfAxes<TypeParam>({nan, 0, 0}, {0, 1, 0}, {0, 0, 1}), DIAGONAL);
}

TYPED_TEST(Matrix4Test, AnyComponentOffTheDiagonalMakesAxesMoreThanDiagonal)
{
    // Beside a diagonal of 2, so that the lengths say GENERAL.
    TypeParam const t = TOLERANCE<TypeParam>;
    EXPECT_EQ(StateOfAxes<TypeParam>({2, t, 0}, {0, 2, 0}, {0, 0, 2}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, t}, {0, 2, 0}, {0, 0, 2}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, 0}, {t, 2, 0}, {0, 0, 2}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, 0}, {0, 2, t}, {0, 0, 2}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, 0}, {0, 2, 0}, {t, 0, 2}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({2, 0, 0}, {0, 2, 0}, {0, t, 2}), GENERAL);
}

TYPED_TEST(Matrix4Test, PerpendicularAxesOfLengthOneAreOrthonormal)
{
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}), ORTHONORMAL);
    TypeParam const c = TypeParam(0.6);
    TypeParam const s = TypeParam(0.8);
    EXPECT_EQ(StateOfAxes<TypeParam>({1, 0, 0}, {0, c, s}, {0, -s, c}), ORTHONORMAL);
}

TYPED_TEST(Matrix4Test, ALeftHandedFrameIsOrthonormalByItsAxesAndGeneralByItsElements)
{
    tMatrix4<TypeParam> const axes({0, 1, 0}, {1, 0, 0}, {0, 0, 1});
    ExpectMatrix<TypeParam>(axes, {0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, ORTHONORMAL);
    EXPECT_EQ(StateOf(tMatrix4<TypeParam>(axes.Get())), GENERAL);
}

TYPED_TEST(Matrix4Test, AnAxisThatIsNotOfLengthOneMakesAFrameGeneral)
{
    // The squared length is 1 + 40 or 1 + 80 steps.
    TypeParam const good = AboveOne<TypeParam>(20);
    TypeParam const bad = AboveOne<TypeParam>(40);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, good, 0}, {-1, 0, 0}, {0, 0, 1}), ORTHONORMAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-good, 0, 0}, {0, 0, 1}), ORTHONORMAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, 0, good}), ORTHONORMAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, bad, 0}, {-1, 0, 0}, {0, 0, 1}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-bad, 0, 0}, {0, 0, 1}), GENERAL);
    EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, 0, bad}), GENERAL);
}

TYPED_TEST(Matrix4Test, AxesArePerpendicularWhenTheirScalarProductsAreStrictlyBelowTheTolerance)
{
    EXPECT_EQ(TOLERANCE<TypeParam>, (std::is_same_v<TypeParam, float> ? static_cast<TypeParam>(1.1920929e-6f)
                                                                      : static_cast<TypeParam>(2.220446049250313e-15)));
    TypeParam const at = TOLERANCE<TypeParam>;
    TypeParam const below = std::nextafter(at, TypeParam{0});
    for (TypeParam const sign : {TypeParam{1}, TypeParam{-1}})
    {
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, sign * below, 0}, {0, 0, 1}), ORTHONORMAL);
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, sign * below, 1}), ORTHONORMAL);
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {sign * below, 0, 1}), ORTHONORMAL);
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, sign * at, 0}, {0, 0, 1}), GENERAL); // a.b
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, sign * at, 1}), GENERAL); // a.c
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {sign * at, 0, 1}), GENERAL); // b.c
    }
}

TYPED_TEST(Matrix4Test, NonFiniteAxesAreGeneral)
{
    for (TypeParam const value : {QUIET_NAN<TypeParam>, INF<TypeParam>})
    {
        EXPECT_EQ(StateOfAxes<TypeParam>({0, value, 0}, {-1, 0, 0}, {0, 0, 1}), GENERAL);
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, value, 0}, {0, 0, 1}), GENERAL);
        EXPECT_EQ(StateOfAxes<TypeParam>({0, 1, 0}, {-1, 0, 0}, {0, 0, value}), GENERAL);
    }
}

// The other precision

TYPED_TEST(Matrix4Test, ConversionConvertsEachElement)
{
    using U = Other<TypeParam>;
    Elements<U> const values = Ramp<U>(U(0.1), U{1} / 3);
    Elements<TypeParam> expected;
    for (std::size_t i = 0; i < 16; ++i)
        expected[i] = static_cast<TypeParam>(values[i]);
    tMatrix4<U> const other(values.data());
    tMatrix4<TypeParam> const constructed = other;
    tMatrix4<TypeParam> const fromPointer = values.data();
    tMatrix4<TypeParam> assigned;
    tMatrix4<TypeParam> assignedFromPointer;
    EXPECT_EQ(&(assigned = other), &assigned);
    EXPECT_EQ(&(assignedFromPointer = values.data()), &assignedFromPointer);
    ExpectMatrix(constructed, expected, GENERAL);
    ExpectMatrix(fromPointer, expected, GENERAL);
    ExpectMatrix(assigned, expected, GENERAL);
    ExpectMatrix(assignedFromPointer, expected, GENERAL);
}

TYPED_TEST(Matrix4Test, ConversionClassifiesAndForgetsAStaleState)
{
    using U = Other<TypeParam>;
    for (std::uint32_t const stale : {IDENTITY, DIAGONAL, ORTHONORMAL, GENERAL, 7u})
    {
        tMatrix4<TypeParam> assigned(Ramp<TypeParam>(1, 1).data());
        ExpectMatrix(tMatrix4<TypeParam>(MakeMatrix(Ramp<U>(1, 1), stale)), Ramp<TypeParam>(1, 1), GENERAL);
        assigned = MakeMatrix(QuarterTurn<U>(), stale);
        ExpectMatrix(assigned, QuarterTurn<TypeParam>(), ORTHONORMAL);
        assigned = MakeMatrix(Diagonal<U>(1, 2, 3, 4), stale);
        ExpectMatrix(assigned, Diagonal<TypeParam>(1, 2, 3, 4), DIAGONAL);
        assigned = MakeMatrix(IDENTITY_ELEMENTS<U>, stale);
        ExpectMatrix(assigned, IDENTITY_ELEMENTS<TypeParam>, IDENTITY);
        assigned = Diagonal<U>(1, 2, 3, 4).data();
        ExpectMatrix(assigned, Diagonal<TypeParam>(1, 2, 3, 4), DIAGONAL);
    }
}

TEST(Matrix4ConversionTest, EachPrecisionClassifiesByItsOwnTolerance)
{
    tMatrix4<double> const wide(Diagonal<double>(1 + 1e-9, 1, 1, 1).data());
    EXPECT_EQ(StateOf(wide), DIAGONAL);
    EXPECT_EQ(StateOf(tMatrix4<float>(wide)), IDENTITY);
    tMatrix4<float> const narrow(Diagonal<float>(1.0000001f, 1, 1, 1).data());
    EXPECT_EQ(StateOf(narrow), IDENTITY);
    EXPECT_EQ(StateOf(tMatrix4<double>(narrow)), DIAGONAL);
}

TEST(Matrix4ConversionTest, NarrowingRoundsToNearestAndOverflowsToInfinity)
{
    double const step = std::ldexp(1.0, -23);
    tMatrix4<float> const m =
        tMatrix4<double>(1 + step * 0.5,     // a tie, to even
                         1 + step * 1.5,     // a tie, to even
                         1 + step * 0.50001, // up
                         1e300, -1e300, 1e-60, -1e-60, std::ldexp(1.0, -149), 0.1, 0, 0, 0, 0, 0, 0, 0);
    float const infinity = INF<float>;
    ExpectMatrix<float>(m,
                        {1, 1 + std::ldexp(2.0f, -23), 1 + std::ldexp(1.0f, -23), infinity, -infinity, 0.0f, -0.0f,
                         std::ldexp(1.0f, -149), 0.1f, 0, 0, 0, 0, 0, 0, 0},
                        GENERAL);
}

// Access

TYPED_TEST(Matrix4Test, EveryWayOfReadingReachesTheSameElement)
{
    tMatrix4<TypeParam> m(Ramp<TypeParam>(1, 1).data());
    tMatrix4<TypeParam> const& constant = m;
    for (unsigned int row = 0; row < 4; ++row)
        for (unsigned int column = 0; column < 4; ++column)
        {
            std::size_t const index = 4 * row + column;
            tTuple2<unsigned int> const position(row, column);
            EXPECT_EQ(constant[index], static_cast<TypeParam>(index + 1));
            EXPECT_EQ(&constant[index], constant.Get() + index);
            EXPECT_EQ(&constant[position], constant.Get() + index);
            EXPECT_EQ(&constant.GetElement(index), constant.Get() + index);
            EXPECT_EQ(&constant.GetElement(position), constant.Get() + index);
            EXPECT_EQ(&m(index), constant.Get() + index);
            EXPECT_EQ(&m(position), constant.Get() + index);
            EXPECT_EQ(&m.GetElement(index), constant.Get() + index);
            EXPECT_EQ(&m.GetElement(position), constant.Get() + index);
        }
    EXPECT_EQ((constant[{1, 2}]), TypeParam{7}); // row 2, column 3
}

TYPED_TEST(Matrix4Test, WritingAnElementLeavesTheStateAsItWas)
{
    tMatrix4<TypeParam> m;
    m(tMatrix4<TypeParam>::IDX_14) = 5;
    EXPECT_TRUE(m.IsIdentity());
    m(tTuple2<unsigned int>(1, 3)) = 6;
    m.GetElement(tMatrix4<TypeParam>::IDX_34) = 7;
    m.GetElement(tTuple2<unsigned int>(3, 0)) = 8;
    ExpectMatrix<TypeParam>(m, {1, 0, 0, 5, 0, 1, 0, 6, 0, 0, 1, 7, 8, 0, 0, 1}, IDENTITY);
}

// Predicates

TYPED_TEST(Matrix4Test, PredicatesReadTheStateAndNothingElse)
{
    for (Elements<TypeParam> const& elements : {Ramp<TypeParam>(1, 1), IDENTITY_ELEMENTS<TypeParam>})
    {
        auto const answers = [&](std::uint32_t state)
        {
            tMatrix4<TypeParam> const m = MakeMatrix(elements, state);
            return std::array<bool, 3>{m.IsIdentity(), m.IsDiagonal(), m.IsOrthonormal()};
        };
        EXPECT_EQ(answers(IDENTITY), (std::array<bool, 3>{true, true, true}));
        EXPECT_EQ(answers(DIAGONAL), (std::array<bool, 3>{false, true, false}));
        EXPECT_EQ(answers(ORTHONORMAL), (std::array<bool, 3>{false, false, true}));
        for (std::uint32_t const state : {GENERAL, 4u, 5u, 6u, 7u, 0x80000000u, 0xFFFFFFFDu, 0xFFFFFFFFu})
            EXPECT_EQ(answers(state), (std::array<bool, 3>{false, false, false})) << state;
    }
}

// Comparison

TYPED_TEST(Matrix4Test, ElementsAreEqualToZeroBelowTheToleranceAndNotFromItOn)
{
    using T = TypeParam;
    for (Elements<T> const& start : {Elements<T>{}, Ramp<T>(1, 1)})
        for (std::size_t i = 0; i < 16; ++i)
            for (T const sign : {T{1}, T{-1}})
            {
                SCOPED_TRACE("element " + std::to_string(i));
                tMatrix4<T> const zero = MakeMatrix(With(start, i, T{0}), GENERAL);
                auto const with = [&](T value) { return MakeMatrix(With(start, i, sign * value), GENERAL); };
                EXPECT_TRUE(zero == with(Steps(TOLERANCE<T>, -1)));
                EXPECT_TRUE(with(Steps(TOLERANCE<T>, -1)) == zero);
                EXPECT_FALSE(zero == with(TOLERANCE<T>));
                EXPECT_FALSE(zero == with(T(1.2) * TOLERANCE<T>));
                EXPECT_FALSE(with(T(1.2) * TOLERANCE<T>) == zero);
            }
}

TYPED_TEST(Matrix4Test, EqualityToleratesADifferenceInEveryElement)
{
    Elements<TypeParam> const values = Ramp<TypeParam>(TypeParam{-7.5}, 1);
    Elements<TypeParam> near = values;
    for (TypeParam& value : near)
        value = std::nextafter(value, TypeParam{100});
    tMatrix4<TypeParam> const a(values.data());
    tMatrix4<TypeParam> const b(near.data());
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(b == a);
    EXPECT_FALSE(a != b);
}

TYPED_TEST(Matrix4Test, OneElementThatDiffersMakesMatricesDifferent)
{
    Elements<TypeParam> const values = Ramp<TypeParam>(1, 1);
    tMatrix4<TypeParam> const a(values.data());
    for (std::size_t i = 0; i < 16; ++i)
    {
        tMatrix4<TypeParam> const b(With(values, i, values[i] + TypeParam(0.01)).data());
        EXPECT_FALSE(a == b) << i;
        EXPECT_TRUE(a != b) << i;
    }
}

TYPED_TEST(Matrix4Test, EqualityDoesNotCompareStates)
{
    for (std::uint32_t const state : {IDENTITY, DIAGONAL, ORTHONORMAL, GENERAL, 7u})
    {
        EXPECT_TRUE(tMatrix4<TypeParam>() == MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, state));
        EXPECT_FALSE(tMatrix4<TypeParam>() == MakeMatrix(Ramp<TypeParam>(1, 1), state));
    }
}

TYPED_TEST(Matrix4Test, EqualityFollowsTheToleranceForSpecialValues)
{
    using Limits = std::numeric_limits<TypeParam>;
    auto const filled = [](TypeParam value) { return Classified(Ramp<TypeParam>(value, 0)); };
    EXPECT_TRUE(filled(TypeParam{0}) == filled(TypeParam{-0.0}));
    EXPECT_TRUE(Classified(With(Elements<TypeParam>{}, 3, Limits::quiet_NaN())) ==
                Classified(With(Elements<TypeParam>{}, 3, Limits::quiet_NaN()))); // the same bits
    EXPECT_FALSE(Classified(With(Elements<TypeParam>{}, 3, Limits::quiet_NaN())) == Classified(Elements<TypeParam>{}));
    EXPECT_TRUE(Classified(With(Elements<TypeParam>{}, 3, Limits::infinity())) ==
                Classified(With(Elements<TypeParam>{}, 3, Limits::max()))); // neighbours
    EXPECT_FALSE(Classified(With(Elements<TypeParam>{}, 3, Limits::infinity())) ==
                 Classified(With(Elements<TypeParam>{}, 3, -Limits::infinity())));
}

// The binary form

/// The bytes of a number as this processor stores them, from the lowest to the highest.
std::string Native(std::string const& bytes)
{
    return bv::test::Native(bytes, bytes.size());
}

TYPED_TEST(Matrix4Test, TheBinaryFormIsTheElementsRowByRowAndThenTheState)
{
    tMatrix4<TypeParam> const m(Ramp<TypeParam>(1, 1).data());
    std::ostringstream stream;
    EXPECT_EQ(&m.Serialise(stream), &stream);
    std::string const bytes = stream.str();
    ASSERT_EQ(bytes.size(), 16 * sizeof(TypeParam) + 4);
    for (std::size_t i = 0; i < 16; ++i)
    {
        auto const bits = Bits(static_cast<TypeParam>(i + 1));
        std::string number;
        for (std::size_t byte = 0; byte < sizeof(TypeParam); ++byte)
            number += static_cast<char>((bits >> (8 * byte)) & 0xFF);
        EXPECT_EQ(bytes.substr(i * sizeof(TypeParam), sizeof(TypeParam)), Native(number));
    }
    EXPECT_EQ(bytes.substr(16 * sizeof(TypeParam)), Native(std::string("\x03\0\0\0", 4)));
}

TEST(Matrix4BinaryFormTest, TheBytesOfTheDefaultMatrixAreThese)
{
    std::ostringstream single;
    tMatrix4<float>().Serialise(single);
    std::string const one = Native(std::string("\0\0\x80\x3F", 4));
    std::string const oneAndZeros = one + std::string(16, '\0');
    EXPECT_EQ(single.str(), oneAndZeros + oneAndZeros + oneAndZeros + one + std::string(4, '\0'));
    std::ostringstream twice;
    tMatrix4<double>().Serialise(twice);
    std::string const wideOne = Native(std::string("\0\0\0\0\0\0\xF0\x3F", 8));
    std::string const wideOneAndZeros = wideOne + std::string(32, '\0');
    EXPECT_EQ(twice.str(), wideOneAndZeros + wideOneAndZeros + wideOneAndZeros + wideOne + std::string(4, '\0'));
}

TYPED_TEST(Matrix4Test, TheBinaryFormIsABlockOfElementsAndABlockOfTheState)
{
    RecordingBuffer buffer;
    std::iostream stream(&buffer);
    tMatrix4<TypeParam> m;
    std::vector<std::streamsize> const blocks = {16 * sizeof(TypeParam), 4};
    m.Serialise(stream);
    EXPECT_EQ(buffer.sizes, blocks);
    buffer.sizes.clear();
    m.Deserialise(stream);
    EXPECT_EQ(buffer.sizes, blocks);
}

TYPED_TEST(Matrix4Test, SerialiseWritesTheStateAsItStands)
{
    tMatrix4<TypeParam> stale;
    stale(1) = 2; // still labelled IDENTITY
    EXPECT_EQ(StateOf(stale), IDENTITY);
    EXPECT_EQ(StateOf(MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, 0x12345678)), 0x12345678u);
}

TYPED_TEST(Matrix4Test, DeserialiseRestoresElementsAndStateToTheBit)
{
    using Limits = std::numeric_limits<TypeParam>;
    for (std::uint32_t const state : {0u, 1u, 2u, 3u, 7u, 0xFFFFFFFFu})
    {
        Elements<TypeParam> values = Ramp<TypeParam>(TypeParam(0.1), TypeParam(0.7));
        values[0] = TypeParam{-0.0};
        values[1] = Limits::denorm_min();
        values[2] = Limits::infinity();
        values[3] = Limits::quiet_NaN();
        tMatrix4<TypeParam> const original = MakeMatrix(values, state);
        std::stringstream stream;
        original.Serialise(stream);
        tMatrix4<TypeParam> restored;
        EXPECT_EQ(&restored.Deserialise(stream), &stream);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(std::memcmp(restored.Get(), values.data(), sizeof(values)), 0);
        EXPECT_EQ(StateOf(restored), state);
    }
}

TYPED_TEST(Matrix4Test, DeserialiseTakesExactlyItsBytesAndClassifiesNothing)
{
    std::stringstream stream;
    MakeMatrix(Ramp<TypeParam>(1, 1), IDENTITY).Serialise(stream);
    MakeMatrix(Ramp<TypeParam>(2, 1), 7).Serialise(stream);
    stream << "rest";
    tMatrix4<TypeParam> m;
    m.Deserialise(stream);
    ExpectMatrix(m, Ramp<TypeParam>(1, 1), IDENTITY);
    m.Deserialise(stream);
    ExpectMatrix(m, Ramp<TypeParam>(2, 1), 7);
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "rest");
}

TYPED_TEST(Matrix4Test, AStreamThatEndsEarlyLeavesWhatItHasRead)
{
    std::ostringstream whole;
    MakeMatrix(Ramp<TypeParam>(101, 1), 0x04030201).Serialise(whole);
    std::string const bytes = whole.str();
    Elements<TypeParam> const before = Ramp<TypeParam>(1, 1);
    for (std::size_t length = 0; length <= bytes.size(); ++length)
    {
        std::istringstream stream(bytes.substr(0, length));
        tMatrix4<TypeParam> m = MakeMatrix(before, 0x0D0C0B0A);
        m.Deserialise(stream);
        EXPECT_EQ(stream.fail(), length < bytes.size());

        std::string expected(bytes.size(), '\0');
        std::uint32_t const state = 0x0D0C0B0A;
        std::memcpy(expected.data(), before.data(), sizeof(before));
        std::memcpy(expected.data() + sizeof(before), &state, sizeof(state));
        expected.replace(0, length, bytes.substr(0, length));
        std::ostringstream result;
        m.Serialise(result);
        EXPECT_EQ(result.str(), expected) << length;
    }
}

TYPED_TEST(Matrix4Test, TheBinaryFormIgnoresTheFormatOfTheStream)
{
    std::ostringstream stream;
    stream << std::hex << std::setw(200) << std::setfill('*') << std::setprecision(2);
    tMatrix4<TypeParam>().Serialise(stream);
    EXPECT_EQ(stream.str().size(), 16 * sizeof(TypeParam) + 4);
    EXPECT_EQ(stream.width(), 200); // unformatted output does not use it up
}

// The text form

char const* const IDENTITY_TEXT = "1\t0\t0\t0\n0\t1\t0\t0\n0\t0\t1\t0\n0\t0\t0\t1\n";

TYPED_TEST(Matrix4Test, TheTextIsFourLinesOfFourNumbers)
{
    EXPECT_EQ(std::string(tMatrix4<TypeParam>()), IDENTITY_TEXT);
    EXPECT_EQ(std::string(tMatrix4<TypeParam>(Ramp<TypeParam>(1, 1).data())),
              "1\t2\t3\t4\n5\t6\t7\t8\n9\t10\t11\t12\n13\t14\t15\t16\n");
    std::string const implicit = tMatrix4<TypeParam>();
    EXPECT_EQ(implicit, IDENTITY_TEXT);
}

TYPED_TEST(Matrix4Test, TheStateDoesNotAppearInTheText)
{
    for (std::uint32_t const state : {IDENTITY, DIAGONAL, ORTHONORMAL, GENERAL, 7u})
        EXPECT_EQ(std::string(MakeMatrix(IDENTITY_ELEMENTS<TypeParam>, state)), IDENTITY_TEXT);
}

TYPED_TEST(Matrix4Test, NumbersHaveSixDigitsInGeneralNotation)
{
    using Limits = std::numeric_limits<TypeParam>;
    tMatrix4<TypeParam> const m(TypeParam{0.5}, TypeParam{1234567}, TypeParam(1e-7), TypeParam{1} / 3, TypeParam{-2.25},
                                TypeParam{100000}, TypeParam{999999.5}, TypeParam{-0.0}, Limits::infinity(),
                                -Limits::infinity(), TypeParam(1e20), TypeParam(0.0001), TypeParam(0.00001), 3, 2, 1);
    EXPECT_EQ(std::string(m), "0.5\t1.23457e+06\t1e-07\t0.333333\n-2.25\t100000\t1e+06\t-0\n"
                              "inf\t-inf\t1e+20\t0.0001\n1e-05\t3\t2\t1\n");
}

TYPED_TEST(Matrix4Test, TheOutputOperatorWritesTheText)
{
    std::ostringstream stream;
    EXPECT_EQ(&(stream << tMatrix4<TypeParam>()), &stream);
    EXPECT_EQ(stream.str(), IDENTITY_TEXT);
    std::ostringstream called;
    bv::maths::operator<<(called, tMatrix4<TypeParam>());
    EXPECT_EQ(called.str(), IDENTITY_TEXT);
}

TYPED_TEST(Matrix4Test, TheFormatOfTheTargetDoesNotApplyToTheNumbers)
{
    std::ostringstream stream;
    stream << std::scientific << std::setprecision(2) << std::showpos << std::hex << std::uppercase;
    stream << tMatrix4<TypeParam>();
    EXPECT_EQ(stream.str(), IDENTITY_TEXT);
}

TYPED_TEST(Matrix4Test, WidthAndFillApplyOnceToTheWholeText)
{
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(36) << tMatrix4<TypeParam>() << tMatrix4<TypeParam>(); // 32 characters
    EXPECT_EQ(stream.str(), std::string("****") + IDENTITY_TEXT + IDENTITY_TEXT);
}

TYPED_TEST(Matrix4Test, TheGlobalLocaleDoesNotChangeTheText)
{
    struct Odd : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Odd));
    std::string const text = tMatrix4<TypeParam>(Ramp<TypeParam>(TypeParam{1000.5}, 1).data());
    std::ostringstream stream; // takes the global locale on
    stream << tMatrix4<TypeParam>(Ramp<TypeParam>(TypeParam{1000.5}, 1).data());
    std::locale::global(before);
    EXPECT_EQ(text, "1000.5\t1001.5\t1002.5\t1003.5\n1004.5\t1005.5\t1006.5\t1007.5\n"
                    "1008.5\t1009.5\t1010.5\t1011.5\n1012.5\t1013.5\t1014.5\t1015.5\n");
    EXPECT_EQ(stream.str(), text);
}

} // namespace
