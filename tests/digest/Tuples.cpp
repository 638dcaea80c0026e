#include <cstddef>
#include <type_traits>

#include <bv/maths/tTuple2.h>
#include <bv/maths/tTuple3.h>
#include <bv/maths/tVector2.h>
#include <bv/maths/tVector3.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// Integers from -20000 to 20000, whose sums and products have a place in any of the types, or unsigned ones of any
/// size; floating-point numbers of every kind.
template <typename T>
[[nodiscard]] T Component(Workload& work) noexcept
{
    if constexpr (std::is_floating_point_v<T>)
        return work.Number<T>(8);
    else if constexpr (std::is_signed_v<T>)
        return static_cast<int>(work.Below(40001)) - 20000;
    else
        return static_cast<unsigned int>(work.Bits()) >> work.Below(32);
}

template <typename Tuple, typename T, std::size_t COUNT>
void Operations(Digests& digests, Tuple const& a, T const (&components)[COUNT], T s)
{
    Tuple const b(components);
    digests["arithmetic"].Add(a + b, a - b, a * s);
    if constexpr (std::is_signed_v<T>)
        digests["arithmetic"].Add(-a);
    digests["comparison"].Add(a == b, b == b, a == Tuple(), Tuple());
    Tuple c = a;
    Digest& inPlace = digests["in-place"];
    inPlace.Add(c += b);
    inPlace.Add(c -= a);
    inPlace.Add(c *= s);
    Tuple const& itself = c;
    inPlace.Add(c -= itself);
    c = a;
    if (std::is_floating_point_v<T> || s != T{})
    {
        digests["arithmetic"].Add(a / s);
        inPlace.Add(c /= s);
    }
    for (std::size_t i = 0; i < COUNT; ++i)
    {
        digests["access"].Add(b[i]);
        c[i] = a[COUNT - 1 - i];
    }
    digests["access"].Add(c);
}

template <typename Object>
void Streams(Digests& digests, Object const& object)
{
    digests["streams"].Add(ReadBack(object, Object()));
    if constexpr (std::is_integral_v<decltype(object.x)>) // a NaN may have a sign
        digests["text"].Add(Text(object));
}

template <typename T>
void Tuples(Digests& digests, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
    {
        T const x = Component<T>(work);
        T const y = Component<T>(work);
        T const z = Component<T>(work);
        T const two[] = {Component<T>(work), Component<T>(work)};
        T const three[] = {Component<T>(work), Component<T>(work), Component<T>(work)};
        T const s = Component<T>(work);
        Operations(digests, tTuple2<T>(x, y), two, s);
        Operations(digests, tTuple3<T>(x, y, z), three, s);
        tVector2<T> vector(y, z);
        vector[0] = vector[1];
        vector[1] = x;
        digests["access"].Add(vector);
        if (i % 16 != 0)
            continue;
        Streams(digests, tTuple2<T>(x, z));
        Streams(digests, tTuple3<T>(z, y, x));
        Streams(digests, vector);
        Streams(digests, tVector3<T>(y, x, z));
    }
}

} // namespace

void RunTuples()
{
    RunBoth("tuples", Tuples<float>, Tuples<double>);
    Run("tuples", Tuples<int>, ".int");
    Run("tuples", Tuples<unsigned int>, ".unsigned");
}

} // namespace digest
