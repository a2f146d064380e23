import type { Text } from '@codemirror/state';
import type { Note } from './model';
import { NoteText } from './noteText';
import { noVersions } from './version';

export interface NewNote {
  readonly text: NoteText | Text | string;
  readonly format?: Note['format'];
  readonly name?: string | null;
  readonly lineBreak?: Note['lineBreak'];
}

export function newNote({ text, format = 'markdown', name = null, lineBreak = '\n' }: NewNote, now: number): Note {
  return {
    id: crypto.randomUUID(),
    text: NoteText.of(text),
    format,
    name,
    source: name,
    fileName: null,
    lineBreak,
    pinned: false,
    created: now,
    updated: now,
    versions: noVersions,
    shared: [],
    extra: [],
  };
}

/** Whether the note never had anything in it: every edit makes `updated` later than `created`. */
export function isUntouched({ text, name, versions, extra, created, updated }: Note): boolean {
  const isBare = name === null && versions.length === 0 && extra.length === 0;
  return text.length === 0 && isBare && updated === created;
}
