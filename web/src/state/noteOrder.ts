import { fold } from '../text/fold';
import type { Note } from './model';
import type { Sort } from './settings';
import { titleOf } from './titleOf';

const titles = new WeakMap<Note, string>();

/** The folded title, by which notes are put in order. */
export function orderTitle(note: Note): string {
  let title = titles.get(note);
  if (title === undefined) {
    title = fold(titleOf(note));
    titles.set(note, title);
  }
  return title;
}

/**
 * Puts notes that are pinned first and then by last change into the order wanted; pinned ones stay first. Pauses while
 * it reads titles for the first time.
 */
export function* inOrder(notes: ReadonlyArray<Note>, sort: Sort): Generator<void, ReadonlyArray<Note>> {
  if (sort === 'edited') return notes;
  if (sort === 'title') {
    for (const note of notes) {
      if (titles.has(note)) continue;
      orderTitle(note);
      yield;
    }
  }
  const compare = sort === 'created' ? byCreation : byTitle;
  return [...notes].sort((one, other) => Number(other.pinned) - Number(one.pinned) || compare(one, other));
}

function byCreation(one: Note, other: Note): number {
  return other.created - one.created;
}

/** Notes without a title come last. Comparing by the rules of a language takes too long for ten thousand titles. */
function byTitle(one: Note, other: Note): number {
  const [title, another] = [orderTitle(one), orderTitle(other)];
  if (!title || !another) return Number(!title) - Number(!another);
  return title < another ? -1 : Number(title > another);
}
