"""Fails when a header of expected values is not what its script writes.

    python3 -B same.py SCRIPT HEADER
"""
import pathlib
import subprocess
import sys

script, header = sys.argv[1:]
written = subprocess.run([sys.executable, "-B", script], check=True, capture_output=True, text=True).stdout.splitlines()
kept = pathlib.Path(header).read_text(encoding="utf-8").splitlines()
print(f"{len(kept)} lines in {header}, {len(written)} from {script}")
for number, (now, before) in enumerate(zip(written, kept), 1):
    if now != before:
        sys.exit(f"line {number} holds\n{before}\nand the script writes\n{now}")
if len(written) != len(kept) or not kept:
    sys.exit("one ends before the other")
