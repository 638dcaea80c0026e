"""Compares the files of an installation with those that packaging/manifest.txt lists.

Usage: manifest.py [--write] PREFIX   with --write, the list is made anew; run it on a shared library

The list names folders as they are by default: lib/ for libraries, VERSION and ABI for the library's own numbers, and
PREFIX for the path of the installation, which GDB's script repeats.
"""
import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
MANIFEST = TOP / "packaging" / "manifest.txt"


def numbers():
    """The version and the number of the ABI."""
    header = (TOP / "include" / "bv" / "Version.h").read_text(encoding="utf-8")
    version = ".".join(re.search(rf"VERSION_{part} = (\d+)", header)[1] for part in ("MAJOR", "MINOR", "PATCH"))
    abi = re.search(r"set\(BV_ABI (\d+)\)", (TOP / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
    return version, abi


def listed_name(path, prefix, place=None):
    """A file or link as the list names it. The place is where it was installed to be, if not where it is."""
    version, abi = numbers()
    name = path.relative_to(prefix).as_posix().replace(f"auto-load{place or prefix.as_posix()}/", "auto-load/PREFIX/")
    name = re.sub(r"(^|/PREFIX/)lib(64|/[\w-]+-linux-gnu\w*)?/(?=lib|cmake|pkgconfig)", r"\1lib/", name)
    name = re.sub(r"Targets-\w+\.cmake$", "Targets-CONFIGURATION.cmake", name)
    return re.sub(rf"\.so\.{abi}$", ".so.ABI", name.replace(f".so.{version}", ".so.VERSION"))


def main():
    prefix = pathlib.Path(sys.argv[-1]).resolve()
    names = [listed_name(path, prefix) for path in prefix.rglob("*") if not path.is_dir()]
    text = "".join(f"{name}\n" for name in sorted(names))
    if "--write" in sys.argv:
        MANIFEST.write_text(text, encoding="utf-8")
        return
    wanted = MANIFEST.read_text(encoding="utf-8").splitlines()
    complaints = [f"not listed: {name}" for name in sorted(set(names) - set(wanted))]
    complaints += [f"not installed: {name}" for name in sorted(set(wanted) - set(names))]
    print(f"{len(names)} files are installed")
    if complaints:
        sys.exit("\n".join([*complaints, "CONTRIBUTING.md says how to change the list"]))


if __name__ == "__main__":
    main()
