"""Files that are dropped on the window, as a file manager does it."""
from driver import CANVAS, MESSAGE, RUN, TABS, TREE, difference, wait_for
from dropping import drop
from panel import DRAWING, drawing, start

assert drawing and start  # the fixtures of all tests here


def drop_on(studio, *paths, number=CANVAS):
    left, top, right, bottom = studio.rect(number)
    assert drop(paths, (left + right) // 2, (top + bottom) // 2)
    studio.settle()


def write(folder, name, text=DRAWING):
    path = folder / name
    path.write_text(text, encoding="utf-8")
    return path


def test_a_file_that_is_dropped_is_opened(start, drawing):
    studio = start()
    assert studio.title() == "QEL Studio"
    empty = studio.canvas()
    drop_on(studio, drawing)
    assert studio.contents(TABS) == ["panel.qel"]
    assert studio.title().startswith("panel.qel")
    assert difference(empty, studio.canvas()) != ""
    assert studio.close() == 0


def test_several_files_are_opened_in_their_order_and_the_last_shows(start, drawing, tmp_path):
    studio = start(drawing)
    names = ["one.qel", "with a space.qel", "\u4e8c.qel"]
    drop_on(studio, *(write(tmp_path, name) for name in names), number=TREE)
    assert studio.contents(TABS) == ["panel.qel", *names]
    assert studio.title().startswith(names[-1])
    assert studio.close() == 0


def test_a_file_that_is_open_comes_forward(start, drawing, tmp_path):
    studio = start(drawing, write(tmp_path, "other.qel"))
    assert studio.title().startswith("other.qel")
    drop_on(studio, drawing, number=RUN)
    assert studio.contents(TABS) == ["panel.qel", "other.qel"]
    assert studio.title().startswith("panel.qel")
    assert studio.window(TABS)["chosen"] == 0
    assert studio.close() == 0


def message(studio):
    bar = studio.window(MESSAGE)
    return bar["text"] if bar["visible"] else ""


def test_what_cannot_be_opened_is_told_and_keeps_nothing_else_from_it(start, drawing, tmp_path):
    studio = start()
    bad = write(tmp_path, "bad.qel", "<qel width='9' height='9'>\n<rect crd='1 1</qel>")
    folder = tmp_path / "folder"
    folder.mkdir()
    drop_on(studio, bad, drawing, tmp_path / "missing.qel", folder)
    assert studio.contents(TABS) == ["bad.qel", "panel.qel", "missing.qel", "folder"]
    assert message(studio) == "folder is a folder, and no drawing."
    studio.key("ctrl+Tab")
    wait_for("the bad one", lambda: message(studio).startswith("bad.qel, line 2, column "))
    studio.key("ctrl+Tab")
    wait_for("the good one", lambda: studio.title().startswith("panel.qel") and not message(studio))
    studio.key("ctrl+Tab")
    wait_for("the missing one", lambda: message(studio) == "missing.qel: File not found.")
    write(tmp_path, "missing.qel")
    wait_for("it, once it is there", lambda: not message(studio))
    assert studio.close() == 0
