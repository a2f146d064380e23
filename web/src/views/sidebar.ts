import type { Note } from '../state/model';
import { allOf, narrowed, ranked, type SearchMatch, searchNotes } from '../state/search';
import { inOrder } from '../state/noteOrder';
import { readSort, type Sort, sorts } from '../state/settings';
import type { Workspace } from '../state/workspace';
import { counted, t } from '../i18n/language';
import { markedWords, parseQuery, type Query } from '../text/searchQuery';
import { fillNoteRow } from './noteRow';
import { sectionsBy } from './listSections';
import { type MenuGroups, popupMenu } from './menu';
import { rootPixels } from './rootStyle';
import { drawIcon, h, iconButton } from '../dom/elements';
import { inSlices, SEARCH_SLICE_MS } from '../time/slices';
import { TagTree } from './tagTree';
import { SearchField } from './searchField';
import { WindowedList } from './windowedList';

export interface SidebarActions {
  /** `words` are those that the search has found in the note. */
  open(id: string, words: ReadonlyArray<string>): void;
  remove(ids: ReadonlyArray<string>): void;
  sort(sort: Sort): void;
  menu(ids: ReadonlyArray<string>): MenuGroups;
  create(): void;
  showBin(): void;
  leave(): void;
  showTag(name: string): void;
  toggleTags(): void;
  tagMenu(name: string): MenuGroups;
}

const sortNames = { edited: 'sort.edited', created: 'sort.created', title: 'sort.title' } as const;
const ROW_REMS = 3.875;
const HEADING_REMS = 1.875;
/**
 * How often a slow search shows its matches so far. Drawing a new list may take as long as the whole search,
 * so one that finishes sooner draws its list only once.
 */
const SHOW_MS = 100;

/** The list of notes, filtered by the search field. */
export class Sidebar {
  readonly element: HTMLElement;
  readonly tags: TagTree;
  readonly #workspace: Workspace;
  readonly #actions: SidebarActions;
  readonly #list: WindowedList<SearchMatch>;
  readonly #field: SearchField;
  readonly #outcome: HTMLElement;
  readonly #sort: HTMLSelectElement;
  #query: Query = parseQuery('', 0);
  #words: ReadonlyArray<string> = [];
  #stopSearch = (): void => undefined;
  /** Matches of the last completed search, and the list they were found in. */
  #lastSearch: { readonly query: Query; readonly of: unknown; readonly found: ReadonlyArray<SearchMatch> } | null =
    null;
  #shownSort: Sort = 'edited';
  #selected = 0;

