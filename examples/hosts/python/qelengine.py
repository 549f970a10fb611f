"""QELEngine: the exported interface for Python on Windows, 32 and 64 bits (ctypes).

Made from include/QELEngine.h by scripts/bindings; the header tells what each function does.
load() gives the DLL with the types of all its functions set:

    dll = qelengine.load("QELEngine.dll")
    engine = dll.CreateQELEngine()

Handles are opaque (numbers, None for none), texts are bytes in the system's ANSI code page
(text.encode("mbcs")), an engine is used by one thread at a time, and a result of 0 means failure.
Where the header takes a pointer, pass ctypes.byref(variable) or None."""
import ctypes
from ctypes import POINTER, c_char, c_char_p, c_double, c_float, c_int32, c_uint32, c_void_p, c_wchar_p

HQELENGINE = c_void_p  # an engine, or in show-only mode a share of one
HQELELEM = c_void_p  # an element of the open drawing
HQELGRADIENT = c_void_p  # a gradient descriptor
HANDLE = c_void_p  # the system's handles: device contexts, brushes


class POINT(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("x", c_int32),
        ("y", c_int32),
    ]


class SIZE(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("cx", c_int32),
        ("cy", c_int32),
    ]


class RECT(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("left", c_int32),
        ("top", c_int32),
        ("right", c_int32),
        ("bottom", c_int32),
    ]


# ---- element types

QEL_TYPE_ROOT = 0  # "qel", the drawing itself
QEL_TYPE_TEXT = 1  # "text"
QEL_TYPE_RECT = 2  # "rect"
QEL_TYPE_CHORD = 3  # "chord"
QEL_TYPE_PIE = 4  # "pie"
QEL_TYPE_ROUNDRECT = 5  # "rndrect"
QEL_TYPE_ARC = 6  # "arc"
QEL_TYPE_ELLIPSE = 7  # "ellipse"
QEL_TYPE_CIRCLE = 8  # "circle"
QEL_TYPE_LINE = 9  # "line"
QEL_TYPE_POLYLINE = 10  # "polyline"
QEL_TYPE_POLYGON = 11  # "polygon"
QEL_TYPE_PATH = 12  # "path", "defs" and "use" are known and skipped with their contents
QEL_TYPE_DEFS = 13
QEL_TYPE_USE = 14
QEL_TYPE_GROUP = 15  # "g"
QEL_TYPE_STATUS = 16  # "status"
QEL_TYPE_FRAME = 17  # "frame"
QEL_TYPE_SCALE = 18  # "scale"
QEL_TYPE_PATTERN = 19  # "pattern"
QEL_TYPE_DRAWRGN = 20  # "drawrgn"
QEL_TYPE_METER = 21  # "meter"
QEL_TYPE_NONE = 22  # no element: the answer of QELGetElemType on any failure

# ---- draw flags (QELDraw)

QEL_DRAW_FULL = 0x1  # paint everything; without it only moving parts are painted again
QEL_DRAW_PRESSED = 0x2  # shapes with QEL_FLAG_PRESS are drawn 2 pixels right and down

# ---- shape style word

QEL_STYLE_STROKE = 0  # "Stoke": outline only
QEL_STYLE_FILL = 0x1  # "Fill No3D": bit 0, filled with the hatch or gradient
QEL_STYLE_FILL_3DUP = 0x3  # "Fill 3DUp": filled; rectangles get a raised border
QEL_STYLE_FILL_3DDOWN = 0x5  # "Fill 3DDown": filled; rectangles get a sunken border
QEL_STYLE_UP_BIT = 0x2  # raised border
QEL_STYLE_DOWN_BIT = 0x4  # sunken border; the raised one wins when both are set
QEL_STYLE_FILL_MASK = 0xFFFF  # the fill style; the high 16 bits are the width of the 3D border in pixels, 0 meaning 2

# ---- shape flags: host values, pressed shift, keep modes

