"""The checker itself, on small made-up trees: a rule that cannot fail checks nothing."""

import pytest

import checker
import diagram


def test_a_clean_tree_is_clean(tmp_path):
    tree = {
        "platform/Port.h": "#include <string>\n",
        "text/Trim.h": '#include "platform/Port.h"\n',
        "store/Store.h": '#include <mutex>\n#include "platform/Port.h"\n#include "text/Trim.h"\n',
        "menu/Menu.h": '#include "store/Store.h"\n',
        "app/App.h": '#include "menu/Menu.h"\n#include "platform/Site.h"\n',
        "platform/Site.h.in": "",
        "files/Write.h": '#include "text/Trim.h"\n',
        "platform/posix/Thread.h": '#include <thread>\n#include "app/App.h"\n',
        "platform/gtk/web/View.cpp": '#include <webkit/webkit.h>\n#include "platform/posix/Thread.h"\n',
        "platform/gtk/main.cpp": '#include <gtkmm.h>\n#include <thread>\n#include "app/App.h"\n',
    }
    for name, text in tree.items():
        (tmp_path / name).parent.mkdir(parents=True, exist_ok=True)
        (tmp_path / name).write_text(text)
    files = checker.sources(tmp_path)
    assert set(files) == set(tree)
    for rule in (checker.misplaced, checker.wrong_way, checker.unresolved, checker.circles,
                 checker.toolkit_in_core, checker.outside_ports):
        assert rule(files) == [], rule.__name__


@pytest.mark.parametrize("path, include", [
    ("platform/Port.h", "text/Trim.h"),
    ("platform/Port.h", "platform/gtk/Thing.h"),
    ("text/Trim.h", "i18n/Language.h"),
    ("store/Store.h", "bridge/Bridge.h"),
    ("store/Store.h", "menu/Menu.h"),
    ("menu/Menu.cpp", "update/Update.h"),
    ("update/Update.h", "app/App.h"),
    ("app/App.cpp", "platform/gtk/Thing.h"),
    ("platform/gtk/Thing.h", "platform/cocoa/Other.h"),
    ("platform/gtk/web/Thing.h", "platform/cocoa/web/Other.h"),
    ("platform/posix/Thing.h", "platform/gtk/Other.h"),
    ("files/Write.h", "store/Store.h"),
])
def test_the_wrong_way_is_found(path, include):
    for form in ('#include "%s"\n', "#include <%s>\n", '  #  include "%s"\n', '#import "%s"\n'):
        assert len(checker.wrong_way({path: form % include})) == 1, form


def test_a_commented_include_is_none():
    text = '// #include "app/App.h"\n/*\n#include "app/App.h"\n*/\n'
    assert checker.wrong_way({"text/Trim.h": text}) == []


def test_a_file_outside_the_plan_is_found():
    assert checker.misplaced({"util/Misc.h": "", "Loose.h": "", "text/Trim.h": ""}) == [
        "util/Misc.h is in no folder of the plan", "Loose.h is in no folder of the plan"]


def test_an_include_that_is_not_from_the_root_is_found():
    files = {"text/Trim.h": "", "text/Trim.cpp": '#include "Trim.h"\n'}
    assert checker.unresolved(files) == ['text/Trim.cpp includes "Trim.h", which is no file of the sources']


def test_circles_are_found():
    files = {"text/A.h": '#include "text/B.h"\n', "text/B.h": '#include "text/C.h"\n',
             "text/C.h": '#include "text/A.h"\n', "text/D.h": '#include "text/A.h"\n'}
    assert checker.circles(files) == ["text/A.h -> text/B.h -> text/C.h -> text/A.h"]
    assert checker.circles({"text/A.h": '#include "text/A.h"\n'}) == ["text/A.h -> text/A.h"]
    files["text/C.h"] = ""
    assert checker.circles(files) == []


@pytest.mark.parametrize("header", ["gtkmm.h", "gtkmm/window.h", "glib.h", "glibmm/main.h", "gio/gio.h",
                                    "webkit/webkit.h", "jsc/jsc.h", "libsoup/soup.h", "X11/Xlib.h",
                                    "AppKit/AppKit.h", "Foundation/Foundation.h"])
def test_toolkit_headers_are_found_in_the_core(header):
    text = f"#include <{header}>\n"
    for path in ("app/App.cpp", "platform/Port.h", "platform/posix/Thing.cpp"):
        assert len(checker.toolkit_in_core({path: text})) == 1
    assert checker.toolkit_in_core({"platform/gtk/Thing.cpp": text}) == []


@pytest.mark.parametrize("line", [
    "#include <thread>", "#include <fstream>", "#include <filesystem>", "#include <mutex>", "#include <unistd.h>",
    "#include <sys/stat.h>", "#include <random>",
    "std::jthread worker;", "std::this_thread::yield();", "auto now = std::chrono::steady_clock::now();",
    'auto home = std::getenv("HOME");', "usleep(1);", "sleep(1);", '::open("x", 0);',
    'std::ofstream out("x");', 'auto* file = std::fopen("x", "r");', "std::random_device device;", "int n = rand();",
    "auto t = time(nullptr);", "auto t = std::time(nullptr);",
])
def test_the_world_outside_ports_is_found(line):
    assert len(checker.outside_ports({"update/Check.cpp": line + "\n"})) == 1
    assert checker.outside_ports({"platform/gtk/Check.cpp": line + "\n"}) == []


@pytest.mark.parametrize("line", [
    "// std::thread is the back-end's", "/* getenv\n open(1) */", 'say("std::getenv(x)");', "panel.open(url);", "void open(bool object) {", "Scanner::open(true);",
    "panel->open(url);", "void runOpenPanel();", "reopen(tab);", "std::chrono::milliseconds delay;",
    "runtime(1);", 'R"(getenv)"; int a = 1\'000\'000;', "char quote = '\"'; int b; char other = '\"';",
])
def test_what_only_looks_like_it_is_not(line):
    assert checker.outside_ports({"update/Check.cpp": line + "\n"}) == []


def test_the_lock_is_the_stores():
    assert checker.outside_ports({"store/Store.h": "#include <mutex>\n"}) == []
    assert len(checker.outside_ports({"app/App.h": "#include <mutex>\n"})) == 1


def test_lines_keep_their_numbers():
    text = '/* two\nlines */\nauto text = R"x(\n)x";\nsleep(1);\n'
    assert checker.outside_ports({"app/App.cpp": text})[0].startswith("app/App.cpp:5 ")


def test_the_diagram_leaves_out_arrows_that_others_imply():
    files = {"app/App.h": '#include "menu/Menu.h"\n#include "platform/Port.h"\n',
             "menu/Menu.h": '#include "platform/Port.h"\n', "platform/Port.h": ""}
    assert diagram.diagram(files) == ("```mermaid\nflowchart TD\n  app[app] --> menu[menu]\n"
                                      "  menu[menu] --> platform[platform]\n```\n")


def test_literals_are_read_as_the_compiler_joins_them():
    text = '#include "a/b c d.h"\n// "no text"\nsay("Olá, " /* "nor this" */\n    "mundo", "x\\"y");\n'
    assert checker.literals(text) == ["Olá, mundo", 'x\\"y']


@pytest.mark.parametrize("literal, text", [("Nova nota", True), ("Não", True), ("state-v1.json", False),
                                           ("window.a?.(", False), (" (", False)])
def test_texts_are_told_from_other_literals(literal, text):
    assert checker.looks_like_text(literal) == text

