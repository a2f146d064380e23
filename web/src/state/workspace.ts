import type { Text } from '@codemirror/state';
import type { BinnedNote, ClosedTab, Contents, Note, Place, Tabs } from './model';
import { isUntouched, type NewNote, newNote } from './newNote';
import { NoteText } from './noteText';
import { type Rewritten, rewritten } from './rewritten';
import type { Settings } from './settings';
import { withoutPlaces, withPlace } from './places';
import { closeTabs, deleteTabs, forgetTabs, moveTab, openTab } from './tabRow';
import type { Versions } from './version';
import { versionsBefore } from './versions';

/** What changed: one note's text; the set of notes or tabs; a setting; the capture draft. */
export type Change = 'text' | 'notes' | 'tabs' | 'settings' | 'draft';

export type Listener = (change: Change, id?: string) => void;

/** The notes and all other persistent state, with change listeners. */
export class Workspace {
  readonly #listeners = new Set<Listener>();
  readonly #notes: Map<string, Note>;
  #contents: Contents;
  /** The notes in list order, cached until one of them changes. */
  #order: ReadonlyArray<Note> | null = null;

  constructor(
    contents: Contents,
    readonly readOnly: boolean,
    readonly now: () => number,
  ) {
    // The notes are held once: the first version of one that was changed is nobody's any more.
    this.#contents = { ...contents, notes: [] };
    this.#notes = new Map(contents.notes.map((note) => [note.id, note]));
  }

