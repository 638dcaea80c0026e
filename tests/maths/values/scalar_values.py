#!/usr/bin/env python3
"""Writes ScalarValues.h: arguments and results of the smooth steps, the saw-tooth and the logarithm as bit patterns,
worked out in exact rational arithmetic with one rounding an operation.

    python3 scalar_values.py > ScalarValues.h
"""
import random
from fractions import Fraction

from ieee import DOUBLE, FLOAT


def position(f, low, high, x):
    """None when an edge decides, then with the result; else the relative position."""
    one = f.round(Fraction(1))
    if f.value(low) >= f.value(x):
        return None, 0
    if f.value(x) >= f.value(high):
        return None, one
    return f.div(f.sub(x, low), f.sub(high, low)), None


def cubic(f, t):
    # (3 - 2t) * (t * t)
    return f.mul(f.sub(f.round(Fraction(3)), f.mul(f.round(Fraction(2)), t)), f.mul(t, t))


def quintic(f, t):
    # ((t * 6) * t - t * 15 + 10) * (t * t * t)
    quadratic = f.sub(f.mul(f.mul(t, f.round(Fraction(6))), t), f.mul(t, f.round(Fraction(15))))
    return f.mul(f.add(quadratic, f.round(Fraction(10))), f.mul(f.mul(t, t), t))


def parabolas(f, t):
    one = f.round(Fraction(1))
    if f.value(t) <= Fraction(1, 2):
        return f.mul(t, f.add(t, t))
    rest = f.sub(one, t)
    return f.sub(one, f.mul(f.add(rest, rest), rest))


def saw_tooth(f, x, period):
    x_value, p = f.value(x), f.value(period)
    quotient = abs(x_value) // p
    remainder = f.round(abs(x_value) - quotient * p)  # exact
    if x_value >= 0:
        return remainder
    return f.add(remainder ^ f.sign, period)


def log2(f, x, precision):
    one, two, half = (f.round(v) for v in (Fraction(1), Fraction(2), Fraction(1, 2)))
    result = 0
    while f.value(x) < 1:
        x = f.add(x, x)
        result = f.sub(result, one)
    while f.value(x) >= 2:
        x = f.mul(x, half)
        result = f.add(result, one)
    weight = one
    if f.value(weight) < f.value(precision):
        return result
    while True:
        x = f.mul(x, x)
        weight = f.mul(weight, half)
        if f.value(x) >= 2:
            x = f.mul(x, half)
            result = f.add(result, weight)
        if not f.value(weight) >= f.value(precision):
            return result


def row(f, *values):
    return "    {%s}," % ", ".join(f.hex(v) for v in values)


def main():
    print("#pragma once\n\n/// @file\n/// Written by scalar_values.py.\n\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("template <typename Bits>\nstruct SmoothStepValue\n{\n    Bits low, high, x, cubic, quintic, parabolas;\n};\n")
    print("template <typename Bits>\nstruct SawToothValue\n{\n    Bits x, period, result;\n};\n")
    print("struct Log2Value\n{\n    std::uint32_t x, precision, result;\n};\n")
    print("// clang-format off")
    for f in (FLOAT, DOUBLE):
        rng = random.Random(5)
        bits = "std::uint%d_t" % f.width
        print("inline constexpr SmoothStepValue<%s> SMOOTH_STEP_%s[] = {" % (bits, f.name.upper()))
        for i in range(120):
            low = f.round(Fraction(rng.uniform(-4, 2)))
            high = f.round(Fraction(rng.uniform(-1, 5))) if i % 2 else f.round(f.value(low) + 1)
            x = f.round(Fraction(rng.uniform(-4, 5))) if i % 8 == 0 else \
                f.round(f.value(low) + (f.value(high) - f.value(low)) * Fraction(rng.random()))
            if i % 3 == 0:
                low, high, x = 0, f.round(Fraction(1)), f.round(Fraction(rng.random()))
            t, result = position(f, low, high, x)
            results = [result] * 3 if t is None else [curve(f, t) for curve in (cubic, quintic, parabolas)]
            print(row(f, low, high, x, *results))
        print("};\n")
        print("inline constexpr SawToothValue<%s> SAW_TOOTH_%s[] = {" % (bits, f.name.upper()))
        for i in range(80):
            period = f.round(Fraction(rng.uniform(0, 10)) * Fraction(2) ** rng.randrange(-3, 4))
            x = f.round(Fraction(rng.uniform(-100, 100)) * Fraction(2) ** rng.choice((-30, 0, 0, 0, 20)))
            if i % 10 == 0:
                period = f.round(Fraction(rng.randrange(1, 50)))
                x = f.round(f.value(period) * rng.randrange(-9, 10))
            print(row(f, x, period, saw_tooth(f, x, period)))
        print("};\n")
    rng = random.Random(6)
    print("inline constexpr Log2Value LOG2[] = {")
    for i in range(160):
        x = rng.randrange(1, FLOAT.infinity) if i % 3 else FLOAT.round(Fraction(rng.uniform(0, 20)))
        precision = FLOAT.round(Fraction(2) ** rng.randrange(-30, 3) * (1 if i % 2 else Fraction(rng.uniform(0.5, 1))))
        print(row(FLOAT, x, precision, log2(FLOAT, x, precision)))
    print("};\n// clang-format on\n\n} // namespace bv::test")


main()
