"""What qel check says of styles that hold up the host, and of what a save loses."""
import pytest
from PIL import Image
from filesupport import qel  # noqa: F401  (a fixture)


def only(lines):
    assert len(lines) == 1, lines
    return lines[0]


# The border's width stands in the high 16 bits of the style; the bits 2 and 4 ask for one.
@pytest.mark.parametrize("tag, style, width", [("rect", 0x01010003, 257), ("rect", 0xFFFF0005, 65535),
                                               ("drawrgn", 0x7FFF0003, 32767)])
def test_a_border_beyond_reason_is_told(qel, tag, style, width):
    line = only(qel.findings(f'<{tag} style="{style:#x}" crd="1 1 9 9"/>'))
    at = 1 + len(f'<{tag} style="')
    assert line == f"2:{at}: warning: a 3D border of {width} pixels holds up the host: it is drawn ring by ring"


@pytest.mark.parametrize("tag, style", [("rect", 0x01000003), ("rect", 0xFFFF0001), ("ellipse", 0xFFFF0003),
                                        ("rect", 0x00050005)])
def test_a_border_of_usual_width_or_without_effect_is_not(qel, tag, style):
    assert qel.findings(f'<{tag} style="{style:#x}" crd="1 1 9 9"/>') == []


@pytest.mark.parametrize("width, end", [(257, ""), (10000, ""), (10001, "; no more than 10000 are drawn"),
                                        (2147483647, "; no more than 10000 are drawn")])
def test_a_pen_beyond_reason_is_told(qel, width, end):
    line = only(qel.findings(f'<line lnwid="{width}" crd="1 1 9 9"/>'))
    assert line == f"2:14: warning: an outline of {width} pixels holds up the host{end}"


def test_a_pen_of_usual_width_or_without_effect_is_not(qel):
    assert qel.findings('<line lnwid="256" crd="1 1 9 9"/>') == []
    assert qel.findings('<text lnwid="9999" crd="1 1 9 9">x</text>') == []
    assert qel.findings('<rect style="0x3" lnwid="9999" crd="1 1 9 9"/>') == []  # its border takes no pen


def gradient(tool, side, style, shape='<polygon style="0x1" dr="%d" crd="0 0 %d 0 %d %d 0 %d"/>', **of):
    size = of.get("size", side)
    body = shape % (style, side, side, side, side)
    return tool.findings(body, f'<qel width="{size}" height="{size}">')


@pytest.mark.parametrize("style", [14, 15, 16, 37])
def test_a_gradient_beyond_reason_is_told(qel, style):
    line = only(gradient(qel, 4000, style))
    assert line == ("2:26: warning: a gradient over 4000 x 4000 units, 16 million pixels in a picture of 4000 x 4000, "
                    "holds up the host")
    line = only(gradient(qel, 9000, style))  # beyond what has a brush
    assert line.endswith("81 million pixels in a picture of 9000 x 9000, is too large: there is none of it")


def test_a_gradient_far_beyond_a_small_drawing_is_told(qel):
    line = only(gradient(qel, 8190, 14, size=50))  # one unit is 20 pixels in a picture of 1000 x 1000
    assert "8190 x 8190 units, 26830 million pixels in a picture of 1000 x 1000, is too large" in line
    assert gradient(qel, 102, 14, size=50) == []  # 2040 x 2040


def test_gradients_of_usual_size_and_of_one_direction_are_not(qel):
    assert gradient(qel, 2048, 14) == []
    assert gradient(qel, 9000, 9) == []  # a hatch
    for style in (10, 11, 12, 13, 18, 19, 20, 21):  # one row or one column of pixels
        assert gradient(qel, 9000, style) == []
    outline = '<polygon style="0x0" dr="%d" crd="0 0 %d 0 %d %d 0 %d"/>'
    assert gradient(qel, 9000, 14, outline) == []


