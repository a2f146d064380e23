#!/usr/bin/python3
"""Runs the files of the desktop tests, several side by side, each on a display of its own.

    scripts/lib/desktop-suite.py DISPLAYS RESULTS

Writes one JUnit file for each into RESULTS. A test that fails is run again by itself, and once more when all
others have ended, and said so: windows and keys depend on how busy the machine is. What fails each time has
failed.
"""

import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TESTS = ROOT / "tests" / "desktop"
# These take longest and come first, so that no display is left with one of them at the end.
LONGEST = ("kill_test.py", "language_test.py", "real_page_test.py", "window_test.py", "quit_handshake_test.py")


def pytest(results, name, attempt, *arguments):
    """Runs pytest on a display of its own; returns its JUnit tree, or None when it ended without one."""
    report = results / f"desktop-{name}-{attempt}.xml"
    report.unlink(missing_ok=True)
    with open(results / f"desktop-{name}-{attempt}.log", "wb") as log:
        subprocess.run([ROOT / "scripts" / "with-desktop", "/usr/bin/python3", "-m", "pytest", "-c",
                        TESTS / "pytest.ini", "-q", "-o", f"cache_dir={results / 'cache' / name}",
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


def mend(results, path, tree, attempt):
    """Runs what failed once more, and lets those pass that do so now."""
    before = wrong(tree)
    print(f"desktop: {path.stem}: {len(before)} failed; once more.", flush=True)
    again = pytest(results, path.stem, attempt, "--last-failed", path)
    mended = before & {key for key, case in cases(again).items() if not failed(case)} if again else set()
    for key in mended:
        case = cases(tree)[key]
        for result in [*case.findall("failure"), *case.findall("error")]:
            case.remove(result)
        print(f"desktop: {path.stem}: {key[1]} passed at attempt {attempt}.", flush=True)


def run(results, path):
    name = path.stem
    tree = pytest(results, name, 1, path)
    if tree is None:
        print(f"desktop: {name} ended without a result; once more.", flush=True)
        tree = pytest(results, name, 1, path)
    if tree is None:
        suite = ElementTree.Element("testsuite")
        case = ElementTree.SubElement(suite, "testcase", classname=name, name="the file as a whole")
        ElementTree.SubElement(case, "error", message="it ended without a result, twice")
        return ElementTree.ElementTree(suite)
    if wrong(tree):
        mend(results, path, tree, 2)
    return tree


def main():
    displays, results = int(sys.argv[1]), Path(sys.argv[2])
    files = sorted(TESTS.glob("*_test.py"), key=lambda one: (one.name not in LONGEST, one.name))
    with ThreadPoolExecutor(displays) as pool:
        trees = list(pool.map(lambda path: run(results, path), files))
    for path, tree in zip(files, trees):
        if wrong(tree):
            mend(results, path, tree, 3)
        tree.write(results / f"desktop-{path.stem}.xml")
    return 1 if any(map(wrong, trees)) else 0


if __name__ == "__main__":
    sys.exit(main())
