/** So many notes without a tab keep what is kept of them: those that were left last. */
export const KEPT_WITHOUT_TAB = 36;

/** What is kept of notes that are not on show: undo history, selection, scroll position. */
export class Sessions<Session> {
  /** The note left last comes last. */
  readonly #sessions = new Map<string, Session>();

  keep(id: string, session: Session): void {
    this.#sessions.delete(id);
    this.#sessions.set(id, session);
  }

  /** Gives what is kept of a note that comes on show, and keeps it no longer. */
  take(id: string): Session | null {
    const session = this.#sessions.get(id) ?? null;
    this.#sessions.delete(id);
    return session;
  }

  /** Keeps open tabs and the last of the other notes, and nothing of notes that do not exist. */
  release(open: Iterable<string>, exists: (id: string) => boolean): void {
    const tabs = new Set(open);
    const others: string[] = [];
    for (const id of this.#sessions.keys()) {
      if (!exists(id)) this.#sessions.delete(id);
      else if (!tabs.has(id)) others.push(id);
    }
    for (const id of others.slice(0, -KEPT_WITHOUT_TAB)) this.#sessions.delete(id);
  }
}
