"""The checks themselves, on a small made-up tree: one that cannot fail checks nothing."""

import pytest

import checks
import pages
import paths

FILES = {
    "README.md": "# Thing\n\n[how](docs/guide.md#how-it-works)\n\n## Parts\n\n| Folder | |\n|---|---|\n| `src/` | a |\n"
                 "| `docs/` | b |\n| `tests/` | c |\n| `bench/` | d |\n| `scripts/` | e |\n"
                 "| `web/` | f |\n| `packaging/` | g |\n",
    "docs/guide.md": "# Guide\n\n## How it works\n\nSee `src/app/Hub.cpp`.\n",
    "docs/testing.md": "# Testing\n\n| Part | |\n|---|---|\n| `unit` | x |\n| `web` | y |\n\n## More\n",
    "docs/benchmarks.md": "# Benchmarks\n\n## What is measured\n\n**Launch.** Long.\n\n**Page-save.** Short.\n",
    "docs/architecture.md": "# A\n\n```\nsrc/\n  app/      the hub\n  i18n/     texts\n  platform/ ports\n"
                            "    gtk/, cocoa/  back-ends\n```\n\n"
                            "## Ports\n\n| Port | |\n|---|---|\n| `Clock`, `Menu` | x |\n",
    "src/i18n/Translations.cpp": '{"Salvar como…", "Save As…", "x"}', "web/src/i18n/texts.ts": "['a', 'Export all', 'b']",
    "src/app/Hub.cpp": "class Hub { void openHub(); };  // open_hub\nconst char* name = \"state.json\";\n",
    "src/platform/Clock.h": "class Clock {\n};\nstruct Menu {\n};\n",
    "src/platform/gtk/main.cpp": 'argument == "--help"; getenv("QUENDO_TEST");\n',
    "src/platform/cocoa/main.mm": "",
    "tests/unit/Hub_test.cpp": "TEST(Hub, Opens) {}\nTEST_F(HubFixture, Opens) {}\n",
    "tests/fuzz/text_fuzz.cpp": "",
    "tests/desktop/smoke_test.py": "def test_a_note_is_saved():\n    pass\n",
    "tests/CMakeLists.txt": "add_executable(quendo_unit_tests a.cpp)\n",
    "test": "usage() {\n  cat <<'TEXT'\nusage: ./test [PART...]\n\n  unit    the core\n  web     the page\n"
            "              more of it\n"
            "TEXT\n}\n    -h | --help)\n    unit | web) parts+=(\"$a\") ;;\n((${#parts[@]})) || parts=(web unit)\n",
    "run": '"$root/build/run-pictures"\n',
    "bench/run": "  cat <<'TEXT'\n  launch    x\n  page-save y\n\n  --quick   z\nTEXT\nall=(launch page-save)\n",
    "bench/launch_bench.py": "", "bench/page_save_bench.cpp": "",
    "scripts/setup": "", "scripts/fuzz": "", "scripts/with-desktop": "",
    "web/package.json": '{"scripts": {"build": "x", "test": "node run.mjs tests/unit"}}',
    "web/build.mjs": "path.join(root, 'dist')", "web/src/text/fold.ts": "", "web/tests/unit/search.test.ts": "",
    "CMakePresets.json": '{"configurePresets": [{"name": "base", "hidden": true}, {"name": "release"}]}',
    "CMakeLists.txt": "project(quendo VERSION 1.1.0 LANGUAGES CXX)\n",
    "CHANGELOG.md": "# Changes\n\n## Unreleased\n\n## 1.1.0 - 2026-01-02\n\n## 1.0.0 - 2025-11-20\n",
    "packaging/com.quendo.Quendo.metainfo.xml.in": '<release version="1.1.0" date="2026-01-02"/>\n'
                                                '<release version="1.0.0" date="2025-11-20">\n',
    # What builds leave behind is no part of it.
    "build/release/notes.md": "`no/such.file`", "web/node_modules/x/README.md": "[x](y.md)",
}
ON_A_PAGE = (checks.links, checks.named_paths, checks.typed_commands, checks.variables, checks.options, checks.names)


@pytest.fixture
def make(tmp_path):
    def made(changed={}):
        """The tree with some files changed, or left out where there is None."""
        for path, text in (FILES | changed).items():
            if text is not None:
                (tmp_path / path).parent.mkdir(parents=True, exist_ok=True)
                (tmp_path / path).write_text(text)
        return pages.Tree(tmp_path)
    return made


