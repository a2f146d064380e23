"""IBus with real engines, for programs on this display."""

import os
import subprocess

from .waiting import wait_until

_MEMORY_CONFIGURATION = "/usr/libexec/ibus-memconf"


class InputMethods:
    """An IBus of its own. Programs started with `environment` use it."""

    def __init__(self, home):
        home.mkdir()
        self._log = home / "output.log"
        directories = ("HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME")
        # The engine for Japanese is a Python program, which needs the system's Python.
        self._environment = os.environ | dict.fromkeys(directories, str(home)) | {"PATH": "/usr/bin:/bin"}
        with open(self._log, "wb") as output:
            self._daemon = subprocess.Popen(
                ["ibus-daemon", "--panel", "disable", "--emoji-extension", "disable", "--cache", "none",
                 "--config", _MEMORY_CONFIGURATION],
                env=self._environment, stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        self.environment = {"GTK_IM_MODULE": "ibus", "IBUS_ADDRESS": wait_until(self._address, 15, "IBus")}

    def choose(self, engine):
        """Makes an engine the one that all programs use: "hangul", "anthy", "libpinyin"."""
        # Its status says nothing: some engines answer with a failure and are in use all the same.
        self._ibus("engine", engine)
        wait_until(lambda: self._ibus("engine") == engine, 15, f"the engine {engine!r}")

    def end(self):
        self._daemon.terminate()
        self._daemon.wait(10)

    def _address(self):
        assert self._daemon.poll() is None, f"IBus ended:\n{self._log.read_text(errors='replace')}"
        address = self._ibus("address")
        return address if address.startswith("unix:") else None

    def _ibus(self, *arguments):
        return subprocess.run(["ibus", *arguments], env=self._environment, capture_output=True, text=True,
                              timeout=30).stdout.strip()
