#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "Bench.h"
#include "HashData.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

// clang-format off

constexpr std::uint8_t PEARSON[256] = {
     92, 213, 150, 172, 106,  87, 185,  17, 113, 198, 216,  69, 182, 251, 234, 132,
     22,  73, 120, 255, 179, 153, 143, 139, 195,  41, 190, 127, 201, 191,   8,  60,
    252,  56,  39, 104,  53, 222, 247,  51, 154,  37, 123,  59,  34,  49, 236,  82,
    230, 174, 149, 128, 137,  85, 189, 165,  43, 156,   6,  75, 243,  13, 163, 101,
    210, 112, 164, 158,  95, 235,  33, 186, 184,   1,  79, 124, 144,  46,  16,  12,
     54,  93,  40, 133, 166, 100,  15, 126, 140,   5,  65, 194,  48,  45, 119, 212,
    175, 250, 187, 117, 183,   3,  67,  91, 155, 168, 134,  29,  27, 122,  84, 199,
     42,  90, 130,  38, 220, 178,  89, 246, 192, 227,  86, 242, 145, 169, 146, 142,
    108,  10,  66, 152,   4, 200,  36,  62, 237, 105, 217,  25, 171,  57,  35,  26,
     61,  83,  20, 109, 167, 162,  99, 224, 221,   2,  68,  58,  28,  81, 135,  74,
     31, 228, 233,  44, 219, 116, 231, 205, 232, 160, 202,  14, 114,  64,  24, 203,
    193, 218, 131, 138,  72, 211, 188, 111,  30, 254, 161,   7,  98, 103, 240, 115,
    176, 196,  18, 223, 151, 148, 147, 136, 118,  63, 215, 129, 225,  76,  94, 181,
    170, 253, 159, 244, 238,  50, 204, 177,  47, 214, 229, 206, 208, 249, 239,  78,
    173,  19, 245,   9, 209,  88, 102, 226, 110,  52,   0,  32, 125, 180, 121,  55,
     97,  70, 197,  71,  77,  96, 107, 241,  11, 157, 248, 207,  23, 141,  80,  21,
};

/// Permutations of 0 to 16, 18, 22, 23, 28, 30 and 36, one after the other.
constexpr std::uint32_t LAGAE[180] = {
    // 0 to 16
     7,  4,  6, 15, 11,  9,  1,  3,  0,  5, 10, 16, 13,  2,  8, 12, 14,
    // 0 to 18
    12,  9, 18, 15, 10,  7,  8, 16, 14, 11,  5,  3,  2,  0,  4, 17, 13,  1,  6,
    // 0 to 22
     6,  3,  7, 22, 15, 17, 13, 10,  2, 18, 16, 19,  5, 14,  8, 11, 20,  4,  0,  9,
    12,  1, 21,
    // 0 to 23
    11, 13,  9,  4, 20, 19,  3,  1,  8, 10,  6, 22, 16, 23,  2, 15, 18,  5,  0, 17,
    12, 21,  7, 14,
    // 0 to 28
    10,  2, 16, 11,  8, 17, 24, 23, 13, 20, 22,  5, 15, 12, 27,  0, 26, 19, 21, 28,
     3,  4, 18,  6, 14, 25,  1,  9,  7,
    // 0 to 30
    12, 24, 29,  0, 21, 19, 28, 13, 18,  3, 22,  6,  7, 23, 27,  1, 10, 11, 20, 16,
     2,  5,  9,  8, 26, 17, 30,  4, 14, 15, 25,
    // 0 to 36
    36,  8, 34, 24, 15, 14, 35, 12,  5, 18, 21, 26, 25, 27, 28, 10, 11, 30,  4, 19,
    22, 31, 13,  9, 16,  7,  3,  6, 23, 32, 29, 33, 17,  0,  1, 20,  2,
};

// clang-format on

// The library's own functions, as they are published, written plainly.

std::uint32_t FNV(char const* text)
{
    std::uint32_t hash = 2166136261;
    for (; *text != 0; ++text)
        hash = (hash ^ static_cast<unsigned char>(*text)) * 16777619;
    return hash;
}

std::uint32_t Jenkins(void const* data, std::size_t length, std::uint32_t hash)
{
    auto const* bytes = static_cast<unsigned char const*>(data);
    for (std::size_t i = 0; i < length; ++i)
    {
        hash += bytes[i];
        hash += hash << 10;
        hash ^= hash >> 6;
    }
    hash += hash << 3;
    hash ^= hash >> 11;
    hash += hash << 15;
    return hash;
}

