"""One or more runs of the program in a home directory of its own."""

import contextlib
import os
import signal
import subprocess
import threading
from pathlib import Path

from . import actions, desktop, process
from .accessibility import Accessible
from .external import ExternalHandler
from .state import StateFiles
from .waiting import wait_until

# Settings that keep the program from checking for updates on its own: a last check in the future holds back all
# others, so no test touches the network.
NO_AUTOMATIC_CHECKS = "[Dates]\nQuendoLastAutomaticUpdateCheck=2200-01-01T00:00:00Z\n"

# The only variables of the test run's environment that reach the program.
_KEPT = ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "XDG_SESSION_TYPE", "GDK_BACKEND",
         "GSETTINGS_BACKEND", "LD_LIBRARY_PATH", "USER", "LOGNAME", "TZ")

# A shell starts a background job with some signals ignored, and whatever that job starts ignores them too.
for _number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
    if signal.getsignal(_number) is signal.SIG_IGN:
        signal.signal(_number, signal.SIG_DFL)


def is_main(window):
    """Whether a window of the program's has the title of a main window."""
    return window.title == "Quendo" or window.title.endswith(" — Quendo")


def _fill(pipe, text):
    with contextlib.suppress(BrokenPipeError), pipe:
        pipe.write(text)


class Quendo:
    """The program with a private home. It can be started and stopped repeatedly; the home stays.

    home         directory used as HOME; holds the XDG directories
    installation the tree to run
    arguments    passed to the program at every start, before those of `start`
    """

    def __init__(self, home, installation, arguments=()):
        self.home = Path(home)
        self.home.mkdir(parents=True, exist_ok=True)
        self.installation = installation
        self.arguments = list(arguments)
        self.external = ExternalHandler(self.home)
        if not self.settings.exists():
            self.write_settings(NO_AUTOMATIC_CHECKS)
        self.environment = {name: os.environ[name] for name in _KEPT if name in os.environ}
        self.environment |= {
            "HOME": str(self.home),
            "PATH": f"{self.external.bin}:/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "XDG_DATA_HOME": str(self.data),
            "XDG_CONFIG_HOME": str(self.configuration),
            "XDG_CACHE_HOME": str(self.home / ".cache"),
            "XDG_STATE_HOME": str(self.home / ".local" / "state"),
        }
        temporary = self.home / "tmp"
        temporary.mkdir(exist_ok=True)
        self.environment["TMPDIR"] = str(temporary)
        self.state = StateFiles(self.data / "Quendo")
        self.test_state = StateFiles(self.data / "Quendo-Persistence-Test")
        self._running = None
        self._others = []
        self._log = None
        self.launcher = []  # A command that runs the program, in the place of its own process.

    @property
    def data(self):
        return self.home / ".local" / "share"

    @property
    def configuration(self):
        return self.home / ".config"

    @property
    def settings(self):
        """The program's settings file, read at startup."""
        return self.configuration / "Quendo" / "defaults.ini"

    def write_settings(self, text):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text(text, encoding="utf-8")

    # Starting and ending.

    def start(self, *arguments, environment=None, stdin=None, wait=True, timeout=20.0):
        """Starts the program. With `wait`, returns once its window exists and has the focus. `stdin` is a descriptor
        or bytes that come through a pipe."""
        assert self._running is None or self._running.poll() is not None, "it is already running"
        # A pointer resting where the menu bar appears would move the keyboard focus to it.
        desktop.park_pointer()
        self._running = self._launch(arguments, environment, stdin)
        if wait:
            self.focus(self.wait_for_window(timeout=timeout))
        return self

    def start_another(self, *arguments, environment=None, stdin=None, timeout=20.0):
        """Starts a second instance, waits for it to exit and returns its exit status."""
        return self.begin_another(*arguments, environment=environment, stdin=stdin).wait(timeout)

    def begin_another(self, *arguments, environment=None, stdin=None):
        """Starts a second instance, and returns its process without waiting for it to exit."""
        other = self._launch(arguments, environment, stdin)
        self._others.append(other)
        return other

    def _launch(self, arguments, environment, stdin):
        log = self.home / "output.log"
        with open(log, "ab") as output:
            piped = isinstance(stdin, bytes)
            one = subprocess.Popen(
                [*self.launcher, str(self.installation.program), *self.arguments, *map(str, arguments)],
                env=self.environment | (environment or {}), cwd=self.home,
                stdin=subprocess.PIPE if piped else subprocess.DEVNULL if stdin is None else stdin,
                stdout=output, stderr=output, start_new_session=True)
        if piped:
            # What does not fit into the pipe waits for the program.
            threading.Thread(target=_fill, args=(one.stdin, stdin), daemon=True).start()
        return one

    @property
    def pid(self):
        return self._running.pid

    @property
    def running(self):
        return self._running is not None and self._running.poll() is None

    def output(self):
        """Standard output and error of all runs so far."""
        log = self.home / "output.log"
        return log.read_text(encoding="utf-8", errors="replace") if log.exists() else ""

    def wait_for_end(self, timeout=15.0):
        """Waits for the program to exit on its own and returns its exit status."""
        helpers = process.children(self.pid)
        status = self._running.wait(timeout)
        process.end_all(helpers)
        return status

    def wait_for_exit(self, timeout=20.0):
        """Like `wait_for_end`, but ends no helper process: for tests that look at what is left."""
        return self._running.wait(timeout)

    def terminate(self, timeout=15.0):
        """Asks the program to quit with SIGTERM, as a session does, and returns its exit status."""
        process.kill(self.pid, signal.SIGTERM)
        return self.wait_for_end(timeout)

    def kill(self):
        """SIGKILL: the program gets no chance to clean up. Its helper processes end with it."""
        helpers = process.children(self.pid)
        process.kill(self.pid)
        self._running.wait(10)
        process.end_all(helpers)

    def stop(self, timeout=10.0):
        """Ends everything that is still running, however the test went."""
        for one in [self._running, *self._others]:
            if one is None or one.poll() is not None:
                continue
            helpers = process.children(one.pid)
            process.kill(one.pid, signal.SIGTERM)
            try:
                one.wait(timeout)
            except subprocess.TimeoutExpired:
                process.kill(one.pid)
                one.wait(10)
            process.end_all(helpers)
        self._others.clear()

    def processes(self):
        """Identifiers of the program and of all processes below it."""
        return [self.pid, *process.children(self.pid)]

    def web_processes(self):
        """Process IDs of the web processes."""
        return [pid for pid in process.children(self.pid) if process.name(pid).startswith("WebKitWebProces")]

    # The window.

    def windows(self):
        return desktop.windows(self.pid)

    def wait_for_window(self, title=None, timeout=20.0):
        """Waits for one of the program's windows to have this title; without one, for the main window, which is called
        "Quendo", or after its page."""

        def find():
            assert self._running.poll() is None, (
                f"the program ended with status {self._running.returncode}:\n{self.output()}")
            return next((one for one in self.windows() if (one.title == title if title else is_main(one))), None)

        return wait_until(find, timeout, f"a window with the title {title!r}" if title else "the main window")

    @property
    def window(self):
        """The main window."""
        return self.wait_for_window(timeout=10)

    def focus(self, window=None):
        """Raises and focuses a window, the main one by default."""
        desktop.activate(window or self.window)

    def wait_for_page(self, timeout=20.0):
        """Waits until the program considers its page loaded, which enables the page's commands. Whether the page's
        own scripts are ready is for the reporter to say."""
        wait_until(lambda: self.command("newNote")[0], timeout, "the page's commands to be enabled")

    def command(self, name):
        """(enabled, state) of a menu command by the name of its action, as last validated."""
        assert self.running, f"the program is not running:\n{self.output()}"
        return actions.describe(self.pid).get(name, (False, None))

    def wait_until_still(self, quiet=0.6, timeout=15.0):
        """Waits until the window has looked the same for `quiet` seconds; raises Timeout if it never does. Not for a
        window with a blinking caret."""
        desktop.wait_until_still(self.window, quiet, timeout)

    # Keys go to the focused window, as a person's do.

    def press(self, *keys):
        desktop.press(*keys)

    def type(self, text, delay=8):
        desktop.type_text(text, delay)

    def paste(self, text):
        """Puts text on the clipboard and pastes it by key."""
        desktop.set_clipboard(text)
        desktop.press("ctrl+v")

    def accessible(self, timeout=10.0):
        """The program on the accessibility bus."""
        return Accessible.application(self.pid, timeout)

    # Alerts are windows of their own.

    def wait_for_alert(self, *labels, timeout=30.0):
        """Waits for an alert over the main window that shows these texts, and returns its window."""
        main = self.window.id
        alert = wait_until(lambda: next((one for one in self.windows() if one.id != main), None), timeout, "an alert")
        desktop.wait_until_still(alert)
        accessible = self.accessible()
        for label in labels:
            # Long texts are in a scrolling text view instead of a label.
            wait_until(lambda: accessible.find_all("label", label)
                       or any(one.text == label for one in accessible.find_all("text")), 10, f"the text {label!r}")
        return alert

    def dismiss_alert(self, *labels, timeout=30.0):
        """Waits for an alert, presses its default button and waits until it is gone."""
        alert = self.wait_for_alert(*labels, timeout=timeout)
        wait_until(lambda: desktop.active_window() == alert.id, 10, "the alert to have the keyboard")
        desktop.press("Return")
        wait_until(lambda: len(self.windows()) == 1, 10, "the alert to be gone")

    # The menu bar, by mouse and accessibility.

    def open_menu(self, title):
        """Opens a menu of the menu bar with a click and returns it. Its items exist only while it is open."""
        return self._open(self._menu_entry(title))

    def _menu_entry(self, title):
        return self.accessible().find("menu bar").find("menu item", title)

    def _open(self, entry):
        x, y, width, height = entry.extents()
        desktop.click_in(self.window, x + width / 2, y + height / 2)
        return entry.find("menu")

    def close_menu(self):
        desktop.press("Escape")

    def menu_items(self, title):
        """A menu's items in order: title -> whether enabled. Opens and closes the menu."""
        menu = self.open_menu(title)
        items = {one.name: one.enabled for one in menu.walk() if one.role.endswith("menu item")}
        self.close_menu()
        return items

    def choose(self, title, *path):
        """Chooses a menu item; more than one name goes through submenus."""
        entry = self._menu_entry(title)
        menu = self._open(entry)
        for name in path:
            menu.find_item(name).act("click")
        # While the menu is still closing, a click on the bar would not open the next one.
        wait_until(lambda: not entry.has("expanded"), 10, f"the menu {title!r} to close")
