"""scripts/setup on a distribution without apt, played with a PATH of this test's making."""

import os
import shutil
import subprocess

import pytest

from conftest import ROOT

# What the script itself runs.
TOOLS = ("bash", "dirname", "flock", "mkdir", "sha256sum", "cut", "uname", "cat")


def packages(group):
    lines = (ROOT / "scripts" / "packages.txt").read_text().splitlines()
    return [(line.split() + [""])[1:3] for line in lines if line.startswith(f"{group} ")]


@pytest.fixture
def distribution(tmp_path):
    """A copy of the script where there is nothing to install for the page, and a PATH with few programs."""
    for folder in ("scripts/lib", "web"):
        (tmp_path / folder).mkdir(parents=True)
    for name in ("scripts/setup", "scripts/packages.txt", "scripts/lib/common.sh"):
        shutil.copy2(ROOT / name, tmp_path / name)
    path = tmp_path / "bin"
    path.mkdir()
    for tool in TOOLS:
        (path / tool).symlink_to(shutil.which(tool))
    return tmp_path


def add(distribution, name, script="exit 0"):
    program = distribution / "bin" / name
    program.write_text(f"#!/bin/sh\n{script}\n")
    program.chmod(0o755)


def set_up(distribution, *groups):
    return subprocess.run([distribution / "scripts" / "setup", *groups], capture_output=True, text=True,
                          env={"PATH": str(distribution / "bin"), "HOME": os.devnull})


def test_what_is_missing_has_its_name_for_pkg_config_and_for_debian(distribution):
    add(distribution, "pkg-config", '[ "$2" = gtkmm-4.0 ] && echo 4.14.0')
    add(distribution, "cmake")
    done = set_up(distribution, "build")
    assert done.returncode == 1
    assert "This system has no apt-get, so nothing is installed.\n" in done.stdout
    assert "Found: cmake, pkg-config, gtkmm-4.0 4.14.0.\n" in done.stdout
    assert "Missing: g++ (in Debian's g++), ninja (in Debian's ninja-build), webkitgtk-6.0 (in Debian's " in done.stdout


def test_a_system_that_has_everything_goes_on(distribution):
    add(distribution, "pkg-config", "echo 99.1")
    for _, check in packages("build"):
        if check and not check.endswith(".pc") and check != "pkg-config":
            add(distribution, check.rstrip("!"))
    done = set_up(distribution, "build")
    assert done.returncode == 0, done.stdout + done.stderr
    assert "Missing" not in done.stdout and "webkitgtk-6.0 99.1" in done.stdout


def test_what_only_tests_need_is_named_and_does_not_stop_a_build(distribution):
    done = set_up(distribution, "test")
    assert done.returncode == 0
    assert "Missing: " in done.stdout and "chromium (in Debian's chromium)" in done.stdout


def test_every_library_to_build_with_is_known_to_pkg_config():
    for package, check in packages("build"):
        if package.endswith("-dev"):
            assert check.endswith(".pc"), package
            subprocess.run(["pkg-config", "--exists", check.removesuffix(".pc")], check=True)
