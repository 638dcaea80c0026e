#!/usr/bin/env python3
"""Tests of the commands in tools/, each in a small copy of the tree whose path has a space, with stubs for programs.

A stub notes its name and arguments and succeeds. `cmake` also answers for the libraries that are looked for, and makes a
stub of the ray tracer where the real one is built.
"""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BASH = shutil.which("bash")
TOOLS = ("awk", "bash", "env", "dirname", "sed", "grep", "sort", "cut", "mktemp", "mkdir", "mv", "rm", "cat", "sleep",
         "chmod", "head", "nproc", "paste", "tail", "wc", "xargs")
PROGRAMS = ("cmake", "ctest", "ninja", "c++", "g++", "clang++", "pkg-config", "python3", "objdump", "gdb", "lldb-14",
            "lintian", "dpkg-shlibdeps", "qemu-x86_64", "x86_64-w64-mingw32-g++-posix", "wine", "wineserver",
            "aarch64-linux-gnu-g++", "qemu-aarch64", "s390x-linux-gnu-g++", "qemu-s390x", "clang++-22", "ld.lld", "em++",
            "node", "doxygen", "chromium", "chromedriver", "strip", "taskset", "abidiff", "clang-format", "clang-tidy",
            "run-clang-tidy", "cppcheck", "gcovr", "git", "shellcheck", "valgrind", "id", "dpkg", "dpkg-query", "apt-get")

GROUPS = ("build", "gcc", "clang", "clang-new", "libcxx", "msan", "lto", "mingw", "test", "demo", "check", "bench",
          "package", "clean-root", "aarch64", "s390x", "wasm", "docs", "live", "browser")

