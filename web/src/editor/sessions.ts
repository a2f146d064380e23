/** How many notes without a tab keep their session, most recently left first. */
export const KEPT_WITHOUT_TAB = 36;

/** Sessions of notes that are not shown: undo history, selection, scroll position. */
export class Sessions<Session> {
  /** In the order the notes were left, latest last. */
  readonly #sessions = new Map<string, Session>();

  keep(id: string, session: Session): void {
    this.#sessions.delete(id);
    this.#sessions.set(id, session);
  }

  /** Removes and returns the session of a note about to be shown. */
  take(id: string): Session | null {
    const session = this.#sessions.get(id) ?? null;
    this.#sessions.delete(id);
    return session;
  }

  /**
   * Drops the sessions of deleted notes and, beyond `KEPT_WITHOUT_TAB`, the oldest of those without a tab.
   */
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
