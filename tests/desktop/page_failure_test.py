"""The web process dies, or the page cannot be loaded."""

import subprocess
from pathlib import Path

import pytest

from harness import process
from harness.waiting import stays, wait_until

pytestmark = pytest.mark.never_retried

READ_FAULT = Path(__file__).parent / "tools" / "read_fault.c"
RECOVERED = "Interface recuperada · suas notas foram restauradas"
DELIVERY_FAILED = "A interface não conseguiu criar as abas. Os arquivos continuam aguardando no Quendo."


def kill_page(quendo):
    for pid in wait_until(quendo.web_processes, what="the page's process"):
        process.kill(pid)


def test_a_page_killed_ten_times_in_a_row_comes_back_with_its_state_and_one_toast_each(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.showToast = (text) => report('toast', text);
        window.quendoNativeSaveDidFinish = (success, revision) => report('saved', revision);
        report('state', window.__QUENDO_NATIVE_STATE__);
        </script>""")).start()
    for round_ in range(1, 11):
        reporter.wait_for_page(round_)
        quendo.wait_for_page()
        reporter.run(f"""webkit.messageHandlers.quendoState.postMessage(
            {{ serialized: '{{"n":{round_}}}', revision: {round_} }});""")
        reporter.wait_for("saved", round_)
        kill_page(quendo)
        assert reporter.wait_for("state", round_ + 1, timeout=20) == {"n": round_}
        assert reporter.wait_for("toast", round_, timeout=20) == RECOVERED
    stays(lambda: len(reporter.reports("toast")) == 10, 0.5, "no further toast")
    assert quendo.terminate() == 0


def test_a_save_under_way_when_the_page_dies_is_in_the_page_that_follows(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        report('state', window.__QUENDO_NATIVE_STATE__ ? __QUENDO_NATIVE_STATE__.text.length : 0);
        </script>""")).start()
    reporter.wait_for_page()
    quendo.wait_for_page()
    reporter.run("""webkit.messageHandlers.quendoState.postMessage(
        { serialized: JSON.stringify({ revision: 1, text: 'x'.repeat(30000000) }), revision: 1 });""")
    # The message has left the page once the command is answered, however much of it has been written.
    kill_page(quendo)
    assert reporter.wait_for("state", 2, timeout=30) in (0, 30000000)
    if reporter.reports("state")[1] == 0:
        assert quendo.state.text() is None, "the document was on disk and the page was not given it"


def test_typing_goes_on_in_the_real_page_after_its_process_died(quendo):
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("Before the crash.")
    quendo.state.wait_for_text("Before the crash.")
    kill_page(quendo)
    wait_until(lambda: not quendo.command("newNote")[0], what="the page to be away")
    quendo.wait_for_page()
    quendo.press("ctrl+n")
    quendo.type("After it.")
    quendo.press("ctrl+q")
    assert quendo.wait_for_end() == 0
    assert quendo.state.holds("Before the crash.") and quendo.state.holds("After it.")


def test_a_page_killed_while_it_prepares_to_quit_cancels_the_quit(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoPrepareForTermination = () => { report('asked'); for (;;) {} };
        </script>""")).start()
    reporter.wait_for_page()
    quendo.press("ctrl+q")
    reporter.wait_for("asked")
    kill_page(quendo)
    quendo.dismiss_alert("Não foi possível preparar o rascunho para gravação. Nada foi fechado.",
                         "Continuar editando")
    reporter.wait_for_page(2)
    reporter.run("window.quendoPrepareForTermination = () => ({ serialized: '{\"again\":1}', revision: 1 });")
    assert quendo.terminate() == 0
    assert quendo.state.document() == {"again": 1}


def test_files_whose_delivery_was_cut_by_the_pages_death_are_delivered_once_to_the_next(make_quendo, reporter,
                                                                                        tmp_path):
    quendo = make_quendo(page=reporter.page(head="""<script>
        window.quendoOpenNativeFiles = (files) => {
          report('delivered', files.map((file) => file.name));
          return window.__QUENDO_NATIVE_STATE__ ? files.length : new Promise(() => {});
        };
        </script>"""))
    (tmp_path / "a.md").write_text("A")
    quendo.start(tmp_path / "a.md")
    reporter.wait_for("delivered")
    reporter.run("""webkit.messageHandlers.quendoState.postMessage({ serialized: '{"n":1}', revision: 1 });""")
    wait_until(lambda: quendo.state.revision is not None and quendo.state.text(), what="the state to be saved")
    kill_page(quendo)
    assert reporter.wait_for("delivered", 2, timeout=20) == ["a.md"]
    quendo.dismiss_alert(DELIVERY_FAILED, "OK")
    stays(lambda: len(reporter.reports("delivered")) == 2, 0.7, "no third delivery")


@pytest.mark.parametrize("missing, message", [
    ("web/index.html", "Falha ao carregar a interface: "),
    (".", "Os recursos do aplicativo não foram encontrados."),
])
def test_a_page_that_cannot_be_loaded_ends_with_the_fatal_alert(make_quendo, reporter, missing, message):
    quendo = make_quendo(page=reporter.page())
    resources = quendo.installation.program.parent.parent / "share" / "quendo"
    if missing == ".":
        resources.rename(resources.with_name("elsewhere"))
    else:
        (resources / missing).unlink()
    quendo.start(environment={"LANG": "en_US.UTF-8"}, wait=False)
    quendo.wait_for_alert("Quendo Could Not Start", "OK")
    accessible = quendo.accessible()
    assert [one for one in accessible.find_all("label") if one.name.startswith(message)], accessible.tree()
    quendo.press("Return")
    assert quendo.wait_for_end() == 0


def test_a_page_that_cannot_be_read_to_its_end_ends_with_the_fatal_alert(make_quendo, reporter, tmp_path):
    fault = tmp_path / "read_fault.so"
    subprocess.run(["g++", "-xc", "-shared", "-fPIC", "-o", fault, READ_FAULT, "-ldl"], check=True)
    page = reporter.page(head="<script>report('began');</script>", body="<p>word</p>" * 200_000)
    quendo = make_quendo(page=page)
    quendo.start(wait=False, environment={"LANG": "en_US.UTF-8", "LD_PRELOAD": str(fault),
                                          "QUENDO_TEST_FAULTY_FILE": str(quendo.installation.web / "index.html"),
                                          "QUENDO_TEST_FAULT_AFTER": "1000000"})
    reporter.wait_for("began")
    quendo.wait_for_alert("Quendo Could Not Start", "OK")
    accessible = quendo.accessible()
    assert [one for one in accessible.find_all("label") if one.name.startswith("Falha ao abrir a interface: ")], (
        accessible.tree())
    quendo.press("Return")
    assert quendo.wait_for_end() == 0


def test_a_page_that_closes_itself_is_still_there_and_can_save(make_quendo, reporter):
    quendo = make_quendo(page=reporter.page()).start()
    reporter.wait_for_page()
    # The engine blocks the network for such a page.
    reporter.post("close(); setTimeout(() => webkit.messageHandlers.quendoState.postMessage("
                  "{ serialized: '{\"after\":\"closing\"}', revision: 1 }), 300);")
    quendo.state.wait_for_text("closing")
    assert [one.title for one in quendo.windows()] == ["Quendo"]
    assert quendo.running
