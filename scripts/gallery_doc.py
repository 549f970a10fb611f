#!/usr/bin/env python3
"""Reads examples/gallery.txt and prints docs/gallery.md, or with --pictures the pictures to be made, one
line each: name, drawing, options, separated by tabs.

The list: "# HEADING" begins a section, other lines that begin with "#" are comments. A picture is a line
"NAME | DRAWING | CAPTION" and the options of `qel render` in the indented lines after it. Pictures of one
drawing that follow each other stand in one row of the page."""
import itertools
import re
import sys

INTRO = """# Gallery

Every type of meter and scale in three configurations, and panels that put them to use, with smooth edges as `qel`
draws them ([plain ones](crisp.md#smoothness) take `--smooth 0`). The pictures are made from `examples/gallery.txt` by
`scripts/docs.sh`; the tests tell when one is no longer what the engine draws.
Under each drawing stand the options that give its pictures: `./qel render DRAWING OUT.png OPTIONS`. What the
names mean is in [live values](live-values.md).
"""


def own_size(drawing):
    """The option that makes one drawing unit one pixel."""
    root = re.search(rb'<qel\b[^>]*?\bwidth="(\d+)"[^>]*?\bheight="(\d+)"', open(drawing, "rb").read())
    if not root:
        sys.exit(f"{drawing} tells no size")
    return f"--size {int(root[1])}x{int(root[2])}"


def read(path):
    """A list of (heading, pictures); a picture is a dict of name, drawing, caption, options."""
    sections = []
    for number, line in enumerate(open(path, encoding="utf-8"), 1):
        line = line.rstrip("\n")
        if line.startswith("# "):
            sections.append((line[2:], []))
        elif not line.strip() or line.startswith("#"):
            continue
        elif line[0].isspace():
            if not sections or not sections[-1][1]:
                sys.exit(f"{path}:{number}: options without a picture")
            sections[-1][1][-1]["options"] += " " + line.strip()
        else:
            fields = [field.strip() for field in line.split("|")]
            if len(fields) != 3 or not re.fullmatch(r"[\w-]+", fields[0]) or not sections:
                sys.exit(f"{path}:{number}: wants NAME | DRAWING | CAPTION under a heading")
            sections[-1][1].append({"name": fields[0], "drawing": fields[1], "caption": fields[2],
                                    "options": ""})
    for _, pictures in sections:
        for picture in pictures:
            size = "" if "--size " in picture["options"] else own_size(picture["drawing"])
            picture["options"] = (size + picture["options"]).strip()
    return sections


def wrapped(options, width=108):
    """The options as lines of that width, broken between options."""
    lines = [""]
    for option in re.findall(r"--\S+(?: (?!--)\S+)?", options):
        if lines[-1] and len(lines[-1]) + 1 + len(option) > width:
            lines.append("")
        lines[-1] += (" " if lines[-1] else "") + option
    return lines


def page(sections):
    print(INTRO)
    for heading, pictures in sections:
        print(f"## {heading}\n")
        for drawing, group in itertools.groupby(pictures, key=lambda picture: picture["drawing"]):
            group = list(group)
            print(f"### `{drawing}`\n")
            print("".join(f"| {picture['caption']} " for picture in group) + "|")
            print("|---" * len(group) + "|")
            print("".join(f"| ![{picture['name']}](pictures/gallery/{picture['name']}.png) " for picture in group) + "|\n")
            for picture in group:
                print("    " + "\n    ".join(wrapped(picture["options"])) + "\n")


def main():
    if sys.argv[1:2] == ["--pictures"]:
        for _, pictures in read(sys.argv[2]):
            for picture in pictures:
                print(picture["name"], picture["drawing"], picture["options"], sep="\t")
    else:
        page(read(sys.argv[1]))


main()
