"""The host listens only to the page itself: no frame in it can post messages, however it was created."""

import json

import pytest

from harness.bridge import Bridge, bridge_page
from harness.waiting import wait_until

NAMES = ("quendoState", "quendoExport", "quendoSaveAs", "quendoClipboard", "quendoShare", "quendoLanguage")

# The visible effect each message would have: a save answered, a text copied, a language changed.
_BODIES = """{
  quendoState: { serialized: '{"revision":99,"from":"frame"}', revision: 99 },
  quendoExport: { filename: 'frame.md', content: 'frame', format: 'markdown' },
  quendoSaveAs: { noteId: 'frame', filename: 'frame.md', content: 'frame' },
  quendoClipboard: { text: 'from a frame', requestId: 'frame' },
  quendoShare: { attemptId: 'frame', title: 'frame', filename: 'frame.md', content: 'frame' },
  quendoLanguage: 'es',
}"""

# Runs in the frame: tries every handler it can reach and reports what it found.
_ATTEMPT = """
(() => {
  const bodies = %(bodies)s;
  const found = [];
  for (const [name, body] of Object.entries(bodies)) {
    try {
      window.webkit.messageHandlers[name].postMessage(body);
      found.push(name);
    } catch {}
    // The event by which the host's scripts talk with each other, on the frame's own window.
    window.dispatchEvent(new CustomEvent('quendo-host-message', { detail: { name, body }, cancelable: true }));
  }
  parent.postMessage({ attempted: true, found, state: typeof window.__QUENDO_NATIVE_STATE__,
                       isMac: typeof window.__QUENDO_IS_MAC__ }, '*');
  if (parent !== top) top.postMessage({ attempted: true, found, state: typeof window.__QUENDO_NATIVE_STATE__,
                                        isMac: typeof window.__QUENDO_IS_MAC__ }, '*');
})();
""" % {"bodies": _BODIES}

_SCRIPT = "<script>" + _ATTEMPT + "</scr" + "ipt>"
_FRAME_FILE = "<!doctype html><meta charset=utf-8>" + _SCRIPT
_NESTING_FILE = "<!doctype html><meta charset=utf-8><iframe src='frame.html'></iframe>"

# How the frame is created; `frame` is the new element and `html` the document that makes the attempts.
FRAMES = {
    "srcdoc": "frame.srcdoc = html",
    "sandboxed srcdoc": "frame.sandbox = 'allow-scripts'; frame.srcdoc = html",
    "sandboxed srcdoc of the same origin": "frame.sandbox = 'allow-scripts allow-same-origin'; frame.srcdoc = html",
    "file in the bundle": "frame.src = 'frame.html'",
    "sandboxed file": "frame.sandbox = 'allow-scripts'; frame.src = 'frame.html'",
    "blob": "frame.src = URL.createObjectURL(new Blob([html], { type: 'text/html' }))",
    "nested in srcdoc": "frame.srcdoc = `<iframe srcdoc=\"${html.replaceAll('&', '&amp;').replaceAll('\"', '&quot;')}\">"
                        "</iframe>`",
    "nested files": "frame.src = 'nesting.html'",
}

_MAKE = """
  const html = %s;
  const frame = document.createElement('iframe');
  const heard = new Promise((resolve) => {
    window.onmessage = (event) => { if (event.data.attempted) resolve(event.data); };
  });
  %s;
  document.body.append(frame);
  // A frame that never starts must not keep the page's next command waiting.
  return await Promise.race([heard, new Promise((resolve) => setTimeout(resolve, %d, 'silent'))]);
"""


def _make(server, how, patience=8000):
    return server.run(_MAKE % (json.dumps(_FRAME_FILE), how, patience), patience / 1000 + 10)


@pytest.fixture(scope="module")
def running(stage):
    program, server = stage(bridge_page, {"frame.html": _FRAME_FILE, "nesting.html": _NESTING_FILE})
    assert Bridge(server).save('{"revision":1,"from":"page"}', 1)
    return program, server


@pytest.fixture
def page(running):
    program, server = running
    bridge = Bridge(server)
    assert bridge.answer("quendoClipboard", "{ text: 'from the page' }")[0] is True
    server.run("window.languages = []; window.quendoSetLanguage = (code) => languages.push(code);"
               "for (const one of document.querySelectorAll('iframe')) one.remove();")
    return program, server, bridge


def _nothing_was_heard(page):
    program, server, bridge = page
    # Messages arrive in order: after these two answers no message from the frame is pending.
    assert bridge.answer("quendoClipboard", "{ text: 'after', requestId: 'fence' }") == \
        [True, "Markdown copiado", "fence"]
    assert bridge.answers_to_saves() == []
    assert program.state.document() == {"revision": 1, "from": "page"}
    assert server.evaluate("languages") == []
    assert [one.title for one in program.windows()] == ["Quendo"]


@pytest.mark.parametrize("kind", FRAMES)
def test_a_frame_is_not_heard(page, kind):
    _, server, _ = page
    found = _make(server, FRAMES[kind])
    assert found == {"attempted": True, "found": [], "state": "undefined", "isMac": "undefined"}
    _nothing_was_heard(page)


def test_a_frame_with_a_data_address_does_not_even_start(page):
    _, server, _ = page
    assert _make(server, "frame.src = 'data:text/html,' + encodeURIComponent(html)", patience=700) == "silent"
    _nothing_was_heard(page)


def test_a_frame_that_the_page_fills_by_script_is_not_heard(page):
    _, server, _ = page
    found = _make(server, "document.body.append(frame);"
                  "frame.contentDocument.write(html); frame.contentDocument.close()")
    assert found["found"] == []
    _nothing_was_heard(page)


def test_a_frame_of_the_same_origin_has_no_handlers_of_its_own(page):
    _, server, _ = page
    assert server.run("const frame = document.createElement('iframe'); document.body.append(frame);"
                      "return typeof frame.contentWindow.webkit?.messageHandlers?.quendoState;") == "undefined"


def test_the_page_itself_finds_all_six_handlers(page):
    _, server, _ = page
    assert server.evaluate("Object.keys(webkit.messageHandlers)") == list(NAMES)
    assert server.evaluate("Object.values(webkit.messageHandlers).every((one) => "
                           "typeof one.postMessage === 'function')")


def test_the_same_messages_are_heard_from_the_page_itself(page):
    # Otherwise the frames' silence would prove nothing.
    program, server, bridge = page
    server.run(f"answers.length = 0; for (const [name, body] of Object.entries({_BODIES})) post(name, body);")
    answers = server.run("return await answersUntil(() => answers.length >= 2);")
    assert sorted(answers, key=len) == [[True, 99], [True, "Markdown copiado", "frame"]]
    assert program.state.document() == {"revision": 99, "from": "frame"}
    wait_until(lambda: program.command("changeLanguage")[1] == "es", what="the menu in the page's language")
