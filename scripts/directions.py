#!/usr/bin/env python3
"""Checks that includes go one way: a folder includes only what stands before it, and no files in a circle.

directions.py            names every include that goes the wrong way; ends with 1 when there is one
directions.py --picture  prints the order as an SVG picture, docs/pictures/folders.svg
"""
import pathlib
import re
import sys

# From the ground floor up. Each includes what stands before it.
ORDER = [
    ("include", "the exported header"),
    ("base", "memory, handles, links, arithmetic, guards"),
    ("xml", "tree, parser, writer, file"),
    ("brush", "gradients, hatches, curves"),
    ("meter", "renderers of dials and bars"),
    ("document", "elements as a file has them"),
    ("render", "elements as they are drawn"),
    ("dynamic", "elements that follow the host"),
    ("engine", "table of types, engine, exports"),
    ("tools", "programs around the library"),
]
ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def sources():
    for folder, _ in ORDER:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".h", ".cpp", ".c"):
                yield folder, path.relative_to(ROOT).as_posix(), path


def includes():
    """The project's own includes: {file: [included file]}."""
    found = {}
    for _, name, path in sources():
        named = INCLUDE.findall(path.read_text(encoding="utf-8"))
        found[name] = [other for other in named if (ROOT / other).exists()]
        found[name] += [f"{pathlib.PurePosixPath(name).parent}/{other}" for other in named
                        if not (ROOT / other).exists() and (path.parent / other).exists()]
    return found


def wrong_ways(found):
    floor = {folder: n for n, (folder, _) in enumerate(ORDER)}
    for name, others in found.items():
        for other in others:
            here, there = name.split("/")[0], other.split("/")[0]
            if there not in floor:
                yield f"{name} includes {other}, which is in no folder of the product"
            elif floor[there] > floor[here]:
                yield f"{name} includes {other}: {there}/ stands above {here}/"


def circles(found):
    """Each circle of includes, as the files on the way round."""
    done, path = set(), []

    def visit(name):
        if name in path:
            yield path[path.index(name):] + [name]
            return
        if name in done:
            return
        path.append(name)
        for other in found.get(name, []):
            yield from visit(other)
        path.pop()
        done.add(name)

    for name in found:
        yield from visit(name)


def picture():
    row, width = 34, 460
    height = row * len(ORDER) + 20
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
          'font-family="sans-serif" font-size="14">')
    print(f'<rect width="{width}" height="{height}" fill="#ffffff"/>')
    for n, (folder, what) in enumerate(reversed(ORDER)):
        y = 10 + n * row
        print(f'<rect x="10" y="{y}" width="{width - 20}" height="{row - 6}" rx="4" fill="#e8eef7" '
              'stroke="#5070a0"/>')
        print(f'<text x="22" y="{y + 19}" font-weight="bold">{folder}/</text>')
        print(f'<text x="130" y="{y + 19}">{what}</text>')
    print("</svg>")


def main():
    if sys.argv[1:] == ["--picture"]:
        picture()
        return 0
    found = includes()
    faults = list(wrong_ways(found)) + [" -> ".join(circle) for circle in circles(found)]
    print("\n".join(faults) if faults else f"{len(found)} files include downwards only")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
