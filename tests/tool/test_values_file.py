"""Values from a file: qel render and qel animate with --values, one flat JSON object of names; what the names may be,
what they win over, and what is refused."""
import json

import pytest

from support import BACKGROUND, assert_refused, first_difference, gb, rows

# The fill of a scale reaches from 10 to 10 + 20 * value / (max - min); it is white by default.
SCALE = '<scale id="{}" scid="7" sctype="horizdn" hidesc="1" crd="10 10 30 20"/>'
LAMP = '<status id="lamp" stx="3"><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="10 10 30 20"/></status>'
BOX = '<rect id="box" style="0x1" dr="1" fg="0xff" clr="0xff00" lnwid="1" crd="10 10 30 20"/>'
TEXT = '<text id="temp" crd="0 0 40 30">{}</text>'
DIAL = '<meter id="{}" mtid="{}" mtype="{}" upin="1" crd="20 15 10 5 5 35 25"/>'
LARGE = "--size 160x120 "  # so that a dial is large enough for its parts
FRAME = '<frame><rect style="0x0" lnwid="1" crd="10 10 30 20"/></frame>'


def with_values(tool, drawing, values, options=""):
    """The picture of a drawing with values that stand in a file."""
    tool.file("v.json", values if isinstance(values, (str, bytes)) else json.dumps(values))
    return tool.shot(drawing, "--values v.json " + options)


@pytest.mark.parametrize("bearer, values, end", rows(
    ("a value", "level", {"level": 5}, 20),
    ("an identifier with a point", "tank.level", {"tank.level": 5}, 20),
    ("a real value", "level", {"level": 2.5}, 15),
    ("a power of ten", "level", '{"level": 25e-1}', 15),
    ("a number in a text", "level", {"level": " 5 "}, 20),
    ("true counts as 1", "level", {"level.max": 2, "level": True}, 20),
    ("a setting by name", "level", {"level.max": 20, "level": 5}, 15),
    ("the last point divides", "tank.level", {"tank.level.max": 20, "tank.level": 5}, 15),
    ("an identifier that ends as a selector does is itself", "tank.max", {"tank.max": 5}, 20),
    ("and has settings behind another point", "tank.max", {"tank.max.max": 20, "tank.max": 5}, 15),
    ("an identifier may begin with #", "#7", {"#7": 5}, 20),
    ("an identifier may have an equals sign", "a=b", {"a=b.max": 20, "a=b": 5}, 15),
    ("the later one of two names counts", "level", {"level": 2, "level.value": 5}, 20)))
def test_a_value_fills_a_scale(tool, bearer, values, end):
    picture = with_values(tool, tool.drawing("scale.qel", SCALE.format(bearer)), values)
    assert tool.pixels(picture, (end - 1, 18), (end, 18)) == ["ffffff", BACKGROUND]


@pytest.mark.parametrize("values", rows(
    ("decimal", {"#7": 5}), ("hexadecimal", {"#0x7": 5}), ("with a setting", {"#7.max": 20, "#7": 10})))
