"""A stand-in of the DLL that records every call, for runtimes that are here on Linux only."""
from bindings import csharp_calls, pascal
from bindings.calls import (HANDLES, OUT_CODE, OUT_LONGS, OUT_NUMBERS, OUT_TEXT, OUT_WIDE, layout_lines, test_calls,
                            test_result)

HEAD = """/* A stand-in of QELEngine.dll for Linux, made by scripts/bindings from the header that it
 * includes. It writes every call with its arguments into the file $QEL_TRACE and answers with numbers
 * that tell themselves apart. A few functions of the system that the sample hosts use are here, too. */
#include "QELEngine.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static FILE* g_pTrace;

static void Begin(const char* pszName)
{
    if (!g_pTrace) g_pTrace = fopen(getenv("QEL_TRACE"), "w");
    if (!g_pTrace) abort();
    fprintf(g_pTrace, "%s", pszName);
}
static void Handle(const void* h) { fprintf(g_pTrace, " %#llx", (unsigned long long)(size_t)h); }
static void Int(int n) { fprintf(g_pTrace, " %d", n); }
static void Dword(DWORD n) { fprintf(g_pTrace, " %u", n); }
static void Float(float f) { fprintf(g_pTrace, " %g", f); }
static void Double(double f) { fprintf(g_pTrace, " %g", f); }
static void Text(const char* psz) { fprintf(g_pTrace, " '%s'", psz); }
static void Wide(const void* p) /* 16-bit units; Python on Linux hands over 32-bit ones */
{
    const unsigned short* pUnits = p;
    const int nStep = pUnits[0] && !pUnits[1] && pUnits[2] ? 2 : 1;
    fprintf(g_pTrace, " '");
    for (; *pUnits; pUnits += nStep) fputc(*pUnits, g_pTrace);
    fprintf(g_pTrace, "'");
}
static void Longs(const void* p, int nCount)
{
    const LONG* pLongs = p;
    int n;
    for (n = 0; n < nCount; ++n) fprintf(g_pTrace, n ? ",%d" : " %d", pLongs[n]);
}
static void Bytes(const void* p, int nCount)
{
    const unsigned char* pBytes = p;
    fputc(' ', g_pTrace);
    while (nCount-- > 0) fprintf(g_pTrace, "%02x", *pBytes++);
}
static void Out(void) { fprintf(g_pTrace, " out"); }
static void End(void)
{
    fputc('\\n', g_pTrace);
    fflush(g_pTrace);
}

static int Fill(HQELELEM hElem, void* pBuffer) /* the element's number chooses the record */
{
    static const int g_sizes[] = {SIZES};
    const unsigned nRecord = (unsigned)(size_t)hElem % (sizeof g_sizes / sizeof g_sizes[0]);
    int n;
    for (n = 0; n < g_sizes[nRecord]; ++n) ((unsigned char*)pBuffer)[n] = (unsigned char)(n * 7 + nRecord);
    return g_sizes[nRecord];
}

"""
WINDOWS = """/* The few names of the system that QELEngine.h needs, for the stand-in alone. */
#include <stddef.h>
#define __stdcall
typedef unsigned int DWORD, COLORREF;
typedef int LONG, BOOL;
typedef struct HDC__ *HDC;
typedef struct HBRUSH__ *HBRUSH;
typedef struct HRGN__ *HRGN;
typedef struct { LONG left, top, right, bottom; } RECT;
typedef struct { LONG x, y; } POINT;
typedef struct { LONG cx, cy; } SIZE;
"""
SYSTEM = """
void* CreateCompatibleDC(void* dc) { Begin("CreateCompatibleDC"); Handle(dc); End(); return (void*)0x5500000001; }
void* CreateDIBSection(void* dc, void* pInfo, DWORD nUsage, void** ppBits, void* hSection, DWORD nOffset)
{
    Begin("CreateDIBSection"); Handle(dc); Bytes(pInfo, 40); Dword(nUsage); Handle(hSection); Dword(nOffset); End();
    *ppBits = calloc(1, (size_t)((LONG*)pInfo)[5]);
    return (void*)0x5500000002;
}
void* CreateFontW(int a, int b, int c, int d, int e, DWORD f, DWORD g, DWORD h, DWORD i, DWORD j, DWORD k, DWORD l,
                  DWORD m, void* pszFace)
{
    Begin("CreateFontW"); Int(a); Int(b); Int(c); Int(d); Int(e); Dword(f); Dword(g); Dword(h); Dword(i); Dword(j);
    Dword(k); Dword(l); Dword(m); Wide(pszFace); End();
    return (void*)0x5500000003;
}
void* CreateSolidBrush(DWORD clr) { Begin("CreateSolidBrush"); Dword(clr); End(); return (void*)0x5500000004; }
void* SelectObject(void* dc, void* h)
{
    Begin("SelectObject"); Handle(dc); Handle(h); End();
    return (void*)((size_t)h | 0x100);
}
int DeleteObject(void* h) { Begin("DeleteObject"); Handle(h); End(); return 1; }
int DeleteDC(void* dc) { Begin("DeleteDC"); Handle(dc); End(); return 1; }
void* CreateCompatibleBitmap(void* dc, int nWidth, int nHeight)
{
    Begin("CreateCompatibleBitmap"); Handle(dc); Int(nWidth); Int(nHeight); End();
    return (void*)0x5500000005;
}
int BitBlt(void* dcTo, int x, int y, int cx, int cy, void* dcFrom, int x1, int y1, int nOperation)
{
    Begin("BitBlt"); Handle(dcTo); Int(x); Int(y); Int(cx); Int(cy); Handle(dcFrom); Int(x1); Int(y1);
    Int(nOperation); End();
    return 1;
}
void* CreateRectRgn(int nLeft, int nTop, int nRight, int nBottom)
{
    Begin("CreateRectRgn"); Int(nLeft); Int(nTop); Int(nRight); Int(nBottom); End();
    return (void*)0x5500000006;
}
int InvalidateRgn(void* hwnd, void* hRegion, int bErase)
{
    Begin("InvalidateRgn"); (void)hwnd; Handle(hRegion); Int(bErase); End();
    return 1;
}
int SetProcessDPIAware(void) { Begin("SetProcessDPIAware"); End(); return 1; }
int SetProcessDpiAwarenessContext(void* context)
{
    Begin("SetProcessDpiAwarenessContext"); Handle(context); End();
    return 1;
}
int GdiFlush(void) { Begin("GdiFlush"); End(); return 1; }
int FillRect(void* dc, void* prc, void* hBrush)
{
    Begin("FillRect"); Handle(dc); Longs(prc, 4); Handle(hBrush); End();
    return 1;
}
"""


