"""What a page may ask a browser for. Here everything is denied at once, without a dialog."""

import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

import pytest

from harness import desktop
from harness.waiting import stays, wait_until

_BODY = "<div id=place style='position:fixed;inset:0'><input id=colour type=color value='#123456'></div>"
_HEAD = """
<script>
  window.clicks = 0;
  window.addEventListener('click', async (event) => {
    if (!event.isTrusted) return;
    clicks++;
    const request = window.request;
    window.request = undefined;
    if (!request) return;
    const late = new Promise((resolve) => setTimeout(resolve, 3000, 'no answer'));
    const outcome = request().then((value) => value ?? null, (error) => error.name ?? String(error));
    report('outcome', await Promise.race([outcome, late]));
  });
  const once = (target, ...names) => new Promise((resolve) => names.forEach(
    (name) => target.addEventListener(name, () => resolve(name), { once: true })));
  const place = () => document.getElementById('place');
</script>
"""


class _Locked(BaseHTTPRequestHandler):
    """Answers everything with a request for a password, readable by any page."""

    def do_GET(self):
        self.server.asked.append(self.path)
        self.send_response(401)
        self.send_header("WWW-Authenticate", 'Basic realm="Quendo"')
        self.send_header("Access-Control-Allow-Origin", self.headers.get("Origin", "*"))
        self.send_header("Access-Control-Allow-Credentials", "true")
        self.send_header("Content-Length", "0")
        self.end_headers()

    def log_message(self, *arguments):
        pass


@pytest.fixture(scope="module")
def locked():
    server = ThreadingHTTPServer(("127.0.0.1", 0), _Locked)
    server.asked = []
    thread = threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True)
    thread.start()
    yield server
    server.shutdown()
    server.server_close()
    thread.join()


@pytest.fixture(scope="module")
def running(stage):
    program, server = stage(lambda server: server.page(_BODY, _HEAD))
    program.wait_until_still(0.3)
    return program, server


def _widgets(program):
    """The widgets of the window, including the engine's own dialogs over the page."""
    return [(one.role, one.name) for one in program.accessible().walk()
            if one.role in ("push button", "text", "entry", "password text", "dialog", "alert")]


def _click(program, server):
    before = server.evaluate("clicks")
    _, _, width, height = desktop.geometry(program.window)
    desktop.click_in(program.window, width / 2, height / 2)
    wait_until(lambda: server.evaluate("clicks") > before, 10, "the click to reach the page")


def _ask(running, request):
    """Makes the request in the handler of a real click and returns its outcome."""
    program, server = running
    program.focus()
    widgets, place = _widgets(program), desktop.geometry(program.window)
    answered = len(server.reports("outcome"))
    server.run(f"window.request = async () => {{ {request} }};")
    _click(program, server)
    outcome = server.wait_for("outcome", answered + 1)
    stays(lambda: [one.title for one in program.windows()] == ["Quendo"], 0.4, "one window")
    assert _widgets(program) == widgets
    assert desktop.geometry(program.window) == place
    # The engine's own dialogs cover the page and take its clicks.
    _click(program, server)
    return outcome


# Without a device the engine refuses before it asks for permission.
_NO_MEDIA = ("NotAllowedError", "NotFoundError", "OverconstrainedError")
PERMISSIONS = {
    "camera": ("await navigator.mediaDevices.getUserMedia({ video: true })", _NO_MEDIA),
    "microphone": ("await navigator.mediaDevices.getUserMedia({ audio: true })", _NO_MEDIA),
    "screen": ("await navigator.mediaDevices.getDisplayMedia()", _NO_MEDIA),
    "location": ("return new Promise((resolve) => navigator.geolocation.getCurrentPosition("
                 "() => resolve('a place'), (error) => resolve(error.code)))", (1,)),
    "notifications": ("return await Notification.requestPermission()", ("denied",)),
    "reading the clipboard": ("return await navigator.clipboard.readText()", ("NotAllowedError",)),
    "pointer lock": ("const end = once(document, 'pointerlockchange', 'pointerlockerror');"
                     "place().requestPointerLock(); return await end", ("pointerlockerror",)),
    "media keys": ("await navigator.requestMediaKeySystemAccess('org.w3.clearkey', [{ initDataTypes: ['cenc'],"
                   " videoCapabilities: [{ contentType: 'video/mp4; codecs=\"avc1.42E01E\"' }] }])",
                   ("NotAllowedError", "NotSupportedError", "TypeError")),
    "names of devices": ("const all = await navigator.mediaDevices.enumerateDevices();"
                         "return all.map((one) => one.label).join('')", ("",)),
    "storage of others": ("await document.requestStorageAccess(); return 'its own'", ("NotAllowedError", "its own")),
}


@pytest.mark.parametrize("what", PERMISSIONS)
def test_a_permission_is_denied_without_a_question(running, what):
    request, answers = PERMISSIONS[what]
    assert _ask(running, request) in answers


@pytest.mark.parametrize("name", ["geolocation", "notifications"])
def test_a_permission_that_is_asked_about_is_denied(running, name):
    assert _ask(running, f"return (await navigator.permissions.query({{ name: '{name}' }})).state") == "denied"


def test_no_element_fills_the_screen(running):
    program, _ = running
    assert _ask(running, "if (document.fullscreenEnabled) await place().requestFullscreen();"
                         "return document.fullscreenEnabled === true") is False
    assert "FULLSCREEN" not in desktop.window_property(program.window, "_NET_WM_STATE")


def test_no_video_fills_the_screen(running):
    program, _ = running
    outcome = _ask(running, "const one = document.createElement('video'); place().append(one);"
                            "try { one.webkitEnterFullscreen(); } finally { one.remove(); } return 'asked'")
    assert outcome in ("asked", "InvalidStateError", "TypeError")
    assert "FULLSCREEN" not in desktop.window_property(program.window, "_NET_WM_STATE")


@pytest.mark.parametrize("way", ["showPicker", "click"])
def test_a_colour_keeps_its_value(running, way):
    assert _ask(running, f"const one = document.getElementById('colour'); one.{way}();"
                         "await new Promise((resolve) => setTimeout(resolve, 500)); return one.value") == "#123456"


AUTHENTICATION = {
    "fetch": "return (await fetch(url, { credentials: 'include' })).status",
    "request": "const one = new XMLHttpRequest(); one.open('GET', url); one.withCredentials = true;"
               "const end = once(one, 'loadend'); one.send(); await end; return one.status",
    "image": "const one = new Image(); const end = once(one, 'load', 'error'); one.src = url; return await end",
    "script": "const one = document.createElement('script'); const end = once(one, 'load', 'error');"
              "one.src = url; document.head.append(one); return await end",
}


@pytest.mark.parametrize("way", AUTHENTICATION)
def test_a_server_that_asks_for_a_password_gets_none(running, locked, way):
    url = f"http://127.0.0.1:{locked.server_address[1]}/{way}"
    assert _ask(running, f"const url = '{url}'; {AUTHENTICATION[way]}") in (401, 0, "error", "TypeError")
    assert f"/{way}" in locked.asked


def test_a_page_that_is_left_holds_nothing_back(running):
    program, server = running
    loads = server.loads
    server.run("addEventListener('beforeunload', (event) => { event.preventDefault(); event.returnValue = 'Stay'; });")
    _click(program, server)  # Without one the engine does not ask at all.
    server.post("location.reload();")
    server.wait_for_page(loads + 1)
    assert [one.title for one in program.windows()] == ["Quendo"]
