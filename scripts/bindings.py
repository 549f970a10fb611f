#!/usr/bin/env python3
"""Writes the declarations of the exported interface for Pascal, C# and Python from include/QELEngine.h.

    scripts/bindings.py                 writes what is not current under examples/hosts
    scripts/bindings.py --check [DIR]   writes nothing: says what is not current, what a declaration file
                                        and the DLLs under DIR (default: build) do not agree in, and which
                                        code of docs/embedding*.md is not in a sample
    scripts/bindings.py --stand-in DIR  writes a stand-in of the DLL for Linux, in C, that records every
                                        call, and programs that call every function (see stand_in())
    scripts/bindings.py --calls LIBRARY calls every function of the built stand-in from Python
    scripts/bindings.py --layout        prints sizes and offsets of the records as Python has them

Pascal and C# cannot read a C header, and a declaration that is wrong in one argument ruins the stack of a
32-bit host. So the files are made from the header, and what they declare is read back from their text and
held against the DLLs themselves: names against the table of exports, argument bytes against the machine
code that takes them off the stack."""
import ctypes
import importlib.machinery
import os
import pathlib
import re
import subprocess
import sys
import types

sys.dont_write_bytecode = True  # nothing is left beside the sources
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import interface_doc  # noqa: E402  (stands beside this file)

ROOT = pathlib.Path(__file__).resolve().parent.parent
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
    "int": ("LongInt", "int", "c_int32", 4),
    "BOOL": ("LongInt", "int", "c_int32", 4),
    "LONG": ("LongInt", "int", "c_int32", 4),
    "DWORD": ("LongWord", "uint", "c_uint32", 4),
    "COLORREF": ("LongWord", "uint", "c_uint32", 4),
    "float": ("Single", "float", "c_float", 4),
    "char": ("AnsiChar", "byte", "c_char", 1),
    "const char*": ("PAnsiChar", "string", "c_char_p", 4),
    "const wchar_t*": ("PWideChar", "[MarshalAs(UnmanagedType.LPWStr)] string", "c_wchar_p", 4),
    "void*": ("Pointer", "IntPtr", "c_void_p", 4),
    "const void*": ("Pointer", "IntPtr", "c_void_p", 4),
    "int*": ("PLongInt", "out int", "POINTER(c_int32)", 4),
    "DWORD*": ("PLongWord", "out uint", "POINTER(c_uint32)", 4),
    "float*": ("PSingle", "out float", "POINTER(c_float)", 4),
    "RECT*": ("PRect", "out RECT", "POINTER(RECT)", 4),
    "const RECT*": ("PRect", "ref RECT", "POINTER(RECT)", 4),
    "SIZE*": ("PSize", "out SIZE", "POINTER(SIZE)", 4),
    "const SIZE*": ("PSize", "ref SIZE", "POINTER(SIZE)", 4),
    "const POINT*": ("PPoint", "[In] POINT[]", "POINTER(POINT)", 4),
    "RECT": ("TRect", "RECT", "RECT", 16),
}
PASCAL, CSHARP, PYTHON, BYTES = range(4)
SYSTEM_RECORDS = {  # the system's own, which C# and Python do not have
    "POINT": ("x", "y"), "SIZE": ("cx", "cy"), "RECT": ("left", "top", "right", "bottom")}


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


# ---- the header


class Function:
    def __init__(self, result, name, arguments):
        self.result, self.name, self.arguments = result, name, arguments

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


# ---- Pascal

PASCAL_HEAD = """{ QELEngine: the exported interface for Free Pascal and Delphi, 32 and 64 bits.

  Made from include/QELEngine.h by scripts/bindings.py; the header tells what each function does.
  Handles are opaque, texts are 8-bit in the system's ANSI code page, all calls come from one thread,
  and a result of 0 (nil) means failure. }
unit QELEngine;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  Windows;

const
  QELENGINE_DLL = 'QELEngine.dll';

type
  TQELEngineHandle = record end;
  TQELElemHandle = record end;
  TQELGradientHandle = record end;
  HQELENGINE = ^TQELEngineHandle;     { an engine, or in show-only mode a share of one }
  HQELELEM = ^TQELElemHandle;         { an element of the open drawing }
  HQELGRADIENT = ^TQELGradientHandle; { a gradient descriptor }
"""

PASCAL_NAMES = {"hdc": "dc", "pSize": "pExtent"}  # letter case does not tell them from their types there


def make_pascal(interface):
    out, mode = [PASCAL_HEAD], None

    def switch(wanted):
        nonlocal mode
        if mode != wanted and wanted:
            out.append(wanted)
        mode = wanted

    for item in interface.items:
        if item[0] == "section":
            out.append(f"\n{{ ---- {item[1]} ---- }}\n")
            mode = None
        elif item[0] == "constant":
            switch("const")
            remark = f" {{ {item[3]} }}" if item[3] else ""
            number = item[2].spelled("$")
            out.append(f"  {item[1]} = {f'LongWord({number})' if item[2] > 0x7FFFFFFF else number};{remark}")
        elif item[0] == "record":
            switch("type")
            out.append(f"  {item[1]} = packed record")
            for kind, name, count in item[2]:
                spelled = TYPES[kind][PASCAL]
                out.append(f"    {name}: array[0..{count} - 1] of {spelled};" if count else f"    {name}: {spelled};")
            out.append("  end;")
            out.append(f"  P{item[1]} = ^{item[1]};\n")
        else:
            switch(None)
            function = item[1]
            arguments = "; ".join(f"{PASCAL_NAMES.get(name, name)}: {TYPES[kind][PASCAL]}"
                                  for kind, name in function.arguments)
            name = f"'{function.name}'"
            if function.name in interface.decorated:
                name = f"{{$IFDEF WIN64}}{name}{{$ELSE}}'{interface.entry(function.name, 32)}'{{$ENDIF}}"
            out.append(f"function {function.name}{'(' + arguments + ')' if arguments else ''}: "
                       f"{TYPES[function.result][PASCAL]}; stdcall;\n  external QELENGINE_DLL name {name};")
    out.append("\nimplementation\n")
    for name, size in interface.sizes.items():
        out.append(f"{{$IF SizeOf({name}) <> {size}}}{{$MESSAGE FATAL '{name} is not {size} bytes'}}{{$IFEND}}")
    out.append("\nend.\n")
    return re.sub(r"\n{3,}", "\n\n", "\n".join(out))


