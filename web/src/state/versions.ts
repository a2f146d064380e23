import type { Text } from '@codemirror/state';
import { utf8Length } from '../text/names';
import { Difference } from './difference';
import type { Note } from './model';
import { NoteText } from './noteText';
import type { Version, Versions } from './version';

/** While a note changes, one version is taken in this time. */
export const INTERVAL_MS = 10 * 60 * 1000;
/** A text longer than this that loses more than half is kept at once. */
const GUARDED_CHARACTERS = 500;
/** So is one longer than this of which nothing stays. */
const OVERWRITTEN_CHARACTERS = 20;

/** What happened since the newest version: when it began, and the longest text in it. */
interface Stretch {
  readonly since: number;
  readonly longest: NoteText;
}

/** By the current text. */
const stretches = new WeakMap<NoteText, Stretch>();

/**
 * The versions of a note whose text is about to change. One is taken if there was none for ten minutes; and at once
 * if the text is emptied, overwritten or loses more than half, with one change or key by key.
 */
export function versionsBefore(note: Note, next: NoteText, now: number, removed: number): Versions {
  const { text } = note;
  const { since, longest } = stretchOf(note);
  const lost = text.length * 2 >= longest.length ? text : longest;
  const isLoss = isLargeLoss(lost, next, lost === text ? removed : 0);
  if (isLoss || (text.length > 0 && isDue(note, now))) {
    stretches.set(next, { since: now, longest: next });
    return withVersion(note, isLoss ? lost : text, now, isLoss);
  }
  // Nothing is kept of an empty text, so time counts from the first words in it.
  stretches.set(next, {
    since: text.length === 0 ? now : since,
    longest: longest.length > next.length ? longest : next,
  });
  return anchored(note);
}

/**
 * The same for a text that is rewritten in places. What leads back to the text before takes little, so the newest
 * version is a difference at once: a rewriting of all notes must not double what they take.
 */
export function versionsBeforeRewriting(note: Note, next: NoteText, back: Difference, now: number): Versions {
  const versions = versionsBefore(note, next, now, 0);
  const [newest, ...older] = versions;
  if (newest?.held === note.text) return [{ ...newest, held: back }, ...older];
  const former = note.versions[0]?.held;
  const isAnchored = newest && former instanceof Difference && versions.length === note.versions.length;
  return isAnchored ? [{ ...newest, held: back.followedBy(former) }, ...older] : versions;
}

/** With a version of the current text, for a change that replaces much of it. */
export function versionsWithCurrent(note: Note, now: number): Versions {
  return note.text.length > 0 ? withVersion(note, note.text, now, true) : note.versions;
}

function isLargeLoss(lost: NoteText, next: NoteText, removed: number): boolean {
  if (next.length === 0) return lost.length > 0;
  if (removed >= lost.length) return lost.length > OVERWRITTEN_CHARACTERS;
  return lost.length > GUARDED_CHARACTERS && (removed * 2 > lost.length || next.length * 2 < lost.length);
}

function stretchOf({ text, versions: [newest], created }: Note): Stretch {
  return stretches.get(text) ?? { since: newest?.taken ?? created, longest: text };
}

/** The first text of a note that was made with one is kept, too. A clock that was set back delays nothing. */
function isDue(note: Note, now: number): boolean {
  if (note.versions.length === 0 && note.updated === note.created) return true;
  const { since } = stretchOf(note);
  return since > now || now - since >= INTERVAL_MS;
}

function withVersion(note: Note, text: NoteText, taken: number, guarded: boolean): Versions {
  const versions = text === note.text ? note.versions : anchored(note);
  const [newest, ...older] = versions;
  const isKnown = newest?.held instanceof NoteText && newest.held.eq(text);
  if (!isKnown) return [{ taken, held: text, guarded, extra: [] }, ...versions];
  return guarded && !newest.guarded ? [{ ...newest, guarded }, ...older] : versions;
}

/** With nothing that belongs to the note's text: that is about to change. */
function anchored({ text, versions }: Note): Versions {
  const [newest, ...older] = versions;
  if (!newest || newest.held instanceof NoteText) return versions;
  return [{ ...newest, held: NoteText.of(newest.held.applyTo(text.tree)) }, ...older];
}

/** The texts of all versions, each made once. */
export function textsOf({ text, versions }: Note): Text[] {
  let tree = text.tree;
  return versions.map(({ held }) => {
    tree = held instanceof NoteText ? held.tree : held.applyTo(tree);
    return tree;
  });
}

/** The text of a version, by its place in the list. */
export function versionText({ text, versions }: Note, at: number): Text {
  let tree = text.tree;
  let from = 0;
  for (let i = at; i > 0; i--) {
    if (!(versions[i]?.held instanceof NoteText)) continue;
    from = i;
    break;
  }
  for (const { held } of versions.slice(from, at + 1)) {
    tree = held instanceof NoteText ? held.tree : held.applyTo(tree);
  }
  return tree;
}

/**
 * Turns whole texts into differences: all of them, except that the newest stays whole until the next change will take
 * another one, or room is needed. So a difference to the note's text always belongs to the text that it has.
 */
export function settled(note: Note, now: number, withNewest = isDue(note, now)): Versions {
  const { versions } = note;
  const last = versions.map(({ held }) => held instanceof NoteText).lastIndexOf(true);
  if (last < 0 || (last === 0 && !withNewest)) return versions;
  let newer = note.text.tree;
  return versions.map((version, at) => {
    if (at > last) return version;
    const { held } = version;
    const older = held instanceof NoteText ? held.tree : held.applyTo(newer);
    const stays = held instanceof Difference || (at === 0 && !withNewest);
    const after = stays ? version : { ...version, held: Difference.between(newer, older) };
    newer = older;
    return after;
  });
}

/** The list without the versions at these places; what was a difference to one of them is so to the next newer. */
export function without(versions: Versions, dropped: (version: Version, at: number) => boolean): Versions {
  const kept: Version[] = [];
  let pending: Difference | NoteText | null = null;
  for (const [at, version] of versions.entries()) {
    const held = follow(pending, version.held);
    if (dropped(version, at)) {
      pending = held;
      continue;
    }
    pending = null;
    kept.push(held === version.held ? version : { ...version, held });
  }
  return kept.length === versions.length ? versions : kept;
}

function follow(newer: Difference | NoteText | null, held: Difference | NoteText): Difference | NoteText {
  if (newer === null || held instanceof NoteText) return held;
  return newer instanceof NoteText ? NoteText.of(held.applyTo(newer.tree)) : newer.followedBy(held);
}

const sizes = new WeakMap<NoteText | Difference, number>();

/** What a text or a difference takes in the document, in bytes. */
export function bytesOf(held: NoteText | Difference): number {
  let bytes = sizes.get(held);
  if (bytes === undefined) {
    bytes = utf8Length(held.json);
    sizes.set(held, bytes);
  }
  return bytes;
}
