"""Play that goes on for long: memory, open files and objects to draw with stay what they were. A quarter of a minute, or
as many seconds as STUDIO_PLAY_SECONDS says: ./endurance.sh plays an hour."""
import os
import pathlib
import time

from driver import ROOT, wait_for
from panel import PLAY, ROWS, SPEED, start

assert start  # the fixture

SECONDS = int(os.environ.get("STUDIO_PLAY_SECONDS", "15"))
LOOKS = 8
SPARE_KB = 256 + SECONDS // 4  # pages that come and go; a leak of a kilobyte a frame makes 450 in a quarter of a minute
SPARE_OBJECTS = 2


def process_of(studio):
    """The Studio itself, as the machine under Wine numbers it."""
    for path in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if (b"QELStudio.exe" in (path / "cmdline").read_bytes().split(b"\0")[0]
                    and (path / "cwd").resolve() == studio.folder.resolve()):
                return path
        except OSError:
            pass
    raise AssertionError("there is no Studio")


def own_memory(process):
    """Kilobytes of its own that it holds."""
    lines = (process / "status").read_text().splitlines()
    return next(int(line.split()[1]) for line in lines if line.startswith("RssAnon"))


def held(studio, process):
    """The least of several looks, since a frame may be under way."""
    looks = []
    for _ in range(LOOKS):
        studio.look()
        looks.append((own_memory(process), len(list((process / "fd").iterdir())), studio.held["drawing"]))
        time.sleep(0.1)
    return [min(column) for column in zip(*looks)]


def test_memory_and_objects_stay(start):
    studio = start(ROOT / "examples" / "machine-dashboard.qel")
    process = process_of(studio)
    studio.click(SPEED, 20, 10)
    studio.key("End", "Return")  # eight times as fast
    studio.click(ROWS, 60, 12)
    studio.key("ctrl+shift+r", "F7", "ctrl+r")  # all values, with the marks of updates
    wait_for("play", lambda: studio.window(PLAY)["text"] == "&Pause")
    studio.away()
    time.sleep(6)  # everything has been drawn once
    before = held(studio, process)
    assert before[1] > 2 and before[2] > 50, before  # or they are not told
    shown = studio.screen().crop(studio.rect(ROWS))
    time.sleep(SECONDS)
    after = held(studio, process)
    assert shown.tobytes() != studio.screen().crop(studio.rect(ROWS)).tobytes(), "it does not play"
    assert after[0] - before[0] <= SPARE_KB, (before, after)
    assert after[1] - before[1] <= SPARE_OBJECTS, (before, after)
    assert after[2] - before[2] <= SPARE_OBJECTS, (before, after)
    print(f"memory {before[0]} to {after[0]} KB, open files {before[1]} to {after[1]}, objects {before[2]} to {after[2]}")
    studio.key("ctrl+r", "F7")
    studio.settle()
