import type { Text } from '@codemirror/state';
import { Decoration, EditorView, type ViewUpdate } from '@codemirror/view';
import { type Span, visibleMarks } from './visibleMarks';

const CHECKED_CHARACTERS = 400;
/** How many items and rows without a letter follow the line above them. */
const CHECKED_LINES = 20;
const firstLetter = /\p{L}/u;
const rightToLeft =
  /[\p{Script=Hebrew}\p{Script=Arabic}\p{Script=Syriac}\p{Script=Thaana}\p{Script=Nko}\p{Script=Adlam}]/u;
/** An item without a letter yet, and a row of a table without one. */
const begunItem = /^[\s>]*(?:[-*+]|\d{1,9}[.)]|>|\|)[^\p{L}]*$/u;
/** The letter of a ticked box is not one of the text. */
const tickedBox = /^([\s>]*(?:[-*+]|\d{1,9}[.)])\s+)\[[xX]\]/;
const reversed = Decoration.line({ attributes: { dir: 'rtl' } });

/** Whether a line's first letter belongs to a right-to-left script. */
export function runsLeftwards(text: string): boolean {
  const letter = firstLetter.exec(withoutTick(text.slice(0, CHECKED_CHARACTERS)))?.[0];
  return letter !== undefined && rightToLeft.test(letter);
}

function withoutTick(start: string): string {
  return start.replace(tickedBox, '$1');
}

/**
 * Whether a line runs leftwards. An item that has no letter yet runs as the one above, so it does not jump with the
 * first letter, and so does a row of a table without letters, such as the one below its head.
 */
export function lineRunsLeftwards(doc: Text, number: number): boolean {
  for (let above = number; above > 0 && number - above <= CHECKED_LINES; above--) {
    const { from, to } = doc.line(above);
    const start = doc.sliceString(from, Math.min(to, from + CHECKED_CHARACTERS));
    if (!begunItem.test(withoutTick(start))) return runsLeftwards(start);
  }
  return false;
}

/** Sets each line's direction by its first letter. */
export const lineDirections = [
  EditorView.perLineTextDirection.of(true),
  visibleMarks({
    mark: ({ doc }, { from, to }, add) => {
      for (let at = from; at <= to; ) {
        const line = doc.lineAt(at);
        if (lineRunsLeftwards(doc, line.number)) add(line.from, line.from, reversed);
        at = line.to + 1;
      }
    },
    changed: begunItemsBelow,
  }),
];

/** The begun items that follow what an update changed, and so its direction. */
function begunItemsBelow({ docChanged, changes, state: { doc } }: ViewUpdate): Span[] {
  const spans: Span[] = [];
  if (!docChanged) return spans;
  changes.iterChangedRanges((_fromOld, _toOld, _from, to) => {
    const first = doc.lineAt(to).number;
    for (let next = first + 1; next <= Math.min(doc.lines, first + CHECKED_LINES); next++) {
      const line = doc.line(next);
      if (!begunItem.test(withoutTick(line.text.slice(0, CHECKED_CHARACTERS)))) break;
      spans.push({ from: line.from, to: line.to });
    }
  });
  return spans;
}
