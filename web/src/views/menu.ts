import type { Key } from '../i18n/catalogue';
import { h, iconButton } from '../dom/elements';
import { type MenuGroups, PopupMenu } from './popupMenu';

export type { MenuGroups, MenuItem } from './popupMenu';

const popups = new Map<Key, PopupMenu>();

/** A button with a menu below it. `onLeave` restores the focus afterwards. */
export function menuButton(id: string, label: Key, groups: () => MenuGroups, onLeave: () => void): HTMLElement {
  const menu = new PopupMenu(id, label, (isOpen) => button.setAttribute('aria-expanded', String(isOpen)));
  const button = iconButton('more', label, () => {
    if (!menu.isOpen) return open(0);
    menu.close();
    button.focus();
  });
  button.id = `${id}Button`;
  button.setAttribute('aria-haspopup', 'menu');
  button.setAttribute('aria-controls', id);
  button.setAttribute('aria-expanded', 'false');
  const anchor = h('div', { class: 'menu-anchor' }, button, menu.element);

  function open(at: number): void {
    const { bottom, right } = button.getBoundingClientRect();
    menu.open(groups(), { right, bottom }, { at, anchor, onLeave });
  }

  button.addEventListener('keydown', (event) => {
    if (event.key !== 'ArrowDown' && event.key !== 'ArrowUp') return;
    event.preventDefault();
    open(event.key === 'ArrowDown' ? 0 : -1);
  });
  return anchor;
}

/** A menu at a position in the window. `onLeave` restores the focus afterwards. */
export function popupMenu(
  label: Key,
  groups: MenuGroups,
  at: { readonly x: number; readonly y: number },
  onLeave: () => void,
): void {
  const menu = popups.get(label) ?? new PopupMenu(label, label);
  popups.set(label, menu);
  document.querySelector('main')?.append(menu.element);
  menu.open(groups, at, { at: 0, onLeave });
}
