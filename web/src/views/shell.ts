import { htmlTag, type Language, onLanguageChange } from '../i18n/language';
import { readTheme, type Sort, type Theme } from '../state/settings';
import { titleOf, type Workspace } from '../state/workspace';
import { h, iconButton, relabel } from '../dom/elements';
import { Closing } from './closing';
import { type MenuGroups, menuButton } from './menu';
import { Preview, type PreviewSource } from './previewPane';
import { Sidebar } from './sidebar';
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
  closeTab(id: string): void;
  toggleSidebar(): void;
  showOverview(): void;
  openGuide(): void;
  retrySave(): void;
  chooseLanguage(language: Language): void;
  chooseTheme(theme: Theme): void;
  showBin(): void;
  focusEditor(): void;
  importFiles(files: ReadonlyArray<File>): void;
  noteMenu(): MenuGroups;
  previewSource(): PreviewSource | null;
  leavePreview(): void;
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
  readonly #workspace: Workspace;
  readonly #app: HTMLElement;
  readonly #empty: HTMLElement;
  readonly #create: HTMLButtonElement;
  readonly #toggle: HTMLButtonElement;
  readonly #topEnd: HTMLElement;

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
    });
    this.tabBar = new TabBar(workspace, {
      activate: (id) => actions.openNote(id),
      close: (id) => actions.closeTab(id),
      leave: () => actions.focusEditor(),
    });
    this.status = new StatusBar({
      retry: () => actions.retrySave(),
      chooseLanguage: (language) => actions.chooseLanguage(language),
      chooseTheme: (theme) => actions.chooseTheme(theme),
      openGuide: () => actions.openGuide(),
    });
    this.editorPanel = h('div', {
      class: 'editor',
      attrs: { id: EDITOR_PANEL_ID, role: 'tabpanel' },
    });
    this.preview = new Preview({
      source: () => actions.previewSource(),
      leave: () => actions.leavePreview(),
    });
    this.#create = h('button', {
      class: 'button primary',
      t: 'cmd.newNote',
      attrs: { type: 'button' },
      on: { click: () => actions.createNote() },
    });
    this.#create.hidden = workspace.readOnly;
    this.#empty = h(
      'div',
      { class: 'empty' },
      h('h2', { t: 'empty.title.none' }),
      h('p', { t: 'empty.text.none' }),
      this.#create,
    );
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
    const top = h('header', { class: 'top' }, this.#toggle, this.tabBar.element, this.#topEnd);
    const main = h('main', { class: 'main' }, h('h1', { class: 'unseen' }, 'Quendo'), top);
    if (workspace.readOnly) {
      main.append(h('p', { class: 'notice', t: 'readonly.notice', attrs: { role: 'alert' } }));
    }
    const work = h('div', { class: 'work' }, this.editorPanel, this.preview.element);
    main.append(work, this.#empty, this.status.element);
    this.#app = h('div', { class: 'app' }, this.sidebar.element, main);
    document.body.append(this.#app, fileInput(actions));
    this.toasts.start();
    acceptDroppedFiles(actions);
    onLanguageChange(() => this.#relabel());
    document.documentElement.lang = htmlTag();
    this.renderSettings();
  }

  /** Shows the active tab's note, or a hint if there is none. */
  renderMain(): void {
    const note = this.#workspace.activeNote;
    this.editorPanel.hidden = note === null;
    this.#empty.hidden = note !== null;
    this.preview.changed();
    this.#topEnd.classList.toggle('is-idle', note === null);
    const kind = this.#workspace.noteCount ? 'some' : 'none';
    const [heading, text] = this.#empty.children as unknown as [HTMLElement, HTMLElement];
    heading.dataset.t = `empty.title.${kind}`;
    text.dataset.t = `empty.text.${kind}`;
    relabel(this.#empty);
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
    this.#create.focus();
  }

  /** Applies the settings: sidebar open or closed, theme. */
  renderSettings(): void {
    const { sidebarOpen: open, theme } = this.#workspace.settings;
    this.sidebar.element.hidden = !open;
    this.#toggle.dataset.tLabel = open ? 'sidebar.hide' : 'sidebar.show';
    this.#toggle.setAttribute('aria-expanded', String(open));
    relabel(this.#app);
    this.status.showTheme(readTheme(theme));
    this.sidebar.refresh();
  }

  #relabel(): void {
    document.documentElement.lang = htmlTag();
    relabel(document.body);
    this.status.relabel();
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
