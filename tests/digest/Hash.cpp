#include <cstddef>
#include <string>

#include <bv/Hash.h>
#include <bv/maths/tTuple2.h>
#include <bv/maths/tTuple3.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void AddTupleHashes(Digest& digest, T x, T y, T z)
{
    tTuple2<T> const two(x, y);
    tTuple3<T> const three(x, y, z);
    digest.Add(two.GetHash32(), two.GetHash8(), three.GetHash32(), three.GetHash8());
}

void Hashes(Digests& digests, Workload& work)
{
    std::string bytes;
    for (int i = 0; i < 400; ++i)
        bytes.push_back(static_cast<char>(work.Bits()));
    for (std::size_t length = 0; length <= 300; ++length)
        for (int i = 0; i < 8; ++i)
        {
            char const* const start = bytes.data() + work.Below(64);
            auto const seed = static_cast<unsigned int>(work.Bits());
            digests["jenkins"].Add(bv::GetJenkinsHash(start, length, i == 0 ? 0 : seed));
            digests["pearson"].Add(bv::GetPearsonHash(start, length, static_cast<unsigned char>(i == 0 ? 0 : seed)));
        }
    for (int i = 0; i < 4000; ++i)
    {
        auto const x = static_cast<int>(work.Bits() >> 32) >> work.Below(32);
        auto const y = static_cast<int>(work.Bits() >> 32) >> work.Below(32);
        digests["lagae"].Add(bv::GetLagaeHash(x, y), bv::GetLagaeHash(-(x / 2), y), bv::GetLagaeHash(i - 2000, i));
        auto const f = work.Wide<float>();
        auto const g = work.Plain<float>();
        auto const d = work.Wide<double>();
        auto const e = work.Plain<double>();
        if constexpr (IS_LITTLE_ENDIAN)
        {
            AddTupleHashes(digests["integer-tuples"], x, y, i);
            AddTupleHashes(digests["integer-tuples"], static_cast<unsigned int>(x), static_cast<unsigned int>(y), 7U);
            AddTupleHashes(digests["number-tuples"], f, -f, g);
            AddTupleHashes(digests["number-tuples"], d, -d, e);
        }
    }
}

} // namespace

void RunHashes()
{
    Run("hashes", Hashes);
}

} // namespace digest
