"""qel check: what it finds in drawings, and at which line and column. Scales and meters are in
test_check_live.py."""
import pytest

from support import PLAIN, assert_one_finding, gb, rows


def test_nothing_is_said_of_a_clean_drawing(tool):
    tool.drawing("plain.qel", PLAIN)
    assert tool.run("check", "plain.qel") == (0, "", "")


FINDINGS = (  # name, line:column, kind, part of the message, lines of the drawing from line 3 on
    ("unknown element", "3:1", "error", "unknown element <box>", "<box><rect/></box>"),
    ("known element without a class", "3:1", "warning", "<path> is skipped", '<path d="x"><zzz/></path>'),
    ("drawing in a drawing", "3:3", "error", "<qel> inside", "  <qel><rect/></qel>"),
    ("unknown attribute", "3:21", "error", "unknown attribute 'colour'", '<rect crd="1 1 9 9" colour="1"/>'),
    ("attribute of other elements", "3:4", "warning", "'crd' has no meaning on <g>", '<g crd="1 2 3 4"/>'),
    ("attribute of the root on a shape", "3:21", "warning", "'width' has no meaning on <rect>",
     '<rect crd="1 1 9 9" width="3"/>'),
    ("style without 0x", "3:28", "error", "style wants 0x hexadecimal, not '12': it is ignored",
     '<rect crd="1 1 9 9" style="12"/>'),
    ("colour with another word", "3:25", "error", "fg wants colour", '<rect crd="1 1 9 9" fg="0xff blink"/>'),
    ("colour of 32 bits", "3:25", "error", "fg wants colour", '<rect crd="1 1 9 9" fg="0xff0000ff"/>'),
    ("decimal of words", "3:28", "error", "lnwid wants decimal, not 'thin'",
     '<rect crd="1 1 9 9" lnwid="thin"/>'),
    ("decimal with a tail", "3:28", "error", "lnwid wants decimal, not '2px'; it is read as 2",
     '<rect crd="1 1 9 9" lnwid="2px"/>'),
    ("decimal with a blank behind", "3:25", "error", "dr is out of range, 0 to 37: '38 '",
     '<rect crd="1 1 9 9" dr="38 "/>'),
    ("a style that is read in part", "3:28", "error",
     "style wants 0x hexadecimal, not '0x1z'; it is read as 0x1", '<rect crd="1 1 9 9" style="0x1z"/>'),
    ("decimal beyond 32 bits", "3:28", "error",
     "lnwid: the number '2147483648' does not fit 32 bits; it is read as 2147483647",
     '<rect crd="1 1 9 9" lnwid="2147483648"/>'),
    ("hexadecimal beyond 32 bits", "3:28", "error",
     "style: the number '0x100000000' does not fit 32 bits; it is read as 0xffffffff",
     '<rect crd="1 1 9 9" style="0x100000000"/>'),
    ("line style out of range", "3:30", "error", "lnstyle is out of range, 0 to 6: '7'",
     '<rect crd="1 1 9 9" lnstyle="7"/>'),
    ("columns count bytes, three to each of these characters", "3:16", "error", "unknown attribute 'x'",
     '<g id="水厂" x="1"/>'),
    ("an attribute on a line of its own", "4:3", "error", "unknown attribute 'x'", "<g", '  x="1"/>'),
    ("a value on a line of its own", "5:2", "error", "dr is out of range", '<rect crd="1 1 9 9"', " dr =",
     '"99"/>'),
    ("an unknown element without end is shown in part", "3:1", "error", "<" + "x" * 40 + "...>",
     "<" + "x" * 99 + "/>"),
    ("a value of two lines stays on one", "3:28", "error", "not '2  px'", '<rect crd="1 1 9 9" lnwid="2',
     'px"/>'),
    ("a long Chinese value is not cut inside a character", "3:25", "error", "not 'x" + "水" * 20 + "...'",
     gb('<rect crd="1 1 9 9" dr="x' + "水" * 30 + '"/>')),
    ("a Chinese value", "3:25", "error", "dr wants decimal, not '水'",
     gb('<rect crd="1 1 9 9" dr="水"/>')),
    ("hatch out of range", "3:25", "error", "dr is out of range, 0 to 37: '38'",
     '<rect crd="1 1 9 9" dr="38"/>'),
    ("negative hatch", "3:25", "error", "dr is out of range", '<rect crd="1 1 9 9" dr="-1"/>'),
    ("negative line width", "3:28", "error", "lnwid is out of range", '<rect crd="1 1 9 9" lnwid="-2"/>'),
    ("too few coordinates", "3:12", "error", "4 numbers, not 3: the element keeps 0 0 10 10",
     '<rect crd="1 2 3"/>'),
    ("too many coordinates", "3:12", "error", "4 numbers, not 5: the rest is not read",
     '<rect crd="1 2 9 9 5"/>'),
    ("coordinates that are no numbers", "3:14", "error", "no number in '5 5 3 x'", '<circle crd="5 5 3 x"/>'),
    ("one point of a polygon", "3:15", "error", "the element keeps", '<polygon crd="1 2"/>'),
    ("half a point", "3:15", "error", "stands alone", '<polygon crd="1 2 3 4 5"/>'),
    ("17 points", "3:16", "error", "after the 16th",
     '<polyline crd="1 2 2 2 3 2 4 2 5 2 6 2 7 2 8 2 9 2 10 2 11 2 12 2 13 2 14 2 15 2 16 2 17 2 "/>'),
    ("points that tabs and blanks separate", "3:16", "error", "not read as they stand",
     '<polyline crd="1\t2\t3\t4 5 6"/>'),
    ("points on two lines", "3:16", "error", "not read as they stand", '<polyline crd="1 2', '3 4 5 6"/>'),
    ("a coordinate beyond 32 bits", "3:12", "error", "does not fit 32 bits",
     '<rect crd="1 1 9 99999999999"/>'),
    ("a negative radius", "3:14", "error", "the radius -5 is negative", '<circle crd="9 9 -5"/>'),
    ("no coordinates", "3:1", "warning", "no crd: the element has 0 0 10 10", "<rect/>"),
    ("text on a rectangle", "3:21", "warning", "a text has no effect on <rect>",
     '<rect crd="1 1 9 9">hello</rect>'),
    ("text of 256 bytes", "3:23", "error", "more than 255 bytes",
     '<text crd="0 0 40 30">' + "x" * 256 + "</text>"),
    ("text without a text", "3:1", "warning", "shows nothing", '<text crd="0 0 40 30"/>'),
    ("identifier of 256 bytes", "3:25", "error", "more than 255 bytes",
     '<rect crd="1 1 9 9" id="' + "x" * 256 + '"/>'),
    ("identifier twice", "4:25", "warning", "another element has the identifier 'a'",
     '<rect crd="1 1 9 9" id="a"/>', '<rect crd="1 1 9 9" id="a"/>'),
    ("identifier of a value and of a shape", "4:25", "warning", "another element has the identifier 'a'",
     '<text id="a" crd="1 1 9 9">##</text>', '<rect crd="1 1 9 9" id="a"/>'),
    ("one anchor and Keep All", "3:27", "warning", "more than one anchor: the element is stretched",
     '<rect crd="1 1 9 9" flag="0x9000"/>'),
    ("away from no edge", "3:27", "warning", "with Keep left", '<rect crd="1 1 9 9" flag="0x20000"/>'),
    ("two anchors", "3:27", "warning", "more than one anchor", '<rect crd="1 1 9 9" flag="0x18000"/>'),
    ("placement without anchor", "3:27", "warning",
     "placement along and away from an edge have an effect with Keep left",
     '<rect crd="1 1 9 9" flag="0x100000"/>'),
    ("keep mode on a line", "3:27", "warning", "no effect on <line>", '<line crd="1 1 9 9" flag="0x8000"/>'),
    ("empty rectangle", "3:1", "warning", "the rectangle is empty", '<rect crd="5 5 5 9"/>'),
    ("an arc without width", "3:1", "warning", "the rectangle is empty: nothing is drawn",
     '<arc crd="5 5 5 9 1 1 9 9"/>'),
    ("a line without length", "3:1", "warning", "all points are the same", '<line crd="5 5 5 5"/>'),
    ("a rectangle at the right edge", "3:1", "warning", "outside of the drawing", '<rect crd="40 5 50 9"/>'),
    ("a rectangle above", "3:1", "warning", "outside of the drawing", '<rect crd="5 -9 9 0"/>'),
    ("a line below", "3:1", "warning", "outside of the drawing", '<line crd="5 31 9 35"/>'),
    ("outside of the drawing", "3:1", "warning", "outside of the drawing", '<rect crd="50 5 60 9"/>'),
    ("value without quotes", "3:21", "warning", "dr: the value has no quotes: the attribute is dropped",
     '<rect crd="1 1 9 9" dr=3/>'),
    ("empty value", "3:21", "warning", "dr: the value is empty: the attribute is dropped",
     '<rect crd="1 1 9 9" dr=""/>'),
    ("attribute twice", "3:28", "warning", "dr: the attribute stands here a second time",
     '<rect crd="1 1 9 9" dr="1" dr="2"/>'),
    ("text twice", "3:32", "warning", "replaces it", '<text crd="0 0 40 30">a<!-- -->b</text>'),
    *((f"<{name}>, known without a class", "3:1", "warning", f"<{name}> is skipped with all that is in it",
       f'<{name} id="a"><zzz/></{name}>') for name in ("defs", "use")))


