import { redo, undo } from '@codemirror/commands';
import { EditorView } from '@codemirror/view';
import { h } from '../dom/elements';

const FULL = 20;
const LOW = 5;

/**
 * The host's menu runs the web view's own undo and redo, and WebKit refuses them while its own
 * list of steps is empty. What the editor inserts by itself, as when pasting or continuing a
 * list, makes no such step. So some are kept in reserve, made in an element off the screen;
 * taking one back is announced there, and is passed on to the editor that is written in.
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
    // Filling ends what WebKit could redo, so it waits until there is hardly anything left.
    if (left < LOW) setTimeout(fill);
  });
  if (document.readyState === 'complete') setTimeout(fill);
  else window.addEventListener('load', () => setTimeout(fill), { once: true });
}

/** Whether the editor has the page's focus. The window's own may be with the menu that was just chosen from. */
export function isWrittenIn(view: EditorView): boolean {
  return view.root.activeElement === view.contentDOM;
}

/** The editor whose text has the focus; what stands beside the text, as its find panel, does not count. */
function editorOf(element: Element | null): EditorView | null {
  const view = element instanceof HTMLElement ? EditorView.findFromDOM(element) : null;
  return view && isWrittenIn(view) ? view : null;
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