NOTE = r"""#!{bash}
[ "${{0##*/}} $1" = "python3 -c" ] || printf '%s\n' "${{0##*/}} $*" >>"$NOTES"
"""
STUBS = {
    "id": "#!{bash}\necho ${{USER_ID:-1000}}\n",
    # dpkg has every package but these
    "dpkg-query": "#!{bash}\n[[ \" $LACKING \" = *\" ${{!#}} \"* ]] || echo installed\n",
    "cmake": NOTE + r"""
if [ "$1 $2" = "-S tools/find" ]; then
    mkdir "$4"
    while read -r package _; do
        [[ " $LACKING " != *" $package "* ]] || echo "$package"
    done <"${{7#-DWANTED=}}" >"$4/missing"
    exit
fi
printf 'launcher=%s disable=%s\n' "$CMAKE_CXX_COMPILER_LAUNCHER" "$CCACHE_DISABLE" >>"$NOTES"
if [ "$1 $2" = "--build build/demo/raytracer" ]; then
    mkdir -p "$2"
    printf '#!{bash}\necho "raytracer $*" >>"$NOTES"\n' >"$2/raytracer"
    chmod +x "$2/raytracer"
fi
""",
}


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tools test ")
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name).resolve()
        self.top.chmod(0o755)
        self.tree, self.bin, self.scratch = self.top / "a tree", self.top / "bin", self.top / "scratch"
        self.notes = self.top / "notes"
        for path in (self.tree, self.bin, self.scratch):
            path.mkdir()
        self.scratch.chmod(0o777)
        shutil.copytree(ROOT / "tools", self.tree / "tools")
        for name in TOOLS:
            (self.bin / name).symlink_to(shutil.which(name))
        for name in PROGRAMS:
            self.stub(name)
        self.environment = {"PATH": str(self.bin), "TMPDIR": str(self.scratch), "NOTES": str(self.notes),
                            "HOME": "/dev/null/home"}

    def stub(self, name, text=None):
        path = self.bin / name
        path.write_text((text or STUBS.get(name, NOTE)).format(bash=BASH), encoding="utf-8")
        path.chmod(0o755)

    def without(self, *names):
        for name in names:
            (self.bin / name).unlink()

    def real(self, name):
        """Has the command use a program itself, if the machine has it."""
        if not shutil.which(name):
            self.skipTest(f"{name} is not installed")
        (self.bin / name).unlink(missing_ok=True)
        (self.bin / name).symlink_to(shutil.which(name))

    def run_command(self, *command, prefix=(), **environment):
        """Exit code, output and error output. Whatever happens, no temporary file is left."""
        self.notes.unlink(missing_ok=True)
        run = subprocess.run([*prefix, self.tree / command[0], *command[1:]], env=self.environment | environment,
                             cwd="/", capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual(list(self.scratch.iterdir()), [])
        return run.returncode, run.stdout, run.stderr

    def noted(self):
        return self.notes.read_text(encoding="utf-8").splitlines() if self.notes.exists() else []

    def assert_refused(self, message, *command, **environment):
        """One line says why, nothing is installed, and nothing is built."""
        self.assertEqual(self.run_command(*command, **environment), (2, "", message + "\n"))
        self.assertEqual([line for line in self.noted() if not line.startswith("cmake -S tools/find ")], [])
        self.assertFalse((self.tree / "build").exists())

    def assert_runs(self, *command, **environment):
        code, _, errors = self.run_command(*command, **environment)
        self.assertEqual((code, errors), (0, ""))


class Arguments(CommandTest):
    def test_a_size_that_is_none_is_refused(self):
        for size in ("0x0", "0x10", "10x0", "-5x5", "+5x5", "10", "10x", "x10", "10x10x10", "10 x 10", "10X10", "1e3x10",
                     "010x10", "16385x1", "1x16385", "1x18446744073709551617", "", "1x1\n", "*"):
            message = f"tools/demo: '{size}' is not WIDTHxHEIGHT with both sides from 1 to 16384"
            if size.startswith("-"):
                message = f"tools/demo: no such option: {size} (usage: tools/demo [WIDTHxHEIGHT])"
            self.assert_refused(message, "tools/demo", size, USER_ID="0", LACKING="libpng-dev")
            self.assertEqual(self.noted(), [])

    def test_the_smallest_and_the_largest_size_are_drawn(self):
        for size in ("1x1", "16384x16384", "640x400"):
            self.assert_runs("tools/demo", size)
            self.assertIn(f"raytracer examples/data/bunny.obj --size {size} --output build/demo/bunny.png", self.noted())

    def test_the_largest_side_is_the_one_of_the_ray_tracer(self):
        options = (ROOT / "examples" / "raytracer" / "Options.cpp").read_text(encoding="utf-8")
        self.assertIn("MAX_SIDE = 16384;", options)

    def test_unknown_arguments_are_refused(self):
        groups = f"(groups: {', '.join(GROUPS)})"
        presets = ("(presets: release, clang, clang-v3, v3, debug, sanitize, sanitize-gcc, msan, tsan, tsan-gcc, plain, "
                   "clang-new, libcxx, lto, clang-lto, stack-zero, stack-pattern, qemu64, core2duo, mingw, mingw-static, "
                   "mingw-o0, mingw-clang, mingw-clang-static, aarch64, aarch64-clang, s390x, wasm)")
        checks = ("(there are: analysis abi interface coverage sanitizers users conformance exhaustive fuzz release clang "
                  "clang-v3 clang-new libcxx lto clang-lto debug v3 stack-zero stack-pattern plain qemu64 core2duo mingw "
                  "mingw-static mingw-o0 mingw-clang mingw-clang-static aarch64 aarch64-clang s390x wasm sanitize-gcc msan "
                  "tsan-gcc)")
        size = "(usage: tools/demo [WIDTHxHEIGHT])"
        for message, *command in (
                (f"no such option: --fast {size}", "tools/demo", "--fast"),
                (f"one size only {size}", "tools/demo", "10x10", "20x20"),
                (f"no such preset: 'fast' {presets}", "tools/test", "fast"),
                (f"no such preset: 'base' {presets}", "tools/test", "base"),
                (f"no such preset: '' {presets}", "tools/test", ""),
                (f"no such preset: '--fast' {presets}", "tools/test", "--fast"),
                ("one preset only (usage: tools/test [--quick | --exhaustive] [PRESET])", "tools/test", "release", "clang"),
                ("not with --exhaustive: 'mingw' (presets: release, clang, v3)", "tools/test", "--exhaustive", "mingw"),
                ("not with --quick: 'tsan', which runs a few tests as it is", "tools/test", "--quick", "tsan"),
                ("no such option: --fast (usage: tools/bench [--quick | --check] [--anyway] [FILTER])", "tools/bench",
                 "--fast"),
                ("--quick and --check exclude each other", "tools/bench", "--quick", "--check"),
                ("one FILTER only", "tools/bench", "matrix", "ray"),
                ("'(' is not a regular expression", "tools/bench", "--quick", "("),
                ("no such option: --fast (usage: tools/package [--check])", "tools/package", "--fast"),
                ("one option only (usage: tools/package [--check])", "tools/package", "--check", "--check"),
                ("no arguments are taken (usage: tools/docs)", "tools/docs", "--fast"),
                ("no such option: --fast (usage: tools/live [--test | --pictures])", "tools/live", "--fast"),
                ("one option only (usage: tools/live [--test | --pictures])", "tools/live", "--test", "--pictures"),
                ("no such option: --fast (see tools/fuzz --help)", "tools/fuzz", "--fast"),
                ("not a number from 1 on: --runs=0", "tools/fuzz", "--runs=0"),
                ("not a number from 1 on: --seconds=1e3", "tools/fuzz", "--seconds=1e3"),
                ("no such target: Everything (there are: *)", "tools/fuzz", "Everything"),
                ("no such option: --fast (see tools/mutate --help)", "tools/mutate", "--fast"),
                ("not a number from 1 on: --limit=0", "tools/mutate", "--limit=0", "core/Hash.cpp"),
                ("no such source or header of the library: core/None.cpp", "tools/mutate", "core/None.cpp"),
                ("no such source or header of the library: tools/mutate", "tools/mutate", "tools/mutate"),
                ("no such source or header of the library: core/../tools/a.h", "tools/mutate", "core/../tools/a.h"),
                ("no unit is named (usage: tools/mutate [--limit=N | --again] [--write] UNIT...)", "tools/mutate",
                 "--write"),
                ("no such option: --fast (see tools/check --help)", "tools/check", "--fast"),
                (f"no such check: everything {checks}", "tools/check", "everything"),
                ("--accept goes with abi or interface alone (usage: tools/check abi --accept)", "tools/check", "--accept"),
                ("--accept goes with abi or interface alone (usage: tools/check abi --accept)", "tools/check", "abi",
                 "interface", "--accept"),
                (f"no such group: games {groups}", "tools/setup", "build", "games"),
                (f"no such group: games {groups}", "tools/setup", "--list", "games"),
                (f"no such group: build.* {groups}", "tools/setup", "build.*"),
                (f"no group is named {groups}", "tools/setup"),
                (f"no group is named {groups}", "tools/setup", "--list")):
            self.assert_refused(f"{command[0]}: {message}", *command, USER_ID="0", LACKING="libpng-dev libutfcpp-dev")
            self.assertEqual(self.noted(), [])

    def test_every_preset_is_known(self):
        presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))["buildPresets"]
        self.assertEqual(len(presets), 28)
        for preset in (preset["name"] for preset in presets):
            self.assert_runs("tools/test", preset)
            self.assertIn(f"ctest --preset {preset}", self.noted())

    def test_the_quick_tests_are_built_and_run_alone(self):
        self.assert_runs("tools/test", "--quick", "mingw")
        self.assertIn("cmake --build --preset mingw --target quick_tests", self.noted())
        self.assertIn("ctest --preset mingw -L quick", self.noted())

    def test_the_exhaustive_tests_are_built_and_run_alone(self):
        self.assert_runs("tools/test", "--exhaustive")
        self.assertIn("cmake --build --preset release --target exhaustive_tests", self.noted())
        self.assertIn("ctest --preset release -C exhaustive -L exhaustive --verbose", self.noted())

    def test_one_server_of_wine_serves_all_programs_for_windows(self):
        self.assert_runs("tools/test", "mingw")
        servers = [line for line in self.noted() if line.startswith(("wine", "cmake --preset", "ctest"))]
        self.assertEqual(servers, ["wineserver -p", "wine wineboot", "cmake --preset mingw", "ctest --preset mingw",
                                   "wineserver -k"])
        self.assert_runs("tools/test", "release")
        self.assertNotIn("wineserver -p", self.noted())

    def test_the_table_of_operations_is_checked_or_renewed(self):
        self.stub("ccache")
        for options in ((), ("--accept",)):
            self.assert_runs("tools/check", "interface", *options)
            self.assertEqual(self.noted()[-1], " ".join(("python3 -B tests/build/operations.py", *options)))

    def test_the_benchmarks_are_built_as_far_as_stubs_go(self):
        for options, compilers in ((("--check",), 1), (("--quick", "matrix/.*"), 4)):
            code, output, _ = self.run_command("tools/bench", *options)
            self.assertNotEqual(code, 0)  # no benchmarks are there to be run
            self.assertTrue(output.startswith("Building the library\nBuilding the benchmarks: GCC -O2\n"), output)
            configured = [line for line in self.noted() if line.startswith("cmake -S benchmarks ")]
            self.assertEqual(len(configured), compilers)

    def test_each_check_has_a_line_with_its_result(self):
        self.stub("ccache")
        code, output, errors = self.run_command("tools/check")
        self.assertEqual((code, errors), (0, ""))
        self.assertEqual([line.split()[:2] for line in output.splitlines()],
                         [[name, "passes"] for name in ("analysis", "abi", "interface", "coverage", "sanitizers", "users",
                                                        "conformance", "total")])
        self.assertIn("python3 -B tests/build/coverage.py", self.noted())
        for preset in ("sanitize", "tsan"):
            self.assertIn(f"ctest --preset {preset}", self.noted())

    def test_a_test_that_the_machine_cannot_run_is_named_and_not_counted(self):
        self.stub("ccache")
        self.stub("ctest", "#!{bash}\nprintf '100%% tests passed, 0 tests failed out of 9\\n\\n"
                           "The following tests did not run:\\n\\t  7 - Loops.With_AVX-512 (Skipped)\\n'\n")
        code, output, errors = self.run_command("tools/check", "users", "sanitizers")
        self.assertEqual((code, errors), (0, ""))
        self.assertRegex(output, "^users         passes  0:0.  8 tests pass; skipped: Loops.With_AVX-512\n"
                                 "sanitizers    passes  0:0.  8 tests pass, 8 tests pass; "
                                 "skipped: Loops.With_AVX-512 Loops.With_AVX-512\n"
                                 "total         passes  0:0.\n$")

    def test_the_long_checks_are_made_on_demand(self):
        self.stub("ccache")
        programs = self.tree / "build" / "fuzz" / "fuzz"
        for folder, name, text in ((self.tree / "fuzz", "Text.cpp", ""), (programs, "FuzzText", f"#!{BASH}\n")):
            folder.mkdir(parents=True)
            (folder / name).write_text(text, encoding="utf-8")
            (folder / name).chmod(0o755)
        code, output, errors = self.run_command("tools/check", "--long")
        self.assertEqual((code, errors), (0, ""))
        self.assertEqual([line.split()[:2] for line in output.splitlines()], [["exhaustive", "passes"], ["fuzz", "passes"],
                                                                          ["total", "passes"]])
        self.assertIn("ctest --preset release -C exhaustive -L exhaustive --verbose", self.noted())

    def test_a_finding_is_told_and_the_other_targets_run(self):
        self.stub("ccache")
        programs = self.tree / "build" / "fuzz" / "fuzz"
        texts = {"Noise": "echo 'stat::number_of_executed_units: 7' >&2", "Text": "echo 'does not hold: a text is whole' >&2; false"}
        for name, text in texts.items():
            for folder, file in ((self.tree / "fuzz", f"{name}.cpp"), (programs, f"Fuzz{name}")):
                folder.mkdir(parents=True, exist_ok=True)
                (folder / file).write_text(f"#!{BASH}\n{text}\n", encoding="utf-8")
                (folder / file).chmod(0o755)
        code, output, errors = self.run_command("tools/fuzz", "--runs=7")
        self.assertEqual((code, output), (1, "Noise: 7 inputs, no finding\n"))
        self.assertEqual(errors, "does not hold: a text is whole\n"
                                 "tools/fuzz: findings of Text, see build/fuzz/findings and the logs in build/fuzz\n")

    def test_everywhere_is_each_preset_but_those_of_the_short_checks(self):
        self.stub("ccache")
        code, output, errors = self.run_command("tools/check", "--everywhere")
        self.assertEqual((code, errors), (0, ""))
        presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))["buildPresets"]
        self.assertEqual(sorted(line.split()[0] for line in output.splitlines()[:-1]),
                         sorted(preset["name"] for preset in presets
                                if preset["name"] not in ("sanitize", "tsan")))
        self.assertIn("ctest --preset aarch64", self.noted())

    def test_a_check_that_fails_is_told_and_the_others_run(self):
        self.stub("ccache")
        self.stub("python3", "#!{bash}\n[ $1 = -c ] || {{ echo 'a name is missing'; false; }}\n")
        code, output, errors = self.run_command("tools/check", "abi", "users")
        self.assertEqual(code, 1)
        self.assertRegex(output, "^abi           FAILS  0:0.  a name is missing\nusers         passes  0:0.  \n"
                                 "total         FAILS  0:0.\n$")
        self.assertEqual(errors, "a name is missing\n"
                         "tools/check: abi failed; all that was printed stands in build/check\n")

    def test_the_binary_interface_is_accepted_on_demand(self):
        self.stub("ccache")
        self.assert_runs("tools/check", "abi", "--accept")
        self.assertEqual(self.noted()[-1], "python3 -B tests/build/abi/abi.py --accept")

    def test_changes_are_tried_in_the_units_that_are_named(self):
        unit = self.tree / "core" / "Some.cpp"
        unit.parent.mkdir()
        unit.touch()
        for options in (("--limit=5", "--write"), ("--again",), ()):
            self.assert_runs("tools/mutate", *options, "core/Some.cpp")
            self.assertIn("cmake --preset release", self.noted())
            self.assertEqual(self.noted()[-1], " ".join(("python3 -B tests/mutation/mutate.py", *options, "core/Some.cpp")))
        shutil.rmtree(self.tree / "build")
        self.assert_refused("tools/mutate: --limit and --again exclude each other", "tools/mutate", "--limit=5", "--again",
                            "core/Some.cpp")

    def test_every_command_explains_itself(self):
        for command in ("setup", "demo", "test", "bench", "package", "fuzz", "docs", "live", "check", "mutate"):
            for option in ("-h", "--help"):
                code, output, errors = self.run_command(f"tools/{command}", option)
                self.assertEqual((code, errors, self.noted()), (0, "", []))
                self.assertIn(f"Usage: tools/{command}", output)
                self.assertNotIn("set -euo", output)


