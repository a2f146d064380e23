import type { Key } from '../i18n/catalogue';
import { currentLanguage, isLanguage, type Language, languages, t } from '../i18n/language';
import { type Theme, themes } from '../state/settings';
import type { SaveStatus } from '../state/saver';
import { h, iconButton } from '../dom/elements';

export interface StatusBarActions {
  retry(): void;
  chooseLanguage(language: Language): void;
  chooseTheme(theme: Theme): void;
  openGuide(): void;
}

const labels: Record<SaveStatus | 'readonly', Key> = {
  saved: 'save.saved',
  unsaved: 'save.unsaved',
  saving: 'save.saving',
  failed: 'save.failed',
  readonly: 'save.readonly',
};

/** The bar at the bottom: save state, language, guide. */
export class StatusBar {
  readonly element: HTMLElement;
  readonly #state: HTMLElement;
  readonly #source = h('span', { class: 'note-source quiet', attrs: { id: 'noteSource' } });
  readonly #count = h('span', { class: 'text-count', attrs: { id: 'textCount' } });
  readonly #retry: HTMLElement;
  readonly #language: HTMLSelectElement;
  readonly #theme: HTMLSelectElement;

  constructor(actions: StatusBarActions) {
    this.#state = h('span', { class: 'save-state', attrs: { id: 'saveState' } });
    this.#retry = h('button', {
      class: 'link-button',
      t: 'save.retry',
      attrs: { type: 'button' },
      on: { click: () => actions.retry() },
    });
    this.#retry.hidden = true;
    this.#language = h(
      'select',
      {
        class: 'choice language',
        tLabel: 'language.label',
        on: {
          change: () => {
            if (isLanguage(this.#language.value)) actions.chooseLanguage(this.#language.value);
          },
        },
      },
      ...languages.map((code) => h('option', { t: `language.${code}`, attrs: { value: code } })),
    );
    this.#theme = h(
      'select',
      {
        class: 'choice theme',
        tLabel: 'theme.label',
        on: {
          change: () => {
            const theme = themes.find((one) => one === this.#theme.value);
            if (theme) actions.chooseTheme(theme);
          },
        },
      },
      ...themes.map((theme) => h('option', { t: `theme.${theme}`, attrs: { value: theme } })),
    );
    this.element = h(
      'footer',
      { class: 'status' },
      this.#state,
      this.#retry,
      this.#source,
      this.#count,
      this.#theme,
      this.#language,
      iconButton('help', 'cmd.guide', () => actions.openGuide()),
    );
    this.relabel();
  }

  show(status: SaveStatus | 'readonly'): void {
    this.#state.dataset.state = status;
    this.#state.dataset.t = labels[status];
    this.#state.textContent = t(labels[status]);
    this.#retry.hidden = status !== 'failed';
  }

  showTheme(theme: Theme): void {
    this.#theme.value = theme;
  }

  /** The file that the open note is a copy of. */
  showSource(name: string | null): void {
    this.#source.textContent = name === null ? '' : t('note.source', { name });
  }

  /** The word count, as worded by the caller; empty if no note is open. */
  showCount(text: string): void {
    if (this.#count.textContent !== text) this.#count.textContent = text;
  }

  relabel(): void {
    this.#language.value = currentLanguage();
  }
}
