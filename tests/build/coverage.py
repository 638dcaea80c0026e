"""Measures which lines and branches of the library and its headers the tests reach, and fails when too few are.

Usage: coverage.py [FILTER...]     (tools/check coverage runs it where all that it needs is there)

Builds the library and its tests with GCC, without optimisation and with nothing inlined by force, so that each line is
one of a function that is there once, and runs the tests. unreached.txt beside this script names what no run can reach,
with the reason: "  " stands before a line that is never reached, "~ " before one that is left in some of its ways only.
With FILTER, parts of file names, it only shows what the last run did not reach in these files.
"""
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
TOP = HERE.parent.parent
BUILD = TOP / "build" / "coverage"
REPORT = BUILD / "coverage.json"
UNREACHED = HERE / "unreached.txt"
FOLDERS = ("core", "internal", "include")

# In percent, without what unreached.txt names.
LINES, BRANCHES = 100.0, 95.0

# Each set of loops of the batch forms, which this program takes from the environment, and the source that is compiled for
# that set alone. The program skips what the processor lacks: nothing can reach that source then, and it is not counted.
SETS_OF_LOOPS = {"baseline": None, "AVX2": "Avx2.cpp", "AVX-512": "Avx512.cpp"}
SKIPPED = 77


def run(*command, **options):
    subprocess.run([str(part) for part in command], check=True, **options)


