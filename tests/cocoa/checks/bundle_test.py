"""Quendo.app, as it is put together."""

import plistlib

import pytest
from objects import ARCHITECTURES, binary, build


@pytest.fixture(params=ARCHITECTURES)
def contents(request):
    return build(request.param) / "Quendo.app" / "Contents"


def test_the_bundle_has_its_program_its_page_and_its_icon(contents):
    information = plistlib.loads((contents / "Info.plist").read_bytes())
    assert (contents / "MacOS" / information["CFBundleExecutable"]).is_file()
    assert (contents / "Resources" / "web" / "index.html").is_file()
    assert (contents / "Resources" / (information["CFBundleIconFile"].removesuffix(".icns") + ".icns")).is_file()


def test_the_about_panel_has_the_licences_of_libraries_and_page(contents):
    credits = (contents / "Resources" / "Credits.html").read_text(encoding="utf-8")
    assert "ICU (Unicode-DFS-2016)" in credits and "@codemirror/state" in credits
    assert credits.count("<pre") == 1 and "<" not in credits.split("<pre", 1)[1].split(">", 1)[1].removesuffix("</pre>\n")


def test_the_information_is_the_projects(contents):
    information = plistlib.loads((contents / "Info.plist").read_bytes())
    assert information["CFBundleIdentifier"] == "com.quendo.Quendo"
    assert information["LSMinimumSystemVersion"] == "13.0"
    assert not any("@" in str(value) or "${" in str(value) for value in information.values())


@pytest.mark.parametrize("architecture", ARCHITECTURES)
def test_no_path_of_the_machine_that_built_it_is_in_the_program(architecture):
    assert str(build(architecture)).encode() not in binary(architecture).read_bytes()
