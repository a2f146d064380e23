"""What a user sees of Quendo and of other programs with the same text: how long a launch takes to the window and to
the whole text, how long a key takes to its pixels, and what of the machine that takes."""

import argparse
import os
import random
import sys
import tempfile
import time
from pathlib import Path
from statistics import median

from editors import make_editors, make_large
from graphics import renderer
from keyboard import PageScripts
from pixels import completion
from programs import BUILD, Installation, require_private_desktop
from screen import RETURN, Line, Screen
from screen_results import Results, write_table
from harness import desktop
from harness.waiting import wait_until

# In the middle of the screen: every window opens there with a part of its text.
MIDDLE = (600, 380, 400, 240)
WINDOW = (100, 60, 1320, 820)
WORDS = "palavras que se escrevem sem parar e sem acentos "
# After the pixels of the last key, never in step with the frames: somebody who types fast.
REST = (0.11, 0.17)
# 40 words of five letters a minute, sixty times as fast.
HOUR_KEYS = 12_000
HOUR_PACE = 60 / HOUR_KEYS
HOUR_LINE = 60


class Extent:
    """How much is measured."""

    def __init__(self, quick, rounds):
        self.rounds = 1 if quick else rounds
        self.quiet = 0.7 if quick else 1.5
        self.settle = 0.5 if quick else 5
        self.idle = 0.5 if quick else 5
        self.warm_keys = 1 if quick else 8
        self.keys = 4 if quick else 40
        self.hour_keys = 60 if quick else HOUR_KEYS
        self.warm_up = not quick


def open_window(editor, screen, extent):
    """Starts it and returns (the program, its window, seconds to the window, seconds to the whole text)."""
    desktop.park_pointer()
    wait_until(lambda: not desktop.windows(), 10, "the screen to be empty")
    screen.start_recording(MIDDLE, extent.quiet, 60)
    began = time.monotonic()
    started = editor.start()
    try:
        first, frames = screen.recorded()
        started.require_running()
        if not frames:
            raise RuntimeError("it showed nothing")
        window = wait_until(lambda: next(iter(desktop.windows()), None), 10, "the window")
    except Exception:
        started.kill()
        raise
    return started, window, first - began, completion(frames) - began


def processor_share(tree, seconds):
    before, began = tree.processor_seconds(), time.monotonic()
    time.sleep(seconds)
    return (tree.processor_seconds() - before) / (time.monotonic() - began)


def type_round(line, tree, extent):
    """Returns (seconds from each key to its pixels, processor seconds a key)."""
    letters = (WORDS * 2)[:extent.warm_keys + extent.keys]
    delays = []
    for number, letter in enumerate(letters):
        if number == extent.warm_keys:
            before = tree.processor_seconds()
        delay = line.press(letter, random.uniform(*REST))
        if number >= extent.warm_keys:
            delays.append(delay)
    seen = [one for one in delays if one is not None]
    if len(seen) < 0.9 * len(delays):
        raise RuntimeError(f"only {len(seen)} of {len(delays)} keys showed")
    return seen, (tree.processor_seconds() - before) / extent.keys


def type_hour(screen, tree, extent, idle):
    """Types as much as in an hour and waits until the program has done with it."""
    keys = [RETURN if number % HOUR_LINE == HOUR_LINE - 1 else ord(WORDS[number % len(WORDS)])
            for number in range(extent.hour_keys)]
    screen.type(keys, HOUR_PACE)
    busy = 0.25 + 1.5 * idle
    wait_until(lambda: processor_share(tree, 1) < busy, 300, "the keys to be done with")


def place_window(window, extent):
    desktop.run("wmctrl", "-i", "-r", hex(window.id), "-e", "0," + ",".join(map(str, WINDOW)))
    desktop.activate(window)
    time.sleep(extent.settle)


def measure(editor, screen, extent, results, with_hour):
    editor.restore_home()
    started, window, to_window, to_text = open_window(editor, screen, extent)
    try:
        place_window(window, extent)
        idle = processor_share(started.tree, extent.idle)
        memory = started.tree.proportional_bytes()
        delays, a_key = type_round(Line(screen, window), started.tree, extent)
        results.add(editor.name, window=[to_window], text=[to_text], key=delays, processor=[a_key], idle=[idle],
                    memory=[memory])
        if with_hour:
            type_hour(screen, started.tree, extent, idle)
            started.require_running()
            results.add(editor.name, hour=[started.tree.proportional_bytes()])
            results.drawn_by(editor.name, started.tree.drawn_by())
    finally:
        started.kill()


def measure_large(text, editor, screen, extent, results):
    editor.restore_home()
    started, window, *_rest = open_window(editor, screen, extent)
    try:
        place_window(window, extent)
        delays, a_key = type_round(Line(screen, window), started.tree, extent)
        results.add_large(text, key=delays, processor=[a_key])
    finally:
        started.kill()


def warm_up(editor, screen, extent):
    started, *_rest = open_window(editor, screen, extent)
    started.quit()
    editor.keep_home()


def run_rounds(editors, large, screen, extent, results):
    """Returns the names of other programs than Quendo that failed. They are left out from then on."""
    failed = []
    for number in range(-1 if extent.warm_up else 0, extent.rounds):
        # Each goes first and last every other round.
        for editor in editors if number % 2 == 0 else editors[::-1]:
            if editor.name in failed:
                continue
            try:
                if number < 0:
                    warm_up(editor, screen, extent)
                else:
                    measure(editor, screen, extent, results, number == extent.rounds - 1)
            except Exception as error:
                if editor is editors[0]:
                    raise
                print(f"{editor.name}: {error}", file=sys.stderr)
                results.leave_out(editor.name)
                failed.append(editor.name)
        for text, editor in large.items():
            if number < 0:
                warm_up(editor, screen, extent)
            else:
                measure_large(text, editor, screen, extent, results)
    return failed


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--quick", action="store_true", help="a few keys in each, to see that it works")
    options.add_argument("--rounds", type=int, default=5)
    options.add_argument("--on-processor", action="store_true", help="let no program use the graphics card")
    options.add_argument("--write", type=Path, help="the document whose table is to be replaced")
    chosen = options.parse_args()
    require_private_desktop()
    desktop.let_no_key_repeat()
    extent = Extent(chosen.quick, chosen.rounds)
    results = Results()
    screen = Screen()
    noticed = screen.resolution(5 if chosen.quick else 200)
    with tempfile.TemporaryDirectory(prefix="quendo-screen-") as directory:
        installation = Installation.install(BUILD, directory)
        editors, missing = make_editors(directory, installation, PageScripts(Path(directory) / "scripts"),
                                        chosen.on_processor)
        for name in missing:
            print(f"Not installed and left out: {name}.", file=sys.stderr)
        large = {} if chosen.quick else make_large(directory, installation, chosen.on_processor)
        failed = run_rounds(editors, large, screen, extent, results)
    screen.close()
    for line in results.lines():
        print(line, flush=True)
    if chosen.write:
        drawn = "all drawn by the processor" if chosen.on_processor else "each with its own choice"
        rounds = "1 round" if extent.rounds == 1 else f"{extent.rounds} rounds"
        heading = (f"{renderer()}, {drawn}; {os.cpu_count()} processors, {rounds}, "
                   f"resolution {median(noticed) * 1e3:.2f} ms")
        write_table(chosen.write, results.table(heading, [f"{name} (not installed)" for name in missing] +
                                                [f"{name} (failed)" for name in failed]))
    if failed:
        sys.exit(f"Failed: {', '.join(failed)}")


if __name__ == "__main__":
    main()
