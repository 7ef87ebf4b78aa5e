"""Runs a program on this X11 display, once the display says a resolution for text as desktops do.

    with_resolution.py DOTS-PER-INCH PROGRAM [ARGUMENT...]
"""

import ctypes
import subprocess
import sys

# Of Xlib.
RESOURCE_MANAGER, STRING, BITS, REPLACE = 23, 31, 8, 0

dots, *command = sys.argv[1:]
xlib = ctypes.CDLL("libX11.so.6")
xlib.XOpenDisplay.restype = ctypes.c_void_p
xlib.XDefaultRootWindow.restype = ctypes.c_ulong
display = ctypes.c_void_p(xlib.XOpenDisplay(None))
if not display:
    sys.exit("there is no display")
said = f"Xft.dpi:\t{dots}\n".encode()
xlib.XChangeProperty(display, ctypes.c_ulong(xlib.XDefaultRootWindow(display)),
                     ctypes.c_ulong(RESOURCE_MANAGER), ctypes.c_ulong(STRING), BITS, REPLACE, said,
                     len(said))
xlib.XSync(display, 0)
sys.exit(subprocess.run(command, check=False).returncode)
