"""Values from a table: qel animate --data shows a row a frame, qel render --data --row one of them; what a table may
look like, and what is refused."""
import pytest

from gif import Animation
from support import PLAIN_PIXELS, assert_refused, first_difference, rows

# Each covers its place, so that every frame is a picture of its own.
PANEL = ('<rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 40 30"/>',
         '<scale id="tank.level" scid="7" sctype="horizdn" crd="2 2 38 10"/>',
         '<scale id="b,c" scid="8" sctype="horizdn" crd="2 12 38 18"/>',
         '<status id="lamp" stx="1"><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="2 20 12 28"/></status>',
         '<text id="temp" fg="0xffffff" crd="14 19 40 30">##.#</text>')


@pytest.fixture
def panel(tool):
    return tool.drawing("panel.qel", *PANEL)


def picture(tool, options):
    return tool.image(tool.shot("panel.qel", options))


def of_rows(tool, count):
    return [picture(tool, f"--data t.csv --row {row}") for row in range(1, count + 1)]


# ---- tables


@pytest.mark.parametrize("table, frames", rows(
    ("names and numbers", "tank.level,8\n2,3\n5,6\n", ["--value 7=2 --value 8=3", "--value 7=5 --value 8=6"]),
    ("no end of the last line", "7\n2\n5", ["--value 7=2", "--value 7=5"]),
    ("lines as Windows has them", "7,8\r\n2,3\r\n", ["--value 7=2 --value 8=3"]),
    ("a mark of UTF-8", "\ufeff7\n2\n", ["--value 7=2"]),
    ("quotes", '"7","b,c"\n"2",3\n', ["--value 7=2 --value 8=3"]),
    ("real numbers", "7\n2.5\n-.5\n", ["--value 7=2.5", "--value 7=-.5"]),
    ("whole numbers among real ones", "7\n2.5\n5\n", ["--value 7=2.5", "--value 7=5.0"]),
    ("hexadecimal numbers", "0x7\n0x5\n", ["--value 7=5"]),
    ("an empty cell", "7,8\n2,3\n,6\n4,\n",
     ["--value 7=2 --value 8=3", "--value 7=2 --value 8=6", "--value 7=4 --value 8=6"]),
    ("an empty cell at first", "7,8\n,3\n", ["--value 8=3"]),
    ("an empty line of one column", "7\n2\n\n5\n", ["--value 7=2", "--value 7=2", "--value 7=5"]),
    ("a column without values", "7,8\n2,\n", ["--value 7=2"]),
    ("a lamp and a text", "lamp,temp\n1,12.34\n0,5\n",
     ["--status 1 --text temp=12.3", "--value lamp=0 --text 'temp= 5.0'"])))
def test_a_row_is_a_picture(tool, panel, table, frames):
    tool.file("t.csv", table)
    pictures = [picture(tool, frame) for frame in frames]
    assert [first_difference(*pair) for pair in zip(of_rows(tool, len(frames)), pictures)] == [""] * len(frames)


def test_a_name_between_quotes_may_have_a_quote_and_an_end_of_line(tool):
    tool.drawing("panel.qel", '<scale id="a&quot;&#xA;b" sctype="horizdn" scid="7" crd="2 2 38 10"/>')
    tool.file("t.csv", '"a""\nb"\n5\n')
    assert first_difference(picture(tool, "--data t.csv --row 1"), picture(tool, "--value 7=5")) == ""


def test_the_table_comes_after_the_other_values(tool, panel):
    tool.file("t.csv", "7,8\n5,\n")
    wanted = picture(tool, "--value 7=5 --value 8=2")
    assert first_difference(picture(tool, "--data t.csv --row 1 --value 7=9 --value 8=2"), wanted) == ""


# ---- animate


@pytest.fixture
def played(tool, panel):
    """An animation of a table, and what render draws of each of its rows."""
    tool.file("t.csv", "tank.level,8,lamp,temp\n1,9,0,1.5\n5,,1,12.25\n9.5,2,0,\n")
    assert tool.line(f"animate panel.qel a.gif --size 40x30 {PLAIN_PIXELS} --data t.csv --fps 5") == (0, "", "")
    return Animation(tool.folder / "a.gif"), of_rows(tool, 3)


def test_a_row_is_a_frame(played):
    animation, pictures = played
    assert animation.facts() == "GIF89a 40x30 loops 0 frames 3"
    assert [first_difference(*pair) for pair in zip(animation.frames, pictures)] == [""] * 3


def test_rows_are_shown_as_long_as_frames(played):
    assert played[0].delays == [20] * 3


def test_the_rows_differ(played):
    first, second, third = played[1]
    assert "" not in (first_difference(first, second), first_difference(second, third))


def test_one_row_is_a_still_picture(tool, panel):
    tool.file("t.csv", "7\n5\n")
    assert tool.line(f"animate panel.qel a.gif --size 40x30 {PLAIN_PIXELS} --data t.csv") == (0, "", "")
    assert Animation(tool.folder / "a.gif").facts() == "GIF89a 40x30 loops 0 frames 1"


