"""--scale, --smooth and --transparent: how large pixels are, how smooth edges, and what shows through."""
import io
import math
import struct

import pytest
from PIL import Image

from gif import Animation
from support import BACKGROUND, PLAIN, assert_refused, first_difference, rows

EMR_EXTCREATEFONTINDIRECTW = 82
RED = "ff0000"
UPRIGHT = '<line lnwid="2" clr="0x0" crd="20 2 20 28"/>'
SLANTED = '<line lnwid="3" clr="0x4080c0" crd="3 4 37 22"/>'  # c0, 80, 40
SLANTED_COLOR = (0xc0, 0x80, 0x40)


@pytest.fixture(scope="module")
def shown(studio):
    """A folder with the pictures that several tests look at."""
    for name, lines in (("plain", PLAIN), ("upright", UPRIGHT), ("slanted", SLANTED)):
        studio.drawing(name + ".qel", lines)
    for name, options in (("jagged", "--smooth 0"), ("twice", "--smooth 2"), ("smooth", "--smooth 4"),
                          ("through", "--smooth 4 --transparent"), ("cut", "--smooth 0 --transparent")):
        studio.shot("slanted.qel", options + ("" if "transparent" in options else " --background ffffff"),
                    name + ".png")
    studio.shot("plain.qel", "--transparent", "rect.png")
    return studio


def with_alpha(tool, picture):
    """Its pixels as red, green, blue and alpha; the file has all four."""
    with Image.open(tool.folder / picture) as image:
        assert image.mode == "RGBA"
        return list(image.getdata())


def emf_records(content):
    """All records but those of fonts: the system leaves what chance has it at their ends."""
    at, found = 0, []
    while at < len(content):
        kind, size = struct.unpack_from("<II", content, at)
        if kind != EMR_EXTCREATEFONTINDIRECTW:
            found.append(content[at:at + size])
        at += size
    return found


def colors(tool, picture):
    return set(tool.image(picture).getdata())


# ---- the pixel scale


@pytest.mark.parametrize("options, size", (("", (800, 600)), ("--scale 200", (1600, 1200)), ("--scale 50", (400, 300)),
                                           ("--scale 150 --zoom 2", (120, 90)), ("--scale 400 --width 100", (100, 75)),
                                           ("--scale 400 --size 50x60", (50, 60))))
def test_scale_makes_a_picture_larger_that_has_no_size_of_its_own(shown, options, size):
    assert shown.size(shown.draw("sized.png", "plain.qel", options)) == size


