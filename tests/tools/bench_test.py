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
import unittest.mock

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
sys.path[:0] = [os.path.join(ROOT, "benchmarks"), os.path.join(ROOT, "tests", "digest")]
sys.dont_write_bytecode = True

import charts  # noqa: E402
import costs  # noqa: E402
import digest  # noqa: E402
import formats  # noqa: E402
import machine  # noqa: E402
import quiet  # noqa: E402
import raytracer  # noqa: E402
import report  # noqa: E402
import results  # noqa: E402


def entry(name, nanoseconds, aggregate="median"):
    """An aggregate of Google Benchmark for a row whose items take so long."""
    return {"name": f"{name}_{aggregate}", "run_name": name, "run_type": "aggregate", "aggregate_name": aggregate,
            "items_per_second": 1e9 / nanoseconds, "cpu_time": 77.0, "time_unit": "ns"}


def pair(name, ours, *peers):
    """A row of ours that takes so long, and those of its peers: (library, nanoseconds)."""
    return [entry(f"{name}/{library}", time) for library, time in (("BvBaseUtils", ours), *peers)]


def document(*entries):
    return {"context": {}, "benchmarks": list(entries)}


PRODUCT = ("matrix", "product", "float")
SPHERE = ("ray", "sphere", "double")
FOUR = ("ray", "four rays, one box", "float")


class ParsingTest(unittest.TestCase):
    def test_only_the_median_of_a_row_counts_and_is_the_time_of_one_item(self):
        rows = results.parse_results(document(entry("matrix/product/float/GLM", 9, "mean"),
                                             entry("matrix/product/float/GLM", 4),
                                             entry("matrix/product/float/GLM", 1, "stddev")), "file")
        self.assertEqual(list(rows), [PRODUCT])
        self.assertAlmostEqual(rows[PRODUCT]["GLM"], 4)

    def test_items_per_second_turn_into_nanoseconds_for_an_item(self):
        row = entry("a/b/float/C", 1)
        row["items_per_second"] = 250e6  # 250 million a second: 4 ns each
        self.assertAlmostEqual(results.parse_results(document(row), "file")[("a", "b", "float")]["C"], 4)

    def test_a_name_of_other_than_four_parts_is_refused(self):
        for name in ("matrix/product/float", "matrix/product/of/float/GLM"):
            with self.assertRaisesRegex(results.ReportError, "topic/operation/precision/library"):
                results.parse_results(document(entry(name, 1)), "file")

    def test_a_row_that_is_there_twice_is_refused(self):
        twice = document(entry("a/b/float/C", 1), entry("a/b/float/C", 2))
        with self.assertRaisesRegex(results.ReportError, "twice"):
            results.parse_results(twice, "file")

    def test_a_row_without_a_number_of_items_is_refused(self):
        row = entry("a/b/float/C", 1)
        del row["items_per_second"]
        with self.assertRaisesRegex(results.ReportError, "items"):
            results.parse_results(document(row), "file")

    def test_a_row_that_failed_is_refused_with_its_message(self):
        failed = {"run_name": "a/b/float/C", "error_occurred": True, "error_message": "no such processor"}
        with self.assertRaisesRegex(results.ReportError, "no such processor"):
            results.parse_results(document(failed), "file")

    def test_a_file_without_medians_is_refused(self):
        with self.assertRaisesRegex(results.ReportError, "no median"):
            results.parse_results(document(), "file")


class CountTest(unittest.TestCase):
    def test_a_dump_is_divided_by_its_items(self):
        dumps = ["part: 1", "desc: Trigger: Client Request: 256 matrix/product/float/GLM", "events: Ir",
                 "summary: 1024", "totals: 1024",  # 1024 / 256 = 4
                 "desc: Trigger: Client Request: 10 matrix/product/float/BvBaseUtils' single form", "totals: 25"]
        self.assertEqual(results.parse_counts(dumps, "file"),
                         {PRODUCT: {"GLM": 4.0, "BvBaseUtils' single form": 2.5}})

    def test_what_no_row_triggered_counts_for_nothing(self):
        dumps = ["totals: 7", "desc: Trigger: Program termination", "totals: 9"]
        self.assertEqual(results.parse_counts(dumps, "file"), {})

    def test_a_dump_of_something_else_is_refused(self):
        for label in ("0 matrix/product/float/GLM", "5 matrix/product/float"):
            with self.assertRaisesRegex(results.ReportError, "number of items and a row"):
                results.parse_counts([f"desc: Trigger: Client Request: {label}"], "file")


