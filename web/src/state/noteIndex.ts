import { fold } from '../text/fold';
import { marksInSteps } from '../text/noteMarks';
import { linkable, tagKey, titleKey, withoutExtension } from '../text/titleKey';
import { type Findable, findable } from '../text/nameMatches';
import { inSlices, workSlice } from '../time/slices';
import type { Note } from './model';
import type { NoteText } from './noteText';
import { titleOf } from './titleOf';
import type { Workspace } from './workspace';

interface Tag {
  readonly name: string;
  readonly key: string;
}

/** What a note's text contains, each once: its tags and those above them, and the keys of the titles it links to. */
interface Marks {
  readonly tags: ReadonlyArray<Tag>;
  readonly links: ReadonlyArray<string>;
}

export interface TagCount extends Findable {
  readonly count: number;
}

interface NoteTitle extends Findable {
  readonly id: string;
}

/** How links call a note: as they write its title, and the keys that lead to it. */
interface Names {
  readonly written: Findable;
  readonly keys: ReadonlyArray<string>;
}

const none: Marks = { tags: [], links: [] };
const marks = new WeakMap<NoteText, Marks>();
/** Made once for all notes. Copied, because a part of a string would keep the whole text. */
const tagsByName = new Map<string, Tag>();
const copies = new Map<string, string>();
/** By the text where only that decides, so that a note that is pinned, for example, keeps its names. */
const namesOfNotes = new WeakMap<Note | NoteText, Names>();
/** As many notes are read at once where somebody waits. */
const FEW = 50;
const NOTES_AT_ONCE = 500;
const WAITED_SLICE_MS = 16;

/** The tags and links of all notes, cached by their texts. Notes that were not read yet count as empty. */
export class NoteIndex {
  readonly #workspace: Workspace;
  readonly #isMarkdown: (note: Note) => boolean;
  #tags: ReadonlyArray<TagCount> | null = null;
  #titles: ReadonlyMap<string, Note> | null = null;
  #findable: ReadonlyArray<NoteTitle> | null = null;
  #changes = 0;

  constructor(workspace: Workspace, isMarkdown: (note: Note) => boolean) {
    this.#workspace = workspace;
    this.#isMarkdown = isMarkdown;
  }

  /** Forgets what was put together from several notes. */
  changed(): void {
    this.#changes++;
    this.#tags = null;
    this.#titles = null;
    this.#findable = null;
  }

  /** Lists the titles anew, latest first; call when another note is shown. */
  reorder(): void {
    this.#findable = null;
  }

  /**
   * Reads the notes that have not been read yet, until then their old titles count, and puts together what they
   * contain; in short steps.
   */
  *read(): Generator<void, void> {
    yield* this.#readNotes();
    const changes = this.#changes;
    const tags = this.#tags ?? (yield* this.#countTags());
    const titles = this.#titles ?? (yield* this.#byTitle());
    if (changes !== this.#changes) return;
    this.#tags = tags;
    this.#titles = titles;
  }

  /** Whether nothing takes long: all notes are read, but for some that changed. */
  get isWhole(): boolean {
    let missing = 0;
    for (const note of this.#workspace.notesInOrder()) if (!isRead(note) && ++missing > FEW) return false;
    return true;
  }

  /** Runs once all notes are read; within this call if most are. */
  whenRead(run: () => void): void {
    inSlices(this.read(), { slice: WAITED_SLICE_MS, onDone: run });
  }

  /** Reads them now, the latest first, for at most so many milliseconds. */
  readNow(longest: number): void {
    workSlice(this.#readNotes(), longest);
  }

  /** Every tag with the number of its notes, in alphabetical order. A tag counts for those above it, too. */
  get tags(): ReadonlyArray<TagCount> {
    this.#tags ??= finished(this.#countTags());
    return this.#tags;
  }

  /** The titles of all other notes, latest first: whoever writes in one does not want to link to it. */
  titlesBut(id: string): ReadonlyArray<Findable> {
    this.#findable ??= this.#writtenTitles();
    return this.#findable.filter((title) => title.id !== id);
  }

  /** The note that links with this title lead to: of several, the one edited last. */
  noteTitled(title: string): Note | null {
    this.#titles ??= finished(this.#byTitle());
    const note = this.#titles.get(titleKey(title));
    return (note && this.#workspace.note(note.id)) ?? null;
  }

  /** The other notes with links that lead to this one. */
  linkingTo(note: Note): ReadonlyArray<Note> {
    const keys = keysOf(note).filter((key) => this.noteTitled(key)?.id === note.id);
    return keys.length === 0 ? [] : this.linkingBy(keys).filter(({ id }) => id !== note.id);
  }

  /** The notes with links to any of these keys of titles. */
  linkingBy(keys: ReadonlyArray<string>): ReadonlyArray<Note> {
    return this.#latest(({ text }) => marks.get(text)?.links.some((link) => keys.includes(link)) === true);
  }

  /** The notes with this tag or one below it. */
  tagged(name: string): ReadonlyArray<Note> {
    const key = tagKey(name);
    return this.#latest(({ text }) => marks.get(text)?.tags.some((tag) => tag.key === key) === true);
  }

  #isKnownByTitle(note: Note): boolean {
    const keys = keysOf(note);
    return keys.length > 0 && keys.every((key) => this.#titles?.get(key)?.id === note.id);
  }

  *#readNotes(): Generator<void, void> {
    let isChanged = false;
    let isRenamed = false;
    for (const note of this.#workspace.notesInOrder()) {
      if (isRead(note)) continue;
      if (!marks.has(note.text)) {
        yield* this.#readMarks(note);
        isChanged = true;
      }
      isRenamed = !this.#isKnownByTitle(note) || isRenamed;
      yield;
    }
    if (isRenamed) this.changed();
    else if (isChanged) {
      this.#changes++;
      this.#tags = null;
    }
  }

  *#readMarks(note: Note): Generator<void, void> {
    const { text } = note;
    // Most notes have neither, and what is in their JSON can be seen without decoding it.
    const isBare = text.settled && !text.json.includes('#') && !text.json.includes('[[');
    marks.set(text, isBare || !this.#isMarkdown(note) ? none : yield* readMarks(text));
  }

  *#countTags(): Generator<void, TagCount[]> {
    const counts = new Map<string, { name: string; count: number }>();
    for (const [index, { text }] of this.#workspace.notesInOrder().entries()) {
      if (index % NOTES_AT_ONCE === NOTES_AT_ONCE - 1) yield;
      for (const { name, key } of marks.get(text)?.tags ?? []) {
        const known = counts.get(key);
        if (known) known.count++;
        else counts.set(key, { name, count: 1 });
      }
    }
    return inTreeOrder([...counts.values()].map(({ name, count }) => ({ ...findable(name), count })));
  }

  #latest(wanted: (note: Note) => boolean): Note[] {
    return this.#workspace
      .notesInOrder()
      .filter(wanted)
      .sort((a, b) => b.updated - a.updated);
  }

  /** Of several notes with the same title, links lead to the first of these. */
  #writtenTitles(): NoteTitle[] {
    const found = new Map<string, NoteTitle>();
    for (const note of this.#latest(() => true)) {
      const { written, keys } = namesOf(note);
      const key = keys.at(-1);
      if (key !== undefined && !found.has(key)) found.set(key, { ...written, id: note.id });
    }
    return [...found.values()];
  }

