"""An installed copy of the program, moved away from where it was built."""

import os
import shutil
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]


def sandbox_arguments():
    """The option to run without the web view's sandbox, if the kernel does not allow one. Asks the program's own check,
    so both always agree."""
    build = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
    works = subprocess.run([build / "bin" / "sandbox_check"], timeout=10).returncode == 0
    return [] if works else ["--without-web-sandbox"]


class Installation:
    """A prefix with bin/quendo and share/quendo/web."""

    def __init__(self, prefix):
        self.prefix = Path(prefix)

    @property
    def program(self):
        return self.prefix / "bin" / "quendo"

    @property
    def web(self):
        return self.prefix / "share" / "quendo" / "web"

    @classmethod
    def install(cls, build, directory):
        """Installs a build and moves the tree, so no path known at build or install time is valid. The new path has a
        space and a non-ASCII letter, as real ones do."""
        first = Path(directory) / "first"
        subprocess.run(["cmake", "--install", str(build), "--prefix", str(first)], check=True,
                       stdout=subprocess.DEVNULL)
        place = Path(directory) / "Programas à mão"
        os.rename(first, place)
        return cls(place)

    def copy(self, directory, page=None, files=None, program=None):
        """A copy of the tree under `directory`. `page`, when given, replaces the whole page: the text of its
        index.html, or a directory. `files` adds to it: a dictionary from relative path to text or bytes. `program`
        is an executable that takes the place of the program's own."""
        place = Path(directory) / "Quendo tree"
        place.mkdir(parents=True)
        shutil.copytree(self.prefix, place, dirs_exist_ok=True, symlinks=True)
        copied = Installation(place)
        if program is not None:
            shutil.copy2(program, copied.program)
        if page is not None:
            shutil.rmtree(copied.web)
            if isinstance(page, os.PathLike):
                shutil.copytree(page, copied.web)
            else:
                copied.web.mkdir(parents=True)
                (copied.web / "index.html").write_text(page, encoding="utf-8")
        for name, content in (files or {}).items():
            file = copied.web / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content if isinstance(content, bytes) else content.encode("utf-8"))
        return copied
