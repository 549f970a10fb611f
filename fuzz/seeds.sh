#!/usr/bin/env bash
# Makes the seeds of the fuzzers, fuzz/corpus/TARGET/seed-*, from examples/ and docs/drawings/. What
# the fuzzers found themselves stands beside them, under names of their own.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
python3 - <<'PYTHON'
import glob, os

LARGEST = 6000  # bytes of a drawing that is worth changing byte by byte

def place(target, name, data):
    folder = "fuzz/corpus/" + target
    os.makedirs(folder, exist_ok=True)
    open(f"{folder}/seed-{name}", "wb").write(data)

for old in glob.glob("fuzz/corpus/*/seed-*"):
    os.remove(old)

# Numbers as Fuzz.h reads them: small ones, and the places of remarkable ones.
def number(n):
    if 0 <= n < 128: return bytes([n])
    if -32 <= n < 0: return bytes([127 - n])
    return b"\xff" + (n & 0xFFFFFFFF).to_bytes(4, "big")

FIRST, LAST, ROOT = 0, 120, 0          # how LifeFuzzer names live elements
APPEND = bytes([1, ROOT, 1])           # a parent, and no element to stand after

def create(kind): return bytes([0, kind + 1]) + APPEND + bytes([ROOT])
def move(elem, parent): return bytes([3, elem, 1, parent, 1, 0])
def copy(elem): return bytes([5, elem])
def delete(elem): return bytes([6, elem])
def set_id(elem, text): return bytes([7, elem, len(text)]) + text
def set_attr(elem, *words):
    patches = b"".join(bytes([place]) + number(value) for place, value in words)
    return bytes([8, elem, 1, len(words)]) + patches
def set_rect(elem, *edges): return bytes([10, elem]) + b"".join(number(n) for n in edges)
def draw(flags, size): return bytes([12, 0, flags, size, 1, 1])
def rotate(quarter): return bytes([13, 1, quarter])
def set_param(index, value): return bytes([14, 1, index]) + number(value)
def set_status(value): return bytes([15]) + number(value)
def set_value(index, selector, value): return bytes([16, 1, index, selector]) + number(value) + number(value) + b"\0"
SAVE = bytes([18])

PROGRAMS = {
    "tree": create(15) + create(2) + create(17) + move(LAST, FIRST + 1) + copy(LAST + 1) + set_id(LAST, b"a&#x41;") +
            SAVE + delete(LAST + 2) + draw(0, 0) + create(0) + create(21) + SAVE,
    "live": set_param(0, 255) + set_param(1, 12) + set_param(2, 77) + set_status(1) + set_value(0, 6, 5) +
            set_value(1, 4, 100) + draw(1, 0) + rotate(3) + draw(0, 5) + set_status(-1) + draw(2, 4) + SAVE,
    "attr": create(21) + set_attr(LAST, (4, 8), (7, 30), (9, 20)) + draw(0, 0) + set_attr(LAST, (4, 10)) + draw(1, 0) +
            create(18) + set_attr(LAST, (3, 5), (7, 1)) + set_rect(LAST, 3, 4, 60, -7) + draw(0, 2) + SAVE,
}

drawings = {}
for path in sorted(glob.glob("docs/drawings/*.qel") + glob.glob("examples/*.qel") + glob.glob("examples/*/*.qel")):
    data = open(path, "rb").read()
    if len(data) <= LARGEST:
        drawings[os.path.splitext(os.path.basename(path))[0]] = data

for name, data in drawings.items():
    place("xml", name, data)
    place("life", name, data)
small = min(drawings.values(), key=len)
values = bytes(range(1, 180)) + bytes([200, 210, 220]) * 100
for name, program in PROGRAMS.items():
    for kind in ("waterworks-cn", "pump", "keep"):
        place("life", f"{kind}-{name}", drawings.get(kind, small) + b"\0\0" + program)
    place("life", "values-" + name, drawings.get("round", small) + b"\0\1" + values + program)
place("xml", "cursor", b"<qel a='1'><rect/><a>t</a></qel>\0" +
      bytes([1, 3, 14, 0, 3]) + b"x&y" + bytes([0, 15, 1, 2]) + b"zz" + bytes([2, 17, 3, 1]) + b"5" +
      bytes([11, 3, 6, 7, 0, 8, 0, 9, 1, 10, 0, 12, 4, 5]))
place("xml", "declared", b"<?xml version='1' encoding=\"e\" standalone='no'?><!--c--><!D><q>&#x41;&amp;<r s='\"'/></q> rest")

kinds = list(range(18))
for kind in kinds:  # every type: a record with other numbers, placed and drawn; then a broken one
    place("attr", f"type-{kind:02}", bytes([kind | 0x60, 1, 3, 2, 9, 8, 20, 3]) + number(40) * 4 +
          bytes([3, 1, 7]) + number(-5) + bytes([4]) + b"text" + bytes([0, 1, 1, 1, 3]) + bytes([250, 1, 1, 3, 90, 0]))
place("attr", "group", bytes([11 | 0x80, 0, 0, 2, 1, 1, 8, 3, 0, 17 | 0x80, 1, 1, 4, 7, 0, 6, 0, 0, 1]))
place("brush", "drafts", b"".join(bytes([0, style, 5, 6, 1, 40, 30, 100, 120, 9, 9, 0, 7, 8, 0, 0]) for style in (0, 3, 9, 10, 23, 37)))
place("brush", "copies", bytes([1, 3, 1, 14, 1, 39]))
place("brush", "gradients", b"".join(bytes([2, 3, 4, 1, 20, 10, 1, kind + 1, 50, 90]) for kind in range(14)))
place("brush", "fills", bytes([3, 1, 2, 1, 9, 9, 4, 50, 60, 20, 10, 1, 2]) * 3)
place("brush", "ramps", bytes([4, 7, 3, 20, 0, 255, 4, 1, 90, 7, 200, 10]))
place("brush", "curves", bytes([5, 4, 1, 2, 30, 40, 50, 9, 70, 80, 3, 3, 5, 2, 0, 0, 9, 9, 1, 1]))
PYTHON
printf '%s\n' fuzz/corpus/*/seed-* | cut -d/ -f3 | sort | uniq -c
