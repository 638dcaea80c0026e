"""Measures what including a header adds to a compiler's work, as a multiple of what `<cmath>` takes on the same machine.

Usage: include_cost.py INCLUDE_FOLDER COMPILER...

The compiler's own processor time for a file that holds nothing but the header, the best of seven. The headers take turns, so
that a slow moment hits no single one. Fails where a header is above its limit, also when measured once more.
"""
import os
import resource
import subprocess
import sys
import tempfile

RUNS = 7
REFERENCE = "<cmath>"
LIMITS = {
    "bv/maths/tTuple2.h": 0.4, "bv/maths/tTuple3.h": 0.4,
    "bv/maths/tVector2.h": 0.6, "bv/maths/tVector3.h": 0.6, "bv/maths/tAreaAABB.h": 0.6, "bv/maths/tVolumeAABB.h": 0.6,
    "bv/maths/tMatrix4.h": 2.3, "bv/maths/tPlane.h": 2.3,
    "BvBaseUtils.h": 3.2,
}


def processor_time(command):
    """Seconds that a command and what it starts spend, those of the kernel included."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def measure(include, compiler, names, folder, best):
    """The best time of each header, those so far included."""
    sources = {}
    for index, name in enumerate(names):
        sources[name] = os.path.join(folder, f"{index}.cpp")
        with open(sources[name], "w", encoding="utf-8") as file:
            file.write(f"#include {name if name.startswith('<') else f'<{name}>'}\n")
    for _ in range(RUNS):
        for name in names:
            time = processor_time([compiler, "-std=c++20", "-O2", "-I", include, "-c", sources[name], "-o", os.devnull])
            best[name] = min(best.get(name, time), time)


def excess(best):
    """The headers that cost more than they may."""
    return [name for name, limit in LIMITS.items() if best[name] > limit * best[REFERENCE]]


def main():
    include, *compilers = sys.argv[1:]
    above = []
    for compiler in compilers:
        best = {}
        with tempfile.TemporaryDirectory() as folder:
            measure(include, compiler, [REFERENCE, *LIMITS], folder, best)
            if excess(best):
                measure(include, compiler, [REFERENCE, *excess(best)], folder, best)
        for name, limit in LIMITS.items():
            print(f"{os.path.basename(compiler)}: {name} {best[name] / best[REFERENCE]:.2f} x {REFERENCE}, at most {limit}, "
                  f"{best[name] * 1000:.0f} ms")
        above += [f"{os.path.basename(compiler)}: {name}" for name in excess(best)]
    if above:
        sys.exit("above the limit: " + ", ".join(above))


if __name__ == "__main__":
    main()