def complaints(tree, text, path="docs/guide.md"):
    page = pages.Page(path, text)
    return [complaint for check in ON_A_PAGE for complaint in check(tree, page)]


def test_a_clean_tree_is_clean(make):
    tree = make()
    assert {page.path for page in tree.pages} == {path for path in FILES if path.endswith(".md")
                                                  and not path.startswith(("build/", "web/node_modules/"))}
    for page in tree.pages:
        assert complaints(tree, page.text, page.path) == []
    assert checks.table_of_parts(tree) == [] == checks.benchmarks_described(tree)
    assert checks.folders_of(pages.Page("README.md", FILES["README.md"]), "Parts", ".", tree) == []
    page = pages.Page("docs/architecture.md", FILES["docs/architecture.md"])
    assert checks.drawn_folders(tree, page) == [] == checks.ports(tree, page)
    assert checks.releases(tree) == []


def block(line):
    return f"```sh\n{line}\n```\n"


RIGHT = [
    "[a](../README.md) [b](#title) [c](https://quendo.example/x)\n\n# Title\n", "`src/app/`", "`../src/app/Hub.cpp`",
    "`Hub.cpp`", "`state.json`", "`src/*/Hub.cpp`", "`build/release/x`", "`build/run-pictures`", "`web/dist/x.html`",
    "`#tag/below`",
    "`~/.config/x.ini`", "`src/platform/Clock`",
    block("./test unit web # both"), "`./test --help`", block("bench/run --quick launch"), block("./run --help"),
    block("cmake --preset release && cmake --build build/release --target quendo_unit_tests"),
    block("npm --prefix web test -- search"), block("npm --prefix web run build"), block("scripts/fuzz 60 text"),
    block("build/release/bin/quendo_unit_tests --gtest_filter='Hub*'"), block("cp -a x y"),
    block("build/release/bin/quendo_unit_tests --gtest_filter='Hub.Opens'"),
    block("scripts/with-desktop /usr/bin/python3 -m pytest tests/desktop/smoke_test.py -k saved"),
    block("QUENDO_TEST=1 ./run"), "`--help`", "`openHub()`", "`open_hub`", "`Hub::openHub`", "`word`", "`pt-BR`",
    "``` `no/such.file` ```", "<!-- `no/such.file` -->", block("app=$(find build/release)"),
]
WRONG = [
    "[a](../READYOU.md)", "[a](#no-such)", "[a](../README.md#no-such)", "[a](../src/app/Hub.h)", "`src/app/Hob.cpp`",
    "`src/ap/`", "`Hob.cpp`", "`stat.json`", "`src/*/Hob.cpp`", "`build/releas/x`", "`dist/x.html`", "`web/out/x.html`", "`web/src/txt`",
    "`app/Hub.cpp`",
    block("./tset"), block("./test units"), "`./test desktop`", block("./test --all"), block("bench/run lunch"),
    block("bench/run --slow"), block("cmake --preset relase"), block("cmake --build build/relase"),
    block("cmake --build build/release --target quendo_tests"), block("npm --prefix web run bild"),
    block("npm --prefix web test -- serch"), block("npm --prefix wep test"), block("scripts/fuzz 60 txt"),
    block("scripts/setupp"), block("script/setup"), block("scripts/setup --all"),
    block("build/release/bin/quendo_tests"), block("build/debug/bin/quendo_unit_tests"),
    block("build/release/bin/quendo_unit_tests --gtest_filter='Hob*'"),
    block("build/release/bin/quendo_unit_tests --gtest_filter='Hu.Opens'"),
    block("scripts/with-desktop /usr/bin/python3 -m pytest tests/desktop/smoke_test.py -k lost"),
    block("/usr/bin/python3 -m pytest tests/desktop/smok_test.py"), block("./test unit && ./test units"),
    block("/usr/bin/python3 -m pytest tests/desktop/smoke_test.py::test_a_note"), block("node buld.mjs"),
    block("./run --halp"), "`quendo --halp`", "`QUENDO_TSET=1`", block("QUENDO_TSET=1 ./run"), "`--halp`", "`openHob()`",
    "`open_hob`", block("./test 'unit"), "    \n\n    ./test units\n",
    "1. so\n\n   ```sh\n   ./test units\n   ```\n",
]


@pytest.mark.parametrize("text", RIGHT)
def test_what_is_there_may_be_named(make, text):
    assert complaints(make(), text) == []


@pytest.mark.parametrize("text", WRONG)
def test_what_is_not_there_is_found(make, text):
    assert len(complaints(make(), text)) == 1


