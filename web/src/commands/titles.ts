import { counted } from '../i18n/language';
import { keysOf } from '../state/noteIndex';
import type { Note } from '../state/model';
import { titleOf } from '../state/titleOf';
import { linkEdits } from '../text/renames';
import { linkable, titleKey, withoutExtension } from '../text/titleKey';
import type { Context } from './context';
import { rewriteNotes } from './rewrite';

/** The host waits for seconds. */
const QUITTING_MS = 1000;

interface Watched {
  readonly id: string;
  readonly title: string;
  readonly keys: ReadonlyArray<string>;
  readonly updated: number;
  /** It was reached while the note was shown, perhaps only on the way to another one. */
  readonly isPassing: boolean;
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
    this.#watched = note && watched(note, false);
  }

  /** Rewrites the links to the title that the note had before. An empty title is none yet. */
  settle(isQuitting = false): void {
    const before = this.#watched;
    const { index, workspace } = this.#context;
    const note = before && workspace.note(before.id);
    if (!note || workspace.readOnly) return;
    const title = titleOf(note);
    if (!linkable(title) || title === before.title) return;
    this.#watched = watched(note, true);
    const follow = () => this.#follow(before, note.name === null ? title : withoutExtension(title));
    if (!isQuitting) {
      index.whenRead(follow);
      return;
    }
    // Notes that changed a moment ago may have links, too. What is not done now would come after the last save.
    index.readNow(QUITTING_MS);
    index.changed();
    follow();
  }

  #follow(before: Watched, title: string): void {
    const { index, shell } = this.#context;
    // For most titles this is all, and it is quick.
    if (!index.linkingBy(before.keys).length) return;
    const keys = this.#lostKeys(before);
    const name = linkable(title);
    const { count, undo } = rewriteNotes(this.#context, index.linkingBy(keys), {
      edits: (text) => linkEdits(text, keys, name),
      back: (text) => linkEdits(text, [titleKey(name)], linkable(before.title)),
    });
    if (count) shell.toasts.show(counted('links.updated', count), { label: 'undo', run: undo });
  }

  /** The keys that led to the note and no longer do. Another note with the same title may have been meant. */
  #lostKeys({ id, keys, updated, isPassing }: Watched): string[] {
    const { index } = this.#context;
    return keys.filter((key) => {
      const other = index.noteTitled(key);
      return other === null || (!isPassing && other.id !== id && other.updated <= updated);
    });
  }
}

function watched(note: Note, isPassing: boolean): Watched {
  return { id: note.id, title: titleOf(note), keys: keysOf(note), updated: note.updated, isPassing };
}
