import type { Note } from './model';
import { NoteText } from './noteText';
import type { Version, Versions } from './version';
import { bytesOf, settled, without } from './versions';
import type { Workspace } from './workspace';

const HOUR_MS = 60 * 60 * 1000;
const DAY_MS = 24 * HOUR_MS;
const WEEK_MS = 7 * DAY_MS;

/** From which age on how many are kept: the last one of each such time, counted from 1970. */
const STEPS = [
  { age: 91 * DAY_MS, one: WEEK_MS },
  { age: WEEK_MS, one: DAY_MS },
  { age: DAY_MS, one: HOUR_MS },
];

/** What the host takes in a document, and what versions may take of it. */
const DOCUMENT_BYTES = 140_000_000;
const SHARE_BYTES = DOCUMENT_BYTES / 4;
/** What else is in the document. */
const RESERVE_BYTES = 10_000_000;
/** A version of so long a text takes much of what there is for all of them. */
export const LONG_TEXT = 1_000_000;
/** Those of an escape like \u0001. */
const MOST_BYTES_OF_A_UNIT = 6;

/** Fewer versions the older they are. Those that were taken because most of the text was about to go stay. */
export function thinned(versions: Versions, now: number): Versions {
  const taken = new Set<string>();
  return without(versions, (version) => {
    const step = STEPS.find(({ age }) => now - version.taken >= age);
    if (!step || version.guarded) return false;
    const time = `${step.one} ${Math.floor(version.taken / step.one)}`;
    if (taken.has(time)) return true;
    taken.add(time);
    return false;
  });
}

/**
 * Makes versions differences, thins them and drops the oldest beyond what they may take; in short steps, each of
 * which leaves a document that is whole.
 */
export function* tidyVersions(workspace: Workspace, limit = SHARE_BYTES): Generator<void, void> {
  const ids = [...everyNote(workspace)].flatMap(({ id, versions }) => (versions.length ? [id] : []));
  if (!ids.length) return;
  yield;
  for (const id of ids) {
    const note = workspace.noteOrBinned(id);
    if (!note) continue;
    const now = workspace.now();
    const tidy = thinned(settled(note, now), now);
    if (tidy !== note.versions) workspace.setVersions(id, tidy);
    for (const { held } of tidy) {
      bytesOf(held);
      yield;
    }
  }
  const room = Math.min(limit, yield* roomBesideTexts(workspace));
  // A long text that was just changed must not drive out what there is of others.
  const isTooMuch = excess(workspace, room).size > 0;
  if (!isTooMuch) return;
  yield* settleLong(workspace);
  for (const [id, count] of excess(workspace, room)) {
    const note = workspace.noteOrBinned(id);
    if (note) workspace.setVersions(id, note.versions.slice(0, Math.max(0, note.versions.length - count)));
    yield;
  }
}

/** Makes even the newest version of a long text a difference, though the next key makes it a text again. */
function* settleLong(workspace: Workspace): Generator<void, void> {
  for (const note of [...everyNote(workspace)]) {
    const [newest] = note.versions;
    if (!(newest?.held instanceof NoteText) || newest.held.length < LONG_TEXT) continue;
    const now = workspace.noteOrBinned(note.id);
    if (now) workspace.setVersions(now.id, settled(now, workspace.now(), true));
    yield;
  }
}

/** The bytes that the notes' own texts leave; these are counted only if there is much text. */
function* roomBesideTexts(workspace: Workspace): Generator<void, number> {
  let most = 0;
  for (const { text } of everyNote(workspace)) most += text.length * MOST_BYTES_OF_A_UNIT;
  const free = DOCUMENT_BYTES - RESERVE_BYTES;
  if (most <= free - SHARE_BYTES) return free - most;
  let bytes = 0;
  for (const { text } of everyNote(workspace)) {
    bytes += bytesOf(text);
    yield;
  }
  return Math.max(0, free - bytes);
}

/** How many of the oldest versions each note has to lose. */
function excess(workspace: Workspace, room: number): ReadonlyMap<string, number> {
  const all: Array<{ id: string; version: Version }> = [];
  let bytes = 0;
  for (const { id, versions } of everyNote(workspace)) {
    for (const version of versions) {
      bytes += bytesOf(version.held);
      all.push({ id, version });
    }
  }
  const counts = new Map<string, number>();
  if (bytes <= room) return counts;
  all.sort((a, b) => a.version.taken - b.version.taken);
  for (const { id, version } of all) {
    if (bytes <= room) break;
    bytes -= bytesOf(version.held);
    counts.set(id, (counts.get(id) ?? 0) + 1);
  }
  return counts;
}

function* everyNote({ contents: { notes, bin } }: Workspace): Generator<Note, void> {
  yield* notes;
  for (const { note } of bin) yield note;
}