std::uint8_t Pearson(void const* data, std::size_t length, std::uint8_t hash)
{
    auto const* bytes = static_cast<unsigned char const*>(data);
    for (std::size_t i = 0; i < length; ++i)
        hash = PEARSON[bytes[i] ^ hash];
    return hash;
}

std::uint32_t Lagae(int x, int y)
{
    constexpr std::uint32_t SIZES[] = {17, 19, 23, 24, 29, 31, 37};
    std::uint32_t const* table = LAGAE;
    std::uint32_t sum = 0;
    for (std::uint32_t const size : SIZES)
    {
        sum += table[(table[static_cast<std::uint32_t>(x) % size] + static_cast<std::uint32_t>(y)) % size];
        table += size;
    }
    return sum % 24;
}

struct Tuple
{
    std::uint32_t x, y, z;
};

template <std::size_t N>
void AddKeys()
{
    auto const add = [](char const* library, auto hash)
    {
        // A hash for tables: what a user would take instead of either of the library's two of 32 bits.
        for (char const* operation : {"FNV", "Jenkins"})
            AddMap(HashRow(operation, N, "32 bit") + library, hash, Keys<N>());
        AddMap(
            HashRow("Pearson", N, "8 bit") + library,
            [hash](Key<N> const& key) { return static_cast<std::uint8_t>(hash(key)); }, Keys<N>());
    };
    add("XXH32", [](Key<N> const& key) { return static_cast<std::uint32_t>(XXH32(key.data(), N, 0)); });
    add("XXH3_64bits", [](Key<N> const& key) { return static_cast<std::uint32_t>(XXH3_64bits(key.data(), N)); });
    add("std::hash",
        [](Key<N> const& key) {
            return static_cast<std::uint32_t>(std::hash<std::string_view>()({key.data(), N}));
        });
    auto const texts = std::make_shared<std::vector<std::unique_ptr<std::string>>>();
    std::vector<std::string const*> names;
    for (Key<N> const& key : Keys<N>())
    {
        texts->push_back(std::make_unique<std::string>(key.data(), N));
        names.push_back(texts->back().get());
    }
    AddMap(
        HashRow("FNV", N, "32 bit") + "hand-written", [texts](std::string const* name) { return FNV(name->c_str()); },
        names);
    AddMap(
        HashRow("Jenkins", N, "32 bit") + "hand-written", [](Key<N> const& key) { return Jenkins(key.data(), N, 0); },
        Keys<N>());
    AddMap(
        HashRow("Pearson", N, "8 bit") + "hand-written", [](Key<N> const& key) { return Pearson(key.data(), N, 0); },
        Keys<N>());
}

} // namespace

void AddHash()
{
    AddKeys<8>();
    AddKeys<12>();
    AddKeys<24>();
    AddMap(
        HashRow("Lagae", 8, "32 bit") + "hand-written", [](Cell const& cell) { return Lagae(cell.x, cell.y); },
        Cells());
    auto const tuples =
        Build(TupleNumbers(), 3,
              [](double const* group)
              {
                  return Tuple{static_cast<std::uint32_t>(group[0]), static_cast<std::uint32_t>(group[1]),
                               static_cast<std::uint32_t>(group[2])};
              });
    auto const add = [&](char const* library, auto hash)
    {
        AddMap(HashRow("tuple", 12, "32 bit") + library, hash, tuples);
        AddMap(
            HashRow("tuple", 12, "8 bit") + library,
            [hash](Tuple const& tuple) { return static_cast<std::uint8_t>(hash(tuple)); }, tuples);
    };
    add("XXH32", [](Tuple const& tuple) { return static_cast<std::uint32_t>(XXH32(&tuple, sizeof tuple, 0)); });
    add("XXH3_64bits",
        [](Tuple const& tuple) { return static_cast<std::uint32_t>(XXH3_64bits(&tuple, sizeof tuple)); });
    AddMap(
        HashRow("tuple", 12, "32 bit") + "hand-written",
        [](Tuple const& tuple) { return Jenkins(&tuple.x, 4, Jenkins(&tuple.y, 4, Jenkins(&tuple.z, 4, 0))); }, tuples);
    AddMap(
        HashRow("tuple", 12, "8 bit") + "hand-written",
        [](Tuple const& tuple) { return Pearson(&tuple.x, 4, Pearson(&tuple.y, 4, Pearson(&tuple.z, 4, 0))); }, tuples);
}

} // namespace bench::peers
