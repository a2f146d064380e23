"""Quitting during a save: the program exits once the document is on disk, and not before."""

import os

import pytest

from harness import process
from harness.bridge import bridge_page
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

SIZE = 100_000_000

_DOCUMENT = "'{\"revision\":%d,\"text\":\"' + 'quit '.repeat(" + str(SIZE // 5) + ") + '\",\"end\":%d}'"


@pytest.fixture
def running(make_quendo, reporter):
    program = make_quendo(page=bridge_page(reporter)).start()
    reporter.wait_for_page()
    return program, reporter


def _post_large(server, revision):
    document = _DOCUMENT % (revision, revision)
    server.post(f"post('quendoState', {{ serialized: {document}, revision: {revision} }});"
                "report('posted');")


def _is_whole(path, revision):
    head = f'{{"revision":{revision},"text":"'.encode()
    tail = f'","end":{revision}}}'.encode()
    with open(path, "rb") as file:
        content = file.read()
    return content == head + b"quit " * (SIZE // 5) + tail


def _is_writing(program):
    try:
        return any(name.endswith(".tmp") for name in os.listdir(program.state.directory))
    except FileNotFoundError:
        return False


def test_a_quit_waits_for_a_save_that_is_being_written(running):
    program, server = running
    _post_large(server, 7)
    wait_until(lambda: _is_writing(program), 60, "the large document to be written", interval=0.0005)
    process.kill(program.pid, 15)
    assert program.wait_for_end(timeout=60) == 0
    assert _is_whole(program.state.primary, 7)
    assert program.state.names() == ["state-v1.json"]


def test_a_second_quit_does_not_hurry_the_first(running):
    program, server = running
    _post_large(server, 7)
    wait_until(lambda: _is_writing(program), 60, "the large document to be written", interval=0.0005)
    for _ in range(5):
        process.kill(program.pid, 15)
        process.kill(program.pid, 2)
    assert program.wait_for_end(timeout=60) == 0
    assert _is_whole(program.state.primary, 7)


def test_a_quit_waits_for_the_save_that_waits_for_another(running):
    program, server = running
    for revision in (1, 2, 3):
        _post_large(server, revision)
    # All of them have reached the host once a later message is answered.
    server.run("return (await answersUntil(() => answers.length >= 3)).length;", timeout=120)
    server.run("answers.length = 0;")
    _post_large(server, 4)
    server.post("post('quendoState', { serialized: '{\"revision\":5}', revision: 5 });"
                "post('quendoClipboard', 'all messages are there');")
    server.run("return await answersUntil(() => answers.some((one) => one.length === 3));", timeout=60)
    process.kill(program.pid, 15)
    assert program.wait_for_end(timeout=60) == 0
    assert program.state.document() == {"revision": 5}


def test_a_quit_at_the_moment_of_the_message_leaves_one_whole_document(running):
    program, server = running
    assert server.run("post('quendoState', { serialized: '{\"revision\":1}', revision: 1 });"
                      "return (await answersUntil(() => answers.length > 0))[0];") == [True, 1]
    _post_large(server, 2)
    process.kill(program.pid, 15)
    assert program.wait_for_end(timeout=60) == 0
    assert program.state.text() == '{"revision":1}' or _is_whole(program.state.primary, 2)
    assert not _is_writing(program)
