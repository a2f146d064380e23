"""A Wayland compositor (sway) from a user's side: what `desktop` does with an X server."""

import hashlib
import json
import subprocess
from pathlib import Path

from . import desktop
from .waiting import wait_until

# xdotool's names of modifiers -> wtype's.
_MODIFIERS = {"ctrl": "ctrl", "shift": "shift", "alt": "alt", "super": "logo"}


def sway(*message):
    """What the compositor answers to a command or a question, in the form of swaymsg."""
    return json.loads(desktop.run("swaymsg", "-r", *message))


def _containers():
    """What shows something: windows, dialogs included."""
    found, open_ends = [], [sway("-t", "get_tree")]
    while open_ends:
        one = open_ends.pop()
        open_ends += one["nodes"] + one["floating_nodes"]
        if one.get("pid"):
            found.append(one)
    return sorted(found, key=lambda one: one["id"])


def _container(window):
    return next(one for one in _containers() if one["id"] == window.id)


def windows(pid=None):
    return [desktop.WindowInfo(one["id"], one["pid"], one["name"] or "") for one in _containers()
            if pid is None or one["pid"] == pid]


def active_window():
    return next((one["id"] for one in _containers() if one["focused"]), None)


def focus(window):
    sway(f"[con_id={window.id}] focus")


def close(window):
    sway(f"[con_id={window.id}] kill")


def geometry(window):
    place = _container(window)["rect"]
    return tuple(place[name] for name in ("x", "y", "width", "height"))


def let_no_key_repeat():
    """Keys are pressed and released in one request, so none is held."""


def park_pointer():
    """There is no pointer."""


def _wtype(*arguments, timeout=20):
    # Each call is a new keyboard. Without a pause the first key comes before the program has heard of its layout.
    desktop.run("wtype", "-s", "60", *arguments, timeout=timeout)


def press(*keys):
    """The keyboard has one key for each symbol, which Shift does not change: the page takes that, the menu does not."""
    arguments = []
    for key in keys:
        *modifiers, name = key.split("+")
        named = [_MODIFIERS[one] for one in modifiers]
        for one in named:
            arguments += ["-M", one]
        arguments += ["-k", name]
        for one in reversed(named):
            arguments += ["-m", one]
    if arguments:
        _wtype(*arguments)


def type_text(text, delay=8):
    for number, line in enumerate(text.split("\n")):
        if number:
            press("Return")
        if line:
            _wtype("-d", str(delay), "--", line, timeout=20 + len(line) / 5)


def clipboard_bytes(kind):
    done = subprocess.run(["wl-paste", "--no-newline", "--type", kind], capture_output=True, timeout=10)
    return done.stdout if done.returncode == 0 else None


def clipboard_types():
    return desktop.run("wl-paste", "--list-types").splitlines()


def clipboard():
    return (clipboard_bytes("text/plain;charset=utf-8") or b"").decode("utf-8", errors="replace")


def set_clipboard(text):
    subprocess.run(["wl-copy", "--type", "text/plain;charset=utf-8"], input=text.encode(), check=True, timeout=10,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    wait_until(lambda: clipboard() == text, 10, "the clipboard to have the text")


def screenshot(path):
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    desktop.run("grim", str(path))
    return path


def picture(window):
    x, y, width, height = geometry(window)
    done = subprocess.run(["grim", "-t", "ppm", "-g", f"{x},{y} {width}x{height}", "-"], capture_output=True,
                          check=True, timeout=20)
    return hashlib.sha256(done.stdout).hexdigest()
