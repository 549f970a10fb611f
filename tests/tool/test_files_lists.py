"""Any number of names, and lists of arguments."""
from pathlib import Path
from tempfile import gettempdir

import pytest
from filesupport import DRAWING, qel, script  # noqa: F401  (fixtures)

BROKEN = b"<qel><x/></qel>"


def many(tool, count):
    """So many drawings, of which the last one has a finding; their names."""
    names = [f"drawings/number-{n:05}.qel" for n in range(count)]
    for name in names[:-1]:
        tool.write(name)
    tool.write(names[-1], BROKEN)
    return names


def expect_the_finding(result, name):
    status, out, error = result
    assert (status, error) == (1, "")
    assert out.decode() == f"{name}:1:6: error: unknown element <x>: it is skipped with all that is in it\n"


@pytest.mark.parametrize("separator, end", [("\n", "\n"), ("\n", ""), ("\r\n", "\r\n"), ("\0", "\0"), ("\0", "")])
def test_a_list_has_a_name_a_line_or_one_before_each_zero_byte(qel, separator, end):
    qel.write("a.qel")
    qel.write("with blank.qel", BROKEN)
    qel.write("泵.qel", BROKEN)
    names = ["a.qel", "with blank.qel", "泵.qel"]
    qel.write("list", (separator.join(names) + end).encode("utf-8"))
    for argument, stdin in (("@list", b""), ("@-", (qel.folder / "list").read_bytes())):
        status, out, error = qel("check", argument, stdin=stdin)
        assert (status, error) == (1, "")
        assert [line.split(":")[0] for line in out.decode("utf-8").splitlines()] == names[1:]


def test_a_list_may_begin_with_a_byte_order_mark_and_have_empty_lines(qel):
    qel.write("泵.qel", BROKEN)
    qel.write("list", b"\xef\xbb\xbf" + "\n\n泵.qel\n\n".encode("utf-8"))
    expect_the_finding(qel("check", "@list"), "泵.qel")


def test_a_list_holds_options_and_their_values_too(qel):
    qel.write("a.qel")
    qel.write("list", b"--size\n7x5\na.png\n")
    assert qel("render", "a.qel", "@list") == (0, b"", "")
    assert qel.names() == ["a.png", "a.qel", "list"]
    qel.write("values", b"--font\n@no such face\n")
    status, _, error = qel("render", "a.qel", "a.png", "@values")
    assert status == 2
    assert error == "qel: --font: the system has no scalable font '@no such face'\n"  # a value is no list


def test_lists_stand_among_names_and_in_lists(qel):
    for name in "abcd":
        qel.write(name + ".qel", BROKEN)
    qel.write("inner", b"b.qel\nc.qel\n")
    qel.write("outer", b"@inner\nd.qel\n")
    _, out, error = qel("check", "a.qel", "@outer", "a.qel")
    assert error == ""
    assert [line[:1] for line in out.decode().splitlines()] == ["a", "b", "c", "d", "a"]


def test_a_list_in_itself_is_refused(qel):
    qel.write("list", b"@list\n")
    assert qel("check", "@list") == (2, b"", "qel: the list 'list' is one too many, or in itself\n")


def test_a_list_that_is_not_there_is_told(qel):
    assert qel("check", "@none") == (2, b"", "qel: cannot read the list 'none': there is no such file\n")
    (qel.folder / "folder").mkdir()
    assert qel("check", "@folder") == (2, b"", "qel: cannot read the list 'folder': it is a folder\n")


def test_an_empty_list_is_no_name(qel):
    qel.write("list", b"")
    status, out, error = qel("check", "@list")
    assert (status, out) == (2, b"")
    assert error.startswith("qel: check wants at least one drawing")


def test_a_name_that_begins_so_goes_behind_two_dashes(qel):
    qel.write("@a.qel", BROKEN)
    expect_the_finding(qel("check", "--", "@a.qel"), "@a.qel")
    expect_the_finding(qel("check", "./@a.qel"), "./@a.qel")
    qel.write("list", b"--\n@a.qel\n")
    expect_the_finding(qel("check", "@list"), "@a.qel")


def test_a_list_has_any_number_of_names(qel):
    names = many(qel, 4000)
    qel.write("list", "\n".join(names).encode())
    expect_the_finding(qel("check", "@list"), names[-1])


def test_the_script_takes_any_number_of_names(script):
    names = many(script, 4000)
    assert sum(len(name) + 1 for name in names) > 32767  # more than one command line of the system holds
    expect_the_finding(script("check", *names), names[-1])


def test_the_script_passes_odd_names_on_as_they_are(script):
    script.write("a.qel")
    odd = ["with blank.qel", "it's.qel", "泵.qel", "@at.qel", "-dash.qel"]
    for name in odd:
        script.write(name, BROKEN)
    _, out, error = script("check", *["a.qel"] * 4000, "--", *odd)
    assert error == ""
    assert [line.split(":")[0] for line in out.decode("utf-8").splitlines()] == odd


def test_the_script_leaves_no_file_behind(script):
    script.write("a.qel")
    # Not by a TMPDIR of its own: Wine would start a second server in it.
    before = arguments_left()
    assert script("check", *["a.qel"] * 4000) == (0, b"", "")
    assert arguments_left() <= before


def arguments_left():
    return {path.name for path in Path(gettempdir()).glob("qel-arguments.*")}


@pytest.mark.parametrize("arguments, status", [(["check", "a.qel"], 0), (["check", "b.qel"], 1), (["check"], 2),
                                               (["nonsense"], 2), ([], 2), (["--version"], 0)])
def test_the_scripts_status_is_the_programs(script, arguments, status):
    script.write("a.qel")
    script.write("b.qel", BROKEN)
    assert script(*arguments)[0] == status


def test_a_start_that_fails_is_told_and_has_a_status_of_its_own(script):
    # One word that is longer than any command line, and is no name that a list could hold.
    status, out, error = script("x" * 40000)
    assert (status, out) == (3, b"")
    assert "could not be started" in error


def test_help_tells_of_the_status(qel):
    _, out, _ = qel("--help")
    assert b"3 of\nthe script ./qel: the program could not be set up or started" in out


def test_a_drawing_by_way_of_the_script_comes_from_its_standard_input(script):
    status, out, error = script("render", "-", "-", "--size", "8x6", stdin=DRAWING)
    assert (status, error) == (0, "")
    assert out.startswith(b"\x89PNG\r\n\x1a\n")
