import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';
import type { SaveStatus } from '../state/saver';
import { h, iconButton } from '../dom/elements';

export interface StatusBarActions {
  retry(): void;
  showSettings(): void;
  openGuide(): void;
}

const labels: Record<SaveStatus | 'readonly', Key> = {
  saved: 'save.saved',
  unsaved: 'save.unsaved',
  saving: 'save.saving',
  failed: 'save.failed',
  readonly: 'save.readonly',
};

/** The bar at the bottom: save state, word count, settings, guide. */
export class StatusBar {
  readonly element: HTMLElement;
  readonly #state: HTMLElement;
  readonly #source = h('span', { class: 'note-source quiet', attrs: { id: 'noteSource' } });
  readonly #count = h('span', { class: 'text-count', attrs: { id: 'textCount' } });
  readonly #retry: HTMLElement;

  constructor(actions: StatusBarActions) {
    this.#state = h('span', { class: 'save-state', attrs: { id: 'saveState' } });
    this.#retry = h('button', {
      class: 'link-button',
      t: 'save.retry',
      attrs: { type: 'button' },
      on: { click: () => actions.retry() },
    });
    this.#retry.hidden = true;
    this.element = h(
      'footer',
      { class: 'status' },
      this.#state,
      this.#retry,
      this.#source,
      this.#count,
      iconButton('settings', 'cmd.settings', () => actions.showSettings()),
      iconButton('help', 'cmd.guide', () => actions.openGuide()),
    );
  }

  show(status: SaveStatus | 'readonly'): void {
    this.#state.dataset.state = status;
    this.#state.dataset.t = labels[status];
    this.#state.textContent = t(labels[status]);
    this.#retry.hidden = status !== 'failed';
  }

  /** The file that the open note is a copy of. */
  showSource(name: string | null): void {
    this.#source.textContent = name === null ? '' : t('note.source', { name });
  }

  /** The word count, as worded by the caller; empty if no note is open. */
  showCount(text: string): void {
    if (this.#count.textContent !== text) this.#count.textContent = text;
  }
}
