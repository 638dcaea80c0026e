#!/usr/bin/env python3
"""Writes QuaternionValues.h: arguments of the quaternions' functions as bit patterns, and their results to within half a
step of a double, worked out to fifty digits.

    python3 quaternion_values.py > QuaternionValues.h
"""
import random
from decimal import Decimal, getcontext
from fractions import Fraction

from ieee import DOUBLE, FLOAT

getcontext().prec = 60
HALF = Decimal(1) / 2


def decimal(fraction):
    return Decimal(fraction.numerator) / Decimal(fraction.denominator)


def sine(x):
    """The power series, which is good for a few turns at this precision."""
    term = total = x
    n = 1
    while abs(term) > Decimal(10)**-58:
        term *= -x * x / ((n + 1) * (n + 2))
        total += term
        n += 2
    return total


def cosine(x):
    term = total = Decimal(1)
    n = 0
    while abs(term) > Decimal(10)**-58:
        term *= -x * x / ((n + 1) * (n + 2))
        total += term
        n += 2
    return total


def angle_of(y, x):
    """atan2(y, x) for y >= 0: halved by its tangent until the power series is fast, and doubled again."""
    if y == 0:
        return Decimal(0) if x > 0 else PI
    halvings = 0
    while x <= 0 or y > x / 1000:
        x, halvings = x + (x * x + y * y).sqrt(), halvings + 1
    t = y / x
    term, total, n = t, t, 1
    while abs(term) > Decimal(10)**-58 * total:
        term *= -t * t
        n += 2
        total += term / n
    return total * 2**halvings


PI = Decimal(0)
PI = 2 * angle_of(Decimal(1), Decimal(0))


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def length(a):
    return dot(a, a).sqrt()


def scaled(a, factor):
    return [x * factor for x in a]


def slerp(a, b, t):
    a, b = scaled(a, 1 / length(a)), scaled(b, 1 / length(b))
    if dot(a, b) < 0:
        b = scaled(b, -1)
    chord = length([x - y for x, y in zip(a, b)])
    angle = 2 * angle_of(chord, length([x + y for x, y in zip(a, b)]))
    if angle == 0:
        return a
    return [x * sine((1 - t) * angle) / sine(angle) + y * sine(t * angle) / sine(angle) for x, y in zip(a, b)]


def polar(q):
    """The axis, half the angle and the length."""
    size = length(q[:3])
    return scaled(q[:3], 1 / size), angle_of(size, q[3]), length(q)


def rotation(axis, angle):
    return [*scaled(axis, sine(angle * HALF) / length(axis)), cosine(angle * HALF)]


def exponential(q):
    size = length(q[:3])
    return scaled([*scaled(q[:3], sine(size) / size), cosine(size)], q[3].exp())


def logarithm(q):
    axis, angle, size = polar(q)
    return [*scaled(axis, angle), size.ln()]


def power(q, exponent):
    axis, angle, size = polar(q)
    return scaled([*scaled(axis, sine(angle * exponent)), cosine(angle * exponent)], (size.ln() * exponent).exp())


def whole(x):
    """The nearest double, as a hexadecimal number."""
    return float(x).hex()


class Table:
    """Random arguments in a precision, as bits and as numbers."""

    def __init__(self, f, seed):
        self.f, self.random, self.digits = f, random.Random(seed), 7 if f is FLOAT else 16

    def bits(self, x):
        return self.f.round(Fraction(x))

    def number(self, bits):
        return decimal(self.f.value(bits))

    def group(self, numbers):
        bits = [self.bits(x) for x in numbers]
        return bits, [self.number(b) for b in bits]

    def any(self, count):
        return [self.random.gauss(0, 1) for _ in range(count)]

    def unit(self):
        q = [Decimal(x) for x in self.any(4)]
        return scaled(q, 1 / length(q))

    def near(self, q, distance):
        return [x + Decimal(y) * distance for x, y in zip(q, self.any(4))]


def literal(f, bits):
    return f"0x{bits:0{8 if f is FLOAT else 16}X}"


def row(f, *columns):
    cells = []
    for column in columns:
        if isinstance(column, int):
            cells.append(literal(f, column))
        elif all(isinstance(x, int) for x in column):
            cells.append("{" + ", ".join(literal(f, x) for x in column) + "}")
        else:
            cells.append("{" + ", ".join(whole(x) for x in column) + "}")
    return "    {" + ", ".join(cells) + "},"


def slerps(f):
    table = Table(f, 1985)
    for i in range(40):
        a, numbers = table.group(table.unit())
        kind = i % 4
        if kind == 0:
            end = table.unit()
        elif kind == 1:  # a small angle
            end = table.near(numbers, Decimal(10)**-(i % table.digits))
        elif kind == 2:  # nearly the opposite
            end = scaled(table.near(numbers, Decimal(10)**-(i % table.digits)), -1)
        else:  # nearly at right angles: rotations by half a turn
            end = table.near([numbers[1], -numbers[0], numbers[3], -numbers[2]], Decimal(10)**-(i % 5 + 1))
        end = scaled(end, 1 / length(end))
        b, other = table.group(end)
        t = table.bits(table.random.random() if i % 5 else table.random.uniform(-1.5, 2.5))
        yield row(f, a, b, t, slerp(numbers, other, table.number(t)))


def axes(f):
    table = Table(f, 1840)
    for i in range(16):
        axis, numbers = table.group(scaled([Decimal(x) for x in table.any(3)], Decimal(10)**(i * 3 - 24)))
        angle = table.bits(table.random.uniform(-6.25, 6.25) * 10.0**-(i % 4 * 3))
        yield row(f, axis, angle, rotation(numbers, table.number(angle)))


def functions(f):
    table = Table(f, 1844)
    for i in range(16):
        q = table.unit() if i % 2 else [Decimal(x) for x in table.any(4)]
        if i % 4 == 3:  # a small angle, or one near half a turn
            q[:3] = scaled(q[:3], Decimal(10)**-(i % table.digits))
        bits, numbers = table.group(q)
        exponent = table.bits(table.random.uniform(-3, 3))
        yield row(f, bits, exponent, exponential(numbers), logarithm(numbers), power(numbers, table.number(exponent)))


print("""#pragma once

/// @file
/// Written by quaternion_values.py.

#include <cstdint>

namespace bv::test
{

template <typename Bits>
struct SlerpValue
{
    Bits a[4], b[4], t;
    double result[4];
};

template <typename Bits>
struct AxisValue
{
    Bits axis[3], angle;
    double result[4];
};

template <typename Bits>
struct QuaternionValue
{
    Bits q[4], exponent;
    double exponential[4], logarithm[4], power[4];
};

// clang-format off""")
for name, rows, kind in (("SLERP", slerps, "SlerpValue"), ("AXIS", axes, "AxisValue"),
                         ("QUATERNION", functions, "QuaternionValue")):
    for f, suffix, bits in ((FLOAT, "FLOAT", "std::uint32_t"), (DOUBLE, "DOUBLE", "std::uint64_t")):
        print(f"inline constexpr {kind}<{bits}> {name}_{suffix}[] = {{")
        for line in rows(f):
            print(line)
        print("};")
print("""// clang-format on

} // namespace bv::test""")
