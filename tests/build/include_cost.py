"""Counts what including a header adds to a compiler's work, as a multiple of what `<cmath>` adds: the lines that the
preprocessor leaves. Fails where a header is above its limit.

Usage: include_cost.py [--times] INCLUDE_FOLDER COMPILER...

--times also measures the compiler's own processor time for a file that holds nothing but the header, the best of seven. The
headers take turns, so that a slow moment hits no single one.
"""
import os
import resource
import subprocess
import sys
import tempfile

RUNS = 7
REFERENCE = "<cmath>"
LIMITS = {
    "bv/maths/tTuple2.h": 0.3, "bv/maths/tTuple3.h": 0.3,
    "bv/maths/tVector2.h": 0.4, "bv/maths/tVector3.h": 0.4, "bv/maths/tAreaAABB.h": 0.45, "bv/maths/tVolumeAABB.h": 0.45,
    "bv/maths/tMatrix4.h": 1.6, "bv/maths/tPlane.h": 1.6,
    "BvBaseUtils.h": 2.6,
}


def processor_time(command):
    """Seconds that a command and what it starts spend, those of the kernel included."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def write_sources(names, folder):
    """A file for each header, by the header's name."""
    sources = {}
    for index, name in enumerate(names):
        sources[name] = os.path.join(folder, f"{index}.cpp")
        with open(sources[name], "w", encoding="utf-8") as file:
            file.write(f"#include {name if name.startswith('<') else f'<{name}>'}\n")
    return sources


def lines_of(compile_, sources):
    """How many lines the preprocessor leaves of each header."""
    return {name: subprocess.run([*compile_, "-E", "-P", source], check=True, capture_output=True).stdout.count(b"\n")
            for name, source in sources.items()}


def times_of(compile_, sources):
    """The best time of each header, in milliseconds."""
    best = {}
    for _ in range(RUNS):
        for name, source in sources.items():
            time = processor_time([*compile_, "-c", source, "-o", os.devnull])
            best[name] = min(best.get(name, time), 1000 * time)
    return best


def main():
    arguments = sys.argv[1:]
    is_timed = "--times" in arguments
    include, *compilers = (argument for argument in arguments if argument != "--times")
    above = []
    with tempfile.TemporaryDirectory() as folder:
        sources = write_sources([REFERENCE, *LIMITS], folder)
        for compiler in compilers:
            compile_ = [compiler, "-std=c++20", "-O2", "-I", include]
            lines = lines_of(compile_, sources)
            times = times_of(compile_, sources) if is_timed else {}
            for name, limit in LIMITS.items():
                cost = lines[name] / lines[REFERENCE]
                time = f"; time {times[name] / times[REFERENCE]:.2f} x, {times[name]:.0f} ms" if is_timed else ""
                print(f"{os.path.basename(compiler)}: {name} {cost:.2f} x {REFERENCE}, at most {limit}, {lines[name]} lines{time}")
                if cost > limit:
                    above.append(f"{os.path.basename(compiler)}: {name}")
    if above:
        sys.exit("above the limit: " + ", ".join(above))


if __name__ == "__main__":
    main()
