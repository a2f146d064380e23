import type { Library } from './library';
import type { BinnedNote, Note } from './model';
import { versionText, versionsAfter } from './versions';
import { titleOf } from './titleOf';
import type { Workspace } from './workspace';

export interface Merge {
  readonly notes: ReadonlyArray<Note>;
  readonly bin: ReadonlyArray<BinnedNote>;
  readonly added: number;
  readonly updated: number;
  readonly both: number;
}

/** Between the id of a note and what makes the one beside it different. */
const BESIDE = '~';
const LONGEST_BASE = 48;

/**
 * What bringing a library in changes. A note that changed on one side only gets that side's text, the other text
 * becomes a version; one that changed on both stays, and the library's comes beside it under another title. Nothing is
 * deleted. Bringing the same library in again changes nothing.
 */
export function mergeLibrary(workspace: Workspace, library: Library, titleBeside: (title: string) => string): Merge {
  const known = new KnownTexts(workspace);
  const [notes, bin]: [Note[], BinnedNote[]] = [[], []];
  const counts = { added: 0, updated: 0, both: 0 };
  const now = workspace.now();
  for (const theirs of library.notes) {
    const ours = workspace.noteOrBinned(theirs.id);
    if (ours ? ours.text.eq(theirs.text) : known.has(theirs)) continue;
    if (!ours) {
      counts.added++;
      notes.push(theirs);
      known.add(theirs);
    } else if (isAhead(theirs, ours) && !(isAhead(ours, theirs) && ours.updated >= theirs.updated)) {
      counts.updated++;
      notes.push({ ...theirs, versions: versionsAfter(theirs, ours.text, now) });
    } else if (!isAhead(ours, theirs) && !known.hasText(theirs)) {
      counts.both++;
      const id = `${theirs.id.slice(0, LONGEST_BASE)}${BESIDE}${theirs.updated.toString(36)}`;
      const beside = { ...theirs, id, name: titleBeside(titleOf(theirs)) };
      notes.push(beside);
      known.add(beside);
    }
  }
  for (const entry of library.bin) {
    if (workspace.noteOrBinned(entry.note.id) || known.has(entry.note)) continue;
    counts.added++;
    bin.push(entry);
    known.add(entry.note);
  }
  return { notes, bin, ...counts };
}

/** Whether `one` comes from the text that `other` still has. */
function isAhead(one: Note, other: Note): boolean {
  if (one.updated !== other.updated && one.shared.includes(other.updated)) return true;
  return one.versions.some(({ held }, at) => {
    return held.length === other.text.length && versionText(one, at).eq(other.text.tree);
  });
}

/** The notes that are there or about to be, found by their texts. */
class KnownTexts {
  readonly #byLength = new Map<number, Note[]>();

  constructor({ contents: { notes, bin } }: Workspace) {
    for (const note of notes) this.add(note);
    for (const { note } of bin) this.add(note);
  }

  add(note: Note): void {
    const alike = this.#byLength.get(note.text.length);
    if (alike) alike.push(note);
    else this.#byLength.set(note.text.length, [note]);
  }

  hasText(note: Note): boolean {
    return this.#alike(note).length > 0;
  }

  /** With the same title; one that was put beside another is known by its text. */
  has(note: Note): boolean {
    const title = titleOf(note);
    return this.#alike(note).some((one) => note.id.includes(BESIDE) || titleOf(one) === title);
  }

  #alike({ text }: Note): ReadonlyArray<Note> {
    return (this.#byLength.get(text.length) ?? []).filter((one) => one.text.eq(text));
  }
}
