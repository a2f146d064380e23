import { fold, foldedPlaces } from '../text/fold';
import { fuzzyMatch } from '../text/fuzzy';
import { Fit, fitOf } from '../text/nameMatches';
import type { Note } from './model';
import { titleOf } from './titleOf';

export interface TitleMatch {
  readonly note: Note;
  /** Offsets of the matched characters in the title. */
  readonly marked: ReadonlyArray<number>;
}

/** As many as anyone looks through. */
export const MOST = 60;
/** Comparing letter by letter is slow, so only so many titles are. */
const MOST_FUZZY = 300;
const NOTES_AT_ONCE = 100;

/**
 * The notes whose titles fit a query, best fits first; equally good ones in the order given. Pauses from time to time.
 * `folded` keeps the titles for the next query.
 */
export function* matchTitles(
  notes: ReadonlyArray<Note>,
  query: string,
  folded: Map<Note, string>,
): Generator<void, ReadonlyArray<TitleMatch>> {
  const wanted = fold(query.trim());
  if (!wanted) return notes.slice(0, MOST).map((note) => ({ note, marked: [] }));
  const fits: Note[][] = [[], [], [], []];
  const loose: Note[] = [];
  for (const [index, note] of notes.entries()) {
    if (index % NOTES_AT_ONCE === NOTES_AT_ONCE - 1) yield;
    const title = folded.get(note) ?? fold(titleOf(note));
    folded.set(note, title);
    const fit = fitOf(wanted, title);
    if (fit === Fit.letters && loose.length < MOST_FUZZY) loose.push(note);
    else fits[fit]?.push(note);
  }
  const exact = fits.flat().slice(0, MOST);
  const found = exact.map((note) => ({ note, marked: offsetsIn(titleOf(note), wanted) }));
  return exact.length < MOST ? [...found, ...(yield* bestOf(loose, query, MOST - exact.length))] : found;
}

/** Whether a note has this title, apart from case and accents. */
export function isTitled(note: Note, query: string): boolean {
  return fold(titleOf(note)) === fold(query.trim());
}

function* bestOf(notes: ReadonlyArray<Note>, query: string, most: number): Generator<void, ReadonlyArray<TitleMatch>> {
  const matches: Array<TitleMatch & { readonly score: number }> = [];
  for (const note of notes) {
    const match = fuzzyMatch(query, titleOf(note));
    if (match) matches.push({ note, marked: match.at, score: match.score });
    yield;
  }
  return matches.sort((one, other) => other.score - one.score).slice(0, most);
}

function offsetsIn(title: string, wanted: string): number[] {
  return foldedPlaces(title, [wanted]).flatMap(({ from, to }) => Array.from({ length: to - from }, (_, i) => from + i));
}
