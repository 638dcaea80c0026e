#!/usr/bin/env python3
"""Writes NoiseValues.h: points and values of the noise and the turbulence as bit patterns, worked out in a second, slow
and literal way.

    python3 noise_values.py > NoiseValues.h

Every operation is computed in double precision and rounded to single precision at once. A sum, difference, product or
quotient of two single-precision numbers rounds to the same number either way, since 53 >= 2 * 24 + 2 bits.
"""

import math
import random
import struct
from fractions import Fraction

PERMUTATION = [
    151, 160, 137, 91, 90, 15, 131, 13, 201, 95, 96, 53, 194, 233, 7, 225,
    140, 36, 103, 30, 69, 142, 8, 99, 37, 240, 21, 10, 23, 190, 6, 148,
    247, 120, 234, 75, 0, 26, 197, 62, 94, 252, 219, 203, 117, 35, 11, 32,
    57, 177, 33, 88, 237, 149, 56, 87, 174, 20, 125, 136, 171, 168, 68, 175,
    74, 165, 71, 134, 139, 48, 27, 166, 77, 146, 158, 231, 83, 111, 229, 122,
    60, 211, 133, 230, 220, 105, 92, 41, 55, 46, 245, 40, 244, 102, 143, 54,
    65, 25, 63, 161, 1, 216, 80, 73, 209, 76, 132, 187, 208, 89, 18, 169,
    200, 196, 135, 130, 116, 188, 159, 86, 164, 100, 109, 198, 173, 186, 3, 64,
    52, 217, 226, 250, 124, 123, 5, 202, 38, 147, 118, 126, 255, 82, 85, 212,
    207, 206, 59, 227, 47, 16, 58, 17, 182, 189, 28, 42, 223, 183, 170, 213,
    119, 248, 152, 2, 44, 154, 163, 70, 221, 153, 101, 155, 167, 43, 172, 9,
    129, 22, 39, 253, 19, 98, 108, 110, 79, 113, 224, 232, 178, 185, 112, 104,
    218, 246, 97, 228, 251, 34, 242, 193, 238, 210, 144, 12, 191, 179, 162, 241,
    81, 51, 145, 235, 249, 14, 239, 107, 49, 192, 214, 31, 181, 199, 106, 157,
    184, 84, 204, 176, 115, 121, 50, 45, 127, 4, 150, 254, 138, 236, 205, 93,
    222, 114, 67, 29, 24, 72, 243, 141, 128, 195, 78, 66, 215, 61, 156, 180,
]
assert sorted(PERMUTATION) == list(range(256))
P = PERMUTATION + PERMUTATION


def single(value):
    """The nearest single-precision number, ties to even."""
    try:
        return struct.unpack("<f", struct.pack("<f", value))[0]
    except OverflowError:
        return math.copysign(math.inf, value)


def bits(value):
    return 0x7FC00000 if math.isnan(value) else struct.unpack("<I", struct.pack("<f", value))[0]


def from_bits(pattern):
    return struct.unpack("<f", struct.pack("<I", pattern))[0]


def add(a, b):
    return single(a + b)


def sub(a, b):
    return single(a - b)


def mul(a, b):
    return single(a * b)


def div(a, b):
    return single(a / b)


def floor(value):
    return single(float(math.floor(value))) if math.isfinite(value) else value


def cell_and_fraction(coordinate):
    whole = floor(coordinate)
    fits = math.isfinite(whole) and -(2**31) <= whole < 2**31
    return (int(whole) & 255 if fits else 0), sub(coordinate, whole)


def quintic_smooth_step(low, high, x):
    if low >= x:
        return 0.0
    if x >= high:
        return 1.0
    t = div(sub(x, low), sub(high, low))
    curve = add(sub(mul(mul(t, 6.0), t), mul(t, 15.0)), 10.0)
    return mul(curve, mul(mul(t, t), t))


def fade(fraction):
    return quintic_smooth_step(0.0, 1.0, fraction)


def grad(hash_value, x, y, z):
    h = hash_value & 15
    u = x if h < 8 else y
    if h < 4:
        v = y
    elif h in (12, 14):
        v = x
    else:
        v = z
    return add(-u if h & 1 else u, -v if h & 2 else v)


def lerp(t, a, b):
    return add(mul(sub(b, a), t), a)


