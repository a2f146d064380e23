"""Choosing files in the real page."""

import json
import re
from pathlib import Path

from harness.waiting import wait_until

SAMPLES = Path(__file__).parents[1] / "corpus" / "text-files.json"

CHOOSE = """(() => {
    const files = new DataTransfer();
    for (const [name, bytes] of %s) {
      const numbers = (hex) => hex.split(' ').map((byte) => parseInt(byte, 16));
      const whole = bytes.flatMap(([count, hex]) => Array(count).fill(numbers(hex)).flat());
      files.items.add(new File([new Uint8Array(whole)], name));
    }
    const input = document.getElementById('importFileInput');
    input.files = files.files;
    input.dispatchEvent(new Event('change'));
    return true;
})()"""


def test_they_are_decoded_by_this_engine_as_the_host_decodes_those_from_the_desktop(opened):
    quendo, page = opened
    samples = json.loads(SAMPLES.read_text(encoding="utf-8"))
    files = [(f"{index}.txt", sample["bytes"]) for index, sample in enumerate(samples)]
    expected = {f"{index}.txt": re.sub("\r\n?", "\n", "".join(text * count for count, text in sample["text"]))
                for index, sample in enumerate(samples) if sample["text"] is not None}
    page.evaluate(CHOOSE % json.dumps(files))

    def taken():
        document = quendo.state.document() or {"notes": []}
        return {note["name"]: note["text"] for note in document["notes"]}

    wait_until(lambda: len(taken()) >= len(expected), 20, "the files to be saved as notes")
    notes = taken()
    wrong = [samples[int(name.split(".")[0])]["name"] for name in {*notes, *expected}
             if notes.get(name) != expected.get(name)]
    assert wrong == []
