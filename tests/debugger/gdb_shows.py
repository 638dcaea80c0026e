"""Runs a program under GDB and compares what GDB shows of its values with the texts of a file, `name = text` a line.

Usage: gdb_shows.py GDB PROGRAM TEXTS [GDB'S ARGUMENT...], where the arguments have GDB find the printers.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

SKIPPED = 77
# At each stop, the local variables of the function that has come to it.
SCRIPT = """
set confirm off
set width 0
set disable-randomization off
break Stop
run
python
while gdb.selected_thread():
    gdb.execute("up", to_string=True)
    for symbol in gdb.selected_frame().block():
        text = gdb.execute("output " + symbol.name, to_string=True)
        print(f"shown: {symbol.name} = {text}")
    gdb.execute("continue", to_string=True)
end
"""


def has_avx():
    """Whether the processor runs what is compiled for AVX."""
    return re.search(r"^flags.*\bavx\b", pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.MULTILINE)


def expected(path):
    """The texts by name."""
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    return dict(line.split(" = ", 1) for line in lines if line)


def shown(gdb, program, arguments):
    """The texts that GDB shows, by name."""
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "ASAN_OPTIONS": "detect_leaks=0"}
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(folder, "show.gdb")
        script.write_text(SCRIPT, encoding="utf-8")
        run = subprocess.run([gdb, "-nx", "-batch", *arguments, "-x", script, program], env=environment,
                             capture_output=True, encoding="utf-8", check=False)
    texts = dict(re.findall(r"^shown: (\w+) = (?:@0x\w+: )?(.*)$", run.stdout, re.MULTILINE))  # @: of a reference
    if not texts:
        sys.exit(f"GDB shows nothing:\n{run.stdout}{run.stderr}")
    return texts


def compare(wanted, texts):
    """Fails where a text is not as wanted."""
    wrong = [name for name in wanted if texts.get(name) != wanted[name]]
    for name in wrong:
        print(f"{name}\n    wanted {wanted[name]}\n    shown  {texts.get(name)}")
    if wrong or not wanted:
        sys.exit(1)
    print(f"{len(wanted)} values are shown as they should be")


def main():
    gdb, program, path, *arguments = sys.argv[1:]
    if not pathlib.Path(gdb).exists():
        print("skipped: GDB is missing; install Debian's package gdb")
        sys.exit(SKIPPED)
    if "avx" in pathlib.Path(path).stem and not has_avx():
        print("skipped: this processor has no AVX")
        sys.exit(SKIPPED)
    compare(expected(path), shown(gdb, program, arguments))


if __name__ == "__main__":
    main()