class RatioTest(unittest.TestCase):
    def test_the_best_peer_is_the_fastest_other_library(self):
        libraries = {"BvBaseUtils": 2.0, "GLM": 5.0, "Eigen": 3.0, "Imath": 4.0}
        self.assertEqual(results.best_peer(libraries), ("Eigen", 3.0))
        self.assertEqual(results.ratio(libraries), 1.5)  # 3 / 2

    def test_another_form_of_this_library_is_no_peer(self):
        libraries = {"BvBaseUtils": 2.0, "BvBaseUtils single": 1.0, "stb": 8.0}
        self.assertEqual(results.best_peer(libraries), ("stb", 8.0))
        self.assertEqual(results.ratio(libraries), 4.0)

    def test_what_memory_allows_is_no_peer(self):
        libraries = {"BvBaseUtils": 2.0, "memcpy": 1.0, "memchr": 0.5, "Eigen": 6.0}
        self.assertEqual(results.ratio(libraries), 3.0)

    def test_a_slower_row_has_a_ratio_below_one(self):
        self.assertEqual(results.ratio({"BvBaseUtils": 4.0, "GLM": 3.0}), 0.75)

    def test_without_a_peer_or_without_us_there_is_no_ratio(self):
        self.assertIsNone(results.ratio({"BvBaseUtils": 4.0}))
        self.assertIsNone(results.ratio({"GLM": 4.0}))
        self.assertIsNone(results.ratio({}))
        self.assertIsNone(results.best_peer({"BvBaseUtils": 4.0, "BvBaseUtils single": 9.0}))


class SummaryTest(unittest.TestCase):
    def test_mean_and_median_are_those_of_the_rows_with_a_ratio(self):
        rows = {("a", "1", "float"): {"BvBaseUtils": 1.0, "X": 4.0},  # 4
                ("a", "2", "float"): {"BvBaseUtils": 2.0, "X": 1.0},  # 0.5
                ("a", "3", "float"): {"BvBaseUtils": 1.0, "X": 2.0, "Y": 8.0},  # 2
                ("a", "4", "float"): {"BvBaseUtils": 4.0, "X": 1.0},  # 0.25
                ("a", "5", "float"): {"BvBaseUtils": 1.0},
                ("a", "6", "float"): {"X": 1.0}}
        facts = results.summarise(results.ratios(rows).values())
        self.assertEqual(facts["rows"], 4)
        self.assertAlmostEqual(facts["mean"], 1)  # 4 * 0.5 * 2 * 0.25 = 1
        self.assertEqual(facts["median"], 1.25)  # between 0.5 and 2

    def test_the_geometric_mean_is_the_root_of_the_product(self):
        self.assertAlmostEqual(results.geometric_mean([2, 4, 8]), 4)  # 64 ** (1 / 3)
        self.assertIsNone(results.geometric_mean([]))

    def test_a_library_counts_with_its_fastest_form_on_the_rows_that_it_shares(self):
        rows = {PRODUCT: {"BvBaseUtils": 2.0, "GLM": 3.0, "GLM (intrinsics)": 4.0},
                SPHERE: {"BvBaseUtils": 2.0, "GLM epsilon": 8.0, "GLM ULPs": 1.0, "memcpy": 1.0},
                FOUR: {"BvBaseUtils": 1.0, "BvBaseUtils' single form": 4.0},
                ("a", "b", "float"): {"GLM": 1.0}}
        self.assertEqual(results.ratios_by_library(rows),
                         {"GLM": {PRODUCT: 1.5, SPHERE: 0.5}, "GLM (intrinsics)": {PRODUCT: 2.0}})

    def test_the_ways_of_a_library_are_one_library(self):
        for name, library in (("GLM (intrinsics) ULPs", "GLM (intrinsics)"), ("GLM epsilon", "GLM"),
                              ("pcg32 ldexp", "pcg-cpp"), ("std::mt19937", "standard library"),
                              ("mt19937 generate_canonical", "standard library"), ("XXH3_64bits", "xxHash"),
                              ("stb_perlin", "stb_perlin"), ("hand-written", "hand-written")):
            self.assertEqual(results.library_of(name), library)

    def test_what_another_build_gains_is_told_for_us_and_the_peers(self):
        ours, peers = results.gains({PRODUCT: {"BvBaseUtils": 3.0, "X": 4.0, "Y": 1.0}, SPHERE: {"BvBaseUtils": 1.0}},
                                    {PRODUCT: {"BvBaseUtils": 2.0, "X": 4.0}})
        self.assertEqual(ours, {PRODUCT: 1.5})  # 3 / 2
        self.assertEqual(peers, {(*PRODUCT, "X"): 1.0})

    def test_rows_without_a_peer_and_peers_without_a_row_are_named(self):
        problems = results.incomplete({PRODUCT: {"BvBaseUtils": 1.0}, SPHERE: {"Imath": 1.0},
                                      FOUR: {"BvBaseUtils": 1.0, "hand-written": 1.0}})
        self.assertEqual(problems, ["matrix/product/float has no peer", "ray/sphere/double has no row of BvBaseUtils"])

    def test_packets_are_held_against_the_hand_written_kernel_and_nothing_else(self):
        rows = {FOUR: {"BvBaseUtils": 3.0, "hand-written": 2.0, "Embree": 1.0},
                SPHERE: {"BvBaseUtils": 3.0, "hand-written": 2.0},
                ("ray", "eight rays, one box", "float"): {"BvBaseUtils": 1.0}}
        self.assertEqual(results.packet_ratios(rows), [(FOUR, 1.5)])  # 3 / 2


