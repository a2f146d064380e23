"""The packages that ./package makes: complete, clean, and the same bytes each time."""

import hashlib
import os
import re
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
VERSION = re.search(r"^project\(quendo VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]


def run(*command, **options):
    done = subprocess.run([*map(str, command)], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    assert done.returncode == 0, done.stdout
    return done.stdout


def make(tree, kind):
    """Makes a package in a tree and returns its path."""
    name = run(tree / "package", kind, cwd=tree).split()[-1]
    return tree / "build" / "packages" / name


@pytest.fixture(scope="module")
def deb():
    return make(ROOT, "deb")


@pytest.fixture(scope="module")
def source():
    return make(ROOT, "source")


def control(deb, field):
    return run("dpkg-deb", "--field", deb, field).strip()


def contents(deb):
    return [line.split(None, 5)[5].removeprefix("./") for line in run("dpkg-deb", "--contents", deb).splitlines()]


def listed(group):
    lines = (ROOT / "scripts" / "packages.txt").read_text().splitlines()
    return [line.split()[1] for line in lines if line.startswith(f"{group} ")]


def test_the_package_has_the_projects_name_and_version(deb):
    architecture = run("dpkg", "--print-architecture").strip()
    assert deb.name == f"quendo_{VERSION}_{architecture}.deb"
    assert (control(deb, "Package"), control(deb, "Version")) == ("quendo", VERSION)


def test_it_depends_on_its_libraries_and_on_what_the_list_says(deb):
    depends = [re.sub(r" \(.*", "", one) for one in control(deb, "Depends").split(", ")]
    libraries = {one for one in depends if one.startswith("lib")}
    assert set(depends) - libraries == set(listed("run"))
    assert {"libwebkitgtk-6.0-4", "libgtkmm-4.0-0", "libsimdjson14", "libicu72", "liburiparser1"} <= libraries
    assert not any(one.endswith("-dev") for one in depends)
    assert set(listed("recommend")) < set(control(deb, "Recommends").split(", "))


def test_lintian_finds_nothing(deb):
    allowed = ["--allow-root"] if os.geteuid() == 0 else []
    assert run("lintian", *allowed, "--display-info", "--pedantic", "--fail-on", "warning", deb).strip() == ""


def test_everything_is_in_the_system_s_folders_and_nothing_in_a_users(deb):
    for one in contents(deb):
        assert one in ("", "usr/") or one.startswith(("usr/bin/", "usr/share/")), one
    scripts = run("dpkg-deb", "--ctrl-tarfile", deb, errors="replace")
    assert not re.search(r"\b(post|pre)(inst|rm)\b", scripts), "the package runs scripts"


def file_of(deb, path):
    return subprocess.run(f"dpkg-deb --fsys-tarfile '{deb}' | tar -xO './{path}'", shell=True, check=True,
                          capture_output=True, text=True).stdout


def test_the_bus_starts_the_installed_program(deb):
    service = file_of(deb, "usr/share/dbus-1/services/com.quendo.Quendo.service")
    assert service == "[D-BUS Service]\nName=com.quendo.Quendo\nExec=/usr/bin/quendo\n"


def test_the_licences_travel_with_it(deb):
    assert {"usr/share/doc/quendo/copyright", "usr/share/quendo/licenses.txt"} <= set(contents(deb))
    copyright_file = file_of(deb, "usr/share/doc/quendo/copyright")
    assert "License: LicenseRef-proprietary" in copyright_file
    assert "simdjson (Apache-2.0)" in copyright_file and "@codemirror/state" in copyright_file


def test_the_sources_build_without_git_to_the_same_bytes(deb, source, tmp_path):
    assert run("git", "status", "--porcelain", cwd=ROOT) == "", "commit first: a package is made of a commit"
    run("tar", "-xf", source, "-C", tmp_path)
    tree = tmp_path / f"quendo-{VERSION}"
    assert not (tree / ".git").exists()
    other = make(tree, "deb")
    assert hashlib.sha256(other.read_bytes()).hexdigest() == hashlib.sha256(deb.read_bytes()).hexdigest()
