"""Which words of a page are paths, and whether they are there."""

import fnmatch
import json
import re

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
ENDINGS = (".c", ".cmake", ".cpp", ".css", ".h", ".json", ".md", ".mjs", ".mm", ".png", ".py", ".sh", ".ts", ".txt",
           ".xml", ".ini", ".desktop", ".svg")


def presets(tree):
    text = tree.text("CMakePresets.json")
    return [one["name"] for one in json.loads(text)["configurePresets"] if not one.get("hidden")] if text else []


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
