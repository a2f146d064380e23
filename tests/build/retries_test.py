"""What ./test runs a second time, and what it never does."""

import importlib.util
import xml.etree.ElementTree as ElementTree

import pytest

from conftest import ROOT


def report(*cases):
    """A JUnit tree of (name, failed, never_retried)."""
    suite = ElementTree.Element("testsuite")
    for name, failed, never_retried in cases:
        case = ElementTree.SubElement(suite, "testcase", classname="x_test", name=name, time="1")
        if never_retried:
            properties = ElementTree.SubElement(case, "properties")
            ElementTree.SubElement(properties, "property", name="never_retried", value="true")
            ElementTree.SubElement(properties, "property", name="seed", value="42")
        if failed:
            ElementTree.SubElement(case, "failure")
    return ElementTree.ElementTree(suite)


@pytest.fixture
def suite(tmp_path, monkeypatch):
    """The desktop suite's runner on one file of tests; `attempts` holds what pytest reports each time."""
    spec = importlib.util.spec_from_file_location("desktop_suite", ROOT / "scripts" / "lib" / "desktop-suite.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    (tmp_path / "x_test.py").touch()
    module.attempts, module.calls = [], []

    def pytest_once(results, name, attempt, *arguments):
        module.calls.append(arguments[:-1])
        return module.attempts.pop(0)

    monkeypatch.setattr(module, "TESTS", tmp_path)
    monkeypatch.setattr(module, "DURATIONS", tmp_path / "durations.json")
    monkeypatch.setattr(module, "pytest", pytest_once)
    monkeypatch.setattr(module.sys, "argv", ["desktop-suite.py", "1", str(tmp_path)])
    return module


def test_a_test_that_wavers_is_run_once_more_and_named(suite, capsys):
    suite.attempts = [report(("good", False, False), ("wavers", True, False)), report(("wavers", False, False))]
    assert suite.main() == 0
    assert "retried: desktop, x_test: wavers (passed)\n" in capsys.readouterr().out
    assert suite.calls[1] == ("--last-failed", "-m", "not never_retried")


def test_a_test_that_fails_twice_has_failed(suite, capsys):
    suite.attempts = [report(("bad", True, False)), report(("bad", True, False))]
    assert suite.main() == 1
    assert "retried: desktop, x_test: bad (failed again)\n" in capsys.readouterr().out


def test_a_test_about_losing_text_is_not_run_again_and_its_seed_is_printed(suite, capsys):
    suite.attempts = [report(("kill", True, True))]
    assert suite.main() == 1
    said = capsys.readouterr().out
    assert "retried" not in said and "x_test: kill failed (QUENDO_TEST_SEED=42)\n" in said


def test_a_file_that_crashes_is_run_once_more_unless_it_is_about_losing_text(suite, tmp_path, capsys):
    suite.attempts = [None, report(("good", False, False))]
    assert suite.main() == 0
    assert "retried: desktop, x_test: the file as a whole (ran)\n" in capsys.readouterr().out
    (tmp_path / "x_test.py").write_text("pytestmark = pytest.mark.never_retried\n")
    suite.attempts = [None]
    assert suite.main() == 1


def test_the_file_that_took_longest_comes_first(suite, tmp_path):
    files = [tmp_path / f"{name}_test.py" for name in ("a", "b", "kill")]
    assert [one.stem for one in suite.in_order(files, {})] == ["kill_test", "a_test", "b_test"]
    assert [one.stem for one in suite.in_order(files, {"a_test": 3, "b_test": 9, "kill_test": 5})] == [
        "b_test", "kill_test", "a_test"]


def test_what_is_for_every_display_runs_under_wayland_too(suite, tmp_path):
    assert [suite.name_of(one) for one in suite.runs()] == ["x_test"]
    (tmp_path / "x_test.py").write_text("@pytest.mark.every_display\n")
    assert [suite.name_of(one) for one in suite.runs()] == ["x_test", "wayland"]
    suite.attempts = [report(("good", False, False)), report(("core", True, True))]
    assert suite.main() == 1
    assert {one.name for one in tmp_path.glob("*.xml")} == {"desktop-wayland.xml", "desktop-x_test.xml"}
