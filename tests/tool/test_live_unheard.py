"""qel render and animate with live values that reach nothing in the drawing: a word on standard error for each,
and the picture all the same. Whether a value reaches something is told by the pictures with and without it."""
import shlex

import pytest

from support import PLAIN, assert_refusal, rows

FACE = '<rect style="0x1" lnwid="0" crd="2 2 20 28"/>'
STATUSES = '<status stx="2"><rect crd="20 0 30 30"/></status><status stx="3"><rect crd="30 0 40 30"/></status>'
FILLED = '<scale scid="41" sctype="vrtleft" crd="2 2 20 28"/>'
EMPTY = '<scale scid="41" sctype="round" style="0x0" crd="20 15 14 9 3"/>'


def meter(kind, inside="", pointer=0):
    crd = "20 15 12 4 4 36 28"
    if kind == "pie":
        crd = "20 15 12 4 4 36 28 30 330"
    elif kind[:4] in ("vert", "horz"):
        crd = "2 2 20 28"
    return f'<meter upin="{pointer}" mtype="{kind}" crd="{crd}">{inside}</meter>'


def follower(kind, style, flags):
    text = "ab" if kind == "text" else ""
    return f'<{kind} style="{style}" dr="4" lnwid="2" flag="{flags}" crd="2 2 20 28">{text}</{kind}>'


def render(tool, lines, options):
    """What a run with these options said, and its picture."""
    tool.drawing("live.qel", lines)
    result = tool.run("render", "live.qel", "live.bmp", "--size", "80x60", *shlex.split(options))
    assert (result.status, result.out) == (0, "")
    return result.err, tool.bytes("live.bmp")


@pytest.mark.parametrize("lines, before, option, why", rows(
    ("a status that no element has", STATUSES, "", "--status 1",
     "no status element of the drawing has this number; they have: 2, 3"),
    ("a status of words of 32 bits", STATUSES, "", "--status 0x7fffffff", "has this number; they have: 2, 3"),
    ("a negative status that is not all", STATUSES, "", "--status -2", "has this number; they have: 2, 3"),
    ("a colour that no shape follows", PLAIN, "", "--param 0=255", "nothing in the drawing follows this parameter"),
    ("a hatch that no shape follows", PLAIN, "", "--param 1=6", "nothing in the drawing follows this parameter"),
    ("a hatch of an outline", follower("rect", "0x0", "0x80"), "", "--param 1=6", "nothing in the drawing follows"),
    ("a hatch's colour of a shape that follows the colour", follower("rect", "0x1", "0x1"), "", "--param 2=255",
     "nothing in the drawing follows"),
    ("the colour of a shape that follows the hatch", follower("rect", "0x1", "0x80"), "", "--param 0=255",
     "nothing in the drawing follows"),
    ("a frame around nothing", "<frame><g/></frame>", "", "--param 0=255", "nothing in the drawing follows"),
    ("a pattern around nothing", "<pattern><g/></pattern>", "", "--param 2=255", "nothing in the drawing follows"),
    ("the colour of a pattern", f"<pattern>{PLAIN}</pattern>", "", "--param 0=255", "nothing in the drawing follows"),
    ("a draw region that is not filled", '<drawrgn style="0x0" crd="2 2 20 28"/>', "", "--param 2=255",
     "nothing in the drawing follows"),
    ("a scale that is not filled", EMPTY, "", "--param 2=255", "nothing in the drawing follows"),
    ("a hatch of a dial", meter("round", pointer=1), "", "--param 2=255", "nothing in the drawing follows"),
    ("a hatch of a bar without a figure", meter("vert"), "", "--param 2=255", "nothing in the drawing follows"),
    ("the value of a scale that shows none", EMPTY, "", "--value 41=5",
     "the scale has neither a fill (style) nor a pointer (pin) that shows it"),
    ("the same as a real number", EMPTY, "", "--value 41=5.5", "neither a fill (style) nor a pointer (pin)"),
    ("the same as a setting", EMPTY, "", "--set 41.value=5", "neither a fill (style) nor a pointer (pin)"),
    ("the start of a straight scale", FILLED, "", "--set 41.start-code=3",
     "a scale of type vrtleft does not follow 'start-code'"),
    ("the value of a bar without a figure", meter("vert"), "", "--value 0=5",
     "there is no figure in the meter for the bar that shows it"),
    ("the value of a dial without pointer", meter("round"), "", "--value 0=5",
     "the meter has no pointer that shows it (upin is 0)"),
    ("the value of a gauge without pointer and read-out", meter("roundUpgrade"), "", "--value 0=5",
     "the meter has no pointer that shows it (upin is 0)"),
    ("the value of a clock", meter("clock", pointer=1), "--time 10:10:10", "--value 0=5",
     "a clock shows the time and no value"),
    ("a value of a sector, of a bar", meter("vert", FACE), "", "--value 2=5",
     "a meter of type vert has one value, that of the id 0"),
    ("the value 0 of shares", meter("sector"), "--set 0.sectors=2", "--value 0=5",
     "the values of a meter of type sector have the ids 1 to 32"),
    ("a share beyond the last one", meter("sector"), "--set 0.sectors=2", "--value 3=5",
     "the meter has 2 sectors ('sectors')"),
    ("a setting of other meters", meter("vert", FACE), "", "--set 0.sectors=3",
     "a meter of type vert does not follow 'sectors'"),
    ("the pointer's colour of shares", meter("sector"), "--set 0.sectors=2", "--set 0.pin-color=255",
     "a meter of type sector does not follow 'pin-color'"),
    ("the face's colour of shares without a figure", meter("sector"), "--set 0.sectors=2", "--set 0.face-color=255",
     "a meter of type sector does not follow 'face-color'"),
    ("a time without a clock", PLAIN, "", "--time 10:10:10", "the drawing has no clock with hands"),
    ("a time of a clock without hands", meter("clock"), "", "--time 10:10:10", "the drawing has no clock with hands")))
