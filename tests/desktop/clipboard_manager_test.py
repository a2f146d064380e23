"""Copied text stays when the program ends, where the desktop has a clipboard manager."""

import subprocess
import sys
from pathlib import Path

import pytest

from harness import desktop
from harness.bridge import Bridge, bridge_page


@pytest.fixture
def clipboard_manager():
    tool = Path(__file__).parent / "tools" / "clipboard_manager.py"
    process = subprocess.Popen([sys.executable, tool], stdout=subprocess.PIPE, text=True)
    assert process.stdout.readline() == "ready\n"
    yield
    process.terminate()
    process.wait(10)


def test_a_copied_text_outlives_the_program_where_a_clipboard_manager_keeps_it(make_quendo, reporter,
                                                                               clipboard_manager):
    quendo = make_quendo(page=bridge_page(reporter)).start()
    reporter.wait_for_page()
    assert Bridge(reporter).answer("quendoClipboard", "'Kept for later: \u00e7\u00e3o'")[0] is True
    assert quendo.terminate() == 0
    assert desktop.clipboard() == "Kept for later: ção"
