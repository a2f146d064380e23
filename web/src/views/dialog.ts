import type { Key } from '../i18n/catalogue';
import { h, iconButton } from '../dom/elements';

export interface DialogOptions {
  readonly title: Key;
  readonly class: string;
  readonly content: ReadonlyArray<Node>;
  /** Called once, however the dialog went away. */
  readonly onClose: () => void;
  readonly focus?: HTMLElement;
}

let current: HTMLDialogElement | null = null;
let serial = 0;

/** Opens a modal dialog in place of any other. The browser keeps the focus inside it. */
export function openDialog(options: DialogOptions): void {
  closeDialog();
  const titleId = `dialogTitle${++serial}`;
  const dialog = h(
    'dialog',
    { class: `dialog ${options.class}`, attrs: { 'aria-labelledby': titleId } },
    h(
      'header',
      { class: 'dialog-head' },
      h('h2', { t: options.title, attrs: { id: titleId } }),
      iconButton('close', 'close', () => dialog.close()),
    ),
    ...options.content,
  );
  dialog.addEventListener('close', () => finish(dialog, options.onClose));
  dialog.addEventListener('pointerdown', (event) => {
    if (event.target === dialog && isOutside(event, dialog)) dialog.close();
  });
  current = dialog;
  document.body.append(dialog);
  // What has the focus now would get it back from the browser, a text with the caret at its beginning.
  if (document.activeElement instanceof HTMLElement) document.activeElement.blur();
  dialog.showModal();
  (options.focus ?? dialog).focus();
}

export function closeDialog(): void {
  current?.close();
  // The close event comes later; what opens next must not wait for it.
  current?.dispatchEvent(new Event('close'));
}

/** The veil around a dialog reports its presses as the dialog's own. */
function isOutside({ clientX, clientY }: PointerEvent, dialog: HTMLElement): boolean {
  const { left, right, top, bottom } = dialog.getBoundingClientRect();
  return clientX < left || clientX > right || clientY < top || clientY > bottom;
}

function finish(dialog: HTMLDialogElement, onClose: () => void): void {
  if (!dialog.isConnected) return;
  if (current === dialog) current = null;
  dialog.remove();
  onClose();
}