def test_two_headings_of_one_name_have_two_anchors():
    assert pages.Page("a.md", "# `A` b\n\n## A b\n\n```\n# No heading\n```\n").anchors == {"a-b", "a-b-1"}


@pytest.mark.parametrize("path, old, new", [
    ("docs/testing.md", "| `web` | y |\n", ""), ("docs/testing.md", "`web`", "`wep`"),
    ("docs/testing.md", "| `web` | y |", "| `web` | y |\n| `web` | z |"),
    ("test", "  web     the page", ""), ("test", "parts=(web unit)", "parts=(unit)"),
    ("test", "unit | web)", "unit | web | lint)"),
])
def test_a_part_that_is_not_described_everywhere_is_found(make, path, old, new):
    assert checks.table_of_parts(make({path: FILES[path].replace(old, new)}))


@pytest.mark.parametrize("path, old, new", [
    ("docs/benchmarks.md", "**Launch.** Long.", ""), ("docs/benchmarks.md", "Launch", "Lunch"),
    ("bench/run", "  launch    x\n", ""), ("bench/run", "all=(launch", "all=(launch memory"),
])
def test_a_benchmark_that_is_not_described_everywhere_is_found(make, path, old, new):
    assert checks.benchmarks_described(make({path: FILES[path].replace(old, new)}))


def test_a_benchmark_without_a_source_is_found(make):
    assert checks.benchmarks_described(make({"bench/launch_bench.py": None}))


@pytest.mark.parametrize("old, new", [("| `src/` | a |\n", ""), ("`docs/`", "`dogs/`")])
def test_a_table_without_a_folder_is_found(make, old, new):
    page = pages.Page("README.md", FILES["README.md"].replace(old, new))
    assert checks.folders_of(page, "Parts", ".", make())


@pytest.mark.parametrize("text, wrong", [("*Save As…*, *Export\nall*, **bold**, 2 * 3 * 4", 0), ("*Save as…*", 1),
                                         ("*Export*", 1)])
def test_a_text_that_the_interface_does_not_have_is_found(make, text, wrong):
    assert len(checks.labels(make(), pages.Page("README.md", text))) == wrong


@pytest.mark.parametrize("old, new", [("  app/      the hub\n", ""), ("app/ ", "apps/"), ("gtk/, cocoa/", "gtk/, mac/"),
                                      ("    gtk/", "  gtk/")])
def test_a_drawing_of_other_folders_is_found(make, old, new):
    assert checks.drawn_folders(make(), pages.Page("x.md", FILES["docs/architecture.md"].replace(old, new)))


def test_a_port_that_is_none_is_found(make):
    assert checks.ports(make(), pages.Page("x.md", FILES["docs/architecture.md"].replace("`Menu`", "`Manu`")))


@pytest.mark.parametrize("path, old, new", [
    ("CHANGELOG.md", "## 1.0.0 - 2025-11-20\n", ""), ("CHANGELOG.md", "2025-11-20", "2025-11-21"),
    ("CHANGELOG.md", "## 1.1.0 - 2026-01-02\n\n## 1.0.0 - 2025-11-20", "## 1.0.0 - 2025-11-20\n\n## 1.1.0 - 2026-01-02"),
    ("CHANGELOG.md", "## Unreleased", "## Soon"), ("CHANGELOG.md", "## Unreleased\n\n## 1.1.0 - 2026-01-02",
                                                   "## 1.1.0 - 2026-01-02\n\n## Unreleased"),
    ("CMakeLists.txt", "1.1.0", "1.2.0"),
    ("packaging/com.quendo.Quendo.metainfo.xml.in", '<release version="1.1.0" date="2026-01-02"/>', ""),
])
def test_releases_that_are_not_the_same_everywhere_are_found(make, path, old, new):
    assert checks.releases(make({path: FILES[path].replace(old, new)}))


def test_a_defence_without_a_test_is_found(make):
    table = "# S\n\n| What | Code | Shown by |\n|---|---|---|\n| A | `src/app/Hub.cpp` | %s |\n"
    assert checks.threats(make(), pages.Page("s.md", table % "`tests/unit/Hub_test.cpp`")) == []
    assert checks.threats(make(), pages.Page("s.md", table % "reading"))
    assert complaints(make(), table % "`tests/unit/Hob_test.cpp`")


def test_an_exception_that_is_not_needed_is_found(make, monkeypatch):
    monkeypatch.setattr(paths, "ELSEWHERE", {"docs/guide.md": {"share/x"}})
    tree = make()
    assert checks.unused_exceptions(tree)
    assert complaints(tree, "`share/x`") == []
