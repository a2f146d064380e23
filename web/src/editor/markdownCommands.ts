import { type ChangeSpec, EditorSelection, type EditorState, type Line } from '@codemirror/state';
import type { Command } from '@codemirror/view';
import { toggleTasks } from './tasks';

const headingLead = /^#{1,6}(?:\s+|$)/;
const quoteLead = /^>\s?/;
const bulletLead = /^\s*[-*+]\s+(?!\[[ xX]\]\s)/;
const itemLead = /^\s*(?:[-*+]|\d{1,9}[.)])\s+(?:\[[ xX]\]\s+)?/;
const taskLead = /^\s*(?:[-*+]|\d{1,9}[.)])\s+\[[ xX]\](?:\s|$)/;

/** Makes the selected lines headings of a level, or text again. */
export function toggleHeading(level: 1 | 2 | 3): Command {
  const sign = `${'#'.repeat(level)} `;
  return leadLines(headingLead, sign, (text) => headingLead.exec(text)?.[0].trim() === sign.trim());
}

export const toggleQuote: Command = leadLines(quoteLead, '> ', (text) => quoteLead.test(text));

export const toggleList: Command = leadLines(itemLead, '- ', (text) => bulletLead.test(text));

/** Ticks tasks; lines that are none become tasks first. */
export const makeTasks: Command = (view) => {
  const lines = chosenLines(view.state);
  if (lines.every(({ text }) => itemLead.test(text))) return toggleTasks(view);
  return leadLines(itemLead, '- [ ] ', (text) => taskLead.test(text))(view);
};

/** Makes a link of the selection, which is its address if it looks like one, and goes to the other half. */
export const insertLink: Command = (view) => {
  const { state } = view;
  if (state.readOnly) return false;
  const change = state.changeByRange(({ from, to }) => {
    const chosen = state.sliceDoc(from, to);
    const isAddress = /^(?:https?:\/\/|mailto:|www\.)\S+$/i.test(chosen);
    const insert = isAddress ? `[](${chosen})` : `[${chosen}]()`;
    const caret = isAddress || !chosen ? from + 1 : from + insert.length - 1;
    return { changes: { from, to, insert }, range: EditorSelection.cursor(caret) };
  });
  view.dispatch(change, { scrollIntoView: true, userEvent: 'input' });
  return true;
};

/** Puts a lead before each selected line in place of those like it, or takes it away if all have it. */
function leadLines(like: RegExp, lead: string, has: (text: string) => boolean): Command {
  return (view) => {
    const { state } = view;
    if (state.readOnly) return false;
    const lines = chosenLines(state);
    const remove = lines.every(({ text }) => has(text));
    const specs = lines.flatMap(({ from, text }): ChangeSpec[] => {
      if (!remove && has(text)) return [];
      const old = like.exec(text)?.[0] ?? '';
      const indent = remove ? '' : (/^\s*/.exec(old)?.[0] ?? '');
      return [{ from, to: from + old.length, insert: remove ? '' : indent + lead }];
    });
    const changes = state.changes(specs);
    view.dispatch({ changes, selection: state.selection.map(changes, 1), scrollIntoView: true, userEvent: 'input' });
    return true;
  };
}

/** The selected lines, without empty ones unless there are no others. */
function chosenLines({ doc, selection }: EditorState): Line[] {
  const lines = new Map<number, Line>();
  for (const { from, to } of selection.ranges) {
    for (let number = doc.lineAt(from).number; number <= doc.lineAt(to).number; number++) {
      lines.set(number, doc.line(number));
    }
  }
  const written = [...lines.values()].filter(({ text }) => text.trim());
  return written.length ? written : [...lines.values()];
}
