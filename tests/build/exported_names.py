"""Fails when the shared library exports a name that is not its own, or lacks a function that its headers declare."""
import subprocess
import sys

import interface

library = sys.argv[1]
listing = subprocess.run(["nm", "-DC", "--defined-only", library], check=True, capture_output=True, text=True).stdout
names = [line.split(" ", 2)[2] for line in listing.splitlines()]
foreign = [name for name in names if "bv::" not in name]
data = ["typeinfo for bv::maths::MatrixException", "vtable for bv::Exception", "vtable for bv::maths::tVolumeSphere<float>"]
missing = [name for name in data if name not in names]

functions = interface.required()
missing += sorted(map(interface.shown, functions - {interface.parsed(name) for name in names}))
print(f"{len(names)} exported names, {len(functions)} functions in the headers")
if foreign or missing:
    sys.exit("\n".join([f"not ours: {name}" for name in foreign[:10]] + [f"missing: {name}" for name in missing]))
if len(functions) < 800:
    sys.exit("the headers declare more than that")
