"""What a window manager does for its user, on displays that have none. X only."""

import ctypes


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5),
                ("padding", ctypes.c_long * 24)]  # an XEvent is larger


CLIENT_MESSAGE = 33


def ask_to_close(display_name, window):
    """As the cross in a title bar does (ICCCM, WM_DELETE_WINDOW)."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                               ctypes.POINTER(_ClientMessage)]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x11.XOpenDisplay(display_name.encode())
    if not display:
        raise RuntimeError(f"there is no display {display_name}")
    message = _ClientMessage(type=CLIENT_MESSAGE, window=window, format=32,
                             message=x11.XInternAtom(display, b"WM_PROTOCOLS", False))
    message.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", False)
    x11.XSendEvent(display, window, False, 0, ctypes.byref(message))
    x11.XCloseDisplay(display)
