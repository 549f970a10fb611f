/*
 * QELEngine: the exported interface, for C and C++ hosts.
 *
 * A host creates an engine, opens a drawing (".qel"), gives the drawing a device rectangle and asks
 * for it to be drawn onto a device context:
 *
 *     HQELENGINE hEngine = CreateQELEngine();
 *     RECT rcDevice = {0, 0, 800, 600};
 *     if (QELOpenFile(hEngine, "pump.qel") && QELSetQELRect(hEngine, &rcDevice))
 *         QELDraw(hEngine, hdc, &rcDevice, QEL_DRAW_FULL);
 *     DestroyQELEngine(hEngine);
 *
 * It takes C89 and every later C, C++98 and every later C++, as far as <windows.h> does.
 *
 * Conventions, where a function does not say otherwise:
 * - A result of 1 (non-zero) means success, 0 failure, of which QELGetError tells the reason.
 *   No function throws or shows anything. A failed call changes nothing, with these exceptions:
 *   QELOpenFile, QELOpenFileU and QELNewFile close the open drawing first; QELSetElemRect keeps
 * what it has moved before it failed; a 0 of QELSetParam tells that no element answered, and shapes
 * may have changed; QELDrawCurve answers 0 always.
 * - Handles are opaque. A null handle, one that is not live (never made, destroyed, deleted, closed
 *   with its drawing) or one that belongs to another engine fails the call like a null handle; it
 * is never followed. A number that once was a handle is not given out again.
 * - Rectangles, sizes and points go by pointer; a null pointer fails the call.
 * - Texts are 8-bit, zero-terminated, in the system's ANSI code page, or in the one that
 *   QELSetTextCodePage sets. No conversion is made.
 * - Different threads may use different engines at the same time. An engine, with the elements and
 *   the drawing that it has, is used by one thread at a time, in show-only mode with all handles
 *   that share the drawing. Nothing is queued or timed; every call runs to completion.
 * - Coordinates of elements are drawing units: whole numbers in the space of the drawing's
 * reference size (0,0 at the top left, y downwards). Device rectangles are device units of the
 * host's DC.
 * - Show-only mode (QELShowOnly): "editing" marks functions that do nothing there and return 0; all
 *   others act on the drawing that the handle shares with every handle open on the same path.
 */
#ifndef QELENGINE_H
#define QELENGINE_H

#include <windows.h>

/* QELENGINE_BUILD is set where the DLL itself is compiled, QELENGINE_STATIC where the engine is
 * linked into a program without the DLL. Only the class below needs import or export marks. */
#if defined(QELENGINE_BUILD)
#define QELENGINE_CLASS __declspec(dllexport)
#elif defined(QELENGINE_STATIC)
#define QELENGINE_CLASS
#else
#define QELENGINE_CLASS __declspec(dllimport)
#endif

#define QELAPI __stdcall

