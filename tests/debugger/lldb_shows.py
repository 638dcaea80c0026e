"""Runs a program under LLDB and compares the summaries of its values with the texts of a file, `name = text` a line.

Usage: lldb_shows.py LLDB PROGRAM TEXTS MODULE, where the module has LLDB show the types
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import gdb_shows

# At each stop, the local variables of the function that has come to it. Compilers make statics of some constants.
SCRIPT = """
def show(debugger, command, result, dictionary):
    process = debugger.GetSelectedTarget().GetProcess()
    while process.IsValid() and process.GetState() == 5:  # stopped
        for value in process.GetSelectedThread().GetFrameAtIndex(1).GetVariables(False, True, True, False):
            print(f"shown: {value.GetName()} = {value.GetSummary()}")
        process.Continue()
"""


def packages(lldb):
    """The folder of LLDB's Python module, which Debian's LLDB 14 does not find by itself."""
    root = pathlib.Path(lldb).resolve().parent.parent
    folders = [path.parent.parent for path in root.glob("lib/python3*/*-packages/lldb/embedded_interpreter.py")]
    return str(folders[0]) if folders else ""


def shown(lldb, program, module):
    """The summaries by name."""
    # LLDB takes the modules of the first Python on the path, which must be the system's.
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "ASAN_OPTIONS": "detect_leaks=0", "PYTHONPATH": packages(lldb),
                   "PATH": os.defpath}
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(folder, "bvbaseutils_show.py")
        script.write_text(SCRIPT, encoding="utf-8")
        commands = ["settings set target.disable-aslr false", f"command script import {module}",
                    f"command script import {script}", f"command script add -f {script.stem}.show show",
                    "breakpoint set --name Stop", "run", "show"]
        options = [part for command in commands for part in ("-o", command)]
        run = subprocess.run([lldb, "--no-lldbinit", "--batch", *options, program], env=environment, capture_output=True,
                             encoding="utf-8", check=False)
    found = dict(re.findall(r"^shown: (\w+) = (.*)$", run.stdout, re.MULTILINE))
    if not found:
        sys.exit(f"LLDB shows nothing:\n{run.stdout}{run.stderr}")
    return found


def main():
    lldb, program, path, module = sys.argv[1:]
    if not pathlib.Path(lldb).exists():
        print("skipped: LLDB is missing; install Debian's packages lldb-14 and python3-lldb-14")
        sys.exit(gdb_shows.SKIPPED)
    if "avx" in pathlib.Path(path).stem and not gdb_shows.has_avx():
        print("skipped: this processor has no AVX")
        sys.exit(gdb_shows.SKIPPED)
    gdb_shows.compare(gdb_shows.expected(path), shown(lldb, program, module))


if __name__ == "__main__":
    main()
