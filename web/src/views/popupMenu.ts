import type { Key } from '../i18n/catalogue';
import { h } from '../dom/elements';

export interface MenuItem {
  /** A language-independent identifier. */
  readonly name: string;
  /** A text of the catalogue, or one that is the user's. */
  readonly label: Key | { readonly text: string };
  readonly keys: string;
  /** Shown as unavailable. It can still be clicked, and then explains why. */
  readonly disabled: boolean;
  /** Whether it is the chosen one, among entries of which one is. */
  readonly checked?: boolean;
  readonly run: () => void;
}

export type MenuGroups = ReadonlyArray<ReadonlyArray<MenuItem>>;

/** A point, from which the menu may also go up, or the lower right corner of a button. */
export type MenuPlace =
  | { readonly x: number; readonly y: number }
  | { readonly right: number; readonly bottom: number };

export interface MenuOpening {
  /** The entry that gets the focus: its index, negative from the end. */
  readonly at: number;
  /** Clicks in here do not close the menu. */
  readonly anchor?: HTMLElement;
  /** Restores the focus. */
  readonly onLeave: () => void;
}

/** Between the menu and the window's edges, in pixels. */
const EDGE = 8;

/** A menu in front of the page, closed by whatever happens outside of it. */
export class PopupMenu {
  readonly element: HTMLElement;
  readonly #onToggle: (isOpen: boolean) => void;
  #opening: MenuOpening | null = null;

  constructor(id: string, label: Key, onToggle: (isOpen: boolean) => void = () => undefined) {
    this.#onToggle = onToggle;
    this.element = h('div', {
      class: 'menu',
      tLabel: label,
      attrs: { id, role: 'menu', hidden: '' },
      on: { keydown: (event) => this.#onKey(event) },
    });
    // Not focusout: on a Mac, clicking an entry takes the focus from it without giving it to anything.
    for (const type of ['pointerdown', 'focusin']) {
      window.addEventListener(type, ({ target }) => {
        const inside = this.element.contains(target as Node) || this.#opening?.anchor?.contains(target as Node);
        if (this.isOpen && !inside) this.close();
      });
    }
  }

  get isOpen(): boolean {
    return !this.element.hidden;
  }

  open(groups: MenuGroups, place: MenuPlace, opening: MenuOpening): void {
    this.#opening = opening;
    this.element.replaceChildren(...rows(groups, () => this.#leave()));
    this.element.style.maxHeight = `calc(100vh - ${('x' in place ? EDGE : place.bottom + EDGE) + EDGE}px)`;
    this.element.hidden = false;
    const { offsetWidth: width, offsetHeight: height } = this.element;
    const { clientWidth, clientHeight } = document.documentElement;
    const [left, top] = 'x' in place ? [place.x, place.y] : [place.right - width, place.bottom + 4];
    this.element.style.left = `${Math.max(EDGE, Math.min(left, clientWidth - width - EDGE))}px`;
    this.element.style.top = `${Math.max(EDGE, Math.min(top, clientHeight - height - EDGE))}px`;
    this.#onToggle(true);
    const entry = this.#entries().at(opening.at);
    if (!entry) return;
    entry.tabIndex = 0;
    entry.focus();
  }

  close(): void {
    this.element.hidden = true;
    this.#onToggle(false);
  }

  #leave(): void {
    this.close();
    this.#opening?.onLeave();
  }

  #entries(): HTMLElement[] {
    return [...this.element.querySelectorAll<HTMLElement>('[role^=menuitem]')];
  }

  #onKey(event: KeyboardEvent): void {
    const entries = this.#entries();
    const at = entries.indexOf(document.activeElement as HTMLElement);
    const target = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: -1 }[event.key];
    if (target !== undefined) entries[(target + entries.length) % entries.length]?.focus();
    else if (event.key === 'Escape' || event.key === 'Tab') this.#leave();
    else return;
    event.preventDefault();
  }
}

function rows(groups: MenuGroups, leave: () => void): HTMLElement[] {
  return groups.flatMap((group, index) => {
    const entries = group.map((item) => entry(item, leave));
    return index ? [h('div', { class: 'menu-line', attrs: { role: 'separator' } }), ...entries] : entries;
  });
}

function entry({ name, label, keys, disabled, checked, run }: MenuItem, leave: () => void): HTMLElement {
  const item = h(
    'button',
    {
      class: 'menu-item',
      attrs: { role: checked === undefined ? 'menuitem' : 'menuitemradio', type: 'button', tabindex: '-1' },
      on: {
        click: () => {
          leave();
          run();
        },
      },
    },
    typeof label === 'string' ? h('span', { t: label }) : h('span', { class: 'menu-text' }, label.text),
    h('kbd', {}, keys),
  );
  item.dataset.command = name;
  if (disabled) item.setAttribute('aria-disabled', 'true');
  if (checked !== undefined) item.setAttribute('aria-checked', String(checked));
  return item;
}