#ifdef __cplusplus
extern "C" {
#endif

/* ---- handles ---- */

typedef struct tagQELENGINEHANDLE* HQELENGINE; /* an engine, or in show-only mode a share of one */
typedef struct tagQELELEMHANDLE* HQELELEM;     /* an element of the open drawing */
typedef struct tagQELGRADIENTHANDLE* HQELGRADIENT; /* a gradient descriptor */

/* ---- element types ---- */

enum tagQELTYPE {
    QEL_TYPE_ROOT = 0,      /* "qel", the drawing itself */
    QEL_TYPE_TEXT = 1,      /* "text" */
    QEL_TYPE_RECT = 2,      /* "rect" */
    QEL_TYPE_CHORD = 3,     /* "chord" */
    QEL_TYPE_PIE = 4,       /* "pie" */
    QEL_TYPE_ROUNDRECT = 5, /* "rndrect" */
    QEL_TYPE_ARC = 6,       /* "arc" */
    QEL_TYPE_ELLIPSE = 7,   /* "ellipse" */
    QEL_TYPE_CIRCLE = 8,    /* "circle" */
    QEL_TYPE_LINE = 9,      /* "line" */
    QEL_TYPE_POLYLINE = 10, /* "polyline" */
    QEL_TYPE_POLYGON = 11,  /* "polygon" */
    QEL_TYPE_PATH = 12,     /* "path", "defs" and "use" are known and skipped with their contents */
    QEL_TYPE_DEFS = 13,
    QEL_TYPE_USE = 14,
    QEL_TYPE_GROUP = 15,   /* "g" */
    QEL_TYPE_STATUS = 16,  /* "status" */
    QEL_TYPE_FRAME = 17,   /* "frame" */
    QEL_TYPE_SCALE = 18,   /* "scale" */
    QEL_TYPE_PATTERN = 19, /* "pattern" */
    QEL_TYPE_DRAWRGN = 20, /* "drawrgn" */
    QEL_TYPE_METER = 21,   /* "meter" */
    QEL_TYPE_NONE = 22     /* no element: the answer of QELGetElemType on any failure */
};

/* ---- draw flags (QELDraw) ---- */

enum tagQELDRAW {
    QEL_DRAW_FULL = 0x1,   /* paint everything; without it only moving parts are painted again */
    QEL_DRAW_PRESSED = 0x2 /* shapes with QEL_FLAG_PRESS are drawn 2 pixels right and down */
};

/* ---- shape style word ---- */

enum tagQELSTYLE {
    QEL_STYLE_STROKE = 0,        /* "Stoke": outline only */
    QEL_STYLE_FILL = 0x1,        /* "Fill No3D": bit 0, filled with the hatch or gradient */
    QEL_STYLE_FILL_3DUP = 0x3,   /* "Fill 3DUp": filled; rectangles get a raised border */
    QEL_STYLE_FILL_3DDOWN = 0x5, /* "Fill 3DDown": filled; rectangles get a sunken border */
    QEL_STYLE_UP_BIT = 0x2,      /* raised border */
    QEL_STYLE_DOWN_BIT = 0x4,    /* sunken border; the raised one wins when both are set */
    QEL_STYLE_FILL_MASK = 0xFFFF /* the fill style; the high 16 bits are the width of the 3D border
                                    in pixels, 0 meaning 2 */
};

/* ---- shape flags: host values, pressed shift, keep modes ---- */

enum tagQELFLAG {
    QEL_FLAG_COLOR_PARAM = 0x1,  /* follows host parameter 0 */
    QEL_FLAG_DRAFT_PARAM = 0x80, /* follows host parameters 1 to 3 when filled */
    QEL_FLAG_PRESS = 0x4000,     /* moves when drawn with QEL_DRAW_PRESSED */

    /* Anchor: exactly one, or none for stretching with the drawing. */
    QEL_KEEP_NONE = 0,         /* "Not Keep": all edges in proportion */
    QEL_KEEP_ALL = 0x1000,     /* "Keep All": fixed pixel distance from all four borders */
    QEL_KEEP_LEFT = 0x8000,    /* "Keep left" */
    QEL_KEEP_TOP = 0x10000,    /* "Keep top" */
    QEL_KEEP_RIGHT = 0x40000,  /* "Keep right" */
    QEL_KEEP_BOTTOM = 0x80000, /* "Keep bottom" */
    QEL_KEEP_ANCHOR_MASK = 0xD9000,

    /* Along the anchored edge (only with left, top, right or bottom). */
    QEL_ALONG_KEEP_BORDERS = 0,       /* "Keep borders": fixed distance from both ends */
    QEL_ALONG_KEEP_LENGTH = 0x100000, /* "Keep length": position in proportion, length fixed */
    QEL_ALONG_AS_QEL = 0x200000,      /* "As QEL": both ends in proportion */
    QEL_ALONG_MASK = 0x300000,

    /* Away from the anchored edge (only with left, top, right or bottom). */
    QEL_AWAY_AS_QEL = 0,             /* "As QEL": extent in proportion */
    QEL_AWAY_AS_GRAPH = 0x20000,     /* "As graph": keeps the element's own aspect ratio */
    QEL_AWAY_KEEP_LENGTH = 0x400000, /* "Keep length": extent fixed */
    QEL_AWAY_KEEP_BORDER = 0x800000, /* "Keep border": fixed distance from the far border */
    QEL_AWAY_MASK = 0xC20000
};

/* ---- what a drawing follows (QELParamsSupported) ---- */

enum tagQELPARAMMASK {
    QEL_MASK_COLOR = 0x1,   /* something follows host parameter 0 */
    QEL_MASK_DRAFT = 0x80,  /* something follows host parameters 1 to 3 */
    QEL_MASK_KEEP = 0x1000, /* something has a keep mode */
    QEL_MASK_TEXT = 0x2000, /* there is a text */
    QEL_MASK_PRESS = 0x4000 /* something has the pressed shift */
};

/* ---- host parameters (QELSetParam, QELGetParam) ---- */

enum tagQELPARAM {
    QEL_PARAM_COLOR = 0,      /* frame colour, COLORREF */
    QEL_PARAM_DRAFT = 1,      /* hatch style, 0 to 37 */
    QEL_PARAM_DRAFT_FORE = 2, /* hatch colour, COLORREF: A of shapes, first of bars, pies, scales */
    QEL_PARAM_DRAFT_BACK = 3, /* the other one: B of shapes, second of bars, pies, scales */
    QEL_PARAM_COUNT = 4
};

/* ---- selectors (QELSetScaleParam and its relatives) ---- */

/* What each does for which type of meter: docs/live-values.md. Scales know the first seven; meters
 * all but QEL_SEL_START_CODE. Colours are COLORREF, switches 0 or 1, angles degrees. */
enum tagQELSELECTOR {
    QEL_SEL_PIN_COLOR = 0,      /* the pointer; of 3D bars, the far edges */
    QEL_SEL_SCALE_COLOR = 1,    /* axis and ticks */
    QEL_SEL_TICKS = 2,          /* intervals between ticks; 0 is refused */
    QEL_SEL_START_CODE = 3,     /* round and arc scales: where they begin, 0 to 7 */
    QEL_SEL_MAX = 4,            /* value at the end of the scale */
    QEL_SEL_MIN = 5,            /* value at its start */
    QEL_SEL_VALUE = 6,          /* the current value; the ScaleStatus functions mean this one */
    QEL_SEL_FACE_COLOR = 7,     /* the face, the empty part of bars, and what erases a needle */
    QEL_SEL_SHOW_SCALE = 8,     /* axis and ticks; refused when the element's "usc" is 0 */
    QEL_SEL_SHOW_PIN = 9,       /* the pointer; refused when the element's "upin" is 0 */
    QEL_SEL_SHOW_LABELS = 10,   /* the numbers at major ticks */
    QEL_SEL_LABEL_COLOR = 11,   /* the numbers */
    QEL_SEL_SCALE_START = 12,   /* number that stands at the start of the scale */
    QEL_SEL_SCALE_END = 13,     /* number that stands at its end */
    QEL_SEL_MAJOR_EVERY = 14,   /* every which tick is a major one; 0: none */
    QEL_SEL_FULL_CIRCLE = 15,   /* 0 or 1; anything else, and the current value, is refused */
    QEL_SEL_SHOW_ALARM = 16,    /* the alarm zones */
    QEL_SEL_DECIMAL_SHIFT = 17, /* numbers are printed divided by 10 to this power */
    QEL_SEL_LOW_LIMIT = 18,     /* values below are in the low zone */
    QEL_SEL_HIGH_LIMIT = 19,    /* values above are in the high zone */
    QEL_SEL_LOW_COLOR = 20,     /* the low zone */
    QEL_SEL_HIGH_COLOR = 21,    /* the high zone */
    QEL_SEL_REVERSE = 22,       /* the scale runs from the maximum to the minimum */
    QEL_SEL_USE_BASE = 23,      /* bars grow from the base value */
    QEL_SEL_BASE_VALUE = 24,    /* the base value; also as a float */
    QEL_SEL_FILL_ONLY = 25,     /* bars paint no empty part, faces are outlines */
    QEL_SEL_ANGLE_OFFSET = 26,  /* degrees by which a dial is turned clockwise */
    QEL_SEL_PIN_STYLE = 27,     /* needle or hands, 0 to 4 */
    QEL_SEL_AXIS_STYLE = 28,    /* bands and ticks, 0 to 3 */
    QEL_SEL_SHOW_FRAME = 29,    /* the outline of 3D bars */
    QEL_SEL_SHOW_VALUE = 30,    /* the value as a number */
    QEL_SEL_FRAME_OPTION = 31,  /* 1: 3D bars are cylinders, else boxes */
    QEL_SEL_SECTOR_COUNT = 32,  /* sectors of a share chart, at most 32 */
    QEL_SEL_FONT_SIZE = 33,     /* size of the numbers; 0: by the meter's size */
    QEL_SEL_COUNT = 34
};

/* ---- colours ---- */

/* A colour is a COLORREF, 0x00BBGGRR. With this bit it blinks: it shows black while the blink state
 * (QELSetBlinkState) is not 0. In files the word "glt" after the number sets it. */
#define QEL_COLOR_BLINK 0x80000000UL

/* ---- attribute records (QELGetElemAttr, QELSetElemAttr) ---- */

#define QEL_SHAPE_WORDS 33 /* geometry words of a shape record */
#define QEL_TEXT_SIZE 256  /* bytes of a text or an identifier, the ending zero included */
#define QEL_MAX_POINTS 16  /* points of a polygon or polyline */

/* Every shape (types 1 to 11). The size word must be 424. */
typedef struct tagQELSHAPEATTR {
    DWORD nSize;                     /* 424 */
    DWORD nStyle;                    /* QEL_STYLE_...; high 16 bits: width of the 3D border */
    LONG nDraft;                     /* hatch or gradient, 0 to 37 */
    DWORD clrA;                      /* file attribute "fg" */
    DWORD clrB;                      /* file attribute "bg" */
    DWORD clrPen;                    /* file attribute "clr" */
    LONG nPenStyle;                  /* GDI pen style, PS_... */
    LONG nPenWidth;                  /* pixels; 0 draws no outline */
    LONG nGeometry[QEL_SHAPE_WORDS]; /* drawing units, in the order of the file's "crd"; polygon and
                                        polyline put the number of points (2 to 16) first */
    char szText[QEL_TEXT_SIZE];      /* text elements; zero-terminated */
    DWORD nFlags;                    /* QEL_FLAG_..., QEL_KEEP_..., QEL_ALONG_..., QEL_AWAY_... */
} QELSHAPEATTR;

/* The root. The size word must be 24. */
typedef struct tagQELROOTATTR {
    DWORD nSize;   /* 24 */
    DWORD nFormat; /* 0x10000 */
    LONG nType;    /* kind of drawing, 0 to 2 */
    LONG nWidth;   /* reference size, drawing units */
    LONG nHeight;
    DWORD nRotate; /* degrees, 0 to 360; a set above 360 stores the quotient by 360 */
} QELROOTATTR;

/* Group, frame and pattern: one word, read as 0; a set takes any record and changes nothing.
 * Status: the number at which the element is shown; a negative one is stored as 0. */
typedef struct tagQELWORDATTR {
    LONG nValue;
} QELWORDATTR;

/* Scale. The size word must be 60. */
typedef struct tagQELSCALEATTR {
    DWORD nSize; /* 60 */
    DWORD nId;   /* the id that QELSetScaleParam addresses */
    LONG bHide;
    LONG nType; /* 0 "vrtleft" to 5 "Arc" */
    DWORD nStyle;
    LONG nMin;
    LONG nMax;
    LONG bPin;
    LONG nGeometry[7]; /* in the order of the file's "crd" */
} QELSCALEATTR;

/* Draw region. The size word must be 28. */
typedef struct tagQELDRAWRGNATTR {
    DWORD nSize; /* 28 */
    LONG nStyle;
    RECT rc;
    DWORD nFlags;
} QELDRAWRGNATTR;

/* Meter. The size word must be at least 68. Mind the order: nMax stands before nMin. */
typedef struct tagQELMETERATTR {
    DWORD nSize; /* 68 */
    DWORD nId;   /* the id that QELSetScaleParam addresses */
    LONG bUseScale;
    LONG bUsePin;
    LONG nType; /* 0 "vert" to 10 "sector" */
    LONG nMax;
    LONG nMin;
    LONG nGeometry[9];
    DWORD nFlags;
} QELMETERATTR;

/* Rotation and identifiers are not part of a record. No record is larger than this. */
#define QEL_MAX_ATTR_SIZE 520

/* ---- engine and file ---- */

/* Makes an engine without a drawing. Result: the handle, null when memory fails. Show-only mode:
 * the handle is a share, still of no engine. */
HQELENGINE QELAPI CreateQELEngine(void);

/* Closes the drawing and frees the handle; every element handle of the engine is dead afterwards.
 */
int QELAPI DestroyQELEngine(HQELENGINE hEngine);

/* The version of the DLL: major << 16 | minor << 8 | patch. */
DWORD QELAPI QELGetVersion(void);

/* Switches show-only mode on (non-zero) or off (0) for handles made from now on. To be called
 * before the first engine is made. Result: always 1. */
int QELAPI QELShowOnly(int bShowOnly);

/* Closes the open drawing, if any, and starts a new, empty one of 50 by 50 units. On failure (no
 * memory) the engine has no drawing. Editing. */
int QELAPI QELNewFile(HQELENGINE hEngine);

/* Closes the open drawing, if any, and opens the file. The whole file is read; it is not kept open.
 * While it is read the file is asked for alone, so that the call fails while anyone else has it
 * open, for reading too. The QEL rect keeps its origin and takes the drawing's reference size. A
 * null path starts a new drawing. On failure (file missing, empty or held by others, not
 * well-formed, root not "qel", elements nested deeper than 512 levels, no memory) the engine has no
 * drawing, whatever was open before. Show-only mode: handles that open the same path share one
 * drawing, which is read once. Paths are the same when their texts are, letter case aside: another
 * spelling of the same file ("a.qel", ".\a.qel", "./a.qel", a full path) is read on its own, and a
 * relative path is shared although the current folder has changed. A null path gives 0, and the
 * handle has no drawing; the element functions find no elements. */
int QELAPI QELOpenFile(HQELENGINE hEngine, const char* pszPath);

/* The same for a wide path, converted to the ANSI code page of the calling thread. 0 for a null
 * path, for one that cannot be converted, and for one of 260 bytes or more after the conversion;
 * the open drawing stays then. */
int QELAPI QELOpenFileU(HQELENGINE hEngine, const wchar_t* pszPath);

/* Saves the drawing. The bytes go to a new file beside the target, which replaces the target only
 * when all are written; on failure the old file is as it was. What replaces it is a new file: it is
 * not hidden where the old one was, and other names (hard links) of the old file keep the old
 * contents. 0 for a null path, without a drawing, and when the target cannot be replaced: it is
 * read-only, a folder, open elsewhere, or the name of a device, such as "NUL" in any folder.
 * Editing. */
int QELAPI QELSaveFile(HQELENGINE hEngine, const char* pszPath);

/* Closes the drawing; element handles die, the QEL rect stays. Show-only mode: drops this handle's
 * share; the drawing is freed with its last share. */
int QELAPI QELCloseFile(HQELENGINE hEngine);

/* The identifier of the root element, a text of at most 255 bytes that lives until the drawing is
 * closed or the root's identifier is set; null without a drawing. */
const char* QELAPI QELGetName(HQELENGINE hEngine);

/* The kind of the drawing, 0 to 2 (the root's "type"); 3 without a drawing; -1 for a handle that is
 * null or not live, and for a show-only handle without a drawing. */
int QELAPI QELGetType(HQELENGINE hEngine);

/* ---- why a call failed ---- */

/* The codes of failures, each with the sentence that QELGetError gives. The numbers from 100 on are
 * of what is wrong in the text of a drawing, with its line and column; one that is not named here
 * is of a text, too. */
enum tagQELERRORCODE {
    QEL_ERROR_NONE = 0,             /* No call has failed. */
    QEL_ERROR_HANDLE = 1,           /* The engine handle is null or not live: use one that
                                       CreateQELEngine gave and that is not destroyed. */
    QEL_ERROR_ARGUMENT = 2,         /* A pointer that the call needs is null, or an argument
                                       is none that it takes. */
    QEL_ERROR_SHOW_ONLY = 3,        /* In show-only mode a drawing has no elements and is not
                                       edited or saved: open it with QELShowOnly switched
                                       off. */
    QEL_ERROR_NO_DRAWING = 4,       /* No drawing is open: open a file, or begin a new
                                       drawing with QELNewFile. */
    QEL_ERROR_ELEMENT = 5,          /* The element handle is null, deleted, or of another
                                       drawing. */
    QEL_ERROR_TYPE = 6,             /* There are no elements of this type: the types are
                                       QEL_TYPE_..., without path, defs and use. */
    QEL_ERROR_PLACE = 7,            /* The element cannot stand there: the root stays alone,
                                       nothing goes into itself, the one before it is a child
                                       of the same parent, and at most 512 levels nest. */
    QEL_ERROR_RECORD_SIZE = 8,      /* The record has the wrong size: set its size word, and
                                       give a buffer of its whole size. */
    QEL_ERROR_VALUE = 9,            /* The value, or the number of what it is for, is out of
                                       its range or not taken by this element. */
    QEL_ERROR_NO_RECT = 10,         /* The element has no rectangle: it has no points, or
                                       nothing is in it. */
    QEL_ERROR_BUFFER = 11,          /* The buffer is too small: give one of the size that the
                                       call has told. */
    QEL_ERROR_MEMORY = 12,          /* Memory ran out. */
    QEL_ERROR_PATH = 13,            /* The path cannot be spelled in the ANSI code page, or
                                       is too long in it: use QELOpenFileW. */
    QEL_ERROR_NO_FILE = 14,         /* There is no such file: check the path, and for a
                                       relative one the current folder. */
    QEL_ERROR_IN_USE = 15,          /* Another program has the file open: close it there, or
                                       open it with QELOpenFileW, which shares it with others
                                       that read it. */
    QEL_ERROR_OPEN = 16,            /* The file cannot be opened: it may be a folder, or its
                                       rights do not allow it. */
    QEL_ERROR_READ = 17,            /* The file cannot be read to its end: its disk or
                                       network has failed. */
    QEL_ERROR_WRITE = 18,           /* The file cannot be written: the folder is missing or
                                       may not be written to, or the disk is full. */
    QEL_ERROR_REPLACE = 19,         /* The file that is there cannot be replaced: it is
                                       read-only, a folder, a device, or open in another
                                       program. */
    QEL_ERROR_NOT_QEL = 20,         /* The file is no drawing: its first element has to be
                                       <qel>. */
    QEL_ERROR_GDI = 21,             /* The device context is none, or the system has no more
                                       drawing objects. */
    QEL_ERROR_XML = 100,            /* Beginning of the numbers of what is wrong in the text
                                       of a drawing. */
    QEL_ERROR_XML_DEPTH = 102,      /* Elements are nested more than 512 levels deep. */
    QEL_ERROR_XML_EMPTY = 105,      /* The drawing is empty. */
    QEL_ERROR_XML_ATTR = 114,       /* An attribute's value is not closed by its quote, or an
                                       attribute of the XML declaration cannot be read. */
    QEL_ERROR_XML_START_TAG = 116,  /* A start tag cannot be read here: NAME="VALUE", '/>' or
                                       '>' is expected. */
    QEL_ERROR_XML_END_NAME = 117,   /* The drawing ends right after an element's name. */
    QEL_ERROR_XML_END_TAG = 118,    /* The drawing ends inside a start tag. */
    QEL_ERROR_XML_SLASH = 119,      /* '/' is not followed by '>'. */
    QEL_ERROR_XML_MISMATCH = 120,   /* The end tag does not match the element that is open. */
    QEL_ERROR_XML_END_CONTENT = 121 /* The drawing ends inside an element's content. */
};
#define QEL_ERROR_TEXT_SIZE 256 /* bytes of an error's sentence, the ending zero included */

/* Why a call failed. The size word must be 276. */
typedef struct tagQELERROR {
    DWORD nSize;                      /* 276, filled in by the host */
    DWORD nCode;                      /* QEL_ERROR_... */
    DWORD nLine;                      /* in the drawing's text, from 1; 0: no place in a text */
    DWORD nColumn;                    /* from 1, by bytes */
    DWORD nSystem;                    /* the system's error number; 0: it has told none */
    char szText[QEL_ERROR_TEXT_SIZE]; /* one sentence in English; zero-terminated */
} QELERROR;

/* Tells why the last failed call on this handle failed: every call that takes an engine and fails
 * leaves its reason there, and a later success leaves it as it is. Answers are no failures: no
 * relative, an id that no element has, an element that has no value yet, nothing at a point,
 * nothing dirty, no draw region, no status element, an update rectangle that misses the drawing. A
 * value by identifier that no bearer takes fails. In show-only mode a reason belongs to the handle,
 * not to the drawing that handles share. A null handle, or one that is not live, asks for the last
 * call of this thread without a live engine. Result: 1; 0 when nothing has failed, with the code 0
 * and its sentence; 0, and nothing is written, for a null pointer or another size word. The call
 * itself leaves no reason.
 *
 *     QELERROR error;
 *     error.nSize = sizeof error;
 *     if (!QELOpenFile(hEngine, "pump.qel") && QELGetError(hEngine, &error))
 *         printf("pump.qel:%lu:%lu: %s\n", error.nLine, error.nColumn, error.szText);
 */
int QELAPI QELGetError(HQELENGINE hEngine, QELERROR* pError);

/* ---- files of any path, drawings in memory ---- */

/* QELOpenFile for a wide path of any length and of any characters that the system takes. Others may
 * read the file at the same time, rename it and delete it, so that a backup at work fails no open;
 * it fails while somebody has the file open for writing. A null path gives 0, and the open drawing
 * stays. Show-only mode: a wide and an ANSI path that are the same wide text, letter case aside,
 * share one drawing.
 *
 *     QELOpenFileW(hEngine, L"C:\\plants\\\x6CF5\\pump.qel");
 */
int QELAPI QELOpenFileW(HQELENGINE hEngine, const wchar_t* pszPath);

/* QELSaveFile for a wide path of any length and of any characters that the system takes. Editing.
 */
int QELAPI QELSaveFileW(HQELENGINE hEngine, const wchar_t* pszPath);

/* QELOpenFile for a drawing that lies in memory, as the bytes of a file: nSize of them, which are
 * copied, so that they may change after the call. A zero among them ends the drawing. A null
 * pointer gives 0, and the open drawing stays; 0 bytes are an empty file. Show-only mode: the
 * drawing is this handle's alone.
 *
 *     QELOpenMemory(hEngine, pResource, SizeofResource(hModule, hInfo));
 */
int QELAPI QELOpenMemory(HQELENGINE hEngine, const void* pBytes, DWORD nSize);

/* Saves the drawing into memory: the bytes that QELSaveFile writes, the zero at their end included.
 * *pnSize is the size of the buffer before, and that of the drawing afterwards. A null buffer asks
 * for that size alone. A buffer that is too small gives 0 and the size, and is not written to.
 * Editing.
 *
 *     DWORD nSize = 0;
 *     void* pBytes = QELSaveMemory(hEngine, NULL, &nSize) ? malloc(nSize) : NULL;
 *     if (pBytes && QELSaveMemory(hEngine, pBytes, &nSize)) Store(pBytes, nSize);
 */
int QELAPI QELSaveMemory(HQELENGINE hEngine, void* pBuffer, DWORD* pnSize);

/* 1 when an edit has succeeded since the drawing was opened, made or saved, into memory too. Live
 * values are no edits, and a turn is none. 0 without a drawing and in show-only mode. */
int QELAPI QELIsModified(HQELENGINE hEngine);

/* ---- texts in any script ---- */

/* The code page that the bytes of texts are in. 0, as at first: the system's ANSI one, in which
 * they are drawn as they are, so that a drawing of another page shows other letters. 1: the one
 * that the drawing declares (encoding="gb2312", "utf-8", "windows-1251" ... in its first line; one
 * without a name, or with a name that is none, counts as gb2312), so that it looks the same on
 * every system. Else the number of a code page, whatever the drawing declares; 0, and nothing
 * changes, for one that the system does not know. With 1 or a number texts are drawn as Unicode,
 * bytes that are none of the page as the system's replacement, and a text's rectangle is divided
 * into columns and not into bytes: Chinese, Japanese and Korean characters and emoji take two (East
 * Asian Width W and F of Unicode), all others one.
 *
 * What is set when a file is opened is told of the file as well: a save declares what the file
 * declares, and a byte order mark of UTF-8 before the drawing is taken, and kept by a save. With 0
 * a save declares gb2312, and a file with a mark does not open. The bytes of texts and identifiers
 * are saved as they are in any case.
 *
 * The setting outlives the drawing; a change makes all of it dirty. Show-only mode: handles that
 * share a drawing share its setting. One that is set while the handle has no drawing is that of the
 * drawing to come, unless that is shared already.
 *
 *     QELSetTextCodePage(hEngine, 1);
 *     if (QELOpenFileW(hEngine, L"pump.qel")) ...
 */
int QELAPI QELSetTextCodePage(HQELENGINE hEngine, DWORD nCodePage);

/* What was set: 0, 1 or the number of a code page. */
int QELAPI QELGetTextCodePage(HQELENGINE hEngine, DWORD* pnCodePage);

/* QELNewFile for a drawing that declares another code page: 65001 declares utf-8, 1251
 * windows-1251, and so on; 0 is QELNewFile. 0, and the open drawing stays, for a number that has no
 * name to declare or that the system does not know. Texts are in it when QELSetTextCodePage has set
 * 1 or the same number. Editing.
 *
 *     QELSetTextCodePage(hEngine, 1);
 *     QELNewFileEx(hEngine, 65001);
 */
int QELAPI QELNewFileEx(HQELENGINE hEngine, DWORD nCodePage);

/* Sets the text of a text element, in the code page that is set for texts (0: the ANSI one). 0 for
 * an element of another type, and for a text that the code page cannot express or that takes more
 * than 255 bytes in it. Editing.
 *
 *     QELSetElemTextW(hEngine, hElem, L"\x6CF5 1");
 */
int QELAPI QELSetElemTextW(HQELENGINE hEngine, HQELELEM hElem, const wchar_t* pszText);

/* The text of a text element, into a buffer of nCount characters; 256 are always enough. 0 for an
 * element of another type and for a buffer that is too small for the text and its zero, which is
 * not written to. */
int QELAPI QELGetElemTextW(HQELENGINE hEngine, HQELELEM hElem, wchar_t* pszBuffer, int nCount);

/* ---- element tree ---- */

/* The root element, or null without a drawing (always null in show-only mode). */
HQELELEM QELAPI QELGetRootElem(HQELENGINE hEngine);

/* Makes an element of a type (QEL_TYPE_...) with default attributes. hParent: null means the root.
 * hAfter: null appends as the last child; else a child of hParent after which the new one is to
 * stand. Type 0 makes a new, empty root in place of the old one; it takes no parent and no sibling,
 * and all earlier element handles are dead. Elements nest at most 512 levels below the root.
 * Result: the element or null. Editing. */
HQELELEM QELAPI QELCreateElem(HQELENGINE hEngine, int nType, HQELELEM hParent, HQELELEM hAfter);

/* Deletes an element with all that is in it; deleting the root leaves an empty engine. Editing. */
int QELAPI QELDeleteElem(HQELENGINE hEngine, HQELELEM hElem);

/* Moves an element with all that is in it under hParent: after hAfter, a child of hParent, or as
 * the first child when hAfter is null. With a null hParent the element leaves the picture; it can
 * be moved back until the drawing is closed, and is not saved. Refused: the root, a move into
 * itself or what it holds, an hAfter that is not a child of hParent or is the element itself, and a
 * nesting deeper than 512 levels. Editing. */
int QELAPI QELMoveElem(HQELENGINE hEngine, HQELELEM hElem, HQELELEM hParent, HQELELEM hAfter);

/* Copies an element with all that is in it; the copy stands right after it. Identifiers in the copy
 * get "_1" appended. Not for the root. Result: the copy or null. Editing. */
HQELELEM QELAPI QELCopyElem(HQELENGINE hEngine, HQELELEM hElem);

/* The related element, or null when there is none. Siblings stand in drawing order: a later one is
 * painted over an earlier one. */
HQELELEM QELAPI QELGetParentElem(HQELENGINE hEngine, HQELELEM hElem);
HQELELEM QELAPI QELGetFirstChild(HQELENGINE hEngine, HQELELEM hElem);
HQELELEM QELAPI QELGetLastChild(HQELENGINE hEngine, HQELELEM hElem);
HQELELEM QELAPI QELGetNextElem(HQELENGINE hEngine, HQELELEM hElem);
HQELELEM QELAPI QELGetPrevElem(HQELENGINE hEngine, HQELELEM hElem);

/* The element's type; QEL_TYPE_NONE (22) on any failure. */
int QELAPI QELGetElemType(HQELENGINE hEngine, HQELELEM hElem);

/* The element's identifier, empty when none was set; it lives until it is set again or the element
 * is deleted. Null on failure. */
const char* QELAPI QELGetElemId(HQELENGINE hEngine, HQELELEM hElem);

/* Sets the identifier; what is longer than 255 bytes is cut. 0 for a null text. Editing. */
int QELAPI QELSetElemId(HQELENGINE hEngine, HQELELEM hElem, const char* pszId);

/* ---- attributes and geometry ---- */

/* Reads the attribute record. pnSize, when given, takes the record's size in bytes; pBuffer, when
 * given, takes the record and must have room for it. One of the two must be given. */
int QELAPI QELGetElemAttr(HQELENGINE hEngine, HQELELEM hElem, void* pBuffer, int* pnSize);

/* Sets the attribute record. nSize is the size of the buffer, at least that of the record; the size
 * word in the record must be right. The picture follows at the next full draw. A record may be
 * taken that a file cannot hold: a polygon or polyline of fewer than 2 or more than 16 points is
 * not drawn and is saved without its points, a meter of a type above 10 is saved without its type.
 * Opened again they have the defaults. Editing. */
int QELAPI QELSetElemAttr(HQELENGINE hEngine, HQELELEM hElem, const void* pBuffer, int nSize);

/* The bounding rectangle in drawing units; of a group or the root, that of its children. Of a meter
 * it is the rectangle in its coordinates, which is not what it paints: of a bar the place of the
 * scale, while the bar stands where the shapes of the face are; of a dial what clips it. */
int QELAPI QELGetElemRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc);

