"""A window in Python with a live drawing: the engine paints onto the window itself, and only what is not
right any more. A click shows in the title what was hit.

    python window.py QELEngine.dll DRAWING ID MAX

What bears the identifier ID swings between 0 and MAX. The DLL has to be of the word size of this Python,
which needs nothing but what comes with it: the window is made by the system's own functions (ctypes)."""
import ctypes
import os
import sys
from ctypes import POINTER, Structure, byref, c_char, c_int32, c_ssize_t, c_uint32, c_void_p, c_wchar_p

import qelengine

FRAME_TIME = 40  # milliseconds
EASING_TIME = 300  # in which a needle moves to a new value
VALUE_TIME = 400  # from one new value to the next
STEPS = 4  # values from end to end

FONT_HEIGHT = 16  # texts take the face of this font and choose their own size
DEFAULT_CHARSET = 1
CLEARTYPE_QUALITY = 5
BUTTON_FACE = 15  # COLOR_BTNFACE
PER_MONITOR_V2 = -4
LOGPIXELSX = 88
USUAL_DPI = 96
RGN_DIFF = 4
NULL_REGION = 1
ARROW = 32512
OVERLAPPED_VISIBLE = 0x10CF0000  # WS_OVERLAPPEDWINDOW | WS_VISIBLE
USE_DEFAULT = -0x80000000
KEEP_ORDER = 0x14  # SWP_NOZORDER | SWP_NOACTIVATE
WM_CREATE, WM_DESTROY, WM_SIZE, WM_PAINT, WM_ERASEBKGND = 0x0001, 0x0002, 0x0005, 0x000F, 0x0014
WM_TIMER, WM_LBUTTONDOWN, WM_DPICHANGED = 0x0113, 0x0201, 0x02E0

WINDOW_PROC = ctypes.WINFUNCTYPE(c_ssize_t, c_void_p, c_uint32, c_void_p, c_ssize_t)


class WindowClass(Structure):  # WNDCLASSW
    _fields_ = [("style", c_uint32), ("procedure", WINDOW_PROC), ("class_extra", c_int32), ("window_extra", c_int32),
                ("instance", c_void_p), ("icon", c_void_p), ("cursor", c_void_p), ("background", c_void_p),
                ("menu", c_wchar_p), ("name", c_wchar_p)]


class Message(Structure):  # MSG
    _fields_ = [("window", c_void_p), ("message", c_uint32), ("wparam", c_void_p), ("lparam", c_ssize_t),
                ("time", c_uint32), ("point", qelengine.POINT)]


class PaintStruct(Structure):  # PAINTSTRUCT
    _fields_ = [("dc", c_void_p), ("erase", c_int32), ("rect", qelengine.RECT), ("restore", c_int32),
                ("update", c_int32), ("reserved", c_char * 32)]


class Trouble(Exception):
    pass


def system():
    """The functions of the system that are used here. Without the types Python would pass every handle
    as 32 bits."""
    kernel, gdi, user = (ctypes.WinDLL(name) for name in ("kernel32", "gdi32", "user32"))
    rect = POINTER(qelengine.RECT)
    for dll, name, result, *arguments in (
            (kernel, "GetModuleHandleW", c_void_p, c_wchar_p),
            (gdi, "CreateFontW", c_void_p, *[c_int32] * 5, *[c_uint32] * 8, c_wchar_p),
            (gdi, "CreateRectRgn", c_void_p, *[c_int32] * 4),
            (gdi, "CombineRgn", c_int32, c_void_p, c_void_p, c_void_p, c_int32),
            (gdi, "GetRgnBox", c_int32, c_void_p, rect),
            (gdi, "GetDeviceCaps", c_int32, c_void_p, c_int32),
            (gdi, "SelectObject", c_void_p, c_void_p, c_void_p),
            (gdi, "DeleteObject", c_int32, c_void_p),
            (user, "GetDC", c_void_p, c_void_p),
            (user, "ReleaseDC", c_int32, c_void_p, c_void_p),
            (user, "GetSysColorBrush", c_void_p, c_int32),
            (user, "InvalidateRgn", c_int32, c_void_p, c_void_p, c_int32),
            (user, "GetUpdateRgn", c_int32, c_void_p, c_void_p, c_int32),
            (user, "BeginPaint", c_void_p, c_void_p, POINTER(PaintStruct)),
            (user, "EndPaint", c_int32, c_void_p, POINTER(PaintStruct)),
            (user, "GetClientRect", c_int32, c_void_p, rect),
            (user, "AdjustWindowRect", c_int32, rect, c_uint32, c_int32),
            (user, "SetWindowPos", c_int32, c_void_p, c_void_p, *[c_int32] * 4, c_uint32),
            (user, "SetWindowTextW", c_int32, c_void_p, c_wchar_p),
            (user, "SetTimer", c_void_p, c_void_p, c_void_p, c_uint32, c_void_p),
            (user, "LoadCursorW", c_void_p, c_void_p, c_void_p),
            (user, "RegisterClassW", c_uint32, POINTER(WindowClass)),
            (user, "CreateWindowExW", c_void_p, c_uint32, c_wchar_p, c_wchar_p, c_uint32, *[c_int32] * 4,
             *[c_void_p] * 4),
            (user, "DefWindowProcW", c_ssize_t, c_void_p, c_uint32, c_void_p, c_ssize_t),
            (user, "GetMessageW", c_int32, POINTER(Message), c_void_p, c_uint32, c_uint32),
            (user, "TranslateMessage", c_int32, POINTER(Message)),
            (user, "DispatchMessageW", c_ssize_t, POINTER(Message)),
            (user, "PostQuitMessage", None, c_int32)):
        function = getattr(dll, name)
        function.restype = result
        function.argtypes = arguments
    return kernel, gdi, user


