#!/usr/bin/env python3
"""Describes the machine, the compilers and the packages of a measurement, as JSON.

Usage: machine.py RESULT OUTPUT PACKAGE...     RESULT is one of Google Benchmark's files
"""

import json
import os
import platform
import re
import subprocess
import sys


def first_line(command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()[0]


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        text = file.read()
    name = re.search(r"^model name\s*: (.*)$", text, re.MULTILINE)
    flags = set(re.search(r"^flags\s*: (.*)$", text, re.MULTILINE)[1].split())
    wanted = ["sse2", "sse4_2", "avx", "avx2", "fma", "avx512f", "avx512bw", "avx512vbmi"]
    return name[1] if name else platform.machine(), ", ".join(flag for flag in wanted if flag in flags)


def versions(packages):
    """The installed ones of these packages, each with its version; none where there is no dpkg."""
    try:
        known = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}\n", *packages], check=False,
                               capture_output=True, text=True).stdout
    except FileNotFoundError:
        return []
    return sorted(line for line in known.splitlines() if not line.endswith(" "))


def cache(entry):
    return f"L{entry['level']} {entry['type'].lower()} {entry['size'] // 1024:,} KiB"


def main(result, output, packages):
    with open(result, encoding="utf-8") as file:
        context = json.load(file)["context"]
    name, instructions = processor()
    facts = [
        ("processor", f"{name}, {os.cpu_count()} threads; {instructions}"),
        ("caches", ", ".join(cache(entry) for entry in context["caches"])),
        ("GCC", first_line(["g++", "--version"])),
        ("Clang", first_line(["clang++", "--version"])),
        ("system", f"{platform.system()} {platform.release()}, {' '.join(platform.libc_ver())}"),
        ("measured", f"{context['date'][:10]}, pinned to one core"),
    ]
    with open(output, "w", encoding="utf-8") as file:
        json.dump({"facts": facts, "packages": versions(packages)}, file, indent=1)


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], sys.argv[3:])