@pytest.mark.parametrize("count, end", [(1, "the element keeps 0 0 10 10, and a save writes that"),
                                        (17, "the points after the 16th are not read, and a save loses them")])
@pytest.mark.parametrize("tag", ["polygon", "polyline"])
def test_points_outside_of_2_to_16_are_told_with_what_a_save_makes_of_them(qel, tag, count, end):
    points = " ".join(f"{n} {n % 3}" for n in range(count))
    line = only(qel.findings(f'<{tag} crd="{points}"/>'))
    assert line == f"2:{len(tag) + 8}: error: crd wants 2 to 16 points, x y each; {end}"


@pytest.mark.parametrize("count", [2, 16])
def test_2_to_16_points_are_fine(qel, count):
    points = " ".join(f"{n} {n % 3}" for n in range(count))
    assert qel.findings(f'<polyline crd="{points}"/>') == []


@pytest.mark.parametrize("body, message", [
    ('<scale sctype="arc" crd="1 1 9 9"/>', "it is read as vrtleft; did you mean 'Arc'? A save does not keep it"),
    ('<scale sctype="7" crd="1 1 9 9"/>', "not '7'; it is read as vrtleft; a save does not keep it"),
    ('<meter mtype="11" crd="1 1 9 9"><rect crd="1 1 9 9"/></meter>', "it is read as vert; a save does not keep it"),
])
def test_a_type_that_a_save_does_not_keep_is_told(qel, body, message):
    assert only(qel.findings(body)).endswith(message)


@pytest.mark.parametrize("kind", ["3", "-1", "x"])
def test_a_kind_of_drawing_that_a_save_does_not_keep_is_told(qel, kind):
    line = only(qel.findings("", f'<qel type="{kind}" width="40" height="30">'))
    assert line.startswith("1:12: error: type ")
    assert line.endswith("; a save does not keep it")


def test_other_faults_say_nothing_of_saves(qel):
    line = only(qel.findings('<rect dr="38" crd="1 1 9 9"/>'))
    assert line == "2:11: error: dr is out of range, 0 to 37: '38'"


# The dial's place is found from the columns of both ends. Without it some layers draw all the same.
@pytest.mark.parametrize("kind", ["Arc", "pie", "pieUpgrade"])
@pytest.mark.parametrize("angles", ["", " 45 135"])
def test_a_dial_with_equal_end_columns_shows_labels_and_a_line(qel, kind, angles):
    line = only(qel.findings(f'<meter mtype="{kind}" crd="20 15 10 0 0 40 30{angles}"/>'))
    assert line == ("2:1: warning: start and end of the arc lie one above the other, as those of a full circle do: "
                    "nothing of the dial is drawn in its place, only labels and a line out of place")
    assert is_painted(qel, kind, f"20 15 10 0 0 40 30{angles}")


@pytest.mark.parametrize("kind, shows", [("round", True), ("roundUpgrade", True), ("clock", False), ("sector", False)])
def test_a_dial_without_radius_shows_as_much_as_is_told(qel, kind, shows):
    line = only(qel.findings(f'<meter mtype="{kind}" crd="20 15 0 0 0 40 30"/>'))
    assert line == "2:1: warning: the radius is 0: nothing of the dial is drawn" + (
        " in its place, only labels and a line out of place" if shows else "")
    assert is_painted(qel, kind, "20 15 0 0 0 40 30") == shows


def is_painted(tool, kind, crd):
    """Whether such a meter changes a pixel of the background."""
    tool.write("m.qel", f'<qel width="40" height="30"><meter mtype="{kind}" crd="{crd}"/></qel>'.encode())
    assert tool("render", "m.qel", "m.png", "--size", "400x300", "--background", "102030") == (0, b"", "")
    colors = Image.open(tool.folder / "m.png").convert("RGB").getcolors(70000)
    assert any(color == (0x10, 0x20, 0x30) for _, color in colors)
    return len(colors) > 1