/* Moves the element, by how its rectangle (old) differs from the given one (new). It is not placed
 * into that: every x moves by the difference of the left edges and, when both widths are not 0, by
 * (new - old) * new / old of the widths; y likewise. Nothing is scaled. So 0 0 10 10 set to
 * 5 5 15 15 stands there, but set to 5 5 25 25 it stands at 25 25 35 35. Where one of the widths is
 * 0, a rectangle becomes 0 wide. A meter's face does not move along. A group passes its own old and
 * new rectangle to its children, one after the other, and stops at the first that fails: an empty
 * group, or a polygon or polyline without points. The children before that one have moved then,
 * and the result is 0, as it is for a group without children. Editing. */
int QELAPI QELSetElemRect(HQELENGINE hEngine, HQELELEM hElem, const RECT* prc);

/* The drawing's reference size in drawing units, as turned by QELRotate; 50 by 50 before a drawing
 * is opened. */
int QELAPI QELGetRefSize(HQELENGINE hEngine, SIZE* pSize);

/* Sets the reference size; a size that is not positive is taken, and nothing is drawn then. Without
 * a drawing 0, but 1 for the size that QELGetRefSize gives. Editing. */
int QELAPI QELSetRefSize(HQELENGINE hEngine, const SIZE* pSize);

/* The QEL rect: the device rectangle that the whole drawing is mapped into. */
int QELAPI QELGetQELRect(HQELENGINE hEngine, RECT* prc);
int QELAPI QELSetQELRect(HQELENGINE hEngine, const RECT* prc);

