"""Fails when the shared library exports a name that is not its own, or lacks a function that its headers declare."""
import re
import subprocess
import sys

import interface

WIDE_VECTOR = r"(float|int) __vector\((8|16)\)|(double|long) __vector\((4|8)\)"
library = sys.argv[1]


def streams_in_short(listing):
    """Streams as GNU's standard library spells them in names."""
    return re.sub(r"std::basic_([io]stream)<char, std::char_traits<char> ?>", r"std::basic_\1<char>", listing)


def names_of_dll(path):
    """The names in a module definition file, spelt as those of a shared library, but for the integers of 64 bits."""
    with open(path, encoding="utf-8") as file:
        symbols = [line.split()[0] for line in file.readlines()[1:]]
    listing = subprocess.run(["c++filt"], input="\n".join(symbols), check=True, capture_output=True, text=True).stdout
    listing = re.sub(r"(?<=\d)ull\b", "ul", listing)
    return streams_in_short(listing).splitlines()


def same_integers(signature):
    """Windows has unsigned long long where others have unsigned long."""
    return signature and signature._replace(
        parameters=tuple(one.replace("unsigned long long", "unsigned long") for one in signature.parameters))


def operation(signature):
    """Class and name, without instances."""
    return signature.owner.partition("<")[0].removeprefix("const "), signature.name


declarations = interface.declarations()
declared = {operation(declaration.signature) for declaration in declarations}

# A program of a newer compiler would look for another name: see bv/maths/detail/Where.h.
constrained = [interface.shown(declaration.signature) for declaration in declarations
               if declaration.is_constrained and not interface.exempt(declaration)]


def not_declared(signature):
    """Whether it is a function, and none of the headers': a helper of the library's sources."""
    return signature and operation(signature) not in declared


if library.endswith(".def"):
    names = names_of_dll(library)
else:
    listing = subprocess.run(["nm", "-DC", "--defined-only", "--without-symbol-versions", library], check=True,
                             capture_output=True, text=True).stdout
    if "std::__1::" in listing:  # LLVM's standard library
        listing = streams_in_short(listing.replace("std::__1::", "std::"))
    names = [line.split(" ", 2)[2] for line in listing.splitlines() if " A " not in line]  # but for the version itself
foreign = [name for name in names if "bv::" not in name]
# A DLL and its program need not agree on how vectors of 32 bytes are passed.
foreign += [name for name in names if re.search(WIDE_VECTOR, name)]
foreign += [name for name in names if "detail::" not in name and not_declared(interface.parsed(name))]
data = ["typeinfo for bv::maths::MatrixException", "vtable for bv::Exception", "vtable for bv::maths::tVolumeSphere<float>"]
missing = [name for name in data if name not in names]

functions = set(map(same_integers, interface.required()))
found = {same_integers(interface.parsed(name)) for name in names}
missing += sorted(map(interface.shown, functions - found))
print(f"{len(names)} exported names, {len(functions)} functions in the headers")
if foreign or missing or constrained:
    sys.exit("\n".join([f"not ours: {name}" for name in foreign[:10]] + [f"missing: {name}" for name in missing] +
                       [f"has a constraint in its name: {name}" for name in constrained]))
if len(functions) < 800:
    sys.exit("the headers declare more than that")
