"""Printing: the preview shows the page, and prints it to a metafile; what is in them is what qel render makes of the
same values at the place where the drawing stands on the paper."""
import json
import subprocess

from PIL import Image, ImageChops
import pytest

from driver import BUILT, CANVAS, PATIENCE, WINE, difference, render, wait_for, windows_path
from panel import choose, drawing, edit, start

assert drawing and start  # the fixtures of all tests here

PRINT, CLOSE, SETUP, METAFILE, LANDSCAPE, FIT, INFO = 1, 2, 401, 402, 403, 404, 405  # windows of the preview
INCH = 2540  # lengths of a page are hundredths of a millimetre
MARGIN = 1500
PAPERS = {(216, 279): (21590, 27940), (210, 297): (21000, 29700)}  # in millimetres, and what they are


def preview(studio, name="panel.qel"):
    """The windows of the preview by their numbers, and its own as 0; nothing while there is none."""
    state = studio.look(f"Print preview: {name}")
    return {0: state["main"], **{w["id"]: w for w in state["windows"]}} if state else {}


def open_preview(studio):
    studio.key("ctrl+p")
    wait_for("the preview", lambda: preview(studio))
    studio.settle()


def info(studio):
    """The size of the paper and the zoom of the drawing, as the preview tells them."""
    text = preview(studio)[INFO]["text"]
    words = text.split("Paper ")[1].split()
    return (int(words[0]), int(words[2])), int(text.split("drawing at ")[1].split()[0]), text


def paper(studio):
    size, _, _ = info(studio)
    return PAPERS[size] if size in PAPERS else PAPERS[size[::-1]][::-1]


def lay_out(page, dots, corner, units=(200, 100), fit=True):
    """By the rule: within the margins, in proportion and in the middle; else 96 units are an inch."""
    room = [(side - 2 * MARGIN) / INCH for side in page]
    zoom = min(room[n] / (units[n] / 96) for n in range(2)) if fit else 1
    size = [units[n] / 96 * zoom for n in range(2)]
    at = [MARGIN / INCH + (room[n] - size[n]) / 2 for n in range(2)]
    left, top = (int(at[n] * dots + 0.5) + corner[n] for n in range(2))
    return (left, top, left + int(size[0] * dots + 0.5), top + int(size[1] * dots + 0.5)), zoom * dots / 96


def page_shown(studio, fit=True):
    """Where the drawing is to stand on the screen, and in which scale."""
    windows = preview(studio)
    left, top, right, bottom = windows[0]["rect"]
    line = windows[INFO]["rect"]
    area = (left, top + 40, right, bottom - (line[3] - line[1]) - 16)  # the buttons, and the line below
    page = paper(studio)
    room = (area[2] - area[0] - 32, area[3] - area[1] - 32)
    dots = min(room[n] / (page[n] / INCH) for n in range(2))
    corner = [area[n] + int((area[n + 2] - area[n] - int(page[n] / INCH * dots + 0.5)) / 2) for n in range(2)]
    return lay_out(page, dots, corner, fit=fit)


def expect_page(studio, drawing, tmp_path, *options, fit=True):
    rect, scale = page_shown(studio, fit)
    size = f"{rect[2] - rect[0]}x{rect[3] - rect[1]}"
    expected = render(drawing, tmp_path, "--size", size, "--scale", int(scale * 100 + 0.5), "--smooth", 4,
                      "--background", "FFFFFF", *options)
    shown = studio.screen()
    assert difference(expected, shown.crop(rect)) == ""
    for x, y in ((rect[0] - 2, rect[1]), (rect[2] + 1, rect[3] - 1), (rect[0], rect[1] - 2), (rect[0], rect[3] + 1)):
        assert shown.getpixel((x, y)) == (255, 255, 255), "there is paper around it"


