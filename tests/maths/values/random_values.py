#!/usr/bin/env python3
"""Writes RandomValues.h: states and draws of five seeds, worked out in a second way: unbounded integers, cut to 32 bits
by hand.

    python3 random_values.py > RandomValues.h
"""

WORD = 2**32
M = 0x7FFFFFFF
SEEDS = [0, 1, 12345, 32768, 0xFFFFFFFF]
DRAWS = 1000


def state_of(seed):
    s = 426954 if seed == 0 else seed
    z = (s * 2032009216 % WORD) % M
    w = (z * 48271 % WORD) % M
    jsr = (w * 48271 % WORD) % M
    jcong = (jsr * 48271 % WORD) % M
    return z, w, jsr, jcong


def draws(seed, count):
    z, w, jsr, jcong = state_of(seed)
    for _ in range(count):
        z = (36969 * (z % 65536) + z // 65536) % WORD
        w = (18000 * (w % 65536) + w // 65536) % WORD
        mwc = (z * 65536 + w) % WORD
        jcong = (69069 * jcong + 1234567) % WORD
        jsr ^= jsr * 2**17 % WORD
        jsr ^= jsr // 2**13
        jsr ^= jsr * 2**5 % WORD
        yield ((mwc ^ jcong) + jsr) % WORD


assert state_of(0) == (0x6BAC0001, 0x7514BC8F, 0x210E57E2, 0x7F8D0F3F)
assert state_of(1) == (0x791E0000, 0x2FC20001, 0x255EBC8F, 0x726457E1)

# Only the low 15 bits of a seed tell; all 32768 of their values differ in their state; and of these states only that of
# 0 has a word at which a generator stays.
states = [state_of(seed) for seed in range(32768, 65536)]
assert len(set(states)) == 32768
for seed, state in enumerate(states):
    assert state == state_of(seed + 7 * 32768) == state_of(seed + 131071 * 32768)
    stuck = state[0] in (0, 0x9068FFFF) or state[1] in (0, 0x464FFFFF) or state[2] == 0
    assert stuck == (seed == 0)
assert states[0] == (0, 0, 0, 0) and states[970] == state_of(0)

# Seeds that soon give the smallest and the largest float there is: the top 23 bits of the draw all 0, all 1.
assert list(draws(25814, 489))[488] >> 9 == 0
assert list(draws(19025, 953))[952] >> 9 == 2**23 - 1

print(f"""#pragma once

/// @file
/// Written by random_values.py.

#include <cstdint>

namespace bv::test
{{

/// The state that a seed sets, z, w, jsr, jcong, and the first draws from it.
struct RandomSequence
{{
    std::uint32_t seed;
    std::uint32_t state[4];
    std::uint32_t draws[{DRAWS}];
}};

// clang-format off
inline constexpr RandomSequence RANDOM_SEQUENCES[] = {{""")
for seed in SEEDS:
    print(f"    {{{seed}U,")
    print("     {" + ", ".join(f"0x{word:08X}" for word in state_of(seed)) + "},")
    print("     {")
    values = [f"0x{draw:08X}" for draw in draws(seed, DRAWS)]
    for i in range(0, DRAWS, 8):
        print("         " + ", ".join(values[i : i + 8]) + ",")
    print("     }},")
print("""};
// clang-format on

} // namespace bv::test""")
