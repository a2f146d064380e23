"""Where the page may navigate and what is opened outside instead, with real clicks in the real window."""

import itertools
import json

import pytest

from harness import desktop
from harness.waiting import wait_until

_HEAD = """
<style>
  html, body { margin: 0; height: 100%; }
  #place > * { position: fixed; inset: 0; font-size: 40px; width: 100%; height: 100%; }
</style>
<script>
  window.clicks = 0;
  window.addEventListener('click', () => { clicks++; });
</script>
"""
# Only a page from the bundle can tell the reporter that it was loaded.
_OTHER = "<!doctype html><meta charset=utf-8><title>Other — Quendo</title>%s<p id=other>The other page</p>"


@pytest.fixture(scope="module")
def running(stage):
    return stage(lambda server: server.page("<div id=place></div>", _HEAD),
                 {"data/file.txt": "text in the bundle"})


class Page:
    """The page with one element that fills the window, and the effects of clicks on it."""

    _fences = itertools.count(1)

    def __init__(self, running):
        self.program, self.server = running
        self._loads = self.server.loads
        self._address = self.server.evaluate("location.href")
        self._opened = len(self.program.external.opened())

    def show(self, html):
        self.server.run(f"document.getElementById('place').innerHTML = {json.dumps(html)};")

    def click(self, button=1, leaves=False):
        """Clicks the element and waits until the page has received the click, unless the click leaves the page."""
        before = self.server.evaluate("clicks")
        _, _, width, height = desktop.geometry(self.program.window)
        desktop.click_in(self.program.window, width / 2, height / 2, button)
        if button == 1 and not leaves:
            wait_until(lambda: self.server.evaluate("clicks") > before, 10, "the click to reach the page")

    def click_link(self, href, attributes="", leaves=False):
        self.show(f"<a href='{href}' {attributes}>Link</a>")
        self.click(leaves=leaves)

    def opened(self):
        """What was opened outside so far. Clicks a link that must be opened last: everything before it has been decided
        by then."""
        fence = f"https://fence.example/{next(self._fences)}"
        self.click_link(fence)
        self.program.external.wait_for(fence, timeout=30)
        found = self.program.external.opened()[self._opened:]
        return [one for one in found if not one.startswith("https://fence.example/")]

    def stays(self):
        """Checks that the page is still the same one, in one window."""
        assert self.server.evaluate("location.href") == self._address
        assert self.server.loads == self._loads
        assert [one.title for one in self.program.windows()] == ["Quendo"]


@pytest.fixture
def page(running):
    program, _ = running
    program.focus()
    return Page(running)


OUTSIDE = ["https://example.org/path?a=1#b", "http://example.org/", "mailto:someone@example.org"]
REFUSED = ["ftp://example.org/file", "file:///etc/hostname", "javascript:void(window.ran = 'javascript')",
           "tel:123", "quendo-test:thing", "data:text/html,<p>data</p>"]


@pytest.mark.parametrize("url", OUTSIDE)
def test_a_clicked_link_opens_outside_and_the_page_stays(page, url):
    page.click_link(url)
    assert page.opened() == [url]
    page.stays()


def test_a_scheme_in_capital_letters_is_the_same_scheme(page):
    page.click_link("HTTPS://example.org/x")
    assert page.opened() == ["https://example.org/x"]
    page.stays()


@pytest.mark.parametrize("url", OUTSIDE[:1] + OUTSIDE[2:])
def test_a_clicked_link_for_a_new_window_opens_outside_once(page, url):
    page.click_link(url, "target=_blank")
    assert page.opened() == [url]
    page.click_link(url, "target=_blank rel=opener")
    assert page.opened() == [url, url]
    page.stays()


def test_a_link_clicked_with_the_middle_button_opens_outside_once(page):
    page.show(f"<a href='{OUTSIDE[0]}'>Link</a>")
    page.click(button=2)
    assert page.opened() == OUTSIDE[:1]
    page.stays()


@pytest.mark.parametrize("target", ["", "target=_blank"])
@pytest.mark.parametrize("url", REFUSED)
def test_a_clicked_link_of_another_scheme_does_nothing(page, url, target):
    page.show(f'<a href="{url}" {target}>Link</a>')
    page.click()
    assert page.opened() == []
    page.stays()


