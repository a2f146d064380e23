import { headOf } from '../text/title';
import type { Note } from './model';

/** A note's display title: the name it was imported with, otherwise its first line. */
export function titleOf(note: Note): string {
  return note.name ?? headOf(note.text).title;
}
