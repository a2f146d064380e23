"""The preview in the real page: what it shows, and that a note can do nothing there."""

import pytest

from harness.pointer import Pointer
from harness.waiting import wait_until
from harness.writing import paste_note, wait_for_active_text, write

TEXT = "# Title\n\nSome **bold** text\n\n- [x] done\n\n[a link](https://example.org/there)"
MODE = "document.querySelector('.work').dataset.preview"


def hostile(server):
    """Attacks a note might try, one section each. `ran()` is what they try to call."""
    parts = [
        "<script>ran()</script>",
        f"<script src='{server}/script.js'></script>",
        "<img src=x onerror=ran()>",
        f"<img src='{server}/image.png'>",
        "<svg onload=ran()><script>ran()</script></svg>",
        "<iframe srcdoc='<script>parent.ran()</script>'></iframe>",
        f"<iframe src='{server}/frame'></iframe>",
        f"<link rel=stylesheet href='{server}/style.css'>",
        f"<style>@import '{server}/import.css';</style>",
        f"<div style='background:url({server}/background.png)'>x</div>",
        f"<meta http-equiv=refresh content='0;url={server}/refresh'>",
        f"<base href='{server}/'>",
        "<details open ontoggle=ran()>x</details>",
        "<video><source onerror=ran()></video>",
        "<a href='javascript:ran()' autofocus onfocus=ran()>x</a>",
        f"![image]({server}/markdown.png)",
        f"![image][ref]\n\n[ref]: {server}/reference.png",
        f"`<img src='{server}/code.png'>`",
        f"```html\n<img src='{server}/block.png' onerror=ran()>\n```",
        f"| <img src='{server}/cell.png'> | b |\n|---|---|\n| <img src=x onerror=ran()> | c |",
        "[script](javascript:ran())",
        "[Script](JaVaScRiPt:ran())",
        "[data](data:text/html,<script>opener.ran()</script>)",
        "<javascript:ran()>",
        "[file](file:///etc/passwd)",
        "the end",
    ]
    return "\n\n".join(parts)


def test_the_preview_beside_the_text_follows_it(opened):
    quendo, page = opened
    paste_note(quendo, page, TEXT)
    quendo.press("ctrl+alt+p")
    page.wait_for("document.querySelector('.preview h1')?.textContent === 'Title'")
    assert page.evaluate(MODE) == "beside"
    assert page.evaluate("document.querySelector('.preview strong').textContent") == "bold"
    assert page.evaluate("document.querySelector('.preview .is-done').getAttribute('aria-label')") == "done"
    # The text keeps the keyboard.
    quendo.press("End")
    quendo.type(" and more")
    page.wait_for("document.querySelector('.preview h1').textContent === 'Title and more'")
    quendo.press("ctrl+alt+p")
    page.wait_for("!document.querySelector('.preview').checkVisibility()")
    page.wait_for_editor()


def test_the_preview_in_place_of_the_text_has_the_keys_and_escape_goes_back(opened):
    quendo, page = opened
    write(quendo, page, "one")
    quendo.press("ctrl+alt+r")
    page.wait_for("document.querySelector('.preview-page p')?.textContent === 'one'")
    assert page.evaluate(MODE) == "instead"
    page.wait_for("document.activeElement.id === 'preview'")
    quendo.type("x")
    quendo.press("BackSpace", "Escape")
    page.wait_for_editor()
    quendo.type("!")
    wait_for_active_text(quendo, "one!")
    quendo.press("ctrl+alt+r")
    page.wait_for(f"{MODE} === 'instead'")
    # A new note opens for writing.
    write(quendo, page, "two")
    wait_for_active_text(quendo, "two")


@pytest.mark.parametrize("mode, key", [("beside", "ctrl+alt+p"), ("instead", "ctrl+alt+r")])
def test_a_hostile_note_runs_nothing_and_fetches_nothing(opened, reporter, mode, key):
    quendo, page = opened
    # Tests only the page's own sanitising: the content security policy is removed for this test.
    page.evaluate("(window.ran = () => { window.hasRun = true; }, window.hasRun = false)")
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.paste(hostile(reporter.url))
    page.wait_for("document.querySelector('.cm-content').textContent.includes('the end')")
    quendo.press(key)
    page.wait_for("document.querySelector('.preview-page')?.textContent.includes('the end')")
    assert page.evaluate(MODE) == mode
    found = page.evaluate(
        "[...document.querySelectorAll('.preview *, .cm-content *')].filter((one) =>"
        " /^(script|iframe|object|embed|base|form|link|meta|style|video|source|svg|details)$/i.test(one.localName)"
        " || (one.localName === 'img' && one.hasAttribute('src'))"
        " || [...one.attributes].some(({ name }) => /^on|^srcdoc$/.test(name))"
        " || (one.localName === 'a' && !/^https?:/.test(one.getAttribute('href')))).map((one) => one.outerHTML)")
    assert found == []
    # Anything the note fetched would have been requested before this.
    page.evaluate(f"(new Image().src = '{reporter.url}/last.png', 1)")
    wait_until(lambda: "/last.png" in reporter.requests(), 10, "a request that is the test's own")
    assert reporter.requests() == ["/last.png"]
    assert page.evaluate("window.hasRun") is False
    assert quendo.external.opened() == [] and reporter.loads == 1


def test_a_link_in_the_preview_opens_in_the_browser_and_a_script_as_a_link_does_nothing(opened, reporter):
    quendo, page = opened
    page.evaluate("(window.ran = () => { window.hasRun = true; }, window.hasRun = false, window.clicks = 0,"
                  " window.addEventListener('click', () => { window.clicks++; }, true))")
    links = ["[script](javascript:ran())", "[data](data:text/html,x)", "[file](file:///etc/hostname)",
             "[page](https://example.org/there?a=1#b)"]
    paste_note(quendo, page, "\n\n".join(links))
    quendo.press("ctrl+alt+p")
    page.wait_for("document.querySelectorAll('.preview-page > p').length === 4")
    pointer = Pointer(quendo, page)
    for number in range(4):
        pointer.click(f"document.querySelectorAll('.preview-page > p')[{number}]", x=12)
        page.wait_for(f"window.clicks === {number + 1}")
    quendo.external.wait_for("https://example.org/there?a=1#b")
    assert quendo.external.opened() == ["https://example.org/there?a=1#b"]
    assert page.evaluate("window.hasRun") is False
    assert reporter.loads == 1 and len(quendo.windows()) == 1
