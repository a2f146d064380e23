import { deleteMarkupBackward, insertNewlineContinueMarkupCommand } from '@codemirror/lang-markdown';
import { type ChangeSpec, type EditorState, EditorSelection, type Line, Prec } from '@codemirror/state';
import { type Command, keymap } from '@codemirror/view';
import { isInCode } from './codePlace';
import { addRow, moveInTable } from './tableKeys';
import { toggleTasks } from './tasks';

/** Toggles the given marks around the selection. */
export function toggleMark(mark: string): Command {
  const { length } = mark;
  return (view) => {
    const { state } = view;
    if (state.readOnly) return false;
    const change = state.changeByRange((range) => {
      const { from, to } = range.empty ? (state.wordAt(range.head) ?? range) : range;
      const marked = isMarked(state, from, to, mark);
      const changes: ChangeSpec[] = marked
        ? [
            { from: from - length, to: from },
            { from: to, to: to + length },
          ]
        : [
            { from, insert: mark },
            { from: to, insert: mark },
          ];
      const shift = marked ? -length : length;
      return { changes, range: EditorSelection.range(range.anchor + shift, range.head + shift) };
    });
    view.dispatch(state.update(change, { userEvent: 'input', scrollIntoView: true }));
    return true;
  };
}

/** A single asterisk next to another one is half of a stronger mark. */
function isMarked({ doc }: EditorState, from: number, to: number, mark: string): boolean {
  const { length } = mark;
  const before = doc.sliceString(Math.max(0, from - length - 1), from);
  const after = doc.sliceString(to, Math.min(doc.length, to + length + 1));
  if (!before.endsWith(mark) || !after.startsWith(mark)) return false;
  const isStronger = before === mark + mark && after === mark + mark;
  return !isStronger || doc.sliceString(Math.max(0, from - 3), from) === mark.repeat(3);
}

const ordered = /^\s*(\d{1,9})[.)]/;
const listItem = /^(\s*)(?:[-*+]|\d{1,9}[.)])\s+/;

/**
 * The item's indent one level in or out: in, below the text of the item above; out, level with the nearest
 * less indented item above.
 */
function newIndent(state: EditorState, line: Line, outwards: boolean): number | null {
  const indent = listItem.exec(line.text)?.[1]?.length ?? 0;
  for (let number = line.number - 1; number > 0; number--) {
    const { text } = state.doc.line(number);
    const above = listItem.exec(text);
    if (!above) {
      if (text.trim() && !/^\s/.test(text)) break;
      continue;
    }
    const start = above[1]?.length ?? 0;
    if (outwards && start < indent) return start;
    // The item above is less indented, so this one is already nested.
    if (!outwards && start <= indent) return start < indent ? null : textColumn(above[0]);
  }
  return outwards && indent > 0 ? 0 : null;
}

/** The column of an item's text; wide gaps after the mark count as one space. */
function textColumn(lead: string): number {
  return lead.trimEnd().length + 1;
}

/** Renumbers an item to follow the one above it on its new level, starting at 1. */
function renumbering(state: EditorState, line: Line, indent: number): ChangeSpec[] {
  const own = ordered.exec(line.text);
  if (!own?.[1]) return [];
  let number = 1;
  for (let above = line.number - 1; above > 0; above--) {
    const { text } = state.doc.line(above);
    const start = listItem.exec(text)?.[1]?.length;
    if (start === undefined ? text.trim() && !/^\s/.test(text) : start < indent) break;
    if (start !== indent) continue;
    number = Number(ordered.exec(text)?.[1] ?? 0) + 1;
    break;
  }
  const from = line.from + own[0].length - 1 - own[1].length;
  return own[1] === String(number) ? [] : [{ from, to: from + own[1].length, insert: String(number) }];
}

/** Tab and Shift+Tab indent and outdent list items; elsewhere the keys keep their meaning. */
export function indentItems(outwards: boolean): Command {
  return (view) => {
    const { state } = view;
    const { main } = state.selection;
    const first = state.doc.lineAt(main.from);
    if (state.readOnly || state.selection.ranges.length > 1 || !listItem.test(first.text)) return false;
    const before = listItem.exec(first.text)?.[1] ?? '';
    if (before.includes('\t')) return false;
    const target = newIndent(state, first, outwards);
    if (target === null) return !outwards || before === '';
    const step = target - before.length;
    const changes: ChangeSpec[] = renumbering(state, first, target);
    for (let at = first.from; at <= main.to; ) {
      const { from, to, text } = state.doc.lineAt(at);
      const blanks = /^ */.exec(text)?.[0].length ?? 0;
      if (step > 0 && text) changes.push({ from, insert: ' '.repeat(step) });
      else if (step < 0) changes.push({ from, to: from + Math.min(-step, blanks) });
      at = to + 1;
    }
    view.dispatch({ changes, userEvent: outwards ? 'delete.dedent' : 'input.indent' });
    return true;
  };
}

/** Enter on an empty line of a quote ends it, or its innermost one. */
export const endQuote: Command = (view) => {
  const { state } = view;
  const { main, ranges } = state.selection;
  const line = state.doc.lineAt(main.head);
  const outer = /^((?:\s*>)*)\s*>\s*$/.exec(line.text)?.[1];
  if (state.readOnly || ranges.length > 1 || !main.empty || outer === undefined || main.head !== line.to) return false;
  if (isInCode(state, line.from)) return false;
  const lead = outer && `${outer} `;
  const above = line.number > 1 ? state.doc.line(line.number - 1).text : '';
  // Without an empty line between, what is written next would belong to the paragraph above.
  const insert = /^[\s>]*$/.test(above) ? lead : `${outer}\n${lead}`;
  const changes = { from: line.from, to: line.to, insert };
  view.dispatch({
    changes,
    selection: { anchor: line.from + insert.length },
    scrollIntoView: true,
    userEvent: 'input',
  });
  return true;
};

/** Prose has no comments; the code in it has. */
const noComment: Command = ({ state }) => !isInCode(state, state.selection.main.head);

export const markdownKeys = Prec.high(
  keymap.of([
    { key: 'Enter', run: addRow },
    { key: 'Enter', run: endQuote },
    // Enter on an empty item ends the list right away.
    { key: 'Enter', run: insertNewlineContinueMarkupCommand({ nonTightLists: false }) },
    { key: 'Backspace', run: deleteMarkupBackward },
    { key: 'Tab', run: moveInTable(1), shift: moveInTable(-1) },
    { key: 'Tab', run: indentItems(false), shift: indentItems(true) },
    { key: 'Mod-/', run: noComment },
    { key: 'Alt-A', run: noComment },
    { key: 'Mod-Enter', run: toggleTasks },
    { key: 'Mod-b', run: toggleMark('**') },
    { key: 'Mod-i', run: toggleMark('*') },
    { key: 'Mod-e', run: toggleMark('`') },
  ]),
);
