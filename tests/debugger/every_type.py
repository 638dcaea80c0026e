"""Fails when a type of the library is missing in the Natvis file or among the values that debuggers are tested with, or when the
Natvis file names a member that does not exist.

Usage: every_type.py, from anywhere
"""
import pathlib
import platform
import re
import sys
import xml.etree.ElementTree

try:
    from clang import cindex
except ImportError:
    sys.exit("the Python bindings of libclang are missing: install Debian's package python3-clang-14")

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
HERE = TOP / "tests" / "debugger"
NATVIS = TOP / "packaging" / "BvBaseUtils.natvis"
NAMESPACE = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
KINDS = (cindex.CursorKind.CLASS_DECL, cindex.CursorKind.CLASS_TEMPLATE, cindex.CursorKind.STRUCT_DECL)
IS_X86 = platform.machine() == "x86_64"
WITHOUT_VALUES = {"bv::maths::simd::SSELanes", "bv::maths::simd::AVXLanes"}  # names of a vector type
BASES_ONLY = {"bv::maths::simd::tRayPacket"}
WORDS = {"sizeof", "nullptr", "char", "int", "__int64"}


def parsed(source):
    """The translation unit of a source file."""
    options = ["-x", "c++", "-std=c++20", f"-I{TOP}/include", *(["-mavx"] if IS_X86 else [])]
    unit = cindex.Index.create().parse(str(source), args=options)
    errors = [str(d) for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
    if errors:
        sys.exit("\n".join(errors))
    return unit.cursor


def full_name(cursor):
    """A class with its namespaces."""
    return f"{full_name(cursor.semantic_parent)}::{cursor.spelling}".removeprefix("::") if cursor.spelling and \
        cursor.kind != cindex.CursorKind.TRANSLATION_UNIT else ""


def types_of(cursor):
    """The public classes by name."""
    found = {}
    for child in cursor.get_children():
        if child.location.file and not child.location.file.name.startswith(str(TOP)):
            continue
        if child.kind == cindex.CursorKind.NAMESPACE and child.spelling != "detail":
            found = types_of(child) | found
        elif child.kind in KINDS and child.is_definition() and full_name(child) not in WITHOUT_VALUES:
            found.setdefault(full_name(child), child)  # the template comes before its instances
    return found


def base_of(specifier):
    """The class that another one derives from; behind it stand the arguments of a template."""
    references = (cindex.CursorKind.TEMPLATE_REF, cindex.CursorKind.TYPE_REF)
    return next(child.referenced for child in specifier.get_children() if child.kind in references)


def members_of(cursor):
    """The data members of a class and of its bases."""
    names = set()
    for child in cursor.get_children():
        if child.kind == cindex.CursorKind.FIELD_DECL:
            names.add(child.spelling)
        elif child.kind == cindex.CursorKind.CXX_BASE_SPECIFIER:
            names |= members_of(base_of(child).get_definition())
    return names


def members_in_sources():
    """The data members of the classes that the sources keep to themselves."""
    names = set()
    for source in ("String.cpp", "Exception.cpp"):
        text = (TOP / "core" / source).read_text(encoding="utf-8")
        for body in re.findall(r"^struct \w+::\w+Impl\n\{\n(.*?)^\};", text, re.MULTILINE | re.DOTALL):
            names |= set(re.findall(r"(\w+)(?: = [^;]*)?;", body))
    return names


def expressions(entry):
    """The expressions of an entry, and the names that it makes up itself."""
    texts, own = [], set(WORDS)
    for element in entry.iter():
        tag = element.tag.removeprefix(NAMESPACE)
        texts += [element.get(name) for name in ("Condition", "Expression") if element.get(name)]
        if tag in ("Intrinsic", "Parameter"):
            own.add(element.get("Name"))
        elif tag == "DisplayString":
            texts += [re.sub(r",\w+$", "", part) for part in re.findall(r"\{([^{}]*)\}", element.text)]
        elif tag in ("Item", "Size", "ValueNode"):
            texts.append(element.text)
    return texts, own


def unknown_members(entry, types, anywhere):
    """The names in an entry that are no members: of the class itself, or, behind a dot or an arrow, of any class."""
    texts, own = expressions(entry)
    name = entry.get("Name").partition("<")[0]
    mine = members_of(types[name]) | own
    for text in texts:
        for before, word in re.findall(r"(\.|->|)(?<![\w$])([A-Za-z_]\w*)", re.sub(r"\b\d[\w.]*(e-\d+)?", "0", text)):
            if word not in (anywhere if before else mine):
                yield f"{name} has no member {word}: {text}"
    if not texts:
        yield f"{name} shows nothing"


def variables(cursor, path):
    """The local variables of the functions of a file."""
    for child in cursor.get_children():
        if child.location.file and child.location.file.name == str(path):
            if child.kind == cindex.CursorKind.VAR_DECL:
                yield child
            elif child.kind in (cindex.CursorKind.NAMESPACE, cindex.CursorKind.FUNCTION_DECL,
                                cindex.CursorKind.COMPOUND_STMT, cindex.CursorKind.DECL_STMT):
                yield from variables(child, path)


def values(path):
    """The variables of a program, each with the name of its class."""
    for variable in variables(parsed(path), path):
        kind = variable.type.get_canonical()
        kind = kind.get_pointee() if kind.kind == cindex.TypeKind.LVALUEREFERENCE else kind
        yield variable.spelling, kind.spelling.removeprefix("const ").partition("<")[0]


def main():
    types = types_of(parsed(TOP / "include" / "BvBaseUtils.h"))
    anywhere = set().union(members_in_sources(), *map(members_of, types.values()))
    complaints = []

    entries = xml.etree.ElementTree.parse(NATVIS).getroot().findall(f"{NAMESPACE}Type")
    listed = [element.get("Name").partition("<")[0] for entry in entries
              for element in (entry, *entry.findall(f"{NAMESPACE}AlternativeType"))]
    complaints += [f"{name} has no entry in {NATVIS.name}" for name in types if name not in listed]
    complaints += [f"{NATVIS.name} has an entry for {name}, which is no type" for name in listed if name not in types]
    complaints += [f"{NATVIS.name} has {name} twice" for name in types if listed.count(name) > 1]
    for entry in entries:
        if entry.get("Name").partition("<")[0] in types:
            complaints += unknown_members(entry, types, anywhere)

    programs = {"Values.cpp": "shown.txt", **({"ValuesForAvx.cpp": "shown_for_avx.txt"} if IS_X86 else {})}
    tested = set()
    for program, texts in programs.items():
        shown = set(re.findall(r"^(\w+) = ", (HERE / texts).read_text(encoding="utf-8"), re.MULTILINE))
        tested |= {kind for name, kind in values(HERE / program) if name in shown}
    complaints += [f"no test has debuggers show a {name}" for name in types if name not in tested | BASES_ONLY]

    print(f"{len(types)} types, {len(entries)} entries")
    if complaints or len(types) < 45:
        sys.exit("\n".join(complaints or ["the library has more types than that"]))


if __name__ == "__main__":
    main()
