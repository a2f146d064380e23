"""The state files: which are read, which are written, and what a page shows when they are unusable."""

import hashlib
import json
import os
import re
import stat

import pytest

from harness.bridge import Bridge, bridge_page
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

NOTE = "A note that was there"


@pytest.fixture
def prepared(make_quendo, reporter):
    """A program with a test page, not yet started, and its reporter."""
    return make_quendo(page=bridge_page(reporter)), reporter


def _state_of_page(program, server, **options):
    program.start(**options)
    server.wait_for_page()
    return server.evaluate("typeof __QUENDO_NATIVE_STATE__ === 'undefined' ? null : __QUENDO_NATIVE_STATE__")


GOOD = '{"revision":41,"text":"good"}'
DAMAGED = {
    "empty": b"", "cut off": b'{"revision":42,"text":"go', "zeros": b"\0" * 100, "an array": b'[{"revision":42}]',
    "not UTF-8": b'{"revision":42,"text":"\xff"}', "two documents": b'{"revision":42}{"revision":42}',
    "a mark at the front": b'\xef\xbb\xbf{"revision":42}', "an encoded surrogate": b'{"a":"\xed\xa0\x80"}',
}


@pytest.mark.parametrize("kind", DAMAGED)
def test_a_damaged_primary_gives_way_to_the_backup(prepared, kind):
    program, server = prepared
    program.state.write(DAMAGED[kind], GOOD)
    assert _state_of_page(program, server) == json.loads(GOOD)
    # Starting repairs nothing; only a save does.
    assert program.state.primary.read_bytes() == DAMAGED[kind]
    assert Bridge(server).save('{"revision":40}', 40)
    assert program.state.primary.read_bytes() == DAMAGED[kind]
    assert Bridge(server).save('{"revision":43}', 43)
    assert program.state.document() == {"revision": 43}
    assert program.state.backup.read_bytes() == DAMAGED[kind]


def test_a_missing_primary_gives_way_to_the_backup(prepared):
    program, server = prepared
    program.state.write("", GOOD)
    program.state.primary.unlink()
    assert _state_of_page(program, server) == json.loads(GOOD)


@pytest.mark.parametrize("what", ["a directory", "a pipe"])
def test_what_is_no_file_gives_way_to_the_backup(prepared, what):
    program, server = prepared
    program.state.write("", GOOD)
    program.state.primary.unlink()
    if what == "a directory":
        program.state.primary.mkdir()
    else:
        os.mkfifo(program.state.primary)
    assert _state_of_page(program, server) == json.loads(GOOD)


def test_two_damaged_files_start_an_empty_page_that_can_save(prepared):
    program, server = prepared
    program.state.write(b"{", b"also no document")
    assert _state_of_page(program, server) is None
    assert Bridge(server).save('{"revision":1}', 1)
    assert program.state.document() == {"revision": 1}
    assert program.state.backup.read_bytes() == b"{"


def test_the_backup_is_the_document_before(prepared):
    program, server = prepared
    assert _state_of_page(program, server) is None
    bridge = Bridge(server)
    for revision in (1, 2, 3):
        assert bridge.save(f'{{"revision":{revision}}}', revision)
        assert program.state.names() == ["state-v1.json"] if revision == 1 else ["state-v1.backup.json", "state-v1.json"]
        if revision > 1:
            assert json.loads(program.state.backup.read_text()) == {"revision": revision - 1}


def test_only_the_user_may_read_what_is_written(prepared):
    program, server = prepared
    before = os.umask(0)
    try:
        assert _state_of_page(program, server) is None
    finally:
        os.umask(before)
    for revision in (1, 2):
        assert Bridge(server).save(f'{{"revision":{revision}}}', revision)
    for path in (program.state.primary, program.state.backup):
        assert stat.S_IMODE(path.stat().st_mode) == 0o600


def test_what_an_earlier_crash_left_behind_is_removed(prepared):
    program, server = prepared
    program.state.write(GOOD)
    leftover = program.state.directory / ".state-v1.json.1.tmp"
    leftover.write_text("half a docu")
    (program.state.directory / "somebody else's.tmp").write_text("kept")
    assert _state_of_page(program, server) == json.loads(GOOD)
    assert program.state.names() == ["somebody else's.tmp", "state-v1.json"]


def test_persistence_tests_have_a_directory_of_their_own(prepared):
    program, server = prepared
    program.state.write(GOOD)
    assert _state_of_page(program, server, environment={"QUENDO_PERSISTENCE_TEST": "1"}) is None
    assert Bridge(server).save('{"revision":1}', 1)
    assert program.test_state.document() == {"revision": 1}
    assert program.terminate() == 0
    assert program.state.text() == GOOD and program.state.names() == ["state-v1.json"]


def test_persistence_tests_do_not_make_the_normal_directory(prepared):
    program, server = prepared
    assert _state_of_page(program, server, environment={"QUENDO_PERSISTENCE_TEST": "1"}) is None
    assert Bridge(server).save('{"revision":1}', 1)
    assert program.terminate() == 0
    assert not program.state.directory.exists()


