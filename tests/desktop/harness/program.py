"""One run, or several, of the program in a home directory of its own."""

import os
import signal
import subprocess
from pathlib import Path

from . import actions, desktop, process
from .accessibility import Accessible
from .external import ExternalHandler
from .state import StateFiles
from .waiting import wait_until

# Settings under which the program does not look for updates by itself: a check that was made in the future holds
# back all others, so that no test asks anything of the network.
NO_AUTOMATIC_CHECKS = "[Dates]\nQuendoLastAutomaticUpdateCheck=2200-01-01T00:00:00Z\n"

# Of the environment of the test run, only this reaches the program.
_KEPT = ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "XDG_SESSION_TYPE", "GDK_BACKEND",
         "GSETTINGS_BACKEND", "LD_LIBRARY_PATH", "USER", "LOGNAME", "TZ")


class Quendo:
    """The program with a private home. It can be started, stopped and started again; the home stays.

    home         directory that becomes HOME; the XDG directories are in it
    installation the tree that is run
    arguments    always given to the program, before those of `start`
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
        """The file with the program's settings, which it reads when it starts."""
        return self.configuration / "Quendo" / "defaults.ini"

    def write_settings(self, text):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text(text, encoding="utf-8")

    # Starting and ending.

    def start(self, *arguments, environment=None, wait=True, timeout=20.0):
        """Starts the program. With `wait`, returns once its window is there and has the focus."""
        assert self._running is None or self._running.poll() is not None, "it is already running"
        # A pointer that happens to rest where the menu bar appears would take the keyboard there.
        desktop.park_pointer()
        self._running = self._launch(arguments, environment)
        if wait:
            self.focus(self.wait_for_window(timeout=timeout))
        return self

    def start_another(self, *arguments, environment=None, timeout=20.0):
        """Starts the program a second time, waits for that process to end and returns its exit status."""
        other = self._launch(arguments, environment)
        self._others.append(other)
        return other.wait(timeout)

    def _launch(self, arguments, environment):
        log = self.home / "output.log"
        with open(log, "ab") as output:
            return subprocess.Popen(
                [*self.launcher, str(self.installation.program), *self.arguments, *map(str, arguments)],
                env=self.environment | (environment or {}), cwd=self.home, stdin=subprocess.DEVNULL,
                stdout=output, stderr=output, start_new_session=True)

    @property
    def pid(self):
        return self._running.pid

    @property
    def running(self):
        return self._running is not None and self._running.poll() is None

    def output(self):
        """What the program wrote to its standard output and error, over all runs."""
        log = self.home / "output.log"
        return log.read_text(encoding="utf-8", errors="replace") if log.exists() else ""

    def wait_for_end(self, timeout=15.0):
        """Waits for the program to end by itself and returns its exit status."""
        helpers = process.children(self.pid)
        status = self._running.wait(timeout)
        process.end_all(helpers)
        return status

    def wait_for_exit(self, timeout=20.0):
        """Like `wait_for_end`, but ends no helper process: for tests that look at what is left."""
        return self._running.wait(timeout)

    def terminate(self, timeout=15.0):
        """Asks the program to quit, as a session does, and returns its exit status."""
        process.kill(self.pid, signal.SIGTERM)
        return self.wait_for_end(timeout)

    def kill(self):
        """SIGKILL, without a chance to do anything more; its helper processes end with it."""
        helpers = process.children(self.pid)
        process.kill(self.pid)
        self._running.wait(10)
        process.end_all(helpers)

    def stop(self, timeout=10.0):
        """Ends whatever of the program still runs. For the end of a test, however the test went."""
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
        """Identifiers of the processes that run pages."""
        return [pid for pid in process.children(self.pid) if process.name(pid).startswith("WebKitWebProces")]

    # The window.

    def windows(self):
        return desktop.windows(self.pid)

    def wait_for_window(self, title="Quendo", timeout=20.0):
        """Waits for a window of the program with this title."""

        def find():
            assert self._running.poll() is None, (
                f"the program ended with status {self._running.returncode}:\n{self.output()}")
            return next((one for one in self.windows() if one.title == title), None)

        return wait_until(find, timeout, f"a window with the title {title!r}")

    @property
    def window(self):
        """The main window."""
        return self.wait_for_window(timeout=5)

    def focus(self, window=None):
        """Brings a window, the main one by default, to the front."""
        desktop.activate(window or self.window)

    def wait_for_page(self, timeout=20.0):
        """Waits until the program says that its page has been loaded: the page's commands are enabled then. Of
        a test page's own scripts its reporter knows more."""
        wait_until(lambda: self.command("newNote")[0], timeout, "the page's commands to be enabled")

    def command(self, name):
        """(enabled, state) of a menu command by the name of its action, as last validated."""
        assert self.running, f"the program is not running:\n{self.output()}"
        return actions.describe(self.pid).get(name, (False, None))

    def wait_until_still(self, quiet=0.6, timeout=15.0):
        """Waits until the window shows the same picture for a while: the page has been drawn."""
        desktop.wait_until_still(self.window, quiet, timeout)

    # Keys go to the window that has the focus, as a person's do.

    def press(self, *keys):
        desktop.press(*keys)

    def type(self, text, delay=8):
        desktop.type_text(text, delay)

    def paste(self, text):
        """Puts text on the clipboard and presses the keys that paste it."""
        desktop.set_clipboard(text)
        desktop.press("ctrl+v")

    def accessible(self, timeout=10.0):
        """The program on the accessibility bus."""
        return Accessible.application(self.pid, timeout)

    # Alerts, which are windows of their own.

    def wait_for_alert(self, *labels, timeout=30.0):
        """Waits for an alert over the main window that holds these texts."""
        wait_until(lambda: len(self.windows()) >= 2, timeout, "an alert")
        alert = next(one for one in self.windows() if one.id != self.window.id)
        desktop.wait_until_still(alert)
        accessible = self.accessible()
        for label in labels:
            # A long text stands in a view of its own, which scrolls.
            wait_until(lambda: accessible.find_all("label", label)
                       or any(one.text == label for one in accessible.find_all("text")), 5, f"the text {label!r}")

    def dismiss_alert(self, *labels, timeout=30.0):
        """Waits for an alert, presses its default button, and waits until it is gone."""
        self.wait_for_alert(*labels, timeout=timeout)
        desktop.press("Return")
        wait_until(lambda: len(self.windows()) == 1, 10, "the alert to be gone")

    # The menu bar, with the mouse and by accessibility.

    def open_menu(self, title):
        """Opens a menu of the menu bar with a click and returns it; its items exist only while it is open."""
        bar = self.accessible().find("menu bar")
        entry = bar.find("menu item", title)
        x, y, width, height = entry.extents()
        desktop.click_in(self.window, x + width / 2, y + height / 2)
        return entry.find("menu")

    def close_menu(self):
        desktop.press("Escape")

    def menu_items(self, title):
        """What a menu offers, in order: title -> whether it is enabled. Opens and closes the menu."""
        menu = self.open_menu(title)
        items = {one.name: one.enabled for one in menu.walk() if one.role.endswith("menu item")}
        self.close_menu()
        return items

    def choose(self, title, *path):
        """Chooses an item of a menu; more than one name goes through submenus."""
        menu = self.open_menu(title)
        for name in path:
            menu.find_item(name).act("click")
