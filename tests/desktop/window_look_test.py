"""What the window takes over from its page: the title, and light or dark."""

import re
import subprocess

import pytest

from harness import desktop
from harness.waiting import stays, wait_until
from harness.writing import write

DARK, LIGHT = "#17181c", "#fbfaf7"


def wait_for_title(quendo, title):
    wait_until(lambda: [one.title for one in quendo.windows()] == [title], 10, f"the title {title!r}")


def test_its_title_is_that_of_the_note(opened):
    quendo, page = opened
    wait_for_title(quendo, "Quendo")
    write(quendo, page, "Shopping\nbread")
    wait_for_title(quendo, "Shopping — Quendo")
    quendo.press("ctrl+Home")
    quendo.type("Weekly ")
    wait_for_title(quendo, "Weekly Shopping — Quendo")
    quendo.press("ctrl+w")
    wait_for_title(quendo, "Quendo")


def test_its_title_is_the_pages_and_otherwise_the_programs(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start()
    reporter.run("document.title = 'مرحبا 👩‍👩‍👧'")
    wait_for_title(quendo, "مرحبا 👩‍👩‍👧")
    reporter.run("document.querySelector('title').remove()")
    wait_for_title(quendo, "Quendo")


def test_a_hostile_title_is_cut_and_cleaned(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start()
    reporter.run(r"document.title = 'a\u0007\u001b[31m\u202eb\nc ' + 'x'.repeat(100000)")
    wait_until(lambda: quendo.windows()[0].title.startswith("a[31mb"), 10, "the new title")
    title = quendo.windows()[0].title
    assert len(title) == 200 and re.fullmatch(r"a\[31mb ?c x+", title)


class Themed:
    """A page with a colour, and the pixels of the program around it."""

    def __init__(self, make_quendo, reporter, dark_desktop=False, color=None):
        head = "<meta name='color-scheme' content='light dark'>"
        if color:
            head += f"<meta name='theme-color' content='{color}'>"
        self.server = reporter
        self.quendo = make_quendo(page=reporter.page(head=head))
        if dark_desktop:
            settings = self.quendo.configuration / "gtk-4.0" / "settings.ini"
            settings.parent.mkdir(parents=True)
            settings.write_text("[Settings]\ngtk-application-prefer-dark-theme=1\n")
        self.quendo.start()
        reporter.wait_for_page()

    def say(self, color):
        """The page's colour changes; without one, the page has none any more."""
        self.server.run("document.querySelector('meta[name=theme-color]')?.remove(); const color = %s;"
                        "if (color) document.head.insertAdjacentHTML('beforeend',"
                        " `<meta name=theme-color content='${color}'>`);" % (f"'{color}'" if color else "null"))

    def prefers_dark(self):
        """What the page sees of the desktop's preference."""
        return self.server.evaluate("matchMedia('(prefers-color-scheme: dark)').matches")

    def brightness(self):
        """That of the menu bar, from 0 to 255, away from its words."""
        left, top, width, _ = desktop.geometry(self.quendo.window)
        return brightness_at(left + width - 40, top + 8)

    def wait_for(self, dark):
        wait_until(lambda: (self.brightness() < 100) == dark, 10, f"a {'dark' if dark else 'light'} menu bar")
        wait_until(lambda: ("dark" in desktop.window_property(self.quendo.window, "_GTK_THEME_VARIANT")) == dark, 10,
                   "the title bar's variant")


def brightness_at(x, y):
    """The brightness of a spot of the screen, from 0 to 255."""
    shown = subprocess.run(["import", "-window", "root", "-crop", f"4x4+{x}+{y}", "-colorspace", "Gray", "-resize",
                            "1x1!", "-depth", "8", "gray:-"], check=True, capture_output=True)
    return shown.stdout[0]


@pytest.fixture
def themed(make_quendo, reporter):
    return lambda **given: Themed(make_quendo, reporter, **given)


def test_everything_native_is_as_dark_as_the_page(themed):
    page = themed()
    page.wait_for(dark=False)
    page.say(DARK)
    page.wait_for(dark=True)
    page.say(LIGHT)
    page.wait_for(dark=False)
    page.say(DARK)
    page.wait_for(dark=True)
    page.say(None)
    page.wait_for(dark=False)


def test_a_page_that_starts_dark_is_dark_around(themed):
    themed(color=DARK).wait_for(dark=True)


def test_dialogs_and_menus_are_dark_too(themed):
    page = themed(color=DARK)
    page.wait_for(dark=True)
    quendo = page.quendo
    # Behind the menu is the page, which is white there.
    left, top, _, _ = desktop.geometry(quendo.window)
    assert brightness_at(left + 100, top + 60) > 200
    quendo.open_menu("Arquivo")
    wait_until(lambda: brightness_at(left + 100, top + 60) < 100, 10, "a dark menu")
    quendo.close_menu()
    quendo.choose("Quendo", "Sobre o Quendo")
    about = wait_until(lambda: next((one for one in quendo.windows() if one.id != quendo.window.id), None), 10,
                       "the About window")
    assert "dark" in desktop.window_property(about, "_GTK_THEME_VARIANT")
    left, top, _, height = desktop.geometry(about)
    wait_until(lambda: brightness_at(left + 12, top + height - 12) < 100, 10, "a dark dialog")


def test_the_page_goes_on_seeing_what_the_desktop_prefers(themed):
    page = themed()
    for color, dark in ((DARK, True), (LIGHT, False), (None, False)):
        page.say(color)
        page.wait_for(dark)
        stays(lambda: page.prefers_dark() is False, 0.5, "the desktop's preference")


def test_on_a_dark_desktop_a_light_page_is_light_around_and_none_is_dark(themed):
    page = themed(dark_desktop=True)
    page.wait_for(dark=True)
    page.say(LIGHT)
    page.wait_for(dark=False)
    stays(lambda: page.prefers_dark() is True, 0.5, "the desktop's preference")
    page.say(None)
    page.wait_for(dark=True)
