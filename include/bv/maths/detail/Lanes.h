#pragma once

/// @file
/// Numbers side by side in the registers of the processor: the vocabulary in which matrices, boxes, rays and packets
/// compute. Each lane has the bits that the same operation on a single number gives.
///
/// A register is a vector type of the compiler, with the arithmetic and the comparisons of the language. What stands
/// here beside them is a free function that works on one register, and on two that hold the halves of something wider.
/// All of it is forced into its caller, so that no copy is left for the linker to share with code for other processors.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "bv/detail/Platform.h"
#include "bv/maths/detail/Compiler.h"
#include "bv/maths/detail/Number.h"

#if !BV_GNU
#include <cmath>
#include <cstring>

#include "bv/maths/detail/PlainRegister.h"
#endif

namespace bv::maths::detail
{

inline namespace BV_REGISTERS
{

inline constexpr std::size_t WIDEST = HAS_AVX ? 32 : 16; ///< bytes of the widest register

template <typename T, std::size_t BYTES>
struct tRegister
{
#if BV_GNU
    typedef T Type __attribute__((vector_size(BYTES)));
#else
    using Type = tPlainRegister<T, BYTES / sizeof(T)>;
#endif
};

/// BYTES bytes of numbers side by side. Compilers split one that is wider than the processor's, and not well.
template <typename T, std::size_t BYTES>
using Register = typename tRegister<T, BYTES>::Type;

/// Numbers in two registers, the first half of them in the lower one.
template <typename V>
struct tHalves
{
    V low, high;

    [[nodiscard, gnu::always_inline]] friend tHalves operator+(tHalves const& a, tHalves const& b) noexcept
    {
        return {a.low + b.low, a.high + b.high};
    }
    [[nodiscard, gnu::always_inline]] friend tHalves operator-(tHalves const& a, tHalves const& b) noexcept
    {
        return {a.low - b.low, a.high - b.high};
    }
    [[nodiscard, gnu::always_inline]] friend tHalves operator*(tHalves const& a, tHalves const& b) noexcept
    {
        return {a.low * b.low, a.high * b.high};
    }
    [[nodiscard, gnu::always_inline]] friend tHalves operator/(tHalves const& a, tHalves const& b) noexcept
    {
        return {a.low / b.low, a.high / b.high};
    }
    [[nodiscard, gnu::always_inline]] friend auto operator<(tHalves const& a, tHalves const& b) noexcept
    {
        return tHalves<decltype(a.low < b.low)>{a.low < b.low, a.high < b.high};
    }
    [[nodiscard, gnu::always_inline]] friend auto operator==(tHalves const& a, tHalves const& b) noexcept
    {
        return tHalves<decltype(a.low == b.low)>{a.low == b.low, a.high == b.high};
    }
    [[nodiscard, gnu::always_inline]] friend auto operator<=(tHalves const& a, tHalves const& b) noexcept
    {
        return tHalves<decltype(a.low <= b.low)>{a.low <= b.low, a.high <= b.high};
    }
};

template <typename V>
struct tLanes
{
    using Element = std::remove_cvref_t<decltype(V{}[0])>;
    using Half = void;
    static constexpr std::size_t COUNT = sizeof(V) / sizeof(Element);
};
template <typename V>
struct tLanes<tHalves<V>>
{
    using Element = typename tLanes<V>::Element;
    using Half = V;
    static constexpr std::size_t COUNT = 2 * tLanes<V>::COUNT;
};

/// The type of a lane.
template <typename V>
using Element = typename tLanes<V>::Element;

/// The number of lanes.
template <typename V>
inline constexpr std::size_t COUNT = tLanes<V>::COUNT;

/// One of the two registers that something is in, or void.
template <typename V>
using Half = typename tLanes<V>::Half;

/// Whether something is in two registers.
template <typename V>
inline constexpr bool IS_HALVED = !std::is_void_v<Half<V>>;

template <typename T, bool FITS = 4 * sizeof(T) <= WIDEST>
struct tFourLanes
{
    using Type = Register<T, 4 * sizeof(T)>;
};
template <typename T>
struct tFourLanes<T, false>
{
    using Type = tHalves<Register<T, 2 * sizeof(T)>>;
};

/// Four numbers: a row of a matrix, or the components of a vector and one more.
template <typename T>
using tFour = typename tFourLanes<T>::Type;

/// The bits of a register as words of 32 bits.
template <typename V>
using Words = Register<std::int32_t, sizeof(V)>;

#if BV_GNU

/// A register as it stands in memory, over objects of any type. (A copy of 16 bytes is two integers to GCC.)
template <typename V, std::size_t ALIGNMENT>
struct tInMemory
{
    typedef V Type __attribute__((may_alias, aligned(ALIGNMENT)));
};

/// Reads a register, or a number, from an address that is a multiple of the alignment.
template <typename V, std::size_t ALIGNMENT>
[[nodiscard, gnu::always_inline]] inline V ReadAt(void const* address) noexcept
{
    return *static_cast<typename tInMemory<V, ALIGNMENT>::Type const*>(address);
}

/// Writes a register, or a number, to such an address.
template <std::size_t ALIGNMENT, typename V>
[[gnu::always_inline]] inline void WriteAt(V const& lanes, void* address) noexcept
{
    *static_cast<typename tInMemory<V, ALIGNMENT>::Type*>(address) = lanes;
}

#else

template <typename V, std::size_t ALIGNMENT>
[[nodiscard]] inline V ReadAt(void const* address) noexcept
{
    V lanes;
    std::memcpy(&lanes, address, sizeof lanes);
    return lanes;
}

template <std::size_t ALIGNMENT, typename V>
inline void WriteAt(V const& lanes, void* address) noexcept
{
    std::memcpy(address, &lanes, sizeof lanes);
}

#endif

/// Reads numbers from an address on that is a multiple of the alignment.
template <typename V, std::size_t ALIGNMENT = 1>
[[nodiscard, gnu::always_inline]] inline V Load(Element<V> const* numbers) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Load<Half<V>, ALIGNMENT>(numbers), Load<Half<V>, ALIGNMENT>(numbers + COUNT<Half<V>>)};
    else
        return ReadAt<V, ALIGNMENT>(numbers);
}

