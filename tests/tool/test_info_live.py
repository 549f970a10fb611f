"""qel info of drawings with statuses, scales and meters: what the host can set, and what has no effect."""
import json
import re

import pytest

from support import PLAIN, rows

HOST = ('<status stx="3"><rect crd="1 1 9 9"/></status>', '<status/>',
        '<meter upin="1" mtype="round" crd="20 15 10 5 5 35 25"/>', '<meter mtid="5" crd="1 1 9 9"/>',
        '<meter mtid="40" usc="0" crd="1 1 9 9"/>', '<meter mtype="pie" crd="20 15 10 5 5 35 25"/>',
        '<scale scid="41" crd="1 1 9 9"/>', '<scale scid="41" crd="1 1 9 9"/>',
        '<scale scid="42" style="0x0" sctype="round" hidesc="1" crd="9 9 8 6 2"/>',
        '<g><scale scid="43" style="0x0" sctype="Arc" pin="1" crd="9 9 8 6 2 0 90"/></g>',
        '<meter mtid="50" imin="0" crd="1 1 9 9"/>', '<meter mtid="60" upin="1" mtype="clock" crd="9 9 8 1 1 17 17"/>')


def live_lines(words):
    return re.findall(r"^(?:status numbers|meter|scale).*", words, re.M)


@pytest.fixture(scope="module")
def told(studio):
    """What info says, by drawing and option."""
    studio.drawing("host.qel", *HOST)
    studio.drawing("plain.qel", PLAIN)
    asked = [(name, *option) for name in ("host", "plain") for option in ((), ("--json",))]
    return {key: studio.run("info", key[0] + ".qel", *key[1:]) for key in asked}


def test_info_of_live_elements_ends_with_0(told):
    assert (told["host",].status, told["host",].err) == (0, "")


def test_statuses_meters_and_scales_have_a_line_each(told):
    assert live_lines(told["host",].out) == """\
status numbers: 0, 3
meter 0, round: value shown by the pointer
meter 5, vert: not reached: the ids 1 to 32 are the values of a meter with mtid 0
meter 40, vert: takes settings but no value; no axis and ticks (usc is 0)
meter 0, pie: not reached: a meter before it has the same id
meter 0, vert: imin and imax are no range: drawn with the defaults; not reached: a meter before it has the same id
meter 60, clock: shows the time
scale 41, vrtright: value shown by fill; no pointer
scale 41, vrtright: not reached: a scale before it has the same id
scale 42, round: value not shown: neither fill (style) nor pointer (pin); marks hidden
scale 43, Arc: value shown by pointer; no fill""".split("\n")


@pytest.mark.parametrize("part", rows(
    ("the settings of a scale",
     "scale 41, vrtright: value shown by fill; no pointer\n"
     "    pin-color 0xaaaaaa, scale-color 0xaaaaaa, ticks 10, max 10, min 0, value 0\nscale"),
    ("the start of a round scale", "ticks 10, start-code 0, max 10"),
    ("the settings of a meter",
     "meter 0, round: value shown by the pointer\n"
     "    pin-color 0xaaaaaa, scale-color 0xaaaaaa, ticks 10, max 10, min 0, value 0, face-color 0x000000,\n"
     "    scale 1, pin 1, labels 1,"),
    ("the tree", "\nqel  "),
    ("the values in the mask", "values of meters and scales")))
def test_info_tells(told, part):
    assert part in told["host",].out


def test_no_line_of_settings_is_longer_than_a_hundred(told):
    lines = re.findall(r"^    .*,.*$", told["host",].out, re.M)
    assert lines
    assert [line for line in lines if len(line) > 100] == []


def test_a_drawing_without_live_elements_has_no_such_lines(told):
    assert told["plain",].out.startswith("size 40 x 30")
    assert live_lines(told["plain",].out) == []


