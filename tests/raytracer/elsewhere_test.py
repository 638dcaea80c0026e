#!/usr/bin/env python3
"""Whether the ray tracer draws the golden pictures, to the byte, on whatever system and processor.

Usage: elsewhere_test.py [--without-avx] PROGRAM [EMULATOR...]

Without AVX, no processor draws with eight rays at a time. PROGRAM takes the ray tracer's options and writes the pixels alone; see GoldenPictures.cpp.
"""

import os
import subprocess
import sys
import tempfile
import unittest

import golden
import png

WIDTH, HEIGHT = 64, 40


def read_pixels(path):
    """Rows from the top, each pixel three bytes."""
    with open(path, "rb") as file:
        data = file.read()
    assert len(data) == 3 * WIDTH * HEIGHT, f"{len(data)} bytes"
    pixels = [tuple(data[at:at + 3]) for at in range(0, len(data), 3)]
    return png.Picture([pixels[at:at + WIDTH] for at in range(0, len(pixels), WIDTH)])


class Golden(golden.Scenes, unittest.TestCase):
    """Each scene with one, four and eight rays at a time."""

    command = []
    packets = ["scalar", "sse", "avx"]

    def draw(self, folder, *options):
        # Relative paths, without drives or slashes in front, mean the same on all systems.
        run = subprocess.run([*self.command, os.path.relpath(golden.CUBE, folder), "--output", "pixels", *golden.TINY, *options],
                             cwd=folder, capture_output=True, text=True, timeout=600, check=False)
        self.assertEqual(run.returncode, 0, run.stdout[-1000:] + run.stderr[-1000:])
        return read_pixels(os.path.join(folder, "pixels"))

    def assert_golden(self, name):
        for packet in self.packets:
            with self.subTest(packet=packet), tempfile.TemporaryDirectory() as folder:
                picture = self.draw(folder, *golden.SCENES[name], "--packet", packet)
                self.assertEqual(picture.differences(golden.read(name)), [])


if __name__ == "__main__":
    arguments = sys.argv[1:]
    if arguments[0] == "--without-avx":
        arguments.pop(0)
        Golden.packets = ["scalar", "sse"]
    Golden.command = [*arguments[1:], os.path.abspath(arguments[0])]
    unittest.main(argv=sys.argv[:1])
