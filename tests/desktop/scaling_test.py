"""Screens of 200 %, of different scales, and large text: the page follows, and is whole."""

import pytest

from harness import desktop, wayland
from harness.probe import Probe, probed_page
from harness.waiting import wait_until
from harness.writing import write

WIDTH = 1320


def test_on_a_screen_of_200_percent_the_page_has_its_pixels(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start(environment={"GDK_SCALE": "2"})
    reporter.wait_for_page()
    assert reporter.evaluate("devicePixelRatio") == 2
    # The window manager has made it fit the screen.
    wait_until(lambda: desktop.geometry(quendo.window)[2] == 2 * reporter.evaluate("innerWidth"), 10,
               "the page to fill the window")


@pytest.fixture
def large_text():
    """A function that sets the desktop's text size in percent, as its settings do; the old one comes back."""
    before = desktop.run("xprop", "-root", "RESOURCE_MANAGER")

    def choose(percent):
        desktop.run("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
                    f"Xft.dpi:\t{96 * percent // 100}\n")

    assert "=" not in before, "the display had resources before"
    yield choose
    desktop.run("xprop", "-root", "-remove", "RESOURCE_MANAGER")


@pytest.mark.parametrize("percent", [150, 200])
def test_the_page_follows_large_text_without_being_cut_off(make_quendo, installation, reporter, large_text, percent):
    large_text(percent)
    quendo = make_quendo(files=probed_page(installation, reporter)).start()
    page = Probe(reporter)
    reporter.wait_for_page()
    assert abs(page.evaluate("innerWidth") - WIDTH * 100 / percent) <= 1
    assert page.evaluate("document.documentElement.scrollWidth <= innerWidth")
    # Smaller than any window of the page's own size, and still all there.
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    page.wait_for_editor()
    for element in ("#saveState", ".work"):
        x, right = page.evaluate(f"(({{ left, right }}) => [left, right])(document.querySelector('{element}')"
                                 ".getBoundingClientRect())")
        assert 0 <= x < right <= page.evaluate("innerWidth"), element


@pytest.mark.wayland_only
def test_the_page_follows_the_large_text_of_a_wayland_desktop(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page())
    settings = quendo.configuration / "glib-2.0" / "settings" / "keyfile"
    settings.parent.mkdir(parents=True)
    settings.write_text("[org/gnome/desktop/interface]\ntext-scaling-factor=1.5\n")
    quendo.start(environment={"GSETTINGS_BACKEND": "keyfile"})
    reporter.wait_for_page()
    assert abs(reporter.evaluate("innerWidth") - WIDTH / 1.5) <= 1


@pytest.fixture
def two_screens():
    """Two screens: one of 150 %, and one of 100 %."""
    wayland.sway("create_output")
    names = [one["name"] for one in wayland.sway("-t", "get_outputs") if one["active"]]
    assert len(names) == 2
    wayland.sway(f"output {names[0]} resolution 2400x1500 position 0 0 scale 1.5")
    wayland.sway(f"output {names[1]} resolution 1600x1000 position 1600 0 scale 1")
    wayland.sway(f"focus output {names[0]}")
    yield names
    wayland.sway(f"output {names[1]} disable")
    wayland.sway(f"output {names[0]} resolution 1600x1000 scale 1")


def right_edge(quendo, screen, path):
    """The colour of the window at its right edge, on a screen."""
    output = next(one for one in wayland.sway("-t", "get_outputs") if one["name"] == screen)
    x, y, width, height = desktop.geometry(quendo.window)
    desktop.run("grim", "-o", screen, str(path))
    x, y = ((value - output["rect"][axis]) * output["scale"] for axis, value in
            (("x", x + width - 10), ("y", y + height / 2)))
    return desktop.run("convert", str(path), "-format", f"%[pixel:p{{{int(x)},{int(y)}}}]", "info:")


@pytest.mark.wayland_only
def test_the_page_is_whole_on_each_of_two_screens(opened, two_screens, tmp_path):
    quendo, page = opened
    write(quendo, page, "On two screens")
    # This toolkit draws whole scales only; the compositor makes 150 % of 200 %.
    page.wait_for("devicePixelRatio === 2")
    picture = tmp_path / "screen.png"
    paper = right_edge(quendo, two_screens[0], picture)
    for screen, scale in ((two_screens[1], 1), (two_screens[0], 2)):
        wayland.sway(f"[con_id={quendo.window.id}] move container to output {screen}")
        page.wait_for(f"devicePixelRatio === {scale}")
        wait_until(lambda: right_edge(quendo, screen, picture) == paper, 10, f"the page to be whole on {screen}")
        page.wait_for(f"innerWidth === {WIDTH}")
