"""Starts on a system that lacks something: a window that takes and keeps text, or one clear sentence."""

import glob
import os
import shlex
import subprocess
from pathlib import Path

import pytest

from harness import desktop, writing
from harness.probe import Probe, probed_page
from harness.waiting import stays, wait_until

pytestmark = pytest.mark.never_retried

NOTHING = None  # A variable that is not set.


@pytest.fixture
def prepared(make_quendo, installation, reporter):
    """The real page in English: a program that is not started yet, and its page."""
    quendo = make_quendo(files=probed_page(installation, reporter))
    quendo.environment["LC_ALL"] = "en_US.UTF-8"
    return quendo, Probe(reporter)


def start(quendo, page, environment=None):
    for name, value in (environment or {}).items():
        if value is NOTHING:
            quendo.environment.pop(name, None)
        else:
            quendo.environment[name] = value
    loads = page.loads
    # Without a bus the program's commands cannot be asked for; its page can.
    quendo.start()
    page.wait_for_load(loads + 1)


def keeps_a_note(quendo, page, text="The first words"):
    writing.write(quendo, page, text)
    quendo.state.wait_for_text(text)


@pytest.fixture
def accessibility_bus():
    """An accessibility bus that programs find by way of the display, even without a session bus."""
    subprocess.run(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                    "--method", "org.a11y.Bus.GetAddress"], check=True, stdout=subprocess.DEVNULL, timeout=10)
    wait_until(lambda: "unix:" in desktop.run("xprop", "-root", "AT_SPI_BUS"), 10, "the bus to be on the display")


@pytest.mark.parametrize("address", [NOTHING, "unix:path=/nowhere/bus"], ids=["none", "dead"])
def test_without_a_session_bus_it_works_and_ends_well(prepared, accessibility_bus, address):
    quendo, page = prepared
    start(quendo, page, {"DBUS_SESSION_BUS_ADDRESS": address, "XDG_RUNTIME_DIR": NOTHING})
    keeps_a_note(quendo, page)
    # A window that goes does not take the program with it.
    quendo.press("ctrl+o")
    panel = wait_until(lambda: next((one for one in quendo.windows() if one.id != quendo.window.id), None), 10,
                       "the panel")
    wait_until(lambda: desktop.active_window() == panel.id, 10, "the panel to have the keyboard")
    quendo.press("Escape")
    wait_until(lambda: len(quendo.windows()) == 1, 10, "the panel to be gone")
    page.wait_for_editor()
    quendo.type(" and more")
    quendo.state.wait_for_text("The first words and more")
    assert quendo.terminate() == 0


SURROUNDINGS = {
    "no runtime directory": {"XDG_RUNTIME_DIR": NOTHING},
    "a runtime directory that is missing": {"XDG_RUNTIME_DIR": "/nowhere/run"},
    "a temporary directory that is missing": {"TMPDIR": "/nowhere/tmp"},
    "no locale": {"LC_ALL": NOTHING, "LANG": NOTHING},
    "the locale POSIX": {"LC_ALL": "POSIX"},
    "a locale that is unknown": {"LC_ALL": "xx_YY.UTF-8@nowhere"},
}


@pytest.mark.parametrize("surroundings", SURROUNDINGS)
def test_it_works_with(prepared, surroundings):
    quendo, page = prepared
    start(quendo, page, SURROUNDINGS[surroundings])
    keeps_a_note(quendo, page)
    assert quendo.terminate() == 0


def test_it_makes_a_home_that_is_missing(prepared):
    quendo, page = prepared
    home = quendo.home / "not" / "there"
    # The settings stay outside of it: they keep the program from looking for updates.
    start(quendo, page, {"HOME": str(home), "XDG_DATA_HOME": NOTHING, "XDG_CACHE_HOME": NOTHING,
                         "XDG_STATE_HOME": NOTHING})
    writing.write(quendo, page, "The first words")
    stored = home / ".local" / "share" / "Quendo" / "state-v1.json"
    wait_until(lambda: stored.exists() and "The first words" in stored.read_text(), 10, "the note on disk")
    assert quendo.terminate() == 0


@pytest.mark.parametrize("date", ["1970-01-01 00:00:10", "2099-12-31 23:59:50"])
def test_with_a_wrong_clock_it_works_and_goes_on_with_the_right_one(prepared, date):
    library = next(iter(glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")), None)
    if library is None:
        pytest.skip("libfaketime is not installed")
    quendo, page = prepared
    start(quendo, page, {"LD_PRELOAD": library, "FAKETIME": f"@{date}"})
    assert page.evaluate("new Date().getFullYear()") in (1970, 2099, 2100)
    keeps_a_note(quendo, page)
    assert quendo.terminate() == 0

    start(quendo, page, {"LD_PRELOAD": NOTHING, "FAKETIME": NOTHING})
    wait_until(lambda: page.rows() == ["The first words"], 10, "the note of before")
    keeps_a_note(quendo, page, "Later words")
    assert quendo.state.holds("The first words")
    assert quendo.terminate() == 0


@pytest.fixture
def bare_display(monkeypatch):
    """A display without a window manager, for the program and for the keys of the test."""
    reading, writing_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing_end), "-screen", "0", "1600x1000x24", "-nolisten",
                               "tcp"], pass_fds=[writing_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writing_end)
    with os.fdopen(reading) as file:
        monkeypatch.setenv("DISPLAY", f":{file.readline().strip()}")
    desktop.let_no_key_repeat()
    yield
    server.terminate()
    server.wait(10)


