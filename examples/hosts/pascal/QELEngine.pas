{ QELEngine: the exported interface for Free Pascal and Delphi, 32 and 64 bits.

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

{ ---- element types ---- }

const
  QEL_TYPE_ROOT = 0; { "qel", the drawing itself }
  QEL_TYPE_TEXT = 1; { "text" }
  QEL_TYPE_RECT = 2; { "rect" }
  QEL_TYPE_CHORD = 3; { "chord" }
  QEL_TYPE_PIE = 4; { "pie" }
  QEL_TYPE_ROUNDRECT = 5; { "rndrect" }
  QEL_TYPE_ARC = 6; { "arc" }
  QEL_TYPE_ELLIPSE = 7; { "ellipse" }
  QEL_TYPE_CIRCLE = 8; { "circle" }
  QEL_TYPE_LINE = 9; { "line" }
  QEL_TYPE_POLYLINE = 10; { "polyline" }
  QEL_TYPE_POLYGON = 11; { "polygon" }
  QEL_TYPE_PATH = 12; { "path", "defs" and "use" are known and skipped with their contents }
  QEL_TYPE_DEFS = 13;
  QEL_TYPE_USE = 14;
  QEL_TYPE_GROUP = 15; { "g" }
  QEL_TYPE_STATUS = 16; { "status" }
  QEL_TYPE_FRAME = 17; { "frame" }
  QEL_TYPE_SCALE = 18; { "scale" }
  QEL_TYPE_PATTERN = 19; { "pattern" }
  QEL_TYPE_DRAWRGN = 20; { "drawrgn" }
  QEL_TYPE_METER = 21; { "meter" }
  QEL_TYPE_NONE = 22; { no element: the answer of QELGetElemType on any failure }

{ ---- draw flags (QELDraw) ---- }

const
  QEL_DRAW_FULL = $1; { paint everything; without it only moving parts are painted again }
  QEL_DRAW_PRESSED = $2; { shapes with QEL_FLAG_PRESS are drawn 2 pixels right and down }

{ ---- shape style word ---- }

const
  QEL_STYLE_STROKE = 0; { "Stoke": outline only }
  QEL_STYLE_FILL = $1; { "Fill No3D": bit 0, filled with the hatch or gradient }
  QEL_STYLE_FILL_3DUP = $3; { "Fill 3DUp": filled; rectangles get a raised border }
  QEL_STYLE_FILL_3DDOWN = $5; { "Fill 3DDown": filled; rectangles get a sunken border }
  QEL_STYLE_UP_BIT = $2; { raised border }
  QEL_STYLE_DOWN_BIT = $4; { sunken border; the raised one wins when both are set }
  QEL_STYLE_FILL_MASK = $FFFF; { the fill style; the high 16 bits are the width of the 3D border in pixels, 0 meaning 2 }

{ ---- shape flags: host values, pressed shift, keep modes ---- }

const
  QEL_FLAG_COLOR_PARAM = $1; { follows host parameter 0 }
  QEL_FLAG_DRAFT_PARAM = $80; { follows host parameters 1 to 3 when filled }
  QEL_FLAG_PRESS = $4000; { moves when drawn with QEL_DRAW_PRESSED }
  QEL_KEEP_NONE = 0; { "Not Keep": all edges in proportion }
  QEL_KEEP_ALL = $1000; { "Keep All": fixed pixel distance from all four borders }
  QEL_KEEP_LEFT = $8000; { "Keep left" }
  QEL_KEEP_TOP = $10000; { "Keep top" }
  QEL_KEEP_RIGHT = $40000; { "Keep right" }
  QEL_KEEP_BOTTOM = $80000; { "Keep bottom" }
  QEL_KEEP_ANCHOR_MASK = $D9000; { Along the anchored edge (only with left, top, right or bottom). }
  QEL_ALONG_KEEP_BORDERS = 0; { "Keep borders": fixed distance from both ends }
  QEL_ALONG_KEEP_LENGTH = $100000; { "Keep length": position in proportion, length fixed }
  QEL_ALONG_AS_QEL = $200000; { "As QEL": both ends in proportion }
  QEL_ALONG_MASK = $300000; { Away from the anchored edge (only with left, top, right or bottom). }
  QEL_AWAY_AS_QEL = 0; { "As QEL": extent in proportion }
  QEL_AWAY_AS_GRAPH = $20000; { "As graph": keeps the element's own aspect ratio }
  QEL_AWAY_KEEP_LENGTH = $400000; { "Keep length": extent fixed }
  QEL_AWAY_KEEP_BORDER = $800000; { "Keep border": fixed distance from the far border }
  QEL_AWAY_MASK = $C20000;

{ ---- what a drawing follows (QELParamsSupported) ---- }

const
  QEL_MASK_COLOR = $1; { something follows host parameter 0 }
  QEL_MASK_DRAFT = $80; { something follows host parameters 1 to 3 }
  QEL_MASK_KEEP = $1000; { something has a keep mode }
  QEL_MASK_TEXT = $2000; { there is a text }
  QEL_MASK_PRESS = $4000; { something has the pressed shift }

{ ---- host parameters (QELSetParam, QELGetParam) ---- }

const
  QEL_PARAM_COLOR = 0; { frame colour, COLORREF }
  QEL_PARAM_DRAFT = 1; { hatch style, 0 to 37 }
  QEL_PARAM_DRAFT_FORE = 2; { hatch colour, COLORREF: A of shapes, first of bars, pies, scales }
  QEL_PARAM_DRAFT_BACK = 3; { the other one: B of shapes, second of bars, pies, scales }
  QEL_PARAM_COUNT = 4;

{ ---- selectors (QELSetScaleParam and its relatives) ---- }

const
  QEL_SEL_PIN_COLOR = 0; { the pointer; of 3D bars, the far edges }
  QEL_SEL_SCALE_COLOR = 1; { axis and ticks }
  QEL_SEL_TICKS = 2; { intervals between ticks; 0 is refused }
  QEL_SEL_START_CODE = 3; { round and arc scales: where they begin, 0 to 7 }
  QEL_SEL_MAX = 4; { value at the end of the scale }
  QEL_SEL_MIN = 5; { value at its start }
  QEL_SEL_VALUE = 6; { the current value; the ScaleStatus functions mean this one }
  QEL_SEL_FACE_COLOR = 7; { the face, the empty part of bars, and what erases a needle }
  QEL_SEL_SHOW_SCALE = 8; { axis and ticks; refused when the element's "usc" is 0 }
  QEL_SEL_SHOW_PIN = 9; { the pointer; refused when the element's "upin" is 0 }
  QEL_SEL_SHOW_LABELS = 10; { the numbers at major ticks }
  QEL_SEL_LABEL_COLOR = 11; { the numbers }
  QEL_SEL_SCALE_START = 12; { number that stands at the start of the scale }
  QEL_SEL_SCALE_END = 13; { number that stands at its end }
  QEL_SEL_MAJOR_EVERY = 14; { every which tick is a major one; 0: none }
  QEL_SEL_FULL_CIRCLE = 15; { 0 or 1; anything else, and the current value, is refused }
  QEL_SEL_SHOW_ALARM = 16; { the alarm zones }
  QEL_SEL_DECIMAL_SHIFT = 17; { numbers are printed divided by 10 to this power }
  QEL_SEL_LOW_LIMIT = 18; { values below are in the low zone }
  QEL_SEL_HIGH_LIMIT = 19; { values above are in the high zone }
  QEL_SEL_LOW_COLOR = 20; { the low zone }
  QEL_SEL_HIGH_COLOR = 21; { the high zone }
  QEL_SEL_REVERSE = 22; { the scale runs from the maximum to the minimum }
  QEL_SEL_USE_BASE = 23; { bars grow from the base value }
  QEL_SEL_BASE_VALUE = 24; { the base value; also as a float }
  QEL_SEL_FILL_ONLY = 25; { bars paint no empty part, faces are outlines }
  QEL_SEL_ANGLE_OFFSET = 26; { degrees by which a dial is turned clockwise }
  QEL_SEL_PIN_STYLE = 27; { needle or hands, 0 to 4 }
  QEL_SEL_AXIS_STYLE = 28; { bands and ticks, 0 to 3 }
  QEL_SEL_SHOW_FRAME = 29; { the outline of 3D bars }
  QEL_SEL_SHOW_VALUE = 30; { the value as a number }
  QEL_SEL_FRAME_OPTION = 31; { 1: 3D bars are cylinders, else boxes }
  QEL_SEL_SECTOR_COUNT = 32; { sectors of a share chart, at most 32 }
  QEL_SEL_FONT_SIZE = 33; { size of the numbers; 0: by the meter's size }
  QEL_SEL_COUNT = 34;

{ ---- colours ---- }

const
  QEL_COLOR_BLINK = LongWord($80000000);

{ ---- attribute records (QELGetElemAttr, QELSetElemAttr) ---- }

const
  QEL_SHAPE_WORDS = 33; { geometry words of a shape record }
  QEL_TEXT_SIZE = 256; { bytes of a text or an identifier, the ending zero included }
  QEL_MAX_POINTS = 16; { points of a polygon or polyline }
type
  QELSHAPEATTR = packed record
    nSize: LongWord;
    nStyle: LongWord;
    nDraft: LongInt;
    clrA: LongWord;
    clrB: LongWord;
    clrPen: LongWord;
    nPenStyle: LongInt;
    nPenWidth: LongInt;
    nGeometry: array[0..QEL_SHAPE_WORDS - 1] of LongInt;
    szText: array[0..QEL_TEXT_SIZE - 1] of AnsiChar;
    nFlags: LongWord;
  end;
  PQELSHAPEATTR = ^QELSHAPEATTR;

  QELROOTATTR = packed record
    nSize: LongWord;
    nFormat: LongWord;
    nType: LongInt;
    nWidth: LongInt;
    nHeight: LongInt;
    nRotate: LongWord;
  end;
  PQELROOTATTR = ^QELROOTATTR;

  QELWORDATTR = packed record
    nValue: LongInt;
  end;
  PQELWORDATTR = ^QELWORDATTR;

  QELSCALEATTR = packed record
    nSize: LongWord;
    nId: LongWord;
    bHide: LongInt;
    nType: LongInt;
    nStyle: LongWord;
    nMin: LongInt;
    nMax: LongInt;
    bPin: LongInt;
    nGeometry: array[0..7 - 1] of LongInt;
  end;
  PQELSCALEATTR = ^QELSCALEATTR;

  QELDRAWRGNATTR = packed record
    nSize: LongWord;
    nStyle: LongInt;
    rc: TRect;
    nFlags: LongWord;
  end;
  PQELDRAWRGNATTR = ^QELDRAWRGNATTR;

  QELMETERATTR = packed record
    nSize: LongWord;
    nId: LongWord;
    bUseScale: LongInt;
    bUsePin: LongInt;
    nType: LongInt;
    nMax: LongInt;
    nMin: LongInt;
    nGeometry: array[0..9 - 1] of LongInt;
    nFlags: LongWord;
  end;
  PQELMETERATTR = ^QELMETERATTR;

const
  QEL_MAX_ATTR_SIZE = 520;

{ ---- engine and file ---- }

function CreateQELEngine: HQELENGINE; stdcall;
  external QELENGINE_DLL name 'CreateQELEngine';
function DestroyQELEngine(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'DestroyQELEngine';
function QELGetVersion: LongWord; stdcall;
  external QELENGINE_DLL name 'QELGetVersion';
function QELShowOnly(bShowOnly: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELShowOnly';
function QELNewFile(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELNewFile';
function QELOpenFile(hEngine: HQELENGINE; pszPath: PAnsiChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELOpenFile';
function QELOpenFileU(hEngine: HQELENGINE; pszPath: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELOpenFileU'{$ELSE}'_QELOpenFileU@8'{$ENDIF};
function QELSaveFile(hEngine: HQELENGINE; pszPath: PAnsiChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSaveFile';
function QELCloseFile(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELCloseFile';
function QELGetName(hEngine: HQELENGINE): PAnsiChar; stdcall;
  external QELENGINE_DLL name 'QELGetName';
function QELGetType(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetType';

{ ---- why a call failed ---- }

const
  QEL_ERROR_NONE = 0; { No call has failed. }
  QEL_ERROR_HANDLE = 1; { The engine handle is null or not live: use one that CreateQELEngine gave and that is not destroyed. }
  QEL_ERROR_ARGUMENT = 2; { A pointer that the call needs is null, or an argument is none that it takes. }
  QEL_ERROR_SHOW_ONLY = 3; { In show-only mode a drawing has no elements and is not edited or saved: open it with QELShowOnly switched off. }
  QEL_ERROR_NO_DRAWING = 4; { No drawing is open: open a file, or begin a new drawing with QELNewFile. }
  QEL_ERROR_ELEMENT = 5; { The element handle is null, deleted, or of another drawing. }
  QEL_ERROR_TYPE = 6; { There are no elements of this type: the types are QEL_TYPE_..., without path, defs and use. }
  QEL_ERROR_PLACE = 7; { The element cannot stand there: the root stays alone, nothing goes into itself, the one before it is a child of the same parent, and at most 512 levels nest. }
  QEL_ERROR_RECORD_SIZE = 8; { The record has the wrong size: set its size word, and give a buffer of its whole size. }
  QEL_ERROR_VALUE = 9; { The value, or the number of what it is for, is out of its range or not taken by this element. }
  QEL_ERROR_NO_RECT = 10; { The element has no rectangle: it has no points, or nothing is in it. }
  QEL_ERROR_BUFFER = 11; { The buffer is too small: give one of the size that the call has told. }
  QEL_ERROR_MEMORY = 12; { Memory ran out. }
  QEL_ERROR_PATH = 13; { The path cannot be spelled in the ANSI code page, or is too long in it: use QELOpenFileW. }
  QEL_ERROR_NO_FILE = 14; { There is no such file: check the path, and for a relative one the current folder. }
  QEL_ERROR_IN_USE = 15; { Another program has the file open: close it there, or open it with QELOpenFileW, which shares it with others that read it. }
  QEL_ERROR_OPEN = 16; { The file cannot be opened: it may be a folder, or its rights do not allow it. }
  QEL_ERROR_READ = 17; { The file cannot be read to its end: its disk or network has failed. }
  QEL_ERROR_WRITE = 18; { The file cannot be written: the folder is missing or may not be written to, or the disk is full. }
  QEL_ERROR_REPLACE = 19; { The file that is there cannot be replaced: it is read-only, a folder, a device, or open in another program. }
  QEL_ERROR_NOT_QEL = 20; { The file is no drawing: its first element has to be <qel>. }
  QEL_ERROR_GDI = 21; { The device context is none, or the system has no more drawing objects. }
  QEL_ERROR_XML = 100; { Beginning of the numbers of what is wrong in the text of a drawing. }
  QEL_ERROR_XML_DEPTH = 102; { Elements are nested more than 512 levels deep. }
  QEL_ERROR_XML_EMPTY = 105; { The drawing is empty. }
  QEL_ERROR_XML_ATTR = 114; { An attribute's value is not closed by its quote, or an attribute of the XML declaration cannot be read. }
  QEL_ERROR_XML_START_TAG = 116; { A start tag cannot be read here: NAME="VALUE", '/>' or '>' is expected. }
  QEL_ERROR_XML_END_NAME = 117; { The drawing ends right after an element's name. }
  QEL_ERROR_XML_END_TAG = 118; { The drawing ends inside a start tag. }
  QEL_ERROR_XML_SLASH = 119; { '/' is not followed by '>'. }
  QEL_ERROR_XML_MISMATCH = 120; { The end tag does not match the element that is open. }
  QEL_ERROR_XML_END_CONTENT = 121; { The drawing ends inside an element's content. }
  QEL_ERROR_TEXT_SIZE = 256; { bytes of an error's sentence, the ending zero included }
type
  QELERROR = packed record
    nSize: LongWord;
    nCode: LongWord;
    nLine: LongWord;
    nColumn: LongWord;
    nSystem: LongWord;
    szText: array[0..QEL_ERROR_TEXT_SIZE - 1] of AnsiChar;
  end;
  PQELERROR = ^QELERROR;

function QELGetError(hEngine: HQELENGINE; pError: PQELERROR): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetError';

{ ---- files of any path, drawings in memory ---- }

function QELOpenFileW(hEngine: HQELENGINE; pszPath: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELOpenFileW';
function QELSaveFileW(hEngine: HQELENGINE; pszPath: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSaveFileW';
function QELOpenMemory(hEngine: HQELENGINE; pBytes: Pointer; nSize: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELOpenMemory';
function QELSaveMemory(hEngine: HQELENGINE; pBuffer: Pointer; pnSize: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSaveMemory';
function QELIsModified(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELIsModified';

{ ---- texts in any script ---- }

function QELSetTextCodePage(hEngine: HQELENGINE; nCodePage: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetTextCodePage';
function QELGetTextCodePage(hEngine: HQELENGINE; pnCodePage: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetTextCodePage';
function QELNewFileEx(hEngine: HQELENGINE; nCodePage: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELNewFileEx';
function QELSetElemTextW(hEngine: HQELENGINE; hElem: HQELELEM; pszText: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetElemTextW';
function QELGetElemTextW(hEngine: HQELENGINE; hElem: HQELELEM; pszBuffer: PWideChar; nCount: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetElemTextW';

{ ---- element tree ---- }

function QELGetRootElem(hEngine: HQELENGINE): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetRootElem';
function QELCreateElem(hEngine: HQELENGINE; nType: LongInt; hParent: HQELELEM; hAfter: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELCreateElem';
function QELDeleteElem(hEngine: HQELENGINE; hElem: HQELELEM): LongInt; stdcall;
  external QELENGINE_DLL name 'QELDeleteElem';
function QELMoveElem(hEngine: HQELENGINE; hElem: HQELELEM; hParent: HQELELEM; hAfter: HQELELEM): LongInt; stdcall;
  external QELENGINE_DLL name 'QELMoveElem';
function QELCopyElem(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELCopyElem';
function QELGetParentElem(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetParentElem';
function QELGetFirstChild(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetFirstChild';
function QELGetLastChild(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetLastChild';
function QELGetNextElem(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetNextElem';
function QELGetPrevElem(hEngine: HQELENGINE; hElem: HQELELEM): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELGetPrevElem';
function QELGetElemType(hEngine: HQELENGINE; hElem: HQELELEM): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetElemType';
function QELGetElemId(hEngine: HQELENGINE; hElem: HQELELEM): PAnsiChar; stdcall;
  external QELENGINE_DLL name 'QELGetElemId';
function QELSetElemId(hEngine: HQELENGINE; hElem: HQELELEM; pszId: PAnsiChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetElemId';

{ ---- attributes and geometry ---- }

function QELGetElemAttr(hEngine: HQELENGINE; hElem: HQELELEM; pBuffer: Pointer; pnSize: PLongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetElemAttr';
function QELSetElemAttr(hEngine: HQELENGINE; hElem: HQELELEM; pBuffer: Pointer; nSize: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetElemAttr';
function QELGetElemRect(hEngine: HQELENGINE; hElem: HQELELEM; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetElemRect';
function QELSetElemRect(hEngine: HQELENGINE; hElem: HQELELEM; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetElemRect';
function QELGetRefSize(hEngine: HQELENGINE; pExtent: PSize): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetRefSize';
function QELSetRefSize(hEngine: HQELENGINE; pExtent: PSize): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetRefSize';
function QELGetQELRect(hEngine: HQELENGINE; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetQELRect';
function QELSetQELRect(hEngine: HQELENGINE; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetQELRect';
function QELSetPixelScale(hEngine: HQELENGINE; nPercent: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetPixelScale';
function QELGetPixelScale(hEngine: HQELENGINE; pnPercent: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetPixelScale';
function QELSetSmooth(hEngine: HQELENGINE; nSamples: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetSmooth';
function QELGetSmooth(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetSmooth';
function QELRenderBitmap(hEngine: HQELENGINE; pBits: Pointer; nWidth: LongInt; nHeight: LongInt; nStride: LongInt; nFlags: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELRenderBitmap';
function QELSetFontFace(hEngine: HQELENGINE; pszFace: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetFontFace';
function QELGetDrawGraphRect(hEngine: HQELENGINE; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetDrawGraphRect';

{ ---- where things are ---- }

function QELGetElemDrawRect(hEngine: HQELENGINE; hElem: HQELELEM; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetElemDrawRect';
function QELGetIdDrawRect(hEngine: HQELENGINE; pszId: PAnsiChar; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetIdDrawRect';
function QELElemFromPoint(hEngine: HQELENGINE; ppt: PPoint): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELElemFromPoint';
function QELIdFromPoint(hEngine: HQELENGINE; ppt: PPoint; pszBuffer: PAnsiChar; nSize: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELIdFromPoint';
function QELFindElem(hEngine: HQELENGINE; pszId: PAnsiChar): HQELELEM; stdcall;
  external QELENGINE_DLL name 'QELFindElem';
function QELElemToDevice(hEngine: HQELENGINE; hElem: HQELELEM; ppt: PPoint): LongInt; stdcall;
  external QELENGINE_DLL name 'QELElemToDevice';
function QELDeviceToElem(hEngine: HQELENGINE; hElem: HQELELEM; ppt: PPoint): LongInt; stdcall;
  external QELENGINE_DLL name 'QELDeviceToElem';

{ ---- drawing ---- }

function QELDraw(hEngine: HQELENGINE; dc: HDC; prcUpdate: PRect; nFlags: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELDraw';
function QELRotate(hEngine: HQELENGINE; nAngle: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELRotate';
function QELSetBlinkState(hEngine: HQELENGINE; nState: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetBlinkState';

{ ---- live values ---- }

function QELGetStatus(hEngine: HQELENGINE; pnStatus: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetStatus';
function QELSetStatus(hEngine: HQELENGINE; nStatus: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetStatus';
function QELGetParam(hEngine: HQELENGINE; nIndex: LongInt; pnValue: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetParam';
function QELSetParam(hEngine: HQELENGINE; nIndex: LongInt; nValue: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetParam';
function QELParamsSupported(hEngine: HQELENGINE): LongWord; stdcall;
  external QELENGINE_DLL name 'QELParamsSupported';
function QELGetScaleParam(hEngine: HQELENGINE; nId: LongWord; nSelector: LongWord; pnValue: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetScaleParam';
function QELSetScaleParam(hEngine: HQELENGINE; nId: LongWord; nSelector: LongWord; nValue: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetScaleParam';
function QELGetScaleParamf(hEngine: HQELENGINE; nId: LongWord; nSelector: LongWord; pfValue: PSingle): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetScaleParamf';
function QELSetScaleParamf(hEngine: HQELENGINE; nId: LongWord; nSelector: LongWord; fValue: Single): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetScaleParamf';
function QELGetScaleStatus(hEngine: HQELENGINE; nId: LongWord; pnValue: PLongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetScaleStatus';
function QELSetScaleStatus(hEngine: HQELENGINE; nId: LongWord; nValue: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetScaleStatus';
function QELGetScaleStatusf(hEngine: HQELENGINE; nId: LongWord; pfValue: PSingle): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetScaleStatusf';
function QELSetScaleStatusf(hEngine: HQELENGINE; nId: LongWord; fValue: Single): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetScaleStatusf';

{ ---- live values by identifier ---- }

function QELSetValue(hEngine: HQELENGINE; pszId: PAnsiChar; fValue: Double): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetValue';
function QELGetValue(hEngine: HQELENGINE; pszId: PAnsiChar; pfValue: PDouble): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetValue';
function QELSetPin(hEngine: HQELENGINE; pszId: PAnsiChar; nPin: LongInt; fValue: Double): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetPin';
function QELGetPin(hEngine: HQELENGINE; pszId: PAnsiChar; nPin: LongInt; pfValue: PDouble): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetPin';
function QELSetSelector(hEngine: HQELENGINE; pszId: PAnsiChar; nSelector: LongWord; fValue: Double): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetSelector';
function QELGetSelector(hEngine: HQELENGINE; pszId: PAnsiChar; nSelector: LongWord; pfValue: PDouble): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetSelector';
function QELSetText(hEngine: HQELENGINE; pszId: PAnsiChar; pszText: PAnsiChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetText';
function QELSetTextW(hEngine: HQELENGINE; pszId: PAnsiChar; pszText: PWideChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetTextW';
function QELSetVisible(hEngine: HQELENGINE; pszId: PAnsiChar; bVisible: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetVisible';
function QELSetColor(hEngine: HQELENGINE; pszId: PAnsiChar; nPlace: LongInt; clr: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetColor';
function QELResetLive(hEngine: HQELENGINE; pszId: PAnsiChar): LongInt; stdcall;
  external QELENGINE_DLL name 'QELResetLive';
function QELSetQuality(hEngine: HQELENGINE; pszId: PAnsiChar; nQuality: LongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetQuality';
function QELSetEasing(hEngine: HQELENGINE; pszId: PAnsiChar; nTime: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELSetEasing';
function QELAdvance(hEngine: HQELENGINE; nTime: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name 'QELAdvance';
function QELGetLiveId(hEngine: HQELENGINE; nIndex: LongWord; pszBuffer: PAnsiChar; nSize: LongInt; pnType: PLongInt): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetLiveId';

{ ---- updates of the picture ---- }

function QELGetDirtyRect(hEngine: HQELENGINE; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetDirtyRect';
function QELGetDirtyRegion(hEngine: HQELENGINE; hRegion: HRGN): LongInt; stdcall;
  external QELENGINE_DLL name 'QELGetDirtyRegion';
function QELInvalidate(hEngine: HQELENGINE; prc: PRect): LongInt; stdcall;
  external QELENGINE_DLL name 'QELInvalidate';
function QELValidate(hEngine: HQELENGINE): LongInt; stdcall;
  external QELENGINE_DLL name 'QELValidate';
function QELUpdate(hEngine: HQELENGINE; dc: HDC; hBackground: HBRUSH): LongInt; stdcall;
  external QELENGINE_DLL name 'QELUpdate';

{ ---- gradients and curves (no engine needed) ---- }

function QELCreateGradientDescriptor(prc: PRect; nKind: LongInt; clr1: LongWord; clr2: LongWord): HQELGRADIENT; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELCreateGradientDescriptor'{$ELSE}'_QELCreateGradientDescriptor@16'{$ENDIF};
function QELCloseGradientDescriptor(hGradient: HQELGRADIENT): LongInt; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELCloseGradientDescriptor'{$ELSE}'_QELCloseGradientDescriptor@4'{$ENDIF};
function QELGetGradientBrush(hGradient: HQELGRADIENT): HBRUSH; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELGetGradientBrush'{$ELSE}'_QELGetGradientBrush@4'{$ENDIF};
function QELDrawBezier(dc: HDC; pPoints: PPoint; nCount: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELDrawBezier'{$ELSE}'_QELDrawBezier@12'{$ENDIF};
function QELDrawCurve(dc: HDC; pPoints: PPoint; nCount: LongWord): LongInt; stdcall;
  external QELENGINE_DLL name {$IFDEF WIN64}'QELDrawCurve'{$ELSE}'_QELDrawCurve@12'{$ENDIF};

implementation

{$IF SizeOf(QELSHAPEATTR) <> 424}{$MESSAGE FATAL 'QELSHAPEATTR is not 424 bytes'}{$IFEND}
{$IF SizeOf(QELROOTATTR) <> 24}{$MESSAGE FATAL 'QELROOTATTR is not 24 bytes'}{$IFEND}
{$IF SizeOf(QELWORDATTR) <> 4}{$MESSAGE FATAL 'QELWORDATTR is not 4 bytes'}{$IFEND}
{$IF SizeOf(QELSCALEATTR) <> 60}{$MESSAGE FATAL 'QELSCALEATTR is not 60 bytes'}{$IFEND}
{$IF SizeOf(QELDRAWRGNATTR) <> 28}{$MESSAGE FATAL 'QELDRAWRGNATTR is not 28 bytes'}{$IFEND}
{$IF SizeOf(QELMETERATTR) <> 68}{$MESSAGE FATAL 'QELMETERATTR is not 68 bytes'}{$IFEND}
{$IF SizeOf(QELERROR) <> 276}{$MESSAGE FATAL 'QELERROR is not 276 bytes'}{$IFEND}

end.
