import { EditorSelection, type StateEffect } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import type { Place } from '../state/model';

/** Space the editor keeps above a line it scrolls to, in pixels. */
export const TOP_MARGIN = 24;

/** The selection and scroll position. */
export function placeOf(view: EditorView): Place {
  const { anchor, head } = view.state.selection.main;
  return { anchor, head, top: topOf(view) };
}

export function selectionAt({ anchor, head }: Place, length: number): EditorSelection {
  return EditorSelection.single(Math.min(anchor, length), Math.min(head, length));
}

/** Scrolls the remembered position back to the top edge. */
export function scrollTo({ top }: Place, length: number): StateEffect<unknown>[] {
  return top > 0 ? [EditorView.scrollIntoView(Math.min(top, length), { y: 'start', yMargin: 0 })] : [];
}

/**
 * Measured one margin below the edge, where a scrolled-to line ends up, so restoring a place does not shift
 * it.
 */
function topOf(view: EditorView): number {
  if (view.scrollDOM.scrollTop === 0) return 0;
  const { top } = view.scrollDOM.getBoundingClientRect();
  const { left } = view.contentDOM.getBoundingClientRect();
  return view.posAtCoords({ x: left + 1, y: top + TOP_MARGIN + 1 }, false);
}
