"""Documents saved by a page: they come back unchanged, and every save gets its promised answer."""

import json

import pytest

from harness.bridge import Bridge, bridge_page
from harness.waiting import wait_until

pytestmark = pytest.mark.never_retried

# Each is JSON text that JSON.stringify reproduces exactly, so the page can compare.
DOCUMENTS = {
    "empty": "{}",
    "quotes": r'{"revision":1,"text":"He said \"it\u0027s\" \u0060here\u0060"}',
    "apostrophes": """{"revision":1,"text":"it's 'quoted' `here` ${1+1} </script> <!-- "}""",
    "backslashes": r'{"revision":1,"text":"C:\\notes\\new \\\" \\u0041 \n\t\r"}',
    "line separators": '{"revision":1,"text":"one\u2028two\u2029three\u0085four"}',
    "emoji": '{"revision":1,"text":"\U0001f9d1\u200d\U0001f4bb \U0001f1e7\U0001f1f7 cafe\u0301 \U0010ffff \ufffd \ufeff"}',
    "NUL escapes": r'{"revision":1,"text":"a\u0000b\u0001\u001f","\u0000":0}',
    "lone surrogates": r'{"revision":1,"text":"\ud83d x \ude00 \ud800"}',
    "deep nesting": '{"revision":1,"text":' + "[" * 5000 + "]" * 5000 + "}",
    "wide": json.dumps({"revision": 1, "notes": [{"id": f"n{i}", "text": "é" * (i % 50)} for i in range(5000)]},
                       ensure_ascii=False, separators=(",", ":")),
    "own names": '{"revision":1,"__proto__":{"a":1},"constructor":2,"":3}',
    "numbers": '{"revision":1,"values":[0,-1,1.5,1e+30,5e-324,9007199254740991,true,false,null]}',
}


# Reloads the page once more when the event in `reloadAt` comes, and then reports what state it was given.
_RELOADS = """
<script>
  const { reloadAt, reloadedAt } = sessionStorage;
  sessionStorage.clear();
  if (reloadedAt) report('reloaded', [reloadedAt, window.__QUENDO_NATIVE_STATE__?.text]);
  else if (reloadAt) {
    window.addEventListener(reloadAt, () => {
      sessionStorage.reloadedAt = reloadAt;
      location.reload();
    });
  }
</script>
"""


@pytest.fixture(scope="module")
def running(stage):
    return stage(lambda reporter: bridge_page(reporter, head=_RELOADS))


@pytest.fixture
def seeded(running):
    """The running program with a document of revision 5 on disk, and the bridge to it."""
    program, server = running
    if program.state.revision() != 5:
        program.terminate()
        program.state.write('{"revision":5}')
        loads = server.loads
        program.start()
        server.wait_for_page(loads + 1)
    return program, server, Bridge(server)


def _restart(program, server):
    assert program.terminate() == 0
    loads = server.loads
    program.start()
    server.wait_for_page(loads + 1)


def test_a_first_start_brings_no_state(running):
    _, server = running
    assert server.evaluate("'__QUENDO_NATIVE_STATE__' in window") is False


@pytest.mark.parametrize("name", DOCUMENTS)
def test_a_document_comes_back_as_it_was_after_a_restart(running, name):
    program, server = running
    text = DOCUMENTS[name]
    # The message's revision counts, so the document's own may be anything.
    assert Bridge(server).save(text, 1)
    assert program.state.text() == text
    _restart(program, server)
    assert server.run(f"const expected = {json.dumps(text)};"
                      "return JSON.stringify(__QUENDO_NATIVE_STATE__)"
                      " === JSON.stringify(JSON.parse(expected));")
    assert program.state.text() == text


def test_a_page_that_reloads_itself_gets_its_state_again(running):
    program, server = running
    program.state.write('{"revision":1,"text":"ação 😀"}')
    _restart(program, server)
    for _ in range(3):
        assert server.evaluate("__QUENDO_NATIVE_STATE__.text") == "ação 😀"
        loads = server.loads
        server.post("location.reload();")
        server.wait_for_page(loads + 1)