@pytest.mark.parametrize("line, lines", rows(*((*row[:2], row[2:]) for row in (
    ("a bar", "meter 0, horz3d: value shown by the bar",
     '<meter mtype="horz3d" crd="1 1 9 9"><g><circle crd="5 5 4"/></g></meter>'),
    ("a bar without a figure", "meter 0, vert: value not shown: no figure in it for the bar",
     '<meter crd="1 1 9 9"><text crd="1 1 9 9">a</text></meter>'),
    ("a pie", "meter 0, pieUpgrade: value shown by the filled sector",
     '<meter mtype="pieUpgrade" crd="9 9 8 1 1 17 17 0 90"/>'),
    ("shares", "meter 0, sector: the values of the ids 1 to 32 shown as sectors, as many as 'sectors' says",
     '<meter mtype="sector" crd="9 9 8 1 1 17 17"/>'),
    ("a gauge without pointer", "meter 0, round: value not shown: no pointer (upin is 0)",
     '<meter mtype="round" crd="9 9 8 1 1 17 17"/>'),
    ("a gauge with a read-out",
     "meter 0, roundUpgrade: value not shown until 'read-out' is 1: no pointer (upin is 0)",
     '<meter mtype="roundUpgrade" crd="9 9 8 1 1 17 17"/>'),
    ("a clock without hands", "meter 0, clock: no hands (upin is 0)",
     '<meter mtype="clock" crd="9 9 8 1 1 17 17"/>'),
    ("a scale that shares its id",
     "scale 5, vrtright: value shown by fill; no pointer; the meter with mtid 0 takes the same sets",
     '<meter crd="1 1 9 9"/>', '<scale scid="5" crd="1 1 9 9"/>'),
    ("a scale and a meter of one id above 32",
     "scale 40, vrtright: value shown by fill; no pointer; the meter with mtid 40 takes the same sets",
     '<meter mtid="40" crd="1 1 9 9"/>', '<scale scid="40" crd="1 1 9 9"/>')))))
def test_info_tells_how_a_value_shows(tool, line, lines):
    tool.drawing("one.qel", *lines)
    assert live_lines(tool.run("info", "one.qel").out)[-1] == line


def settings(tool, *lines):
    """What info says of a drawing, without ends of lines."""
    tool.drawing("one.qel", *lines)
    return " ".join(tool.run("info", "one.qel").out.split())


@pytest.mark.parametrize("part", rows(
    ("settings", "pin-color 0xaaaaaa (the meter's), scale-color 0xaaaaaa (the meter's), ticks 10, max 10,"),
    ("the value of a pin", "value 0 (the meter's)")))
def test_what_the_meter_answers_for_a_scale_is_marked(tool, part):
    assert part in settings(tool, '<meter crd="1 1 9 9"/>', '<scale scid="5" crd="1 1 9 9"/>')


def test_what_the_scale_answers_for_a_meter_is_marked(tool):
    words = settings(tool, '<meter mtid="40" crd="1 1 9 9"/>', '<scale scid="40" crd="1 1 9 9"/>')
    assert "ticks 10 (the scale's), max 10 (the scale's), min 0 (the scale's)," in words


# ---- JSON


def test_json_of_live_elements_is_valid(told):
    assert isinstance(json.loads(told["host", "--json"].out), dict)


@pytest.fixture(scope="module")
def host(told):
    return json.loads(told["host", "--json"].out)


def test_json_tells_the_status_numbers(host):
    assert host["statusNumbers"] == [0, 3]


def test_json_tells_of_a_meter(host):
    members = list(host["meters"][0].items())
    assert members[:6] == [("id", 0), ("type", 4), ("typeName", "round"), ("reached", True), ("valueShown", True),
                           ("note", "value shown by the pointer")]
    assert [name for name, _ in members[6:]] == ["settings"]


def test_json_tells_the_settings_of_a_meter(host):
    assert list(host["meters"][0]["settings"][0].items()) == [("selector", 0), ("name", "pin-color"),
                                                              ("value", 11184810)]


def test_json_tells_the_real_form_of_a_value(host):
    assert {"selector": 6, "name": "value", "value": 0, "real": 0} in host["meters"][0]["settings"]


def test_json_tells_of_a_meter_that_is_not_reached(host):
    assert list(host["meters"][1].items())[:5] == [("id", 5), ("type", 0), ("typeName", "vert"), ("reached", False),
                                                   ("valueShown", False)]


def test_json_lists_may_be_empty(told):
    plain = json.loads(told["plain", "--json"].out)
    assert [plain[name] for name in ("statusNumbers", "meters", "scales")] == [[], [], []]


