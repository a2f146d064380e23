import { counted } from '../i18n/language';
import { keysOf } from '../state/noteIndex';
import { titleOf } from '../state/titleOf';
import { linkEdits } from '../text/renames';
import { linkable, titleKey, withoutExtension } from '../text/titleKey';
import type { Context } from './context';
import { rewriteNotes } from './rewrite';

interface Watched {
  readonly id: string;
  readonly title: string;
  readonly keys: ReadonlyArray<string>;
  readonly updated: number;
}

/** Makes links follow the title of the shown note. */
export class TitleWatch {
  readonly #context: Context;
  #watched: Watched | null = null;

  constructor(context: Context) {
    this.#context = context;
  }

  /** Call when another note may be shown; the title of the one before is settled. */
  shown(): void {
    const note = this.#context.workspace.activeNote;
    if (this.#watched && this.#watched.id === note?.id) return;
    this.settle();
    this.#watched = note && { id: note.id, title: titleOf(note), keys: keysOf(note), updated: note.updated };
  }

  /** Rewrites the links to the title that the note had before. An empty title is none yet. */
  settle(): void {
    const watched = this.#watched;
    const { workspace } = this.#context;
    const note = watched && workspace.note(watched.id);
    if (!note || workspace.readOnly) return;
    const title = titleOf(note);
    if (!linkable(title) || title === watched.title) return;
    this.#watched = { id: note.id, title, keys: keysOf(note), updated: note.updated };
    // Notes that changed a moment ago may have links, too.
    this.#context.index.whenRead(() => this.#follow(watched, note.name === null ? title : withoutExtension(title)));
  }

  #follow(watched: Watched, title: string): void {
    const { index, shell } = this.#context;
    index.changed();
    const keys = this.#lostKeys(watched);
    const name = linkable(title);
    const { count, undo } = rewriteNotes(this.#context, index.linkingBy(keys), {
      edits: (text) => linkEdits(text, keys, name),
      back: (text) => linkEdits(text, [titleKey(name)], linkable(watched.title)),
    });
    if (count) shell.toasts.show(counted('links.updated', count), { label: 'undo', run: undo });
  }

  /** The keys that led to the note and no longer do. Another note with the same title may have been meant. */
  #lostKeys({ id, keys, updated }: Watched): string[] {
    const { index } = this.#context;
    return keys.filter((key) => {
      const other = index.noteTitled(key);
      return other === null || (other.id !== id && other.updated <= updated);
    });
  }
}
