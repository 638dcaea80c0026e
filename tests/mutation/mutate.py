"""Tries how much the tests see: changes one thing at a time in a unit of the library and runs the tests of its users.

Usage: mutate.py [--limit=N] [--again] [--write] UNIT...     (tools/mutate runs it where all that it needs is there)

A unit is a source or a header of the library. What is changed: operators, comparisons, conditions, numbers and results. The
tests come from build/release, built as ever. A change of a source costs a compilation of that source and a library that is
linked anew, in a folder of build/mutate, where two are at work side by side. The changes of all headers that are named are
compiled together, each behind a switch of its own, in the library and in all tests that hold one of them; then each test is
run for each of the changes that it comes by. Those that do not compile so, that no test comes by, as they may stand where
only the compiler evaluates them, and that no test sees, are tried like those of a source, but in the header's own tests and a
few other programs alone. With switches go checks of bounds, and patterns in what is not set; a source has neither.

A change survives if no test fails or takes too long. What changes nothing stands in survivors.txt beside this script, with
the reason, and is not tried; the exit code is 1 where others survive.
"""
import collections
import concurrent.futures
import functools
import json
import os
import pathlib
import queue
import random
import re
import resource
import shlex
import shutil
import subprocess
import sys
import tempfile
import threading
import time

from clang import cindex
from clang.cindex import CursorKind

import switches

HERE = pathlib.Path(__file__).resolve().parent
TOP = HERE.parent.parent
BUILD = TOP / "build" / "release"
WORK = TOP / "build" / "mutate"
TIMES = WORK / "times.json"
SURVIVORS = HERE / "survivors.txt"
REPORT = HERE / "report.md"
LIBRARY = "libBvBaseUtils.so"
SOURCES = ("include", "core", "internal", "tests")
WORKERS = 2

OPERATORS = {
    b"+": [b"-"], b"-": [b"+"], b"*": [b"/"], b"/": [b"*"], b"%": [b"*"], b"&": [b"|"], b"|": [b"&"], b"^": [b"|"],
    b"<<": [b">>"], b">>": [b"<<"], b"&&": [b"||"], b"||": [b"&&"], b"==": [b"!="], b"!=": [b"=="],
    b"<": [b"<=", b">="], b"<=": [b"<", b">"], b">": [b">=", b"<="], b">=": [b">", b"<"],
    b"+=": [b"-="], b"-=": [b"+="], b"*=": [b"/="], b"/=": [b"*="], b"&=": [b"|="], b"|=": [b"&="], b"^=": [b"|="],
    b"<<=": [b">>="], b">>=": [b"<<="]
}
CONDITIONAL = (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.CONDITIONAL_OPERATOR)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.FUNCTION_TEMPLATE, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR,
             CursorKind.DESTRUCTOR, CursorKind.CONVERSION_FUNCTION)

# What a program needs to be told, for each of its runs.
TOLD = {
    "BatchFormsOfEachSet": [{"BV_TEST_KERNELS": name} for name in ("baseline", "AVX2", "AVX-512")],
    **{f"{name}Properties": [{"RC_PARAMS": "seed=2718281828 max_success=1000"}]
       for name in ("Batch", "Bounds", "Matrix", "Rotation", "Text", "View")}
}
SKIPPED = 77

# How many programs are compiled for a change of a header that no switch has shown, besides its own tests.
HOLDERS = 2

# What sanitizers report, which run all tests, ends a program with switches, too: elements past an array, and values that
# were never set, which hold a pattern instead.
AS_SANITIZERS = ("-fsanitize=bounds", "-fsanitize-undefined-trap-on-error", "-D_GLIBCXX_ASSERTIONS",
                 "-ftrivial-auto-var-init=pattern")

# What a switch would show although a change does not: these compare what the compiler evaluates, which a switch leaves as it
# is, with the program, and a module that is loaded, which is not compiled anew, with the program.
MISLED = "--gtest_filter=-ConstantEvaluation*:*CompilersComputeWhatProgramsDo*"
LOAD_MODULES = ("GeneratorModuleTest", "ModuleTest")

# The loops that the library chooses on this processor are those that most tests run.
FLAGS = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8")
CHOSEN = "Avx512" if "avx512vbmi" in FLAGS else "Avx2" if "avx2" in FLAGS else "Baseline"

