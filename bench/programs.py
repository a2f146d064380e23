"""Starts the two programs that are compared, each in a home of its own, and hears when they are ready.

What is heard costs the programs nothing: the pages are copies that report by themselves, and Quendo's menu
is on the session bus anyway.
"""

import base64
import os
import re
import subprocess
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from gi.repository import Gio, GLib  # noqa: E402

from graphics import PROCESSOR, draws_in_software  # noqa: E402
from harness import desktop, process  # noqa: E402
from harness.installation import Installation, sandbox_arguments  # noqa: E402
from harness.program import Quendo  # noqa: E402

BUILD = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))

_FIRST = "<script>window.firstScript = Date.now();</script>"
# Typing can begin with the first frame in which the caret stands in a text. Where no note is open it never does, and
# there the load event is all there is to tell.
_LOADED = """<script>window.addEventListener('load', () => {
  const load = Date.now();
  let frames = 0;
  const look = () => requestAnimationFrame(() => setTimeout(() => {
    const typable = document.activeElement?.isContentEditable;
    if (!typable && ++frames <= 20) look();
    else report('loaded', { first: window.firstScript, load, typable: typable ? Date.now() : 0 });
  }));
  look();
});</script>"""


def open_to_reports(page, reporter, commands=True):
    """A page that can report and, with `commands`, obeys. Its content security policy is left out, because it
    forbids both."""
    page = re.sub(r"<meta[^>]*Content-Security-Policy[^>]*>", "", page)
    return page.replace("<head>", "<head>" + reporter.script(commands), 1)


def marked(page, reporter):
    """A page that reports when its first script ran, when its load event came and when it could be typed in."""
    page = open_to_reports(page, reporter, commands=False)
    return page.replace("<head>", "<head>" + _FIRST, 1).replace("</head>", _LOADED + "</head>", 1)


def bootstrap(state):
    """What Quendo's own user script says, for the window that has no host."""
    script = ('window.__QUENDO_IS_MAC__ = true;window.__QUENDO_PUBLIC_URL__ = "https:\\/\\/quendo.example\\/";'
              'window.__QUENDO_NATIVE_LANGUAGE__ = "en";')
    if state is None:
        return script
    return (script + "window.__QUENDO_NATIVE_STATE__ = JSON.parse(new TextDecoder().decode(Uint8Array.from("
            "atob('" + base64.b64encode(state.encode()).decode() + "'), c => c.charCodeAt(0))));")


class ReadyWatch:
    """Hears on the session bus when a menu command that needs the page becomes possible: the host enables it
    in the moment in which its page is ready."""

    def __init__(self):
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop(self._context)
        self._condition = threading.Condition()
        self._ready = None
        started = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(started,), daemon=True)
        self._thread.start()
        started.wait()

    def _run(self, started):
        self._context.push_thread_default()
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        bus.signal_subscribe(None, "org.gtk.Actions", "Changed", "/com/quendo/Quendo", None,
                             Gio.DBusSignalFlags.NONE, self._changed)
        # A round trip makes sure that the bus has the subscription.
        bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId", None,
                      None, Gio.DBusCallFlags.NONE, 5000, None)
        started.set()
        self._loop.run()

    def _changed(self, _bus, _sender, _path, _interface, _name, parameters):
        now = time.time()
        _removed, enabled, _states, added = parameters.unpack()
        if enabled.get("newNote") or added.get("newNote", (False,))[0]:
            with self._condition:
                self._ready = now
                self._condition.notify_all()

    def forget(self):
        with self._condition:
            self._ready = None

    def wait(self, timeout):
        with self._condition:
            if not self._condition.wait_for(lambda: self._ready is not None, timeout):
                raise TimeoutError("the menu was not enabled in time")
            return self._ready


class Run:
    """One program that is running. `started` is the time of day right before it was."""

    def __init__(self, command, environment, home):
        with open(home / "errors.log", "ab") as errors:
            self.started = time.time()
            self._process = subprocess.Popen(command, env=environment, cwd=home, stdin=subprocess.DEVNULL,
                                             stdout=subprocess.PIPE, stderr=errors, start_new_session=True)

    @property
    def pid(self):
        return self._process.pid

    def page_seconds(self):
        """The processor's time that the threads which run pages have had so far; what else the machine does
        at the same time is not in it."""
        spent = 0
        for pid in process.children(self._process.pid):
            if process.name(pid).startswith("WebKitWebProces"):
                # The thread that runs the page is the first of its process.
                spent += int(Path(f"/proc/{pid}/task/{pid}/schedstat").read_text().split()[0])
        return spent / 1e9

    def told(self):
        """The number in the next line of its output."""
        line = self._process.stdout.readline().split()
        if len(line) != 2:
            raise RuntimeError(f"the program ended with status {self._process.wait()}")
        return float(line[1])

    def signal(self, number):
        process.kill(self._process.pid, number)

    def end(self):
        helpers = process.children(self._process.pid)
        process.kill(self._process.pid)
        status = self._process.wait(10)
        self._process.stdout.close()
        process.end_all(helpers)
        # Ended by the kill: a program that ended by itself has crashed.
        if status != -9:
            raise RuntimeError(f"the program ended with status {status}")


class Comparison:
    """The installed program and the bare window, with the same page and the same state."""

    def __init__(self, directory, installation, page=None, state=None):
        """page: text of an index.html instead of the installed one; its neighbours stay."""
        directory = Path(directory)
        directory.mkdir()
        self.tree = installation if page is None else installation.copy(directory, files={"index.html": page})
        self._sandbox = sandbox_arguments()
        self._quendo = Quendo(directory / "quendo", self.tree)
        self._bare = Quendo(directory / "bare", self.tree)
        if self._sandbox:
            self._bare.environment["WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS"] = "1"
        if draws_in_software():
            # As Quendo does by itself.
            self._bare.environment.update(PROCESSOR)
        self._state = state
        self._script = directory / "bootstrap.js"
        self._script.write_text(bootstrap(state), encoding="utf-8")

    @property
    def document(self):
        """The file in which Quendo keeps its state."""
        return self._quendo.state.primary

    def start_quendo(self):
        # The page saves soon after its start; each start is to find the same.
        for file in (self._quendo.state.primary, self._quendo.state.backup):
            file.unlink(missing_ok=True)
        if self._state is not None:
            self._quendo.state.write(self._state)
        return Run([str(self.tree.program), *self._sandbox], self._quendo.environment, self._quendo.home)

    def start_bare(self, *arguments):
        return Run([str(BUILD / "bin" / "bare_window"), str(self.tree.web / "index.html"), "--script",
                    str(self._script), *map(str, arguments)], self._bare.environment, self._bare.home)


def require_private_desktop():
    if not desktop.is_private():
        sys.exit("Windows are opened here, so that it runs only on a desktop of its own: "
                 "scripts/with-desktop python3 " + sys.argv[0])
