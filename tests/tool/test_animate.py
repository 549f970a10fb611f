"""qel animate: every frame is what qel render draws with its values; what is stored, how long it is shown, and
what is refused."""
import re
import shlex
import subprocess

import pytest

from gif import Animation, changed, farthest
from support import COVER, PLAIN_PIXELS, assert_refused, first_difference, rows

# It covers the whole picture, so every frame is a picture of its own.
PANEL = (COVER, '<scale scid="7" sctype="horizdn" pin="1" crd="4 3 36 13"/>',
         '<scale scid="8" sctype="horizup" crd="4 17 36 27"/>')
IDS = ('<meter mtid="5" crd="1 1 9 9"/>', '<meter mtid="40" crd="1 1 9 9"/>', '<scale scid="41" crd="1 1 9 9"/>')


def animate(tool, drawing, options):
    """Makes a GIF without a word and reads it."""
    assert tool.line(f"animate {drawing} a.gif {PLAIN_PIXELS} {options}") == (0, "", "")
    return Animation(tool.folder / "a.gif")


def renders(tool, drawing, options):
    """The pictures that render draws, one for each of the options."""
    return [tool.image(tool.draw("frame.bmp", drawing, each)) for each in options]


def differences(animation, pictures):
    """Where each frame is not the picture that it has to be."""
    assert len(animation.frames) == len(pictures)
    return [first_difference(frame, picture) for frame, picture in zip(animation.frames, pictures)]


@pytest.fixture
def panel(tool):
    return tool.drawing("panel.qel", *PANEL)


# ---- a drawing that is drawn in full every time


@pytest.fixture(scope="module")
def two_values(studio):
    """Two values that move, and what render draws of them."""
    common = "--size 40x30 --set 7.max=8 --param 2=0x0080ff "
    studio.drawing("panel.qel", *PANEL)
    animation = animate(studio, "panel.qel", common + "--value 7=0..8 --value 8=10..2 --frames 5")
    steps = (f"--value 7={first} --value 8={second}" for first, second in ((0, 10), (2, 8), (4, 6), (6, 4), (8, 2)))
    return animation, renders(studio, "panel.qel", [common + step for step in steps])


def test_a_gif_loops_for_ever_in_the_size_asked_for(two_values):
    assert two_values[0].facts() == "GIF89a 40x30 loops 0 frames 5"


def test_ten_frames_a_second_are_shown(two_values):
    assert two_values[0].delays == [10] * 5


def test_two_moving_values_are_the_pictures_of_render(two_values):
    assert differences(*two_values) == [""] * 5


def test_the_first_picture_is_not_the_last(two_values):
    _, pictures = two_values
    assert first_difference(pictures[0], pictures[4]) != ""


def test_only_the_rectangle_that_changed_is_stored(two_values):
    animation, pictures = two_values
    assert animation.areas == [(0, 0, 40, 30), *(changed(*pair) for pair in zip(pictures, pictures[1:]))]


@pytest.mark.parametrize("options, frames", rows(
    ("real values", "--value 8=3.5 --value 7=0.0..1 --frames 3",
     ["--value 8=3.5 --value 7=0.0", "--value 8=3.5 --value 7=0.5", "--value 8=3.5 --value 7=1.0"]),
    ("a point at the other end", "--value 7=10..0.5 --frames 2", ["--value 7=10.0", "--value 7=0.5"]),
    # Halves go away from zero: 0, 0.5, 1, 1.5, 2.
    ("values that are rounded", "--value 7=0..2 --frames 5 --fps 3", ["--value 7=0", "--value 7=1", "--value 7=2"])))
def test_the_frames_are_the_pictures_of_render(tool, panel, options, frames):
    animation = animate(tool, panel, "--size 40x30 " + options)
    pictures = renders(tool, panel, ["--size 40x30 " + frame for frame in frames])
    assert differences(animation, pictures) == [""] * len(frames)


def test_equal_frames_are_one_and_their_times_add_up(tool, panel):
    # Five frames in 5/3 seconds begin at 0, 33, 66, 100 and 133 hundredths; the second is like the third,
    # the fourth like the fifth.
    assert animate(tool, panel, "--size 40x30 --value 7=0..2 --frames 5 --fps 3").delays == [33, 67, 66]


def test_frames_that_are_all_equal_are_one_of_three_seconds(tool, panel):
    animation = animate(tool, panel, "--size 40x30 --value 7=5..5")
    assert animation.facts() == "GIF89a 40x30 loops 0 frames 1"
    assert animation.delays == [300]


