"""qel render with what goes by identifier: --value, --set, --text and --quality. Where a picture is not worked out
pixel by pixel, two ways that must agree are compared."""
import pytest

from support import BACKGROUND, assert_refused, gb, rows

# The fill of this scale reaches from 10 to 10 + 20 * value / (max - min); it is white by default.
SCALE = '<scale id="{}" scid="7" sctype="horizdn" hidesc="1" crd="10 10 30 20"/>'
LAMP = '<status id="lamp" stx="3"><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="10 10 30 20"/></status>'
TEXT = '<text id="temp" crd="0 0 40 30">{}</text>'
DIAL = '<meter id="{}" mtid="{}" mtype="round" upin="1" crd="20 15 10 5 5 35 25"/>'


# ---- values and settings


@pytest.mark.parametrize("name, end, options", rows(
    ("a value", "level", 20, "--value level=5"),
    ("an identifier with a point", "tank.level", 20, "--value tank.level=5"),
    ("an identifier with digits", "41b", 20, "--value 41b=5"),
    ("a negative number names nothing but an identifier", "-7", 20, "--value -7=5"),
    ("a real value", "level", 15, "--value level=2.5"),
    ("a setting", "level", 15, "--set level.max=20 --value level=5"),
    ("the last point divides", "tank.level", 15, "--set tank.level.max=20 --value tank.level=5"),
    ("an identifier that ends as a selector does", "tank.max", 15, "--set tank.max.max=20 --value tank.max=5"),
    ("a setting by number", "tank.2", 15, "--set tank.2.4=20 --value tank.2=5"),
    ("the value as a setting", "level", 20, "--set level.value=5"),
    ("digits alone are the number of a scale", "8", 20, "--value 7=5"),
    ("the later one of number and identifier counts", "level", 20, "--value 7=9 --value level=5"),
    ("in the other order, too", "level", 20, "--value level=9 --value 7=5")))
def test_the_fill_reaches_as_far_as_the_value(tool, name, end, options):
    picture = tool.shot(tool.drawing("scale.qel", SCALE.format(name)), options)
    assert tool.pixels(picture, (end - 1, 18), (end, 18)) == ["ffffff", BACKGROUND]


def test_an_identifier_of_digits_goes_by_number(tool):
    tool.drawing("scale.qel", SCALE.format("8"))
    assert_refused(tool, "render scale.qel no.png --value 8=5", "no scale or meter of the drawing has this id; scales: 7")