def configure():
    """One build folder for all that wants every function to stand by itself."""
    flags = ("-O0 -w --coverage -fprofile-abs-path -fprofile-update=atomic -fprofile-exclude-files=/tests/ "
             r"'-fprofile-filter-files=(^|/)(core|internal/Maths|include/(\./)?bv)/' "
             f"-include \"{TOP}/tests/support/NothingInline.h\"")
    run("cmake", "-S", TOP, "-B", BUILD, "-G", "Ninja", "--log-level=WARNING", "-DCMAKE_CXX_COMPILER=g++",
        "-DCMAKE_BUILD_TYPE=", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DCMAKE_CXX_FLAGS={flags}", stdout=subprocess.DEVNULL)


def targets():
    """What the build makes, with the rule by which it does."""
    listing = subprocess.run(["cmake", "--build", BUILD, "--", "-t", "targets", "all"], check=True, capture_output=True,
                             text=True).stdout
    return [tuple(line.split(": ", 1)) for line in listing.splitlines()]


def build():
    """The test programs, one of those that are built for several levels."""
    configure()
    programs = [target for target, rule in targets() if rule.startswith("CXX_EXECUTABLE_LINKER")
                and re.match(r"tests/(core|maths|faults)/[^.]+$", target) and not re.search(r"_(O[123s]|AVX)$", target)]
    run("cmake", "--build", BUILD, "-j2", "--target", *programs)
    return programs


def test(programs):
    """Runs each program once, counting from zero; gives the sources for what the processor lacks."""
    for path in BUILD.rglob("*.gcda"):
        path.unlink()
    skipped = set()

    def fails(program):
        path = BUILD / program
        sets = SETS_OF_LOOPS if path.name == "BatchFormsOfEachSet" else {"": None}
        for loops in sets:
            finished = subprocess.run([path, "--gtest_brief=1"], cwd=path.parent, env=os.environ | {"BV_TEST_KERNELS": loops},
                                      check=False, capture_output=True, text=True)
            if finished.returncode == SKIPPED and sets[loops]:
                skipped.add(sets[loops])
            elif finished.returncode != 0:
                return f"{program} {loops}\n{finished.stdout[-2000:]}{finished.stderr[-2000:]}"
        return ""

    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        failures = [failure for failure in pool.map(fails, programs) if failure]
    if failures:
        sys.exit("\n".join(failures))
    # Objects that were made for something else count nothing, and may be older than their sources.
    for notes in (BUILD / "tests").rglob("*.gcno"):
        if not notes.with_suffix(".gcda").exists():
            notes.unlink()
    return skipped


def leave_out(source):
    """Takes away what was noted of the source when it was compiled, and counted since."""
    for path in BUILD.rglob(f"{source}.gc*"):
        path.unlink()


def measure():
    """What gcovr counted, by file."""
    run("gcovr", "--root", TOP, BUILD, "--json", REPORT, "-j2", "--exclude-throw-branches",
        "--exclude-unreachable-branches", "--gcov-ignore-parse-errors",
        *(option for folder in FOLDERS for option in ("--filter", f"{TOP}/{folder}/")))
    return json.loads(REPORT.read_text(encoding="utf-8"))["files"]


def exceptions():
    """The lines of which no run can reach all, by file: their text, and how many there are of it."""
    found = collections.defaultdict(collections.Counter)
    file, reason = "", ""
    for line in UNREACHED.read_text(encoding="utf-8").splitlines():
        if line.startswith(("  ", "~ ")):
            if not file or not reason:
                sys.exit(f"{UNREACHED.name}: no file or no reason stands before: {line}")
            found[file][line.rstrip()] += 1
        elif line.startswith("# "):
            reason = line
        elif line:
            file, reason = line, ""
    return found


class Count:
    """What of a file's lines and branches is reached."""

    def __init__(self):
        self.lines = self.reached_lines = self.branches = self.reached_branches = 0
        self.missing = []  # as a person reads it

    def add(self, entry, excepted):
        """Counts a file as gcovr reports it, and takes away what is excepted."""
        text = (TOP / entry["file"]).read_text(encoding="utf-8").splitlines()
        for line in entry["lines"]:
            written = text[line["line_number"] - 1].strip()
            if line.get("gcovr/noncode"):
                continue
            if line["count"] == 0 and excepted[f"  {written}"] > 0:
                excepted[f"  {written}"] -= 1
                continue
            ways = line["branches"]
            if excepted[f"~ {written}"] > 0:
                excepted[f"~ {written}"] -= 1
                ways = []
            if "is_constant_evaluated()" in written:  # one way is the compiler's
                ways = []
            taken = sum(way["count"] > 0 for way in ways)
            self.lines += 1
            self.reached_lines += line["count"] > 0
            self.branches += len(ways)
            self.reached_branches += taken
            place = f"{entry['file']}:{line['line_number']}: {written}"
            if line["count"] == 0:
                self.missing.append(f"not reached: {place}")
            elif taken < len(ways):
                self.missing.append(f"{len(ways) - taken} of {len(ways)} ways not taken: {place}")


def main():
    filters = sys.argv[1:]
    if filters:
        for entry in json.loads(REPORT.read_text(encoding="utf-8"))["files"]:
            if any(part in entry["file"] for part in filters):
                count = Count()
                count.add(entry, exceptions()[entry["file"]])
                print(*count.missing, sep="\n", end="\n" if count.missing else "")
        return
    skipped = test(build())
    for source in skipped:
        leave_out(source)
    total, excepted = Count(), exceptions()
    for entry in measure():
        total.add(entry, excepted[entry["file"]])
    unused = [f"{file}: {line}" for file in sorted(excepted) for line in sorted((+excepted[file]).elements())]
    if unused:
        sys.exit("\n".join(["unreached.txt names what is reached, or is not there:", *unused]))
    line_rate = 100 * total.reached_lines / total.lines
    branch_rate = 100 * total.reached_branches / total.branches
    print("\n".join(place for place in total.missing if place.startswith("not reached")))
    figures = (f"{total.reached_lines} of {total.lines} lines ({line_rate:.2f} %), "
               f"{total.reached_branches} of {total.branches} branches ({branch_rate:.2f} %)"
               + "".join(f", {source} left out: this processor cannot run it" for source in sorted(skipped)))
    if total.lines < 3000 or line_rate < LINES or branch_rate < BRANCHES:
        sys.exit(f"{figures}; at least {LINES} % and {BRANCHES} % are wanted")
    print(figures)


if __name__ == "__main__":
    main()
