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