def finish(n):
    return mul(add(n, 1.0), 0.5)


def noise1(x):
    cell, f = cell_and_fraction(x)
    g0 = grad(P[P[P[cell]]], f, 0.0, 0.0)
    g1 = grad(P[P[P[cell + 1]]], sub(f, 1.0), 0.0, 0.0)
    return finish(add(mul(sub(g1, g0), fade(f)), g0))


def noise2(x, y):
    cell_x, fx = cell_and_fraction(x)
    cell_y, fy = cell_and_fraction(y)
    a, b = P[cell_x] + cell_y, P[cell_x + 1] + cell_y
    g00 = grad(P[P[a]], fx, fy, 0.0)
    g10 = grad(P[P[b]], sub(fx, 1.0), fy, 0.0)
    g01 = grad(P[P[a + 1]], fx, sub(fy, 1.0), 0.0)
    g11 = grad(P[P[b + 1]], sub(fx, 1.0), sub(fy, 1.0), 0.0)
    fu, fv = fade(fx), fade(fy)
    return finish(lerp(fv, lerp(fu, g00, g10), lerp(fu, g01, g11)))


def noise3(x, y, z):
    cell_x, fx = cell_and_fraction(x)
    cell_y, fy = cell_and_fraction(y)
    cell_z, fz = cell_and_fraction(z)
    fu, fv, fw = fade(fx), fade(fy), fade(fz)
    a = P[cell_x] + cell_y
    aa, ab = P[a] + cell_z, P[a + 1] + cell_z
    b = P[cell_x + 1] + cell_y
    ba, bb = P[b] + cell_z, P[b + 1] + cell_z
    gx, gy, gz = sub(fx, 1.0), sub(fy, 1.0), sub(fz, 1.0)
    g000, g100 = grad(P[aa], fx, fy, fz), grad(P[ba], gx, fy, fz)
    g010, g110 = grad(P[ab], fx, gy, fz), grad(P[bb], gx, gy, fz)
    g001, g101 = grad(P[aa + 1], fx, fy, gz), grad(P[ba + 1], gx, fy, gz)
    g011, g111 = grad(P[ab + 1], fx, gy, gz), grad(P[bb + 1], gx, gy, gz)
    low = lerp(fv, lerp(fu, g000, g100), lerp(fu, g010, g110))
    high = lerp(fv, lerp(fu, g001, g101), lerp(fu, g011, g111))
    return finish(lerp(fw, low, high))


def nearest_single(exact):
    """The single-precision number nearest to a fraction in [0.5, 1], by exact comparison."""
    scaled = exact * 2**24
    below = scaled.numerator // scaled.denominator
    rest = scaled - below
    assert rest != Fraction(1, 2)
    return float(Fraction(below + (rest > Fraction(1, 2)), 2**24))


AMPLITUDES = [1.0] + [nearest_single(Fraction(2 ** (n - 1), 2**n - 1)) for n in range(1, 11)]
# A quotient in double precision, rounded once more, gives the same numbers: a table may be built that way.
assert AMPLITUDES[1:] == [single(2.0 ** (n - 1) / (2.0**n - 1.0)) for n in range(1, 11)]


def turbulence(noise, point, octaves):
    n = min(octaves, 10)
    if n == 0:
        return 0.0
    amplitude, total = AMPLITUDES[n], 0.0
    for _ in range(n):
        total = add(total, mul(noise(*point), amplitude))
        point = [mul(c, 2.0) for c in point]
        amplitude = mul(amplitude, 0.5)
    return total


EDGES = [
    0.0, -0.0, 1.0, -1.0, 3.0, -3.0, 255.0, 256.0, -256.0, 257.0, 0.5, -0.5, 255.5, -255.5, 256.5, -0.75,
    from_bits(0x00000001), from_bits(0x80000001),  # the smallest numbers
    from_bits(0x00800000), from_bits(0x80800000),  # the smallest normal ones
    single(1e-10), single(-1e-10), single(1e-4), single(-1e-4),
    from_bits(0x3F7FFFFF), from_bits(0xBF7FFFFF),  # just inside 1 and -1
    from_bits(0x3F800001), from_bits(0xBF800001),  # just outside
    4194303.5, -4194303.5, 8388607.0, -8388607.5, 8388607.5, 8388608.0, -8388609.0, 16777217.0,
    2147483520.0, 2147483648.0, -2147483648.0, -2147483904.0,  # either side of what 32 bits hold
    4294967296.0, -4294967296.0, 1e20, -1e20, from_bits(0x7F7FFFFF), from_bits(0xFF7FFFFF),
    math.inf, -math.inf, math.nan,
]
EDGES = [single(e) for e in EDGES]
random.seed(20)


