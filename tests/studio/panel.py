"""The run panel for tests that drive it: its windows, a drawing with a row of each kind, and what is done there."""
import json

import pytest

from driver import CANVAS, Studio, difference, render

PLAY, SPEED, TURN, BLINK, KEEP, ROWS, PROPERTIES, TOLD = range(11, 19)  # windows within the panel
LIGHT = "F0F0F0"
ROW_NAMES = ("level", "state", "box", "#41", "#status")
DRAWING = """<?xml version="1.0" encoding="utf-8"?>
<qel width="200" height="100">
  <scale id="level" scid="7" sctype="horizdn" crd="10 10 190 30"/>
  <text id="state" crd="10 40 90 60">##.#</text>
  <rect id="box" style="0x1" dr="1" fg="0xff" lnwid="0" crd="110 40 150 60"/>
  <scale scid="41" sctype="horizdn" crd="10 70 190 90"/>
  <status stx="1"><rect style="0x1" dr="1" fg="0xc000" lnwid="0" crd="160 40 190 60"/></status>
</qel>
"""


@pytest.fixture
def drawing(tmp_path):
    path = tmp_path / "panel.qel"
    path.write_text(DRAWING, encoding="utf-8")
    return path


@pytest.fixture
def start(tmp_path):
    opened = []

    def open_it(*words, **options):
        folder = tmp_path / f"studio{len(opened)}"
        folder.mkdir()
        opened.append(Studio(folder, *words, **options))
        return opened[-1]

    yield open_it
    for one in opened:
        if not (one.folder / "ended.txt").exists():
            one.close()


def choose(studio, name):
    """Selects a row by keys."""
    studio.click(ROWS, 60, 12)
    studio.key("Home", *["Down"] * ROW_NAMES.index(name))
    studio.settle()


def properties(studio):
    return dict(studio.contents(PROPERTIES))


def begin_edit(studio, label):
    """Opens the editor of a property; check boxes change at once."""
    labels = [row[0] for row in studio.contents(PROPERTIES)]
    studio.click(PROPERTIES, 30, 30)
    studio.key("Home", *["Down"] * labels.index(label), "Return")
    studio.settle()


def edit(studio, label, text):
    begin_edit(studio, label)
    studio.xdotool("type", text)
    studio.key("Return")
    studio.settle()


def expect_picture(studio, drawing, tmp_path, *options):
    """The drawing is fitted into the canvas: 8 pixels free, in the middle, in proportion."""
    studio.away()
    studio.settle()
    rect = studio.rect(CANVAS)
    width, height = rect[2] - rect[0], rect[3] - rect[1]
    zoom = min((width - 16) / 200, (height - 16) / 100, 16)
    size = (int(200 * zoom + 0.5), int(100 * zoom + 0.5))
    expected = render(drawing, tmp_path, "--size", f"{size[0]}x{size[1]}", "--scale", int(zoom * 100 + 0.5),
                      "--background", LIGHT, "--smooth", 4, *options)
    left, top = (width - size[0]) // 2 - 1, (height - size[1]) // 2 - 1  # the edge is left out
    assert difference(expected, studio.canvas().crop((left, top, left + size[0], top + size[1]))) == ""
    return expected


def values_file(tmp_path, values):
    """A file of values, as a program for Windows names it."""
    path = tmp_path / "v.json"
    path.write_text(json.dumps(values), encoding="utf-8")
    return "Z:" + str(path)
