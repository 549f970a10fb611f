"""The command line of qel: help, the version, and what is refused before anything is done."""
import re
import shutil
from pathlib import Path

import pytest

from support import PLAIN, ROOT, Tool, assert_refusal, assert_refused, rows

VERBS = ("render", "animate", "info", "check")


@pytest.fixture(scope="module")
def help_of(studio):
    """What --help says, by command; None is qel without one."""
    answers = {verb: studio.run(verb, "--help") for verb in VERBS}
    return {None: studio.run("--help"), **answers}


@pytest.mark.parametrize("verb", (None, *VERBS))
def test_help_ends_with_0(help_of, verb):
    assert help_of[verb].status == 0


def test_help_lists_the_commands(help_of):
    assert "qel check IN..." in help_of[None].out


def test_help_tells_the_exit_status(help_of):
    assert "Exit status: 0 done" in help_of[None].out


def test_help_says_nothing_on_standard_error(help_of):
    assert help_of[None].err == ""


@pytest.mark.parametrize("verb", VERBS)
def test_help_of_a_command_begins_with_its_use(help_of, verb):
    words = help_of[verb].out.split("\n")[0].replace(".", "").split(" ")
    assert words[:3] == ["qel", verb, "IN"]


@pytest.mark.parametrize("verb", VERBS)
def test_help_of_a_command_has_examples(help_of, verb):
    assert f"Examples:\n  qel {verb} " in help_of[verb].out


@pytest.mark.parametrize("verb", VERBS)
def test_help_of_a_command_tells_the_exit_status(help_of, verb):
    assert "Exit status: 0" in help_of[verb].out


@pytest.mark.parametrize("option", ("size", "background", "rotate", "blink", "pressed", "font", "set", "value", "param",
                                    "status", "time"))
def test_help_of_render_tells_of_each_option(help_of, option):
    assert f"  --{option} " in help_of["render"].out


def test_the_version_is_that_of_the_project(tool):
    project = re.search(r"^project\(QELEngine VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text("utf-8"), re.M)
    result = tool.run("--version")
    assert result.status == 0
    assert result.out == "qel " + project.group(1)


@pytest.mark.parametrize("part, arguments", rows(
    ("no command", "command is missing", ""),
    ("unknown command", "unknown command 'draw'", "draw x"),
    ("unknown option", "unknown option '--fast'", "render plain.qel a.png --fast"),
    ("missing value", "value is missing after --size", "render plain.qel a.png --size"),
    ("size without cross", "--size wants", "render plain.qel a.png --size 100"),
    ("size of nothing", "--size wants", "render plain.qel a.png --size 0x5"),
    ("size too large", "--size wants", "render plain.qel a.png --size 99999x5"),
    ("colour of five digits", "--background wants", "render plain.qel a.png --background FFFFF"),
    ("colour of no digits", "--background wants", "render plain.qel a.png --background GGGGGG"),
    ("angle of words", "--rotate wants", "render plain.qel a.png --rotate left"),
    ("size of a word and more", "--size wants", "render plain.qel a.png --size 10x10px"),
    ("negative size", "--size wants", "render plain.qel a.png --size -5x5"),
    ("colour with a sign", "--background wants", "render plain.qel a.png --background +FFFFF"),
    ("angle without end", "--rotate wants", "render plain.qel a.png --rotate 99999999999"),
    ("angle of nothing", "--rotate wants", "render plain.qel a.png --rotate ''"),
    ("a font that is not there", "no scalable font 'No Such Face'",
     "render plain.qel a.png --font 'No Such Face'"),
    ("a font without name", "no scalable font ''", "render plain.qel a.png --font ''"),
    ("a font name without end", "no scalable font", "render plain.qel a.png --font " + "x" * 40),
    ("unknown option of info", "unknown option '--xml'", "info plain.qel --xml"),
    ("unknown option of check", "unknown option '--fix'", "check plain.qel --fix"),
    ("no extension", "needs the extension", "render plain.qel a"),
    ("no picture", "wants a drawing and a picture", "render plain.qel"),
    ("three names", "one drawing and one picture", "render plain.qel a.png b.png"),
    ("unknown extension", "needs the extension", "render plain.qel a.tif"),
    ("a single picture as GIF", "'qel animate' makes .gif", "render plain.qel a.gif"),
    ("missing drawing", "there is no such file", "render missing.qel a.png"),
    ("no drawing for info", "info wants a drawing", "info"),
    ("two drawings for info", "info takes one drawing", "info plain.qel plain.qel"),
    ("no drawing for check", "check wants at least one", "check"),
    ("missing folder of the picture", "cannot write", "render plain.qel nowhere/a.png"),
    ("a picture where no file can be made", "cannot write '/proc/a.png'", "render plain.qel /proc/a.png"),
    ("a folder of the picture's name", "cannot write 'folder.png'", "render plain.qel folder.png"),
    ("missing drawing for info", "cannot open 'missing.qel': there is no such file", "info missing.qel"),
    ("missing drawing for check", "cannot read 'missing.qel': there is no such file", "check missing.qel"),
    ("folder for check", "cannot read 'folder.png': it is a folder", "check folder.png"),
    ("a file that is no drawing", "it is no drawing", "render text.qel a.png")))
def test_what_cannot_be_done_is_refused_in_one_line(tool, part, arguments):
    tool.drawing("plain.qel", PLAIN)
    tool.file("text.qel", "no drawing")
    (tool.folder / "folder.png").mkdir()
    assert_refused(tool, arguments, part)


def test_a_folder_is_no_drawing(tool):
    assert_refusal(tool.run("render", str(tool.folder), "a.png"), "it is a folder")


@pytest.mark.parametrize("verb, drawing", rows(("info", "info", "plain.qel"), ("check", "check", "rest.qel")))
def test_a_full_disk_is_an_error(tool, verb, drawing):
    tool.drawing("plain.qel", PLAIN)
    tool.file("rest.qel", "<rect/>")  # has a finding; a clean drawing would not be spoken of
    with open("/dev/full", "wb") as full:
        result = tool.run(verb, drawing, stdout=full)
    assert result == (2, "", "qel: standard output cannot be written")


@pytest.fixture
def alone(tool, command):
    """The program in a folder of its own, with nothing but the engine's DLL beside it."""
    tool.drawing("plain.qel", PLAIN)
    program = Path(command[-1])
    folder = tool.folder / "alone"
    folder.mkdir()
    for file in (program, program.parent / "QELEngine.dll"):
        shutil.copy(file, folder)
    return Tool([*command[:-1], str(folder / program.name)], tool.folder)


def test_the_program_runs_with_the_engines_dll_beside_it(alone):
    assert alone.run("info", "plain.qel").out.split("\n")[0] == "size 40 x 30, kind 0"


def test_the_program_does_not_run_without_the_engines_dll(alone):
    (alone.folder / "alone" / "QELEngine.dll").unlink()
    assert alone.run("info", "plain.qel").out == ""
