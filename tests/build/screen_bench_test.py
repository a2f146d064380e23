"""What the benchmark of the screen makes of pixels and processes. It times nothing here."""

import re
import sys

import pytest

from conftest import ROOT

sys.path.insert(0, str(ROOT / "bench"))

import table  # noqa: E402
from pixels import Box, Picture, changes, completion, growing_line, right_edge  # noqa: E402
from process_trees import descendants, drawn_by, parse_private, parse_proportional, parse_stat  # noqa: E402
from ratios import part  # noqa: E402
from screen_results import Results, replace_table  # noqa: E402

WIDTH, HEIGHT = 100, 40


def picture(*boxes):
    """White, with black boxes."""
    pixels = bytearray(b"\xff" * WIDTH * HEIGHT * 4)
    for left, top, right, bottom in boxes:
        for row in range(top, bottom):
            start = (row * WIDTH + left) * 4
            pixels[start:start + (right - left) * 4] = bytes((right - left) * 4)
    return Picture(WIDTH, bytes(pixels))


def test_equal_pictures_have_no_changes():
    assert changes(picture(Box(3, 4, 5, 6)), picture(Box(3, 4, 5, 6))) == []
    assert right_edge(picture(), picture()) is None


def test_a_letter_and_its_dot_are_one_change():
    dot, stem = Box(10, 10, 12, 12), Box(10, 14, 12, 20)
    assert changes(picture(), picture(dot, stem)) == [Box(10, 10, 12, 20)]


def test_changes_in_the_same_rows_but_far_apart_are_several():
    line, scroll_bar = Box(10, 10, 14, 20), Box(90, 5, 95, 30)
    assert changes(picture(), picture(line, scroll_bar)) == [line, scroll_bar]


def test_changes_in_far_rows_are_several():
    line, status = Box(10, 5, 14, 15), Box(10, 30, 60, 38)
    assert changes(picture(), picture(line, status)) == [line, status]


def test_what_only_a_third_change_beside_them_joins_stays_apart():
    line, upright, below = Box(2, 5, 14, 15), Box(90, 3, 95, 39), Box(2, 30, 60, 36)
    assert changes(picture(), picture(line, upright, below)) == [line, below, upright]


def test_one_pixel_in_the_last_column_is_the_edge():
    assert right_edge(picture(), picture(Box(20, 3, 24, 9), Box(WIDTH - 1, 39, WIDTH, 40))) == WIDTH


def test_the_line_is_what_moves_on_with_every_key():
    count = Box(70, 30, 80, 38)
    steps = [[Box(10, 10, 16, 20), count], [Box(14, 8, 22, 20), count], [Box(20, 10, 30, 21), count]]
    assert growing_line(steps) == Box(10, 8, 30, 21)


def test_a_line_that_stops_is_no_line():
    assert growing_line([[Box(10, 10, 16, 20)], [Box(14, 10, 22, 20)], [Box(14, 10, 22, 20)]]) is None
    assert growing_line([[Box(10, 10, 16, 20)], []]) is None


def test_a_change_elsewhere_in_the_rows_does_not_continue_the_line():
    assert growing_line([[Box(10, 10, 16, 20)], [Box(60, 10, 70, 20)]]) is None


def test_a_place_is_complete_when_only_a_caret_changes():
    assert completion([(1.0, 9000), (1.5, 400), (2.0, 20), (2.5, 0), (3.0, 20), (3.5, 0)]) == 2.0


def test_a_place_that_looked_final_before_is_complete_only_at_last():
    assert completion([(1.0, 0), (1.5, 5000), (2.0, 0)]) == 2.0


def test_a_tree_has_all_below_a_process_and_nothing_else():
    parents = {1: 0, 10: 1, 11: 10, 12: 11, 13: 10, 20: 1, 21: 20}
    assert descendants(10, parents) == {10, 11, 12, 13}
    assert descendants(12, parents) == {12}