# ---- C#

CSHARP_HEAD = """// QELEngine: the exported interface for C# and the other .NET languages, 32 and 64 bits.
//
// Made from include/QELEngine.h by scripts/bindings.py; the header tells what each function does.
// Handles are opaque, all calls come from one thread, and a result of 0 means failure. Texts are
// handed over in the system's ANSI code page; one that it cannot express throws ArgumentException
// instead of reaching the engine with wrong letters. A text that a function returns stays the
// engine's: Text() copies it.
using System;
using System.Runtime.InteropServices;

public static class QELEngine
{
    public const string Dll = "QELEngine.dll";

    /// <summary>A text that QELGetName or QELGetElemId returned; null for none.</summary>
    public static string Text(IntPtr psz)
    {
        return psz == IntPtr.Zero ? null : Marshal.PtrToStringAnsi(psz);
    }
"""
IMPORT = ("    [DllImport(Dll, EntryPoint = \"{entry}\", CallingConvention = CallingConvention.StdCall,\n"
          "        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]")


def csharp_result(kind):
    # A text declared as string would be freed by the runtime, which did not make it.
    return "IntPtr" if kind == "const char*" else TYPES[kind][CSHARP]


def csharp_forms(interface, function):
    """The argument lists of a function: an untyped record is also taken as each record there is."""
    plain = [(TYPES[kind][CSHARP], name) for kind, name in function.arguments]
    forms = [plain]
    for at, (kind, name) in enumerate(function.arguments):
        if kind in ("void*", "const void*"):
            word = "out" if kind == "void*" else "ref"
            forms += [plain[:at] + [(f"{word} {record}", name)] + plain[at + 1:] for record in interface.records]
    return forms


def make_csharp(interface):
    out = [CSHARP_HEAD]
    for name, fields in SYSTEM_RECORDS.items():
        out += ["    [StructLayout(LayoutKind.Sequential)]", f"    public struct {name}", "    {",
                *(f"        public int {field};" for field in fields), "    }\n"]
    for item in interface.items:
        if item[0] == "section":
            out.append(f"\n    // ---- {item[1]} ----\n")
        elif item[0] == "constant":
            kind = "uint" if item[2] > 0x7FFFFFFF else "int"
            out.append(f"    public const {kind} {item[1]} = {item[2].spelled('0x')};"
                       f"{' // ' + item[3] if item[3] else ''}")
        elif item[0] == "record":
            out += ["    [StructLayout(LayoutKind.Sequential, Pack = 1)]", f"    public struct {item[1]}", "    {"]
            for kind, name, count in item[2]:
                spelled = TYPES[kind][CSHARP]
                if count:
                    out.append(f"        [MarshalAs(UnmanagedType.ByValArray, SizeConst = {count})]")
                    spelled += "[]"
                out.append(f"        public {spelled} {name};")
            out.append("    }\n")
        else:
            function = item[1]
            result = csharp_result(function.result)
            for form in csharp_forms(interface, function):
                arguments = ", ".join(f"{spelled} {name}" for spelled, name in form)
                if function.name not in interface.decorated:
                    out += [IMPORT.format(entry=function.name),
                            f"    public static extern {result} {function.name}({arguments});"]
                    continue
                for bits in (32, 64):
                    out += [IMPORT.format(entry=interface.entry(function.name, bits)),
                            f"    private static extern {result} {function.name}{bits}({arguments});"]
                plain = re.sub(r"\[[^\]]+\] ", "", arguments)
                names = ", ".join(f"ref {name}" if spelled.startswith("ref ") else name for spelled, name in form)
                out += [f"    public static {result} {function.name}({plain})", "    {",
                        f"        return IntPtr.Size == 4 ? {function.name}32({names}) : {function.name}64({names});",
                        "    }"]
            out.append("")
    while not out[-1]:
        out.pop()
    out.append("}\n")
    return re.sub(r"\n{3,}", "\n\n", "\n".join(out))


# ---- Python

PYTHON_HEAD = '''"""QELEngine: the exported interface for Python on Windows, 32 and 64 bits (ctypes).

Made from include/QELEngine.h by scripts/bindings.py; the header tells what each function does.
load() gives the DLL with the types of all its functions set:

    dll = qelengine.load("QELEngine.dll")
    engine = dll.CreateQELEngine()

Handles are opaque (numbers, None for none), texts are bytes in the system's ANSI code page
(text.encode("mbcs")), all calls come from one thread, and a result of 0 means failure. Where the
header takes a pointer, pass ctypes.byref(variable) or None."""
import ctypes
from ctypes import POINTER, c_char, c_char_p, c_float, c_int32, c_uint32, c_void_p, c_wchar_p

HQELENGINE = c_void_p  # an engine, or in show-only mode a share of one
HQELELEM = c_void_p  # an element of the open drawing
HQELGRADIENT = c_void_p  # a gradient descriptor
HANDLE = c_void_p  # the system's handles: device contexts, brushes

'''
PYTHON_TAIL = '''

def load(path="QELEngine.dll"):
    """The DLL, with argument and result types set. Python looks for a name without a folder beside
    itself and in the system's folders only: give the whole path."""
    dll = ctypes.WinDLL(path)
    for name, (result, arguments) in FUNCTIONS.items():
        decorated = ctypes.sizeof(c_void_p) == 4 and name in DECORATED
        function = getattr(dll, DECORATED[name] if decorated else name)
        function.restype = result
        function.argtypes = arguments
        setattr(dll, name, function)
    return dll
'''


