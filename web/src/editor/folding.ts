import { codeFolding, foldAll, foldCode, foldGutter, unfoldAll, unfoldCode } from '@codemirror/language';
import type { Extension } from '@codemirror/state';
import type { KeyBinding } from '@codemirror/view';
import { h } from '../dom/elements';

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
  placeholderDOM: (view, onclick) =>
    h(
      'button',
      {
        class: 'fold-rest',
        tLabel: 'fold.open',
        attrs: { type: 'button' },
        on: {
          click: (event) => {
            onclick(event);
            // The button had the focus and is gone now.
            view.focus();
          },
        },
      },
      '…',
    ),
});

const marks = foldGutter({
  markerDOM: (open) => h('span', { class: open ? 'fold-mark' : 'fold-mark is-folded' }),
});
