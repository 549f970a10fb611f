"""Texts in every script: what a drawing declares is what is drawn, listed and set, whatever the code page of the
system; and check names what is no text."""
import os
import subprocess
import sys

import pytest

from support import ROOT, assert_one_finding, first_difference, rows

WORDS = {"cn": "一号泵 No1", "gr": "ΑΝΤΛΙΑ αβ", "ru": "Насос №1"}  # gb2312 has all of these letters
LOCALES = {"zh_CN.UTF-8": 936, "en_US.UTF-8": 1252, "ru_RU.UTF-8": 1251}
MARK = b"\xef\xbb\xbf"


def words_drawing(encoding, words):
    lines = [f'<text id="{key}" fg="0x0" crd="5 {5 + 40 * n} 195 {35 + 40 * n}">{text}</text>'
             for n, (key, text) in enumerate(words.items())]
    meter = '<meter mtype="horz" imin="1" crd="5 130 195 150"><rect style="0x1" crd="5 130 195 150"/></meter>'
    return "\r\n".join([f'<?xml version="1.0" encoding="{encoding}" ?>', '<qel width="200" height="160" id="水厂">',
                        *lines, meter, "</qel>", ""]).encode(encoding)


def code_page(tool, locale):
    """The ANSI code page of the system in that locale, as the system itself tells it."""
    result = subprocess.run([*tool.command[:-1], "reg", "query",
                             r"HKLM\System\CurrentControlSet\Control\Nls\CodePage", "/v", "ACP"],
                            env={**os.environ, "QEL_LOCALE": locale}, capture_output=True, check=True)
    return int(result.stdout.split()[-1])


@pytest.fixture(scope="module")
def pictures(studio):
    """The same words in both encodings, drawn in each locale: {(encoding, locale): picture}."""
    drawn = {}
    for encoding in ("gb2312", "utf-8"):
        studio.file(f"{encoding}.qel", words_drawing(encoding, WORDS))
        for locale in LOCALES:
            name = f"{encoding}-{locale}.png"
            result = studio.run("render", f"{encoding}.qel", name, QEL_LOCALE=locale)
            assert result == (0, "", "")
            drawn[encoding, locale] = studio.image(name)
    return drawn


@pytest.mark.parametrize("locale", LOCALES)
def test_the_locales_are_systems_of_three_code_pages(studio, locale):
    assert code_page(studio, locale) == LOCALES[locale]


@pytest.mark.parametrize("encoding", ["gb2312", "utf-8"])
@pytest.mark.parametrize("locale", LOCALES)
def test_the_same_words_give_the_same_picture(pictures, encoding, locale):
    assert first_difference(pictures[encoding, locale], pictures["utf-8", "zh_CN.UTF-8"]) == ""


@pytest.mark.parametrize("key", WORDS)
def test_each_word_is_to_be_seen(studio, pictures, key):
    words = {**WORDS, key: "??"}
    studio.file("other.qel", words_drawing("utf-8", words))
    assert studio.run("render", "other.qel", "other.png", QEL_LOCALE="en_US.UTF-8") == (0, "", "")
    assert first_difference(studio.image("other.png"), pictures["utf-8", "en_US.UTF-8"]) != ""


@pytest.mark.parametrize("locale", LOCALES)
def test_emoji_and_bytes_that_are_no_text_are_drawn(tool, locale):
    tool.file("x.qel", words_drawing("utf-8", {"a": "ok 😀👍🏽", "b": "👨‍👩‍👧"}).replace(b"ok", b"\xff\xe6\xb3"))
    assert tool.run("render", "x.qel", "x.png", QEL_LOCALE=locale) == (0, "", "")
    assert tool.size("x.png")


@pytest.mark.parametrize("locale", LOCALES)
@pytest.mark.parametrize("encoding", ["gb2312", "utf-8", "windows-1251"])
def test_identifiers_and_texts_are_listed_as_declared(tool, encoding, locale):
    text = "Насос 1"
    tool.file("x.qel", f'<?xml version="1.0" encoding="{encoding}"?><qel id="Станция" width="9" height="9">'
                       f'<text id="насос">{text}</text></qel>'.encode(encoding))
    result = tool.run("info", "x.qel", "--json", QEL_LOCALE=locale)
    assert result.status == 0
    for part in ('"name": "Станция"', '"id": "насос"', f'"text": "{text}"'):
        assert part in result.out


def test_texts_are_set_by_identifiers_in_the_encoding_of_the_drawing(tool):
    tool.file("set.qel", '<?xml version="1.0" encoding="utf-8"?><qel width="90" height="30">'
                         '<text id="泵" fg="0x0" crd="0 0 90 30">停止</text></qel>')
    tool.file("own.qel", '<?xml version="1.0" encoding="utf-8"?><qel width="90" height="30">'
                         '<text id="泵" fg="0x0" crd="0 0 90 30">Работа</text></qel>')
    tool.draw("set.png", "set.qel", "--text 泵=Работа")
    tool.draw("own.png", "own.qel")
    tool.draw("before.png", "set.qel")
    assert first_difference(tool.image("set.png"), tool.image("own.png")) == ""
    assert first_difference(tool.image("set.png"), tool.image("before.png")) != ""


