"""What the documentation names must be there. Each check returns its complaints."""

import fnmatch
import itertools
import json
import re
from pathlib import Path

import pages

# Where else the paths of a page begin, besides the root of the tree and the page's own folder.
BASES = {
    "docs/architecture.md": ["src"],
    "docs/macos.md": ["src/platform/cocoa", "src/platform"],
    "docs/testing.md": ["tests/desktop"],
}
# Paths and names of something else, by page: of an installed tree, of a Mac, of other projects; examples.
ELSEWHERE = {
    "docs/architecture.md": {"share/quendo/web", "bin/quendo"},
    "docs/macos.md": {"Contents/Resources/web", "@nativescript/macos-node-api", "madsmtm/objc2-generated",
                      "dotnet/macios", "WebKit/WebKit", "Source/WebKit/UIProcess", "apple/swift-corelibs-libdispatch",
                      "acl_file.c", "filesec.c", "x.rs.txt"},
    "docs/macos-signing.md": {"Contents/Frameworks", "--timestamp"},
    "docs/page-protocol.md": {"share/quendo/web/index.html"},
    "docs/testing.md": {"update-test/", "Something_test.cpp"},
    "web/README.md": {"@mdn/browser-compat-data"},
}
# Commands of the system in the shell blocks. Everything else is the tree's own or a mistake.
SYSTEM = {"apt-get", "brew", "cd", "codesign", "cp", "ditto", "find", "git", "hdiutil", "head", "less", "ln", "mktemp", "open",
          "otool", "sandbox", "spctl", "sudo", "tar", "xcrun"}
ENDINGS = (".c", ".cmake", ".cpp", ".css", ".h", ".json", ".md", ".mjs", ".mm", ".png", ".py", ".sh", ".ts", ".txt", ".xml",
           ".ini", ".desktop", ".svg")


# ---- Paths and links

def is_path(span):
    """A path has a slash or the ending of a source, and none of what addresses, types and code have."""
    if span.startswith(("/", "./", "~", "$", "#", "-", ".", "//")) and not span.startswith("../"):
        return False
    return bool(re.fullmatch(r"[\w@.{},*+-]+(/[\w@.{},*+-]+)*/?", span)) and ("/" in span or span.endswith(ENDINGS))


def outputs(tree):
    """What builds and tests make below build/: the presets' directories, and what the scripts write."""
    scripts = "\n".join(tree.text(path) for path in tree.files
                        if path in ("run", "test") or path.startswith(("scripts/", "tests/build/", "bench/")))
    written = set(re.findall(r"(?:root|ROOT)\}?[\"' /]+build[\"' /]+([\w.-]+)", scripts))
    return written | set(presets(tree))


def exists(tree, page, path):
    if path.startswith(("build/", "../build/")):
        return path.split("build/", 1)[1].split("/")[0] in outputs(tree) | {""}
    made = re.fullmatch(r"(?:web/)?(\.build|dist)(/.*)?", path)
    if made and (path.startswith("web/") or page.folder == "web"):
        return any(f"'{made[1]}'" in tree.text(one) for one in tree.files
                   if one.startswith("web/") and one.endswith(".mjs"))
    bases = ["", page.folder if page.folder != "." else "", *BASES.get(page.path, [])]
    for base in bases:
        parts = base.split("/") if base else []
        for part in path.rstrip("/").split("/"):
            if part == ".." and parts:
                parts.pop()
            else:
                parts.append(part)
        whole = "/".join(parts)
        if "*" in whole:
            if any(fnmatch.fnmatchcase(one, whole) for one in tree.files):
                return True
        # A class is named by its files without their endings.
        elif tree.has(whole) or any(f"{whole}{ending}" in tree.files for ending in (".h", ".ts")):
            return True
    # A file that is named alone may be anywhere, or be one that the program or the page's build writes.
    return "/" not in path and (path in tree.names or any(
        re.search(rf"{re.escape(path)}[\"']", tree.text(one)) for one in tree.files
        if one.startswith("src/") or one == "web/build.mjs"))


