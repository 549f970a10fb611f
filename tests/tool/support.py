"""What the tests of qel share: running it in a folder, and reading the pictures that it wrote."""
import os
import shlex
import subprocess
from pathlib import Path
from tempfile import TemporaryFile
from typing import NamedTuple

import pytest
from PIL import Image

ROOT = Path(__file__).resolve().parents[2]
SECONDS = 120  # no run takes as long; one that hangs is to fail
BACKGROUND = "c0c0c0"
PLAIN_PIXELS = "--smooth 0"  # for what is compared with a .bmp, which is drawn so without being told

# A drawing of 40 by 30 units with this line has the bytes ff, 00, 00 from 10,10 to before 30,20.
PLAIN = '<rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="10 10 30 20"/>'
COVER = '<rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 40 30"/>'


class Result(NamedTuple):
    """What a run left: its exit status, and what it wrote without carriage returns and ends of lines at the end."""

    status: int
    out: str
    err: str


def written(file):
    file.seek(0)
    return file.read().decode("utf-8").replace("\r", "").rstrip("\n")


def gb(words):
    """As a drawing that declares gb2312 has them."""
    return words.encode("gb2312")


class Tool:
    """qel at work in a folder."""

    def __init__(self, command, folder):
        self.command, self.folder = command, folder

    def run(self, *arguments, stdout=None, **environment):
        # Not into pipes: where the run starts Wine's server, that keeps their ends for as long as it lives.
        with TemporaryFile() as out, TemporaryFile() as err:
            done = subprocess.run([*self.command, *arguments], cwd=self.folder, stdin=subprocess.DEVNULL,
                                  stdout=stdout or out, stderr=err, timeout=SECONDS,
                                  env={**os.environ, **environment}, check=False)
            return Result(done.returncode, written(out), written(err))

    def line(self, arguments):
        """Runs it with the arguments as a shell would split them."""
        return self.run(*shlex.split(arguments))

    def drawing(self, name, *lines):
        """Writes a drawing of 40 by 30 units with the lines from line 3 on, so that a test can count them."""
        lines = ['<?xml version="1.0" encoding="gb2312" ?>', '<qel width="40" height="30">', *lines, "</qel>"]
        return self.file(name, b"".join(line + b"\r\n" for line in map(as_bytes, lines)))

    def file(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(as_bytes(content))
        return name

    def draw(self, picture, drawing, options=""):
        """Renders without a word; the picture's name."""
        result = self.run("render", drawing, picture, *shlex.split(options))
        assert result == (0, "", "")
        assert self.bytes(picture)
        return picture

    def shot(self, drawing, options="", picture="shot.bmp"):
        """A picture of 40 by 30 pixels: of a drawing of 40 by 30 units, one to each."""
        return self.draw(picture, drawing, "--size 40x30 " + options)

    def bytes(self, name):
        content = (self.folder / name).read_bytes()
        assert content, name + " is empty"
        return content

    def image(self, name):
        """A picture in red, green and blue."""
        with Image.open(self.folder / name) as image:
            return image.convert("RGB")

    def size(self, name):
        with Image.open(self.folder / name) as image:
            return image.size

    def pixels(self, name, *places):
        """The colours at these places, as rrggbb."""
        image = self.image(name)
        return ["%02x%02x%02x" % image.getpixel(place) for place in places]

    def files(self):
        """The names of all files and folders that are there."""
        return sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*"))


def as_bytes(words):
    return words if isinstance(words, bytes) else words.encode("utf-8")


def rows(*table):
    """A table for pytest.mark.parametrize: the first cell of each row names it."""
    names = [row[0] for row in table]
    assert len(set(names)) == len(names), "two rows have one name"
    return [pytest.param(*row[1:], id=row[0]) for row in table]


def assert_refusal(result, part):
    """One line that tells why, nothing else, and the status of what could not be done."""
    assert result.status == 2
    assert part and part in result.err
    assert result.out == ""
    assert len(result.err.split("\n")) == 1
    assert result.err.startswith("qel: ")


def assert_refused(tool, arguments, part):
    """A refusal that leaves the folder as it was."""
    before = tool.files()
    assert_refusal(tool.line(arguments), part)
    assert tool.files() == before


def assert_one_finding(tool, file, at, kind, part):
    """check says one line of the file: where, of which kind, and why."""
    result = tool.run("check", file)
    assert result.status == 1
    assert len(result.out.split("\n")) == 1
    assert result.out.startswith(f"{file}:{at}: {kind}: ")
    assert part and part in result.out


def first_difference(image, wanted):
    """Where two pictures differ first, and in what: "" when they are the same."""
    assert image.size == wanted.size
    pairs = zip(image.getdata(), wanted.getdata())
    for place, (got, expected) in enumerate(pairs):
        if got != expected:
            y, x = divmod(place, image.width)
            return "%d,%d: " % (x, y) + "%02x%02x%02x" % got + " not %02x%02x%02x" % expected
    return ""
