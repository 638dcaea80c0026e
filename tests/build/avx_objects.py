"""Fails when an object file of the library that is compiled for AVX offers code to others.

The linker keeps one copy of each weak symbol. If it kept one that was compiled for AVX, every caller in the program
would run it, on processors without AVX, too.
"""
import re
import subprocess
import sys

# The first points at the routine that unwinds exceptions; the second ends the program and is no code for AVX.
HARMLESS = {"DW.ref.__gxx_personality_v0", "__clang_call_terminate"}

nm, *objects = sys.argv[1:]
objects = [path for path in ";".join(objects).split(";") if re.search(r"Avx\w*\.cpp\.o(bj)?$", path)]
if len(objects) < 2:
    sys.exit("the object files for AVX are not among those of the library")
shared = []
for path in objects:
    listing = subprocess.run([nm, "-C", "--defined-only", path], check=True, capture_output=True, text=True).stdout
    symbols = re.findall(r"^[0-9a-fA-F]*\s+(\S)\s(.+)$", listing, re.MULTILINE)
    print(f"{path.rsplit('/', 1)[-1]}: {len(symbols)} symbols")
    if not any("Kernels()" in name for _, name in symbols):
        sys.exit("the object file does not hold the loops of the batch forms")
    shared += [f"{path}: {name}" for kind, name in symbols if kind in "WVuwv" and name not in HARMLESS]
if shared:
    sys.exit("\n".join(shared))
