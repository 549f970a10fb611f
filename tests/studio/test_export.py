"""Pictures of what is shown: the dialogs, the file that comes of them, which is what qel render makes, and the
clipboard."""
import struct
import subprocess

from PIL import Image, ImageSequence

import pytest

from driver import BIN, PATIENCE, WINE, difference, render, wait_for, windows_path
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


def qel(command, drawing, out, *options):
    subprocess.run([*WINE, str(BIN / "qel.exe"), command, windows_path(drawing), windows_path(out),
                    *map(str, options)], check=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)
    return out


def records(path):
    """What a metafile draws: its records without the header, which names where it was made, and of fonts what stands
    before the end of their names, behind which there is what happened to be in memory."""
    font, fixed, end = 82, 12 + 28, 12 + 92
    data = path.read_bytes()
    found = []
    at = 0
    while at < len(data):
        kind, size = struct.unpack_from("<II", data, at)
        record = data[at:at + size]
        if kind == font:
            record = record[:fixed] + record[fixed:end].decode("utf-16-le").split("\0")[0].encode()
        if kind != 1:
            found.append(record)
        at += size
    assert len(found) > 10
    return found


def test_each_kind_holds_what_qel_makes_of_the_same_values(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    what = ("--size", "200x100", "--background", "FFFFFF", "--value", "level=6.5")
    export(studio, tmp_path / "out.emf")
    expected = qel("render", drawing, tmp_path / "expected.emf", *what)
    assert records(tmp_path / "out.emf") == records(expected)
    export(studio, tmp_path / "plain.png", "alt+s")
    with Image.open(tmp_path / "plain.png") as picture:
        assert difference(render(drawing, tmp_path, *what, "--smooth", 0), picture.convert("RGB")) == ""
    export(studio, tmp_path / "clear.png", "alt+t")
    expected = qel("render", drawing, tmp_path / "expected.png", "--size", "200x100", "--value", "level=6.5",
                   "--smooth", 4, "--transparent")
    with Image.open(tmp_path / "clear.png") as picture, Image.open(expected) as wanted:
        assert picture.mode == "RGBA"
        assert difference(wanted.convert("RGBA"), picture) == ""


def test_a_movie_has_the_pictures_that_qel_animates(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    begin_edit(studio, "signal")
    studio.key("Down", "Down", "Return")  # a ramp, from 0 to 10
    studio.settle()
    edit(studio, "period, seconds", "2")
    out = tmp_path / "out.gif"
    export(studio, out)
    table = tmp_path / "ramp.csv"
    table.write_text("level\n" + "".join(f"{0.5 * n:.2f}\n" for n in range(20)), encoding="utf-8")
    expected = qel("animate", drawing, tmp_path / "expected.gif", "--data", windows_path(table), "--fps", 10,
                   "--smooth", 4, "--size", "200x100", "--background", "FFFFFF")
    with Image.open(out) as movie, Image.open(expected) as wanted:
        shown = [frame.convert("RGB") for frame in ImageSequence.Iterator(movie)]
        wanted = [frame.convert("RGB") for frame in ImageSequence.Iterator(wanted)]
        assert len(shown) == len(wanted) == 20
        for number, (one, other) in enumerate(zip(wanted, shown)):
            assert difference(one, other) == "", number
        assert len({one.tobytes() for one in shown}) == 20


def clipboard(studio, name):
    """What another program finds on the clipboard: clip.bmp or clip.emf."""
    path = studio.folder / name
    path.unlink(missing_ok=True)
    (studio.folder / "paste.txt").touch()
    wait_for("the clipboard", lambda: path.exists() and not (studio.folder / "paste.txt").exists())
    return path


def test_copies_are_what_qel_renders_in_the_size_of_the_screen(start, drawing, tmp_path):
    studio = start(drawing)
    choose(studio, "level")
    edit(studio, "value", "6.5")
    studio.key("ctrl+c")
    studio.settle()
    with Image.open(clipboard(studio, "clip.bmp")) as picture:
        shown = picture.convert("RGB")
    zoom = min(shown.width / 200, shown.height / 100)
    assert zoom > 1
    what = ("--size", f"{shown.width}x{shown.height}", "--scale", int(zoom * 100 + 0.5), "--background", "FFFFFF",
            "--value", "level=6.5")
    assert difference(render(drawing, tmp_path, *what, "--smooth", 4), shown) == ""
    studio.key("ctrl+m")
    studio.settle()
    expected = qel("render", drawing, tmp_path / "expected.emf", *what)
    assert records(clipboard(studio, "clip.emf")) == records(expected)


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
