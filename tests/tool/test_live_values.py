"""qel render with live values: what --value, --set, --param and --status change in the picture. What is
refused is in test_live_refusals.py, the time of clocks in test_clock.py. Where a picture is not worked out
pixel by pixel, two ways that must agree are compared."""
import pytest

from support import BACKGROUND, COVER, rows

# The fill of this scale reaches from 10 to 10 + 20 * value / (max - min); it is white by default.
SCALE = '<scale scid="7" sctype="horizdn" hidesc="1" pin="1" crd="10 10 30 20"/>'


# ---- values of a scale


@pytest.fixture
def scale(tool):
    return tool.drawing("scale.qel", SCALE)


# 10 + 20 * 2 / 7 = 15.7
@pytest.mark.parametrize("end, options", rows(
    ("--value", 20, "--value 7=5"),
    ("a hexadecimal value", 22, "--value 7=0x6"),
    ("a hexadecimal id", 22, "--value 0x7=6"),
    ("the fill ends on a whole pixel", 15, "--set 7.max=7 --value 7=2"),
    ("a real value", 15, "--value 7=2.5"),
    ("a real value is not rounded to a whole one", 11, "--value 7=.9"),
    ("a negative value is the large number that the engine takes it for", 30, "--value 7=-1"),
    ("a setting by name", 15, "--set 7.max=20 --value 7=5"),
    ("a setting by number", 15, "--set 7.4=20 --value 7=5"),
    ("the value as a setting by name", 20, "--set 7.value=5"),
    ("the value as a setting by number", 20, "--set 7.6=5"),
    ("the value as a real setting", 15, "--set 7.value=2.5"),
    ("of two values the later one counts", 26, "--value 7=2 --value 7=8"),
    ("in whatever form they come", 14, "--value 7=8 --set 7.value=2"),
    ("a whole value after a real one", 20, "--value 7=2.5 --value 7=5"),
    ("a real value after a whole one", 15, "--value 7=5 --value 7=2.5"),
    ("the largest whole number", 30, "--value 7=4294967295"),
    ("the smallest", 30, "--value 7=-2147483648")))
def test_the_fill_reaches_as_far_as_the_value(tool, scale, end, options):
    picture = tool.shot(scale, options)
    # The pointer, on the column of the value, takes the upper half of the height alone.
    assert tool.pixels(picture, (end - 1, 18), (end, 18)) == ["ffffff", BACKGROUND]


@pytest.mark.parametrize("color, options", rows(
    ("a hatch's colour", "ff0000", "--param 2=0x0000ff"),
    ("a hatch, and its second colour", "00ff00", "--param 1=1 --param 2=0x0000ff --param 3=0x00ff00"),
    ("two after each other, in order", "ff0000", "--param 2=0x00ff00 --param 2=255")))
def test_param_sets(tool, scale, color, options):
    assert tool.pixels(tool.shot(scale, "--value 7=5 " + options), (19, 18)) == [color]


def test_set_sets_the_color_of_the_pointer(tool, scale):
    picture = tool.shot(scale, "--value 7=5 --param 2=0x0000ff --set 7.pin-color=0xff0000")
    assert tool.pixels(picture, (19, 18)) == ["ff0000"]
    assert tool.pixels(picture, (20, 10), (20, 14)) == ["0000ff", "0000ff"]


def test_the_pointer_ends_at_half_of_the_height(tool, scale):
    picture = tool.shot(scale, "--value 7=5 --set 7.pin-color=0xff0000")
    assert tool.pixels(picture, (20, 14), (20, 15)) == ["0000ff", BACKGROUND]