COLUMNS = ("tried", "found", "invalid", "same", "seen", "record", "nothing", "survive")
HEAD = """# Changes that the tests see

What `tools/mutate --write UNIT...` found when it last ran, a row for each unit that it tried: how many changes were made of
those that there are; how many of them do not compile, or compile to the same code; how many a test saw, and how many only
the [record](../digest/record.txt) of all results did; how many change nothing, or nothing that this build can show, for the
reason that [survivors.txt](survivors.txt) gives and that is repeated below; how many survive; and the share of those seen, of
all that compile and have no such reason. The tests of a header stop where an index leaves an array, and what is not set holds
a pattern, as sanitizers, which run all tests, would report both.

| unit | tried | of | do not compile | same code | seen by tests | by the record | have a reason | survive | share seen |
|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|
"""

class Unused(Exception):
    """A unit that nothing uses, so that nothing can see its changes."""


Change = collections.namedtuple("Change", "start end new shown line whole", defaults=[None])


def ask(*command):
    """What a command prints."""
    return subprocess.run(command, cwd=BUILD, check=True, capture_output=True, text=True).stdout


def build(*targets):
    """Builds what the changes are compared with."""
    made = subprocess.run(["cmake", "--build", BUILD, "-j2", "--target", *targets], check=False, capture_output=True, text=True)
    if made.returncode != 0:
        raise SystemExit("\n".join(made.stdout.splitlines()[-20:]))


class Tree:
    """What is built in build/release, of what, and how."""

    def __init__(self):
        targets = ask("ninja", "-t", "targets", "all")
        self.library = re.search(rf"^({LIBRARY}[.\d]*): CXX_SHARED", targets, re.MULTILINE)[1]
        self.programs = [path for path in re.findall(r"^(tests/[^\s\[]+): CXX_EXECUTABLE", targets, re.MULTILINE)
                         if re.match(r"tests/(core|maths|faults|properties|digest)/", path) and "/values/" not in path
                         and not path.endswith("/LoadedLibrary")]
        build("BvBaseUtils", *self.programs)
        self.compile, self.source = {}, {}
        for entry in json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8")):
            words = shlex.split(entry["command"])
            self.compile[words[words.index("-o") + 1]] = words
            self.source[words[words.index("-o") + 1]] = entry["file"]
        self.link = self.links()
        self.objects = {program: [word for word in words if word in self.compile] for program, words in self.link.items()}
        self.depends = self.dependencies()
        self.symbols = self.names(self.objects[self.library])
        self.called = {program: kinds["U"] for program, kinds in self.names(self.programs, "-D").items()}
        self.times = json.loads(TIMES.read_text(encoding="utf-8")) if TIMES.exists() else {}

    def links(self):
        """The commands that link the programs and the library."""
        wanted, found = {self.library, *self.programs}, {}
        for line in ask("ninja", "-t", "commands", *wanted).splitlines():
            for part in line.split(" && "):
                output = re.search(" -o (\\S+) ", part)
                if output and output[1] in wanted:
                    found[output[1]] = shlex.split(part)
        return found

    @staticmethod
    def dependencies():
        """The files of the tree that each object is made of."""
        found, places, current = {}, {}, None
        for line in ask("ninja", "-t", "deps").splitlines():
            if line.startswith("    "):
                path = line.strip()
                if path not in places:
                    places[path] = os.path.relpath(os.path.join(BUILD, path), TOP)
                current.add(places[path])
            elif line:
                current = found.setdefault(line.partition(": ")[0], set())
        return found

    @staticmethod
    def names(paths, *options):
        """The symbols of objects, by kind: U for what they call, D for what they define."""
        found = {path: {"U": set(), "D": set()} for path in paths}
        for line in ask("nm", "-A", *options, *paths).splitlines():
            path, _, rest = line.partition(":")
            *_, kind, name = rest.split()
            found[path]["U" if kind == "U" else "D"].add(name.partition("@")[0])
        return found

    def users(self, objects):
        """The programs that call what objects of the library define, or what other objects make of it."""
        reached = set(objects) & set(self.symbols)
        while True:
            names = set().union(*(self.symbols[path]["D"] for path in reached), set())
            more = {path for path, kinds in self.symbols.items() if kinds["U"] & names} - reached
            if not more:
                break
            reached |= more
        return {program for program in self.programs if self.called[program] & names}


