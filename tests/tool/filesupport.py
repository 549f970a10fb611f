"""What the tests of files, streams and lists share: qel in a folder of its own, with bytes in and out."""
import os
import shlex
import subprocess
from io import BytesIO
from pathlib import Path
from tempfile import TemporaryFile

import pytest
from PIL import Image

ROOT = Path(__file__).resolve().parents[2]
PATIENCE = 120  # seconds

# A drawing whose rectangle covers it in one colour.
DRAWING = (b'<?xml version="1.0" encoding="gb2312" ?>\r\n<qel width="40" height="30" id="plain">\r\n'
           b'<rect style="0x1" dr="1" fg="0x0000ff" lnwid="0" crd="0 0 40 30"/>\r\n</qel>\r\n')
RED = (255, 0, 0)  # of the file's 0xBBGGRR
# Its needle is long enough to be seen moving.
MOVING = b'<qel width="160" height="120"><meter mtype="round" crd="80 60 55 0 0 160 120" upin="1"/></qel>'


class Qel:
    """Runs qel, or the script ./qel, in a folder; what it says comes as status, output bytes and error text."""

    def __init__(self, folder, command):
        self.folder = folder
        self.command = command

    def __call__(self, *arguments, stdin=b"", **environment):
        with TemporaryFile() as out, TemporaryFile() as error:
            # Not pipes: where the run starts Wine's server, that keeps their ends for as long as it lives.
            done = subprocess.run([*self.command, *arguments], cwd=self.folder, input=stdin, stdout=out, stderr=error,
                                  timeout=PATIENCE, env={**os.environ, **environment}, check=False)
            return done.returncode, content(out), content(error).decode("utf-8").replace("\r", "")

    def write(self, name, data=DRAWING):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        return path

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def findings(self, body, head='<qel width="40" height="30">'):
        """The lines of a check of a drawing with that body, which stands in its second line."""
        self.write("f.qel", (head + "\n" + body + "\n</qel>").encode("ascii"))
        status, out, error = self("check", "f.qel")
        assert error == ""
        lines = out.decode("utf-8").splitlines()
        assert status == (1 if lines else 0)
        return [line.removeprefix("f.qel:") for line in lines]


def content(file):
    file.seek(0)
    return file.read()


def picture(data):
    return Image.open(BytesIO(data))


def program():
    """The words that run the program, without the script."""
    return shlex.split(os.environ["QEL"])


@pytest.fixture
def qel(tmp_path):
    return Qel(tmp_path, program())


@pytest.fixture
def script(tmp_path):
    return Qel(tmp_path, [str(ROOT / "qel")])