/// Writes numbers to an address that is a multiple of the alignment.
template <std::size_t ALIGNMENT = 1, typename V>
[[gnu::always_inline]] inline void Store(V const& lanes, Element<V>* numbers) noexcept
{
    if constexpr (IS_HALVED<V>)
    {
        Store<ALIGNMENT>(lanes.low, numbers);
        Store<ALIGNMENT>(lanes.high, numbers + COUNT<Half<V>>);
    }
    else
        WriteAt<ALIGNMENT>(lanes, numbers);
}

/// Reads from an address that is a multiple of 16, where the processor can read as it computes.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V LoadAligned(Element<V> const* numbers) noexcept
{
    return Load<V, 16>(numbers);
}

/// Writes to such an address.
template <typename V>
[[gnu::always_inline]] inline void StoreAligned(V const& lanes, Element<V>* numbers) noexcept
{
    Store<16>(lanes, numbers);
}

/// Reads numbers from some byte of an object on that holds numbers and nothing else.
template <typename V, std::size_t OFFSET = 0, typename Object>
[[nodiscard, gnu::always_inline]] inline V LoadFrom(Object const& object) noexcept
{
    static_assert(OFFSET + sizeof(V) <= sizeof(Object));
    return ReadAt<V, 1>(reinterpret_cast<char const*>(&object) + OFFSET);
}

/// Writes numbers from some byte of such an object on.
template <std::size_t OFFSET = 0, typename V, typename Object>
[[gnu::always_inline]] inline void StoreInto(V const& lanes, Object& object) noexcept
{
    static_assert(OFFSET + sizeof(V) <= sizeof(Object));
    WriteAt<1>(lanes, reinterpret_cast<char*>(&object) + OFFSET);
}
template <std::size_t OFFSET = 0, typename V, typename Object>
[[gnu::always_inline]] inline void StoreInto(tHalves<V> const& lanes, Object& object) noexcept
{
    StoreInto<OFFSET>(lanes.low, object);
    StoreInto<OFFSET + sizeof(V)>(lanes.high, object);
}

/// Four numbers side by side.
template <typename T>
[[nodiscard, gnu::always_inline]] inline tFour<T> Four(T a, T b, T c, T d) noexcept
{
    if constexpr (IS_HALVED<tFour<T>>)
        return {Half<tFour<T>>{a, b}, Half<tFour<T>>{c, d}};
    else
        return tFour<T>{a, b, c, d};
}

