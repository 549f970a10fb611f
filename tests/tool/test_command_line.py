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


SCENE = ("size", "width", "height", "zoom", "scale", "smooth", "background", "transparent", "rotate", "blink", "pressed",
         "font", "config", "set", "value", "param", "status", "time")


@pytest.mark.parametrize("verb, option", [("render", option) for option in SCENE] +
                         [("animate", option) for option in (*SCENE, "frames", "fps")] +
                         [("info", "json"), (None, "version")])
def test_help_tells_of_each_option(help_of, verb, option):
    assert re.search(rf"^  --{option} .*\w", help_of[verb].out, re.M)


@pytest.mark.parametrize("verb, option", rows(("the picture of render", "render", "-o, --output OUT"),
                                              ("the picture of animate", "animate", "-o, --output OUT"),
                                              *((f"help of {verb}", verb, "-h, --help") for verb in (None, *VERBS))))
def test_help_tells_of_each_option_with_two_names(help_of, verb, option):
    assert re.search(rf"^  {option} .*\w", help_of[verb].out, re.M)


def listed_options(help_text):
    """The long names of the options that help lists."""
    return re.findall(r"^  (?:-\w, )?(--\w+)", help_text, re.M)


@pytest.mark.parametrize("verb", VERBS)
def test_what_help_lists_is_known(tool, help_of, verb):
    options = listed_options(help_of[verb].out)
    assert "--help" in options
    for option in set(options) - {"--help"}:
        assert "unknown option" not in tool.run(verb, option).err


@pytest.mark.parametrize("verb", (None, *VERBS))
def test_no_line_of_help_is_longer_than_a_hundred(help_of, verb):
    assert [line for line in help_of[verb].out.split("\n") if len(line) > 100] == []


def test_help_breaks_a_long_meaning_into_lines_of_one_column(help_of):
    lines = help_of["render"].out.split("\n")
    first = next(at for at, line in enumerate(lines) if line.startswith("  --background "))
    assert lines[first].index("hexadecimal") == 25
    assert re.match(r" {25}\S", lines[first + 1])


@pytest.mark.parametrize("arguments", rows(
    ("the short option", "render -h"), ("behind an option that is none", "render --fast --help"),
    ("behind names", "render a.qel a.png --help"), ("in a list", "render @list"), ("of all, short", "-h")))
def test_help_is_asked_for_by(tool, help_of, arguments):
    tool.file("list", "a.qel\n--help\n")
    verb = "render" if arguments.startswith("render") else None
    assert tool.line(arguments) == help_of[verb]


def test_behind_two_dashes_help_is_a_name(tool):
    assert_refused(tool, "info -- --help", "cannot open '--help': there is no such file")


