#!/usr/bin/env python3
"""Measures what the library costs to build, to load and to include, and writes it as JSON.

Usage: costs.py SOURCE PREFIX SCRATCH OUTPUT

SOURCE is the project, PREFIX where it is installed, SCRATCH a folder for what is built here.
"""

import glob
import json
import os
import resource
import shutil
import statistics
import subprocess
import sys
import time

COMPILERS = [("GCC", "g++"), ("Clang", "clang++")]
NEEDS_AVX = "bv/maths/simd/AVXRay.h"
# What these cost is what the other libraries cost.
NEEDS_OTHERS = ("bv/Fmt.h", "bv/maths/Fmt.h", "bv/maths/convert/Eigen.h", "bv/maths/convert/GLM.h",
                "bv/maths/convert/Imath.h")

PLAIN = "int main() {}\n"
LINKED = """#include <bv/String.h>
int main() { return bv::String().IsEmpty() ? 0 : 1; }
"""
LOADER = """#include <cstdio>
#include <ctime>
#include <dlfcn.h>
int main(int, char** arguments)
{
    timespec before, after;
    clock_gettime(CLOCK_MONOTONIC, &before);
    void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    clock_gettime(CLOCK_MONOTONIC, &after);
    if (library == nullptr)
        return 1;
    std::printf("%f", (after.tv_sec - before.tv_sec) * 1e6 + (after.tv_nsec - before.tv_nsec) * 1e-3);
}
"""


def run(command, **options):
    """Runs a command; its output is shown only when it fails."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                            **options)
    if result.returncode != 0:
        sys.exit(f"{result.stdout}\ncosts: failed: {' '.join(command)}")
    return result.stdout


def timed(command, **options):
    """Wall and processor time of a command, in seconds."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.monotonic()
    run(command, **options)
    wall = time.monotonic() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return wall, after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def clean_build(source, scratch):
    folder = os.path.join(scratch, "clean")
    shutil.rmtree(folder, ignore_errors=True)
    environment = {**os.environ, "CCACHE_DISABLE": "1"}
    environment.pop("CMAKE_CXX_COMPILER_LAUNCHER", None)
    run(["cmake", "-S", source, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DBV_BUILD_TESTS=OFF",
         "-DCMAKE_CXX_COMPILER=g++"], env=environment)
    jobs = len(os.sched_getaffinity(0))
    wall, cpu = timed(["cmake", "--build", folder, "-j", str(jobs)], env=environment)
    return {"wall": wall, "cpu": cpu, "jobs": jobs}


def library_path(prefix):
    found = glob.glob(os.path.join(prefix, "lib*", "**", "libBvBaseUtils.so"), recursive=True)
    if not found:
        sys.exit(f"costs: no libBvBaseUtils.so below {prefix}")
    return os.path.realpath(found[0])


def stripped_size(library, scratch):
    copy = os.path.join(scratch, "stripped.so")
    run(["strip", "-o", copy, library])
    return os.path.getsize(copy)


def load_times(prefix, library, scratch, runs):
    programs = {}
    folder = os.path.dirname(library)
    for name, text, flags in (("plain", PLAIN, []), ("linked", LINKED, ["-lBvBaseUtils"]),
                              ("loader", LOADER, ["-ldl"])):
        source = os.path.join(scratch, name + ".cpp")
        with open(source, "w", encoding="utf-8") as file:
            file.write(text)
        programs[name] = os.path.join(scratch, name)
        # Without the library the program still loads what the library would bring along: the C++ runtime.
        run(["g++", "-std=c++20", "-O2", "-I", os.path.join(prefix, "include"), source, "-o", programs[name],
             "-Wl,--no-as-needed", "-L" + folder, "-Wl,-rpath," + folder, *flags])
    walls = {"plain": [], "linked": [], "dlopen": []}
    for _ in range(runs):
        for name in ("plain", "linked"):
            start = time.perf_counter()
            pid = os.posix_spawn(programs[name], [programs[name]], os.environ)
            _, status = os.waitpid(pid, 0)
            walls[name].append((time.perf_counter() - start) * 1e6)
            if status != 0:
                sys.exit(f"costs: the program {name} failed")
        walls["dlopen"].append(float(run([programs["loader"], library])))
    return {**{name: statistics.median(values) for name, values in walls.items()}, "runs": runs}


def header_costs(prefix, scratch, runs):
    include = os.path.join(prefix, "include")
    names = sorted(os.path.relpath(os.path.join(folder, file), include)
                   for folder, _, files in os.walk(include) for file in files if file.endswith(".h"))
    names = ["<cmath>"] + [name for name in names if name not in NEEDS_OTHERS]
    sources = {}
    for index, name in enumerate(names):
        sources[name] = os.path.join(scratch, f"header{index}.cpp")
        with open(sources[name], "w", encoding="utf-8") as file:
            file.write(f"#include {name if name.startswith('<') else '<' + name + '>'}\n")
    measured = {}
    for title, compiler in COMPILERS:
        def command(name, *more, compiler=compiler):
            avx = ["-mavx"] if name == NEEDS_AVX else []
            return [compiler, "-std=c++20", "-O2", *avx, "-I", include, *more, sources[name]]
        times = {name: [] for name in names}
        for _ in range(runs):  # the headers in turn, so that a slow moment hits no single one
            for name in names:
                times[name].append(timed(command(name, "-c", "-o", os.devnull))[1])
        measured[title] = {}
        for name in names:
            lines = run(command(name, "-E", "-P")).splitlines()
            measured[title][name] = {"ms": statistics.median(times[name]) * 1e3,
                                     "lines": sum(1 for line in lines if line.strip())}
    return {"names": names, "compilers": [title for title, _ in COMPILERS], "measured": measured, "runs": runs}


def main(source, prefix, scratch, output):
    os.makedirs(scratch, exist_ok=True)
    library = library_path(prefix)
    costs = {
        "size": stripped_size(library, scratch),
        "build": clean_build(source, scratch),
        "load": load_times(prefix, library, scratch, 300),
        "headers": header_costs(prefix, scratch, 5),
    }
    with open(output, "w", encoding="utf-8") as file:
        json.dump(costs, file, indent=1)
    print(f"costs: clean build {costs['build']['wall']:.1f} s, stripped library {costs['size']:,} bytes, "
          f"dlopen {costs['load']['dlopen']:.0f} us")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