@pytest.mark.parametrize("value, kept", [("1", None), ("0", "kept")])
def test_what_a_page_puts_into_the_web_views_own_store_ends_with_a_persistence_test(prepared, value, kept):
    program, server = prepared
    environment = {"QUENDO_PERSISTENCE_TEST": value}
    program.start(environment=environment)
    server.run("localStorage.setItem('mark', 'kept');")
    assert server.evaluate("localStorage.getItem('mark')") == "kept"
    assert program.terminate() == 0
    program.start(environment=environment)
    server.wait_for_page(2)
    assert server.evaluate("localStorage.getItem('mark')") == kept


@pytest.mark.parametrize("value", ["true", "01", "1 ", " 1", "", "0", "2", "yes"])
def test_another_value_is_no_persistence_test(prepared, value):
    program, server = prepared
    program.state.write(GOOD)
    assert _state_of_page(program, server, environment={"QUENDO_PERSISTENCE_TEST": value}) == json.loads(GOOD)
    assert not program.test_state.directory.exists()


def _put_file_in_place_of_directory(program):
    program.state.directory.parent.mkdir(parents=True, exist_ok=True)
    program.state.directory.write_text("no directory")


def test_a_save_that_cannot_be_written_is_answered_with_false(prepared):
    program, server = prepared
    _put_file_in_place_of_directory(program)
    assert _state_of_page(program, server) is None
    bridge = Bridge(server)
    assert not bridge.save('{"revision":1}', 1)
    assert program.state.directory.read_text() == "no directory"
    # Without the cause, the error is gone.
    program.state.directory.unlink()
    assert bridge.save('{"revision":2}', 2)
    assert program.state.document() == {"revision": 2}


def test_a_directory_that_disappears_is_made_again(prepared):
    program, server = prepared
    assert _state_of_page(program, server) is None
    bridge = Bridge(server)
    assert bridge.save('{"revision":1}', 1)
    program.state.directory.rename(program.data / "moved away")
    assert bridge.save('{"revision":2}', 2)
    assert program.state.document() == {"revision": 2}


def _observed_page(installation, server):
    """The real page plus the harness's script, with permission to reach the harness."""
    text = (installation.web / "index.html").read_text(encoding="utf-8")
    nonce = re.search(r"'nonce-([^']+)'", text).group(1)
    observed = text.replace("connect-src 'none'", f"connect-src {server.url}")
    observed = observed.replace(f"script-src 'nonce-{nonce}'", f"script-src 'nonce-{nonce}' 'unsafe-eval'")
    observed = observed.replace("<title>", server.script().replace("<script>", f"<script nonce='{nonce}'>") + "<title>")
    assert observed.count(server.url) == 2 and "unsafe-eval" in observed
    return observed


def test_the_real_page_shows_whether_the_text_is_safe(make_quendo, installation, reporter):
    program = make_quendo(files={"index.html": _observed_page(installation, reporter)})
    _put_file_in_place_of_directory(program)
    program.start().wait_for_page()
    reporter.wait_for_page()
    shown = "document.getElementById('saveState').dataset.state"
    visible = "document.getElementById('saveState').checkVisibility()"
    program.press("ctrl+n")
    program.type(NOTE)
    wait_until(lambda: reporter.evaluate(shown) == "failed", 20, "the page to say that saving failed")
    assert reporter.evaluate(visible) and reporter.evaluate("document.getElementById('saveState').textContent.trim()")
    program.state.directory.unlink()
    program.press("ctrl+s")
    wait_until(lambda: reporter.evaluate(shown) == "saved", 20, "the page to say that all is saved")
    program.state.wait_for_text(NOTE)


SIZE = 100_000_000
_LARGE = ("'{\"revision\":9,\"text\":\"' + 'A line of a large note, \u00e7 \U0001f4dd.'.repeat(" + str(SIZE // 32)
          + ") + '\"}'")


def test_a_very_large_document_is_saved_and_comes_back(prepared):
    program, server = prepared
    assert _state_of_page(program, server) is None
    saved = server.run(f"window.large = {_LARGE}; return fingerprint(large);", timeout=120)
    assert Bridge(server).answer("quendoState", "{ serialized: large, revision: 9 }", timeout=120) == [True, 9]
    expected = ('{"revision":9,"text":"' + "A line of a large note, \u00e7 \U0001f4dd." * (SIZE // 32) + '"}').encode()
    assert len(expected) >= SIZE
    assert hashlib.sha256(program.state.primary.read_bytes()).digest() == hashlib.sha256(expected).digest()
    assert program.terminate(timeout=60) == 0

    program.start(timeout=60)
    server.wait_for_page(2, timeout=120)
    assert server.run("return fingerprint(JSON.stringify(__QUENDO_NATIVE_STATE__));", timeout=120) == saved