def test_a_number_reaches_a_scale_without_an_identifier(tool, values):
    drawing = tool.drawing("scale.qel", SCALE.replace('id="{}" ', ""))
    picture = with_values(tool, drawing, values)
    assert tool.pixels(picture, (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


def test_bytes_of_the_drawing_are_found_by_letters_of_the_file(tool):
    drawing = tool.drawing("cn.qel", SCALE.format("X").encode().replace(b"X", gb("水位")))
    assert tool.pixels(with_values(tool, drawing, {"水位": 5}), (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


@pytest.mark.parametrize("status, color", rows(("its own", 3, "ff0000"), ("that of another one", 2, BACKGROUND),
                                               ("that of all", -1, "ff0000")))
def test_a_lamp_is_shown_at_the_status_number(tool, status, color):
    lamp = LAMP.replace('id="lamp" ', "")
    drawing = tool.drawing("lamps.qel", lamp, '<status stx="2"><rect crd="0 0 5 5"/></status>')
    assert tool.pixels(with_values(tool, drawing, {"#status": status}), (20, 15)) == [color]


@pytest.mark.parametrize("values, inner, outer", rows(
    ("the first fill colour", {"box.fg": "#0000FF"}, "0000ff", "00ff00"),
    ("the outline", {"box.clr": "#0000FF"}, "ff0000", "0000ff"),
    ("a colour as its number", {"box.fg": 0xFF0000}, "0000ff", "00ff00"),
    ("hidden", {"box.visible": False}, BACKGROUND, BACKGROUND),
    ("hidden by a number", {"box.visible": 0}, BACKGROUND, BACKGROUND)))
def test_colours_and_visibility_of_a_shape(tool, values, inner, outer):
    picture = with_values(tool, tool.drawing("box.qel", BOX), values)
    assert tool.pixels(picture, (20, 15), (10, 15)) == [inner, outer]


def test_a_colour_that_blinks_is_black_in_the_dark_phase(tool):
    drawing = tool.drawing("box.qel", BOX)
    values = {"box.fg": "#0000FF glt"}
    assert tool.pixels(with_values(tool, drawing, values), (20, 15)) == ["0000ff"]
    assert tool.pixels(with_values(tool, drawing, values, "--blink"), (20, 15)) == ["000000"]


def test_a_parameter_colours_a_frame(tool):
    picture = with_values(tool, tool.drawing("frame.qel", FRAME), {"#param.0": "#0000FF"})
    assert tool.pixels(picture, (10, 15)) == ["0000ff"]


# Each says the same as the options beside it.
@pytest.mark.parametrize("lines, values, options", rows(
    ("a text", [TEXT.format("off")], {"temp.text": "on = 1"}, "--text 'temp=on = 1'"),
    ("a number as a text", [TEXT.format("off")], {"temp.text": 5}, "--text temp=5"),
    ("a number in a text", [TEXT.format("##.#")], {"temp": 12.3}, "--value temp=12.3"),
    ("a quality", [BOX], {"box.quality": 2}, "--quality box=2"),
    ("a dial", [DIAL.format("d", 0, "round")], {"d.pin-color": "#FF0000", "d": 7.5},
     "--set d.pin-color=#FF0000 --value d=7.5"),
    ("a dial by number", [DIAL.format("", 0, "round")], {"#0.pin-color": "#FF0000", "#0": 7.5},
     "--set 0.pin-color=#FF0000 --value 0=7.5"),
    ("sectors by identifier", [DIAL.format("d", 0, "sector")], {"d.sectors": 2, "d.sector-1": 3, "d.sector-2": 1},
     "--set 0.sectors=2 --value 1=3 --value 2=1"),
    ("sectors by number", [DIAL.format("", 0, "sector")], {"#0.sectors": 2, "#1": 3, "#2": 1},
     "--set 0.sectors=2 --value 1=3 --value 2=1"),
    ("a full circle that is there", [DIAL.format("d", 0, "round")], {"d.full-circle": 0}, "")))
def test_a_file_says_the_same_as_options(tool, lines, values, options):
    drawing = tool.drawing("same.qel", *lines)
    wanted = tool.image(tool.shot(drawing, LARGE + options))
    assert first_difference(tool.image(with_values(tool, drawing, values, LARGE)), wanted) == ""
    assert (wanted.tobytes() != tool.image(tool.shot(drawing, LARGE)).tobytes()) == bool(options)


@pytest.mark.parametrize("number", ["nan", "inf", "-inf", "NaN"])
def test_what_is_no_number_makes_the_quality_bad(tool, number):
    drawing = tool.drawing("dial.qel", DIAL.format("d", 0, "round"))
    wanted = tool.image(tool.shot(drawing, LARGE + "--quality d=2"))
    assert first_difference(tool.image(with_values(tool, drawing, {"d": number}, LARGE)), wanted) == ""
    assert wanted.tobytes() != tool.image(tool.shot(drawing, LARGE)).tobytes()


def test_other_options_come_after_the_file(tool):
    drawing = tool.drawing("scale.qel", SCALE.format("level"))
    picture = with_values(tool, drawing, {"level": 9}, "--value level=5")
    assert tool.pixels(picture, (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


def test_a_mark_of_utf_8_may_stand_before_the_object(tool):
    drawing = tool.drawing("scale.qel", SCALE.format("level"))
    picture = with_values(tool, drawing, '\ufeff{"level": 5}')
    assert tool.pixels(picture, (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


def test_an_empty_object_sets_nothing(tool):
    drawing = tool.drawing("scale.qel", SCALE.format("level"))
    assert first_difference(tool.image(with_values(tool, drawing, {})), tool.image(tool.shot(drawing))) == ""


def test_animate_holds_the_values_in_all_frames(tool):
    tool.drawing("scale.qel", SCALE.format("level"), LAMP)
    tool.file("v.json", '{"level": 5}')
    result = tool.line("animate scale.qel a.gif --size 40x30 --values v.json --status 2..3 --frames 2")
    assert result == (0, "", "")
    assert tool.pixels("a.gif", (19, 18), (20, 18)) == ["ffffff", BACKGROUND]


def test_a_value_that_shows_nowhere_is_a_warning(tool):
    tool.drawing("text.qel", TEXT.format("off"))
    tool.file("v.json", '{"temp": 5}')
    result = tool.line("render text.qel a.png --values v.json")
    assert (result.status, result.err) == (
        0, "qel: warning: 'v.json', temp: the text has no run of # (##.#) that shows it")


@pytest.mark.parametrize("values, part", rows(
    ("nothing", "", "'v.json': line 1, column 1: it is no JSON object"),
    ("a comma too many", '{\n  "level": 5,\n}', "'v.json': line 3, column 1: it is no JSON object"),
    ("another kind of file", "level=5", "'v.json': line 1, column 1: it is no JSON object"),
    ("a list", "[5]", "it is no JSON object of names and values"),
    ("bytes that are no UTF-8", b'{"level": "\xff"}', "it is no JSON object"),
    ("a name twice", '{"level": 5, "level": 6}', "the name 'level' is there twice"),
    ("a number without end", '{"level": 1e999}', "a number in it is too large"),
    ("an object in it", '{"level": {"max": 5}}', "'level' wants a number, a text, true or false"),
    ("a list in it", '{"level": [5]}', "'level' wants a number, a text, true or false"),
    ("null", '{"level": null}', "'level' wants a number, a text, true or false"),
    ("a word for a number", '{"level": "much"}', "'v.json', level: 'much' is no number"),
    ("an empty text for a number", '{"level": ""}', "'v.json', level: '' is no number"),
    ("nan for a setting", '{"level.max": "nan"}', "'v.json', level.max: 'nan' is no number"),
    ("an unknown identifier", '{"levle": 5}', "no element of the drawing has the identifier 'levle'; did you mean 'level'?"),
    ("an unknown setting", '{"level.mxa": 5}', "there is no 'mxa' of 'level'"),
    ("a text of what has none", '{"level.text": "on"}', "no text has this identifier"),
    ("a colour of what has none", '{"level.fg": "#FF0000"}', "no shape has this identifier"),
    ("a sector of what has none", '{"level.sector-1": 5}', "no meter of the type sector has this identifier"),
    ("a sector too many", '{"level.sector-33": 5}', "there is no 'sector-33' of 'level'"),
    ("a setting that refuses it", '{"level.ticks": 0}', "'ticks' takes 1 or more"),
    ("a setting that takes whole numbers", '{"level.max": 2.5}', "it takes whole numbers of 32 bits only"),
    ("a setting of more than 32 bits", '{"level.max": 4294967296}', "it takes whole numbers of 32 bits only"),
    ("a quality that there is not", '{"level.quality": 3}', "a quality is 0 (good), 1 (stale) or 2 (bad)"),
    ("a number that nothing has", '{"#9": 5}', "no scale or meter of the drawing has this id"),
    ("a number that is none", '{"#level": 5}', "an id is a whole number"),
    ("nan by number", '{"#7": "nan"}', "'nan' is no number"),
    ("too much by number", '{"#7": 1e39}', "the number is too large for a value by number"),
    ("an unknown setting by number", '{"#7.mxa": 5}', "unknown selector 'mxa'"),
    ("a parameter that there is not", '{"#param.4": 5}', "there is no such parameter"),
    ("a status without status elements", '{"#status": 1}', "the drawing has no status element")))
def test_what_a_file_may_not_say(tool, values, part):
    tool.drawing("scale.qel", SCALE.format("level"))
    tool.file("v.json", values)
    assert_refused(tool, "render scale.qel no.png --values v.json", part)


def test_a_file_that_is_not_there_is_told(tool):
    tool.drawing("scale.qel", SCALE.format("level"))
    assert_refused(tool, "render scale.qel no.png --values none.json", "cannot read the values 'none.json'")


def test_two_files_are_refused(tool):
    tool.drawing("scale.qel", SCALE.format("level"))
    tool.file("v.json", "{}")
    assert_refused(tool, "render scale.qel no.png --values v.json --values v.json", "--values is given twice")
