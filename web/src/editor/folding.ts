import { codeFolding, foldAll, foldCode, unfoldAll, unfoldCode } from '@codemirror/language';
import type { Extension } from '@codemirror/state';
import type { KeyBinding } from '@codemirror/view';
import { h } from '../dom/elements';
import { foldMarks } from './foldMarks';

/** The library's default keys belong to the host's menu, which uses them to switch tabs. */
export const foldKeys: ReadonlyArray<KeyBinding> = [
  { key: 'Mod-Alt-[', run: foldCode },
  { key: 'Mod-Alt-]', run: unfoldCode },
  { key: 'Mod-Alt-Shift-[', run: foldAll },
  { key: 'Mod-Alt-Shift-]', run: unfoldAll },
];

/** The longest text with fold markers in the gutter, in characters: each has to find where its block ends. */
const LONGEST_WITH_GUTTER = 500_000;

/** Folds headings, lists and code blocks by key and, unless the text is huge, in the gutter. */
export function folding(length: number): Extension {
  return length > LONGEST_WITH_GUTTER ? folds : [folds, foldMarks];
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
            // The button had the focus and has been removed.
            view.focus();
          },
        },
      },
      '…',
    ),
});
