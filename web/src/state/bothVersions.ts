import type { Text } from '@codemirror/state';
import type { Note } from './model';
import { NoteText } from './noteText';
import type { Version, Versions } from './version';
import { textsOf } from './versions';

interface Link {
  readonly version: Version;
  readonly text: Text;
  /** What it may be a difference to; null is the note's own text. */
  readonly newer: Link | null;
}

/** The versions of two notes for one that has the text of the first: those of both, and the text of the other. */
export function versionsOfBoth(note: Note, other: Note, now: number): Versions {
  const kept = links(note, null);
  const known = new Map<number, Text[]>();
  const learn = (text: Text) => {
    const alike = known.get(text.length) ?? [];
    if (alike.some((one) => one.eq(text))) return false;
    known.set(text.length, [...alike, text]);
    return true;
  };
  learn(note.text.tree);
  for (const { text } of kept) learn(text);
  const current = { version: versionOf(other, now), text: other.text.tree, newer: null };
  const added = [current, ...links(other, current)].filter(({ text }) => text.length > 0 && learn(text));
  if (!added.length) return note.versions;
  const all = [...kept, ...added].sort((a, b) => b.version.taken - a.version.taken);
  return all.map((link, at) => {
    const { version, text, newer } = link;
    const isRebuilt = version.held instanceof NoteText || newer === (all[at - 1] ?? null);
    return isRebuilt ? version : { ...version, held: NoteText.of(text) };
  });
}

function versionOf({ text }: Note, taken: number): Version {
  return { taken, held: text, guarded: true, extra: [] };
}

function links(note: Note, first: Link | null): Link[] {
  let newer = first;
  return textsOf(note).map((text, at) => {
    newer = { version: note.versions[at] as Version, text, newer };
    return newer;
  });
}
