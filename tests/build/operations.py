"""Checks that every public operation is called by a test and by the digest, and keeps the table of operations by test.

Usage: operations.py [--accept]     (tools/check interface runs it where all that it needs is there)

Compiles the library, its tests and the digest so that every call leaves a symbol, and compares these with the library's own
and with what the headers declare. Without --accept, the table in tests/operations.md must be up to date.
"""
import collections
import json
import pathlib
import re
import shlex
import subprocess
import sys

import coverage
import interface

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
TABLE = TOP / "tests" / "operations.md"
# Headers that the one of all leaves out, but for those that need another library.
OTHER_HEADERS = ("bv/maths/Bitwise.h", "bv/maths/FromChars.h", "bv/maths/Spans.h")
# Why the digest, whose results are the same everywhere, does not call an operation.
NOT_IN_DIGEST = {
    "Assert()": "it stops the program",
    "Exception::what() const": "it is called, as a virtual function is",
    "detail::GetText[abi:cxx11](Exception const&)": "the formatters call it, which are not there everywhere",
}
DIGEST = "digest"
# The long way of an inline function, which the library holds for it.
HIDDEN_FUNCTION = re.compile(r"(^| )bv::(maths::)?detail::\w+(<[^()]*>)?\(")


def operation(signature):
    """Class, name and number of parameters: enough to find an operation of the headers among the symbols."""
    return signature and (signature.owner.partition("<")[0].removeprefix("const "), signature.name,
                          len(signature.parameters))


def declared():
    """The operations that the headers name, public and hidden ones, but for the vocabulary of the packets."""
    public, hidden = set(), set()
    for declaration in interface.declarations(*OTHER_HEADERS):
        found = operation(declaration.signature)
        if not found[0].endswith("Lanes") and not found[1].startswith("~"):
            (public if declaration.is_public and not declaration.is_defaulted else hidden).add(found)
    return public, hidden - public


def program(target):
    """The test, or the digest, that an object belongs to."""
    return DIGEST if f"/{DIGEST}.dir/" in target else pathlib.Path(target).name.removesuffix(".cpp.o")


def build():
    """The library and the objects of its tests and digest, one of each source, without optimisation and with nothing
    inlined, so that every call leaves a symbol: in the build that measures what the tests reach. There, what is compiled
    for AVX keeps inlining, without which it does not link; its objects are compiled once more, to be looked at only. Each
    object comes with the name of its program."""
    coverage.configure()
    sources = [target for target, _ in coverage.targets()
               if target.endswith("Test.cpp.o") or f"/{DIGEST}.dir/" in target]
    objects = {pathlib.Path(target).name: target for target in sorted(sources, key=len, reverse=True)}
    programs = {name: program(target) for name, target in objects.items()}
    subprocess.run(["cmake", "--build", coverage.BUILD, "-j2", "--target", "BvBaseUtils", *sorted(objects.values())],
                   check=True)
    for entry in json.loads((coverage.BUILD / "compile_commands.json").read_text(encoding="utf-8")):
        command = shlex.split(entry["command"])
        place = command.index("-o") + 1
        name = pathlib.Path(command[place]).name
        if objects.get(name) == command[place] and "-mavx" in command:
            command[place] = objects[name] = f"called/{name}"
            (coverage.BUILD / "called").mkdir(exist_ok=True)
            subprocess.run([*command, "-Dalways_inline=noinline", "-fno-profile-arcs", "-fno-test-coverage"], check=True,
                           cwd=entry["directory"])
    return {coverage.BUILD / target: programs[name] for name, target in objects.items()}


def main():
    objects = build()

    public, hidden = declared()
    exported = {}
    for symbol in interface.symbols(coverage.BUILD / "libBvBaseUtils.so", "-D", "--defined-only"):
        found = operation(interface.parsed(symbol))
        if found and not HIDDEN_FUNCTION.search(symbol) and found not in hidden and not found[1].startswith("~"):
            exported[symbol] = found
    headers_only = public - set(exported.values())

    users = collections.defaultdict(set)
    for path, test in objects.items():
        called = interface.symbols(path)
        seen = {operation(interface.parsed(symbol)) for symbol in called}
        for symbol in exported:
            if symbol in called:
                users[symbol].add(test)
        for found in headers_only & seen:
            users[found].add(test)

    rows = {symbol.replace("bv::maths::", "").replace("bv::", ""): users[symbol] for symbol in exported}
    for found in headers_only:
        owner, name, count = found
        rows[f"{owner + '::' if owner else ''}{name}(), {count} parameters"] = users[found]
    text = ["# Operations by test", "",
            "Every public operation and the programs of tests that call it, among them the digest, made by",
            "`tools/check interface --accept`. Operations that the library holds are listed with signature and instance, those",
            "of the headers alone by name.", "",
            "| operation | tests |", "|---|---|"]
    text += [f"| `{name}` | {', '.join(sorted(tests))} |" for name, tests in sorted(rows.items())]
    table = "\n".join(text) + "\n"

    wrong = [f"no test calls {name}" for name, tests in rows.items() if not tests - {DIGEST}]
    wrong += [f"the digest does not call {name}" for name, tests in rows.items()
              if DIGEST not in tests and name not in NOT_IN_DIGEST]
    wrong += [f"there is no operation, or the digest calls it: {name}" for name in NOT_IN_DIGEST
              if DIGEST in rows.get(name, {DIGEST})]
    print(f"{len(rows)} public operations, {len(wrong)} without a test or a part in the digest that they should have; "
          f"the digest leaves out {len(NOT_IN_DIGEST)} by name")
    if wrong:
        sys.exit("\n".join(sorted(wrong)))
    if "--accept" in sys.argv:
        TABLE.write_text(table, encoding="utf-8")
    elif not TABLE.exists() or TABLE.read_text(encoding="utf-8") != table:
        sys.exit("tests/operations.md is out of date: run tools/check interface --accept")


main()
