"""qel render: sizes, kinds of files, options, and what becomes of files that are there. Live values are in
test_live_values.py, names of files in test_paths.py."""
import struct

import pytest

from support import BACKGROUND, PLAIN, assert_refused, gb

EMR_CREATEBRUSHINDIRECT, EMR_ELLIPSE, EMR_BITBLT = 39, 42, 76
RED = "ff0000"


@pytest.fixture
def plain(tool):
    return tool.drawing("plain.qel", PLAIN)


@pytest.fixture(scope="module")
def shown(studio):
    """A folder with pictures of the plain drawing that several tests look at."""
    plain = studio.drawing("plain.qel", PLAIN)
    for picture, options in (("default.png", ""), ("small.bmp", "--size 40x30"), ("small.jpg", "--size 40x30"),
                             ("default.emf", ""), ("dark.emf", "--background 123456"),
                             ("left.bmp", "--rotate 90 --size 30x40"), ("right.bmp", "--rotate -90 --size 30x40")):
        studio.draw(picture, plain, options)
    return studio


def test_render_says_nothing_and_ends_with_0(tool, plain):
    assert tool.run("render", plain, "a.png") == (0, "", "")
    assert tool.files() == ["a.png", plain]


# ---- sizes


def test_the_default_size_is_a_whole_multiple_of_at_least_800_wide(shown):
    assert shown.size("default.png") == (800, 600)


@pytest.mark.parametrize("width, height, size", ((300, 100, (900, 300)), (799, 10, (1598, 20)), (800, 10, (800, 10)),
                                                 (801, 10, (801, 10))))
def test_the_default_size_follows_that_of_the_drawing(tool, width, height, size):
    tool.file("whole.qel", f'<qel width="{width}" height="{height}"/>')
    assert tool.size(tool.draw("whole.png", "whole.qel")) == size


def test_size_gives_the_pixels_of_the_picture(tool, plain):
    assert tool.size(tool.draw("a.png", plain, "--size 123x77")) == (123, 77)


FLAT = '<rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="2 2 6 6"/></qel>'


@pytest.mark.parametrize("drawing, part", (('<qel width="0" height="9"/>', "give one with --size"),
                                           ('<qel width="1" height="99999"/>', "give a size with --size")),
                         ids=("a drawing without size", "a drawing out of proportion"))
def test_a_drawing_from_which_no_size_follows_is_refused(tool, drawing, part):
    tool.file("flat.qel", drawing)
    assert_refused(tool, "render flat.qel a.png", part)


def test_a_drawing_without_size_takes_that_of_the_picture_as_its_own(tool):
    tool.file("flat.qel", '<qel width="0" height="9">' + FLAT)
    picture = tool.draw("a.bmp", "flat.qel", "--size 20x10")
    assert tool.pixels(picture, (5, 5), (6, 6)) == [RED, BACKGROUND]


def test_a_drawing_without_size_takes_it_lying_on_its_side(tool):
    tool.file("flat.qel", '<qel width="0" height="9">' + FLAT)
    picture = tool.draw("a.bmp", "flat.qel", "--size 10x20 --rotate 90")
    # Of 20 by 10: x' = y, y' = 20 - x.
    assert tool.pixels(picture, (2, 14), (2, 13)) == [RED, BACKGROUND]


# ---- kinds of files


@pytest.mark.parametrize("picture, begin", (("default.png", b"\x89PNG"), ("small.bmp", b"BM"),
                                            ("small.jpg", b"\xff\xd8\xff")))
def test_the_extension_chooses_the_kind_of_file(shown, picture, begin):
    assert shown.bytes(picture).startswith(begin)


def test_a_jpeg_has_its_size(shown):
    assert shown.size("small.jpg") == (40, 30)


def test_extensions_may_be_in_capitals_and_jpeg_with_four_letters(tool, plain):
    picture = tool.draw("a.JPEG", plain, "--size 41x31")
    assert tool.bytes(picture).startswith(b"\xff\xd8\xff")
    assert tool.size(picture) == (41, 31)