@pytest.fixture(scope="module")
def long(studio):
    """A thousand seconds of one picture."""
    studio.drawing("panel.qel", *PANEL)
    return animate(studio, "panel.qel", "--size 40x30 --value 7=5..5 --frames 1000 --fps 1")


def test_no_time_is_longer_than_the_format_can_say(long):
    assert long.delays == [65500, 34500]


def test_a_frame_that_changes_nothing_is_one_pixel(long):
    assert long.areas == [(0, 0, 40, 30), (0, 0, 1, 1)]


def test_the_default_size_is_that_of_render(tool, panel):
    assert animate(tool, panel, "--value 7=0..9 --frames 2 --fps 50").facts() == "GIF89a 800x600 loops 0 frames 2"


def test_fifty_frames_a_second_are_two_hundredths_each(tool, panel):
    assert animate(tool, panel, "--size 40x30 --value 7=0..9 --frames 2 --fps 50").delays == [2, 2]


@pytest.fixture
def turned(tool):
    return tool.drawing(
        "turned.qel", '<rect style="0x1" dr="1" fg="0x3040 glt" lnwid="0" crd="0 0 40 30"/>',
        '<rect style="0x1" dr="1" fg="0xff00" lnwid="0" flag="0x4000" crd="1 1 9 9"/>',
        '<text fg="0xffffff" crd="8 20 38 30">abc</text>', '<scale scid="7" crd="20 2 36 20"/>',
        '<meter mtid="40" upin="1" mtype="clock" crd="12 10 8 0 0 0 0"/>')


def test_all_options_of_render_have_their_effect(tool, turned):
    options = ('--size 60x80 --rotate 90 --blink --pressed --font "WenQuanYi Micro Hei" --background 123456'
               " --time 10:08:36 --set 40.labels=0 ")
    animation = animate(tool, turned, options + "--value 7=1..9 --frames 3")
    pictures = renders(tool, turned, [options + f"--value 7={value}" for value in (1, 5, 9)])
    assert differences(animation, pictures) == [""] * 3
    without = animate(tool, turned, "--size 60x80 --value 7=1..9 --frames 3")
    assert first_difference(without.frames[0], animation.frames[0]) != ""


# ---- partial redraws

BAR = """<qel width="120" height="120"><rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 120 120"/>
<meter mtype="vert" crd="20 10 100 110"><rect style="0x1" lnwid="0" crd="20 10 100 110"/></meter>%s</qel>"""
RANGE = "--size 120x120 --set 0.labels=0 --set 0.min=-5 --set 0.max=5 "


def test_partial_redraws_of_a_bar_are_the_pictures_of_render(tool):
    tool.file("partial.qel", BAR % "")
    animation = animate(tool, "partial.qel", RANGE + "--value 0=-3..3 --frames 7")
    pictures = renders(tool, "partial.qel", [RANGE + f"--value 0={value}" for value in range(-3, 4)])
    assert differences(animation, pictures) == [""] * 7


def test_what_stands_over_a_bar_is_gone_after_the_first_frame(tool):
    # It is not drawn again, and the bar is.
    tool.file("over.qel", BAR % '<rect style="0x1" dr="1" fg="0xff00ff" lnwid="0" crd="0 40 120 50"/>')
    animation = animate(tool, "over.qel", RANGE + "--value 0=-3..3 --frames 2")
    pictures = renders(tool, "over.qel", [RANGE + f"--value 0={value}" for value in (-3, 3)])
    first, second = differences(animation, pictures)
    assert first == ""
    assert second.endswith(" not ff00ff")


# ---- more colours than a GIF has


def test_more_colors_than_a_gif_has_are_shared_by_neighbours(tool):
    tool.file("many.qel", """<qel width="400" height="300">
<rect style="0x1" dr="10" fg="0xff" bg="0xff00" lnwid="0" crd="0 0 400 100"/>
<rect style="0x1" dr="10" fg="0xff0000" bg="0xffff" lnwid="0" crd="0 100 400 200"/>
<rect style="0x1" dr="12" fg="0xffffff" bg="0x0" lnwid="0" crd="0 200 400 300"/>
<scale scid="7" crd="100 100 200 290"/></qel>""")
    animation = animate(tool, "many.qel", "--size 400x300 --value 7=1..9 --frames 3")
    pictures = renders(tool, "many.qel", [f"--size 400x300 --value 7={value}" for value in (1, 5, 9)])
    assert len(pictures[0].getcolors(400 * 300)) > 256
    assert len(animation.frames) == 3
    # Three runs of at most 256 steps shared by 256 colours: a colour stands for about three neighbours.
    for frame, picture in zip(animation.frames, pictures):
        assert farthest(frame, picture) <= 12


