"""What the installed program says of its options, its manual pages and the shells' completions all agree."""

import os
import re
import subprocess
from pathlib import Path

import pytest

from conftest import ROOT
from harness.installation import Installation

LANGUAGES = {"": "en_US", "pt_BR": "pt_BR", "es": "es_ES"}
# The name of a section in each language.
OPTIONS = {"": "OPTIONS", "pt_BR": "OPÇÕES", "es": "OPCIONES"}
STATUSES = {"": "EXIT STATUS", "pt_BR": "STATUS DE SAÍDA", "es": "ESTADO DE SALIDA"}
# Of the page in English; the others have as many, in the same order.
SECTIONS = ["NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "ENVIRONMENT", "FILES", "EXAMPLES", "SEE ALSO"]
VALUES = {"auto", "card", "processor"}


@pytest.fixture(scope="module")
def installation(tmp_path_factory):
    build = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
    return Installation.install(build, tmp_path_factory.mktemp("installation"))


def run(*command, language="C", **more):
    environment = {"PATH": os.environ["PATH"], "HOME": "/nonexistent", "LC_ALL": f"{language}.UTF-8", "MANROFFSEQ": ""}
    return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", check=True, env=environment,
                          timeout=60, **more)


@pytest.fixture(scope="module")
def helps(installation):
    """The help text by the language of its manual page."""
    return {one: run(installation.program, "--help", language=name).stdout for one, name in LANGUAGES.items()}


@pytest.fixture(scope="module")
def options(helps):
    """Names of the options that the program takes, as --help lists them."""
    found = re.findall(r"^  (--[a-z-]+)", helps[""], re.M)
    assert len(found) > 4 and len(found) == len(set(found))
    return found


def page_file(installation, language):
    return installation.prefix / "share" / "man" / language / "man1" / "quendo.1"


def section(installation, language, name):
    text = page_file(installation, language).read_text(encoding="utf-8")
    return re.search(rf"^\.SH {name}\n(.*?)(?=^\.SH |\Z)", text, re.M | re.S)[1]


def test_the_help_lists_the_same_in_every_language(helps, options):
    for text in helps.values():
        assert re.findall(r"^  (--[a-z-]+)", text, re.M) == options
        assert re.findall(r"^  (\d)  \S", text, re.M) == ["0", "1", "2"]
        assert VALUES <= set(re.findall(r"\w+", text))
        assert max(len(line) for line in text.splitlines()) <= 100
    assert len(set(helps.values())) == 3


@pytest.mark.parametrize("language", LANGUAGES)
def test_a_manual_page_describes_the_options_and_the_exit_statuses_of_the_help(installation, options, language):
    text = section(installation, language, OPTIONS[language]).replace("\\-", "-")
    described = re.findall(r"^\.TP\n\.BI? (--[a-z-]*)", text, re.M)
    assert described == [*options, "--"]
    assert VALUES <= set(re.findall(r"\w+", text))
    assert re.findall(r"^\.TP\n\.B (\d)$", section(installation, language, STATUSES[language]), re.M) == ["0", "1", "2"]
    # Elsewhere, too, no option is spelled that there is not.
    spelled = re.findall(r"(?<![\w-])--[a-z][a-z-]*", page_file(installation, language).read_text().replace("\\-", "-"))
    assert set(spelled) == set(options)


@pytest.mark.parametrize("language", LANGUAGES)
def test_a_manual_page_has_no_fault_and_all_sections(installation, language):
    page = page_file(installation, language)
    shown = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page)
    assert shown.stderr == "" and shown.stdout
    assert run("groff", "-k", "-ww", "-mandoc", "-b", "-z", page).stderr == ""
    assert re.search(r'"quendo - \w', run("lexgrog", page).stdout)
    found = re.findall(r"^\.SH (.*)", page.read_text(encoding="utf-8"), re.M)
    assert len(found) == len(SECTIONS) and (language or found == SECTIONS)


def test_the_manual_pages_have_the_version_and_the_date_of_the_release(installation):
    version = run(installation.program, "--version").stdout.split()[1]
    metainfo = (ROOT / "packaging" / "com.quendo.Quendo.metainfo.xml.in").read_text(encoding="utf-8")
    date = re.search(rf'<release version="{re.escape(version)}" date="([0-9-]+)"', metainfo)[1]
    for language in LANGUAGES:
        assert f'"{date}" "Quendo {version}"' in page_file(installation, language).read_text(encoding="utf-8")


def bash_completes(installation, line, directory):
    file = installation.prefix / "share" / "bash-completion" / "completions" / "quendo"
    words = line.split(" ")
    script = """
        . /usr/share/bash-completion/bash_completion
        . "$1"
        COMP_LINE=$2
        shift 2
        compopt() { :; }
        COMP_WORDS=("$@")
        COMP_CWORD=$(($# - 1))
        COMP_POINT=${#COMP_LINE}
        _quendo
        printf '%s\\n' "${COMPREPLY[@]}"
    """
    # As Readline does, which takes "=" for the end of a word.
    split = [one for word in words for one in (re.split("(=)", word) if "=" in word else [word])]
    return run("bash", "-c", script, "bash", file, line, *split, cwd=directory).stdout.split()


def test_bash_completes_the_options_their_values_and_files(installation, options, tmp_path):
    (tmp_path / "note.md").touch()
    found = bash_completes(installation, "quendo --", tmp_path)
    assert [one.rstrip("=") for one in found] == options
    assert [one for one in found if one.endswith("=")] == ["--rendering="]
    assert set(bash_completes(installation, "quendo --rendering=", tmp_path)) == VALUES
    assert bash_completes(installation, "quendo --rendering=c", tmp_path) == ["card"]
    assert bash_completes(installation, "quendo no", tmp_path) == ["note.md"]
    assert bash_completes(installation, "quendo -- --", tmp_path) == []


def test_zsh_is_told_the_options_and_their_values(installation, options):
    file = installation.prefix / "share" / "zsh" / "vendor-completions" / "_quendo"
    assert file.read_text().splitlines()[0] == "#compdef quendo"
    told = run("zsh", "-f", "-c", '_arguments() { print -rl -- "$@" }; . "$1"', "zsh", file).stdout.splitlines()
    assert told[0] == "-S"
    assert [re.match(r"(?:\([^)]*\))?(--[a-z-]+?)(?:=-)?\[", one)[1] for one in told[1:-1]] == options
    values = next(one for one in told if "--rendering" in one)
    assert set(re.findall(r"(\w+)\\:", values)) == VALUES
    assert told[-1] == "*:file:_files"


def fish_completes(installation, line, directory):
    file = installation.prefix / "share" / "fish" / "vendor_completions.d" / "quendo.fish"
    home = directory / "home"
    home.mkdir(exist_ok=True)
    out = run("env", f"HOME={home}", "fish", "--no-config", "-c", 'source $argv[1]; complete -C $argv[2]', file, line,
              cwd=directory).stdout
    return [one.split("\t")[0] for one in out.splitlines()]


def test_fish_completes_the_options_their_values_and_files(installation, options, tmp_path):
    (tmp_path / "note.md").touch()
    assert sorted({one.rstrip("=") for one in fish_completes(installation, "quendo --", tmp_path)}) == sorted(options)
    values = fish_completes(installation, "quendo --rendering=", tmp_path)
    assert {one.removeprefix("--rendering=") for one in values} == VALUES
    assert fish_completes(installation, "quendo no", tmp_path) == ["note.md"]
