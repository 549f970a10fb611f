"""Drives the Studio as a person does: a display that nobody sees, keys, the mouse, files; what it shows is
read from the screen and, by the probe, from the texts of its windows."""
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import time

from PIL import Image, ImageChops

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILT = ROOT / "build" / os.environ.get("STUDIO_PRESET", "i686") / "bin"
BIN = pathlib.Path(os.environ.get("STUDIO_BIN", BUILT))  # of an installed package, too
WINE = shlex.split(os.environ.get("STUDIO_WINE", "wine"))
PATIENCE = 60  # seconds: a busy machine takes its time
SCREEN = (1280, 800)

TOOLBAR, TABS, MESSAGE, TREE, ATTRIBUTES, CANVAS, FINDINGS, RUN, STATUS = range(200, 209)
SPLIT_LEFT, SPLIT_RIGHT, SPLIT_TREE, SPLIT_FINDINGS = range(209, 213)
ELEMENT, POINTER, SIZE, ZOOM, FOUND = range(5)  # the parts of the status bar


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def wait_for(what, question, seconds=PATIENCE):
    """Asks again and again until the answer is true, and gives it."""
    end = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        assert time.monotonic() < end, f"in vain: {what}"
        time.sleep(0.02)


class Studio:
    """One Studio on a desktop of its own, with settings of its own."""

    count = 0

    def __init__(self, folder, *words, settings=None, stdin=subprocess.DEVNULL, env=None):
        Studio.count += 1
        self.folder = folder
        self.appdata = folder / "appdata"
        self.appdata.mkdir(parents=True, exist_ok=True)
        if settings is not None:
            (self.appdata / "QELStudio").mkdir(exist_ok=True)
            self.settings_path.write_text(json.dumps(settings), encoding="utf-8")
        for path in (BIN / "QELEngine.dll", BIN / "QELStudio.exe", BUILT / "qel_studio_probe.exe"):
            shutil.copy(path, folder)
        for name in ("stop.txt", "ended.txt", "ask.txt", "do.txt", "tell.json"):
            (folder / name).unlink(missing_ok=True)
        given = " ".join(f'"{windows_path(w)}"' if isinstance(w, pathlib.Path) else w for w in words)
        (folder / "run.bat").write_bytes(
            f"set APPDATA={windows_path(self.appdata)}\r\n"
            "start /b qel_studio_probe.exe\r\n"
            f"QELStudio.exe {given}\r\necho %errorlevel% >ended.txt\r\n".encode())
        desktop = f"/desktop=studio{os.getpid()}-{Studio.count},{SCREEN[0]}x{SCREEN[1]}"
        self.process = subprocess.Popen([*WINE, "explorer", desktop, "cmd", "/c", "run.bat"], cwd=folder,
                                        stdin=stdin, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, env=env)
        self.state = self.held = None
        wait_for("the window", lambda: self.look().get("main"))
        self.settle()

    @property
    def settings_path(self):
        return self.appdata / "QELStudio" / "settings.json"

    # What it shows.

    def look(self, title="QEL Studio"):
        """All windows with their texts, as they are now, in the one whose title ends so."""
        (self.folder / "tell.json").unlink(missing_ok=True)
        (self.folder / "ask.new").write_text(title, encoding="utf-8")
        (self.folder / "ask.new").rename(self.folder / "ask.txt")
        wait_for("an answer of the probe", (self.folder / "tell.json").exists)
        self.state = json.loads((self.folder / "tell.json").read_text(encoding="utf-8"))
        self.held = self.state.pop("held", None)  # by its process, which is never quite at rest
        return self.state

    def settle(self):
        """Until two looks and two pictures are the same."""
        last = None
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            now = (self.look(), self.screen().tobytes())
            if now == last:
                return
            last = now
            time.sleep(0.15)
        raise AssertionError("it does not come to rest")

    def window(self, number):
        return next(w for w in self.look()["windows"] if w["id"] == number)

    def rect(self, number):
        return self.window(number)["rect"]

    def contents(self, number):
        return self.window(number)["contents"]

    def title(self):
        return self.look()["main"]["text"]

    def status(self, part):
        return self.contents(STATUS)[part]

    def screen(self):
        path = self.folder / "screen.png"
        subprocess.run(["import", "-window", "root", str(path)], check=True, timeout=PATIENCE)
        with Image.open(path) as picture:
            return picture.convert("RGB")

    def canvas(self):
        """The picture of the canvas without the edge that shows the focus."""
        left, top, right, bottom = self.rect(CANVAS)
        return self.screen().crop((left + 1, top + 1, right - 1, bottom - 1))

    # What is done to it.

    def system(self, *words):
        """Something of the system changes, as the probe tells it."""
        (self.folder / "do.new").write_text(" ".join(map(str, words)), encoding="utf-8")
        (self.folder / "do.new").rename(self.folder / "do.txt")
        wait_for("the probe", lambda: not (self.folder / "do.txt").exists())

    @staticmethod
    def xdotool(*words):
        subprocess.run(["xdotool", *map(str, words)], check=True, timeout=PATIENCE)

    def key(self, *names):
        for name in names:
            self.xdotool("key", name)
            time.sleep(0.05)

    def point(self, number, x, y):
        """Moves the mouse to a place in a window."""
        left, top, _, _ = self.rect(number)
        self.xdotool("mousemove", left + x, top + y)
        time.sleep(0.05)

    def away(self):
        """Moves the mouse to where it means nothing."""
        self.xdotool("mousemove", SCREEN[0] - 2, SCREEN[1] - 2)

    def click(self, number, x, y, button=1):
        self.point(number, x, y)
        self.xdotool("click", button)

    def drag(self, number, start, end, button=1):
        left, top, _, _ = self.rect(number)
        self.xdotool("mousemove", left + start[0], top + start[1], "mousedown", button)
        for step in range(1, 5):
            x = left + start[0] + (end[0] - start[0]) * step // 4
            y = top + start[1] + (end[1] - start[1]) * step // 4
            self.xdotool("mousemove", x, y)
            time.sleep(0.05)
        self.xdotool("mouseup", button)

    def close(self):
        """Ends it by its own key; its exit status."""
        self.key("alt+F4")
        wait_for("the end", (self.folder / "ended.txt").exists)
        status = int((self.folder / "ended.txt").read_text().strip() or -1)
        self.stop()
        return status

    def stop(self):
        (self.folder / "stop.txt").touch()
        try:
            self.process.wait(5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


def difference(expected, shown, quick=False):
    """The first pixel that differs, as a text, or quickly any text; empty when none does."""
    if expected.size != shown.size:
        return f"{expected.size} expected, {shown.size} shown"
    box = ImageChops.difference(expected, shown).getbbox()
    if not box or quick:
        return "" if not box else "differs"
    for y in range(box[1], box[3]):
        for x in range(box[0], box[2]):
            if expected.getpixel((x, y)) != shown.getpixel((x, y)):
                return (f"pixel {x},{y}: {expected.getpixel((x, y))} expected, {shown.getpixel((x, y))} shown; "
                        f"differences within {box}")
    return ""


def render(drawing, folder, *options):
    """What qel makes of a drawing."""
    out = folder / "rendered.png"
    subprocess.run([*WINE, str(BIN / "qel.exe"), "render", windows_path(drawing), windows_path(out),
                    *map(str, options)], check=True, timeout=PATIENCE, stdin=subprocess.DEVNULL)
    with Image.open(out) as picture:
        return picture.convert("RGB")
