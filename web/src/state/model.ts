import type { Format } from '../text/names';
import type { Extra } from './extra';
import type { NoteText } from './noteText';
import { defaultSettings, type Settings } from './settings';
import type { Versions } from './version';

/** The newest document version this page can read, and the one it writes. */
export const DOCUMENT_VERSION = 2;

/** One note. Records are immutable: new text means a new record. */
export interface Note {
  readonly id: string;
  readonly text: NoteText;
  readonly format: Format;
  /** The note's title in place of its first line: the name of the imported file, until it is renamed. */
  readonly name: string | null;
  /** The name of the file that it is a copy of. */
  readonly source: string | null;
  /** The file name of the last Save As, suggested the next time. */
  readonly fileName: string | null;
  /** The line break of the imported file, used again when the note is written to a file. */
  readonly lineBreak: '\n' | '\r\n';
  /** Listed before the others. */
  readonly pinned: boolean;
  readonly created: number;
  readonly updated: number;
  readonly versions: Versions;
  /** What `updated` was of the texts it comes from, when it went out in a library or one came in; latest last. */
  readonly shared: ReadonlyArray<number>;
  readonly extra: Extra;
}

export interface BinnedNote {
  readonly note: Note;
  readonly deleted: number;
}

export interface ClosedTab {
  readonly id: string;
  readonly index: number;
}

export interface Tabs {
  readonly open: ReadonlyArray<string>;
  readonly active: string | null;
  /** Closed tabs, latest last. */
  readonly closed: ReadonlyArray<ClosedTab>;
  readonly extra: Extra;
}

/** Where the user left a note: the selection and the position at the top edge, as text offsets. */
export interface Place {
  readonly anchor: number;
  readonly head: number;
  readonly top: number;
}

/** The whole document as held in memory. */
export interface Contents {
  readonly revision: number;
  readonly notes: ReadonlyArray<Note>;
  readonly bin: ReadonlyArray<BinnedNote>;
  readonly tabs: Tabs;
  /** Where notes were left, latest last. */
  readonly places: ReadonlyMap<string, Place>;
  readonly settings: Settings;
  /** Unsaved text in quick capture. */
  readonly captureDraft: string;
  /** Notes created from the files the host handed over last, while it cannot know that they arrived. */
  readonly handedOver: ReadonlyArray<string>;
  /** Entries of `notes` that could not be read as notes, as JSON; preserved, not shown. */
  readonly unreadable: ReadonlyArray<string>;
  /** The same for `bin`. */
  readonly unreadableBin: ReadonlyArray<string>;
  /** Whole members of the wrong type, each with its name, as JSON; preserved. */
  readonly setAside: ReadonlyArray<string>;
  readonly extra: Extra;
}

export const noTabs: Tabs = { open: [], active: null, closed: [], extra: [] };

export const emptyContents: Contents = {
  revision: 0,
  notes: [],
  bin: [],
  tabs: noTabs,
  places: new Map(),
  settings: defaultSettings,
  captureDraft: '',
  handedOver: [],
  unreadable: [],
  unreadableBin: [],
  setAside: [],
  extra: [],
};