QEL_FLAG_COLOR_PARAM = 0x1  # follows host parameter 0
QEL_FLAG_DRAFT_PARAM = 0x80  # follows host parameters 1 to 3 when filled
QEL_FLAG_PRESS = 0x4000  # moves when drawn with QEL_DRAW_PRESSED
QEL_KEEP_NONE = 0  # "Not Keep": all edges in proportion
QEL_KEEP_ALL = 0x1000  # "Keep All": fixed pixel distance from all four borders
QEL_KEEP_LEFT = 0x8000  # "Keep left"
QEL_KEEP_TOP = 0x10000  # "Keep top"
QEL_KEEP_RIGHT = 0x40000  # "Keep right"
QEL_KEEP_BOTTOM = 0x80000  # "Keep bottom"
QEL_KEEP_ANCHOR_MASK = 0xD9000  # Along the anchored edge (only with left, top, right or bottom).
QEL_ALONG_KEEP_BORDERS = 0  # "Keep borders": fixed distance from both ends
QEL_ALONG_KEEP_LENGTH = 0x100000  # "Keep length": position in proportion, length fixed
QEL_ALONG_AS_QEL = 0x200000  # "As QEL": both ends in proportion
QEL_ALONG_MASK = 0x300000  # Away from the anchored edge (only with left, top, right or bottom).
QEL_AWAY_AS_QEL = 0  # "As QEL": extent in proportion
QEL_AWAY_AS_GRAPH = 0x20000  # "As graph": keeps the element's own aspect ratio
QEL_AWAY_KEEP_LENGTH = 0x400000  # "Keep length": extent fixed
QEL_AWAY_KEEP_BORDER = 0x800000  # "Keep border": fixed distance from the far border
QEL_AWAY_MASK = 0xC20000

# ---- what a drawing follows (QELParamsSupported)

QEL_MASK_COLOR = 0x1  # something follows host parameter 0
QEL_MASK_DRAFT = 0x80  # something follows host parameters 1 to 3
QEL_MASK_KEEP = 0x1000  # something has a keep mode
QEL_MASK_TEXT = 0x2000  # there is a text
QEL_MASK_PRESS = 0x4000  # something has the pressed shift

# ---- host parameters (QELSetParam, QELGetParam)

QEL_PARAM_COLOR = 0  # frame colour, COLORREF
QEL_PARAM_DRAFT = 1  # hatch style, 0 to 37
QEL_PARAM_DRAFT_FORE = 2  # hatch colour, COLORREF: A of shapes, first of bars, pies, scales
QEL_PARAM_DRAFT_BACK = 3  # the other one: B of shapes, second of bars, pies, scales
QEL_PARAM_COUNT = 4

# ---- selectors (QELSetScaleParam and its relatives)

QEL_SEL_PIN_COLOR = 0  # the pointer; of 3D bars, the far edges
QEL_SEL_SCALE_COLOR = 1  # axis and ticks
QEL_SEL_TICKS = 2  # intervals between ticks; 0 is refused
QEL_SEL_START_CODE = 3  # round and arc scales: where they begin, 0 to 7
QEL_SEL_MAX = 4  # value at the end of the scale
QEL_SEL_MIN = 5  # value at its start
QEL_SEL_VALUE = 6  # the current value; the ScaleStatus functions mean this one
QEL_SEL_FACE_COLOR = 7  # the face, the empty part of bars, and what erases a needle
QEL_SEL_SHOW_SCALE = 8  # axis and ticks; refused when the element's "usc" is 0
QEL_SEL_SHOW_PIN = 9  # the pointer; refused when the element's "upin" is 0
QEL_SEL_SHOW_LABELS = 10  # the numbers at major ticks
QEL_SEL_LABEL_COLOR = 11  # the numbers
QEL_SEL_SCALE_START = 12  # number that stands at the start of the scale
QEL_SEL_SCALE_END = 13  # number that stands at its end
QEL_SEL_MAJOR_EVERY = 14  # every which tick is a major one; 0: none
QEL_SEL_FULL_CIRCLE = 15  # 0 or 1; anything else, and the current value, is refused
QEL_SEL_SHOW_ALARM = 16  # the alarm zones
QEL_SEL_DECIMAL_SHIFT = 17  # numbers are printed divided by 10 to this power
QEL_SEL_LOW_LIMIT = 18  # values below are in the low zone
QEL_SEL_HIGH_LIMIT = 19  # values above are in the high zone
QEL_SEL_LOW_COLOR = 20  # the low zone
QEL_SEL_HIGH_COLOR = 21  # the high zone
QEL_SEL_REVERSE = 22  # the scale runs from the maximum to the minimum
QEL_SEL_USE_BASE = 23  # bars grow from the base value
QEL_SEL_BASE_VALUE = 24  # the base value; also as a float
QEL_SEL_FILL_ONLY = 25  # bars paint no empty part, faces are outlines
QEL_SEL_ANGLE_OFFSET = 26  # degrees by which a dial is turned clockwise
QEL_SEL_PIN_STYLE = 27  # needle or hands, 0 to 4
QEL_SEL_AXIS_STYLE = 28  # bands and ticks, 0 to 3
QEL_SEL_SHOW_FRAME = 29  # the outline of 3D bars
QEL_SEL_SHOW_VALUE = 30  # the value as a number
QEL_SEL_FRAME_OPTION = 31  # 1: 3D bars are cylinders, else boxes
QEL_SEL_SECTOR_COUNT = 32  # sectors of a share chart, at most 32
QEL_SEL_FONT_SIZE = 33  # size of the numbers; 0: by the meter's size
QEL_SEL_COUNT = 34