class Packages(CommandTest):
    MISSING = "tools/setup: missing Debian packages; run as root: apt-get install "

    def test_who_may_not_install_is_told_what_is_missing(self):
        for command, lacking in (("demo", "libpng-dev libutfcpp-dev"), ("test", "libgtest-dev"),
                                 ("bench", "libglm-dev libxxhash-dev")):
            self.assert_refused(self.MISSING + lacking, f"tools/{command}", LACKING=lacking)

    def test_a_clean_root_is_set_up_by_root_alone(self):
        self.assert_refused("tools/package: --check sets up a root folder of its own: run it as root", "tools/package",
                            "--check")
        self.stub("apt-get", "#!{bash}\nexit 100\n")
        code, output, errors = self.run_command("tools/package", "--check", USER_ID="0", LACKING="")
        self.assertEqual((code, output), (2, "Installing mmdebstrap util-linux\n"))
        self.assertEqual(errors, "tools/setup: could not install: mmdebstrap util-linux\n")

    def test_programs_and_libraries_stand_in_one_line(self):
        self.without("qemu-x86_64", "objdump")
        self.assert_refused(self.MISSING + "binutils libpng-dev qemu-user", "tools/test", LACKING="libpng-dev")

    def test_only_what_a_command_needs_is_asked_for(self):
        self.without("clang++", "valgrind", "qemu-x86_64", "pkg-config", "taskset", "objdump", "strip")
        self.assert_runs("tools/demo", LACKING="libgtest-dev libglm-dev")

    def test_without_the_means_to_look_for_libraries_those_that_are_installed_are_not_named(self):
        self.without("cmake", "ninja")
        self.assert_refused(self.MISSING + "cmake libpng-dev ninja-build", "tools/demo", LACKING="libpng-dev")

    def test_a_bare_machine_of_another_system_is_told_all(self):
        self.without("cmake", "ninja", "c++", "g++", "clang++", "dpkg", "dpkg-query", "apt-get")
        self.assert_refused(self.MISSING + "cmake g++ libboost1.81-dev libcli11-dev libpng-dev libtinyobjloader-dev "
                            "libutfcpp-dev ninja-build", "tools/demo")

    def test_what_is_found_counts_and_not_the_names_of_packages(self):
        self.without("dpkg", "dpkg-query", "apt-get", "pkg-config", "ninja")
        self.stub("pkgconf")
        self.stub("ninja-build")
        for user in ("0", "1000"):
            self.assert_runs("tools/test", "release", USER_ID=user)
            self.assert_runs("tools/demo", USER_ID=user)

    def test_the_demo_takes_any_compiler(self):
        self.without("c++", "g++", "clang++")
        self.assert_refused(self.MISSING + "g++", "tools/demo")
        self.stub("my-compiler")
        self.assert_runs("tools/demo", CXX="my-compiler")
        self.without("my-compiler")
        self.stub("clang++")
        self.assert_runs("tools/demo")

    def test_a_preset_needs_its_own_compiler(self):
        self.without("clang++")
        self.assert_refused(self.MISSING + "clang libclang-rt-14-dev", "tools/test", "sanitize")
        self.assert_runs("tools/test", "release")

    def test_programs_for_windows_need_a_compiler_and_wine(self):
        self.without("x86_64-w64-mingw32-g++-posix", "wine")
        for preset in ("mingw", "mingw-static"):
            self.assert_refused(self.MISSING + "g++-mingw-w64-x86-64-posix wine", "tools/test", preset)
        self.assert_runs("tools/test", "release")

    def test_a_cross_compiler_needs_its_emulator_and_no_other_compiler(self):
        self.without("clang++", "g++", "qemu-aarch64", "gdb")
        self.assert_refused(self.MISSING + "googletest qemu-user", "tools/test", "aarch64", LACKING="googletest")
        self.assert_runs("tools/test", "wasm")

    def test_the_manual_is_built_and_then_checked(self):
        self.assert_runs("tools/docs")
        self.assertEqual([line for line in self.noted() if "site" in line],
                         ["python3 -B tools/site/build.py", "python3 -B tools/site/check.py"])
        self.without("doxygen")
        shutil.rmtree(self.tree / "build")
        self.assert_refused(self.MISSING + "doxygen katex", "tools/docs", LACKING="katex")

    def test_root_installs_what_is_missing_and_nothing_else(self):
        self.without("objdump")
        code, output, errors = self.run_command("tools/test", USER_ID="0", LACKING="libpng-dev")
        self.assertEqual((code, errors), (0, ""))
        self.assertEqual(output, "Installing binutils\nInstalling libpng-dev\n")
        install = "apt-get install -y -qq --no-install-recommends "
        self.assertEqual([line for line in self.noted() if line.startswith("apt-get install")],
                         [install + "binutils", install + "libpng-dev"])

    def test_root_of_a_bare_machine_gets_programs_and_then_what_these_do_not_find(self):
        store = self.top / "store"
        store.mkdir()
        for name in ("cmake", "ninja", "c++", "g++", "clang++"):
            (self.bin / name).rename(store / name)
        self.stub("apt-get", NOTE + f"mv '{store}'/* '{self.bin}' 2>/dev/null || true\n")
        code, output, errors = self.run_command("tools/demo", USER_ID="0", LACKING="libcli11-dev libutfcpp-dev")
        self.assertEqual((code, errors), (0, ""))
        self.assertTrue(output.startswith("Installing cmake g++ ninja-build\nInstalling libcli11-dev libutfcpp-dev\n"))

    def test_root_installs_nothing_where_nothing_is_missing(self):
        self.assert_runs("tools/test", USER_ID="0")
        self.assertEqual([line for line in self.noted() if re.match("apt|dpkg", line)], [])

    def test_an_interrupted_installation_is_finished_first(self):
        self.assertEqual(self.run_command("tools/setup", "demo", USER_ID="0", LACKING="libpng-dev")[0], 0)
        self.assertEqual([line.split()[:2] for line in self.noted() if re.match("apt|dpkg", line)],
                         [["dpkg", "--configure"], ["apt-get", "update"], ["apt-get", "install"]])

    def test_root_of_another_system_is_told_what_is_missing(self):
        self.without("dpkg", "dpkg-query", "apt-get")
        message = "tools/setup: missing, and no apt-get to install Debian's packages: "
        self.assert_refused(message + "libpng-dev", "tools/demo", USER_ID="0", LACKING="libpng-dev")
        self.without("qemu-x86_64")
        self.assert_refused(message + "libpng-dev qemu-user", "tools/test", USER_ID="0", LACKING="libpng-dev")

    def test_nothing_is_built_when_an_installation_fails(self):
        self.stub("apt-get", "#!{bash}\necho 'E: no such package' >&2\nexit 100\n")
        code, _, errors = self.run_command("tools/demo", USER_ID="0", LACKING="libpng-dev")
        self.assertEqual((code, errors), (2, "E: no such package\ntools/setup: could not install: libpng-dev\n"))
        self.assertFalse((self.tree / "build").exists())

    def test_the_packages_of_a_group_can_be_listed(self):
        self.assertEqual(self.run_command("tools/setup", "--list", "gcc", "clang"),
                         (0, "clang\ng++\nlibclang-rt-14-dev\n", ""))
        self.assertIn("libbenchmark-dev", self.run_command("tools/setup", "--list", "bench")[1].split())