def ask_for_real_pixels(user):
    """The drawing is lines: it wants the real pixels of every screen, not a stretched picture. Systems older
    than Windows 10 know one resolution for all screens, and not the newer function."""
    try:
        function = user.SetProcessDpiAwarenessContext
    except AttributeError:
        user.SetProcessDPIAware()
        return
    function.argtypes = [c_void_p]
    function(c_void_p(PER_MONITOR_V2))


class LiveWindow:
    def __init__(self, dll, engine, identifier, highest):
        self.dll, self.engine = dll, engine
        self.identifier, self.highest = identifier, highest
        self.time = self.step = 0
        self.trouble = None
        self.kernel, self.gdi, self.user = system()
        ask_for_real_pixels(self.user)
        self.font = self.gdi.CreateFontW(FONT_HEIGHT, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0,
                                         "Courier New")
        self.procedure = WINDOW_PROC(self.answer)  # kept, or Python would free what the window calls
        self.answers = {WM_CREATE: self.created, WM_SIZE: self.resized, WM_TIMER: self.next_frame,
                        WM_PAINT: self.paint, WM_LBUTTONDOWN: self.clicked, WM_DPICHANGED: self.moved_to_screen,
                        WM_ERASEBKGND: lambda *_: 1,  # QELUpdate fills the background where it paints
                        WM_DESTROY: lambda *_: self.user.PostQuitMessage(0)}

    def close(self):
        self.gdi.DeleteObject(self.font)

    def show(self, title):
        program = self.kernel.GetModuleHandleW(None)
        kind = WindowClass(procedure=self.procedure, instance=program, cursor=self.user.LoadCursorW(None, ARROW),
                           name="LiveDrawing")
        self.user.RegisterClassW(byref(kind))
        size = qelengine.SIZE()
        self.dll.QELGetRefSize(self.engine, byref(size))
        dpi = self.main_resolution()
        self.set_resolution(dpi)
        rect = qelengine.RECT(0, 0, size.cx * dpi // USUAL_DPI, size.cy * dpi // USUAL_DPI)
        self.user.AdjustWindowRect(byref(rect), OVERLAPPED_VISIBLE, 0)
        if not self.user.CreateWindowExW(0, "LiveDrawing", title, OVERLAPPED_VISIBLE, USE_DEFAULT, USE_DEFAULT,
                                         rect.right - rect.left, rect.bottom - rect.top, None, None, program, None):
            raise Trouble("there is no window")
        message = Message()
        while self.user.GetMessageW(byref(message), None, 0, 0) > 0:
            self.user.TranslateMessage(byref(message))
            self.user.DispatchMessageW(byref(message))
        if self.trouble:
            raise self.trouble

    def answer(self, window, message, wparam, lparam):
        """Called by the system, through which no exception finds its way: the loop ends, and raises it."""
        if message not in self.answers:
            return self.user.DefWindowProcW(window, message, wparam, lparam)
        try:
            return self.answers[message](window, wparam or 0, lparam) or 0
        except Exception as trouble:  # whatever it is
            self.trouble = trouble
            self.user.PostQuitMessage(1)
            return 0

    def created(self, window, *_):
        self.user.SetTimer(window, 1, FRAME_TIME, None)

    def resized(self, window, *_):
        rect = qelengine.RECT()
        self.user.GetClientRect(window, byref(rect))
        self.dll.QELSetQELRect(self.engine, byref(rect))
        self.invalidate_dirty(window)

    def main_resolution(self):
        screen = self.user.GetDC(None)
        dpi = self.gdi.GetDeviceCaps(screen, LOGPIXELSX)
        self.user.ReleaseDC(None, screen)
        return dpi

    def set_resolution(self, dpi):
        """Lines, borders and hatches are to be as wide on every screen as on a usual one."""
        self.dll.QELSetPixelScale(self.engine, 100 * dpi // USUAL_DPI)

    def moved_to_screen(self, window, wparam, lparam):
        """Another screen, or the same one set anew: the system says what fits."""
        self.set_resolution(wparam & 0xFFFF)
        rect = qelengine.RECT.from_address(lparam)
        self.user.SetWindowPos(window, None, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                               KEEP_ORDER)
        self.invalidate_dirty(window)

    def invalidate_dirty(self, window):
        """Tells the window system what has changed, place by place."""
        region = self.gdi.CreateRectRgn(0, 0, 0, 0)
        if self.dll.QELGetDirtyRegion(self.engine, region):
            self.user.InvalidateRgn(window, region, 0)  # 0: nothing is erased
        self.gdi.DeleteObject(region)

    def next_frame(self, window, *_):
        self.time += FRAME_TIME
        if self.time % VALUE_TIME == 0:
            self.step = (self.step + 1) % (2 * STEPS)
            place = (STEPS - abs(STEPS - self.step)) / STEPS
            self.dll.QELSetValue(self.engine, self.identifier, self.highest * place)
        self.dll.QELAdvance(self.engine, FRAME_TIME)
        self.invalidate_dirty(window)

    def invalidate_uncovered(self, window):
        """What the window system wants painted and the engine has not changed was uncovered: the picture is
        lost there. To be asked before BeginPaint, which takes the wish back."""
        wanted, dirty = [self.gdi.CreateRectRgn(0, 0, 0, 0) for _ in range(2)]
        self.user.GetUpdateRgn(window, wanted, 0)
        self.dll.QELGetDirtyRegion(self.engine, dirty)
        self.gdi.CombineRgn(wanted, wanted, dirty, RGN_DIFF)
        rect = qelengine.RECT()
        if self.gdi.GetRgnBox(wanted, byref(rect)) > NULL_REGION:
            self.dll.QELInvalidate(self.engine, byref(rect))
        self.gdi.DeleteObject(dirty)
        self.gdi.DeleteObject(wanted)

    def paint(self, window, *_):
        self.invalidate_uncovered(window)
        paint = PaintStruct()
        dc = self.user.BeginPaint(window, byref(paint))
        previous = self.gdi.SelectObject(dc, self.font)
        self.dll.QELUpdate(self.engine, dc, self.user.GetSysColorBrush(BUTTON_FACE))
        self.gdi.SelectObject(dc, previous)
        self.user.EndPaint(window, byref(paint))

    def clicked(self, window, _, lparam):
        """The title tells what was hit, by its identifier."""
        point = qelengine.POINT(lparam & 0xFFFF, lparam >> 16 & 0xFFFF)  # never negative without a capture
        identifier = ctypes.create_string_buffer(qelengine.QEL_TEXT_SIZE)
        if self.dll.QELIdFromPoint(self.engine, byref(point), identifier, len(identifier)):
            self.user.SetWindowTextW(window, identifier.value.decode("mbcs"))


def main(library, drawing, identifier, highest):
    dll = qelengine.load(os.path.abspath(library))
    engine = dll.CreateQELEngine()
    try:
        if not dll.QELOpenFileU(engine, drawing):
            raise Trouble(drawing + " cannot be opened")
        name = identifier.encode("mbcs")
        if not dll.QELSetValue(engine, name, 0.0):
            raise Trouble("nothing in the drawing takes a value for " + identifier)
        dll.QELSetEasing(engine, name, EASING_TIME)
        window = LiveWindow(dll, engine, name, float(highest))
        try:
            window.show(drawing)
        finally:
            window.close()
    finally:
        dll.DestroyQELEngine(engine)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except Trouble as trouble:
        sys.exit(f"window.py: {trouble}")
