"""How GDB shows the types of BvBaseUtils: `source` this file, or let GDB load it with the shared library."""
import os
import sys

import gdb
import gdb.printing

_TEXTS = os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "debuggers")
if _TEXTS not in sys.path:
    sys.path.insert(0, _TEXTS)

import bvbaseutils_texts as texts


class Memory(texts.Memory):
    """The memory of the program that runs, or of a core dump."""

    def __init__(self):
        self.pointer_size = gdb.lookup_type("char").pointer().sizeof

    def read(self, address, size):
        return bytes(gdb.selected_inferior().read_memory(address, size))

    def symbol(self, address):
        return gdb.execute(f"info symbol {address}", to_string=True)


class Value:
    """A value of GDB with the interface of bvbaseutils_texts."""

    def __init__(self, value):
        is_reference = value.type.strip_typedefs().code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)
        self.value = value.referenced_value() if is_reference else value
        self.type = self.value.type.strip_typedefs()

    @property
    def memory(self):
        return Memory()

    def __getitem__(self, key):
        return Value(self.value[key])

    def number(self):
        return float(self.value) if self.type.code == gdb.TYPE_CODE_FLT else int(self.value)

    def kind(self):
        if self.type.code != gdb.TYPE_CODE_FLT:
            return "integer"
        return "single" if self.type.sizeof == 4 else "double"

    def length(self):
        first, last = self.type.range()
        return last - first + 1

    def enumerator(self):
        names = (field.name for field in self.type.fields() if field.enumval == int(self.value))
        return next(names, str(int(self.value))).rpartition("::")[2]

    def address(self):
        return int(self.value.address)

    def type_name(self):
        return str(self.type.unqualified())


class String:
    """The printer of bv::String."""

    def __init__(self, value):
        self.value = Value(value)

    def display_hint(self):
        return "string"

    def to_string(self):
        start, length = texts.string_at(self.value.memory, self.value.address())
        return gdb.Value(start).cast(gdb.lookup_type("char").pointer()).lazy_string("UTF-8", length)


def printer(shown):
    """The class of printers of a type."""
    functions = {"__init__": lambda self, value: setattr(self, "value", Value(value))}
    if shown.text:
        functions["to_string"] = lambda self: shown.text(self.value)
    if shown.parts:
        functions["children"] = lambda self: ((name, part.value if isinstance(part, Value) else part)
                                              for name, part in shown.parts(self.value))
    if shown.is_numbered:
        functions["display_hint"] = lambda self: "array"
    return type("Printer", (), functions)


def register(objfile=None):
    """Has GDB use the printers, for as long as the given file is loaded, or always. A second time changes nothing."""
    collection = gdb.printing.RegexpCollectionPrettyPrinter("BvBaseUtils")
    collection.add_printer("String", texts.pattern("String"), String)
    for name, shown in texts.TYPES.items():
        collection.add_printer(name, texts.pattern(name), printer(shown))
    gdb.printing.register_pretty_printer(objfile, collection, replace=True)


if __name__ == "__main__":
    register()
