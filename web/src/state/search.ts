import type { Text } from '@codemirror/state';
import { findFolded, fold } from '../text/fold';
import type { Note } from './model';
import { titleOf } from './workspace';

export interface Found {
  readonly note: Note;
  /** The match is in the title, so that its surroundings need not be shown. */
  readonly inTitle: boolean;
}

const CONTEXT_BEFORE = 24;
const CONTEXT_AFTER = 120;
/** Folded texts are kept up to this many characters each; longer ones are folded anew. */
const KEPT_CHARACTERS = 200_000;
const PIECE_CHARACTERS = 100_000;
const WINDOW_CHARACTERS = 2000;

const foldedTexts = new WeakMap<Text, string>();
const foldedTitles = new WeakMap<Note, string>();

/**
 * Looks through the notes in the given order and yields after each one, a find or null, so that
 * the caller can stop for a key press between any two notes.
 */
export function* searchNotes(
  notes: Iterable<Note>,
  query: string,
): Generator<Found | null, void> {
  const wanted = fold(query.trim());
  for (const note of notes) {
    if (foldedTitle(note).includes(wanted)) yield { note, inTitle: true };
    else yield pieceWith(note.text, wanted) === null ? null : { note, inTitle: false };
  }
}

/** Whether every note that has the one query has the other too, so that its finds are enough to look through. */
export function narrows(query: string, before: string): boolean {
  return before !== '' && fold(query.trim()).includes(fold(before.trim()));
}

/** Folds the notes ahead of a search, one at a time. */
export function* foldNotes(notes: Iterable<Note>): Generator<void, void> {
  for (const note of notes) {
    foldedTitle(note);
    if (note.text.length <= KEPT_CHARACTERS) foldedText(note.text);
    yield;
  }
}

/** A piece of a note's text around the first match, on one line; empty when there is none. */
export function contextOf(text: Text, query: string): string {
  const wanted = fold(query.trim());
  const piece = wanted ? pieceWith(text, wanted) : null;
  if (!piece) return '';
  const source = text.sliceString(piece.from, piece.to);
  const context = excerpt(source, wanted);
  return piece.from > 0 && !context.startsWith('…') ? `…${context}` : context;
}

/** A part of the text that has the match in it. */
function pieceWith(text: Text, wanted: string): { from: number; to: number } | null {
  if (text.length <= KEPT_CHARACTERS) {
    return foldedText(text).includes(wanted) ? { from: 0, to: text.length } : null;
  }
  // Pieces overlap, so that a match across their edge is not missed.
  const overlap = wanted.length * 4;
  for (let from = 0; from < text.length; from += PIECE_CHARACTERS) {
    const to = Math.min(text.length, from + PIECE_CHARACTERS + overlap);
    if (fold(text.sliceString(from, to)).includes(wanted)) return { from, to };
  }
  return null;
}

function foldedText(text: Text): string {
  let folded = foldedTexts.get(text);
  if (folded === undefined) {
    folded = fold(text.toString());
    foldedTexts.set(text, folded);
  }
  return folded;
}

function foldedTitle(note: Note): string {
  let folded = foldedTitles.get(note);
  if (folded === undefined) {
    folded = fold(titleOf(note));
    foldedTitles.set(note, folded);
  }
  return folded;
}

function excerpt(text: string, wanted: string): string {
  // Mapping a match back to the text's own offsets is slow, so it is narrowed down first.
  const overlap = wanted.length * 4;
  for (let at = 0; at < text.length; at += WINDOW_CHARACTERS) {
    const window = text.slice(at, at + WINDOW_CHARACTERS + overlap);
    if (!fold(window).includes(wanted)) continue;
    const match = findFolded(window, wanted);
    if (!match) break;
    const from = Math.max(0, at + match.from - CONTEXT_BEFORE);
    const cut = text.slice(from, at + match.to + CONTEXT_AFTER).replace(/\s+/g, ' ').trim();
    return from > 0 ? `…${cut}` : cut;
  }
  return '';
}
