"""Reads the exported interface from include/QELEngine.h, and knows its types in every language."""
import pathlib
import re

import interface_doc

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
HEADER = ROOT / "include" / "QELEngine.h"
EXPORTS = ROOT / "cmake" / "Exports.cmake"
HOSTS = ROOT / "examples" / "hosts"
CLASS_SECTION = "the hatch-brush class"  # the part of the header that only C++ can use

# C type: Pascal, C#, Python, bytes on 32 bits
TYPES = {
    "HQELENGINE": ("HQELENGINE", "IntPtr", "HQELENGINE", 4),
    "HQELELEM": ("HQELELEM", "IntPtr", "HQELELEM", 4),
    "HQELGRADIENT": ("HQELGRADIENT", "IntPtr", "HQELGRADIENT", 4),
    "HDC": ("HDC", "IntPtr", "HANDLE", 4),
    "HBRUSH": ("HBRUSH", "IntPtr", "HANDLE", 4),
    "HRGN": ("HRGN", "IntPtr", "HANDLE", 4),
    "int": ("LongInt", "int", "c_int32", 4),
    "BOOL": ("LongInt", "int", "c_int32", 4),
    "LONG": ("LongInt", "int", "c_int32", 4),
    "DWORD": ("LongWord", "uint", "c_uint32", 4),
    "COLORREF": ("LongWord", "uint", "c_uint32", 4),
    "float": ("Single", "float", "c_float", 4),
    "double": ("Double", "double", "c_double", 8),
    "char": ("AnsiChar", "byte", "c_char", 1),
    "char*": ("PAnsiChar", "[Out] System.Text.StringBuilder", "c_char_p", 4),
    "const char*": ("PAnsiChar", "string", "c_char_p", 4),
    "const wchar_t*": ("PWideChar", "[MarshalAs(UnmanagedType.LPWStr)] string", "c_wchar_p", 4),
    "wchar_t*": ("PWideChar", "[Out, MarshalAs(UnmanagedType.LPWStr)] System.Text.StringBuilder", "c_wchar_p", 4),
    "void*": ("Pointer", "IntPtr", "c_void_p", 4),
    "const void*": ("Pointer", "IntPtr", "c_void_p", 4),
    "int*": ("PLongInt", "out int", "POINTER(c_int32)", 4),
    "DWORD*": ("PLongWord", "out uint", "POINTER(c_uint32)", 4),
    "float*": ("PSingle", "out float", "POINTER(c_float)", 4),
    "double*": ("PDouble", "out double", "POINTER(c_double)", 4),
    "RECT*": ("PRect", "out RECT", "POINTER(RECT)", 4),
    "const RECT*": ("PRect", "ref RECT", "POINTER(RECT)", 4),
    "SIZE*": ("PSize", "out SIZE", "POINTER(SIZE)", 4),
    "const SIZE*": ("PSize", "ref SIZE", "POINTER(SIZE)", 4),
    "POINT*": ("PPoint", "ref POINT", "POINTER(POINT)", 4),
    "const POINT*": ("PPoint", "[In] POINT[]", "POINTER(POINT)", 4),
    "RECT": ("TRect", "RECT", "RECT", 16),
    "QELERROR*": ("PQELERROR", "ref QELERROR", "POINTER(QELERROR)", 4),
}
PASCAL, CSHARP, PYTHON, BYTES = range(4)
SYSTEM_RECORDS = {  # the system's own, which C# and Python do not have
    "POINT": ("x", "y"), "SIZE": ("cx", "cy"), "RECT": ("left", "top", "right", "bottom")}


IN_AND_OUT = {("QELSaveMemory", "pnSize")}  # numbers that are read before they are written


class Number(int):
    """A number that remembers whether the header spells it in hexadecimal."""

    def __new__(cls, text):
        number = super().__new__(cls, text.rstrip("UL"), 0)
        number.is_hex = text.startswith("0x")
        return number

    def spelled(self, prefix):
        return f"{prefix}{self:X}" if self.is_hex else str(int(self))


