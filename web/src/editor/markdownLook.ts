import { syntaxTree } from '@codemirror/language';
import type { EditorState } from '@codemirror/state';
import { Decoration, type ViewUpdate } from '@codemirror/view';
import type { SyntaxNodeRef } from '@lezer/common';
import { changedSyntax } from './changedSyntax';
import { type Add, type Span, visibleMarks } from './visibleMarks';

/** The widest list mark, in characters, that still gets a hanging indent. */
const WIDEST_LEAD = 16;

const lineClasses: Record<string, string> = {
  FencedCode: 'md-line-code',
  CodeBlock: 'md-line-code',
  Blockquote: 'md-line-quote',
  Table: 'md-line-table',
  HorizontalRule: 'md-line-rule',
};

const cache = new Map<string, Decoration>();

function line(name: string): Decoration {
  const known = cache.get(name) ?? Decoration.line({ class: name });
  cache.set(name, known);
  return known;
}

const inlineCode = Decoration.mark({ class: 'md-inline-code' });
const listLead = Decoration.mark({ class: 'md-lead' });
const doneText = Decoration.mark({ class: 'md-done' });
const openTask = Decoration.mark({ class: 'md-task' });
const doneTask = Decoration.mark({ class: 'md-task is-done' });

/** Line styles and checkboxes for Markdown. The marks stay in the text, so nothing jumps while typing. */
export const markdownLook = visibleMarks({
  changed: changedLook,
  mark: (state, span, add) => {
    const enter = (node: SyntaxNodeRef) => decorateNode(state, node, span, add);
    syntaxTree(state).iterate({ from: span.from, to: span.to, enter });
  },
});

/** A checkbox covers its marks unless the caret is inside them. */
function changedLook(update: ViewUpdate, seen: Span): readonly Span[] | undefined {
  const isShown = update.selectionSet && (touchesTask(update.startState, seen) || touchesTask(update.state, seen));
  const changed = changedSyntax(update, seen);
  return changed && isShown ? [seen] : changed;
}

function touchesTask(state: EditorState, seen: Span): boolean {
  let found = false;
  for (const { from, to } of state.selection.ranges) {
    syntaxTree(state).iterate({
      from: Math.max(from, seen.from),
      to: Math.min(to, seen.to),
      enter: ({ name }) => {
        found ||= name === 'TaskMarker';
      },
    });
  }
  return found;
}

function decorateNode(state: EditorState, node: SyntaxNodeRef, { from, to }: Span, add: Add): void {
  const { name } = node;
  const heading = /^(?:ATX|Setext)Heading([1-6])$/.exec(name);
  const className = heading ? `md-line-heading md-line-heading-${heading[1]}` : lineClasses[name];
  if (className) {
    // A block may extend far beyond the screen.
    const last = Math.min(node.to, to);
    for (let at = Math.max(node.from, from); at <= last; ) {
      const { from: start, to: end } = state.doc.lineAt(at);
      add(start, start, line(className));
      if (className === 'md-line-code' && start <= node.from) add(start, start, line('md-line-code-first'));
      if (className === 'md-line-code' && end >= node.to) add(start, start, line('md-line-code-last'));
      at = end + 1;
    }
  } else if (name === 'InlineCode') add(node.from, node.to, inlineCode);
  else if (name === 'ListMark') hang(state, node, add);
  else if (name === 'TaskMarker') decorateTask(state, node, add);
}

/** Gives wrapped lines a hanging indent: they start below the item's text, not its mark. */
function hang(state: EditorState, mark: SyntaxNodeRef, add: Add): void {
  const { from, text } = state.doc.lineAt(mark.from);
  const lead = /^ *(?:[-*+]|\d{1,9}[.)]) (?:\[[ xX]\] )?/.exec(text)?.[0].length ?? 0;
  if (!lead || lead > WIDEST_LEAD || mark.to - from > lead) return;
  add(from, from, line(`md-hang md-hang-${lead}`));
  add(from, from + lead, listLead);
}

function decorateTask(state: EditorState, { from, to }: SyntaxNodeRef, add: Add): void {
  const done = /x/i.test(state.sliceDoc(from, to));
  const { text, from: start, to: end } = state.doc.lineAt(to);
  // The strike begins with the text, after the space.
  const said = start + text.length - text.slice(to - start).trimStart().length;
  if (done && said < end) add(said, end, doneText);
  const touched = state.selection.ranges.some((range) => range.from < to && range.to > from);
  if (!touched) add(from, to, done ? doneTask : openTask);
}