def make_python(interface):
    out, functions = [PYTHON_HEAD], []

    def structure(name, fields):
        out.append(f"\nclass {name}(ctypes.Structure):\n    _pack_ = 1\n    _fields_ = [")
        out.extend(f'        ("{field}", {spelled}),' for field, spelled in fields)
        out.append("    ]\n\n")

    for name, fields in SYSTEM_RECORDS.items():
        structure(name, [(field, "c_int32") for field in fields])
    for item in interface.items:
        if item[0] == "section":
            if interface.items[interface.items.index(item) + 1][0] != "function":
                out.append(f"\n# ---- {item[1]}\n")
        elif item[0] == "constant":
            out.append(f"{item[1]} = {item[2].spelled('0x')}{'  # ' + item[3] if item[3] else ''}")
        elif item[0] == "record":
            structure(item[1], [(name, TYPES[kind][PYTHON] + (f" * {count}" if count else ""))
                                for kind, name, count in item[2]])
        elif item[0] == "function":
            function = item[1]
            arguments = "".join(TYPES[kind][PYTHON] + ", " for kind, _ in function.arguments)
            comma = arguments.rstrip(" ") if len(function.arguments) == 1 else arguments.rstrip(", ")
            functions.append(f'    "{function.name}": ({TYPES[function.result][PYTHON]}, ({comma})),')
    out.append("\n# name: (result, arguments)\nFUNCTIONS = {")
    out += functions
    out.append("}\n\n# In the 32-bit DLL these have other names.\nDECORATED = {")
    out += [f'    "{name}": "{interface.entry(name, 32)}",' for name in interface.decorated]
    out.append("}\n")
    text = re.sub(r"\n{4,}", "\n\n\n", "\n".join(out)) + PYTHON_TAIL
    return re.sub(r"(?<!\n)\n\n(?=class )", "\n\n\n", text)


TARGETS = {"pascal/QELEngine.pas": make_pascal, "csharp/QELEngine.cs": make_csharp, "python/qelengine.py": make_python}


# ---- what the files declare, read back from their text

PASCAL_BYTES = {"LongInt": 4, "LongWord": 4, "Single": 4, "AnsiChar": 1, "TRect": 16,
                **dict.fromkeys(("HQELENGINE", "HQELELEM", "HQELGRADIENT", "HDC", "HBRUSH", "Pointer", "PAnsiChar",
                                 "PWideChar", "PLongInt", "PLongWord", "PSingle", "PRect", "PSize", "PPoint"), 4)}
CSHARP_BYTES = {"int": 4, "uint": 4, "float": 4, "byte": 1, "RECT": 16, "IntPtr": 4, "string": 4, "POINT[]": 4}


def read_pascal(text):
    """For each word size the declared functions, {entry: bytes of arguments}; and {record: bytes}."""
    declared = {32: {}, 64: {}}
    pattern = r"^function (\w+)(?:\((.*?)\))?: \w+; stdcall;\s+external QELENGINE_DLL name (.*?);$"
    for name, arguments, entry in re.findall(pattern, text, re.M):
        kinds = [argument.split(": ")[1] for argument in arguments.split("; ")] if arguments else []
        chosen = re.fullmatch(r"\{\$IFDEF WIN64\}'(.*?)'\{\$ELSE\}'(.*?)'\{\$ENDIF\}", entry)
        for bits in declared:
            found = chosen.group(1 if bits == 64 else 2) if chosen else entry.strip("'")
            declared[bits][found] = {sum(PASCAL_BYTES[kind] for kind in kinds)}
    constants = {name: int(value.replace("$", "0x"), 0)
                 for name, value in re.findall(r"^  (\w+) = (\$?[0-9A-F]+);", text, re.M)}
    sizes = {}
    for name, body in re.findall(r"^  (\w+) = packed record\n(.*?)^  end;", text, re.M | re.S):
        fields = re.findall(r"^    \w+: (?:array\[0\.\.(\w+) - 1\] of )?(\w+);", body, re.M)
        sizes[name] = sum(PASCAL_BYTES[kind] * count_of(constants, count or None) for count, kind in fields)
    return declared, sizes


def read_csharp(text):
    declared = {32: {}, 64: {}}
    pattern = r'\[DllImport\(Dll, EntryPoint = "([^"]+)".*?extern \S+ (\w+)\((.*?)\);'
    for entry, name, arguments in re.findall(pattern, text, re.S):
        arguments = re.sub(r"\[[^\]]+\] ", "", arguments)
        kinds = [argument.rsplit(" ", 1)[0] for argument in arguments.split(", ")] if arguments else []
        total = sum(4 if kind.startswith(("ref ", "out ")) else CSHARP_BYTES[kind] for kind in kinds)
        for bits in declared:
            if name.endswith(("32", "64")) and not name.endswith(str(bits)):
                continue  # one of the two that a wrapper chooses from
            declared[bits].setdefault(entry, set()).add(total)
    constants = {name: int(value, 0) for name, value in re.findall(r"const int (\w+) = (\w+);", text)}
    sizes = {}
    for name, body in re.findall(r"public struct (QEL\w+)\s*\{(.*?)^    \}", text, re.M | re.S):
        fields = re.findall(r"(?:SizeConst = (\w+)\)\]\s*)?public (\w+)(?:\[\])? \w+;", body)
        sizes[name] = sum(CSHARP_BYTES[kind] * count_of(constants, count or None) for count, kind in fields)
    return declared, sizes


