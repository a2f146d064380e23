import { type ChangeSpec, EditorSelection } from '@codemirror/state';
import type { Command } from '@codemirror/view';

/** Joins the selected lines, or the caret's line and the next, with one space between them. */
export const joinLines: Command = (view) => {
  const { state } = view;
  if (state.readOnly) return false;
  const changes: ChangeSpec[] = [];
  const carets: number[] = [];
  let done = -1;
  for (const { from, to } of state.selection.ranges) {
    const first = state.doc.lineAt(from);
    const chosen = state.doc.lineAt(to).number;
    const last = Math.min(chosen > first.number ? chosen : first.number + 1, state.doc.lines);
    let written = first.text.trim() !== '';
    for (let number = Math.max(first.number, done); number < last; number++) {
      const { text, to: end } = state.doc.line(number);
      const next = state.doc.line(number + 1).text;
      const before = text.length - text.trimEnd().length;
      const after = next.length - next.trimStart().length;
      const insert = written && next.trim() ? ' ' : '';
      written ||= next.trim() !== '';
      changes.push({ from: end - before, to: end + 1 + after, insert });
      carets.push(end - before);
    }
    done = last;
  }
  if (!changes.length) return false;
  const set = state.changes(changes);
  const multiple = state.selection.ranges.length > 1;
  const heads = multiple ? carets : carets.slice(-1);
  const ranges = heads.map((at) => EditorSelection.cursor(set.mapPos(at, -1)));
  view.dispatch({
    changes: set,
    selection: EditorSelection.create(ranges, ranges.length - 1),
    scrollIntoView: true,
    userEvent: 'input',
  });
  return true;
};
