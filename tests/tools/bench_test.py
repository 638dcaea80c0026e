#!/usr/bin/env python3
"""Tests of the scripts behind tools/bench, on small made-up measurements whose results are worked out by hand."""

import contextlib
import io
import json
import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
sys.path[:0] = [os.path.join(ROOT, "benchmarks"), os.path.join(ROOT, "tests", "digest")]
sys.dont_write_bytecode = True

import costs  # noqa: E402
import digest  # noqa: E402
import raytracer  # noqa: E402
import report  # noqa: E402


def entry(name, nanoseconds, aggregate="median"):
    """An aggregate of Google Benchmark for a row whose items take so long."""
    return {"name": f"{name}_{aggregate}", "run_name": name, "run_type": "aggregate", "aggregate_name": aggregate,
            "items_per_second": 1e9 / nanoseconds, "cpu_time": 77.0, "time_unit": "ns"}


def document(*entries):
    return {"context": {}, "benchmarks": list(entries)}


PRODUCT = ("matrix", "product", "float")
SPHERE = ("ray", "sphere", "double")
FOUR = ("ray", "four rays, one box", "float")


class ParsingTest(unittest.TestCase):
    def test_only_the_median_of_a_row_counts_and_is_the_time_of_one_item(self):
        rows = report.parse_results(document(entry("matrix/product/float/GLM", 9, "mean"),
                                             entry("matrix/product/float/GLM", 4),
                                             entry("matrix/product/float/GLM", 1, "stddev")), "file")
        self.assertEqual(list(rows), [PRODUCT])
        self.assertAlmostEqual(rows[PRODUCT]["GLM"], 4)

    def test_items_per_second_turn_into_nanoseconds_for_an_item(self):
        row = entry("a/b/float/C", 1)
        row["items_per_second"] = 250e6  # 250 million a second: 4 ns each
        self.assertAlmostEqual(report.parse_results(document(row), "file")[("a", "b", "float")]["C"], 4)

    def test_a_name_of_other_than_four_parts_is_refused(self):
        for name in ("matrix/product/float", "matrix/product/of/float/GLM"):
            with self.assertRaisesRegex(report.ReportError, "topic/operation/precision/library"):
                report.parse_results(document(entry(name, 1)), "file")

    def test_a_row_that_is_there_twice_is_refused(self):
        twice = document(entry("a/b/float/C", 1), entry("a/b/float/C", 2))
        with self.assertRaisesRegex(report.ReportError, "twice"):
            report.parse_results(twice, "file")

    def test_a_row_without_a_number_of_items_is_refused(self):
        row = entry("a/b/float/C", 1)
        del row["items_per_second"]
        with self.assertRaisesRegex(report.ReportError, "items"):
            report.parse_results(document(row), "file")

    def test_a_row_that_failed_is_refused_with_its_message(self):
        failed = {"run_name": "a/b/float/C", "error_occurred": True, "error_message": "no such processor"}
        with self.assertRaisesRegex(report.ReportError, "no such processor"):
            report.parse_results(document(failed), "file")

    def test_a_file_without_medians_is_refused(self):
        with self.assertRaisesRegex(report.ReportError, "no median"):
            report.parse_results(document(), "file")


class CountTest(unittest.TestCase):
    def test_a_dump_is_divided_by_its_items(self):
        dumps = ["part: 1", "desc: Trigger: Client Request: 256 matrix/product/float/GLM", "events: Ir",
                 "summary: 1024", "totals: 1024",  # 1024 / 256 = 4
                 "desc: Trigger: Client Request: 10 matrix/product/float/BvBaseUtils' single form", "totals: 25"]
        self.assertEqual(report.parse_counts(dumps, "file"),
                         {PRODUCT: {"GLM": 4.0, "BvBaseUtils' single form": 2.5}})

    def test_what_no_row_triggered_counts_for_nothing(self):
        dumps = ["totals: 7", "desc: Trigger: Program termination", "totals: 9"]
        self.assertEqual(report.parse_counts(dumps, "file"), {})

    def test_a_dump_of_something_else_is_refused(self):
        for label in ("0 matrix/product/float/GLM", "5 matrix/product/float"):
            with self.assertRaisesRegex(report.ReportError, "number of items and a row"):
                report.parse_counts([f"desc: Trigger: Client Request: {label}"], "file")


