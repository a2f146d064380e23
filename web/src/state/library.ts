import { utf8Length } from '../text/names';
import { isMembers, type Members } from './migrations';
import { type BinnedNote, type Contents, DOCUMENT_VERSION, type Note } from './model';
import { readContents } from './read';
import { lastTimes } from './sharedTimes';
import type { Workspace } from './workspace';
import { binnedAsJson, noteAsJson } from './write';

/** The version of the file's own members; that of the notes in it is the document's. */
const LIBRARY_VERSION = 1;
const MOST_NOTES = 200_000;
/** The newest of those of a note; many more than there are left of years of writing. */
const MOST_VERSIONS = 5000;
const LONGEST_ID = 60;
const DEEPEST = 64;
/** A file that begins like this claims to be a library. */
const SIGN = /^\s*\{\s*"quendoLibrary"\s*:/;

export interface LibraryFiles {
  readonly parts: ReadonlyArray<string>;
  /** Notes that are too long for any file. */
  readonly leftOut: number;
}

/** Notes, and the bin if wanted, as files of at most this many bytes. Every file can be brought in by itself. */
export function libraryFiles(
  { notes, bin }: Pick<Contents, 'notes' | 'bin'>,
  withBin: boolean,
  mostBytes: number,
): LibraryFiles {
  const parts: string[] = [];
  const room = mostBytes - utf8Length(libraryFile([], []));
  let leftOut = 0;
  let bytes = 0;
  let held: { notes: string[]; bin: string[] } = { notes: [], bin: [] };
  const add = (list: 'notes' | 'bin', note: Note, jsonOf: (note: Note) => string) => {
    const json = fitting(note, jsonOf, room);
    if (json === null) {
      leftOut++;
      return;
    }
    const size = utf8Length(json) + 1;
    if (bytes + size > room) {
      parts.push(libraryFile(held.notes, held.bin));
      held = { notes: [], bin: [] };
      bytes = 0;
    }
    held[list].push(json);
    bytes += size;
  };
  for (const note of notes) add('notes', note, noteAsJson);
  for (const { note, deleted } of withBin ? bin : []) add('bin', note, (one) => binnedAsJson({ note: one, deleted }));
  parts.push(libraryFile(held.notes, held.bin));
  return { parts, leftOut };
}

/** A note too long with its versions goes with the newer half of them, and so on. */
function fitting(note: Note, jsonOf: (note: Note) => string, room: number): string | null {
  for (let { versions } = note; ; versions = versions.slice(0, versions.length >> 1)) {
    const json = jsonOf(versions === note.versions ? note : { ...note, versions });
    if (utf8Length(json) < room) return json;
    if (!versions.length) return null;
  }
}

/**
 * Notes in the workspace are to go out, all or those with these ids: what comes back knows by these times which text it
 * comes from. Only what changed since the last time is marked.
 */
export function markShared(workspace: Workspace, ids?: ReadonlySet<string>): void {
  const { notes, bin } = workspace.contents;
  const isNew = ({ id, shared, updated }: Note) => !shared.includes(updated) && (ids?.has(id) ?? true);
  const marked = (note: Note) => ({ ...note, shared: lastTimes([...note.shared, note.updated]) });
  workspace.adopt(
    notes.filter(isNew).map(marked),
    bin.flatMap(({ note, deleted }) => (isNew(note) ? [{ note: marked(note), deleted }] : [])),
  );
}

function libraryFile(notes: ReadonlyArray<string>, bin: ReadonlyArray<string>): string {
  return `{"quendoLibrary":${LIBRARY_VERSION},"version":${DOCUMENT_VERSION},"notes":[${notes.join()}],"bin":[${bin.join()}]}\n`;
}

export interface Library {
  readonly notes: ReadonlyArray<Note>;
  readonly bin: ReadonlyArray<BinnedNote>;
}

export function isLibrary(content: string): boolean {
  return SIGN.test(content.slice(0, 1000));
}

/** Reads a library file; says why if it cannot be used, and then nothing of it can. */
export function readLibrary(content: string, now: number): Library | 'damaged' | 'newer' {
  let value: unknown;
  try {
    value = JSON.parse(content);
  } catch {
    return 'damaged';
  }
  if (!isMembers(value) || !isShallow(value, DEEPEST)) return 'damaged';
  const { quendoLibrary, version } = value;
  if (typeof quendoLibrary !== 'number' || typeof version !== 'number') return 'damaged';
  if (quendoLibrary > LIBRARY_VERSION || version > DOCUMENT_VERSION) return 'newer';
  const { notes, bin = [] } = value;
  if (!Array.isArray(notes) || !Array.isArray(bin) || notes.length + bin.length > MOST_NOTES) return 'damaged';
  if (!areSound([...(notes as unknown[]), ...(bin as unknown[])])) return 'damaged';
  const { contents } = readContents({ version, notes, bin }, now);
  const bounded = (note: Note) => ({ ...note, versions: note.versions.slice(0, MOST_VERSIONS) });
  const binned = contents.bin.map(({ note, deleted }) => ({ note: bounded(note), deleted }));
  return { notes: contents.notes.map(bounded), bin: binned };
}

function areSound(entries: ReadonlyArray<unknown>): boolean {
  const ids = new Set<unknown>();
  for (const entry of entries) {
    if (!isMembers(entry) || !isSound(entry) || ids.has(entry.id)) return false;
    ids.add(entry.id);
  }
  return true;
}

function isSound({ id, text }: Members): boolean {
  return typeof text === 'string' && typeof id === 'string' && id !== '' && id.length <= LONGEST_ID;
}

function isShallow(value: unknown, depth: number): boolean {
  if (typeof value !== 'object' || value === null) return true;
  return depth > 0 && Object.values(value).every((member) => isShallow(member, depth - 1));
}