class Copy:
    """A folder with the sources, where objects are compiled, linked and run that are not those of build/release."""

    def __init__(self, folder, tree):
        self.tree, self.folder, self.options = tree, folder, ["-w"]
        for name in SOURCES:
            shutil.copytree(TOP / name, self.folder / name)
        for name in ("objects", "lib", "programs", "tmp"):
            (self.folder / name).mkdir()
        self.objects = self.folder / "objects"

    def place(self, path):
        """Where an object of the build folder lies here."""
        return self.objects / path.replace("/", "+")

    def command(self, path):
        """What compiles an object here, but for the names of both files."""
        words = list(self.tree.compile[path])
        output = words.index("-o")
        del words[output:output + 2], words[words.index("-c"):]
        for i, word in enumerate(words):
            for name in SOURCES:
                if f"{word}/".startswith(f"-I{TOP}/{name}/"):
                    words[i] = word.replace(str(TOP), str(self.folder))
        return [*words, *self.options]

    def head(self, _path):
        """What else is included before a source."""
        return []

    def compile(self, path):
        """None if it compiles, else what the compiler says."""
        source = self.folder / pathlib.Path(self.tree.source[path]).relative_to(TOP)
        command = [*self.command(path), *self.head(path), "-o", self.place(path), "-c", source]
        run = subprocess.run(command, cwd=BUILD, check=False, capture_output=True, text=True)
        return None if run.returncode == 0 else run.stderr

    def linked(self, target, output, changed):
        """Whether a program or the library links with what has changed."""
        words = [str(self.place(word)) if word in changed else word for word in self.tree.link[target]]
        words[words.index("-o") + 1] = str(output)
        return subprocess.run(words, cwd=BUILD, check=False, capture_output=True).returncode == 0

    def run(self, program, path, seconds, library, *options, **told):
        """Whether a program of tests fails, or needs more processor time than so many seconds, and how much it needed."""
        environment = os.environ | {"LD_LIBRARY_PATH": str(library), "TMPDIR": str(self.folder / "tmp")} | told
        command = [path, "--gtest_brief=1", "--gtest_fail_fast", *options]
        if program.endswith("/digest"):
            command = [sys.executable, "-B", TOP / "tests/digest/digest.py", path, TOP / "tests/digest/record.txt"]
        needed = 0
        for more in TOLD.get(pathlib.Path(program).name, [{}]):
            process = subprocess.Popen(command, cwd=self.folder / "tmp", env=environment | more, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                       preexec_fn=lambda: confine(seconds))
            end_it = threading.Timer(1800, process.kill)
            end_it.start()
            _, status, usage = os.wait4(process.pid, 0)
            end_it.cancel()
            process.returncode = os.waitstatus_to_exitcode(status)
            needed += usage.ru_utime + usage.ru_stime
            if process.returncode not in (0, SKIPPED):
                return True, needed
        return False, needed


class Worker(Copy):
    """A copy where one change of a unit at a time is tried."""

    def __init__(self, folder, tree, unit):
        super().__init__(folder, tree)
        self.options.append(f"-ffile-prefix-map={folder}={TOP}")
        self.unit, self.source = unit, (TOP / unit).read_bytes()
        self.unchanged, self.heads = {}, {}

    def head(self, path):
        """Compiles the headers that the source of a unit includes, once for all changes, and has them taken from there."""
        if path not in self.heads:
            self.heads[path] = []
            lines = self.source.decode().split("\n")
            includes = [i for i, line in enumerate(lines) if line.startswith("#include")]
            if self.tree.source[path] == str(TOP / self.unit) and includes:
                lines = lines[:includes[-1] + 1]
                if not any(line.startswith("#if") for line in lines):
                    folder = self.folder / "head" / self.place(path).name
                    folder.mkdir(parents=True)
                    (folder / "head.h").write_text("\n".join(lines) + "\n", encoding="utf-8")
                    near = ["-iquote", str((self.folder / self.unit).parent)]
                    command = [*self.command(path), *near, "-x", "c++-header", folder / "head.h", "-o", folder / "head.h.gch"]
                    if subprocess.run(command, cwd=BUILD, check=False, capture_output=True).returncode == 0:
                        self.heads[path] = [*near, "-include", folder / "head.h"]
        return self.heads[path]

    def code(self, path):
        """The bytes of an object, where the change stands in it."""
        return self.place(path).read_bytes()

    def is_changed(self, path, text):
        """Whether an object of a changed text, which compiles, differs from what it was; what the compiler says, else."""
        unit = self.folder / self.unit
        if self.unit.endswith(".h"):  # compiled as it was in build/release
            self.unchanged.setdefault(path, (BUILD / path).read_bytes())
        elif path not in self.unchanged:
            unit.write_bytes(self.source)
            if error := self.compile(path):
                raise SystemExit(f"{path} does not compile in a copy: {error[:500]}")
            self.unchanged[path] = self.code(path)
        unit.write_bytes(text)
        error = self.compile(path)
        return error is None and self.code(path) != self.unchanged[path], error


