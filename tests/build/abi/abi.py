"""Checks the binary interface of the shared library: what programs that are built already rely on.

Usage: abi.py [--accept]     (tools/check abi runs it where all that it needs is there)

Builds the library with GCC and with Clang, each with and without optimisation. All four must export the same names, each
with the version of the interface, and dlclose must unload them. Then the names, layouts and virtual functions are those
that x86_64.abi.xz beside this script records, unless --accept records them anew.
"""
import lzma
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
TOP = HERE.parent.parent.parent
RECORD = HERE / "x86_64.abi.xz"
FOREIGN = HERE / "foreign.suppr"
BUILDS = {"release": ["--preset", "release"], "debug": ["--preset", "debug"], "clang": ["--preset", "clang"],
          "clang-debug": ["--preset", "debug", "-DCMAKE_CXX_COMPILER=clang++"]}
# Constructors that are inlined by force, of whose two symbols Clang leaves out the one that programs would call: none does.
LEFT_OUT_BY_CLANG = {"_ZN2bv5maths10PercentageC1Ev", "_ZN2bv5maths10PercentageC1Ej", "_ZN2bv5maths10PercentageC1Ejj",
                     "_ZN2bv5maths11RNGeneratorC1Ej"}


def run(*command, good=(0,)):
    """The output of a command, which must give one of the good exit codes."""
    finished = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, cwd=TOP)
    if finished.returncode not in good:
        sys.exit(f"{' '.join(map(str, command))}\n{finished.stdout[-3000:]}{finished.stderr[-3000:]}")
    return finished


def build(name, options):
    """The library of a build folder."""
    folder = TOP / "build" / name
    run("cmake", *options, "-B", folder)
    run("cmake", "--build", folder, "-j2", "--target", "BvBaseUtils")
    return folder / "libBvBaseUtils.so"


def exported(library):
    """The letter of the kind and the version of each name that a library exports."""
    lines = [line.split() for line in run("nm", "-D", "--defined-only", library).stdout.splitlines()]
    return {name.partition("@")[0]: (kind, name.partition("@@")[2]) for _, kind, name in lines if kind != "A"}


def faults_of_names(libraries):
    """What is wrong with the exported names of the builds."""
    first, *others = libraries
    known = exported(libraries[first])
    faults = []
    for other in others:
        names = exported(libraries[other])
        missing = known.keys() - names.keys() - (LEFT_OUT_BY_CLANG if other.startswith("clang") else set())
        faults += [f"exported by {first} and not by {other}: {name}" for name in sorted(missing)]
        faults += [f"exported by {other} and not by {first}: {name}" for name in sorted(names.keys() - known.keys())]
    abi = re.search(r"set\(BV_ABI (\d+)\)", (TOP / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
    for build_name, library in libraries.items():
        if f"soname: [libBvBaseUtils.so.{abi}]" not in run("readelf", "-d", library).stdout:
            faults.append(f"{build_name}: the library is not called libBvBaseUtils.so.{abi}")
        for name, (kind, version) in exported(library).items():
            if version != f"BVBASEUTILS_{abi}":
                faults.append(f"{build_name}: of version '{version}': {name}")
            if kind == "u":
                faults.append(f"{build_name}: keeps the library loaded, since it is unique in a process: {name}")
    if len(known) < 2000:
        faults.append(f"{first} exports {len(known)} names: it has more than that")
    return faults


def is_unloaded(library):
    """Whether dlclose takes the library out of the process, tried in another one."""
    program = ("import ctypes, _ctypes, sys; path = sys.argv[1]; _ctypes.dlclose(ctypes.CDLL(path)._handle); "
               "sys.exit('libBvBaseUtils' in open('/proc/self/maps').read())")
    return subprocess.run([sys.executable, "-c", program, library], check=False).returncode == 0


def interface_of(library, path):
    """Writes what abidw finds out about a library."""
    run("abidw", "--no-show-locs", "--no-corpus-path", "--no-comp-dir-path", "--exported-interfaces-only",
        "--suppressions", FOREIGN, "--out-file", path, library)


def compared(recorded, current, *options):
    """The exit code and the output of abidiff: 0 where nothing differs."""
    finished = run("abidiff", "--suppressions", FOREIGN, *options, recorded, current, good=(0, 4, 8, 12))
    return finished.returncode, finished.stdout


def main():
    if platform.machine() != "x86_64":
        sys.exit("the binary interface is recorded for x86-64 alone")
    libraries = {name: build(name, options) for name, options in BUILDS.items()}
    faults = faults_of_names(libraries)
    faults += [f"{name}: dlclose does not unload the library" for name, library in libraries.items()
               if not is_unloaded(library)]
    if faults:
        sys.exit("\n".join(faults[:40]))

    with tempfile.TemporaryDirectory() as folder:
        recorded, current = pathlib.Path(folder) / "recorded.abi", pathlib.Path(folder) / "current.abi"
        interface_of(libraries["debug"], current)
        code, changes, breaks = 4, "", False
        if RECORD.exists():
            recorded.write_bytes(lzma.decompress(RECORD.read_bytes()))
            code, changes = compared(recorded, current)
            breaks = compared(recorded, current, "--no-added-syms")[0] != 0
        if "--accept" in sys.argv[1:] and code != 0:
            RECORD.write_bytes(lzma.compress(current.read_bytes(), preset=9 | lzma.PRESET_EXTREME))
            print(changes)
        elif code != 0:
            sys.exit(f"{changes}\nThe binary interface is not the recorded one. Where that is meant: tools/check abi --accept")
    if breaks:
        print("accepted; programs that are built already do not run with it: BV_ABI must be above that of the last release")
    else:
        print(f"{len(exported(libraries['debug']))} names, the same from {len(libraries)} builds; the interface is the recorded one")


main()
