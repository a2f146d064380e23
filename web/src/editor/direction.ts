import type { Range } from '@codemirror/state';
import { Decoration, type DecorationSet, EditorView, ViewPlugin } from '@codemirror/view';

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
  ViewPlugin.fromClass(
    class {
      decorations: DecorationSet;

      constructor(view: EditorView) {
        this.decorations = decorate(view);
      }

      update(update: { docChanged: boolean; viewportChanged: boolean; view: EditorView }): void {
        if (update.docChanged || update.viewportChanged) this.decorations = decorate(update.view);
      }
    },
    { decorations: (plugin) => plugin.decorations },
  ),
];

function decorate({ state, visibleRanges }: EditorView): DecorationSet {
  const out: Array<Range<Decoration>> = [];
  let done = -1;
  for (const { from, to } of visibleRanges) {
    for (let at = from; at <= to; ) {
      const line = state.doc.lineAt(at);
      const start = state.sliceDoc(line.from, Math.min(line.to, line.from + CHECKED_CHARACTERS));
      if (line.from > done && runsLeftwards(start)) out.push(reversed.range(line.from));
      done = line.from;
      at = line.to + 1;
    }
  }
  return Decoration.set(out);
}
