#!/usr/bin/env python3
"""Writes SequenceValues.h: points of the sequences by index, worked out digit by digit and in exact fractions.

    python3 sequence_values.py > SequenceValues.h
"""
import random
from fractions import Fraction
from math import isqrt

from ieee import DOUBLE, FLOAT

# S. Joe, F. Y. Kuo, 2008: dimension, degree s, the inner coefficients a of the polynomial, and the numbers m.
NUMBERS = """
2 1 0  1
3 2 1  1 3
4 3 1  1 3 1
5 3 2  1 1 1
6 4 1  1 1 3 3
7 4 4  1 3 5 13
8 5 2  1 1 5 5 17
9 5 4  1 1 5 5 5
10 5 7  1 1 7 11 19
11 5 11  1 1 5 1 1
12 5 13  1 1 1 3 11
13 5 14  1 3 5 5 31
14 6 1  1 3 3 9 7 49
15 6 13  1 1 1 15 21 21
16 6 16  1 3 1 13 27 49
17 6 19  1 1 1 15 7 5
18 6 22  1 3 1 15 13 25
19 6 25  1 1 5 5 19 61
20 7 1  1 3 7 11 23 15 103
21 7 4  1 3 7 13 13 15 69
22 7 7  1 1 3 13 7 35 63
23 7 8  1 3 5 9 1 25 53
24 7 14  1 3 1 13 9 35 107
25 7 19  1 3 1 5 27 61 31
26 7 21  1 1 5 11 19 41 61
27 7 28  1 3 5 3 3 13 69
28 7 31  1 1 7 13 1 19 1
29 7 32  1 3 7 5 13 19 59
30 7 37  1 1 3 9 25 29 41
31 7 41  1 3 5 13 23 1 55
32 7 42  1 3 7 3 13 59 17
33 7 50  1 3 1 3 5 53 69
34 7 55  1 1 5 5 23 33 13
35 7 56  1 1 7 7 1 61 123
36 7 59  1 1 7 9 13 61 49
37 7 62  1 3 3 5 3 55 33
38 8 14  1 3 1 15 31 13 49 245
39 8 21  1 3 5 15 31 59 63 97
40 8 22  1 3 1 11 11 11 77 249
41 8 38  1 3 1 11 27 43 71 9
42 8 47  1 1 7 15 21 11 81 45
43 8 49  1 3 7 3 25 31 65 79
44 8 50  1 3 1 1 19 11 3 205
45 8 52  1 1 5 9 19 21 29 157
46 8 56  1 3 7 11 1 33 89 185
47 8 67  1 3 3 3 15 9 79 71
48 8 70  1 3 7 11 15 39 119 27
49 8 84  1 1 3 1 11 31 97 225
50 8 97  1 1 1 3 23 43 57 177
51 8 103  1 3 7 7 17 17 37 71
52 8 115  1 3 1 5 27 63 123 213
53 8 122  1 1 3 5 11 43 53 133
54 9 8  1 3 5 5 29 17 47 173 479
55 9 13  1 3 3 11 3 1 109 9 69
56 9 16  1 1 1 5 17 39 23 5 343
57 9 22  1 3 1 5 25 15 31 103 499
58 9 25  1 1 1 11 11 17 63 105 183
59 9 44  1 1 5 11 9 29 97 231 363
60 9 47  1 1 5 15 19 45 41 7 383
61 9 52  1 3 7 7 31 19 83 137 221
62 9 55  1 1 1 3 23 15 111 223 83
63 9 59  1 1 5 13 31 15 55 25 161
64 9 62  1 1 3 13 25 47 39 87 257
"""

PRIMES = [p for p in range(2, 312) if all(p % q for q in range(2, isqrt(p) + 1))]


def below_one(f, exact):
    """Rounded to nearest, but not to 1."""
    return min(f.round(exact), f.round(Fraction(1)) - 1)


def truncated(f, exact):
    """Rounded towards 0 to the digits behind the point that the format has below 1."""
    digits = f.fraction_bits + 1
    return f.round(Fraction(int(exact * 2**digits), 2**digits))


def radical_inverse(index, base):
    result, weight = Fraction(0), Fraction(1)
    while index:
        weight /= base
        result += weight * (index % base)
        index //= base
    return result


def quotient(index, base):
    """The pattern of the radical inverse as a double, and of that as a float."""
    double = below_one(DOUBLE, radical_inverse(index, base))
    return below_one(FLOAT, DOUBLE.value(double)), double


def plastic_number(digits):
    """The root of g^3 = g + 1 times 2^digits, rounded down, by bisection in integers."""
    low, high = 1 << digits, 2 << digits
    while high - low > 1:
        middle = (low + high) // 2
        if middle**3 > (middle << 2 * digits) + (1 << 3 * digits):
            high = middle
        else:
            low = middle
    return low


PLASTIC = Fraction(plastic_number(400), 1 << 400)


def r2(index, power):
    return (Fraction(1, 2) + index / PLASTIC**power) % 1