class Libraries(CommandTest):
    def test_they_are_found_where_cmake_finds_them(self):
        for name in ("cmake", "ninja", "c++"):
            self.real(name)
        prefix = self.top / "my prefix"
        for path in ("include/some/header.h", "include/odd/inner/header.h", "lib/libbvsome.so",
                     "share/cmake/BvSome/BvSomeConfig.cmake"):
            (prefix / path).parent.mkdir(parents=True, exist_ok=True)
            (prefix / path).touch()
        wanted = self.top / "wanted"
        wanted.write_text("a-dev package BvSome CONFIG\nb-dev header some/header.h\nc-dev header inner/header.h odd\n"
                          "d-dev library bvsome\n"
                          "e-dev package BvOther CONFIG\nf-dev header inner/header.h\ng-dev library bvother\n"
                          "h-dev package BvOther\n"
                          "i-dev package Threads\nj-dev package Threads CONFIG\n", encoding="utf-8")
        build = self.top / "find"
        subprocess.run(["cmake", "-S", self.tree / "tools" / "find", "-B", build, "-G", "Ninja", f"-DWANTED={wanted}"],
                       env=os.environ | {"CMAKE_PREFIX_PATH": str(prefix)}, check=True, capture_output=True)
        self.assertEqual((build / "missing").read_text(encoding="utf-8").split(), ["e-dev", "f-dev", "g-dev", "h-dev",
                                                                               "j-dev"])

    def test_every_line_of_the_packages_is_understood(self):
        table = (ROOT / "tools" / "packages").read_text(encoding="utf-8")
        lines = [line.split(maxsplit=3) for line in table.splitlines() if not line.startswith("#")]
        self.assertGreater(len(lines), 30)
        for groups, package, kind, *wanted in lines:
            self.assertLessEqual(set(groups.split(",")), set(GROUPS))
            self.assertRegex(package, r"^[a-z0-9.+-]+$")
            self.assertIn(kind, ("program", "compiler", "python", "sanitizers", "package", "header", "library"))
            self.assertEqual(bool(wanted), kind not in ("compiler", "sanitizers"))


