"""State documents as the page keeps them, the same ones in every run."""

import json
import random

_WORDS = ("casa ação reunião projeto amanhã lista mercado pão queijo escrever texto nota ideia viagem coração "
          "número cliente prazo revisar enviar **importante** *talvez* `comando` [ligação](https://example.org/a) "
          "\"citação\" 😀").split()
_SHAPES = ("{}", "{}", "{}", "## {}", "- {}", "- [ ] {}", "> {}", "1. {}")


def _paragraphs():
    """Paragraphs, lists and headings, of some hundred characters each; many texts are quickly made of them."""
    chance = random.Random(7)
    return [chance.choice(_SHAPES).format(" ".join(chance.choices(_WORDS, k=chance.randint(4, 40))))
            for _ in range(500)]


def texts(count, size):
    """So many Markdown texts of about `size` bytes."""
    chance = random.Random(11)
    paragraphs = [(one, len(one.encode()) + 2) for one in _paragraphs()]
    for number in range(count):
        parts, weight = [f"# Nota {number}"], 0
        while weight < size:
            part, bytes_ = chance.choice(paragraphs)
            parts.append(part)
            weight += bytes_
        yield "\n\n".join(parts)


def state_document(count, size, active=0):
    """A document with so many notes of about `size` bytes, of which one is open."""
    notes = [{"id": f"note-{number}", "text": text, "format": "markdown", "name": None, "fileName": None,
              "lineBreak": "\n", "created": 1700000000000 + number, "updated": 1700000000000 + number}
             for number, text in enumerate(texts(count, size))]
    return _written({"version": 1, "revision": 7, "notes": notes, "bin": [],
                     "tabs": {"open": [f"note-{active}"], "active": f"note-{active}", "closed": []},
                     "settings": {"language": "en", "sidebarOpen": True, "sidebarMode": "all"}, "captureDraft": ""})


def left_in_the_middle(document):
    """The same document with the caret of its open note at the end of the line in the middle."""
    whole = json.loads(document)
    note = _open_note(whole)
    end = note["text"].find("\n", len(note["text"]) // 2)
    # Pages count in units of UTF-16.
    place = len(note["text"][:end].encode("utf-16-le")) // 2
    whole["places"] = {note["id"]: {"anchor": place, "head": place, "top": max(0, place - 400)}}
    return _written(whole)


def only_note(document):
    """The same document with nothing but its open note, for a page that knows of one text only."""
    whole = json.loads(document)
    whole["notes"] = [_open_note(whole)]
    return _written(whole)


def _open_note(whole):
    return next(note for note in whole["notes"] if note["id"] == whole["tabs"]["active"])


def _written(whole):
    return json.dumps(whole, ensure_ascii=False, separators=(",", ":"))