class Problems(Exception):
    """What is wrong, one line each."""


class Function:
    def __init__(self, result, name, arguments):
        self.result, self.name, self.arguments = result, name, arguments

    def takes_record(self):
        """Whether its untyped pointer is to an element's record, and not to bytes."""
        return any(name == "hElem" for _, name in self.arguments) and any(
            kind.endswith("void*") for kind, _ in self.arguments)

    def bytes(self):
        return sum(TYPES[kind][BYTES] for kind, _ in self.arguments)


class Interface:
    """What the header declares, in its order: items are ("section", words), ("constant", name, value,
    remark), ("record", name, fields) and ("function", Function). A field is (C type, name, count), the
    count a constant's name or None."""

    def __init__(self, source, exports):
        self.items = []
        for kind, _, code in interface_doc.read_blocks(source):
            if kind == "section":
                if code == CLASS_SECTION:
                    break
                self.items.append(("section", code))
            elif kind == "function":
                self.items.append(("function", self.read_function(code)))
            elif code.startswith("enum"):
                self.read_enum(code)
            elif code.startswith("#define"):
                name, value = re.match(r"#define (\w+) ([0-9A-FxUL]+)", code).groups()
                remark = re.search(r"/\* (.*?) \*/", code)
                self.items.append(("constant", name, Number(value), remark.group(1) if remark else ""))
            elif code.startswith("typedef struct") and "{" in code:
                self.read_record(code)
        self.items = [item for item, following in zip(self.items, self.items[1:] + [("section",)])
                      if item[0] != "section" or following[0] != "section"]
        self.functions = [item[1] for item in self.items if item[0] == "function"]
        self.records = {item[1]: item[2] for item in self.items if item[0] == "record"}
        self.attributes = [name for name in self.records if name.endswith("ATTR")]  # of elements
        self.constants = {item[1]: item[2] for item in self.items if item[0] == "constant"}
        self.sizes = {name: int(size) for name, size in
                      re.findall(r"typedef char \w+\[sizeof\((\w+)\) == (\d+) \? 1 : -1\];", source)}
        entries = re.search(r"set\(QEL_DECORATED_EXPORTS(.*?)\)", exports, re.S).group(1)
        self.decorated = dict(entry.split(":") for entry in entries.split())
        if self.sizes.keys() != self.records.keys():
            raise Problems(f"the header asserts sizes of {sorted(self.sizes)}, not of {sorted(self.records)}")

    @staticmethod
    def read_function(code):
        text = " ".join(code.split())
        result, name, arguments = re.fullmatch(r"(.*?) QELAPI (\w+)\((.*)\);", text).groups()
        pairs = []
        for argument in [] if arguments == "void" else arguments.split(", "):
            kind, argument_name = re.fullmatch(r"(.*?) ?(\w+)", argument).groups()
            pairs.append((kind.replace(" *", "*"), argument_name))
        for kind in [result] + [kind for kind, _ in pairs]:
            if kind not in TYPES:
                raise Problems(f"{name}: no other language has a type for '{kind}' yet; see TYPES")
        return Function(result, name, pairs)

    def read_enum(self, code):
        pattern = r"(\w+) = (0x[0-9A-F]+|\d+),?(?:\s*/\* (.*?) ?\*/)?"
        body = code[code.index("{") + 1:]
        for name, value, remark in re.findall(pattern, body, re.S):
            self.items.append(("constant", name, Number(value), " ".join(remark.split())))

    def read_record(self, code):
        fields = re.findall(r"^    (\w+) (\w+)(?:\[(\w+)\])?;", code, re.M)
        self.items.append(("record", re.search(r"\} (\w+);", code).group(1),
                           [(kind, name, count or None) for kind, name, count in fields]))

    def entry(self, name, bits):
        """The name under which the DLL exports a function."""
        return f"_{name}@{self.decorated[name]}" if bits == 32 and name in self.decorated else name


def count_of(constants, count):
    return 1 if count is None else int(count) if count.isdigit() else constants[count]