def test_a_straight_scale_stays_in_its_place_in_a_turned_drawing(tool, scale):
    picture = tool.draw("a.bmp", scale, "--size 30x40 --rotate 90 --value 7=5")
    assert tool.pixels(picture, (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


# ---- shapes that follow, and statuses


@pytest.fixture
def follow(tool):
    return tool.drawing(
        "follow.qel", '<rect style="0x1" dr="1" fg="0x0" lnwid="0" flag="0x1" crd="0 0 20 30"/>',
        '<status stx="2"><rect style="0x1" dr="1" fg="0xff00" lnwid="0" crd="20 0 30 30"/></status>',
        '<status><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="30 0 40 30"/></status>')


def test_a_shape_takes_a_parameter_that_no_frame_answers_for(tool, follow):
    assert tool.pixels(tool.shot(follow, "--param 0=0xff0000"), (5, 5)) == ["0000ff"]


@pytest.mark.parametrize("options, left, right", rows(
    ("0 at first", "", BACKGROUND, "ff0000"),
    ("the one given", "--status 2", "00ff00", BACKGROUND),
    ("the last one given", "--status 2 --status 0", BACKGROUND, "ff0000"),
    ("all for -1", "--status -1", "00ff00", "ff0000"),
    ("all for 0xffffffff", "--status 0xffffffff", "00ff00", "ff0000"),
    ("all for 4294967295", "--status 4294967295", "00ff00", "ff0000")))
def test_the_status_shows(tool, follow, options, left, right):
    assert tool.pixels(tool.shot(follow, options), (25, 5), (35, 5)) == [left, right]


# ---- meters

BAR = (COVER, '<meter mtype="vert" crd="10 2 30 28"><rect style="0x1" lnwid="0" crd="10 2 30 28"/></meter>')


@pytest.fixture(scope="module")
def bars(studio):
    """Draws a bar; each picture once. bars(OPTIONS) is the picture's bytes."""
    studio.drawing("bar.qel", *BAR)
    drawn = {}

    def draw(options):
        if options not in drawn:
            drawn[options] = studio.bytes(studio.draw("bar.bmp", "bar.qel", "--size 200x150 " + options))
        return drawn[options]
    return draw


def test_the_value_of_a_meter_shows(bars):
    assert bars("--value 0=2") != bars("--value 0=5")


@pytest.mark.parametrize("options", rows(("selector 6", "--set 0.6=5"), ("a real value", "--value 0=5.0")))
def test_a_meter_takes_its_value_as(bars, options):
    assert bars(options) == bars("--value 0=5")


NEGATIVE = "--set 0.min=-7 --set 0.max=3 --value 0=-2"


def test_a_negative_number_is_its_twos_complement(bars):
    assert bars(NEGATIVE) == bars("--set 0.min=0xfffffff9 --set 0.max=3 --value 0=0xfffffffe")


def test_a_negative_range_stands_as_high_as_another(bars):
    # The middle of -7 to 3 stands as high as that of 0 to 10; the numbers beside the bar are set apart.
    assert bars(NEGATIVE) == bars("--value 0=5")


def test_a_real_base_counts_by_its_whole_part(bars):
    base = "--set 0.use-base=1 --value 0=5 --set 0.base="
    assert bars(base + "2.5") == bars(base + "2")


def test_the_base_shows(bars):
    assert bars("--set 0.use-base=1 --value 0=5 --set 0.base=2.5") != bars("--value 0=5")


@pytest.fixture(scope="module")
def shares(studio):
    studio.file("share.qel", '<qel width="200" height="200"><meter mtype="sector" crd="100 100 90 0 0 200 200"/></qel>')
    return lambda options: studio.bytes(studio.draw("share.bmp", "share.qel", "--size 200x200 " + options))


def test_the_ids_from_1_on_are_sectors(shares):
    first = shares("--set 0.sectors=2 --value 1=10 --value 2=10")
    assert first != shares("--set 0.sectors=2 --value 1=10 --value 2=50")


def test_equal_shares_are_equal_and_every_id_to_32_is_that_meter(shares):
    first = shares("--set 0.sectors=2 --value 1=10 --value 2=10")
    assert first == shares("--set 32.sectors=2 --value 2=3 --value 1=3")


# ---- the read-out of a gauge


# The engine colours it by the value before: a picture is of a gauge that has stood at its value.
@pytest.mark.parametrize("value, red", ((5, True), (50, False), (90, True)))
def test_the_read_out_has_the_color_of_its_own_values_zone(tool, value, red):
    tool.file("gauge.qel", '<qel width="200" height="200">'
              '<meter mtype="roundUpgrade" crd="100 100 90 0 0 200 200"/></qel>')
    picture = tool.draw("gauge.bmp", "gauge.qel",
                        "--size 200x200 --set 0.max=100 --set 0.alarm=1 --set 0.low-limit=20 --set 0.high-limit=80 "
                        "--set 0.low-color=0xff0000 --set 0.high-color=0xff0000 --set 0.read-out=1 "
                        f"--value 0={value}")
    # The bands are green, with blue ends: what is red is the number.
    colors = {color for _, color in tool.image(picture).getcolors(200 * 200)}
    assert ((255, 0, 0) in colors) == red