def emf_words(tool, picture):
    content = tool.bytes(picture)
    return struct.unpack("<%dI" % (len(content) // 4), content)


def emf_records(tool, picture, kind):
    """The words of every record of this kind."""
    words, at, found = emf_words(tool, picture), 0, []
    while at < len(words):
        count = words[at + 1] // 4
        if words[at] == kind:
            found.append(words[at:at + count])
        at += count
    return found


def test_an_emf_has_its_signature(shown):
    assert shown.bytes("default.emf")[40:44] == b" EMF"


def test_the_frame_of_an_emf_is_the_picture(shown):
    header = emf_words(shown, "default.emf")
    frame, device, millimetres = header[8:10], header[18:20], header[20:22]
    # The frame is in hundredths of a millimetre, from 0,0 to these.
    assert header[6:8] == (0, 0)
    size = [(length * pixels + mm * 50) // (mm * 100) for length, pixels, mm in zip(frame, device, millimetres)]
    assert size == [800, 600]


def test_the_first_brush_of_an_emf_is_the_background(shown):
    assert emf_records(shown, "dark.emf", EMR_CREATEBRUSHINDIRECT)[0][4] == 0x563412


def test_an_emf_fills_the_whole_picture_and_then_the_rectangle(shown):
    # The rectangle 10 10 30 20 times 20, as left, top, width and height.
    blits = [record[6:10] for record in emf_records(shown, "dark.emf", EMR_BITBLT)]
    assert blits == [(0, 0, 800, 600), (200, 200, 400, 200)]


def test_an_emf_records_the_calls_of_the_engine(tool):
    tool.drawing("round.qel", '<ellipse crd="10 10 30 20"/>')
    picture = tool.draw("round.emf", "round.qel")
    # The record's right and bottom are inclusive.
    assert [record[2:6] for record in emf_records(tool, picture, EMR_ELLIPSE)] == [(200, 200, 599, 399)]


# ---- what the picture shows


def test_the_background_is_light_grey(shown):
    assert shown.pixels("small.bmp", (0, 0)) == [BACKGROUND]


def test_background_gives_its_color(tool, plain):
    assert tool.pixels(tool.shot(plain, "--background 123456"), (0, 0)) == ["123456"]


def test_a_filled_rectangle_begins_at_its_left_top(shown):
    assert shown.pixels("small.bmp", (10, 10)) == [RED]


def test_a_filled_rectangle_ends_before_its_right_bottom(shown):
    assert shown.pixels("small.bmp", (29, 19)) == [RED]


def test_nothing_is_drawn_to_the_right_of_a_filled_rectangle(shown):
    assert shown.pixels("small.bmp", (30, 19)) == [BACKGROUND]


def test_rotate_turns_the_size(tool, plain):
    assert tool.size(tool.draw("a.png", plain, "--rotate 90")) == (810, 1080)


# 10..30 by 10..20 of 40 by 30, counter-clockwise: x' = y, y' = 40 - x.
@pytest.mark.parametrize("place, color", (((10, 10), RED), ((19, 29), RED), ((20, 29), BACKGROUND)))
def test_rotate_turns_the_drawing_counter_clockwise(shown, place, color):
    assert shown.pixels("left.bmp", place) == [color]


# Clockwise: x' = 30 - y, y' = x.
@pytest.mark.parametrize("inside, outside", (((10, 10), (9, 10)), ((19, 29), (19, 30))))
def test_a_negative_angle_turns_the_drawing_clockwise(shown, inside, outside):
    assert shown.pixels("right.bmp", inside, outside) == [RED, BACKGROUND]


def test_rotate_goes_by_quarter_turns(tool, plain):
    picture = tool.draw("a.bmp", plain, "--rotate 100 --size 30x40")
    assert tool.pixels(picture, (10, 10), (20, 29)) == [RED, BACKGROUND]


@pytest.fixture
def blinking(tool):
    return tool.drawing("blink.qel", '<rect style="0x1" dr="1" fg="0xff00 glt" lnwid="0" crd="0 0 40 30"/>')


def test_a_blinking_color_shows(tool, blinking):
    assert tool.pixels(tool.shot(blinking), (5, 5)) == ["00ff00"]


def test_blink_shows_black_over_an_older_picture(tool, blinking):
    tool.shot(blinking)
    assert tool.pixels(tool.shot(blinking, "--blink"), (5, 5)) == ["000000"]


@pytest.fixture(scope="module")
def pressed(studio):
    """Two pictures of a rectangle that can be pressed."""
    rect = '<rect style="0x1" dr="1" fg="0xff" lnwid="0" flag="0x4000" crd="10 10 30 20"/>'
    drawing = studio.drawing("press.qel", rect)
    studio.shot(drawing, "--pressed", "pressed.bmp")
    studio.shot(drawing, "", "idle.bmp")
    return studio


def test_without_pressed_all_stays_in_its_place(pressed):
    assert pressed.pixels("idle.bmp", (11, 11), (31, 21)) == [RED, BACKGROUND]


def test_pressed_leaves_the_old_place(pressed):
    assert pressed.pixels("pressed.bmp", (11, 11)) == [BACKGROUND]


def test_pressed_moves_by_two_pixels(pressed):
    assert pressed.pixels("pressed.bmp", (31, 21)) == [RED]


# ---- texts


@pytest.fixture(scope="module")
def written(studio):
    """Pictures of a text in several fonts, of none, and of Chinese ones."""
    studio.drawing("words.qel", '<text fg="0x0" crd="0 0 40 30">Ab</text>')
    for picture, options in (("words", ""), ("same", '--font "WenQuanYi Zen Hei Mono"'),
                             ("other", '--font "WenQuanYi Micro Hei"')):
        studio.draw(picture + ".png", "words.qel", options)
    studio.file("blank.qel", '<qel width="40" height="30"/>')
    for name, words in (("pump", gb("泵")), ("water", gb("水")), ("ask", b"??")):
        drawing = b'<qel width="40" height="30"><text fg="0x0" crd="0 0 40 30">' + words + b"</text></qel>"
        studio.file(name + ".qel", drawing)
    for name in ("blank", "pump", "water", "ask"):
        studio.draw(name + ".png", name + ".qel")
    return studio


def test_a_text_shows(written):
    assert written.bytes("words.png") != written.bytes("blank.png")


def test_there_is_a_default_font(written):
    assert written.bytes("words.png") == written.bytes("same.png")


def test_font_draws_in_that_face(written):
    assert written.bytes("words.png") != written.bytes("other.png")


def test_chinese_characters_are_drawn(written):
    assert written.bytes("pump.png") != written.bytes("ask.png")


def test_each_chinese_character_is_its_own(written):
    assert written.bytes("pump.png") != written.bytes("water.png")


# ---- files that are there: what is replaced stays until the new picture is complete


def test_a_failed_render_leaves_the_older_picture(tool):
    tool.file("flat.qel", '<qel width="0" height="9"/>')
    tool.file("old.png", "older")
    assert tool.run("render", "flat.qel", "old.png").status == 2
    assert tool.bytes("old.png") == b"older"
    assert tool.files() == ["flat.qel", "old.png"]


def test_a_good_render_replaces_the_older_picture(tool, plain):
    tool.file("old.png", "older")
    assert tool.size(tool.draw("old.png", plain)) == (800, 600)
    assert tool.files() == ["old.png", "plain.qel"]


def test_a_file_beside_the_picture_stays(tool, plain):
    tool.file("old.png.part", "mine")
    tool.draw("old.png", plain)
    assert tool.bytes("old.png.part") == b"mine"
    assert tool.files() == ["old.png", "old.png.part", "plain.qel"]
