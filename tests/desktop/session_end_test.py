"""The session ends: it waits until everything typed is saved, and cannot end the program if that fails."""

import queue
import subprocess
import sys
import threading
from pathlib import Path

import pytest

from harness.waiting import stays

pytestmark = pytest.mark.never_retried

TOOL = Path(__file__).parent / "tools" / "session_manager.py"
LOGOUT = 1


class SessionManager:
    """A stand-in for the desktop's session manager on the test's session bus."""

    def __init__(self):
        self._process = subprocess.Popen([sys.executable, TOOL], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         text=True, bufsize=1)
        self._said = queue.Queue()
        self.heard = []
        threading.Thread(target=self._listen, daemon=True).start()
        self.wait_for("ready")

    def _listen(self):
        for line in self._process.stdout:
            self._said.put(line.strip())

    def tell(self, signal):
        self._process.stdin.write(f"{signal}\n")

    def wait_for(self, what, timeout=15):
        """Waits until the program does this; returns everything it did before."""
        before = []
        while True:
            try:
                said = self._said.get(timeout=timeout)
            except queue.Empty:
                raise AssertionError(f"waited for {what!r}, heard {self.heard}") from None
            self.heard.append(said)
            if said == what:
                return before
            before.append(said)

    def is_silent(self):
        """Whether the program has done nothing unexpected."""
        return self._said.empty()

    def close(self):
        self._process.stdin.close()
        self._process.wait(10)


@pytest.fixture
def session():
    manager = SessionManager()
    yield manager
    manager.close()


def test_the_end_of_the_session_waits_for_what_was_typed(make_quendo, session):
    quendo = make_quendo().start()
    session.wait_for("RegisterClient")
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Typed before logging out.")
    session.tell("QueryEndSession")
    assert session.wait_for("EndSessionResponse True") == [f"Inhibit {LOGOUT}"], "the session is held first"
    assert quendo.wait_for_end() == 0
    assert quendo.state.holds("Typed before logging out.")
    session.wait_for("gone")


def test_the_session_stays_held_while_the_page_has_text_that_was_not_kept(make_quendo, session, reporter):
    page = reporter.page(head="<script>window.quendoPrepareForTermination = () => 0;</script>")
    quendo = make_quendo(page=page).start(environment={"LANG": "pt_BR.UTF-8"})
    session.wait_for("RegisterClient")
    reporter.wait_for_page()
    quendo.wait_for_page()
    session.tell("QueryEndSession")
    session.wait_for("EndSessionResponse True")
    quendo.dismiss_alert("Não foi possível preparar o rascunho para gravação. Nada foi fechado.")
    stays(lambda: quendo.running and session.is_silent(), 0.7, "the program, and its hold on the session")
    session.tell("CancelEndSession")
    reporter.run("window.quendoPrepareForTermination = () => ({ serialized: '{\"kept\":1}', revision: 1 });")
    session.tell("QueryEndSession")
    assert session.wait_for("EndSessionResponse True") == [], "it is held once"
    assert quendo.wait_for_end() == 0
    assert quendo.state.document() == {"kept": 1}