class FloorTest(unittest.TestCase):
    def test_a_floor_names_a_row_with_or_without_its_precision(self):
        floors = results.parse_floors([{"row": "matrix/product", "reason": "both"},
                                       {"row": "ray/sphere/float", "reason": "one"}], "file")
        self.assertEqual(results.floor_of(PRODUCT, floors), "both")
        self.assertEqual(results.floor_of(("ray", "sphere", "float"), floors), "one")
        self.assertIsNone(results.floor_of(SPHERE, floors))

    def test_the_reason_of_the_precision_comes_first(self):
        floors = {"matrix/product": "both", "matrix/product/float": "one"}
        self.assertEqual(results.floor_of(PRODUCT, floors), "one")

    def test_a_floor_without_a_reason_of_one_line_is_refused(self):
        for wrong in ({"row": "a/b"}, {"row": "a/b", "reason": ""}, {"row": "a/b", "reason": "two\nlines"},
                      {"row": "a", "reason": "x"}, {"row": "a/b", "reason": "x", "build": "gcc"}):
            with self.assertRaisesRegex(results.ReportError, "a row and a reason"):
                results.parse_floors([wrong], "file")

    def test_a_floor_that_is_there_twice_is_refused(self):
        with self.assertRaisesRegex(results.ReportError, "twice"):
            results.parse_floors([{"row": "a/b", "reason": "x"}, {"row": "a/b", "reason": "y"}], "file")

    def test_the_floors_of_this_library_can_be_read(self):
        path = os.path.join(ROOT, "benchmarks", "floors.json")
        for row in results.parse_floors(results.load(path), path):
            self.assertIn(row.split("/")[0], results.TOPICS)


