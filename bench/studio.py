"""Measures the Studio on a display that nobody sees: from its start to its first picture against an empty window
program, and what it takes of a processor while examples/machine-dashboard.qel plays. Ends with 1 when a bar is missed.
    python3 bench/studio.py BIN TURNS SECONDS WINE...    BIN holds the programs, WINE... runs one"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = ("QELEngine.dll", "QELStudio.exe", "qel_bench_start.exe", "qel_bench_window.exe")
DRAWING = ROOT / "examples" / "machine-dashboard.qel"
MIDDLE = "101418"  # the colour in the middle of it
START_BAR = 500  # milliseconds
PLAY_BAR = 30  # percent of one processor
TICK = os.sysconf("SC_CLK_TCK")
PATIENCE = 240


def begin_display():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                              pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as pipe:
        os.environ["DISPLAY"] = ":" + pipe.readline().strip()
    return server


class Run:
    """The measuring program, on a desktop of its own, with settings of its own."""

    def __init__(self, bin_folder, wine, folder, *words):
        self.folder = folder
        for name in PROGRAMS:
            shutil.copy(bin_folder / name, folder)
        shutil.copy(DRAWING, folder / "drawing.qel")
        for name in ("says.txt", "ended.txt"):
            (folder / name).unlink(missing_ok=True)
        appdata = "Z:" + str(folder).replace("/", "\\") + "\\appdata"
        (folder / "appdata").mkdir(exist_ok=True)
        (folder / "run.bat").write_text(f"set APPDATA={appdata}\r\nqel_bench_start.exe {' '.join(words)} >says.txt 2>&1\r\n"
                                        "echo %errorlevel% >ended.txt\r\n")
        desktop = f"/desktop=bench{os.getpid()},1280x800"
        self.process = subprocess.Popen([*wine, "explorer", desktop, "cmd", "/c", "run.bat"], cwd=folder,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def said(self):
        path = self.folder / "says.txt"
        return path.read_text() if path.exists() else ""

    def wait_for(self, question):
        end = time.monotonic() + PATIENCE
        while not question():
            if time.monotonic() > end or (self.has_ended() and not question()):
                sys.exit(f"in vain; it says: {self.said()}")
            time.sleep(0.05)

    def has_ended(self):
        path = self.folder / "ended.txt"
        return path.exists() and path.stat().st_size > 0

    def end(self):
        self.wait_for(self.has_ended)
        self.process.kill()
        self.process.wait()
        return int((self.folder / "ended.txt").read_text())


def processes(belongs):
    """The numbers of the processes whose command line answers the question."""
    found = []
    for path in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            words = path.read_bytes().split(b"\0")
            if belongs(words):
                found.append(int(path.parent.name))
        except OSError:
            pass  # it has ended
    return found


def used(numbers):
    """Seconds of a processor that each has used; one that has ended is left out."""
    seconds = {}
    for number in numbers:
        try:
            fields = pathlib.Path(f"/proc/{number}/stat").read_text().rpartition(")")[2].split()
            seconds[number] = (int(fields[11]) + int(fields[12])) / TICK
        except OSError:
            pass
    return seconds


def of_display(numbers):
    """Those that are on the display of this run: other Studios may be open."""
    display = ("DISPLAY=" + os.environ["DISPLAY"]).encode()
    return [n for n in numbers if display in pathlib.Path(f"/proc/{n}/environ").read_bytes().split(b"\0")]


def measure_play(bin_folder, wine, folder, server, seconds):
    run = Run(bin_folder, wine, folder, "play", str(seconds + 4), "-", "QELStudio.exe", "drawing.qel", MIDDLE, "-")
    run.wait_for(lambda: "plays" in run.said())
    time.sleep(2)
    parties = {
        "the Studio": of_display(processes(lambda words: words[0].endswith(b"QELStudio.exe"))),
        "wineserver": processes(lambda words: words[0].endswith(b"wineserver") or b"wineserver" in words[0]),
        "Xvfb": [server.pid],
    }
    if len(parties["the Studio"]) != 1:
        sys.exit(f"there are {len(parties['the Studio'])} Studios")
    before = {name: used(numbers) for name, numbers in parties.items()}
    start = time.monotonic()
    time.sleep(seconds)
    passed = time.monotonic() - start
    shares = {name: 100 * sum(then - before[name][number] for number, then in used(numbers).items()) / passed
              for name, numbers in parties.items()}
    run.end()
    row("the Studio playing the machine dashboard, smooth", shares["the Studio"], "% of a core", PLAY_BAR)
    row("  the system's server meanwhile", shares["wineserver"], "% of a core")
    row("  the display's server meanwhile", shares["Xvfb"], "% of a core")
    return shares["the Studio"] <= PLAY_BAR


def row(what, value, unit, bar=None):
    verdict = "" if bar is None else f" | {'':8} | {'':7} | {bar:7.0f} | {'held' if value <= bar else 'MISSED'}"
    print(f"{what:58} | {value:11.1f} | {unit:>11}{verdict}", flush=True)


def main():
    bin_folder, turns, seconds, wine = pathlib.Path(sys.argv[1]), sys.argv[2], int(sys.argv[3]), sys.argv[4:]
    server = begin_display()
    try:
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
            folder = pathlib.Path(folder)
            run = Run(bin_folder, wine, folder, "turns", turns, str(START_BAR), "QELStudio.exe", "drawing.qel", MIDDLE,
                      "qel_bench_window.exe")
            status = run.end()
            print(run.said(), end="", flush=True)
            held = measure_play(bin_folder, wine, folder, server, seconds)
    finally:
        server.terminate()
        server.wait()
    sys.exit(status or not held)


main()