class RatioTest(unittest.TestCase):
    def test_the_best_peer_is_the_fastest_other_library(self):
        libraries = {"BvBaseUtils": 2.0, "GLM": 5.0, "Eigen": 3.0, "Imath": 4.0}
        self.assertEqual(report.best_peer(libraries), ("Eigen", 3.0))
        self.assertEqual(report.ratio(libraries), 1.5)  # 3 / 2

    def test_another_form_of_this_library_is_no_peer(self):
        libraries = {"BvBaseUtils": 2.0, "BvBaseUtils single": 1.0, "stb": 8.0}
        self.assertEqual(report.best_peer(libraries), ("stb", 8.0))
        self.assertEqual(report.ratio(libraries), 4.0)

    def test_what_memory_allows_is_no_peer(self):
        libraries = {"BvBaseUtils": 2.0, "memcpy": 1.0, "reading": 0.5, "Eigen": 6.0}
        self.assertEqual(report.ratio(libraries), 3.0)

    def test_a_slower_row_has_a_ratio_below_one(self):
        self.assertEqual(report.ratio({"BvBaseUtils": 4.0, "GLM": 3.0}), 0.75)

    def test_without_a_peer_or_without_us_there_is_no_ratio(self):
        self.assertIsNone(report.ratio({"BvBaseUtils": 4.0}))
        self.assertIsNone(report.ratio({"GLM": 4.0}))
        self.assertIsNone(report.ratio({}))
        self.assertIsNone(report.best_peer({"BvBaseUtils": 4.0, "BvBaseUtils single": 9.0}))


class SummaryTest(unittest.TestCase):
    def test_the_median_is_that_of_the_rows_with_a_ratio(self):
        rows = {("a", "1", "float"): {"BvBaseUtils": 1.0, "X": 3.0},  # 3
                ("a", "2", "float"): {"BvBaseUtils": 2.0, "X": 1.0},  # 0.5
                ("a", "3", "float"): {"BvBaseUtils": 1.0, "X": 2.0, "Y": 8.0},  # 2
                ("a", "4", "float"): {"BvBaseUtils": 4.0, "X": 1.0},  # 0.25
                ("a", "5", "float"): {"BvBaseUtils": 1.0},
                ("a", "6", "float"): {"X": 1.0}}
        facts = report.summarise(rows)
        self.assertEqual(facts["rows"], 4)
        self.assertEqual(facts["median"], 1.25)  # between 0.5 and 2
        self.assertEqual([key[1] for key in facts["below"]], ["4", "2"])

    def test_an_equal_peer_is_not_below_one(self):
        self.assertEqual(report.summarise({PRODUCT: {"BvBaseUtils": 3.0, "X": 3.0}})["below"], [])

    def test_rows_without_a_peer_and_peers_without_a_row_are_named(self):
        problems = report.incomplete({PRODUCT: {"BvBaseUtils": 1.0}, SPHERE: {"Imath": 1.0},
                                      FOUR: {"BvBaseUtils": 1.0, "hand-written": 1.0}})
        self.assertEqual(problems, ["matrix/product/float has no peer", "ray/sphere/double has no row of BvBaseUtils"])

    def test_packets_are_held_against_the_hand_written_kernel_and_nothing_else(self):
        rows = {FOUR: {"BvBaseUtils": 3.0, "hand-written": 2.0, "Embree": 1.0},
                SPHERE: {"BvBaseUtils": 3.0, "hand-written": 2.0},
                ("ray", "eight rays, one box", "float"): {"BvBaseUtils": 1.0}}
        self.assertEqual(report.packet_checks(rows), [(FOUR, 1.5)])  # 3 / 2


class TextTest(unittest.TestCase):
    def test_a_ratio_just_below_one_never_reads_as_one(self):
        self.assertEqual(report.times(0.9999), "0.999")
        self.assertEqual(report.marked(0.9999), "**0.999**")
        self.assertEqual(report.marked(0.75), "**0.75**")
        self.assertEqual(report.marked(1.0), "1.00")
        self.assertEqual(report.times(12.34), "12.3")
        self.assertEqual(report.times(None), "–")

    def test_times_have_three_digits(self):
        self.assertEqual([report.number(value) for value in (0.1234, 1.234, 12.34, 1234.5, None)],
                         ["0.12", "1.23", "12.3", "1,234", "–"])

    def test_a_table_has_a_line_for_its_header_its_rule_and_each_row(self):
        self.assertEqual(report.table(["a", "b"], [["x|y", "1"]]), "| a | b |\n|---|---:|\n| x\\|y | 1 |\n")


class PageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = os.path.join(folder.name, "results")
        self.output = os.path.join(folder.name, "report")
        os.mkdir(self.source)

    def write(self, name, content):
        with open(os.path.join(self.source, name), "w", encoding="utf-8") as file:
            json.dump(content, file)

    def read(self, name):
        with open(os.path.join(self.output, name), encoding="utf-8") as file:
            return file.read()

    def make(self, notes=None):
        """Runs the report without its charts, which need a package that the tests do without."""
        drawn = []
        original, report.draw = report.draw, lambda title, rows, path: drawn.append(os.path.basename(path))
        self.addCleanup(setattr, report, "draw", original)
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            report.main(self.source, self.output, notes)
        return drawn, printed.getvalue()

    def test_every_build_has_its_columns_and_a_row_of_one_build_only_has_dashes_in_the_others(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 2),
                                        entry("matrix/product/float/GLM", 3)))
        self.write("clang.json", document(entry("matrix/product/float/BvBaseUtils", 4),
                                          entry("matrix/product/float/GLM", 3),
                                          entry("ray/sphere/double/BvBaseUtils", 1),
                                          entry("ray/sphere/double/Imath", 2)))
        drawn, printed = self.make()
        page = self.read("README.md")
        self.assertEqual(drawn, ["ratios-gcc.svg", "ratios-clang.svg"])
        self.assertIn("| product, float | 2.00 | 3.00 GLM | 1.50 | 4.00 | 3.00 GLM | **0.75** |", page)
        self.assertIn("| sphere, double | – | – | – | 1.00 | 2.00 Imath | 2.00 |", page)
        self.assertIn("| GCC -O2 | 1 | 1.50 | 0 | 0 |", page)
        self.assertIn("| Clang -O2 | 2 | 1.38 | 1 | 1 |", page)  # (0.75 + 2) / 2 = 1.375
        self.assertIn("| matrix/product/float | Clang -O2 | 4.00 | – | GLM | 3.00 | – | **0.75** | no |", page)
        self.assertIn("0.75  matrix/product/float: 4.00 ns, GLM 3.00 ns", printed)
        self.assertLess(page.index("### Matrix"), page.index("### Ray"))

    def test_rows_clearly_below_one_are_counted_apart(self):
        self.write("gcc.json", document(entry("a/b/float/BvBaseUtils", 100), entry("a/b/float/X", 94),
                                        entry("a/c/float/BvBaseUtils", 100), entry("a/c/float/X", 96)))
        self.make()
        self.assertIn("| GCC -O2 | 2 | 0.95 | 2 | 1 |", self.read("README.md"))

    def test_every_library_stands_in_the_details_the_fastest_first(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 2),
                                        entry("matrix/product/float/GLM", 3),
                                        entry("matrix/product/float/Eigen", 1)))
        self.make()
        lines = [line for line in self.read("details.md").splitlines() if line.startswith("| product")]
        self.assertEqual(lines, ["| product, float | Eigen | 1.00 |", "| product, float | BvBaseUtils | 2.00 |",
                                 "| product, float | GLM | 3.00 |"])

    def test_a_slow_row_that_the_notes_name_says_so(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 4),
                                        entry("matrix/product/float/GLM", 3)))
        notes = os.path.join(self.source, "notes.md")
        with open(notes, "w", encoding="utf-8") as file:
            file.write("`matrix/product`: the state costs a comparison.\n")
        self.make(notes)
        self.assertIn("| matrix/product/float | GCC -O2 | 4.00 | – | GLM | 3.00 | – | **0.75** | yes |",
                      self.read("README.md"))

    def test_the_instructions_of_a_slow_row_stand_beside_its_time(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 4),
                                        entry("matrix/product/float/GLM", 3)))
        with open(os.path.join(self.source, "gcc.callgrind"), "w", encoding="utf-8") as file:
            file.write("desc: Trigger: Client Request: 8 matrix/product/float/BvBaseUtils\ntotals: 800\n"
                       "desc: Trigger: Client Request: 8 matrix/product/float/GLM\ntotals: 340\n")
        self.make()
        self.assertIn("| matrix/product/float | GCC -O2 | 4.00 | 100 | GLM | 3.00 | 42.5 | **0.75** | no |",
                      self.read("README.md"))

    def test_batch_rows_are_held_against_the_single_form_and_the_peers(self):
        self.write("gcc.json", document(entry("batch/noise/float/BvBaseUtils", 2),
                                        entry("batch/noise/float/BvBaseUtils' single form", 10),
                                        entry("batch/noise/float/memcpy", 1),
                                        entry("batch/noise/float/stb", 9)))
        self.make()
        page = self.read("README.md")
        self.assertIn("| GCC -O2 | batch, ns | single form, ns | times faster | best peer, ns | ratio | memcpy, ns | "
                      "memcpy over batch |", page)
        self.assertIn("| noise, float | 2.00 | 10.0 | 5.00 | 9.00 stb | 4.50 | 1.00 | 0.50 |", page)

    def test_packets_beyond_the_limit_stand_out(self):
        self.write("gcc.json", document(entry("ray/four rays, one box/float/BvBaseUtils", 6),
                                        entry("ray/four rays, one box/float/hand-written", 5)))
        _, printed = self.make()
        self.assertIn("| ray/four rays, one box/float | GCC -O2 | 6.00 | 5.00 | 1.20 | **no** |", self.read("README.md"))
        self.assertIn("1.20 times the hand-written kernel", printed)

    def test_costs_stand_in_the_page_relative_to_cmath(self):
        self.write("gcc.json", document(entry("a/b/float/BvBaseUtils", 1), entry("a/b/float/X", 1)))
        header = {"<cmath>": {"ms": 20.0, "lines": 1000}, "bv/String.h": {"ms": 50.0, "lines": 2500}}
        self.write("costs.json", {
            "size": 300000, "size_limit": 409600, "build": {"wall": 12.34, "cpu": 20.0, "jobs": 2},
            "load": {"plain": 500, "linked": 700, "dlopen": 200, "runs": 3},
            "headers": {"names": list(header), "compilers": ["GCC"], "measured": {"GCC": header}, "runs": 5}})
        self.make()
        page = self.read("README.md")
        self.assertIn("300,000 bytes of at most 409,600", page)
        self.assertIn("| `bv/String.h` | 50 | 2.50 | 2,500 |", page)

    def test_no_results_are_one_clear_line_and_no_page(self):
        script = os.path.join(ROOT, "benchmarks", "report.py")
        run = subprocess.run([sys.executable, script, self.source, self.output], capture_output=True, text=True,
                             check=False)
        self.assertNotEqual(run.returncode, 0)
        self.assertEqual(run.stderr.strip(), f"report: {self.source}: no results of any build")
        self.assertFalse(os.path.exists(self.output))

    def test_a_chart_is_the_same_bytes_each_time(self):
        try:
            import matplotlib  # noqa: F401
        except ImportError:
            self.skipTest("this interpreter has no matplotlib")
        rows = {PRODUCT: {"BvBaseUtils": 2.0, "GLM": 3.0}, SPHERE: {"BvBaseUtils": 2.0, "Imath": 1.0},
                FOUR: {"BvBaseUtils": 1.0}}
        charts = []
        for name in ("one.svg", "two.svg"):
            path = os.path.join(self.source, name)
            report.draw("GCC -O2", rows, path)
            with open(path, encoding="utf-8") as file:
                charts.append(file.read())
        self.assertEqual(charts[0], charts[1])
        self.assertIn("1.50  GLM", charts[0])
        self.assertIn("0.50  Imath", charts[0])
        self.assertNotIn("four rays", charts[0])  # no peer, no bar


