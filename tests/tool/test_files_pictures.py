"""Pictures that are replaced, those that are not, and how large they are."""
import subprocess
import time

import pytest
from filesupport import DRAWING, MOVING, PATIENCE, picture, program
from filesupport import qel  # noqa: F401  (a fixture)

OLD = b"what stood there before"
SIZE_FAULT = "qel: --size wants WIDTHxHEIGHT, each 1 to 16384 and together no more than 8192x8192, not '%s'\n"


@pytest.mark.parametrize("command, name, options", [("render", "a.png", []), ("render", "a.emf", []),
                                                    ("animate", "a.gif", ["--value", "0=0..9", "--frames", "2"])])
def test_a_read_only_picture_stays(qel, command, name, options):
    qel.write("a.qel", MOVING)
    path = qel.write(name, OLD)
    path.chmod(0o444)
    result = qel(command, "a.qel", name, *options)
    assert result == (2, b"", f"qel: cannot write '{name}': it is read-only\n")
    assert path.read_bytes() == OLD
    assert qel.names() == sorted(["a.qel", name])
    path.chmod(0o644)
    assert qel(command, "a.qel", name, *options) == (0, b"", "")
    assert path.read_bytes() != OLD


def test_a_folder_of_the_pictures_name_stays(qel):
    qel.write("a.qel")
    (qel.folder / "a.png").mkdir()
    assert qel("render", "a.qel", "a.png") == (2, b"", "qel: cannot write 'a.png': it is a folder\n")
    assert qel.names() == ["a.png", "a.qel"]


def test_a_picture_that_another_program_has_open_stays(qel):
    qel.write("a.qel")
    path = qel.write("a.png", OLD)
    holder = subprocess.Popen([*program()[:-1], "cmd", "/c", "pause > a.png"], cwd=qel.folder, stdin=subprocess.PIPE,
                              stderr=subprocess.DEVNULL)
    try:
        end = time.monotonic() + PATIENCE
        while path.read_bytes() == OLD and time.monotonic() < end:
            time.sleep(0.1)
        held = path.read_bytes()
        assert held != OLD, "the other program has not opened it"
        result = qel("render", "a.qel", "a.png")
        assert result == (2, b"", "qel: cannot write 'a.png': another program has it open\n")
        assert path.read_bytes() == held
    finally:
        holder.communicate(b"\r\n", timeout=PATIENCE)
    assert qel("render", "a.qel", "a.png") == (0, b"", "")


def test_what_killed_runs_left_is_no_hindrance(qel):
    qel.write("a.qel")
    # The process's number is in the name, and numbers come again: all that there may be.
    for number in range(0, 2000, 4):
        for n in range(2):
            qel.write(f"a.png.{number}-{n}.part", OLD)
    before = len(qel.names())
    assert qel("render", "a.qel", "a.png") == (0, b"", "")
    assert picture((qel.folder / "a.png").read_bytes()).format == "PNG"
    assert len(qel.names()) <= before + 1


@pytest.mark.parametrize("size", ["+5x+5", "+5x5", "5x+5", "-5x5", " 5x5", "5x 5", "5x5x5", "x", "5x", "x5", "5X5", "0x5",
                                  "16385x1", "1x16385", "16384x4097", "8193x8192", "999999999999x1"])
def test_a_size_is_two_plain_numbers_within_the_limit(qel, size):
    qel.write("a.qel")
    assert qel("render", "a.qel", "a.png", "--size", size) == (2, b"", SIZE_FAULT % size)
    assert qel.names() == ["a.qel"]


@pytest.mark.parametrize("name, size", [("a.png", "8192x8192"), ("a.bmp", "8192x8192"), ("a.jpg", "16384x4096"),
                                        ("a.png", "4096x16384"), ("a.png", "16384x1"), ("a.png", "1x16384"),
                                        ("a.emf", "8192x8192")])
def test_the_largest_sizes_of_the_help_work(qel, name, size):
    _, out, _ = qel("render", "--help")
    assert b"each side 1 to 16384 and no more pixels than 8192x8192" in out
    qel.write("a.qel")
    assert qel("render", "a.qel", name, "--size", size) == (0, b"", "")
    head = (qel.folder / name).read_bytes()[:64]
    assert len(head) == 64
    if name.endswith(".png"):
        sides = (int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big"))
        assert "%dx%d" % sides == size


def test_a_drawing_that_is_too_large_in_its_own_size_is_refused(qel):
    for width, height, status in ((9000, 7000, 0), (9000, 8000, 2)):
        qel.write("a.qel", DRAWING.replace(b'width="40" height="30"', b'width="%d" height="%d"' % (width, height)))
        result = qel("render", "a.qel", "a.emf")  # which needs no bitmap, but has the same limit
        assert result[0] == status
        assert ("give a size with --size" in result[2]) == (status == 2)