/* How large the pixels are, in percent, that pens, 3D borders, rounded corners, keep-mode
 * distances, hatches, the pressed shift, text sizes and the parts of meters are told in: 25 to
 * 1600, 100 from the start. n of them become n * nPercent / 100 device pixels, halves up, and at
 * least one; sizes of texts are rounded down, so that a text that fits at 100 fits at every scale.
 * What follows the QEL rect stays as large as that makes it, and so do all rectangles and points
 * that this interface takes and gives. Pass the monitor's or printer's resolution over 96, and a
 * QEL rect as many times as large. It belongs to the engine and outlives its drawings; in show-only
 * mode it is that of all who show the drawing. A change makes everything dirty. 0, and nothing
 * changes, out of that range.
 *
 *     QELSetPixelScale(hEngine, GetDpiForWindow(hWnd) * 100 / 96);
 */
int QELAPI QELSetPixelScale(HQELENGINE hEngine, DWORD nPercent);
int QELAPI QELGetPixelScale(HQELENGINE hEngine, DWORD* pnPercent);

/* Makes full draws and updates smooth: each pixel is the mean of nSamples by nSamples, 2, 3 or 4;
 * 0, from the start, draws plainly. Lines, arcs, needles, edges of regions and texts become smooth,
 * over what stands on the surface; hatches, gradients and upright edges are as without. Metafiles,
 * printers and surfaces whose units are no pixels are drawn plainly, and so are partial redraws. It
 * takes up to 8 MB for samples, which it keeps until it is set to 0. It belongs to the engine as
 * the pixel scale does; a change makes everything dirty. Another number is refused. */
