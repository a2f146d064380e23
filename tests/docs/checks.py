"""What the documentation names must be there. Each check returns its complaints."""

import re
from pathlib import Path

import commands
import pages
import paths


# ---- Paths, links and commands

def named_paths(tree, page):
    elsewhere = paths.ELSEWHERE.get(page.path, set())
    return [f"{page.path}: there is no {span}" for span in page.spans
            if paths.is_path(span) and span not in elsewhere and not paths.exists(tree, page, span)]


def unused_exceptions(tree):
    written = {page.path: set(page.spans) for page in tree.pages}
    return [f"{page} does not mention {path} any more"
            for page, names in paths.ELSEWHERE.items() for path in names if path not in written.get(page, set())]


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


def typed_commands(tree, page):
    """The shell blocks, and the spans that begin with a command of the tree."""
    return [f"{page.path}: {complaint}" for complaint in commands.complaints(tree, page)]


# ---- Names

def variables(tree, page):
    """Environment variables and options of the build."""
    return [f"{page.path}: nothing reads {name}" for name in sorted(set(re.findall(r"\bQUENDO_\w+", page.text)))
            if name not in tree.words]


def options(tree, page):
    """Options that are named alone, outside a command."""
    return [f"{page.path}: nothing has the option {span}" for span in page.spans
            if re.fullmatch(r"--[a-z][\w=-]*", span) and span.split("=")[0] not in tree.words
            and span not in paths.ELSEWHERE.get(page.path, ())]


def names(tree, page):
    """What is named with its capitals or underscores is a name of the code: a class, a function, a port."""
    found = []
    for span in page.spans:
        if span in paths.ELSEWHERE.get(page.path, ()):
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


def helped(text):
    """The names that a usage text lists: indented by two, and followed by what they are."""
    return re.findall(r"^  ([a-z][\w-]*) +\S", text, re.MULTILINE)


# Parts of ./test that take too long for every run.
ONLY_WHEN_NAMED = ("packages",)


def table_of_parts(tree):
    table = tree.text("docs/testing.md").split("\n## ")[0]
    usage = re.search(r"<<'TEXT'\n(.*?)^TEXT", tree.text("test"), re.MULTILINE | re.DOTALL)
    order = re.search(r"\|\| parts=\(([^)]*)\)", tree.text("test"))
    return differ("docs/testing.md", first_cells(table), commands.parts(tree)) + \
        differ("./test --help", helped(usage[1]) if usage else [], commands.parts(tree)) + \
        differ("./test without a part", order[1].split() if order else [],
               [one for one in commands.parts(tree) if one not in ONLY_WHEN_NAMED])


def benchmarks_described(tree):
    section = pages.Page("", tree.text("docs/benchmarks.md")).section("What is measured")
    described = [name.lower() for name in re.findall(r"^\*\*([\w-]+)\.\*\*", section, re.MULTILINE)]
    usage = re.search(r"<<'TEXT'\n(.*?)^  --", tree.text("bench/run"), re.MULTILINE | re.DOTALL)
    sources = [name for name in commands.benchmarks(tree)
               if not {f"bench/{name.replace('-', '_')}_bench{ending}" for ending in (".py", ".cpp")} & tree.files]
    return differ("docs/benchmarks.md", described, commands.benchmarks(tree)) + \
        differ("bench/run --help", helped(usage[1]) if usage else [], commands.benchmarks(tree)) + \
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
                         tree.text("packaging/com.quendo.Quendo.metainfo.xml.in"))
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