def test_the_version_is_that_of_the_project(tool):
    project = re.search(r"^project\(QELEngine VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text("utf-8"), re.M)
    result = tool.run("--version")
    assert result.status == 0
    assert result.out == "qel " + project.group(1)


@pytest.mark.parametrize("part, arguments", rows(
    ("no command", "command is missing", ""),
    ("unknown command", "unknown command 'draw'", "draw x"),
    ("unknown option in the place of a command", "unknown option '--fast'; 'qel --help' lists them", "--fast"),
    ("an option in the place of a command that is like one", "did you mean '--version'?", "--versoin"),
    ("two dashes in the place of a command", "unknown command '--'", "-- render"),
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
    ("a file that is no drawing", "the file is no drawing", "render text.qel a.png"),
    ("a text that ends", "cannot open 'ends.qel': 2:1: the drawing ends inside an element's content", "info ends.qel")))
def test_what_cannot_be_done_is_refused_in_one_line(tool, part, arguments):
    tool.drawing("plain.qel", PLAIN)
    tool.file("text.qel", "no drawing")
    tool.file("ends.qel", "<qel>\n")
    (tool.folder / "folder.png").mkdir()
    assert_refused(tool, arguments, part)


def test_a_folder_is_no_drawing(tool):
    assert_refusal(tool.run("render", str(tool.folder), "a.png"), "it may be a folder")


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


# ---- the ways to write options


def same_picture(tool, usual, other):
    """Whether two lines of options draw the same; the words end where the picture's name begins."""
    tool.drawing("plain.qel", PLAIN, '<rect style="0x1" dr="1" flag="0x1" lnwid="3" crd="0 0 9 9"/>')
    for words in (usual, other):
        assert tool.line("render plain.qel " + words) == (0, "", "")
    assert tool.bytes("a.bmp") == tool.bytes("b.bmp")


@pytest.mark.parametrize("usual, other", rows(
    ("a value joined to its option", "a.bmp --size 40x30", "b.bmp --size=40x30"),
    ("a value with an equals sign in it", "a.bmp --param 0=255", "b.bmp --param=0=255"),
    ("the picture by a short option", "a.bmp", "-o b.bmp"),
    ("the picture joined to a short option", "a.bmp", "-ob.bmp"),
    ("the picture by a long option", "a.bmp", "--output b.bmp"),
    ("a colour with a number sign", "a.bmp --background 112233", "b.bmp --background '#112233'"),
    ("a turn to the right", "a.bmp --rotate -90", "b.bmp --rotate=-90"),
    ("a width", "a.bmp --size 80x60", "b.bmp --width 80"),
    ("a height", "a.bmp --size 80x60", "b.bmp --height 60"),
    ("a width and a height", "a.bmp --size 80x20", "b.bmp --width 80 --height 20"),
    ("a height after a size", "a.bmp --size 80x60", "b.bmp --size 5x5 --height 60"),
    ("a size after a width", "a.bmp --size 50x60", "b.bmp --width 5 --size 50x60"),
    ("a zoom", "a.bmp --size 120x90", "b.bmp --zoom 3"),
    ("a zoom of half", "a.bmp --size 20x15", "b.bmp --zoom 0.5"),
    ("a width of a turned drawing", "a.bmp --rotate 90 --size 60x80", "b.bmp --rotate 90 --width 60")))
def test_options_are_written_in_several_ways(tool, usual, other):
    same_picture(tool, usual, other)


@pytest.mark.parametrize("part, arguments", rows(
    ("an unknown option points to the help of its command",
     "unknown option '--fast'; 'qel render --help' lists them", "render plain.qel a.png --fast"),
    ("an unknown option of animate", "'qel animate --help' lists them", "animate plain.qel a.gif --fast"),
    ("an unknown option that is like one", "did you mean '--background'?", "render plain.qel a.png --bakground 112233"),
    ("an unknown option with a value", "unknown option '--fast'", "render plain.qel a.png --fast=1"),
    ("an unknown short option", "unknown option '-q'", "render plain.qel a.png -q"),
    ("a switch with a value", "--blink takes no value", "render plain.qel a.png --blink=1"),
    ("nothing after the equals sign", "value is missing after --size=", "render plain.qel a.png --size="),
    ("nothing after a short option", "value is missing after -o", "render plain.qel -o"),
    ("a picture and one more", "one drawing and one picture", "render plain.qel a.png -o b.png"),
    ("a width of nothing", "--width wants", "render plain.qel a.png --width 0"),
    ("a height of words", "--height wants", "render plain.qel a.png --height tall"),
    ("a width and a height beyond the limit", "together no more than 8192x8192",
     "render plain.qel a.png --width 16384 --height 16384"),
    ("a zoom of nothing", "--zoom wants", "render plain.qel a.png --zoom 0"),
    ("a zoom of words", "--zoom wants", "render plain.qel a.png --zoom big"),
    ("a zoom beyond the limit", "too large", "render plain.qel a.png --zoom 1000"),
    ("a colour of five digits after the sign", "--background wants", "render plain.qel a.png --background '#12345'"),
    ("options that are not there", "cannot read the options 'none.toml': there is no such file",
     "render plain.qel a.png --config none.toml"),
    ("an unknown option in a file", "unknown option '--fast'", "render plain.qel a.png --config fast.toml"),
    ("two values", "'two.toml': width takes one value", "render plain.qel a.png --config two.toml"),
    ("a file in a file", "'again.toml': config is for the command line alone",
     "render plain.qel a.png --config again.toml"),
    ("help in a file", "'help.toml': help is for the command line alone",
     "render plain.qel a.png --config help.toml"),
    ("a switch that is neither", "'maybe.toml': blink is true or false",
     "render plain.qel a.png --config maybe.toml")))
def test_options_that_cannot_be_are_refused_in_one_line(tool, part, arguments):
    tool.drawing("plain.qel", PLAIN)
    tool.file("fast.toml", "fast = true\n")
    tool.file("maybe.toml", "blink = maybe\n")
    tool.file("two.toml", "width = [80, 90]\n")
    tool.file("again.toml", "config = again.toml\n")
    tool.file("help.toml", "help = true\n")
    assert_refused(tool, arguments, part)


@pytest.mark.parametrize("content, options, same_as", rows(
    ("a value", "size = 40x30\n", "", "--size 40x30"),
    ("a text in quotes", 'background = "#102030"\n', "", "--background 102030"),
    ("a color without quotes", "background = #102030\n", "", "--background 102030"),
    ("a remark", "# one\n; another\nwidth = 80 ; a third\n", "", "--width 80"),
    ("a switch", "blink = true\n", "", "--blink"),
    ("a switch that is off", "blink = false\n", "", ""),
    ("the command's own part", "[render]\nwidth = 80\n[animate]\nwidth = 20\n", "", "--width 80"),
    ("a list", 'param = ["1=3", "0=255"]\n', "", "--param 1=3 --param 0=255"),
    ("an option that the command line has, too", "background = 102030\n", "--background 405060",
     "--background 405060"),
    ("a time that the command line has, too", "time = 10:00:00\n", "--time 11:00:00", "--time 11:00:00"),
    ("a setting before the command line's", "param = 0=65280\n", "--param 0=16711680",
     "--param 0=65280 --param 0=16711680")))
def test_options_come_from_a_file(tool, content, options, same_as):
    tool.drawing("live.qel", '<rect style="0x1" dr="1" fg="0xff glt" flag="0x81" lnwid="0" crd="10 10 30 20"/>',
                 '<meter upin="1" mtype="clock" crd="9 9 8 1 1 17 17"/>')
    tool.file("options.toml", content)
    clock = "" if "time" in content else " --time 10:10:10"
    tool.draw("a.bmp", "live.qel", f"--config options.toml {options}{clock}")
    tool.draw("b.bmp", "live.qel", same_as + clock)
    assert tool.bytes("a.bmp") == tool.bytes("b.bmp")
    if same_as:
        assert tool.bytes("b.bmp") != tool.bytes(tool.draw("c.bmp", "live.qel", "--time 10:10:10"))


@pytest.mark.parametrize("number, color", rows(
    ("a setting", "--set 7.scale-color=0x0000ff", "--set '7.scale-color=#ff0000'"),
    ("a setting in capitals", "--set 7.scale-color=0xefcdab", "--set '7.scale-color=#ABCDEF'"),
    ("a parameter", "--param 0=0x0000ff", "--param '0=#ff0000'")))
def test_a_color_is_written_with_a_number_sign(tool, number, color):
    tool.drawing("live.qel", '<rect style="0x1" dr="1" flag="0x1" lnwid="3" crd="0 0 40 9"/>',
                 '<scale scid="7" sctype="horizdn" crd="5 10 35 20"/>')
    tool.draw("a.bmp", "live.qel", number)
    tool.draw("b.bmp", "live.qel", color)
    assert tool.bytes("a.bmp") == tool.bytes("b.bmp")
    assert tool.bytes("a.bmp") != tool.bytes(tool.draw("c.bmp", "live.qel"))


@pytest.mark.parametrize("arguments", rows(("a hatch", "--param '1=#000001'"), ("a bound", "--set '7.max=#000001'"),
                                           ("a value", "--value '7=#000001'"),
                                           ("five digits", "--set '7.scale-color=#12345'")))
def test_no_color_stands_where_none_is_taken(tool, arguments):
    tool.drawing("live.qel", '<scale scid="7" sctype="horizdn" crd="5 10 35 20"/>')
    assert_refused(tool, "render live.qel no.png " + arguments, "a whole number, decimal or 0x hexadecimal")


def test_a_name_in_brackets_is_a_name(tool):
    tool.drawing("[a,b]", PLAIN)
    assert tool.run("info", "[a,b]").out.startswith("size 40 x 30")
