import type { Note } from '../state/model';
import { allOf, contextOf, foldNotes, forgetFolded, narrowed, type SearchMatch, searchNotes } from '../state/search';
import { titleOf, type Workspace } from '../state/workspace';
import { counted, t } from '../i18n/language';
import { isComposing } from '../keyboard/keys';
import { findFolded, fold } from '../text/fold';
import { headOf } from '../text/title';
import { rootPixels } from './rootStyle';
import { drawIcon, h, iconButton } from '../dom/elements';
import { inSlices } from '../time/slices';
import { TagTree } from './tagTree';
import { WindowedList } from './windowedList';

export interface SidebarActions {
  open(id: string): void;
  remove(id: string): void;
  create(): void;
  showBin(): void;
  leave(): void;
  showTag(name: string): void;
  toggleTags(): void;
}

const ROW_REMS = 3.875;
/** The longest a search, or what it prepares, runs before it lets a key press or a frame through. */
const SLICE_MS = 24;
/**
 * How often a slow search shows its matches so far. Drawing a new list may take as long as the whole search,
 * so one that finishes sooner draws its list only once.
 */
const SHOW_MS = 40;
/** How long the prepared notes are kept after the search field was left. */
const FORGET_MS = 120_000;

/** The list of notes, filtered by the search field. */
export class Sidebar {
  readonly element: HTMLElement;
  readonly tags: TagTree;
  readonly #workspace: Workspace;
  readonly #actions: SidebarActions;
  readonly #list: WindowedList<SearchMatch>;
  readonly #input: HTMLInputElement;
  readonly #outcome: HTMLElement;
  #query = '';
  #stopSearch = (): void => undefined;
  /** Matches of the last completed search, and the list they were found in. */
  #lastSearch: { readonly query: string; readonly of: unknown; readonly found: ReadonlyArray<SearchMatch> } | null =
    null;
  #folding = false;
  #forgetting: ReturnType<typeof setTimeout> | undefined;

