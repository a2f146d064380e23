import {
  autocompletion,
  closeCompletion,
  type CompletionContext,
  type CompletionResult,
  completionKeymap,
  completionStatus,
  startCompletion,
} from '@codemirror/autocomplete';
import { syntaxTree } from '@codemirror/language';
import { type Extension, Prec } from '@codemirror/state';
import { type EditorView, keymap } from '@codemirror/view';
import { fuzzyMatch } from '../text/fuzzy';
import { bestMatches, type Findable } from '../text/nameMatches';
import { shownSyntax } from './syntax';

/** The names that can be completed, best known first. */
export interface Names {
  readonly titles: ReadonlyArray<Findable>;
  readonly tags: ReadonlyArray<Findable>;
}

const SHOWN = 50;
const linkBefore = /\[\[[^[\]|\n]{0,200}/;
const tagBefore = /#[\p{L}\p{N}\p{M}_-][\p{L}\p{N}\p{M}_/-]{0,100}/u;
const code = /^(?:InlineCode|FencedCode|CodeBlock|CodeText|URL)$/;

/**
 * Without those that open the list: on a Mac they are dead keys, elsewhere they switch input methods. Escape is the
 * editor's unless there is a list, although one may be on its way after every key.
 */
const keys = Prec.highest(
  keymap.of([
    ...completionKeymap.filter(({ run }) => run !== startCompletion && run !== closeCompletion),
    { key: 'Escape', run: (view) => completionStatus(view.state) === 'active' && closeCompletion(view) },
  ]),
);

/** Completes the titles of notes after "[[", and tags after "#". */
export function nameCompletion(names: () => Names): Extension {
  return [
    autocompletion({
      icons: false,
      defaultKeymap: false,
      override: [(context) => completed(context, names)],
      tooltipClass: () => 'names',
    }),
    keys,
  ];
}

function completed(context: CompletionContext, names: () => Names): CompletionResult | null {
  const { state, pos } = context;
  if (state.facet(shownSyntax) !== 'markdown') return null;
  const link = context.matchBefore(linkBefore);
  const tag = link ? null : context.matchBefore(tagBefore);
  const mark = link ?? tag;
  if (!mark || code.test(syntaxTree(state).resolveInner(pos, -1).name)) return null;
  const query = link ? mark.text.slice(2) : mark.text.slice(1);
  if (tag && /[\p{L}\p{N}\p{M}_#/&\\]$/u.test(state.sliceDoc(Math.max(0, tag.from - 2), tag.from))) return null;
  const found = bestMatches(query, link ? names().titles : names().tags, SHOWN).filter(
    (name) => name !== query || link,
  );
  if (!found.length) return null;
  return {
    from: pos - query.length,
    filter: false,
    options: found.map((label) => (link ? { label, apply: applyTitle } : { label })),
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
