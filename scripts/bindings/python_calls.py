"""The same calls from this Python, and the layout of the records as it has them."""
import ctypes

from bindings import python
from bindings.calls import OUT_LONGS, OUT_NUMBERS, layout_lines, test_calls
from bindings.header import HOSTS


def call_all(interface, library):
    """Makes the same calls from this Python through qelengine.py, and prints the same."""
    ctypes.WinDLL = lambda name: ctypes.CDLL(library)  # which Python has on Windows only
    module = python.load(HOSTS / "python/qelengine.py")
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
            elif kind == "QELERROR*":
                variable = module.QELERROR()
                shown.append((variable, lambda v: str(v.nCode)))
            elif kind in OUT_LONGS:
                variable = getattr(module, kind[:-1])(*(value or ()))
                shown.append((variable, lambda v: ",".join(str(getattr(v, field)) for field, _ in v._fields_)))
            elif kind in OUT_NUMBERS:
                variable = {"int*": ctypes.c_int32, "DWORD*": ctypes.c_uint32, "float*": ctypes.c_float,
                            "double*": ctypes.c_double}[kind]()
                shown.append((variable, lambda v: str(v.value)))
            elif kind == "char*":
                variable = ctypes.create_string_buffer(64)
                shown.append((variable, lambda v: v.value.decode()))
            elif kind == "wchar_t*":
                variable = ctypes.create_unicode_buffer(64)
                shown.append((variable, lambda v: v.value))
            elif kind == "const POINT*":
                variable = (module.POINT * 2)(value[:2], value[2:])
            elif isinstance(value, tuple):
                variable = getattr(module, kind.split()[1][:-1])(*value)
            passed.append(value.encode() if kind == "const char*" else value if variable is None else
                          variable if kind in ("const POINT*", "char*", "wchar_t*") else ctypes.byref(variable))
        result = getattr(dll, call.function.name)(*passed)
        result = result.decode() if isinstance(result, bytes) else result
        texts = [form(variable) for variable, form in shown]
        print(" ".join([call.function.name, str(result)] +
                       [text.hex() if isinstance(text, bytes) else text for text in texts]))


def print_layout(interface):
    module = python.load(HOSTS / "python/qelengine.py")
    for line in layout_lines(interface, lambda record: f"{record} {ctypes.sizeof(getattr(module, record))}",
                             lambda record, field:
                             f"{record}.{field} {getattr(getattr(module, record), field).offset}"):
        print(line)
