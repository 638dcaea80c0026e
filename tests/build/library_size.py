"""Fails when the stripped shared library is larger than it may be.

What it holds is loaded by every program that uses any of it: code for three kinds of processors, and an instance of every
inline function for programs that do not inline it, with names of about fifty letters each. 768 KiB leave room for some
twenty functions more; whoever needs more than that looks first for instances that nobody calls.
"""
import pathlib
import subprocess
import sys
import tempfile

LIMIT = 768 * 1024

strip, library = sys.argv[1:]
with tempfile.TemporaryDirectory() as folder:
    copy = pathlib.Path(folder) / "library"
    subprocess.run([strip, "--strip-unneeded", "-o", str(copy), library], check=True)
    size = copy.stat().st_size
print(f"{size:,} bytes stripped, of {LIMIT:,}")
if not 100_000 < size <= LIMIT:
    sys.exit("the library is larger than that, or not what it should be")
