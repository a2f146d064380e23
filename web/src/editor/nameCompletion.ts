import {
  autocompletion,
  closeCompletion,
  CompletionContext,
  type CompletionResult,
  completionKeymap,
  completionStatus,
  startCompletion,
} from '@codemirror/autocomplete';
import { syntaxTree } from '@codemirror/language';
import { type Extension, Prec } from '@codemirror/state';
import { EditorView, keymap } from '@codemirror/view';
import { fuzzyMatch } from '../text/fuzzy';
import { bestMatches, type Findable } from '../text/nameMatches';
import { shownSyntax } from './syntax';

/** The names that can be completed, best known first. */
export interface Names {
  readonly tags: ReadonlyArray<Findable>;
  /** Of all notes but this one. */
  titlesBut(id: string): ReadonlyArray<Findable>;
}

interface Mark {
  readonly isLink: boolean;
  readonly from: number;
  readonly name: string;
}

const SHOWN = 50;
const linkBefore = /\[\[[^[\]|\n]{0,200}/;
const tagBefore = /#[\p{L}\p{N}\p{M}_-][\p{L}\p{N}\p{M}_/-]{0,100}/u;
const withinWord = /[\p{L}\p{N}\p{M}_#/&\\]$/u;
const code = /^(?:InlineCode|FencedCode|CodeBlock|CodeText|URL)$/;

/**
 * Without those that open the list: on a Mac they are dead keys, elsewhere they switch input methods. Escape is the
 * editor's unless there is a list, although one may be on its way.
 */
const keys = Prec.highest(
  keymap.of([
    ...completionKeymap.filter(({ run }) => run !== startCompletion && run !== closeCompletion),
    { key: 'Escape', run: (view) => completionStatus(view.state) === 'active' && closeCompletion(view) },
  ]),
);

/** Completes the titles of other notes after "[[", and tags after "#". */
export function nameCompletion(names: () => Names, id: string): Extension {
  return [
    autocompletion({
      activateOnTyping: false,
      icons: false,
      defaultKeymap: false,
      override: [(context) => completed(context, names, id)],
      tooltipClass: () => 'names',
    }),
    opening,
    keys,
  ];
}

/** The library would change the editor's state a second time after every key, in whatever text. */
const opening = EditorView.updateListener.of(({ view, state, transactions }) => {
  if (!transactions.some((one) => one.isUserEvent('input.type'))) return;
  if (completionStatus(state) || !markBefore(new CompletionContext(state, state.selection.main.head, false))) return;
  queueMicrotask(() => startCompletion(view));
});

/** The beginning of a link or tag. */
function markBefore(context: CompletionContext): Mark | null {
  if (context.state.facet(shownSyntax) !== 'markdown') return null;
  const link = context.matchBefore(linkBefore);
  const mark = link ?? context.matchBefore(tagBefore);
  return mark && { isLink: link !== null, from: mark.from, name: mark.text.slice(link ? 2 : 1) };
}

function completed(context: CompletionContext, names: () => Names, id: string): CompletionResult | null {
  const { state, pos } = context;
  const mark = markBefore(context);
  if (!mark || code.test(syntaxTree(state).resolveInner(pos, -1).name)) return null;
  const { isLink, name: query } = mark;
  if (!isLink && withinWord.test(state.sliceDoc(Math.max(0, mark.from - 2), mark.from))) return null;
  const found = bestMatches(query, isLink ? names().titlesBut(id) : names().tags, SHOWN).filter(
    (name) => name !== query || isLink,
  );
  if (!found.length) return null;
  return {
    from: pos - query.length,
    filter: false,
    options: found.map((label) => (isLink ? { label, apply: applyTitle } : { label })),
    getMatch: ({ label }) => rangesOf(fuzzyMatch(query, label)?.at ?? []),
  };
}

/** Inserts the title and the brackets that close the link, unless they are there. */
function applyTitle(view: EditorView, { label }: { readonly label: string }, from: number, to: number): void {
  const after = view.state.sliceDoc(to, to + 2);
  const end = to + (after === ']]' ? 2 : after.startsWith(']') ? 1 : 0);
  view.dispatch({
    changes: { from, to: end, insert: `${label}]]` },
    selection: { anchor: from + label.length + 2 },
    userEvent: 'input.complete',
  });
}

/** Pairs of start and end, as the library wants them. */
function rangesOf(offsets: ReadonlyArray<number>): number[] {
  const ranges: number[] = [];
  for (const at of offsets) {
    if (ranges.at(-1) === at) ranges[ranges.length - 1] = at + 1;
    else ranges.push(at, at + 1);
  }
  return ranges;
}
