import {
  type BinnedNote,
  type ClosedTab,
  type Contents,
  DOCUMENT_VERSION,
  emptyContents,
  type Note,
  type Place,
  type Tabs,
} from './model';
import { keepJson, unknownMembers } from './extra';
import { isMembers, type Members, migrate } from './migrations';
import { NoteText } from './noteText';
import { readRevision } from './revision';
import { defaultSettings, readSettings, settingNames } from './settings';
import { lastTimes } from './sharedTimes';
import { readVersions, VERSION_MEMBERS } from './readVersions';
import { soundTabs } from './tabRow';

const BIN_KEEPS_MS = 30 * 24 * 60 * 60 * 1000;
/** The host allows ids of up to 200 bytes. */
const LONGEST_ID = 60;
/** Less than the last date there is: times are counted up from what was read. */
const CLOCK_LIMIT = 8.64e15 - 1e6;

export interface ReadResult {
  readonly contents: Contents;
  /** The document comes from a newer version: it can be shown but must not be overwritten. */
  readonly newer: boolean;
}

/**
 * Reads a stored document of any shape without ever failing. Missing members get their defaults, known but
 * unusable ones are set aside, unknown ones are preserved. Documents of older versions are migrated first;
 * newer ones are read as far as possible.
 */
export function readContents(stored: unknown, now: number): ReadResult {
  if (!isMembers(stored)) return { contents: emptyContents, newer: false };
  const newer = typeof stored.version === 'number' && stored.version > DOCUMENT_VERSION;
  const value = newer ? stored : migrate(stored);
  const ids = new Set<string>();
  const unreadable: string[] = [];
  const notes: Note[] = [];
  for (const entry of entries(value.notes)) {
    const note = readNote(entry, ids, now);
    if (note) notes.push(note);
    else keepJson(entry, unreadable);
  }
  const bin: BinnedNote[] = [];
  const unreadableBin: string[] = [];
  for (const entry of entries(value.bin)) {
    const deleted = isMembers(entry) ? readTime(entry.deleted, now) : now;
    if (now - deleted > BIN_KEEPS_MS) continue;
    const note = readNote(entry, ids, now);
    if (note) bin.push({ note, deleted });
    else keepJson(entry, unreadableBin);
  }
  const extra = unknownMembers(value, DOCUMENT_MEMBERS);
  const contents: Contents = {
    revision: readRevision(value.revision),
    notes,
    bin,
    tabs: readTabs(value.tabs, notes, bin),
    places: readPlaces(value.places, ids),
    settings: isMembers(value.settings)
      ? readSettings(value.settings, unknownMembers(value.settings, settingNames))
      : defaultSettings,
    captureDraft: typeof value.captureDraft === 'string' ? value.captureDraft : '',
    handedOver: texts(value.handedOver),
    unreadable,
    unreadableBin,
    setAside: readSetAside(value),
    extra,
  };
  return { contents, newer };
}

const DOCUMENT_MEMBERS = [
  'version',
  'revision',
  'notes',
  'bin',
  'tabs',
  'places',
  'settings',
  'captureDraft',
  'handedOver',
  'setAside',
];
const NOTE_MEMBERS = [
  'id',
  'text',
  'format',
  'name',
  'fileName',
  'lineBreak',
  'pinned',
  'created',
  'updated',
  'deleted',
  'shared',
  'source',
  ...VERSION_MEMBERS,
];
const TABS_MEMBERS = ['open', 'active', 'closed'];

function entries(value: unknown): ReadonlyArray<unknown> {
  if (Array.isArray(value)) return value;
  return isMembers(value) ? Object.values(value) : [];
}

function texts(value: unknown): ReadonlyArray<string> {
  return entries(value).filter((entry) => typeof entry === 'string');
}

function readNote(entry: unknown, ids: Set<string>, now: number): Note | null {
  if (!isMembers(entry) || typeof entry.text !== 'string') return null;
  let id = typeof entry.id === 'string' && entry.id.length <= LONGEST_ID ? entry.id : '';
  if (!id || ids.has(id)) id = crypto.randomUUID();
  ids.add(id);
  const created = readTime(entry.created, now);
  const text = NoteText.of(entry.text);
  const { versions, damaged } = readVersions(entry, text.length);
  return {
    id,
    text,
    format: entry.format === 'plain' ? 'plain' : 'markdown',
    name: readName(entry.name),
    source: readName(entry.source === undefined ? entry.name : entry.source),
    fileName: readName(entry.fileName),
    lineBreak: entry.lineBreak === '\r\n' ? '\r\n' : '\n',
    pinned: entry.pinned === true,
    created,
    updated: readTime(entry.updated, created),
    versions,
    shared: lastTimes(entries(entry.shared).filter((time) => typeof time === 'number')),
    extra: [...unknownMembers(entry, NOTE_MEMBERS), ...damaged],
  };
}

function readName(value: unknown): string | null {
  return typeof value === 'string' && value !== '' ? value : null;
}

function readTime(value: unknown, otherwise: number): number {
  return typeof value === 'number' && value >= 0 && value <= CLOCK_LIMIT ? value : otherwise;
}

function readTabs(value: unknown, notes: ReadonlyArray<Note>, bin: ReadonlyArray<BinnedNote>): Tabs {
  const members = isMembers(value) ? value : {};
  const tabs: Tabs = {
    open: texts(members.open),
    active: typeof members.active === 'string' ? members.active : null,
    closed: entries(members.closed).flatMap(readClosedTab),
    extra: unknownMembers(members, TABS_MEMBERS),
  };
  return soundTabs(tabs, new Set(notes.map((note) => note.id)), new Set(bin.map(({ note }) => note.id)));
}

function readClosedTab(value: unknown): ClosedTab[] {
  if (!isMembers(value) || typeof value.id !== 'string') return [];
  const index = typeof value.index === 'number' && value.index >= 0 ? Math.trunc(value.index) : 0;
  return [{ id: value.id, index }];
}

function readPlaces(value: unknown, ids: ReadonlySet<string>): Map<string, Place> {
  const places = new Map<string, Place>();
  for (const [id, place] of Object.entries(isMembers(value) ? value : {})) {
    if (!ids.has(id) || !isMembers(place)) continue;
    const [anchor, head, top] = [place.anchor, place.head, place.top].map(readOffset);
    if (anchor === undefined || head === undefined || top === undefined) continue;
    places.set(id, { anchor, head, top });
  }
  return places;
}

function readOffset(value: unknown): number {
  return typeof value === 'number' && value >= 0 && value < 2 ** 31 ? Math.trunc(value) : 0;
}

/** Members of the wrong type, with their values. */
function readSetAside(value: Members): string[] {
  const kept: string[] = [];
  const before = value.setAside ?? [];
  for (const entry of Array.isArray(before) ? before : [before]) keepJson(entry, kept);
  for (const member of ['notes', 'bin', 'tabs', 'places', 'settings'] as const) {
    const held = value[member];
    const isList = Array.isArray(held) && (member === 'notes' || member === 'bin');
    if (held === undefined || held === null || isList || isMembers(held)) continue;
    keepJson({ member, held }, kept);
  }
  return kept;
}
