#!/usr/bin/env python3
"""Compiles the tables as they are, and with a row left out or spoilt: that must be an error, for its reason.

rows.py    ends with 1 when a table takes what it must not
"""
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
COMPILER = ["i686-w64-mingw32-g++-posix", "-std=c++20", "-fsyntax-only", f"-I{ROOT}", "-DQELENGINE_STATIC",
            "-DNOMINMAX", "-DWIN32_LEAN_AND_MEAN", "-D_WIN32_WINNT=0x0601", "-fno-exceptions", "-fno-rtti",
            "-fno-threadsafe-statics", "-Wno-mismatched-new-delete"]

# file, what is done to it, pattern, replacement, what the compiler must name
CASES = [
    ("dynamic/MeterTypes.cpp", "a meter type without a row",
     r"\n    \{METER_CLOCK,[^}]*\},", "", "a row with a keyword and a maker for each type"),
    ("dynamic/MeterTypes.cpp", "a meter type without a maker",
     r"(\{METER_CLOCK,[^}]*), MakeClock\}", r"\1, nullptr}", "a row with a keyword and a maker for each type"),
    ("dynamic/MeterTypes.cpp", "two meter types of one keyword",
     r'"clock"', '"pie"', "a row with a keyword and a maker for each type"),
    ("engine/ElementTypes.cpp", "an element type without a row",
     r'\n    Skipped\(QEL_TYPE_DEFS, "defs"\),', "", "a row for each number|no matching function"),
    ("engine/ElementTypes.cpp", "two element types of one tag",
     r'"circle"', '"ellipse"', "a row for each number"),
    ("engine/ElementTypes.cpp", "an element type without a view",
     r"MakeWhole<View>", "nullptr", "a row for each number"),
    ("engine/ElementTypes.cpp", "a shape that its row does not call one",
     r'"line",\s+TRAIT_SHAPE \|', '"line",', "a row for each number"),
    ("dynamic/Selectors.cpp", "a selector without a row",
     r"\n    \{QEL_SEL_REVERSE,.*?nullptr\},", "", "a selector is the place of its row"),
    ("dynamic/Selectors.cpp", "two selectors of one name",
     r'"reverse"', '"alarm"', "selectors and names are unique"),
    ("document/Attributes.h", "two attributes of one name",
     r'"fg"', '"bg"', "ids and names are unique"),
    ("document/ShapeForms.h", "a shape without coordinates",
     r"\n    \{QEL_TYPE_CIRCLE,[^}]*\}\},", "", "a row for each shape"),
    ("document/ShapeRecord.cpp", "a field of a shape without a row",
     r"\n    Field\(ATTR_FLAG,.*?\"\),", "", "a row for each field of a shape"),
    ("document/ShapeRecord.cpp", "two fields of a shape in one place of the record",
     r"QELSHAPEATTR, clrB", "QELSHAPEATTR, clrA", "a row for each field of a shape"),
    ("document/ShapeRecord.cpp", "two attributes of a shape for one field",
     r"&ShapeStyle::clrB", "&ShapeStyle::clrA", "a row for each field of a shape"),
]


def compile_text(name, text):
    """The compiler's errors over the text of a file in its place, empty when it takes it."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, name)
        path.parent.mkdir()
        path.write_text(text, encoding="utf-8")
        # What is included by its place in the tree is found in the folder first.
        if name.endswith(".h"):
            source = path.with_name("Row.cpp")
            source.write_text(f'#include "{name}"\n', encoding="utf-8")
        else:
            source = path
        run = subprocess.run(COMPILER[:3] + [f"-I{folder}"] + COMPILER[3:] + [str(source)],
                             capture_output=True, text=True, check=False)
        return run.stderr if run.returncode else ""


def main():
    failed = 0
    for name in sorted({case[0] for case in CASES}):
        error = compile_text(name, (ROOT / name).read_text(encoding="utf-8"))
        if error:
            print(f"{name} does not compile as it is:\n{error}")
            failed += 1
    for name, what, pattern, replacement, expected in CASES:
        before = (ROOT / name).read_text(encoding="utf-8")
        text, count = re.subn(pattern, replacement, before, count=1, flags=re.S)
        if not count:
            print(f"{name}: nothing to spoil for '{what}'")
            failed += 1
            continue
        error = compile_text(name, text)
        if not re.search(expected, error):
            print(f"{name}: {what} is taken\n{error}")
            failed += 1
    print(f"{len(CASES)} spoilt tables tried, {failed} faults")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
