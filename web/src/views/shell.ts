import { htmlTag, onLanguageChange } from '../i18n/language';
import type { Target } from '../editor/targets';
import type { Sort } from '../state/settings';
import { titleOf } from '../state/titleOf';
import type { Workspace } from '../state/workspace';
import { h, iconButton, relabel } from '../dom/elements';
import { type BacklinksActions, BacklinksPanel } from './backlinksPanel';
import { Closing } from './closing';
import { EmptyState, type StartItem } from './emptyState';
import { isNarrow, onNarrowChange } from './narrow';
import { type MenuGroups, menuButton } from './menu';
import { Preview, type PreviewSource } from './previewPane';
import { Sidebar } from './sidebar';
import { Splitter } from './splitter';
import { StatusBar } from './statusBar';
import { EDITOR_PANEL_ID, TabBar } from './tabBar';
import { Toasts } from './toasts';

/** What the user can do with the mouse in the page. */
export interface ShellActions {
  createNote(): void;
  openNote(id: string, words?: ReadonlyArray<string>): void;
  deleteNotes(ids: ReadonlyArray<string>): void;
  sortNotes(sort: Sort): void;
  rowMenu(ids: ReadonlyArray<string>): MenuGroups;
  tagMenu(name: string): MenuGroups;
  closeTab(id: string): void;
  moveTab(id: string, index: number): void;
  tabMenu(id: string): MenuGroups;
  keepSidebarWidth(width: number): void;
  toggleSidebar(): void;
  showOverview(): void;
  openGuide(): void;
  retrySave(): void;
  showSettings(): void;
  showBin(): void;
  focusEditor(): void;
  importFiles(files: ReadonlyArray<File>): void;
  startItems(): ReadonlyArray<StartItem>;
  noteMenu(): MenuGroups;
  previewSource(): PreviewSource | null;
  leavePreview(): void;
  follow(target: Target): void;
  readonly backlinks: Omit<BacklinksActions, 'leave'>;
}

/** The page's frame: sidebar, tabs, editor, status bar. */
export class Shell {
  readonly closing = new Closing();
  readonly sidebar: Sidebar;
  readonly tabBar: TabBar;
  readonly status: StatusBar;
  readonly toasts = new Toasts(() => this.closing.begun);
  /** The editor's container. */
  readonly editorPanel: HTMLElement;
  readonly preview: Preview;
  readonly backlinks: BacklinksPanel;
  readonly #workspace: Workspace;
  readonly #app: HTMLElement;
  readonly #empty: EmptyState;
  readonly #splitter: Splitter;
  readonly #toggle: HTMLButtonElement;
  readonly #topEnd: HTMLElement;
  #drawerOpen = false;

