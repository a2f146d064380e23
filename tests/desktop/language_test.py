"""The interface language: initial choice, changes from the menu and the page, restarts."""

import configparser

import pytest

from harness import menu
from harness.probe import Probe, probed_page
from harness.program import NO_AUTOMATIC_CHECKS
from harness.waiting import wait_until


def bar_titles(quendo):
    bar = quendo.accessible().find("menu bar")
    return [one.name for one in bar.children() if one.role == "menu item"]


def wait_for_language(quendo, language):
    wait_until(lambda: bar_titles(quendo) == [one.title(language) for one in menu.BAR], 10,
               f"the menu bar in {language!r}", interval=0.1)


def stored(quendo):
    parser = configparser.ConfigParser()
    parser.optionxform = str
    parser.read(quendo.settings, encoding="utf-8")
    return parser.get("Strings", "QuendoLanguage", fallback=None)


def store(quendo, value):
    quendo.write_settings(f"[Strings]\nQuendoLanguage={value}\n\n{NO_AUTOMATIC_CHECKS}")


def choose_language(quendo, shown, language):
    """Chooses a language by its item; `shown` is the current language of the menu."""
    quendo.choose("Quendo", menu.LANGUAGE_TITLES[menu.LANGUAGES.index(shown)], menu.LANGUAGE_NAMES[language])


def assert_whole_menu(quendo, language):
    assert bar_titles(quendo) == [one.title(language) for one in menu.BAR]
    for entry in menu.BAR:
        shown = list(quendo.menu_items(entry.title(language)))
        names = [one for one in shown if one not in menu.LANGUAGE_NAMES.values()]
        assert names == [one.title(language) for one in entry.items], entry.title(language)


def ticked(quendo, language):
    """Which of the language items are ticked."""
    opened = quendo.open_menu("Quendo")
    opened.find_item(menu.LANGUAGE_TITLES[menu.LANGUAGES.index(language)]).act("click")
    items = [quendo.accessible().find("menu bar").find_item(name) for name in menu.LANGUAGE_NAMES.values()]
    found = [one.name for one in items if one.has("checked")]
    quendo.close_menu()
    quendo.close_menu()
    return found


@pytest.mark.parametrize("language", menu.LANGUAGES)
def test_every_text_of_the_menu_is_in_its_language(make_quendo, language):
    quendo = make_quendo()
    store(quendo, language)
    quendo.start()
    assert_whole_menu(quendo, language)
    assert ticked(quendo, language) == [menu.LANGUAGE_NAMES[language]]


def test_choosing_a_language_changes_menu_page_and_setting_and_lasts(make_quendo, installation, reporter):
    quendo = make_quendo(files=probed_page(installation, reporter)).start()
    quendo.wait_for_page()
    page = Probe(reporter)
    shown = "pt"
    for language, tag, search in (("es", "es", "Buscar notas"), ("en", "en", "Search notes"),
                                  ("pt", "pt-BR", "Buscar notas"), ("en", "en", "Search notes")):
        choose_language(quendo, shown, language)
        shown = language
        wait_for_language(quendo, language)
        page.wait_for(f"document.documentElement.lang === '{tag}'", f"the page in {language!r}")
        assert page.evaluate("document.getElementById('searchInput').placeholder") == search
        assert stored(quendo) == language
        assert quendo.command("changeLanguage") == (True, language)
    assert quendo.terminate() == 0

    quendo.start()
    wait_for_language(quendo, "en")
    page.wait_for("document.documentElement.lang === 'en'", "the page in the language of before")


def test_the_pages_own_switch_changes_the_menu_too(make_quendo, installation, reporter):
    quendo = make_quendo(files=probed_page(installation, reporter)).start()
    quendo.wait_for_page()
    page = Probe(reporter)
    page.evaluate("document.querySelector('.status .icon-button').click()")
    page.evaluate("document.querySelector('select.language').focus()")
    # By keyboard: open the list, go down one from Portuguese, confirm.
    quendo.press("Down")
    quendo.press("Return")
    if page.evaluate("document.querySelector('select.language').value") == "pt":
        quendo.press("Down", "Return")
    wait_for_language(quendo, "en")
    page.wait_for("document.documentElement.lang === 'en'")
    assert stored(quendo) == "en"
    assert quendo.command("changeLanguage") == (True, "en")


def test_a_language_that_the_page_makes_up_changes_nothing(make_quendo, installation, reporter):
    quendo = make_quendo(files=probed_page(installation, reporter)).start()
    quendo.wait_for_page()
    post = "window.webkit.messageHandlers.quendoLanguage.postMessage"
    reporter.run(f"for (const one of ['fr', 'EN', 'pt-BR', '', ' es', 1, null, ['es'], {{}}]) {post}(one)")
    # Messages arrive in order: when this one has arrived, the others have been handled.
    reporter.run(f"{post}('es')")
    wait_for_language(quendo, "es")
    assert stored(quendo) == "es"


LOCALES = [
    # LC_ALL, LC_MESSAGES, LANG, language
    (None, None, None, "pt"),
    ("C", None, "en_US.UTF-8", "pt"),
    (None, "POSIX", "es_ES.UTF-8", "pt"),
    (None, None, "C.UTF-8", "pt"),
    (None, None, "en_GB.UTF-8", "en"),
    (None, "es_MX.UTF-8", "en_US.UTF-8", "es"),
    ("en_US.UTF-8", "es_ES.UTF-8", "pt_BR.UTF-8", "en"),
    ("", "", "es_AR.UTF-8", "es"),
    (None, None, "fr_FR.UTF-8", "pt"),
    (None, None, "es", "es"),
    (None, None, "en@quot", "en"),
    (None, None, "eng_US.UTF-8", "pt"),
]


@pytest.mark.parametrize(("everything", "messages", "lang", "language"), LOCALES)
def test_the_locale_decides_the_first_language(make_quendo, everything, messages, lang, language):
    quendo = make_quendo()
    quendo.environment.pop("LANG")
    given = {"LC_ALL": everything, "LC_MESSAGES": messages, "LANG": lang}
    quendo.start(environment={name: value for name, value in given.items() if value is not None})
    wait_for_language(quendo, language)
    assert stored(quendo) is None


@pytest.mark.parametrize(("value", "language"), [("es", "es"), ("pt", "pt"), ("ES", "en"), ("pt-BR", "en")])
def test_a_stored_language_wins_over_the_locale_where_it_is_one(make_quendo, value, language):
    quendo = make_quendo()
    store(quendo, value)
    quendo.start(environment={"LC_ALL": "en_US.UTF-8"})
    wait_for_language(quendo, language)
    assert stored(quendo) == value