def test_a_page_that_reloads_itself_before_it_has_loaded_gets_its_state_again(running):
    program, server = running
    program.state.write('{"revision":1,"text":"ação 😀"}')
    _restart(program, server)
    for count, event in enumerate(("DOMContentLoaded", "load", "pageshow"), 1):
        server.post(f"sessionStorage.reloadAt = '{event}'; location.reload();")
        assert server.wait_for("reloaded", count, timeout=20) == [event, "ação 😀"]


def test_the_page_gets_the_engines_own_functions(running):
    _, server = running
    assert server.evaluate("Object.hasOwn(Uint8Array, 'from')") is False
    assert server.evaluate("[...Uint8Array.from('123', Number), ...Uint8Array.from([4, 5])].join()") == "1,2,3,4,5"


def test_a_long_document_arrives_whole_wherever_it_is_cut(running):
    program, server = running
    # Of two units each, so that a cut after an even number of units before the first would go through one.
    assert server.run("""const text = '😀'.repeat(1600000);
        window.savedTexts = [text, 'x' + text];
        return text.length;""") == 3_200_000
    for number in (0, 1):
        expected = json.dumps({"text": "x" * number + "😀" * 1_600_000}, ensure_ascii=False)
        assert server.run(f"webkit.messageHandlers.quendoState.postMessage("
                          f"{{ serialized: '{{\"text\": ' + JSON.stringify(savedTexts[{number}]) + '}}',"
                          f" revision: {100 + number} }}); return true;")
        wait_until(lambda: program.state.text() == expected, 20, "the document on disk")


_PARTS = "const { postPart, postMessageWithParts } = webkit.messageHandlers.quendoState;"


def test_a_document_in_parts_arrives_whole_among_other_messages(running):
    program, server = running
    server.run(_PARTS + """
        postPart('{"given":"up', true);
        postPart('{"text":"', true);
        webkit.messageHandlers.quendoClipboard.postMessage({ text: 'x'.repeat(100000) });
        for (let part = 0; part < 7; part++) {
          postPart('😀'.repeat(300000), false);
          await new Promise(done => setTimeout(done));
          webkit.messageHandlers.quendoShare.postMessage({ title: 'x'.repeat(100000) });
        }
        postPart('"}', false);
        postMessageWithParts({ revision: 200 }, 'serialized');""")
    expected = json.dumps({"text": "😀" * 2_100_000}, ensure_ascii=False, separators=(",", ":"))
    wait_until(lambda: program.state.text() == expected, 20, "the document on disk")


def test_a_message_without_its_parts_is_refused_and_nothing_is_lost(running):
    program, server = running
    before = program.state.text()
    answer = server.run(_PARTS + """
        answers.length = 0;
        postMessageWithParts({ revision: 1e15 }, 'serialized');
        return (await answersUntil(() => answers.length > 0))[0];""")
    assert answer == [False, 1e15]
    assert program.state.text() == before


def test_parts_that_cannot_be_posted_fail_in_the_page(running):
    _, server = running
    assert server.run(_PARTS + """
        const refusals = [];
        for (const post of [() => postPart(Symbol(), true), () => postMessageWithParts({ a: () => 1 }, 'serialized')]) {
          try { post(); } catch (error) { refusals.push(error.name); }
        }
        return refusals;""") == ["TypeError", "DataCloneError"]


def test_a_page_that_imitates_the_relay_is_only_ignored(running):
    program, server = running
    before = program.state.text()
    server.run("""
        const send = (name, detail) => window.dispatchEvent(new CustomEvent(name, { detail }));
        for (const detail of [5, null, '', [1, 2], { length: 3 }, 'x'.repeat(10)]) send('quendo-host-text', detail);
        for (const detail of [5, null, '', [1, 2], { length: 3 }, 'x'.repeat(10)]) {
          send('quendo-host-part', detail);
          send('quendo-host-first-part', detail);
        }
        for (const body of [5, null, {}, { serialized: 5 }]) {
          for (const partsName of [7, {}, null, 'a']) {
            send('quendo-host-message', { name: 'quendoState', body, textNames: [], partsName });
          }
          for (const textNames of [['a'], ['a', 'b', 'c', 'd'], 7, { length: 2e9 }, { length: -1 }, undefined]) {
            send('quendo-host-text', 'x'.repeat(10));
            send('quendo-host-message', { name: 'quendoState', body, textNames });
          }
        }""")
    assert Bridge(server).save('{"after":1}', 10 ** 6)
    assert before != program.state.text() == '{"after":1}'