/// One number in each lane.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Broadcast(Element<V> x) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Broadcast<Half<V>>(x), Broadcast<Half<V>>(x)};
    else if constexpr (COUNT<V> == 2)
        return V{x, x};
    else if constexpr (COUNT<V> == 4)
        return V{x, x, x, x};
    else if constexpr (COUNT<V> == 8)
        return V{x, x, x, x, x, x, x, x};
    else
    {
        static_assert(COUNT<V> == 16);
        return V{x, x, x, x, x, x, x, x, x, x, x, x, x, x, x, x};
    }
}

/// The number in one lane.
template <std::size_t LANE, typename V>
[[nodiscard, gnu::always_inline]] inline Element<V> Get(V const& lanes) noexcept
{
    if constexpr (!IS_HALVED<V>)
        return lanes[LANE];
    else if constexpr (LANE < COUNT<V> / 2)
        return lanes.low[LANE];
    else
        return lanes.high[LANE - COUNT<V> / 2];
}

/// `a` where a mask is set, `b` elsewhere. As words: GCC takes masks of 64 bits apart where SSE2 is all there is.
template <typename M, typename V>
[[nodiscard, gnu::always_inline]] inline V Select(M const& mask, V const& a, V const& b) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Select(mask.low, a.low, b.low), Select(mask.high, a.high, b.high)};
    else
    {
        Words<V> const words = BitsAs<Words<V>>(mask);
        return BitsAs<V>((BitsAs<Words<V>>(a) & words) | (BitsAs<Words<V>>(b) & ~words));
    }
}

/// A mask as bits to compute on. GCC would take the arithmetic for a choice, which costs three operations.
template <typename M>
[[nodiscard, gnu::always_inline]] inline M AsBits(M mask) noexcept
{
#if BV_SSE2 && !defined __clang__
    asm("" : "+x"(mask));
#endif
    return mask;
}

/// `a` where a mask is set, and elsewhere the bits of `a` or `b`: one operation less than a choice.
template <typename M, typename V>
[[nodiscard, gnu::always_inline]] inline V OrWhereNot(M const& mask, V const& a, V const& b) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {OrWhereNot(mask.low, a.low, b.low), OrWhereNot(mask.high, a.high, b.high)};
    else
        return BitsAs<V>(BitsAs<Words<V>>(a) | (BitsAs<Words<V>>(b) & ~BitsAs<Words<V>>(mask)));
}

/// The smaller number in each lane, `b` where one is NaN or both are zeros: one instruction. GCC is told of it, since
/// it would share a comparison of `a` with `b` with others, and choose by its mask.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Min(V const& a, V const& b) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Min(a.low, b.low), Min(a.high, b.high)};
#if BV_AVX && !defined __clang__
    else if constexpr (std::is_same_v<V, Register<float, 32>>)
        return __builtin_ia32_minps256(a, b);
    else if constexpr (std::is_same_v<V, Register<double, 32>>)
        return __builtin_ia32_minpd256(a, b);
#endif
#if BV_SSE2 && !defined __clang__
    else if constexpr (std::is_same_v<V, Register<float, 16>>)
        return __builtin_ia32_minps(a, b);
    else if constexpr (std::is_same_v<V, Register<double, 16>>)
        return __builtin_ia32_minpd(a, b);
#endif
    else
#if BV_GNU
        return a < b ? a : b;
#else
        return Select(a < b, a, b);
#endif
}

/// The larger number in each lane, `b` where one is NaN or both are zeros, in the same way.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Max(V const& a, V const& b) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Max(a.low, b.low), Max(a.high, b.high)};
#if BV_AVX && !defined __clang__
    else if constexpr (std::is_same_v<V, Register<float, 32>>)
        return __builtin_ia32_maxps256(a, b);
    else if constexpr (std::is_same_v<V, Register<double, 32>>)
        return __builtin_ia32_maxpd256(a, b);
#endif
#if BV_SSE2 && !defined __clang__
    else if constexpr (std::is_same_v<V, Register<float, 16>>)
        return __builtin_ia32_maxps(a, b);
    else if constexpr (std::is_same_v<V, Register<double, 16>>)
        return __builtin_ia32_maxpd(a, b);
#endif
    else
#if BV_GNU
        return b < a ? a : b;
#else
        return Select(b < a, a, b);
#endif
}

/// The lanes of two registers, counted through, in another order.
#if BV_GNU
template <int... FROM, typename V>
[[nodiscard, gnu::always_inline]] inline V Shuffle(V const& a, V const& b) noexcept
{
    return __builtin_shufflevector(a, b, FROM...);
}
#else
template <int... FROM, typename V>
[[nodiscard]] inline V Shuffle(V const& a, V const& b) noexcept
{
    constexpr int LANES = static_cast<int>(COUNT<V>);
    return {(FROM < LANES ? a : b)[static_cast<std::size_t>(FROM % LANES)]...};
}
#endif

