import {
  closeSearchPanel,
  findNext,
  findPrevious,
  getSearchQuery,
  openSearchPanel,
  replaceAll,
  replaceNext,
  SearchQuery,
  selectMatches,
  setSearchQuery,
} from '@codemirror/search';
import { type Command, type EditorView, type Panel, runScopeHandlers, type ViewUpdate } from '@codemirror/view';
import { drawIcon, h, type Icon, type Props } from '../dom/elements';
import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';
import { hasMod, hasOtherMod, isComposing } from '../keyboard/keys';
import { MatchCount, type Matches, MOST_MATCHES, placeOf } from './matches';

/** A new query is counted immediately, edited text once typing pauses. */
const PAUSE_MS = 30;
const WRITING_PAUSE_MS = 250;

type Option = 'caseSensitive' | 'wholeWord' | 'regexp';

const options: ReadonlyArray<readonly [option: Option, icon: Icon, label: Key]> = [
  ['caseSensitive', 'matchCase', 'find.case'],
  ['wholeWord', 'wholeWord', 'find.word'],
  ['regexp', 'regexp', 'find.regexp'],
];

/** Opens the panel with the replace row and focuses it. */
export const openReplace: Command = (view) => {
  if (view.state.readOnly) return openSearchPanel(view);
  openSearchPanel(view);
  const row = view.dom.querySelector<HTMLElement>('.find-replace');
  if (row) row.hidden = false;
  const { search } = getSearchQuery(view.state);
  view.dom.querySelector<HTMLInputElement>(search ? '.find-with' : '.find-what')?.focus();
  return true;
};

export function findPanel(view: EditorView): Panel {
  return new FindPanel(view);
}

/** Find and replace, above the text. The query itself is part of the editor's state. */
class FindPanel implements Panel {
  readonly dom: HTMLElement;
  readonly top = true;
  readonly #view: EditorView;
  readonly #what: HTMLInputElement;
  readonly #with: HTMLInputElement;
  readonly #count = h('span', { class: 'find-count', attrs: { role: 'status' } });
  readonly #switches = new Map<Option, HTMLButtonElement>();
  readonly #counting = new MatchCount();
  #query: SearchQuery;
  #matches: Matches = { starts: [], done: true };

