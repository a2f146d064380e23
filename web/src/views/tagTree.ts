import { h } from '../dom/elements';
import { isMenuKey } from '../keyboard/keys';
import type { TagCount } from '../state/noteIndex';
import { type MenuGroups, popupMenu } from './menu';
import { rootPixels } from './rootStyle';
import { type TagRow, tagRowElement, tagRows } from './tagRows';

export interface TagTreeActions {
  choose(name: string): void;
  toggle(): void;
  menu(name: string): MenuGroups;
  leave(): void;
}

const ROW_REMS = 1.75;
const MARGIN_ROWS = 6;

/**
 * The tags of all notes below a heading that opens and closes them. Levels are closed until somebody opens them. Like
 * the list of notes, the tree has the focus itself and only the rows near its visible part.
 */
export class TagTree {
  readonly element: HTMLElement;
  readonly #actions: TagTreeActions;
  readonly #head: HTMLButtonElement;
  readonly #tree: HTMLElement;
  readonly #space: HTMLElement;
  readonly #expanded = new Set<string>();
  #tags: ReadonlyArray<TagCount> = [];
  #rows: ReadonlyArray<TagRow> = [];
  #current = 0;
  #frame = 0;

  constructor(actions: TagTreeActions) {
    this.#actions = actions;
    this.#head = h(
      'button',
      {
        class: 'tags-head',
        attrs: { type: 'button', 'aria-controls': 'tagTree' },
        on: { click: () => actions.toggle() },
      },
      h('span', { t: 'tags.title' }),
    );
    this.#space = h('div', { class: 'tags-space', attrs: { role: 'presentation' } });
    this.#tree = h(
      'div',
      {
        class: 'tags-tree',
        tLabel: 'tags.title',
        attrs: { id: 'tagTree', role: 'tree', tabindex: '0' },
        on: {
          scroll: () => this.refresh(),
          keydown: (event) => this.#onKey(event),
          click: (event) => this.#onClick(event),
          contextmenu: (event) => this.#onContextMenu(event),
        },
      },
      this.#space,
    );
    this.element = h('section', { class: 'tags' }, this.#head, this.#tree);
    this.element.hidden = true;
    new ResizeObserver(() => this.refresh()).observe(this.#tree);
  }

  /** Shows these tags. Nothing is drawn while the tree is closed. */
  show(tags: ReadonlyArray<TagCount>, open: boolean): void {
    const isSame = tags === this.#tags && open !== this.#tree.hidden;
    this.#tags = tags;
    this.element.hidden = tags.length === 0;
    this.#tree.hidden = !open;
    this.#head.setAttribute('aria-expanded', String(open));
    if (!isSame) this.#arrange();
  }

  /** Redraws the rows in the next frame. */
  refresh(): void {
    if (!this.#frame) this.#frame = requestAnimationFrame(() => this.#draw());
  }

  /** Lists the rows anew; the current one stays on its tag if that is still there. */
  #arrange(): void {
    const key = this.#rows[this.#current]?.key;
    this.#rows = this.#tree.hidden ? [] : tagRows(this.#tags, this.#expanded);
    this.#current = Math.max(
      0,
      this.#rows.findIndex((row) => row.key === key),
    );
    this.refresh();
  }

  #draw(): void {
    this.#frame = 0;
    const height = rootPixels(ROW_REMS);
    this.#space.style.height = `${this.#rows.length * height}px`;
    const { scrollTop, clientHeight } = this.#tree;
    const first = Math.max(0, Math.floor(scrollTop / height) - MARGIN_ROWS);
    const last = Math.min(this.#rows.length, Math.ceil((scrollTop + clientHeight) / height) + MARGIN_ROWS);
    const drawn = this.#rows.slice(first, last).map((row, at) => {
      const element = tagRowElement(row, this.#expanded.has(row.key));
      element.dataset.index = String(first + at);
      element.style.transform = `translateY(${(first + at) * height}px)`;
      element.classList.toggle('is-current', first + at === this.#current);
      return element;
    });
    this.#space.replaceChildren(...drawn);
    const current = drawn[this.#current - first];
    if (current) this.#tree.setAttribute('aria-activedescendant', current.id);
    else this.#tree.removeAttribute('aria-activedescendant');
  }

  #move(index: number): void {
    this.#current = Math.max(0, Math.min(index, this.#rows.length - 1));
    const height = rootPixels(ROW_REMS);
    const top = this.#current * height;
    const { scrollTop, clientHeight } = this.#tree;
    if (top < scrollTop) this.#tree.scrollTop = top;
    else if (top + height > scrollTop + clientHeight) this.#tree.scrollTop = top + height - clientHeight;
    this.refresh();
  }

  #setExpanded(key: string, expanded: boolean): void {
    if (expanded) this.#expanded.add(key);
    else this.#expanded.delete(key);
    this.#arrange();
  }

  #onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const row = this.#rows[this.#current];
    if (!row) return;
    const isExpanded = this.#expanded.has(row.key);
    const page = Math.max(1, Math.floor(this.#tree.clientHeight / rootPixels(ROW_REMS)) - 1);
    const steps: Readonly<Record<string, () => void>> = {
      ArrowDown: () => this.#move(this.#current + 1),
      ArrowUp: () => this.#move(this.#current - 1),
      PageDown: () => this.#move(this.#current + page),
      PageUp: () => this.#move(this.#current - page),
      Home: () => this.#move(0),
      End: () => this.#move(this.#rows.length - 1),
      ArrowRight: () => {
        if (row.isParent && !isExpanded) this.#setExpanded(row.key, true);
        else if (row.isParent) this.#move(this.#current + 1);
      },
      ArrowLeft: () => {
        if (row.isParent && isExpanded) this.#setExpanded(row.key, false);
        else this.#moveToParent(row);
      },
      Enter: () => this.#actions.choose(row.name),
      ' ': () => this.#actions.choose(row.name),
      Escape: () => this.#actions.leave(),
    };
    const step = isMenuKey(event) ? () => this.#openMenu() : event.shiftKey ? undefined : steps[event.key];
    if (!step) return;
    event.preventDefault();
    step();
  }

  #moveToParent({ key }: TagRow): void {
    const above = key.split('/').slice(0, -1).join('/');
    const index = this.#rows.findIndex((row) => row.key === above);
    if (index >= 0) this.#move(index);
  }

  #onClick(event: MouseEvent): void {
    const row = this.#rowAt(event);
    if (!row) return;
    const isFold = event.target instanceof Element && event.target.closest('.tag-fold') !== null;
    if (row.isParent && isFold) this.#setExpanded(row.key, !this.#expanded.has(row.key));
    else this.#actions.choose(row.name);
  }

  #onContextMenu(event: MouseEvent): void {
    event.preventDefault();
    const row = this.#rowAt(event);
    if (row) this.#showMenu(row, event.clientX, event.clientY);
  }

  /** The menu of the current row, by the keyboard. */
  #openMenu(): void {
    const row = this.#rows[this.#current];
    if (!row) return;
    const element = this.#space.querySelector('.is-current') ?? this.#tree;
    const { left, bottom } = element.getBoundingClientRect();
    this.#showMenu(row, left + 24, bottom);
  }

  #showMenu({ name }: TagRow, x: number, y: number): void {
    popupMenu('tags.menu', this.#actions.menu(name), { x, y }, () => this.#tree.focus());
  }

  /** The row that a pointer is on becomes the current one. */
  #rowAt({ target }: MouseEvent): TagRow | undefined {
    const element = target instanceof Element ? target.closest<HTMLElement>('.tag-row') : null;
    const index = Number(element?.dataset.index ?? -1);
    if (this.#rows[index]) this.#move(index);
    return this.#rows[index];
  }
}
