"""Who draws: the card or the processor."""

import ctypes
import os

# What puts all programs on the processor: GTK's drawing, the web views', and the browser's.
PROCESSOR = {"GSK_RENDERER": "cairo", "WEBKIT_DISABLE_DMABUF_RENDERER": "1"}
PROCESSOR_BROWSER = ["--disable-gpu"]
_SOFTWARE = ("llvmpipe", "softpipe", "swrast", "SwiftShader")

_OPENGL_ES_API = 0x30A0
_CONTEXT_VERSION = 0x3098
_SURFACE_TYPE = 0x3033
_NONE = 0x3038
_RENDERER = 0x1F01


def renderer():
    """The name of the display's OpenGL renderer, with "software" before it if there is no card behind it."""
    name = _renderer_name()
    if name is None:
        return "software (no OpenGL)"
    return f"software ({name})" if _is_software(name) else name


def draws_in_software():
    name = _renderer_name()
    return name is None or _is_software(name)


def _is_software(name):
    return any(one in name for one in _SOFTWARE)


def _renderer_name():
    try:
        egl, gl = ctypes.CDLL("libEGL.so.1"), ctypes.CDLL("libGLESv2.so.2")
        x11 = ctypes.CDLL("libX11.so.6")
    except OSError:
        return None
    for function in (egl.eglGetDisplay, egl.eglCreateContext, x11.XOpenDisplay):
        function.restype = ctypes.c_void_p
    gl.glGetString.restype = ctypes.c_char_p
    screen = ctypes.c_void_p(x11.XOpenDisplay(os.environ["DISPLAY"].encode()))
    display = ctypes.c_void_p(egl.eglGetDisplay(screen))
    if not egl.eglInitialize(display, None, None):
        return None
    egl.eglBindAPI(_OPENGL_ES_API)
    config, count = ctypes.c_void_p(), ctypes.c_int()
    wanted = (ctypes.c_int * 3)(_SURFACE_TYPE, 0, _NONE)
    egl.eglChooseConfig(display, wanted, ctypes.byref(config), 1, ctypes.byref(count))
    version = (ctypes.c_int * 3)(_CONTEXT_VERSION, 2, _NONE)
    context = ctypes.c_void_p(egl.eglCreateContext(display, config, None, version))
    name = gl.glGetString(_RENDERER) if egl.eglMakeCurrent(display, None, None, context) else None
    egl.eglTerminate(display)
    return name.decode() if name else None