@pytest.mark.parametrize("at, kind, part, lines", rows(*((*row[:4], row[4:]) for row in FINDINGS)))
def test_check_finds_in_an_element(tool, at, kind, part, lines):
    tool.drawing("f.qel", *lines)
    assert_one_finding(tool, "f.qel", at, kind, part)


@pytest.mark.parametrize("at, kind, part, content", rows(
    ("empty file", "1:1", "error", "the drawing is empty", ""),
    ("blanks only", "1:1", "error", "there is no element", " \n "),
    ("other root", "1:1", "error", "the root element is <rect>, not <qel>", "<rect/>"),
    ("other root after a declaration", "2:3", "error", "not <qel>", '<?xml version="1.0"?>\n  <g/>'),
    ("end tag of another", "2:7", "error", "does not match", "<qel>\n<g><g></h></qel>"),
    ("attribute without value", "1:7", "error", "start tag cannot be read", "<qel a/>"),
    ("value not closed", "1:6", "error", "not closed by its quote", '<qel id="x/>'),
    ("end in a start tag", "1:13", "error", "inside a start tag", '<qel id="x" '),
    ("end after a name", "1:5", "error", "right after an element", "<qel"),
    ("slash", "1:5", "error", "not followed by", "<qel/ >"),
    ("end in content", "1:9", "error", "inside an element", "<qel><g>"),
    ("end in a comment", "2:12", "error", "inside an element's content", "<qel>\n<!-- x <g/>"),
    ("second root", "1:7", "warning", "becomes the root's last child", "<qel/><g/>"),
    ("text after the root", "1:7", "warning", "reading stops here", "<qel/>bye"),
    ("comment not closed", "1:7", "warning", "not closed", "<qel/><!-- x"),
    ("bytes after a zero", "1:7", "warning", "zero byte", "<qel/>\x00<g/>"),
    ("kind of the root", "1:12", "error", "type is out of range, 0 to 2: '5'", '<qel type="5"/>'),
    ("negative kind", "1:12", "error", "type is out of range, 0 to 2: '-1'", '<qel type="-1"/>'),
    ("kind with a blank behind", "1:12", "error", "type is out of range, 0 to 2: '3 '", '<qel type="3 "/>'),
    ("width of the root", "1:13", "error", "width is out of range, 1 or more: '0'", '<qel width="0"/>'),
    ("height of the root", "1:14", "error", "height is out of range, 1 or more: '-4'",
     '<qel height="-4"><rect crd="1 1 2 2"/></qel>'),
    ("513 levels", "1:1542", "error", "512 levels", "<qel>" + "<g>" * 513),
    ("an element that is read in part", "1:36", "error", "inside a start tag",
     '<qel><rect crd="1 1 5 5" id="a"    '),
    ("an element without its attributes yet", "1:19", "error", "start tag cannot be read",
     '<qel><text id="a"b"/></qel>')))
