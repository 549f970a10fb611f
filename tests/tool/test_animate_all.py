"""qel animate of what is no value of a number: identifiers, status, blink phase, and the time of clocks. Each frame
is what qel render draws then."""
import pytest

from gif import Animation
from support import PLAIN, PLAIN_PIXELS, assert_refused, first_difference, rows

LAMP = '<status id="lamp{0}" stx="{0}"><rect style="0x1" dr="1" fg="0x{0}0ff" lnwid="0" crd="{0}0 10 {0}9 20"/></status>'
LAMPS = LAMP.format(1) + LAMP.format(2) + LAMP.format(3)
BLINK = '<rect style="0x1" dr="1" fg="0xff glt" lnwid="0" crd="10 10 30 20"/>'
CLOCK = '<meter mtid="40" upin="1" mtype="clock" crd="20 15 14 1 1 39 29"/>'
TEXT = '<text id="temp" fg="0xffffff" crd="0 0 40 30">##.#</text>'


def animate(tool, line, options):
    """The frames, each as often as it shows: equal ones are stored as one that shows as long as both."""
    tool.drawing("live.qel", line)
    assert tool.line(f"animate live.qel a.gif --size 40x30 {PLAIN_PIXELS} {options}") == (0, "", "")
    return Animation(tool.folder / "a.gif")


def differences(tool, animation, frames):
    pictures = [tool.image(tool.shot("live.qel", options)) for options in frames]
    assert len(animation.frames) == len(pictures)
    return [first_difference(*pair) for pair in zip(animation.frames, pictures)]


@pytest.mark.parametrize("line, options, frames", rows(
    ("the status", LAMPS, "--status 1..3 --frames 3", ["--status 1", "--status 2", "--status 3"]),
    ("the status backwards", LAMPS, "--status 3..1 --frames 3", ["--status 3", "--status 2", "--status 1"]),
    ("a status that is rounded", LAMPS, "--status 1..2 --frames 4", ["--status 1", "--status 2"]),
    ("from all statuses on", LAMPS, "--status -1..1 --frames 2", ["--status -1", "--status 1"]),
    ("a text", TEXT, "--value temp=1.5..2.5 --frames 3", [f"--value temp={value}" for value in (1.5, 2.0, 2.5)]),
    ("a text of whole values", TEXT, "--value temp=1..3 --frames 3", [f"--value temp={value}" for value in (1, 2, 3)]),
    ("a lamp", LAMPS, "--value lamp1=0..1 --frames 2", ["--value lamp1=0", "--value lamp1=1"]),
    ("blinking, a frame each", BLINK, "--blink-frames 1 --frames 4", ["", "--blink", "", "--blink"]),
    ("blinking, dark at first", BLINK, "--blink --blink-frames 1 --frames 2", ["--blink", ""]),
    ("blinking of two frames", BLINK, "--blink-frames 2 --frames 6", ["", "--blink", ""]),
    ("a clock", CLOCK, "--time 10:59:59 --fps 1 --frames 3", [f"--time {time}" for time in (
        "10:59:59", "11:00:00", "11:00:01")]),
    ("a clock at midnight", CLOCK, "--time 23:59:59 --fps 1 --frames 2", ["--time 23:59:59", "--time 00:00:00"]),
    ("a clock that goes on every fifth frame", CLOCK, "--time 10:00:00 --fps 5 --frames 12",
     [f"--time 10:00:0{second}" for second in range(3)]),
    ("a clock from one time to another", CLOCK, "--time 10:00:00..12:00:00 --frames 3",
     [f"--time {hour}:00:00" for hour in (10, 11, 12)]),
    ("a clock over midnight", CLOCK, "--time 23:00:00..01:00:00 --frames 3",
     [f"--time {hour}:00:00" for hour in ("23", "00", "01")]),
    ("all at once", LAMPS + CLOCK + BLINK, "--status 1..2 --blink-frames 1 --time 10:00:00 --fps 1 --frames 2",
     ["--status 1 --time 10:00:00", "--status 2 --blink --time 10:00:01"])))
def test_the_frames_are_the_pictures_of_render(tool, line, options, frames):
    assert differences(tool, animate(tool, line, options), frames) == [""] * len(frames)


