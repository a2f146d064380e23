import { h } from '../dom/elements';
import type { TagCount } from '../state/noteIndex';
import { tagKey } from '../text/titleKey';

export interface TagTreeActions {
  choose(name: string): void;
  toggle(): void;
  leave(): void;
}

interface Row {
  readonly name: string;
  readonly key: string;
  readonly level: number;
  readonly count: number;
  readonly isParent: boolean;
}

/** The tags of all notes below a heading that opens and closes them. Levels are closed until somebody opens them. */
export class TagTree {
  readonly element: HTMLElement;
  readonly #actions: TagTreeActions;
  readonly #head: HTMLButtonElement;
  readonly #tree: HTMLElement;
  readonly #expanded = new Set<string>();
  #tags: ReadonlyArray<TagCount> = [];
  #rows: ReadonlyArray<Row> = [];
  #current = 0;

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
    this.#tree = h('div', {
      class: 'tags-tree',
      tLabel: 'tags.title',
      attrs: { id: 'tagTree', role: 'tree' },
      on: { keydown: (event) => this.#onKey(event), click: (event) => this.#onClick(event) },
    });
    this.element = h('section', { class: 'tags' }, this.#head, this.#tree);
    this.element.hidden = true;
  }

  /** Shows these tags. Nothing is drawn while the tree is closed. */
  show(tags: ReadonlyArray<TagCount>, open: boolean): void {
    const isSame = tags === this.#tags && open !== this.#tree.hidden;
    this.#tags = tags;
    this.element.hidden = tags.length === 0;
    this.#tree.hidden = !open;
    this.#head.setAttribute('aria-expanded', String(open));
    if (!isSame) this.#draw();
  }

  #draw(): void {
    const focused = this.#tree.contains(document.activeElement) ? this.#rows[this.#current]?.key : undefined;
    const parents = new Set(this.#tags.map(({ name }) => tagKey(name).split('/').slice(0, -1).join('/')));
    this.#rows = this.#tree.hidden
      ? []
      : this.#tags.map((tag) => rowOf(tag, parents)).filter(({ key }) => this.#isOpen(key));
    this.#current = Math.max(0, focused === undefined ? 0 : this.#rows.findIndex(({ key }) => key === focused));
    this.#tree.replaceChildren(...this.#rows.map((row, index) => this.#element(row, index)));
    if (focused !== undefined) this.#focus(this.#current);
  }

  /** Whether all levels above a tag are open. */
  #isOpen(key: string): boolean {
    const parts = key.split('/');
    return parts.slice(1).every((_, index) => this.#expanded.has(parts.slice(0, index + 1).join('/')));
  }

  #element({ name, key, level, count, isParent }: Row, index: number): HTMLElement {
    const row = h(
      'div',
      {
        class: 'tag-row',
        attrs: {
          role: 'treeitem',
          'aria-level': String(level),
          tabindex: index === this.#current ? '0' : '-1',
          ...(isParent ? { 'aria-expanded': String(this.#expanded.has(key)) } : {}),
        },
      },
      h('span', { class: 'tag-fold', attrs: { 'aria-hidden': 'true' } }),
      h('span', { class: 'tag-name' }, name.split('/').at(-1) ?? ''),
      ' ',
      h('span', { class: 'tag-count' }, String(count)),
    );
    row.style.setProperty('--level', String(level - 1));
    return row;
  }

  #focus(index: number): void {
    const to = Math.max(0, Math.min(index, this.#rows.length - 1));
    this.#tree.children[this.#current]?.setAttribute('tabindex', '-1');
    this.#current = to;
    const row = this.#tree.children[to];
    if (!(row instanceof HTMLElement)) return;
    row.tabIndex = 0;
    row.focus();
  }

  #setExpanded(key: string, expanded: boolean): void {
    if (expanded) this.#expanded.add(key);
    else this.#expanded.delete(key);
    this.#draw();
  }

  #onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey || event.shiftKey) return;
    const row = this.#rows[this.#current];
    if (!row) return;
    const isExpanded = this.#expanded.has(row.key);
    const steps: Readonly<Record<string, () => void>> = {
      ArrowDown: () => this.#focus(this.#current + 1),
      ArrowUp: () => this.#focus(this.#current - 1),
      Home: () => this.#focus(0),
      End: () => this.#focus(this.#rows.length - 1),
      ArrowRight: () => {
        if (row.isParent && !isExpanded) this.#setExpanded(row.key, true);
        else if (row.isParent) this.#focus(this.#current + 1);
      },
      ArrowLeft: () => {
        if (row.isParent && isExpanded) this.#setExpanded(row.key, false);
        else this.#focusParent(row);
      },
      Enter: () => this.#actions.choose(row.name),
      ' ': () => this.#actions.choose(row.name),
      Escape: () => this.#actions.leave(),
    };
    const step = steps[event.key];
    if (!step) return;
    event.preventDefault();
    step();
  }

  #focusParent({ key }: Row): void {
    const above = key.split('/').slice(0, -1).join('/');
    const index = this.#rows.findIndex((row) => row.key === above);
    if (index >= 0) this.#focus(index);
  }

  #onClick(event: MouseEvent): void {
    const element = event.target instanceof Element ? event.target.closest('.tag-row') : null;
    const index = element ? [...this.#tree.children].indexOf(element) : -1;
    const row = this.#rows[index];
    if (!row) return;
    this.#focus(index);
    const isFold = event.target instanceof Element && event.target.closest('.tag-fold') !== null;
    if (row.isParent && isFold) this.#setExpanded(row.key, !this.#expanded.has(row.key));
    else this.#actions.choose(row.name);
  }
}

function rowOf({ name, count }: TagCount, parents: ReadonlySet<string>): Row {
  const key = tagKey(name);
  return { name, key, level: name.split('/').length, count, isParent: parents.has(key) };
}
