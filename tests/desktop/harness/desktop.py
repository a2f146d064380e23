"""The display from a user's side: windows, keys, mouse, clipboard, screenshots."""

import ctypes
import os
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

from .waiting import Timeout, wait_until


@dataclass(frozen=True)
class WindowInfo:
    """One top-level window. `id` is its X identifier."""

    id: int
    pid: int
    title: str


def run(*command, input=None, timeout=20):
    """Runs a tool and returns its standard output. Raises RuntimeError when it fails."""
    done = subprocess.run(command, input=input, capture_output=True, timeout=timeout)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(command)}: {done.stderr.decode(errors='replace').strip()}")
    return done.stdout.decode("utf-8", errors="replace")


def is_private():
    """Whether scripts/with-desktop made this desktop: tests must never type into a person's own."""
    return os.environ.get("QUENDO_PRIVATE_DESKTOP") == "1"


def is_wayland():
    """Whether the display is a Wayland compositor instead of an X server."""
    return os.environ.get("XDG_SESSION_TYPE") == "wayland"


def let_no_key_repeat():
    """Turns off key repeat: on a busy machine xdotool may release a key so late that repeat has set in, and a letter
    or a command would arrive twice."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    assert display, "the display cannot be opened"
    x11.XAutoRepeatOff(display)
    x11.XCloseDisplay(display)


def windows(pid=None):
    """The windows the window manager knows, dialogs included, or only those of one process."""
    found = []
    for line in _wmctrl_listing().splitlines():
        identifier, _desktop, owner, _host, *title = line.split(None, 4)
        if pid is None or int(owner) == pid:
            found.append(WindowInfo(int(identifier, 16), int(owner), title[0] if title else ""))
    return found


def _wmctrl_listing():
    """wmctrl reads the list of windows first and their properties afterwards, and dies of a BadWindow error when a
    window vanishes in between. The next attempt gets a list without that window."""
    for _ in range(20):
        try:
            return run("wmctrl", "-l", "-p")
        except RuntimeError as error:
            last = error
            time.sleep(0.05)
    raise last


def active_window():
    """Identifier of the focused window, or None."""
    line = run("xprop", "-root", "_NET_ACTIVE_WINDOW")
    try:
        return int(line.rsplit("#", 1)[1].split(",")[0], 16) or None
    except (IndexError, ValueError):
        return None


def focus(window):
    """Asks for the keyboard focus for a window."""
    run("wmctrl", "-i", "-a", hex(window.id))


def activate(window, timeout=10.0):
    """Raises a window and gives it the keyboard focus."""
    focus(window)
    wait_until(lambda: active_window() == window.id, timeout, f"the window {window.title!r} to be active")


def geometry(window):
    """(x, y, width, height) of a window without its frame, in screen pixels."""
    # xdotool would count the window manager's frame twice.
    values = {}
    for line in run("xwininfo", "-id", str(window.id)).splitlines():
        name, _, value = line.strip().partition(":")
        values[name] = value.strip()
    return tuple(int(values[name]) for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))


def screen_size():
    """(width, height) of the screen."""
    return tuple(int(one) for one in run("xdotool", "getdisplaygeometry").split())


def window_property(window, name):
    """A property of a window as xprop shows it, for instance "_NET_WM_STATE"."""
    return run("xprop", "-id", str(window.id), name)


def is_minimised(window):
    return "Iconic" in window_property(window, "WM_STATE")


def press(*keys):
    """Presses keys in turn: press("ctrl+shift+s"), press("Escape")."""
    if keys:
        run("xdotool", "key", "--clearmodifiers", *keys)


def type_text(text, delay=8):
    """Types text with `delay` milliseconds between keys. Characters missing from the keyboard layout are slower."""
    for number, line in enumerate(text.split("\n")):
        # xdotool would type a line break as the Linefeed key, which no keyboard has.
        if number:
            press("Return")
        if line:
            run("xdotool", "type", "--clearmodifiers", "--delay", str(delay), "--", line,
                timeout=20 + len(line) / 5)


def click(x, y, button=1):
    """Clicks at a point of the screen."""
    # Not --sync: it waits for a movement, which never comes if the pointer is already there.
    run("xdotool", "mousemove", str(int(x)), str(int(y)))
    # Moving and pressing are separate events; a person leaves time between them.
    time.sleep(0.03)
    run("xdotool", "click", str(button))


def park_pointer():
    """Moves the pointer to a corner of the screen, away from every window."""
    run("xdotool", "mousemove", "0", "9999")


def click_in(window, x, y, button=1):
    """Clicks at a point inside a window. Negative values count from the right and the bottom."""
    left, top, width, height = geometry(window)
    click(left + (x if x >= 0 else width + x), top + (y if y >= 0 else height + y), button)


def clipboard():
    """The text on the clipboard; empty if there is none."""
    done = subprocess.run(["xclip", "-selection", "clipboard", "-out"], capture_output=True, timeout=10)
    return done.stdout.decode("utf-8", errors="replace") if done.returncode == 0 else ""


def clipboard_bytes(kind):
    """What another program reads from the clipboard as a type, byte for byte; None if that is not offered."""
    done = subprocess.run(["xclip", "-selection", "clipboard", "-out", "-target", kind], capture_output=True,
                          timeout=10)
    return done.stdout if done.returncode == 0 else None


def clipboard_types():
    """The types that the clipboard offers."""
    return run("xclip", "-selection", "clipboard", "-out", "-target", "TARGETS").splitlines()


def close(window):
    """Presses the close button of a window, as the window manager does."""
    run("wmctrl", "-i", "-c", hex(window.id))


def set_clipboard(text):
    """Puts text on the clipboard."""
    # xclip stays in the background to serve the text; with its output closed nobody waits for it.
    subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text.encode(), check=True, timeout=10,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    # It may return before it owns the selection, and a paste key must not get there first.
    wait_until(lambda: clipboard() == text, 10, "the clipboard to have the text")


def offer_on_clipboard(kind, content):
    """Offers bytes on the clipboard as one MIME type and nothing else."""
    subprocess.run(["xclip", "-selection", "clipboard", "-t", kind, "-in"], input=content, check=True, timeout=10,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def offered():
        done = subprocess.run(["xclip", "-selection", "clipboard", "-t", kind, "-out"], capture_output=True, timeout=10)
        return done.returncode == 0 and done.stdout == content

    wait_until(offered, 10, f"the clipboard to have the {kind}")


def drag(source, target):
    """Drags from the centre of one window to the centre of another."""
    points = []
    for window in (source, target):
        x, y, width, height = geometry(window)
        points.append((x + width // 2, y + height // 2))
    (x, y), (to_x, to_y) = points
    run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
    # A drag starts with a small movement, and its target needs motion events before the button goes up.
    for step in range(1, 11):
        run("xdotool", "mousemove", str(x + (to_x - x) * step // 10), str(y + (to_y - y) * step // 10))
        time.sleep(0.05)
    time.sleep(0.3)
    run("xdotool", "mouseup", "1")


def screenshot(path):
    """Saves a screenshot of the whole screen and returns its path."""
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    run("import", "-window", "root", str(path))
    return path


def picture(window):
    """A digest of a window's pixels: equal digests mean that nothing changed."""
    return run("bash", "-c", f"import -window {window.id} miff:- | identify -format '%#' miff:-")


def wait_until_still(window, quiet=0.6, timeout=15.0):
    """Waits until a window has looked the same for `quiet` seconds; raises Timeout if it never does. Not for windows
    with a blinking caret."""
    end = time.monotonic() + timeout
    last, since = None, time.monotonic()
    while time.monotonic() < end:
        now = picture(window)
        if now != last:
            last, since = now, time.monotonic()
        elif time.monotonic() - since >= quiet:
            return
        time.sleep(0.1)
    raise Timeout(f"waited {timeout:g} s for the window {window.title!r} to look the same for {quiet:g} s")


# The same under Wayland, as far as tests that run on both need it.
if is_wayland():
    from .wayland import (active_window, clipboard, clipboard_bytes, clipboard_types, close, focus, geometry,  # noqa
                          let_no_key_repeat, park_pointer, picture, press, screenshot, set_clipboard, type_text,
                          windows)