def load_python(path):
    loader = importlib.machinery.SourceFileLoader("qelengine", str(path))
    module = types.ModuleType(loader.name)
    loader.exec_module(module)
    return module


def read_python(module):
    def size(kind):  # on 32 bits, whatever this Python is
        is_number = issubclass(kind, ctypes._SimpleCData) and kind._type_ in "iIlLf"  # noqa: SLF001
        return ctypes.sizeof(kind) if is_number else 4

    declared = {32: {}, 64: {}}
    for name, (_, arguments) in module.FUNCTIONS.items():
        total = {sum(size(kind) for kind in arguments)}
        declared[64][name] = total
        declared[32][module.DECORATED.get(name, name)] = total
    sizes = {name: ctypes.sizeof(getattr(module, name)) for name in dir(module) if name.endswith("ATTR")}
    return declared, sizes


# ---- what the DLLs export


def objdump(*arguments):
    return subprocess.run(["objdump", *map(str, arguments)], check=True, capture_output=True, text=True).stdout


def read_exports(dll):
    """{name: address} of the flat functions; the class's names are of no use outside C++."""
    text = objdump("-p", dll)
    base = int(re.search(r"^ImageBase\s+([0-9a-f]+)", text, re.M).group(1), 16)
    table = text[text.index("Export Address Table"):]
    addresses = {int(number): base + int(rva, 16) for number, rva in
                 re.findall(r"^\s*\[\s*(\d+)\] \+base\[\s*\d+\] ([0-9a-f]+) Export RVA", table, re.M)}
    names = re.findall(r"^\s*\[\s*(\d+)\] (\S+)$", table[table.index("[Ordinal/Name Pointer]"):], re.M)
    return {name: addresses[int(number)] for number, name in names if not name.startswith(("_Z", "?"))}


def popped_bytes(dll, exports):
    """{name: bytes} that each function of a 32-bit DLL takes off the stack when it returns: all ways
    through its code are followed to their `ret`."""
    code = {}
    last = None
    for address, text in re.findall(r"^\s*([0-9a-f]+):\t(?:[0-9a-f]{2} )+\s*\t?(.*)$", objdump("-d", "-w", dll), re.M):
        address = int(address, 16)
        if last is not None:
            code[last] = (code[last], address)
        code[address] = text.split("#")[0].strip()
        last = address
    code.pop(last, None)
    result = {}
    for name, start in exports.items():
        seen, todo, found = set(), [start], set()
        while todo:
            address = todo.pop()
            if address in seen or address not in code:
                continue
            seen.add(address)
            text, following = code[address]
            word, _, operand = text.partition(" ")
            operand = operand.strip()
            target = re.match(r"(?:0x)?([0-9a-f]+)\b", operand)
            if word.startswith("ret"):
                found.add(int(operand.lstrip("$"), 0) if operand else 0)
                continue
            if word.startswith("j") and target:
                todo.append(int(target.group(1), 16))
            if word not in ("jmp", "ud2"):
                todo.append(following)
        result[name] = found
    return result


# ---- what arrives: a stand-in of the DLL that records every call, for runtimes that are on Linux only

