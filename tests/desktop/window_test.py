"""The window: title, size and position, and what the window commands do."""

import subprocess

import pytest

from harness import desktop
from harness.recording import Journal, recording_page
from harness.waiting import stays, wait_until

SCREEN = (1600, 1000)


@pytest.fixture
def recorded(make_quendo, reporter):
    """(program, journal) with the recording page."""
    quendo = make_quendo(page=recording_page(reporter)).start()
    quendo.wait_for_page()
    journal = Journal(reporter, quendo)
    journal.clear()
    return quendo, journal


@pytest.fixture
def other_window():
    """A window of another program."""
    process = subprocess.Popen(["xmessage", "-title", "Another program", "-buttons", "", "Something else"],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        yield wait_until(lambda: next((one for one in desktop.windows() if one.title == "Another program"), None),
                         10, "the window of another program")
    finally:
        process.terminate()
        process.wait(10)


def is_maximised(window):
    return "MAXIMIZED_VERT" in desktop.window_property(window, "_NET_WM_STATE")


def resize(window, width, height):
    desktop.run("wmctrl", "-i", "-r", hex(window.id), "-e", f"0,-1,-1,{width},{height}")


def test_it_opens_centred_at_its_size_every_time(make_quendo):
    quendo = make_quendo().start()
    for _ in range(2):
        x, y, width, height = desktop.geometry(quendo.window)
        assert (width, height) == (1320, 820)
        # The title bar above may shift it by half its height.
        assert abs(x + width / 2 - SCREEN[0] / 2) <= 16
        assert abs(y + height / 2 - SCREEN[1] / 2) <= 16
        resize(quendo.window, 1000, 700)
        wait_until(lambda: desktop.geometry(quendo.window)[2:] == (1000, 700), 10, "the new size")
        quendo.wait_for_page()
        assert quendo.terminate() == 0
        quendo.start()


def test_it_does_not_become_smaller_than_its_least_size(make_quendo):
    quendo = make_quendo().start()
    resize(quendo.window, 300, 200)
    wait_until(lambda: desktop.geometry(quendo.window)[2:] == (880, 600), 10, "the least size")


def test_the_minimising_key_hides_it_and_a_second_start_brings_it_back(recorded):
    quendo, journal = recorded
    window = quendo.window
    desktop.press("ctrl+m")
    wait_until(lambda: desktop.is_minimised(window), 10, "the window to be minimised")
    assert quendo.start_another() in (0, 2)
    wait_until(lambda: not desktop.is_minimised(window), 10, "the window to be back")
    wait_until(lambda: desktop.active_window() == window.id, 10, "the window to have the focus")
    wait_until(journal.has_keyboard, 10, "the page to have the keyboard again")
    journal.expect(())


@pytest.mark.parametrize(("menu", "item"), [("Quendo", "Ocultar Quendo"), ("Janela", "Minimizar")])
def test_minimising_items_hide_it(recorded, menu, item):
    quendo, _ = recorded
    window = quendo.window
    quendo.choose(menu, item)
    wait_until(lambda: desktop.is_minimised(window), 10, "the window to be minimised")


def test_zoom_maximises_and_restores(recorded):
    quendo, _ = recorded
    before = desktop.geometry(quendo.window)
    quendo.choose("Janela", "Zoom")
    wait_until(lambda: is_maximised(quendo.window), 10, "the window to be maximised")
    quendo.choose("Janela", "Zoom")
    wait_until(lambda: desktop.geometry(quendo.window) == before, 10, "the window to be as before")


def test_hide_others_hides_others_only(recorded, other_window):
    quendo, _ = recorded
    quendo.focus()
    quendo.choose("Quendo", "Ocultar Outros")
    wait_until(lambda: desktop.is_minimised(other_window), 10, "the other window to be minimised")
    stays(lambda: not desktop.is_minimised(quendo.window), 0.3, "our own window")


def test_about_opens_and_closes(recorded):
    quendo, _ = recorded
    quendo.choose("Quendo", "Sobre o Quendo")
    wait_until(lambda: len(quendo.windows()) == 2, 10, "the About window")
    desktop.press("Escape")
    wait_until(lambda: len(quendo.windows()) == 1, 10, "the About window to be gone")
    wait_until(lambda: desktop.active_window() == quendo.window.id, 10, "the main window to have the focus")


def test_about_opens_once_more_after_it_was_closed(recorded):
    quendo, _ = recorded
    for _ in range(2):
        quendo.choose("Quendo", "Sobre o Quendo")
        about = wait_until(lambda: next((one for one in quendo.windows() if one.id != quendo.window.id), None), 10,
                           "the About window")
        desktop.run("wmctrl", "-i", "-c", hex(about.id))
        wait_until(lambda: len(quendo.windows()) == 1, 10, "the About window to be gone")
    assert quendo.running


@pytest.mark.parametrize("key", ["ctrl+q", "ctrl+shift+w"])
def test_quitting_keys_end_the_program(recorded, key):
    quendo, _ = recorded
    desktop.press(key)
    assert quendo.wait_for_end() == 0


@pytest.mark.parametrize(("menu", "item"), [("Quendo", "Sair do Quendo"), ("Janela", "Fechar janela")])
def test_quitting_items_end_the_program(recorded, menu, item):
    quendo, _ = recorded
    quendo.choose(menu, item)
    assert quendo.wait_for_end() == 0


def test_the_close_button_ends_the_program(recorded):
    quendo, _ = recorded
    desktop.run("wmctrl", "-i", "-c", hex(quendo.window.id))
    assert quendo.wait_for_end() == 0


@pytest.mark.parametrize("language", ["pt", "en", "es"])
def test_a_command_that_the_page_lacks_says_so_in_the_page(make_quendo, reporter, language):
    said = {"pt": "A ação não pôde ser concluída", "en": "The action could not be completed",
            "es": "No se pudo completar la acción"}
    quendo = make_quendo(page=recording_page(reporter, without=("createNote", "quendoReopenClosedTab")))
    quendo.start(environment={"LC_ALL": f"{language}_XX.UTF-8"}).wait_for_page()
    journal = Journal(reporter, quendo)
    journal.clear()
    # The second one is called with "?.", so its absence is no error.
    desktop.press("ctrl+shift+t", "ctrl+n")
    journal.expect((f"showToast {said[language]}",))


def test_a_language_that_the_page_does_not_know_of_is_no_error(make_quendo, reporter):
    quendo = make_quendo(page=recording_page(reporter, without=("quendoSetLanguage",))).start()
    quendo.wait_for_page()
    journal = Journal(reporter, quendo)
    quendo.choose("Quendo", "Idioma", "Español")
    wait_until(lambda: quendo.command("changeLanguage") == (True, "es"), 10, "the tick at Español")
    journal.clear()
    journal.expect(())
