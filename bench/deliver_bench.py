"""Delivery of opened files: 60 MB in three files, from the moment in which the running program is told of them
until the page has their texts, against a bare window that reads the same files and hands them over."""

import argparse
import os
import signal
import tempfile
import time
from pathlib import Path

from gi.repository import Gio, GLib

from programs import Comparison, Installation, BUILD, require_private_desktop
from ratios import in_turns, line
from harness.reporter import Reporter

TIMEOUT = 60
FILES = 3
SIZE = 20_000_000

_PAGE = """<script>
  const received = (texts) => report('received', { time: Date.now(), size: texts.join('').length });
  window.deliver = received;
  window.quendoOpenNativeFiles = (files) => { received(files.map((file) => file.content)); return files.length; };
</script>"""


class Side:
    """One of the programs with its page, and the way to have it deliver the files."""

    def __init__(self, directory, installation, start, tell):
        self._reporter = Reporter()
        self._run = start(Comparison(directory, installation, self._reporter.page(head=_PAGE)))
        self._tell = tell
        self._deliveries = 0
        self._reporter.wait_for_page(timeout=TIMEOUT)
        # Quendo delivers once its page is ready; a little later both are.
        time.sleep(1)

    def seconds(self):
        self._deliveries += 1
        began = time.time()
        self._tell(self._run)
        received = self._reporter.wait_for("received", self._deliveries, TIMEOUT)
        assert received["size"] == self.expected, received
        return received["time"] / 1000 - began

    def close(self):
        self._run.end()
        self._reporter.close()


def tell_quendo(files):
    """What a second start does, without the time that a process takes to start."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    arguments = [os.fsencode(one) + b"\0" for one in ("quendo", *files)]
    parameters = GLib.Variant("(oaaya{sv})", ("/com/quendo/Bench", arguments, {"cwd": GLib.Variant("ay", b"/\0")}))

    def tell(_run):
        bus.call_sync("com.quendo.Quendo", "/com/quendo/Quendo", "org.gtk.Application", "CommandLine", parameters,
                      GLib.VariantType("(i)"), Gio.DBusCallFlags.NONE, TIMEOUT * 1000, None)

    return tell


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="one delivery, to see that it works")
    chosen = options.parse_args()
    require_private_desktop()
    text = ("## Reunião de amanhã\n\n- revisar o projeto **importante** com o cliente 😀 \"citação\"\n" * 300_000)
    content = text.encode()[:SIZE].decode("utf-8", errors="ignore")
    Side.expected = FILES * len(content.encode("utf-16-le")) // 2
    with tempfile.TemporaryDirectory(prefix="quendo-deliveries-") as directory:
        directory = Path(directory)
        installation = Installation.install(BUILD, directory)
        files = [directory / f"{number}.md" for number in range(FILES)]
        for file in files:
            file.write_text(content, encoding="utf-8", newline="")
        bare_arguments = [part for file in files for part in ("--deliver", file)]
        sides = []
        try:
            sides.append(Side(directory / "quendo", installation, lambda one: one.start_quendo(),
                              tell_quendo(files)))
            sides.append(Side(directory / "bare", installation, lambda one: one.start_bare(*bare_arguments),
                              lambda run: run.signal(signal.SIGUSR2)))
            quendo, bare = sides
            pairs = 1 if chosen.quick else 11
            measured = in_turns(pairs, lambda: {"": quendo.seconds()}, lambda: {"": bare.seconds()},
                                warm_up=not chosen.quick)
            print(line("deliver/bare-window 60MB", measured[""]), flush=True)
        finally:
            for side in sides:
                side.close()


if __name__ == "__main__":
    main()