STAND_IN_HEAD = """/* A stand-in of QELEngine.dll for Linux, made by scripts/bindings.py from the header that it
 * includes. It writes every call with its arguments into the file $QEL_TRACE and answers with numbers
 * that tell themselves apart. A few functions of the system that the sample hosts use are here, too. */
#include "QELEngine.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static FILE* g_pTrace;

static void Begin(const char* pszName)
{
    if (!g_pTrace) g_pTrace = fopen(getenv("QEL_TRACE"), "w");
    if (!g_pTrace) abort();
    fprintf(g_pTrace, "%s", pszName);
}
static void Handle(const void* h) { fprintf(g_pTrace, " %#llx", (unsigned long long)(size_t)h); }
static void Int(int n) { fprintf(g_pTrace, " %d", n); }
static void Dword(DWORD n) { fprintf(g_pTrace, " %u", n); }
static void Float(float f) { fprintf(g_pTrace, " %g", f); }
static void Text(const char* psz) { fprintf(g_pTrace, " '%s'", psz); }
static void Wide(const void* p) /* 16-bit units; Python on Linux hands over 32-bit ones */
{
    const unsigned short* pUnits = p;
    const int nStep = pUnits[0] && !pUnits[1] && pUnits[2] ? 2 : 1;
    fprintf(g_pTrace, " '");
    for (; *pUnits; pUnits += nStep) fputc(*pUnits, g_pTrace);
    fprintf(g_pTrace, "'");
}
static void Longs(const void* p, int nCount)
{
    const LONG* pLongs = p;
    int n;
    for (n = 0; n < nCount; ++n) fprintf(g_pTrace, n ? ",%d" : " %d", pLongs[n]);
}
static void Bytes(const void* p, int nCount)
{
    const unsigned char* pBytes = p;
    fputc(' ', g_pTrace);
    while (nCount-- > 0) fprintf(g_pTrace, "%02x", *pBytes++);
}
static void Out(void) { fprintf(g_pTrace, " out"); }
static void End(void)
{
    fputc('\\n', g_pTrace);
    fflush(g_pTrace);
}

static int Fill(HQELELEM hElem, void* pBuffer) /* the element's number chooses the record */
{
    static const int g_sizes[] = {SIZES};
    const unsigned nRecord = (unsigned)(size_t)hElem % (sizeof g_sizes / sizeof g_sizes[0]);
    int n;
    for (n = 0; n < g_sizes[nRecord]; ++n) ((unsigned char*)pBuffer)[n] = (unsigned char)(n * 7 + nRecord);
    return g_sizes[nRecord];
}

"""
STAND_IN_WINDOWS = """/* The few names of the system that QELEngine.h needs, for the stand-in alone. */
#include <stddef.h>
#define __stdcall
typedef unsigned int DWORD, COLORREF;
typedef int LONG, BOOL;
typedef struct HDC__ *HDC;
typedef struct HBRUSH__ *HBRUSH;
typedef struct { LONG left, top, right, bottom; } RECT;
typedef struct { LONG x, y; } POINT;
typedef struct { LONG cx, cy; } SIZE;
"""
STAND_IN_SYSTEM = """
void* CreateCompatibleDC(void* dc) { Begin("CreateCompatibleDC"); Handle(dc); End(); return (void*)0x5500000001; }
void* CreateDIBSection(void* dc, void* pInfo, DWORD nUsage, void** ppBits, void* hSection, DWORD nOffset)
{
    Begin("CreateDIBSection"); Handle(dc); Bytes(pInfo, 40); Dword(nUsage); Handle(hSection); Dword(nOffset); End();
    *ppBits = calloc(1, (size_t)((LONG*)pInfo)[5]);
    return (void*)0x5500000002;
}
void* CreateFontW(int a, int b, int c, int d, int e, DWORD f, DWORD g, DWORD h, DWORD i, DWORD j, DWORD k, DWORD l,
                  DWORD m, void* pszFace)
{
    Begin("CreateFontW"); Int(a); Int(b); Int(c); Int(d); Int(e); Dword(f); Dword(g); Dword(h); Dword(i); Dword(j);
    Dword(k); Dword(l); Dword(m); Wide(pszFace); End();
    return (void*)0x5500000003;
}
void* CreateSolidBrush(DWORD clr) { Begin("CreateSolidBrush"); Dword(clr); End(); return (void*)0x5500000004; }
void* SelectObject(void* dc, void* h)
{
    Begin("SelectObject"); Handle(dc); Handle(h); End();
    return (void*)((size_t)h | 0x100);
}
int DeleteObject(void* h) { Begin("DeleteObject"); Handle(h); End(); return 1; }
int DeleteDC(void* dc) { Begin("DeleteDC"); Handle(dc); End(); return 1; }
void* CreateCompatibleBitmap(void* dc, int nWidth, int nHeight)
{
    Begin("CreateCompatibleBitmap"); Handle(dc); Int(nWidth); Int(nHeight); End();
    return (void*)0x5500000005;
}
int BitBlt(void* dcTo, int x, int y, int cx, int cy, void* dcFrom, int x1, int y1, int nOperation)
{
    Begin("BitBlt"); Handle(dcTo); Int(x); Int(y); Int(cx); Int(cy); Handle(dcFrom); Int(x1); Int(y1);
    Int(nOperation); End();
    return 1;
}
int SetProcessDPIAware(void) { Begin("SetProcessDPIAware"); End(); return 1; }
int SetProcessDpiAwarenessContext(void* context)
{
    Begin("SetProcessDpiAwarenessContext"); Handle(context); End();
    return 1;
}
int GdiFlush(void) { Begin("GdiFlush"); End(); return 1; }
int FillRect(void* dc, void* prc, void* hBrush)
{
    Begin("FillRect"); Handle(dc); Longs(prc, 4); Handle(hBrush); End();
    return 1;
}
"""
OUT_LONGS = {"RECT*": (11, -12, 13, 14), "SIZE*": (321, 222)}
OUT_NUMBERS = {"int*": -77, "DWORD*": 0x90000007, "float*": 7.25}
HANDLES = ("HQELENGINE", "HQELELEM", "HQELGRADIENT", "HDC", "HBRUSH")


def test_argument(kind, at):
    """What the programs pass: no two arguments alike, handles beyond 32 bits, numbers with the highest bit."""
    if kind in HANDLES:
        return (0x51 + at << 32) + 0x10 + at
    if kind in ("int", "BOOL"):
        return -2 - at
    if kind in ("DWORD", "COLORREF"):
        return 0x80000000 + at
    if kind == "float":
        return at + 0.5
    return {"const char*": f"text {at}", "const wchar_t*": f"wide {at}", "const RECT*": (at, -2, 3, 4),
            "const SIZE*": (at, -2), "const POINT*": (at, -2, 3, 4), "const void*": bytes((1, 2, 3, 4))}.get(kind)


def test_result(kind, index):
    if kind in HANDLES:
        return 0x7700000000 + index
    return f"result {index}" if kind == "const char*" else 0xF0000000 + index if kind == "DWORD" else -1000 - index


def traced(kind, value):
    if kind in HANDLES:
        return f"{value:#x}"
    if value is None:
        return "out"
    if isinstance(value, bytes):
        return value.hex()
    if isinstance(value, tuple):
        return ",".join(map(str, value))
    return f"'{value}'" if isinstance(value, str) else f"{value:g}" if kind == "float" else str(value)


