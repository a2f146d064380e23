"""The display, as a user meets it: windows, keys, the mouse, the clipboard, what is to be seen."""

import ctypes
import os
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

from .waiting import wait_until


@dataclass(frozen=True)
class WindowInfo:
    """One top-level window. `id` is the X identifier, as a number."""

    id: int
    pid: int
    title: str


def run(*command, input=None, timeout=20):
    """Runs a tool and returns what it wrote. Raises when it fails."""
    done = subprocess.run(command, input=input, capture_output=True, timeout=timeout)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(command)}: {done.stderr.decode(errors='replace').strip()}")
    return done.stdout.decode("utf-8", errors="replace")


def is_private():
    """Whether this is a desktop of scripts/with-desktop: tests must never type into a person's own."""
    return os.environ.get("QUENDO_PRIVATE_DESKTOP") == "1"


def let_no_key_repeat():
    """Keeps the display from repeating keys that are held down: on a busy machine the tool that presses them may
    come to let one go only after that has begun, and a letter or a command would be there twice."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    assert display, "the display cannot be opened"
    x11.XAutoRepeatOff(display)
    x11.XCloseDisplay(display)


def windows(pid=None):
    """The windows that the window manager knows, or those of one process; dialogs are among them."""
    found = []
    # A window that goes while the tool asks about it makes the tool fail; the next answer leaves it out.
    for attempt in range(5):
        try:
            listed = run("wmctrl", "-l", "-p")
            break
        except RuntimeError:
            if attempt == 4:
                raise
    for line in listed.splitlines():
        identifier, _desktop, owner, _host, *title = line.split(None, 4)
        if pid is None or int(owner) == pid:
            found.append(WindowInfo(int(identifier, 16), int(owner), title[0] if title else ""))
    return found


def active_window():
    """Identifier of the window that has the focus, or None."""
    line = run("xprop", "-root", "_NET_ACTIVE_WINDOW")
    try:
        return int(line.rsplit("#", 1)[1].split(",")[0], 16) or None
    except (IndexError, ValueError):
        return None


def activate(window, timeout=5.0):
    """Brings a window to the front and gives it the keyboard."""
    run("wmctrl", "-i", "-a", hex(window.id))
    wait_until(lambda: active_window() == window.id, timeout, f"the window {window.title!r} to be active")


def geometry(window):
    """(x, y, width, height) of a window's inside, in pixels of the screen."""
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


def press(*keys):
    """Presses keys one after the other: press("ctrl+shift+s"), press("Escape")."""
    if keys:
        run("xdotool", "key", "--clearmodifiers", *keys)


def type_text(text, delay=8):
    """Types text, `delay` milliseconds between keys. Characters that the keyboard lacks are slower."""
    for number, line in enumerate(text.split("\n")):
        # Typed as a character, a line break would be the key Linefeed, which no person has.
        if number:
            press("Return")
        if line:
            run("xdotool", "type", "--clearmodifiers", "--delay", str(delay), "--", line,
                timeout=20 + len(line) / 5)


def click(x, y, button=1):
    """Clicks at a point of the screen."""
    # Not --sync: it waits for a movement, in vain where the pointer is there already.
    run("xdotool", "mousemove", str(int(x)), str(int(y)))
    # The pointer's arrival and the press are separate events to a program; a person leaves time between.
    time.sleep(0.03)
    run("xdotool", "click", str(button))


def park_pointer():
    """Puts the pointer into the corner of the screen, away from every window."""
    run("xdotool", "mousemove", "0", "9999")


def click_in(window, x, y, button=1):
    """Clicks at a point of a window's inside. Negative values count from the right and the bottom."""
    left, top, width, height = geometry(window)
    click(left + (x if x >= 0 else width + x), top + (y if y >= 0 else height + y), button)


def clipboard():
    """The text on the clipboard; empty when there is none."""
    done = subprocess.run(["xclip", "-selection", "clipboard", "-out"], capture_output=True, timeout=10)
    return done.stdout.decode("utf-8", errors="replace") if done.returncode == 0 else ""


def set_clipboard(text):
    """Puts text on the clipboard."""
    # xclip stays behind to serve the text; with its output closed nobody waits for it.
    subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text.encode(), check=True, timeout=10,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    # It may come back before the display has heard of it, and a key that pastes must not be sooner.
    wait_until(lambda: clipboard() == text, 10, "the clipboard to have the text")


def drag(source, target):
    """Drags from the middle of one window to the middle of another."""
    points = []
    for window in (source, target):
        x, y, width, height = geometry(window)
        points.append((x + width // 2, y + height // 2))
    (x, y), (to_x, to_y) = points
    run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
    # A drag begins with a small movement, and a target sees the pointer come before the button goes up.
    for step in range(1, 11):
        run("xdotool", "mousemove", str(x + (to_x - x) * step // 10), str(y + (to_y - y) * step // 10))
        time.sleep(0.05)
    time.sleep(0.3)
    run("xdotool", "mouseup", "1")


def screenshot(path):
    """Writes a picture of the whole screen and returns its path."""
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    run("import", "-window", "root", str(path))
    return path


def picture(window):
    """A digest of what a window shows: two equal ones mean that nothing changed."""
    return run("bash", "-c", f"import -window {window.id} miff:- | identify -format '%#' miff:-")


def wait_until_still(window, quiet=0.6, timeout=15.0):
    """Waits until a window has shown the same picture for `quiet` seconds."""
    end = time.monotonic() + timeout
    last, since = None, time.monotonic()
    while time.monotonic() < end:
        now = picture(window)
        if now != last:
            last, since = now, time.monotonic()
        elif time.monotonic() - since >= quiet:
            return
        time.sleep(0.1)
