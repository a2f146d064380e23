import { syntaxTree } from '@codemirror/language';
import type { EditorState } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import type { SyntaxNode } from '@lezer/common';
import { onMac } from '../keyboard/keys';
import { addressOf, destinationOf, referenceName } from '../text/links';
import { partsOfLink } from '../text/noteMarks';

/** Where something in a text leads: to a note by its title, to a tag by its name, or to an address. */
export interface Target {
  readonly kind: 'note' | 'tag' | 'address';
  readonly value: string;
}

const bareAddress = /(?:https?:\/\/|www\.|mailto:)[^\s<>"'`]*[^\s<>"'`.,;:!?)\]}]/gi;

/** What the text leads to at a position, if anything. */
export function targetAt(state: EditorState, position: number): Target | null {
  for (const side of [1, -1] as const) {
    for (let node: SyntaxNode | null = syntaxTree(state).resolveInner(position, side); node; node = node.parent) {
      const target = targetOf(state, node);
      if (target) return target;
    }
  }
  return bareAddressAt(state, position);
}

function targetOf(state: EditorState, node: SyntaxNode): Target | null {
  const written = () => state.sliceDoc(node.from, node.to);
  switch (node.name) {
    case 'NoteLink':
      return { kind: 'note', value: partsOfLink(written()).title };
    case 'NoteTag':
      return { kind: 'tag', value: written().slice(1) };
    case 'Autolink':
      return { kind: 'address', value: written().slice(1, -1) };
    case 'Link': {
      const url = destinationOf(node);
      const value = url ? state.sliceDoc(url.from, url.to) : definition(state, node);
      return value === null ? null : { kind: 'address', value: addressOf(value) };
    }
    case 'URL':
      return /^(?:Link|Image|Autolink)$/.test(node.parent?.name ?? '') ? null : { kind: 'address', value: written() };
  }
  return null;
}

/** The address of a link that names a definition. */
function definition(state: EditorState, link: SyntaxNode): string | null {
  const label = link.getChild('LinkLabel');
  const [open, close] = link.getChildren('LinkMark');
  const named = label && referenceName(state.sliceDoc(label.from, label.to));
  const name = named || (open && close && referenceName(state.sliceDoc(open.to, close.from)));
  if (!name) return null;
  for (let node = syntaxTree(state).topNode.firstChild; node; node = node.nextSibling) {
    if (node.name !== 'LinkReference') continue;
    const [label, url] = [node.getChild('LinkLabel'), node.getChild('URL')];
    if (label && url && referenceName(state.sliceDoc(label.from, label.to)) === name) {
      return state.sliceDoc(url.from, url.to);
    }
  }
  return null;
}

/** An address in a text without Markdown, or in code. */
function bareAddressAt(state: EditorState, position: number): Target | null {
  const { from, text } = state.doc.lineAt(position);
  const near = Math.max(0, position - from - 2000);
  for (const { 0: value, index } of text.slice(near, near + 4000).matchAll(bareAddress)) {
    const start = from + near + index;
    if (start <= position && position <= start + value.length) return { kind: 'address', value };
  }
  return null;
}

/** Clicks with the platform's key follow what they hit. */
export function targetClicks(follow: (target: Target) => void): ReturnType<typeof EditorView.domEventHandlers> {
  return EditorView.domEventHandlers({
    mousedown(event, view) {
      const mod = onMac ? event.metaKey : event.ctrlKey;
      if (!mod || event.button !== 0 || event.altKey || event.shiftKey) return false;
      const position = view.posAtCoords({ x: event.clientX, y: event.clientY });
      const target = position === null ? null : targetAt(view.state, position);
      if (!target) return false;
      event.preventDefault();
      follow(target);
      return true;
    },
  });
}
