#!/usr/bin/env python3
"""Writes import libraries for linkers of the Microsoft family, from what the build exports:
ms_import_lib.py EXPORTS.def MACHINE OUT.lib LLVM-DLLTOOL, MACHINE being i386 or i386:x86-64.

llvm-dlltool makes the library. On 32 bits it lets the linker strip the decoration of every __stdcall name;
six functions are exported under their decorated names, so their entries are set to "the name as it is"."""
import re
import struct
import subprocess
import sys
import tempfile

NAME_TYPE_AS_IS = 1
SHORT_IMPORT = struct.Struct("<HHHHIIHH")  # two signatures, version, machine, time, size, ordinal, type


def exports(path):
    """(exported name, what it stands for, is it data) of each line of a table of exports."""
    for line in open(path, encoding="ascii"):
        match = re.fullmatch(r'\s+"?([^"\s]+)"?(?: = (\S+))?( DATA)?\s*', line)
        if match:
            yield match[1], match[2] or match[1], bool(match[3])


def symbol_line(name, target, data, is32):
    """The line of the table that llvm-dlltool reads: how compilers spell the function."""
    if name.startswith("?"):
        return f"  {name}" + (" DATA" if data else "")
    return f"  {target}" if is32 else f"  {name}"


def keep_whole_names(library, symbols):
    """Sets the entries of these symbols to be looked up in the DLL under their whole names."""
    data = bytearray(open(library, "rb").read())
    found = set()
    at = 8  # after the archive's own signature
    while at + 60 <= len(data):
        size = int(data[at + 48:at + 58])
        begin = at + 60
        if data[begin:begin + 4] == b"\0\0\xff\xff":
            fields = list(SHORT_IMPORT.unpack_from(data, begin))
            symbol = data[begin + SHORT_IMPORT.size:].split(b"\0", 1)[0].decode()
            if symbol in symbols:
                fields[7] = (fields[7] & ~(7 << 2)) | NAME_TYPE_AS_IS << 2
                SHORT_IMPORT.pack_into(data, begin, *fields)
                found.add(symbol)
        at = begin + size + size % 2
    if found != symbols:
        sys.exit(f"no entries for {sorted(symbols - found)} in {library}")
    open(library, "wb").write(data)


def main():
    table, machine, library, dlltool = sys.argv[1:]
    is32 = machine == "i386"
    rows = [row for row in exports(table) if not row[0].startswith("_Z")]
    with tempfile.NamedTemporaryFile("w", suffix=".def") as definition:
        definition.write("LIBRARY QELEngine.dll\nEXPORTS\n")
        definition.writelines(symbol_line(*row, is32) + "\n" for row in rows)
        definition.flush()
        command = [dlltool, "-m", machine, "-d", definition.name, "-l", library]
        subprocess.run(command + (["-k"] if is32 else []), check=True)
    if is32:
        keep_whole_names(library, {name for name, _, _ in rows if name.startswith("_")})


main()
