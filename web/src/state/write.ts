import type { Text } from '@codemirror/state';
import { type BinnedNote, type Contents, DOCUMENT_VERSION, type Extra, type Note, type Place } from './model';

/**
 * The cost of serialising depends on what changed. Note records and the nodes of a text's tree are immutable,
 * so the JSON of each is cached for its lifetime: a key typed into a large note costs its leaf and the path
 * above it, and every other note is an existing string.
 */
const noteCache = new WeakMap<Note, string>();
const binCache = new WeakMap<BinnedNote, string>();
const textCache = new WeakMap<Text, string>();
const placeCache = new WeakMap<Place, string>();

/**
 * Neighbouring notes are also cached as one string, keyed by the first of them, so the document is assembled
 * from a few long strings instead of many short ones.
 */
const groupCache = new WeakMap<Note, { notes: ReadonlyArray<Note>; json: string }>();
const GROUP_NOTES = 64;
const LONGEST_COPIED_GROUP = 2_000_000;

type Members = ReadonlyArray<readonly [name: string, json: string]>;

/** The document as JSON. Lone surrogates are escaped, so the result is always well-formed. */
export function serialize(contents: Contents, revision: number): string {
  const { tabs, setAside, handedOver } = contents;
  const members: Array<readonly [string, string]> = [
    ['version', String(DOCUMENT_VERSION)],
    ['revision', JSON.stringify(revision)],
    ['notes', array([...groups(contents.notes), ...contents.unreadable])],
    ['bin', array([...contents.bin.map(binnedJson), ...contents.unreadableBin])],
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
    ['settings', settingsJson(contents)],
    ['captureDraft', JSON.stringify(contents.captureDraft)],
  ];
  if (handedOver.length) members.push(['handedOver', JSON.stringify(handedOver)]);
  if (setAside.length) members.push(['setAside', array(setAside)]);
  return object(members, contents.extra);
}

/**
 * Builds what `serialize` will need, one note at a time, so the caller can let keys and frames through in
 * between.
 */
export function* prepareJson({ notes, bin }: Contents): Generator<void, void> {
  for (const note of notes) {
    if (noteCache.has(note)) continue;
    noteJson(note);
    yield;
  }
  for (const entry of bin) {
    if (binCache.has(entry)) continue;
    binnedJson(entry);
    yield;
  }
  for (let at = 0; at < notes.length; at += GROUP_NOTES) {
    groupJson(notes.slice(at, at + GROUP_NOTES));
    yield;
  }
}

function groups(notes: ReadonlyArray<Note>): string[] {
  const pieces: string[] = [];
  for (let at = 0; at < notes.length; at += GROUP_NOTES) {
    pieces.push(groupJson(notes.slice(at, at + GROUP_NOTES)));
  }
  return pieces;
}

function groupJson(notes: ReadonlyArray<Note>): string {
  const [first] = notes;
  if (!first) return '';
  const known = groupCache.get(first);
  if (known && isSame(known.notes, notes)) return known.json;
  const pieces = notes.map(noteJson);
  const length = pieces.reduce((sum, piece) => sum + piece.length, 0);
  // A flat copy is quick to insert into the document; a long one is not quick to make.
  const json = length <= LONGEST_COPIED_GROUP ? pieces.join(',') : chain(pieces, ',');
  groupCache.set(first, { notes, json });
  return json;
}

function isSame(some: ReadonlyArray<Note>, others: ReadonlyArray<Note>): boolean {
  return some.length === others.length && some.every((note, index) => note === others[index]);
}

function noteJson(note: Note): string {
  return cached(noteCache, note, () => object(noteMembers(note), note.extra));
}

function binnedJson(entry: BinnedNote): string {
  const { note, deleted } = entry;
  return cached(binCache, entry, () =>
    object([...noteMembers(note), ['deleted', JSON.stringify(deleted)]], note.extra),
  );
}

function placeJson(place: Place): string {
  return cached(placeCache, place, () => {
    const { anchor, head, top } = place;
    return JSON.stringify({ anchor, head, top });
  });
}

function noteMembers(note: Note): Members {
  const members: Array<readonly [string, string]> = [
    ['id', JSON.stringify(note.id)],
    ['text', `"${textJson(note.text)}"`],
    ['format', JSON.stringify(note.format)],
    ['name', JSON.stringify(note.name)],
    ['fileName', JSON.stringify(note.fileName)],
    ['lineBreak', JSON.stringify(note.lineBreak)],
    ['created', JSON.stringify(note.created)],
    ['updated', JSON.stringify(note.updated)],
  ];
  if (note.pinned) members.push(['pinned', 'true']);
  return members;
}

function settingsJson({ settings }: Contents): string {
  return object(
    [
      ['language', JSON.stringify(settings.language)],
      ['sidebarOpen', JSON.stringify(settings.sidebarOpen)],
      ['sidebarMode', JSON.stringify(settings.sidebarMode)],
      ['theme', JSON.stringify(settings.theme)],
      ['zoom', JSON.stringify(settings.zoom)],
      ['previewBeside', JSON.stringify(settings.previewBeside)],
    ],
    settings.extra,
  );
}

/**
 * A text as the inside of a JSON string. Leaves are joined by line breaks, and no character spans one, so
 * each can be escaped separately.
 */
function textJson(text: Text): string {
  return cached(textCache, text, () =>
    text.children ? chain(text.children.map(textJson), '\\n') : JSON.stringify(text.toString()).slice(1, -1),
  );
}

function cached<K extends object>(cache: WeakMap<K, string>, key: K, make: () => string): string {
  let json = cache.get(key);
  if (json === undefined) {
    json = make();
    cache.set(key, json);
  }
  return json;
}

function object(members: Members, extra: Extra = []): string {
  const parts = [...members, ...extra].map(([name, json]) => `${JSON.stringify(name)}:${json}`);
  return `{${chain(parts, ',')}}`;
}

function array(parts: ReadonlyArray<string>): string {
  return `[${chain(parts, ',')}]`;
}

/** Concatenates with `+`, which engines do without copying; `join` copies everything at every level. */
function chain(parts: ReadonlyArray<string>, separator: string): string {
  let whole = parts[0] ?? '';
  for (let i = 1; i < parts.length; i++) whole += separator + parts[i];
  return whole;
}
