#include "bv/Hash.h"

#include <memory>
#include <string>
#include <vector>

#include "Bench.h"
#include "HashData.h"
#include "Topics.h"
#include "bv/String.h"
#include "bv/maths/tTuple3.h"

namespace bench
{

namespace
{

constexpr char const* LIBRARY = "BvBaseUtils";

template <std::size_t N>
void AddKeys()
{
    // A string is not moved, so the array holds pointers; the other rows that take text do the same.
    auto const texts = std::make_shared<std::vector<std::unique_ptr<bv::String>>>();
    std::vector<bv::String const*> names;
    for (Key<N> const& key : Keys<N>())
    {
        texts->push_back(std::make_unique<bv::String>(std::string(key.data(), N).c_str()));
        names.push_back(texts->back().get());
    }
    AddMap(
        HashRow("FNV", N, "32 bit") + LIBRARY, [texts](bv::String const* name) { return bv::FNVHash32(*name); }, names);
    AddMap(
        HashRow("Jenkins", N, "32 bit") + LIBRARY,
        [](Key<N> const& key) { return bv::GetJenkinsHash(key.data(), N, 0); }, Keys<N>());
    AddMap(
        HashRow("Pearson", N, "8 bit") + LIBRARY,
        [](Key<N> const& key) { return bv::GetPearsonHash(key.data(), N, 0); }, Keys<N>());
}

} // namespace

void AddHash()
{
    AddKeys<8>();
    AddKeys<12>();
    AddKeys<24>();
    AddMap(
        HashRow("Lagae", 8, "32 bit") + LIBRARY, [](Cell const& cell) { return bv::GetLagaeHash(cell.x, cell.y); },
        Cells());
    using Tuple = bv::maths::tTuple3<unsigned int>;
    auto const tuples = Build(TupleNumbers(), 3,
                              [](double const* group) {
                                  return Tuple(static_cast<unsigned>(group[0]), static_cast<unsigned>(group[1]),
                                               static_cast<unsigned>(group[2]));
                              });
    AddMap(
        HashRow("tuple", 12, "32 bit") + LIBRARY, [](Tuple const& tuple) { return tuple.GetHash32(); }, tuples);
    AddMap(
        HashRow("tuple", 12, "8 bit") + LIBRARY, [](Tuple const& tuple) { return tuple.GetHash8(); }, tuples);
}

} // namespace bench
