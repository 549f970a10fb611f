"""qel info: the size, what the host can set, and the tree of elements, in words and as JSON."""
import json
import sys

import pytest

from support import gb, rows

DRAWINGS = {
    "cn": b'<?xml version="1.0" encoding="gb2312" ?>\r\n<qel id="' + gb("水厂") + b'" type="2">'
          b'<text id="a&quot;b" crd="0 0 9 9">' + gb("泵") + b"\\</text></qel>",
    "odd": b'<qel id="\xff\xff\x81"><g id="a&#xA;b&#x9;\x01"/></qel>',
    "deep": "<qel>" + "<g>" * 512 + "</g>" * 512 + "</qel>",
}


@pytest.fixture(scope="module")
def told(studio):
    """What info says, by drawing and option."""
    studio.drawing("tree.qel", '<g id="pump">', '<circle crd="20 15 5" flag="0x81"/>', "</g>",
                   '<text crd="0 0 40 10">x</text>')
    studio.drawing("all.qel", '<polygon style="0x50003" dr="12" fg="0x123456 glt" bg="0xff" clr="0xff00" lnstyle="2"'
                   ' lnwid="3" crd="1 2 3 4 5 -6"/>', '<rect style="0x5" flag="0x508000" crd="1 1 9 9"/>')
    for name, content in DRAWINGS.items():
        studio.file(name + ".qel", content)
    asked = [(name, option) for name in ("tree", "all", *DRAWINGS) for option in ((), ("--json",))]
    return {(name, *option): studio.run("info", name + ".qel", *option) for name, option in asked}


def read_json(text):
    limit = sys.getrecursionlimit()
    sys.setrecursionlimit(10000)
    try:
        return json.loads(text)
    finally:
        sys.setrecursionlimit(limit)


def test_info_ends_with_0(told):
    assert [(key, result) for key, result in told.items() if (result.status, result.err) != (0, "")] == []


def test_info_tells_the_size_what_can_be_set_and_the_tree(told):
    assert told["tree",].out == """\
size 40 x 30, kind 0
the host can set (mask 0x2081): parameter 0, the frame colour; parameters 1 to 3, the hatch and its colours; texts
identifier "pump", g: colours, quality
qel  0,0..40,20
  g "pump"  15,10..25,20
    circle  15,10..25,20
  text  0,0..40,10"""


def test_names_are_printed_in_utf_8_and_quoted(told):
    assert told["cn",].out == """\
size 50 x 50, kind 2, name "水厂"
the host can set (mask 0x2000): texts
identifier "水厂", qel: colours, quality
identifier "a\\"b", text: text, colours, quality
qel "水厂"  0,0..9,9
  text "a\\"b"  0,0..9,9"""


def test_an_identifier_of_two_lines_stays_on_its_line(told):
    assert r'g "a\u000ab\u0009\u0001"' in told["odd",].out


# The results are read as UTF-8 already, and strictly.
@pytest.mark.parametrize("name", rows(("a Chinese drawing", "cn"), ("a tree", "tree"), ("shapes", "all"),
                                      ("bytes that are no characters", "odd"), ("512 levels", "deep")))
def test_json_is_valid(told, name):
    assert isinstance(read_json(told[name, "--json"].out), dict)


@pytest.fixture(scope="module")
def parsed(told):
    """The JSON of info, by drawing."""
    return {name: read_json(told[name, "--json"].out) for name in ("tree", "all", *DRAWINGS)}


def items(value, *path):
    """The members of an object in their order, so that the order is compared, too."""
    for step in path:
        value = value[step]
    return list(value.items())


def test_json_is_indented(told):
    assert told["tree", "--json"].out.startswith('{\n  "width": 40,\n  "height": 30,\n')


def test_json_begins_with_the_drawing_and_ends_with_the_tree(parsed):
    assert list(parsed["tree"]) == ["width", "height", "kind", "name", "paramsMask", "params", "statusNumbers",
                                    "meters", "scales", "identifiers", "root"]


@pytest.mark.parametrize("name, path, value", rows(
    ("kind", "cn", ("kind",), 2),
    ("name", "cn", ("name",), "水厂"),
    ("an identifier", "cn", ("root", "children", 0, "id"), 'a"b'),
    ("a text", "cn", ("root", "children", 0, "attributes", "text"), "泵\\"),
    ("the width", "tree", ("width",), 40),
    ("the height", "tree", ("height",), 30),
    ("what the host can set, as a mask", "tree", ("paramsMask",), 8321),
    ("what the host can set", "tree", ("params",), ["QEL_MASK_COLOR", "QEL_MASK_DRAFT", "QEL_MASK_TEXT"]),
    ("the place of a circle", "tree", ("root", "children", 0, "children", 0, "attributes", "crd"), [20, 15, 5]),
    ("keep modes", "all", ("root", "children", 1, "attributes", "flags", "names"),
     ["QEL_KEEP_LEFT", "QEL_ALONG_KEEP_LENGTH", "QEL_AWAY_KEEP_LENGTH"]),
    ("control characters", "odd", ("root", "children", 0, "id"), "a\nb\t\x01")))
def test_json_tells(parsed, name, path, value):
    found = parsed[name]
    for step in path:
        found = found[step]
    assert found == value


def test_json_tells_of_a_text(parsed):
    assert items(parsed["cn"], "root", "children", 0)[:4] == [("type", 1), ("typeName", "text"), ("id", 'a"b'),
                                                              ("rect", [0, 0, 9, 9])]


def test_json_tells_of_a_group(parsed):
    members = items(parsed["tree"], "root", "children", 0)
    assert members[:4] == [("type", 15), ("typeName", "g"), ("id", "pump"), ("rect", [15, 10, 25, 20])]
    assert [name for name, _ in members[4:]] == ["children"]


def test_json_tells_the_flags_of_a_circle(parsed):
    attributes = items(parsed["tree"], "root", "children", 0, "children", 0, "attributes")
    assert attributes[-1] == ("flags", {"value": 129, "names": ["QEL_FLAG_COLOR_PARAM", "QEL_FLAG_DRAFT_PARAM"]})


def test_json_tells_every_attribute_of_a_shape_in_order(parsed):
    assert items(parsed["all"], "root", "children", 0, "attributes") == [
        ("style", {"value": 327683, "fill": True, "border": "up", "borderWidth": 5}), ("draft", 12),
        ("fg", {"rgb": "563412", "blink": True}), ("bg", {"rgb": "ff0000", "blink": False}),
        ("clr", {"rgb": "00ff00", "blink": False}), ("lineStyle", 2), ("lineWidth", 3), ("crd", [1, 2, 3, 4, 5, -6]),
        ("flags", {"value": 0, "names": []})]


def test_json_tells_a_sunken_border_of_the_usual_width(parsed):
    assert items(parsed["all"], "root", "children", 1, "attributes", "style") == [
        ("value", 5), ("fill", True), ("border", "down"), ("borderWidth", 2)]


def test_json_lists_all_of_512_groups(told):
    assert told["deep", "--json"].out.count('"typeName": "g"') == 512


def test_512_levels_are_drawn(tool):
    tool.file("deep.qel", DRAWINGS["deep"])
    assert tool.size(tool.draw("deep.png", "deep.qel")) == (800, 800)
