"""The complete page of docs/page-protocol.md in place of the real one, just as a reader would copy it."""

import re
from pathlib import Path

import pytest

# These tests are about losing text.
pytestmark = pytest.mark.never_retried

DOCUMENT = Path(__file__).resolve().parents[2] / "docs" / "page-protocol.md"


@pytest.fixture
def documented(make_quendo):
    (page,) = re.findall(r"^```html\n(.*?)^```$", DOCUMENT.read_text(encoding="utf-8"), re.DOTALL | re.MULTILINE)
    return make_quendo(page=page)


def test_the_documented_page_saves_what_is_typed_and_restores_it(documented):
    documented.start().wait_for_page()
    documented.type("Bread and milk")
    documented.state.wait_for_text("Bread and milk")
    assert documented.terminate() == 0
    documented.start().wait_for_page()
    documented.press("ctrl+End")
    documented.type(" and tea")
    documented.state.wait_for_text("Bread and milk and tea")


def test_the_documented_page_hands_over_its_last_words_when_the_program_quits(documented):
    documented.start().wait_for_page()
    documented.type("Typed and quit at once")
    assert documented.terminate() == 0
    assert documented.state.document() == {"revision": documented.state.revision(), "text": "Typed and quit at once"}


def test_the_documented_page_takes_an_opened_file(documented, tmp_path):
    (tmp_path / "list.txt").write_text("From a file")
    documented.start(str(tmp_path / "list.txt")).wait_for_page()
    documented.state.wait_for_text("From a file")
    assert documented.terminate() == 0
