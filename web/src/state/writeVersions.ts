import { chain, NoteText } from './noteText';
import type { Version, Versions } from './version';

const cache = new WeakMap<Version, string>();

/** The versions as a member of their note, with what separates it from the one before; empty if there are none. */
export function versionsMember(versions: Versions): string {
  return versions.length ? `,"versions":[${chain(versions.map(versionJson), ',')}]` : '';
}

/** Makes their JSON in short steps; texts of a note that is not being edited become one string. */
export function* prepareVersions(versions: Versions, isEdited: boolean): Generator<void, void> {
  for (const version of versions) {
    const { held } = version;
    if (held instanceof NoteText) {
      if (isEdited) yield* held.prepare();
      else held.settle();
    }
    versionJson(version);
    yield;
  }
}

/** Whether all their texts are one string. */
export function areSettled(versions: Versions): boolean {
  return versions.every(({ held }) => !(held instanceof NoteText) || held.settled);
}

function versionJson(version: Version): string {
  const { held } = version;
  const known = cache.get(version);
  if (known !== undefined) return known;
  const json = frame(version) + held.json + rest(version);
  // A text that is not one string yet will have other JSON.
  if (!(held instanceof NoteText) || held.settled) cache.set(version, json);
  return json;
}

function frame({ taken, held }: Version): string {
  return `{"taken":${JSON.stringify(taken)},"${held instanceof NoteText ? 'text' : 'change'}":`;
}

function rest({ guarded, extra }: Version): string {
  const members = extra.map(([name, json]) => `,${JSON.stringify(name)}:${json}`);
  return `${guarded ? ',"guarded":true' : ''}${members.join('')}}`;
}
