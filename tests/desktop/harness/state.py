"""The state files on disk."""

import json
from pathlib import Path

from .waiting import wait_until


class StateFiles:
    """The directory that holds the state document and its backup."""

    def __init__(self, directory):
        self.directory = Path(directory)

    @property
    def primary(self):
        return self.directory / "state-v1.json"

    @property
    def backup(self):
        return self.directory / "state-v1.backup.json"

    def text(self):
        """The primary document; None if there is none."""
        try:
            return self.primary.read_bytes().decode("utf-8")
        except FileNotFoundError:
            return None

    def document(self):
        """The primary document as Python values; None if there is none. Raises ValueError if it is not JSON."""
        text = self.text()
        return None if text is None else json.loads(text)

    def write(self, text, backup=None):
        """Puts documents in place before the program starts."""
        self.directory.mkdir(parents=True, exist_ok=True)
        self.primary.write_bytes(text if isinstance(text, bytes) else text.encode("utf-8"))
        if backup is not None:
            self.backup.write_bytes(backup if isinstance(backup, bytes) else backup.encode("utf-8"))

    def strings(self):
        """Every string in the primary document, at any depth."""
        found = []

        def collect(value):
            if isinstance(value, str):
                found.append(value)
            elif isinstance(value, list):
                for one in value:
                    collect(one)
            elif isinstance(value, dict):
                for one in value.values():
                    collect(one)

        collect(self.document())
        return found

    def holds(self, text):
        """Whether some string of the primary document contains `text`."""
        return any(text in one for one in self.strings())

    def wait_for_text(self, text, timeout=15.0):
        """Waits until some string of the primary document contains `text`."""
        wait_until(lambda: self.holds(text), timeout, f"{text!r} in the state file")

    def revision(self):
        """The document's revision; None without a document."""
        document = self.document()
        return document.get("revision") if isinstance(document, dict) else None

    def names(self):
        """Names in the directory, sorted; to check that nothing was left behind."""
        return sorted(one.name for one in self.directory.iterdir()) if self.directory.is_dir() else []
