import { h } from '../dom/elements';
import { isComposing } from '../keyboard/keys';
import { foldNotes, forgetFolded } from '../state/search';
import type { Workspace } from '../state/workspace';
import { inSlices, SEARCH_SLICE_MS } from '../time/slices';

export interface SearchFieldActions {
  /** What is typed has changed. */
  changed(): void;
  openFirst(): void;
  focusList(): void;
  leave(): void;
}

/** How long the prepared notes are kept after the search field was left. */
const FORGET_MS = 120_000;

/** The field above the list of notes, and how what is typed there can be refined. */
export class SearchField {
  readonly input: HTMLInputElement;
  readonly hint: HTMLElement;
  readonly #workspace: Workspace;
  readonly #actions: SearchFieldActions;
  #folding = false;
  #forgetting: ReturnType<typeof setTimeout> | undefined;

  constructor(workspace: Workspace, actions: SearchFieldActions) {
    this.#workspace = workspace;
    this.#actions = actions;
    this.input = h('input', {
      class: 'search',
      tLabel: 'search.label',
      tPlaceholder: 'search.label',
      attrs: {
        id: 'searchInput',
        type: 'search',
        autocomplete: 'off',
        spellcheck: 'false',
        'aria-describedby': 'searchHint',
      },
      on: {
        focus: () => {
          this.#showHint(true);
          this.#foldAhead();
        },
        blur: () => {
          this.#showHint(false);
          this.#forgetLater();
        },
        input: () => this.#changed(),
        keydown: (event) => this.#onKey(event),
      },
    });
    this.hint = h('p', { class: 'search-hint', t: 'search.hint', attrs: { id: 'searchHint', hidden: '' } });
  }

  get value(): string {
    return this.input.value;
  }

  set value(query: string) {
    this.input.value = query;
  }

  focus(): void {
    this.input.focus();
    this.input.select();
  }

  #changed(): void {
    this.#showHint(true);
    this.#actions.changed();
  }

  /** As long as nothing is typed. */
  #showHint(focused: boolean): void {
    this.hint.hidden = !focused || this.value !== '';
  }

  /** Prepares the notes when the field gets the focus, before the user types. */
  #foldAhead(): void {
    clearTimeout(this.#forgetting);
    if (this.#folding) return;
    this.#folding = true;
    inSlices(foldNotes(this.#workspace.notesInOrder()), {
      slice: SEARCH_SLICE_MS,
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

  #onKey(event: KeyboardEvent): void {
    if (isComposing(event) || event.ctrlKey || event.metaKey || event.altKey) return;
    if (event.key === 'ArrowDown') this.#actions.focusList();
    else if (event.key === 'Enter') this.#actions.openFirst();
    else if (event.key === 'Escape' && !this.value) this.#actions.leave();
    else if (event.key === 'Escape') {
      this.value = '';
      this.#changed();
    } else return;
    event.preventDefault();
  }
}
