import { utf8Length } from '../text/names';
import { isMembers, type Members } from './migrations';
import { type BinnedNote, type Contents, DOCUMENT_VERSION, type Note } from './model';
import { readContents } from './read';
import type { Workspace } from './workspace';
import { binnedAsJson, noteAsJson } from './write';

/** The version of the file's own members; that of the notes in it is the document's. */
const LIBRARY_VERSION = 1;
const MOST_NOTES = 200_000;
const LONGEST_ID = 60;
const DEEPEST = 64;
/** How often a note may go out until a computer that missed all of it sees two notes. */
const MOST_TIMES = 50;
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
  const add = (list: 'notes' | 'bin', entries: ReadonlyArray<string>) => {
    const sized = entries.map((json) => ({ json, size: utf8Length(json) + 1 }));
    const fitting = sized.find(({ size }) => size <= room);
    if (!fitting) {
      leftOut++;
      return;
    }
    if (bytes + fitting.size > room) {
      parts.push(libraryFile(held.notes, held.bin));
      held = { notes: [], bin: [] };
      bytes = 0;
    }
    held[list].push(fitting.json);
    bytes += fitting.size;
  };
  // A note too long with its versions goes without them.
  for (const note of notes) add('notes', [noteAsJson(note), noteAsJson({ ...note, versions: [] })]);
  for (const entry of withBin ? bin : []) {
    add('bin', [binnedAsJson(entry), binnedAsJson({ ...entry, note: { ...entry.note, versions: [] } })]);
  }
  parts.push(libraryFile(held.notes, held.bin));
  return { parts, leftOut };
}

/**
 * Notes in the workspace are to go out, all or those with these ids: what comes back knows by these times which text it
 * comes from. Only what changed since the last time is marked.
 */
export function markShared(workspace: Workspace, ids?: ReadonlySet<string>): void {
  const { notes, bin } = workspace.contents;
  const isNew = ({ id, shared, updated }: Note) => !shared.includes(updated) && (ids?.has(id) ?? true);
  const marked = (note: Note) => ({ ...note, shared: [...note.shared, note.updated].slice(-MOST_TIMES) });
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
  return { notes: contents.notes, bin: contents.bin };
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