def make(interface):
    out = [HEAD.replace("SIZES", ", ".join(str(interface.sizes[name]) for name in interface.attributes))]
    tracers = {**dict.fromkeys(HANDLES, "Handle({0});"), "int": "Int({0});", "BOOL": "Int({0});",
               "DWORD": "Dword({0});", "COLORREF": "Dword({0});", "float": "Float({0});", "double": "Double({0});",
               "const char*": "Text({0});",
               "const wchar_t*": "Wide({0});", "const RECT*": "Longs({0}, 4);", "const SIZE*": "Longs({0}, 2);",
               "POINT*": "Longs({0}, 2);", "const POINT*": "Longs({0}, 4);", "const void*": "Bytes({0}, nSize);"}
    for index, function in enumerate(interface.functions):
        arguments = ", ".join(f"{kind} {name}" for kind, name in function.arguments) or "void"
        body = [f'Begin("{function.name}");']
        body += [tracers.get(kind, "Out();").format(name) for kind, name in function.arguments]
        body.append("End();")
        for kind, name in function.arguments:
            if kind in OUT_LONGS:
                values = ", ".join(map(str, OUT_LONGS[kind]))
                body.append(f"{{ const {kind[:-1]} value = {{{values}}}; *{name} = value; }}")
            elif kind == "char*":
                body.append(f'strcpy({name}, "{OUT_TEXT}");')
            elif kind == "wchar_t*":
                body.append(f"memset({name}, 0, 8); *(char*){name} = '{OUT_WIDE}';")
            elif kind == "void*" and function.takes_record():
                body.append(f"*pnSize = Fill(hElem, {name});")
            elif kind == "void*":
                body.append(f"(void){name};")
            elif kind == "QELERROR*":
                body.append(f"{name}->nCode = {OUT_CODE};")
            elif kind in OUT_NUMBERS and not (name == "pnSize" and function.takes_record()):
                body.append(f"*{name} = ({kind[:-1]}){OUT_NUMBERS[kind]};")
        result = test_result(function.result, index)
        body.append(f'return "{result}";' if isinstance(result, str) else f"return ({function.result}){result};")
        lines = "\n    ".join(body)
        out.append(f"{function.result} QELAPI {function.name}({arguments})\n{{\n    {lines}\n}}\n")
    return "\n".join(out) + SYSTEM


def make_layout_c(interface):
    body = layout_lines(interface, lambda record: f'    printf("{record} %d\\n", (int)sizeof({record}));',
                        lambda record, field:
                        f'    printf("{record}.{field} %d\\n", (int)offsetof({record}, {field}));')
    return ('#include "QELEngine.h"\n#include <stddef.h>\n#include <stdio.h>\nint main(void)\n{\n' +
            "\n".join(body) + "\n    return 0;\n}\n")


def write(interface, folder):
    """Writes into a folder: windows.h and standin.c; layout.c, layout.pas and Calls.cs, which print the layout
    of all records (Calls.cs with any argument; without one it calls every function); and what has to come
    out of the calls: trace.txt of the stand-in, printed.txt of the callers."""
    folder.mkdir(parents=True, exist_ok=True)
    calls = test_calls(interface)
    for name, text in (("windows.h", WINDOWS), ("standin.c", make(interface)),
                       ("layout.c", make_layout_c(interface)), ("layout.pas", pascal.make_layout(interface)),
                       ("Calls.cs", csharp_calls.make(interface)),
                       ("trace.txt", "".join(call.trace + "\n" for call in calls)),
                       ("printed.txt", "".join(call.printed + "\n" for call in calls))):
        (folder / name).write_text(text, encoding="utf-8", newline="\n")
