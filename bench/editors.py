"""The programs whose screens are compared. Each opens the same text, in a home of its own."""

import os
import re
import secrets
import shutil
import signal
import subprocess
from html import escape
from pathlib import Path

from documents import state_document, texts
from graphics import PROCESSOR, PROCESSOR_BROWSER
from process_trees import MARK, ProcessTree
from programs import BUILD, bootstrap
from harness import process
from harness.installation import sandbox_arguments
from harness.program import Quendo

_MINI_BROWSERS = ("/usr/lib/x86_64-linux-gnu/webkitgtk-6.0/MiniBrowser",
                  "/usr/lib/aarch64-linux-gnu/webkitgtk-6.0/MiniBrowser", "/usr/libexec/webkitgtk-6.0/MiniBrowser")
_TEXT_SIZE = 10_000
# Name -> notes and size of each, for Quendo alone.
_LARGE = {"1 MB": (1, 1_000_000), "20 MB": (1, 20_000_000), "10,000 notes": (10_000, 6_000)}


def _passing(directory, names):
    """Sockets and locks of programs that have ended, which no copy is to have."""
    return [name for name in names if name.startswith("Singleton") or (Path(directory) / name).is_socket()]


class Editor:
    """A program and what it is started with. Every start finds the same home: the one that it had when it had run
    once before."""

    def __init__(self, name, command, directory, installation, environment):
        self.name = name
        self._command = [str(word) for word in command]
        self._home = Path(directory) / name
        self._kept = Path(directory) / f"{name} as it was"
        self._environment = Quendo(self._home, installation).environment | environment

    @property
    def home(self):
        return self._home

    def keep_home(self):
        shutil.copytree(self._home, self._kept, symlinks=True, ignore=_passing)

    def restore_home(self):
        if self._kept.exists():
            shutil.rmtree(self._home)
            shutil.copytree(self._kept, self._home, symlinks=True)

    def start(self):
        return Started(self._command, self._environment, self._home)


class Started:
    """A program that is running."""

    def __init__(self, command, environment, home):
        mark = secrets.token_hex(8)
        with open(home / "output.log", "ab") as output:
            self._process = subprocess.Popen(command, env=environment | {MARK: mark}, cwd=home,
                                             stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                             start_new_session=True)
        self.tree = ProcessTree(self._process.pid, mark)

    def require_running(self):
        if self._process.poll() is not None:
            raise RuntimeError(f"it ended with status {self._process.returncode}")

    def quit(self):
        """Lets it write what it keeps for its next start."""
        self._end(signal.SIGTERM)

    def kill(self):
        self._end(signal.SIGKILL)

    def _end(self, number):
        pids = self.tree.pids() - {self._process.pid}
        process.kill(self._process.pid, number)
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill(self._process.pid)
            self._process.wait(10)
        process.end_all(pids)


def _stored(page, state):
    """Quendo's page as a browser gets it that has seen this document before."""
    nonce = re.search(r"<script[^>]* nonce=\"([^\"]*)\"", page)[1]
    store = escape(state).replace("\n", "&#10;")
    return page.replace("<body>", f"<body><template data-state=\"{store}\"></template><script nonce=\"{nonce}\">"
                        "localStorage.setItem('quendo-state', document.querySelector('template').dataset.state);"
                        "document.querySelector('template').remove();</script>", 1)


def _textarea(text):
    return ("<!doctype html><html><head><meta charset='utf-8'><style>body { margin: 0 } textarea { border: 0; "
            "outline: 0; padding: 12px; width: 100%; height: 100vh; box-sizing: border-box; resize: none; "
            "font: 16px monospace }</style></head><body><textarea autofocus>\n" + escape(text) +
            "</textarea></body></html>")


def make_large(directory, installation, on_processor):
    """Name -> Quendo with a large state."""
    found = {}
    for name, (count, size) in _LARGE.items():
        found[name] = _quendo(f"quendo with {name}", directory, installation, on_processor, state_document(count, size))
    return found


def _quendo(name, directory, installation, on_processor, state):
    choice = ["--rendering=processor"] if on_processor else []
    editor = Editor(name, [installation.program, *sandbox_arguments(), *choice], directory, installation, {})
    Quendo(editor.home, installation).state.write(state)
    return editor


def make_editors(directory, installation, scripts, on_processor):
    """(the editors that are installed, the names of those that are not). Quendo comes first."""
    directory = Path(directory)
    text, state = next(texts(1, _TEXT_SIZE)), state_document(1, _TEXT_SIZE)
    note = directory / "note.md"
    note.write_text(text, encoding="utf-8")
    script = directory / "bootstrap.js"
    script.write_text(bootstrap(state), encoding="utf-8")
    textarea, bare = directory / "textarea.html", directory / "bare.html"
    textarea.write_text(_textarea(text), encoding="utf-8")
    bare.write_text(scripts.bare_page("typing", "bareEditor"), encoding="utf-8")
    served = directory / "page"
    shutil.copytree(installation.web, served)
    page = _stored((installation.web / "index.html").read_text(encoding="utf-8"), state)
    (served / "index.html").write_text(page, encoding="utf-8")
    address = (served / "index.html").as_uri()

    environment = PROCESSOR if on_processor else {}
    web_view = environment | ({"WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS": "1"} if sandbox_arguments() else {})
    bare_window = BUILD / "bin" / "bare_window"
    mini_browser = next((one for one in _MINI_BROWSERS if Path(one).exists()), None)
    # Chromium refuses to set up its sandbox as root, and without the other option says so above the page.
    browser = [*(["--no-sandbox", "--test-type"] if os.geteuid() == 0 else []),
               *(PROCESSOR_BROWSER if on_processor else []), "--no-first-run", "--no-default-browser-check",
               "--disable-background-networking", "--disable-component-update", "--disable-sync",
               "--password-store=basic", "--hide-crash-restore-bubble", "--window-size=1320,820",
               f"--app={address}"]
    # It has a socket below this directory, whose path may be only a hundred letters long.
    short = environment | {"TMPDIR": os.environ["XDG_RUNTIME_DIR"]}
    rows = (("bare-textarea", bare_window, [textarea], web_view),
            ("bare-editor", bare_window, [bare, "--script", script], web_view),
            ("mini-browser", mini_browser, [address], web_view),
            ("chromium-app", shutil.which("chromium"), browser, short),
            ("gnome-text-editor", shutil.which("gnome-text-editor"), [note], environment),
            ("mousepad", shutil.which("mousepad"), [note], environment))
    others = [Editor(name, [program, *arguments], directory, installation, variables)
              for name, program, arguments, variables in rows if program]
    return [_quendo("quendo", directory, installation, on_processor, state), *others], [name for name, program, _arguments, _variables in rows if not program]