int QELAPI QELSetSmooth(HQELENGINE hEngine, int nSamples);
int QELAPI QELGetSmooth(HQELENGINE hEngine);

/* Draws the whole drawing into the host's memory, nWidth by nHeight pixels: rows of nStride bytes
 * from the top, in each pixel blue, green, red and alpha, the colours multiplied by alpha. What is
 * not painted is transparent, and smooth edges are in part when QELSetSmooth asks for them. What
 * stands in the memory is overwritten. No device context is needed; letters have the face of
 * QELSetFontFace. It has the engine's pixel scale and the time of updates, and changes neither the
 * QEL rect nor the dirty area nor what partial redraws remember. nFlags: 0 or QEL_DRAW_PRESSED. 0
 * for a stride below 4 * nWidth, without a drawing and without memory.
 *
 *     unsigned char* pBits = malloc(400 * 300 * 4);
 *     QELRenderBitmap(hEngine, pBits, 400, 300, 400 * 4, 0);
 */
int QELAPI QELRenderBitmap(HQELENGINE hEngine, void* pBits, int nWidth, int nHeight, int nStride,
                           DWORD nFlags);

/* The face of texts in QELRenderBitmap, fewer than 32 characters; null or "": that of the system's
 * messages. QELDraw goes by the font of the device context. */
