#!/usr/bin/env python3
"""Writes IsEqualValues.h: pairs of bit patterns and whether they are tolerantly equal, from exact integer and rational
arithmetic.

    python3 isequal_values.py > IsEqualValues.h
"""
import random
from fractions import Fraction
from itertools import combinations_with_replacement

from ieee import DOUBLE, FLOAT

TOLERANCE = {"float": 0x35A00000, "double": 0x3CE4000000000000}


def is_equal(f, a, b):
    # The number of a pattern: its magnitude, negated below zero. The difference is kept in `width` bits, signed.
    def number(bits):
        magnitude = bits & (f.sign - 1)
        return -magnitude if bits & f.sign else magnitude

    distance = (number(a) - number(b) + f.sign) % (2 * f.sign) - f.sign
    if -50 <= distance <= 50:
        return True
    if not (f.is_finite(a) and f.is_finite(b)):
        return False  # the difference is infinite or NaN
    difference = f.sub(a, b)
    return f.value(f.mul(difference, difference)) < f.value(f.mul(TOLERANCE[f.name], TOLERANCE[f.name]))


def pairs(f, rng):
    top = f.sign - 1
    special = [0, 1, 25, 26, 1 << f.fraction_bits, f.infinity - 1, f.infinity, f.infinity + 1, f.infinity + 49,
               f.infinity + 50, top, top - 24, top - 25, top - 26, f.infinity | 1 << (f.fraction_bits - 1)]
    special += [f.round(Fraction(v)) for v in (1, 2, 4, 3, Fraction(1, 2))] + [TOLERANCE[f.name]]
    special += [bits | f.sign for bits in special]
    yield from combinations_with_replacement(special, 2)
    for _ in range(100):  # a few steps apart, anywhere
        a = rng.randrange(2 * f.sign)
        yield a, (a + rng.randrange(-60, 61)) % (2 * f.sign)
    for steps in (-51, -50, 50, 51):  # large values, where the tolerance does not help
        for _ in range(8):
            a = rng.randrange(f.round(Fraction(1000)), f.infinity - 60) | rng.choice((0, f.sign))
            yield a, a + steps
    for _ in range(40):  # both sides of zero
        yield rng.randrange(60), rng.randrange(60) | f.sign
    for _ in range(50):  # half the range apart, give or take
        a = rng.randrange(1, f.sign)
        yield a, (f.sign | (f.sign - a)) + rng.randrange(-60, 61) & (2 * f.sign - 1)
    for _ in range(40):  # the whole range apart, give or take: NaNs of opposite signs
        yield top - rng.randrange(60), (top - rng.randrange(60)) | f.sign
    for _ in range(120):  # a tolerance apart, give or take
        a = f.round(Fraction(rng.randrange(-(1 << 24), 1 << 24), 1 << rng.randrange(22, 40)))
        difference = f.value(TOLERANCE[f.name] + rng.randrange(-4, 5)) * rng.choice((-1, 1))
        yield a, f.round(f.value(a) + difference)
    for _ in range(50):
        yield rng.randrange(2 * f.sign), rng.randrange(2 * f.sign)


def main():
    print("#pragma once\n\n/// @file\n/// Written by isequal_values.py.\n\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("struct IsEqualValue32\n{\n    std::uint32_t a, b;\n    bool isEqual;\n};\n")
    print("struct IsEqualValue64\n{\n    std::uint64_t a, b;\n    bool isEqual;\n};\n")
    print("// clang-format off")
    for f in (FLOAT, DOUBLE):
        rng = random.Random(20)
        print("inline constexpr IsEqualValue%d IS_EQUAL_%s[] = {" % (f.width, f.name.upper()))
        line = ""
        for a, b in pairs(f, rng):
            entry = "{%s, %s, %s}," % (f.hex(a), f.hex(b), str(is_equal(f, a, b)).lower())
            if len(line) + len(entry) > 116:
                print("   " + line)
                line = ""
            line += " " + entry
        print("   " + line + "\n};")
    print("// clang-format on\n\n} // namespace bv::test")


main()
