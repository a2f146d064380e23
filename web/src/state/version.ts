import type { Difference } from './difference';
import type { Extra } from './extra';
import type { NoteText } from './noteText';

/** A text that a note had. Records are immutable. */
export interface Version {
  /** Until when the note had this text. */
  readonly taken: number;
  /** The text, or how it comes from that of the next newer version, for the newest one from the note's own. */
  readonly held: NoteText | Difference;
  /** Taken because most of the text was about to go; not thinned. */
  readonly guarded: boolean;
  readonly extra: Extra;
}

/** Newest first. */
export type Versions = ReadonlyArray<Version>;

export const noVersions: Versions = [];