class QuietTest(unittest.TestCase):
    # user, nice, system, idle, iowait, irq, softirq, steal, guest, guest_nice, in hundredths of a second
    STAT = "cpu  100 20 30 5000 600 4 5 41 90 0\ncpu0 1 2 3\n"

    def test_busy_is_all_but_waiting_and_guests_that_are_counted_already(self):
        self.assertAlmostEqual(quiet.busy_seconds(self.STAT, 100), 2.0)  # 100 + 20 + 30 + 4 + 5 + 41 = 200

    def test_others_use_what_is_busy_without_us(self):
        # 10 s pass; the machine is busy for 15 of its processors' seconds, of which 9 are ours: 6 in 10
        self.assertAlmostEqual(quiet.others((5, 1, 100), (20, 10, 110)), 0.6)

    def test_nobody_uses_less_than_nothing(self):
        self.assertEqual(quiet.others((5, 1, 100), (14, 11, 110)), 0)  # clocks of two resolutions

    def test_the_spread_is_the_median_over_the_rows(self):
        rows = [entry(f"a/{i}/float/X", 1, "cv") for i in range(3)]
        for row, variation in zip(rows, (0.5, 0.01, 0.04)):
            row["items_per_second"] = variation
        self.assertEqual(quiet.spread(document(entry("a/0/float/X", 1), *rows)), 0.04)
        self.assertIsNone(quiet.spread(document(entry("a/0/float/X", 1))))

    def test_both_limits_are_looked_at_and_nothing_is_said_within_them(self):
        self.assertEqual(quiet.disturbances(0.1, 0.02), [])
        self.assertEqual(quiet.disturbances(None, None), [])
        self.assertEqual(quiet.disturbances(0.5, 0.03), ["other programs used 0.50 of a processor (at most 0.1)",
                                                         "repetitions differed by 3.0% (at most 2%)"])

    def test_the_command_is_run_and_what_others_used_is_recorded(self):
        with tempfile.TemporaryDirectory() as folder:
            record = os.path.join(folder, "gcc.quiet")
            script = os.path.join(ROOT, "benchmarks", "quiet.py")
            run = subprocess.run([sys.executable, "-B", script, "run", record, "sh", "-c", "echo measured; exit 3"],
                                 capture_output=True, text=True, check=False)
            self.assertEqual((run.returncode, run.stdout), (3, "measured\n"))
            self.assertGreaterEqual(results.load(record)["others"], 0)

    def test_a_folder_of_results_is_refused_with_its_reasons(self):
        with tempfile.TemporaryDirectory() as folder:
            script = os.path.join(ROOT, "benchmarks", "quiet.py")
            with open(os.path.join(folder, "gcc.json"), "w", encoding="utf-8") as file:
                json.dump(document(), file)
            refusal = "quiet: GCC -O2: other programs used 0.25 of a processor (at most 0.1)\n"
            for used, code, message in ((0.05, 0, ""), (0.25, 1, refusal)):
                with open(os.path.join(folder, "gcc.quiet"), "w", encoding="utf-8") as file:
                    json.dump({"others": used}, file)
                run = subprocess.run([sys.executable, "-B", script, "check", folder], capture_output=True, text=True,
                                     check=False)
                self.assertEqual((run.returncode, run.stderr), (code, message))


