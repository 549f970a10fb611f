#!/usr/bin/env python3
"""Writes docs/interface.md from include/QELEngine.h: the header is the one place where the interface
is described, and this page is its readable form."""
import re
import sys

HEADER = "include/QELEngine.h"
INTRO = """# The exported interface

This page is made from `include/QELEngine.h` by `scripts/docs.sh`; the header is the place to look while
you write code; it takes C89 and C++98 and whatever came after them. How a host puts the calls together is
told in [embedding.md](embedding.md).

All functions use the standard Windows calling convention (`__stdcall`). In the 32-bit DLL they are
exported under their plain names, six of them under decorated names
(`_QELOpenFileU@8`, `_QELCreateGradientDescriptor@16`, `_QELCloseGradientDescriptor@4`,
`_QELGetGradientBrush@4`, `_QELDrawBezier@12`, `_QELDrawCurve@12`); in the 64-bit DLL all names are plain.
The import library `libQELEngine.a` knows them by the names that compilers ask for.

"""


def comment_text(lines):
    """The words of a C comment, without its frame."""
    text = "\n".join(lines)
    text = re.sub(r"^\s*/\*+ ?|\s*\*/\s*$", "", text)
    return "\n".join(re.sub(r"^ ?\* ?", "", line).strip() for line in text.split("\n")).strip()


def first_sentence(text):
    return " ".join(text.split())


def read_blocks(source):
    """Yields (kind, comment, code) in the order of the header: section, function, type, constants."""
    lines = source.split("\n")
    i, comment = 0, []
    while i < len(lines):
        line = lines[i]
        section = re.match(r"/\* ---- (.*) ---- \*/", line)
        if section:
            yield "section", "", section.group(1)
            comment = []
        elif line.startswith("/*"):
            comment = [line]
            while "*/" not in lines[i]:
                i += 1
                comment.append(lines[i])
        elif re.match(r"(enum|typedef struct|class) .*\{", line):
            code = [line]
            while not re.match(r"\}.*;", lines[i]):
                i += 1
                code.append(lines[i])
            yield "type", comment_text(comment), "\n".join(code)
            comment = []
        elif " QELAPI " in line and not line.startswith("#"):
            code = [line]
            while not lines[i].rstrip().endswith(";"):
                i += 1
                code.append(lines[i])
            yield "function", comment_text(comment), "\n".join(code)
            if i + 1 < len(lines) and not lines[i + 1].strip():
                comment = []
        elif line.startswith("typedef "):
            yield "type", comment_text(comment), line
            comment = []
        elif line.startswith("#define QEL_"):
            yield "type", comment_text(comment), line
            comment = []
        elif line.startswith("#ifdef __cplusplus"):
            comment = []
        i += 1


def make_page(source):
    conventions = re.search(r"^ \* Conventions,.*?(?=^ \*/)", source, re.M | re.S).group(0)
    out = [INTRO, "## Conventions\n"]
    words = comment_text(conventions.split("\n")).split("\n")
    bullets = " ".join(words[1:]).split(" - ")
    bullets[0] = bullets[0].lstrip("- ")
    out += [f"- {first_sentence(bullet)}" for bullet in bullets]
    out.append("")
    code, last_comment = [], None

    def flush():
        if code:
            out.append("```c\n" + "\n".join(code) + "\n```\n")
            code.clear()

    for kind, comment, text in read_blocks(source):
        if kind == "section":
            flush()
            last_comment = None
            out.append(f"## {text[0].upper()}{text[1:]}\n")
            continue
        if comment and comment != last_comment:
            flush()
            names = re.findall(r"QELAPI (\w+)", text)
            if names:
                out.append(f"### {names[0]}\n")
            out.append(first_sentence(comment) + "\n")
        last_comment = comment or last_comment
        code.append(text)
    flush()
    return "\n".join(out)


if __name__ == "__main__":
    with open(HEADER, encoding="ascii") as header:
        sys.stdout.write(make_page(header.read()))