def test_what_the_page_is_told_before_its_first_script(running):
    _, server = running
    found = server.run("return [__QUENDO_IS_MAC__, __QUENDO_NATIVE_LANGUAGE__, typeof __QUENDO_PUBLIC_URL__,"
                       " new URL(__QUENDO_PUBLIC_URL__).protocol, __QUENDO_PUBLIC_URL__.endsWith('/')];")
    assert found == [True, "pt", "string", "https:", True]


def test_a_plain_string_is_saved_with_revision_zero(seeded):
    program, _, bridge = seeded
    assert bridge.answers_to_saves(json.dumps('{"revision":6,"plain":true}')) == [[True, "0"]]
    # The document's own revision counts if the message has none.
    assert program.state.document() == {"revision": 6, "plain": True}


@pytest.mark.parametrize("body", [
    "{}", "{ revision: 6 }", "{ serialized: 6, revision: 6 }", "{ serialized: null }", "{ serialized: true }",
    "{ serialized: ['{}'] }", "{ serialized: { revision: 6 } }", "[]", "['{\"revision\":6}']", "null", "6", "true",
    "undefined", "{ Serialized: '{\"revision\":6}' }", "new Date(0)",
])
def test_a_body_of_another_shape_is_not_answered(seeded, body):
    program, _, bridge = seeded
    before = program.state.text()
    assert bridge.answers_to_saves(body) == []
    assert program.state.text() == before


@pytest.mark.parametrize("body", ["() => 1", "{ serialized: '{}', revision: () => 1 }", "document.body"])
def test_a_body_that_cannot_be_posted_fails_in_the_page(seeded, body):
    _, server, bridge = seeded
    assert server.run(f"try {{ post('quendoState', {body}); return 'posted'; }}"
                      "catch (error) { return error.name; }") == "DataCloneError"
    assert bridge.answers_to_saves() == []


@pytest.mark.parametrize("text", [
    "''", "'x'", "'[]'", "'\"text\"'", "'1'", "'null'", "'{'", "'{} {}'", "'{\"a\":1,}'", "'\\ufeff{}'",
    "'{\"a\":\"\\u0000\"}'", "'{}\\u0000'", "\"{'a':1}\"", "'// no\\n{}'", "'{\"a\":NaN}'",
])
def test_what_is_no_json_object_is_refused(seeded, text):
    program, _, bridge = seeded
    before = program.state.text()
    assert bridge.answers_to_saves(f"{{ serialized: {text}, revision: 7 }}") == [[False, "7"]]
    assert program.state.text() == before


@pytest.mark.parametrize("body, revision", [
    ("{ serialized: '{\"revision\":8,\"text\":\"a\\ud83d\"}', revision: 8 }", "8"),
    ("{ serialized: '{\"revision\":8,\"text\":\"\\ude00a\"}', revision: 8 }", "8"),
    ("{ serialized: '{\"revision\":8}\\ud83d', revision: 8 }", "8"),
    ("'{\"revision\":8,\"text\":\"a\\ud83d\"}'", "0"),
])
def test_a_lone_surrogate_in_the_text_itself_is_refused(seeded, body, revision):
    program, _, bridge = seeded
    before = program.state.text()
    assert bridge.answers_to_saves(body) == [[False, revision]]
    assert program.state.text() == before


# Texts of this length take a separate path between the script worlds.
_LONG = "x" * 50_000


