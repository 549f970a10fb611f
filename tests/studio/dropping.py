"""Drops files on a window, as a file manager of X does: the protocol of drag and drop, version 5, spoken to whichever
window under the pointer takes part in it."""
import ctypes
import time
from ctypes import POINTER, Structure, Union, byref, c_char_p, c_int, c_long, c_uint, c_ulong, c_void_p

VERSION = 5
CLIENT_MESSAGE, SELECTION_REQUEST, SELECTION_NOTIFY = 33, 30, 31
REPLACE = 0
PATIENCE = 20  # seconds


class ClientMessage(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p),
                ("window", c_ulong), ("message", c_ulong), ("format", c_int), ("data", c_long * 5)]


class SelectionRequest(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p),
                ("owner", c_ulong), ("requestor", c_ulong), ("selection", c_ulong), ("target", c_ulong),
                ("property", c_ulong), ("time", c_ulong)]


class SelectionNotify(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p),
                ("requestor", c_ulong), ("selection", c_ulong), ("target", c_ulong), ("property", c_ulong),
                ("time", c_ulong)]


class Event(Union):
    _fields_ = [("type", c_int), ("message", ClientMessage), ("request", SelectionRequest),
                ("notify", SelectionNotify), ("room", c_long * 24)]


def library():
    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = c_void_p
    for name in ("XDefaultRootWindow", "XCreateSimpleWindow", "XInternAtom"):
        getattr(x, name).restype = c_ulong
    x.XInternAtom.argtypes = [c_void_p, c_char_p, c_int]
    x.XDefaultRootWindow.argtypes = x.XCloseDisplay.argtypes = x.XFlush.argtypes = x.XPending.argtypes = [c_void_p]
    x.XCreateSimpleWindow.argtypes = [c_void_p, c_ulong, c_int, c_int, c_uint, c_uint, c_uint, c_ulong, c_ulong]
    x.XSetSelectionOwner.argtypes = [c_void_p, c_ulong, c_ulong, c_ulong]
    x.XTranslateCoordinates.argtypes = [c_void_p, c_ulong, c_ulong, c_int, c_int, POINTER(c_int), POINTER(c_int),
                                        POINTER(c_ulong)]
    x.XGetWindowProperty.argtypes = [c_void_p, c_ulong, c_ulong, c_long, c_long, c_int, c_ulong, POINTER(c_ulong),
                                     POINTER(c_int), POINTER(c_ulong), POINTER(c_ulong), POINTER(c_void_p)]
    x.XChangeProperty.argtypes = [c_void_p, c_ulong, c_ulong, c_ulong, c_int, c_int, c_char_p, c_int]
    x.XSendEvent.argtypes = [c_void_p, c_ulong, c_int, c_long, POINTER(Event)]
    x.XNextEvent.argtypes = [c_void_p, POINTER(Event)]
    x.XFree.argtypes = [c_void_p]
    return x


class Source:
    """What is dragged: files, by their names."""

    def __init__(self, paths):
        self.x = library()
        self.display = self.x.XOpenDisplay(None)
        assert self.display, "there is no display"
        self.root = self.x.XDefaultRootWindow(self.display)
        self.window = self.x.XCreateSimpleWindow(self.display, self.root, 0, 0, 1, 1, 0, 0, 0)
        self.uris = "".join(f"file://{path}\r\n" for path in paths).encode()

    def atom(self, name):
        return self.x.XInternAtom(self.display, name.encode(), 0)

    def takes_part(self, window):
        kind, form, count, rest, data = c_ulong(), c_int(), c_ulong(), c_ulong(), c_void_p()
        self.x.XGetWindowProperty(self.display, window, self.atom("XdndAware"), 0, 1, 0, 0, byref(kind), byref(form),
                                  byref(count), byref(rest), byref(data))
        if data:
            self.x.XFree(data)
        return kind.value != 0

    def target_at(self, x, y):
        """The innermost window at the place that takes part: it is that of the program, within that of the desktop
        that the tests give it, which belongs to another program."""
        window, found, child, at = self.root, 0, c_ulong(), (c_int(), c_int())
        while window:
            found = window if self.takes_part(window) else found
            self.x.XTranslateCoordinates(self.display, self.root, window, x, y, byref(at[0]), byref(at[1]),
                                         byref(child))
            window = child.value
        return found

    def send(self, target, name, *data):
        event = Event()
        event.message = ClientMessage(CLIENT_MESSAGE, 0, 1, self.display, target, self.atom(name), 32,
                                      (c_long * 5)(*data))
        self.x.XSendEvent(self.display, target, 0, 0, byref(event))
        self.x.XFlush(self.display)

    def answer(self, request):
        """Hands over the names in the one form that is offered."""
        given = request.target == self.atom("text/uri-list")
        if given:
            self.x.XChangeProperty(self.display, request.requestor, request.property, request.target, 8, REPLACE,
                                   self.uris, len(self.uris))
        event = Event()
        event.notify = SelectionNotify(SELECTION_NOTIFY, 0, 1, self.display, request.requestor, request.selection,
                                       request.target, request.property if given else 0, request.time)
        self.x.XSendEvent(self.display, request.requestor, 0, 0, byref(event))
        self.x.XFlush(self.display)

    def wait_for(self, name):
        """The data of a message from the target."""
        end = time.monotonic() + PATIENCE
        event = Event()
        while time.monotonic() < end:
            if not self.x.XPending(self.display):
                time.sleep(0.01)
                continue
            self.x.XNextEvent(self.display, byref(event))
            if event.type == SELECTION_REQUEST:
                self.answer(event.request)
            if event.type == CLIENT_MESSAGE and event.message.message == self.atom(name):
                return list(event.message.data)
        raise AssertionError(f"in vain: {name}")

    def close(self):
        self.x.XCloseDisplay(self.display)


def drop(paths, x, y):
    """Drags files to a place on the screen and lets go of them. Whether the window there takes them."""
    source = Source(paths)
    try:
        target = source.target_at(x, y)
        assert target, "no window there takes part in drag and drop"
        copy, now = source.atom("XdndActionCopy"), 0
        source.x.XSetSelectionOwner(source.display, source.atom("XdndSelection"), source.window, now)
        source.send(target, "XdndEnter", source.window, VERSION << 24, source.atom("text/uri-list"), 0, 0)
        source.send(target, "XdndPosition", source.window, 0, x << 16 | y, now, copy)
        taken = source.wait_for("XdndStatus")[1] & 1
        if taken:
            source.send(target, "XdndDrop", source.window, 0, now, 0, 0)
            source.wait_for("XdndFinished")
        else:
            source.send(target, "XdndLeave", source.window, 0, 0, 0, 0)
        return bool(taken)
    finally:
        source.close()
