"""Reads the sources' includes and says where they break the rules about which folder may use which."""

import re
from pathlib import Path

# Each folder may use the folders of the rows above its own, never those beside or below it.
LEVELS = (
    ("platform",),
    ("text", "i18n"),
    ("files",),
    ("store",),
    ("bridge",),  # Hands the page's saves to the store.
    ("import", "export", "update", "menu"),
    ("app",),
    ("platform/posix",),
    ("platform/gtk", "platform/cocoa"),
)
LEVEL_OF = {folder: level for level, folders in enumerate(LEVELS) for folder in folders}
TOOLKITS = frozenset(LEVELS[-1])
BACK_ENDS = TOOLKITS | frozenset(LEVELS[-2])

SOURCES = (".h", ".cpp", ".mm", ".in")

# Headers that only a back-end may see, by how they begin.
TOOLKIT = re.compile(
    r"(gtk|gdk|gsk|glib|gio|gobject|giomm|gtkmm|gdkmm|glibmm|sigc|pango|cairo|atk|webkit|jsc|JavaScriptCore|"
    r"libsoup|X11|AppKit|WebKit|Foundation|Cocoa|CoreFoundation|UniformTypeIdentifiers|objc|dispatch)\b",
    re.IGNORECASE)
# Headers of the operating system: files, processes, sockets, threads.
SYSTEM = re.compile(r"(sys|linux|mach|netinet|arpa)/|(unistd|fcntl|dirent|pthread|signal|poll|dlfcn|spawn|pwd)\.h$")
STANDARD = {"thread", "future", "fstream", "filesystem", "random", "condition_variable", "semaphore", "latch",
            "barrier", "stop_token", "iostream", "csignal", "ctime", "time.h"}
# The one lock of the design is the store's.
ONLY_IN = {"mutex": {"store"}, "shared_mutex": set()}

# What reaches outside without a header of its own.
WORDS = (
    (re.compile(r"std::(this_thread|jthread|thread|async|condition_variable)\b"), "threads"),
    (re.compile(r"\b\w*_clock::now\b|\b(clock_gettime|gettimeofday)\b|(?<![\w.>:])(std::|::)?time\s*\("), "a clock"),
    (re.compile(r"\b(secure_)?getenv\b|\bsetenv\b|\benviron\b"), "the environment"),
    (re.compile(r"\b(sleep_for|sleep_until|usleep|nanosleep)\b|(?<![\w.>:])(::)?sleep\s*\("), "sleeping"),
    (re.compile(r"\b(std::)?(fopen|freopen|FILE|tmpfile|[io]?fstream|filesystem)\b|(?<![\w>])::(open|creat)\s*\("), "files"),
    (re.compile(r"\b(random_device|mt19937(_64)?)\b|(?<![\w.>:])(std::|::)?s?rand\s*\("), "randomness"),
)

_INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|import)[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
_NOT_CODE = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-zA-Z_])\'(?:\\.|[^\'\\\n])+\'',
    re.DOTALL)


def folder_of(path):
    """The folder, as named in LEVELS, of a file or an include; None when it is in none of them."""
    parts = Path(path).parts
    if len(parts) >= 3 and "/".join(parts[:2]) in LEVEL_OF:
        return "/".join(parts[:2])
    return parts[0] if len(parts) >= 2 and parts[0] in LEVEL_OF else None


def includes(text):
    """(quoted or angled, name) of each include of a source."""
    # An include is commented out more often than it stands in a string; its own quotes must stay.
    text = re.sub(r"/\*.*?\*/", lambda found: "\n" * found.group().count("\n"), text, flags=re.DOTALL)
    return [(mark == '"', name) for mark, name in _INCLUDE.findall(text)]


def code(text):
    """A source without includes, comments and literals."""
    return _NOT_CODE.sub(lambda found: " " + "\n" * found.group().count("\n"), _INCLUDE.sub("", text))


def sources(root):
    """Relative path -> text of all sources below `root`."""
    return {str(path.relative_to(root)): path.read_text(encoding="utf-8")
            for path in sorted(Path(root).rglob("*")) if path.suffix in SOURCES and path.is_file()}


def misplaced(files):
    """Files that are in none of the known folders."""
    return [f"{path} is in no folder of the plan" for path in files if folder_of(path) is None]


def wrong_way(files):
    """Includes of a folder that stands beside or above the including one."""
    found = []
    for path, text in files.items():
        own = folder_of(path)
        for _, name in includes(text):
            other = folder_of(name)
            if own is None or other is None or own == other or LEVEL_OF[other] < LEVEL_OF[own]:
                continue
            found.append(f"{path} includes {name}, but {own} may not use {other}")
    return found


def unresolved(files):
    """Quoted includes that name no file: they are to be written from the root of the sources."""
    known = set(files) | {path.removesuffix(".in") for path in files}
    return [f'{path} includes "{name}", which is no file of the sources'
            for path, text in files.items() for quoted, name in includes(text) if quoted and name not in known]


def circles(files):
    """Circles between files, each once, as a list of paths."""
    graph = {path: [name for _, name in includes(text) if name in files] for path, text in files.items()}
    done, found = set(), []
    for start in graph:
        if start in done:
            continue
        # Depth first without recursion; `way` is the chain of files that led here.
        way, open_ends = [start], [iter(graph[start])]
        on_way = {start}
        while way:
            following = next(open_ends[-1], None)
            if following is None:
                done.add(way[-1])
                on_way.discard(way.pop())
                open_ends.pop()
            elif following in on_way:
                found.append(" -> ".join([*way[way.index(following):], following]))
            elif following not in done:
                way.append(following)
                on_way.add(following)
                open_ends.append(iter(graph[following]))
    return found


def toolkit_in_core(files):
    """Toolkit headers outside the toolkits' back-ends."""
    return [f"{path} includes <{name}>, a header of a toolkit"
            for path, text in files.items() if folder_of(path) not in TOOLKITS
            for quoted, name in includes(text) if folder_of(name) is None and TOOLKIT.match(name)]


def outside_ports(files):
    """Time, threads, files, environment and randomness that the core takes without a port."""
    found = []
    for path, text in files.items():
        folder = folder_of(path)
        if folder in BACK_ENDS:
            continue
        for quoted, name in includes(text):
            if quoted:
                continue
            if SYSTEM.match(name) or name in STANDARD or (name in ONLY_IN and folder not in ONLY_IN[name]):
                found.append(f"{path} includes <{name}>")
        lines = code(text).splitlines()
        found += [f"{path}:{number} uses {what}: {line.strip()}"
                  for number, line in enumerate(lines, 1) for pattern, what in WORDS if pattern.search(line)]
    return found


_COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|("(?:\\.|[^"\\\n])*")', re.DOTALL)
_LITERALS = re.compile(r'(?:"(?:\\.|[^"\\\n])*"\s*)+')


def literals(text):
    """The string literals of a source, neighbours joined as the compiler does."""
    bare = _COMMENT.sub(lambda found: found[1] or " ", _INCLUDE.sub("", text))
    return ["".join(re.findall(r'"((?:\\.|[^"\\\n])*)"', run)) for run in _LITERALS.findall(bare)]


def looks_like_text(literal):
    """Whether a person would read it: it has two words, or a letter that no identifier has."""
    return bool(re.search(r"[À-ÿ]|[A-Za-z]{2,} [A-Za-z]{2,}", literal))