def confine(seconds):
    """What a change can make of a program, this process stands."""
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
    resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 28, 1 << 28))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def kind_of(cursor):
    """What a part of the source is; None where the bindings of the library have no name for it."""
    try:
        return cursor.kind
    except ValueError:
        return None


def changes(tree, unit, objects):
    """The text of a unit, and what to change in it."""
    path = TOP / unit
    source = path.read_bytes()
    words = tree.compile[objects[0]]
    options = [word for word in words if re.match(r"-(I|D|std|m)", word)]
    options += [f"-I{words[i + 1]}" for i, word in enumerate(words) if word == "-isystem"]
    parsed = cindex.Index.create().parse(tree.source[objects[0]], args=options)
    errors = [str(d) for d in parsed.diagnostics if d.severity >= cindex.Diagnostic.Error]
    if errors:
        raise SystemExit("\n".join(errors[:5]))
    found = {}

    def add(function, whole, start, end, new):
        begin, stop = source.rfind(b"\n", 0, start) + 1, source.find(b"\n", end)
        old = b" ".join(source[begin:stop].split()).decode()
        changed = b" ".join((source[begin:start] + new + source[end:stop]).split()).decode()
        where = f"{function}: " if function else ""
        line = source.count(b"\n", 0, start) + 1
        found[start, end, new] = Change(start, end, new, f"{where}{old} => {changed}", line, whole)

    def look_at(cursor, children, function):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = source[start:end]
        kind = kind_of(cursor)
        if kind in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CALL_EXPR):
            if len(children) >= 2:
                begin = children[0].extent.end.offset
                between = source[begin:children[-1].extent.start.offset]
                operator = between.strip()
                for other in OPERATORS.get(operator, ()):
                    at = begin + between.index(operator)
                    add(function, (start, end), at, at + len(operator), other)
        elif kind == CursorKind.UNARY_OPERATOR:
            for old, new in ((b"++", b"--"), (b"--", b"++")):
                if text.startswith(old):
                    add(function, (start, end), start, start + 2, new)
                elif text.endswith(old):
                    add(function, (start, end), end - 2, end, new)
            if text[:1] in (b"!", b"~") or (text[:1] == b"-" and text[:2] != b"--"):
                add(function, (start, end), start, start + 1, b"")
        elif kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL) and text[:1].isdigit():
            add(function, (start, end), start, end, b"(" + text + b" + 1)")
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR and text in (b"true", b"false"):
            add(function, (start, end), start, end, b"false" if text == b"true" else b"true")
        elif kind == CursorKind.RETURN_STMT and children:
            inner = children[0].extent
            if source[inner.start.offset:inner.end.offset] not in (b"{}", b"*this"):
                add(function, (start, end), inner.start.offset, inner.end.offset, b"{}")
        if kind in CONDITIONAL and children and (first := kind_of(children[0])) and first.is_expression():
            inner = children[0].extent
            condition = source[inner.start.offset:inner.end.offset]
            inside = inner.start.offset, inner.end.offset
            add(function, inside, *inside, b"!(" + condition + b")")

    @functools.cache
    def is_unit(name):
        return pathlib.Path(name).resolve() == path

    def walk(cursor, function):
        for child in cursor.get_children():
            if child.location.file and not is_unit(child.location.file.name):
                continue
            kind = kind_of(child)
            if kind != CursorKind.STATIC_ASSERT:
                look_at(child, list(child.get_children()), function)
                walk(child, re.sub(r"^(?!operator)(\w+)<.*", r"\1", child.spelling) if kind in FUNCTIONS else function)

    walk(parsed.cursor, "")
    return source, numbered([found[key] for key in sorted(found) if 0 <= key[0] <= key[1] <= len(source)])


def numbered(found):
    """The changes, of which those that look like one before them say how many do."""
    counts = collections.Counter()
    result = []
    for change in found:
        counts[change.shown] += 1
        number = counts[change.shown]
        result.append(change if number == 1 else change._replace(shown=f"{change.shown} ({number})"))
    return result


