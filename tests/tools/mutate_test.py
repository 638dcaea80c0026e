#!/usr/bin/env python3
"""Tests of what tools/mutate changes, and of what its report keeps."""

import os
import pathlib
import subprocess
import sys
import tempfile
import types
import unittest
import unittest.mock

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tests" / "mutation"))

import mutate  # noqa: E402  (it lies beside what it imports)
import switches  # noqa: E402

SOURCE = """
static_assert(1 + 1 == 2);
struct Pair { int a; bool operator<(Pair other) const { return a < other.a; } };
template <typename T> bool IsLess(T a, T b) { return a < b; }
int Sum(int a, int b) { return a + -b; }
int Largest(Pair p, Pair q)
{
    if (p < q)
        return 7;
    return p.a;
}
void Count(int& n, bool up = true) { n += up ? 2 : 3; }
"""
CHANGED = {  # by hand: what stands for what, in which function
    ("operator<", "a < other.a", "{}"), ("operator<", "<", "<="), ("operator<", "<", ">="),
    ("IsLess", "a < b", "{}"), ("IsLess", "<", "<="), ("IsLess", "<", ">="),
    ("Sum", "a + -b", "{}"), ("Sum", "+", "-"), ("Sum", "-", ""),
    ("Largest", "p < q", "!(p < q)"), ("Largest", "<", "<="), ("Largest", "<", ">="),
    ("Largest", "7", "{}"), ("Largest", "7", "(7 + 1)"), ("Largest", "p.a", "{}"),
    ("Count", "true", "false"), ("Count", "+=", "-="), ("Count", "up", "!(up)"), ("Count", "2", "(2 + 1)"),
    ("Count", "3", "(3 + 1)")
}


class MutateTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name).resolve()
        for name, value in (("TOP", self.top), ("REPORT", self.top / "report.md"), ("SURVIVORS", self.top / "survivors.txt")):
            self.addCleanup(setattr, mutate, name, getattr(mutate, name))
            setattr(mutate, name, value)

    def test_operators_comparisons_conditions_numbers_and_results_are_changed(self):
        path = self.top / "unit.cpp"
        path.write_text(SOURCE, encoding="utf-8")
        tree = types.SimpleNamespace(compile={"unit.o": ["c++", "-std=c++20"]}, source={"unit.o": str(path)})
        source, found = mutate.changes(tree, "unit.cpp", ["unit.o"])
        self.assertEqual({(change.shown.partition(": ")[0], source[change.start:change.end].decode(), change.new.decode())
                          for change in found}, CHANGED)
        self.assertEqual(len(found), len(CHANGED))
        # All of them compile side by side, but for comparisons that pairs do not have.
        made = [switches.Switch(number, change.whole, change.start, change.end, change.new)
                for number, change in enumerate(found, 1)
                if not (change.shown.startswith("Largest") and change.new in (b"<=", b">="))]
        text, _ = switches.switched(source, made)
        (self.top / "switches.h").write_text(switches.prelude(len(found)), encoding="utf-8")
        (self.top / "switched.cpp").write_bytes(text)
        subprocess.run([os.environ.get("CXX", "c++"), "-std=c++20", "-include", "switches.h", "-c", "switched.cpp"],
                       cwd=self.top, check=True)
        shown = {change.shown for change in found if change.line == 5}
        self.assertIn("Sum: int Sum(int a, int b) { return a + -b; } => int Sum(int a, int b) { return a - -b; }", shown)

    def test_changes_that_look_alike_are_told_apart(self):
        found = [mutate.Change(at, at, b"", shown, at) for at, shown in enumerate(("a", "b", "a", "a"))]
        self.assertEqual([change.shown for change in mutate.numbered(found)], ["a", "b", "a (2)", "a (3)"])

    def test_the_report_keeps_the_units_that_are_not_tried(self):
        counts = dict(zip(mutate.COLUMNS, (10, 20, 1, 2, 3, 1, 1, 2)))
        lines = [("F: a + b => a - b", ""), ("F: a < b => a <= b", "Both are the same: a is never b.")]
        mutate.write_report({"core/B.cpp": (counts, lines)})
        mutate.write_report(mutate.read_report() | {"core/A.cpp": (counts | {"survive": 0}, [])})
        self.assertEqual(mutate.read_report(), {"core/A.cpp": (counts | {"survive": 0}, []), "core/B.cpp": (counts, lines)})
        text = mutate.REPORT.read_text(encoding="utf-8")
        self.assertIn("| core/A.cpp | 10 | 20 | 1 | 2 | 3 | 1 | 1 | 0 | 100.0 % |\n", text)
        self.assertIn("| core/B.cpp | 10 | 20 | 1 | 2 | 3 | 1 | 1 | 2 | 66.7 % |\n", text)  # 4 of 6

    def test_a_change_that_changes_nothing_has_its_reason_before_it(self):
        mutate.SURVIVORS.write_text("core/A.cpp\n\n# Why.\n  F: 1 => 2\n  F: 3 => 4\n\ncore/B.cpp\n# Else.\n  F: 5 => 6\n",
                                    encoding="utf-8")
        self.assertEqual(mutate.reasons("core/A.cpp"), {"F: 1 => 2": "Why.", "F: 3 => 4": "Why."})
        self.assertEqual(mutate.reasons("core/C.cpp"), {})
        mutate.SURVIVORS.write_text("core/A.cpp\n  F: 1 => 2\n", encoding="utf-8")
        with self.assertRaises(SystemExit):
            mutate.reasons("core/A.cpp")

    def test_the_own_tests_of_a_unit_come_before_what_else_holds_it(self):
        trial = object.__new__(mutate.Trial)
        trial.unit, trial.stem, trial.library = "core/Unit.cpp", "Unit", ["a.o", "b.o"]
        trial.tests = {"tests/FarTest": [], "tests/OtherTest": ["o.o"], "tests/UnitTest": ["u.o"]}
        trial.order = lambda: list(trial.tests)
        self.assertEqual(list(trial.stages()),
                         [(["a.o", "u.o"], ["tests/UnitTest"]), (["a.o"], ["tests/FarTest"]), (["o.o"], ["tests/OtherTest"]),
                          (["b.o"], list(trial.tests))])
        everything = list(trial.tests)
        self.assertEqual(trial.reached(everything, {"u.o"}), ["tests/UnitTest"])
        self.assertEqual(trial.reached(everything, {"u.o", "b.o"}), everything)
        trial.library = []
        self.assertEqual(list(trial.stages()), [(["u.o"], ["tests/UnitTest"]), (["o.o"], ["tests/OtherTest"])])

    def test_of_a_header_alone_some_tests_are_compiled_those_of_constant_evaluation_among_them(self):
        trial = object.__new__(mutate.Trial)
        trial.unit, trial.stem, trial.library = "core/Unit.h", "Unit", ["a.o", "b.o"]
        trial.tests = {f"tests/{name}": [f"{name}.o"] for name in ("A", "B", "C", "D", "ConstantEvaluationTest", "UnitTest")}
        trial.order = lambda: list(trial.tests)
        self.assertEqual(list(trial.stages()),
                         [(["a.o", "UnitTest.o"], ["tests/UnitTest"]), (["a.o"], []),
                          *(([f"{name}.o"], [f"tests/{name}"]) for name in ("ConstantEvaluationTest", "A"))])

    def test_a_unit_that_nothing_uses_does_not_end_the_run(self):
        tried = []

        def make(_tree, name, *_):
            if name == "core/A.cpp":
                raise mutate.Unused(f"{name}: no test uses it")
            return types.SimpleNamespace(name=name, tried=[], counts={"survive": 1}, stale=["core/B.cpp: F: 1 => 2"],
                                         try_alone=lambda _: tried.append(name), print=lambda: None)

        with unittest.mock.patch.multiple(mutate, Tree=object, Unit=make), \
                unittest.mock.patch.object(mutate.sys, "argv", ["mutate.py", "core/A.cpp", "core/B.cpp"]), \
                self.assertRaises(SystemExit) as end:
            mutate.main()
        self.assertEqual(tried, ["core/B.cpp"])
        self.assertEqual(str(end.exception), "tools/mutate: core/A.cpp: no test uses it\n"
                         "tools/mutate: no such change, but a reason for it: core/B.cpp: F: 1 => 2\n"
                         "tools/mutate: 1 changes survive")

    def test_a_kind_that_the_bindings_do_not_know_is_none(self):
        class Unknown:
            @property
            def kind(self):
                raise ValueError("Unknown template argument kind 280")

        self.assertIsNone(mutate.kind_of(Unknown()))

    def test_every_reason_belongs_to_a_unit_that_is_there(self):
        for line in (ROOT / "tests" / "mutation" / "survivors.txt").read_text(encoding="utf-8").splitlines():
            if line and not line.startswith(("#", "  ")):
                self.assertTrue((ROOT / line).is_file(), line)


HEADER = b"""constexpr int Least(int a, int b)
{
    if (a < b)
        return a + 1;
    return b * (a - 2);
}
"""
PROGRAM = """#include "unit.h"
#include <cstdio>
static_assert(Least(1, 5) == 2);
int main(int count, char**) { std::printf("%d %d", Least(count, 5), count > 1 ? Least(7, 3) : 0); }
"""


def switch(number, whole, old, new):
    """A change of the sample header: what is replaced stands once in the whole, which stands once in the header."""
    start = HEADER.index(whole)
    at = start + whole.index(old)
    return switches.Switch(number, (start, start + len(whole)), at, at + len(old), new)


