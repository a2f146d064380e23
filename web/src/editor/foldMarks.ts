import { foldable, foldedRanges, foldEffect, syntaxTree, unfoldEffect } from '@codemirror/language';
import { type EditorState, type Extension, RangeSet, RangeSetBuilder } from '@codemirror/state';
import {
  type BlockInfo,
  type EditorView,
  GutterMarker,
  gutter,
  gutters,
  ViewPlugin,
  type ViewUpdate,
} from '@codemirror/view';
import { h } from '../dom/elements';

/** Finding what every visible line folds is a tenth of the work on a key, so it waits for a pause. */
const PAUSE_MS = 250;

class FoldMark extends GutterMarker {
  constructor(readonly folded: boolean) {
    super();
  }

  override eq(other: FoldMark): boolean {
    return this.folded === other.folded;
  }

  override toDOM(): HTMLElement {
    return h('span', { class: this.folded ? 'fold-mark is-folded' : 'fold-mark' });
  }
}

const closed = new FoldMark(true);
const open = new FoldMark(false);

const marks = ViewPlugin.fromClass(
  class {
    markers: RangeSet<FoldMark>;
    #timer: ReturnType<typeof setTimeout> | undefined;

    constructor(readonly view: EditorView) {
      this.markers = find(view);
    }

    update({ state, startState, changes, docChanged, viewportChanged }: ViewUpdate): void {
      if (viewportChanged || foldedRanges(startState) !== foldedRanges(state)) {
        clearTimeout(this.#timer);
        this.markers = find(this.view);
      } else if (docChanged || syntaxTree(startState) !== syntaxTree(state)) {
        clearTimeout(this.#timer);
        this.#timer = setTimeout(() => this.#findNow(), PAUSE_MS);
        this.markers = this.markers.map(changes);
      }
    }

    destroy(): void {
      clearTimeout(this.#timer);
    }

    #findNow(): void {
      this.markers = find(this.view);
      // Gutters are drawn by updates.
      this.view.dispatch({});
    }
  },
);

function find({ state, viewportLineBlocks }: EditorView): RangeSet<FoldMark> {
  const builder = new RangeSetBuilder<FoldMark>();
  for (const { from, to } of viewportLineBlocks) {
    if (foldedAt(state, from, to)) builder.add(from, from, closed);
    else if (foldable(state, from, to)) builder.add(from, from, open);
  }
  return builder.finish();
}

/** What is folded away from a line on: the first range that begins in it. */
function foldedAt(state: EditorState, from: number, to: number): { from: number; to: number } | null {
  let found: { from: number; to: number } | null = null;
  foldedRanges(state).between(from, to, (start, end) => {
    found ??= { from: start, to: end };
  });
  return found;
}

function toggle(view: EditorView, { from, to }: BlockInfo): boolean {
  const folded = foldedAt(view.state, from, to);
  const range = folded ?? foldable(view.state, from, to);
  if (range) view.dispatch({ effects: (folded ? unfoldEffect : foldEffect).of(range) });
  return range !== null;
}

/** Marks in a gutter at lines that can be folded or are; a click folds and unfolds. */
export const foldMarks: Extension = [
  marks,
  gutter({
    class: 'cm-foldGutter',
    markers: (view) => view.plugin(marks)?.markers ?? RangeSet.empty,
    initialSpacer: () => open,
    domEventHandlers: { click: toggle },
  }),
  // Lines wrap, so nothing scrolls sideways below the gutter; the style sheet says where it is.
  gutters({ fixed: false }),
];