class DigestTest(unittest.TestCase):
    RECORD = {"vectors": "1", "noise": "2", "packets-avx.float": "3", "machine-dependent.rotations": "4"}

    def test_comments_and_empty_lines_are_no_topics(self):
        self.assertEqual(digest.parse("# remark\n\nvectors 00ff\n"), {"vectors": "00ff"})

    def test_the_same_hashes_are_neither_wrong_nor_worth_a_note(self):
        self.assertEqual(digest.compare(self.RECORD, dict(self.RECORD)), ([], []))

    def test_a_changed_a_missing_and_a_new_topic_are_wrong(self):
        found = {**self.RECORD, "vectors": "9", "new": "5"}
        del found["noise"]
        wrong, notes = digest.compare(self.RECORD, found)
        self.assertEqual(wrong, ["new: not on record", "noise: missing from the program's output",
                                 "vectors: 9 instead of 1"])
        self.assertEqual(notes, [])

    def test_what_depends_on_the_machine_is_a_note(self):
        found = {**self.RECORD, "machine-dependent.rotations": "8"}
        del found["packets-avx.float"]
        wrong, notes = digest.compare(self.RECORD, found)
        self.assertEqual(wrong, [])
        self.assertEqual(len(notes), 2)

    def test_changed_packets_of_eight_are_wrong(self):
        self.assertEqual(len(digest.compare(self.RECORD, {**self.RECORD, "packets-avx.float": "8"})[0]), 1)

    def test_the_program_ends_with_an_error_when_a_hash_differs(self):
        with tempfile.TemporaryDirectory() as folder:
            record, program = os.path.join(folder, "record"), os.path.join(folder, "program")
            with open(program, "w", encoding="utf-8") as file:
                file.write("#!/bin/sh\necho vectors 00ff\n")
            os.chmod(program, 0o755)
            script = os.path.join(ROOT, "tests", "digest", "digest.py")
            for text, code in (("vectors 00ff\n", 0), ("vectors 00fe\n", 1), ("", 1)):
                with open(record, "w", encoding="utf-8") as file:
                    file.write(text)
                run = subprocess.run([sys.executable, script, program, record], capture_output=True, text=True,
                                     check=False)
                self.assertEqual(run.returncode, code, text)


