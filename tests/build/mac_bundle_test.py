"""What goes into the Mac's application bundle, made here as there: Info.plist, icon, entitlements."""

import plistlib
import re
import subprocess

import pytest

from conftest import ROOT

PACKAGING = ROOT / "packaging"
PROJECT = f"""
cmake_minimum_required(VERSION 3.25)
project(sample VERSION 1.20.3 LANGUAGES NONE)
set(QUENDO_BUILD_NUMBER 45)
include({ROOT}/cmake/QuendoMacBundle.cmake)
quendo_configure_info_plist(${{CMAKE_BINARY_DIR}}/Info.plist)
quendo_make_icns(${{CMAKE_BINARY_DIR}}/Quendo.icns)
add_custom_target(icon ALL DEPENDS ${{CMAKE_BINARY_DIR}}/Quendo.icns)
"""

# What Linux calls the types.
MEDIA_TYPES = {"public.text": "text/plain", "net.daringfireball.markdown": "text/markdown"}


@pytest.fixture(scope="module")
def build(tmp_path_factory):
    directory = tmp_path_factory.mktemp("a bundle")
    (directory / "CMakeLists.txt").write_text(PROJECT)
    for step in (("-G", "Ninja", "-S", directory, "-B", directory / "build"), ("--build", directory / "build")):
        subprocess.run(["cmake", *step], check=True, capture_output=True)
    return directory / "build"


@pytest.fixture(scope="module")
def info(build):
    return plistlib.loads((build / "Info.plist").read_bytes())


def test_the_program_has_its_names_and_the_projects_version(info):
    assert info["CFBundleIdentifier"] == "com.quendo.Quendo"
    assert {info[f"CFBundle{key}"] for key in ("Name", "DisplayName", "Executable", "IconFile")} == {"Quendo"}
    assert (info["CFBundleShortVersionString"], info["CFBundleVersion"]) == ("1.20.3", "45")
    assert info["CFBundlePackageType"] == "APPL" and info["CFBundleInfoDictionaryVersion"] == "6.0"
    assert "Quendo" in info["NSHumanReadableCopyright"]


def test_the_system_knows_what_the_program_needs(info):
    assert info["LSMinimumSystemVersion"] == "13.0"
    assert info["NSPrincipalClass"] == "NSApplication" and info["NSHighResolutionCapable"] is True
    assert info["LSApplicationCategoryType"] == "public.app-category.productivity"


def test_the_system_never_ends_the_program_without_asking(info):
    assert info["NSSupportsAutomaticTermination"] is False and info["NSSupportsSuddenTermination"] is False


def test_the_interface_languages_are_those_of_the_program(info):
    assert info["CFBundleDevelopmentRegion"] == "pt-BR"
    assert info["CFBundleLocalizations"] == ["pt-BR", "en", "es"]


def test_it_opens_what_it_opens_on_linux_and_claims_none_of_it(info):
    lines = (PACKAGING / "media-types.txt").read_text(encoding="utf-8").splitlines()
    types = [one for entry in info["CFBundleDocumentTypes"] for one in entry["LSItemContentTypes"]]
    # All other types on Linux are kinds of public.text here.
    assert [MEDIA_TYPES[one] for one in types] == [one for one in lines if one in MEDIA_TYPES.values()]
    # Text is copied into a tab; the file stays as it is.
    assert {entry["CFBundleTypeRole"] for entry in info["CFBundleDocumentTypes"]} == {"Viewer"}
    assert {entry["LSHandlerRank"] for entry in info["CFBundleDocumentTypes"]} == {"Alternate"}
    assert all(entry["CFBundleTypeName"] for entry in info["CFBundleDocumentTypes"])


def test_markdown_has_the_extensions_that_the_importer_takes_for_it(info):
    [markdown] = info["UTImportedTypeDeclarations"]
    assert markdown["UTTypeIdentifier"] == "net.daringfireball.markdown"
    assert markdown["UTTypeConformsTo"] == ["public.plain-text"]
    tags = markdown["UTTypeTagSpecification"]
    assert tags["public.mime-type"] == ["text/markdown"]
    importer = (ROOT / "src" / "import" / "QuendoTextFileReader.h").read_text(encoding="utf-8")
    extensions = re.search(r"markdownExtensions = \{(.*?)\}", importer, re.S)[1]
    assert tags["public.filename-extension"] == re.findall(r'"(\w+)"', extensions)


def test_the_icon_is_made_by_the_build(build):
    icon = (build / "Quendo.icns").read_bytes()
    assert icon[:4] == b"icns" and int.from_bytes(icon[4:8], "big") == len(icon)


def test_the_sandbox_opens_only_for_the_users_files_and_the_network():
    entitlements = plistlib.loads((PACKAGING / "macos" / "Quendo.entitlements").read_bytes())
    assert entitlements == {
        "com.apple.security.app-sandbox": True,
        "com.apple.security.files.user-selected.read-write": True,
        "com.apple.security.network.client": True,
    }