class Trial:
    """One unit: what shows its changes, and the tests of what uses it."""

    def __init__(self, tree, unit):
        self.tree, self.unit = tree, unit
        stem = pathlib.Path(unit).stem
        self.stem = stem[1:] if re.match("t[A-Z]", stem) else stem
        touched = [path for path, files in tree.depends.items() if unit in files]
        ours = tree.objects[tree.library]
        # The object of the unit's own source first, then those that are compiled soonest.
        self.library = sorted((path for path in touched if path in ours),
                              key=lambda path: (pathlib.Path(path).stem.removesuffix(".cpp") != self.stem,
                                                "Kernels/" in path and CHOSEN not in path, len(tree.depends[path])))
        self.tests = {program: [path for path in touched if path in tree.objects[program]] for program in tree.programs}
        programs = tree.users(self.library) | {program for program, objects in self.tests.items() if objects}
        if not programs or not touched:
            raise Unused(f"{unit}: no test uses it")
        if unit.endswith(".h"):
            programs = {program for program in programs if pathlib.Path(program).name not in LOAD_MODULES}
        self.seen = dict.fromkeys(self.one_of_each(programs), 0)
        defined = tree.symbols[self.library[0]]["D"] if self.library else set()
        self.calls = {program: len(tree.called[program] & defined) for program in programs}
        self.lock, self.measuring = threading.Lock(), threading.Lock()
        self.parts = self.library or [path for program in sorted(programs, key=self.rank) for path in self.tests[program]]

    def one_of_each(self, programs):
        """Of the programs that are one test compiled with different flags, the quickest, where a source is changed: what
        they call in the library is the same."""
        kept = {}
        for program in sorted(programs, key=lambda program: (self.tree.times.get(program, 1), program)):
            of = re.sub("_(O[0-3]|AVX)$", "", program) if self.unit.endswith(".cpp") and not self.tests[program] else program
            kept.setdefault(of, program)
        return sorted(kept.values())

    def rank(self, program):
        """What sees most in the shortest time goes first: the unit's own tests at the start. The record goes last."""
        name = pathlib.Path(program).name
        expected = 0.1 + self.calls.get(program, 0)
        expected += 20 * (self.stem in name or ("Batch" in name and re.search("/(Batch|Kernels)/", self.unit) is not None))
        return name == "digest", -(self.seen.get(program, 0) + expected) / (0.05 + self.tree.times.get(program, 1)), name

    def order(self):
        with self.lock:
            return sorted(self.seen, key=self.rank)

    def seconds(self, worker, program):
        """The processor time of a program, which must pass as it is."""
        with self.measuring:
            if program not in self.tree.times:
                fails, self.tree.times[program] = worker.run(program, BUILD / program, 600, BUILD)
                if fails:
                    raise SystemExit(f"{program} fails without a change")
                TIMES.write_text(json.dumps(self.tree.times, indent=0), encoding="utf-8")
            return self.tree.times[program]

    def stages(self):
        """What to compile, and which programs to run then: the unit's own tests first, then what needs no other object, then
        the programs that hold the unit, one by one; the rest of the library comes last. Of a header, no switch of which was
        seen, a few programs are enough: what they do not see is listed, though another might.
        """
        is_header = self.unit.endswith(".h")
        holders = [program for program in self.order() if self.tests[program]]
        if is_header:
            holders.sort(key=lambda program: "ConstantEvaluation" not in program)
        own = [program for program in holders if self.stem in pathlib.Path(program).name][:1]
        for program in own:
            yield self.library[:1] + self.tests[program], [program]
        if self.library:
            yield self.library[:1], [program for program in self.order() if not self.tests[program]]
        for program in [program for program in holders if program not in own][:HOLDERS if is_header else None]:
            yield self.tests[program], [program]
        if self.library[1:] and not is_header:
            yield self.library[1:], self.order()

    def outcome(self, worker, text):
        """What became of a change: invalid, same, seen, record or survive."""
        compiled, changed = set(), set()
        for objects, programs in self.stages():
            for path in objects:
                if path in compiled:
                    continue
                compiled.add(path)
                is_changed, error = worker.is_changed(path, text)
                if error:
                    return "seen" if path.startswith("tests/") and "static assertion failed" in error else "invalid"
                if is_changed:
                    changed.add(path)
            if changed and (how := self.seen_by(worker, changed, self.reached(programs, changed))):
                return how
        everything = {path for objects in (self.library, *self.tests.values()) for path in objects}
        return "same" if not changed and compiled == everything else "survive"

    def reached(self, programs, changed):
        """Those of the programs that hold what has changed, or all of them where the library does."""
        if changed & set(self.library):
            return programs
        return [program for program in programs if changed & set(self.tests[program])]

    def seen_by(self, worker, changed, programs):
        """How a test of these programs sees the change, or None."""
        library = worker.folder / "lib" / f"{LIBRARY}.0"
        if not worker.linked(self.tree.library, library, changed):
            return "invalid"
        for program in programs:
            path = BUILD / program
            if set(self.tests[program]) & changed:
                path = worker.folder / "programs" / pathlib.Path(program).name
                if not worker.linked(program, path, changed):
                    return "invalid"
            if worker.run(program, path, int(2 + 3 * self.seconds(worker, program)), worker.folder / "lib")[0]:
                with self.lock:
                    self.seen[program] += 1
                return "record" if program.endswith("/digest") else "seen"
        return None


