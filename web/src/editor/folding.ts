import { codeFolding, foldAll, foldCode, foldGutter, unfoldAll, unfoldCode } from '@codemirror/language';
import type { Extension } from '@codemirror/state';
import type { KeyBinding } from '@codemirror/view';
import { t } from '../i18n/language';

/** The library's own keys belong to the menu, which walks the tabs with them. */
export const foldKeys: ReadonlyArray<KeyBinding> = [
  { key: 'Mod-Alt-[', run: foldCode },
  { key: 'Mod-Alt-]', run: unfoldCode },
  { key: 'Mod-Alt-Shift-[', run: foldAll },
  { key: 'Mod-Alt-Shift-]', run: unfoldAll },
];

/** How long a text may be for the marks at its edge: each asks how far its block reaches. */
const LONGEST_MARKED = 500_000;

/** Headings, lists and blocks of code fold by keys and, in a text that is not huge, at its edge. */
export function folding(length: number): Extension {
  return length > LONGEST_MARKED ? folds : [folds, marks];
}

const folds = codeFolding({
  placeholderDOM: (view, onclick) => {
    const button = document.createElement('button');
    button.type = 'button';
    button.className = 'fold-rest';
    button.textContent = '…';
    button.dataset.tLabel = 'fold.open';
    button.setAttribute('aria-label', t('fold.open'));
    button.addEventListener('click', (event) => {
      onclick(event);
      // The button had the focus and is gone now.
      view.focus();
    });
    return button;
  },
});

const marks = foldGutter({
  markerDOM: (open) => {
    const mark = document.createElement('span');
    mark.className = open ? 'fold-mark' : 'fold-mark is-folded';
    return mark;
  },
});