class TestCall:
    """One call: its arguments, the line that the stand-in is to write, the line that the caller is to print."""

    def __init__(self, interface, function, record=None):
        self.function, self.record = function, record
        records = list(interface.records)
        index = interface.functions.index(function)
        self.values, outs = [], []
        pattern = None
        for at, (kind, name) in enumerate(function.arguments):
            value = test_argument(kind, at)
            if record and name == "hElem":
                value = (0x51 + at << 32) + len(records) * 1000 + records.index(record)
            if function.name == "QELSetElemAttr" and name == "nSize":
                value = interface.sizes[record] if record else 4
            if record and kind in ("void*", "const void*"):
                pattern = self.pattern(interface.sizes[record], records.index(record))
                value = pattern if kind == "const void*" else None
            self.values.append(value)
            if kind in OUT_LONGS:
                outs.append(",".join(map(str, OUT_LONGS[kind])))
            elif kind in OUT_NUMBERS and name == "pnSize":
                chosen = records.index(record) if record else (self.values[1] & 0xFFFFFFFF) % len(records)
                outs.append(str(interface.sizes[records[chosen]]))
            elif kind in OUT_NUMBERS:
                outs.append(f"{OUT_NUMBERS[kind]}")
            elif record and kind == "void*":
                outs.append(pattern.hex())
        pairs = [traced(kind, value) for (kind, _), value in zip(function.arguments, self.values)]
        self.trace = " ".join([function.name] + pairs)
        self.printed = " ".join([function.name, str(test_result(function.result, index))] + outs)

    @staticmethod
    def pattern(size, number):
        return bytes((n * 7 + number) & 0xFF for n in range(size))


def test_calls(interface):
    calls = []
    for function in interface.functions:
        calls.append(TestCall(interface, function))
        if any(kind.endswith("void*") for kind, _ in function.arguments):
            calls += [TestCall(interface, function, record) for record in interface.records]
    return calls


def make_stand_in(interface):
    out = [STAND_IN_HEAD.replace("SIZES", ", ".join(str(interface.sizes[name]) for name in interface.records))]
    tracers = {**dict.fromkeys(HANDLES, "Handle({0});"), "int": "Int({0});", "BOOL": "Int({0});",
               "DWORD": "Dword({0});", "COLORREF": "Dword({0});", "float": "Float({0});", "const char*": "Text({0});",
               "const wchar_t*": "Wide({0});", "const RECT*": "Longs({0}, 4);", "const SIZE*": "Longs({0}, 2);",
               "const POINT*": "Longs({0}, 4);", "const void*": "Bytes({0}, nSize);"}
    for index, function in enumerate(interface.functions):
        arguments = ", ".join(f"{kind} {name}" for kind, name in function.arguments) or "void"
        body = [f'Begin("{function.name}");']
        body += [tracers.get(kind, "Out();").format(name) for kind, name in function.arguments]
        body.append("End();")
        for kind, name in function.arguments:
            if kind in OUT_LONGS:
                values = ", ".join(map(str, OUT_LONGS[kind]))
                body.append(f"{{ const {kind[:-1]} value = {{{values}}}; *{name} = value; }}")
            elif kind == "void*":
                body.append(f"*pnSize = Fill(hElem, {name});")
            elif kind in OUT_NUMBERS and name != "pnSize":
                body.append(f"*{name} = ({kind[:-1]}){OUT_NUMBERS[kind]};")
        result = test_result(function.result, index)
        body.append(f'return "{result}";' if isinstance(result, str) else f"return ({function.result}){result};")
        lines = "\n    ".join(body)
        out.append(f"{function.result} QELAPI {function.name}({arguments})\n{{\n    {lines}\n}}\n")
    return "\n".join(out) + STAND_IN_SYSTEM


def layout_lines(interface, size, offset):
    """For each record size(record), and for each of its fields offset(record, field)."""
    lines = []
    for record, fields in interface.records.items():
        lines.append(size(record))
        lines += [offset(record, name) for _, name, _ in fields]
    return lines


def make_layout_c(interface):
    body = layout_lines(interface, lambda record: f'    printf("{record} %d\\n", (int)sizeof({record}));',
                        lambda record, field:
                        f'    printf("{record}.{field} %d\\n", (int)offsetof({record}, {field}));')
    return ('#include "QELEngine.h"\n#include <stddef.h>\n#include <stdio.h>\nint main(void)\n{\n' +
            "\n".join(body) + "\n    return 0;\n}\n")


def make_layout_pascal(interface):
    variables = "\n".join(f"  V{name}: {name};" for name in interface.records)
    body = layout_lines(interface, lambda record: f"  WriteLn('{record} ', SizeOf({record}));", lambda record, field:
                        f"  WriteLn('{record}.{field} ', PAnsiChar(@V{record}.{field}) - PAnsiChar(@V{record}));")
    return ("program layout;\n{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}\n{$APPTYPE CONSOLE}\nuses QELEngine;\nvar\n" +
            variables + "\nbegin\n" + "\n".join(body) + "\nend.\n")