def test_check_finds_in_the_whole_file(tool, at, kind, part, content):
    tool.file("x.qel", content)
    assert_one_finding(tool, "x.qel", at, kind, part)


@pytest.mark.parametrize("content, line", rows(
    ("a byte order mark", b"\xef\xbb\xbf<qel/>",
     "x.qel:1:1: warning: a byte order mark stands before the drawing"),
    ("no markup", "hello", "x.qel:1:1: error: there is no element: the drawing does not open")))
def test_check_tells_at_the_first_byte_of_what_is_no_drawing(tool, content, line):
    tool.file("x.qel", content)
    result = tool.run("check", "x.qel")
    assert result.status == 1
    assert line in result.out


@pytest.mark.parametrize("lines", rows(
    ("16 points", ['<polyline crd="' + "".join(f"{n} 2 " for n in range(1, 17)) + '"/>']),
    ("upright lines, lines on the edge, shapes in part inside",
     ['<line crd="5 5 5 9"/>', '<line crd="40 5 40 9"/>', '<rect crd="39 29 60 60"/>', '<polyline crd="1 5 9 5"/>'])))
def test_check_finds_nothing_in(tool, lines):
    tool.drawing("f.qel", *lines)
    result = tool.run("check", "f.qel")
    assert (result.status, result.out) == (0, "")


def test_the_zero_byte_that_ends_a_saved_drawing_is_fine(tool):
    tool.file("saved.qel", b"<qel/>\r\n\0")
    result = tool.run("check", "saved.qel")
    assert (result.status, result.out) == (0, "")


def test_a_finding_of_a_long_file_has_its_line(tool):
    groups = "".join(f'<g id="n{n}"/>\n' for n in range(1, 3001))
    tool.file("many.qel", '<qel width="40" height="30">\n' + groups + '<g bad="1"/></qel>')
    assert tool.run("check", "many.qel").out == "many.qel:3002:4: error: unknown attribute 'bad'"


def test_findings_stand_in_the_order_of_the_file(tool):
    tool.drawing("order.qel", '<rect crd="1 1 9 9" dr="99" zz="1"/>', '<rect crd="1 1 9 9" yy="1"/>')
    lines = tool.run("check", "order.qel").out.split("\n")
    assert [line.split(":")[1:3] for line in lines] == [["3", "25"], ["3", "29"], ["4", "21"]]


@pytest.fixture
def several(tool):
    """What check says of a clean drawing, one that is missing, and one with a finding."""
    tool.drawing("plain.qel", PLAIN)
    tool.drawing("f.qel", "<box/>")
    return tool.run("check", "plain.qel", "missing.qel", "f.qel")


def test_the_worst_status_is_that_of_several_drawings(several):
    assert several.status == 2


def test_all_of_several_drawings_are_checked(several):
    assert "f.qel:" in several.out
