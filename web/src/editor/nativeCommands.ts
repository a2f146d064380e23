import { selectAll } from '@codemirror/commands';
import { type Extension, Prec } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { isWrittenIn } from './undoReserve';

/**
 * Only the part of a long note that is on screen exists as elements, so the web view's own
 * "select all" would take no more than that part. Both engines announce it by a selection start
 * on the editable element itself; a pointer or a key at work means another selection.
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

/** WebKit keeps one list of undo steps for the page; a panel's undo must not change the note. */
export const undoOnlyWithFocus: Extension = Prec.high(
  EditorView.domEventHandlers({
    beforeinput(event, view) {
      if (!event.inputType.startsWith('history') || isWrittenIn(view)) return false;
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
