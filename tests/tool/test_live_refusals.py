"""qel render with live values that it refuses: it says why in one line, and leaves no picture."""
import pytest

from support import PLAIN, assert_refused, rows

DRAWINGS = {
    "plain.qel": [PLAIN],
    "scale.qel": ['<scale scid="7" sctype="horizdn" hidesc="1" pin="1" crd="10 10 30 20"/>'],
    "follow.qel": ['<status stx="2"><rect crd="20 0 30 30"/></status>', '<status><rect crd="30 0 40 30"/></status>'],
    "ids.qel": ['<meter mtid="5" crd="1 1 9 9"/>', '<meter mtid="40" crd="1 1 9 9"/>',
                '<scale scid="41" crd="1 1 9 9"/>', '<meter upin="0" usc="0" crd="1 1 9 9"/>'],
    "pins.qel": ['<meter mtid="5" crd="1 1 9 9"/>'],
}


@pytest.fixture
def drawings(tool):
    for name, lines in DRAWINGS.items():
        tool.drawing(name, *lines)
    return tool


@pytest.mark.parametrize("part, arguments", rows(
    ("a setting without equals sign", "--set wants ID.SELECTOR=VALUE, not '7.max'",
     "render scale.qel no.png --set 7.max"),
    ("a setting without selector", "--set wants ID.SELECTOR=VALUE, not '7=5'",
     "render scale.qel no.png --set 7=5"),
    ("a setting without value", "--set wants ID.SELECTOR=VALUE, not '7.max='",
     "render scale.qel no.png --set 7.max="),
    ("a value without equals sign", "--value wants ID=VALUE, not '7'", "render scale.qel no.png --value 7"),
    ("a value without id", "--value wants ID=VALUE, not '=7'", "render scale.qel no.png --value =7"),
    ("a parameter without index", "--param wants INDEX=VALUE, not '=7'",
     "render scale.qel no.png --param =7"),
    ("a selector that is none, with a hint",
     "--set 7.maxx=5: unknown selector 'maxx'; did you mean 'max'? (known are 0 to 33: pin-color, scale-color, ticks,",
     "render scale.qel no.png --set 7.maxx=5"),
    ("a selector in capitals", "did you mean 'alarm'?", "render scale.qel no.png --set 7.ALARM=1"),
    ("a longer word", "did you mean 'max'?", "render scale.qel no.png --set 7.maximum=1"),
    ("a word that is like none", "unknown selector 'colour' (known are",
     "render scale.qel no.png --set 7.colour=1"),
    ("selector 34", "--set 7.34=1: unknown selector '34'", "render scale.qel no.png --set 7.34=1"),
    ("a number that no element can have", "--value 4294967296=1: an id is a whole number",
     "render scale.qel no.png --value 4294967296=1"),
    ("a point in another setting", "'max' takes whole numbers only; a point is for value and base",
     "render scale.qel no.png --set 7.max=1.5"),
    ("a point in a parameter", "--param 0=1.5: wanted is a whole number",
     "render scale.qel no.png --param 0=1.5"),
    ("a point in a status", "--status 1.5: wanted is a whole number",
     "render follow.qel no.png --status 1.5"),
    ("a range", "a range is for 'qel animate'", "render scale.qel no.png --value 7=1..5"),
    ("parameter 4", "--param 4=1: there is no such parameter; they are 0 to 3",
     "render scale.qel no.png --param 4=1"),
    ("a hatch that there is not", "--param 1=38: a hatch style is 0 to 37",
     "render scale.qel no.png --param 1=38"),
    ("a status without status elements", "--status 1: the drawing has no status element",
     "render scale.qel no.png --status 1"),
    ("an id that nothing has", "--value 8=1: no scale or meter of the drawing has this id; scales: 7",
     "render scale.qel no.png --value 8=1"),
    ("any id of a drawing without scales and meters",
     "--set 0.max=1: no scale or meter of the drawing has this id", "render plain.qel no.png --set 0.max=1"),
    ("meters and scales are named", "has this id; scales: 41; meters: 0, 40",
     "render ids.qel no.png --value 50=1"),
    ("a meter with the id of a pin", "--set 5.max=1: the meter with mtid 5 cannot be reached",
     "render pins.qel no.png --set 5.max=1"),
    ("a selector of meters on a scale", "--set 41.alarm=1: a scale does not know the selector 'alarm'",
     "render ids.qel no.png --set 41.alarm=1"),
    ("a selector of scales on a meter",
     "--set 40.start-code=1: a meter does not know the selector 'start-code'",
     "render ids.qel no.png --set 40.start-code=1"),
    ("a base on a scale", "--set 41.base=1.5: a scale does not know the selector 'base'",
     "render ids.qel no.png --set 41.base=1.5"),
    ("a value of a meter above 32", "--value 40=1: the value of a meter is set by the ids 0 to 32 alone",
     "render ids.qel no.png --value 40=1"),
    ("no ticks", "--set 40.ticks=0: 'ticks' takes 1 or more", "render ids.qel no.png --set 40.ticks=0"),
    ("no divisions", "--set 41.ticks=0: 'ticks' takes 1 or more", "render ids.qel no.png --set 41.ticks=0"),
    ("a scale that the meter has not", "--set 0.scale=1: the meter has no scale to show",
     "render ids.qel no.png --set 0.scale=1"),
    ("a pointer that the meter has not", "--set 0.pin=1: the meter has no pointer to show",
     "render ids.qel no.png --set 0.pin=1"),
    ("a full circle of 2", "'full-circle' takes 0 or 1", "render ids.qel no.png --set 0.full-circle=2"),
    ("the full circle that there is", "and not what it is already",
     "render ids.qel no.png --set 0.full-circle=1 --set 0.full-circle=1"),
    ("the first of two refused ones is told", "--value 50=1",
     "render ids.qel no.png --value 50=1 --value 51=1")))
def test_render_refuses(drawings, part, arguments):
    assert_refused(drawings, arguments, part)


@pytest.mark.parametrize("number", (
    "1e3", "0x", "0xg", "-0x5", "+5", "5,", "'5 '", "' 5'", "--", "-", ".", "-.", "1.2.3", "4294967296", "-2147483649",
    "0x100000000", "1" + "0" * 39 + ".0", "9" * 41))
def test_what_is_no_number_of_32_bits_is_no_value(drawings, number):
    assert_refused(drawings, f"render scale.qel no.png --value 7={number}", "is no number of 32 bits")


def test_a_refused_value_leaves_the_older_picture(drawings):
    drawings.file("old.png", "older")
    assert drawings.run("render", "ids.qel", "old.png", "--value", "50=1").status == 2
    assert drawings.bytes("old.png") == b"older"
