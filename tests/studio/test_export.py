"""Pictures of what is shown: the dialogs, and the file that comes of them, which is what qel render makes."""
from PIL import Image

import pytest

from driver import difference, render, wait_for
from panel import PLAY, begin_edit, choose, drawing, edit, properties, start

assert drawing and start  # the fixtures of all tests here


def export(studio, path, *keys):
    """Through both dialogs; the keys are for the first one."""
    studio.key("ctrl+e")
    studio.settle()
    studio.key(*keys, "Return")
    studio.settle()
    studio.key("ctrl+a")
    studio.xdotool("type", "Z:" + str(path).replace("/", "\\"))
    studio.key("Return")
    wait_for("the picture", lambda: path.exists() and path.stat().st_size)
    studio.settle()


def test_a_picture_is_that_of_the_values(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    out = tmp_path / "out.png"
    export(studio, out)
    with Image.open(out) as picture:
        assert difference(render(drawing, tmp_path, "--size", "200x100", "--smooth", 4, "--background", "FFFFFF",
                                 "--value", "level=6.5"), picture.convert("RGB")) == ""


def test_a_picture_has_any_size_and_is_plain_or_transparent(start, drawing, tmp_path):
    studio = start(drawing)
    out = tmp_path / "out.png"
    # The width, whose proportion the height follows; then smooth off and transparent on.
    export(studio, out, "ctrl+a", "4", "0", "0", "alt+s", "alt+t")
    with Image.open(out) as picture:
        assert picture.mode == "RGBA"
        assert picture.size == (400, 200)
        expected = tmp_path / "expected.png"
        render(drawing, tmp_path, "--size", "400x200", "--scale", 200, "--smooth", 0, "--transparent").close()
        (tmp_path / "rendered.png").rename(expected)
        with Image.open(expected) as wanted:
            assert difference(wanted.convert("RGBA"), picture) == ""


def test_a_movie_shows_what_the_signals_do(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    begin_edit(studio, "signal")
    studio.key("Down", "Down", "Return")  # a ramp
    studio.settle()
    edit(studio, "period, seconds", "2")
    out = tmp_path / "out.gif"
    export(studio, out)
    with Image.open(out) as movie:
        assert movie.size == (200, 100)
        assert movie.n_frames == 20  # ten a second
    assert studio.window(PLAY)["text"] == "&Play"
    assert properties(studio)["value"] == "0"


@pytest.mark.parametrize("name", ["out.txt"])
def test_a_kind_that_there_is_not_is_told(start, drawing, tmp_path, name):
    studio = start(drawing)
    studio.key("ctrl+e")
    studio.settle()
    studio.key("Return")
    studio.settle()
    studio.key("ctrl+a")
    studio.xdotool("type", "Z:" + str(tmp_path / name).replace("/", "\\"))
    before = studio.screen()
    studio.key("Return")
    wait_for("a message", lambda: difference(before, studio.screen()) != "")
    studio.settle()
    assert not (tmp_path / name).exists()
    studio.key("Return")
    studio.settle()
    assert studio.close() == 0
