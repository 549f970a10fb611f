#!/usr/bin/env python3
"""Makes base/WideCharacters.h, the characters that take two columns of a text, from what python3 knows of Unicode
(unicodedata: East Asian Width W and F). With --check nothing is written: it tells whether the table is current, for
the version of Unicode that the table names; under another version of python3's there is nothing to compare with."""
import re
import sys
import unicodedata
from pathlib import Path

TARGET = Path(__file__).resolve().parents[1] / "base" / "WideCharacters.h"
LAST = 0x10FFFF
# Unicode Standard Annex 11: in these ranges characters that are not assigned yet are wide as well.
WIDE_RESERVED = [(0x3400, 0x4DBF), (0x4E00, 0x9FFF), (0xF900, 0xFAFF), (0x20000, 0x2FFFD), (0x30000, 0x3FFFD)]
ROW = 4  # ranges on a line


def is_wide(code):
    if any(first <= code <= last for first, last in WIDE_RESERVED):
        return True
    # What is not assigned has a width in unicodedata that means nothing.
    return unicodedata.category(chr(code)) != "Cn" and unicodedata.east_asian_width(chr(code)) in "WF"


def ranges():
    found = []
    for code in filter(is_wide, range(LAST + 1)):
        if found and found[-1][1] == code - 1:
            found[-1][1] = code
        else:
            found.append([code, code])
    return found


def header():
    found = ["{%#x, %#x}" % tuple(pair) for pair in ranges()]
    lines = ["    " + ", ".join(found[n:n + ROW]) for n in range(0, len(found), ROW)]
    return """// The characters that take two columns of a text: East Asian Width W and F of Unicode %s. Made
// by scripts/wide_characters.py from python3's unicodedata; do not edit.
#pragma once

#include <cstdint>

struct WideRange {
    uint32_t nFirst;
    uint32_t nLast;
};

// clang-format off
inline constexpr WideRange g_wideRanges[] = {
%s};
// clang-format on
""" % (unicodedata.unidata_version, ",\n".join(lines))


def main():
    if "--check" not in sys.argv[1:]:
        TARGET.write_text(header(), encoding="utf-8", newline="\n")
        return 0
    text = TARGET.read_text(encoding="utf-8")
    version = re.search(r"of Unicode ([0-9.]+)\. Made", text)
    if version and version[1] != unicodedata.unidata_version:
        return 0
    if text == header():
        return 0
    print("base/WideCharacters.h is not current: run scripts/wide_characters.py")
    return 1


if __name__ == "__main__":
    sys.exit(main())
