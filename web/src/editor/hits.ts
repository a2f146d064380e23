import { EditorSelection, Prec, StateEffect, StateField, type Extension, type Text } from '@codemirror/state';
import { type Command, Decoration, EditorView, keymap } from '@codemirror/view';
import { fold, foldedPlaces } from '../text/fold';
import { type Span, visibleMarks } from './visibleMarks';

/** How much of a text is looked through for its best hit. */
const BEST_WITHIN = 2_000_000;

const setHits = StateEffect.define<ReadonlyArray<string>>();

/** The folded words of the search the note was found by. */
const hitWords = StateField.define<ReadonlyArray<string>>({
  create: () => [],
  update: (words, { effects }) => effects.find((effect) => effect.is(setHits))?.value ?? words,
});

const hitMark = Decoration.mark({ class: 'hit' });

/** Marks what the search has found in the note; F3 and its like step through it until Escape takes the marks away. */
export function hits(): Extension {
  return [
    hitWords,
    visibleMarks({
      mark: (state, { from, to }, add) => {
        const words = state.field(hitWords);
        if (!words.length) return;
        for (const place of foldedPlaces(state.sliceDoc(from, to), words)) {
          add(from + place.from, from + place.to, hitMark);
        }
      },
      changed: ({ startState, state }, seen) =>
        startState.field(hitWords) === state.field(hitWords) ? [] : [{ from: seen.from, to: seen.to }],
    }),
    Prec.high(
      keymap.of([
        { key: 'F3', run: step(1), shift: step(-1), preventDefault: true },
        { key: 'Mod-g', run: step(1), shift: step(-1), preventDefault: true },
        { key: 'Escape', run: clearHits },
      ]),
    ),
  ];
}

/** Marks these words and goes to the line that has most of them. */
export function showHits(view: EditorView, words: ReadonlyArray<string>): void {
  const best = bestHit(view.state.doc, words);
  view.dispatch({ effects: setHits.of(words) });
  if (best) select(view, best);
}

/** The first of the words in the line that has most of them. */
export function bestHit(doc: Text, words: ReadonlyArray<string>): Span | null {
  let best: Span | null = null;
  let most = 0;
  let from = 0;
  for (const line of doc.iterLines()) {
    const folded = fold(line);
    const count = words.filter((word) => folded.includes(word)).length;
    const [place] = count > most ? foldedPlaces(line, words) : [];
    if (place) {
      best = { from: from + place.from, to: from + place.to };
      most = count;
    }
    from += line.length + 1;
    if (most === words.length || from > BEST_WITHIN) break;
  }
  return best;
}

/** The next hit after a selection, or the one before it, going on at the other end of the text. */
export function nextHit(doc: Text, words: ReadonlyArray<string>, { from, to }: Span, by: 1 | -1): Span | null {
  const start = doc.lineAt(by > 0 ? to : from).number - 1;
  for (let passed = 0; passed <= doc.lines; passed++) {
    const line = doc.line(((start + by * passed + doc.lines * 2) % doc.lines) + 1);
    const places = foldedPlaces(line.text, words).map((one) => ({
      from: line.from + one.from,
      to: line.from + one.to,
    }));
    const ahead = passed ? places : places.filter((one) => (by > 0 ? one.from >= to : one.to <= from));
    const next = by > 0 ? ahead[0] : ahead.at(-1);
    if (next) return next;
  }
  return null;
}

function step(by: 1 | -1): Command {
  return (view) => {
    const words = view.state.field(hitWords);
    const next = words.length ? nextHit(view.state.doc, words, view.state.selection.main, by) : null;
    if (next) select(view, next);
    return next !== null;
  };
}

function clearHits(view: EditorView): boolean {
  if (!view.state.field(hitWords).length) return false;
  view.dispatch({ effects: setHits.of([]) });
  return true;
}

function select(view: EditorView, { from, to }: Span): void {
  const range = EditorSelection.range(from, to);
  view.dispatch({ selection: range, effects: EditorView.scrollIntoView(range, { y: 'center' }) });
}
