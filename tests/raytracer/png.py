"""Reads and writes the few kinds of PNG that the ray tracer's tests need, with Python's standard library alone."""

import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"


class Picture:
    """Rows of (red, green, blue) pixels, from the top."""

    def __init__(self, rows):
        self.rows = rows
        self.width = len(rows[0])
        self.height = len(rows)

    def crop(self, left, top, right, bottom):
        return Picture([row[left:right] for row in self.rows[top:bottom]])

    def differences(self, other):
        """For each pixel that is not the same in both, the largest difference of a colour."""
        assert (self.width, self.height) == (other.width, other.height)
        pairs = [pair for rows in zip(self.rows, other.rows) for pair in zip(*rows)]
        return [max(abs(a - b) for a, b in zip(*pair)) for pair in pairs if pair[0] != pair[1]]


def _predict(kind, left, above, corner):
    if kind == 4:  # the neighbour that is nearest to left + above - corner
        guess = left + above - corner
        return min((left, above, corner), key=lambda value: abs(guess - value))
    return (0, left, above, (left + above) // 2)[kind]


def read(path):
    """An 8-bit RGB picture without interlacing."""
    with open(path, "rb") as file:
        data = file.read()
    assert data.startswith(SIGNATURE), f"{path} is not a PNG file"
    at, packed, header = len(SIGNATURE), b"", None
    while at < len(data):
        (length,), name = struct.unpack(">I", data[at:at + 4]), data[at + 4:at + 8]
        body = data[at + 8:at + 8 + length]
        assert struct.unpack(">I", data[at + 8 + length:at + 12 + length])[0] == zlib.crc32(name + body)
        header = struct.unpack(">IIBBBBB", body) if name == b"IHDR" else header
        packed += body if name == b"IDAT" else b""
        at += 12 + length
    width, height, depth, colour, _, _, interlaced = header
    assert (depth, colour, interlaced) == (8, 2, 0), "not an 8-bit RGB picture"
    data, stride = zlib.decompress(packed), 3 * width
    assert len(data) == height * (stride + 1)
    rows, above = [], bytearray(stride)
    for y in range(height):
        kind, line = data[y * (stride + 1)], bytearray(data[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            left, corner = (line[i - 3], above[i - 3]) if i >= 3 else (0, 0)
            line[i] = (line[i] + _predict(kind, left, above[i], corner)) & 255
        rows.append([tuple(line[i:i + 3]) for i in range(0, stride, 3)])
        above = line
    return Picture(rows)


def write(path, rows):
    def chunk(name, body):
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    lines = b"".join(b"\0" + bytes(value for pixel in row for value in pixel) for row in rows)
    with open(path, "wb") as file:
        file.write(SIGNATURE + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))