CALLS_CSHARP = """using System;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;

internal static class Calls
{
    private static byte[] Flatten(object value)
    {
        if (value is byte[]) return (byte[])value;
        if (value is int[]) return ((int[])value).SelectMany(BitConverter.GetBytes).ToArray();
        if (value is int) return BitConverter.GetBytes((int)value);
        if (value is uint) return BitConverter.GetBytes((uint)value);
        return value.GetType().GetFields().SelectMany(field => Flatten(field.GetValue(value))).ToArray();
    }

    private static string Hex(object record)
    {
        return string.Concat(Flatten(record).Select(b => b.ToString("x2")));
    }

    private static T Record<T>(int number)
    {
        int size = Marshal.SizeOf(typeof(T));
        IntPtr memory = Marshal.AllocHGlobal(size);
        for (int n = 0; n < size; ++n) Marshal.WriteByte(memory, n, (byte)(n * 7 + number));
        return (T)Marshal.PtrToStructure(memory, typeof(T));
    }

    private static void Layout(Type type)
    {
        Console.WriteLine(type.Name + " " + Marshal.SizeOf(type));
        foreach (FieldInfo field in type.GetFields())
            Console.WriteLine(type.Name + "." + field.Name + " " + Marshal.OffsetOf(type, field.Name));
    }

    private static void Main(string[] args)
    {
        if (args.Length > 0)
        {
LAYOUTS
            return;
        }
        IntPtr buffer = Marshal.AllocHGlobal(QELEngine.QEL_MAX_ATTR_SIZE);
        IntPtr bytes = Marshal.AllocHGlobal(4);
        Marshal.Copy(new byte[] { 1, 2, 3, 4 }, 0, bytes, 4);
CALLS
    }
}
"""


def make_calls_csharp(interface):
    records, lines = list(interface.records), []
    for call in test_calls(interface):
        before, passed, shown = [], [], []
        for at, ((kind, _), value) in enumerate(zip(call.function.arguments, call.values)):
            name = f"a{at}"
            if kind in HANDLES:
                passed.append(f"new IntPtr({value:#x}L)")
            elif kind.endswith("void*") and call.record:
                record = f"QELEngine.{call.record}"
                if kind == "void*":
                    before.append(f"{record} {name};")
                    shown.append(f"Hex({name})")
                else:
                    before.append(f"{record} {name} = Record<{record}>({records.index(call.record)});")
                passed.append(("out " if kind == "void*" else "ref ") + name)
            elif kind.endswith("void*"):
                passed.append("buffer" if kind == "void*" else "bytes")
            elif kind == "const POINT*":
                passed.append(f"new[] {{ new QELEngine.POINT {{ x = {value[0]}, y = {value[1]} }}, "
                              f"new QELEngine.POINT {{ x = {value[2]}, y = {value[3]} }} }}")
            elif kind in ("const RECT*", "const SIZE*"):
                record = kind.split()[1][:-1]
                fields = ", ".join(f"{field} = {number}" for field, number in zip(SYSTEM_RECORDS[record], value))
                before.append(f"var {name} = new QELEngine.{record} {{ {fields} }};")
                passed.append("ref " + name)
            elif kind in OUT_LONGS:
                before.append(f"QELEngine.{kind[:-1]} {name};")
                passed.append("out " + name)
                shown.append(' + "," + '.join(f"{name}.{field}" for field in SYSTEM_RECORDS[kind[:-1]]))
            elif kind in OUT_NUMBERS:
                before.append(f"{ {'int*': 'int', 'DWORD*': 'uint', 'float*': 'float'}[kind] } {name};")
                passed.append("out " + name)
                shown.append(name)
            else:
                literal = f"{value}f" if kind == "float" else str(value)
                passed.append(f'"{value}"' if isinstance(value, str) else literal)
        result = f"QELEngine.{call.function.name}({', '.join(passed)})"
        if call.function.result == "const char*":
            result = f"QELEngine.Text({result})"
        parts = "".join(f' + " " + {part}' for part in shown)
        # The call comes first: what it puts out is printed after it.
        lines.append("{ " + " ".join(before) + f" var r = {result}; "
                     f'Console.WriteLine("{call.function.name} " + r{parts}); }}')
    layouts = "\n".join(f"            Layout(typeof(QELEngine.{name}));" for name in interface.records)
    return CALLS_CSHARP.replace("LAYOUTS", layouts).replace("CALLS", "\n".join("        " + line for line in lines))


def stand_in(interface, folder):
    """Writes into a folder: windows.h and standin.c; layout.c, layout.pas and Calls.cs, which print the layout
    of all records (Calls.cs with any argument; without one it calls every function); and what has to come
    out of the calls: trace.txt of the stand-in, printed.txt of the callers."""
    folder.mkdir(parents=True, exist_ok=True)
    calls = test_calls(interface)
    for name, text in (("windows.h", STAND_IN_WINDOWS), ("standin.c", make_stand_in(interface)),
                       ("layout.c", make_layout_c(interface)), ("layout.pas", make_layout_pascal(interface)),
                       ("Calls.cs", make_calls_csharp(interface)),
                       ("trace.txt", "".join(call.trace + "\n" for call in calls)),
                       ("printed.txt", "".join(call.printed + "\n" for call in calls))):
        (folder / name).write_text(text, encoding="utf-8", newline="\n")