def test_without_a_window_manager_it_works(bare_display, prepared):
    quendo, page = prepared
    quendo.start(wait=False)
    page.wait_for_load(1)
    # Nobody gives it the keyboard; it is where the pointer is.
    desktop.run("xdotool", "mousemove", "800", "500")
    keeps_a_note(quendo, page)
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0


def test_an_ordinary_user_may_run_what_root_installed(prepared, tmp_path):
    if os.getuid() != 0:
        pytest.skip("these tests run as an ordinary user anyway")
    quendo, page = prepared
    for directory in [tmp_path, *tmp_path.parents]:
        if directory.stat().st_uid == 0 and not directory.stat().st_mode & 0o001:
            directory.chmod(directory.stat().st_mode | 0o011)
    subprocess.run(["chown", "-R", "65534:65534", quendo.home], check=True)
    quendo.launcher = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
    # Whether that user may sandbox the page is not the question here.
    quendo.arguments = ["--without-web-sandbox"]
    start(quendo, page, {"XDG_RUNTIME_DIR": NOTHING})
    keeps_a_note(quendo, page)
    assert quendo.state.primary.stat().st_uid == 65534
    assert quendo.terminate() == 0


def home_as(quendo, script):
    """The launcher of a program that finds its home as the script makes it; nobody else does."""
    if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode != 0:
        pytest.skip("this machine does not let a home of its own be mounted")
    return ["unshare", "--mount", "sh", "-ec", f'home={shlex.quote(str(quendo.home))}; {script}; cd "$home"; exec "$@"',
            "sh"]


def inside(quendo, script):
    subprocess.run(["nsenter", "--target", str(quendo.pid), "--mount", "sh", "-ec",
                    f"home={shlex.quote(str(quendo.home))}; {script}"], check=True, timeout=10)


def says_that_nothing_is_saved(quendo, page):
    writing.write(quendo, page, "Not yet on disk")
    page.wait_for("document.getElementById('saveState').dataset.state === 'failed'")
    wait_until(lambda: any("Your text is still here" in one for one in page.toasts()), 10, "a word about it")
    # Nobody's words are given up, not even when the session ends.
    os.kill(quendo.pid, 15)
    stays(lambda: quendo.running, 0.5, "the program")


def test_a_home_that_cannot_be_written_to_is_told_and_the_text_stays(prepared):
    quendo, page = prepared
    quendo.launcher = home_as(quendo, 'mount --bind "$home" "$home"; mount -o remount,bind,ro "$home"')
    start(quendo, page)
    says_that_nothing_is_saved(quendo, page)
    assert not quendo.state.directory.exists()
    inside(quendo, 'mount -o remount,bind,rw "$home"')
    quendo.state.wait_for_text("Not yet on disk")


def test_a_full_disk_is_told_and_the_text_stays(prepared):
    quendo, page = prepared
    quendo.launcher = home_as(
        quendo, 'disk=$(mktemp -d -p /tmp); mount -t tmpfs -o size=2m quendo-test "$disk"; cp -a "$home"/. "$disk";'
        'cat /dev/zero >"$disk/fill" 2>/dev/null || true; mount --move "$disk" "$home"; rmdir "$disk"')
    start(quendo, page)
    says_that_nothing_is_saved(quendo, page)
    inside(quendo, 'rm "$home/fill"')
    inside(quendo, f'until grep -q "Not yet on disk" {shlex.quote(str(quendo.state.primary))}; do sleep 0.1; done')


@pytest.fixture
def without_fonts(tmp_path):
    configuration = tmp_path / "fonts.conf"
    configuration.write_text('<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">'
                             f"<fontconfig><cachedir>{tmp_path}</cachedir></fontconfig>")
    return {"FONTCONFIG_FILE": str(configuration)}


def refusal(quendo, environment, language="en"):
    """The only line of Quendo's that a start leaves, after which it ends with the status of a start that cannot be."""
    quendo.environment["LC_ALL"] = f"{language}.UTF-8"
    for name, value in environment.items():
        quendo.environment.pop(name, None)
        if value is not NOTHING:
            quendo.environment[name] = value
    quendo.start(wait=False)
    assert quendo.wait_for_end() == 1
    assert not quendo.state.directory.exists()
    # The libraries complain of a language that the machine has not installed.
    lines = [one for one in quendo.output().splitlines() if "Quendo " in one]
    assert len(lines) == 1
    return lines[0]


NO_DISPLAY = {
    "pt": "O Quendo não encontrou nenhuma tela para abrir sua janela; inicie-o em uma sessão gráfica.",
    "en": "Quendo found no display to open its window on; start it in a graphical session.",
    "es": "Quendo no encontró ninguna pantalla para abrir su ventana; inícialo en una sesión gráfica.",
}


@pytest.mark.parametrize("language", NO_DISPLAY)
def test_without_a_display_it_says_so_in_the_users_language(make_quendo, language):
    assert refusal(make_quendo(), {"DISPLAY": NOTHING}, language) == NO_DISPLAY[language]


def test_a_display_that_is_gone_is_none(make_quendo):
    assert refusal(make_quendo(), {"DISPLAY": ":4711"}) == NO_DISPLAY["en"]


def test_without_fonts_it_says_so(make_quendo, without_fonts):
    assert refusal(make_quendo(), without_fonts) == (
        "Quendo found no font to show text with; install one, for example DejaVu Sans.")


def test_without_a_place_for_the_notes_it_says_so(make_quendo):
    assert refusal(make_quendo(), {"HOME": "here", "XDG_DATA_HOME": NOTHING}) == (
        "Quendo does not know where to keep your notes; set HOME or XDG_DATA_HOME.")