  *#byTitle(): Generator<void, Map<string, Note>> {
    const found = new Map<string, Note>();
    const notes = this.#latest(() => true);
    // A whole title comes before a file's name without its extension.
    for (const place of [0, 1]) {
      for (const [index, note] of notes.entries()) {
        if (index % NOTES_AT_ONCE === NOTES_AT_ONCE - 1) yield;
        const key = keysOf(note)[place];
        if (key && !found.has(key)) found.set(key, note);
      }
    }
    return found;
  }
}

/** The keys by which links may call a note: its title, and for a file its name without the extension. */
export function keysOf(note: Note): ReadonlyArray<string> {
  return namesOf(note).keys;
}

function holderOf(note: Note): Note | NoteText {
  return note.name === null ? note.text : note;
}

function isRead(note: Note): boolean {
  return marks.has(note.text) && namesOfNotes.has(holderOf(note));
}

function namesOf(note: Note): Names {
  let names = namesOfNotes.get(holderOf(note));
  if (!names) {
    const titles = note.name === null ? [titleOf(note)] : [note.name, withoutExtension(note.name)];
    const keys = [...new Set(titles.map(titleKey))].filter(Boolean);
    names = { written: findable(linkable(titles.at(-1) ?? '')), keys };
    namesOfNotes.set(holderOf(note), names);
  }
  return names;
}

function* readMarks(text: NoteText): Generator<void, Marks> {
  const tags = new Map<string, Tag>();
  const links = new Set<string>();
  for (const mark of marksInSteps(text.toString())) {
    if (!mark) {
      yield;
      continue;
    }
    const { kind, name } = mark;
    if (kind === 'link') links.add(copied(titleKey(name)));
    else for (const tag of withThoseAbove(name)) if (!tags.has(tag.key)) tags.set(tag.key, tag);
  }
  return tags.size + links.size === 0 ? none : { tags: [...tags.values()], links: [...links] };
}

/** Each tag after the one above it. Comparing by the rules of a language takes too long for thousands. */
function inTreeOrder(tags: ReadonlyArray<TagCount>): TagCount[] {
  const keyed = tags.map((tag) => ({ tag, key: tag.name.split('/').map(orderKey).join('\u0001') }));
  return keyed.sort((a, b) => (a.key < b.key ? -1 : Number(a.key > b.key))).map(({ tag }) => tag);
}

/** Accents count only between names that are equal without them, and numbers by their values. */
function orderKey(part: string): string {
  return `${fold(part).replace(/\d+/g, (digits) => digits.padStart(8, '0'))}\u0000${tagKey(part)}`;
}

/** Work that is wanted at once. */
function finished<Result>(work: Iterator<void, Result>): Result {
  let step = work.next();
  while (!step.done) step = work.next();
  return step.value;
}

function copied(name: string): string {
  let copy = copies.get(name);
  if (copy === undefined) {
    copy = JSON.parse(JSON.stringify(name)) as string;
    copies.set(copy, copy);
  }
  return copy;
}

/** "a/b" and "a". */
function withThoseAbove(name: string): Tag[] {
  const parts = name.split('/');
  return parts.map((_, index) => tagNamed(parts.slice(0, index + 1).join('/')));
}

function tagNamed(written: string): Tag {
  let tag = tagsByName.get(written);
  if (!tag) {
    const name = copied(written);
    tag = { name, key: tagKey(name) };
    tagsByName.set(name, tag);
  }
  return tag;
}