def call_all(interface, library):
    """Makes the same calls from this Python through qelengine.py, and prints the same."""
    ctypes.WinDLL = lambda name: ctypes.CDLL(library)  # which Python has on Windows only
    module = load_python(HOSTS / "python/qelengine.py")
    dll = module.load("QELEngine.dll")
    for call in test_calls(interface):
        passed, shown = [], []
        for (kind, _), value in zip(call.function.arguments, call.values):
            variable = None
            if kind.endswith("void*"):
                record = getattr(module, call.record) if call.record else ctypes.c_char * module.QEL_MAX_ATTR_SIZE
                variable = record()
                if kind == "const void*":
                    ctypes.memmove(ctypes.byref(variable), value, len(value))
                elif call.record:
                    shown.append((variable, bytes))
            elif kind in OUT_LONGS:
                variable = getattr(module, kind[:-1])()
                shown.append((variable, lambda v: ",".join(str(getattr(v, field)) for field, _ in v._fields_)))
            elif kind in OUT_NUMBERS:
                variable = {"int*": ctypes.c_int32, "DWORD*": ctypes.c_uint32, "float*": ctypes.c_float}[kind]()
                shown.append((variable, lambda v: str(v.value)))
            elif kind == "const POINT*":
                variable = (module.POINT * 2)(value[:2], value[2:])
            elif isinstance(value, tuple):
                variable = getattr(module, kind.split()[1][:-1])(*value)
            passed.append(value.encode() if kind == "const char*" else value if variable is None else
                          variable if kind == "const POINT*" else ctypes.byref(variable))
        result = getattr(dll, call.function.name)(*passed)
        result = result.decode() if isinstance(result, bytes) else result
        texts = [form(variable) for variable, form in shown]
        print(" ".join([call.function.name, str(result)] +
                       [text.hex() if isinstance(text, bytes) else text for text in texts]))


def print_layout(interface):
    module = load_python(HOSTS / "python/qelengine.py")
    for line in layout_lines(interface, lambda record: f"{record} {ctypes.sizeof(getattr(module, record))}",
                             lambda record, field:
                             f"{record}.{field} {getattr(getattr(module, record), field).offset}"):
        print(line)


# ---- checking


def compare(where, declared, exports, popped, problems):
    for name in sorted(exports.keys() - declared.keys()):
        problems.append(f"{where}: {name} is exported, but not declared")
    for name in sorted(declared.keys() - exports.keys()):
        problems.append(f"{where}: {name} is declared, but not exported")
    for name in sorted(declared.keys() & popped.keys()):
        if declared[name] != popped[name]:
            problems.append(f"{where}: {name} is declared with {sorted(declared[name])} bytes of arguments, but takes "
                            f"{sorted(popped[name])} off the stack")


def check_binaries(interface, build, problems):
    exports = {bits: read_exports(build / preset / "bin" / "QELEngine.dll")
               for bits, preset in ((32, "i686"), (64, "x86_64"))}
    popped = {32: popped_bytes(build / "i686" / "bin" / "QELEngine.dll", exports[32]),
              64: {}}  # there the caller keeps the stack; no code tells the count
    header = {bits: {interface.entry(f.name, bits): {f.bytes()} for f in interface.functions} for bits in exports}
    sources = {"include/QELEngine.h": (header, interface.sizes),
               "QELEngine.pas": read_pascal((HOSTS / "pascal/QELEngine.pas").read_text("utf-8")),
               "QELEngine.cs": read_csharp((HOSTS / "csharp/QELEngine.cs").read_text("utf-8")),
               "qelengine.py": read_python(load_python(HOSTS / "python/qelengine.py"))}
    for name, (declared, sizes) in sources.items():
        for bits in exports:
            compare(f"{name}, {bits} bits", declared[bits], exports[bits], popped[bits], problems)
        if sizes != interface.sizes:
            problems.append(f"{name}: record sizes {sizes} are not the header's {interface.sizes}")
    return len(exports[32]) + len(exports[64])


def check_pages(problems):
    """Code that a page says to be from a sample is in it, and all code in languages that no other
    test compiles says so."""
    count = 0
    for page in sorted((ROOT / "docs").glob("embedding*.md")):
        pattern = r"(?:<!-- from (\S+) -->\n)?```(\w[\w+#]*)\n(.*?)```"
        for source, language, block in re.findall(pattern, page.read_text("utf-8"), re.S):
            where = f"docs/{page.name}: the code \"{block.splitlines()[0].strip()}\""
            if source:
                count += 1
                sample = ROOT / source
                if not sample.exists() or block not in sample.read_text("utf-8"):
                    problems.append(f"{where} is not in {source}")
            elif language in ("c", "c++", "csharp", "pascal", "python"):
                problems.append(f"{where} is from no sample, so nothing compiles it")
    if not count:
        problems.append("docs/embedding*.md shows no code of the samples")
    return count


def check(interface, build):
    problems = [f"examples/hosts/{path} is not current: run scripts/bindings.py" for path, make in TARGETS.items()
                if not (HOSTS / path).exists() or (HOSTS / path).read_text("utf-8") != make(interface)]
    if not problems:
        exports = check_binaries(interface, build, problems)
        blocks = check_pages(problems)
    if problems:
        raise Problems("\n".join(problems))
    print(f"{len(interface.functions)} functions and {len(interface.records)} records in 3 languages, {exports} names "
          f"in 2 DLLs, {blocks} blocks of code in the pages agree")


def write(interface):
    for path, make in TARGETS.items():
        target = HOSTS / path
        text = make(interface)
        if not target.exists() or target.read_text("utf-8") != text:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(text, encoding="utf-8", newline="\n")
            print(target.relative_to(ROOT))


def main(arguments):
    interface = Interface(HEADER.read_text("ascii"), EXPORTS.read_text("utf-8"))
    if not arguments:
        write(interface)
    elif arguments[0] == "--check" and len(arguments) < 3:
        check(interface, pathlib.Path(arguments[1]) if len(arguments) > 1 else ROOT / "build")
    elif arguments[0] == "--stand-in" and len(arguments) == 2:
        stand_in(interface, pathlib.Path(arguments[1]))
    elif arguments[0] == "--calls" and len(arguments) == 2:
        call_all(interface, arguments[1])
    elif arguments == ["--layout"]:
        print_layout(interface)
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except Problems as problems:
        sys.exit(str(problems))
