"""The declarations for Pascal, written from the interface and read back from their text."""
import re

from bindings.calls import layout_lines
from bindings.header import PASCAL, TYPES, count_of

HEAD = """{ QELEngine: the exported interface for Free Pascal and Delphi, 32 and 64 bits.

  Made from include/QELEngine.h by scripts/bindings; the header tells what each function does.
  Handles are opaque, texts are 8-bit in the system's ANSI code page, an engine is used by one thread at a time,
  and a result of 0 (nil) means failure. }
unit QELEngine;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}

interface

uses
  Windows;

const
  QELENGINE_DLL = 'QELEngine.dll';

type
  TQELEngineHandle = record end;
  TQELElemHandle = record end;
  TQELGradientHandle = record end;
  HQELENGINE = ^TQELEngineHandle;     { an engine, or in show-only mode a share of one }
  HQELELEM = ^TQELElemHandle;         { an element of the open drawing }
  HQELGRADIENT = ^TQELGradientHandle; { a gradient descriptor }
"""

NAMES = {"hdc": "dc", "pSize": "pExtent"}  # letter case does not tell them from their types there


def make(interface):
    out, mode = [HEAD], None

    def switch(wanted):
        nonlocal mode
        if mode != wanted and wanted:
            out.append(wanted)
        mode = wanted

    for item in interface.items:
        if item[0] == "section":
            out.append(f"\n{{ ---- {item[1]} ---- }}\n")
            mode = None
        elif item[0] == "constant":
            switch("const")
            remark = f" {{ {item[3]} }}" if item[3] else ""
            number = item[2].spelled("$")
            out.append(f"  {item[1]} = {f'LongWord({number})' if item[2] > 0x7FFFFFFF else number};{remark}")
        elif item[0] == "record":
            switch("type")
            out.append(f"  {item[1]} = packed record")
            for kind, name, count in item[2]:
                spelled = TYPES[kind][PASCAL]
                out.append(f"    {name}: array[0..{count} - 1] of {spelled};" if count else f"    {name}: {spelled};")
            out.append("  end;")
            out.append(f"  P{item[1]} = ^{item[1]};\n")
        else:
            switch(None)
            function = item[1]
            arguments = "; ".join(f"{NAMES.get(name, name)}: {TYPES[kind][PASCAL]}"
                                  for kind, name in function.arguments)
            name = f"'{function.name}'"
            if function.name in interface.decorated:
                name = f"{{$IFDEF WIN64}}{name}{{$ELSE}}'{interface.entry(function.name, 32)}'{{$ENDIF}}"
            out.append(f"function {function.name}{'(' + arguments + ')' if arguments else ''}: "
                       f"{TYPES[function.result][PASCAL]}; stdcall;\n  external QELENGINE_DLL name {name};")
    out.append("\nimplementation\n")
    for name, size in interface.sizes.items():
        out.append(f"{{$IF SizeOf({name}) <> {size}}}{{$MESSAGE FATAL '{name} is not {size} bytes'}}{{$IFEND}}")
    out.append("\nend.\n")
    return re.sub(r"\n{3,}", "\n\n", "\n".join(out))


BYTES = {"LongInt": 4, "LongWord": 4, "Single": 4, "Double": 8, "AnsiChar": 1, "TRect": 16,
         **dict.fromkeys(("HQELENGINE", "HQELELEM", "HQELGRADIENT", "HDC", "HBRUSH", "HRGN", "Pointer", "PAnsiChar",
                          "PWideChar", "PQELERROR", "PLongInt", "PLongWord", "PSingle", "PDouble", "PRect", "PSize",
                          "PPoint"), 4)}


def read(text):
    """For each word size the declared functions, {entry: bytes of arguments}; and {record: bytes}."""
    declared = {32: {}, 64: {}}
    pattern = r"^function (\w+)(?:\((.*?)\))?: \w+; stdcall;\s+external QELENGINE_DLL name (.*?);$"
    for name, arguments, entry in re.findall(pattern, text, re.M):
        kinds = [argument.split(": ")[1] for argument in arguments.split("; ")] if arguments else []
        chosen = re.fullmatch(r"\{\$IFDEF WIN64\}'(.*?)'\{\$ELSE\}'(.*?)'\{\$ENDIF\}", entry)
        for bits in declared:
            found = chosen.group(1 if bits == 64 else 2) if chosen else entry.strip("'")
            declared[bits][found] = {sum(BYTES[kind] for kind in kinds)}
    constants = {name: int(value.replace("$", "0x"), 0)
                 for name, value in re.findall(r"^  (\w+) = (\$?[0-9A-F]+);", text, re.M)}
    sizes = {}
    for name, body in re.findall(r"^  (\w+) = packed record\n(.*?)^  end;", text, re.M | re.S):
        fields = re.findall(r"^    \w+: (?:array\[0\.\.(\w+) - 1\] of )?(\w+);", body, re.M)
        sizes[name] = sum(BYTES[kind] * count_of(constants, count or None) for count, kind in fields)
    return declared, sizes


def make_layout(interface):
    """A program that prints the layout of all records."""
    variables = "\n".join(f"  V{name}: {name};" for name in interface.records)
    body = layout_lines(interface, lambda record: f"  WriteLn('{record} ', SizeOf({record}));", lambda record, field:
                        f"  WriteLn('{record}.{field} ', PAnsiChar(@V{record}.{field}) - PAnsiChar(@V{record}));")
    return ("program layout;\n{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}\n{$APPTYPE CONSOLE}\nuses QELEngine;\nvar\n" +
            variables + "\nbegin\n" + "\n".join(body) + "\nend.\n")
