#!/usr/bin/env python3
"""Tests of what tools/mutate changes, and of what its report keeps."""

import importlib.util
import pathlib
import tempfile
import types
import unittest
import unittest.mock

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SPEC = importlib.util.spec_from_file_location("mutate", ROOT / "tests" / "mutation" / "mutate.py")
mutate = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(mutate)

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

    def test_the_own_tests_of_a_header_come_before_what_else_holds_it(self):
        trial = object.__new__(mutate.Trial)
        trial.stem, trial.library = "Unit", ["a.o", "b.o"]
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

    def test_a_unit_that_nothing_uses_does_not_end_the_run(self):
        tried = []

        def try_unit(_tree, unit, *_):
            tried.append(unit)
            if unit == "core/A.cpp":
                raise mutate.Unused(f"{unit}: no test uses it")
            return dict.fromkeys(mutate.COLUMNS, 1), []

        with unittest.mock.patch.multiple(mutate, Tree=object, try_unit=try_unit), \
                unittest.mock.patch.object(mutate.sys, "argv", ["mutate.py", "core/A.cpp", "core/B.cpp"]), \
                self.assertRaises(SystemExit) as end:
            mutate.main()
        self.assertEqual(tried, ["core/A.cpp", "core/B.cpp"])
        self.assertEqual(str(end.exception), "tools/mutate: core/A.cpp: no test uses it\ntools/mutate: 1 changes survive")

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


if __name__ == "__main__":
    unittest.main()