int QELAPI QELSetFontFace(HQELENGINE hEngine, const wchar_t* pszFace);

/* The device rectangle inside the drawing's draw region, where the host paints its own graphics;
 * 0 when the drawing has none. */
int QELAPI QELGetDrawGraphRect(HQELENGINE hEngine, RECT* prc);

/* ---- where things are ---- */

/* The device rectangle that holds all that a full draw paints of an element: pens, borders, the
 * numbers and read-outs of meters, and of a group all that is in it. It may be some pixels too
 * large, and is never too small, for texts as long as the host's font has no lines under or
 * through its letters and is not turned. Whether the element is shown now, and whether it is drawn
 * pressed, makes no difference: it is what to paint anew when that changes. It is not cut off at
 * the QEL rect. 0 with an empty rectangle when nothing of it is ever painted: it is out of the
 * picture, cannot be mapped, or has neither pen nor fill.
 *
 *     QELSetElemAttr(hEngine, hElem, &attr, sizeof attr);
 *     if (QELGetElemDrawRect(hEngine, hElem, &rc)) InvalidateRect(hWnd, &rc, TRUE); */
int QELAPI QELGetElemDrawRect(HQELENGINE hEngine, HQELELEM hElem, RECT* prc);

/* The same for all elements that bear an identifier, as one rectangle around them; identifiers
 * compare byte by byte. In show-only mode as well. 0 with an empty rectangle when there are none,
 * and without memory. */
int QELAPI QELGetIdDrawRect(HQELENGINE hEngine, const char* pszId, RECT* prc);

/* The topmost element that a device point is on: a filled shape where it is painted, one that is
 * not filled within 3 pixels of its outline, texts, draw regions, scales and meters on the
 * rectangle or circle that they are laid out in; a meter is above the shapes of its face. Groups
 * are not hit, but what is in them; what is not shown now is not hit. Null when there is none, in
 * show-only mode, and without memory.
 *
 *     POINT pt = {LOWORD(lParam), HIWORD(lParam)};
 *     HQELELEM hElem = QELElemFromPoint(hEngine, &pt); */
HQELELEM QELAPI QELElemFromPoint(HQELENGINE hEngine, const POINT* ppt);

/* The identifier of that element or, when it has none, of the nearest one around it that has. In
 * show-only mode as well. nSize: the bytes of the buffer. 0 when nothing is hit, when none of them
 * has an identifier, when the buffer is too small for it and its zero, and without memory; the
 * buffer is then as it was.
 *
 *     char szId[QEL_TEXT_SIZE];
 *     if (QELIdFromPoint(hEngine, &pt, szId, sizeof szId)) Select(szId); */
int QELAPI QELIdFromPoint(HQELENGINE hEngine, const POINT* ppt, char* pszBuffer, int nSize);

/* The first element of the picture, in the order of the document, that bears an identifier;
 * identifiers compare byte by byte. Null when there is none, for an empty one, in show-only mode,
 * and without memory. Many look-ups cost little: an index is made at the first one after an edit of
 * the tree. */
HQELELEM QELAPI QELFindElem(HQELENGINE hEngine, const char* pszId);

/* The device point that a point in drawing units has, as the element maps its own coordinates, with
 * its keep modes: the corners of a rectangle come out where they are drawn. Units are those of the
 * document, also after QELRotate. The point is replaced. 0 for an element that is not drawn: then
 * it stays. */
int QELAPI QELElemToDevice(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt);

/* The other way round: the unit whose device point is nearest, of several the smallest.
 *
 *     POINT pt = ptMouse;
 *     if (QELDeviceToElem(hEngine, hElem, &pt)) MoveCorner(hElem, pt); */
int QELAPI QELDeviceToElem(HQELENGINE hEngine, HQELELEM hElem, POINT* ppt);

/* ---- drawing ---- */

/* Draws. prcUpdate only gates the call: 0 when it does not meet the QEL rect; it is not a clip.
 * nFlags: QEL_DRAW_.... Without QEL_DRAW_FULL only the moving parts are painted over what stands
 * there; what they stood at last is kept once for the engine, so that a draw onto another hdc
 * between two partial ones spoils the second (docs/live-values.md). Texts use the face of the font
 * selected into hdc. Pen, brush, font, current position, background mode and arc direction are as
 * before afterwards; filled shapes leave their text and background colour set, and lines, polylines
 * and arcs with a 3D fill style their background colour. Shapes outside the clip box are left out,
 * also of a path that is open in hdc, unless hdc records a metafile. Outlines are at most 10,000
 * pixels wide, and ellipses, circles, arcs, pies, chords and round rectangles of more than 131,072
 * pixels a side are left out. */
int QELAPI QELDraw(HQELENGINE hEngine, HDC hdc, const RECT* prcUpdate, DWORD nFlags);

/* Turns the drawing to an angle in degrees, counter-clockwise, by quarter turns (100 counts as 90,
 * -100 as -90), counted from the drawing as it was opened. A turn also pushes inside what stands
 * outside of the reference size, at 0 too, and a later turn does not push it back; lines, arcs and
 * circles stay outside. The reference size turns along; the saved drawing does not. */
int QELAPI QELRotate(HQELENGINE hEngine, int nAngle);

