"""Standard input and output in the place of files."""
import subprocess
from tempfile import TemporaryFile

import pytest
from filesupport import DRAWING, MOVING, PATIENCE, RED, content, picture, program
from filesupport import qel  # noqa: F401  (a fixture)

INPUTS = ["-", "/dev/stdin"]
OUTPUTS = ["-", "/dev/stdout"]


@pytest.mark.parametrize("name_in", INPUTS)
@pytest.mark.parametrize("name_out", OUTPUTS)
def test_render_reads_a_drawing_and_writes_a_png(qel, name_in, name_out):
    status, out, error = qel("render", name_in, name_out, "--size", "20x15", stdin=DRAWING)
    assert (status, error) == (0, "")
    image = picture(out)
    assert (image.format, image.size) == ("PNG", (20, 15))
    assert set(image.convert("RGB").getdata()) == {RED}
    assert qel.names() == []


def test_a_picture_on_standard_output_has_the_bytes_of_one_in_a_file(qel):
    qel.write("a.qel")
    assert qel("render", "a.qel", "a.png") == (0, b"", "")
    expected = (qel.folder / "a.png").read_bytes()
    assert b"\n" in expected and b"\r" in expected  # what a stream of text would change
    assert qel("render", "-", "-", stdin=DRAWING) == (0, expected, "")
    assert qel("render", "a.qel", "-") == (0, expected, "")


def test_a_drawing_on_standard_input_keeps_every_byte(qel):
    # A line end, an end-of-file mark and bytes of two that a stream of text would change.
    text = b"<qel><text crd='0 0 40 10'>a\x1a\xb1\xc3</text>\r\n\r\r\n<x/></qel>"
    qel.write("a.qel", text)
    for command in ("info", "check"):
        from_file = qel(command, "a.qel")
        from_stream = qel(command, "-", stdin=text)
        assert from_file[1] != b""
        assert from_stream == (from_file[0], from_file[1].replace(b"a.qel:", b"-:"), "")


def test_a_large_drawing_comes_through_a_pipe_in_pieces(qel):
    text = b'<qel width="40" height="30">\n' + b'<rect crd="1 1 9 9"/>\n' * 20000 + b"<x/></qel>"
    status, out, error = qel("check", "-", stdin=text)
    assert (status, error) == (1, "")
    assert out.startswith(b"-:20002:1: error: unknown element <x>")


@pytest.mark.parametrize("name_in", INPUTS)
def test_info_and_check_read_standard_input(qel, name_in):
    status, out, error = qel("info", name_in, stdin=DRAWING)
    assert (status, error) == (0, "")
    assert out.startswith(b'size 40 x 30, kind 0, name "plain"')
    assert qel("check", name_in, stdin=DRAWING) == (0, b"", "")
    status, out, error = qel("check", name_in, stdin=b"<qel>\n <x/></qel>")
    assert (status, error) == (1, "")
    assert out.startswith(name_in.encode() + b":2:2: error: unknown element <x>")


def test_check_takes_standard_input_among_files_and_twice(qel):
    qel.write("a.qel", b"<qel><y/></qel>")
    status, out, error = qel("check", "-", "a.qel", "-", stdin=b"<qel><x/></qel>")
    assert (status, error) == (1, "")
    assert [line.split(b": ")[0] for line in out.splitlines()] == [b"-:1:6", b"a.qel:1:6", b"-:1:6"]


@pytest.mark.parametrize("name_out", OUTPUTS)
def test_animate_writes_a_gif(qel, name_out):
    arguments = ["--value", "0=0..9", "--frames", "3", "--size", "160x120"]
    status, out, error = qel("animate", "-", name_out, *arguments, stdin=MOVING)
    assert (status, error) == (0, "")
    image = picture(out)
    assert (image.format, image.size, image.n_frames) == ("GIF", (160, 120), 3)


def test_what_is_no_drawing_is_told_and_nothing_is_written(qel):
    for data, why in ((b"", "the drawing is empty"), (b"no drawing", "the file is no drawing"),
                      (b"<rect/>", "the file is no drawing"), (b"<qel>\n<g></qel>", "2:4: the end tag does not match")):
        status, out, error = qel("render", "-", "-", stdin=data)
        assert (status, out) == (2, b"")
        assert error.startswith(f"qel: cannot open '-': {why}")


def test_a_picture_that_nobody_takes_is_an_error(qel):
    with open("/dev/full", "wb") as full, TemporaryFile() as error:
        done = subprocess.run([*program(), "render", "-", "-"], cwd=qel.folder, input=DRAWING, stdout=full,
                              stderr=error, timeout=PATIENCE, check=False)
        assert done.returncode == 2
        assert content(error).decode().strip() == "qel: standard output cannot be written"


def test_a_file_of_that_name_goes_with_its_folder(qel):
    qel.write("-", b"<qel><y/></qel>")
    status, out, _ = qel("check", "./-", stdin=DRAWING)
    assert status == 1
    assert out.startswith(b"./-:1:6: error: unknown element <y>")
