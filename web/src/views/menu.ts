import type { Key } from '../i18n/catalogue';
import { h, iconButton } from '../dom/elements';

export interface MenuItem {
  /** A language-independent identifier. */
  readonly name: string;
  readonly label: Key;
  readonly keys: string;
  /** Shown as unavailable. It can still be clicked, and then explains why. */
  readonly disabled: boolean;
  readonly run: () => void;
}

export type MenuGroups = ReadonlyArray<ReadonlyArray<MenuItem>>;

/** A button with a menu below it. `onLeave` restores the focus afterwards. */
export function menuButton(id: string, label: Key, groups: () => MenuGroups, onLeave: () => void): HTMLElement {
  const menu = h('div', { class: 'menu', tLabel: label, attrs: { id, role: 'menu', hidden: '' } });
  const button = iconButton('more', label, () => {
    if (menu.hidden) return open(0);
    close();
    button.focus();
  });
  button.id = `${id}Button`;
  button.setAttribute('aria-haspopup', 'menu');
  button.setAttribute('aria-controls', id);
  button.setAttribute('aria-expanded', 'false');
  const anchor = h('div', { class: 'menu-anchor' }, button, menu);

  function open(at: number): void {
    menu.replaceChildren(...rows(groups(), leave));
    const { bottom, right } = button.getBoundingClientRect();
    menu.style.top = `${bottom + 4}px`;
    menu.style.maxHeight = `calc(100vh - ${bottom + 12}px)`;
    menu.style.right = `${document.documentElement.clientWidth - right}px`;
    menu.hidden = false;
    button.setAttribute('aria-expanded', 'true');
    entriesOf(menu).at(at)?.focus();
  }

  function close(): void {
    menu.hidden = true;
    button.setAttribute('aria-expanded', 'false');
  }

  function leave(): void {
    close();
    onLeave();
  }

  button.addEventListener('keydown', (event) => {
    if (event.key !== 'ArrowDown' && event.key !== 'ArrowUp') return;
    event.preventDefault();
    open(event.key === 'ArrowDown' ? 0 : -1);
  });
  menu.addEventListener('keydown', (event) => onMenuKey(event, menu, leave));
  // Not focusout: on a Mac, clicking an entry takes the focus from it without giving it to anything.
  for (const type of ['pointerdown', 'focusin']) {
    window.addEventListener(type, (event) => {
      if (!menu.hidden && !anchor.contains(event.target as Node)) close();
    });
  }
  return anchor;
}

/** A menu at a position in the window. `onLeave` restores the focus afterwards. */
export function popupMenu(
  label: Key,
  groups: MenuGroups,
  at: { readonly x: number; readonly y: number },
  onLeave: () => void,
): void {
  const menu = h('div', { class: 'menu', tLabel: label, attrs: { role: 'menu' } });
  const close = () => {
    menu.remove();
    for (const type of ['pointerdown', 'focusin']) window.removeEventListener(type, closeOutside);
  };
  const closeOutside = (event: Event) => {
    if (!menu.contains(event.target as Node)) close();
  };
  const leave = () => {
    close();
    onLeave();
  };
  menu.append(...rows(groups, leave));
  menu.addEventListener('keydown', (event) => onMenuKey(event, menu, leave));
  // In a landmark, where screen readers expect all content.
  (document.querySelector('main') ?? document.body).append(menu);
  const { clientWidth, clientHeight } = document.documentElement;
  menu.style.left = `${Math.max(0, Math.min(at.x, clientWidth - menu.offsetWidth - 8))}px`;
  menu.style.top = `${Math.max(0, Math.min(at.y, clientHeight - menu.offsetHeight - 8))}px`;
  entriesOf(menu)[0]?.focus();
  for (const type of ['pointerdown', 'focusin']) window.addEventListener(type, closeOutside);
}

function onMenuKey(event: KeyboardEvent, menu: HTMLElement, leave: () => void): void {
  const entries = entriesOf(menu);
  const at = entries.indexOf(document.activeElement as HTMLElement);
  const target = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: -1 }[event.key];
  if (target !== undefined) entries[(target + entries.length) % entries.length]?.focus();
  else if (event.key === 'Escape' || event.key === 'Tab') leave();
  else return;
  event.preventDefault();
}

function entriesOf(menu: HTMLElement): HTMLElement[] {
  return [...menu.querySelectorAll<HTMLElement>('[role=menuitem]')];
}

function rows(groups: MenuGroups, leave: () => void): HTMLElement[] {
  return groups.flatMap((group, index) => {
    const entries = group.map((item) => entry(item, leave));
    return index ? [h('div', { class: 'menu-line', attrs: { role: 'separator' } }), ...entries] : entries;
  });
}

function entry({ name, label, keys, disabled, run }: MenuItem, leave: () => void): HTMLElement {
  const item = h(
    'button',
    {
      class: 'menu-item',
      attrs: { role: 'menuitem', type: 'button', tabindex: '-1' },
      on: {
        click: () => {
          leave();
          run();
        },
      },
    },
    h('span', { t: label }),
    h('kbd', {}, keys),
  );
  item.dataset.command = name;
  if (disabled) item.setAttribute('aria-disabled', 'true');
  return item;
}
