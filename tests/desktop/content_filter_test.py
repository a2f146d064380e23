"""Where the compiled content filter rules for the page's files are stored."""

import os

from harness import process
from harness.waiting import wait_until

_LOAD = """
  const load = (url) => new Promise((resolve) => {
    const one = document.createElement('script');
    one.onload = () => resolve('read');
    one.onerror = () => resolve('refused');
    one.src = url;
    document.head.append(one);
  });
"""


def _reach(reporter, *urls):
    return [reporter.run(f"{_LOAD} return await load({url!r});") for url in urls]


def test_without_a_cache_the_rules_hold_and_nothing_is_taken_that_others_prepared(make_quendo, reporter):
    program = make_quendo(page=reporter.page(), files={"inside.js": "1"})
    outside = program.home / "outside.js"
    outside.write_text("1")
    runtime = program.home / "run"
    program.environment["XDG_RUNTIME_DIR"] = str(runtime)
    for directory in (runtime, program.home / ".cache"):
        directory.mkdir(mode=0o700)
        (directory / "Quendo").write_text("a file in the place of a directory")
    # Anyone may prepare these in the system's temporary directory.
    temporary = program.home / "tmp"
    prepared = temporary / "Quendo" / "content-filters"
    prepared.mkdir(parents=True)
    prepared.chmod(0o777)
    program.start()
    for load in (1, 2):
        reporter.wait_for_page(load)
        program.wait_for_page()
        assert _reach(reporter, "inside.js", outside.as_uri()) == ["read", "refused"]
        assert os.listdir(prepared) == []
        assert [name for name in os.listdir(temporary) if "filter" in name] == []
        # The compiled rules stay usable after their directory is gone, for other processes too.
        for pid in wait_until(program.web_processes, what="the page's process"):
            process.kill(pid)
    reporter.wait_for_page(3)
    assert program.terminate() == 0