def anywhere():
    """A coordinate of any magnitude from a thousandth of a cell to a thousand periods."""
    return single(random.choice([1.0, -1.0]) * math.ldexp(1.0 + random.random(), random.randrange(-10, 18)))


def nearby():
    return single(random.uniform(-8.0, 264.0))


def points1():
    yield from ([e] for e in EDGES)
    for cell in range(256):
        yield [cell + 0.5]
        yield [single(cell - 256 + random.random())]
    yield from ([anywhere()] for _ in range(100))


def points2():
    for i, e in enumerate(EDGES):
        yield [e, 0.25]
        yield [0.75, e]
        yield [e, EDGES[(i + 7) % len(EDGES)]]
    for cell in range(256):
        yield [cell + 0.5, cell * 7 % 256 + 0.25]
    yield from ([nearby(), nearby()] for _ in range(150))
    yield from ([anywhere(), anywhere()] for _ in range(100))


def points3():
    for i, e in enumerate(EDGES):
        yield [e, 0.25, 0.625]
        yield [0.75, e, 0.375]
        yield [-0.375, 0.5, e]
        yield [e, EDGES[(i + 7) % len(EDGES)], EDGES[(i + 19) % len(EDGES)]]
    yield [12.375, 187.5, 5.5]  # above 1
    yield [162.5, 241.5, 81.375]  # below 0
    for cell in range(256):
        yield [cell + 0.5, cell * 7 % 256 + 0.25, cell * 37 % 256 + 0.75]
    yield from ([nearby(), nearby(), nearby()] for _ in range(250))
    yield from ([anywhere(), anywhere(), anywhere()] for _ in range(100))


def octave_counts():
    while True:
        yield from (1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 11, 2**32 - 1)


def write(name, rows):
    rows = list(rows)
    assert len(rows) >= 500
    print(f"inline constexpr {name}[] = {{")
    for row in rows:
        print("    {" + ", ".join(f"0x{word:08X}" for word in row) + "},")
    print("};")


print("""#pragma once

/// @file
/// Written by noise_values.py.

#include <cstdint>

namespace bv::test
{

struct Noise1Value
{
    std::uint32_t x, result;
};

struct Noise2Value
{
    std::uint32_t x, y, result;
};

struct Noise3Value
{
    std::uint32_t x, y, z, result;
};

struct Turbulence1Value
{
    std::uint32_t x, octaves, result;
};

struct Turbulence2Value
{
    std::uint32_t x, y, octaves, result;
};

struct Turbulence3Value
{
    std::uint32_t x, y, z, octaves, result;
};

// clang-format off
/// The slopes of the noise along a line at the whole numbers from 0 to 255: '+' for 1, '-' for -1, '0' for none.
inline constexpr char NOISE_SLOPES[] =""")
SLOPES = "".join({1.0: "+", -1.0: "-", 0.0: "0"}[grad(P[P[P[cell]]], 1.0, 0.0, 0.0)] for cell in range(256))
print("\n".join(f'    "{SLOPES[start:start + 64]}"' for start in range(0, 256, 64)) + ";")
write("Noise1Value NOISE_1", ([*map(bits, p), bits(noise1(*p))] for p in points1()))
write("Noise2Value NOISE_2", ([*map(bits, p), bits(noise2(*p))] for p in points2()))
write("Noise3Value NOISE_3", ([*map(bits, p), bits(noise3(*p))] for p in points3()))
for dimension, noise, points in ((1, noise1, points1()), (2, noise2, points2()), (3, noise3, points3())):
    write(
        f"Turbulence{dimension}Value TURBULENCE_{dimension}",
        ([*map(bits, p), n, bits(turbulence(noise, p, n))] for p, n in zip(points, octave_counts())),
    )
print("""// clang-format on

} // namespace bv::test""")
