"""The program is killed at random moments while saving: no acknowledged save is ever lost."""

import json
import os
import random
import time

import pytest

from harness import process
from harness.program import Quendo
from harness.reporter import Reporter
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

KILLS = 100
KILLS_OF_THE_PAGE = 10
LONGEST_DELAY = 0.25
LONGEST_WRITE = 0.004

# Revision and count alone determine every document's bytes, so a mixture of two, a truncated one or one with a hole
# cannot pass for a whole one.
_SCRIPT = """
<script>
  const sizes = [1e3, 4e3, 3e4, 1e5, 5e5, 1e6, 2e6, 8e6];
  let heard = () => {};
  let revision = window.__QUENDO_NATIVE_STATE__ ? __QUENDO_NATIVE_STATE__.revision : 0;
  window.startedWith = revision;
  const documentOf = (number, size) => {
    const word = number + ' ';
    const count = Math.ceil(size / word.length);
    return `{"revision":${number},"count":${count},"filler":"${word.repeat(count)}","end":${number}}`;
  };
  let random = 0;
  // A linear congruential generator: the page's choices follow from the test's seed too.
  const below = (limit) => {
    random = (Math.imul(random, 1664525) + 1013904223) >>> 0;
    return Math.floor(random / 2 ** 32 * limit);
  };
  const save = () => {
    revision++;
    const size = sizes[below(sizes.length)];
    webkit.messageHandlers.quendoState.postMessage({ serialized: documentOf(revision, size), revision });
  };
  let answers = 0;
  window.quendoNativeSaveDidFinish = (success, number) => {
    report(success === true ? 'kept' : 'refused', number);
    answers++;
    heard();
  };
  // Bursts of different lengths without waiting in between: one save runs, another waits and is replaced.
  window.burst = async (seed) => {
    random = seed;
    for (;;) {
      const count = 1 + below(5);
      answers = 0;
      for (let i = 0; i < count; i++) save();
      while (answers < count) await new Promise((resolve) => { heard = resolve; });
    }
  };
</script>
"""


def _revision_of_whole_document(path):
    """The revision of the document in a file; fails unless it is exactly a document the page made."""
    text = path.read_text(encoding="utf-8")
    document = json.loads(text)
    revision = document["revision"]
    word = f"{revision} "
    assert document == {"revision": revision, "count": document["count"], "filler": word * document["count"],
                        "end": revision}
    return revision


class Burst:
    """The program, saving as fast as it can, and the saves its page was acknowledged."""

    def __init__(self, directory, installation, arguments):
        self.server = Reporter()
        tree = installation.copy(directory, self.server.page(head=_SCRIPT))
        self.program = Quendo(directory / "home", tree, arguments)
        self.state = self.program.state

    def close(self):
        self.program.stop()
        self.server.close()

    def begin(self, moments):
        """Makes the page save endlessly."""
        self.server.post(f"burst({moments.randrange(1 << 32)});")

    def kept(self):
        """The highest revision acknowledged with true; 0 before the first."""
        return max(self.server.reports("kept"), default=0)

    def start(self):
        loads = self.server.loads
        self.program.start(wait=False)
        self.server.wait_for_page(loads + 1)

    def wait_for_a_change_on_disk(self):
        """Waits until a file appears, vanishes or is renamed in the state directory, without giving up the processor:
        the moments right after that are the ones that matter."""

        def changed_at():
            try:
                return os.stat(self.state.directory).st_mtime_ns
            except FileNotFoundError:
                return 0

        before, end = changed_at(), time.monotonic() + 10
        while changed_at() == before:
            assert time.monotonic() < end, "nothing was saved for ten seconds"

    def check_start(self, kept):
        """The page got a document at least as new as the acknowledged one, and the interrupted write left nothing
        behind. Before the first document is in place, a temporary file may be all there is, so it stays."""
        assert self.server.evaluate("startedWith") >= kept
        names = set(self.state.names())
        assert "state-v1.json" not in names or names <= {"state-v1.json", "state-v1.backup.json"}

    def check_files(self, kept):
        if kept or self.state.primary.exists():
            assert _revision_of_whole_document(self.state.primary) >= kept
        if self.state.backup.exists():
            _revision_of_whole_document(self.state.backup)


@pytest.fixture
def burst(tmp_path, installation, program_arguments):
    burst = Burst(tmp_path, installation, program_arguments)
    yield burst
    burst.close()


@pytest.fixture
def moments(request):
    """Random moments, seeded; a failed run prints its seed and can be repeated."""
    seed = int(os.environ.get("QUENDO_TEST_SEED") or random.randrange(1 << 32))
    request.node.user_properties.append(("seed", str(seed)))
    print(f"QUENDO_TEST_SEED={seed}")
    return random.Random(seed)


def test_a_kill_at_any_moment_of_saving_loses_nothing_that_was_answered(burst, moments):
    interrupted = 0
    for number in range(KILLS):
        kept = burst.kept()
        burst.start()
        burst.check_start(kept)
        burst.begin(moments)
        time.sleep(moments.uniform(0, LONGEST_DELAY))
        if number % 2:
            # A write is much shorter than the pauses around it, so random moments alone would rarely hit one.
            burst.wait_for_a_change_on_disk()
            time.sleep(moments.uniform(0, LONGEST_WRITE))
        burst.program.kill()
        burst.check_files(burst.kept())
        interrupted += any(name.endswith(".tmp") for name in burst.state.names())
    assert not burst.server.reports("refused")
    print(f"{interrupted} of {KILLS} kills left a file half written; {burst.kept()} revisions were kept")
    # Otherwise every kill fell between two saves and the test proved nothing.
    assert interrupted >= KILLS / 20 and burst.kept() >= KILLS, (interrupted, burst.kept())
    kept = burst.kept()
    burst.start()
    burst.check_start(kept)


def test_a_kill_of_the_pages_process_loses_nothing_that_was_answered(burst, moments):
    burst.start()
    host = burst.program.pid
    for _ in range(KILLS_OF_THE_PAGE):
        burst.begin(moments)
        time.sleep(moments.uniform(0.05, 3 * LONGEST_DELAY))
        pages = wait_until(burst.program.web_processes, 10, "the page's process")
        loads, kept = burst.server.loads, burst.kept()
        for one in pages:
            process.kill(one)
        burst.server.wait_for_page(loads + 1)
        assert burst.server.evaluate("startedWith") >= kept
        burst.check_files(kept)
        assert burst.program.running and burst.program.pid == host
    # A restored page continues to save.
    kept = burst.kept()
    burst.begin(moments)
    wait_until(lambda: burst.kept() > kept, 15, "the page to save again")
    assert burst.program.terminate(timeout=30) == 0
    burst.check_files(burst.kept())
    assert not burst.server.reports("refused")
