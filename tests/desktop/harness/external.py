"""Stands in for the desktop's browser, mail program and text editor, and logs what they are asked to open."""

import shlex
from pathlib import Path

from .waiting import wait_until

_SCHEMES = ("http", "https", "mailto", "ftp", "file", "tel", "quendo-test")
_TYPES = ("text/html", "text/plain", "text/markdown", "application/pdf", "inode/directory")


class ExternalHandler:
    """Installs a program in a home directory and registers it for every relevant scheme and type, both in the
    desktop's registry and as xdg-open."""

    def __init__(self, home):
        home = Path(home)
        self.log = home / "opened-outside.log"
        self.bin = home / "bin"
        applications = home / ".local" / "share" / "applications"
        configuration = home / ".config"
        for directory in (self.bin, applications, configuration):
            directory.mkdir(parents=True, exist_ok=True)

        program = self.bin / "xdg-open"
        program.write_text(
            "#!/bin/sh\n"
            f'for one in "$@"; do printf "%s\\n" "$one" >>{shlex.quote(str(self.log))}; done\n')
        program.chmod(0o755)
        types = [f"x-scheme-handler/{scheme}" for scheme in _SCHEMES] + list(_TYPES)
        (applications / "quendo-test-handler.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Test handler\nNoDisplay=false\n"
            f'Exec="{program}" %U\nMimeType={";".join(types)};\n')
        associations = "".join(f"{one}=quendo-test-handler.desktop\n" for one in types)
        (configuration / "mimeapps.list").write_text(
            f"[Default Applications]\n{associations}[Added Associations]\n{associations}")

    def opened(self):
        """URLs and paths opened so far, in order."""
        try:
            return self.log.read_text(encoding="utf-8").splitlines()
        except FileNotFoundError:
            return []

    def wait_for(self, url, timeout=10.0):
        """Waits until `url` has been opened."""
        return wait_until(lambda: url in self.opened(), timeout, f"{url} to be opened outside")