def test_the_preview_shows_the_page_with_its_values(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    studio.away()
    studio.settle()
    before = studio.screen()
    open_preview(studio)
    size, _, text = info(studio)
    assert size[0] > size[1], "it lies as the drawing does"
    expect_page(studio, drawing, tmp_path, "--value", "level=6.5")
    studio.key("alt+f")  # not fitted: in its own size
    wait_for("the drawing's own size", lambda: info(studio)[1] == 100)
    studio.settle()
    expect_page(studio, drawing, tmp_path, "--value", "level=6.5", fit=False)
    studio.key("alt+f", "alt+l")
    wait_for("paper that stands", lambda: info(studio)[0] == size[::-1])
    studio.settle()
    expect_page(studio, drawing, tmp_path, "--value", "level=6.5")
    studio.key("Escape")
    wait_for("the end of the preview", lambda: not preview(studio))
    studio.settle()
    assert difference(before, studio.screen()) == "", "the window is as it was"
    assert studio.close() == 0


def play(path, out, size):
    """A metafile as a picture, on white."""
    subprocess.run([*WINE, str(BUILT / "qel_studio_probe.exe"), "play", windows_path(path), windows_path(out),
                    *map(str, size)], check=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)
    with Image.open(out) as picture:
        return picture.convert("RGB")


def share_of_difference(one, other):
    assert one.size == other.size
    apart = ImageChops.difference(one, other).convert("L").histogram()
    return 1 - apart[0] / sum(apart)


def test_a_page_is_printed_to_a_metafile(start, drawing, tmp_path):
    beside = drawing.with_name("panel.values.json")
    beside.write_text(json.dumps({"level": 6.5, "box.fg": "#0000FF"}), encoding="utf-8")
    studio = start(drawing)
    open_preview(studio)
    page = paper(studio)
    out = tmp_path / "page.emf"
    studio.key("alt+m")
    studio.settle()
    studio.key("ctrl+a")
    studio.xdotool("type", windows_path(out))
    studio.key("Return")
    wait_for("the metafile", lambda: out.exists() and out.stat().st_size)
    studio.settle()
    header = out.read_bytes()[:88]
    frame = [int.from_bytes(header[24 + 4 * n:28 + 4 * n], "little") for n in range(4)]
    assert frame == [0, 0, *page], "it is as large as the paper"
    # Sixteen pixels for each of the drawing.
    rect, scale = lay_out(page, 1, (0, 0))
    dots = 16 / scale
    rect, scale = lay_out(page, dots, (0, 0))
    assert (rect[2] - rect[0], rect[3] - rect[1], scale) == (3200, 1600, pytest.approx(16))
    shown = play(out, tmp_path / "played.bmp", [int(side / INCH * dots + 0.5) for side in page])
    expected = render(drawing, tmp_path, "--size", "3200x1600", "--scale", 1600, "--smooth", 0, "--background",
                      "FFFFFF", "--values", "Z:" + str(beside))
    # Systems end recorded lines in ways of their own.
    assert share_of_difference(expected, shown.crop(rect)) < 0.002
    assert shown.crop((rect[0] + 1760, rect[1] + 640, rect[0] + 2400, rect[1] + 960)).getcolors() == [
        (640 * 320, (0, 0, 255))], "the box has the colour of its value"
    studio.key("Escape")
    wait_for("the end of the preview", lambda: not preview(studio))
    assert studio.close() == 0


def test_without_a_printer_there_is_a_sentence(start, drawing):
    studio = start(drawing)
    open_preview(studio)
    _, _, text = info(studio)
    assert text.startswith("No printer. "), "these tests are for a system without one"
    for key in ("alt+p", "alt+s", "ctrl+p"):
        studio.key(key)
        wait_for("a message", lambda: any(w["text"].startswith("There is no printer.")
                                          for w in studio.look()["windows"]))
        studio.key("Return")
        wait_for("its end", lambda: studio.title() == "panel.qel \u2013 QEL Studio")
    studio.key("alt+c")
    wait_for("the end of the preview", lambda: not preview(studio))
    assert studio.rect(CANVAS)
    assert studio.close() == 0
