#include <cstdint>

#include <bv/maths/Bitwise.h>
#include <bv/maths/Spans.h>
#include <bv/maths/tMatrix4.h>
#include <bv/maths/tVolumeSphere.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename Value>
void Compare(Digests& digests, Value const& a, Value const& b)
{
    digests["equal"].Add(BitEqual()(a, b), BitEqual()(a, a));
    digests["order"].Add(BitLess()(a, b), BitLess()(b, a), BitLess()(a, a));
    digests["hashes"].Add(static_cast<std::uint32_t>(BitHash()(a))); // all that a machine of 32 bits has of it
}

template <typename T>
void Bits(Digests& digests, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
    {
        T numbers[16];
        for (T& number : numbers)
            number = work.Ordered<T>(4);
        tVector3<T> a(numbers[0], numbers[1], numbers[2]);
        tVector3<T> const b{work.OneIn(2) ? numbers[0] : numbers[3], work.OneIn(2) ? numbers[1] : -numbers[1],
                            numbers[2]};
        Compare(digests, a, b);
        Compare(digests, tVolumeSphere<T>(a, numbers[4]), tVolumeSphere<T>(b, numbers[4]));
        tMatrix4<T> const matrix(numbers);
        Compare(digests, matrix, matrix);

        Digest& spans = digests["spans"];
        for (T& number : AsSpan(a))
            number *= numbers[5];
        spans.Add(a);
        for (T const number : AsSpan(matrix))
            spans.Add(number);
        tVector3<T> const both[] = {a, b};
        for (T const number : AsSpan(both))
            spans.Add(number);
    }
}

} // namespace

void RunBits()
{
    RunBoth("bits", Bits<float>, Bits<double>);
}

} // namespace digest
