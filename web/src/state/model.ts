import type { Text } from '@codemirror/state';
import type { Language } from '../i18n/language';
import type { Format } from '../text/names';

/** The newest document version that this page can read and the one that it writes. */
export const DOCUMENT_VERSION = 1;

/**
 * Members that this version does not know, each as its name and its JSON. They are written back
 * as they came, so that a newer version's additions survive a visit to this one.
 */
export type Extra = ReadonlyArray<readonly [name: string, json: string]>;

/** One note. Records are never changed in place: a new text makes a new record. */
export interface Note {
  readonly id: string;
  readonly text: Text;
  readonly format: Format;
  /** The name of the file it was imported from; such a note keeps it as its title. */
  readonly name: string | null;
  /** The file name of the last Save As, offered again the next time. */
  readonly fileName: string | null;
  /** The line break of the file it came from, given back when it is written to a file. */
  readonly lineBreak: '\n' | '\r\n';
  /** Stands before the others in the list. */
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
  /** Closed tabs, the latest last. */
  readonly closed: ReadonlyArray<ClosedTab>;
  readonly extra: Extra;
}

/** Where a note was left: the selection, and what stood at the upper edge, as text offsets. */
export interface Place {
  readonly anchor: number;
  readonly head: number;
  readonly top: number;
}

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

/** What a stored choice means here; one that this version does not know follows the desktop. */
export function readTheme(chosen: string): Theme {
  return themes.find((theme) => theme === chosen) ?? 'system';
}

export interface Settings {
  readonly language: Language | null;
  readonly sidebarOpen: boolean;
  readonly sidebarMode: string;
  /** One of `themes`, or the word of a later version, which is kept. */
  readonly theme: string;
  /** The size of all text, 1 being as designed. */
  readonly zoom: number;
  /** The preview is kept open beside the text. One in its place ends with the page, so that a start is for writing. */
  readonly previewBeside: boolean;
  readonly extra: Extra;
}

/** The whole document as the page holds it. */
export interface Contents {
  readonly revision: number;
  readonly notes: ReadonlyArray<Note>;
  readonly bin: ReadonlyArray<BinnedNote>;
  readonly tabs: Tabs;
  /** Where notes were left, the latest last. */
  readonly places: ReadonlyMap<string, Place>;
  readonly settings: Settings;
  /** What was typed into quick capture and not yet kept. */
  readonly captureDraft: string;
  /** Notes of the files that the host handed over last, while it cannot know yet that they are here. */
  readonly handedOver: ReadonlyArray<string>;
  /** Entries among the notes that could not be read as notes, as JSON; kept, not shown. */
  readonly unreadable: ReadonlyArray<string>;
  /** The same for entries of the bin. */
  readonly unreadableBin: ReadonlyArray<string>;
  /** Whole members that were not what they should be, each with its name, as JSON; kept. */
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
