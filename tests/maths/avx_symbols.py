"""Fails when an object file that is compiled for AVX holds code of the library that the linker may share.

The linker keeps one copy of each weak symbol. If it kept one that was compiled for AVX, every caller in the program
would run it, on processors without AVX, too.

Usage: avx_symbols.py NM OBJECT, or avx_symbols.py NM COMPILER LEVEL INCLUDES SOURCE to compile the object first
"""
import os
import re
import subprocess
import sys
import tempfile

# Functions of the library and what belongs to them, such as static variables; the operators of tuples stand outside of
# its namespace. Not those of the standard library that merely take its types.
CONSTANT = re.compile(r"\d[A-Z][A-Z0-9_]+E$")  # the same in every file
OURS = re.compile(r"_Z(Z|GV|GR|T[A-Z])*N[KVrRO]*2bv|_ZlsI")


def compiled(compiler, level, includes, source, folder):
    path = os.path.join(folder, "AVXSymbols.o")
    subprocess.run([compiler, "-std=c++20", "-mavx", "-ffp-contract=off", level, "-I", includes, "-c", source, "-o", path],
                   check=True)
    return path


with tempfile.TemporaryDirectory() as folder:
    nm, path, *build = sys.argv[1:]
    if build:
        path = compiled(path, *build, folder)
    listing = subprocess.run([nm, path], check=True, capture_output=True, text=True).stdout
symbols = re.findall(r"^[0-9a-fA-F]*\s+(\S)\s(\S+)$", listing, re.MULTILINE)
if not any("7symbols" in name for _, name in symbols):
    sys.exit("this is not the object file of AVXSymbols.cpp")
# Objects for Windows do not mark shared code as weak; the file has no code of the library's own.
shared = [name for kind, name in symbols if kind in "WVuwvT" and OURS.match(name) and not CONSTANT.search(name)]
called = [name for kind, name in symbols if kind == "U" and OURS.match(name)]
print(f"{len(symbols)} symbols, {len(called)} in the library, {len(shared)} of the library that may be shared")
if shared:
    sys.exit(subprocess.run(["c++filt", *shared], check=True, capture_output=True, text=True).stdout)
