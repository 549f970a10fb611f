"""A C# program that calls every function, and with any argument prints the layout of all records."""
from bindings.calls import HANDLES, OUT_LONGS, OUT_NUMBERS, test_calls
from bindings.header import CSHARP, IN_AND_OUT, SYSTEM_RECORDS, TYPES

PROGRAM = """using System;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;

internal static class Calls
{
    private static byte[] Flatten(object value)
    {
        if (value is byte[]) return (byte[])value;
        if (value is int[]) return ((int[])value).SelectMany(BitConverter.GetBytes).ToArray();
        if (value is int) return BitConverter.GetBytes((int)value);
        if (value is uint) return BitConverter.GetBytes((uint)value);
        return value.GetType().GetFields().SelectMany(field => Flatten(field.GetValue(value))).ToArray();
    }

    private static string Hex(object record)
    {
        return string.Concat(Flatten(record).Select(b => b.ToString("x2")));
    }

    private static T Record<T>(int number)
    {
        int size = Marshal.SizeOf(typeof(T));
        IntPtr memory = Marshal.AllocHGlobal(size);
        for (int n = 0; n < size; ++n) Marshal.WriteByte(memory, n, (byte)(n * 7 + number));
        return (T)Marshal.PtrToStructure(memory, typeof(T));
    }

    private static void Layout(Type type)
    {
        Console.WriteLine(type.Name + " " + Marshal.SizeOf(type));
        foreach (FieldInfo field in type.GetFields())
            Console.WriteLine(type.Name + "." + field.Name + " " + Marshal.OffsetOf(type, field.Name));
    }

    private static void Main(string[] args)
    {
        if (args.Length > 0)
        {
LAYOUTS
            return;
        }
        IntPtr buffer = Marshal.AllocHGlobal(QELEngine.QEL_MAX_ATTR_SIZE);
        IntPtr bytes = Marshal.AllocHGlobal(4);
        Marshal.Copy(new byte[] { 1, 2, 3, 4 }, 0, bytes, 4);
CALLS
    }
}
"""


def fields_of(kind, name):
    return ' + "," + '.join(f"{name}.{field}" for field in SYSTEM_RECORDS[kind[:-1]])


def make(interface):
    records, lines = interface.attributes, []
    for call in test_calls(interface):
        before, passed, shown = [], [], []
        for at, ((kind, argument), value) in enumerate(zip(call.function.arguments, call.values)):
            name = f"a{at}"
            if kind in HANDLES:
                passed.append(f"new IntPtr({value:#x}L)")
            elif kind.endswith("void*") and call.record:
                record = f"QELEngine.{call.record}"
                if kind == "void*":
                    before.append(f"{record} {name};")
                    shown.append(f"Hex({name})")
                else:
                    before.append(f"{record} {name} = Record<{record}>({records.index(call.record)});")
                passed.append(("out " if kind == "void*" else "ref ") + name)
            elif kind.endswith("void*"):
                passed.append("buffer" if kind == "void*" else "bytes")
            elif kind == "const POINT*":
                passed.append(f"new[] {{ new QELEngine.POINT {{ x = {value[0]}, y = {value[1]} }}, "
                              f"new QELEngine.POINT {{ x = {value[2]}, y = {value[3]} }} }}")
            elif kind in ("const RECT*", "const SIZE*", "POINT*"):
                record = kind.split()[-1][:-1]
                fields = ", ".join(f"{field} = {number}" for field, number in zip(SYSTEM_RECORDS[record], value))
                before.append(f"var {name} = new QELEngine.{record} {{ {fields} }};")
                passed.append("ref " + name)
                if kind in OUT_LONGS:
                    shown.append(fields_of(kind, name))
            elif kind in OUT_LONGS:
                before.append(f"QELEngine.{kind[:-1]} {name};")
                passed.append("out " + name)
                shown.append(fields_of(kind, name))
            elif kind in ("char*", "wchar_t*"):
                before.append(f"var {name} = new System.Text.StringBuilder(64);")
                passed.append(name)
                shown.append(name)
            elif kind == "QELERROR*":
                before.append(f"var {name} = new QELEngine.QELERROR();")
                passed.append("ref " + name)
                shown.append(name + ".nCode")
            elif kind in OUT_NUMBERS:
                word = "ref " if (call.function.name, argument) in IN_AND_OUT else "out "
                before.append(f"{TYPES[kind][CSHARP].removeprefix('out ')} {name} = 0;")
                passed.append(word + name)
                shown.append(name)
            else:
                literal = f"{value}f" if kind == "float" else str(value)
                passed.append(f'"{value}"' if isinstance(value, str) else literal)
        result = f"QELEngine.{call.function.name}({', '.join(passed)})"
        if call.function.result == "const char*":
            result = f"QELEngine.Text({result})"
        parts = "".join(f' + " " + {part}' for part in shown)
        # The call comes first: what it puts out is printed after it.
        lines.append("{ " + " ".join(before) + f" var r = {result}; "
                     f'Console.WriteLine("{call.function.name} " + r{parts}); }}')
    layouts = "\n".join(f"            Layout(typeof(QELEngine.{name}));" for name in interface.records)
    return PROGRAM.replace("LAYOUTS", layouts).replace("CALLS", "\n".join("        " + line for line in lines))