class TextTest(unittest.TestCase):
    def test_a_ratio_just_below_one_never_reads_as_one(self):
        self.assertEqual(formats.times(0.9999), "0.999")
        self.assertEqual(formats.marked(0.9999), "**0.999**")
        self.assertEqual(formats.marked(0.75), "**0.75**")
        self.assertEqual(formats.marked(1.0), "1.00")
        self.assertEqual(formats.times(12.34), "12.3")
        self.assertEqual(formats.times(None), "–")

    def test_times_have_three_digits(self):
        self.assertEqual([formats.number(value) for value in (0.1234, 1.234, 12.34, 1234.5, None)],
                         ["0.12", "1.23", "12.3", "1,234", "–"])

    def test_a_table_has_a_line_for_its_header_its_rule_and_each_row(self):
        self.assertEqual(formats.table(["a", "b"], [["x|y", "1"]]), "| a | b |\n|---|---:|\n| x\\|y | 1 |\n")

    def test_a_warning_stands_in_front_of_every_table_and_nowhere_else(self):
        page = "# Page\n\n| a | b |\n|---|---:|\n| x | 1 |\n\nwords | words\n\n| c |\n|---|\n| y |\n"
        self.assertEqual(formats.warned(page, "Noise."),
                         "# Page\n\n**Noise.**\n\n| a | b |\n|---|---:|\n| x | 1 |\n\nwords | words\n\n"
                         "**Noise.**\n\n| c |\n|---|\n| y |\n")
        self.assertEqual(formats.warned(page, ""), page)


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

    def make(self, floors=(), notes=""):
        """Runs the report without its charts, which need a package that the tests do without."""
        drawn = []
        original, report.draw = report.draw, lambda title, rows, path: drawn.append((title, os.path.basename(path)))
        self.addCleanup(setattr, report, "draw", original)
        self.write("floors.json", [{"row": row, "reason": reason} for row, reason in floors])
        path = os.path.join(self.source, "NOTES.md")
        with open(path, "w", encoding="utf-8") as file:
            file.write(notes)
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            report.main(self.source, self.output, os.path.join(self.source, "floors.json"), path)
        return drawn, printed.getvalue()

    def test_every_build_has_its_columns_and_a_row_of_one_build_only_has_dashes_in_the_others(self):
        self.write("gcc.json", document(*pair("matrix/product/float", 2, ("GLM", 3))))
        self.write("clang.json", document(*pair("matrix/product/float", 4, ("GLM", 3)),
                                          *pair("ray/sphere/double", 1, ("Imath", 3))))
        drawn, printed = self.make()
        page = self.read("README.md")
        self.assertEqual(drawn, [("GCC -O2", "ratios-gcc.svg"), ("Clang -O2", "ratios-clang.svg")])
        self.assertIn("| topic | rows | GCC -O2: geometric mean | median | Clang -O2: geometric mean | median |", page)
        self.assertIn("| matrix | 1 | 1.50 | 1.50 | **0.75** | **0.75** |", page)
        self.assertIn("| ray | 1 | – | – | 3.00 | 3.00 |", page)
        self.assertIn("| **all of these** | 2 | 1.50 | 1.50 | 1.50 | 1.88 |", page)  # (0.75 * 3) ** 0.5; 3.75 / 2
        rows = self.read("details.md")
        self.assertIn("| product, float | 2.00 | 3.00 GLM | 1.50 | 4.00 | 3.00 GLM | **0.75** |", rows)
        self.assertIn("| sphere, double | – | – | – | 1.00 | 3.00 Imath | 3.00 |", rows)
        self.assertLess(rows.index("### Matrix"), rows.index("### Ray"))
        self.assertIn("Clang -O2: 2 rows of mathematics, geometric mean 1.50, median 1.88, 1 below 1.0", printed)
        self.assertIn("0.75  matrix/product/float: 4.00 ns, GLM 3.00 ns", printed)

    def test_each_library_has_its_rows_means_and_wins_in_each_build(self):
        self.write("gcc.json", document(*pair("matrix/product/float", 2, ("GLM", 1), ("Eigen", 4)),
                                        *pair("ray/sphere/double", 1, ("GLM", 8)),
                                        *pair("ray/box/double", 1, ("GLM", 1))))
        self.write("clang.json", document(*pair("matrix/product/float", 2, ("GLM", 3))))
        self.make()
        page = self.read("README.md")
        lines = [line for line in page.splitlines() if line.startswith(("| GLM", "| Eigen"))]
        self.assertEqual(lines, ["| GLM | GCC -O2 | 3 | 1.59 | 1.00 | 1 |",  # (0.5 * 8 * 1) ** (1 / 3) = 1.587
                                 "| GLM | Clang -O2 | 1 | 1.50 | 1.50 | 0 |",
                                 "| Eigen | GCC -O2 | 1 | 2.00 | 2.00 | 0 |"])
        self.assertLess(page.index("## How to read it"), page.index("## Against each library"))
        self.assertLess(page.index("## Against each library"), page.index("## Against the best of all"))
        self.assertLess(page.index("## Against the best of all"), page.index("## Charts"))

    def test_text_and_hashes_stand_on_a_page_of_their_own_and_enter_no_mean(self):
        self.write("gcc.json", document(*pair("matrix/product/float", 2, ("GLM", 4)),
                                        *pair("string/copy/char", 1, ("std", 10)),
                                        *pair("hash/FNV 8/32 bit", 4, ("std::hash", 1))))
        _, printed = self.make()
        page, text = self.read("README.md"), self.read("text.md")
        self.assertIn("| **all of these** | 1 | 2.00 | 2.00 |", page)
        self.assertNotIn("standard library", page)
        self.assertNotIn("copy", self.read("details.md"))
        self.assertIn("| hash | 1 | **0.25** | **0.25** |", text)
        self.assertIn("| string | 1 | 10.0 | 10.0 |", text)
        self.assertIn("| hash/FNV 8/32 bit | GCC -O2 | 4.00 | – | std::hash | 1.00 | – | **0.25** |", text)
        self.assertNotIn("matrix", text)
        self.assertIn("GCC -O2: 1 rows of mathematics, geometric mean 2.00", printed)

    def test_rows_at_a_floor_are_counted_apart_with_both_counts_and_the_reason(self):
        self.write("gcc.json", document(*pair("matrix/product/float", 1, ("GLM", 2)),
                                        *pair("matrix/product/double", 1, ("GLM", 8)),
                                        *pair("scalar/IsEqual, near/float", 4, ("GLM epsilon", 1))))
        with open(os.path.join(self.source, "gcc.callgrind"), "w", encoding="utf-8") as file:
            file.write("desc: Trigger: Client Request: 8 scalar/IsEqual, near/float/BvBaseUtils\ntotals: 800\n"
                       "desc: Trigger: Client Request: 8 scalar/IsEqual, near/float/GLM epsilon\ntotals: 340\n")
        _, printed = self.make(floors=[("scalar/IsEqual, near", "Two tests, where the peers make one.")])
        page = self.read("README.md")
        self.assertNotIn("| scalar |", page)
        self.assertIn("| **all of these** | 2 | 4.00 | 5.00 |", page)  # (2 * 8) ** 0.5; (2 + 8) / 2
        self.assertIn("| rows at their floor | 1 | **0.25** | **0.25** |", page)
        self.assertIn("| both together | 3 | 1.59 | 2.00 |", page)  # (2 * 8 * 0.25) ** (1 / 3) = 1.587
        self.assertIn("| GLM | GCC -O2 | 3 | 1.59 | 2.00 | 1 |", page)
        self.assertIn("| scalar/IsEqual, near/float | GCC -O2 | 100 | 42.5 | GLM epsilon | **0.25** | "
                      "Two tests, where the peers make one. |", self.read("details.md"))
        self.assertNotIn("neither among the floors nor in the notes", printed)

    def test_a_slow_row_that_nobody_explains_is_pointed_out(self):
        self.write("gcc.json", document(*pair("a/b/float", 100, ("X", 94)), *pair("a/c/float", 100, ("X", 94)),
                                        *pair("a/d/float", 100, ("X", 94)), *pair("a/e/float", 100, ("X", 96)),
                                        *pair("a/f/float", 100, ("X", 94))))
        _, printed = self.make(floors=[("a/b/float", "reason")], notes="`a/c` and `a/d/float`, and more.")
        self.assertEqual([line for line in printed.splitlines() if "neither" in line],
                         ["  a/f/float is below 0.95, and neither among the floors nor in the notes"])

    def test_a_floor_that_names_no_row_is_pointed_out_where_every_topic_was_measured(self):
        keys = [(topic, "a", "float") for topic in results.TOPICS]
        floors = {"matrix/a": "x", "ray/a/float": "x", "ray/a/double": "x", "box/b": "x"}
        self.assertEqual(report.unknown_floors(keys, floors), ["ray/a/double", "box/b"])
        self.assertEqual(report.unknown_floors(keys[1:], floors), [])

    def test_equal_bits_cost_what_the_build_with_contraction_saves(self):
        self.write("gcc-v3.json", document(*pair("matrix/product/float", 3, ("GLM", 4)),
                                           *pair("ray/sphere/double", 6, ("GLM", 2)),
                                           *pair("string/copy/char", 9, ("std", 9))))
        self.write("gcc-v3-contraction.json", document(*pair("matrix/product/float", 2, ("GLM", 4)),
                                                       *pair("ray/sphere/double", 1, ("GLM", 1)),
                                                       *pair("string/copy/char", 1, ("std", 1))))
        drawn, _ = self.make()
        page = self.read("README.md")
        self.assertIn("| matrix | 1 | 1.50 | 1.00 |", page)  # 3 / 2; 4 / 4
        self.assertIn("| ray | 1 | 6.00 | 2.00 |", page)  # 6 / 1; 2 / 1
        self.assertIn("| **all of these** | 2 | 3.00 | 1.41 |", page)  # (1.5 * 6) ** 0.5; (1 * 2) ** 0.5
        self.assertEqual([chart for _, chart in drawn], ["ratios-gcc-v3.svg"])
        self.assertNotIn("contraction", self.read("text.md"))

    def test_a_machine_that_was_not_quiet_is_marked_in_every_table(self):
        self.write("gcc.json", document(*pair("matrix/product/float", 2, ("GLM", 4)),
                                        *pair("string/copy/char", 1, ("std", 10))))
        for used, warnings in ((0.05, False), (0.7, True)):
            self.write("gcc.quiet", {"others": used})
            drawn, _ = self.make()
            self.assertEqual("not quiet" in drawn[0][0], warnings)
            for name in ("README.md", "details.md", "text.md"):
                page = self.read(name)
                self.assertEqual(page.count("**The machine was not quiet: GCC -O2.**"),
                                 page.count("\n|---") if warnings else 0)
                self.assertIn("\n|---", page)
        self.assertIn("| GCC -O2 | 0.70 | – |", self.read("README.md"))
        self.assertIn("Beyond 0.1 of a processor or 2%,", self.read("README.md"))

    def test_every_library_stands_in_the_details_the_fastest_first(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 2),
                                        entry("matrix/product/float/GLM", 3),
                                        entry("matrix/product/float/Eigen", 1)))
        self.make()
        every = self.read("details.md").split("## Every time\n")[1]
        lines = [line for line in every.splitlines() if line.startswith("| product")]
        self.assertEqual(lines, ["| product, float | Eigen | 1.00 |", "| product, float | BvBaseUtils | 2.00 |",
                                 "| product, float | GLM | 3.00 |"])

    def test_the_instructions_of_a_slow_row_stand_beside_its_time(self):
        self.write("gcc.json", document(entry("matrix/product/float/BvBaseUtils", 4),
                                        entry("matrix/product/float/GLM", 3)))
        with open(os.path.join(self.source, "gcc.callgrind"), "w", encoding="utf-8") as file:
            file.write("desc: Trigger: Client Request: 8 matrix/product/float/BvBaseUtils\ntotals: 800\n"
                       "desc: Trigger: Client Request: 8 matrix/product/float/GLM\ntotals: 340\n")
        self.make()
        self.assertIn("| matrix/product/float | GCC -O2 | 4.00 | 100 | GLM | 3.00 | 42.5 | **0.75** |",
                      self.read("details.md"))

    def test_batch_rows_are_held_against_the_single_form_and_the_peers(self):
        self.write("gcc.json", document(entry("batch/noise/float/BvBaseUtils", 2),
                                        entry("batch/noise/float/BvBaseUtils' single form", 10),
                                        entry("batch/noise/float/memcpy", 1),
                                        entry("batch/noise/float/stb", 9)))
        self.make()
        page = self.read("details.md")
        self.assertIn("| GCC -O2 | batch, ns | single form, ns | times faster | best peer, ns | ratio | memcpy, ns | "
                      "memcpy over batch |", page)
        self.assertIn("| noise, float | 2.00 | 10.0 | 5.00 | 9.00 stb | 4.50 | 1.00 | 0.50 |", page)

    def test_packets_stand_beside_the_hand_written_kernel(self):
        self.write("gcc.json", document(*pair("ray/four rays, one box/float", 6, ("hand-written", 5))))
        self.make()
        self.assertIn("| ray/four rays, one box/float | GCC -O2 | 6.00 | 5.00 | 1.20 |", self.read("details.md"))

    def test_costs_stand_in_the_page_relative_to_cmath(self):
        self.write("gcc.json", document(entry("a/b/float/BvBaseUtils", 1), entry("a/b/float/X", 1)))
        header = {"<cmath>": {"ms": 20.0, "lines": 1000}, "bv/String.h": {"ms": 50.0, "lines": 2500}}
        self.write("costs.json", {
            "size": 300000, "size_limit": 409600, "build": {"wall": 12.34, "cpu": 20.0, "jobs": 2},
            "load": {"plain": 500, "linked": 700, "dlopen": 200, "runs": 3},
            "headers": {"names": list(header), "compilers": ["GCC"], "measured": {"GCC": header}, "runs": 5}})
        self.make()
        page = self.read("README.md")
        self.assertIn("| shared library, stripped | 300,000 bytes |", page)
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
        drawn = []
        for name in ("one.svg", "two.svg"):
            path = os.path.join(self.source, name)
            charts.draw("GCC -O2", rows, path)
            with open(path, encoding="utf-8") as file:
                drawn.append(file.read())
        self.assertEqual(drawn[0], drawn[1])
        self.assertIn("1.50  GLM", drawn[0])
        self.assertIn("0.50  Imath", drawn[0])
        self.assertNotIn("four rays", drawn[0])  # no peer, no bar


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
        wrong, notes = digest.compare(self.RECORD, found)
        self.assertEqual(wrong, [])
        self.assertEqual(notes, ["machine-dependent.rotations: 8 instead of 4"])

    def test_what_a_machine_cannot_have_is_missing_there(self):
        found = dict(self.RECORD)
        del found["packets-avx.float"]
        self.assertEqual(digest.compare(self.RECORD, found, ["packets-avx"]),
                         ([], ["packets-avx.float: left out by --without"]))
        self.assertEqual(digest.compare(self.RECORD, self.RECORD, ["packets-avx"]),
                         (["packets-avx.float: there against --without"], []))
        self.assertEqual(digest.compare(self.RECORD, found, ["packets", "packets-avx.f"]),
                         (["packets-avx.float: missing from the program's output"], []))

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

    def test_a_change_that_is_meant_is_put_on_record_below_the_head(self):
        with tempfile.TemporaryDirectory() as folder:
            record, program = os.path.join(folder, "record"), os.path.join(folder, "program")
            for path, text in ((program, "#!/bin/sh\necho noise 1a\necho vectors 00ff\n"),
                               (record, "# head\n# of two lines\nvectors 00fe\nold 2\n")):
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
            os.chmod(program, 0o755)
            script = os.path.join(ROOT, "tests", "digest", "digest.py")
            subprocess.run([sys.executable, script, "--write", program, record], check=True)
            with open(record, encoding="utf-8") as file:
                self.assertEqual(file.read(), "# head\n# of two lines\nnoise 1a\nvectors 00ff\n")
            with open(record, "a", encoding="utf-8") as file:
                file.write("wide.float 3\n")
            subprocess.run([sys.executable, script, "--write", "--without=wide", "--without=noise", program, record],
                           check=True)
            with open(record, encoding="utf-8") as file:
                self.assertEqual(file.read(), "# head\n# of two lines\nnoise 1a\nvectors 00ff\nwide.float 3\n")


