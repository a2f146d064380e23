import { fold } from '../text/fold';
import { narrows, type Query, type Term } from '../text/searchQuery';
import { hasTag } from '../text/tagQuery';
import type { Note } from './model';
import type { NoteText } from './noteText';
import { titleOf } from './titleOf';

export interface SearchMatch {
  readonly note: Note;
  /** The title matches, so no context needs to be shown. */
  readonly inTitle: boolean;
  /** Offset of the best match in the folded text; usually the same in the text itself. */
  readonly near: number;
  /** Where to begin looking for a longer first word: nothing before this matches. */
  readonly from: number;
  /** The same for the words in a row; negative if they are nowhere. */
  readonly row: number;
  /** How well it matches; 0 is best. */
  readonly rank: number;
}

/** A note to be searched, and what an earlier search knows of it. */
export type Candidate = Pick<SearchMatch, 'note' | 'from' | 'row'>;

/** Folded texts up to this many characters are cached; longer ones are folded on every search. */
export const KEPT_CHARACTERS = 200_000;
const CHUNK_CHARACTERS = 100_000;
/** Characters to search between pauses, roughly; each note also has a fixed cost in characters. */
const PAUSE_WORK = 500_000;
const NOTE_WORK = 2000;

/** What is searched in a note: its title, a line break and its text, or just the title. */
interface Folded {
  readonly whole: string;
  readonly titleLength: number;
  readonly hasText: boolean;
}

/** One string per note: locating objects in memory takes longer than scanning them. */
let foldedNotes = new WeakMap<Note, Folded>();

/**
 * Searches the notes in the given order and yields every match, and null from time to time, so the caller can
 * pause for a key press. No word spans two lines, so none matches across title and text.
 */
export function* searchNotes(candidates: Iterable<Candidate>, query: Query): Generator<SearchMatch | null, void> {
  let work = 0;
  const wanted = wantedIn(query);
  const { filters } = query;
  let compared = 0;
  for (const candidate of candidates) {
    const { note, from } = candidate;
    const kept = foldedNotes.get(note);
    const folded = kept ?? foldNote(note);
    const at = placeIn(note, folded, wanted, from);
    if (at !== null && filters.every((term) => holds(note, folded, term))) {
      const match = found(candidate, folded, wanted, at, compared < MOST_COMPARED);
      if (!match.inTitle) compared++;
      yield match;
    }
    work += kept?.hasText ? NOTE_WORK + folded.whole.length - from : PAUSE_WORK;
    if (work < PAUSE_WORK) continue;
    work = 0;
    yield null;
  }
}

/** Where a first search looks: everywhere. */
export function allOf(notes: ReadonlyArray<Note>): ReadonlyArray<Candidate> {
  return notes.map((note) => ({ note, from: 0, row: 0 }));
}

/** Where `query` can match, given all matches of an earlier query; `null` if anywhere. */
export function narrowed(
  query: Query,
  before: Query,
  matches: ReadonlyArray<SearchMatch>,
): ReadonlyArray<Candidate> | null {
  if (!narrows(query, before)) return null;
  const [longer, shorter] = [query.words.join(' '), before.words.join(' ')];
  if (shorter !== '' && longer.startsWith(shorter)) return matches;
  return allOf(matches.map(({ note }) => note));
}

/** The matches, best first; those that match equally well stay in their order. */
export function ranked(matches: ReadonlyArray<SearchMatch>): ReadonlyArray<SearchMatch> {
  const byRank: SearchMatch[][] = Array.from({ length: WORST + 1 }, () => []);
  for (const match of matches) byRank[match.rank]?.push(match);
  // Quicker than flat().
  return ([] as SearchMatch[]).concat(...byRank);
}

/** Lets go of the folded texts, which are as large as the notes; the next search makes them again. */
export function forgetFolded(): void {
  foldedNotes = new WeakMap();
}

/** Folds notes ahead of a search, one at a time. */
export function* foldNotes(notes: Iterable<Note>): Generator<void, void> {
  for (const note of notes) {
    if (!foldedNotes.has(note)) foldNote(note);
    yield;
  }
}

/** A chunk of a long text that contains a word. */
export function chunkWith(text: NoteText, wanted: string): { from: number; text: string } | null {
  const slice = text.slicer();
  // Chunks overlap, so a match across their boundary is not missed.
  const overlap = wanted.length * 4;
  for (let from = 0; from < text.length; from += CHUNK_CHARACTERS) {
    const to = Math.min(text.length, from + CHUNK_CHARACTERS + overlap);
    const chunk = slice(from, to);
    if (fold(chunk).includes(wanted)) return { from, text: chunk };
  }
  return null;
}

/** The words of a query, taken apart once for all notes. */
interface Wanted {
  readonly words: ReadonlyArray<string>;
  /** Empty if only filters are given. */
  readonly first: string;
  readonly others: ReadonlyArray<string>;
  readonly phrase: string;
}

function wantedIn({ words }: Query): Wanted {
  return { words, first: words[0] ?? '', others: words.slice(1), phrase: words.join(' ') };
}

