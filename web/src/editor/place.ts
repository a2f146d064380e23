import { EditorSelection, type StateEffect } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import type { Place } from '../state/model';

/** What the editor keeps free above a line that it scrolls to. */
export const TOP_MARGIN = 24;

/** Where a note is being read and written. */
export function placeOf(view: EditorView): Place {
  const { anchor, head } = view.state.selection.main;
  return { anchor, head, top: topOf(view) };
}

export function selectionAt({ anchor, head }: Place, length: number): EditorSelection {
  return EditorSelection.single(Math.min(anchor, length), Math.min(head, length));
}

/** Puts what stood at the upper edge there again. */
export function scrollTo({ top }: Place, length: number): StateEffect<unknown>[] {
  return top > 0 ? [EditorView.scrollIntoView(Math.min(top, length), { y: 'start', yMargin: 0 })] : [];
}

/** Measured as far below the edge as a line scrolled to comes to lie, so that a place stays put. */
function topOf(view: EditorView): number {
  if (view.scrollDOM.scrollTop === 0) return 0;
  const { top } = view.scrollDOM.getBoundingClientRect();
  const { left } = view.contentDOM.getBoundingClientRect();
  return view.posAtCoords({ x: left + 1, y: top + TOP_MARGIN + 1 }, false);
}