  constructor(view: EditorView) {
    this.#view = view;
    this.#query = getSearchQuery(view.state);
    this.#what = this.#field('find-what', 'find.field', this.#query.search);
    this.#what.setAttribute('main-field', 'true');
    this.#with = this.#field('find-with', 'find.replaceField', this.#query.replace);
    for (const [option, icon, label] of options) this.#switches.set(option, this.#switch(option, icon, label));
    const switches = row('find-group', ...this.#switches.values());
    const steps = row('find-group', ...this.#steps());
    const what = row('find-row', this.#what, switches, this.#count, steps);
    const replacing = row('find-row find-replace', this.#with, row('find-group', ...this.#replacements()));
    replacing.hidden = true;
    this.dom = h(
      'div',
      {
        class: 'find',
        tLabel: 'find.field',
        attrs: { role: 'search' },
        on: { keydown: (event) => this.#onKey(event) },
      },
      what,
      replacing,
    );
    this.#follow();
  }

  mount(): void {
    this.#what.select();
    this.#recount();
  }

  destroy(): void {
    this.#counting.stop();
  }

  update(update: ViewUpdate): void {
    const query = getSearchQuery(update.state);
    if (!query.eq(this.#query)) {
      this.#query = query;
      this.#follow();
      this.#recount();
    } else if (update.docChanged) this.#countMatches(WRITING_PAUSE_MS);
    else if (update.selectionSet) this.#showCount();
  }

  /** Syncs fields and toggles with the query, which may have been set elsewhere. */
  #follow(): void {
    const { search, replace } = this.#query;
    if (this.#what.value !== search) this.#what.value = search;
    if (this.#with.value !== replace) this.#with.value = replace;
    for (const [option, button] of this.#switches) {
      button.setAttribute('aria-pressed', String(this.#query[option]));
    }
  }

  #commit(change: Partial<Record<Option, boolean>> = {}): void {
    const { caseSensitive, wholeWord, regexp } = { ...pick(this.#query), ...change };
    const search = this.#what.value;
    const query = new SearchQuery({
      search,
      replace: this.#with.value,
      caseSensitive,
      wholeWord,
      regexp,
      literal: !regexp,
    });
    if (!query.eq(this.#query)) this.#view.dispatch({ effects: setSearchQuery.of(query) });
  }

  #recount(): void {
    this.#counting.stop();
    this.#matches = { starts: [], done: false };
    if (this.#query.valid) this.#countMatches(PAUSE_MS);
    else this.#showCount();
  }

  /** Keeps showing the previous count until a newer one is available. */
  #countMatches(delay: number): void {
    if (!this.#query.valid) return;
    this.#counting.start(this.#view.state, this.#query, delay, (matches) => {
      this.#matches = matches;
      this.#showCount();
    });
  }

  #showCount(): void {
    const { starts, done } = this.#matches;
    const { search, valid } = this.#query;
    const { main } = this.#view.state.selection;
    const at = main.empty ? 0 : placeOf(starts, main.from);
    const total = `${starts.length}${done && starts.length < MOST_MATCHES ? '' : '+'}`;
    const isMissing = search !== '' && (!valid || (done && !starts.length));
    this.#what.setAttribute('aria-invalid', String(isMissing));
    if (!search) this.#count.textContent = '';
    else if (!valid) this.#count.textContent = t('find.wrong');
    else if (!starts.length) this.#count.textContent = done ? t('find.none') : '…';
    else this.#count.textContent = at ? t('find.place', { at, total }) : t('find.total', { total });
  }

  #onKey(event: KeyboardEvent): void {
    if (isComposing(event)) return;
    const inWhat = event.target === this.#what;
    const isPlain = !event.altKey && !hasOtherMod(event);
    if (event.key === 'Enter' && isPlain && (inWhat || event.target === this.#with)) {
      if (!inWhat) (hasMod(event) ? replaceAll : replaceNext)(this.#view);
      else if (hasMod(event)) this.#run(selectMatches, true);
      else (event.shiftKey ? findPrevious : findNext)(this.#view);
    } else if (!runScopeHandlers(this.#view, event, 'search-panel')) return;
    event.preventDefault();
  }

  #run(command: Command, leave: boolean): void {
    command(this.#view);
    if (leave) this.#view.focus();
  }

  #field(className: string, label: Key, value: string): HTMLInputElement {
    const field = h('input', {
      class: `find-field ${className}`,
      tLabel: label,
      tPlaceholder: label,
      attrs: { spellcheck: 'false', autocomplete: 'off' },
      on: { input: () => this.#commit() },
    });
    field.value = value;
    return field;
  }

  #switch(option: Option, icon: Icon, label: Key): HTMLButtonElement {
    const props = { class: `find-switch find-${option}`, tLabel: label };
    return press(props, () => this.#commit({ [option]: !this.#query[option] }), drawIcon(icon));
  }

  #steps(): HTMLElement[] {
    const steps: ReadonlyArray<readonly [Icon, Key, () => void]> = [
      ['up', 'find.previous', () => this.#run(findPrevious, false)],
      ['down', 'find.next', () => this.#run(findNext, false)],
      ['selectAll', 'find.all', () => this.#run(selectMatches, true)],
      ['replace', 'find.showReplace', () => this.#toggleReplace()],
      ['close', 'close', () => this.#run(closeSearchPanel, true)],
    ];
    return steps.map(([icon, label, run]) => {
      const button = press({ class: 'find-step', tLabel: label }, run, drawIcon(icon));
      if (label === 'find.showReplace') button.hidden = this.#view.state.readOnly;
      return button;
    });
  }

  #toggleReplace(): void {
    const row = this.dom.querySelector<HTMLElement>('.find-replace');
    if (row) row.hidden = !row.hidden;
    (row?.hidden ? this.#what : this.#with).focus();
  }

  #replacements(): HTMLElement[] {
    return [['find.replace', replaceNext] as const, ['find.replaceAll', replaceAll] as const].map(([label, command]) =>
      press({ class: 'find-button', t: label }, () => this.#run(command, false)),
    );
  }
}

function pick({ caseSensitive, wholeWord, regexp }: SearchQuery): Record<Option, boolean> {
  return { caseSensitive, wholeWord, regexp };
}

function row(className: string, ...children: Node[]): HTMLElement {
  return h('div', { class: className }, ...children);
}

function press(props: Props, run: () => void, ...icon: Node[]): HTMLButtonElement {
  return h('button', { ...props, attrs: { type: 'button' }, on: { click: run } }, ...icon);
}
