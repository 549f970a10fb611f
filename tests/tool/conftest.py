"""Fixtures for the tests of qel, the command-line program. The environment variable QEL is the command that
runs it, with full paths:

    QEL="$PWD/scripts/wine.sh $PWD/build/i686/bin/qel.exe" /usr/bin/python3 -m pytest tests/tool"""
import os
import shlex

import pytest

pytest.register_assert_rewrite("support", "gif")

from support import Tool  # noqa: E402  (its assertions are to tell what they compared)


@pytest.fixture(scope="session")
def command():
    """The words that run qel; the last one is the program."""
    words = shlex.split(os.environ.get("QEL", ""))
    if not words:
        pytest.exit("the environment variable QEL is to be the command that runs qel", returncode=2)
    return words


@pytest.fixture
def tool(command, tmp_path):
    """qel in an empty folder."""
    return Tool(command, tmp_path)


@pytest.fixture(scope="module")
def studio(command, tmp_path_factory):
    """qel in a folder that all tests of a file share, for what several of them look at."""
    return Tool(command, tmp_path_factory.mktemp("studio"))
