/** Which rows of a list are selected, if several can be; the keys of their items. */
export class ListSelection {
  readonly #onChange: (count: number) => void;
  #keys: ReadonlySet<string> = new Set();
  #anchor: string | null = null;

  constructor(onChange: (count: number) => void) {
    this.#onChange = onChange;
  }

  get size(): number {
    return this.#keys.size;
  }

  /** Where a range begins. */
  get anchor(): string | null {
    return this.#anchor;
  }

  has(key: string): boolean {
    return this.#keys.has(key);
  }

  set(keys: Iterable<string>, anchor: string | null = null): void {
    this.#keys = new Set(keys);
    this.#anchor = anchor;
    this.#onChange(this.size);
  }

  clear(): void {
    this.#anchor = null;
    if (this.size) this.set([]);
  }

  /** Adds or removes one. The first one is added to the row that stands out already. */
  toggle(key: string, already: string | null): void {
    const keys = new Set(this.size || already === null ? this.#keys : [already]);
    if (!keys.delete(key)) keys.add(key);
    this.set(keys, key);
  }

  /** Drops what is not in the list any more. */
  keep(listed: () => Iterable<string>): void {
    if (!this.size) return;
    const left = [...listed()].filter((key) => this.#keys.has(key));
    if (left.length !== this.size) this.set(left);
  }
}

/**
 * The host's menu selects all by a command of the web view, which begins a selection in the page. No pointer begins one
 * while a list has the focus, because its rows cannot be selected as text.
 */
export function onNativeSelectAll(list: HTMLElement, run: () => void): void {
  document.addEventListener('selectstart', (event) => {
    if (document.activeElement !== list) return;
    event.preventDefault();
    run();
  });
}

/** The index of the row a pointer is on; -1 outside of all rows. */
export function rowIndexAt(event: MouseEvent): number {
  return Number((event.target as Element).closest<HTMLElement>('.row')?.dataset.index ?? -1);
}