def reasons(unit):
    """The changes of a unit that change nothing, and why."""
    found, file, reason = {}, "", ""
    for line in SURVIVORS.read_text(encoding="utf-8").splitlines():
        if line.startswith("# "):
            reason = line[2:]
        elif line.startswith("  "):
            if not reason:
                raise SystemExit(f"{SURVIVORS.name}: no reason stands before: {line}")
            if file == unit:
                found[line.strip()] = reason
        elif line:
            file, reason = line, ""
    return found


class Unit:
    """What is tried of a unit, and what became of it."""

    def __init__(self, tree, unit, limit, again):
        self.name, self.tree, self.begin = unit, tree, time.monotonic()
        self.trial = Trial(tree, unit)
        self.source, found = changes(tree, unit, self.trial.parts)
        self.counts = dict.fromkeys(COLUMNS, 0)
        self.unseen = []
        known = reasons(unit)
        self.stale = [f"{unit}: {line}" for line in known if line not in {change.shown for change in found}]
        tried = found
        if again:
            self.counts, lines = read_report().get(unit, (self.counts, []))
            left = {line for line, reason in lines if not reason}
            self.unseen = [(line, reason) for line, reason in lines if reason]
            tried = [change for change in found if change.shown in left]
            self.counts["survive"] -= len(tried)
        else:
            if limit and len(tried) > limit:
                tried = sorted(random.Random(unit).sample(tried, limit))
            self.counts |= {"tried": len(tried), "found": len(found)}
        for change in tried:
            if change.shown in known:
                self.count("nothing", change, known[change.shown])
        self.tried = [change for change in tried if change.shown not in known]

    def count(self, how, change, reason=""):
        """Notes what became of a change."""
        self.counts[how] += 1
        if how in ("survive", "nothing"):
            self.unseen.append((change.shown, reason))
        if how == "survive":
            print(f"{self.name}:{change.line}: {change.shown}", flush=True)

    def try_alone(self, tried):
        """Tries changes of the unit one by one."""
        self.begin = time.monotonic()
        workers = queue.SimpleQueue()

        def attempt(change):
            worker = workers.get()
            try:
                return self.trial.outcome(worker, self.source[:change.start] + change.new + self.source[change.end:])
            finally:
                workers.put(worker)

        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool, tempfile.TemporaryDirectory(dir=WORK) as folder:
            for number in range(WORKERS if tried else 0):
                workers.put(Worker(pathlib.Path(folder) / str(number), self.tree, self.name))
            for how, change in zip(pool.map(attempt, tried), tried):
                self.count(how, change)

    def print(self):
        """The row of the report, and how long it took."""
        print(f"{row(self.name, self.counts)}   {len(self.trial.seen)} programs, {time.monotonic() - self.begin:.0f} s",
              flush=True)


