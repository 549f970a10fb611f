// QELEngine: the exported interface for C# and the other .NET languages, 32 and 64 bits.
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

    [StructLayout(LayoutKind.Sequential)]
    public struct POINT
    {
        public int x;
        public int y;
    }

    [StructLayout(LayoutKind.Sequential)]
    public struct SIZE
    {
        public int cx;
        public int cy;
    }

    [StructLayout(LayoutKind.Sequential)]
    public struct RECT
    {
        public int left;
        public int top;
        public int right;
        public int bottom;
    }

    // ---- element types ----

    public const int QEL_TYPE_ROOT = 0; // "qel", the drawing itself
    public const int QEL_TYPE_TEXT = 1; // "text"
    public const int QEL_TYPE_RECT = 2; // "rect"
    public const int QEL_TYPE_CHORD = 3; // "chord"
    public const int QEL_TYPE_PIE = 4; // "pie"
    public const int QEL_TYPE_ROUNDRECT = 5; // "rndrect"
    public const int QEL_TYPE_ARC = 6; // "arc"
    public const int QEL_TYPE_ELLIPSE = 7; // "ellipse"
    public const int QEL_TYPE_CIRCLE = 8; // "circle"
    public const int QEL_TYPE_LINE = 9; // "line"
    public const int QEL_TYPE_POLYLINE = 10; // "polyline"
    public const int QEL_TYPE_POLYGON = 11; // "polygon"
    public const int QEL_TYPE_PATH = 12; // "path", "defs" and "use" are known and skipped with their contents
    public const int QEL_TYPE_DEFS = 13;
    public const int QEL_TYPE_USE = 14;
    public const int QEL_TYPE_GROUP = 15; // "g"
    public const int QEL_TYPE_STATUS = 16; // "status"
    public const int QEL_TYPE_FRAME = 17; // "frame"
    public const int QEL_TYPE_SCALE = 18; // "scale"
    public const int QEL_TYPE_PATTERN = 19; // "pattern"
    public const int QEL_TYPE_DRAWRGN = 20; // "drawrgn"
    public const int QEL_TYPE_METER = 21; // "meter"
    public const int QEL_TYPE_NONE = 22; // no element: the answer of QELGetElemType on any failure

    // ---- draw flags (QELDraw) ----

    public const int QEL_DRAW_FULL = 0x1; // paint everything; without it only moving parts are painted again
    public const int QEL_DRAW_PRESSED = 0x2; // shapes with QEL_FLAG_PRESS are drawn 2 pixels right and down

    // ---- shape style word ----

    public const int QEL_STYLE_STROKE = 0; // "Stoke": outline only
    public const int QEL_STYLE_FILL = 0x1; // "Fill No3D": bit 0, filled with the hatch or gradient
    public const int QEL_STYLE_FILL_3DUP = 0x3; // "Fill 3DUp": filled; rectangles get a raised border
    public const int QEL_STYLE_FILL_3DDOWN = 0x5; // "Fill 3DDown": filled; rectangles get a sunken border
    public const int QEL_STYLE_UP_BIT = 0x2; // raised border
    public const int QEL_STYLE_DOWN_BIT = 0x4; // sunken border; the raised one wins when both are set
    public const int QEL_STYLE_FILL_MASK = 0xFFFF; // the fill style; the high 16 bits are the width of the 3D border in pixels, 0 meaning 2

    // ---- shape flags: host values, pressed shift, keep modes ----

    public const int QEL_FLAG_COLOR_PARAM = 0x1; // follows host parameter 0
    public const int QEL_FLAG_DRAFT_PARAM = 0x80; // follows host parameters 1 to 3 when filled
    public const int QEL_FLAG_PRESS = 0x4000; // moves when drawn with QEL_DRAW_PRESSED
    public const int QEL_KEEP_NONE = 0; // "Not Keep": all edges in proportion
    public const int QEL_KEEP_ALL = 0x1000; // "Keep All": fixed pixel distance from all four borders
    public const int QEL_KEEP_LEFT = 0x8000; // "Keep left"
    public const int QEL_KEEP_TOP = 0x10000; // "Keep top"
    public const int QEL_KEEP_RIGHT = 0x40000; // "Keep right"
    public const int QEL_KEEP_BOTTOM = 0x80000; // "Keep bottom"
    public const int QEL_KEEP_ANCHOR_MASK = 0xD9000; // Along the anchored edge (only with left, top, right or bottom).
    public const int QEL_ALONG_KEEP_BORDERS = 0; // "Keep borders": fixed distance from both ends
    public const int QEL_ALONG_KEEP_LENGTH = 0x100000; // "Keep length": position in proportion, length fixed
    public const int QEL_ALONG_AS_QEL = 0x200000; // "As QEL": both ends in proportion
    public const int QEL_ALONG_MASK = 0x300000; // Away from the anchored edge (only with left, top, right or bottom).
    public const int QEL_AWAY_AS_QEL = 0; // "As QEL": extent in proportion
    public const int QEL_AWAY_AS_GRAPH = 0x20000; // "As graph": keeps the element's own aspect ratio
    public const int QEL_AWAY_KEEP_LENGTH = 0x400000; // "Keep length": extent fixed
    public const int QEL_AWAY_KEEP_BORDER = 0x800000; // "Keep border": fixed distance from the far border
    public const int QEL_AWAY_MASK = 0xC20000;

    // ---- what a drawing follows (QELParamsSupported) ----

    public const int QEL_MASK_COLOR = 0x1; // something follows host parameter 0
    public const int QEL_MASK_DRAFT = 0x80; // something follows host parameters 1 to 3
    public const int QEL_MASK_KEEP = 0x1000; // something has a keep mode
    public const int QEL_MASK_TEXT = 0x2000; // there is a text
    public const int QEL_MASK_PRESS = 0x4000; // something has the pressed shift

    // ---- host parameters (QELSetParam, QELGetParam) ----

    public const int QEL_PARAM_COLOR = 0; // frame colour, COLORREF
    public const int QEL_PARAM_DRAFT = 1; // hatch style, 0 to 37
    public const int QEL_PARAM_DRAFT_FORE = 2; // hatch colour, COLORREF: A of shapes, first of bars, pies, scales
    public const int QEL_PARAM_DRAFT_BACK = 3; // the other one: B of shapes, second of bars, pies, scales
    public const int QEL_PARAM_COUNT = 4;

    // ---- selectors (QELSetScaleParam and its relatives) ----

    public const int QEL_SEL_PIN_COLOR = 0; // the pointer; of 3D bars, the far edges
    public const int QEL_SEL_SCALE_COLOR = 1; // axis and ticks
    public const int QEL_SEL_TICKS = 2; // intervals between ticks; 0 is refused
    public const int QEL_SEL_START_CODE = 3; // round and arc scales: where they begin, 0 to 7
    public const int QEL_SEL_MAX = 4; // value at the end of the scale
    public const int QEL_SEL_MIN = 5; // value at its start
    public const int QEL_SEL_VALUE = 6; // the current value; the ScaleStatus functions mean this one
    public const int QEL_SEL_FACE_COLOR = 7; // the face, the empty part of bars, and what erases a needle
    public const int QEL_SEL_SHOW_SCALE = 8; // axis and ticks; refused when the element's "usc" is 0
    public const int QEL_SEL_SHOW_PIN = 9; // the pointer; refused when the element's "upin" is 0
    public const int QEL_SEL_SHOW_LABELS = 10; // the numbers at major ticks
    public const int QEL_SEL_LABEL_COLOR = 11; // the numbers
    public const int QEL_SEL_SCALE_START = 12; // number that stands at the start of the scale
    public const int QEL_SEL_SCALE_END = 13; // number that stands at its end
    public const int QEL_SEL_MAJOR_EVERY = 14; // every which tick is a major one; 0: none
    public const int QEL_SEL_FULL_CIRCLE = 15; // 0 or 1; anything else, and the current value, is refused
    public const int QEL_SEL_SHOW_ALARM = 16; // the alarm zones
    public const int QEL_SEL_DECIMAL_SHIFT = 17; // numbers are printed divided by 10 to this power
    public const int QEL_SEL_LOW_LIMIT = 18; // values below are in the low zone
    public const int QEL_SEL_HIGH_LIMIT = 19; // values above are in the high zone
    public const int QEL_SEL_LOW_COLOR = 20; // the low zone
    public const int QEL_SEL_HIGH_COLOR = 21; // the high zone
    public const int QEL_SEL_REVERSE = 22; // the scale runs from the maximum to the minimum
    public const int QEL_SEL_USE_BASE = 23; // bars grow from the base value
    public const int QEL_SEL_BASE_VALUE = 24; // the base value; also as a float
    public const int QEL_SEL_FILL_ONLY = 25; // bars paint no empty part, faces are outlines
    public const int QEL_SEL_ANGLE_OFFSET = 26; // degrees by which a dial is turned clockwise
    public const int QEL_SEL_PIN_STYLE = 27; // needle or hands, 0 to 4
    public const int QEL_SEL_AXIS_STYLE = 28; // bands and ticks, 0 to 3
    public const int QEL_SEL_SHOW_FRAME = 29; // the outline of 3D bars
    public const int QEL_SEL_SHOW_VALUE = 30; // the value as a number
    public const int QEL_SEL_FRAME_OPTION = 31; // 1: 3D bars are cylinders, else boxes
    public const int QEL_SEL_SECTOR_COUNT = 32; // sectors of a share chart, at most 32
    public const int QEL_SEL_FONT_SIZE = 33; // size of the numbers; 0: by the meter's size
    public const int QEL_SEL_COUNT = 34;

    // ---- colours ----

    public const uint QEL_COLOR_BLINK = 0x80000000;

    // ---- attribute records (QELGetElemAttr, QELSetElemAttr) ----

    public const int QEL_SHAPE_WORDS = 33; // geometry words of a shape record
    public const int QEL_TEXT_SIZE = 256; // bytes of a text or an identifier, the ending zero included
    public const int QEL_MAX_POINTS = 16; // points of a polygon or polyline
    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELSHAPEATTR
    {
        public uint nSize;
        public uint nStyle;
        public int nDraft;
        public uint clrA;
        public uint clrB;
        public uint clrPen;
        public int nPenStyle;
        public int nPenWidth;
        [MarshalAs(UnmanagedType.ByValArray, SizeConst = QEL_SHAPE_WORDS)]
        public int[] nGeometry;
        [MarshalAs(UnmanagedType.ByValArray, SizeConst = QEL_TEXT_SIZE)]
        public byte[] szText;
        public uint nFlags;
    }

    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELROOTATTR
    {
        public uint nSize;
        public uint nFormat;
        public int nType;
        public int nWidth;
        public int nHeight;
        public uint nRotate;
    }

    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELWORDATTR
    {
        public int nValue;
    }

    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELSCALEATTR
    {
        public uint nSize;
        public uint nId;
        public int bHide;
        public int nType;
        public uint nStyle;
        public int nMin;
        public int nMax;
        public int bPin;
        [MarshalAs(UnmanagedType.ByValArray, SizeConst = 7)]
        public int[] nGeometry;
    }

    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELDRAWRGNATTR
    {
        public uint nSize;
        public int nStyle;
        public RECT rc;
        public uint nFlags;
    }

    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELMETERATTR
    {
        public uint nSize;
        public uint nId;
        public int bUseScale;
        public int bUsePin;
        public int nType;
        public int nMax;
        public int nMin;
        [MarshalAs(UnmanagedType.ByValArray, SizeConst = 9)]
        public int[] nGeometry;
        public uint nFlags;
    }

    public const int QEL_MAX_ATTR_SIZE = 520;

    // ---- engine and file ----

    [DllImport(Dll, EntryPoint = "CreateQELEngine", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr CreateQELEngine();

    [DllImport(Dll, EntryPoint = "DestroyQELEngine", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int DestroyQELEngine(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELGetVersion", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern uint QELGetVersion();

    [DllImport(Dll, EntryPoint = "QELShowOnly", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELShowOnly(int bShowOnly);

    [DllImport(Dll, EntryPoint = "QELNewFile", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELNewFile(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELOpenFile", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELOpenFile(IntPtr hEngine, string pszPath);

    [DllImport(Dll, EntryPoint = "_QELOpenFileU@8", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELOpenFileU32(IntPtr hEngine, [MarshalAs(UnmanagedType.LPWStr)] string pszPath);
    [DllImport(Dll, EntryPoint = "QELOpenFileU", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELOpenFileU64(IntPtr hEngine, [MarshalAs(UnmanagedType.LPWStr)] string pszPath);
    public static int QELOpenFileU(IntPtr hEngine, string pszPath)
    {
        return IntPtr.Size == 4 ? QELOpenFileU32(hEngine, pszPath) : QELOpenFileU64(hEngine, pszPath);
    }

    [DllImport(Dll, EntryPoint = "QELSaveFile", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSaveFile(IntPtr hEngine, string pszPath);

    [DllImport(Dll, EntryPoint = "QELCloseFile", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELCloseFile(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELGetName", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetName(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELGetType", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetType(IntPtr hEngine);

    // ---- why a call failed ----

    public const int QEL_ERROR_NONE = 0; // No call has failed.
    public const int QEL_ERROR_HANDLE = 1; // The engine handle is null or not live: use one that CreateQELEngine gave and that is not destroyed.
    public const int QEL_ERROR_ARGUMENT = 2; // A pointer that the call needs is null, or an argument is none that it takes.
    public const int QEL_ERROR_SHOW_ONLY = 3; // In show-only mode a drawing has no elements and is not edited or saved: open it with QELShowOnly switched off.
    public const int QEL_ERROR_NO_DRAWING = 4; // No drawing is open: open a file, or begin a new drawing with QELNewFile.
    public const int QEL_ERROR_ELEMENT = 5; // The element handle is null, deleted, or of another drawing.
    public const int QEL_ERROR_TYPE = 6; // There are no elements of this type: the types are QEL_TYPE_..., without path, defs and use.
    public const int QEL_ERROR_PLACE = 7; // The element cannot stand there: the root stays alone, nothing goes into itself, the one before it is a child of the same parent, and at most 512 levels nest.
    public const int QEL_ERROR_RECORD_SIZE = 8; // The record has the wrong size: set its size word, and give a buffer of its whole size.
    public const int QEL_ERROR_VALUE = 9; // The value, or the number of what it is for, is out of its range or not taken by this element.
    public const int QEL_ERROR_NO_RECT = 10; // The element has no rectangle: it has no points, or nothing is in it.
    public const int QEL_ERROR_BUFFER = 11; // The buffer is too small: give one of the size that the call has told.
    public const int QEL_ERROR_MEMORY = 12; // Memory ran out.
    public const int QEL_ERROR_PATH = 13; // The path cannot be spelled in the ANSI code page, or is too long in it: use QELOpenFileW.
    public const int QEL_ERROR_NO_FILE = 14; // There is no such file: check the path, and for a relative one the current folder.
    public const int QEL_ERROR_IN_USE = 15; // Another program has the file open: close it there, or open it with QELOpenFileW, which shares it with others that read it.
    public const int QEL_ERROR_OPEN = 16; // The file cannot be opened: it may be a folder, or its rights do not allow it.
    public const int QEL_ERROR_READ = 17; // The file cannot be read to its end: its disk or network has failed.
    public const int QEL_ERROR_WRITE = 18; // The file cannot be written: the folder is missing or may not be written to, or the disk is full.
    public const int QEL_ERROR_REPLACE = 19; // The file that is there cannot be replaced: it is read-only, a folder, a device, or open in another program.
    public const int QEL_ERROR_NOT_QEL = 20; // The file is no drawing: its first element has to be <qel>.
    public const int QEL_ERROR_GDI = 21; // The device context is none, or the system has no more drawing objects.
    public const int QEL_ERROR_XML = 100; // Beginning of the numbers of what is wrong in the text of a drawing.
    public const int QEL_ERROR_XML_DEPTH = 102; // Elements are nested more than 512 levels deep.
    public const int QEL_ERROR_XML_EMPTY = 105; // The drawing is empty.
    public const int QEL_ERROR_XML_ATTR = 114; // An attribute's value is not closed by its quote, or an attribute of the XML declaration cannot be read.
    public const int QEL_ERROR_XML_START_TAG = 116; // A start tag cannot be read here: NAME="VALUE", '/>' or '>' is expected.
    public const int QEL_ERROR_XML_END_NAME = 117; // The drawing ends right after an element's name.
    public const int QEL_ERROR_XML_END_TAG = 118; // The drawing ends inside a start tag.
    public const int QEL_ERROR_XML_SLASH = 119; // '/' is not followed by '>'.
    public const int QEL_ERROR_XML_MISMATCH = 120; // The end tag does not match the element that is open.
    public const int QEL_ERROR_XML_END_CONTENT = 121; // The drawing ends inside an element's content.
    public const int QEL_ERROR_TEXT_SIZE = 256; // bytes of an error's sentence, the ending zero included
    [StructLayout(LayoutKind.Sequential, Pack = 1)]
    public struct QELERROR
    {
        public uint nSize;
        public uint nCode;
        public uint nLine;
        public uint nColumn;
        public uint nSystem;
        [MarshalAs(UnmanagedType.ByValArray, SizeConst = QEL_ERROR_TEXT_SIZE)]
        public byte[] szText;
    }

    [DllImport(Dll, EntryPoint = "QELGetError", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetError(IntPtr hEngine, ref QELERROR pError);

    // ---- files of any path, drawings in memory ----

    [DllImport(Dll, EntryPoint = "QELOpenFileW", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELOpenFileW(IntPtr hEngine, [MarshalAs(UnmanagedType.LPWStr)] string pszPath);

    [DllImport(Dll, EntryPoint = "QELSaveFileW", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSaveFileW(IntPtr hEngine, [MarshalAs(UnmanagedType.LPWStr)] string pszPath);

    [DllImport(Dll, EntryPoint = "QELOpenMemory", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELOpenMemory(IntPtr hEngine, IntPtr pBytes, uint nSize);
    [DllImport(Dll, EntryPoint = "QELOpenMemory", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELOpenMemory(IntPtr hEngine, byte[] pBytes, uint nSize);

    [DllImport(Dll, EntryPoint = "QELSaveMemory", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSaveMemory(IntPtr hEngine, IntPtr pBuffer, ref uint pnSize);
    [DllImport(Dll, EntryPoint = "QELSaveMemory", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSaveMemory(IntPtr hEngine, byte[] pBuffer, ref uint pnSize);

    [DllImport(Dll, EntryPoint = "QELIsModified", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELIsModified(IntPtr hEngine);

    // ---- texts in any script ----

    [DllImport(Dll, EntryPoint = "QELSetTextCodePage", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetTextCodePage(IntPtr hEngine, uint nCodePage);

    [DllImport(Dll, EntryPoint = "QELGetTextCodePage", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetTextCodePage(IntPtr hEngine, out uint pnCodePage);

    [DllImport(Dll, EntryPoint = "QELNewFileEx", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELNewFileEx(IntPtr hEngine, uint nCodePage);

    [DllImport(Dll, EntryPoint = "QELSetElemTextW", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemTextW(IntPtr hEngine, IntPtr hElem, [MarshalAs(UnmanagedType.LPWStr)] string pszText);

    [DllImport(Dll, EntryPoint = "QELGetElemTextW", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemTextW(IntPtr hEngine, IntPtr hElem, [Out, MarshalAs(UnmanagedType.LPWStr)] System.Text.StringBuilder pszBuffer, int nCount);

    // ---- element tree ----

    [DllImport(Dll, EntryPoint = "QELGetRootElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetRootElem(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELCreateElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELCreateElem(IntPtr hEngine, int nType, IntPtr hParent, IntPtr hAfter);

    [DllImport(Dll, EntryPoint = "QELDeleteElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELDeleteElem(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELMoveElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELMoveElem(IntPtr hEngine, IntPtr hElem, IntPtr hParent, IntPtr hAfter);

    [DllImport(Dll, EntryPoint = "QELCopyElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELCopyElem(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetParentElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetParentElem(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetFirstChild", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetFirstChild(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetLastChild", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetLastChild(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetNextElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetNextElem(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetPrevElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetPrevElem(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetElemType", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemType(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELGetElemId", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELGetElemId(IntPtr hEngine, IntPtr hElem);

    [DllImport(Dll, EntryPoint = "QELSetElemId", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemId(IntPtr hEngine, IntPtr hElem, string pszId);

    // ---- attributes and geometry ----

    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, IntPtr pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELSHAPEATTR pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELROOTATTR pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELWORDATTR pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELSCALEATTR pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELDRAWRGNATTR pBuffer, out int pnSize);
    [DllImport(Dll, EntryPoint = "QELGetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemAttr(IntPtr hEngine, IntPtr hElem, out QELMETERATTR pBuffer, out int pnSize);

    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, IntPtr pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELSHAPEATTR pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELROOTATTR pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELWORDATTR pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELSCALEATTR pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELDRAWRGNATTR pBuffer, int nSize);
    [DllImport(Dll, EntryPoint = "QELSetElemAttr", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemAttr(IntPtr hEngine, IntPtr hElem, ref QELMETERATTR pBuffer, int nSize);

    [DllImport(Dll, EntryPoint = "QELGetElemRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemRect(IntPtr hEngine, IntPtr hElem, out RECT prc);

    [DllImport(Dll, EntryPoint = "QELSetElemRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetElemRect(IntPtr hEngine, IntPtr hElem, ref RECT prc);

    [DllImport(Dll, EntryPoint = "QELGetRefSize", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetRefSize(IntPtr hEngine, out SIZE pSize);

    [DllImport(Dll, EntryPoint = "QELSetRefSize", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetRefSize(IntPtr hEngine, ref SIZE pSize);

    [DllImport(Dll, EntryPoint = "QELGetQELRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetQELRect(IntPtr hEngine, out RECT prc);

    [DllImport(Dll, EntryPoint = "QELSetQELRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetQELRect(IntPtr hEngine, ref RECT prc);

    [DllImport(Dll, EntryPoint = "QELSetPixelScale", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetPixelScale(IntPtr hEngine, uint nPercent);

    [DllImport(Dll, EntryPoint = "QELGetPixelScale", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetPixelScale(IntPtr hEngine, out uint pnPercent);

    [DllImport(Dll, EntryPoint = "QELSetSmooth", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetSmooth(IntPtr hEngine, int nSamples);

    [DllImport(Dll, EntryPoint = "QELGetSmooth", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetSmooth(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELRenderBitmap", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELRenderBitmap(IntPtr hEngine, IntPtr pBits, int nWidth, int nHeight, int nStride, uint nFlags);
    [DllImport(Dll, EntryPoint = "QELRenderBitmap", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELRenderBitmap(IntPtr hEngine, byte[] pBits, int nWidth, int nHeight, int nStride, uint nFlags);

    [DllImport(Dll, EntryPoint = "QELSetFontFace", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetFontFace(IntPtr hEngine, [MarshalAs(UnmanagedType.LPWStr)] string pszFace);

    [DllImport(Dll, EntryPoint = "QELGetDrawGraphRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetDrawGraphRect(IntPtr hEngine, out RECT prc);

    // ---- where things are ----

    [DllImport(Dll, EntryPoint = "QELGetElemDrawRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetElemDrawRect(IntPtr hEngine, IntPtr hElem, out RECT prc);

    [DllImport(Dll, EntryPoint = "QELGetIdDrawRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetIdDrawRect(IntPtr hEngine, string pszId, out RECT prc);

    [DllImport(Dll, EntryPoint = "QELElemFromPoint", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELElemFromPoint(IntPtr hEngine, [In] POINT[] ppt);

    [DllImport(Dll, EntryPoint = "QELIdFromPoint", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELIdFromPoint(IntPtr hEngine, [In] POINT[] ppt, [Out] System.Text.StringBuilder pszBuffer, int nSize);

    [DllImport(Dll, EntryPoint = "QELFindElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern IntPtr QELFindElem(IntPtr hEngine, string pszId);

    [DllImport(Dll, EntryPoint = "QELElemToDevice", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELElemToDevice(IntPtr hEngine, IntPtr hElem, ref POINT ppt);

    [DllImport(Dll, EntryPoint = "QELDeviceToElem", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELDeviceToElem(IntPtr hEngine, IntPtr hElem, ref POINT ppt);

    // ---- drawing ----

    [DllImport(Dll, EntryPoint = "QELDraw", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELDraw(IntPtr hEngine, IntPtr hdc, ref RECT prcUpdate, uint nFlags);

    [DllImport(Dll, EntryPoint = "QELRotate", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELRotate(IntPtr hEngine, int nAngle);

    [DllImport(Dll, EntryPoint = "QELSetBlinkState", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetBlinkState(IntPtr hEngine, int nState);

    // ---- live values ----

    [DllImport(Dll, EntryPoint = "QELGetStatus", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetStatus(IntPtr hEngine, out uint pnStatus);

    [DllImport(Dll, EntryPoint = "QELSetStatus", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetStatus(IntPtr hEngine, uint nStatus);

    [DllImport(Dll, EntryPoint = "QELGetParam", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetParam(IntPtr hEngine, int nIndex, out uint pnValue);

    [DllImport(Dll, EntryPoint = "QELSetParam", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetParam(IntPtr hEngine, int nIndex, uint nValue);

    [DllImport(Dll, EntryPoint = "QELParamsSupported", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern uint QELParamsSupported(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELGetScaleParam", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetScaleParam(IntPtr hEngine, uint nId, uint nSelector, out uint pnValue);

    [DllImport(Dll, EntryPoint = "QELSetScaleParam", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetScaleParam(IntPtr hEngine, uint nId, uint nSelector, uint nValue);

    [DllImport(Dll, EntryPoint = "QELGetScaleParamf", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetScaleParamf(IntPtr hEngine, uint nId, uint nSelector, out float pfValue);

    [DllImport(Dll, EntryPoint = "QELSetScaleParamf", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetScaleParamf(IntPtr hEngine, uint nId, uint nSelector, float fValue);

    [DllImport(Dll, EntryPoint = "QELGetScaleStatus", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetScaleStatus(IntPtr hEngine, uint nId, out uint pnValue);

    [DllImport(Dll, EntryPoint = "QELSetScaleStatus", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetScaleStatus(IntPtr hEngine, uint nId, uint nValue);

    [DllImport(Dll, EntryPoint = "QELGetScaleStatusf", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetScaleStatusf(IntPtr hEngine, uint nId, out float pfValue);

    [DllImport(Dll, EntryPoint = "QELSetScaleStatusf", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetScaleStatusf(IntPtr hEngine, uint nId, float fValue);

    // ---- live values by identifier ----

    [DllImport(Dll, EntryPoint = "QELSetValue", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetValue(IntPtr hEngine, string pszId, double fValue);

    [DllImport(Dll, EntryPoint = "QELGetValue", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetValue(IntPtr hEngine, string pszId, out double pfValue);

    [DllImport(Dll, EntryPoint = "QELSetPin", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetPin(IntPtr hEngine, string pszId, int nPin, double fValue);

    [DllImport(Dll, EntryPoint = "QELGetPin", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetPin(IntPtr hEngine, string pszId, int nPin, out double pfValue);

    [DllImport(Dll, EntryPoint = "QELSetSelector", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetSelector(IntPtr hEngine, string pszId, uint nSelector, double fValue);

    [DllImport(Dll, EntryPoint = "QELGetSelector", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetSelector(IntPtr hEngine, string pszId, uint nSelector, out double pfValue);

    [DllImport(Dll, EntryPoint = "QELSetText", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetText(IntPtr hEngine, string pszId, string pszText);

    [DllImport(Dll, EntryPoint = "QELSetTextW", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetTextW(IntPtr hEngine, string pszId, [MarshalAs(UnmanagedType.LPWStr)] string pszText);

    [DllImport(Dll, EntryPoint = "QELSetVisible", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetVisible(IntPtr hEngine, string pszId, int bVisible);

    [DllImport(Dll, EntryPoint = "QELSetColor", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetColor(IntPtr hEngine, string pszId, int nPlace, uint clr);

    [DllImport(Dll, EntryPoint = "QELResetLive", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELResetLive(IntPtr hEngine, string pszId);

    [DllImport(Dll, EntryPoint = "QELSetQuality", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetQuality(IntPtr hEngine, string pszId, int nQuality);

    [DllImport(Dll, EntryPoint = "QELSetEasing", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELSetEasing(IntPtr hEngine, string pszId, uint nTime);

    [DllImport(Dll, EntryPoint = "QELAdvance", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELAdvance(IntPtr hEngine, uint nTime);

    [DllImport(Dll, EntryPoint = "QELGetLiveId", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetLiveId(IntPtr hEngine, uint nIndex, [Out] System.Text.StringBuilder pszBuffer, int nSize, out int pnType);

    // ---- updates of the picture ----

    [DllImport(Dll, EntryPoint = "QELGetDirtyRect", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetDirtyRect(IntPtr hEngine, out RECT prc);

    [DllImport(Dll, EntryPoint = "QELGetDirtyRegion", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELGetDirtyRegion(IntPtr hEngine, IntPtr hRegion);

    [DllImport(Dll, EntryPoint = "QELInvalidate", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELInvalidate(IntPtr hEngine, ref RECT prc);

    [DllImport(Dll, EntryPoint = "QELValidate", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELValidate(IntPtr hEngine);

    [DllImport(Dll, EntryPoint = "QELUpdate", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    public static extern int QELUpdate(IntPtr hEngine, IntPtr hdc, IntPtr hBackground);

    // ---- gradients and curves (no engine needed) ----

    [DllImport(Dll, EntryPoint = "_QELCreateGradientDescriptor@16", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern IntPtr QELCreateGradientDescriptor32(ref RECT prc, int nKind, uint clr1, uint clr2);
    [DllImport(Dll, EntryPoint = "QELCreateGradientDescriptor", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern IntPtr QELCreateGradientDescriptor64(ref RECT prc, int nKind, uint clr1, uint clr2);
    public static IntPtr QELCreateGradientDescriptor(ref RECT prc, int nKind, uint clr1, uint clr2)
    {
        return IntPtr.Size == 4 ? QELCreateGradientDescriptor32(ref prc, nKind, clr1, clr2) : QELCreateGradientDescriptor64(ref prc, nKind, clr1, clr2);
    }

    [DllImport(Dll, EntryPoint = "_QELCloseGradientDescriptor@4", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELCloseGradientDescriptor32(IntPtr hGradient);
    [DllImport(Dll, EntryPoint = "QELCloseGradientDescriptor", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELCloseGradientDescriptor64(IntPtr hGradient);
    public static int QELCloseGradientDescriptor(IntPtr hGradient)
    {
        return IntPtr.Size == 4 ? QELCloseGradientDescriptor32(hGradient) : QELCloseGradientDescriptor64(hGradient);
    }

    [DllImport(Dll, EntryPoint = "_QELGetGradientBrush@4", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern IntPtr QELGetGradientBrush32(IntPtr hGradient);
    [DllImport(Dll, EntryPoint = "QELGetGradientBrush", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern IntPtr QELGetGradientBrush64(IntPtr hGradient);
    public static IntPtr QELGetGradientBrush(IntPtr hGradient)
    {
        return IntPtr.Size == 4 ? QELGetGradientBrush32(hGradient) : QELGetGradientBrush64(hGradient);
    }

    [DllImport(Dll, EntryPoint = "_QELDrawBezier@12", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELDrawBezier32(IntPtr hdc, [In] POINT[] pPoints, uint nCount);
    [DllImport(Dll, EntryPoint = "QELDrawBezier", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELDrawBezier64(IntPtr hdc, [In] POINT[] pPoints, uint nCount);
    public static int QELDrawBezier(IntPtr hdc, POINT[] pPoints, uint nCount)
    {
        return IntPtr.Size == 4 ? QELDrawBezier32(hdc, pPoints, nCount) : QELDrawBezier64(hdc, pPoints, nCount);
    }

    [DllImport(Dll, EntryPoint = "_QELDrawCurve@12", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELDrawCurve32(IntPtr hdc, [In] POINT[] pPoints, uint nCount);
    [DllImport(Dll, EntryPoint = "QELDrawCurve", CallingConvention = CallingConvention.StdCall,
        CharSet = CharSet.Ansi, ExactSpelling = true, BestFitMapping = false, ThrowOnUnmappableChar = true)]
    private static extern int QELDrawCurve64(IntPtr hdc, [In] POINT[] pPoints, uint nCount);
    public static int QELDrawCurve(IntPtr hdc, POINT[] pPoints, uint nCount)
    {
        return IntPtr.Size == 4 ? QELDrawCurve32(hdc, pPoints, nCount) : QELDrawCurve64(hdc, pPoints, nCount);
    }
}