/// Two lanes of a register of two.
template <int A, int B, typename V>
[[nodiscard, gnu::always_inline]] inline V Choose(V const& a) noexcept
{
    if constexpr (!SHUFFLES_AS_INTEGERS)
        return Shuffle<A, B>(a, a);
    else
    {
        Words<V> const words = BitsAs<Words<V>>(a);
        return BitsAs<V>(Shuffle<2 * A, 2 * A + 1, 2 * B, 2 * B + 1>(words, words));
    }
}

/// The first two of four lanes in a register of their own.
template <typename V>
[[nodiscard, gnu::always_inline]] inline auto FirstTwo(V const& a) noexcept
{
    if constexpr (IS_HALVED<V>)
        return a.low;
    else
#if BV_GNU
        return __builtin_shufflevector(a, a, 0, 1);
#else
        return Register<Element<V>, 2 * sizeof(Element<V>)>{a[0], a[1]};
#endif
}

/// One of four registers, the halves of two operands.
template <int INDEX, typename V>
[[nodiscard, gnu::always_inline]] inline V const& HalfOf(tHalves<V> const& a, tHalves<V> const& b) noexcept
{
    return INDEX < 2 ? (INDEX == 0 ? a.low : a.high) : INDEX == 2 ? b.low : b.high;
}

/// Two of the eight lanes of two operands.
template <int A, int B, typename V>
[[nodiscard, gnu::always_inline]] inline V ChooseTwo(tHalves<V> const& a, tHalves<V> const& b) noexcept
{
    if constexpr (A / 2 == B / 2)
        return Choose<A % 2, B % 2>(HalfOf<A / 2>(a, b));
    else
        return Shuffle<A % 2, 2 + B % 2>(HalfOf<A / 2>(a, b), HalfOf<B / 2>(a, b));
}

/// Four lanes of two operands, which are counted through from 0 to 7.
template <int A, int B, int C, int D, typename V>
[[nodiscard, gnu::always_inline]] inline V Choose(V const& a, V const& b) noexcept
{
    constexpr bool KEEPS_PLACES = A % 4 == 0 && B % 4 == 1 && C % 4 == 2 && D % 4 == 3;
    constexpr bool JOINS_HALVES = A / 4 == B / 4 && C / 4 == D / 4;
    if constexpr (IS_HALVED<V>)
        return {ChooseTwo<A, B>(a, b), ChooseTwo<C, D>(a, b)};
    else if constexpr (BLENDS_BY_MASK && KEEPS_PLACES && !JOINS_HALVES)
        return Select(Register<Integer<Element<V>>, sizeof(V)>{-(A / 4), -(B / 4), -(C / 4), -(D / 4)}, b, a);
    else
        return Shuffle<A, B, C, D>(a, b);
}

/// Four lanes of one operand.
template <int A, int B, int C, int D, typename V>
[[nodiscard, gnu::always_inline]] inline V Choose(V const& a) noexcept
{
    if constexpr (IS_HALVED<V>)
        return Choose<A, B, C, D>(a, a);
    else if constexpr (!SHUFFLES_AS_INTEGERS)
        return Shuffle<A, B, C, D>(a, a);
    else
    {
        Words<V> const words = BitsAs<Words<V>>(a);
        return BitsAs<V>(Shuffle<A, B, C, D>(words, words));
    }
}

/// Whether something fills one register of 32 bytes, whose halves take longer to cross than to shuffle.
template <typename V>
inline constexpr bool IS_WIDE = sizeof(V) == 32 && !IS_HALVED<V>;

/// Turns four rows into columns.
template <typename V>
[[gnu::always_inline]] inline void Transpose(V& a, V& b, V& c, V& d) noexcept
{
    if constexpr (IS_WIDE<V>)
    {
        V const oddAB = Choose<0, 4, 2, 6>(a, b);
        V const evenAB = Choose<1, 5, 3, 7>(a, b);
        V const oddCD = Choose<0, 4, 2, 6>(c, d);
        V const evenCD = Choose<1, 5, 3, 7>(c, d);
        a = Choose<0, 1, 4, 5>(oddAB, oddCD);
        b = Choose<0, 1, 4, 5>(evenAB, evenCD);
        c = Choose<2, 3, 6, 7>(oddAB, oddCD);
        d = Choose<2, 3, 6, 7>(evenAB, evenCD);
    }
    else
    {
        V const lowAB = Choose<0, 4, 1, 5>(a, b);
        V const highAB = Choose<2, 6, 3, 7>(a, b);
        V const lowCD = Choose<0, 4, 1, 5>(c, d);
        V const highCD = Choose<2, 6, 3, 7>(c, d);
        a = Choose<0, 1, 4, 5>(lowAB, lowCD);
        b = Choose<2, 3, 6, 7>(lowAB, lowCD);
        c = Choose<0, 1, 4, 5>(highAB, highCD);
        d = Choose<2, 3, 6, 7>(highAB, highCD);
    }
}

