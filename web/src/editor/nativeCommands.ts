import { selectAll } from '@codemirror/commands';
import { type Extension, Prec } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { hasFocusInPage } from './undoReserve';

/**
 * Only the visible part of a long note exists in the DOM, so the web view's own "select all" would select
 * just that part. Both engines announce it with a selectstart event on the editable element itself; if a
 * pointer or key is down, it is some other selection.
 */
export function nativeSelectAll(): Extension {
  watchInput();
  return EditorView.domEventHandlers({
    selectstart(event, view) {
      if (event.target !== view.contentDOM || busy.pointer || busy.key) return false;
      event.preventDefault();
      return selectAll(view);
    },
  });
}

/** WebKit has one undo stack for the whole page; undo in a panel must not change the note. */
export const undoOnlyWithFocus: Extension = Prec.high(
  EditorView.domEventHandlers({
    beforeinput(event, view) {
      if (!event.inputType.startsWith('history') || hasFocusInPage(view)) return false;
      event.preventDefault();
      return true;
    },
  }),
);

const busy = { pointer: false, key: false };
let watching = false;

function watchInput(): void {
  if (watching) return;
  watching = true;
  const note = (type: string, change: Partial<typeof busy>) =>
    window.addEventListener(type, () => Object.assign(busy, change), { capture: true });
  note('pointerdown', { pointer: true });
  note('pointerup', { pointer: false });
  note('pointercancel', { pointer: false });
  note('keydown', { key: true });
  note('keyup', { key: false });
  note('blur', { pointer: false, key: false });
}
