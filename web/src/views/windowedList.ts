import { h } from '../dom/elements';
import { hasMod, hasOtherMod, isDelete, isMenuKey } from '../keyboard/keys';
import { ListHeadings } from './listHeadings';
import type { WindowedListOptions } from './listOptions';
import { ListSelection, onNativeSelectAll, rowIndexAt } from './listSelection';

const MARGIN_ROWS = 6;

/**
 * A virtualised list box with rows of equal height: only rows near the visible part exist, so ten thousand notes scroll
 * like ten. The box itself has the focus and points to its current row with aria-activedescendant.
 */
export class WindowedList<Item> {
  readonly element: HTMLElement;
  readonly #space: HTMLElement;
  readonly #headingLayer: HTMLElement;
  readonly #options: WindowedListOptions<Item>;
  readonly #selection: ListSelection;
  #headings = new ListHeadings();
  #items: ReadonlyArray<Item> = [];
  #current = -1;
  #selectedKey: string | null = null;
  /** Where the next drawing scrolls to: the first row or, also after the list was hidden, the one in the editor. */
  #wanted: 'top' | 'open' | null = null;
  #frame = 0;

  constructor(options: WindowedListOptions<Item>) {
    this.#options = options;
    this.#space = h('div', { class: 'list-space', attrs: { role: 'presentation' } });
    this.#headingLayer = h('div', { class: 'list-headings', attrs: { 'aria-hidden': 'true' } });
    this.#selection = new ListSelection((count) => {
      options.onSelected?.(count);
      this.refresh();
    });
    this.element = h(
      'div',
      {
        class: 'list',
        attrs: { role: 'listbox', tabindex: '0', ...(options.onSelected ? { 'aria-multiselectable': 'true' } : {}) },
        on: {
          scroll: () => this.refresh(),
          keydown: (event) => this.#onKey(event),
          click: (event) => this.#onClick(event),
          contextmenu: (event) => this.#onContextMenu(event),
          focus: () => this.#onFocus(),
        },
      },
      this.#headingLayer,
      this.#space,
    );
    if (options.onSelected) onNativeSelectAll(this.element, () => this.#selectAll());
    new ResizeObserver(() => this.refresh()).observe(this.element);
  }

  get items(): ReadonlyArray<Item> {
    return this.#items;
  }

  /** Shows these items; the current row stays on its item. Below headings, the one in the editor is followed. */
  setItems(items: ReadonlyArray<Item>, headingOf?: (item: Item) => string): void {
    const before = this.#items[this.#current];
    const key = before === undefined ? null : this.#options.key(before);
    const place = this.#headings.all.length ? this.#indexOf(this.#selectedKey) : null;
    this.#items = items;
    if (headingOf && place !== this.#indexOf(this.#selectedKey)) this.#wanted = 'open';
    this.#headings = new ListHeadings(headingOf ? items.map(headingOf) : []);
    this.#current = this.#indexOf(key) ?? Math.min(this.#current, items.length - 1);
    this.#selection.keep(() => items.map(this.#options.key));
    this.refresh();
  }

  /** Marks the item open in the editor. Another one than before is shown in the list, and ends a selection. */
  select(key: string | null): void {
    if (key !== this.#selectedKey) {
      this.#wanted = 'open';
      this.#selection.clear();
    }
    this.#selectedKey = key;
    this.refresh();
  }

  /** Goes back to the first row, instead of showing the one open in the editor. */
  toTop(): void {
    this.#wanted = 'top';
    this.#selection.clear();
    this.#current = -1;
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
    if (row && item !== undefined && this.#options.key(item) === key) this.#fill(row, item, Number(row.dataset.index));
  }

  #draw(): void {
    this.#frame = 0;
    const [rowHeight, headingHeight] = this.#heights();
    const count = this.#items.length;
    this.#space.style.height = `${count ? this.#topOf(count - 1) + rowHeight : 0}px`;
    if (this.#wanted === 'open') this.#revealSelected();
    else if (this.#wanted === 'top') this.element.scrollTop = 0;
    const { scrollTop, clientHeight } = this.element;
    this.#wanted = clientHeight ? null : (this.#wanted ?? 'open');
    const itemAt = (top: number) => this.#headings.itemAt(top, count, rowHeight, headingHeight);
    const first = Math.max(0, itemAt(scrollTop) - MARGIN_ROWS);
    const last = Math.min(count, itemAt(scrollTop + clientHeight) + 1 + MARGIN_ROWS);
    const rows = [...this.#space.children] as HTMLElement[];
    for (let index = first; index < last; index++) {
      const row = rows[index - first] ?? this.#space.appendChild(h('div', { class: 'row' }));
      this.#drawRow(row, index);
    }
    for (const row of rows.slice(Math.max(0, last - first))) row.remove();
    const headings = this.#headings.elements(first, last, (at) => this.#topOf(at) - headingHeight);
    this.#headingLayer.replaceChildren(...headings);
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
    row.style.transform = `translateY(${this.#topOf(index)}px)`;
    row.setAttribute('role', 'option');
    row.setAttribute('aria-setsize', String(this.#items.length));
    row.setAttribute('aria-posinset', String(index + 1));
    row.setAttribute('aria-selected', String(this.#isSelected(this.#options.key(item))));
    row.classList.toggle('is-current', index === this.#current);
    this.#fill(row, item, index);
  }

  #fill(row: HTMLElement, item: Item, index: number): void {
    this.#options.fill(row, item, this.#headings.textAt(index));
  }

  #isSelected(key: string): boolean {
    return this.#selection.size ? this.#selection.has(key) : key === this.#selectedKey;
  }

  /** The selected items, or else the current one. */
  #chosen(): ReadonlyArray<Item> {
    if (this.#selection.size) return this.#items.filter((item) => this.#selection.has(this.#options.key(item)));
    return this.#items.slice(Math.max(0, this.#current), this.#current + 1);
  }

  #heights(): [row: number, heading: number] {
    return [this.#options.rowHeight(), this.#options.headingHeight?.() ?? 0];
  }

  #topOf(index: number): number {
    const [rowHeight, headingHeight] = this.#heights();
    return index * rowHeight + this.#headings.above(index) * headingHeight;
  }

  #indexOf(key: string | null): number | null {
    const index = key === null ? -1 : this.#items.findIndex((item) => this.#options.key(item) === key);
    return index < 0 ? null : index;
  }

  #rowId(item: Item): string {
    return this.#options.idPrefix + this.#options.key(item);
  }

  #onFocus(): void {
    if (this.#current < 0) this.#current = this.#indexOf(this.#selectedKey) ?? (this.#items.length ? 0 : -1);
    this.refresh();
  }

  #onClick(event: MouseEvent): void {
    const index = rowIndexAt(event);
    const item = this.#items[index];
    if (item === undefined) return;
    const before = this.#current;
    this.#current = index;
    if (this.#options.onSelected && event.shiftKey) this.#selectTo(index, before);
    else if (this.#options.onSelected && hasMod(event)) this.#toggle(item);
    else {
      this.#selection.clear();
      this.#options.onActivate(item);
    }
  }

  #onContextMenu(event: MouseEvent): void {
    if (!this.#options.onMenu) return;
    event.preventDefault();
    const index = rowIndexAt(event);
    const item = this.#items[index];
    if (item === undefined) return;
    if (!this.#selection.has(this.#options.key(item))) this.#selection.clear();
    this.#current = index;
    this.refresh();
    this.#options.onMenu(this.#chosen(), { x: event.clientX, y: event.clientY });
  }

  /** The menu of the current row, by the keyboard. */
  #openMenu(): void {
    const item = this.#items[this.#current];
    if (item === undefined) return;
    const { left, bottom } = (document.getElementById(this.#rowId(item)) ?? this.element).getBoundingClientRect();
    this.#options.onMenu?.(this.#chosen(), { x: left + 24, y: bottom });
  }

  #onKey(event: KeyboardEvent): void {
    if (event.altKey || hasOtherMod(event)) return;
    const item = this.#items[this.#current];
    const step = this.#stepOf(event.key);
    if (hasMod(event)) {
      if (!this.#options.onSelected) return;
      if (event.key.toLowerCase() === 'a') this.#selectAll();
      else if (event.key === ' ' && item !== undefined) this.#toggle(item);
      else if (step !== undefined && !event.shiftKey) this.#move(step);
      else return;
      event.preventDefault();
      return;
    }
    if (step !== undefined) {
      if (event.shiftKey && this.#options.onSelected) {
        const before = this.#current;
        this.#move(step);
        this.#selectTo(this.#current, before);
      } else if (event.key === 'ArrowUp' && this.#current <= 0) this.#options.onLeave(true);
      else {
        this.#selection.clear();
        this.#move(step);
      }
    } else if (event.key === 'Escape') {
      if (this.#selection.size) this.#selection.clear();
      else this.#options.onLeave(false);
    } else if ((event.key === 'Enter' || event.key === ' ') && item !== undefined) {
      this.#options.onActivate(item);
    } else if (isDelete(event) && item !== undefined && this.#options.onDelete) {
      this.#options.onDelete(this.#chosen());
    } else if (this.#options.onMenu && isMenuKey(event)) this.#openMenu();
    else return;
    event.preventDefault();
  }

  #stepOf(key: string): number | undefined {
    const page = Math.max(1, Math.floor(this.element.clientHeight / this.#options.rowHeight()) - 1);
    const { length } = this.#items;
    return { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -length, End: length }[key];
  }

  #toggle(item: Item): void {
    this.#selection.toggle(this.#options.key(item), this.#selectedKey);
  }

  #selectAll(): void {
    this.#selection.set(this.#items.map(this.#options.key));
  }

  /** Selects from where the selection began, or else from the row that was current. */
  #selectTo(index: number, before: number): void {
    const start = this.#indexOf(this.#selection.anchor) ?? Math.max(0, before);
    const keys = this.#items.slice(Math.min(start, index), Math.max(start, index) + 1).map(this.#options.key);
    this.#selection.set(keys, (start <= index ? keys[0] : keys.at(-1)) ?? null);
  }

  #move(step: number): void {
    if (!this.#items.length) return;
    this.#current = Math.max(0, Math.min(this.#current + step, this.#items.length - 1));
    this.#reveal();
  }

  /** The current row follows, unless somebody is choosing another. */
  #revealSelected(): void {
    const index = this.#indexOf(this.#selectedKey);
    if (index === null || document.activeElement === this.element) return;
    this.#current = index;
    this.#reveal();
  }

  #reveal(): void {
    const [rowHeight] = this.#heights();
    const top = this.#topOf(this.#current);
    const { scrollTop, clientHeight } = this.element;
    if (top < scrollTop) this.element.scrollTop = this.#current ? top : 0;
    else if (top + rowHeight > scrollTop + clientHeight) {
      this.element.scrollTop = top + rowHeight - clientHeight;
    }
    this.refresh();
  }
}
