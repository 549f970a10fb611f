"""The run panel: rows are slid, properties are edited, signals play, values are kept beside the drawing. What the
canvas shows then is what qel render makes of the same values."""
import json
import time

import pytest

from driver import CANVAS, RUN, Studio, difference, wait_for
from panel import (BLINK, DRAWING, KEEP, PLAY, PROPERTIES, ROWS, SPEED, TURN, begin_edit, choose, drawing, edit,
                   expect_picture, properties, start, values_file)

assert drawing and start  # the fixtures of all tests here


def test_a_row_has_what_its_elements_take(start, drawing):
    studio = start(drawing)
    choose(studio, "level")
    assert list(properties(studio)) == ["value", "signal of", "signal", "quality", "visible", "pin-color", "scale-color", "ticks",
                                        "max", "min"]
    choose(studio, "state")
    assert list(properties(studio)) == ["value", "signal of", "signal", "text", "clr", "fg", "bg", "quality", "visible"]
    choose(studio, "box")
    assert properties(studio)["fg"] == "#FF0000"
    choose(studio, "#status")
    assert list(properties(studio)) == ["value", "signal"]
    assert studio.close() == 0


def test_a_slider_moves_the_value(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    before = expect_picture(studio, drawing, tmp_path)
    studio.drag(ROWS, (9, 32), (90, 32))
    studio.settle()
    value = float(properties(studio)["value"])
    assert 3 < value < 7  # about the middle of 0 to 10
    after = expect_picture(studio, drawing, tmp_path, "--value", f"level={value}")
    assert before.tobytes() != after.tobytes()
    studio.click(ROWS, 60, 12)
    studio.key("Right")  # a hundredth of the range
    studio.settle()
    assert float(properties(studio)["value"]) == pytest.approx(value + 0.1, abs=0.001)


def test_properties_are_edited_each_in_its_way(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "max", "50")
    edit(studio, "value", "20.5")
    begin_edit(studio, "quality")
    studio.key("Down", "Return")
    studio.settle()
    assert properties(studio)["quality"] == "1 stale"
    choose(studio, "box")
    begin_edit(studio, "visible")
    assert properties(studio)["visible"] == "0"
    choose(studio, "state")
    edit(studio, "text", "at ##.# bar")
    edit(studio, "value", "7.25")
    choose(studio, "#41")
    edit(studio, "value", "4")
    choose(studio, "#status")
    edit(studio, "value", "1")
    values = {"level.max": 50, "level": 20.5, "level.quality": 1, "box.visible": 0, "state.text": "at ##.# bar",
              "state": 7.25, "#41": 4, "#status": 1}
    expect_picture(studio, drawing, tmp_path, "--values", values_file(tmp_path, values))


def test_enter_in_a_row_edits_its_value(start, drawing):
    studio = start(drawing)
    choose(studio, "#41")
    studio.key("Return")
    studio.xdotool("type", "3.5")
    studio.key("Return")
    studio.settle()
    assert properties(studio)["value"] == "3.5"


def test_a_colour_is_chosen_in_the_dialog(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "box")
    begin_edit(studio, "fg")
    for number in (0, 0, 255):  # red has the focus, then come green and blue
        studio.key("ctrl+a")
        studio.xdotool("type", str(number))
        studio.key("Tab")
    studio.key("Return")
    wait_for("the colour", lambda: properties(studio)["fg"] == "#0000FF")
    expect_picture(studio, drawing, tmp_path, "--values", values_file(tmp_path, {"box.fg": "#0000FF"}))


def test_escape_leaves_the_value_and_what_is_refused_is_told(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    begin_edit(studio, "value")
    studio.xdotool("type", "9")
    studio.key("Escape")
    studio.settle()
    assert properties(studio)["value"] == "0"
    before = studio.screen().crop(studio.rect(RUN))
    edit(studio, "ticks", "0")
    assert properties(studio)["ticks"] == "10"
    panel = studio.rect(RUN)
    message = (0, studio.rect(PROPERTIES)[3] - panel[1], panel[2] - panel[0], panel[3] - panel[1])
    assert difference(before.crop(message), studio.screen().crop(panel).crop(message)) != ""
    expect_picture(studio, drawing, tmp_path)


def test_a_signal_plays_pauses_and_is_drawn(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    begin_edit(studio, "signal")
    studio.key("Down", "Down", "Return")  # a ramp
    studio.settle()
    assert [properties(studio)[label] for label in ("signal", "from", "to")] == ["ramp", "0", "10"]
    edit(studio, "period, seconds", "3600")
    edit(studio, "from", "2")
    studio.click(PLAY, 20, 10)
    wait_for("the low end", lambda: properties(studio)["value"].startswith("2.0"))
    studio.click(SPEED, 20, 10)
    studio.key("End", "Return")  # eight times as fast: a hundredth in 0.57 seconds
    wait_for("a higher value", lambda: float(properties(studio)["value"]) > 2.02)
    studio.click(PLAY, 20, 10)
    studio.settle()
    value = properties(studio)["value"]
    time.sleep(1.5)
    assert properties(studio)["value"] == value
    expect_picture(studio, drawing, tmp_path, "--value", f"level={value}")


def test_values_are_kept_beside_the_drawing_and_found_there(start, drawing, tmp_path):
    kept = drawing.with_name("panel.values.json")
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    assert not kept.exists()
    studio.click(KEEP, 20, 10)
    wait_for("the file", kept.exists)
    studio.settle()
    assert json.loads(kept.read_text(encoding="utf-8")) == {"level": 6.5}
    assert studio.close() == 0
    again = start(drawing)
    choose(again, "level")
    assert properties(again)["value"] == "6.5"
    expect_picture(again, drawing, tmp_path, "--values", "Z:" + str(kept))


def test_a_reload_keeps_the_values(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    drawing.write_text(DRAWING.replace("0xff", "0xff0000"), encoding="utf-8")
    wait_for("the new picture", lambda: studio.canvas().getcolors(1 << 20) and any(
        color == (0, 0, 255) for _, color in studio.canvas().getcolors(1 << 20)))
    expect_picture(studio, drawing, tmp_path, "--value", "level=6.5")
    choose(studio, "level")
    assert properties(studio)["value"] == "6.5"


def test_a_turn_turns_the_picture(start, drawing):
    studio = start(drawing)
    studio.away()  # or what is below the pointer is outlined
    studio.settle()
    before = studio.canvas()
    studio.click(TURN, 20, 10)
    studio.away()
    studio.settle()
    assert difference(before, studio.canvas()) != ""
    for _ in range(3):
        studio.click(TURN, 20, 10)
        studio.settle()
    studio.away()
    wait_for("the picture of before", lambda: difference(before, studio.canvas()) == "")


def test_blinking_colours_blink_until_they_are_not_to(start, drawing, monkeypatch):
    drawing.write_text(DRAWING.replace('fg="0xff"', 'fg="0xff glt"'), encoding="utf-8")
    monkeypatch.setattr(Studio, "settle", lambda self: time.sleep(1))  # it never comes to rest
    studio = start(drawing)
    x, y = 130, 50

    def color():
        left, top, right, bottom = studio.rect(CANVAS)
        zoom = min((right - left - 16) / 200, (bottom - top - 16) / 100, 16)
        return studio.screen().getpixel((int((left + right) / 2 + (x - 100) * zoom),
                                         int((top + bottom) / 2 + (y - 50) * zoom)))

    wait_for("the bright phase", lambda: color() == (255, 0, 0))
    wait_for("the dark phase", lambda: color() == (0, 0, 0))
    studio.click(BLINK, 8, 10)
    wait_for("the bright phase", lambda: color() == (255, 0, 0))
    for _ in range(5):
        time.sleep(0.3)
        assert color() == (255, 0, 0)


def test_a_drawing_without_names_has_nothing_to_set(start, tmp_path):
    path = tmp_path / "plain.qel"
    path.write_text('<qel width="50" height="50"><line crd="1 1 9 9"/></qel>', encoding="utf-8")
    studio = start(path)
    assert not studio.window(ROWS)["visible"]
    assert not studio.window(PROPERTIES)["visible"]


def test_the_label_of_updates_is_whole_however_long_it_grows(start, drawing):
    studio = start(drawing)
    choose(studio, "level")
    studio.key("F7")
    studio.settle()
    left, top, _, _ = studio.rect(CANVAS)
    label = (left + 8, top + 8, left + 320, top + 40)
    short = studio.screen().crop(label)
    studio.key(*["ctrl+Right"] * 10)  # ten updates: the count has two digits
    studio.settle()
    time.sleep(1)  # the marks fade
    grown = studio.screen().crop(label)
    assert difference(short, grown) != ""
    studio.key("shift+F6", "F6")  # the focus goes to the canvas and back: all of it is painted anew
    studio.settle()
    assert difference(grown, studio.screen().crop(label)) == ""


def test_what_is_updated_in_every_frame_is_seen_through_its_mark(start, drawing):
    studio = start(drawing)
    studio.key("ctrl+shift+r", "ctrl+r", "F7")  # a signal for all values, and play
    time.sleep(2)
    shown = studio.canvas()
    left, top, _, _ = studio.rect(CANVAS)
    label = studio.screen().getpixel((left + 10, top + 9))
    assert label == (0x20, 0x22, 0x24)
    marked = [color for _, color in shown.getcolors(1 << 24) if color[0] > color[1] + 40 > color[2] + 80]
    assert marked  # some of it is marked
    assert not [c for c in marked if c[0] > 240 and abs(c[1] - 0x60) < 24 and c[2] < 40]  # nothing by the mark alone
