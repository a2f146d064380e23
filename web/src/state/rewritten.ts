import type { Text } from '@codemirror/state';
import type { Edit } from '../text/renames';
import { Difference } from './difference';
import type { Note } from './model';
import { NoteText } from './noteText';
import { versionsBeforeRewriting } from './versions';

/** A note's new text, and what leads back to the one before. */
export interface Rewritten {
  readonly text: NoteText | Text | string;
  readonly back: ReadonlyArray<Edit>;
}

/**
 * A note that was rewritten in places. Nobody wrote in it, so it keeps its place in the list; but it is not the same
 * note any more to a computer that has the text before.
 */
export function rewritten(note: Note, { text, back }: Rewritten, now: number): Note {
  const next = NoteText.of(text);
  const versions = versionsBeforeRewriting(note, next, Difference.of(back, next.length), now);
  return { ...note, text: next, updated: note.updated + 1, versions };
}
