import { versionsOfBoth } from './bothVersions';
import { KnownTexts } from './knownTexts';
import type { Library } from './library';
import type { BinnedNote, Note } from './model';
import { lastTimes } from './sharedTimes';
import { textsOf } from './versions';
import { titleOf } from './titleOf';
import type { Workspace } from './workspace';

export interface Merge {
  readonly notes: ReadonlyArray<Note>;
  readonly bin: ReadonlyArray<BinnedNote>;
  readonly added: number;
  readonly updated: number;
  readonly both: number;
}

/** Between the id of a note and what makes the one beside it different. */
const BESIDE = '~';
const LONGEST_BASE = 45;

/**
 * What bringing a library in changes. A note that changed on one side only gets that side's text. Of one that changed
 * on both, the later text stays, and the other comes beside it under another title. The text that was replaced and the
 * versions of both are the note's versions. Nothing is deleted. Bringing the same library in again changes nothing.
 */
export function mergeLibrary(workspace: Workspace, library: Library, titleBeside: (title: string) => string): Merge {
  const known = new KnownTexts(workspace);
  const [notes, bin]: [Note[], BinnedNote[]] = [[], []];
  const counts = { added: 0, updated: 0, both: 0 };
  const ids = new Set<string>();
  const now = workspace.now();
  const put = (note: Note) => {
    notes.push(note);
    ids.add(note.id);
    known.add(note);
  };
  for (const theirs of library.notes) {
    const ours = workspace.noteOrBinned(theirs.id);
    if (ours ? ours.text.eq(theirs.text) : isKnown(known, theirs)) continue;
    if (!ours) {
      counts.added++;
      put(theirs);
      continue;
    }
    const isDeleted = workspace.note(ours.id) === null;
    const [isTheirs, isOurs] = [isAhead(theirs, ours), isAhead(ours, theirs)];
    const hasBoth = !isTheirs && !isOurs && !isDeleted;
    const isReplaced = isTheirs === isOurs ? isLater(theirs, ours) || (isDeleted && !isOurs) : isTheirs;
    if (!isReplaced && !hasBoth) continue;
    const [note, other] = isReplaced ? [theirs, ours] : [ours, theirs];
    known.remove(ours);
    put(combined(note, other, ours, now));
    const beside = hasBoth ? besideOf(other, titleBeside, (id) => ids.has(id)) : null;
    if (beside && !workspace.noteOrBinned(beside.id) && !known.withText(beside.text).length) {
      counts.both++;
      put(beside);
    } else counts.updated++;
  }
  for (const entry of library.bin) {
    if (workspace.noteOrBinned(entry.note.id) || ids.has(entry.note.id) || isKnown(known, entry.note)) continue;
    counts.added++;
    bin.push(entry);
    known.add(entry.note);
  }
  return { notes, bin, ...counts };
}

/** Whether `one` comes from the text that `other` still has. */
function isAhead(one: Note, other: Note): boolean {
  if (one.updated !== other.updated && one.shared.includes(other.updated)) return true;
  if (!one.versions.some(({ held }) => held.length === other.text.length)) return false;
  const wanted = other.text.tree;
  return textsOf(one).some((text) => text.eq(wanted));
}

/** The same on every computer. */
function isLater(one: Note, other: Note): boolean {
  if (one.updated !== other.updated) return one.updated > other.updated;
  return one.text.toString() > other.text.toString();
}

/** A note with what the other knows; it has been seen with both texts. A name that was given to either stays. */
function combined(note: Note, other: Note, ours: Note, now: number): Note {
  const members = new Set(note.extra.map(([member]) => member));
  return {
    ...note,
    name: note.name === note.source ? other.name : note.name,
    pinned: ours.pinned,
    versions: versionsOfBoth(note, other, now),
    shared: lastTimes([...other.shared, ...note.shared, other.updated]),
    extra: [...note.extra, ...other.extra.filter(([member]) => !members.has(member))],
  };
}

/** The note beside one that changed on both sides; an empty text is not worth one. */
function besideOf(note: Note, titleBeside: (title: string) => string, isTaken: (id: string) => boolean): Note | null {
  if (note.text.length === 0) return null;
  const base = `${note.id.slice(0, LONGEST_BASE)}${BESIDE}${Math.trunc(note.updated).toString(36)}`;
  let id = base;
  for (let i = 1; isTaken(id); i++) id = base + BESIDE + i.toString(36);
  return { ...note, id, name: titleBeside(titleOf(note)), shared: lastTimes([...note.shared, note.updated]) };
}

/** With the same title; one that was put beside another is known by its text. An emptied note is its versions. */
function isKnown(known: KnownTexts, note: Note): boolean {
  if (note.text.length === 0 && note.versions.length > 0) return false;
  const title = titleOf(note);
  return known.withText(note.text).some((one) => note.id.includes(BESIDE) || titleOf(one) === title);
}
