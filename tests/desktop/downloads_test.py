"""A page cannot write files to the disk: downloads are discarded."""

import os

import pytest

from harness import desktop
from harness.waiting import stays

_HEAD = "<style>a { position: fixed; inset: 0; }</style>"


_IN_THE_BUNDLE = {"note.txt": "a canary in the bundle"}


def _files_with(directory, words):
    """Files below a directory with any of the words in their name or content."""
    found = []
    for parent, _, names in os.walk(directory):
        for name in names:
            path = os.path.join(parent, name)
            try:
                with open(path, "rb") as file:
                    content = file.read(1 << 20)
            except OSError:
                continue
            if any(word in name or word.encode() in content for word in words):
                found.append(path)
    return found


LINKS = {
    "a file in the bundle": "link.href = 'note.txt'; link.download = 'kept-canary.txt'",
    "a file in the bundle without a name": "link.href = 'note.txt'; link.download = ''",
    "a blob": "link.href = URL.createObjectURL(new Blob(['a canary in a blob'])); link.download = 'kept-canary.txt'",
    "a blob that cannot be shown": "link.href = URL.createObjectURL(new Blob(['a canary in a blob'],"
                                   " { type: 'application/octet-stream' })); link.download = 'kept-canary.bin'",
    "a data address": "link.href = 'data:text/plain,a canary in data'; link.download = 'kept-canary.txt'",
    "a file outside": "link.href = 'file:///etc/hostname'; link.download = 'kept-canary.txt'",
    "the web": "link.href = URL_OF_SERVER + '/canary'; link.download = 'kept-canary.txt'",
}


@pytest.mark.parametrize("kind", LINKS)
def test_a_clicked_download_writes_no_file(make_quendo, reporter, kind):
    reporter.files["/canary"] = "a canary on the web"
    program = make_quendo(page=reporter.page("<div id=place></div>", _HEAD), files=_IN_THE_BUNDLE).start()
    reporter.run(f"const link = document.createElement('a'); link.textContent = 'Keep';"
                 f"{LINKS[kind].replace('URL_OF_SERVER', repr(reporter.url))};"
                 "link.onmousedown = () => { report('clicked'); };"
                 "document.getElementById('place').replaceChildren(link);")
    # A click on a page that has not been drawn yet is lost.
    program.wait_until_still(0.3)
    _, _, width, height = desktop.geometry(program.window)
    desktop.click_in(program.window, width / 2, height / 2)
    reporter.wait_for("clicked")
    # The page may navigate to what it can display; nothing becomes a file or a window, even later.
    stays(lambda: [one.title for one in program.windows()] == ["Quendo"], 0.6, "one window")
    assert _files_with(program.home, ["kept-canary", "a canary"]) == []
    assert "/canary" not in reporter.requests()
    assert program.running