  /** The current document, for serialising. */
  get contents(): Contents {
    return { ...this.#contents, notes: [...this.#notes.values()] };
  }

  get tabs(): Tabs {
    return this.#contents.tabs;
  }

  get settings(): Settings {
    return this.#contents.settings;
  }

  get captureDraft(): string {
    return this.#contents.captureDraft;
  }

  get activeNote(): Note | null {
    return this.tabs.active === null ? null : this.note(this.tabs.active);
  }

  get noteCount(): number {
    return this.#notes.size;
  }

  note(id: string): Note | null {
    return this.#notes.get(id) ?? null;
  }

  noteOrBinned(id: string): Note | null {
    return this.note(id) ?? this.#contents.bin.find(({ note }) => note.id === id)?.note ?? null;
  }

  /** Deleted notes, latest first. */
  get bin(): ReadonlyArray<BinnedNote> {
    return [...this.#contents.bin].sort((a, b) => b.deleted - a.deleted);
  }

  /** All notes, pinned ones first, then by last change. */
  notesInOrder(): ReadonlyArray<Note> {
    this.#order ??= [...this.#notes.values()].sort(
      (a, b) => Number(b.pinned) - Number(a.pinned) || b.updated - a.updated || b.created - a.created,
    );
    return this.#order;
  }

  /** Where the user left a note, if remembered. */
  place(id: string): Place | null {
    return this.#contents.places.get(id) ?? null;
  }

  /** Remembers where the user left a note; returns whether that changed. */
  setPlace(id: string, place: Place): boolean {
    const places = this.#notes.has(id) ? withPlace(this.#contents.places, id, place) : this.#contents.places;
    if (places === this.#contents.places) return false;
    this.#contents = { ...this.#contents, places };
    return true;
  }

  get handedOver(): ReadonlyArray<string> {
    return this.#contents.handedOver;
  }

  /** Saved along with the next change; not worth a save of its own. */
  setHandedOver(handedOver: ReadonlyArray<string>): void {
    this.#contents = { ...this.#contents, handedOver };
  }

  onChange(listener: Listener): () => void {
    this.#listeners.add(listener);
    return () => this.#listeners.delete(listener);
  }

  addNote(values: NewNote): Note {
    const note = newNote(values, this.now());
    this.#put(note);
    this.#notify('notes', note.id);
    return note;
  }

  /** `removed` is how much of the former text went, if that is known. */
  setText(id: string, text: Text, removed = 0): void {
    const note = this.#notes.get(id);
    if (!note || note.text.is(text)) return;
    const [now, next] = [this.now(), NoteText.of(text)];
    const versions = versionsBefore(note, next, now, removed);
    // Later than its creation even if the clock was set back, because isUntouched() depends on it.
    this.#put({ ...note, text: next, updated: Math.max(now, note.created + 1), versions });
    this.#notify('text', id);
  }

  /** Gives several notes new texts at once. */
  rewrite(texts: ReadonlyMap<string, Rewritten>): void {
    if (!texts.size) return;
    for (const [id, text] of texts) {
      const note = this.#notes.get(id);
      if (note) this.#put(rewritten(note, text, this.now()));
    }
    this.#notify('notes');
  }

  setFileName(id: string, fileName: string): void {
    if (this.note(id)?.fileName !== fileName) this.#change(id, { fileName });
  }

  /** Replaces the versions of a note, in the bin too; saved along with the next change. */
  setVersions(id: string, versions: Versions): void {
    const note = this.noteOrBinned(id);
    if (!note) return;
    const changed = { ...note, versions };
    if (this.#notes.has(id)) this.#put(changed);
    const bin = this.#contents.bin.map((entry) => (entry.note === note ? { ...entry, note: changed } : entry));
    this.#contents = { ...this.#contents, bin };
  }

  /** Null makes the first line the title. */
  setName(id: string, name: string | null): void {
    if (this.note(id)?.name !== name) this.#change(id, { name });
  }

  setPinned(ids: ReadonlyArray<string>, pinned: boolean): void {
    const changed = this.#known(ids).filter((note) => note.pinned !== pinned);
    for (const note of changed) this.#put({ ...note, pinned });
    if (changed.length) this.#notify('notes', ids[0]);
  }

  deleteNote(id: string): void {
    this.deleteNotes([id]);
  }

  /** Moves notes to the bin and closes their tabs; reopening the tab restores the note. */
  deleteNotes(ids: ReadonlyArray<string>): void {
    const notes = this.#known(ids);
    if (!notes.length) return;
    const deleted = this.now();
    for (const { id } of notes) this.#drop(id);
    const bin = [...this.#contents.bin, ...notes.map((note) => ({ note, deleted }))];
    const gone = notes.map(({ id }) => id);
    const tabs = deleteTabs(this.tabs, gone);
    this.#contents = { ...this.#contents, bin, tabs };
    this.#notify('notes', ids[0]);
    this.#notify('tabs');
  }

  /** Puts notes in, in place of those with their ids; nothing else is in the bin then under these ids. */
  adopt(notes: ReadonlyArray<Note>, binned: ReadonlyArray<BinnedNote>): void {
    if (!notes.length && !binned.length) return;
    const ids = new Set([...notes, ...binned.map(({ note }) => note)].map(({ id }) => id));
    const others = this.#contents.bin.filter(({ note }) => !ids.has(note.id));
    this.#contents = { ...this.#contents, bin: [...others, ...binned] };
    for (const note of notes) this.#put(note);
    this.#notify('notes');
  }

  restoreNote(id: string): boolean {
    return this.restoreNotes([id]);
  }

  /** Restores notes from the bin; returns whether any was there. */
  restoreNotes(ids: ReadonlyArray<string>): boolean {
    const wanted = new Set(ids);
    const binned = this.#contents.bin.filter(({ note }) => wanted.has(note.id));
    if (!binned.length) return false;
    this.#contents = { ...this.#contents, bin: this.#contents.bin.filter(({ note }) => !wanted.has(note.id)) };
    for (const { note } of binned) this.#put(note);
    this.#notify('notes', ids[0]);
    return true;
  }

  /** Deletes the notes in the bin for good. */
  emptyBin(): void {
    const { bin } = this.#contents;
    if (!bin.length) return;
    const ids = bin.map(({ note }) => note.id);
    const places = withoutPlaces(this.#contents.places, ids);
    this.#contents = { ...this.#contents, bin: [], places, tabs: forgetTabs(this.tabs, ids) };
    this.#notify('notes');
  }

  openTab(id: string, index?: number): void {
    if (this.#notes.has(id)) this.#setTabs(openTab(this.tabs, id, index));
  }

  moveTab(id: string, index: number): void {
    this.#setTabs(moveTab(this.tabs, id, index));
  }

  /**
   * Closes tabs. Notes that never had any text are removed with their tabs; one that was emptied stays a
   * normal note and can be reopened.
   */
  closeTabs(ids: ReadonlyArray<string>): void {
    const untouched = (this.readOnly ? [] : this.#known(ids).filter(isUntouched)).map(({ id }) => id);
    for (const id of untouched) this.#drop(id);
    this.#setTabs(forgetTabs(closeTabs(this.tabs, ids), untouched));
    if (untouched.length) this.#notify('notes');
  }

  /**
   * Reopens the tab closed last, restoring its note from the bin if necessary; returns the note's id, or null
   * if there is none.
   */
  reopenTab(): string | null {
    const last = this.tabs.closed.at(-1);
    if (!last) return null;
    const tabs = { ...this.tabs, closed: this.tabs.closed.slice(0, -1) };
    this.#contents = { ...this.#contents, tabs };
    if (!this.#notes.has(last.id) && (this.readOnly || !this.restoreNote(last.id))) return this.reopenTab();
    this.openTab(last.id, last.index);
    return last.id;
  }

  /** Puts closed tabs back at their old positions, except those whose notes are gone. */
  reopenTabs(closed: ReadonlyArray<ClosedTab>, active: string | null): void {
    const known = closed.filter(({ id }) => this.#notes.has(id));
    const tabs = known.reduce((row, { id, index }) => openTab(row, id, index), this.tabs);
    const isOpen = active !== null && tabs.open.includes(active);
    this.#setTabs(isOpen ? { ...tabs, active } : tabs);
  }

  setSettings(change: Partial<Settings>): void {
    this.#contents = { ...this.#contents, settings: { ...this.settings, ...change } };
    this.#notify('settings');
  }

  setCaptureDraft(draft: string): void {
    if (draft === this.captureDraft) return;
    this.#contents = { ...this.#contents, captureDraft: draft };
    this.#notify('draft');
  }

  #known(ids: ReadonlyArray<string>): Note[] {
    return ids.flatMap((id) => this.#notes.get(id) ?? []);
  }

  #change(id: string, change: Partial<Note>): void {
    const note = this.#notes.get(id);
    if (!note) return;
    this.#put({ ...note, ...change });
    this.#notify('notes', id);
  }

  #put(note: Note): void {
    this.#notes.set(note.id, note);
    this.#order = null;
  }

  #drop(id: string): void {
    this.#notes.delete(id);
    this.#order = null;
  }

  #setTabs(tabs: Tabs): void {
    if (tabs === this.tabs) return;
    this.#contents = { ...this.#contents, tabs };
    this.#notify('tabs');
  }

  #notify(change: Change, id?: string): void {
    for (const listener of this.#listeners) listener(change, id);
  }
}
