"""The static analyser on the macOS back-end."""

import re
from concurrent.futures import ThreadPoolExecutor

import pytest
from objects import COCOA, compilations, run

ARGUMENTS = {source: arguments for source, (arguments, _) in compilations("arm64").items() if COCOA in source.parents}

SEEDS = (
    ("a null dereference", "Text.mm", "if (!string) return {};",
     "const char* none = nullptr;\n  if (!string) return {*none};", "null pointer"),
    ("a value that was never set", "application/CocoaWindow.mm", "return window_.attachedSheet != nil;",
     "bool attached;\n  if (!window_) attached = false;\n  return attached;", "ndefined or garbage|ninitialized"),
)


def analyse(source, arguments):
    result = run(*arguments, "--analyze", "-Xanalyzer", "-analyzer-output=text", source)
    return [line for line in result.stderr.splitlines() if re.search(r": (warning|error):", line)]


def test_the_analyser_finds_nothing():
    assert len(ARGUMENTS) > 20
    with ThreadPoolExecutor(2) as pool:
        found = list(pool.map(lambda item: analyse(*item), ARGUMENTS.items()))
    assert [line for lines in found for line in lines] == []


@pytest.mark.parametrize("error, name, before, after, message", SEEDS, ids=[seed[0] for seed in SEEDS])
def test_the_analyser_finds(tmp_path, error, name, before, after, message):
    text = (COCOA / name).read_text()
    assert text.count(before) == 1
    seeded = tmp_path / (COCOA / name).name
    seeded.write_text(text.replace(before, after))
    assert re.search(message, "\n".join(analyse(seeded, ARGUMENTS[COCOA / name])))