class Together:
    """The changes of headers, each behind a switch, in the library and in all programs that hold one of the headers."""

    def __init__(self, tree, units, folder):
        self.tree, self.units, self.lock = tree, {unit.name: unit for unit in units}, threading.Lock()
        self.changes = list(enumerate(((unit, change) for unit in units for change in unit.tried), 1))
        self.dropped = {number for number, (unit, change) in self.changes
                        if not self.fits(unit) or b"is_constant_evaluated" in unit.source[slice(*change.whole)]}
        (folder / "switches.h").write_text(switches.prelude(len(self.changes)), encoding="utf-8")
        (folder / "objects").mkdir()
        (folder / "lib").mkdir()
        (folder / "programs").mkdir()
        self.folder, self.copies = folder, queue.SimpleQueue()
        for number in range(WORKERS):
            copy = Copy(folder / str(number), tree)
            copy.objects, copy.texts = folder / "objects", {}
            copy.options += ["-include", folder / "switches.h", "-fdiagnostics-column-unit=byte", *AS_SANITIZERS]
            self.copies.put(copy)
        touched = {path for path, files in tree.depends.items() if files & set(self.units)}
        programs = {program for unit in units for program in unit.trial.seen}
        self.programs = sorted(programs - variants(programs, tree))
        self.needed = {path for path in touched
                       if path in tree.objects[tree.library] or any(path in tree.objects[name] for name in self.programs)}
        self.times, self.reached, self.failed = {}, {}, set()

    @staticmethod
    def fits(unit):
        """Whether all that is changed in a unit can have its switch at once."""
        return switches.is_nested({change.whole for change in unit.tried})

    def text(self, name):
        """A unit with its switches, and the places that they are to blame for."""
        return switches.switched(self.units[name].source, [
            switches.Switch(number, change.whole, change.start, change.end, change.new)
            for number, (unit, change) in self.changes if unit.name == name and number not in self.dropped])

    def compile(self, path):
        """Compiles an object, without the switches that do not compile."""
        copy = self.copies.get()
        try:
            while True:
                with self.lock:
                    dropped = set(self.dropped)
                    for name in self.units:
                        text, spans = self.text(name)
                        if copy.texts.get(name, (None, None))[0] != text:
                            copy.texts[name] = text, spans
                            (copy.folder / name).write_bytes(text)
                error = copy.compile(path)
                if error is None:
                    return
                blamed = self.blamed(copy, error) - dropped
                if not blamed:
                    print(f"{path} is left out, as it does not compile with switches: {error[-2000:]}", flush=True)
                    with self.lock:
                        self.failed.add(path)
                    return
                with self.lock:
                    self.dropped |= blamed
        finally:
            self.copies.put(copy)

    @staticmethod
    def blamed(copy, error):
        """The switches that what the compiler says is due to: those where an error is, else where it comes from, else those
        nearest to it."""
        ways = [(kind, blame) for blame in (switches.blamed, switches.nearest) for kind in ("error", r"\S")]
        for kind, blame in ways:
            found = set()
            for file, line, column in re.findall(rf"^(\S[^:\n]*):(\d+):(\d+):\s+{kind}", error, re.MULTILINE):
                name = os.path.relpath(os.path.join(BUILD, file), copy.folder)
                if name in copy.texts:
                    found |= set(blame(*copy.texts[name], int(line), int(column)))
            if found:
                break
        return found

    def path(self, program):
        """Where a program is that holds switches, or one that does not."""
        holds = any(path in self.needed for path in self.tree.objects[program])
        return self.folder / "programs" / pathlib.Path(program).name if holds else BUILD / program

    def build(self, pool):
        """The library and the programs, with switches."""
        list(pool.map(self.compile, sorted(self.needed, key=lambda path: -len(self.tree.depends[path]))))
        self.programs = [name for name in self.programs if not self.failed & set(self.tree.objects[name])]
        copy = self.copies.get()
        for target in (self.tree.library, *self.programs):
            output = self.folder / "lib" / f"{LIBRARY}.0" if target == self.tree.library else self.path(target)
            if output.is_relative_to(self.folder) and not copy.linked(target, output, self.needed - self.failed):
                raise SystemExit(f"{target} does not link with switches")
        self.copies.put(copy)

    def run(self, program, seconds, **told):
        """Whether a program fails with what it is told, and its time."""
        copy = self.copies.get()
        try:
            return copy.run(program, self.path(program), seconds, self.folder / "lib", MISLED, **told)
        finally:
            self.copies.put(copy)

    def look(self, program):
        """Finds out which switches a program comes by."""
        path = self.folder / f"{pathlib.Path(program).name}.reached"
        fails, self.times[program] = self.run(program, 600, BV_CHANGES_REACHED=str(path))
        if fails:
            print(f"{program} is left out, as it fails with switches that are off", flush=True)
        else:
            self.reached[program] = set(map(int, path.read_text(encoding="utf-8").split())) if path.exists() else set()

    def outcome(self, number):
        """What became of a change: seen or record; alone where it has to be tried so, too."""
        programs = [program for program, reached in self.reached.items() if number in reached]
        if number in self.dropped or not programs:
            return "alone"
        for program in sorted(programs, key=lambda program: (program.endswith("/digest"), self.times[program])):
            if self.run(program, int(2 + 3 * self.times[program]), BV_CHANGE=str(number))[0]:
                return "record" if program.endswith("/digest") else "seen"
        return "alone"

    def run_all(self):
        """Counts what became of each change, and gives back those to be tried alone, by unit."""
        left = {name: [] for name in self.units}
        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            self.build(pool)
            print(f"{len(self.needed)} objects with {len(self.changes) - len(self.dropped)} changes", flush=True)
            list(pool.map(self.look, self.programs))
            numbers = [number for number, _ in self.changes]
            for how, (_, (unit, change)) in zip(pool.map(self.outcome, numbers), self.changes):
                if how == "alone":
                    left[unit.name].append(change)
                else:
                    unit.count(how, change)
        return left


