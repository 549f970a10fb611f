#!/usr/bin/env python3
"""Smooth draws of the engine under Wine against those of an SVG renderer that runs natively: two programs, by
turns, each of which draws when it reads a line and prints the nanoseconds. Both pictures have to be of the same
scene. Prints a row of the table of measurements; ends with 1 when the bar is missed by more than the noise.
    turns.py TURNS BAR PICTURE_FILE ENGINE... -- OTHER..."""
import pathlib
import statistics
import subprocess
import sys

CHANNELS = 3
MOST_DIFFERENCE = 8  # of 255 on the average: the edges, and letters of another size


class Drawer:
    def __init__(self, command):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def draw(self, file=""):
        self.process.stdin.write(file + "\n")
        self.process.stdin.flush()
        return float(self.process.stdout.readline())

    def end(self):
        self.process.stdin.close()
        self.process.wait()


def mean_difference(first, second):
    """Of the colours, over every seventh pixel; the fourth byte is not the same in both."""
    total = count = 0
    for at in range(0, len(first), 4 * 7):
        for channel in range(CHANNELS):
            total += abs(first[at + channel] - second[at + channel])
            count += 1
    return total / count


def expect_same_scene(mine, other, file):
    pictures = []
    for drawer in (mine, other):
        drawer.draw(file)
        pictures.append(pathlib.Path(file).read_bytes())
        pathlib.Path(file).unlink()
    if len(pictures[0]) != len(pictures[1]) or len(set(pictures[0])) < 16:
        sys.exit("the measurement cannot go on: there is no picture")
    difference = mean_difference(*pictures)
    if difference > MOST_DIFFERENCE:
        sys.exit(f"the measurement cannot go on: the pictures differ by {difference:.1f}")


def main(turns, bar, file, commands):
    where = commands.index("--")
    mine, other = Drawer(commands[:where]), Drawer(commands[where + 1:])
    expect_same_scene(mine, other, file)
    pairs = [(mine.draw(), other.draw()) for _ in range(turns)]
    mine.end()
    other.end()
    ratios = sorted(a / b for a, b in pairs)
    ratio = statistics.median(ratios)
    quarter = len(ratios) // 4
    noise = (ratios[-1 - quarter] - ratios[quarter]) / 2 / ratio
    missed = ratio * (1 - noise) > bar
    print("%-58s | %11.1f | %11.1f | %8.3f | +-%4.1f %% | %7.2f | %s" % (
        "smooth full draw of 1000 / a native SVG renderer (us)", statistics.median(a for a, _ in pairs) / 1000,
        statistics.median(b for _, b in pairs) / 1000, ratio, 100 * noise, bar, "MISSED" if missed else "held"))
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main(int(sys.argv[1]), float(sys.argv[2]), sys.argv[3], sys.argv[4:]))
