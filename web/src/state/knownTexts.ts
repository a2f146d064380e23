import type { Note } from './model';
import type { NoteText } from './noteText';
import type { Workspace } from './workspace';

/** The notes that are there or about to be, found by their texts. */
export class KnownTexts {
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

  remove({ id, text }: Note): void {
    const alike = this.#byLength.get(text.length)?.filter((one) => one.id !== id);
    if (alike) this.#byLength.set(text.length, alike);
  }

  withText(text: NoteText): ReadonlyArray<Note> {
    const alike = this.#byLength.get(text.length) ?? [];
    return alike.filter((one) => hashOf(one.text) === hashOf(text) && one.text.eq(text));
  }
}

const hashes = new WeakMap<NoteText, number>();

/** Notes that a program wrote may all be of one length, and comparing each with each would take minutes. */
function hashOf(text: NoteText): number {
  let hash = hashes.get(text);
  if (hash === undefined) {
    hash = 0;
    const { json } = text;
    for (let at = 0; at < json.length; at++) hash = (Math.imul(hash, 31) + json.charCodeAt(at)) | 0;
    hashes.set(text, hash);
  }
  return hash;
}