class CommandTest(unittest.TestCase):
    def run_bench(self, *arguments):
        return subprocess.run([os.path.join(ROOT, "tools", "bench"), *arguments], capture_output=True, text=True,
                              check=False)

    def test_an_unknown_option_is_answered_with_the_usage(self):
        run = self.run_bench("--fast")
        self.assertEqual((run.returncode, run.stderr), (2, "Usage: tools/bench [--quick | --check] [FILTER]\n"))

    def test_two_filters_or_two_modes_are_one_clear_line(self):
        for arguments, message in ((("a", "b"), "one FILTER only"),
                                   (("--quick", "--check"), "--quick and --check exclude each other")):
            run = self.run_bench(*arguments)
            self.assertEqual((run.returncode, run.stderr), (1, f"tools/bench: {message}\n"))

    def test_the_groups_of_packages_can_be_listed(self):
        setup = os.path.join(ROOT, "tools", "setup")
        run = subprocess.run([setup, "--list", "bench"], capture_output=True, text=True, check=True)
        self.assertIn("libbenchmark-dev", run.stdout.split())
        run = subprocess.run([setup, "--list", "nothing"], capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 2)


class MeasurementTest(unittest.TestCase):
    def test_the_ray_tracers_start_cancels_out(self):
        # 500 rays in 7 s and 100 rays in 3 s: 400 rays in 4 s, whatever both of them did first.
        self.assertEqual(raytracer.rate((500, 7.0), (100, 3.0)), 100.0)

    def test_a_picture_that_is_no_slower_with_more_rays_is_refused(self):
        with contextlib.redirect_stderr(io.StringIO()), self.assertRaises(SystemExit):
            raytracer.rate((500, 3.0), (100, 3.0))

    def test_the_size_limit_is_400_kibibytes(self):
        self.assertEqual(costs.SIZE_LIMIT, 409600)

    def test_a_command_that_fails_is_named(self):
        with self.assertRaisesRegex(SystemExit, "costs: failed: false"):
            costs.run(["false"])

    def test_processor_time_is_that_of_the_command_alone(self):
        _, idle = costs.timed(["sleep", "0.2"])
        self.assertLess(idle, 0.1)


if __name__ == "__main__":
    unittest.main()
