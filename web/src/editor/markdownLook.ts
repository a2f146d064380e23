import { syntaxTree } from '@codemirror/language';
import type { EditorState, Range } from '@codemirror/state';
import { Decoration, type DecorationSet, type EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';
import type { SyntaxNodeRef } from '@lezer/common';

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

/**
 * Line styles and checkboxes for Markdown. The marks stay in the text, so nothing jumps while typing; only
 * visible lines are processed.
 */
export const markdownLook = ViewPlugin.fromClass(
  class {
    decorations: DecorationSet;

    constructor(view: EditorView) {
      this.decorations = decorate(view);
    }

    update(update: ViewUpdate): void {
      const parsed = syntaxTree(update.startState) !== syntaxTree(update.state);
      if (parsed || update.docChanged || update.viewportChanged || update.selectionSet) {
        this.decorations = decorate(update.view);
      }
    }
  },
  { decorations: (plugin) => plugin.decorations },
);

function decorate({ state, visibleRanges }: EditorView): DecorationSet {
  const out: Array<Range<Decoration>> = [];
  for (const { from, to } of visibleRanges) {
    syntaxTree(state).iterate({ from, to, enter: (node) => decorateNode(state, node, from, to, out) });
  }
  return Decoration.set(out, true);
}

function decorateNode(
  state: EditorState,
  node: SyntaxNodeRef,
  from: number,
  to: number,
  out: Array<Range<Decoration>>,
): void {
  const { name } = node;
  const heading = /^(?:ATX|Setext)Heading([1-6])$/.exec(name);
  const className = heading ? `md-line-heading md-line-heading-${heading[1]}` : lineClasses[name];
  if (className) {
    // A block may extend far beyond the screen.
    const last = Math.min(node.to, to);
    for (let at = Math.max(node.from, from); at <= last; ) {
      const { from: start, to: end } = state.doc.lineAt(at);
      out.push(line(className).range(start));
      at = end + 1;
    }
  } else if (name === 'InlineCode') out.push(inlineCode.range(node.from, node.to));
  else if (name === 'ListMark') hang(state, node, out);
  else if (name === 'TaskMarker') decorateTask(state, node, out);
}

/** Gives wrapped lines a hanging indent: they start below the item's text, not its mark. */
function hang(state: EditorState, mark: SyntaxNodeRef, out: Array<Range<Decoration>>): void {
  const { from, text } = state.doc.lineAt(mark.from);
  const lead = /^ *(?:[-*+]|\d{1,9}[.)]) (?:\[[ xX]\] )?/.exec(text)?.[0].length ?? 0;
  if (!lead || lead > WIDEST_LEAD || mark.to - from > lead) return;
  out.push(line(`md-hang md-hang-${lead}`).range(from), listLead.range(from, from + lead));
}

/** The checkbox covers its marks unless the caret is inside them. */
function decorateTask(state: EditorState, { from, to }: SyntaxNodeRef, out: Array<Range<Decoration>>): void {
  const done = /x/i.test(state.sliceDoc(from, to));
  const end = state.doc.lineAt(to).to;
  if (done && to < end) out.push(doneText.range(to, end));
  const touched = state.selection.ranges.some((range) => range.from < to && range.to > from);
  if (!touched) out.push((done ? doneTask : openTask).range(from, to));
}
