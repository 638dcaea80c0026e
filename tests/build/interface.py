"""What the headers declare, and what the symbols of a library or an object file say, in one spelling."""
import collections
import pathlib
import platform
import re
import subprocess

try:
    from clang import cindex
except ImportError:
    raise SystemExit("the Python bindings of libclang are missing: install Debian's package python3-clang-14") from None

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
CALLABLE = {
    cindex.CursorKind.CXX_METHOD, cindex.CursorKind.CONSTRUCTOR, cindex.CursorKind.DESTRUCTOR,
    cindex.CursorKind.FUNCTION_DECL, cindex.CursorKind.FUNCTION_TEMPLATE, cindex.CursorKind.CONVERSION_FUNCTION
}
CLASSES = {cindex.CursorKind.CLASS_DECL, cindex.CursorKind.CLASS_TEMPLATE, cindex.CursorKind.STRUCT_DECL}
NAMESPACES = {"bv", "maths", "simd", "detail"}

PRECISIONS = ("float", "double")
ALL_TYPES = (*PRECISIONS, "int", "unsigned int")
SHAPES = ("tTuple2", "tTuple3", "tVector2", "tVector3")

# The types that the concepts of the templates over tuples and vectors stand for.
REAL_VECTORS = [f"{shape}<{kind}>" for shape in SHAPES[2:] for kind in PRECISIONS]
REAL_GROUPS = REAL_VECTORS + [f"{shape}<{kind}>" for shape in SHAPES[:2] for kind in PRECISIONS]
SIGNED_GROUPS = REAL_GROUPS + [f"{shape}<int>" for shape in SHAPES[:2]]
CONCEPTS = {
    "RealVector": REAL_VECTORS, "RealTupleOrVector": REAL_GROUPS, "SignedTupleOrVector": SIGNED_GROUPS,
    "TupleOrVector": SIGNED_GROUPS + [f"{shape}<unsigned int>" for shape in SHAPES[:2]]
}

# owner: the class, with the arguments of a template, or ""; parameters: their types, where those that a declaration
# depends on are named T0, T1 (of the class, or of a function outside of classes) and U0 (of a member).
Signature = collections.namedtuple("Signature", "owner name parameters is_const")
# concept: that of a template over tuples or vectors, or ""; is_constrained: whether newer compilers write a constraint into
# its name.
Declaration = collections.namedtuple("Declaration",
                                     "signature is_public is_template is_friend is_defaulted concept is_constrained")


def spelling(type_name):
    """A type without namespaces and spaces; `const` stands in front, since compilers and demanglers differ there."""
    name = re.sub(r"std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> ?>", "string", type_name)
    name = re.sub(r"\bbasic_([io]stream)<char>", r"\1", name)
    name = re.sub(r"\bt[A-Z]\w*(<[^<>]*>)?::", "", name)  # around a type inside of a class
    name = re.sub(r"\b(bv|maths|simd|detail|std)::|\btypename |(?<=\d)(UL|ul)\b", "", name)
    name = re.sub(r"__attribute__\(\(__vector_size__\((\d+) \* sizeof\(float\)\)\)\) float", r"float __vector(\1)", name)
    name = re.sub(r"(?<=\*) ?const$", "", name)  # of the parameter itself, which no symbol tells of
    name, constants = re.subn(r"\bconst\b", "", name)
    return "const " * constants + re.sub(r"\s*([<>,&*()])\s*", r"\1", name.strip())


def split(text, separator):
    """The pieces of a text between separators outside of all brackets."""
    pieces, depth, start = [], 0, 0
    for i, letter in enumerate(text):
        depth += (letter in "<(") - (letter in ">)")
        if depth == 0 and text.startswith(separator, i) and i >= start:
            pieces.append(text[start:i])
            start = i + len(separator)
    return [piece.strip() for piece in [*pieces, text[start:]] if piece.strip()]