def generator_matrices():
    """For each dimension the columns, each a list of 32 digits, the first one behind the point first."""
    matrices = [[[int(i == k) for i in range(32)] for k in range(32)]]
    for line in NUMBERS.split("\n"):
        if not line:
            continue
        _, s, a, *m = map(int, line.split())
        # m_k = 2 a_1 m_(k-1) ^ 4 a_2 m_(k-2) ^ ... ^ 2^s m_(k-s) ^ m_(k-s)
        while len(m) < 32:
            term = m[-s] << s ^ m[-s]
            for i in range(1, s):
                if a >> (s - 1 - i) & 1:
                    term ^= m[-i] << i
            m.append(term)
        matrices.append([[m[k] >> (k - i) & 1 if i <= k else 0 for i in range(32)] for k in range(32)])
    return matrices


MATRICES = generator_matrices()


def sobol_digits(index, dimension):
    columns = [column for k, column in enumerate(MATRICES[dimension]) if index >> k & 1]
    return [sum(column[i] for column in columns) & 1 for i in range(32)]


def from_digits(digits):
    return sum((Fraction(digit, 2 << i) for i, digit in enumerate(digits)), Fraction(0))


def mix(bits):
    for shift, factor in ((16, 0x85EBCA6B), (13, 0xC2B2AE35), (16, 1)):
        bits = (bits ^ bits >> shift) * factor % 2**32
    return bits


def mixed_seed(seed, purpose):
    return mix((seed + purpose * 0x9E3779B9) % 2**32)


def scrambled(digits, seed):
    """Each digit after the permutation, computed from those up to it alone."""
    result = []
    for count in range(1, 33):
        modulus = 2**count
        value = (sum(digit << i for i, digit in enumerate(digits[:count])) + seed) % modulus
        for factor in (0x6C50B47C, 0xB82F1E52, 0xC7AFE638, 0x8D22F6E6):
            value ^= value * factor % modulus
        result.append(value >> (count - 1))
    return result


def owen_sobol(index, dimension, seed):
    """64 digits as a fraction."""
    own = mixed_seed(seed, dimension)
    digits = scrambled(sobol_digits(index, dimension), own)
    number = int(from_digits(digits) * 2**32)
    return Fraction(number << 32 | mix(number ^ own ^ 0xFFFFFFFF), 2**64)


def shuffled(index, seed):
    digits = [index >> (31 - i) & 1 for i in range(32)]
    return sum(digit << (31 - i) for i, digit in enumerate(scrambled(digits, mixed_seed(seed, 64))))


def row(*cells):
    print("    {%s}," % ", ".join(cells))


def pair(float_bits, double_bits):
    return FLOAT.hex(float_bits), DOUBLE.hex(double_bits)


def both(exact):
    return pair(truncated(FLOAT, exact), truncated(DOUBLE, exact))


def main():
    rng = random.Random(11)
    indices = [0, 1, 2, 3, 5, 1023, 1024, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF]

    def any_index():
        return rng.getrandbits(rng.randrange(1, 33))

    print("#pragma once\n\n/// @file\n/// Written by sequence_values.py.\n\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("struct RadicalInverseValue\n{\n    std::uint32_t index, base, single;\n    std::uint64_t twice;\n};\n")
    print("struct PointValue\n{\n    std::uint64_t index;\n    std::uint32_t x;\n    std::uint64_t xTwice;\n"
          "    std::uint32_t y;\n    std::uint64_t yTwice;\n};\n")
    print("struct SobolValue\n{\n    std::uint32_t index, dimension, seed, single;\n    std::uint64_t twice;\n"
          "    std::uint32_t owen;\n    std::uint64_t owenTwice;\n};\n")
    print("struct ShuffleValue\n{\n    std::uint32_t index, seed, place;\n};\n")
    print("// clang-format off")
    print("inline constexpr std::uint32_t PRIMES[] = {%s};\n" % ", ".join(map(str, PRIMES)))

    print("inline constexpr RadicalInverseValue RADICAL_INVERSES[] = {")
    for base in (*PRIMES, 4, 10, 65537, 2097143):
        for index in (indices[rng.randrange(len(indices))], any_index(), any_index()):
            row(str(index), str(base), *pair(*quotient(index, base)))
    for index in indices:
        row(str(index), "2", *pair(*quotient(index, 2)))
        row(str(index), "3", *pair(*quotient(index, 3)))
    print("};\n")

    print("inline constexpr PointValue R2_POINTS[] = {")
    for index in (*indices, 2**53 + 1, 2**63, 2**64 - 1, *(rng.getrandbits(rng.randrange(1, 65)) for _ in range(60))):
        row("%dU" % index, *both(r2(index, 1)), *both(r2(index, 2)))
    print("};\n")

    print("inline constexpr SobolValue SOBOL[] = {")
    for dimension in range(len(MATRICES)):
        for index in (indices[rng.randrange(len(indices))], any_index(), rng.getrandbits(32)):
            seed = rng.getrandbits(rng.choice((3, 32)))
            plain = from_digits(sobol_digits(index, dimension))
            row(str(index), str(dimension), str(seed), *both(plain), *both(owen_sobol(index, dimension, seed)))
    print("};\n")

    print("inline constexpr ShuffleValue SHUFFLES[] = {")
    for index in (*indices, *(any_index() for _ in range(30))):
        seed = rng.getrandbits(rng.choice((3, 32)))
        row(str(index), str(seed), str(shuffled(index, seed)))
    print("};\n// clang-format on\n\n} // namespace bv::test")


main()
