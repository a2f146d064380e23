"""What the installation tells a Linux desktop about the program, checked by the desktop's own tools."""

import configparser
import os
import re
import shutil
import struct
import subprocess
import xml.etree.ElementTree as ElementTree

import pytest

from conftest import ROOT

LANGUAGES = ("pt_BR", "es")
SIZES = (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)
# The identifier is older than the advice against capital letters, and notes are kept under it.
ALLOWED = "cid-contains-uppercase-letter"


@pytest.fixture(scope="module")
def share(installation):
    return installation.prefix / "share"


@pytest.fixture(scope="module")
def entry(share):
    parser = configparser.ConfigParser(interpolation=None, delimiters=["="])
    parser.optionxform = str
    parser.read(share / "applications" / "com.quendo.Quendo.desktop", encoding="utf-8")
    return parser["Desktop Entry"]


@pytest.fixture(scope="module")
def metainfo(share):
    return ElementTree.parse(share / "metainfo" / "com.quendo.Quendo.metainfo.xml").getroot()


def project_version():
    return re.search(r"^project\(quendo VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]


def test_the_desktop_entry_is_valid(share):
    done = subprocess.run(["desktop-file-validate", share / "applications" / "com.quendo.Quendo.desktop"],
                          capture_output=True, text=True)
    assert (done.returncode, done.stdout + done.stderr) == (0, "")


def test_the_metainfo_is_valid_to_the_pedantic(share):
    done = subprocess.run(["appstreamcli", "validate", "--pedantic", "--no-net",
                           share / "metainfo" / "com.quendo.Quendo.metainfo.xml"], capture_output=True, text=True)
    assert done.returncode == 0, done.stdout
    assert re.findall(r"^[EWIP]: [^ ]+ (\S+)", done.stdout, re.M) == [ALLOWED], done.stdout


def test_every_text_is_there_in_every_language(entry, metainfo):
    for language in LANGUAGES:
        for key in ("GenericName", "Comment", "Keywords"):
            assert entry[f"{key}[{language}]"] not in ("", entry[key]) or key == "Keywords"
    lang = "{http://www.w3.org/XML/1998/namespace}lang"
    for parent in metainfo.iter():
        for tag in ("summary", "p", "li", "caption"):
            found = [one.get(lang) for one in parent if one.tag == tag]
            assert all(found.count(language) == found.count(None) for language in LANGUAGES), (parent.tag, tag, found)


def test_entry_and_metainfo_agree(entry, metainfo):
    assert metainfo.findtext("launchable") == f"{metainfo.findtext('id')}.desktop"
    types = entry["MimeType"].rstrip(";").split(";")
    assert [one.text for one in metainfo.iter("mediatype")] == types and len(set(types)) == len(types)
    assert [one.text for one in metainfo.iter("category")] == entry["Categories"].rstrip(";").split(";")
    assert metainfo.findtext("name") == entry["Name"] and metainfo.findtext("summary") == entry["Comment"]


def test_the_newest_release_is_the_projects_version(metainfo):
    releases = metainfo.findall("releases/release")
    assert releases[0].get("version") == project_version()
    assert [one.get("date") for one in releases] == sorted((one.get("date") for one in releases), reverse=True)


def test_every_kind_of_the_save_panel_can_be_opened_from_the_desktop(share, entry, tmp_path):
    kinds = re.findall(r'{"[^"]+", "(\w+)"}', (ROOT / "src" / "export" / "SaveAsExtensions.h").read_text())
    assert len(kinds) == 23
    data = tmp_path / "data"
    shutil.copytree(share / "mime", data / "mime")
    subprocess.run(["update-mime-database", data / "mime"], check=True, capture_output=True)
    types = set(entry["MimeType"].rstrip(";").split(";"))
    for kind in kinds:
        file = tmp_path / f"note.{kind}"
        file.write_text("Words, and a few more of them.\n")
        done = subprocess.run(["gio", "info", "-a", "standard::content-type", file], check=True, capture_output=True,
                              text=True, env=os.environ | {"XDG_DATA_HOME": str(data), "LC_ALL": "C"})
        assert done.stdout.split()[-1] in types, kind


def test_videos_and_translations_that_end_like_typescript_stay_what_they_are(share, tmp_path):
    data = tmp_path / "data"
    shutil.copytree(share / "mime", data / "mime")
    subprocess.run(["update-mime-database", data / "mime"], check=True, capture_output=True)
    contents = {
        "video/mp2t": (b"\x47\x40\x00\x10" + bytes(184)) * 40,
        "text/vnd.trolltech.linguist": b'<?xml version="1.0"?>\n<!DOCTYPE TS>\n<TS version="2.1"></TS>\n',
        "text/x-typescript": b"const one: number = 1;\n",
    }
    for kind, content in contents.items():
        file = tmp_path / "file.ts"
        file.write_bytes(content)
        done = subprocess.run(["gio", "info", "-a", "standard::content-type", file], check=True, capture_output=True,
                              text=True, env=os.environ | {"XDG_DATA_HOME": str(data), "LC_ALL": "C"})
        assert done.stdout.split()[-1] == kind


def test_the_icon_is_there_in_all_sizes_and_in_one_colour(share):
    theme = share / "icons" / "hicolor"
    for size in SIZES:
        image = (theme / f"{size}x{size}" / "apps" / "com.quendo.Quendo.png").read_bytes()
        assert image[:8] == b"\x89PNG\r\n\x1a\n"
        assert struct.unpack(">II", image[16:24]) == (size, size)
    assert (theme / "scalable" / "apps" / "com.quendo.Quendo.svg").is_file()
    symbolic = (theme / "symbolic" / "apps" / "com.quendo.Quendo-symbolic.svg").read_text()
    assert set(re.findall(r'(?:fill|stroke)="([^"]+)"', symbolic)) == {"#2e3436"}


def linked_libraries():
    lines = (ROOT / "packaging" / "linked-libraries.txt").read_text().splitlines()
    return [re.split(r" {2,}", one) for one in lines if not one.startswith("#")]


def test_every_linked_library_is_listed_with_its_licence(installation):
    dynamic = subprocess.run(["readelf", "--wide", "--dynamic", installation.program], check=True, capture_output=True,
                             text=True, env=os.environ | {"LC_ALL": "C"}).stdout
    needed = re.findall(r"\(NEEDED\).*\[(.+)\]", dynamic)
    listed = [row[0] for row in linked_libraries()]
    assert needed
    for library in needed:
        assert [one for one in listed if library.startswith(f"{one}.so") or library.startswith(f"{one}-")], library
    for one in listed:
        assert [library for library in needed if library.startswith(one)], f"{one} is not linked"


def test_the_licences_of_libraries_and_page_are_installed_together(installation):
    build = os.environ.get("QUENDO_BUILD", ROOT / "build" / "release")
    licenses = (installation.prefix / "share" / "quendo" / "licenses.txt").read_text(encoding="utf-8")
    page = open(f"{build}/share/quendo/web/licenses.txt", encoding="utf-8").read()
    assert licenses.endswith(page) and len(page) > 10000
    for _, license, name in linked_libraries():
        assert f"\n{name} ({license})\n" in licenses


def test_the_project_has_one_version():
    page = (ROOT / "web" / "package.json").read_text(encoding="utf-8")
    assert '"version"' not in page and '"license"' not in page
