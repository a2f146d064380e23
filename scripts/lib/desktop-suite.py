#!/usr/bin/python3
"""Runs the files of the desktop tests in parallel, each on a display of its own.

    scripts/lib/desktop-suite.py DISPLAYS RESULTS

The tests that are marked for every display are run once more under Wayland, all of them in one run: for it, the folder
stands in the place of a file.

Writes one JUnit file each into RESULTS. After all files have finished, failed tests are run once more, because windows
and keys depend on how busy the machine is; each prints a line that begins with "retried: ". Tests marked
`never_retried` are about losing text; their first failure is final.
"""

import json
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TESTS = ROOT / "tests" / "desktop"
# Seconds each file took last time. The longest start first, so none of them is left over at the end.
DURATIONS = ROOT / "build" / "desktop-durations.json"
# The longest in a fresh clone, which has no record.
LONGEST = ("kill_test", "language_test", "real_page_test", "window_test", "quit_handshake_test")


def durations():
    try:
        return json.loads(DURATIONS.read_text())
    except (OSError, ValueError):
        return {}


def name_of(path):
    return "wayland" if path.is_dir() else path.stem


def in_order(files, known):
    def rank(path):
        return -known.get(name_of(path), 1e6 if name_of(path) in LONGEST else 0), name_of(path)

    return sorted(files, key=rank)


def runs():
    """The files, and the folder if any of them has something for every display."""
    files = list(TESTS.glob("*_test.py"))
    has_core = any("every_display" in path.read_text(encoding="utf-8") for path in files)
    return [*files, TESTS] if has_core else files


def pytest(results, name, attempt, *arguments):
    """Runs pytest on a display of its own; returns its JUnit tree, or None if it left none."""
    report = results / f"desktop-{name}-{attempt}.xml"
    report.unlink(missing_ok=True)
    options = ["--wayland"] if name == "wayland" else []
    with open(results / f"desktop-{name}-{attempt}.log", "wb") as log:
        subprocess.run([ROOT / "scripts" / "with-desktop", *options, "/usr/bin/python3", "-m", "pytest", "-c",
                        TESTS / "pytest.ini", "-q", "--durations=5", "-o", f"cache_dir={results / 'cache' / name}",
                        f"--junitxml={report}", *arguments], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
    try:
        tree = ElementTree.parse(report)
    except (OSError, ElementTree.ParseError):
        return None
    finally:
        report.unlink(missing_ok=True)
    return tree


def cases(tree):
    return {(one.get("classname"), one.get("name")): one for one in tree.iter("testcase")}


def failed(case):
    return case.find("failure") is not None or case.find("error") is not None


def wrong(tree):
    return {key for key, case in cases(tree).items() if failed(case)}


def never_retried(case):
    return case.find("properties/property[@name='never_retried']") is not None


def say_failures(path, tree):
    """Prints the final failures, with the seeds of randomised tests."""
    for key in sorted(wrong(tree)):
        seed = cases(tree)[key].find("properties/property[@name='seed']")
        again = f" (QUENDO_TEST_SEED={seed.get('value')})" if seed is not None else ""
        print(f"desktop: {name_of(path)}: {key[1]} failed{again}", flush=True)


def without_result(name):
    suite = ElementTree.Element("testsuite")
    case = ElementTree.SubElement(suite, "testcase", classname=name, name="the file as a whole")
    ElementTree.SubElement(case, "error", message="it ended without a result")
    return ElementTree.ElementTree(suite)


def retry(results, path, tree):
    """Runs failed tests once more, where allowed; those that pass now count as passed."""
    before = {key for key in wrong(tree) if not never_retried(cases(tree)[key])}
    if not before:
        return
    again = pytest(results, name_of(path), 2, "--last-failed", "-m", "not never_retried", path)
    passed = {key for key, case in cases(again).items() if not failed(case)} if again else set()
    for key in sorted(before):
        outcome = "passed" if key in passed else "failed again"
        print(f"retried: desktop, {name_of(path)}: {key[1]} ({outcome})", flush=True)
        case = cases(tree)[key]
        if key in passed:
            for result in [*case.findall("failure"), *case.findall("error")]:
                case.remove(result)


def run_again(results, path):
    """Retries a file that ended without a result, unless a test in it is never retried."""
    if path.is_dir() or "never_retried" in path.read_text(encoding="utf-8"):
        return without_result(name_of(path))
    tree = pytest(results, name_of(path), 2, path)
    print(f"retried: desktop, {name_of(path)}: the file as a whole ({'ran' if tree else 'failed again'})", flush=True)
    return tree or without_result(name_of(path))


def main():
    displays, results = int(sys.argv[1]), Path(sys.argv[2])
    known = durations()
    files = in_order(runs(), known)
    with ThreadPoolExecutor(displays) as pool:
        trees = dict(zip(files, pool.map(lambda path: pytest(results, name_of(path), 1, path), files)))
    for path, tree in trees.items():
        if tree is None:
            trees[path] = run_again(results, path)
            continue
        known[name_of(path)] = round(sum(float(one.get("time", 0)) for one in tree.iter("testcase")), 1)
        retry(results, path, tree)
    for path, tree in trees.items():
        say_failures(path, tree)
        tree.write(results / f"desktop-{name_of(path)}.xml")
    DURATIONS.write_text(json.dumps(known, indent=1, sort_keys=True) + "\n")
    slowest = sorted(files, key=lambda one: -known.get(name_of(one), 0))[:5]
    print("desktop: slowest:", ", ".join(f"{name_of(one)} {known.get(name_of(one), 0):.0f} s" for one in slowest), flush=True)
    return 1 if any(map(wrong, trees.values())) else 0


if __name__ == "__main__":
    sys.exit(main())
