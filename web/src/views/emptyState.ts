import { drawIcon, h, type Icon, relabel } from '../dom/elements';
import type { Key } from '../i18n/catalogue';

/** Something to do where no note is open. */
export interface StartItem {
  readonly icon: Icon;
  readonly label: Key;
  readonly keys: string;
  readonly run: () => void;
}

/** What the page shows instead of a note: what to do, with its keys. */
export class EmptyState {
  readonly element: HTMLElement;
  readonly #heading = h('h2');
  readonly #text = h('p');
  readonly #items: ReadonlyArray<HTMLElement>;

  constructor(items: ReadonlyArray<StartItem>) {
    this.#items = items.map(startButton);
    const list = h('ul', { class: 'start' }, ...this.#items.map((item) => h('li', {}, item)));
    this.element = h('div', { class: 'empty' }, this.#heading, this.#text, list);
  }

  show(kind: 'some' | 'none'): void {
    this.#heading.dataset.t = `empty.title.${kind}`;
    this.#text.dataset.t = `empty.text.${kind}`;
    relabel(this.element);
  }

  focus(): void {
    this.#items[0]?.focus();
  }
}

function startButton({ icon, label, keys, run }: StartItem): HTMLElement {
  return h(
    'button',
    { class: 'start-item', attrs: { type: 'button' }, on: { click: run } },
    drawIcon(icon),
    h('span', { class: 'grow', t: label }),
    h('kbd', {}, keys),
  );
}