class Ccache(CommandTest):
    def configured(self, **environment):
        self.assert_runs("tools/demo", **environment)
        states = {line for line in self.noted() if line.startswith("launcher=")}
        self.assertEqual(len(states), 1)
        return states.pop()

    def test_it_is_used_where_it_works(self):
        self.stub("ccache")
        self.assertEqual(self.configured(), "launcher=ccache disable=")

    def test_it_is_switched_off_where_it_fails(self):
        self.stub("ccache", "#!{bash}\nexit 1\n")
        self.assertEqual(self.configured(), "launcher= disable=1")

    def test_it_may_be_missing(self):
        self.assertEqual(self.configured(), "launcher= disable=")

    def test_a_cache_that_cannot_be_written_stops_nothing(self):
        for name in ("ccache", "c++", "as"):  # no folder can be made below /dev/null, whoever tries
            self.real(name)
        self.assertEqual(self.configured(), "launcher= disable=1")
        self.assertEqual(self.configured(CCACHE_DIR="/dev/null/cache"), "launcher= disable=1")
        self.assertEqual(self.configured(CCACHE_DIR=str(self.top / "cache")), "launcher=ccache disable=")


class Folders(CommandTest):
    def test_a_path_with_spaces_stays_one_argument(self):
        self.stub("cmake", STUBS["cmake"] + "printf '<%s>\\n' \"$@\" >>\"$NOTES\"\n")
        self.assert_runs("tools/demo")
        self.assertIn(f"<-DCMAKE_PREFIX_PATH={self.tree}/build/demo/install>", self.noted())
        self.assertIn(f"<-DRAYTRACER_GALLERY_DIR={self.tree}/build/demo/gallery>", self.noted())

    def test_a_tree_that_cannot_be_written_is_told_in_one_line(self):
        user = ()
        if os.geteuid() == 0:  # may write everywhere
            user = (shutil.which("setpriv") or "setpriv", "--reuid=65534", "--regid=65534", "--clear-groups")
            if subprocess.run(f'{" ".join(user)} cat "{self.tree}/tools/demo"', shell=True, capture_output=True,
                              check=False).returncode != 0:
                self.skipTest("root cannot become another user here, or that user cannot read the temporary folder")
        build = self.tree / "build" / "demo"
        for folder in (self.tree, build):  # the second one as another user's run leaves it
            folder.mkdir(parents=True, exist_ok=True)
            folder.chmod(0o555)
            self.assertEqual(self.run_command("tools/demo", prefix=user, NOTES="/dev/null"),
                             (2, "", f"tools/demo: cannot write to the folder {build}\n"))
            folder.chmod(0o755)

    def configured_for(self, folder):
        cache = self.tree / "build" / "demo" / "library" / "CMakeCache.txt"
        cache.parent.mkdir(parents=True, exist_ok=True)
        cache.write_text(f"# comment\nCMAKE_CACHEFILE_DIR:INTERNAL={folder}\n", encoding="utf-8")
        return cache

    def test_a_build_folder_of_another_place_is_made_anew(self):
        cache = self.configured_for("/elsewhere/build/demo/library")
        self.assert_runs("tools/demo")
        self.assertFalse(cache.exists())

    def test_a_build_folder_of_this_place_is_kept(self):
        cache = self.configured_for(self.tree / "build" / "demo" / "library")
        self.assert_runs("tools/demo")
        self.assertTrue(cache.exists())
        link = self.top / "link"
        link.symlink_to(self.tree)
        self.tree = link
        self.assert_runs("tools/demo")
        self.assertTrue(cache.exists())


