"""Fails when a consumer's hot loops call anything, except on the cold paths: those that throw, and those that decide what
lies on an edge."""
import os
import subprocess
import sys
import tempfile


def compiled(compiler, include, source):
    """The object file that another compiler than the build's makes of the loops."""
    path = os.path.join(tempfile.mkdtemp(), "HotLoops.o")
    subprocess.run([compiler, "-std=c++20", "-O2", "-DNDEBUG", "-ffp-contract=off", "-I", include, "-c", source, "-o", path],
                   check=True)
    return path


objectFile = sys.argv[1] if len(sys.argv) == 2 else compiled(*sys.argv[1:])
listing = subprocess.run(["nm", "-C", "--undefined-only", objectFile], check=True, capture_output=True,
                         text=True).stdout
undefined = [line.split(None, 1)[1] for line in listing.splitlines()]
# The personality is what a throw needs.
harmless = {"_GLOBAL_OFFSET_TABLE_", "__gxx_personality_v0"}
calls = [name for name in undefined if "Throw" not in name and "MeetOnEdge" not in name and name not in harmless]

# A body that the compiler emitted out of line is a call as well, wherever it stands.
listing = subprocess.run(["nm", "-C", "--defined-only", objectFile], check=True, capture_output=True, text=True).stdout
defined = [line.split(None, 2) for line in listing.splitlines()]
bodies = [name for _, kind, name in defined if kind in "Ww" and "loops::" not in name]
loops = [name for _, kind, name in defined if kind in "TW" and name.startswith(("float loops::", "double loops::", "void loops::", "int loops::", "unsigned long loops::", "loops::"))]
print(f"{len(loops)} loops; undefined names: {', '.join(undefined)}")
if not loops:
    sys.exit("the object file holds no loop")
if calls or bodies:
    sys.exit("\n".join([f"call: {name}" for name in calls] +
                       [f"call to a body out of line: {name}" for name in bodies]))
