import { redo, undo } from '@codemirror/commands';
import { EditorView } from '@codemirror/view';
import { h } from '../dom/elements';

const FULL = 20;
const LOW = 5;

/**
 * The host's menu runs the web view's own undo and redo, which WebKit refuses while its undo stack is empty.
 * Changes made by the editor itself, such as pasting or continuing a list, add nothing to that stack. So a
 * reserve of undo steps is kept, created in an off-screen element; undoing one of them fires an event there,
 * which is forwarded to the focused editor.
 */
export function keepUndoReserve(): void {
  if (!isWebKit()) return;
  const element = makeElement();
  let left = 0;
  const fill = () => {
    const focused = document.activeElement as HTMLElement | null;
    element.focus({ preventScroll: true });
    getSelection()?.collapse(element, 0);
    for (; left < FULL; left++) document.execCommand('insertHTML', false, '.');
    const view = editorOf(focused);
    if (view) view.focus();
    else if (focused && focused !== document.body) focused.focus({ preventScroll: true });
    else element.blur();
  };
  element.addEventListener('beforeinput', (event) => {
    const back = event.inputType === 'historyUndo';
    if (!back && event.inputType !== 'historyRedo') return;
    event.preventDefault();
    left += back ? -1 : 1;
    const view = editorOf(document.activeElement);
    if (view) (back ? undo : redo)(view);
    // Refilling clears WebKit's redo stack, so wait until the reserve is nearly used up.
    if (left < LOW) setTimeout(fill);
  });
  if (document.readyState === 'complete') setTimeout(fill);
  else window.addEventListener('load', () => setTimeout(fill), { once: true });
}

/** Whether the editor has the focus within the page. The window's focus may be on the menu just used. */
export function hasFocusInPage(view: EditorView): boolean {
  return view.root.activeElement === view.contentDOM;
}

/** The editor whose text has the focus; its find panel does not count. */
function editorOf(element: Element | null): EditorView | null {
  const view = element instanceof HTMLElement ? EditorView.findFromDOM(element) : null;
  return view && hasFocusInPage(view) ? view : null;
}

function isWebKit(): boolean {
  return /AppleWebKit/.test(navigator.userAgent) && !/Chrom/.test(navigator.userAgent);
}

function makeElement(): HTMLElement {
  const element = h('div', {
    class: 'undo-reserve',
    attrs: { contenteditable: 'true', tabindex: '-1', 'aria-hidden': 'true' },
  });
  document.body.append(element);
  return element;
}
