"""Names of drawings and pictures: blanks, signs, Chinese and other characters, in files and in messages."""
import pytest

from support import PLAIN, assert_refused, rows


@pytest.mark.parametrize("drawing, picture", rows(
    ("blanks", "a folder/my drawing.qel", "a folder/my picture.png"),
    ("Chinese", "水厂/泵.qel", "水厂/图.png"),
    ("no characters of the code page", "한국/펌프.qel", "한국/그림.png"),
    ("signs", "a & b's (1) %x%.qel", "c & d's (1) %x%.png")))
def test_a_path_may_have_any_characters(tool, drawing, picture):
    tool.drawing("plain.qel", PLAIN)
    tool.file(drawing, tool.bytes("plain.qel"))
    assert tool.size(tool.draw(picture, drawing)) == (800, 600)


def test_a_path_may_be_absolute(tool):
    tool.drawing("plain.qel", PLAIN)
    tool.draw(str(tool.folder / "absolute.png"), str(tool.folder / "plain.qel"))
    assert tool.size("absolute.png") == (800, 600)


def test_names_stand_behind_a_lone_double_dash(tool):
    tool.drawing("-dash.qel", PLAIN)
    assert tool.run("render", "--", "-dash.qel", "dash.png").status == 0
    assert tool.size("dash.png") == (800, 600)


@pytest.mark.parametrize("part, arguments", rows(
    ("a drawing", "cannot open '没有/泵.qel': there is no such file", "info 没有/泵.qel"),
    ("a picture", "cannot write '没有/图.png'", "render plain.qel 没有/图.png")))
def test_a_message_shows_a_chinese_path(tool, part, arguments):
    tool.drawing("plain.qel", PLAIN)
    assert_refused(tool, arguments, part)


def test_info_takes_an_absolute_chinese_path(tool):
    tool.file("水厂/泵.qel", '<qel width="40" height="30"/>')
    assert "size 40 x 30" in tool.run("info", str(tool.folder / "水厂" / "泵.qel")).out


@pytest.mark.parametrize("path", rows(("relative", "水厂/坏.qel"), ("roundabout", "./水厂/../水厂/坏.qel"),
                                      ("absolute", "{folder}/水厂/坏.qel")))
def test_check_prints_a_path_as_it_was_given(tool, path):
    tool.file("水厂/坏.qel", "no drawing")
    path = path.format(folder=tool.folder)
    assert tool.run("check", path).out.startswith(path + ":1:1: ")