# ---- colours

QEL_COLOR_BLINK = 0x80000000

# ---- attribute records (QELGetElemAttr, QELSetElemAttr)

QEL_SHAPE_WORDS = 33  # geometry words of a shape record
QEL_TEXT_SIZE = 256  # bytes of a text or an identifier, the ending zero included
QEL_MAX_POINTS = 16  # points of a polygon or polyline


class QELSHAPEATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nStyle", c_uint32),
        ("nDraft", c_int32),
        ("clrA", c_uint32),
        ("clrB", c_uint32),
        ("clrPen", c_uint32),
        ("nPenStyle", c_int32),
        ("nPenWidth", c_int32),
        ("nGeometry", c_int32 * QEL_SHAPE_WORDS),
        ("szText", c_char * QEL_TEXT_SIZE),
        ("nFlags", c_uint32),
    ]


class QELROOTATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nFormat", c_uint32),
        ("nType", c_int32),
        ("nWidth", c_int32),
        ("nHeight", c_int32),
        ("nRotate", c_uint32),
    ]


class QELWORDATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nValue", c_int32),
    ]


class QELSCALEATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nId", c_uint32),
        ("bHide", c_int32),
        ("nType", c_int32),
        ("nStyle", c_uint32),
        ("nMin", c_int32),
        ("nMax", c_int32),
        ("bPin", c_int32),
        ("nGeometry", c_int32 * 7),
    ]


class QELDRAWRGNATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nStyle", c_int32),
        ("rc", RECT),
        ("nFlags", c_uint32),
    ]


class QELMETERATTR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nId", c_uint32),
        ("bUseScale", c_int32),
        ("bUsePin", c_int32),
        ("nType", c_int32),
        ("nMax", c_int32),
        ("nMin", c_int32),
        ("nGeometry", c_int32 * 9),
        ("nFlags", c_uint32),
    ]


QEL_MAX_ATTR_SIZE = 520

# ---- why a call failed

