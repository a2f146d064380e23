import { EditorSelection, type EditorState, type TransactionSpec } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { isInCode } from './codePlace';
import { shownSyntax } from './syntax';

const pairs: Readonly<Record<string, string>> = {
  '(': ')',
  '[': ']',
  '{': '}',
  '"': '"',
  "'": "'",
  '“': '”',
  '‘': '’',
  '«': '»',
};
const marks = '*_`~';

/** Typing a mark over selected text puts it around the text, which stays selected for the next one. */
export const wrapping = EditorView.inputHandler.of((view, from, to, text) => {
  const { main } = view.state.selection;
  const change = view.composing || from !== main.from || to !== main.to ? null : wrap(view.state, text);
  if (change) view.dispatch(change);
  return change !== null;
});

export function wrap(state: EditorState, text: string): TransactionSpec | null {
  const { ranges, main } = state.selection;
  const isMark = marks.includes(text) && state.facet(shownSyntax) === 'markdown' && !isInCode(state, main.from);
  const close = isMark ? text : pairs[text];
  if (text.length !== 1 || !close || state.readOnly || ranges.some((range) => range.empty)) return null;
  const change = state.changeByRange(({ from, to, anchor, head }) => ({
    changes: [
      { from, insert: text },
      { from: to, insert: close },
    ],
    range: EditorSelection.range(anchor + 1, head + 1),
  }));
  return { ...change, scrollIntoView: true, userEvent: 'input.wrap' };
}