# ---- refusals


@pytest.fixture
def drawings(tool, panel):
    tool.drawing("ids.qel", *IDS)
    tool.drawing("follow.qel", '<status stx="2"><rect crd="20 0 30 30"/></status>')
    tool.file("flat.qel", '<qel width="0" height="9"/>')
    return tool


@pytest.mark.parametrize("part, arguments", rows(
    ("animate without a picture", "animate wants a drawing and a picture: qel animate IN OUT",
     "animate panel.qel"),
    ("animate with three names", "animate takes one drawing and one picture",
     "animate panel.qel no.gif no2.gif --value 7=0..1"),
    ("a picture of another kind", "'no.png' needs the extension .gif",
     "animate panel.qel no.png --value 7=0..1"),
    ("animate: an unknown option", "unknown option '--speed'",
     "animate panel.qel no.gif --value 7=0..1 --speed 3"),
    ("render has no --frames", "unknown option '--frames'", "render panel.qel no.png --frames 5"),
    ("a range without id", "--value wants ID=FROM..TO or ID=VALUE, not '0..5'",
     "animate panel.qel no.gif --value 0..5"),
    ("a range for a setting", "is no number of 32 bits",
     "animate panel.qel no.gif --set 7.max=1..5 --value 7=0..1"),
    ("a setting that is refused", "--set 7.alarm=1: a scale does not know",
     "animate panel.qel no.gif --set 7.alarm=1 --value 7=0..1"),
    ("a value above 32 that moves", "--value 40=1..2: the value of a meter is set by the ids 0 to 32",
     "animate ids.qel no.gif --value 40=1..2"),
    ("a drawing without size", "give one with --size", "animate flat.qel no.gif --value 7=0..1"),
    ("a GIF in a folder that is not there", "cannot write",
     "animate panel.qel nowhere/no.gif --value 7=0..1"),
    ("a value that nothing takes", "qel: --value 7=0..1: no scale or meter of the drawing has this id",
     "animate follow.qel no.gif --status 2 --value 7=0..1")))
def test_animate_refuses(drawings, part, arguments):
    assert_refused(drawings, arguments, part)


@pytest.mark.parametrize("count", ("0", "1", "1001", "-5", "ten", "3.5", ""))
def test_a_number_of_frames_is_refused(drawings, count):
    part = f"--frames wants a whole number, 2 to 1000, not '{count}'"
    assert_refused(drawings, f"animate panel.qel no.gif --value 7=0..1 --frames '{count}'", part)


@pytest.mark.parametrize("count", ("0", "51", "-1", "fast"))
def test_a_number_of_frames_a_second_is_refused(drawings, count):
    part = f"--fps wants a whole number, 1 to 50, not '{count}'"
    assert_refused(drawings, f"animate panel.qel no.gif --value 7=0..1 --fps {count}", part)


@pytest.mark.parametrize("values", ("..", "1..", "..5", "a..5", "1..b", "0..4294967296", "1..2..3"))
def test_a_range_needs_two_numbers(drawings, values):
    assert_refused(drawings, f"animate panel.qel no.gif --value 7={values}", "is no number of 32 bits")


def test_a_refused_value_leaves_the_older_animation(drawings):
    drawings.file("a.gif", "older")
    assert drawings.line("animate panel.qel a.gif --value 9=0..1").status == 2
    assert drawings.bytes("a.gif") == b"older"


def test_a_good_animation_replaces_the_older_one(tool, panel):
    tool.file("a.gif", "older")
    animation = animate(tool, panel, "--value 7=0..1 --size 40x30 --frames 2")
    assert animation.facts() == "GIF89a 40x30 loops 0 frames 2"
    assert tool.files() == ["a.gif", "panel.qel"]


# ---- progress


@pytest.fixture(scope="module")
def terminal(studio):
    """The lines that a terminal is sent, without its control sequences."""

    studio.drawing("panel.qel", *PANEL)
    words = shlex.join([*studio.command, *"animate panel.qel a.gif --size 40x30 --value 7=0..9 --frames 12".split()])
    done = subprocess.run(["script", "-qec", words, "/dev/null"], cwd=studio.folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, timeout=120, check=True)
    return re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", "", done.stdout.decode("utf-8")).replace("\r", "\n")


def test_a_terminal_shows_how_far_it_is(terminal):
    assert "frame 7 of 12" in terminal


def test_a_terminal_shows_it_to_the_end(terminal):
    assert "frame 12 of 12" in terminal


def test_a_terminal_shows_nothing_at_last(terminal):
    assert terminal.split("\n")[-1].strip(" ") == ""