def test_ranges_go_over_the_rows(tool, panel):
    tool.file("t.csv", "7\n5\n6\n7\n")
    assert tool.line(f"animate panel.qel a.gif --size 40x30 {PLAIN_PIXELS} --data t.csv --value 8=2..4") == (0, "", "")
    pictures = [picture(tool, f"--value 7={first} --value 8={second}") for first, second in ((5, 2), (6, 3), (7, 4))]
    frames = Animation(tool.folder / "a.gif").frames
    assert [first_difference(*pair) for pair in zip(frames, pictures)] == [""] * 3


# ---- what shows nowhere, and what is refused


def test_a_column_that_shows_nowhere_is_a_warning_once(tool):
    tool.drawing("panel.qel", '<text id="temp" crd="0 0 40 30">abc</text>')
    tool.file("t.csv", "temp\n5\n6\n")
    result = tool.line(f"animate panel.qel a.gif --size 40x30 {PLAIN_PIXELS} --data t.csv")
    assert result == (0, "", "qel: warning: 't.csv': the row of names, column 1 'temp': the text has no run of # (##.#) "
                             "that shows it")


@pytest.mark.parametrize("part, table", rows(
    ("a word", "'t.csv': row 2 (line 3), column 2 '8': 'high' is no number of 32 bits", "7,8\n1,2\n1,high\n"),
    ("a blank", "row 1 (line 2), column 1 '7': ' 5' is no number", "7\n 5\n"),
    ("a decimal comma", "row 1 (line 2), column 1 '7': '2,5' is no number", '7\n"2,5"\n'),
    ("the line of a row after a name of two lines", "row 1 (line 3), column 2 '8': 'x' is no number", '"7\n",8\n1,x\n'),
    ("a cell too few", "'t.csv': row 2 (line 3) has 1 cells, and there are 2 names", "7,8\n1,2\n1\n"),
    ("a cell too many", "row 1 (line 2) has 3 cells, and there are 2 names", "7,8\n1,2,3\n"),
    ("a name twice", "'t.csv': the row of names, column 2 '7': another column has this name", "7,7\n1,2\n"),
    ("no name", "the row of names, column 2 '': a column has a name", "7,\n1,2\n"),
    ("an identifier that nothing bears",
     "'t.csv': the row of names, column 1 'tank.levle': no element of the drawing has the identifier 'tank.levle'; "
     "did you mean 'tank.level'?", "tank.levle\n1\n"),
    ("one whose column is empty", "the row of names, column 2 'pump': no element of the drawing has the identifier 'pump'",
     "7,pump\n1,\n"),
    ("a number that nothing has", "column 1 '9': no scale or meter of the drawing has this id", "9\n1\n"),
    ("a number that none can have", "column 1 '4294967296': an id is a whole number", "4294967296\n1\n"),
    ("names alone", "'t.csv' wants a row of names, and a row of values for each frame", "7,8\n"),
    ("nothing", "'t.csv' wants a row of names", ""),
    ("an open quote", "'t.csv': row 1 (line 3), column 1: the closing quote is missing", '7\n"5\n'),
    ("something behind a quote", "row 1 (line 2), column 2: something stands behind the closing quote",
     '7,8\n1,"2"3\n'),
    ("a quote within a cell", "row 1 (line 2), column 1: a cell with a quote in it stands between quotes",
     '7\n1"2"\n'),
    ("no UTF-8", "'t.csv' is no text in UTF-8", b"7\n\xff\n")))
def test_a_table_is_refused(tool, panel, part, table):
    tool.file("t.csv", table)
    assert_refused(tool, "render panel.qel no.png --data t.csv --row 1", part)
    assert_refused(tool, "animate panel.qel no.gif --data t.csv", part)


@pytest.mark.parametrize("part, arguments", rows(
    ("a table that is not there", "cannot read the values 'no.csv'", "render panel.qel no.png --data no.csv --row 1"),
    ("no row", "a picture shows one row of --data: --row N", "render panel.qel no.png --data t.csv"),
    ("row 0", "--row wants a row of 't.csv', 1 to 2, not '0'", "render panel.qel no.png --data t.csv --row 0"),
    ("a row past the end", "--row wants a row of 't.csv', 1 to 2, not '3'",
     "render panel.qel no.png --data t.csv --row 3"),
    ("a row of words", "1 to 2, not 'last'", "render panel.qel no.png --data t.csv --row last"),
    ("a row without table", "--row is a row of a table: --data FILE.csv", "render panel.qel no.png --row 1"),
    ("two tables", "--data is given twice", "render panel.qel no.png --data t.csv --data t.csv --row 1"),
    ("frames and a table", "--frames and --data: a row of the table is a frame",
     "animate panel.qel no.gif --data t.csv --frames 5"),
    ("animate has no --row", "unknown option '--row'", "animate panel.qel no.gif --data t.csv --row 1"),
    ("too many rows", "'long.csv' has 1001 rows, and an animated picture at most 1000 frames",
     "animate panel.qel no.gif --data long.csv")))
def test_options_about_tables_are_refused(tool, panel, part, arguments):
    tool.file("t.csv", "7\n1\n2\n")
    tool.file("long.csv", "7\n" + "1\n" * 1001)
    assert_refused(tool, arguments, part)
