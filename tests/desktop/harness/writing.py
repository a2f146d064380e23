"""Notes of the real page: typed, prepared on disk, and read back from disk."""

import json

from .waiting import Timeout, wait_until


def write(quendo, page, text):
    """Starts a note and types its text."""
    _begin(quendo, page)
    quendo.type(text)
    # Wait for all of it, so that what the test does next finds it.
    last = text.rsplit("\n", 1)[-1]
    page.wait_for(f"[...document.querySelectorAll('.work .cm-line')].at(-1)?.textContent === {json.dumps(last)}")
    first = text.split("\n")[0].lstrip("# ")
    wait_until(lambda: page.active_tab() == first, 10, f"a tab with the title {first!r}")


def paste_note(quendo, page, text):
    """Starts a note and pastes its text, so the editor adds nothing to its lines; leaves the caret at the start."""
    _begin(quendo, page)
    quendo.paste(text)
    page.wait_for(f"{page.TEXT} === {json.dumps(text)}")
    quendo.press("ctrl+Home")


def _begin(quendo, page):
    before = len(page.tabs())
    quendo.press("ctrl+n")
    page.wait_for(f"document.querySelectorAll('.tab').length === {before + 1}")
    page.wait_for_editor()


def start_again(quendo, page):
    """Starts the program again and waits for its page."""
    loads = page.loads
    quendo.start().wait_for_page()
    page.wait_for_load(loads + 1)


def restart(quendo, page):
    """Quits the program as a session does and starts it again."""
    assert quendo.terminate() == 0
    start_again(quendo, page)


def stored_state(notes, **members):
    """A document with these notes (id -> text), all open, the first one active."""
    listed = [{"id": one, "text": text, "format": "markdown", "name": None, "fileName": None, "lineBreak": "\n",
               "created": 1, "updated": 1} for one, text in notes.items()]
    document = {"version": 1, "revision": 1, "notes": listed, "bin": [],
                "tabs": {"open": list(notes), "active": next(iter(notes), None), "closed": []},
                "settings": {"language": "en", "sidebarOpen": True, "sidebarMode": "all"}, "captureDraft": ""}
    return json.dumps(document | members, ensure_ascii=False)


def texts(quendo):
    """The texts of all notes on disk, in document order."""
    return [note["text"] for note in (quendo.state.document() or {"notes": []})["notes"]]


def active_text(quendo):
    """The text on disk of the active note; None if there is none."""
    document = quendo.state.document() or {"notes": [], "tabs": {"active": None}}
    active = document["tabs"]["active"]
    return next((note["text"] for note in document["notes"] if note["id"] == active), None)


def draft(quendo):
    """The quick capture draft on disk; None before the first save."""
    return (quendo.state.document() or {}).get("captureDraft")


def wait_for_active_text(quendo, text, timeout=15.0):
    """Waits until the active note is on disk with exactly this text."""
    try:
        wait_until(lambda: active_text(quendo) == text, timeout)
    except Timeout:
        raise Timeout(f"waited {timeout:g} s for {text!r} on disk; there is {active_text(quendo)!r}") from None
