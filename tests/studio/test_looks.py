"""Other looks of the system: high contrast, other resolutions, sizes of panes by keys."""
import pytest

from driver import (ATTRIBUTES, CANVAS, MESSAGE, SPLIT_LEFT, STATUS, TOOLBAR, TREE, ZOOM, difference, render, wait_for)
from looks import CONTRAST, prefix
from panel import ROWS, drawing, start

assert drawing and start  # the fixtures of all tests here

FACE, TEXT, HIGHLIGHT = CONTRAST["ButtonFace"], CONTRAST["ButtonText"], CONTRAST["Hilight"]


def colors(picture):
    return {color for _, color in picture.getcolors(1 << 24)}


def part(studio, number):
    return studio.screen().crop(studio.rect(number))


def between(color, one, other):
    """Whether it is on the way from the one to the other, within what rounding does."""
    whole = sum((b - a) ** 2 for a, b in zip(one, other))
    at = sum((c - a) * (b - a) for a, b, c in zip(one, other, color)) / whole
    return -0.01 <= at <= 1.01 and all(abs(a + at * (b - a) - c) <= 4 for a, b, c in zip(one, other, color))


def test_high_contrast_takes_the_colours_of_the_system(start, drawing, tmp_path):
    studio = start(drawing, env=prefix(tmp_path, colors=CONTRAST))
    studio.away()
    studio.settle()
    shown = studio.screen()
    bar = studio.rect(TOOLBAR)
    icon = colors(shown.crop((bar[0] + 4, bar[1] + 4, bar[0] + 28, bar[1] + 28)))
    assert TEXT in icon and FACE in icon
    assert all(between(color, FACE, TEXT) for color in icon), icon
    left, top, right, bottom = studio.rect(SPLIT_LEFT)
    assert shown.getpixel(((left + right) // 2, (top + bottom) // 2)) == TEXT
    assert shown.getpixel((left, (top + bottom) // 2)) == FACE
    rows = colors(shown.crop(studio.rect(ROWS)))
    assert {CONTRAST["Window"], CONTRAST["WindowText"], CONTRAST["GrayText"], HIGHLIGHT} <= rows
    assert {CONTRAST["ButtonFace"], CONTRAST["ButtonText"]} <= colors(shown.crop(studio.rect(STATUS)))
    assert CONTRAST["Window"] in colors(shown.crop(studio.rect(TREE)))


def test_high_contrast_outlines_and_labels_take_them_too(start, drawing, tmp_path):
    studio = start(drawing, env=prefix(tmp_path, colors=CONTRAST))
    left, top, right, bottom = studio.rect(CANVAS)
    plain = colors(studio.canvas())
    assert not plain & {HIGHLIGHT, CONTRAST["HilightText"], CONTRAST["InfoWindow"]}
    studio.click(CANVAS, (right - left) * 130 // 200, (bottom - top) // 2)  # the box
    studio.settle()
    assert {HIGHLIGHT, CONTRAST["HilightText"]} <= colors(studio.canvas())
    studio.key("F7")  # the label of updates
    wait_for("the label", lambda: CONTRAST["InfoWindow"] in colors(studio.canvas()))
    assert CONTRAST["InfoText"] in colors(studio.canvas())


def test_high_contrast_tells_faults_in_them(start, drawing, tmp_path):
    bad = tmp_path / "bad.qel"
    bad.write_text("<qel width='9' height='9'><rect</qel>", encoding="utf-8")
    studio = start(bad, env=prefix(tmp_path, colors=CONTRAST))
    bar = colors(part(studio, MESSAGE))
    assert {CONTRAST["InfoWindow"], CONTRAST["InfoText"], HIGHLIGHT} <= bar
    assert all(between(c, CONTRAST["InfoWindow"], CONTRAST["InfoText"]) or c == HIGHLIGHT for c in bar), bar


def test_a_change_of_the_systems_look_leaves_all_as_it_is_where_nothing_differs(start, drawing, tmp_path):
    studio = start(drawing, env=prefix(tmp_path, colors=CONTRAST))
    studio.away()
    studio.settle()
    before = studio.screen()
    studio.system("look")
    studio.settle()
    assert difference(before, studio.screen()) == ""
    assert studio.close() == 0


def width(studio, number):
    left, _, right, _ = studio.rect(number)
    return right - left


def test_panes_are_resized_by_keys(start, drawing):
    studio = start(drawing)
    tree, panel = width(studio, TREE), width(studio, ROWS)
    studio.key("ctrl+F8", "Right", "Right", "ctrl+Right")  # 8 pixels each; one
    wait_for("a wider tree", lambda: width(studio, TREE) == tree + 17)
    studio.key("Tab", "Left", "Return")  # the bar left of the run panel
    wait_for("a wider panel", lambda: width(studio, ROWS) == panel + 8)
    assert width(studio, TREE) == tree + 17
    studio.key("ctrl+F8", "Left", "Left")
    wait_for("a narrower tree", lambda: width(studio, TREE) == tree + 1)
    studio.key("Escape")
    wait_for("the tree as it was", lambda: width(studio, TREE) == tree + 17)
    assert studio.close() == 0
    again = start(drawing, settings=None)
    assert width(again, TREE) == tree  # settings of its own


def test_sizes_set_by_keys_are_kept(start, drawing, tmp_path):
    studio = start(drawing)
    tree = width(studio, TREE)
    studio.key("ctrl+F8", "Right", "Return")
    wait_for("a wider tree", lambda: width(studio, TREE) == tree + 8)
    assert studio.close() == 0
    kept = studio.settings_path.read_text(encoding="utf-8")
    assert f'"left": {240 + 8}' in kept


def window_rect(studio):
    """The place of the window with its frame: Wine draws one of 3 pixels and a title of 18."""
    return studio.look()["main"]["rect"]


@pytest.mark.parametrize("dpi", [144, 192])
def test_a_finer_screen_has_all_as_large_to_the_eye(start, drawing, tmp_path, dpi):
    plain = start(drawing)
    sizes = {number: plain.rect(number) for number in (TOOLBAR, STATUS)}
    plain.close()
    studio = start(drawing, env=prefix(tmp_path, dpi=dpi))
    tall = {number: rect[3] - rect[1] for number, rect in sizes.items()}
    times = dpi / 96

    def height(number):
        rect = studio.rect(number)
        return rect[3] - rect[1]

    assert width(studio, SPLIT_LEFT) == 6 * times
    assert width(studio, TREE) >= 240 * times - 20  # all but a scroll bar, and its edge
    column = height(TREE) + 6 * times + height(ATTRIBUTES)  # of which 128 are left for others
    assert height(ATTRIBUTES) == pytest.approx(min(200 * times, column - 128 * times), abs=4)
    assert height(TOOLBAR) == pytest.approx(tall[TOOLBAR] * times, abs=4)
    assert height(STATUS) == pytest.approx(tall[STATUS] * times, rel=0.25)
    studio.key("F9", "shift+F9", "ctrl+1")  # all the room for the drawing
    wait_for("100 %", lambda: studio.status(ZOOM) == "100 %")
    studio.away()
    studio.settle()
    # As large to the eye: a unit is as many pixels as the screen is finer.
    rect = studio.rect(CANVAS)
    size = (int(200 * times), int(100 * times))
    expected = render(drawing, tmp_path, "--size", f"{size[0]}x{size[1]}", "--scale", int(times * 100),
                      "--background", "F0F0F0", "--smooth", 4)
    left, top = (rect[2] - rect[0] - size[0]) // 2 - 1, (rect[3] - rect[1] - size[1]) // 2 - 1
    assert difference(expected, studio.canvas().crop((left, top, left + size[0], top + size[1]))) == ""


def test_a_window_takes_the_place_that_its_new_monitor_gives_it(start, drawing):
    studio = start(drawing)
    before = window_rect(studio)
    studio.system("place", 40, 30, 840, 630)
    wait_for("the new place", lambda: window_rect(studio) != before)
    left, top, right, bottom = window_rect(studio)
    assert 40 <= left <= 50 and 30 <= top <= 80 and 830 <= right <= 840 and 620 <= bottom <= 630
    studio.settle()
    rect = studio.rect(STATUS)
    assert rect[3] == bottom and rect[2] == right, "the panes follow"
    assert studio.close() == 0