class Interrupts(CommandTest):
    @staticmethod
    def wait_for(condition):
        end = time.monotonic() + 10
        while not condition() and time.monotonic() < end:
            time.sleep(0.01)

    def interrupt(self, number, slow, *command, **environment):
        """Sends a signal to the command, as a terminal does, once the slow stub runs; gives the exit code."""
        started = self.top / "started"
        self.stub(slow, STUBS.get(slow, NOTE) + f"""
if [[ "$*" != *tools/find* ]]; then echo >{str(started)!r}; sleep 30; fi
""")
        process = subprocess.Popen([self.tree / command[0], *command[1:]], env=self.environment | environment,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            self.wait_for(started.exists)
            os.killpg(process.pid, number)
            code = process.wait(timeout=20)
            self.wait_for(lambda: not list(self.scratch.iterdir()))  # a command that it called may end after it
            return code
        finally:
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()

    def test_they_leave_no_temporary_files_and_the_next_run_succeeds(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            for slow, environment in (("cmake", {}), ("apt-get", {"USER_ID": "0", "LACKING": "libpng-dev"})):
                code = self.interrupt(number, slow, "tools/demo", **environment)
                self.assertNotEqual(code, 0)
                self.assertEqual(list(self.scratch.iterdir()), [], (number, slow))
                self.assertFalse((self.tree / "build" / "demo" / "bunny.png").exists())
                (self.top / "started").unlink()
                self.stub(slow)
                self.assertEqual(self.run_command("tools/demo", **environment)[0], 0)
                self.assertIn("cmake --build build/demo/raytracer --target gallery", self.noted())


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    unittest.main()