TYPES = "vert vert3d horz horz3d round Arc pie clock roundUpgrade pieUpgrade sector".split()
ALL = range(len(TYPES))
FOLLOWED = {  # selector: the numbers of the types that follow it; one that is not here all do
    0: range(10), 1: range(10), 3: (), 7: range(10), 15: (4, 7, 8, 10), 16: set(ALL) - {6, 9}, 20: (4, 5, 8),
    21: (4, 5, 8), 26: (4, 5, 8), 27: (7, 8), 28: (7, 8, 9), 29: (1, 3), 30: (1, 3, 8, 10), 31: (1, 3), 32: (10,)}


@pytest.mark.parametrize("number, name", list(enumerate(TYPES)), ids=TYPES)
def test_json_lists_the_selectors_that_a_type_of_meter_follows(tool, number, name):
    tool.drawing("one.qel", f'<meter mtype="{name}" crd="20 15 10 5 5 35 25 0 90"/>')
    meter = json.loads(tool.run("info", "one.qel", "--json").out)["meters"][0]
    assert [row["selector"] for row in meter["settings"]] == [n for n in range(34) if number in FOLLOWED.get(n, ALL)]


# ---- identifiers

NAMED = ('<meter id="dial" mtid="40" mtype="round" upin="1" crd="20 15 10 5 5 35 25"/>',
         '<g id="all"><rect id="box" crd="1 1 9 9"/></g>', '<g id="none"/>', '<status id="lamp" stx="2"><rect crd="1 1 9 9"/></status>',
         '<text id="temp" crd="1 1 9 9">##.# C</text>', '<text id="box" crd="1 1 9 9">a</text>',
         '<scale id="level" scid="7" crd="1 1 9 9"/>', '<meter id="clock" mtype="clock" crd="9 9 8 1 1 17 17"/>',
         '<meter id="shares" mtype="sector" crd="9 9 8 1 1 17 17"/>', '<drawrgn id="trend" crd="1 1 9 9"/>')


@pytest.fixture(scope="module")
def named(studio):
    studio.drawing("named.qel", *NAMED)
    return studio


@pytest.mark.parametrize("line", (
    "identifier \"dial\", meter round: value, selectors, quality", 'identifier "all", g: colours, quality',
    'identifier "box", rect, text: text, colours, quality', 'identifier "none", g: quality',
    'identifier "lamp", status: value, colours, quality', 'identifier "temp", text: value, text, colours, quality',
    'identifier "level", scale vrtright: value, selectors, quality',
    'identifier "clock", meter clock: selectors, quality', 'identifier "shares", meter sector: pins, selectors, quality',
    'identifier "trend", drawrgn: quality'))
def test_info_tells_what_an_identifier_takes(named, line):
    assert line in named.run("info", "named.qel").out.split("\n")


def test_identifiers_come_once_in_the_order_of_the_drawing(named):
    lines = re.findall(r'^identifier "([^"]*)"', named.run("info", "named.qel").out, re.M)
    assert lines == ["dial", "all", "box", "none", "lamp", "temp", "level", "clock", "shares", "trend"]


def test_the_selectors_of_an_identifier_stand_below_it(named):
    words = named.run("info", "named.qel").out
    assert ('identifier "level", scale vrtright: value, selectors, quality\n'
            "    pin-color, scale-color, ticks, max, min\n") in words


def test_json_tells_of_identifiers(named):
    listed = {each["id"]: each for each in json.loads(named.run("info", "named.qel", "--json").out)["identifiers"]}
    assert listed["box"] == {"id": "box", "types": ["rect", "text"], "takes": ["text", "colors", "visibility", "quality"],
                             "selectors": []}
    assert listed["level"]["selectors"] == ["pin-color", "scale-color", "ticks", "max", "min"]


# What is told is what the program takes by the identifier, and nothing else.
@pytest.mark.parametrize("what, option", (("value", "--value {}=1"), ("text", "--text {}=1"),
                                          ("selectors", "--set {}.max=1"), ("quality", "--quality {}=1")))
@pytest.mark.parametrize("name", ("dial", "all", "box", "lamp", "temp", "level", "trend"))
def test_what_is_told_of_an_identifier_is_what_render_takes(named, name, what, option):
    takes = {each["id"]: each["takes"] for each in json.loads(named.run("info", "named.qel", "--json").out)["identifiers"]}
    result = named.line("render named.qel a.bmp --size 40x30 " + option.format(name))
    assert (result == (0, "", "")) == (what in takes[name])
