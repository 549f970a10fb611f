"""What the programs that call every function pass, and what has to come of it."""
OUT_LONGS = {"RECT*": (11, -12, 13, 14), "SIZE*": (321, 222), "POINT*": (31, -32)}  # a point goes in as well
OUT_NUMBERS = {"int*": -77, "DWORD*": 0x90000007, "float*": 7.25, "double*": -0.125}
OUT_CODE = 117  # of an error record
OUT_TEXT = "filled"
OUT_WIDE = "w"  # one letter is the same in units of 16 and of 32 bits
REALS = ("float", "double")
HANDLES = ("HQELENGINE", "HQELELEM", "HQELGRADIENT", "HDC", "HBRUSH", "HRGN")


def test_argument(kind, at):
    """What the programs pass: no two arguments alike, handles beyond 32 bits, numbers with the highest bit."""
    if kind in HANDLES:
        return (0x51 + at << 32) + 0x10 + at
    if kind in ("int", "BOOL"):
        return -2 - at
    if kind in ("DWORD", "COLORREF"):
        return 0x80000000 + at
    if kind in REALS:
        return at + 0.5
    return {"const char*": f"text {at}", "const wchar_t*": f"wide {at}", "const RECT*": (at, -2, 3, 4),
            "const SIZE*": (at, -2), "POINT*": (at, -2), "const POINT*": (at, -2, 3, 4), "const void*": bytes((1, 2, 3, 4))}.get(kind)


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
    return f"'{value}'" if isinstance(value, str) else f"{value:g}" if kind in REALS else str(value)


class TestCall:
    """One call: its arguments, the line that the stand-in is to write, the line that the caller is to print."""

    def __init__(self, interface, function, record=None):
        self.function, self.record = function, record
        records = interface.attributes
        index = interface.functions.index(function)
        self.values, outs = [], []
        pattern = None
        for at, (kind, name) in enumerate(function.arguments):
            value = test_argument(kind, at)
            if record and name == "hElem":
                value = (0x51 + at << 32) + len(records) * 1000 + records.index(record)
            if name == "nSize" and any(other == "const void*" for other, _ in function.arguments):
                value = interface.sizes[record] if record else 4
            if record and kind in ("void*", "const void*"):
                pattern = self.pattern(interface.sizes[record], records.index(record))
                value = pattern if kind == "const void*" else None
            self.values.append(value)
            if kind in OUT_LONGS:
                outs.append(",".join(map(str, OUT_LONGS[kind])))
            elif kind == "QELERROR*":
                outs.append(str(OUT_CODE))
            elif kind in OUT_NUMBERS and name == "pnSize" and function.takes_record():
                chosen = records.index(record) if record else (self.values[1] & 0xFFFFFFFF) % len(records)
                outs.append(str(interface.sizes[records[chosen]]))
            elif kind in OUT_NUMBERS:
                outs.append(f"{OUT_NUMBERS[kind]}")
            elif kind == "char*":
                outs.append(OUT_TEXT)
            elif kind == "wchar_t*":
                outs.append(OUT_WIDE)
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
        if function.takes_record():
            calls += [TestCall(interface, function, record) for record in interface.attributes]
    return calls


def layout_lines(interface, size, offset):
    """For each record size(record), and for each of its fields offset(record, field)."""
    lines = []
    for record, fields in interface.records.items():
        lines.append(size(record))
        lines += [offset(record, name) for _, name, _ in fields]
    return lines
