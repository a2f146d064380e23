import type { ChangeSet, EditorState, Extension, Range, Text } from '@codemirror/state';
import { Decoration, type DecorationSet, type EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';

export interface Span {
  readonly from: number;
  readonly to: number;
}

export type Add = (from: number, to: number, mark: Decoration) => void;

interface Source {
  /** Adds the marks between two positions; what reaches beyond them may be left out. */
  readonly mark: (state: EditorState, span: Span, add: Add) => void;
  /**
   * Where else than in the lines of changed text an update may change marks, in the new text; `seen` is the visible
   * part of it. Undefined if that is not known yet: then all marks stay, changed lines included, because text that
   * loses its look for a moment flickers. A later update has to name what was left out.
   */
  readonly changed?: (update: ViewUpdate, seen: Span) => readonly Span[] | undefined;
}

/**
 * Marks of the visible text that are made anew only where it has changed. All of them would be hundreds for each key.
 */
export function visibleMarks({ mark, changed }: Source): Extension {
  return ViewPlugin.fromClass(
    class {
      decorations: DecorationSet = Decoration.none;
      #seen: readonly Span[] = [];

      constructor(view: EditorView) {
        this.#markAll(view);
      }

      update(update: ViewUpdate): void {
        const { view, state, changes, docChanged } = update;
        const seen = docChanged ? this.#seen.map((span) => moved(span, changes)) : this.#seen;
        if (!isCovered(view.visibleRanges, seen)) {
          this.#markAll(view);
          return;
        }
        this.#seen = view.visibleRanges;
        const elsewhere = changed ? changed(update, view.viewport) : [];
        const stale = [...(elsewhere ?? [])];
        if (docChanged && elsewhere) changes.iterChangedRanges((_from, _to, from, to) => stale.push({ from, to }));
        let marks = docChanged ? this.decorations.map(changes) : this.decorations;
        for (const span of wholeLines(stale, state.doc)) marks = this.#markAgain(marks, state, span);
        this.decorations = marks;
      }

      #markAll({ state, visibleRanges }: EditorView): void {
        this.#seen = visibleRanges;
        this.decorations = Decoration.set(this.#made(state, { from: 0, to: state.doc.length }), true);
      }

      #markAgain(marks: DecorationSet, state: EditorState, stale: Span): DecorationSet {
        const add = this.#made(state, stale);
        // What a mark covers outside of the stale lines stays.
        marks.between(stale.from, stale.to, (from, to, what) => {
          if (from < stale.from && to > stale.from) add.push(what.range(from, stale.from));
          if (to > stale.to && from < stale.to) add.push(what.range(stale.to, to));
        });
        const filter = (from: number, to: number) => from < to && (to <= stale.from || from >= stale.to);
        return marks.update({ add, sort: true, filterFrom: stale.from, filterTo: stale.to, filter });
      }

      /** The marks of what can be seen of a span. */
      #made(state: EditorState, within: Span): Array<Range<Decoration>> {
        const made: Array<Range<Decoration>> = [];
        const points = new Map<Decoration, number>();
        for (const seen of this.#seen) {
          const [first, last] = [Math.max(seen.from, within.from), Math.min(seen.to, within.to)];
          if (first > last) continue;
          mark(state, { from: first, to: last }, (from, to, what) => {
            const [start, end] = [Math.max(from, within.from), Math.min(to, within.to)];
            if (start < end) made.push(what.range(start, end));
            // A line of which two parts are seen has its mark once.
            else if (start === end && from === to && points.get(what) !== from) {
              points.set(what, from);
              made.push(what.range(from));
            }
          });
        }
        return made;
      }
    },
    { decorations: (plugin) => plugin.decorations },
  );
}

function moved({ from, to }: Span, changes: ChangeSet): Span {
  return { from: changes.mapPos(from, -1), to: changes.mapPos(to, 1) };
}

function isCovered(spans: readonly Span[], by: readonly Span[]): boolean {
  return spans.every(({ from, to }) => by.some((span) => span.from <= from && to <= span.to));
}

/** Whole lines, in their order, none of them twice. */
function wholeLines(spans: readonly Span[], text: Text): Span[] {
  const lines: Array<{ from: number; to: number }> = [];
  for (const span of [...spans].sort((one, other) => one.from - other.from)) {
    const [from, to] = [text.lineAt(span.from).from, text.lineAt(span.to).to];
    const last = lines.at(-1);
    if (last && from <= last.to) last.to = Math.max(last.to, to);
    else lines.push({ from, to });
  }
  return lines;
}
