import { EditorSelection, EditorState, Text, type Transaction } from '@codemirror/state';
import type { Command, EditorView } from '@codemirror/view';
import { syntaxExtensions } from '../../src/editor/syntax';

/** Runs a command on a text in which `sign` marks carets and ‹› enclose a selection. */
export function run(command: Command, marked: string, sign = '|'): string {
  const ranges: ReturnType<typeof EditorSelection.range>[] = [];
  let doc = '';
  let open = -1;
  for (const character of marked) {
    if (character === sign) ranges.push(EditorSelection.cursor(doc.length));
    else if (character === '‹') open = doc.length;
    else if (character === '›') ranges.push(EditorSelection.range(open, doc.length));
    else doc += character;
  }
  let state = EditorState.create({
    doc,
    selection: EditorSelection.create(ranges),
    extensions: [EditorState.allowMultipleSelections.of(true), syntaxExtensions('markdown', Text.of(doc.split('\n')))],
  });
  const dispatch = (change: Transaction | Parameters<EditorState['update']>[0]) => {
    state = 'startState' in change ? change.state : state.update(change).state;
  };
  command({
    get state() {
      return state;
    },
    dispatch,
  } as unknown as EditorView);
  const out = state.doc.toString();
  return [...state.selection.ranges]
    .reverse()
    .reduce(
      (text, { from, to }) =>
        from === to
          ? `${text.slice(0, from)}${sign}${text.slice(from)}`
          : `${text.slice(0, from)}‹${text.slice(from, to)}›${text.slice(to)}`,
      out,
    );
}
