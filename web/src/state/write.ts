import type { Extra } from './extra';
import { type BinnedNote, type Contents, DOCUMENT_VERSION, type Note, type Place } from './model';
import { chain } from './noteText';
import { settingNames } from './settings';
import { areSettled, prepareVersions, versionsMember } from './writeVersions';

/** JSON of a note, with its text as a part of it that is held only once. */
interface Piece {
  readonly json: string;
  /** Whether the texts in it are one string each. */
  readonly settled: boolean;
}

/**
 * The cost of serialising depends on what changed. Note records are immutable, so the JSON of each is cached
 * for its lifetime, as that of its text is (`NoteText`). These strings are joined without copying anything:
 * a second copy of all notes would be most of the page's memory.
 */
const noteCache = new WeakMap<Note, Piece>();
const binCache = new WeakMap<BinnedNote, Piece>();
const placeCache = new WeakMap<Place, string>();

/**
 * Neighbouring notes are also cached as one string, keyed by the first of them, so the document is assembled
 * from a few long strings instead of many short ones.
 */
const groupCache = new WeakMap<Note, { pieces: ReadonlyArray<Piece>; json: string }>();
const GROUP_NOTES = 64;
/** Longer strings of several notes are taken apart again. */
export const LONG_PIECE = 500_000;

type Members = ReadonlyArray<readonly [name: string, json: string]>;

/** The document as JSON. Lone surrogates are escaped, so the result is always well-formed. */
export function serialize(contents: Contents, revision: number): string {
  return chain([...documentPieces(contents, revision)], '');
}

/** The same in pieces. Only one that is longer than `LONG_PIECE` may be looked into without copying the document. */
export function* documentPieces(contents: Contents, revision: number): Generator<string, void> {
  yield `{"version":${DOCUMENT_VERSION},"revision":${JSON.stringify(revision)},"notes":[`;
  yield* listed(notesPieces(contents.notes), contents.unreadable);
  yield '],"bin":[';
  yield* listed(binPieces(contents.bin), contents.unreadableBin);
  yield `],${membersJson(otherMembers(contents), contents.extra)}}`;
}

/** Entries and those that are preserved, with commas between them. */
function* listed(pieces: Iterable<string>, preserved: ReadonlyArray<string>): Generator<string, void> {
  let isFirst = true;
  for (const piece of pieces) {
    isFirst = false;
    yield piece;
  }
  for (const piece of preserved) {
    if (!isFirst) yield ',';
    isFirst = false;
    yield piece;
  }
}

function otherMembers(contents: Contents): Members {
  const { tabs, settings, setAside, handedOver } = contents;
  const members: Array<readonly [string, string]> = [
    [
      'tabs',
      object(
        [
          ['open', JSON.stringify(tabs.open)],
          ['active', JSON.stringify(tabs.active)],
          ['closed', JSON.stringify(tabs.closed)],
        ],
        tabs.extra,
      ),
    ],
    ['places', object([...contents.places].map(([id, place]) => [id, placeJson(place)]))],
    [
      'settings',
      object(
        settingNames.map((name) => [name, JSON.stringify(settings[name])]),
        settings.extra,
      ),
    ],
    ['captureDraft', JSON.stringify(contents.captureDraft)],
  ];
  if (handedOver.length) members.push(['handedOver', JSON.stringify(handedOver)]);
  if (setAside.length) members.push(['setAside', array(setAside)]);
  return members;
}

/**
 * Builds what `serialize` will need, in short steps, so the caller can let keys and frames through in between.
 * From here on every text is one string, except the one that is being edited.
 */
export function* prepareJson({ notes, bin, tabs }: Contents): Generator<void, void> {
  for (const note of notes) {
    if (noteCache.get(note)?.settled) continue;
    if (note.id === tabs.active) yield* note.text.prepare();
    else note.text.settle();
    yield* prepareVersions(note.versions, note.id === tabs.active);
    notePiece(note);
    yield;
  }
  for (const entry of bin) {
    if (binCache.get(entry)?.settled) continue;
    entry.note.text.settle();
    yield* prepareVersions(entry.note.versions, false);
    binnedPiece(entry);
    yield;
  }
  for (let at = 0; at < notes.length; at += GROUP_NOTES) {
    groupJson(notes.slice(at, at + GROUP_NOTES));
    yield;
  }
}

function* notesPieces(notes: ReadonlyArray<Note>): Generator<string, void> {
  for (let at = 0; at < notes.length; at += GROUP_NOTES) {
    if (at > 0) yield ',';
    const group = notes.slice(at, at + GROUP_NOTES);
    const json = groupJson(group);
    if (json.length <= LONG_PIECE) yield json;
    else yield* eachPieces(group);
  }
}

