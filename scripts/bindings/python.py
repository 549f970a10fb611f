"""The declarations for Python, written from the interface and read back from the module that they make."""
import ctypes
import importlib.machinery
import re
import types

from bindings.header import PYTHON, SYSTEM_RECORDS, TYPES

HEAD = '''"""QELEngine: the exported interface for Python on Windows, 32 and 64 bits (ctypes).

Made from include/QELEngine.h by scripts/bindings; the header tells what each function does.
load() gives the DLL with the types of all its functions set:

    dll = qelengine.load("QELEngine.dll")
    engine = dll.CreateQELEngine()

Handles are opaque (numbers, None for none), texts are bytes in the system's ANSI code page
(text.encode("mbcs")), an engine is used by one thread at a time, and a result of 0 means failure.
Where the header takes a pointer, pass ctypes.byref(variable) or None."""
import ctypes
from ctypes import POINTER, c_char, c_char_p, c_double, c_float, c_int32, c_uint32, c_void_p, c_wchar_p

HQELENGINE = c_void_p  # an engine, or in show-only mode a share of one
HQELELEM = c_void_p  # an element of the open drawing
HQELGRADIENT = c_void_p  # a gradient descriptor
HANDLE = c_void_p  # the system's handles: device contexts, brushes

'''
TAIL = '''

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


def make(interface):
    out, functions = [HEAD], []

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
    text = re.sub(r"\n{4,}", "\n\n\n", "\n".join(out)) + TAIL
    return re.sub(r"(?<!\n)\n\n(?=class )", "\n\n\n", text)


def load(path):
    loader = importlib.machinery.SourceFileLoader("qelengine", str(path))
    module = types.ModuleType(loader.name)
    loader.exec_module(module)
    return module


def read(module):
    def size(kind):  # on 32 bits, whatever this Python is
        is_number = issubclass(kind, ctypes._SimpleCData) and kind._type_ in "iIlLfd"  # noqa: SLF001
        return ctypes.sizeof(kind) if is_number else 4

    declared = {32: {}, 64: {}}
    for name, (_, arguments) in module.FUNCTIONS.items():
        total = {sum(size(kind) for kind in arguments)}
        declared[64][name] = total
        declared[32][module.DECORATED.get(name, name)] = total
    sizes = {name: ctypes.sizeof(getattr(module, name)) for name in dir(module)
             if name.startswith("QEL") and isinstance(getattr(module, name), type)}
    return declared, sizes
