#!/usr/bin/env python3
"""Writes DirectionValues.h: angles between vectors, to fifty digits and then rounded to `double`, and the bases around
normals as bit patterns, worked out in exact rational arithmetic with one rounding an operation.

    python3 direction_values.py > DirectionValues.h
"""
import random
from decimal import Decimal, getcontext
from fractions import Fraction

from ieee import DOUBLE, FLOAT

getcontext().prec = 60


def decimal(exact):
    return Decimal(exact.numerator) / Decimal(exact.denominator)


def arc_tangent(x):
    """Of a number from 0 to 1: halved five times, then the series."""
    for _ in range(5):
        x = x / (1 + (1 + x * x).sqrt())
    total = term = x
    divisor = 1
    while abs(term) > Decimal(10) ** -58:
        term = -term * x * x
        divisor += 2
        total += term / divisor
    return 32 * total


def angle(a, b):
    """From the lengths of the cross product and of the scalar product, which are exact but for the root."""
    pairs = [(1, 2), (2, 0), (0, 1)]
    cross = decimal(sum((a[i] * b[j] - a[j] * b[i]) ** 2 for i, j in pairs)).sqrt()
    dot = decimal(sum(p * q for p, q in zip(a, b)))
    pi = 4 * arc_tangent(Decimal(1))
    if cross < abs(dot):
        small = arc_tangent(cross / abs(dot))
        return small if dot > 0 else pi - small
    return pi / 2 - (arc_tangent(abs(dot) / cross) if dot > 0 else -arc_tangent(abs(dot) / cross))


def pairs_of_vectors(f, rng):
    """In all directions, nearly the same, nearly opposite and nearly at right angles, of all lengths."""
    for i in range(120):
        a = [Fraction(rng.uniform(-1, 1)) for _ in range(3)]
        b = [Fraction(rng.uniform(-1, 1)) for _ in range(3)]
        if i % 4 == 1 or i % 4 == 2:
            step = Fraction(2) ** -rng.randrange(2, f.fraction_bits + 2)
            b = [p + q * step for p, q in zip(a, b)]
        if i % 4 == 2:
            b = [-q for q in b]
        if i % 4 == 3:
            b = [a[1], -a[0], Fraction(rng.uniform(-1, 1)) * Fraction(2) ** -rng.randrange(2, 20)]
        if i % 5 == 0:
            a[2] = b[2] = Fraction(0)
        scale = [Fraction(2) ** rng.randrange(-20, 21) * Fraction(rng.uniform(1, 2)) for _ in range(2)]
        yield [f.round(p * scale[0]) for p in a], [f.round(q * scale[1]) for q in b]


def basis(f, x, y, z):
    one = f.round(Fraction(1))
    s = one | (z & f.sign)
    a = f.div(one | f.sign, f.add(s, z))
    b = f.mul(f.mul(x, y), a)
    first = [f.add(one, f.mul(f.mul(f.mul(s, x), x), a)), f.mul(s, b), f.mul(s ^ f.sign, x)]
    return first + [b, f.add(s, f.mul(f.mul(y, y), a)), y ^ f.sign]


def normals(f, rng):
    one = f.round(Fraction(1))
    for axis in range(3):
        for sign in (0, f.sign):
            for zero in (0, f.sign):
                normal = [zero, zero, zero]
                normal[axis] = one | sign
                yield normal
    for i in range(60):
        v = [rng.uniform(-1, 1) for _ in range(3)]
        if i % 3 == 0:
            v[2] *= 2.0 ** -rng.randrange(4, 40)
        if i % 3 == 1:
            v[0] *= 2.0 ** -rng.randrange(4, 20)
            v[1] *= 2.0 ** -rng.randrange(4, 20)
        length = sum(c * c for c in v) ** 0.5
        yield [f.round(Fraction(c / length)) for c in v]


def main():
    print("#pragma once\n\n/// @file\n/// Written by direction_values.py.\n\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("template <typename Bits>\nstruct AngleValue\n{\n    Bits a[3], b[3];\n    std::uint64_t angle; ///< a `double`\n};\n")
    print("template <typename Bits>\nstruct BasisValue\n{\n    Bits normal[3], first[3], second[3];\n};\n")
    print("// clang-format off")
    for f in (FLOAT, DOUBLE):
        def triple(bits):
            return "{%s}" % ", ".join(f.hex(b) for b in bits)

        rng = random.Random(7)
        bits = "std::uint%d_t" % f.width
        print("inline constexpr AngleValue<%s> ANGLE_%s[] = {" % (bits, f.name.upper()))
        for a, b in pairs_of_vectors(f, rng):
            exact = angle([f.value(p) for p in a], [f.value(q) for q in b])
            print("    {%s, %s, %s}," % (triple(a), triple(b), DOUBLE.hex(DOUBLE.round(Fraction(exact)))))
        print("};\n")
        print("inline constexpr BasisValue<%s> BASIS_%s[] = {" % (bits, f.name.upper()))
        for normal in normals(f, rng):
            axes = basis(f, *normal)
            print("    {%s, %s, %s}," % (triple(normal), triple(axes[:3]), triple(axes[3:])))
        print("};\n")
    print("// clang-format on\n\n} // namespace bv::test")


main()
