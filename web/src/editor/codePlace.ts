import { syntaxTree } from '@codemirror/language';
import type { EditorState } from '@codemirror/state';

/** Whether a position of a Markdown text is inside code. */
export function isInCode(state: EditorState, at: number): boolean {
  for (let node = syntaxTree(state).resolveInner(at, -1); node.parent; node = node.parent) {
    if (/^(?:FencedCode|CodeBlock|InlineCode)$/.test(node.name)) return true;
  }
  return false;
}
