"""Fails when AVXSymbols.cpp, compiled so that every call leaves a symbol, misses an inline function of the library."""
import sys

import interface

library, path = sys.argv[1:]
used = {interface.parsed(symbol) for symbol in interface.symbols(path)}
inline = {interface.parsed(symbol) for symbol, kind in interface.symbols(library, "-D", "--defined-only").items() if kind == "W"}
wanted = interface.required() & inline
missing = sorted(map(interface.shown, wanted - used))
print(f"{len(wanted)} inline functions, {len(missing)} of them not used")
if missing:
    sys.exit("\n".join(missing))
if len(wanted) < 700:
    sys.exit("the library has more of them than that")
