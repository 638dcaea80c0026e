#!/usr/bin/env python3
"""Runs the digest and compares it with the hashes that are on record.

Usage: digest.py PROGRAM RECORD [EMULATOR...]

Fails when a topic's hash differs, or is missing on either side. Topics that depend on the machine are named when they
differ and fail nothing; the packets of eight rays may be missing where an x86 processor has no AVX, wide texts of 32-bit
characters where Windows has none, and serialised bytes on big-endian machines.
"""

import subprocess
import sys

MACHINE_DEPENDENT = "machine-dependent."
OPTIONAL = {"packet-triangles-avx.float", "packets-avx.float", "serialised-bytes.double", "serialised-bytes.float",
            "text-wide"}


def parse(text):
    """The hashes by topic."""
    hashes = {}
    for line in text.splitlines():
        if line and not line.startswith("#"):
            name, value = line.split()
            hashes[name] = value
    return hashes


def compare(record, found):
    """What is wrong, and what merely differs from another machine."""
    wrong, notes = [], []
    for name in sorted(record.keys() | found.keys()):
        if name not in found:
            (notes if name in OPTIONAL else wrong).append(f"{name}: missing from the program's output")
        elif name not in record:
            wrong.append(f"{name}: not on record")
        elif record[name] != found[name]:
            (notes if name.startswith(MACHINE_DEPENDENT) else wrong).append(
                f"{name}: {found[name]} instead of {record[name]}")
    return wrong, notes


def main(program, record, *emulator):
    with open(record, encoding="utf-8") as file:
        expected = parse(file.read())
    run = subprocess.run([*emulator, program], stdout=subprocess.PIPE, text=True, check=False)
    if run.returncode != 0:
        sys.exit(f"digest: {program} failed with exit code {run.returncode}")
    wrong, notes = compare(expected, parse(run.stdout))
    for note in notes:
        print(f"digest, differs without being wrong: {note}")
    if not expected or wrong:
        sys.exit("digest, results changed:\n  " + "\n  ".join(wrong or ["nothing is on record"]))
    print(f"digest: the same results in {len(expected) - len(notes)} of {len(expected)} topics")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