def variants(programs, tree):
    """Of the programs that are one test compiled at several levels, all but the quickest."""
    kept = {}
    for program in sorted(sorted(programs, reverse=True), key=lambda program: tree.times.get(program, 1)):
        kept.setdefault(re.sub("_O[0-3]$", "", program), program)
    return set(programs) - set(kept.values())


def try_units(tree, units):
    """Tries units, the headers among them together."""
    headers = [unit for unit in units if unit.name.endswith(".h") and unit.tried]
    left = {unit.name: unit.tried for unit in units}
    if headers:
        with tempfile.TemporaryDirectory(dir=WORK) as folder:
            left |= Together(tree, headers, pathlib.Path(folder)).run_all()
    for unit in units:
        unit.try_alone(left[unit.name])
        unit.print()
        yield unit


def row(unit, counts):
    """A row of the report."""
    seen = counts["seen"] + counts["record"]
    share = f"{100 * seen / max(seen + counts['survive'], 1):.1f} %" if seen + counts["survive"] else "-"
    return f"| {unit} | {' | '.join(str(counts[name]) for name in COLUMNS)} | {share} |"


def read_report():
    """The units in the report, each with its counts and the lines of what no test sees."""
    text = REPORT.read_text(encoding="utf-8") if REPORT.exists() else ""
    found = {}
    for line in text.splitlines():
        if line.startswith("## "):
            unit = line[3:]
        elif line.startswith("| ") and "/" in line.split()[1]:
            words = [word.strip() for word in line.strip("|").split("|")]
            found[words[0]] = dict(zip(COLUMNS, map(int, words[1:-1]))), []
        elif match := re.fullmatch(r"- `` (.+) ``(?:: (.+))?", line):
            found[unit][1].append((match[1], match[2] or ""))
    return found


def write_report(found):
    """Writes the report anew."""
    text = HEAD + "".join(row(unit, found[unit][0]) + "\n" for unit in sorted(found))
    for unit in sorted(found):
        if lines := found[unit][1]:
            text += f"\n## {unit}\n\n"
            text += "".join(f"- `` {line} ``{': ' + reason if reason else ''}\n" for line, reason in sorted(lines))
    REPORT.write_text(text, encoding="utf-8")


def main():
    options = [argument for argument in sys.argv[1:] if argument.startswith("--")]
    names = [argument for argument in sys.argv[1:] if not argument.startswith("--")]
    limit = next((int(option.partition("=")[2]) for option in options if option.startswith("--limit=")), 0)
    tree = Tree()
    tried = []
    complaints = []
    for name in dict.fromkeys(names):
        try:
            tried.append(Unit(tree, name, limit, "--again" in options))
        except Unused as error:
            complaints.append(f"tools/mutate: {error}")
    survivors = 0
    for unit in try_units(tree, tried):
        survivors += unit.counts["survive"]
        if "--write" in options:
            write_report(read_report() | {unit.name: (unit.counts, unit.unseen)})
    complaints += [f"tools/mutate: no such change, but a reason for it: {line}" for unit in tried for line in unit.stale]
    if survivors:
        complaints.append(f"tools/mutate: {survivors} changes survive")
    if complaints:
        raise SystemExit("\n".join(complaints))


if __name__ == "__main__":
    main()
