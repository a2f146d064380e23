import { syntaxTree } from '@codemirror/language';
import { EditorSelection, type EditorState } from '@codemirror/state';
import type { Command } from '@codemirror/view';
import { columnAt, readTable, writeTable } from '../text/tableText';

/** Longer tables are left alone: aligning one would cause a noticeable delay. */
const MOST_CHARACTERS = 50_000;

/**
 * Tab and Shift+Tab in a table move from cell to cell and align its columns; Tab in the last cell adds a row.
 */
export function moveInTable(step: 1 | -1): Command {
  return (view) => {
    const { state } = view;
    const { main, ranges } = state.selection;
    const found = state.readOnly || ranges.length > 1 ? null : tableAt(state, main.head);
    if (!found) return false;
    const { from, to } = found;
    const lines = state.doc.sliceString(from, to).split('\n');
    const table = readTable(lines);
    if (!table) return false;
    const caret = state.doc.lineAt(main.head);
    const index = caret.number - state.doc.lineAt(from).number;
    const columns = table.alignments.length;
    // Treat the delimiter row as the last header cell.
    const column = index === 1 ? columns - 1 : Math.min(columnAt(caret.text, main.head - caret.from), columns - 1);
    const cell = Math.max(0, Math.max(0, index - 1) * columns + column + step);
    const rows = cell < table.rows.length * columns ? table.rows : [...table.rows, table.alignments.map(() => '')];
    const written = writeTable({ ...table, rows });
    const row = Math.floor(cell / columns);
    const line = row === 0 ? 0 : row + 1;
    const start = from + written.lines.slice(0, line).reduce((sum, text) => sum + text.length + 1, 0);
    const [first, last] = written.cells[row]?.[cell % columns] ?? [0, 0];
    const text = written.lines.join('\n');
    view.dispatch({
      ...(text === lines.join('\n') ? {} : { changes: { from, to, insert: state.toText(text) } }),
      selection: EditorSelection.single(start + first, start + last),
      scrollIntoView: true,
      userEvent: 'input',
    });
    return true;
  };
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
