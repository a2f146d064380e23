"""Quitting loses nothing that was typed, however it is requested; any failure cancels it."""

import signal
import subprocess

import pytest

from harness import desktop, process
from harness.waiting import stays, wait_until

pytestmark = pytest.mark.never_retried

PAGE_TOO_SLOW = "O editor não respondeu a tempo. O Quendo permaneceu aberto para não perder seu texto."
PAGE_FAILED = "Não foi possível preparar o rascunho para gravação. Nada foi fechado."
STORE_FAILED = "Não foi possível gravar o rascunho no disco. Libere espaço e tente novamente."

ENTRY_POINTS = {
    "key": lambda quendo: quendo.press("ctrl+q"),
    "menu item": lambda quendo: quendo.choose("Quendo", "Sair do Quendo"),
    "close item": lambda quendo: quendo.choose("Janela", "Fechar janela"),
    "close key": lambda quendo: quendo.press("ctrl+shift+w"),
    "close button": lambda quendo: desktop.close(quendo.window),
}


def preparing(reporter, body):
    """A test page that answers a quit with the given function body."""
    return reporter.page(head=f"""<script>
        window.quendoPrepareForTermination = () => {{ report('asked'); {body} }};
        window.quendoTerminationDidCancel = () => report('cancelled');
        </script>""")


def dismiss_alert(quendo, message, button="Continuar editando"):
    """Waits for the alert that says why the quit was cancelled, and presses its button."""
    quendo.dismiss_alert(message, button)


@pytest.mark.parametrize("entry_point", [
    pytest.param(one, marks=[pytest.mark.every_display] if one in ("key", "close button") else [])
    for one in ENTRY_POINTS])
def test_what_was_typed_just_before_quitting_is_there_again(quendo, entry_point):
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Typed, and gone at once.")
    ENTRY_POINTS[entry_point](quendo)
    assert quendo.wait_for_end() == 0
    assert quendo.state.holds("Typed, and gone at once.")


def test_a_page_that_never_answers_cancels_the_quit_after_five_seconds(make_quendo, reporter):
    quendo = make_quendo(page=preparing(reporter, "for (;;) {}")).start()
    reporter.wait_for_page()
    process.kill(quendo.pid, signal.SIGTERM)
    dismiss_alert(quendo, PAGE_TOO_SLOW)
    assert quendo.running
    quendo.kill()


def test_an_answer_after_six_seconds_is_ignored(make_quendo, reporter):
    late = """const end = Date.now() + 6000; while (Date.now() < end) {}
              return { serialized: '{"late":true}', revision: 9 };"""
    quendo = make_quendo(page=preparing(reporter, late)).start()
    reporter.wait_for_page()
    process.kill(quendo.pid, signal.SIGTERM)
    dismiss_alert(quendo, PAGE_TOO_SLOW)
    reporter.wait_for("cancelled")
    stays(lambda: quendo.running and quendo.state.text() is None, 1.0, "nothing to be saved for it")
    quendo.kill()


@pytest.mark.parametrize("answer", ["return Promise.resolve({ serialized: '{}' });", "return '{}';",
                                    "return { serialized: 5 };", "throw new Error('no');", "return;"])
def test_an_answer_that_cannot_be_used_cancels_the_quit_at_once(make_quendo, reporter, answer):
    quendo = make_quendo(page=preparing(reporter, answer)).start()
    reporter.wait_for_page()
    process.kill(quendo.pid, signal.SIGTERM)
    dismiss_alert(quendo, PAGE_FAILED)
    reporter.wait_for("cancelled")
    assert quendo.running and quendo.state.text() is None
    quendo.kill()


@pytest.mark.parametrize("language, title, button", [("pt_BR.UTF-8", "O Quendo não fechou", "Continuar editando"),
                                                     ("en_US.UTF-8", "Quendo Did Not Quit", "Continue Editing"),
                                                     ("es_ES.UTF-8", "Quendo no se cerró", "Continuar editando")])
def test_the_cancel_alert_speaks_the_interface_language_around_its_message(make_quendo, reporter, language, title,
                                                                           button):
    quendo = make_quendo(page=preparing(reporter, "return 0;")).start(environment={"LANG": language})
    reporter.wait_for_page()
    process.kill(quendo.pid, signal.SIGTERM)
    quendo.dismiss_alert(title, PAGE_FAILED, button)
    quendo.kill()


def test_a_second_quit_during_an_attempt_changes_nothing(make_quendo, reporter):
    slow = """const end = Date.now() + 2000; while (Date.now() < end) {}
              return { serialized: '{"kept":true}', revision: 1 };"""
    quendo = make_quendo(page=preparing(reporter, slow)).start()
    reporter.wait_for_page()
    for which in (signal.SIGTERM, signal.SIGTERM, signal.SIGINT):
        process.kill(quendo.pid, which)
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0
    assert len(reporter.reports("asked")) == 1
    assert quendo.state.document() == {"kept": True}


@pytest.mark.every_display
def test_a_quit_that_the_disk_refuses_leaves_the_editor_as_it_was(make_quendo):
    quendo = make_quendo()
    quendo.data.mkdir(parents=True, exist_ok=True)
    quendo.state.directory.write_text("a file where the directory should be")
    quendo.start().wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("left right")
    quendo.press(*["Left"] * 5)
    quendo.press("ctrl+q")
    dismiss_alert(quendo, STORE_FAILED)
    # The caret is still between the words, and the editor has the focus.
    wait_until(lambda: desktop.active_window() == quendo.window.id, what="the window to have the focus again")
    quendo.type("and ")
    quendo.state.directory.unlink()
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0
    assert quendo.state.holds("left and right")


def test_a_full_disk_cancels_the_quit_and_keeps_the_document_on_it(make_quendo, reporter):
    page = reporter.page(head="""<script>
        window.kept = '{"revision":1,"text":"' + 'k'.repeat(50000) + '"}';
        window.large = '{"revision":2,"text":"' + 'x'.repeat(400000) + '"}';
        window.quendoNativeSaveDidFinish = (success) => report('saved', success);
        window.quendoPrepareForTermination = () => ({ serialized: large, revision: 2 });
        </script>""")
    quendo = make_quendo(page=page)
    quendo.state.directory.mkdir(parents=True)
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "quendo-test", quendo.state.directory],
                             capture_output=True)
    if mounted.returncode != 0:
        pytest.skip("this machine does not let a small file system be mounted")
    try:
        quendo.start()
        reporter.run("webkit.messageHandlers.quendoState.postMessage({ serialized: kept, revision: 1 });")
        assert reporter.wait_for("saved") is True
        process.kill(quendo.pid, signal.SIGTERM)
        dismiss_alert(quendo, STORE_FAILED)
        assert quendo.state.revision() == 1
        assert [one for one in quendo.state.names() if "tmp" in one] == []
        quendo.kill()
        assert quendo.state.document()["text"] == "k" * 50000
    finally:
        quendo.stop()
        subprocess.run(["umount", quendo.state.directory], check=True)
