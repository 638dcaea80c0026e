"""How LLDB shows the types of BvBaseUtils: `command script import` this file."""
import os
import re
import sys

import lldb

_TEXTS = os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "debuggers")
if _TEXTS not in sys.path:
    sys.path.insert(0, _TEXTS)

import bvbaseutils_texts as texts

FLOATS = {lldb.eBasicTypeFloat: "single", lldb.eBasicTypeDouble: "double"}
SIGNED = (lldb.eBasicTypeChar, lldb.eBasicTypeSignedChar, lldb.eBasicTypeShort, lldb.eBasicTypeInt, lldb.eBasicTypeLong,
          lldb.eBasicTypeLongLong)


class Memory(texts.Memory):
    """The memory of the program that runs, or of a core dump."""

    def __init__(self, target):
        self.target, self.process = target, target.GetProcess()
        self.pointer_size = target.GetAddressByteSize()

    def read(self, address, size):
        error = lldb.SBError()
        data = self.process.ReadMemory(address, size, error)
        if error.Fail():
            raise ValueError(error.GetCString())
        return data

    def symbol(self, address):
        return self.target.ResolveLoadAddress(address).GetSymbol().GetName() or ""


class Value:
    """A value of LLDB with the interface of bvbaseutils_texts."""

    def __init__(self, value):
        self.value = value.GetNonSyntheticValue()
        self.target = self.value.GetTarget()
        self.its_address = self.value.GetLoadAddress()
        self.type = self.value.GetType()
        if self.type.IsReferenceType():  # to a class, perhaps, that only the debug information of the library describes
            self.its_address = self.value.GetValueAsUnsigned()
            self.type = self.type.GetDereferencedType()
            self.value = self.value.Dereference()
        self.type = self.type.GetCanonicalType()

    @property
    def memory(self):
        return Memory(self.target)

    def __getitem__(self, key):
        if isinstance(key, str):
            return Value(self.value.GetChildMemberWithName(key))
        return Value(self.value.GetChildAtIndex(key, lldb.eNoDynamicValues, True))

    def number(self):
        error = lldb.SBError()
        basic = self.type.GetBasicType()
        if basic == lldb.eBasicTypeFloat:
            return self.value.GetData().GetFloat(error, 0)
        if basic == lldb.eBasicTypeDouble:
            return self.value.GetData().GetDouble(error, 0)
        return self.value.GetValueAsSigned() if basic in SIGNED else self.value.GetValueAsUnsigned()

    def kind(self):
        return FLOATS.get(self.type.GetBasicType(), "integer")

    def length(self):
        return self.value.GetNumChildren()

    def enumerator(self):
        return self.value.GetValue().rpartition("::")[2]

    def address(self):
        return self.its_address

    def type_name(self):
        return self.type.GetUnqualifiedType().GetName()


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def part_text(part):
    """A part in a line, be it text, a value of the library or of the language."""
    if isinstance(part, str):
        return part
    name = re.match(r"bv::([\w:]+)", part.type_name())
    if name and name[1] in texts.TYPES:
        return shown_text(texts.TYPES[name[1]], part)
    if part.type.IsPointerType():
        return hex(part.number())
    if part.type.GetBasicType() == lldb.eBasicTypeBool:
        return "true" if part.number() else "false"
    return texts.number_text(part)


def shown_text(shown, value):
    """The text and the parts of a value in one line."""
    text = shown.text(value) if shown.text else ""
    parts = list(shown.parts(value)) if shown.parts else []
    if not parts:
        return text
    separator = " = " if text else ""
    names = ("" if shown.is_numbered else f"{name} = " for name, _ in parts)
    return f"{text}{separator}{{{', '.join(name + part_text(part) for name, (_, part) in zip(names, parts))}}}"


def summary(value, _dictionary):
    """The summary of any type of the library, in one line. The members are still there to expand."""
    value = Value(value)
    if value.type_name() == "bv::String":
        return quoted(texts.text_at(value.memory, value.address()))
    return part_text(value)


def __lldb_init_module(debugger, _dictionary):
    debugger.HandleCommand("type category define BvBaseUtils")
    for name in ("String", *texts.TYPES):
        debugger.HandleCommand(
            f'type summary add --category BvBaseUtils --python-function {__name__}.summary -x "{texts.pattern(name)}"')
    debugger.HandleCommand("type category enable BvBaseUtils")
