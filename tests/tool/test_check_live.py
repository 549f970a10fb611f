"""qel check: what it finds in scales and meters."""
import pytest

from support import ROOT, assert_one_finding, rows


def test_check_finds_nothing_in_good_scales_and_meters(tool):
    tool.drawing(
        "f.qel",
        '<meter mtype="round" upin="1" imin="5" imax="5" flag="0x200000" crd="20 15 10 5 5 35 25">'
        '<circle crd="20 15 10"/></meter>',
        '<meter mtid="3000000000" mtype="Arc" usc="0" crd="20 15 10 5 5 35 25 30 330"/>',
        '<meter mtid="33" mtype="horz3d" flag="0x1000000" crd="1 1 9 9"><g><rect crd="1 1 9 9"/></g></meter>',
        '<scale scid="41" crd="1 1 9 9"/>',
        '<scale scid="42" sctype="round" min="5" max="5" pin="1" hidesc="1" style="0x0" crd="9 9 8 6 2"/>',
        '<scale scid="43" sctype="Arc" crd="9 9 8 6 2 -30 210"/>')
    assert tool.run("check", "f.qel") == (0, "", "")


FINDINGS = (  # name, line:column, kind, part of the message, lines of the drawing from line 3 on
    ("a type of meter in other letters", "3:15", "error",
     "mtype wants a type of meter, not 'arc'; it is read as vert; did you mean 'Arc'?",
     '<meter mtype="arc" crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>'),
    ("a type of meter that is like none", "3:15", "error", "not 'gauge'; it is read as vert",
     '<meter mtype="gauge" crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>'),
    ("a type of scale", "3:16", "error",
     "sctype wants a type of scale, not 'horizdown'; it is read as vrtleft; did you mean 'horizdn'?",
     '<scale sctype="horizdown" crd="1 1 9 9"/>'),
    ("an attribute of scales on a meter", "3:22", "warning", "'scid' has no meaning on <meter>",
     '<meter crd="1 1 9 9" scid="3"><rect crd="1 1 9 9"/></meter>'),
    ("an attribute of meters on a scale", "3:22", "warning", "'mtid' has no meaning on <scale>",
     '<scale crd="1 1 9 9" mtid="3"/>'),
    ("a switch of 2", "3:30", "error", "hidesc is out of range, 0 to 1: '2'",
     '<scale crd="1 1 9 9" hidesc="2"/>'),
    ("an id of words", "3:28", "error", "mtid wants decimal, not 'pump'",
     '<meter crd="1 1 9 9" mtid="pump"><rect crd="1 1 9 9"/></meter>'),
    ("a negative id", "3:28", "error", "does not fit 32 bits; it is read as 4294967295",
     '<meter crd="1 1 9 9" mtid="-1"><rect crd="1 1 9 9"/></meter>'),
    ("an id beyond 32 bits", "3:28", "error", "the number '4294967296' does not fit 32 bits",
     '<scale crd="1 1 9 9" scid="4294967296"/>'),
    ("coordinates of a bar", "3:13", "error", "4 numbers, not 7: the rest is not read",
     '<meter crd="20 15 30 25 5 35 25"><rect crd="1 1 9 9"/></meter>'),
    ("coordinates of a dial", "3:27", "error",
     "crd wants cx cy r left top right bottom, 7 numbers, not 4: the element keeps 0 0 10 10 0 0 0",
     '<meter mtype="round" crd="1 1 9 9"/>'),
    ("six coordinates of an arc", "3:25", "error", "7 or 9 numbers, not 6: the element keeps 0 0 10 10",
     '<meter mtype="Arc" crd="20 15 10 5 5 35"/>'),
    ("ten coordinates of an arc", "3:25", "error", "7 or 9 numbers, not 10: the rest is not read",
     '<meter mtype="Arc" crd="20 15 10 5 5 35 25 0 90 5"/>'),
    ("eight coordinates of an arc", "3:25", "error", "7 or 9 numbers, not 8: the end angle is 360",
     '<meter mtype="Arc" crd="20 15 10 5 5 35 25 90"/>'),
    ("an arc without angles", "3:1", "warning", "start and end of the arc lie one above the other",
     '<meter mtype="Arc" crd="20 15 10 5 5 35 25"/>'),
    ("an arc with ends one above the other", "3:1", "warning", "nothing of the dial is drawn",
     '<meter mtype="pie" crd="20 15 10 5 5 35 25 45 135"/>'),
    ("an arc without layout", "3:1", "warning", "the layout rectangle is empty",
     '<meter mtype="pie" crd="20 15 10 5 5 5 25 0 90"/>'),
    ("a negative radius of a dial", "3:27", "error", "the radius -9 is negative",
     '<meter mtype="round" crd="20 15 -9 5 5 35 25"/>'),
    ("a dial without radius", "3:1", "warning", "the radius is 0: nothing of the dial is drawn",
     '<meter mtype="clock" crd="20 15 0 5 5 35 25"/>'),
    ("a bar without width", "3:1", "warning", "the rectangle is empty: no bar is drawn",
     '<meter crd="5 1 5 9"><rect crd="1 1 9 9"/></meter>'),
    ("a dial outside", "3:1", "warning", "outside of the drawing",
     '<meter mtype="round" crd="120 15 10 105 5 135 25"/>'),
    ("coordinates of a round scale", "3:28", "error", "5 numbers, not 4: the element keeps 5 5 5 3 2",
     '<scale sctype="round" crd="5 5 4 3"/>'),
    ("coordinates of an arc scale", "3:26", "error", "7 numbers, not 5: the element keeps 5 5 5 3 2 0 90",
     '<scale sctype="Arc" crd="5 5 4 3 2"/>'),
    ("a round scale without radius", "3:1", "warning", "the tick radius is below 1: nothing is drawn",
     '<scale sctype="round" crd="5 5 0 3 2"/>'),
    ("a scale without height", "3:1", "warning", "the rectangle is empty: nothing is drawn",
     '<scale crd="1 5 9 5"/>'),
    ("no coordinates of a scale", "3:1", "warning", "no crd: the element has 5 5 5 3 2",
     '<scale sctype="round"/>'),
    ("no coordinates of a meter", "3:1", "warning", "no crd: the element has 0 0 10 10",
     '<meter><rect crd="1 1 9 9"/></meter>'),
    ("min above max", "3:1", "warning", "min is above max: the number of divisions is always max",
     '<scale crd="1 1 9 9" min="50" max="20"/>'),
    ("min above the usual max", "3:1", "warning", "min is above max", '<scale crd="1 1 9 9" min="101"/>'),
    ("imin above imax", "3:1", "error",
     "imin 9 and imax 8 are no range from 1 up: the element is drawn with its defaults, and saving drops both",
     '<meter crd="1 1 9 9" imin="9" imax="8"><rect crd="1 1 9 9"/></meter>'),
    ("imin above the usual imax", "3:1", "error", "imin 200 and imax 100 are no range",
     '<meter crd="1 1 9 9" imin="200"><rect crd="1 1 9 9"/></meter>'),
    ("a bar without a figure", "3:1", "warning",
     "no figure in the <meter>: a bar is painted within those alone",
     '<meter crd="1 1 9 9"><line crd="1 1 9 9"/></meter>'),
    ("elements in a scale", "3:22", "warning", "elements in a <scale> are not drawn",
     '<scale crd="1 1 9 9"><rect crd="1 1 9 9"/></scale>'),
    ("a meter with the id of a pin", "3:28", "warning",
     "the host does not reach the meter with mtid 5: the ids 1 to 32 are the values of the meter with mtid 0",
     '<meter crd="1 1 9 9" mtid="5"><rect crd="1 1 9 9"/></meter>'),
    ("a second meter of an id", "4:28", "warning",
     "a meter before has the mtid 40 already: the host does not reach this one",
     '<meter crd="1 1 9 9" mtid="40"><rect crd="1 1 9 9"/></meter>',
     '<meter crd="1 1 9 9" mtid="40"><rect crd="1 1 9 9"/></meter>'),
    ("two meters without id", "4:1", "warning", "a meter before has the mtid 0 already",
     '<meter crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>',
     '<meter crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>'),
    ("a second scale of an id", "4:28", "warning", "a scale before has the scid 40 already",
     '<scale crd="1 1 9 9" scid="40"/>', '<scale crd="1 1 9 9" scid="40"/>'),
    ("a scale that shares with pins", "3:28", "warning",
     "what the host sets of the scale with scid 5 goes to the meter with mtid 0 as well",
     '<scale crd="1 1 9 9" scid="5"/>', '<meter crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>'),
    ("a scale that shares with a meter", "4:28", "warning", "goes to the meter with mtid 40 as well",
     '<meter crd="1 1 9 9" mtid="40"><rect crd="1 1 9 9"/></meter>', '<scale crd="1 1 9 9" scid="40"/>'),
    ("a keep mode of a meter with two anchors", "3:28", "warning", "more than one anchor",
     '<meter crd="1 1 9 9" flag="0x9000"><rect crd="1 1 9 9"/></meter>'))


