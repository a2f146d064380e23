import { syntaxTree } from '@codemirror/language';
import { EditorSelection, type EditorState, type Line } from '@codemirror/state';
import type { Command, EditorView } from '@codemirror/view';
import { tableChanges } from './tableChanges';
import { columnAt, readTable, type Table, writeTable } from '../text/tableText';

/** Longer tables are left alone: aligning one would cause a noticeable delay. */
const MOST_CHARACTERS = 50_000;

/**
 * Tab and Shift+Tab in a table move from cell to cell and align its columns; Tab in the last cell adds a row.
 */
export function moveInTable(step: 1 | -1): Command {
  return (view) => {
    const { state } = view;
    const place = placeInTable(state);
    if (!place) return false;
    const { table, caret, index } = place;
    const columns = table.alignments.length;
    // Treat the delimiter row as the last header cell.
    const column =
      index === 1 ? columns - 1 : Math.min(columnAt(caret.text, state.selection.main.head - caret.from), columns - 1);
    const cell = Math.max(0, Math.max(0, index - 1) * columns + column + step);
    const rows = cell < table.rows.length * columns ? table.rows : [...table.rows, table.alignments.map(() => '')];
    write(view, place, rows, Math.floor(cell / columns), cell % columns);
    return true;
  };
}

/** Enter in a table adds a row below; in an empty last row it ends the table. */
export const addRow: Command = (view) => {
  const { state } = view;
  const place = placeInTable(state);
  const { head, empty } = state.selection.main;
  if (!place || !empty || head === place.caret.from) return false;
  const { table, caret, index } = place;
  const row = Math.max(0, index - 1);
  const isEmpty = row > 0 && table.rows[row]?.every((text) => text === '');
  if (isEmpty && row === table.rows.length - 1) {
    view.dispatch({
      changes: { from: caret.from, to: caret.to },
      selection: { anchor: caret.from },
      scrollIntoView: true,
      userEvent: 'input',
    });
    return true;
  }
  const rows = [...table.rows.slice(0, row + 1), table.alignments.map(() => ''), ...table.rows.slice(row + 1)];
  write(view, place, rows, row + 1, 0);
  return true;
};

interface Place {
  readonly from: number;
  readonly to: number;
  readonly lines: ReadonlyArray<string>;
  readonly table: Table;
  readonly caret: Line;
  /** The caret's line in the table. */
  readonly index: number;
}

function placeInTable(state: EditorState): Place | null {
  const { main, ranges } = state.selection;
  const found = state.readOnly || ranges.length > 1 ? null : tableAt(state, main.head);
  if (!found) return null;
  const lines = state.doc.sliceString(found.from, found.to).split('\n');
  const table = readTable(lines);
  const caret = state.doc.lineAt(main.head);
  return table && { ...found, lines, table, caret, index: caret.number - state.doc.lineAt(found.from).number };
}

/** Writes the table with these rows and selects a cell; if there is a row more, it is in that one. */
function write(view: EditorView, place: Place, rows: Table['rows'], row: number, column: number): void {
  const { from, lines, table } = place;
  const written = writeTable({ ...table, rows });
  const line = row === 0 ? 0 : row + 1;
  const start = from + written.lines.slice(0, line).reduce((sum, text) => sum + text.length + 1, 0);
  const [first, last] = written.cells[row]?.[column] ?? [0, 0];
  view.dispatch({
    changes: tableChanges(lines, written.lines, from, line),
    selection: EditorSelection.single(start + first, start + last),
    scrollIntoView: true,
    userEvent: 'input',
  });
}

/** The lines of the table at a position. Tables inside quotes and lists are left alone. */
function tableAt(state: EditorState, at: number): { from: number; to: number } | null {
  const line = state.doc.lineAt(at);
  const start = line.from + (/^\s*/.exec(line.text)?.[0].length ?? 0);
  for (const side of [1, -1] as const) {
    for (let node = syntaxTree(state).resolveInner(Math.max(at, start), side); node.parent; node = node.parent) {
      if (node.name !== 'Table' || node.parent.parent) continue;
      const { from } = state.doc.lineAt(node.from);
      const { to } = state.doc.lineAt(node.to);
      return to - from <= MOST_CHARACTERS ? { from, to } : null;
    }
  }
  return null;
}
