import { findFolded, fold } from '../text/fold';
import type { Note } from './model';
import type { NoteText } from './noteText';
import { titleOf } from './workspace';

export interface SearchMatch {
  readonly note: Note;
  /** The title matches, so no context needs to be shown. */
  readonly inTitle: boolean;
  /** Offset of the match in the folded text; usually the same in the text itself. */
  readonly near: number;
  /** Where to begin looking for a longer query: nothing before this matches. */
  readonly from: number;
}

/** A note to be searched, from an offset on that an earlier search has found. */
export type Candidate = Pick<SearchMatch, 'note' | 'from'>;

const CONTEXT_BEFORE = 24;
const CONTEXT_AFTER = 120;
/** Folded texts up to this many characters are cached; longer ones are folded on every search. */
const KEPT_CHARACTERS = 200_000;
const CHUNK_CHARACTERS = 100_000;
const WINDOW_CHARACTERS = 400;
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
 * pause for a key press. A query is a single line, so it cannot match across title and text.
 */
export function* searchNotes(candidates: Iterable<Candidate>, query: string): Generator<SearchMatch | null, void> {
  const wanted = fold(query.trim());
  let work = 0;
  for (const { note, from } of candidates) {
    const kept = foldedNotes.get(note);
    const { whole, titleLength, hasText } = kept ?? foldNote(note);
    const at = whole.indexOf(wanted, from);
    if (at >= 0) yield { note, inTitle: at < titleLength, near: Math.max(0, at - titleLength - 1), from: at };
    else if (!hasText && chunkWith(note.text, wanted)) yield { note, inTitle: false, near: 0, from: 0 };
    work += kept?.hasText ? NOTE_WORK + whole.length - from : PAUSE_WORK;
    if (work < PAUSE_WORK) continue;
    work = 0;
    yield null;
  }
}

/** Where a first search looks: everywhere. */
export function allOf(notes: ReadonlyArray<Note>): ReadonlyArray<Candidate> {
  return notes.map((note) => ({ note, from: 0 }));
}

/** Where `query` can match, given all matches of an earlier query; `null` if anywhere. */
export function narrowed(
  query: string,
  before: string,
  matches: ReadonlyArray<SearchMatch>,
): ReadonlyArray<Candidate> | null {
  const [longer, shorter] = [fold(query.trim()), fold(before.trim())];
  if (shorter === '' || !longer.includes(shorter)) return null;
  return longer.startsWith(shorter) ? matches : allOf(matches.map(({ note }) => note));
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

/**
 * An excerpt around a match, on one line; empty if there is none. A correct guess in `near` saves searching
 * the text.
 */
export function contextOf(text: NoteText, query: string, near = 0): string {
  const wanted = fold(query.trim());
  if (!wanted) return '';
  const end = near + wanted.length;
  if (end <= text.length) {
    const from = Math.max(0, near - CONTEXT_BEFORE);
    const around = text.slice(from, end + CONTEXT_AFTER);
    if (fold(around.slice(near - from, end - from)) === wanted) return onOneLine(around, from > 0);
  }
  if (text.length <= KEPT_CHARACTERS) return excerpt(text.toString(), wanted);
  const chunk = chunkWith(text, wanted);
  if (!chunk) return '';
  const context = excerpt(chunk.text, wanted);
  return chunk.from > 0 && !context.startsWith('…') ? `…${context}` : context;
}

/** A chunk of a long text that contains a match. */
function chunkWith(text: NoteText, wanted: string): { from: number; text: string } | null {
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

function foldNote(note: Note): Folded {
  const title = fold(titleOf(note));
  const hasText = note.text.length <= KEPT_CHARACTERS;
  // With "+", the engine would join them when somebody looks into the string: the first search, for all notes.
  const whole = hasText ? [title, fold(note.text.toString())].join('\n') : title;
  const folded = { whole, titleLength: title.length, hasText };
  foldedNotes.set(note, folded);
  return folded;
}

function excerpt(text: string, wanted: string): string {
  // Mapping a match back to the text's own offsets is slow, so narrow down the range first.
  const overlap = wanted.length * 4;
  const step = Math.max(WINDOW_CHARACTERS, overlap);
  for (let at = 0; at < text.length; at += step) {
    const window = text.slice(at, at + step + overlap);
    if (!fold(window).includes(wanted)) continue;
    const match = findFolded(window, wanted);
    if (!match) break;
    const from = Math.max(0, at + match.from - CONTEXT_BEFORE);
    return onOneLine(text.slice(from, at + match.to + CONTEXT_AFTER), from > 0);
  }
  return '';
}

function onOneLine(text: string, isCut: boolean): string {
  const line = text.replace(/\s+/g, ' ').trim();
  return isCut ? `…${line}` : line;
}
