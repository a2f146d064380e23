import { syntaxTree } from '@codemirror/language';
import type { ChangeSpec, EditorState } from '@codemirror/state';
import { type Command, EditorView } from '@codemirror/view';

const item = /^(\s*(?:>\s?)*\s*(?:[-*+]|\d{1,9}[.)])\s)(\[[ xX]\](?=\s|$))?/;

/** The change that checks or unchecks the task on a line, or turns a list item into a task. */
function toggleLine(state: EditorState, at: number): ChangeSpec | null {
  const { from, text } = state.doc.lineAt(at);
  const match = item.exec(text);
  if (!match || isCode(state, from + (match[1]?.length ?? 0))) return null;
  const start = from + (match[1]?.length ?? 0);
  if (!match[2]) return { from: start, insert: '[ ] ' };
  return { from: start, to: start + 3, insert: match[2] === '[ ]' ? '[x]' : '[ ]' };
}

function isCode(state: EditorState, at: number): boolean {
  for (let node = syntaxTree(state).resolveInner(at, 1); node.parent; node = node.parent) {
    if (node.name === 'FencedCode' || node.name === 'CodeBlock') return true;
  }
  return false;
}

/** Toggles the tasks on the selected lines. */
export const toggleTasks: Command = (view) => {
  const { state } = view;
  if (state.readOnly) return false;
  const lines = new Set<number>();
  for (const { from, to } of state.selection.ranges) {
    for (let at = from; at <= to; at = state.doc.lineAt(at).to + 1) lines.add(state.doc.lineAt(at).from);
  }
  const changes = [...lines].flatMap((at) => toggleLine(state, at) ?? []);
  if (changes.length) view.dispatch({ changes, userEvent: 'input' });
  return changes.length > 0;
};

/** Clicking a task's checkbox toggles it without moving the caret. */
export const taskClicks = EditorView.domEventHandlers({
  mousedown(event, view) {
    const box = event.target instanceof Element ? event.target.closest('.md-task') : null;
    if (!box || event.button !== 0 || event.altKey || event.shiftKey || view.state.readOnly) return false;
    const change = toggleLine(view.state, view.posAtDOM(box));
    if (!change) return false;
    event.preventDefault();
    view.dispatch({ changes: change, userEvent: 'input' });
    return true;
  },
});
