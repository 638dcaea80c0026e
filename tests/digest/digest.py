#!/usr/bin/env python3
"""Runs the digest and compares it with the hashes that are on record.

Usage: digest.py [--write] PROGRAM RECORD [EMULATOR...]

Fails when the hash of a part differs, or is missing on either side. Those that depend on the machine are named when they
differ and fail nothing; the packets of eight rays may be missing where an x86 processor has no AVX, wide texts of 32-bit
characters where Windows has none, and what is made of raw bytes on big-endian machines.

--write puts what the program prints on record, for a change that is meant; every compiler must agree with it then.
"""

import subprocess
import sys

MACHINE_DEPENDENT = "machine-dependent."
OPTIONAL = ("packet-triangles-avx.", "packets-avx.", "serialised-bytes.", "quaternion-rotations.bytes.", "quaternions.hashes.",
            "hashes.integer-tuples", "hashes.number-tuples")


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
            (notes if name.startswith(OPTIONAL) or name == "text-wide" else wrong).append(f"{name}: missing from the program's output")
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


def write(program, record, *emulator):
    output = output_of(program, *emulator)
    with open(record, encoding="utf-8") as file:
        head = [line for line in file if line.startswith("#")]
    with open(record, "w", encoding="utf-8") as file:
        file.writelines([*head, output])


def main(program, record, *emulator):
    with open(record, encoding="utf-8") as file:
        expected = parse(file.read())
    wrong, notes = compare(expected, parse(output_of(program, *emulator)))
    for note in notes:
        print(f"digest, differs without being wrong: {note}")
    if not expected or wrong:
        sys.exit("digest, results changed (if that is meant, digest.py --write puts them on record):\n  " +
                 "\n  ".join(wrong or ["nothing is on record"]))
    print(f"digest: the same results in {len(expected) - len(notes)} of {len(expected)} parts")


if __name__ == "__main__":
    action, arguments = (write, sys.argv[2:]) if sys.argv[1:2] == ["--write"] else (main, sys.argv[1:])
    if len(arguments) < 2:
        sys.exit(__doc__)
    action(*arguments)