def dial(attributes, face=""):
    return f'<meter {attributes} mtype="round" crd="5 5 5 0 0 9 9">{face}</meter>'


SETS = (
    ("a setting that there is not", "3:19", "error",
     "set: unknown setting 'tick': it is skipped; did you mean 'ticks'?", dial('set="max=9 tick=3"')),
    ("a word without a number", "3:19", "error",
     "set: a word is NAME=NUMBER without blanks; 'loud' is skipped", dial('set="max=9 loud"')),
    ("a setting without a number", "3:13", "error",
     "set: max wants a whole number, decimal or 0x hexadecimal, not '': it is skipped", dial('set="max"')),
    ("the value among the settings", "3:13", "error",
     'set: the value is an attribute of its own, value="..."; here it is skipped', dial('set="value=3"')),
    ("a setting twice", "3:19", "warning", "set: max stands here a second time: the first counts",
     dial('set="max=9 max=8"')),
    ("a number that is refused", "3:13", "error",
     "set: ticks takes 1 or more: it is skipped", dial('set="ticks=0"')),
    ("no colour", "3:13", "error", "set: pin-color wants a colour, 0xBBGGRR, not '#102030': it is skipped",
     dial('set="pin-color=#102030"')),
    ("more than a colour", "3:13", "error", "set: pin-color wants a colour, 0xBBGGRR, not '0x1000000'",
     dial('set="pin-color=0x1000000"')),
    ("no number", "3:13", "error", "set: base wants a number, not '1e3': it is skipped", dial('set="base=1e3"')),
    ("more than 32 bits", "3:13", "error", "set: max: the number '4294967296' does not fit 32 bits: it is skipped",
     dial('set="max=4294967296"')),
    ("a limit above what is signed", "3:13", "error",
     "set: max is out of range, -2147483648 to 2147483647: '4294967295'", dial('set="max=4294967295"')),
    ("a part of a number", "3:13", "warning",
     "set: max takes whole numbers: what stands behind the point is dropped", dial('set="max=9.5"')),
    ("a switch", "3:13", "error", "set: alarm is out of range, 0 to 1: '2'", dial('set="alarm=2"')),
    ("a style", "3:28", "error", "set: pin-style is out of range, 0 to 4: '5'",
     '<meter mtype="clock" set=" pin-style=5" upin="1" crd="5 5 5 0 0 9 9"/>'),
    ("a full circle", "3:13", "error", "set: full-circle takes 0 or 1: it is skipped", dial('set="full-circle=2"')),
    ("no scale", "3:21", "error", "set: the meter has no scale to show (usc is 0): it is skipped",
     dial('usc="0" set="scale=0"')),
    ("no pointer", "3:13", "error", "set: the meter has no pointer to show (upin is not 1): it is skipped",
     dial('set="pin=0"')),
    ("not of a meter", "3:13", "error", "set: a meter does not know 'start-code': it is skipped",
     dial('set="start-code=0"')),
    ("not of a scale", "3:13", "error", "set: a scale does not know 'alarm': it is skipped",
     '<scale set="alarm=1" crd="1 1 9 9"/>'),
    ("not of a type of meter", "3:13", "warning", "set: a meter of type round does not follow 'sectors'",
     dial('set="sectors=3"')),
    ("a face colour without a face", "3:13", "warning", "set: a meter of type sector does not follow 'face-color'",
     '<meter set="face-color=3" mtype="sector" crd="5 5 5 0 0 9 9"/>'),
    ("not of a type of scale", "3:13", "warning", "set: a scale of type vrtright does not follow 'start-code'",
     '<scale set="start-code=1" crd="1 1 9 9"/>'),
    ("a negative end of a scale", "3:13", "error", "set: max is out of range, 0 to 4294967295: '-1'",
     '<scale set="max=-1" crd="1 1 9 9"/>'),
    ("spelled in another way than it is read", "3:13", "error", "set: unknown setting 'b&c'",
     dial('set="max=9 b&amp;c=1"')),
    ("a value that is no number", "3:15", "error", "value wants a number, not '7 8': it is ignored",
     dial('value="7 8" upin="1"')),
    ("a value of a clock", "3:15", "warning", "value: a clock shows the time and no value",
     '<meter value="7" mtype="clock" crd="5 5 5 0 0 9 9"/>'),
    ("a value of shares", "3:15", "warning",
     "value: a meter of type sector shows the values of its sectors alone",
     '<meter value="7" mtype="sector" crd="5 5 5 0 0 9 9"/>'),
    ("a value without a pointer", "3:15", "warning", "value: no pointer (upin is 0) shows it", dial('value="7"')),
    ("a value without pointer and read-out", "3:15", "warning",
     "value: neither a pointer (upin is 0) nor a read-out (set) shows it",
     '<meter value="7" mtype="roundUpgrade" crd="5 5 5 0 0 9 9"/>'),
    ("a value without fill and pointer", "3:15", "warning",
     "value: the scale has neither a fill (style) nor a pointer (pin) that shows it",
     '<scale value="7" sctype="round" style="0x0" crd="5 5 5 3 2"/>'),
    ("a setting of a shape", "3:7", "warning", "attribute 'set' has no meaning on <rect>",
     '<rect set="max=9" crd="1 1 9 9"/>'))