def test_render_warns_of_what_reaches_nothing(tool, lines, before, option, why):
    silent, without = render(tool, lines, before)
    assert silent == ""
    warning, picture = render(tool, lines, before + " " + option)
    assert warning.startswith(f"qel: warning: {option}: ")
    assert why in warning
    assert len(warning.split("\n")) == 1
    assert picture == without


@pytest.mark.parametrize("lines, before, option", rows(
    ("a status", STATUSES, "", "--status 2"), ("all statuses", STATUSES, "", "--status -1"),
    ("a colour", follower("rect", "0x1", "0x1"), "", "--param 0=255"),
    ("a colour of a text", follower("text", "0x1", "0x1"), "", "--param 0=255"),
    ("a hatch", follower("rect", "0x1", "0x80"), "", "--param 1=6"),
    ("a frame", f"<frame><g>{PLAIN}</g></frame>", "", "--param 0=0xff00"),
    ("a pattern", f"<pattern>{PLAIN}</pattern>", "", "--param 2=0xff00"),
    ("a draw region", '<drawrgn style="0x1" crd="2 2 20 28"/>', "", "--param 3=255"),
    ("the fill of a scale", FILLED, "--value 41=5", "--param 2=255"),
    ("a bar", meter("vert", FACE), "--value 0=5", "--param 2=255"),
    ("a pie", meter("pie"), "--value 0=5", "--param 2=255"),
    ("the value of a scale", FILLED, "", "--value 41=5"),
    ("the pointer of a scale", EMPTY.replace("crd", 'pin="1" crd'), "", "--value 41=5"),
    ("the value of a bar", meter("vert", FACE), "", "--value 0=5"),
    ("the value of a pie", meter("pie"), "", "--value 0=5"),
    ("the value of a dial", meter("round", pointer=1), "", "--value 0=5"),
    ("a read-out", meter("roundUpgrade"), "--set 0.read-out=1", "--value 0=5"),
    ("a share", meter("sector"), "--set 0.sectors=2 --value 1=10", "--value 2=5"),
    ("the pointer of shares", meter("sector", pointer=1), "--set 0.sectors=2", "--value 0=5"),
    ("the face's colour of shares", meter("sector", FACE), "--set 0.sectors=2", "--set 0.face-color=255"),
    ("the start of a round scale", EMPTY.replace("crd", 'pin="1" crd'), "--value 41=2", "--set 41.start-code=3"),
    ("a time", meter("clock", pointer=1), "--time 10:10:10", "--time 04:40:20")))
def test_render_says_nothing_of_what_reaches_something(tool, lines, before, option):
    silent, without = render(tool, lines, before)
    said, picture = render(tool, lines, option if option.startswith("--time") else before + " " + option)
    assert (silent, said) == ("", "")
    assert picture != without


# The meter with mtid 0 takes the ids 1 to 32 as well, and has nothing that shows them.
def test_a_value_that_one_of_two_elements_shows_is_not_spoken_of(tool):
    lines = meter("vert", FACE) + FILLED.replace("41", "5")
    assert render(tool, lines, "--value 5=4")[0] == ""


def test_each_option_has_its_line_once_in_their_order(tool):
    said, _ = render(tool, STATUSES, "--param 0=1 --status 7 --param 0=1 --time 10:00:00 --status 2")
    assert [line.split(": ")[2] for line in said.split("\n")] == ["--param 0=1", "--status 7", "--time 10:00:00"]


def test_animate_warns_of_a_range_that_reaches_nothing_once(tool):
    tool.drawing("live.qel", EMPTY)
    result = tool.line("animate live.qel live.gif --size 40x30 --value 41=1..5 --frames 3")
    assert (result.status, result.out) == (0, "")
    assert result.err == ("qel: warning: --value 41=1..5: the scale has neither a fill (style) nor a pointer (pin) "
                          "that shows it")
    assert tool.bytes("live.gif").startswith(b"GIF89a")


def test_a_picture_that_cannot_be_written_is_the_only_thing_told(tool):
    tool.drawing("live.qel", PLAIN)
    assert_refusal(tool.line("render live.qel nowhere/a.png --param 0=1"), "cannot write")


def test_help_tells_of_the_warning(tool):
    for verb in ("render", "animate"):
        assert "warning on standard error" in tool.run(verb, "--help").out
