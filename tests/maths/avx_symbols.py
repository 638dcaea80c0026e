"""Fails when an object file that is compiled for AVX holds code of the library that the linker may share.

The linker keeps one copy of each weak symbol. If it kept one that was compiled for AVX, every caller in the program
would run it, on processors without AVX, too.
"""
import re
import subprocess
import sys

nm, path = sys.argv[1:]
listing = subprocess.run([nm, "-C", "--defined-only", path], check=True, capture_output=True, text=True).stdout
symbols = re.findall(r"^[0-9a-fA-F]*\s+(\S)\s(.+)$", listing, re.MULTILINE)
if not any("symbols::UseBoth" in name for _, name in symbols):
    sys.exit("this is not the object file of AVXSymbols.cpp")
shared = [name for kind, name in symbols if kind in "WVuwv" and "bv::" in name and "symbols::" not in name]
print(f"{len(symbols)} symbols, {len(shared)} of the library that may be shared")
if shared:
    sys.exit("\n".join(shared))