FINDINGS += SETS


@pytest.mark.parametrize("line", rows(
    ("all that a dial follows", dial('upin="1" usc="1" set="max=100 min=-5 base=-2.5 ticks=20 alarm=1 pin=0 scale=1 '
                                     'full-circle=0 pin-color=0x800000ff high-color=255" value="-6.5"')),
    ("a read-out", '<meter set="read-out=1" value="7" mtype="roundUpgrade" crd="5 5 5 0 0 9 9"/>'),
    ("a face without a setting of its own", '<meter set="face-color=3 sectors=3" mtype="sector" crd="5 5 5 0 0 9 9">'
                                            '<rect crd="1 1 9 9"/></meter>'),
    ("a scale", '<scale sctype="round" set="start-code=7 max=4294967295 ticks=5" value="0x10" crd="5 5 5 3 2"/>')))
def test_settings_that_are_right_are_passed(tool, line):
    tool.drawing("f.qel", line)
    result = tool.run("check", "f.qel")
    assert (result.status, result.out) == (0, "")


@pytest.mark.parametrize("at, kind, part, lines", rows(*((*row[:4], row[4:]) for row in FINDINGS)))
def test_check_finds(tool, at, kind, part, lines):
    tool.drawing("f.qel", *lines)
    assert_one_finding(tool, "f.qel", at, kind, part)


def test_an_imin_below_1_is_told_with_what_follows(tool):
    tool.drawing("f.qel", '<meter crd="1 1 9 9" imin="0" imax="50"><rect crd="1 1 9 9"/></meter>')
    assert tool.run("check", "f.qel").out == """\
f.qel:3:1: error: imin 0 and imax 50 are no range from 1 up: the element is drawn with its defaults, and saving drops imin
f.qel:3:28: error: imin is out of range, 1 or more: '0'"""


def test_elements_that_take_values_may_share_an_identifier(tool):
    tool.drawing("f.qel", '<status id="a"><rect crd="1 1 9 9"/></status>',
                 '<status id="a" stx="1"><rect crd="1 1 9 9"/></status>',
                 '<scale id="a" crd="1 1 9 9"/>', '<text id="a" crd="1 1 9 9">##</text>')
    assert tool.run("check", "f.qel") == (0, "", "")


def test_the_examples_are_clean(tool):
    examples = sorted(map(str, (ROOT / "examples").glob("*.qel")))
    assert examples
    result = tool.run("check", *examples)
    assert (result.status, result.out) == (0, "")