function* eachPieces(notes: ReadonlyArray<Note>): Generator<string, void> {
  for (const [index, note] of notes.entries()) {
    if (index > 0) yield ',';
    yield* entryPieces(notePiece(note), note, []);
  }
}

function* binPieces(bin: ReadonlyArray<BinnedNote>): Generator<string, void> {
  for (const [index, entry] of bin.entries()) {
    if (index > 0) yield ',';
    yield* entryPieces(binnedPiece(entry), entry.note, deletedMember(entry));
  }
}

function* entryPieces({ json }: Piece, note: Note, more: Members): Generator<string, void> {
  if (json.length <= LONG_PIECE) {
    yield json;
    return;
  }
  const { before, after } = frame(note, more);
  yield before;
  yield* note.text.jsonPieces();
  yield versionsMember(note.versions);
  yield after;
}

function deletedMember({ deleted }: BinnedNote): Members {
  return [['deleted', JSON.stringify(deleted)]];
}

function groupJson(notes: ReadonlyArray<Note>): string {
  const [first] = notes;
  if (!first) return '';
  const pieces = notes.map(notePiece);
  const known = groupCache.get(first);
  if (known && isSame(known.pieces, pieces)) return known.json;
  const json = chain(
    pieces.map((piece) => piece.json),
    ',',
  );
  groupCache.set(first, { pieces, json });
  return json;
}

function isSame(some: ReadonlyArray<Piece>, others: ReadonlyArray<Piece>): boolean {
  return some.length === others.length && some.every((piece, index) => piece === others[index]);
}

/** A note by itself, as it is in the document. */
export function noteAsJson(note: Note): string {
  return notePiece(note).json;
}

export function binnedAsJson(entry: BinnedNote): string {
  return binnedPiece(entry).json;
}

function notePiece(note: Note): Piece {
  return cached(noteCache, note, note, []);
}

function binnedPiece(entry: BinnedNote): Piece {
  return cached(binCache, entry, entry.note, deletedMember(entry));
}

function cached<K extends object>(cache: WeakMap<K, Piece>, key: K, note: Note, more: Members): Piece {
  const known = cache.get(key);
  // A text that has become one string since then is held by the older piece in its former parts, too.
  if (known?.settled) return known;
  const isSettled = () => note.text.settled && areSettled(note.versions);
  if (known && !isSettled()) return known;
  const piece = { json: noteJson(note, more), settled: isSettled() };
  cache.set(key, piece);
  return piece;
}

function placeJson(place: Place): string {
  let json = placeCache.get(place);
  if (json === undefined) {
    const { anchor, head, top } = place;
    json = JSON.stringify({ anchor, head, top });
    placeCache.set(place, json);
  }
  return json;
}

/** What is around the text is made flat: the parts of ten thousand short strings would take more than they do. */
function noteJson(note: Note, more: Members): string {
  const { before, after } = frame(note, more);
  return before + note.text.json + versionsMember(note.versions) + after;
}

function frame(
  { id, format, name, fileName, lineBreak, created, updated, pinned, source, shared, extra }: Note,
  more: Members,
): { readonly before: string; readonly after: string } {
  const members: Array<readonly [string, string]> = [
    ['format', JSON.stringify(format)],
    ['name', JSON.stringify(name)],
    ['fileName', JSON.stringify(fileName)],
    ['lineBreak', JSON.stringify(lineBreak)],
    ['created', JSON.stringify(created)],
    ['updated', JSON.stringify(updated)],
  ];
  if (pinned) members.push(['pinned', 'true']);
  if (source !== name) members.push(['source', JSON.stringify(source)]);
  if (shared.length) members.push(['shared', JSON.stringify(shared)]);
  const before = ['{"id":', JSON.stringify(id), ',"text":'].join('');
  const after = [...members, ...more, ...extra].flatMap(([member, json]) => [',', JSON.stringify(member), ':', json]);
  return { before, after: [...after, '}'].join('') };
}

function object(members: Members, extra: Extra = []): string {
  return `{${membersJson(members, extra)}}`;
}

function membersJson(members: Members, extra: Extra): string {
  return chain(
    [...members, ...extra].map(([name, json]) => `${JSON.stringify(name)}:${json}`),
    ',',
  );
}

function array(parts: ReadonlyArray<string>): string {
  return `[${chain(parts, ',')}]`;
}
