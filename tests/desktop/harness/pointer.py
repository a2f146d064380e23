"""The mouse on elements of the page, located through the page itself."""

import contextlib
import time

from . import desktop


class Pointer:
    """Elements are given as JavaScript expressions."""

    def __init__(self, quendo, page):
        self._quendo = quendo
        self._page = page

    def click(self, element, *modifiers, x=None, button=1):
        """Clicks the middle of an element, or `x` pixels from its left edge, with these keys held."""
        place = self._place(element, x)
        with _held(modifiers):
            desktop.click(*place, button)

    def drag(self, start, end, *modifiers):
        """Drags from one (element, x) to another with these keys held."""
        (x, y), (to_x, to_y) = self._place(*start), self._place(*end)
        with _held(modifiers):
            desktop.run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
            # Programs recognise a drag by several motion events in sequence.
            for step in range(1, 6):
                desktop.run("xdotool", "mousemove", str(x + (to_x - x) * step // 5), str(y + (to_y - y) * step // 5))
                time.sleep(0.02)
            desktop.run("xdotool", "mouseup", "1")

    def _place(self, element, x=None):
        """(x, y) on the screen. The page fills the lower part of the window, below the menu bar."""
        self._page.wait_for(f"Boolean({element})")
        left, top, width, height, page_width, page_height = self._page.evaluate(
            f"(() => {{ const one = {element}; one.scrollIntoView({{ block: 'nearest' }});"
            " const { left, top, width, height } = one.getBoundingClientRect();"
            " return [left, top, width, height, innerWidth, innerHeight]; })()")
        window_left, window_top, window_width, window_height = desktop.geometry(self._quendo.window)
        return (int(window_left + (window_width - page_width) / 2 + left + (width / 2 if x is None else x)),
                int(window_top + window_height - page_height + top + height / 2))


@contextlib.contextmanager
def _held(keys):
    if keys:
        desktop.run("xdotool", "keydown", *keys)
    try:
        yield
    finally:
        if keys:
            desktop.run("xdotool", "keyup", *keys)