# Every way out other than a clicked link; each also triggered by a click.
WITHOUT_CLICK = {
    "location.href": "location.href = url",
    "location.assign": "location.assign(url)",
    "location.replace": "location.replace(url)",
    "meta refresh": "const meta = document.createElement('meta'); meta.httpEquiv = 'refresh';"
                    "meta.content = '0;url=' + url; document.head.append(meta)",
    "form get": "const form = document.createElement('form'); form.action = url; document.body.append(form);"
                "form.submit()",
    "form post": "const form = document.createElement('form'); form.action = url; form.method = 'post';"
                 "document.body.append(form); form.requestSubmit()",
    "frame with a redirect": "const frame = document.createElement('iframe');"
                             "frame.srcdoc = `<meta http-equiv=refresh content='0;url=${url}'>`;"
                             "document.body.append(frame)",
    "frame that leads the page away": "const frame = document.createElement('iframe');"
                                      "frame.srcdoc = `<script>top.location = '${url}'</scr` + `ipt>`;"
                                      "document.body.append(frame)",
    "frame": "const frame = document.createElement('iframe'); frame.src = url; document.body.append(frame)",
}


@pytest.mark.parametrize("way", WITHOUT_CLICK)
def test_what_is_no_click_on_a_link_opens_nothing(page, way):
    page.server.run(f"const url = {json.dumps(OUTSIDE[0])}; {WITHOUT_CLICK[way]};"
                    "await new Promise((resolve) => setTimeout(resolve, 100));")
    assert page.opened() == []
    page.stays()


@pytest.mark.parametrize("way", WITHOUT_CLICK)
def test_nor_does_it_in_the_handler_of_a_click(page, way):
    page.show("<p>Text</p>")
    page.server.run("document.querySelector('#place > *').onclick = () => {"
                    f" const url = {json.dumps(OUTSIDE[0])}; {WITHOUT_CLICK[way]}; }};")
    page.click()
    assert page.opened() == []
    page.stays()


def test_a_clicked_button_of_a_form_opens_nothing(page):
    page.show(f"<form action='{OUTSIDE[0]}' method=post><button style='width:100%;height:100%'>Send</button></form>")
    page.click()
    assert page.opened() == []
    page.stays()


def _open_on_click(page, call):
    page.show("<p>Text</p>")
    page.server.run("window.result = 'none'; document.querySelector('#place > *').onclick = () => {"
                    f" window.result = String({call}); }};")
    page.click()
    return page.server.evaluate("window.result")


@pytest.mark.parametrize("url", OUTSIDE)
@pytest.mark.parametrize("arguments", ["", ", '_blank'", ", 'name', 'width=300,height=200'"])
def test_a_window_asked_for_in_a_click_opens_outside_once(page, url, arguments):
    assert _open_on_click(page, f"window.open('{url}'{arguments})") == "null"
    assert page.opened() == [url]
    page.stays()


@pytest.mark.parametrize("url", [*REFUSED[:2], "about:blank", "", "index.html"])
def test_a_window_asked_for_with_another_address_is_not_there(page, url):
    assert _open_on_click(page, f"window.open('{url}')") == "null"
    assert page.opened() == []
    page.stays()


def test_a_window_asked_for_without_a_click_opens_nothing(page):
    assert page.server.evaluate(f"String(window.open('{OUTSIDE[0]}'))") == "null"
    assert page.opened() == []
    page.stays()


@pytest.mark.parametrize("target", ["", "target=_top", "target=_self"])
def test_a_link_to_a_file_in_the_bundle_loads_it(running, page, target):
    program, server = running
    (program.installation.web / "data" / "other page.html").write_text(_OTHER % server.script(), encoding="utf-8")
    loads = server.loads
    page.click_link("data/other%20page.html?question#mark", target, leaves=True)
    server.wait_for_page(loads + 1)
    assert server.evaluate("document.getElementById('other').textContent") == "The other page"
    # Not awaited: the answer may be lost with the page.
    server.post("location.href = '../index.html';")
    server.wait_for_page(loads + 2)
    wait_until(lambda: server.evaluate("document.title") == "Quendo", 10, "the first page again")


@pytest.mark.parametrize("make", ["'about:blank'", "URL.createObjectURL(new Blob(['<p>blob'], { type: 'text/html' }))",
                                  "'about:srcdoc'"])
def test_about_and_blob_are_allowed(page, make):
    found = page.server.run("const frame = document.createElement('iframe'); document.body.append(frame);"
                            f"const loaded = new Promise((resolve) => frame.onload = resolve); frame.src = {make};"
                            "await loaded; return frame.contentWindow.location.protocol;")
    assert found in ("about:", "blob:")
    assert page.opened() == []
    page.stays()
