"""Signals for all that can be set: all values at once, settings, colours from a table, and drawings that are not
shown."""
import json
import time

from driver import wait_for
from panel import KEEP, PLAY, PROPERTIES, begin_edit, choose, drawing, edit, expect_picture, properties, start

assert drawing and start  # the fixtures of all tests here


def target(studio, label):
    """What the signal is to be of."""
    labels = [row[0] for row in studio.contents(PROPERTIES)]
    others = [each for each in labels if each not in ("signal of", "signal", "period, seconds", "seconds a row")]
    begin_edit(studio, "signal of")
    studio.key("Home", *["Down"] * others.index(label), "Return")
    studio.settle()
    assert properties(studio)["signal of"].endswith(label)


def colors(studio):
    return {color for _, color in studio.canvas().getcolors(1 << 20)}


def test_all_values_play_at_once_and_pause_by_keys(start, drawing, tmp_path):
    studio = start(drawing)
    studio.key("ctrl+shift+r", "ctrl+r")
    wait_for("play", lambda: studio.window(PLAY)["text"] == "&Pause")
    time.sleep(1.5)
    studio.key("ctrl+r")
    wait_for("a pause", lambda: studio.window(PLAY)["text"] == "&Play")
    studio.settle()
    studio.click(KEEP, 20, 10)
    kept = drawing.with_name("panel.values.json")
    wait_for("the file", kept.exists)
    values = json.loads(kept.read_text(encoding="utf-8"))
    assert sorted(values) == ["#41", "#status", "level", "state"]  # the box has no number
    assert 0 < values["level"] <= 10
    expect_picture(studio, drawing, tmp_path, "--values", "Z:" + str(kept))
    choose(studio, "level")
    assert properties(studio)["signal"] == "sine"
    studio.key("alt+r", "n")  # no signals
    studio.settle()
    assert properties(studio)["signal"] == "none"


def test_a_drawing_that_is_not_shown_plays_on(start, drawing, tmp_path):
    other = tmp_path / "other.qel"
    other.write_text('<qel width="50" height="50"><line crd="1 1 9 9"/></qel>', encoding="utf-8")
    studio = start(other, drawing)
    choose(studio, "level")
    begin_edit(studio, "signal")
    studio.key("Down", "Down", "Return")  # a ramp, from 0 to 10
    studio.settle()
    edit(studio, "period, seconds", "100")
    began = time.monotonic()
    studio.key("ctrl+r")
    studio.key("ctrl+Tab")
    wait_for("the other one", lambda: studio.title().startswith("other.qel"))
    away = time.monotonic()
    time.sleep(3)
    back = time.monotonic()
    studio.key("ctrl+Tab")
    wait_for("the drawing", lambda: studio.title().startswith("panel.qel"))
    studio.key("ctrl+r")
    wait_for("a pause", lambda: studio.window(PLAY)["text"] == "&Play")
    ended = time.monotonic()
    choose(studio, "level")
    value = float(properties(studio)["value"])
    assert (back - away) / 10 - 0.02 <= value <= (ended - began) / 10 + 0.02
    expect_picture(studio, drawing, tmp_path, "--value", f"level={value}")


def test_a_check_box_follows_a_square(start, drawing):
    studio = start(drawing)
    choose(studio, "box")
    target(studio, "visible")
    begin_edit(studio, "signal")
    studio.key("Down", "Return")  # what is on or off takes a square or a table
    studio.settle()
    assert properties(studio)["signal"] == "square"
    edit(studio, "period, seconds", "2")
    studio.away()
    studio.key("ctrl+r")
    wait_for("a hidden box", lambda: (255, 0, 0) not in colors(studio))
    wait_for("a box that shows", lambda: (255, 0, 0) in colors(studio))
    wait_for("a hidden box again", lambda: (255, 0, 0) not in colors(studio))


def test_a_colour_follows_the_column_of_a_table(start, drawing, tmp_path):
    table = tmp_path / "colors.csv"
    table.write_text("other,box.fg\n1,#0000FF\n2,#00FF00\n", encoding="utf-8")
    studio = start(drawing)
    choose(studio, "box")
    target(studio, "fg")
    begin_edit(studio, "signal")
    studio.key("Down", "Return")
    wait_for("the dialog", lambda: studio.look("Open").get("main"))
    time.sleep(0.5)
    studio.xdotool("type", "--delay", "20", "Z:" + str(table).replace("/", "\\"))
    studio.key("Return")
    wait_for("the column", lambda: properties(studio).get("column of a table") == "box.fg")
    studio.away()
    studio.key("ctrl+r")
    wait_for("blue", lambda: (0, 0, 255) in colors(studio))
    wait_for("green", lambda: (0, 255, 0) in colors(studio))
