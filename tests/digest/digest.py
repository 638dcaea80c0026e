#!/usr/bin/env python3
"""Runs the digest and compares it with the hashes that are on record.

Usage: digest.py [--write] [--without=PART]... PROGRAM RECORD [EMULATOR...]

Fails when the hash of a part differs, or is missing on either side. Those that depend on the machine are named when they
differ and fail nothing. A part that is named by --without, whole or up to a dot, is one that this machine cannot have, and
fails when it is there: wide texts of 32-bit characters on Windows, and what is made of raw bytes on a big-endian machine.
The packets of eight rays need not be named where the processor of this machine has no AVX.

--write puts what the program prints on record, for a change that is meant; every compiler must agree with it then. What
--without names, and what this machine cannot have, stays as it was.
"""

import itertools
import os
import subprocess
import sys

MACHINE_DEPENDENT = "machine-dependent."
OF_AVX = ("packet-triangles-avx", "packets-avx")
CPUINFO = "/proc/cpuinfo"


def parse(text):
    """The hashes by topic."""
    hashes = {}
    for line in text.splitlines():
        if line and not line.startswith("#"):
            name, value = line.split()
            hashes[name] = value
    return hashes


def lacks_avx():
    """Whether this machine says of its processors what they have, and AVX is not among it."""
    if not os.path.exists(CPUINFO):
        return False
    with open(CPUINFO, encoding="utf-8") as file:
        flags = [line.split() for line in file if line.startswith("flags")]
    return bool(flags) and "avx" not in flags[0]


def is_among(name, parts):
    """Whether a part is one of these, whole or up to a dot."""
    return any(f"{name}.".startswith(f"{part}.") for part in parts)


def compare(record, found, without=()):
    """What is wrong, and what merely differs from another machine."""
    wrong, notes = [], []
    for name in sorted(record.keys() | found.keys()):
        if is_among(name, without):
            (wrong if name in found else notes).append(f"{name}: {'there against' if name in found else 'left out by'} --without")
        elif name not in found:
            wrong.append(f"{name}: missing from the program's output")
        elif name not in record:
            wrong.append(f"{name}: not on record")
        elif record[name] != found[name]:
            (notes if name.startswith(MACHINE_DEPENDENT) else wrong).append(
                f"{name}: {found[name]} instead of {record[name]}")
    return wrong, notes


def output_of(program, *emulator):
    run = subprocess.run([*emulator, program], stdout=subprocess.PIPE, text=True, check=False)
    if run.returncode != 0:
        sys.exit(f"digest: {program} failed with exit code {run.returncode}")
    return run.stdout


def write(without, program, record, *emulator):
    output = output_of(program, *emulator)
    with open(record, encoding="utf-8") as file:
        lines = file.readlines()
    head = [line for line in lines if line.startswith("#")]
    written = parse(output)
    kept = [f"{name} {value}\n" for name, value in parse("".join(lines)).items()
            if is_among(name, without) and name not in written]
    with open(record, "w", encoding="utf-8") as file:
        file.writelines([*head, output, *kept])


def check(without, program, record, *emulator):
    with open(record, encoding="utf-8") as file:
        expected = parse(file.read())
    wrong, notes = compare(expected, parse(output_of(program, *emulator)), without)
    for note in notes:
        print(f"digest, differs without being wrong: {note}")
    if not expected or wrong:
        sys.exit("digest, results changed (if that is meant, digest.py --write puts them on record):\n  " +
                 "\n  ".join(wrong or ["nothing is on record"]))
    unjudged = sum(name.startswith(MACHINE_DEPENDENT) for name in expected)
    left_out = sum(is_among(name, without) for name in expected)
    print(f"digest: the same results in {len(expected) - unjudged - left_out} of {len(expected) - unjudged} parts")


if __name__ == "__main__":
    OPTIONS = list(itertools.takewhile(lambda argument: argument.startswith("--"), sys.argv[1:]))
    ARGUMENTS = sys.argv[1 + len(OPTIONS):]
    PARTS = tuple(option.removeprefix("--without=") for option in OPTIONS if option.startswith("--without="))
    if len(ARGUMENTS) < 2 or len(PARTS) + OPTIONS.count("--write") != len(OPTIONS):
        sys.exit(__doc__)
    if len(ARGUMENTS) == 2 and lacks_avx():
        PARTS += OF_AVX
    (write if "--write" in OPTIONS else check)(PARTS, *ARGUMENTS)
