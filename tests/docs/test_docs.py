"""The documentation, against the tree that it describes."""

from pathlib import Path

import pytest

import checks
import pages

TREE = pages.Tree(Path(__file__).resolve().parents[2])
PAGES = {page.path: page for page in TREE.pages}


def report(complaints):
    assert not complaints, "\n" + "\n".join(complaints)


def test_the_pages_are_found():
    assert {"README.md", "CONTRIBUTING.md", "CHANGELOG.md", "web/README.md", "web/STATE.md"} <= set(PAGES)
    assert len([path for path in PAGES if path.startswith("docs/")]) >= 7


@pytest.mark.parametrize("path", PAGES)
@pytest.mark.parametrize("check", [checks.links, checks.named_paths, checks.typed_commands, checks.variables, checks.options,
                                   checks.names], ids=lambda check: check.__name__)
def test_what_a_page_names_is_there(check, path):
    report(check(TREE, PAGES[path]))


def test_the_readme_quotes_the_interface():
    report(checks.labels(TREE, PAGES["README.md"]))


def test_exceptions_are_in_use():
    report(checks.unused_exceptions(TREE))


def test_the_parts_of_the_tests_are_those_of_the_command():
    report(checks.table_of_parts(TREE))


def test_the_benchmarks_are_those_of_the_command():
    report(checks.benchmarks_described(TREE))


@pytest.mark.parametrize("path, heading, folder", [("README.md", "How it is built", "."),
                                                   ("web/README.md", "Structure", "web/src")])
def test_a_table_of_folders_has_all_of_them(path, heading, folder):
    report(checks.folders_of(PAGES[path], heading, folder, TREE))


def test_the_drawn_folders_are_those_of_the_tree():
    report(checks.drawn_folders(TREE, PAGES["docs/architecture.md"]))


def test_the_ports_are_classes():
    report(checks.ports(TREE, PAGES["docs/architecture.md"]))


def test_changes_package_and_build_name_the_same_releases():
    report(checks.releases(TREE))


def test_every_defence_names_what_shows_it():
    page = PAGES["docs/security.md"]
    assert len(pages.rows(page.text)) > 5
    report(checks.threats(TREE, page))
