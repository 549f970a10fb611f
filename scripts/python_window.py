"""python_window.py STANDIN.SO DRAWING ID MAX: runs examples/hosts/python/window.py on Linux. Engine and GDI are the
stand-in of scripts/bindings; the window system is the one below, which sends a window the messages of a short
life. The calls of engine and GDI go into the file $QEL_TRACE, the names of the others are printed."""
import codecs
import ctypes
import runpy
import sys

FRAMES = 24
PAINTED_AFTER = (0, 11)  # frames
WINDOW = 0x6600000001
DC = 0x5500000001
REGION_OF_ONE = 2  # SIMPLEREGION
SCREEN_PLACE = (10, 20, 310, 220)  # the stand-in's layout of RECT
CLICK = 34 << 16 | 12
FIRST_DPI, NEW_DPI = 144, 192

library, *arguments = sys.argv[1:]
engine = ctypes.CDLL(library)


def trace(*words):
    print(*words)


class Function:
    """One of the window system, which takes the types that a host sets and keeps them."""

    def __init__(self, name, does):
        self.name, self.does = name, does
        self.restype, self.argtypes = ctypes.c_int32, None

    def __call__(self, *given):
        if self.argtypes is None or len(given) != len(self.argtypes):
            raise TypeError(f"{self.name} has other arguments")
        values = [kind.from_param(value) for kind, value in zip(self.argtypes, given)]
        del values  # what does not fit has raised by now
        trace(self.name)
        return self.does(*given)


class WindowSystem:
    """One window and its messages."""

    def __init__(self):
        self.procedure = self.place = None
        self.left = []

    def call(self, message, lparam=0, wparam=None):
        return self.procedure(WINDOW, message, wparam, lparam)

    def register(self, kind):
        self.procedure = kind._obj.procedure
        return 1

    def create(self, *_):
        self.call(0x0001)
        self.call(0x0005)
        self.place = (ctypes.c_int32 * 4)(*SCREEN_PLACE)
        self.left = [(0x0024, 0), (0x02E0, ctypes.addressof(self.place), NEW_DPI << 16 | NEW_DPI)]
        for frame in range(FRAMES):
            self.left += [(0x0014, 0), (0x000F, 0)] if frame in PAINTED_AFTER else []
            self.left.append((0x0113, 0))
        self.left += [(0x0201, CLICK), (0x0002, 0)]
        return WINDOW

    def get(self, message, *_):
        if not self.left:
            return 0
        message._obj.message, message._obj.lparam, *wparam = self.left.pop(0)
        message._obj.wparam = wparam[0] if wparam else None
        return 1

    def dispatch(self, message):
        return self.call(message._obj.message, message._obj.lparam, message._obj.wparam)

    def quit(self, code):
        trace("code", code)
        self.left = []

    def title(self, _, text):
        trace("title", text)
        return 1

    def position(self, _, after, *place):
        trace("position", *place)
        return 1

    def client(self, _, rect):
        rect._obj.right, rect._obj.bottom = 320, 200
        return 1


def always(value):
    return lambda *_: value


def fill_box(_, rect):
    rect._obj.left, rect._obj.top, rect._obj.right, rect._obj.bottom = 1, 2, 3, 4
    return REGION_OF_ONE


window_system = WindowSystem()
FUNCTIONS = {
    "RegisterClassW": window_system.register, "CreateWindowExW": window_system.create,
    "GetMessageW": window_system.get, "DispatchMessageW": window_system.dispatch,
    "PostQuitMessage": window_system.quit, "SetWindowTextW": window_system.title,
    "SetWindowPos": window_system.position, "GetClientRect": window_system.client,
    "GetRgnBox": fill_box, "CombineRgn": always(REGION_OF_ONE), "GetUpdateRgn": always(REGION_OF_ONE),
    "BeginPaint": always(DC), "EndPaint": always(1), "GetSysColorBrush": always(0x5500000004),
    "SetTimer": always(1), "GetDC": always(DC), "ReleaseDC": always(1), "GetDeviceCaps": always(FIRST_DPI),
    "LoadCursorW": always(0x5500000007),
    "GetModuleHandleW": always(0x5500000008), "AdjustWindowRect": always(1), "TranslateMessage": always(0),
    "DefWindowProcW": always(0)}


class Library:
    """The stand-in, and before it the functions above."""

    def __init__(self, _):
        pass

    def __getattr__(self, name):
        does = FUNCTIONS.get(name)
        function = Function(name, does) if does else getattr(engine, name)
        setattr(self, name, function)
        return function


ctypes.WinDLL = Library
ctypes.WINFUNCTYPE = ctypes.CFUNCTYPE
sys.dont_write_bytecode = True
sys.path.insert(0, "examples/hosts/python")
codecs.register(lambda name: codecs.lookup("latin-1") if name == "mbcs" else None)
sys.argv = ["examples/hosts/python/window.py", "QELEngine.dll", *arguments]
runpy.run_path(sys.argv[0], run_name="__main__")