/// Turns three rows into their first three columns, which have anything in the last lane.
template <typename V>
[[gnu::always_inline]] inline void Transpose(V& a, V& b, V& c) noexcept
{
    if constexpr (IS_WIDE<V>)
    {
        V d = c;
        Transpose(a, b, c, d);
    }
    else
    {
        V const lowAB = Choose<0, 4, 1, 5>(a, b);
        V const highAB = Choose<2, 6, 3, 7>(a, b);
        a = Choose<0, 1, 4, 5>(lowAB, c);
        b = Choose<2, 3, 5, 5>(lowAB, c);
        c = Choose<0, 1, 6, 7>(highAB, c);
    }
}

#if BV_SSE2

/// Min() and Max() of single numbers in one instruction, which no compiler weaves into vectors.
[[nodiscard, gnu::always_inline]] inline float MinOfOne(float a, float b) noexcept
{
    return __builtin_ia32_minss(Register<float, 16>{a}, Register<float, 16>{b})[0];
}

/// @copydoc MinOfOne(float, float)
[[nodiscard, gnu::always_inline]] inline float MaxOfOne(float a, float b) noexcept
{
    return __builtin_ia32_maxss(Register<float, 16>{a}, Register<float, 16>{b})[0];
}

#endif

/// @copydoc MinOfOne(float, float)
[[nodiscard, gnu::always_inline]] inline double MinOfOne(double a, double b) noexcept
{
#if BV_SSE2 && defined __clang__
    return __builtin_ia32_minsd(Register<double, 16>{a}, Register<double, 16>{b})[0];
#else // GCC folds the instruction for one number of constants as if none were NaN
    return Min(Register<double, 16>{a}, Register<double, 16>{b})[0];
#endif
}

/// @copydoc MinOfOne(float, float)
[[nodiscard, gnu::always_inline]] inline double MaxOfOne(double a, double b) noexcept
{
#if BV_SSE2 && defined __clang__
    return __builtin_ia32_maxsd(Register<double, 16>{a}, Register<double, 16>{b})[0];
#else
    return Max(Register<double, 16>{a}, Register<double, 16>{b})[0];
#endif
}

using detail::Magnitude; // of one number

/// The numbers without their signs.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Magnitude(V const& a) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Magnitude(a.low), Magnitude(a.high)};
    else
    {
        using I = Register<Integer<Element<V>>, sizeof(V)>;
        constexpr Element<I> ALL_BUT_SIGN = std::numeric_limits<Element<I>>::max(); // by the compiler, at any level
        return BitsAs<V>(BitsAs<I>(a) & Broadcast<I>(ALL_BUT_SIGN));
    }
}

/// The numbers with the opposite signs.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V Negated(V const& a) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {Negated(a.low), Negated(a.high)};
    else
    {
        using I = Register<Integer<Element<V>>, sizeof(V)>;
        constexpr Element<I> SIGN = std::numeric_limits<Element<I>>::min();
        return BitsAs<V>(BitsAs<I>(a) ^ Broadcast<I>(SIGN));
    }
}

/// Where both masks are set. As words: GCC takes masks of 64 bits apart to join them where SSE2 is all there is.
template <typename M>
[[nodiscard, gnu::always_inline]] inline M Both(M const& a, M const& b) noexcept
{
    if constexpr (IS_HALVED<M>)
        return {Both(a.low, b.low), Both(a.high, b.high)};
    else
        return BitsAs<M>(BitsAs<Words<M>>(a) & BitsAs<Words<M>>(b));
}

/// Where one of two masks is set.
template <typename M>
[[nodiscard, gnu::always_inline]] inline M Either(M const& a, M const& b) noexcept
{
    if constexpr (IS_HALVED<M>)
        return {Either(a.low, b.low), Either(a.high, b.high)};
    else
        return BitsAs<M>(BitsAs<Words<M>>(a) | BitsAs<Words<M>>(b));
}