/** Where the first word is in a note that has all of them, or in a long text somewhere; null if one is missing. */
function placeIn(note: Note, folded: Folded, { words, first, others }: Wanted, from: number): number | null {
  if (first === '') return 0;
  const { whole, hasText } = folded;
  const at = whole.indexOf(first, from);
  if (!hasText) return words.every((word) => contains(note, folded, word)) ? Math.max(0, at) : null;
  if (at < 0) return null;
  for (const word of others) if (!whole.includes(word)) return null;
  return at;
}

function contains(note: Note, { whole, hasText }: Folded, word: string): boolean {
  return whole.includes(word) || (!hasText && chunkWith(note.text, word) !== null);
}

function holds(note: Note, folded: Folded, term: Term): boolean {
  return isTrue(note, folded, term) !== term.not;
}

function isTrue(note: Note, folded: Folded, term: Term): boolean {
  const { whole, titleLength, hasText } = folded;
  switch (term.kind) {
    case 'text':
      return contains(note, folded, term.value);
    case 'title':
      return whole.slice(0, titleLength).includes(term.value);
    case 'tag':
      return hasTag(hasText ? whole.slice(titleLength + 1) : fold(note.text.toString()), term.value);
    default: {
      const moment = term.kind === 'edited' ? note.updated : note.created;
      return moment >= term.from && moment < term.to;
    }
  }
}

const [WHOLE_TITLE, TITLE_START, TITLE_PHRASE, TITLE_WORDS, IN_TEXT] = [0, 1, 2, 3, 4];
/** Words that are far apart, and words that occur once. */
const [FAR, ONCE] = [3, 3];
const WORST = IN_TEXT + FAR * (ONCE + 1) + ONCE;
/** So many matches, the latest, are compared by closeness and frequency: nobody looks through more. */
const MOST_COMPARED = 1000;
/** How many places of the first word are compared, and how far around each the others count as close. */
const PLACES = 8;
const CLOSE = 40;
const NEAR = 200;
/** The frequency of a word counts in this many characters from its first place on; all of a text takes too long. */
const COUNTED_CHARACTERS = 250;

function found(candidate: Candidate, folded: Folded, wanted: Wanted, at: number, isCompared: boolean): SearchMatch {
  const { note } = candidate;
  const { whole, titleLength, hasText } = folded;
  const { words, first: word, phrase } = wanted;
  if (word === '') return { note, inTitle: false, near: 0, from: at, row: at, rank: WORST };
  if (at + word.length <= titleLength) {
    const title = whole.slice(0, titleLength);
    if (words.every((one) => title.includes(one))) {
      let rank = title.includes(phrase) ? TITLE_PHRASE : TITLE_WORDS;
      if (title.startsWith(phrase)) rank = title.length === phrase.length ? WHOLE_TITLE : TITLE_START;
      return { note, inTitle: true, near: 0, from: at, row: at, rank };
    }
  }
  if (!hasText) return { note, inTitle: false, near: 0, from: at, row: at, rank: WORST };
  const row = words.length === 1 ? at : candidate.row < 0 ? -1 : whole.indexOf(phrase, Math.max(at, candidate.row));
  const best = row >= 0 ? { at: row, distance: 0 } : isCompared ? closest(whole, wanted, at) : { at, distance: FAR };
  const frequency = isCompared ? repeats(whole, word, at) : 0;
  const rank = IN_TEXT + best.distance * (ONCE + 1) + ONCE - frequency;
  return { note, inTitle: false, near: Math.max(0, best.at - titleLength - 1), from: at, row, rank };
}

/** Where the words, nowhere in a row, are closest to each other, and how far apart they are there, from 1 to FAR. */
function closest(whole: string, { first: word, others }: Wanted, first: number) {
  const places = others.map((other) => new Places(whole, other));
  let best = { at: first, distance: FAR };
  for (let at = first, n = 0; at >= 0 && n < PLACES && best.distance > 1; at = whole.indexOf(word, at + 1), n++) {
    const within = (reach: number) => places.every((one) => one.after(at - reach) <= at + word.length + reach);
    if (best.distance === FAR ? within(NEAR) : within(CLOSE)) best = { at, distance: within(CLOSE) ? 1 : 2 };
  }
  return best;
}

/** The places of a word in a text, asked for from one that moves on slowly: none is looked for twice. */
class Places {
  #from = 0;
  #at = -1;

  constructor(
    readonly whole: string,
    readonly word: string,
  ) {}

  /** The first place from an offset on, or infinity. */
  after(offset: number): number {
    if (offset < this.#from || offset > this.#at) {
      const at = this.whole.indexOf(this.word, offset);
      this.#from = offset;
      this.#at = at < 0 ? Number.POSITIVE_INFINITY : at;
    }
    return this.#at;
  }
}

/** How often a word follows its first place, up to ONCE. */
function repeats(whole: string, word: string, first: number): number {
  const part = whole.slice(first + word.length, first + word.length + COUNTED_CHARACTERS);
  let count = 0;
  for (let at = part.indexOf(word); at >= 0 && count < ONCE; at = part.indexOf(word, at + word.length)) count++;
  return count;
}

function foldNote(note: Note): Folded {
  const title = fold(titleOf(note));
  const hasText = note.text.length <= KEPT_CHARACTERS;
  // With "+", the engine would join them when somebody looks into the string: the first search, for all notes.
  const whole = hasText ? [title, fold(note.text.toString())].join('\n') : title;
  const folded = { whole, titleLength: title.length, hasText };
  foldedNotes.set(note, folded);
  return folded;
}
