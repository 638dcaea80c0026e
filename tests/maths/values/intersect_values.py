#!/usr/bin/env python3
"""Writes IntersectValues.h: rays and triangles, and where they meet, worked out in exact rational arithmetic.

    python3 intersect_values.py > IntersectValues.h

The first table holds small whole numbers, which no step of either test rounds: the hit is the exact one, rounded once.
The second one holds numbers of many digits that nearly touch edges and corners. There the coordinates that the ray sees
are rounded as the watertight test defines them, and whether they are hit is decided by exact determinants.
"""
import random
from fractions import Fraction

from ieee import DOUBLE, FLOAT


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def minus(a, b):
    return [x - y for x, y in zip(a, b)]


def solve(origin, direction, a, b, c):
    """(t, u, v) by Cramer's rule, or None."""
    to_b, to_c = minus(b, a), minus(c, a)
    determinant = dot(cross(to_b, to_c), direction)
    if determinant == 0:
        return None
    way = minus(origin, a)  # way + t * direction = u * to_b + v * to_c
    t = -dot(cross(to_b, to_c), way) / determinant
    at = [x + t * d for x, d in zip(way, direction)]
    u = dot(cross(at, to_c), direction) / determinant
    v = dot(cross(to_b, at), direction) / determinant
    return (t, u, v) if u >= 0 and v >= 0 and u + v <= 1 else None


def whole_rays(rng):
    """Rays along powers of 2 at inner points, edges, corners and the outside of triangles of whole numbers."""
    for count in range(420):
        triangle = [[Fraction(rng.randrange(-6, 7)) for _ in range(3)] for _ in range(3)]
        axis = rng.randrange(3)
        direction = [Fraction(rng.randrange(-4, 5)) for _ in range(3)]
        direction[axis] = Fraction(rng.choice((-4, 4)))
        if count % 5 == 4:
            direction = [x if i == axis else Fraction(0) for i, x in enumerate(direction)]
        # a corner, the middle of an edge, a quarter of one, an inner point, one beside the triangle
        weights = rng.choice(((1, 0, 0), (0, 1, 0), (0, 0, 1), (2, 2, 0), (0, 2, 2), (2, 0, 2), (1, 3, 0), (0, 1, 3),
                              (3, 0, 1), (2, 1, 1), (1, 2, 1), (1, 1, 2), (3, -1, 2), (-2, 4, 2), (5, 0, -1)))
        total = sum(weights)
        point = [sum(w * corner[i] for w, corner in zip(weights, triangle)) / total for i in range(3)]
        steps = Fraction(rng.randrange(-1, 4))
        yield [x - steps * d for x, d in zip(point, direction)], direction, triangle


def seen(f, origin, direction, corners):
    """What a ray sees of corners, by patterns: the two coordinates across it, each operation rounded."""
    size = [abs(f.value(x)) for x in direction]
    along = size.index(max(size))
    first, second = (along + 1) % 3, (along + 2) % 3
    shear = [f.div(direction[first], direction[along]), f.div(direction[second], direction[along])]
    result = []
    for corner in corners:
        way = [f.sub(x, o) for x, o in zip(corner, origin)]
        result.append([f.value(f.sub(way[first], f.mul(shear[0], way[along]))),
                       f.value(f.sub(way[second], f.mul(shear[1], way[along])))])
    return result


def meets(f, origin, direction, corners):
    a, b, c = seen(f, origin, direction, corners)
    signs = [q[0] * p[1] - q[1] * p[0] for p, q in ((b, c), (c, a), (a, b))]
    return any(signs) and (min(signs) >= 0 or max(signs) <= 0)


def near_rays(f, rng):
    """Rays at rounded points of edges and corners of random triangles."""
    def number(low, high):
        return f.round(Fraction(rng.randrange(2**60), 2**60) * (high - low) + low)

    for count in range(300):
        origin = [number(-2, 2) for _ in range(3)]
        triangle = [[number(-2, 2) for _ in range(3)] for _ in range(3)]
        if count % 3 == 0:  # in a plane of the axes, where the determinants are often 0
            plane = rng.randrange(3)
            for corner in triangle:
                corner[plane] = f.round(Fraction(3))
        p, q = triangle[count % 3], triangle[(count + 1) % 3]
        share = Fraction(rng.randrange(0, 17), 16) if count % 2 else Fraction(0)
        point = [f.round(f.value(x) + (f.value(y) - f.value(x)) * share) for x, y in zip(p, q)]
        direction = [f.sub(x, o) for x, o in zip(point, origin)]
        if count % 7 == 6:
            direction = [f.round(Fraction(0)), f.round(Fraction(1)), f.round(Fraction(0))]
            origin = [point[0], f.round(Fraction(-4)), point[2]]
        yield origin, direction, triangle


def literal(number):
    value = float(number)
    assert Fraction(value) == number
    return repr(value)


def bits(f, patterns):
    return ", ".join("0x%0*X" % (f.width // 4, x) for x in patterns)


def main():
    print("#pragma once\n\n/// @file\n/// Written by intersect_values.py.\n\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("/// A ray, the corners of a triangle, and t, u and v as patterns of both precisions where they meet.")
    print("struct WholeMeeting\n{\n    double origin[3], direction[3], corners[3][3];\n    bool isHit;\n"
          "    std::uint32_t asFloat[3];\n    std::uint64_t asDouble[3];\n};\n")
    print("/// Patterns of a ray and the corners of a triangle, and whether they meet as the ray sees it.")
    print("template <typename Bits>\nstruct NearMeeting\n{\n    Bits origin[3], direction[3], corners[3][3];\n    bool isHit;\n};\n")
    print("// clang-format off")
    print("inline constexpr WholeMeeting WHOLE_MEETINGS[] = {")
    for origin, direction, triangle in whole_rays(random.Random(1)):
        hit = solve(origin, direction, *triangle)
        numbers = [", ".join(map(literal, v)) for v in (origin, direction, *triangle)]
        patterns = [bits(f, [f.round(x) for x in hit or (0, 0, 0)]) for f in (FLOAT, DOUBLE)]
        print("    {{%s}, {%s}, {{%s}, {%s}, {%s}}, %s, {%s}, {%s}}," %
              (*numbers, "true" if hit else "false", *patterns))
    print("};\n")
    for f, name, width in ((FLOAT, "FLOAT", 32), (DOUBLE, "DOUBLE", 64)):
        print("inline constexpr NearMeeting<std::uint%d_t> NEAR_MEETINGS_%s[] = {" % (width, name))
        for origin, direction, triangle in near_rays(f, random.Random(2)):
            numbers = [bits(f, v) for v in (origin, direction, *triangle)]
            print("    {{%s}, {%s}, {{%s}, {%s}, {%s}}, %s}," %
                  (*numbers, "true" if meets(f, origin, direction, triangle) else "false"))
        print("};\n")
    print("// clang-format on\n\n} // namespace bv::test")


main()
