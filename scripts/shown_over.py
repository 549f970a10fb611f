#!/usr/bin/env python3
"""Compares what a window shows with a picture that has alpha, over a ground of one colour: shown_over.py SCREENSHOT
PICTURE.png LEFT TOP RED GREEN BLUE. The exit status is 1 when a colour is more than 1 off somewhere, or when the
picture has no place that is empty, none that is whole and none between."""
import subprocess
import sys

MOST_OFF = 1  # of 255: the colours of a file are divided by its alpha, which rounds
WHOLE = 255


def read(path):
    """Width, and the bytes of all pixels with alpha."""
    data = subprocess.run(["convert", path, "-depth", "8", "-alpha", "set", "pam:-"], capture_output=True,
                          check=True).stdout
    head, pixels = data.split(b"ENDHDR\n", 1)
    words = head.split()
    return int(words[words.index(b"WIDTH") + 1]), pixels


def compare(screen, picture, left, top, ground):
    """The kinds of places, and how far the farthest colour is off."""
    screen_width, shown = screen
    width, wanted = picture
    kinds, worst = set(), 0
    for number in range(len(wanted) // 4):
        y, x = divmod(number, width)
        *colors, alpha = wanted[4 * number:4 * number + 4]
        kinds.add("empty" if alpha == 0 else "whole" if alpha == WHOLE else "between")
        at = 4 * ((top + y) * screen_width + left + x)
        for color, below, seen in zip(colors, ground, shown[at:at + 3]):
            worst = max(worst, abs((color * alpha + below * (WHOLE - alpha)) / WHOLE - seen))
    return kinds, worst


if __name__ == "__main__":
    kinds, worst = compare(read(sys.argv[1]), read(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4]),
                           [int(word) for word in sys.argv[5:8]])
    print(f"{' '.join(sorted(kinds))}: {worst:.2f} off")
    sys.exit(0 if worst <= MOST_OFF + 0.5 and len(kinds) == 3 else 1)