class MachineTest(unittest.TestCase):
    def versions(self, dpkg_query):
        """What is told of two packages where dpkg-query is such a script, or missing."""
        with tempfile.TemporaryDirectory() as folder:
            if dpkg_query:
                path = os.path.join(folder, "dpkg-query")
                with open(path, "w", encoding="utf-8") as file:
                    file.write("#!/bin/sh\n" + dpkg_query)
                os.chmod(path, 0o755)
            with unittest.mock.patch.dict(os.environ, PATH=folder):
                return machine.versions(["g++", "clang"])

    def test_packages_are_told_with_their_versions(self):
        self.assertEqual(self.versions("echo g++ 4:12; echo clang 1:14"), ["clang 1:14", "g++ 4:12"])

    def test_packages_that_are_not_installed_are_left_out(self):
        self.assertEqual(self.versions("echo 'g++ '; echo clang 1:14; exit 1"), ["clang 1:14"])

    def test_without_dpkg_no_package_is_told(self):
        self.assertEqual(self.versions(None), [])


class MeasurementTest(unittest.TestCase):
    def test_the_ray_tracers_start_cancels_out(self):
        # 500 rays in 7 s and 100 rays in 3 s: 400 rays in 4 s, whatever both of them did first.
        self.assertEqual(raytracer.rate((500, 7.0), (100, 3.0)), 100.0)

    def test_a_picture_that_is_no_slower_with_more_rays_is_refused(self):
        with contextlib.redirect_stderr(io.StringIO()), self.assertRaises(SystemExit):
            raytracer.rate((500, 3.0), (100, 3.0))

    def test_a_command_that_fails_is_named(self):
        with self.assertRaisesRegex(SystemExit, "costs: failed: false"):
            costs.run(["false"])

    def test_processor_time_is_that_of_the_command_alone(self):
        _, idle = costs.timed(["sleep", "0.2"])
        self.assertLess(idle, 0.1)


if __name__ == "__main__":
    unittest.main()