/// One bit for each lane of a mask, the first lane lowest.
template <typename M>
[[nodiscard, gnu::always_inline]] inline int Bits(M const& mask) noexcept
{
    if constexpr (IS_HALVED<M>)
        return Bits(mask.low) | Bits(mask.high) << COUNT<M> / 2;
#if BV_AVX
    else if constexpr (sizeof(M) == 32 && sizeof(Element<M>) == 4)
        return __builtin_ia32_movmskps256(BitsAs<Register<float, 32>>(mask));
    else if constexpr (sizeof(M) == 32 && sizeof(Element<M>) == 8)
        return __builtin_ia32_movmskpd256(BitsAs<Register<double, 32>>(mask));
#endif
#if BV_SSE2
    else if constexpr (sizeof(M) == 16 && sizeof(Element<M>) == 4)
        return __builtin_ia32_movmskps(BitsAs<Register<float, 16>>(mask));
    else if constexpr (sizeof(M) == 16 && sizeof(Element<M>) == 8)
        return __builtin_ia32_movmskpd(BitsAs<Register<double, 16>>(mask));
#endif
    else
    {
        int bits = 0;
        for (std::size_t lane = 0; lane < COUNT<M>; ++lane)
            bits |= (mask[lane] != 0 ? 1 : 0) << lane;
        return bits;
    }
}

/// Whether all lanes of a mask are set.
template <typename M>
[[nodiscard, gnu::always_inline]] inline bool All(M const& mask) noexcept
{
    if constexpr (IS_HALVED<M>)
        return All(Both(mask.low, mask.high));
    else
        return Bits(mask) == (1 << COUNT<M>)-1;
}

/// Whether a lane of a mask is set.
template <typename M>
[[nodiscard, gnu::always_inline]] inline bool Any(M const& mask) noexcept
{
    if constexpr (IS_HALVED<M>)
        return Any(Either(mask.low, mask.high));
    else
        return Bits(mask) != 0;
}

/// The square root of one number: that of std::sqrt(), which may also call a function to set `errno`.
[[nodiscard, gnu::always_inline]] inline float SquareRoot(float x) noexcept
{
#if BV_ELEMENTWISE_SQRT
    return __builtin_elementwise_sqrt(x);
#elif BV_SSE2
    return __builtin_ia32_sqrtss(Broadcast<Register<float, 16>>(x))[0];
#elif BV_GNU
    return __builtin_sqrtf(x);
#else
    return std::sqrt(x);
#endif
}

/// @copydoc SquareRoot(float)
[[nodiscard, gnu::always_inline]] inline double SquareRoot(double x) noexcept
{
#if BV_ELEMENTWISE_SQRT
    return __builtin_elementwise_sqrt(x);
#elif BV_SSE2
    return __builtin_ia32_sqrtsd(Broadcast<Register<double, 16>>(x))[0];
#elif BV_GNU
    return __builtin_sqrt(x);
#else
    return std::sqrt(x);
#endif
}

/// The square roots as the processor rounds them, which is to nearest.
template <typename V>
[[nodiscard, gnu::always_inline]] inline V SquareRoot(V const& x) noexcept
{
    if constexpr (IS_HALVED<V>)
        return {SquareRoot(x.low), SquareRoot(x.high)};
#if BV_ELEMENTWISE_SQRT
    else
        return __builtin_elementwise_sqrt(x);
#else
#if BV_AVX
    else if constexpr (std::is_same_v<V, Register<float, 32>>)
        return __builtin_ia32_sqrtps256(x);
    else if constexpr (std::is_same_v<V, Register<double, 32>>)
        return __builtin_ia32_sqrtpd256(x);
#endif
#if BV_SSE2
    else if constexpr (std::is_same_v<V, Register<float, 16>>)
        return __builtin_ia32_sqrtps(x);
    else if constexpr (std::is_same_v<V, Register<double, 16>>)
        return __builtin_ia32_sqrtpd(x);
#endif
    else
    {
        V roots = x;
        for (std::size_t lane = 0; lane < COUNT<V>; ++lane)
        {
            // Rounded once more, the root of a `double` is that of a `float`.
            roots[lane] = static_cast<Element<V>>(SquareRoot(static_cast<double>(x[lane])));
        }
        return roots;
    }
#endif
}

} // namespace BV_REGISTERS

} // namespace bv::maths::detail
