import { EditorSelection, EditorState } from '@codemirror/state';
import { EditorView, layer, rectangularSelection, RectangleMarker } from '@codemirror/view';

/**
 * Multiple carets. The main one stays native, because input methods and dead keys need that; only the others
 * are drawn, below the text so it stays legible.
 */
export const multipleCursors = [
  EditorState.allowMultipleSelections.of(true),
  EditorView.clickAddsSelectionRange.of((event) => event.altKey && !event.shiftKey),
  rectangularSelection({ eventFilter: (event) => event.altKey && event.shiftKey && event.button === 0 }),
  layer({
    above: false,
    class: 'cm-otherCursors',
    update: (update) => update.docChanged || update.selectionSet || update.geometryChanged,
    markers: (view) => {
      const { ranges, main } = view.state.selection;
      return ranges.flatMap((range) => {
        if (range === main) return [];
        const caret = caretAt(view, range.head);
        return range.empty ? caret : [...RectangleMarker.forRange(view, 'cm-otherSelection', range), ...caret];
      });
    },
  }),
];

function caretAt(view: EditorView, head: number): readonly RectangleMarker[] {
  return RectangleMarker.forRange(view, 'cm-otherCursor', EditorSelection.cursor(head));
}