  constructor(workspace: Workspace, actions: SidebarActions) {
    this.#workspace = workspace;
    this.#actions = actions;
    this.#list = new WindowedList<SearchMatch>({
      rowHeight: () => rootPixels(ROW_REMS),
      idPrefix: 'note-',
      key: ({ note }) => note.id,
      fill: (row, found) => this.#fillRow(row, found),
      onActivate: ({ note }) => actions.open(note.id),
      onDelete: ({ note }) => actions.remove(note.id),
      onLeave: (upwards) => (upwards ? this.focusSearch() : actions.leave()),
    });
    this.#list.element.dataset.tLabel = 'sidebar.label';
    this.#input = h('input', {
      class: 'search',
      tLabel: 'search.label',
      tPlaceholder: 'search.label',
      attrs: { id: 'searchInput', type: 'search', autocomplete: 'off', spellcheck: 'false' },
      on: {
        focus: () => this.#foldAhead(),
        blur: () => this.#forgetLater(),
        input: () => this.render(),
        keydown: (event) => this.#onSearchKey(event),
      },
    });
    this.tags = new TagTree({
      choose: (name) => actions.showTag(name),
      toggle: () => actions.toggleTags(),
      leave: () => actions.leave(),
    });
    this.#outcome = h('p', { class: 'outcome', attrs: { role: 'status' } });
    this.element = h(
      'aside',
      { class: 'sidebar', tLabel: 'sidebar.label', attrs: { id: 'sidebar' } },
      h(
        'div',
        { class: 'sidebar-head' },
        this.#input,
        iconButton('plus', 'cmd.newNote', () => actions.create()),
      ),
      this.#outcome,
      this.#list.element,
      this.tags.element,
      h(
        'button',
        { class: 'bin-button', attrs: { type: 'button' }, on: { click: () => actions.showBin() } },
        drawIcon('bin'),
        h('span', { t: 'bin.title' }),
      ),
    );
  }

  /** Sorts the list and filters it by the search field. */
  render(): void {
    this.#stopSearch();
    const before = this.#query;
    this.#query = fold(this.#input.value.trim());
    const notes = this.#workspace.notesInOrder();
    if (!this.#query) {
      this.#show(
        notes.map((note) => ({ note, inTitle: true, near: 0, from: 0 })),
        true,
      );
      return;
    }
    const found: SearchMatch[] = [];
    const last = this.#lastSearch;
    const narrower = last?.of === notes ? narrowed(this.#query, last.query, last.found) : null;
    let shown = performance.now();
    this.#stopSearch = inSlices(gather(searchNotes(narrower ?? allOf(notes), this.#query), found), {
      slice: SLICE_MS,
      onPause: () => {
        const now = performance.now();
        // A repeated search replaces its matches in one go, so the list does not jump.
        if (before === this.#query || now - shown <= SHOW_MS) return;
        this.#show([...found], false);
        shown = now;
      },
      onDone: () => {
        this.#show(found, true);
        this.#lastSearch = { query: this.#query, of: notes, found };
      },
    });
  }

  /** Moves the latest notes to the top. Search results keep their order. */
  reorder(): void {
    if (!this.#query) this.render();
  }

  refresh(): void {
    this.#list.refresh();
  }

  /** Updates the text of a note's row without reordering rows while the user is typing. */
  refreshNote(id: string): void {
    this.#list.redraw(id);
  }

  select(id: string | null): void {
    this.#list.select(id);
  }

  focusSearch(): void {
    this.#input.focus();
    this.#input.select();
  }

  /** Filters the list as if this were typed into the search field. */
  search(query: string): void {
    this.#input.value = query;
    this.render();
  }

  /** Prepares the notes when the search field gets the focus, before the user types. */
  #foldAhead(): void {
    clearTimeout(this.#forgetting);
    if (this.#folding) return;
    this.#folding = true;
    inSlices(foldNotes(this.#workspace.notesInOrder()), {
      slice: SLICE_MS,
      delay: 0,
      onDone: () => {
        this.#folding = false;
      },
    });
  }

  /** Who searches in turns with writing is not to wait every time. */
  #forgetLater(): void {
    clearTimeout(this.#forgetting);
    this.#forgetting = setTimeout(forgetFolded, FORGET_MS);
  }

  #show(found: ReadonlyArray<SearchMatch>, complete: boolean): void {
    this.#list.setItems(found);
    this.#list.element.hidden = complete && found.length === 0;
    if (!complete) return;
    const query = this.#input.value.trim();
    if (query) {
      this.#outcome.textContent = found.length ? counted('search.count', found.length) : t('search.none', { query });
    } else {
      this.#outcome.textContent = found.length ? '' : t('sidebar.empty');
    }
  }

  #fillRow(row: HTMLElement, { note: listed, inTitle, near }: SearchMatch): void {
    const note = this.#workspace.note(listed.id) ?? listed;
    const title = titleOf(note);
    const below = (!inTitle && contextOf(note.text, this.#query, near)) || excerptOf(note);
    const fallback = title ? '' : t('sidebar.emptyNote');
    const signature = JSON.stringify([title, below, this.#query, t('untitled'), note.pinned]);
    if (row.dataset.signature === signature) return;
    row.dataset.signature = signature;
    row.replaceChildren(
      h(
        'div',
        { class: 'row-title' },
        ...(note.pinned ? [pinMark()] : []),
        ...marked(title || t('untitled'), this.#query),
      ),
      h('div', { class: 'row-excerpt' }, ...marked(below || fallback, this.#query)),
    );
    row.classList.toggle('is-untitled', !title);
    row.classList.toggle('is-empty', !below);
  }

  #onSearchKey(event: KeyboardEvent): void {
    if (isComposing(event) || event.ctrlKey || event.metaKey || event.altKey) return;
    const first = this.#list.items[0];
    if (event.key === 'ArrowDown') this.#list.focusFirst();
    else if (event.key === 'Enter' && first) this.#actions.open(first.note.id);
    else if (event.key === 'Escape') {
      if (this.#input.value) {
        this.#input.value = '';
        this.render();
      } else this.#actions.leave();
    } else return;
    event.preventDefault();
  }
}

/** Collects all matches, pausing where the search does. */
function* gather(search: Iterable<SearchMatch | null>, found: SearchMatch[]): Generator<void, void> {
  for (const find of search) {
    if (find) found.push(find);
    else yield;
  }
}

/** An imported note has its file name as title, so its first line belongs in the excerpt. */
function excerptOf(note: Note): string {
  const { title, excerpt } = headOf(note.text);
  return note.name === null ? excerpt : [title, excerpt].filter(Boolean).join(' ');
}

function pinMark(): HTMLElement {
  return h('span', { class: 'pin', tLabel: 'note.isPinned', attrs: { role: 'img' } }, drawIcon('pin'));
}

function marked(text: string, query: string): Array<Node | string> {
  const match = findFolded(text, query);
  if (!match) return [text];
  return [text.slice(0, match.from), h('mark', {}, text.slice(match.from, match.to)), text.slice(match.to)];
}