/* 0: blinking colours are shown; else they are black. An element that is made or copied later is
 * bright until the next call; one that QELMoveElem brings into the picture is as the drawing is.
 * Result: 0 without a drawing. */
int QELAPI QELSetBlinkState(HQELENGINE hEngine, int nState);

/* ---- live values ---- */

/* The status number: a status element is shown while it equals its own number or is 0xFFFFFFFF.
 * 0 when the drawing has no status element. */
int QELAPI QELGetStatus(HQELENGINE hEngine, DWORD* pnStatus);
int QELAPI QELSetStatus(HQELENGINE hEngine, DWORD nStatus);

/* The four host parameters (QEL_PARAM_...). A set is kept and reaches every shape whose flags ask
 * for it; its result is that of the frame, pattern or draw region that took it, so 0 when the
 * drawing has none of these, although shapes have changed. Of several patterns or draw regions the
 * one that was registered last takes the value: at first the last of the file, then whichever was
 * made, copied or brought back into the picture, or got a record or a rectangle. When one of
 * several is deleted or leaves the picture, none takes values until one is registered again. All
 * frames take the colour, and the last one answers QELGetParam. An index outside 0 to 3 gives 0 and
 * changes nothing. A hatch style outside 0 to 37 is not kept. */
int QELAPI QELGetParam(HQELENGINE hEngine, int nIndex, DWORD* pnValue);
int QELAPI QELSetParam(HQELENGINE hEngine, int nIndex, DWORD nValue);

/* What the drawing follows, QEL_MASK_... and the bits of its meters and scales; 0 without a
 * drawing. */
DWORD QELAPI QELParamsSupported(HQELENGINE hEngine);

/* Values of scales and meters, by element id and selector (QEL_SEL_...). A scale answers to its
 * "scid", a meter to its "mtid"; but the ids 1 to 32 address the meter with "mtid" 0, whose pins
 * (the sectors of a share chart) they number for QEL_SEL_VALUE. The value of a meter with another
 * id cannot be set. 0 when no element of that id knows the selector, or the value is refused.
 *
 * A set goes to the scale and to the meter of that id; the result is that of the meter when it
 * knows the selector. A get asks the scale first; for the two colours the meter, and for the value
 * of the ids 1 to 32 the pin. The f forms know the value (6) and, of meters, the base value (24):
 * the form of the value that was set last is the one that is drawn. Nothing is drawn before the
 * next QELDraw. */
int QELAPI QELGetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD* pnValue);
int QELAPI QELSetScaleParam(HQELENGINE hEngine, DWORD nId, DWORD nSelector, DWORD nValue);
int QELAPI QELGetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float* pfValue);
int QELAPI QELSetScaleParamf(HQELENGINE hEngine, DWORD nId, DWORD nSelector, float fValue);

/* The same with selector 6, the current value. */
int QELAPI QELGetScaleStatus(HQELENGINE hEngine, DWORD nId, DWORD* pnValue);
int QELAPI QELSetScaleStatus(HQELENGINE hEngine, DWORD nId, DWORD nValue);
int QELAPI QELGetScaleStatusf(HQELENGINE hEngine, DWORD nId, float* pfValue);
int QELAPI QELSetScaleStatusf(HQELENGINE hEngine, DWORD nId, float fValue);

/* ---- live values by identifier ---- */

/* These name elements by their identifier (the "id" of the file), with the bytes that it has there,
 * and reach every element that bears it. They change what is shown, in both modes, lie above what
 * the host sets otherwise, and end with the drawing: the document and the saved file do not know
 * of them. A set tells how many elements took it, 0 when none did: none bears the identifier, or
 * none is of a kind that takes it or has it in its range, which leaves a reason; a get asks the
 * first that has it. The first call makes an index of the identifiers, so that each of ten thousand
 * is found at the cost of one; without memory for it nothing is reached.
 *
 *     QELSetValue(hEngine, "boiler.temperature", 82.4);
 */

/* The value of a meter (whatever its "mtid"), a scale, a status element, or a text. A meter and a
 * scale keep it as a whole number, truncated, and as a real one, and show the real one; a status
 * element is shown from then on while the value, truncated, equals its own number. In a text the
 * first run of '#', which may go on with a point and more of them ("##.#"), gives way to the
 * number, right-aligned, with as many decimals as stand behind the point; what does not fit leaves
 * the run. What is no number, or infinite, shows nothing of itself and makes the element's quality
 * bad until a number comes. The get gives back what was set, or what a meter or scale has
 * otherwise. */
int QELAPI QELSetValue(HQELENGINE hEngine, const char* pszId, double fValue);
int QELAPI QELGetValue(HQELENGINE hEngine, const char* pszId, double* pfValue);

/* The value of one sector of a share chart (a meter of the type "sector"): nPin 1 to 32. */
int QELAPI QELSetPin(HQELENGINE hEngine, const char* pszId, int nPin, double fValue);
int QELAPI QELGetPin(HQELENGINE hEngine, const char* pszId, int nPin, double* pfValue);

/* A setting of meters and scales (QEL_SEL_...), truncated but for the value and the base value. 0
 * for one that they refuse, as QELSetScaleParam does. */
int QELAPI QELSetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double fValue);
int QELAPI QELGetSelector(HQELENGINE hEngine, const char* pszId, DWORD nSelector, double* pfValue);

/* What a text element shows instead of its own text, at most 255 bytes, in the code page that is
 * set for texts; a run of '#' in it takes the value that was set before or comes later. */
int QELAPI QELSetText(HQELENGINE hEngine, const char* pszId, const char* pszText);

/* The same for a wide text, in the code page that is set for texts (QELSetTextCodePage). 0 also for
 * one that the code page cannot express, or that takes more than 255 bytes in it.
 *
 *     QELSetTextW(hEngine, "pump.state", L"\x505C\x6B62");
 */
int QELAPI QELSetTextW(HQELENGINE hEngine, const char* pszId, const wchar_t* pszText);

/* 0 hides an element with all that is in it. The face of a meter keeps its region. */
int QELAPI QELSetVisible(HQELENGINE hEngine, const char* pszId, int bVisible);

/* A colour of a shape, or of every shape in a group, frame, pattern, status element or the root.
 * nPlace: 0 the outline ("clr"), 1 "fg", 2 "bg". It wins over host parameters, frames and patterns,
 * and of two settings the later one wins; what fills the face of a meter stays the meter's. */
int QELAPI QELSetColor(HQELENGINE hEngine, const char* pszId, int nPlace, COLORREF clr);

/* Takes back what was set by identifier; null: of all elements that bear one. A meter or scale has
 * its settings and values as after the open then, whoever had set them. */
int QELAPI QELResetLive(HQELENGINE hEngine, const char* pszId);

/* How far the element can be trusted: 0 good, 1 stale (under a grey half-tone), 2 bad (under it,
 * and a red cross). */
int QELAPI QELSetQuality(HQELENGINE hEngine, const char* pszId, int nQuality);

/* The time in milliseconds in which needles, bars and pointers move to a new value that QELSetValue
 * sets: quick at first, and on a full circle the shorter way round; 0: at once. Read-out, the
 * colour of its zone and QELGetValue take the new value at once. For meters other than clocks and
 * share charts, and scales. */
int QELAPI QELSetEasing(HQELENGINE hEngine, const char* pszId, DWORD nTime);

/* Lets nTime milliseconds pass for all that moves. Result: how many still move. */
int QELAPI QELAdvance(HQELENGINE hEngine, DWORD nTime);

