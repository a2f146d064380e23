"""Files outside the page's own directory: the page has no way to read or show them."""

import json
import struct
import zlib
from urllib.parse import quote

import pytest

_WORDS = "a canary that nobody may read"


def _png(width, height):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = b"".join(b"\0" + b"\xff\0\0" * width for _ in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def _wav():
    samples = b"\0\0" * 800
    return (b"RIFF" + struct.pack("<I", 36 + len(samples)) + b"WAVEfmt "
            + struct.pack("<IHHIIHH", 16, 1, 1, 8000, 16000, 2, 16) + b"data" + struct.pack("<I", len(samples))
            + samples)


FILES = {
    "canary.png": _png(7, 5),
    "canary.js": "window.canary = true; if (self.document === undefined) postMessage('canary');",
    "canary.mjs": "window.canary = true; export default 'canary';",
    "canary.css": "#probe { width: 7px }",
    "canary.html": "<!doctype html><script>parent.postMessage('canary', '*')</script>" + _WORDS,
    "canary.txt": _WORDS,
    "canary.wav": _wav(),
    "canary.svg": '<svg xmlns="http://www.w3.org/2000/svg" width="7" height="5"></svg>',
}

# Each is the body of an async function of `url`, `html` to create elements and `event` to wait for one. It returns
# true if it read or showed anything of the file.
WAYS = {
    "img": ("canary.png", "const one = html('<img>'); one.src = url; await event(one); return one.naturalWidth > 0"),
    "img srcset": ("canary.png", "const one = html('<img>'); one.srcset = url; await event(one);"
                                 "return one.naturalWidth > 0"),
    "svg image": ("canary.svg", "const one = html('<img>'); one.src = url; await event(one);"
                                "return one.naturalWidth > 0"),
    "picture": ("canary.png", "const one = html('<picture><source><img></picture>');"
                              "one.firstChild.srcset = url; await event(one.lastChild);"
                              "return one.lastChild.naturalWidth > 0"),
    "css url": ("canary.png", "const one = html('<span style=\"display:inline-block\"></span>');"
                              "one.style.content = `url(\"${url}\")`; await wait();"
                              "return Math.round(one.getBoundingClientRect().width) === 7"),
    "script": ("canary.js", "delete window.canary; const one = document.createElement('script'); one.src = url;"
                            "place.append(one); await event(one); return window.canary === true"),
    "link": ("canary.css", "const probe = html('<div id=probe></div>'); const one = html('<link rel=stylesheet>');"
                           "one.href = url; await event(one); return probe.offsetWidth === 7"),
    "css import": ("canary.css", "const probe = html('<div id=probe></div>'); const one = html('<style></style>');"
                                 "one.textContent = `@import \"${url}\";`; await wait();"
                                 "return probe.offsetWidth === 7"),
    "iframe": ("canary.html", "const one = html('<iframe></iframe>'); one.src = url; return await message()"),
    "frame in a frame": ("canary.html", "const one = html('<iframe></iframe>');"
                                        "one.srcdoc = `<script>onmessage = (event) => parent.postMessage(event.data, '*')"
                                        "</scr` + `ipt><iframe src=\"${url}\"></iframe>`; return await message()"),
    "object": ("canary.html", "const one = html('<object></object>'); one.data = url; return await message()"),
    "embed": ("canary.html", "const one = html('<embed>'); one.src = url; return await message()"),
    "object with an image": ("canary.png", "const one = html('<object style=\"display:inline-block\"></object>');"
                                           "one.data = url; await wait();"
                                           "return Math.round(one.getBoundingClientRect().width) === 7"),
    "video": ("canary.wav", "const one = html('<video></video>'); one.preload = 'auto'; one.src = url;"
                            "await event(one, 'loadedmetadata'); return one.readyState > 0"),
    "audio": ("canary.wav", "const one = html('<audio></audio>'); one.preload = 'auto'; one.src = url;"
                            "await event(one, 'loadedmetadata'); return one.readyState > 0"),
    "fetch": ("canary.txt", "return (await (await fetch(url)).text()).includes('canary')"),
    "fetch without cors": ("canary.txt", "const found = await fetch(url, { mode: 'no-cors' });"
                                         "return found.type !== 'error'"),
    "XMLHttpRequest": ("canary.txt", "const request = new XMLHttpRequest(); request.open('GET', url);"
                                     "request.send(); await event(request); return request.responseText !== ''"),
    "synchronous XMLHttpRequest": ("canary.txt", "const request = new XMLHttpRequest();"
                                                 "request.open('GET', url, false); request.send();"
                                                 "return request.responseText !== ''"),
    "worker": ("canary.js", "const worker = new Worker(url); return await event(worker, 'message') === 'message'"),
    "worker's importScripts": ("canary.js", "const source = `importScripts(${JSON.stringify(url)});`;"
                                            "const worker = new Worker(URL.createObjectURL(new Blob([source])));"
                                            "return await event(worker, 'message') === 'message'"),
    "import": ("canary.mjs", "return (await import(url)).default === 'canary'"),
    "module": ("canary.mjs", "delete window.canary; const one = document.createElement('script');"
                             "one.type = 'module'; one.src = url; place.append(one); await event(one);"
                             "return window.canary === true"),
    "track": ("canary.txt", "const one = html('<video><track default></video>');"
                            "one.firstChild.src = url; one.firstChild.track.mode = 'showing';"
                            "return await event(one.firstChild) === 'load'"),
    "use": ("canary.svg", "const one = html('<svg><image/></svg>'); one.firstChild.setAttribute('href', url);"
                          "await event(one.firstChild); return one.firstChild.getBBox().width === 7"),
}

# What a page from a file gets of its own files; of the others the web view gives it nothing anyway.
WORKS_INSIDE = {"img", "img srcset", "svg image", "picture", "css url", "script", "link", "css import", "iframe",
                "frame in a frame", "object", "embed", "object with an image", "use"}

_SCRIPT = """
<script>
  const patience = 1500;
  const wait = () => new Promise((resolve) => setTimeout(resolve, 400));
  const event = (target, kind = 'load') => new Promise((resolve) => {
    for (const one of [kind, 'error']) target.addEventListener(one, () => resolve(one));
    setTimeout(resolve, patience, 'silent');
  });
  const message = () => new Promise((resolve) => {
    addEventListener('message', (heard) => { if (heard.data === 'canary') resolve(true); }, { once: true });
    setTimeout(resolve, 700, false);
  });
  let place;
  const html = (text) => { place.insertAdjacentHTML('beforeend', text); return place.lastElementChild; };
  // One after the other, each in an empty place, so that none is taken for another.
  window.tryAll = async (ways) => {
    const found = [];
    for (const [name, url, body] of ways) {
      place = document.getElementById('place');
      place.replaceChildren();
      let read = false;
      try {
        read = await new Function('url', 'html', 'event', 'message', 'wait', 'place',
          `return (async () => {${body}})()`)(url, html, event, message, wait, place);
      } catch {}
      if (read) found.push(name);
    }
    return found;
  };
</script>
"""


@pytest.fixture(scope="module")
def running(stage):
    program, server = stage(lambda server: server.page("<div id=place></div>", _SCRIPT),
                            {name: content for name, content in FILES.items()}
                            | {f"deep/er/{name}": content for name, content in FILES.items()})
    web = program.installation.web
    for directory in (program.home / "canaries", web.parent, web.parent / "web2", web.parent / "web.old"):
        directory.mkdir(exist_ok=True)
        for name, content in FILES.items():
            (directory / name).write_bytes(content if isinstance(content, bytes) else content.encode())
    return program, server


def _read_by(running, make_url, query=""):
    _, server = running
    # The query prevents a cached answer for the same file.
    ways = [[name, make_url(file) + query, body] for name, (file, body) in WAYS.items()]
    return set(server.run(f"return await tryAll({json.dumps(ways)});", timeout=120))


# Where the canaries are, relative to the page; `root` is the address of the page's directory.
OUTSIDE = {
    "an absolute address": lambda root, home: home + "/canaries/",
    "an address with a host": lambda root, home: home.replace("file://", "file://localhost") + "/canaries/",
    "a scheme in capital letters": lambda root, home: home.replace("file:", "FILE:") + "/canaries/",
    "a way up": lambda root, home: "../",
    "a way up from below": lambda root, home: "deep/../../",
    "encoded dots": lambda root, home: root + "/%2e%2e/",
    "half encoded dots": lambda root, home: root + "/.%2E/",
    "an encoded slash": lambda root, home: root + "/..%2f",
    "an encoded slash from below": lambda root, home: root + "/deep%2f..%2f..%2F",
    "an encoded slash after the root": lambda root, home: root + "%2f..%2f",
    "a backslash": lambda root, home: root + "/..\\",
    "an encoded backslash": lambda root, home: root + "/..%5c",
    "doubly encoded dots": lambda root, home: root + "/%252e%252e/",
    "a neighbour whose name begins alike": lambda root, home: root + "2/",
    "another neighbour": lambda root, home: root + ".old/",
    "doubled slashes": lambda root, home: root + "//..//..//" + "quendo/",
    "the system's root": lambda root, home: "file:////" + home.removeprefix("file:///") + "/canaries/",
}


@pytest.mark.parametrize("where", OUTSIDE)
def test_a_file_outside_the_bundle_is_not_read(running, where):
    program, server = running
    root = program.installation.web.as_uri()
    place = OUTSIDE[where](root, program.home.as_uri())
    address = server.evaluate("location.href")
    assert _read_by(running, lambda name: place + name) == set()
    assert server.evaluate("location.href") == address
    assert [one.title for one in program.windows()] == ["Quendo"]
    assert program.external.opened() == []


@pytest.mark.parametrize("where", ["", "deep/er/", "./deep/../", "%64eep/er/"])
def test_a_file_inside_the_bundle_is_read(running, where):
    assert _read_by(running, lambda name: where + name, "?inside") >= WORKS_INSIDE


@pytest.mark.parametrize("after", ["?next=a%2Fb", "?next=..%2f..%2f", "?a#b%2fc"])
def test_a_file_inside_the_bundle_is_read_whatever_follows_its_path(running, after):
    assert _read_by(running, lambda name: name, after) >= WORKS_INSIDE


@pytest.mark.parametrize("kind", ["absolute", "with a host"])
def test_a_file_inside_the_bundle_is_read_by_its_whole_address(running, kind):
    program, _ = running
    root = program.installation.web.as_uri()
    if kind == "with a host":
        root = root.replace("file://", "file://localhost")
    assert _read_by(running, lambda name: f"{root}/{quote(name)}", "?whole") >= WORKS_INSIDE
