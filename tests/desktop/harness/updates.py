"""The test program, whose site is on this machine, from its user's and its page's side."""

import configparser
import json
import os
import subprocess
from pathlib import Path

from .installation import ROOT
from .program import NO_AUTOMATIC_CHECKS, Quendo
from .reporter import Reporter
from .waiting import wait_until

BUILD = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
PROGRAM = BUILD / "bin" / "quendo-update-test"
AUTHORITY = BUILD / "update-test" / "certificate-authority.pem"

DOWNLOAD = "https://localhost/Quendo%209.dmg?from=note#now"
FAILED = "Could not check for updates"
LATEST = "You already have the latest version"
UNDER_WAY = "A verificação já está em andamento"
# Lets a second instance run beside the first.
APART = {"QUENDO_PERSISTENCE_TEST": "1"}
# The program's time limit for one exchange, in seconds.
TIME_OUT = 15

_HEAD = "<script>window.showToast = (message) => report('toast', message);</script>"


def manifest(version="9.0", build=1, url=DOWNLOAD, **more):
    return json.dumps({"version": version, "build": build, "download_url": url, **more})


def padded(size):
    return manifest().ljust(size)


def version():
    return subprocess.run([PROGRAM, "--version"], check=True, capture_output=True, text=True).stdout.split()[1]


def configured(name):
    """A setting of the build's configuration."""
    cache = (BUILD / "CMakeCache.txt").read_text(encoding="utf-8")
    return next(line for line in cache.splitlines() if line.startswith(f"{name}:")).split("=", 1)[1]


def build_number():
    return int(configured("QUENDO_BUILD_NUMBER"))


def offer(*notes):
    """The text below an offer's title."""
    return "\n\n".join([f"You are using version {version()}. Update to get the latest improvements.", *notes])


class Updates:
    """A running program that is asked to check, with its page and the site."""

    def __init__(self, directory, installation, arguments, site, settings=NO_AUTOMATIC_CHECKS):
        self.site = site
        self.server = Reporter()
        tree = installation.copy(directory, self.server.page(head=_HEAD), program=PROGRAM)
        self.program = Quendo(directory / "home", tree, arguments)
        self.program.write_settings(f"[Strings]\nQuendoLanguage=en\n\n{settings}")

    def start(self, environment=None):
        loads = self.server.loads
        self.program.start(environment=environment)
        self.server.wait_for_page(loads + 1)
        self.program.wait_for_page()
        return self

    def stop(self):
        self.program.stop()
        self.server.close()

    def ask(self, *answers):
        """Sets the site's answers and chooses the menu item."""
        self.site.says(*answers)
        self.seen = len(self.toasts())
        self.program.choose("Quendo", "Check for Updates…")

    def toasts(self):
        return self.server.reports("toast")

    def toast(self, number=1, timeout=10.0):
        """The message the page was told to show since the last check."""
        return self.server.wait_for("toast", self.seen + number, timeout)

    def wait_for_offer(self, *labels):
        self.program.wait_for_alert("Quendo 9.0 is available", *labels)
        assert len(self.toasts()) == self.seen

    def dismiss(self):
        self.buttons()["Remind Me Later"].act()
        self.wait_until_alone()

    def buttons(self):
        """The buttons of the offer by label, in order. A button's own name repeats its label."""
        found = [(one.find_all("label"), one) for one in self.program.accessible().find_all("push button")]
        return {labels[0].name: one for labels, one in found if labels}

    def wait_until_alone(self):
        wait_until(lambda: len(self.program.windows()) == 1, 10, "the offer to be gone")
        self.program.focus()

    def settings(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(self.program.settings, encoding="utf-8")
        return parser