QEL_ERROR_NONE = 0  # No call has failed.
QEL_ERROR_HANDLE = 1  # The engine handle is null or not live: use one that CreateQELEngine gave and that is not destroyed.
QEL_ERROR_ARGUMENT = 2  # A pointer that the call needs is null, or an argument is none that it takes.
QEL_ERROR_SHOW_ONLY = 3  # In show-only mode a drawing has no elements and is not edited or saved: open it with QELShowOnly switched off.
QEL_ERROR_NO_DRAWING = 4  # No drawing is open: open a file, or begin a new drawing with QELNewFile.
QEL_ERROR_ELEMENT = 5  # The element handle is null, deleted, or of another drawing.
QEL_ERROR_TYPE = 6  # There are no elements of this type: the types are QEL_TYPE_..., without path, defs and use.
QEL_ERROR_PLACE = 7  # The element cannot stand there: the root stays alone, nothing goes into itself, the one before it is a child of the same parent, and at most 512 levels nest.
QEL_ERROR_RECORD_SIZE = 8  # The record has the wrong size: set its size word, and give a buffer of its whole size.
QEL_ERROR_VALUE = 9  # The value, or the number of what it is for, is out of its range or not taken by this element.
QEL_ERROR_NO_RECT = 10  # The element has no rectangle: it has no points, or nothing is in it.
QEL_ERROR_BUFFER = 11  # The buffer is too small: give one of the size that the call has told.
QEL_ERROR_MEMORY = 12  # Memory ran out.
QEL_ERROR_PATH = 13  # The path cannot be spelled in the ANSI code page, or is too long in it: use QELOpenFileW.
QEL_ERROR_NO_FILE = 14  # There is no such file: check the path, and for a relative one the current folder.
QEL_ERROR_IN_USE = 15  # Another program has the file open: close it there, or open it with QELOpenFileW, which shares it with others that read it.
QEL_ERROR_OPEN = 16  # The file cannot be opened: it may be a folder, or its rights do not allow it.
QEL_ERROR_READ = 17  # The file cannot be read to its end: its disk or network has failed.
QEL_ERROR_WRITE = 18  # The file cannot be written: the folder is missing or may not be written to, or the disk is full.
QEL_ERROR_REPLACE = 19  # The file that is there cannot be replaced: it is read-only, a folder, a device, or open in another program.
QEL_ERROR_NOT_QEL = 20  # The file is no drawing: its first element has to be <qel>.
QEL_ERROR_GDI = 21  # The device context is none, or the system has no more drawing objects.
QEL_ERROR_XML = 100  # Beginning of the numbers of what is wrong in the text of a drawing.
QEL_ERROR_XML_DEPTH = 102  # Elements are nested more than 512 levels deep.
QEL_ERROR_XML_EMPTY = 105  # The drawing is empty.
QEL_ERROR_XML_ATTR = 114  # An attribute's value is not closed by its quote, or an attribute of the XML declaration cannot be read.
QEL_ERROR_XML_START_TAG = 116  # A start tag cannot be read here: NAME="VALUE", '/>' or '>' is expected.
QEL_ERROR_XML_END_NAME = 117  # The drawing ends right after an element's name.
QEL_ERROR_XML_END_TAG = 118  # The drawing ends inside a start tag.
QEL_ERROR_XML_SLASH = 119  # '/' is not followed by '>'.
QEL_ERROR_XML_MISMATCH = 120  # The end tag does not match the element that is open.
QEL_ERROR_XML_END_CONTENT = 121  # The drawing ends inside an element's content.
QEL_ERROR_TEXT_SIZE = 256  # bytes of an error's sentence, the ending zero included


class QELERROR(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("nSize", c_uint32),
        ("nCode", c_uint32),
        ("nLine", c_uint32),
        ("nColumn", c_uint32),
        ("nSystem", c_uint32),
        ("szText", c_char * QEL_ERROR_TEXT_SIZE),
    ]


