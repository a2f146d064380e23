"""Whether the commands of a page can be typed as they stand."""

import fnmatch
import itertools
import json
import re
from pathlib import Path

import paths

# Commands of the system in the shell blocks. Everything else is the tree's own or a mistake.
SYSTEM = {"apt-get", "brew", "cd", "codesign", "cp", "ditto", "find", "git", "hdiutil", "head", "ln", "mktemp", "open",
          "otool", "spctl", "tar", "xargs", "xcrun"}


def parts(tree):
    """The parts that ./test takes."""
    found = re.search(r"^    ([\w -]+(?: \| [\w-]+)+)\) parts\+=", tree.text("test"), re.MULTILINE)
    return [one.strip() for one in found[1].split("|")] if found else []


def benchmarks(tree):
    found = re.search(r"^all=\(([^)]*)\)", tree.text("bench/run"), re.MULTILINE)
    return found[1].split() if found else []


def targets(tree):
    return {name for path in tree.files if path.endswith(("CMakeLists.txt", ".cmake"))
            for name in re.findall(r"add_(?:executable|library|custom_target)\(\s*([\w-]+)", tree.text(path))}


def selects_file(tree, folder, word):
    return any(word in Path(path).name for path in tree.files if path.startswith(folder))


def not_options(tree, program, words):
    """Options that a script of the tree does not have."""
    return [f"{program} has no option {word}" for word in options_of(words) if word not in tree.text(program)]


def options_of(words):
    return [word.split("=")[0] for word in words if word.startswith("--") and word != "--"]


def named(words):
    return [word for word in words if not word.startswith("-")]


def pytest(tree, page, words):
    found = []
    texts = ""
    for word in words:
        if word.startswith("tests/"):
            path, _, test = word.partition("::")
            if not paths.exists(tree, page, path):
                found.append(f"pytest is given {word}, which is not there")
            texts += "".join(tree.text(one) for one in tree.files if one.startswith(path))
            if test and f"def {test}(" not in texts:
                found.append(f"there is no test {word}")
    for option, value in itertools.pairwise(words):
        if option == "-k" and not any(value in name for name in re.findall(r"def (test_\w+)", texts)):
            found.append(f"no test is selected by -k {value}")
    return found


def python(tree, page, words):
    if words[:2] == ["-m", "pytest"]:
        return pytest(tree, page, words[2:])
    return [] if words and paths.exists(tree, page, words[0]) else [f"there is no {' '.join(words)}"]


def npm(tree, page, words):
    folder = page.folder
    if "--prefix" in words:
        folder = words[words.index("--prefix") + 1]
        words = [word for word in words if word not in ("--prefix", folder)]
    words = [word for word in words if word != "--silent"]
    if words[0] in ("ci", "install"):
        return []
    scripts = json.loads(tree.text(f"{folder}/package.json") or '{"scripts": {}}')["scripts"]
    name = words[1] if words[0] == "run" else words[0]
    if name not in scripts:
        return [f"npm has no script {name}"]
    where = re.search(r"tests/\w+$", scripts[name])
    chosen = named(words[words.index("--") + 1:]) if "--" in words and where else []
    return [f"no test file of the page has {word} in its name" for word in chosen
            if not selects_file(tree, f"{folder}/{where[0]}", word)]


def node(tree, page, words):
    found = [] if paths.exists(tree, page, words[0]) else [f"there is no {words[0]}"]
    if words[0].endswith("run-tests.mjs"):
        found += [f"no test file has {word} in its name" for word in named(words)[2:]
                  if not selects_file(tree, f"{page.folder}/{words[1]}", word)]
    return found


def cmake(tree, page, words):
    found = [f"there is no preset {after}" for word, after in itertools.pairwise(words)
             if word == "--preset" and after not in paths.presets(tree)]
    found += [f"nothing is built in {after}" for word, after in itertools.pairwise(words)
              if word in ("--build", "-B", "--install") and not paths.exists(tree, page, after)]
    if "--target" in words:
        found += [f"there is no target {word}" for word in named(words[words.index("--target") + 1:])
                  if word not in targets(tree)]
    return found


def quendo(tree, page, words):
    sources = [tree.text(path) for path in tree.files if path.startswith("src/")]
    return [f"quendo has no option {word}" for word in options_of(words) if not any(f'"{word}' in one for one in sources)]


def built(tree, page, program, words):
    """A program below the directory of a preset."""
    _, preset, _, target = program.split("/")
    found = [] if preset in paths.presets(tree) else [f"there is no preset {preset}"]
    found += [] if target in targets(tree) else [f"there is no target {target}"]
    for word in words:
        suite = word.removeprefix("--gtest_filter=").split(".")[0]
        if word.startswith("--gtest_filter=") and not fnmatch.filter(suites(tree), suite):
            found.append(f"no test is selected by {word}")
    return found + (quendo(tree, page, words) if target == "quendo" else [])


def test(tree, page, words):
    return [f"./test has no part {word}" for word in named(words) if word not in parts(tree)] + \
        not_options(tree, "test", words)


def bench(tree, page, words):
    return [f"bench/run has no benchmark {word}" for word in named(words) if word not in benchmarks(tree)] + \
        not_options(tree, "bench/run", words)


def fuzz(tree, page, words):
    return [f"there is no fuzz target {word}" for word in named(words)
            if not word.isdigit() and f"tests/fuzz/{word}_fuzz.cpp" not in tree.files]


def sudo(tree, page, words):
    """Whatever of the tree it runs."""
    at = next((at for at, word in enumerate(words) if word in tree.files), len(words))
    return command(tree, page, words[at:])


# The commands whose words are looked at one by one. Each is given what follows its name.
KNOWN = {
    "./run": quendo, "./test": test, "/usr/bin/python3": python, "bench/run": bench, "cmake": cmake, "node": node,
    "npm": npm, "quendo": quendo, "scripts/fuzz": fuzz, "sudo": sudo,
    "scripts/with-desktop": lambda tree, page, words: command(tree, page, words[words[:1] == ["--wayland"]:]),
}


def command(tree, page, words):
    """Complaints about one simple command."""
    while words and re.fullmatch(r"(\w+=.*)?", words[0], re.DOTALL):
        words = words[1:]
    if not words:
        return []
    program, arguments = words[0], words[1:]
    path = program.removeprefix("./")
    if program in KNOWN:
        return KNOWN[program](tree, page, arguments)
    if re.fullmatch(r"build/[\w-]+/bin/\w+", program):
        return built(tree, page, program, arguments)
    if program.startswith("build/"):
        return [] if paths.exists(tree, page, program) else [f"nothing makes {program}"]
    if path in tree.files:
        return not_options(tree, path, arguments) + \
            [f"there is no {word}" for word in arguments if paths.is_path(word) and not paths.exists(tree, page, word)]
    return [] if program in SYSTEM or program.startswith("$") else [f"{program} is no command"]


def suites(tree):
    return {name for path in tree.files if path.startswith("tests/") and path.endswith(("_test.cpp", "_test.mm"))
            for name in re.findall(r"^TEST(?:_F|_P)?\((\w+),", tree.text(path), re.MULTILINE)}


def complaints(tree, page):
    """The shell blocks, and the spans that begin with a command of the tree."""
    written = [words for words in page.written_commands()
               if words[0] in KNOWN or words[0] in tree.files or
               words[0].startswith(("scripts/", "build/", "bench/", "tests/", "./"))]
    return [f"{page.path}: {complaint}" for words in [*page.commands(), *written]
            for complaint in command(tree, page, words)]
