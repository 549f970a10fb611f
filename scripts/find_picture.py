#!/usr/bin/env python3
"""Finds a picture in a screenshot, to the pixel: find_picture.py SCREENSHOT PICTURE prints where its left top
is. The exit status is 1 when it is not within the first pixels, where the inside of a window begins."""
import subprocess
import sys

FRAME, TITLE = 20, 60  # no frame is as wide, no title as high


def read(path):
    """Width, height, and the bytes of all pixels."""
    data = subprocess.run(["convert", path, "-depth", "8", "ppm:-"], capture_output=True, check=True).stdout
    _, size, _, pixels = data.split(b"\n", 3)
    return (*map(int, size.split()), pixels)


def find(screen, picture):
    width, _, pixels = screen
    w, h, wanted = picture
    rows = [wanted[y * w * 3:(y + 1) * w * 3] for y in range(h)]
    for top in range(TITLE):
        for left in range(FRAME):
            starts = (((top + y) * width + left) * 3 for y in range(h))
            if all(pixels[start:start + w * 3] == row for start, row in zip(starts, rows)):
                return left, top
    return None


if __name__ == "__main__":
    place = find(read(sys.argv[1]), read(sys.argv[2]))
    if not place:
        sys.exit(1)
    print(*place)