def test_an_identifier_in_other_letters_is_found(tool):
    drawing = tool.drawing("cn.qel", SCALE.format("X").encode().replace(b"X", gb("水位")))
    assert tool.pixels(tool.shot(drawing, "--value 水位=5"), (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


RANGE = "--size 80x60 --set {0}.max=20 --set {0}.scale-end=20 "


def test_a_meter_that_no_number_reaches_is_set_by_identifier(tool):
    drawing = tool.drawing("two.qel", DIAL.format("first", 40), DIAL.format("second", 40))
    low, high = (tool.image(tool.draw("a.bmp", drawing, RANGE.format("second") + f"--value second={value}"))
                 for value in (3, 13))
    assert low.tobytes() != high.tobytes()


def test_the_dial_of_an_identifier_is_that_of_the_number_0(tool):
    drawing = tool.drawing("dial.qel", DIAL.format("dial", 0))
    by_number, by_id, other = (
        tool.image(tool.draw("a.bmp", drawing, RANGE.format(name) + f"--value {name}={value}")).tobytes()
        for name, value in (("0", 7.5), ("dial", 7.5), ("dial", 12.5)))
    assert by_id == by_number
    assert by_id != other


@pytest.mark.parametrize("color, value", rows(("its own number", "ff0000", "3"), ("another number", BACKGROUND, "2"),
                                              ("a number that is truncated", "ff0000", "3.9")))
def test_a_lamp_follows_a_value(tool, color, value):
    assert tool.pixels(tool.shot(tool.drawing("lamp.qel", LAMP), f"--value lamp={value}"), (20, 15)) == [color]


def test_a_lamp_of_an_identifier_does_not_follow_the_status(tool):
    drawing = tool.drawing("lamp.qel", LAMP)
    assert tool.pixels(tool.shot(drawing, "--value lamp=0 --status 3"), (20, 15)) == [BACKGROUND]


# ---- texts


def drawn(tool, content, options=""):
    """What a text shows."""
    return tool.image(tool.shot(tool.drawing("text.qel", TEXT.format(content)), options)).tobytes()


@pytest.mark.parametrize("content, options, shown", rows(
    ("a number in the place of its run", "##.#", "--value temp=12.34", "12.3"),
    ("a number that is right-aligned", "###", "--value temp=7", "  7"),
    ("another text", "a", "--text temp=bc", "bc"),
    ("a text with an equals sign", "a", "--text temp=b=c", "b=c"),
    ("no text", "a", "--text temp=", " "),
    ("a number in another text", "a", "--value temp=7.5 --text 'temp=#.#'", "7.5"),
    ("a text of other letters", "a", "--text temp=泵", "泵")))
def test_a_text_shows(tool, content, options, shown):
    picture = drawn(tool, content, options)
    with_text = TEXT.format("X").encode().replace(b"X", gb(shown))
    if shown != shown.strip():  # blanks at the ends are not of the file
        tool.drawing("same.qel", TEXT.format("a"))
        assert picture == tool.image(tool.shot("same.qel", f"--text 'temp={shown}'")).tobytes()
    else:
        assert picture == tool.image(tool.shot(tool.drawing("same.qel", with_text))).tobytes()
    assert picture != drawn(tool, content)


# ---- quality


@pytest.fixture
def marked(tool):
    """The pictures of a rectangle with each quality."""
    drawing = tool.drawing("mark.qel", '<rect id="41" style="0x1" dr="1" fg="0xffffff" lnwid="0" crd="0 0 40 30"/>')
    return [tool.image(tool.shot(drawing, f"--quality 41={quality}")) for quality in range(3)]


def test_a_good_element_is_as_ever(tool, marked):
    assert marked[0].tobytes() == tool.image(tool.shot("mark.qel")).tobytes()


def test_a_stale_element_is_hatched_in_grey(marked):
    colors = {color for _, color in marked[1].getcolors()}
    assert len(colors) == 2
    assert all(red == green == blue for red, green, blue in colors)


def test_a_bad_element_has_a_red_cross_besides(marked):
    assert any(red > 2 * green and red > 2 * blue for _, (red, green, blue) in marked[2].getcolors())
    assert not any(red > 2 * green and red > 2 * blue for _, (red, green, blue) in marked[1].getcolors())


# ---- what is refused

DRAWING = ('<rect id="box" crd="1 1 9 9"/>', '<meter id="bar" usc="0" crd="1 1 9 9"/>', LAMP,
           '<scale id="level" scid="7" crd="1 1 9 9"/>', TEXT.format("abc"))


@pytest.mark.parametrize("part, options", rows(
    ("an identifier that nothing bears", "--value levle=1: no element of the drawing has the identifier 'levle'; "
     "did you mean 'level'?", "--value levle=1"),
    ("one that is like none", "the identifier 'motor'; 'qel info' lists them", "--set motor.max=1"),
    ("one of characters that drawings do not have", "no element of the drawing has the identifier", "--value 🙂=1"),
    ("a text that nothing bears", "no element of the drawing has the identifier 'tmp'", "--text tmp=1"),
    ("a quality that nothing bears", "no element of the drawing has the identifier 'tmp'", "--quality tmp=1"),
    ("the value of a rectangle", "--value box=1: no meter, scale, status element or text has this identifier",
     "--value box=1"),
    ("the setting of a lamp", "--set lamp.max=1: no scale or meter has this identifier", "--set lamp.max=1"),
    ("the text of a rectangle", "--text box=a: no text has this identifier", "--text box=a"),
    ("a selector of meters on a scale", "a scale does not know the selector 'alarm'", "--set level.alarm=1"),
    ("a selector of scales on a meter", "a meter does not know the selector 'start-code'", "--set bar.start-code=1"),
    ("no ticks", "--set bar.ticks=0: 'ticks' takes 1 or more", "--set bar.ticks=0"),
    ("a scale that the meter has not", "the meter has no scale to show", "--set bar.scale=1"),
    ("a selector that is none", "--set tank.levle=1: unknown selector 'levle'", "--set tank.levle=1"),
    ("a setting without identifier", "--set wants ID.SELECTOR=VALUE, not '.max=1'", "--set .max=1"),
    ("a point in another setting", "'max' takes whole numbers only", "--set level.max=1.5"),
    ("no number", "is no number of 32 bits", "--value level=high"),
    ("a range", "a range is for 'qel animate'", "--value level=1..5"),
    ("a number that is too large", "an id is a whole number", "--value 99999999999=1"),
    ("a quality of 3", "--quality box=3: a quality is 0 (good), 1 (stale) or 2 (bad)", "--quality box=3"),
    ("a quality of less than none", "a quality is 0 (good)", "--quality box=-1"),
    ("a quality without number", "--quality wants ID=0, ID=1 or ID=2, not 'box='", "--quality box="),
    ("a text without identifier", "--text wants ID=TEXT, not '=a'", "--text =a"),
    ("a text that is too long", "a text has at most 255 bytes", "--text temp=" + "a" * 256),
    ("a text of characters that drawings do not have", "a character that the drawing's encoding does not have", "--text temp=🙂")))
def test_render_refuses(tool, part, options):
    tool.drawing("ids.qel", *DRAWING)
    assert_refused(tool, "render ids.qel no.png " + options, part)


# ---- what is taken and shows nowhere


@pytest.mark.parametrize("line, option, why", rows(
    ("a text without a run", TEXT.format("abc"), "--value temp=5", "the text has no run of # (##.#) that shows it"),
    ("a clock", '<meter id="clock" mtype="clock" upin="1" crd="20 15 12 4 4 36 28"/>', "--value clock=5",
     "a clock shows the time and no value"),
    ("a dial without pointer", DIAL.format("dial", 40).replace("upin", "dpin"), "--value dial=5",
     "the meter has no pointer that shows it (upin is 0)"),
    ("a bar without a figure", '<meter id="bar" crd="2 2 20 28"/>', "--value bar=5",
     "there is no figure in the meter for the bar that shows it"),
    ("a scale that shows none", '<scale id="s" sctype="round" style="0x0" crd="20 15 14 9 3"/>', "--value s=5",
     "the scale has neither a fill (style) nor a pointer (pin) that shows it"),
    ("a setting of other meters", DIAL.format("dial", 40), "--set dial.sectors=3",
     "a meter of type round does not follow 'sectors'"),
    ("a setting of other scales", SCALE.format("s"), "--set s.start-code=3",
     "a scale of type horizdn does not follow 'start-code'")))
def test_render_warns_of_what_shows_nowhere(tool, line, option, why):
    tool.drawing("live.qel", line)
    common = "--time 10:10:10 " if "clock" in line else ""
    without = tool.image(tool.shot("live.qel", common)).tobytes()
    result = tool.line(f"render live.qel live.bmp --size 40x30 {common}{option}")
    assert result == (0, "", f"qel: warning: {option}: {why}")
    assert tool.image("live.bmp").tobytes() == without


def test_one_that_shows_it_is_enough(tool):
    tool.drawing("live.qel", TEXT.format("abc"), TEXT.format("##"))
    assert tool.line("render live.qel live.bmp --value temp=5") == (0, "", "")


def test_a_read_out_shows_the_value_of_a_meter_that_no_number_reaches(tool):
    tool.drawing("live.qel", '<meter id="gauge" mtid="5" mtype="roundUpgrade" crd="20 15 12 4 4 36 28"/>')
    assert tool.line("render live.qel live.bmp --set gauge.read-out=1 --value gauge=5") == (0, "", "")