def test_a_dial_of_an_identifier_leaves_nothing_behind(tool):
    over = '<rect style="0x1" dr="1" fg="0xff00ff" lnwid="0" crd="0 13 40 16"/>'
    dial = '<meter id="dial" mtid="40" mtype="round" upin="1" crd="20 15 10 5 5 35 25"/>'
    common = "--size 120x90 --set dial.max=10 --set dial.scale-end=10 "
    animation = animate(tool, dial + over, common + "--value dial=1..9 --frames 3")
    assert differences(tool, animation, [common + f"--value dial={value}" for value in (1, 5, 9)]) == [""] * 3


def test_a_read_out_has_the_color_that_render_gives_it(tool):
    gauge = '<meter id="gauge" mtid="40" mtype="roundUpgrade" upin="1" crd="20 15 12 4 4 36 28"/>'
    common = "--set gauge.read-out=1 --set gauge.max=10 "
    animation = animate(tool, gauge, common + "--value gauge=1..9 --frames 3")
    assert differences(tool, animation, [common + f"--value gauge={value}" for value in (1, 5, 9)]) == [""] * 3


def test_two_frames_of_one_phase_show_as_long(tool):
    assert animate(tool, BLINK, "--blink-frames 2 --frames 6").delays == [20] * 3


def test_a_clock_goes_on_from_the_present_time(tool):
    # So large that a second hand is another one each second, whatever the time is.
    assert len(animate(tool, CLOCK, "--size 400x300 --fps 1 --frames 3").frames) == 3


def test_a_drawing_in_which_nothing_moves_is_one_picture_and_a_warning(tool):
    tool.drawing("plain.qel", PLAIN)
    result = tool.line("animate plain.qel a.gif --size 40x30")
    assert (result.status, result.out) == (0, "")
    assert result.err.startswith("qel: warning: nothing moves: there are no --value ID=FROM..TO, ")
    assert Animation(tool.folder / "a.gif").facts() == "GIF89a 40x30 loops 0 frames 1"


@pytest.mark.parametrize("numbers, told", rows(
    ("none of the numbers", "5..9", True), ("one of the numbers", "2..9", False), ("down to one", "9..3", False)))
def test_a_status_that_no_element_has_in_any_frame_is_a_warning(tool, numbers, told):
    tool.drawing("live.qel", LAMPS)
    result = tool.line(f"animate live.qel a.gif --size 40x30 --frames 3 --status {numbers}")
    assert result.status == 0
    assert ("no status element of the drawing has one of these numbers; they have: 1, 2, 3" in result.err) == told
    assert (result.err != "") == told


@pytest.mark.parametrize("part, arguments", rows(
    ("a range of the status for one picture", "--status 1..3: a picture shows one value; a range is for 'qel animate'",
     "render live.qel no.png --status 1..3"),
    ("half of a range", "--status 1..: wanted is a whole number", "animate live.qel no.gif --status 1.."),
    ("a point in the status", "--status 1..2.5: wanted is a whole number", "animate live.qel no.gif --status 1..2.5"),
    ("a status that nothing follows", "--status 1..2: the drawing has no status element",
     "animate plain.qel no.gif --status 1..2"),
    ("a range of times for one picture", "--time wants HH:MM:SS", "render live.qel no.png --time 10:00:00..11:00:00"),
    ("half of a range of times", "--time wants HH:MM:SS, 00:00:00 to 23:59:59, not ''",
     "animate live.qel no.gif --time 10:00:00.."),
    ("two times", "--time is given twice", "animate live.qel no.gif --time 10:00:00..11:00:00 --time 10:00:00"),
    ("no frames of a phase", "--blink-frames wants a whole number, 1 to 1000, not '0'",
     "animate live.qel no.gif --blink-frames 0"),
    ("render has no phases", "unknown option '--blink-frames'", "render live.qel no.png --blink-frames 1"),
    ("an identifier that nothing bears", "--value lamp=0..1: no element of the drawing has the identifier 'lamp'",
     "animate live.qel no.gif --value lamp=0..1")))
def test_animate_refuses(tool, part, arguments):
    tool.drawing("live.qel", LAMPS)
    tool.drawing("plain.qel", PLAIN)
    assert_refused(tool, arguments, part)
