import { h } from '../dom/elements';
import { isDelete } from '../keyboard/keys';

export interface WindowedListOptions<Item> {
  /** In pixels; scales with the text size. */
  readonly rowHeight: () => number;
  readonly idPrefix: string;
  readonly key: (item: Item) => string;
  readonly fill: (row: HTMLElement, item: Item) => void;
  readonly onActivate: (item: Item) => void;
  readonly onDelete?: (item: Item) => void;
  /** Escape, or the up arrow on the first row. */
  readonly onLeave: (upwards: boolean) => void;
}

const MARGIN_ROWS = 6;

/**
 * A virtualised list box with rows of equal height: only rows near the visible part exist, so ten thousand
 * notes scroll like ten. The box itself has the focus and points to its current row with
 * aria-activedescendant.
 */
export class WindowedList<Item> {
  readonly element: HTMLElement;
  readonly #space: HTMLElement;
  readonly #options: WindowedListOptions<Item>;
  #items: ReadonlyArray<Item> = [];
  #current = -1;
  #selectedKey: string | null = null;
  #frame = 0;

  constructor(options: WindowedListOptions<Item>) {
    this.#options = options;
    this.#space = h('div', { class: 'list-space', attrs: { role: 'presentation' } });
    this.element = h(
      'div',
      {
        class: 'list',
        attrs: { role: 'listbox', tabindex: '0' },
        on: {
          scroll: () => this.refresh(),
          keydown: (event) => this.#onKey(event),
          click: (event) => this.#onClick(event),
          focus: () => this.#onFocus(),
        },
      },
      this.#space,
    );
    new ResizeObserver(() => this.refresh()).observe(this.element);
  }

  get items(): ReadonlyArray<Item> {
    return this.#items;
  }

  /** Shows these items; the current row stays on its item if that is still in the list. */
  setItems(items: ReadonlyArray<Item>): void {
    const before = this.#items[this.#current];
    const key = before === undefined ? null : this.#options.key(before);
    this.#items = items;
    const kept = items.findIndex((item) => this.#options.key(item) === key);
    this.#current = kept >= 0 ? kept : Math.min(this.#current, items.length - 1);
    this.refresh();
  }

  /** Marks the item open in the editor. */
  select(key: string | null): void {
    this.#selectedKey = key;
    this.refresh();
  }

  focusFirst(): void {
    this.#current = this.#items.length ? 0 : -1;
    this.element.focus();
    this.#reveal();
  }

  /** Redraws the rows in the next frame. */
  refresh(): void {
    if (!this.#frame) this.#frame = requestAnimationFrame(() => this.#draw());
  }

  /** Redraws one item's row, if it has one. */
  redraw(key: string): void {
    const row = document.getElementById(this.#options.idPrefix + key);
    const item = this.#items[Number(row?.dataset.index ?? -1)];
    if (row && item !== undefined && this.#options.key(item) === key) this.#options.fill(row, item);
  }

  #draw(): void {
    this.#frame = 0;
    const rowHeight = this.#options.rowHeight();
    const { scrollTop, clientHeight } = this.element;
    const first = Math.max(0, Math.floor(scrollTop / rowHeight) - MARGIN_ROWS);
    const last = Math.min(this.#items.length, Math.ceil((scrollTop + clientHeight) / rowHeight) + MARGIN_ROWS);
    this.#space.style.height = `${this.#items.length * rowHeight}px`;
    const rows = [...this.#space.children] as HTMLElement[];
    for (let index = first; index < last; index++) {
      const row = rows[index - first] ?? this.#space.appendChild(h('div', { class: 'row' }));
      this.#drawRow(row, index);
    }
    for (const row of rows.slice(Math.max(0, last - first))) row.remove();
    const current = this.#items[this.#current];
    const id = current === undefined ? '' : this.#rowId(current);
    if (id && document.getElementById(id)) this.element.setAttribute('aria-activedescendant', id);
    else this.element.removeAttribute('aria-activedescendant');
  }

  #drawRow(row: HTMLElement, index: number): void {
    const item = this.#items[index];
    if (item === undefined) return;
    row.id = this.#rowId(item);
    row.dataset.index = String(index);
    row.style.transform = `translateY(${index * this.#options.rowHeight()}px)`;
    row.setAttribute('role', 'option');
    row.setAttribute('aria-setsize', String(this.#items.length));
    row.setAttribute('aria-posinset', String(index + 1));
    row.setAttribute('aria-selected', String(this.#options.key(item) === this.#selectedKey));
    row.classList.toggle('is-current', index === this.#current);
    this.#options.fill(row, item);
  }

  #rowId(item: Item): string {
    return this.#options.idPrefix + this.#options.key(item);
  }

  #onFocus(): void {
    if (this.#current < 0) {
      const selected = this.#items.findIndex((i) => this.#options.key(i) === this.#selectedKey);
      this.#current = selected >= 0 ? selected : this.#items.length ? 0 : -1;
    }
    this.refresh();
  }

  #onClick(event: MouseEvent): void {
    const row = (event.target as Element).closest<HTMLElement>('.row');
    const index = Number(row?.dataset.index ?? -1);
    const item = this.#items[index];
    if (item === undefined) return;
    this.#current = index;
    this.#options.onActivate(item);
  }

  #onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const item = this.#items[this.#current];
    const page = Math.max(1, Math.floor(this.element.clientHeight / this.#options.rowHeight()) - 1);
    const steps: Record<string, number> = {
      ArrowDown: 1,
      ArrowUp: -1,
      PageDown: page,
      PageUp: -page,
      Home: -this.#items.length,
      End: this.#items.length,
    };
    const step = steps[event.key];
    if (step !== undefined) {
      if (event.key === 'ArrowUp' && this.#current <= 0) this.#options.onLeave(true);
      else this.#move(step);
    } else if (event.key === 'Escape') this.#options.onLeave(false);
    else if ((event.key === 'Enter' || event.key === ' ') && item !== undefined) {
      this.#options.onActivate(item);
    } else if (isDelete(event) && item !== undefined && this.#options.onDelete) {
      this.#options.onDelete(item);
    } else return;
    event.preventDefault();
  }

  #move(step: number): void {
    if (!this.#items.length) return;
    this.#current = Math.max(0, Math.min(this.#current + step, this.#items.length - 1));
    this.#reveal();
  }

  #reveal(): void {
    const rowHeight = this.#options.rowHeight();
    const top = this.#current * rowHeight;
    const { scrollTop, clientHeight } = this.element;
    if (top < scrollTop) this.element.scrollTop = top;
    else if (top + rowHeight > scrollTop + clientHeight) {
      this.element.scrollTop = top + rowHeight - clientHeight;
    }
    this.refresh();
  }
}
