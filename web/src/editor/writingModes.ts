import { EditorState, type Extension, type Text } from '@codemirror/state';
import { Decoration, type DecorationSet, EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';

export interface WritingModes {
  /** Only the paragraph with the caret has its full colours. */
  readonly focusMode: boolean;
  /** The caret's line stays in the middle. */
  readonly typewriter: boolean;
}

export function writingModes({ focusMode, typewriter }: WritingModes): Extension {
  return [focusMode ? focusing : [], typewriter ? centring : []];
}

const current = Decoration.line({ class: 'cm-currentParagraph' });

const focusing: Extension = [
  EditorView.editorAttributes.of({ class: 'is-focusing' }),
  ViewPlugin.fromClass(
    class {
      decorations: DecorationSet;

      constructor(view: EditorView) {
        this.decorations = this.#mark(view);
      }

      update(update: ViewUpdate): void {
        const { docChanged, selectionSet, viewportChanged } = update;
        if (!docChanged && !selectionSet && !viewportChanged) return;
        if (!viewportChanged && this.#isSame(update)) this.decorations = this.decorations.map(update.changes);
        else this.decorations = this.#mark(update.view);
      }

      /** Whether the caret stays between the same lines, and none of them parts the paragraph anew. */
      #isSame({ startState, state }: ViewUpdate): boolean {
        const [before, after] = [startState, state].map((one) => one.doc.lineAt(one.selection.main.head));
        return (
          startState.doc.lines === state.doc.lines &&
          before?.number === after?.number &&
          before?.text.trim() !== '' &&
          after?.text.trim() !== ''
        );
      }

      #mark({ state, viewport }: EditorView): DecorationSet {
        const { doc, selection } = state;
        const [top, bottom] = [doc.lineAt(viewport.from).number, doc.lineAt(viewport.to).number];
        const line = doc.lineAt(selection.main.head).number;
        const [first, last] = paragraphAt(doc, line, top, bottom);
        const marks = [];
        for (let number = first; number <= last; number++) marks.push(current.range(doc.line(number).from));
        return Decoration.set(marks);
      }
    },
    { decorations: (plugin) => plugin.decorations },
  ),
];

/** The visible lines of the paragraph around a line. */
export function paragraphAt(doc: Text, line: number, top: number, bottom: number): [first: number, last: number] {
  if (line < top || line > bottom) return [line, line];
  const isWritten = (number: number) => doc.line(number).text.trim() !== '';
  let [first, last] = [line, line];
  if (!isWritten(line)) return [first, last];
  while (first > top && isWritten(first - 1)) first--;
  while (last < bottom && isWritten(last + 1)) last++;
  return [first, last];
}

/** What scrolls to the caret does so to the middle. A click does not move the text under the pointer. */
const centring: Extension = [
  EditorView.editorAttributes.of({ class: 'is-typewriter' }),
  EditorState.transactionExtender.of(({ scrollIntoView, newSelection }) =>
    scrollIntoView ? { effects: EditorView.scrollIntoView(newSelection.main, { y: 'center' }) } : null,
  ),
];