# name: (result, arguments)
FUNCTIONS = {
    "CreateQELEngine": (HQELENGINE, ()),
    "DestroyQELEngine": (c_int32, (HQELENGINE,)),
    "QELGetVersion": (c_uint32, ()),
    "QELShowOnly": (c_int32, (c_int32,)),
    "QELNewFile": (c_int32, (HQELENGINE,)),
    "QELOpenFile": (c_int32, (HQELENGINE, c_char_p)),
    "QELOpenFileU": (c_int32, (HQELENGINE, c_wchar_p)),
    "QELSaveFile": (c_int32, (HQELENGINE, c_char_p)),
    "QELCloseFile": (c_int32, (HQELENGINE,)),
    "QELGetName": (c_char_p, (HQELENGINE,)),
    "QELGetType": (c_int32, (HQELENGINE,)),
    "QELGetError": (c_int32, (HQELENGINE, POINTER(QELERROR))),
    "QELOpenFileW": (c_int32, (HQELENGINE, c_wchar_p)),
    "QELSaveFileW": (c_int32, (HQELENGINE, c_wchar_p)),
    "QELOpenMemory": (c_int32, (HQELENGINE, c_void_p, c_uint32)),
    "QELSaveMemory": (c_int32, (HQELENGINE, c_void_p, POINTER(c_uint32))),
    "QELIsModified": (c_int32, (HQELENGINE,)),
    "QELSetTextCodePage": (c_int32, (HQELENGINE, c_uint32)),
    "QELGetTextCodePage": (c_int32, (HQELENGINE, POINTER(c_uint32))),
    "QELNewFileEx": (c_int32, (HQELENGINE, c_uint32)),
    "QELSetElemTextW": (c_int32, (HQELENGINE, HQELELEM, c_wchar_p)),
    "QELGetElemTextW": (c_int32, (HQELENGINE, HQELELEM, c_wchar_p, c_int32)),
    "QELGetRootElem": (HQELELEM, (HQELENGINE,)),
    "QELCreateElem": (HQELELEM, (HQELENGINE, c_int32, HQELELEM, HQELELEM)),
    "QELDeleteElem": (c_int32, (HQELENGINE, HQELELEM)),
    "QELMoveElem": (c_int32, (HQELENGINE, HQELELEM, HQELELEM, HQELELEM)),
    "QELCopyElem": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetParentElem": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetFirstChild": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetLastChild": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetNextElem": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetPrevElem": (HQELELEM, (HQELENGINE, HQELELEM)),
    "QELGetElemType": (c_int32, (HQELENGINE, HQELELEM)),
    "QELGetElemId": (c_char_p, (HQELENGINE, HQELELEM)),
    "QELSetElemId": (c_int32, (HQELENGINE, HQELELEM, c_char_p)),
    "QELGetElemAttr": (c_int32, (HQELENGINE, HQELELEM, c_void_p, POINTER(c_int32))),
    "QELSetElemAttr": (c_int32, (HQELENGINE, HQELELEM, c_void_p, c_int32)),
    "QELGetElemRect": (c_int32, (HQELENGINE, HQELELEM, POINTER(RECT))),
    "QELSetElemRect": (c_int32, (HQELENGINE, HQELELEM, POINTER(RECT))),
    "QELGetRefSize": (c_int32, (HQELENGINE, POINTER(SIZE))),
    "QELSetRefSize": (c_int32, (HQELENGINE, POINTER(SIZE))),
    "QELGetQELRect": (c_int32, (HQELENGINE, POINTER(RECT))),
    "QELSetQELRect": (c_int32, (HQELENGINE, POINTER(RECT))),
    "QELSetPixelScale": (c_int32, (HQELENGINE, c_uint32)),
    "QELGetPixelScale": (c_int32, (HQELENGINE, POINTER(c_uint32))),
    "QELSetSmooth": (c_int32, (HQELENGINE, c_int32)),
    "QELGetSmooth": (c_int32, (HQELENGINE,)),
    "QELRenderBitmap": (c_int32, (HQELENGINE, c_void_p, c_int32, c_int32, c_int32, c_uint32)),
    "QELSetFontFace": (c_int32, (HQELENGINE, c_wchar_p)),
    "QELGetDrawGraphRect": (c_int32, (HQELENGINE, POINTER(RECT))),
    "QELGetElemDrawRect": (c_int32, (HQELENGINE, HQELELEM, POINTER(RECT))),
    "QELGetIdDrawRect": (c_int32, (HQELENGINE, c_char_p, POINTER(RECT))),
    "QELElemFromPoint": (HQELELEM, (HQELENGINE, POINTER(POINT))),
    "QELIdFromPoint": (c_int32, (HQELENGINE, POINTER(POINT), c_char_p, c_int32)),
    "QELFindElem": (HQELELEM, (HQELENGINE, c_char_p)),
    "QELElemToDevice": (c_int32, (HQELENGINE, HQELELEM, POINTER(POINT))),
    "QELDeviceToElem": (c_int32, (HQELENGINE, HQELELEM, POINTER(POINT))),
    "QELDraw": (c_int32, (HQELENGINE, HANDLE, POINTER(RECT), c_uint32)),
    "QELRotate": (c_int32, (HQELENGINE, c_int32)),
    "QELSetBlinkState": (c_int32, (HQELENGINE, c_int32)),
    "QELGetStatus": (c_int32, (HQELENGINE, POINTER(c_uint32))),
    "QELSetStatus": (c_int32, (HQELENGINE, c_uint32)),
    "QELGetParam": (c_int32, (HQELENGINE, c_int32, POINTER(c_uint32))),
    "QELSetParam": (c_int32, (HQELENGINE, c_int32, c_uint32)),
    "QELParamsSupported": (c_uint32, (HQELENGINE,)),
    "QELGetScaleParam": (c_int32, (HQELENGINE, c_uint32, c_uint32, POINTER(c_uint32))),
    "QELSetScaleParam": (c_int32, (HQELENGINE, c_uint32, c_uint32, c_uint32)),
    "QELGetScaleParamf": (c_int32, (HQELENGINE, c_uint32, c_uint32, POINTER(c_float))),
    "QELSetScaleParamf": (c_int32, (HQELENGINE, c_uint32, c_uint32, c_float)),
    "QELGetScaleStatus": (c_int32, (HQELENGINE, c_uint32, POINTER(c_uint32))),
    "QELSetScaleStatus": (c_int32, (HQELENGINE, c_uint32, c_uint32)),
    "QELGetScaleStatusf": (c_int32, (HQELENGINE, c_uint32, POINTER(c_float))),
    "QELSetScaleStatusf": (c_int32, (HQELENGINE, c_uint32, c_float)),
    "QELSetValue": (c_int32, (HQELENGINE, c_char_p, c_double)),
    "QELGetValue": (c_int32, (HQELENGINE, c_char_p, POINTER(c_double))),
    "QELSetPin": (c_int32, (HQELENGINE, c_char_p, c_int32, c_double)),
    "QELGetPin": (c_int32, (HQELENGINE, c_char_p, c_int32, POINTER(c_double))),
    "QELSetSelector": (c_int32, (HQELENGINE, c_char_p, c_uint32, c_double)),
    "QELGetSelector": (c_int32, (HQELENGINE, c_char_p, c_uint32, POINTER(c_double))),
    "QELSetText": (c_int32, (HQELENGINE, c_char_p, c_char_p)),
    "QELSetTextW": (c_int32, (HQELENGINE, c_char_p, c_wchar_p)),
    "QELSetVisible": (c_int32, (HQELENGINE, c_char_p, c_int32)),
    "QELSetColor": (c_int32, (HQELENGINE, c_char_p, c_int32, c_uint32)),
    "QELResetLive": (c_int32, (HQELENGINE, c_char_p)),
    "QELSetQuality": (c_int32, (HQELENGINE, c_char_p, c_int32)),
    "QELSetEasing": (c_int32, (HQELENGINE, c_char_p, c_uint32)),
    "QELAdvance": (c_int32, (HQELENGINE, c_uint32)),
    "QELGetLiveId": (c_int32, (HQELENGINE, c_uint32, c_char_p, c_int32, POINTER(c_int32))),
    "QELGetDirtyRect": (c_int32, (HQELENGINE, POINTER(RECT))),
    "QELGetDirtyRegion": (c_int32, (HQELENGINE, HANDLE)),
    "QELInvalidate": (c_int32, (HQELENGINE, POINTER(RECT))),
    "QELValidate": (c_int32, (HQELENGINE,)),
    "QELUpdate": (c_int32, (HQELENGINE, HANDLE, HANDLE)),
    "QELCreateGradientDescriptor": (HQELGRADIENT, (POINTER(RECT), c_int32, c_uint32, c_uint32)),
    "QELCloseGradientDescriptor": (c_int32, (HQELGRADIENT,)),
    "QELGetGradientBrush": (HANDLE, (HQELGRADIENT,)),
    "QELDrawBezier": (c_int32, (HANDLE, POINTER(POINT), c_uint32)),
    "QELDrawCurve": (c_int32, (HANDLE, POINTER(POINT), c_uint32)),
}

# In the 32-bit DLL these have other names.
DECORATED = {
    "QELOpenFileU": "_QELOpenFileU@8",
    "QELCreateGradientDescriptor": "_QELCreateGradientDescriptor@16",
    "QELCloseGradientDescriptor": "_QELCloseGradientDescriptor@4",
    "QELGetGradientBrush": "_QELGetGradientBrush@4",
    "QELDrawBezier": "_QELDrawBezier@12",
    "QELDrawCurve": "_QELDrawCurve@12",
}


def load(path="QELEngine.dll"):
    """The DLL, with argument and result types set. Python looks for a name without a folder beside
    itself and in the system's folders only: give the whole path."""
    dll = ctypes.WinDLL(path)
    for name, (result, arguments) in FUNCTIONS.items():
        decorated = ctypes.sizeof(c_void_p) == 4 and name in DECORATED
        function = getattr(dll, DECORATED[name] if decorated else name)
        function.restype = result
        function.argtypes = arguments
        setattr(dll, name, function)
    return dll
