#!/usr/bin/env python3
"""Writes TupleHashValues.h: the components of tuples as bit patterns, and their chained hashes.

    python3 tuple_hash_values.py > TupleHashValues.h
"""
import random
import struct

PEARSON = [
    92, 213, 150, 172, 106, 87, 185, 17, 113, 198, 216, 69, 182, 251, 234, 132,
    22, 73, 120, 255, 179, 153, 143, 139, 195, 41, 190, 127, 201, 191, 8, 60,
    252, 56, 39, 104, 53, 222, 247, 51, 154, 37, 123, 59, 34, 49, 236, 82,
    230, 174, 149, 128, 137, 85, 189, 165, 43, 156, 6, 75, 243, 13, 163, 101,
    210, 112, 164, 158, 95, 235, 33, 186, 184, 1, 79, 124, 144, 46, 16, 12,
    54, 93, 40, 133, 166, 100, 15, 126, 140, 5, 65, 194, 48, 45, 119, 212,
    175, 250, 187, 117, 183, 3, 67, 91, 155, 168, 134, 29, 27, 122, 84, 199,
    42, 90, 130, 38, 220, 178, 89, 246, 192, 227, 86, 242, 145, 169, 146, 142,
    108, 10, 66, 152, 4, 200, 36, 62, 237, 105, 217, 25, 171, 57, 35, 26,
    61, 83, 20, 109, 167, 162, 99, 224, 221, 2, 68, 58, 28, 81, 135, 74,
    31, 228, 233, 44, 219, 116, 231, 205, 232, 160, 202, 14, 114, 64, 24, 203,
    193, 218, 131, 138, 72, 211, 188, 111, 30, 254, 161, 7, 98, 103, 240, 115,
    176, 196, 18, 223, 151, 148, 147, 136, 118, 63, 215, 129, 225, 76, 94, 181,
    170, 253, 159, 244, 238, 50, 204, 177, 47, 214, 229, 206, 208, 249, 239, 78,
    173, 19, 245, 9, 209, 88, 102, 226, 110, 52, 0, 32, 125, 180, 121, 55,
    97, 70, 197, 71, 77, 96, 107, 241, 11, 157, 248, 207, 23, 141, 80, 21]

assert sorted(PEARSON) == list(range(256))


def jenkins(data, h):
    for byte in data:
        h = (h + byte) % 2**32
        h = (h + (h << 10)) % 2**32
        h ^= h >> 6
    h = (h + (h << 3)) % 2**32
    h ^= h >> 11
    return (h + (h << 15)) % 2**32


def pearson(data, h):
    for byte in data:
        h = PEARSON[byte ^ h]
    return h


def chained(hash_function, components):
    h = 0
    for component in reversed(components):
        h = hash_function(component, h)
    return h


assert jenkins(b"a", 0) == 3392050242
assert pearson(b"\0", 0) == 92
ONE_TWO = [struct.pack("<i", 1), struct.pack("<i", 2)]
assert chained(jenkins, ONE_TWO) == 3800763682
assert chained(pearson, ONE_TWO) == 204


def integers(count, rng):
    yield from ([0] * count, [1, 2, 3][:count], [2, 1, 3][:count], [0xFFFFFFFF, 0, 0x80000000][:count],
                [0x7FFFFFFF, 0xFFFFFFFC, 255][:count])
    for _ in range(20):
        yield [rng.randrange(2**32) for _ in range(count)]


def floats(count, rng, pack, unpack):
    def bits(*values):
        return [struct.unpack(unpack, struct.pack(pack, v))[0] for v in values][:count]

    infinity = float("inf")
    yield from (bits(0.0, 0.0, 0.0), bits(-0.0, 0.0, 0.0), bits(0.0, -0.0, 0.0), bits(1.0, 2.0, 3.0),
                bits(2.0, 1.0, 3.0), bits(-1.5, 0.1, 1e30), bits(infinity, infinity, infinity),
                bits(5e-324, -infinity, 0.25))
    for _ in range(20):
        yield [rng.randrange(2 ** (8 * struct.calcsize(pack))) for _ in range(count)]


def table(name, width, count, rows):
    print("inline constexpr TupleHashValue<std::uint%d_t, %d> %s[] = {" % (width, count, name))
    for row in rows:
        data = [component.to_bytes(width // 8, "little") for component in row]
        print("    {{%s}, %du, %d}," % (", ".join("0x%0*X" % (width // 4, c) for c in row),
                                       chained(jenkins, data), chained(pearson, data)))
    print("};\n")


def main():
    print("#pragma once\n\n/// @file\n/// Written by tuple_hash_values.py.\n\n#include <cstddef>\n#include <cstdint>\n\nnamespace bv::test\n{\n")
    print("template <typename Bits, std::size_t COUNT>\nstruct TupleHashValue\n{\n    Bits components[COUNT];\n"
          "    std::uint32_t hash32;\n    std::uint8_t hash8;\n};\n")
    print("// clang-format off")
    for count in (2, 3):
        rng = random.Random(count)
        table("TUPLE%d_INTEGER_HASHES" % count, 32, count, integers(count, rng))
        table("TUPLE%d_FLOAT_HASHES" % count, 32, count, floats(count, rng, "<f", "<I"))
        table("TUPLE%d_DOUBLE_HASHES" % count, 64, count, floats(count, rng, "<d", "<Q"))
    print("// clang-format on\n\n} // namespace bv::test")


main()