def test_a_long_document_is_saved_and_the_page_keeps_what_it_posted(seeded):
    program, server, bridge = seeded
    document = {"revision": 7, "text": _LONG + "\u2028\U0001f9d1"}
    server.run(f"window.plain = {{ serialized: JSON.stringify({json.dumps(document)}), revision: 7 }};"
               "window.posted = { __proto__: null, ...plain };")
    for body in ("posted", "plain", "Object.freeze({ ...plain, self: plain })"):
        assert bridge.answers_to_saves(body) == [[True, "7"]]
        assert program.state.document() == document
    assert server.evaluate("Object.keys(plain).join() + (plain.serialized === posted.serialized)") == \
        "serialized,revisiontrue"


def test_a_long_text_does_not_take_the_place_of_another_value(seeded):
    program, _, bridge = seeded
    before = program.state.text()
    long = f"'{_LONG}'"
    assert bridge.answers_to_saves(f"{{ serialized: '{{\"revision\":2}}', revision: {long} }}") == [[True, "0"]]
    assert bridge.answers_to_saves(f"{{ serialized: [{long}], revision: 8 }}") == []
    assert bridge.answers_to_saves(f"{{ __proto__: {{ serialized: '{{}}' }}, revision: 8, other: {long} }}") == []
    assert bridge.answers_to_saves(f"{{ ['__proto__']: {long}, serialized: {long}, revision: 8 }}") == [[False, "8"]]
    assert program.state.text() == before


def test_a_long_text_of_a_body_that_cannot_be_posted_is_forgotten(seeded):
    program, server, bridge = seeded
    for value in ("() => 1", "document.body", "Symbol()"):
        body = f"{{ serialized: '{_LONG}', revision: {value} }}"
        assert server.run(f"try {{ post('quendoState', {body}); return 'posted'; }}"
                          "catch (error) { return error.name; }") == "DataCloneError"
    document = {"revision": 9, "text": _LONG[:20_000]}
    assert bridge.save(json.dumps(document), 9)
    assert program.state.document() == document


@pytest.mark.parametrize("revision, answered", [
    ("NaN", "0"), ("true", "0"), ("false", "0"), ("'9'", "0"), ("null", "0"), ("undefined", "0"), ("[9]", "0"),
    ("{}", "0"), ("1.9", "1"), ("-1.9", "-1"), ("-0", "0"), ("0.5", "0"), ("-3", "-3"),
    ("-1e300", "-9223372036854776000"), ("-Infinity", "-9223372036854776000"),
])
def test_a_revision_is_answered_as_the_integer_it_stands_for(seeded, revision, answered):
    program, _, bridge = seeded
    # The document is older than the one on disk, so nothing is written, whatever the revision.
    body = f"{{ serialized: '{{\"revision\":2}}', revision: {revision} }}"
    assert bridge.answers_to_saves(body) == [[True, answered]]
    assert bridge.answers_to_saves(body) == [[True, answered]]
    assert program.state.revision() != 2


def test_an_older_revision_is_answered_but_not_written(seeded):
    program, _, bridge = seeded
    assert bridge.save('{"revision":20,"text":"new"}', 20)
    assert bridge.save('{"revision":19,"text":"old"}', 19)
    assert program.state.document()["text"] == "new"
    assert bridge.save('{"revision":20,"text":"same revision"}', 20)
    assert program.state.document()["text"] == "same revision"


def test_every_message_of_a_burst_is_answered_in_order_and_the_newest_is_kept(seeded):
    program, _, bridge = seeded
    first = 1000
    bodies = [f"{{ serialized: '{{\"revision\":{one}}}', revision: {one} }}" for one in range(first, first + 200)]
    answers = bridge.answers_to_saves(*bodies)
    assert answers == [[True, str(one)] for one in range(first, first + 200)]
    assert program.state.revision() == first + 199


@pytest.mark.parametrize("revision", ["1e300", "Infinity", "2 ** 63"])
def test_a_huge_revision_is_the_largest_there_is(seeded, revision):
    program, _, bridge = seeded
    body = f"{{ serialized: '{{\"huge\":{json.dumps(revision)}}}', revision: {revision} }}"
    assert bridge.answers_to_saves(body) == [[True, "9223372036854776000"]]
    assert program.state.document() == {"huge": revision}
    assert bridge.save('{"revision":3000000}', 3000000)
    assert program.state.document() == {"huge": revision}
