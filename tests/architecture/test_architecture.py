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
               if path.is_dir() and path.parent.name not in ("posix", "gtk", "cocoa")}
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


# What looks like a text of the interface and is none, by file: the page's contract, what a terminal shows,
# messages of the compiler, and errors that only the page's scripts see.
NO_INTERFACE = {"bridge/PageProtocol.h", "bridge/BootstrapScript.cpp", "platform/gtk/main.cpp", "import/Utf8Writer.h",
                "store/ByteBlock.h", "bridge/UnansweredCalls.cpp", "platform/gtk/web/CardWatch.cpp", "platform/gtk/web/WebKitView.cpp",
                "platform/cocoa/web/QueuedKeys.mm"}
# Names that are the same in every language.
NAMES = {"Main Menu", "Português", "Español"}


def test_every_text_of_the_interface_is_a_row_of_a_table(files):
    rows = set(checker.literals(files["i18n/Translations.cpp"]))
    missing = [f"{path}: {text}" for path, source in files.items()
               if path not in NO_INTERFACE and not path.startswith("i18n/")
               for text in checker.literals(source)
               if checker.looks_like_text(text) and text not in rows | NAMES and not text.startswith("quendo: ")]
    assert not missing, "\n" + "\n".join(missing)


def test_no_file_is_too_long_to_hold_one_thing():
    root = SOURCE.parent
    long = [f"{path.relative_to(root)}: {count}" for folder in ("src", "tests", "bench")
            for path in sorted((root / folder).rglob("*")) if path.suffix in checker.SOURCES
            if (count := path.read_text(encoding="utf-8").count("\n")) > 300]
    assert not long, long