@pytest.mark.parametrize("scale, width", ((50, 1), (100, 2), (150, 3), (200, 4), (400, 8)))
def test_scale_widens_pens(shown, scale, width):
    picture = shown.draw("wide.png", "upright.qel", f"--smooth 0 --scale {scale} --zoom 2")
    image = shown.image(picture)
    row = [image.getpixel((x, image.height // 2)) for x in range(image.width)]
    assert row.count((0, 0, 0)) == width


def test_scale_alone_does_not_move_what_follows_the_size(shown):
    plain = shown.image(shown.shot("plain.qel"))
    assert first_difference(shown.image(shown.shot("plain.qel", "--scale 300", "scaled.bmp")), plain) == ""


@pytest.mark.parametrize("value", ("24", "1601", "0", "-100", "150.5", "200%"))
def test_a_scale_out_of_range_is_refused(tool, value):
    tool.drawing("plain.qel", PLAIN)
    assert_refused(tool, f"render plain.qel a.png --scale={value}", "--scale wants a percentage from 25 to 1600")


# ---- smooth edges


@pytest.mark.parametrize("samples", (2, 3, 4))
def test_upright_edges_are_the_same_smooth(shown, samples):
    plain = shown.image(shown.shot("plain.qel"))
    assert first_difference(shown.image(shown.shot("plain.qel", f"--smooth {samples}", "even.bmp")), plain) == ""


def test_slanted_edges_have_two_colors_without_smooth(shown):
    assert colors(shown, "jagged.png") == {(255, 255, 255), SLANTED_COLOR}


@pytest.mark.parametrize("picture, samples", (("twice.png", 4), ("smooth.png", 16)))
def test_smooth_edges_are_shares_of_the_samples(shown, picture, samples):
    allowed = {tuple(255 + (color - 255) * n / samples for color in SLANTED_COLOR) for n in range(samples + 1)}
    found = colors(shown, picture)
    assert len(found) > 2
    for color in found:
        assert any(all(abs(a - b) <= 1 for a, b in zip(color, one)) for one in allowed), color


def test_more_samples_make_more_shades(shown):
    assert len(colors(shown, "smooth.png")) > len(colors(shown, "twice.png"))


@pytest.mark.parametrize("kind, samples", (("png", 4), ("jpg", 4), ("jpeg", 4), ("bmp", 0)))
def test_pictures_for_screens_are_smooth_by_default(shown, kind, samples):
    drawn = {option: shown.bytes(shown.shot("slanted.qel", option, "default." + kind))
             for option in ("", "--smooth 0", "--smooth 4")}
    assert drawn[""] == drawn[f"--smooth {samples}"]
    assert drawn["--smooth 0"] != drawn["--smooth 4"]


def test_standard_output_is_smooth_by_default(shown):
    with open(shown.folder / "out.bin", "wb") as out:
        assert shown.run("render", "slanted.qel", "-", "--size", "40x30", "--background", "ffffff",
                         stdout=out).status == 0
    with Image.open(io.BytesIO(shown.bytes("out.bin"))) as image:
        assert first_difference(image.convert("RGB"), shown.image("smooth.png")) == ""


def test_transparent_edges_are_smooth_by_default(shown):
    shown.shot("slanted.qel", "--transparent", "default.png")
    assert with_alpha(shown, "default.png") == with_alpha(shown, "through.png")


def test_smooth_changes_nothing_of_an_emf(shown):
    plain = emf_records(shown.bytes(shown.draw("plain.emf", "slanted.qel")))
    assert len(plain) > 5
    assert emf_records(shown.bytes(shown.draw("smooth.emf", "slanted.qel", "--smooth 4"))) == plain


def test_scale_widens_the_pens_of_an_emf(shown):
    plain = emf_records(shown.bytes(shown.draw("plain.emf", "slanted.qel", "--size 40x30")))
    assert emf_records(shown.bytes(shown.draw("wide.emf", "slanted.qel", "--size 40x30 --scale 200"))) != plain


@pytest.mark.parametrize("value", ("1", "5", "-2", "2.5", "x"))
def test_other_numbers_of_samples_are_refused(tool, value):
    tool.drawing("plain.qel", PLAIN)
    assert_refused(tool, f"render plain.qel a.png --smooth={value}", "--smooth wants 2, 3 or 4 samples each way, or 0")


@pytest.mark.parametrize("options, is_smooth", (("", True), ("--smooth 0 ", False)))
def test_moving_needles_are_smooth_by_default(shown, options, is_smooth):
    # A partial draw onto the frame before has the plain pixels.
    shown.drawing("needle.qel", '<meter upin="1" mtype="round" crd="20 15 13 2 2 38 28"/>')
    common = options + "--size 80x60 --set 0.face-color=0xffffff --set 0.labels=0 --background ffffff "
    assert shown.line(f"animate needle.qel needle.gif {common} --frames 3 --value 0=0..9") == (0, "", "")
    frames = Animation(shown.folder / "needle.gif").frames
    stills = [shown.image(shown.draw("still.png", "needle.qel", common + f"--value 0={value}")) for value in (0, 5, 9)]
    assert [first_difference(*pair) for pair in zip(frames, stills)] == [""] * 3
    assert [len(set(frame.getdata())) > 4 for frame in frames] == [is_smooth] * 3


def test_frames_of_animate_are_smooth_and_scaled(shown):
    shown.drawing("moving.qel", SLANTED, '<text id="t" fg="0x0" crd="1 23 39 29">##</text>')
    options = "--size 80x60 --scale 200"
    result = shown.line(f"animate moving.qel moving.gif {options} --frames 2 --value t=10..20")
    assert result == (0, "", "")
    frame = Animation(shown.folder / "moving.gif").frames[1]
    still = shown.image(shown.draw("still.png", "moving.qel", options + " --value t=20"))
    assert first_difference(frame, still) == ""
    assert len(set(still.getdata())) > 3


# ---- what shows through


def test_transparent_is_transparent_where_nothing_is_painted(shown):
    pixels = with_alpha(shown, "rect.png")
    inside = [x in range(10, 30) and y in range(10, 20) for y in range(30) for x in range(40)]
    assert [pixel == (255, 0, 0, 255) for pixel in pixels] == inside
    assert [pixel[3] == 0 for pixel in pixels] == [not there for there in inside]


def test_transparent_edges_are_whole_or_nothing_without_smooth(shown):
    assert {pixel[3] for pixel in with_alpha(shown, "cut.png")} == {0, 255}


def test_smooth_edges_are_transparent_in_shares_of_the_samples(shown):
    found = {pixel[3] for pixel in with_alpha(shown, "through.png")}
    assert {0, 255} < found
    assert all(min(abs(alpha - 255 * n / 16) for n in range(17)) <= 1 for alpha in found)


def test_the_color_of_a_transparent_edge_is_that_of_the_line(shown):
    # Alpha times the colour is kept in 8 bits on the way, so that faint pixels tell the colour roughly.
    faint = [pixel for pixel in with_alpha(shown, "through.png") if 0 < pixel[3] < 255]
    assert faint
    for *color, alpha in faint:
        assert all(abs(got - wanted) <= 255 / alpha + 1 for got, wanted in zip(color, SLANTED_COLOR)), (color, alpha)


@pytest.mark.parametrize("ground", ("000000", "ffffff", "3366cc"))
def test_a_transparent_picture_over_a_ground_is_one_with_that_background(shown, ground):
    drawn = shown.image(shown.shot("slanted.qel", f"--smooth 4 --background {ground}", "ground.png"))
    below = tuple(bytes.fromhex(ground))
    for (*color, alpha), wanted in zip(with_alpha(shown, "through.png"), drawn.getdata()):
        over = [(c * alpha + b * (255 - alpha)) / 255 for c, b in zip(color, below)]
        assert all(abs(a - b) <= 1.5 for a, b in zip(over, wanted)), (color, alpha, wanted)


def test_texts_of_a_transparent_picture_have_the_face_of_font(shown):
    shown.drawing("words.qel", '<text fg="0x0" crd="0 0 40 30">Ab</text>')
    faces = [shown.bytes(shown.draw("words.png", "words.qel", "--transparent " + option))
             for option in ("", '--font "WenQuanYi Zen Hei Mono"', '--font "WenQuanYi Micro Hei"')]
    assert faces[0] == faces[1] != faces[2]


def test_a_transparent_picture_shows_values_and_what_is_pressed(shown):
    shown.drawing("press.qel", '<rect style="0x1" dr="1" fg="0xff" lnwid="0" flag="0x4000" crd="10 10 30 20"/>')
    shown.shot("press.qel", "--transparent --pressed", "pressed.png")
    pixels = with_alpha(shown, "pressed.png")
    # Pressed moves by two pixels.
    assert [pixels[11 * 40 + 11][3], pixels[21 * 40 + 31]] == [0, (255, 0, 0, 255)]


def test_a_transparent_clock_shows_its_time(shown):
    shown.drawing("clock.qel", '<meter upin="1" mtype="clock" crd="20 15 14 2 2 38 28"/>')
    shown.draw("ten.png", "clock.qel", "--transparent --time 10:00:00")
    shown.draw("four.png", "clock.qel", "--transparent --time 16:00:00")
    # Half way along the hour hand, which is the widest one: the hours are 30 degrees each, twelve is at the top.
    for name, there, other in (("ten", 300, 120), ("four", 120, 300)):
        pixels, width = with_alpha(shown, name + ".png"), shown.size(name + ".png")[0]
        at = [400 + round(70 * math.sin(math.radians(angle))) + width * (300 - round(70 * math.cos(math.radians(angle))))
              for angle in (there, other)]
        assert [pixels[place][3] for place in at] == [255, 0]


def test_standard_output_is_a_transparent_png(shown):
    with open(shown.folder / "out.bin", "wb") as out:
        assert shown.run("render", "plain.qel", "-", "--size", "40x30", "--transparent", stdout=out).status == 0
    with Image.open(io.BytesIO(shown.bytes("out.bin"))) as image:
        assert list(image.getdata()) == with_alpha(shown, "rect.png")


@pytest.mark.parametrize("arguments, part", rows(
    *((kind, f"render plain.qel a{kind} --transparent", "--transparent wants a picture .png")
      for kind in (".jpg", ".jpeg", ".bmp", ".emf")),
    ("a background", "render plain.qel a.png --transparent --background 000000", "has no background"),
    ("animate", "animate plain.qel a.gif --transparent", "--transparent is of 'qel render' alone")))
def test_transparent_is_refused_where_nothing_can_show_through(tool, arguments, part):
    tool.drawing("plain.qel", PLAIN)
    assert_refused(tool, arguments, part)


def test_without_transparent_the_background_stands(shown):
    assert shown.pixels(shown.shot("plain.qel"), (0, 0), (10, 10)) == [BACKGROUND, RED]