def test_a_text_that_the_encoding_lacks_is_refused(tool):
    tool.file("x.qel", '<?xml version="1.0" encoding="gb2312"?><qel width="9" height="9"><text id="t">a</text></qel>')
    result = tool.run("render", "x.qel", "x.png", "--text", "t=😀")
    assert result.status == 2
    assert "does not have" in result.err
    assert tool.files() == ["x.qel"]


@pytest.mark.parametrize("encoding", ["utf-8", "gb2312", "Windows-1251", "us-ascii"])
def test_a_clean_drawing_is_clean_in_every_encoding(tool, encoding):
    text = "pump" if encoding == "us-ascii" else "Насос"
    tool.file("x.qel", f'<?xml version="1.0" encoding="{encoding}"?>\n<qel width="90" height="30">\n'
                       f'<text crd="0 0 90 30">{text}</text>\n</qel>\n'.encode(encoding))
    assert tool.run("check", "x.qel") == (0, "", "")


@pytest.mark.parametrize("encoding, text, at, part", rows(
    ("one byte", "utf-8", b"ab\xffcd", "3:25", "the byte FF is no text in utf-8"),
    ("a cut character", "utf-8", b"ab\xe6\xb3cd", "3:25", "the bytes E6 B3 are no text in utf-8"),
    ("a surrogate", "utf-8", b"\xed\xa0\xbd", "3:23", "the bytes ED A0 BD are no text in utf-8"),
    ("too long a form", "utf-8", b"\xc0\x80", "3:23", "the bytes C0 80 are no text in utf-8"),
    ("behind letters of three bytes", "utf-8", "泵".encode() + b"\xff", "3:26", "the byte FF is no text in utf-8"),
    ("a lone first byte", "gb2312", b"ab\xb1", "3:25", "no text in gb2312"),
    ("more than eight", "UTF-8", b"\xff" * 12, "3:23",
     "the bytes FF FF FF FF FF FF FF FF ... are no text in UTF-8"),
    ("no seven bits", "us-ascii", b"abc\x80", "3:26", "the byte 80 is no text in us-ascii")))
def test_bytes_that_are_no_text_are_named_with_their_place(tool, encoding, text, at, part):
    tool.file("x.qel", b'<?xml version="1.0" encoding="%b"?>\n<qel width="90" height="30">\n'
                       b'<text crd="0 0 90 30">%b</text>\n</qel>\n' % (encoding.encode(), text))
    assert_one_finding(tool, "x.qel", at, "error", part)


def test_bytes_that_are_no_text_are_named_run_by_run(tool):
    tool.file("x.qel", b'<?xml version="1.0" encoding="utf-8"?>\n<qel width="90" height="30">\n'
                       b'<!-- \xff -->\n<text crd="0 0 90 30">\xe6\xb3\xb5\xfe\xff</text>\n</qel>\n\0\xff')
    lines = tool.run("check", "x.qel").out.split("\n")
    assert [line.split(" ")[0] for line in lines if "no text" in line] == ["x.qel:3:6:", "x.qel:4:26:"]


def test_an_encoding_that_is_none_is_a_warning(tool):
    tool.file("x.qel", '<?xml version="1.0" encoding="klingon"?>\n<qel width="9" height="9"/>\n')
    assert_one_finding(tool, "x.qel", "1:31", "warning", "unknown encoding 'klingon': texts are read as gb2312")


def test_a_byte_order_mark_is_a_warning_and_drawn(tool):
    tool.file("plain.qel", words_drawing("utf-8", WORDS))
    tool.file("marked.qel", MARK + words_drawing("utf-8", WORDS))
    assert_one_finding(tool, "marked.qel", "1:1", "warning", "hosts that set no code page for texts do not open it")
    tool.draw("plain.png", "plain.qel")
    tool.draw("marked.png", "marked.qel")
    assert tool.bytes("plain.png") == tool.bytes("marked.png")


def test_a_byte_order_mark_wins_over_the_declaration(tool):
    tool.file("x.qel", MARK + '<?xml version="1.0" encoding="gb2312"?><qel width="9" height="9" id="水厂"/>'.encode())
    assert '"水厂"' in tool.run("info", "x.qel").out
    findings = tool.run("check", "x.qel").out.split("\n")
    assert len(findings) == 2
    assert "of utf-8, not of 'gb2312'" in findings[1]


def test_the_table_of_wide_characters_is_what_unicode_says():
    done = subprocess.run([sys.executable, ROOT / "scripts" / "wide_characters.py", "--check"], capture_output=True,
                          check=False)
    assert (done.returncode, done.stdout) == (0, b"")