  constructor(workspace: Workspace, actions: SidebarActions) {
    this.#workspace = workspace;
    this.#actions = actions;
    this.#list = new WindowedList<SearchMatch>({
      rowHeight: () => rootPixels(ROW_REMS),
      headingHeight: () => rootPixels(HEADING_REMS),
      idPrefix: 'note-',
      key: ({ note }) => note.id,
      fill: (row, found, heading) => this.#fillRow(row, found, heading),
      onActivate: ({ note }) => actions.open(note.id, this.#words),
      onDelete: (found) => actions.remove(found.map(({ note }) => note.id)),
      onSelected: (count) => {
        this.#selected = count;
        this.#showOutcome();
      },
      onMenu: (found, at) => this.#openMenu(found, at),
      onLeave: (upwards) => (upwards ? this.focusSearch() : actions.leave()),
    });
    this.#list.element.dataset.tLabel = 'sidebar.label';
    this.#field = new SearchField(workspace, {
      changed: () => this.render(),
      openFirst: () => {
        const [first] = this.#list.items;
        if (first) actions.open(first.note.id, this.#words);
      },
      focusList: () => this.#list.focusFirst(),
      leave: () => actions.leave(),
    });
    this.tags = new TagTree({
      choose: (name) => actions.showTag(name),
      toggle: () => actions.toggleTags(),
      menu: (name) => actions.tagMenu(name),
      leave: () => actions.leave(),
    });
    this.#sort = h(
      'select',
      {
        class: 'choice sort',
        tLabel: 'sort.label',
        on: { change: () => actions.sort(readSort(this.#sort.value)) },
      },
      ...sorts.map((sort) => h('option', { t: sortNames[sort], attrs: { value: sort } })),
    );
    this.#outcome = h('p', { class: 'outcome', attrs: { role: 'status' } });
    this.element = h(
      'aside',
      { class: 'sidebar', tLabel: 'sidebar.label', attrs: { id: 'sidebar' } },
      h(
        'div',
        { class: 'sidebar-head' },
        this.#field.input,
        iconButton('plus', 'cmd.newNote', () => actions.create()),
      ),
      h('div', { class: 'list-info' }, this.#outcome, this.#sort),
      this.#list.element,
      // Over the list's end, so that nothing moves away from under the pointer when the field is left.
      h('div', { class: 'search-hint-place' }, this.#field.hint),
      this.tags.element,
      h(
        'button',
        { class: 'bin-button', attrs: { type: 'button' }, on: { click: () => actions.showBin() } },
        drawIcon('bin'),
        h('span', { t: 'bin.title' }),
      ),
    );
  }

  get sort(): Sort {
    return readSort(this.#workspace.settings.sort);
  }

  /** Sorts the list and filters it by the search field. */
  render(): void {
    this.#stopSearch();
    const before = this.#query;
    const query = parseQuery(this.#field.value, Date.now());
    this.#query = query;
    this.#words = markedWords(query);
    const notes = this.#workspace.notesInOrder();
    const { sort } = this;
    this.#sort.value = sort;
    if (!query.source) {
      this.#shownSort = sort;
      const section = sectionsBy(sort, Date.now());
      this.#stopSearch = inSlices(inOrder(notes, sort), {
        slice: SEARCH_SLICE_MS,
        onDone: (ordered) => this.#show(ordered.map(unfiltered), true, ({ note }) => section(note)),
      });
      return;
    }
    // A repeated search replaces its matches in one go, so the list does not jump.
    const isRepeated = before.source === query.source;
    const found: SearchMatch[] = [];
    const last = this.#lastSearch;
    const narrower = last?.of === notes ? narrowed(query, last.query, last.found) : null;
    let shown = performance.now();
    let isFirst = true;
    const show = (complete: boolean) => {
      // Not before: the former list would be drawn once more, while the search goes on.
      if (isFirst && !isRepeated) this.#list.toTop();
      isFirst = false;
      this.#show(ranked(found), complete);
    };
    this.#stopSearch = inSlices(gather(searchNotes(narrower ?? allOf(notes), query), found), {
      slice: SEARCH_SLICE_MS,
      onPause: () => {
        const now = performance.now();
        if (isRepeated || now - shown <= SHOW_MS) return;
        show(false);
        shown = now;
      },
      onDone: () => {
        show(true);
        this.#lastSearch = { query, of: notes, found };
      },
    });
  }

  /** Moves the latest notes to the top. Search results keep their order. */
  reorder(): void {
    if (!this.#query.source) this.render();
  }

  /** Follows the settings: the order, and the size of the text. */
  refresh(): void {
    if (this.sort !== this.#shownSort) this.reorder();
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
    this.#field.focus();
  }

  /** Filters the list as if this were typed into the search field. */
  search(query: string): void {
    this.#field.value = query;
    this.render();
  }

  #show(found: ReadonlyArray<SearchMatch>, complete: boolean, headingOf?: (found: SearchMatch) => string): void {
    this.#list.setItems(found, headingOf);
    this.#list.element.hidden = complete && found.length === 0;
    if (complete) this.#showOutcome();
  }

  /** How many notes are listed or, if any are, selected. */
  #showOutcome(): void {
    const query = this.#field.value.trim();
    const { length } = this.#list.items;
    this.#sort.hidden = this.#selected > 0 || query !== '' || length === 0;
    if (this.#selected) this.#outcome.textContent = counted('sidebar.selected', this.#selected);
    else if (query) this.#outcome.textContent = length ? counted('search.count', length) : t('search.none', { query });
    else this.#outcome.textContent = length ? counted('sidebar.count', length) : t('sidebar.empty');
  }

  #fillRow(row: HTMLElement, match: SearchMatch, heading: string): void {
    const note = this.#workspace.note(match.note.id) ?? match.note;
    const moment = this.sort === 'created' ? 'created' : 'updated';
    fillNoteRow(row, note, match, { heading, words: this.#words, moment });
  }

  #openMenu(found: ReadonlyArray<SearchMatch>, at: { readonly x: number; readonly y: number }): void {
    const groups = this.#actions.menu(found.map(({ note }) => note.id));
    popupMenu(found.length > 1 ? 'rows.label' : 'actions.label', groups, at, () => this.#list.element.focus());
  }
}

/** Collects all matches, pausing where the search does. */
function* gather(search: Iterable<SearchMatch | null>, found: SearchMatch[]): Generator<void, void> {
  for (const find of search) {
    if (find) found.push(find);
    else yield;
  }
}

/** A note in the list of all. */
function unfiltered(note: Note): SearchMatch {
  return { note, inTitle: true, near: 0, from: 0, row: 0, rank: 0 };
}
