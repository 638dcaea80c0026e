"""Fails when a product and a sum became one fused instruction: in the library, or in a consumer's hot loops for
processors that have such instructions. For x86, GCC 12 fuses sums and differences in turn even if it is told not to.

Usage: no_fusion.py OBJDUMP LIBRARY INCLUDE_FOLDER LOOPS_SOURCE COMMAND...

Each COMMAND is a compiler with its flags for such a processor, in one argument.
"""
import os
import re
import shlex
import subprocess
import sys
import tempfile

FUSED = re.compile(r"""\s(vfn?m(add|sub)\w+          # x86
                       |fn?m(add|sub)|fml[as]|fcmla  # ARM64
                       |m[as][ed]br?|[vw]fn?m[as]\w*  # s390x
                       )\s""", re.VERBOSE)


def compiled(command, include, source, folder):
    words = shlex.split(command)
    path = os.path.join(folder, os.path.basename(words[0]) + ".o")
    subprocess.run([*words, "-std=c++20", "-O3", "-DNDEBUG", "-ffp-contract=off", "-I", include, "-c", source, "-o", path],
                   check=True)
    return path


def fused(path):
    """The functions of a file with their fused instructions."""
    listing = subprocess.run([objdump, "-d", "-C", "--no-show-raw-insn", path], check=True, capture_output=True,
                             text=True).stdout
    found, function, instructions = [], "", 0
    for line in listing.splitlines():
        if head := re.match(r"[0-9a-f]+ <(.*)>:$", line):
            function = head[1]
        elif re.match(r"\s+[0-9a-f]+:\s", line):
            instructions += 1
            if FUSED.search(line):
                found.append(f"{os.path.basename(path)}: {function}: {line.split(':', 1)[1].strip()}")
    if instructions < 1000:
        sys.exit(f"{path}: only {instructions} instructions, too few to be looked at")
    print(f"{os.path.basename(path)}: {instructions} instructions, {len(found)} fused")
    return found


objdump, library, include_folder, loops, *commands = sys.argv[1:]
with tempfile.TemporaryDirectory() as temporary:
    objects = [compiled(command, include_folder, loops, temporary) for command in commands]
    everything = [name for path in [library, *objects] for name in fused(path)]
if everything:
    sys.exit("\n".join(everything[:20]))