SWITCHES = [switch(1, b"a < b", b"<", b">="), switch(2, b"a < b", b"a < b", b"!(a < b)"),
            switch(3, b"return a + 1", b"a + 1", b"{}"), switch(4, b"a + 1", b"+", b"-"), switch(5, b"1", b"1", b"(1 + 1)"),
            switch(6, b"b * (a - 2)", b"*", b"/"), switch(7, b"a - 2", b"-", b"+")]
PRINTED = {  # by hand: of 1 alone, and of 1 and then 7 and 3
    None: ("2 0", "3 15"), 1: ("-5 0", "0 8"), 2: ("-5 0", "0 8"), 3: ("0 0", "0 15"), 4: ("0 0", "1 15"), 5: ("3 0", "4 15"),
    6: ("2 0", "3 0"), 7: ("2 0", "3 27")
}


class SwitchesTest(unittest.TestCase):
    def test_each_change_has_a_switch_that_is_off_unless_asked_for(self):
        text, _ = switches.switched(HEADER, SWITCHES)
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "switches.h").write_text(switches.prelude(len(SWITCHES)), encoding="utf-8")
            (folder / "unit.h").write_bytes(text)
            (folder / "program.cpp").write_text(PROGRAM, encoding="utf-8")
            subprocess.run([os.environ.get("CXX", "c++"), "-std=c++20", "-include", "switches.h", "program.cpp", "-o", "program"],
                           cwd=folder, check=True)
            for number, printed in PRINTED.items():
                told = {"BV_CHANGE": str(number)} if number else {"BV_CHANGES_REACHED": "reached"}
                for arguments, expected in zip(([], ["2"]), printed):
                    run = subprocess.run(["./program", *arguments], cwd=folder, check=True, capture_output=True, text=True,
                                         env=os.environ | told)
                    self.assertEqual(run.stdout, expected, number)
            # The second run adds to what the first one came by.
            self.assertEqual((folder / "reached").read_text(encoding="utf-8").split(),
                             ["1", "2", "3", "4", "5", "1", "2", "3", "4", "5", "6", "7"])

    def test_what_does_not_compile_is_the_fault_of_the_innermost_switches_around_it(self):
        text, spans = switches.switched(HEADER, SWITCHES)

        def at(line, what):
            return switches.blamed(text, spans, line, text.split(b"\n")[line - 1].index(what) + 1)

        self.assertEqual(at(1, b"int"), [])
        self.assertEqual(switches.nearest(text, spans, 1, 1), [1, 2])
        self.assertEqual(switches.nearest(text, spans, 6, 1), [6])
        self.assertEqual(at(3, b"a >= b"), [1])
        self.assertEqual(at(3, b"!(a < b)"), [2])
        self.assertEqual(at(3, b"(BvChanged(1)"), [1, 2])
        self.assertEqual(at(3, b"if"), [])
        self.assertEqual(at(4, b"return {}"), [3])
        self.assertEqual(at(4, b"a - 1"), [4])
        self.assertEqual(at(4, b"(1 + 1)"), [5])
        self.assertEqual(at(4, b"return (Bv"), [3])
        self.assertEqual(at(5, b"b / (a - 2)"), [6])
        self.assertEqual(at(5, b"a + 2"), [7])

    def test_changes_that_overlap_cannot_stand_side_by_side(self):
        self.assertTrue(switches.is_nested({(0, 9), (0, 4), (1, 3), (4, 9), (12, 15)}))
        self.assertFalse(switches.is_nested({(0, 4), (2, 6)}))

    def test_a_program_is_run_for_the_changes_that_it_comes_by(self):
        together = object.__new__(mutate.Together)
        together.dropped = {1}
        together.reached = {"tests/A": {1, 2, 3}, "tests/digest": {2, 3, 4}, "tests/B": {3}}
        together.times = {"tests/A": 2.0, "tests/digest": 0.5, "tests/B": 1.0}
        ran = []

        def run(program, seconds, BV_CHANGE):
            ran.append((program, seconds, BV_CHANGE))
            return program in fails, 0.1

        together.run = run
        fails = {}
        self.assertEqual([together.outcome(1), together.outcome(5)], ["alone", "alone"])
        self.assertEqual(ran, [])
        self.assertEqual(together.outcome(3), "alone")
        self.assertEqual(ran, [("tests/B", 5, "3"), ("tests/A", 8, "3"), ("tests/digest", 3, "3")])
        fails = {"tests/A"}
        self.assertEqual(together.outcome(2), "seen")
        fails = {"tests/digest"}
        self.assertEqual(together.outcome(4), "record")

    def test_of_a_test_compiled_at_several_levels_the_quickest_is_run(self):
        tree = types.SimpleNamespace(times={"tests/RayTest_O0": 3, "tests/RayTest_O3": 1, "tests/A_AVX": 2, "tests/A": 1})
        self.assertEqual(mutate.variants(tree.times, tree), {"tests/RayTest_O0"})
        tree.times = {}
        self.assertEqual(mutate.variants({"tests/A_O0", "tests/A_O3"}, tree), {"tests/A_O0"})


if __name__ == "__main__":
    unittest.main()
