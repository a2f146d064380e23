import { Difference } from './difference';
import { type Extra, keepJson, unknownMembers } from './extra';
import { isMembers, type Members } from './migrations';
import { NoteText } from './noteText';
import { noVersions, type Version, type Versions } from './version';

/** The members of a note that hold its versions. */
export const VERSION_MEMBERS = ['versions', 'damagedVersions'];
const MEMBERS = ['taken', 'text', 'change', 'guarded'];
const CLOCK_LIMIT = 8.64e15;

/**
 * A note's versions. One that is damaged is set aside, and so are those that are differences to it: what is left can
 * be rebuilt.
 */
export function readVersions(note: Members, textLength: number): { versions: Versions; damaged: Extra } {
  const { versions: stored, damagedVersions = [] } = note;
  if (stored === undefined && !('damagedVersions' in note)) return { versions: noVersions, damaged: [] };
  const versions: Version[] = [];
  const damaged: string[] = [];
  for (const entry of listOf(damagedVersions)) keepJson(entry, damaged);
  let newerLength: number | null = textLength;
  for (const entry of listOf(stored)) {
    const version = readVersion(entry, newerLength);
    if (version) versions.push(version);
    else keepJson(entry, damaged);
    newerLength = version ? version.held.length : null;
  }
  return { versions, damaged: damaged.length ? [['damagedVersions', `[${damaged.join()}]`]] : [] };
}

function listOf(value: unknown): ReadonlyArray<unknown> {
  if (value === undefined) return [];
  return Array.isArray(value) ? value : [value];
}

function readVersion(entry: unknown, newerLength: number | null): Version | null {
  if (!isMembers(entry)) return null;
  const { taken, text, change, guarded } = entry;
  if (typeof taken !== 'number' || !(taken >= 0 && taken <= CLOCK_LIMIT)) return null;
  let held: Version['held'] | null = null;
  if (typeof text === 'string') held = NoteText.of(text);
  else if (newerLength !== null) held = Difference.read(change, newerLength);
  if (!held) return null;
  return { taken, held, guarded: guarded === true, extra: unknownMembers(entry, MEMBERS) };
}
