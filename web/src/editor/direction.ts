import { Decoration, EditorView } from '@codemirror/view';
import { visibleMarks } from './visibleMarks';

const CHECKED_CHARACTERS = 400;
const firstLetter = /\p{L}/u;
const rightToLeft =
  /[\p{Script=Hebrew}\p{Script=Arabic}\p{Script=Syriac}\p{Script=Thaana}\p{Script=Nko}\p{Script=Adlam}]/u;
const reversed = Decoration.line({ attributes: { dir: 'rtl' } });

/** Whether a line's first letter belongs to a right-to-left script. */
export function runsLeftwards(text: string): boolean {
  const letter = firstLetter.exec(text.slice(0, CHECKED_CHARACTERS))?.[0];
  return letter !== undefined && rightToLeft.test(letter);
}

/** Sets each line's direction by its first letter. */
export const lineDirections = [
  EditorView.perLineTextDirection.of(true),
  visibleMarks({
    mark: ({ doc }, { from, to }, add) => {
      for (let at = from; at <= to; ) {
        const line = doc.lineAt(at);
        const start = doc.sliceString(line.from, Math.min(line.to, line.from + CHECKED_CHARACTERS));
        if (runsLeftwards(start)) add(line.from, line.from, reversed);
        at = line.to + 1;
      }
    },
  }),
];
