import { t } from '../i18n/language';
import { titleOf } from '../state/titleOf';
import type { Workspace } from '../state/workspace';
import { drawIcon, h, iconButton } from '../dom/elements';
import { isDelete } from '../keyboard/keys';
import { type MenuGroups, popupMenu } from './menu';
import { PopupMenu } from './popupMenu';
import { letDrag } from './tabDrag';

export interface TabBarActions {
  activate(id: string): void;
  close(id: string): void;
  move(id: string, index: number): void;
  menu(id: string): MenuGroups;
  leave(): void;
}

interface TabElements {
  readonly frame: HTMLElement;
  readonly tab: HTMLButtonElement;
  readonly close: HTMLButtonElement;
}

export const EDITOR_PANEL_ID = 'editorPanel';

/**
 * The row of open tabs, with a roving tabindex: one tab is in the tab order, arrow keys move between them. At its
 * end is a list of all of them, if they do not fit.
 */
export class TabBar {
  readonly element: HTMLElement;
  /** The list of all tabs. */
  readonly extras: HTMLElement;
  readonly #workspace: Workspace;
  readonly #actions: TabBarActions;
  readonly #tabs = new Map<string, TabElements>();
  readonly #all: HTMLButtonElement;
  readonly #list = new PopupMenu('tabList', 'tabs.all', (isOpen) =>
    this.#all.setAttribute('aria-expanded', String(isOpen)),
  );
  #active: string | null = null;

  constructor(workspace: Workspace, actions: TabBarActions) {
    this.#workspace = workspace;
    this.#actions = actions;
    this.element = h('div', {
      class: 'tabs',
      tLabel: 'tabs.label',
      attrs: { role: 'tablist' },
      on: { keydown: (event) => this.#onKey(event) },
    });
    this.#all = iconButton('tabs', 'tabs.all', () => this.#showAll());
    this.#all.setAttribute('aria-haspopup', 'menu');
    this.#all.setAttribute('aria-expanded', 'false');
    this.#all.hidden = true;
    this.extras = h('div', { class: 'tabs-extras' }, this.#all, this.#list.element);
    new ResizeObserver(() => this.#fit()).observe(this.element);
  }

  render(): void {
    const { open, active } = this.#workspace.tabs;
    const focused = document.activeElement;
    for (const [id, { frame }] of this.#tabs) {
      if (open.includes(id)) continue;
      frame.remove();
      this.#tabs.delete(id);
    }
    open.forEach((id, index) => {
      const { frame, tab } = this.#tabs.get(id) ?? this.#make(id);
      tab.setAttribute('aria-selected', String(id === active));
      tab.tabIndex = id === active ? 0 : -1;
      frame.classList.toggle('is-active', id === active);
      if (this.element.children[index] !== frame) {
        this.element.insertBefore(frame, this.element.children[index] ?? null);
      }
      this.retitle(id);
    });
    this.element.hidden = open.length === 0;
    // A tab that moved has lost the focus.
    if (focused !== document.activeElement && this.element.contains(focused)) (focused as HTMLElement).focus();
    if (active !== this.#active) this.#reveal(active);
    this.#active = active;
    requestAnimationFrame(() => this.#fit());
  }

  /** Updates a note's tab title, if it has a tab and the title changed. */
  retitle(id: string): void {
    const note = this.#workspace.note(id);
    const elements = this.#tabs.get(id);
    if (!note || !elements) return;
    const title = titleOf(note) || t('untitled');
    const closing = t('tabs.close', { title });
    // Called on every key; even the same text would make the engine lay out again.
    if (elements.tab.textContent !== title) elements.tab.textContent = title;
    if (elements.tab.title !== title) elements.tab.title = title;
    if (elements.close.title !== closing) elements.close.title = closing;
  }

  #make(id: string): TabElements {
    const tab = h('button', {
      class: 'tab',
      attrs: { role: 'tab', type: 'button', 'aria-controls': EDITOR_PANEL_ID },
      on: { click: () => this.#actions.activate(id) },
    });
    tab.dataset.id = id;
    tab.setAttribute('aria-keyshortcuts', 'Delete Shift+F10');
    // Keyboard users close a tab with Delete; the cross is only for the pointer.
    const close = h(
      'button',
      {
        class: 'tab-close',
        attrs: { type: 'button', tabindex: '-1', 'aria-hidden': 'true' },
        on: { click: () => this.#actions.close(id) },
      },
      drawIcon('close'),
    );
    const frame = h(
      'div',
      {
        class: 'tab-frame',
        attrs: { role: 'presentation' },
        on: {
          auxclick: (event) => {
            if (event.button === 1) this.#actions.close(id);
          },
          contextmenu: (event) => {
            event.preventDefault();
            this.#showMenu(id, event.clientX, event.clientY);
          },
        },
      },
      tab,
      close,
    );
    letDrag(frame, (index) => this.#actions.move(id, index));
    const elements = { frame, tab, close };
    this.#tabs.set(id, elements);
    return elements;
  }

  #fit(): void {
    const isWhole = this.element.hidden || this.element.scrollWidth <= this.element.clientWidth;
    if (isWhole === this.#all.hidden) return;
    this.#all.hidden = isWhole;
    // It has taken room from the row.
    if (!isWhole) this.#reveal(this.#active);
  }

  #showAll(): void {
    const { open, active } = this.#workspace.tabs;
    const items = open.flatMap((id) => {
      const note = this.#workspace.note(id);
      const text = (note && titleOf(note)) || t('untitled');
      const run = () => this.#actions.activate(id);
      return { name: id, label: { text }, keys: '', disabled: false, checked: id === active, run };
    });
    const { bottom, right } = this.#all.getBoundingClientRect();
    const at = active === null ? 0 : open.indexOf(active);
    const onLeave = () => this.#actions.leave();
    if (this.#list.isOpen) this.#list.close();
    else this.#list.open([items], { right, bottom }, { at, anchor: this.extras, onLeave });
  }

  #showMenu(id: string, x: number, y: number): void {
    const { activeElement } = document;
    const onTab = this.element.contains(activeElement);
    const onLeave = () => (onTab ? (activeElement as HTMLElement).focus() : this.#actions.leave());
    popupMenu('tabs.menu', this.#actions.menu(id), { x, y }, onLeave);
  }

  /** Waits for the frame: in between, it would make the engine lay out a page that is not whole yet. */
  #reveal(id: string | null): void {
    const frame = id === null ? undefined : this.#tabs.get(id)?.frame;
    requestAnimationFrame(() => frame?.scrollIntoView({ block: 'nearest', inline: 'nearest' }));
  }

  #onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const { open } = this.#workspace.tabs;
    const at = open.indexOf((event.target as HTMLElement).dataset.id ?? '');
    const id = open[at];
    if (id === undefined) return;
    const target = { ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: open.length - 1 }[event.key];
    if (target !== undefined) {
      this.#focus(open[(target + open.length) % open.length] ?? null);
    } else if (isDelete(event)) {
      this.#actions.close(id);
      this.#focus(this.#workspace.tabs.active);
    } else if (event.key === 'ContextMenu' || (event.key === 'F10' && event.shiftKey)) {
      const { left, bottom } = (event.target as HTMLElement).getBoundingClientRect();
      this.#showMenu(id, left, bottom);
    } else if (event.key === 'Escape') this.#actions.leave();
    else return;
    event.preventDefault();
  }

  #focus(id: string | null): void {
    if (id !== null) this.#tabs.get(id)?.tab.focus();
    this.#reveal(id);
  }
}
