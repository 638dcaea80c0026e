#!/usr/bin/env python3
"""Measures the example ray tracer's speed with single rays and with packets, and writes it as JSON.

Usage: raytracer.py MESH OUTPUT NAME=PROGRAM...

Each program draws the same picture with every kind of packet in turn, on one thread, rays through the pixels only, with
five samples a pixel and with one: the difference between the two leaves out the start, the mesh and the file.
"""

import json
import os
import re
import resource
import statistics
import subprocess
import sys
import tempfile

MODES = ["scalar", "sse", "avx"]
TITLES = ["single rays", "SSE, four rays", "AVX, eight rays"]
SIZE = "1920x1080"
REPETITIONS = 5


def draw(program, mesh, mode, samples, picture):
    """The number of rays and the processor time of a picture."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    result = subprocess.run(
        [program, mesh, "--output", picture, "--size", SIZE, "--ao", "0", "--floor", "none",
         "--threads", "1", "--samples", str(samples), "--packet", mode],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    counted = re.search(r"^(\d+) rays in ", result.stdout, re.MULTILINE)
    if result.returncode != 0 or not counted:
        sys.exit(f"{result.stderr}raytracer: failed: {program} --packet {mode}")
    return int(counted[1]), after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def rate(many, one):
    """Rays a second, from two pictures that differ in their samples alone: what both of them do cancels out."""
    rays, seconds = many[0] - one[0], many[1] - one[1]
    if rays <= 0 or seconds <= 0:
        sys.exit("raytracer: the picture with more samples took no longer than the one with fewer")
    return rays / seconds


def main(mesh, output, programs):
    measured = {name: {mode: [] for mode in MODES} for name in programs}
    with tempfile.TemporaryDirectory() as folder:
        picture = os.path.join(folder, "picture.png")
        for _ in range(REPETITIONS):
            for mode in MODES:
                for name, program in programs.items():
                    measured[name][mode].append(rate(draw(program, mesh, mode, 5, picture),
                                                     draw(program, mesh, mode, 1, picture)))
    rates = {name: {title: statistics.median(measured[name][mode]) for mode, title in zip(MODES, TITLES)}
             for name in programs}
    what = (f"Millions of rays a second of processor time: the bunny at {SIZE}, one thread, rays through the "
            f"pixels only (`--ao 0 --floor none`), the difference between five samples and one, medians of "
            f"{REPETITIONS}. Making and shading the rays takes most of it.")
    with open(output, "w", encoding="utf-8") as file:
        json.dump({"what": what, "modes": TITLES, "rates": rates}, file, indent=1)
    for name, by_mode in rates.items():
        print(f"ray tracer, {name}, millions of rays a second: " +
              ", ".join(f"{title} {value / 1e6:.2f}" for title, value in by_mode.items()))


if __name__ == "__main__":
    if len(sys.argv) < 4 or any("=" not in argument for argument in sys.argv[3:]):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], dict(argument.split("=", 1) for argument in sys.argv[3:]))