def declarations(*headers):
    """What the header of all, and others beside it, declare, but for deleted functions and those in namespaces `detail`."""
    source = "\n".join(f'#include "{header}"' for header in ("BvBaseUtils.h", *headers))
    options = ["-x", "c++", "-std=c++20", f"-I{TOP}/include", *(["-mavx"] if platform.machine() == "x86_64" else [])]
    unit = cindex.Index.create().parse("headers.cpp", args=options, unsaved_files=[("headers.cpp", source)])
    errors = [str(d) for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
    if errors:
        raise SystemExit("\n".join(errors))
    found = []

    def walk(cursor, owner, names, is_friend=False):
        for child in cursor.get_children():
            if child.location.file and not child.location.file.name.startswith(str(TOP)):
                continue
            if child.kind == cindex.CursorKind.NAMESPACE and child.spelling != "detail":
                walk(child, "", {})
            elif child.kind in CLASSES and child.is_definition():
                parameters = [c for c in child.get_children() if c.kind == cindex.CursorKind.TEMPLATE_TYPE_PARAMETER]
                names_within = {c.spelling: f"T{i}" for i, c in enumerate(parameters)}
                arguments = f"<{','.join(names_within.values())}>" if parameters else ""
                walk(child, child.spelling + arguments, names_within)
            elif child.kind == cindex.CursorKind.FRIEND_DECL:
                walk(child, "", names, True)  # its names are those of the namespace
            elif child.kind in CALLABLE:
                if not owner and not is_friend and child.semantic_parent.spelling not in NAMESPACES | {""}:
                    continue  # a body below its class
                ending = text_behind(child)
                if "delete" not in ending:
                    is_public = child.access_specifier in (cindex.AccessSpecifier.PUBLIC, cindex.AccessSpecifier.INVALID)
                    found.append(Declaration(signature(child, owner, names), is_public,
                                             child.kind == cindex.CursorKind.FUNCTION_TEMPLATE, is_friend,
                                             "default" in ending, concept_of(child), is_constrained(child, ending)))

    walk(unit.cursor, "", {})
    return found


def concept_of(cursor):
    """The concept that a template's parameters name, or ""."""
    for child in cursor.get_children():
        if child.kind == cindex.CursorKind.TEMPLATE_TYPE_PARAMETER:
            for token in child.get_tokens():
                if token.spelling in CONCEPTS:
                    return token.spelling
    return ""


def is_constrained(cursor, ending):
    """Whether a function has a constraint: a concept in front of a parameter's name, or a clause."""
    source = pathlib.Path(cursor.location.file.name).read_text(encoding="latin-1")
    heads = [next(child.get_tokens()).spelling for child in cursor.get_children()
             if child.kind == cindex.CursorKind.TEMPLATE_TYPE_PARAMETER]
    clauses = source[cursor.extent.start.offset:cursor.location.offset] + ending
    return not set(heads) <= {"typename", "class"} or "requires" in clauses


def text_behind(cursor):
    """What stands between the parameters of a function and its body or end."""
    source = pathlib.Path(cursor.location.file.name).read_text(encoding="latin-1")  # a letter for each byte
    parameters = [c.extent.end.offset for c in cursor.get_children() if c.kind == cindex.CursorKind.PARM_DECL]
    return re.split(r"[;{]", source[max([cursor.location.offset, *parameters]):], 1)[0]


def signature(cursor, owner, names):
    """The signature of a declaration, where `names` are those of the parameters of the template around it."""
    parameters = []
    for child in cursor.get_children():
        if child.kind == cindex.CursorKind.PARM_DECL:
            parameter = spelling(child.type.get_canonical().spelling)
            for written, known in names.items():
                parameter = re.sub(rf"\b{written}\b", known, parameter)
            parameter = re.sub(r"type-parameter-0-(\d)", r"T\1", parameter)
            parameters.append(re.sub(r"type-parameter-1-(\d)", r"U\1", parameter))
    name = cursor.spelling if "operator" in cursor.spelling else cursor.spelling.split("<")[0]
    return Signature(owner, name.replace("operator basic_string", "operator string"), tuple(parameters),
                     cursor.is_const_method())


def symbols(path, *options):
    """The library's names among the symbols, demangled, with the letter of their kind. They do not show what stands where a
    template would have a constraint."""
    listing = subprocess.run(["nm", "-C", "--without-symbol-versions", *options, path], check=True, capture_output=True,
                             text=True).stdout
    return {line[19:].replace(", void>", ">"): line[17] for line in listing.splitlines() if "bv::" in line}


def parsed(symbol):
    """The signature of a demangled function; None for anything else."""
    text = symbol.replace("(anonymous namespace)", "").replace("[abi:cxx11]", "")
    if re.search(r"typeinfo|vtable|guard variable|VTT", text) or "(" not in text:
        return None
    is_const = text.endswith(" const")
    text = text.removesuffix(" const")
    path, operator, rest = text.partition("operator")
    if operator:
        found = re.match(r"\(\)|\[\]|<<|<=>|[-+*/!<>=&|^~]=?|<| std::.*basic_string[^(]*| [\w ]+", rest)
        if not found:
            return None  # a name that merely holds the word
        name = found[0]
        parameters = rest[len(name):].partition("(")[2]
        name = "operator string" if "basic_string" in name else "operator" + name
        path = split(path + "x", " ")[-1]  # without the result, which the symbol of a template begins with
    else:
        path, _, parameters = text.partition("(")
        path = split(path, " ")[-1]
        name = split(path, "::")[-1].partition("<")[0]
    scopes = split(path, "::")[:-1]
    owner = spelling(scopes[-1]) if scopes and scopes[-1] not in NAMESPACES else ""
    return Signature(owner, name, tuple(spelling(p) for p in split(parameters[:-1], ",")), is_const)


def instance(signature, kind):
    """A signature with a type in place of those that it depends on."""
    known = {"T0": kind, "T1": "IRayPayloadInternal", "U0": "double" if kind == "float" else "float"}

    def replaced(text):
        return re.sub(r"\b[TU]\d\b", lambda found: known[found[0]], text)

    return signature._replace(owner=replaced(signature.owner), parameters=tuple(map(replaced, signature.parameters)))


def exempt(declaration):
    """Why the library exports no such function, or "" when it does."""
    owner, name = declaration.signature.owner.partition("<")[0], declaration.signature.name
    if not declaration.is_public:
        return "private"
    if declaration.is_defaulted:
        return "the compiler's own"
    packets = ("tRayPacket", "tWatertightPacket")
    if owner in (*packets, "SSELanes", "AVXLanes") or any(
            packet in parameter for packet in packets for parameter in declaration.signature.parameters):
        return "inline whole, since a symbol with code for AVX could be shared with code for other processors"
    if owner in ("tNumberView", "tVectorView", "tBoxView", "tRayView", "tSphereView"):
        return "of a view, and inlined by force"
    if name in ("GetBitWords", "FillPackets"):
        return "inlined by force"
    if declaration.is_friend and declaration.is_template:
        return "over types of the caller: the arithmetic of Percentage with numbers"
    if declaration.is_template and not owner and declaration.signature.parameters[-1:] == ("const String&",):
        return "over the character type of the caller, and inlined by force"
    if declaration.is_friend and name == "operator<<":
        return "calls the operator at global scope, and is inlined by force"
    return ""


def types(declaration):
    """The types that a template has an instance for in the library."""
    if declaration.concept:
        return CONCEPTS[declaration.concept]
    signature = declaration.signature
    subject = signature.owner or signature.parameters[-1]
    is_conversion = any("U0" in parameter for parameter in signature.parameters)
    is_stream = signature.name in ("Serialise", "Deserialise", "operator<<")
    if "tTuple" in subject and not is_conversion or "tVector" in subject and is_stream:
        is_opposite = signature.name == "operator-" and not signature.parameters
        return [kind for kind in ALL_TYPES if not (is_opposite and kind == "unsigned int")]
    return PRECISIONS


def shown(signature):
    """A signature for people."""
    owner = f"{signature.owner}::" if signature.owner else ""
    return f"{owner}{signature.name}({', '.join(signature.parameters)}){' const' if signature.is_const else ''}"


def required():
    """The functions that the library exports: all that the headers declare, for each type that they are promised for."""
    functions = set()
    for declaration in declarations():
        signature = declaration.signature
        if not exempt(declaration):
            is_template = re.search(r"\b[TU]\d\b", " ".join((signature.owner, *signature.parameters)))
            functions |= {instance(signature, kind) for kind in types(declaration)} if is_template else {signature}
    return functions
