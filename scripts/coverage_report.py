"""Prints what a coverage run reached: figures by folder, then every line and branch not reached.

coverage_report.py FOLDER LINES BRANCHES: the folder with gcovr's summary.json and lines.json, and the
goals in per cent. Ends with 1 when a goal is missed.
"""
import collections
import json
import os
import sys


def percent(covered, total):
    return 100.0 * covered / total if total else 100.0


def ranges(numbers):
    """12, 13, 14 and 20 as "12-14 20"."""
    parts = []
    for n in sorted(numbers):
        if parts and n == parts[-1][1] + 1:
            parts[-1][1] = n
        else:
            parts.append([n, n])
    return " ".join(str(a) if a == b else f"{a}-{b}" for a, b in parts)


def main():
    folder, lines_goal, branches_goal = sys.argv[1], float(sys.argv[2]), float(sys.argv[3])
    with open(os.path.join(folder, "summary.json"), encoding="utf-8") as file:
        summary = json.load(file)
    with open(os.path.join(folder, "lines.json"), encoding="utf-8") as file:
        details = json.load(file)

    totals = collections.defaultdict(lambda: [0, 0, 0, 0])
    for entry in summary["files"]:
        for name in (entry["filename"].split("/")[0], "all"):
            figures = totals[name]
            for n, key in enumerate(("line_covered", "line_total", "branch_covered", "branch_total")):
                figures[n] += entry[key]
    for name in sorted(totals, key=lambda n: (n == "all", n)):
        lines, all_lines, branches, all_branches = totals[name]
        print(f"{name:10} lines {lines:5} of {all_lines:5} {percent(lines, all_lines):6.2f} %"
              f"   branches {branches:5} of {all_branches:5} {percent(branches, all_branches):6.2f} %")

    for entry in details["files"]:
        missed, half = set(), set()
        for line in entry["lines"]:
            if line.get("gcovr/noncode"):
                continue
            if line["count"] == 0:
                missed.add(line["line_number"])
            elif any(b["count"] == 0 and not b.get("throw") for b in line.get("branches", [])):
                half.add(line["line_number"])
        missed -= {line["line_number"] for line in entry["lines"] if line["count"]}
        if missed:
            print(f"{entry['file']}: lines not reached: {ranges(missed)}")
        if half:
            print(f"{entry['file']}: branches not taken in lines {ranges(half)}")

    lines, all_lines, branches, all_branches = totals["all"]
    if percent(lines, all_lines) < lines_goal or percent(branches, all_branches) < branches_goal:
        print(f"below the goal of {lines_goal:g} % of lines and {branches_goal:g} % of branches")
        return 1
    return 0


sys.exit(main())
