"""Checks that every public operation is called by a test, and keeps the table of operations by test.

Usage: operations.py [--write]     (tools/check-interface runs it where all that it needs is there)

Compiles the library and its tests in a folder of its own, where every call leaves a symbol, and compares these with the
library's own and with what the headers declare. Without --write, the table in tests/operations.md must be up to date.
"""
import collections
import pathlib
import re
import subprocess
import sys

import interface

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
TABLE = TOP / "tests" / "operations.md"
# The long way of an inline function, which the library holds for it.
HIDDEN_FUNCTION = re.compile(r"(^| )bv::(maths::)?detail::\w+(<[^()]*>)?\(")


def operation(signature):
    """Class, name and number of parameters: enough to find an operation of the headers among the symbols."""
    return signature and (signature.owner.partition("<")[0].removeprefix("const "), signature.name,
                          len(signature.parameters))


def declared():
    """The operations that the headers name, public and hidden ones, but for the vocabulary of the packets."""
    public, hidden = set(), set()
    for declaration in interface.declarations():
        found = operation(declaration.signature)
        if not found[0].endswith("Lanes") and not found[1].startswith("~"):
            (public if declaration.is_public and not declaration.is_defaulted else hidden).add(found)
    return public, hidden - public


def build(folder):
    """The library and the objects of its tests, one of each test, without optimisation and with nothing inlined, so that
    every call leaves a symbol. They are looked at, and never linked: what is compiled for AVX would stay open."""
    flags = "-O0 -w -Dalways_inline=noinline"
    subprocess.run(["cmake", "-S", TOP, "-B", folder, "-G", "Ninja", "--log-level=WARNING", f"-DCMAKE_CXX_FLAGS={flags}"],
                   check=True, stdout=subprocess.DEVNULL)
    listing = subprocess.run(["cmake", "--build", folder, "--", "-t", "targets", "all"], check=True, capture_output=True,
                             text=True).stdout
    targets = (line.partition(": ")[0] for line in listing.splitlines())
    by_name = {}
    for target in sorted((target for target in targets if target.endswith("Test.cpp.o")), key=len, reverse=True):
        by_name[pathlib.Path(target).name] = target
    objects = sorted(by_name.values())
    subprocess.run(["cmake", "--build", folder, "-j2", "--target", "BvBaseUtils", *objects], check=True)
    return [folder / target for target in objects]


def main():
    folder = TOP / "build" / "interface"
    objects = build(folder)

    public, hidden = declared()
    exported = {}
    for symbol in interface.symbols(folder / "libBvBaseUtils.so", "-D", "--defined-only"):
        found = operation(interface.parsed(symbol))
        if found and not HIDDEN_FUNCTION.search(symbol) and found not in hidden and not found[1].startswith("~"):
            exported[symbol] = found
    headers_only = public - set(exported.values())

    users = collections.defaultdict(set)
    for path in objects:
        test = path.name.removesuffix(".cpp.o")
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
            "Every public operation and the test programs that call it, made by `tools/check-interface --write`. Operations",
            "that the library holds are listed with signature and instance, those of the headers alone by name.", "",
            "| operation | tests |", "|---|---|"]
    text += [f"| `{name}` | {', '.join(sorted(tests))} |" for name, tests in sorted(rows.items())]
    table = "\n".join(text) + "\n"

    untested = sorted(name for name, tests in rows.items() if not tests)
    print(f"{len(rows)} public operations, {len(untested)} without a test")
    if untested:
        sys.exit("\n".join(f"no test calls {name}" for name in untested))
    if "--write" in sys.argv:
        TABLE.write_text(table, encoding="utf-8")
    elif not TABLE.exists() or TABLE.read_text(encoding="utf-8") != table:
        sys.exit("tests/operations.md is out of date: run tools/check-interface --write")


main()
