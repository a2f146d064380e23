"""Text a page copies is on the desktop's clipboard in full, for any other program."""

import hashlib

import pytest

from harness import desktop
from harness.bridge import Bridge, bridge_page
from harness.waiting import wait_until

LIMIT = 2_000_000


def _clipboard(target="UTF8_STRING"):
    """What another program reads, byte for byte."""
    return desktop.clipboard_bytes(target)


def _targets():
    return desktop.clipboard_types()


@pytest.fixture(scope="module")
def running(stage):
    return stage(bridge_page)


@pytest.fixture
def bridge(running):
    return Bridge(running[1])


@pytest.fixture
def old_content():
    desktop.set_clipboard("what was there before")
    wait_until(lambda: desktop.clipboard() == "what was there before", 10, "the clipboard to be set")
    # A compositor gives the clipboard only to a window that was given a key.
    desktop.press("Shift_L")
    return b"what was there before"


TEXTS = {
    "plain": ("'A copied note'", b"A copied note"),
    "empty": ("''", b""),
    "lines": (r"'one\r\ntwo\n\tthree\n'", b"one\r\ntwo\n\tthree\n"),
    "every kind of letter": (r"'\u00e7\u2028\u{1f9d1}\u200d\u{1f4bb}\ufeff\u{10ffff}'",
                             "\u00e7\u2028\U0001f9d1\u200d\U0001f4bb\ufeff\U0010ffff".encode()),
    "NUL inside": (r"'before\u0000after\u0000'", b"before\0after\0"),
}


@pytest.mark.every_display
@pytest.mark.parametrize("name", TEXTS)
def test_a_copied_text_is_read_back_whole(bridge, old_content, name):
    text, expected = TEXTS[name]
    assert bridge.answer("quendoClipboard", f"{{ text: {text}, successMessage: 'Done', requestId: 'r-{len(name)}' }}") \
        == [True, "Done", f"r-{len(name)}"]
    # The first is a name of X11's; where it is offered, it gives the text.
    for kind in {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"} & set(_targets()):
        assert _clipboard(kind) == expected, kind


def test_text_as_the_whole_message(bridge, old_content):
    assert bridge.answer("quendoClipboard", "'Only the text'") == [True, "Texto copiado", ""]
    assert _clipboard() == b"Only the text"


def test_the_clipboard_offers_the_names_that_programs_ask_for(bridge):
    bridge.answer("quendoClipboard", "'text'")
    assert {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING"} <= set(_targets())


@pytest.mark.parametrize("text, size", [
    ("'x'.repeat(2000000)", 1), ("'\u00e9'.repeat(1000000)", 2), ("'\U0001f600'.repeat(500000)", 4),
])
def test_the_largest_text_is_copied_whole(bridge, old_content, text, size):
    assert bridge.answer("quendoClipboard", f"{{ text: {text} }}") == [True, "Markdown copiado", ""]
    found = _clipboard()
    assert len(found) == LIMIT
    one = {1: "x", 2: "\u00e9", 4: "\U0001f600"}[size].encode()
    assert hashlib.sha256(found).digest() == hashlib.sha256(one * (LIMIT // size)).digest()


@pytest.mark.parametrize("text", ["'x'.repeat(2000001)", "'x' + '\u00e9'.repeat(1000000)",
                                  r"'a\ud83db'", r"'\ude00'"])
def test_a_text_that_cannot_be_copied_leaves_the_old_one(bridge, old_content, text):
    assert bridge.answer("quendoClipboard", f"{{ text: {text}, requestId: 'r' }}") == [False, "Markdown copiado", "r"]
    assert _clipboard() == old_content


@pytest.mark.parametrize("body", ["{}", "{ text: 5 }", "{ requestId: 'r' }", "null", "7", "['text']",
                                  "{ text: 'x', requestId: 'r'.repeat(201) }",
                                  "{ text: 'x', successMessage: 'm'.repeat(501) }"])
def test_a_message_of_another_shape_is_neither_copied_nor_answered(bridge, running, old_content, body):
    _, server = running
    server.run(f"answers.length = 0; post('quendoClipboard', {body});")
    assert bridge.answers_to_saves() == []
    assert server.evaluate("answers") == []
    assert _clipboard() == old_content
