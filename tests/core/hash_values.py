#!/usr/bin/env python3
"""Prints the expected values of HashTest.cpp, worked out in plain integers of any size."""

MASK = 2**32 - 1

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
    97, 70, 197, 71, 77, 96, 107, 241, 11, 157, 248, 207, 23, 141, 80, 21,
]

LAGAE = {
    17: [7, 4, 6, 15, 11, 9, 1, 3, 0, 5, 10, 16, 13, 2, 8, 12, 14],
    19: [12, 9, 18, 15, 10, 7, 8, 16, 14, 11, 5, 3, 2, 0, 4, 17, 13, 1, 6],
    23: [6, 3, 7, 22, 15, 17, 13, 10, 2, 18, 16, 19, 5, 14, 8, 11, 20, 4, 0, 9, 12, 1, 21],
    24: [11, 13, 9, 4, 20, 19, 3, 1, 8, 10, 6, 22, 16, 23, 2, 15, 18, 5, 0, 17, 12, 21, 7, 14],
    29: [10, 2, 16, 11, 8, 17, 24, 23, 13, 20, 22, 5, 15, 12, 27, 0, 26, 19, 21, 28, 3, 4, 18, 6, 14, 25, 1, 9, 7],
    31: [12, 24, 29, 0, 21, 19, 28, 13, 18, 3, 22, 6, 7, 23, 27, 1, 10, 11, 20, 16, 2, 5, 9, 8, 26, 17, 30, 4, 14,
         15, 25],
    37: [36, 8, 34, 24, 15, 14, 35, 12, 5, 18, 21, 26, 25, 27, 28, 10, 11, 30, 4, 19, 22, 31, 13, 9, 16, 7, 3, 6,
         23, 32, 29, 33, 17, 0, 1, 20, 2],
}


def fnv(data):
    value = 2166136261
    for byte in data:
        value = (value ^ byte) * 16777619 % 2**32
    return value


def jenkins(data, seed):
    value = seed
    for byte in data:
        value = (value + byte) % 2**32
        value = (value + value * 2**10) % 2**32
        value = value ^ value // 2**6
    value = (value + value * 2**3) % 2**32
    value = value ^ value // 2**11
    return (value + value * 2**15) % 2**32


def pearson(data, seed):
    value = seed
    for byte in data:
        value = PEARSON[byte ^ value]
    return value


def lagae(x, y):
    total = 0
    for size, table in LAGAE.items():
        # Python's remainder is never negative; & MASK takes the unsigned pattern of 32 bits.
        total += table[((table[x % size] + (y & MASK)) & MASK) % size]
    return total % 24


def main():
    assert sorted(PEARSON) == list(range(256))
    assert all(sorted(table) == list(range(size)) for size, table in LAGAE.items())

    fox = b"The quick brown fox jumps over the lazy dog"
    texts = [b"", b"a", b"b", b"foobar", fox, "Grüße, 世界 😀".encode(), b"\x7f", b"Brevane exception"]
    print("FNVHash32")
    for text in texts:
        print("   ", text, hex(fnv(text)))
    print("GetJenkinsHash")
    for text, seed in [(b"a", 0), (fox, 0), (b"", 1), (b"", 0x12345678), (b"", MASK), (b"a", 1), (b"a", MASK),
                       (bytes(range(256)), 0), (bytes(range(256)), 0xDEADBEEF), (b"\0\0\0\0", 0), (b"\0\0\0\0", 1),
                       (b"\xff", 0), (b"\x80\xff", 0x80000000)]:
        print("   ", text[:8], len(text), hex(seed), hex(jenkins(text, seed)))
    print("    b after a", hex(jenkins(b"b", jenkins(b"a", 0))))
    print("GetPearsonHash, one byte, seed 0")
    for row in range(16):
        print("   ", *(f"{pearson([row * 16 + column], 0)}," for column in range(16)))
    print("GetPearsonHash")
    for text, seed in [(fox, 0), (fox, 255), (b"a", 1), (b"\xff", 255), (bytes(range(256)), 0),
                       (bytes(range(256)), 77), (b"\0\0\0\0", 0)]:
        print("   ", text[:8], len(text), seed, pearson(text, seed))
    print("GetLagaeHash, a row for each x from 0 to 36, a letter for each y from 0 to 36, A = 0")
    for x in range(37):
        print('   ', '"' + "".join(chr(65 + lagae(x, y)) for y in range(37)) + '"')
    print("GetLagaeHash, the same for x from -37 to -1")
    for x in range(-37, 0):
        print('   ', '"' + "".join(chr(65 + lagae(x, y)) for y in range(37)) + '"')
    print("GetLagaeHash, far away")
    far = [0, 1, -1, 123456789, -123456789, 2**31 - 1, -2**31 + 1, -2**31]
    for x in far:
        print("   ", "{" + ", ".join(str(lagae(x, y)) for y in far) + "},", "//", x)


main()
