"""qel render --time: where the hands of a clock point."""
import pytest

from support import BACKGROUND, PLAIN, assert_refused

CLOCK = '<qel width="200" height="200"><meter upin="1" mtype="clock" crd="100 100 90 10 10 190 190"/></qel>'
UP, RIGHT, DOWN, LEFT = (0, -1), (1, 0), (0, 1), (-1, 0)


@pytest.fixture(scope="module")
def clock(studio):
    """Draws a clock at a time, without marks and numbers; the picture's name."""
    studio.file("clock.qel", CLOCK)

    def draw(time, **environment):
        result = studio.run("render", "clock.qel", "clock.bmp", "--size", "200x200", "--set", "0.scale=0", "--set",
                            "0.labels=0", "--time", time, **environment)
        assert (result.status, result.err) == (0, "")
        return "clock.bmp"
    return draw


def reach(tool, picture, direction):
    """How far the longest hand in a direction reaches, of these."""
    radii = (45, 60, 76)
    x, y = direction
    colors = tool.pixels(picture, *((100 + x * radius, 100 + y * radius) for radius in radii))
    return max((radius for radius, color in zip(radii, colors) if color != BACKGROUND), default=0)


# Of 90 pixels the hands reach 60, 80 and 90 parts of a hundred: 54, 72, 81.
@pytest.mark.parametrize("time, reaches", (
    ("06:00:00", {UP: 76, RIGHT: 0, DOWN: 45, LEFT: 0}),
    ("03:00:00", {UP: 76, RIGHT: 45, DOWN: 0, LEFT: 0}),
    ("21:00:00", {UP: 76, RIGHT: 0, DOWN: 0, LEFT: 45}),
    # At half past three the hour hand stands between two hours.
    ("03:30:00", {UP: 76, RIGHT: 0, DOWN: 60, LEFT: 0}),
    ("15:45:00", {UP: 76, RIGHT: 0, DOWN: 0, LEFT: 60}),
    ("12:00:30", {DOWN: 76})),
    ids=("six: the hour hand down, the others up", "three: to the right", "nine in the evening: to the left",
         "half past: the minute hand down", "a quarter to: it points to the left", "the second hand"))
def test_hands_point(studio, clock, time, reaches):
    picture = clock(time)
    assert {direction: reach(studio, picture, direction) for direction in reaches} == reaches


def test_one_second_makes_another_picture(studio, clock):
    late = studio.bytes(clock("23:59:59"))
    assert studio.bytes(clock("00:00:00")) != late


def test_the_time_is_the_same_in_a_time_zone_of_half_hours(studio, clock):
    here = studio.bytes(clock("04:10:20"))
    assert studio.bytes(clock("04:10:20", TZ="Asia/Kolkata")) == here


@pytest.mark.parametrize("time", ("24:00:00", "12:60:00", "12:00:60", "1:02:03", "12:00", "12:00:00pm", "12-00-00",
                                  "-1:00:00", "", "12:00: 0", "noon"))
def test_another_form_of_time_is_refused(tool, time):
    tool.file("clock.qel", CLOCK)
    part = f"--time wants HH:MM:SS, 00:00:00 to 23:59:59, not '{time}'"
    assert_refused(tool, f"render clock.qel no.png --time '{time}'", part)


def test_two_times_are_refused(tool):
    tool.file("clock.qel", CLOCK)
    assert_refused(tool, "render clock.qel no.png --time 12:00:00 --time 12:00:00", "--time is given twice")


def test_a_drawing_without_a_clock_may_have_a_time(tool):
    tool.drawing("plain.qel", PLAIN)
    result = tool.line("render plain.qel a.png --time 12:00:00")
    assert result == (0, "", "qel: warning: --time 12:00:00: the drawing has no clock with hands")
    tool.draw("b.png", "plain.qel")
    assert tool.bytes("a.png") == tool.bytes("b.png")
