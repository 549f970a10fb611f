"""A host in Python without a window: draws a drawing into a bitmap in memory and writes it as a file.

    python host.py QELEngine.dll DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]

A setting is ID=VALUE (the current value of the meter or scale with that id), ID.SELECTOR=VALUE (another of
its properties, by the number of QEL_SEL_...) or gradient=KIND (0 to 13, painted behind the drawing). Values
with a point are real numbers. The DLL has to be of the word size of this Python."""
import ctypes
import os
import struct
import sys
from ctypes import byref, c_int32, c_uint32, c_void_p, c_wchar_p

import qelengine

GREY = 0xC0C0C0
WHITE = 0xFFFFFF
FONT_HEIGHT = 16  # texts take the face of this font and choose their own size
PIXELS_PER_METRE = 3780  # 96 dots per inch
DEFAULT_CHARSET = 1
CLEARTYPE_QUALITY = 5  # two colours lose strokes in small sizes
HEADER = struct.Struct("<IiiHHIIiiII")  # BITMAPINFOHEADER


class Trouble(Exception):
    pass


def system():
    """The functions of the system that are used here. Without the types Python would pass every handle
    as 32 bits."""
    gdi, user = ctypes.WinDLL("gdi32"), ctypes.WinDLL("user32")
    for dll, name, result, *arguments in (
            (gdi, "CreateCompatibleDC", c_void_p, c_void_p),
            (gdi, "CreateDIBSection", c_void_p, c_void_p, c_void_p, c_uint32, c_void_p, c_void_p, c_uint32),
            (gdi, "CreateFontW", c_void_p, *[c_int32] * 5, *[c_uint32] * 8, c_wchar_p),
            (gdi, "CreateSolidBrush", c_void_p, c_uint32),
            (gdi, "SelectObject", c_void_p, c_void_p, c_void_p),
            (gdi, "DeleteObject", c_int32, c_void_p),
            (gdi, "DeleteDC", c_int32, c_void_p),
            (gdi, "GdiFlush", c_int32),
            (user, "FillRect", c_int32, c_void_p, c_void_p, c_void_p)):
        function = getattr(dll, name)
        function.restype = result
        function.argtypes = arguments
    return gdi, user


class Canvas:
    """A bitmap that can be drawn on, with a font selected. Its rows run from the bottom up, as in a file."""

    def __init__(self, gdi, width, height, face):
        self.gdi = gdi
        self.size = width * height * 4
        self.header = HEADER.pack(HEADER.size, width, height, 1, 32, 0, self.size, PIXELS_PER_METRE,
                                  PIXELS_PER_METRE, 0, 0)
        self.bits = c_void_p()
        self.dc = gdi.CreateCompatibleDC(None)
        self.bitmap = gdi.CreateDIBSection(self.dc, self.header, 0, byref(self.bits), None, 0)
        if not self.bitmap:
            raise Trouble("there is no picture of this size")
        self.font = gdi.CreateFontW(FONT_HEIGHT, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0, face)
        self.previous = [gdi.SelectObject(self.dc, handle) for handle in (self.bitmap, self.font)]

    def close(self):
        for handle in reversed(self.previous):
            self.gdi.SelectObject(self.dc, handle)
        self.gdi.DeleteObject(self.font)
        self.gdi.DeleteObject(self.bitmap)
        self.gdi.DeleteDC(self.dc)

    def write(self, path):
        self.gdi.GdiFlush()  # GDI may still hold calls back; the bits are read directly
        offset = 14 + len(self.header)
        with open(path, "wb") as file:
            file.write(struct.pack("<2sIII", b"BM", offset + self.size, 0, offset))
            file.write(self.header)
            file.write(ctypes.string_at(self.bits, self.size))


def paint_background(dll, gdi, user, dc, rect, kind):
    """The engine paints onto whatever stands there, so the background comes first. None: plain grey."""
    if kind is None:
        brush = gdi.CreateSolidBrush(GREY)
        user.FillRect(dc, byref(rect), brush)
        gdi.DeleteObject(brush)
        return
    gradient = dll.QELCreateGradientDescriptor(byref(rect), kind, WHITE, GREY)
    if not gradient:
        raise Trouble("there is no such gradient")
    user.FillRect(dc, byref(rect), dll.QELGetGradientBrush(gradient))  # the descriptor owns the brush
    dll.QELCloseGradientDescriptor(gradient)


def apply(dll, engine, setting):
    names, value = setting.split("=")
    identifier, _, selector = names.partition(".")
    selector = int(selector) if selector else qelengine.QEL_SEL_VALUE
    if "." in value:
        taken = dll.QELSetScaleParamf(engine, int(identifier), selector, float(value))
    else:
        taken = dll.QELSetScaleParam(engine, int(identifier), selector, int(value) & 0xFFFFFFFF)
    if not taken:
        raise Trouble(setting + ": nothing in the drawing takes this")


def main(library, drawing, picture, width, height, face, *settings):
    dll = qelengine.load(os.path.abspath(library))
    gdi, user = system()
    rect = qelengine.RECT(0, 0, int(width), int(height))
    kind = None
    engine, canvas = dll.CreateQELEngine(), None
    try:
        if not dll.QELOpenFileU(engine, drawing):
            raise Trouble("the drawing cannot be opened")
        canvas = Canvas(gdi, rect.right, rect.bottom, face)
        dll.QELSetQELRect(engine, byref(rect))
        for setting in settings:
            if setting.startswith("gradient="):
                kind = int(setting[9:])
            else:
                apply(dll, engine, setting)
        paint_background(dll, gdi, user, canvas.dc, rect, kind)
        if not dll.QELDraw(engine, canvas.dc, byref(rect), qelengine.QEL_DRAW_FULL):
            raise Trouble("the drawing cannot be drawn")
        canvas.write(picture)
    finally:
        if canvas:
            canvas.close()
        dll.DestroyQELEngine(engine)


if __name__ == "__main__":
    if len(sys.argv) < 7:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except Trouble as trouble:
        sys.exit(f"host.py: {trouble}")
