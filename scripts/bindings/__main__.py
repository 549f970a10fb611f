"""Writes the declarations of the exported interface for Pascal, C# and Python from include/QELEngine.h.

    scripts/bindings                 writes what is not current under examples/hosts
    scripts/bindings --check [DIR]   writes nothing: says what is not current, what a declaration file
                                     and the DLLs under DIR (default: build) do not agree in, and which
                                     code of docs/embedding*.md is not in a sample
    scripts/bindings --stand-in DIR  writes a stand-in of the DLL for Linux, in C, that records every
                                     call, and programs that call every function (see stand_in.py)
    scripts/bindings --calls LIBRARY calls every function of the built stand-in from Python
    scripts/bindings --layout        prints sizes and offsets of the records as Python has them

Each is run with python3. Pascal and C# cannot read a C header, and a declaration that is wrong in one
argument ruins the stack of a 32-bit host. So the files are made from the header, and what they declare is
read back from their text and held against the DLLs themselves: names against the table of exports, argument
bytes against the machine code that takes them off the stack.

header.py reads the header, one module a language writes and reads its declarations; a new language is such a
module, a column of header.TYPES and a row of targets.TARGETS."""
import pathlib
import sys

sys.dont_write_bytecode = True  # nothing is left beside the sources
sys.path[0] = str(pathlib.Path(__file__).resolve().parent.parent)  # where this package stands, not its inside

from bindings import check, python_calls, stand_in, targets  # noqa: E402  (found from here on)
from bindings.header import EXPORTS, HEADER, ROOT, Interface, Problems  # noqa: E402


def main(arguments):
    interface = Interface(HEADER.read_text("ascii"), EXPORTS.read_text("utf-8"))
    if not arguments:
        targets.write(interface)
    elif arguments[0] == "--check" and len(arguments) < 3:
        check.check(interface, pathlib.Path(arguments[1]) if len(arguments) > 1 else ROOT / "build")
    elif arguments[0] == "--stand-in" and len(arguments) == 2:
        stand_in.write(interface, pathlib.Path(arguments[1]))
    elif arguments[0] == "--calls" and len(arguments) == 2:
        python_calls.call_all(interface, arguments[1])
    elif arguments == ["--layout"]:
        python_calls.print_layout(interface)
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except Problems as problems:
        sys.exit(str(problems))
