"""The declarations for C#, written from the interface and read back from their text."""
import re

from bindings.header import CSHARP, IN_AND_OUT, SYSTEM_RECORDS, TYPES, count_of

HEAD = """// QELEngine: the exported interface for C# and the other .NET languages, 32 and 64 bits.
//
// Made from include/QELEngine.h by scripts/bindings; the header tells what each function does.
// Handles are opaque, an engine is used by one thread at a time, and a result of 0 means failure. Texts are
// handed over in the system's ANSI code page; one that it cannot express throws ArgumentException
// instead of reaching the engine with wrong letters. A text that a function returns stays the
// engine's: Text() copies it.
using System;
using System.Runtime.InteropServices;

public static class QELEngine
{
    public const string Dll = "QELEngine.dll";

    /// <summary>A text that QELGetName or QELGetElemId returned; null for none.</summary>
    public static string Text(IntPtr psz)
    {
        return psz == IntPtr.Zero ? null : Marshal.PtrToStringAnsi(psz);
    }
"""
IMPORT = ("    [DllImport(Dll, EntryPoint = \"{entry}\", CallingConvention = CallingConvention.StdCall,\n"
          "        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]")


def result_type(kind):
    # A text declared as string would be freed by the runtime, which did not make it.
    return "IntPtr" if kind == "const char*" else TYPES[kind][CSHARP]


def forms_of(interface, function):
    """The argument lists of a function: an untyped record is also taken as each record there is, and
    untyped bytes as an array of them."""
    plain = [("ref uint" if (function.name, name) in IN_AND_OUT else TYPES[kind][CSHARP], name)
             for kind, name in function.arguments]
    forms = [plain]
    for at, (kind, name) in enumerate(function.arguments):
        if kind in ("void*", "const void*"):
            word = "out" if kind == "void*" else "ref"
            kinds = [f"{word} {record}" for record in interface.attributes] if function.takes_record() else ["byte[]"]
            forms += [plain[:at] + [(spelled, name)] + plain[at + 1:] for spelled in kinds]
    return forms


def make(interface):
    out = [HEAD]
    for name, fields in SYSTEM_RECORDS.items():
        out += ["    [StructLayout(LayoutKind.Sequential)]", f"    public struct {name}", "    {",
                *(f"        public int {field};" for field in fields), "    }\n"]
    for item in interface.items:
        if item[0] == "section":
            out.append(f"\n    // ---- {item[1]} ----\n")
        elif item[0] == "constant":
            kind = "uint" if item[2] > 0x7FFFFFFF else "int"
            out.append(f"    public const {kind} {item[1]} = {item[2].spelled('0x')};"
                       f"{' // ' + item[3] if item[3] else ''}")
        elif item[0] == "record":
            out += ["    [StructLayout(LayoutKind.Sequential, Pack = 1)]", f"    public struct {item[1]}", "    {"]
            for kind, name, count in item[2]:
                spelled = TYPES[kind][CSHARP]
                if count:
                    out.append(f"        [MarshalAs(UnmanagedType.ByValArray, SizeConst = {count})]")
                    spelled += "[]"
                out.append(f"        public {spelled} {name};")
            out.append("    }\n")
        else:
            function = item[1]
            result = result_type(function.result)
            for form in forms_of(interface, function):
                arguments = ", ".join(f"{spelled} {name}" for spelled, name in form)
                if function.name not in interface.decorated:
                    out += [IMPORT.format(entry=function.name),
                            f"    public static extern {result} {function.name}({arguments});"]
                    continue
                for bits in (32, 64):
                    out += [IMPORT.format(entry=interface.entry(function.name, bits)),
                            f"    private static extern {result} {function.name}{bits}({arguments});"]
                plain = re.sub(r"\[[^\]]+\] ", "", arguments)
                names = ", ".join(f"ref {name}" if spelled.startswith("ref ") else name for spelled, name in form)
                out += [f"    public static {result} {function.name}({plain})", "    {",
                        f"        return IntPtr.Size == 4 ? {function.name}32({names}) : {function.name}64({names});",
                        "    }"]
            out.append("")
    while not out[-1]:
        out.pop()
    out.append("}\n")
    return re.sub(r"\n{3,}", "\n\n", "\n".join(out))


BYTES = {"int": 4, "uint": 4, "float": 4, "double": 8, "byte": 1, "RECT": 16, "IntPtr": 4, "string": 4, "POINT[]": 4,
         "System.Text.StringBuilder": 4, "byte[]": 4}


def read(text):
    declared = {32: {}, 64: {}}
    pattern = r'\[DllImport\(Dll, EntryPoint = "([^"]+)".*?extern \S+ (\w+)\((.*?)\);'
    for entry, name, arguments in re.findall(pattern, text, re.S):
        arguments = re.sub(r"\[[^\]]+\] ", "", arguments)
        kinds = [argument.rsplit(" ", 1)[0] for argument in arguments.split(", ")] if arguments else []
        total = sum(4 if kind.startswith(("ref ", "out ")) else BYTES[kind] for kind in kinds)
        for bits in declared:
            if name.endswith(("32", "64")) and not name.endswith(str(bits)):
                continue  # one of the two that a wrapper chooses from
            declared[bits].setdefault(entry, set()).add(total)
    constants = {name: int(value, 0) for name, value in re.findall(r"const int (\w+) = (\w+);", text)}
    sizes = {}
    for name, body in re.findall(r"public struct (QEL\w+)\s*\{(.*?)^    \}", text, re.M | re.S):
        fields = re.findall(r"(?:SizeConst = (\w+)\)\]\s*)?public (\w+)(?:\[\])? \w+;", body)
        sizes[name] = sum(BYTES[kind] * count_of(constants, count or None) for count, kind in fields)
    return declared, sizes
