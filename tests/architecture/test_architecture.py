"""The rules, on the real sources."""

import re
from pathlib import Path

import pytest

import checker
import diagram

SOURCE = Path(__file__).resolve().parents[2] / "src"


@pytest.fixture(scope="module")
def files():
    found = checker.sources(SOURCE)
    assert len(found) > 20, "the sources were not found"
    return found


@pytest.mark.parametrize("rule", [checker.misplaced, checker.wrong_way, checker.unresolved, checker.circles,
                                  checker.toolkit_in_core, checker.outside_ports],
                         ids=lambda rule: rule.__name__)
def test_rule(files, rule):
    broken = rule(files)
    assert not broken, "\n" + "\n".join(broken)


def test_every_folder_has_its_level():
    # A back-end is divided into rooms of its own; what they share is its affair.
    folders = {str(path.relative_to(SOURCE)) for path in SOURCE.rglob("*")
               if path.is_dir() and path.parent.name not in ("gtk", "cocoa")}
    assert folders <= set(checker.LEVEL_OF), folders - set(checker.LEVEL_OF)


def test_the_documented_diagram_is_drawn_from_the_includes(files):
    assert diagram.documented(diagram.DOCUMENT.read_text(encoding="utf-8")) == diagram.diagram(files)


def test_every_place_that_the_document_sends_one_to_exists():
    text = diagram.DOCUMENT.read_text(encoding="utf-8")
    section = text[text.index("## Where a change goes"):text.index("## Which folder uses which")]
    places = re.findall(r"`((?:src|web|tests)/[^`]*)`", section)
    assert len(places) > 12
    missing = [place for place in places if not (SOURCE.parent / place).exists()]
    assert not missing, missing
