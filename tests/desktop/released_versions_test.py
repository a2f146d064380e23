"""Documents that released versions have written open in this one, and stay on disk until it has written its own."""

import json
from pathlib import Path

import pytest

from harness.waiting import wait_until
from harness.writing import active_text, start_again, texts

pytestmark = pytest.mark.never_retried

FIXTURES = Path(__file__).parents[1] / "corpus" / "state"
VERSIONS = sorted(one.name for one in FIXTURES.iterdir() if one.is_dir())


def test_there_are_documents_of_released_versions():
    assert "1.0.0" in VERSIONS


@pytest.mark.parametrize("version", VERSIONS)
def test_a_document_of_a_released_version_opens_and_nothing_of_it_is_lost(open_page, version):
    stored = (FIXTURES / version / "document.json").read_bytes()
    shown = json.loads((FIXTURES / version / "shown.json").read_text(encoding="utf-8"))
    document = json.loads(stored)
    quendo, page = open_page(stored)
    wait_until(lambda: page.tabs() == shown["tabs"], 10, "the tabs of that version")
    assert page.active_tab() == shown["active"]
    assert page.rows() == shown["rows"]
    # Until something is written the old document is the document, and then the one before.
    assert stored in (quendo.state.primary.read_bytes(), quendo.state.backup.read_bytes())
    page.wait_for_editor()
    quendo.press("ctrl+End")
    quendo.type("!")
    before = next(note["text"] for note in document["notes"] if note["id"] == document["tabs"]["active"])
    wait_until(lambda: active_text(quendo) == before + "!", 15, "the change on disk")
    assert quendo.terminate() == 0
    expected = [note["text"] + ("!" if note["id"] == document["tabs"]["active"] else "") for note in document["notes"]]
    assert texts(quendo) == expected
    now = quendo.state.document()
    assert now["version"] >= document["version"] and now["revision"] > document["revision"]
    assert now["settings"] | document["settings"] == now["settings"]
    assert now["captureDraft"] == document["captureDraft"]
    kept = ("id", "name", "format", "fileName", "lineBreak", "created", "pinned")
    assert [{member: note.get(member) for member in kept} for note in now["notes"]] == \
        [{member: note.get(member) for member in kept} for note in document["notes"]]
    start_again(quendo, page)
    wait_until(lambda: page.tabs() == shown["tabs"], 10, "the same tabs after a restart")