  constructor(workspace: Workspace, actions: ShellActions) {
    this.#workspace = workspace;
    this.sidebar = new Sidebar(workspace, {
      open: (id, words) => actions.openNote(id, words),
      remove: (ids) => actions.deleteNotes(ids),
      sort: (sort) => actions.sortNotes(sort),
      menu: (ids) => actions.rowMenu(ids),
      create: () => actions.createNote(),
      showBin: () => actions.showBin(),
      leave: () => actions.focusEditor(),
      showTag: (value) => actions.follow({ kind: 'tag', value }),
      tagMenu: (name) => actions.tagMenu(name),
      toggleTags: () => workspace.setSettings({ tagsOpen: !workspace.settings.tagsOpen }),
    });
    this.#splitter = new Splitter(this.sidebar.element, {
      keep: (width) => actions.keepSidebarWidth(width),
      leave: () => actions.focusEditor(),
    });
    this.tabBar = new TabBar(workspace, {
      activate: (id) => actions.openNote(id),
      close: (id) => actions.closeTab(id),
      move: (id, index) => actions.moveTab(id, index),
      menu: (id) => actions.tabMenu(id),
      leave: () => actions.focusEditor(),
    });
    this.status = new StatusBar({
      retry: () => actions.retrySave(),
      showSettings: () => actions.showSettings(),
      openGuide: () => actions.openGuide(),
    });
    this.editorPanel = h('div', {
      class: 'editor',
      attrs: { id: EDITOR_PANEL_ID, role: 'tabpanel' },
    });
    this.preview = new Preview({
      source: () => actions.previewSource(),
      leave: () => actions.leavePreview(),
      follow: (kind, value) => actions.follow({ kind, value }),
    });
    this.#empty = new EmptyState(actions.startItems());
    this.backlinks = new BacklinksPanel({ ...actions.backlinks, leave: () => actions.focusEditor() });
    this.#toggle = iconButton('sidebar', 'sidebar.hide', () => actions.toggleSidebar());
    this.#toggle.setAttribute('aria-controls', 'sidebar');
    this.#topEnd = h(
      'div',
      { class: 'top-end' },
      iconButton('grid', 'cmd.overview', () => actions.showOverview()),
      menuButton(
        'noteMenu',
        'actions.label',
        () => actions.noteMenu(),
        () => actions.focusEditor(),
      ),
    );
    const top = h('header', { class: 'top' }, this.#toggle, this.tabBar.element, this.tabBar.extras, this.#topEnd);
    const main = h('main', { class: 'main' }, h('h1', { class: 'unseen' }, 'Quendo'), this.#splitter.element, top);
    if (workspace.readOnly) {
      main.append(h('p', { class: 'notice', t: 'readonly.notice', attrs: { role: 'alert' } }));
    }
    const work = h('div', { class: 'work' }, this.editorPanel, this.preview.element);
    main.append(work, this.backlinks.element, this.#empty.element, this.status.element);
    this.#app = h('div', { class: 'app' }, this.sidebar.element, main);
    document.body.append(this.#app, fileInput(actions));
    this.toasts.start();
    acceptDroppedFiles(actions);
    onLanguageChange(() => this.#relabel());
    onNarrowChange(() => this.renderSettings());
    document.documentElement.lang = htmlTag();
    this.renderSettings();
  }

  /** Shows the active tab's note, or a hint if there is none. */
  renderMain(): void {
    const note = this.#workspace.activeNote;
    this.editorPanel.hidden = note === null;
    this.#empty.element.hidden = note !== null;
    this.preview.changed();
    this.#topEnd.classList.toggle('is-idle', note === null);
    this.#empty.show(this.#workspace.noteCount ? 'some' : 'none');
    this.retitle();
  }

  /** Updates the titles of window and panel for the active note. */
  retitle(): void {
    const note = this.#workspace.activeNote;
    const title = note ? titleOf(note) : '';
    const label = title || 'Quendo';
    const windowTitle = title ? `${title} — Quendo` : 'Quendo';
    if (document.title !== windowTitle) document.title = windowTitle;
    if (this.editorPanel.getAttribute('aria-label') !== label) this.editorPanel.setAttribute('aria-label', label);
  }

  focusEmpty(): void {
    this.#empty.focus();
  }

  get sidebarShown(): boolean {
    return isNarrow() ? this.#drawerOpen : this.#workspace.settings.sidebarOpen;
  }

  /** In a narrow window the sidebar lies over the text, for as long as it is needed. */
  get hasDrawer(): boolean {
    return isNarrow();
  }

  openDrawer(open: boolean): void {
    if (open === this.#drawerOpen) return;
    this.#drawerOpen = open;
    this.renderSettings();
  }

  /** Applies the settings: sidebar open or closed, theme. */
  renderSettings(): void {
    const open = this.sidebarShown;
    this.sidebar.element.hidden = !open;
    this.#splitter.element.hidden = !open || isNarrow();
    this.#splitter.show(this.#workspace.settings.sidebarWidth);
    this.#toggle.dataset.tLabel = open ? 'sidebar.hide' : 'sidebar.show';
    this.#toggle.setAttribute('aria-expanded', String(open));
    relabel(this.#app);
    this.sidebar.refresh();
  }

  #relabel(): void {
    document.documentElement.lang = htmlTag();
    relabel(document.body);
    this.backlinks.relabel();
    this.preview.redraw();
    this.sidebar.render();
    this.tabBar.render();
    this.renderMain();
  }
}

/** Both the host's menu and the page open files by clicking this input. */
function fileInput(actions: ShellActions): HTMLInputElement {
  const input = h('input', {
    tLabel: 'import.label',
    attrs: { id: 'importFileInput', type: 'file', multiple: '', hidden: '' },
    on: {
      change: () => {
        actions.importFiles([...(input.files ?? [])]);
        input.value = '';
      },
    },
  });
  return input;
}

/** Opens files dropped anywhere as tabs; by default, the web view would navigate to them. */
function acceptDroppedFiles(actions: ShellActions): void {
  const take = (event: DragEvent) => {
    if (!event.dataTransfer?.types.includes('Files')) return;
    event.preventDefault();
    event.stopPropagation();
    if (event.type === 'drop') actions.importFiles([...event.dataTransfer.files]);
  };
  window.addEventListener('dragover', take, { capture: true });
  window.addEventListener('drop', take, { capture: true });
}
