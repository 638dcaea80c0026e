"""Fails when a consumer's hot loops call into the library, except on the cold paths that throw."""
import subprocess
import sys

listing = subprocess.run(["nm", "-C", "--undefined-only", sys.argv[1]], check=True, capture_output=True,
                         text=True).stdout
undefined = [line.split(None, 1)[1] for line in listing.splitlines()]
calls = [name for name in undefined if "bv::" in name and "Throw" not in name]

# A body that the compiler emitted out of line is a call as well, wherever it stands.
listing = subprocess.run(["nm", "-C", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True).stdout
defined = [line.split(None, 2) for line in listing.splitlines()]
bodies = [name for _, kind, name in defined if kind in "Ww" and "loops::" not in name]
loops = [name for _, kind, name in defined if kind in "TW" and name.startswith(("float loops::", "double loops::", "void loops::", "int loops::", "unsigned long loops::", "loops::"))]
print(f"{len(loops)} loops; undefined names: {', '.join(undefined)}")
if not loops:
    sys.exit("the object file holds no loop")
if calls or bodies:
    sys.exit("\n".join([f"call into the library: {name}" for name in calls] +
                       [f"call to a body out of line: {name}" for name in bodies]))