def test_processor_time_is_read_behind_any_name():
    rest = "S 7 1 1 0 -1 0 0 0 0 0 100 20 3 4 20 0 1 0 5"
    assert parse_stat(f"42 (a) (b c) {rest}") == (7, 127)


def test_memory_is_the_proportional_one():
    assert parse_proportional("Rss:  900 kB\nPss:     120 kB\nPss_Dirty: 7 kB\n") == 120 * 1024


def test_of_a_hidden_process_the_private_memory_counts():
    assert parse_private("9000 700 200 5 0 300 0\n", 4096) == 500 * 4096


@pytest.mark.parametrize(("threads", "maps", "drawn"), [
    ([("quendo", 3.0), ("llvmpipe-0", 0.04), ("llvmpipe-1", 0.04)], [""], "OpenGL in software"),
    # The library is loaded only to ask it.
    ([("quendo", 3.0), ("llvmpipe-0", 0.0)], ["7f0 r-xp 0 08:01 1 /usr/lib/dri/swrast_dri.so\n"], "processor"),
    ([("quendo", 3.0)], ["", "7f0 rw-s 0 00:06 1 /dev/dri/renderD128\n"], "card")])
def test_what_draws_is_known_by_its_traces(threads, maps, drawn):
    assert drawn_by(threads, maps) == drawn


@pytest.mark.parametrize(("share", "value"), [(0, 1), (0.5, 11), (0.95, 20), (1, 20)])
def test_a_share_of_values_does_not_exceed_the_part(share, value):
    assert part([*range(20, 0, -1)], share) == value


@pytest.fixture
def results():
    """Quendo and one other program."""
    found = Results()
    for program, times in (("quendo", 2), ("other", 1), ("bare-textarea", 4)):
        found.add(program, window=[0.1 * times], text=[0.2 * times], key=[0.01 * times, 0.03 * times],
                  processor=[0.001 * times], idle=[0.02 * times], memory=[5e7 * times], hour=[6e7 * times])
        found.drawn_by(program, "processor")
    return found


def test_lines_are_ratios_that_the_table_of_all_benchmarks_takes(results):
    lines = list(results.lines())
    assert "screen/other window 2.00  (200 ms against 100 ms, 1 and 1 values)" in lines
    assert "screen/other memory 2.00  (100 MB against 50 MB, 1 and 1 values)" in lines
    names = [name for name, *_rest in table.rows(lines, quick=False)]
    assert names == [re.fullmatch(r"(.*?) \d\.\d\d  \(.*", line)[1] for line in lines]


def test_large_texts_are_compared_with_the_plainest_program(results):
    results.add_large("20 MB", key=[0.02, 0.06], processor=[0.001])
    assert "screen/bare-textarea key-to-pixel, 20 MB 0.50  (40 ms against 80 ms, 2 and 2 values)" in results.lines()
    assert results.table("software", []).endswith("| quendo, 20 MB | 0.50 (40 ms) | 0.50 (60 ms) | 0.50 (60 ms) | "
                                                  "0.25 (1.0 ms) |")


def test_an_idle_program_that_takes_less_than_can_be_counted_gives_no_endless_ratio(results):
    results.add("still", window=[1], text=[1], key=[1], processor=[0.0], idle=[0.0], memory=[1], hour=[1])
    lines = [line.partition("  ")[0] for line in results.lines()]
    assert "screen/still processor-idle 20.00" in lines and "screen/still processor-a-key 8.00" in lines


def test_a_table_stands_between_its_marker_lines_and_nothing_else_changes(results):
    shown = results.table("software", ["mousepad"])
    document = replace_table("before\n<!-- screen -->\nold\n<!-- end of screen -->\nafter\n", shown)
    assert document == f"before\n<!-- screen -->\n{shown}\n<!-- end of screen -->\nafter\n"
    assert "| quendo | 200 ms | 400 ms |" in document and "| other | 2.00 (100 ms) |" in document
    assert "Left out: mousepad." in document


def test_a_document_without_marker_lines_is_refused():
    with pytest.raises(ValueError, match="lacks the lines"):
        replace_table("<!-- screen -->\n", "")
