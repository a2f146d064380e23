import { EditorSelection, EditorState, Text } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { htmlTag, t } from '../i18n/language';
import { baseExtensions } from './extensions';
import { syntaxExtensions } from './syntax';

export interface PracticeOptions {
  readonly parent: HTMLElement;
  readonly nonce: string;
  readonly reservedKeys: ReadonlyArray<string>;
  /** The id of the element with the instructions. */
  readonly describedBy: string;
  readonly onText: (text: string) => void;
}

/** A small editor with the main editor's keys, for throwaway text. */
export class PracticeEditor {
  readonly #options: PracticeOptions;
  readonly #view: EditorView;

  constructor(options: PracticeOptions) {
    this.#options = options;
    const extensions = EditorView.cspNonce.of(options.nonce);
    this.#view = new EditorView({ parent: options.parent, extensions });
  }

  /** Shows a text with the range between two offsets selected. */
  show(text: string, from: number, to: number): void {
    const { nonce, reservedKeys, describedBy, onText } = this.#options;
    const labels = EditorView.contentAttributes.of({
      'aria-label': t('practice.text'),
      'aria-describedby': describedBy,
      'aria-multiline': 'true',
      lang: htmlTag(),
      tabindex: '0',
    });
    this.#view.setState(
      EditorState.create({
        doc: text,
        selection: EditorSelection.single(from, to),
        extensions: [
          baseExtensions(reservedKeys, nonce),
          syntaxExtensions('markdown', Text.of(text.split('\n'))),
          labels,
          EditorView.updateListener.of((update) => {
            if (update.docChanged) onText(update.state.doc.toString());
          }),
        ],
      }),
    );
    // Tab moves the focus out of the text.
    this.#view.setTabFocusMode(true);
  }

  focus(): void {
    this.#view.focus();
  }

  destroy(): void {
    this.#view.destroy();
  }
}
