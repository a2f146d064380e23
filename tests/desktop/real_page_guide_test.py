"""The guide's lessons, tables and long notes in the real window."""

from harness.waiting import wait_until
from harness.writing import active_text, stored_state, wait_for_active_text, write

PRACTICE = r"[...document.querySelectorAll('.practice .cm-line')].map((line) => line.textContent).join('\n')"
OUTCOME = "document.querySelector('.practice-outcome')?.textContent"
START = "tea with milk, iced tea, black tea"


def test_a_lesson_is_done_with_its_keys_and_taken_back_by_undo(opened):
    quendo, page = opened
    write(quendo, page, "# A note")
    quendo.choose("Shortcuts", "How to Use Advanced Editing…")
    page.wait_for(f"{PRACTICE} === '{START}'")
    page.wait_for_editor()

    def every_tea_is_selected():
        quendo.press("ctrl+d")
        return page.evaluate("getSelection().toString() === 'tea' && "
                             "document.querySelectorAll('.practice .cm-otherSelection').length === 2")

    # The web view gets the focus once more a moment after a menu has closed, which can take back a selection made
    # since. Pressing the key more often than there are words does nothing.
    wait_until(every_tea_is_selected, 10, "every word to be selected")
    quendo.type("mate")
    page.wait_for(f"{PRACTICE} === '{START.replace('tea', 'mate')}'")
    assert page.evaluate(OUTCOME) == "Done!"
    quendo.press("ctrl+z")
    page.wait_for(f"{PRACTICE} === '{START}'")
    quendo.press("Tab", "Tab", "Return")
    page.wait_for(f"{PRACTICE}.startsWith('bread')")
    quendo.press("Escape")
    wait_until(lambda: page.dialog() is None, 10, "the guide to close")
    page.wait_for_editor()
    quendo.type("!")
    wait_for_active_text(quendo, "# A note!")


def test_tab_aligns_a_table_while_moving_between_cells(opened):
    quendo, page = opened
    quendo.press("ctrl+n")
    page.wait_for_editor()
    quendo.type("|Name|Price|\n|-|-:|")
    page.wait_for(f"{page.TEXT}.endsWith('|-|-:|')")
    quendo.press("Tab")
    quendo.type("bread")
    quendo.press("Tab")
    quendo.type("5")
    quendo.press("shift+Tab")
    wait_for_active_text(quendo, "| Name  | Price |\n| ----- | ----: |\n| bread |     5 |")


def test_a_long_note_has_its_look_wherever_one_writes(open_page):
    section = "## Title\n\nText that is **bold**.\n\n```js\nlet a = 1;\n```\n\n"
    quendo, page = open_page(stored_state({"a": section * 6000}))
    page.wait_for_editor()
    quendo.press("ctrl+End")
    quendo.type("## last")
    styled = "[...document.querySelectorAll('.work .cm-line.md-line-heading-2')].map((line) => line.textContent)"
    wait_until(lambda: "## last" in page.evaluate(styled), 10, "the look of the last heading")
    assert page.evaluate(styled).count("## Title") > 1
    assert page.evaluate("document.querySelectorAll('.work .md-line-code').length") > 3
    wait_until(lambda: (active_text(quendo) or "").endswith("```\n\n## last"), 15, "the end on disk")