def paths(tree, page):
    elsewhere = ELSEWHERE.get(page.path, set())
    return [f"{page.path}: there is no {span}" for span in page.spans
            if is_path(span) and span not in elsewhere and not exists(tree, page, span)]


def unused_exceptions(tree):
    written = {page.path: set(page.spans) for page in tree.pages}
    return [f"{page} does not mention {path} any more"
            for page, names in ELSEWHERE.items() for path in names if path not in written.get(page, set())]


def links(tree, page):
    found = []
    by_path = {one.path: one for one in [*tree.pages, page]}
    for target in page.links:
        if re.match(r"[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        parts = [] if page.folder == "." else page.folder.split("/")
        for part in path.split("/") if path else []:
            if part == "..":
                parts = parts[:-1]
            else:
                parts.append(part)
        whole = "/".join(parts) if path else page.path
        if not tree.has(whole):
            found.append(f"{page.path} links to {target}, which is not there")
        elif anchor and (whole not in by_path or anchor not in by_path[whole].anchors):
            found.append(f"{page.path} links to {target}, which has no such heading")
    return found


# ---- Commands

def presets(tree):
    text = tree.text("CMakePresets.json")
    return [one["name"] for one in json.loads(text)["configurePresets"] if not one.get("hidden")] if text else []


def parts(tree):
    """The parts that ./test takes."""
    found = re.search(r"^    ([\w -]+(?: \| [\w-]+)+)\) parts\+=", tree.text("test"), re.MULTILINE)
    return [one.strip() for one in found[1].split("|")] if found else []


def benchmarks(tree):
    found = re.search(r"^all=\(([^)]*)\)", tree.text("bench/run"), re.MULTILINE)
    return found[1].split() if found else []


def helped(text):
    """The names that a usage text lists: indented by two, and followed by what they are."""
    return re.findall(r"^  ([a-z][\w-]*) +\S", text, re.MULTILINE)


def targets(tree):
    return {name for path in tree.files if path.endswith(("CMakeLists.txt", ".cmake"))
            for name in re.findall(r"add_(?:executable|library|custom_target)\(\s*([\w-]+)", tree.text(path))}


def selects_file(tree, folder, word):
    return any(word in Path(path).name for path in tree.files if path.startswith(folder))


def pytest(tree, page, words):
    found = []
    texts = ""
    for word in words:
        if word.startswith("tests/"):
            if not exists(tree, page, word.split("::")[0]):
                found.append(f"pytest is given {word}, which is not there")
            texts += "".join(tree.text(path) for path in tree.files if path.startswith(word.split("::")[0]))
            if "::" in word and f"def {word.split('::')[1]}(" not in texts:
                found.append(f"there is no test {word}")
    for option, value in itertools.pairwise(words):
        if option == "-k" and not any(value in name for name in re.findall(r"def (test_\w+)", texts)):
            found.append(f"no test is selected by -k {value}")
    return found


def npm(tree, page, words):
    if "--prefix" in words:
        folder = words[words.index("--prefix") + 1]
        words = [word for word in words if word not in ("--prefix", folder)]
    else:
        folder = page.folder
    scripts = json.loads(tree.text(f"{folder}/package.json") or '{"scripts": {}}')["scripts"]
    words = [word for word in words if word != "--silent"]
    name = words[1] if words[:1] == ["run"] else words[0]
    if words[0] in ("ci", "install"):
        return []
    if name not in scripts:
        return [f"npm has no script {name}"]
    where = re.search(r"tests/\w+$", scripts[name])
    chosen = words[words.index("--") + 1:] if "--" in words else []
    return [f"no test file of the page has {word} in its name" for word in chosen
            if where and not word.startswith("--") and not selects_file(tree, f"{folder}/{where[0]}", word)]


def command(tree, page, words):
    """Complaints about one simple command."""
    words = [word for word in words if word]
    while words and re.fullmatch(r"\w+=.*", words[0], re.DOTALL):
        words = words[1:]
    if not words or words[0].startswith("#"):
        return []
    program, arguments = words[0], words[1:]
    named = [word for word in arguments if not word.startswith("-")]
    options = [word.split("=")[0] for word in arguments if word.startswith("--") and word != "--"]
    if program == "./test":
        return [f"./test has no part {word}" for word in named if word not in parts(tree)] + \
            [f"./test has no option {word}" for word in options if word not in tree.text("test")]
    if program == "bench/run":
        return [f"bench/run has no benchmark {word}" for word in named if word not in benchmarks(tree)] + \
            [f"bench/run has no option {word}" for word in options if word not in tree.text("bench/run")]
    if program == "cmake":
        found = [f"there is no preset {after}" for word, after in itertools.pairwise(arguments)
                 if word == "--preset" and after not in presets(tree)]
        found += [f"nothing is built in {after}" for word, after in itertools.pairwise(arguments)
                  if word in ("--build", "-B", "--install") and not exists(tree, page, after)]
        if "--target" in arguments:
            found += [f"there is no target {word}" for word in arguments[arguments.index("--target") + 1:]
                      if not word.startswith("-") and word not in targets(tree)]
        return found
    if program == "npm":
        return npm(tree, page, arguments)
    if program == "node":
        found = [] if exists(tree, page, arguments[0]) else [f"there is no {arguments[0]}"]
        if arguments[0].endswith("run-tests.mjs"):
            found += [f"no test file has {word} in its name" for word in named[2:]
                      if not selects_file(tree, f"{page.folder}/{named[1]}", word)]
        return found
    if program.split("/")[-1] in ("python3", "pytest"):
        if arguments[:2] == ["-m", "pytest"]:
            return pytest(tree, page, arguments[2:])
        return [] if arguments and exists(tree, page, arguments[0]) else [f"there is no {' '.join(words)}"]
    if program == "scripts/with-desktop":
        return command(tree, page, arguments)
    if program == "scripts/fuzz":
        return [f"there is no fuzz target {word}" for word in named
                if not word.isdigit() and f"tests/fuzz/{word}_fuzz.cpp" not in tree.files]
    built = re.fullmatch(r"build/([\w-]+)/bin/(\w+)", program)
    if built:
        found = [] if built[1] in presets(tree) else [f"there is no preset {built[1]}"]
        found += [] if built[2] in targets(tree) else [f"there is no target {built[2]}"]
        for word in arguments:
            suite = word.removeprefix("--gtest_filter=").split(".")[0]
            if word.startswith("--gtest_filter=") and not fnmatch.filter(suites(tree), suite):
                found.append(f"no test is selected by {word}")
        return found + ([] if built[2] != "quendo" else program_options(tree, options))
    if program in ("quendo", "./run"):
        return program_options(tree, options)
    if program in tree.files:
        return [f"{program} has no option {word}" for word in options if word not in tree.text(program)] + \
            [f"there is no {word}" for word in named if is_path(word) and not exists(tree, page, word)]
    if program.startswith("build/"):
        return [] if exists(tree, page, program) else [f"nothing makes {program}"]
    if program == "sudo":
        rest = next((at for at, word in enumerate(arguments) if word in tree.files), None)
        return command(tree, page, arguments[rest:]) if rest is not None else []
    return [] if program in SYSTEM or program.startswith("$") else [f"{program} is no command"]


def program_options(tree, options):
    return [f"quendo has no option {word}" for word in options
            if word not in tree.text("src/platform/gtk/main.cpp")]


def suites(tree):
    return {name for path in tree.files if path.startswith("tests/") and path.endswith(("_test.cpp", "_test.mm"))
            for name in re.findall(r"^TEST(?:_F|_P)?\((\w+),", tree.text(path), re.MULTILINE)}


def commands(tree, page):
    """The shell blocks, and the spans that begin with a command of the tree."""
    own = {"quendo", "cmake", "npm", "node", "./test", "./run", "bench/run", "sudo"}
    written = [words for words in page.written_commands()
               if words[0] in own or words[0] in tree.files or
               words[0].startswith(("scripts/", "build/", "bench/", "tests/", "./"))]
    return [f"{page.path}: {complaint}" for words in [*page.commands(), *written]
            for complaint in command(tree, page, words)]


# ---- Names

def variables(tree, page):
    """Environment variables and options of the build."""
    return [f"{page.path}: nothing reads {name}" for name in sorted(set(re.findall(r"\bQUENDO_\w+", page.text)))
            if name not in tree.words]


def options(tree, page):
    """Options that are named alone, outside a command."""
    return [f"{page.path}: nothing has the option {span}" for span in page.spans
            if span not in ELSEWHERE.get(page.path, ()) and re.fullmatch(r"--[a-z][\w=-]*", span) and span.split("=")[0] not in tree.words]


def names(tree, page):
    """What is named with its capitals or underscores is a name of the code: a class, a function, a port."""
    found = []
    for span in page.spans:
        if span in ELSEWHERE.get(page.path, ()):
            continue
        for name in re.findall(r"[A-Za-z_]\w*", span) if re.fullmatch(r"[\w.]+(\(.*\))?", span) else []:
            if re.search(r"[a-z][A-Z]|\w_\w", name) and name not in tree.words:
                found.append(f"{page.path}: nothing is called {name}")
    return found


def labels(tree, page):
    """What is set in italics is a text of the interface, in English."""
    texts = "".join(tree.text(path) for path in tree.files
                    if path == "src/i18n/Translations.cpp" or path.startswith("web/src/i18n/"))
    plain = pages.SPAN.sub("", page.prose)
    return [f"{page.path}: the interface has no {label}"
            for label in (re.sub(r"\s+", " ", one) for one in re.findall(r"(?<![*\w])\*(\w[^*]*)\*(?!\*)", plain))
            if f'"{label}"' not in texts and f"'{label}'" not in texts]


# ---- Tables and lists

def differ(what, documented, real):
    documented, real = list(documented), list(real)
    return [f"{what}: {one} is missing" for one in real if one not in documented] + \
        [f"{what}: there is no {one}" for one in documented if one not in real] + \
        [f"{what}: {one} is there twice" for one in sorted(set(documented)) if documented.count(one) > 1]


def first_cells(section):
    return [re.sub(r"[`/]", "", row[0]) for row in pages.rows(section)]


def table_of_parts(tree):
    table = tree.text("docs/testing.md").split("\n## ")[0]
    usage = re.search(r"<<'TEXT'\n(.*?)^TEXT", tree.text("test"), re.MULTILINE | re.DOTALL)
    order = re.search(r"\|\| parts=\(([^)]*)\)", tree.text("test"))
    return differ("docs/testing.md", first_cells(table), parts(tree)) + \
        differ("./test --help", helped(usage[1]) if usage else [], parts(tree)) + \
        differ("./test without a part", order[1].split() if order else [], parts(tree))


def benchmarks_described(tree):
    section = pages.Page("", tree.text("docs/benchmarks.md")).section("What is measured")
    described = [name.lower() for name in re.findall(r"^\*\*([\w-]+)\.\*\*", section, re.MULTILINE)]
    usage = re.search(r"<<'TEXT'\n(.*?)^  --", tree.text("bench/run"), re.MULTILINE | re.DOTALL)
    sources = [name for name in benchmarks(tree)
               if not {f"bench/{name.replace('-', '_')}_bench{ending}" for ending in (".py", ".cpp")} & tree.files]
    return differ("docs/benchmarks.md", described, benchmarks(tree)) + \
        differ("bench/run --help", helped(usage[1]) if usage else [], benchmarks(tree)) + \
        [f"bench/run offers {name}, which has no source" for name in sources]


def folders_of(page, heading, folder, tree):
    """The first column of a table against the folders that there are."""
    real = {Path(path).relative_to(folder).parts[0] for path in tree.folders
            if Path(path).is_relative_to(folder) and path != folder}
    cells = [cell.removeprefix("src") for cell in first_cells(page.section(heading))] if folder != "." else \
        first_cells(page.section(heading))
    return differ(f"{page.path}, {heading}", cells, sorted(one for one in real if not one.startswith(".")))


def drawn_folders(tree, page):
    """The tree of folders that a block draws by indentation."""
    block = next((body for kind, body in page.blocks if not kind and body.startswith("src/")), "")
    drawn, way = set(), []
    for line in block.splitlines():
        found = re.match(r"( *)((?:\w+/(?:, )?)+)", line)
        if not found:
            continue
        way = way[:len(found[1]) // 2]
        ones = [one.strip("/ ") for one in found[2].split(",")]
        drawn.update("/".join([*way, one]) for one in ones)
        way.append(ones[-1])
    missing = [f"{page.path} draws {one}, which is not there" for one in sorted(drawn) if not tree.has(one)]
    rooms = {path for path in tree.folders if path.startswith("src/") and not path.startswith("src/platform/cocoa/")}
    return missing + [f"{page.path} does not draw {one}" for one in sorted(rooms - drawn)]


def ports(tree, page):
    """The table of ports against the classes in the headers of src/platform."""
    headers = "".join(tree.text(path) for path in tree.files if re.fullmatch(r"src/platform/\w+\.h", path))
    classes = set(re.findall(r"^(?:class|struct) (\w+) \{", headers, re.MULTILINE))
    named = [name for row in pages.rows(page.section("Ports")) for name in re.findall(r"`(\w+)`", row[0])]
    return [f"{page.path}: there is no port {name}" for name in named if name not in classes]


# ---- Releases

def releases(tree):
    """The changes, the metadata of the package and the build name the same releases."""
    written = re.findall(r"^## \[?(\d+\.\d+\.\d+)\]? - (\d{4}-\d\d-\d\d)$", tree.text("CHANGELOG.md"), re.MULTILINE)
    headings = re.findall(r"^## .*$", tree.text("CHANGELOG.md"), re.MULTILINE)
    shipped = re.findall(r'<release\b[^>]*\bversion="([^"]+)"[^>]*\bdate="([^"]+)"',
                         tree.text("packaging/com.quendo.Quendo.metainfo.xml"))
    version = re.search(r"project\(quendo VERSION ([\d.]+)", tree.text("CMakeLists.txt"))
    found = differ("CHANGELOG.md", [" of ".join(one) for one in written], [" of ".join(one) for one in shipped])
    if not written or not version or version[1] != written[0][0]:
        found.append(f"CHANGELOG.md: the newest release is not the version that is built, {version and version[1]}")
    if sorted(written, key=lambda one: [int(part) for part in one[0].split(".")], reverse=True) != written:
        found.append("CHANGELOG.md: the newest release does not stand first")
    strange = [line for line in headings if line != "## Unreleased" and not re.fullmatch(r"## [\d.]+ - [\d-]+", line)]
    return found + [f"CHANGELOG.md: {line} is no release" for line in strange] + \
        (["CHANGELOG.md: Unreleased does not stand first"] if "## Unreleased" in headings[1:] else [])


# ---- Security

def threats(tree, page):
    """Each row of a table of defences names the code that defends and the test that shows it."""
    found = []
    for row in pages.rows(page.text[page.text.index("\n|"):] if "\n|" in page.text else ""):
        if len(row) < 3 or set(row[0]) <= set("-: "):
            continue
        spans = pages.Page(page.path, row[-1]).spans
        tests = [span for span in spans if span.startswith(("tests/", "web/tests/"))]
        if not tests and row[-1] != "Shown by":
            found.append(f"{page.path}: no test shows \"{row[0]}\"")
    return found
