"""Drawings of thousands of identifiers, and drawings at a high zoom."""
import json
import time

import pytest

from driver import CANVAS, ROOT, SIZE, TREE, ZOOM, difference, render, wait_for
from panel import BLINK, KEEP, LIGHT, ROWS, start

assert start  # the fixture

COUNT = 5000
FILTER = 19  # a window within the panel
QUICK = 1.0  # seconds for a step and the looks at it, on a machine that others use, too


@pytest.fixture
def crowd(tmp_path):
    """A scale for every identifier."""
    path = tmp_path / "crowd.qel"
    rows = "".join(f'  <scale id="tag{n}" scid="{n + 100}" sctype="horizdn" '
                   f'crd="{n % 100 * 10} {n // 100 * 10} {n % 100 * 10 + 9} {n // 100 * 10 + 9}"/>\n' for n in range(COUNT))
    path.write_text(f'<?xml version="1.0" encoding="utf-8"?>\n<qel width="1000" height="500">\n{rows}</qel>\n',
                    encoding="utf-8")
    return path


def quickest(act, question):
    """Seconds from an act to what comes of it, without the look that tells it; the least of three acts."""
    times = []
    for number in range(3):
        act(number)
        began = time.monotonic()
        wait_for("what comes of it", lambda: question(number))
        seen = time.monotonic()
        question(number)
        times.append(seen - began - (time.monotonic() - seen))
    return min(times)


def test_thousands_of_rows_scroll_and_filter_at_once(start, crowd):
    studio = start(crowd)
    assert len(studio.look()["windows"]) < 60, "a window for each row"
    studio.click(ROWS, 60, 12)
    studio.settle()
    shown = [None]

    def picture():
        return studio.screen().crop(studio.rect(ROWS)).tobytes()

    def act(*keys):
        shown[0] = picture()
        studio.key(*keys)

    def has_changed(_):
        return picture() != shown[0]

    ends = ["End", "Home", "End"]
    took = quickest(lambda number: act(ends[number]), has_changed)
    assert took < QUICK, f"{took} s to the other end"
    words = ["3", "9", "8"]
    studio.key("ctrl+f")
    took = quickest(lambda number: act(words[number]), has_changed)
    assert took < QUICK, f"{took} s for a letter of the filter"
    assert studio.window(FILTER)["text"] == "398"
    studio.key("Return", "Return")  # to the rows, and into the value of the first one
    studio.xdotool("type", "7")
    studio.key("Return")
    studio.settle()
    studio.click(KEEP, 20, 10)
    kept = crowd.with_name("crowd.values.json")
    wait_for("the file", kept.exists)
    assert json.loads(kept.read_text(encoding="utf-8")) == {"tag398": 7}


def test_thousands_of_elements_scroll_in_the_tree(start, crowd):
    studio = start(crowd)
    studio.click(TREE, 40, 8)
    took = quickest(lambda number: studio.key(("End", "Home", "End")[number]),
                    lambda number: studio.contents(TREE)[-1:] == [("scale  tag4999", "qel")[number % 2]])
    assert took < QUICK, f"{took} s to the other end"


@pytest.mark.parametrize("steps, percent", [(12, 800), (16, 1600)])
def test_a_part_at_a_high_zoom_is_that_of_the_large_picture(start, tmp_path, steps, percent):
    drawing = ROOT / "examples" / "pump.qel"
    studio = start(drawing)
    units = tuple(int(n) for n in studio.status(SIZE).split(" \u00d7 "))
    studio.click(BLINK, 8, 8)
    studio.key("ctrl+1")
    rect = studio.rect(CANVAS)
    middle = (rect[2] - rect[0]) // 2, (rect[3] - rect[1]) // 2
    studio.point(CANVAS, *middle)
    for _ in range(steps):  # four double it
        studio.xdotool("click", 4)
    wait_for("the zoom", lambda: studio.status(ZOOM) == f"{percent} %")
    studio.drag(CANVAS, middle, (middle[0] - 237, middle[1] + 91), button=2)
    studio.away()
    studio.settle()
    canvas = studio.canvas()  # its edge is left out
    whole = render(drawing, tmp_path, "--size", f"{units[0] * percent // 100}x{units[1] * percent // 100}",
                   "--scale", percent, "--background", LIGHT, "--smooth", 4)
    # At 100 % the drawing was in the middle; the zoom kept what was under the pointer, to a pixel a step.
    zoom = percent // 100
    left = (middle[0] - (rect[2] - rect[0] - units[0]) // 2) * zoom - middle[0] + 237
    top = (middle[1] - (rect[3] - rect[1] - units[1]) // 2) * zoom - middle[1] - 91
    found = [(x, y) for x in range(left - steps, left + steps) for y in range(top - steps, top + steps)
             if difference(whole.crop((x, y, x + canvas.width, y + canvas.height)), canvas, quick=True) == ""]
    assert len(canvas.getcolors(1 << 24)) > 50, "there is nothing there"
    assert len(found) == 1, found
