import { h } from '../dom/elements';
import { counted, t } from '../i18n/language';

/** A place in a note, with the words around it. */
export interface FoundPlace {
  readonly id: string;
  readonly title: string;
  readonly before: string;
  readonly words: string;
  readonly after: string;
  readonly from: number;
  readonly to: number;
}

export interface BacklinksActions {
  /** The links that lead to the shown note. */
  links(): ReadonlyArray<FoundPlace>;
  /** Looks for mentions without a link; returns a cancel function. */
  findMentions(onDone: (found: ReadonlyArray<FoundPlace>) => void): () => void;
  open(place: FoundPlace): void;
  leave(): void;
}

/**
 * What other notes say about the shown one, below the text. Closed, it is one line with the number of notes, and absent
 * if there are none.
 */
export class BacklinksPanel {
  readonly element: HTMLElement;
  readonly #actions: BacklinksActions;
  readonly #head: HTMLButtonElement;
  readonly #body: HTMLElement;
  #isOpen = false;
  #count = 0;
  #hasNote = false;
  #cancel = (): void => undefined;

  constructor(actions: BacklinksActions) {
    this.#actions = actions;
    this.#head = h('button', {
      class: 'backlinks-head',
      attrs: { type: 'button', 'aria-controls': 'backlinks' },
      on: { click: () => this.toggle() },
    });
    this.#body = h('div', { class: 'backlinks-body', attrs: { id: 'backlinks' } });
    this.element = h(
      'section',
      {
        class: 'backlinks',
        tLabel: 'backlinks.label',
        on: {
          keydown: (event) => {
            if (event.key !== 'Escape') return;
            if (this.#isOpen) this.toggle();
            this.#actions.leave();
          },
        },
      },
      this.#head,
      this.#body,
    );
    this.#draw();
  }

  get isOpen(): boolean {
    return this.#isOpen;
  }

  /** Shows how many notes link to the shown one; null if there is no note, or not known yet. */
  show(count: number | null): void {
    this.#count = count ?? 0;
    this.#hasNote = count !== null;
    this.#draw();
  }

  toggle(): void {
    this.#isOpen = !this.#isOpen;
    this.#draw();
  }

  focus(): void {
    this.#head.focus();
  }

  relabel(): void {
    this.#draw();
  }

  #draw(): void {
    this.#cancel();
    this.element.hidden = !this.#hasNote || (this.#count === 0 && !this.#isOpen);
    this.#head.textContent = this.#count ? counted('backlinks.count', this.#count) : t('backlinks.none');
    this.#head.setAttribute('aria-expanded', String(this.#isOpen));
    this.#body.hidden = !this.#isOpen;
    if (!this.#isOpen || this.element.hidden) {
      this.#body.replaceChildren();
      return;
    }
    const isInside = this.#body.contains(document.activeElement);
    const mentions = h('div', { attrs: { 'aria-live': 'polite' } }, this.#mentionsButton());
    this.#body.replaceChildren(this.#list(this.#actions.links()), mentions);
    // The focused row is gone.
    if (isInside) this.#head.focus();
  }

  #mentionsButton(): HTMLElement {
    const button = h('button', {
      class: 'link-button',
      t: 'backlinks.findMentions',
      attrs: { type: 'button' },
      on: {
        click: () => {
          button.disabled = true;
          this.#cancel = this.#actions.findMentions((found) => this.#showMentions(button, found));
        },
      },
    });
    return button;
  }

  #showMentions(button: HTMLElement, found: ReadonlyArray<FoundPlace>): void {
    const head = h('p', { class: 'quiet', attrs: { tabindex: '-1' } });
    head.textContent = found.length ? counted('backlinks.mentions', found.length) : t('backlinks.noMentions');
    const list = this.#list(found);
    button.replaceWith(head, list);
    (list.querySelector('button') ?? head).focus();
  }

  #list(places: ReadonlyArray<FoundPlace>): HTMLElement {
    return h(
      'ul',
      { class: 'backlinks-list' },
      ...places.map((place) =>
        h(
          'li',
          {},
          h(
            'button',
            { class: 'backlink', attrs: { type: 'button' }, on: { click: () => this.#actions.open(place) } },
            h('strong', { attrs: { dir: 'auto' } }, place.title),
            ' ',
            h('span', { attrs: { dir: 'auto' } }, place.before, h('mark', {}, place.words), place.after),
          ),
        ),
      ),
    );
  }
}
