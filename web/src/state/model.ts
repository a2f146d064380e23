import type { Language } from '../i18n/language';
import type { Format } from '../text/names';
import type { NoteText } from './noteText';

/** The newest document version this page can read, and the one it writes. */
export const DOCUMENT_VERSION = 1;

/**
 * Members this version does not know, as name and JSON. They are written back unchanged, so a newer version's
 * additions survive being opened in this one.
 */
export type Extra = ReadonlyArray<readonly [name: string, json: string]>;

/** One note. Records are immutable: new text means a new record. */
export interface Note {
  readonly id: string;
  readonly text: NoteText;
  readonly format: Format;
  /** The name of the imported file, which stays the note's title. */
  readonly name: string | null;
  /** The file name of the last Save As, suggested the next time. */
  readonly fileName: string | null;
  /** The line break of the imported file, used again when the note is written to a file. */
  readonly lineBreak: '\n' | '\r\n';
  /** Listed before the others. */
  readonly pinned: boolean;
  readonly created: number;
  readonly updated: number;
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

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

/** The theme for a stored value; unknown values follow the system. */
export function readTheme(chosen: string): Theme {
  return themes.find((theme) => theme === chosen) ?? 'system';
}

export interface Settings {
  readonly language: Language | null;
  readonly sidebarOpen: boolean;
  readonly sidebarMode: string;
  /** One of `themes`, or a later version's value, which is preserved. */
  readonly theme: string;
  /** Text size factor; 1 is the default. */
  readonly zoom: number;
  /**
   * Whether the preview is kept open beside the text. The preview in place of the text is not persisted, so
   * the page always starts ready for writing.
   */
  readonly previewBeside: boolean;
  readonly extra: Extra;
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

export const defaultSettings: Settings = {
  language: null,
  sidebarOpen: true,
  sidebarMode: 'all',
  theme: 'system',
  zoom: 1,
  previewBeside: false,
  extra: [],
};

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
