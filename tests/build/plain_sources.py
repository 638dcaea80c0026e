#!/usr/bin/env python3
"""Looks that the library needs nothing but standard C++20 where BV_PLAIN_CXX says so.

Usage: plain_sources.py COMPILER

Preprocesses every source and looks through what is the library's own for extensions of GCC and Clang: builtin
functions, attributes, vectors, intrinsics and assembly. The marks of exported names in bv/Export.h may stay: each
system has its own.
"""

import pathlib
import re
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
FOLDERS = ("core", "internal", "include")
EXPORT = re.compile(r'__attribute__\(\((visibility\("default"\)|used|gnu_inline)\)\)')
EXTENSION = re.compile(r"\b(__builtin_(?!offsetof\b)\w+|__attribute__|__asm__|asm|vector_size|__extension__|__int128|__m(128|256|512)\w*|"
                       r"_mm(256|512)?_(?!rcp_nr\b|rsqrt_nr\b)\w+|gnu::\w+)")
PREPROCESS = ["-std=c++20", "-E", "-DBV_PLAIN_CXX", "-DBV_BUILDING", "-Dgnu=unknown", "-Iinclude", "-Iinternal",
              "-isystem", "/usr/include/utf8cpp", "-isystem", "/usr/include/eigen3", "-isystem", "/usr/include/Imath"]


def own_lines(text):
    """File and line of what comes from this tree."""
    name, number = "", 0
    for line in text.splitlines():
        marker = re.match(r'# (\d+) "(.*?)"', line)
        if marker:
            number, name = int(marker[1]), marker[2]
            continue
        if name.startswith(FOLDERS):
            yield f"{name}:{number}", line
        number += 1


def extensions(compiler, source):
    run = subprocess.run([compiler, *PREPROCESS, source.relative_to(TOP)], cwd=TOP, check=True, capture_output=True,
                         text=True)
    return {f"{place}: {found[0]}" for place, line in own_lines(run.stdout)
            for found in EXTENSION.finditer(EXPORT.sub("", line))}


def main(compiler):
    sources = sorted(path for folder in FOLDERS for path in (TOP / folder).rglob("*.cpp")
                     if not re.fullmatch(r"Avx\w*\.cpp", path.name))
    headers = TOP / "include"
    sources += [headers / "BvBaseUtils.h",
                # Those for use with other libraries, which it leaves out.
                *(path for path in sorted(headers.rglob("*.h")) if re.search("/(Fmt|Format|convert/.*)[.]h$", path.as_posix()))]
    found = set().union(*(extensions(compiler, source) for source in sources))
    if found or len(sources) < 50:
        sys.exit("\n".join(["extensions in plain C++:", *sorted(found)]))
    print(f"{len(sources)} sources use no extension")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