/* The different identifiers of the drawing one by one, in document order, from 0 on, with the type
 * (QEL_TYPE_...) of the first element that bears it; pnType may be null. 0 past the end, or when
 * the buffer of nSize bytes is too small for the text and its zero.
 *
 *     for (DWORD n = 0; QELGetLiveId(hEngine, n, szId, sizeof szId, &nType); ++n) ...
 */
int QELAPI QELGetLiveId(HQELENGINE hEngine, DWORD nIndex, char* pszBuffer, int nSize, int* pnType);

/* ---- updates of the picture ---- */

/* The engine keeps where the picture is not right any more: whatever changes it, be it a live
 * value, a parameter, an edit, a turn, another size or the blink state, adds the places where it
 * was and where it is. QELUpdate paints that anew. Pixel for pixel the result is a full QELDraw
 * onto the same background. After an open all is dirty.
 *
 *     QELSetValue(hEngine, "pump.speed", 1480);
 *     if (QELGetDirtyRect(hEngine, &rc)) InvalidateRect(hWnd, &rc, FALSE);
 *     ...
 *     case WM_PAINT: hdc = BeginPaint(hWnd, &ps); QELUpdate(hEngine, hdc, hbrBackground); ...
 */

/* The rectangle around all that is dirty, and its parts as a region that the host has made
 * (for InvalidateRgn), in device units of the QEL rect. 0, and they come out empty, when nothing
 * is. */
int QELAPI QELGetDirtyRect(HQELENGINE hEngine, RECT* prc);
int QELAPI QELGetDirtyRegion(HQELENGINE hEngine, HRGN hRegion);

/* Adds a rectangle that was lost in another way, as what the window system uncovered; null: all. 0
 * without a drawing. */
int QELAPI QELInvalidate(HQELENGINE hEngine, const RECT* prc);

/* Says that the picture is right everywhere. 0 without a drawing. */
int QELAPI QELValidate(HQELENGINE hEngine);

/* Paints what is dirty: clips hdc to it, fills it with the brush unless that is null (then the host
 * has put the background there), draws what stands in it, and takes out of the dirty area what the
 * context's own clip let through, so that the rest is painted next time. The context is as before
 * afterwards. A read-out has the colour of the value that it shows, and clocks show the time of the
 * last QELAdvance, or of the open. What partial draws by QELDraw remember is not touched. 1 when it
 * painted; 0 when nothing was dirty or within the clip, and on failure: the area stays. */
int QELAPI QELUpdate(HQELENGINE hEngine, HDC hdc, HBRUSH hBackground);

/* ---- gradients and curves (no engine needed) ---- */

/* Makes a gradient of two colours over a device rectangle. nKind: 0 to 13. Null for a null or empty
 * rectangle, another kind, or no memory. The descriptor may come without a brush (see below). */
HQELGRADIENT QELAPI QELCreateGradientDescriptor(const RECT* prc, int nKind, COLORREF clr1,
                                                COLORREF clr2);

/* Frees the descriptor with its brush. 0 for a handle that is null or closed already. */
int QELAPI QELCloseGradientDescriptor(HQELGRADIENT hGradient);

/* The descriptor's pattern brush, aligned to its rectangle for a brush origin of 0,0; null when it
 * could not be made, as for more than 67,108,864 (2 to the 26) pixels. The descriptor owns it: do
 * not delete it. */
HBRUSH QELAPI QELGetGradientBrush(HQELGRADIENT hGradient);

/* PolyBezier with the pen of hdc: one start point, then three points a segment. */
BOOL QELAPI QELDrawBezier(HDC hdc, const POINT* pPoints, DWORD nCount);

/* A smooth curve through all points with the pen of hdc, ten straight pieces a segment. The current
 * position is as before afterwards. Result: always 0, also when the curve was drawn. */
int QELAPI QELDrawCurve(HDC hdc, const POINT* pPoints, DWORD nCount);

#ifdef __cplusplus
} /* extern "C" */

/* ---- the hatch-brush class ---- */

/* Fill styles: ten hatches, then 14 gradient kinds, each in both orders of the two colours. */
enum tagDRAFTSTYLE {
    DRAFT_MIN = -2147483647 - 1, /* lets the type hold any style number that a file may name */
    DRAFT_SOLID_TEXT = 0,        /* all in the text colour */
    DRAFT_SOLID_BACK = 1,        /* all in the background colour */
    DRAFT_DOTS = 2,
    DRAFT_CHECKER_1 = 3,
    DRAFT_VERTICAL = 4,
    DRAFT_HORIZONTAL = 5,
    DRAFT_DIAGONAL_DOWN = 6,
    DRAFT_DIAGONAL_UP = 7,
    DRAFT_CHECKER_2 = 8,
    DRAFT_CHECKER_4 = 9,
    DRAFT_GRADIENT = 10, /* style 10 + 2 * kind; the odd one after it has the colours exchanged */
    DRAFT_COUNT = 38,
    DRAFT_MAX = 2147483647
};

/* A fill style made into a GDI brush for one drawing job. Set the device context's text colour to
 * the first and its background colour to the second colour before you paint with a hatch: GDI draws
 * the hatch in these. The object owns the brush; select it out before the object ends. A copy
 * shares the objects of its source: use it only while the source lives. */
class QELENGINE_CLASS CQELDraft {
public:
    CQELDraft();
    CQELDraft(tagDRAFTSTYLE nStyle); /* not explicit: a style converts, as it always has */
    CQELDraft(const CQELDraft& other);
    virtual ~CQELDraft();
    CQELDraft& operator=(const CQELDraft& other);

    /* Gives the brush for the style. pRect: the device rectangle that a gradient runs over, not
     * used by hatches. clr1, clr2: a gradient's first and second colour. Result: non-zero when
     * brush was set; 0 with a null brush for an unknown style, a gradient without a rectangle, or a
     * failure. */
    int GetDraftBrush(HBRUSH& brush, RECT* pRect, unsigned long clr1, unsigned long clr2);

    static const unsigned short m_byColorsBits[10][8]; /* the hatches, one 8 by 8 bitmap each */
    static const tagDRAFTSTYLE m_nDefDraft;            /* the default style, 0 */

private:
    int SetDraft(tagDRAFTSTYLE nStyle);

    tagDRAFTSTYLE m_nStyle;
    HBITMAP m_hBitmap;
    HBRUSH m_hBrush;
    HQELGRADIENT m_hGradient;
    RECT m_rcGradient;
};
#endif /* __cplusplus */

/* The records have the same size in every language and on both word sizes. (An array of negative
 * size is refused; older compilers have no static_assert.) */
typedef char QELSHAPEATTR_is_424_bytes[sizeof(QELSHAPEATTR) == 424 ? 1 : -1];
typedef char QELROOTATTR_is_24_bytes[sizeof(QELROOTATTR) == 24 ? 1 : -1];
typedef char QELWORDATTR_is_4_bytes[sizeof(QELWORDATTR) == 4 ? 1 : -1];
typedef char QELSCALEATTR_is_60_bytes[sizeof(QELSCALEATTR) == 60 ? 1 : -1];
typedef char QELDRAWRGNATTR_is_28_bytes[sizeof(QELDRAWRGNATTR) == 28 ? 1 : -1];
typedef char QELMETERATTR_is_68_bytes[sizeof(QELMETERATTR) == 68 ? 1 : -1];
typedef char QELERROR_is_276_bytes[sizeof(QELERROR) == 276 ? 1 : -1];

#endif /* QELENGINE_H */
