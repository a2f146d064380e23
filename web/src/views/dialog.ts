import type { Key } from '../i18n/catalogue';
import { h, iconButton } from '../dom/elements';
import { isComposing } from '../keyboard/keys';

export interface DialogOptions {
  readonly title: Key;
  readonly class: string;
  readonly content: ReadonlyArray<Node>;
  /** Called exactly once, whichever way the dialog was closed. */
  readonly onClose: () => void;
  readonly focus?: HTMLElement;
}

let current: HTMLDialogElement | null = null;
let serial = 0;
let floating: HTMLElement | null = null;

/** Keeps an element above everything. What is outside a modal dialog is hidden and inert, so it moves inside. */
export function floatAbove(element: HTMLElement): void {
  floating = element;
  (current ?? document.body).append(element);
}

/** Opens a modal dialog, replacing any other. The browser keeps the focus inside it. */
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
  // The browser closes a dialog immediately but fires the close event later; keys pressed in between would be
  // lost.
  dialog.addEventListener('keydown', (event) => {
    if (event.key !== 'Escape' || isComposing(event) || event.defaultPrevented) return;
    event.preventDefault();
    closeDialog();
  });
  dialog.addEventListener('pointerdown', (event) => {
    if (event.target === dialog && isOutside(event, dialog)) dialog.close();
  });
  current = dialog;
  document.body.append(dialog);
  // Otherwise the browser would return the focus to this element on closing, in a text with the caret at the
  // start.
  if (document.activeElement instanceof HTMLElement) document.activeElement.blur();
  dialog.showModal();
  if (floating) dialog.append(floating);
  (options.focus ?? dialog).focus();
}

export function closeDialog(): void {
  current?.close();
  // The close event is asynchronous; whatever opens next must not wait for it.
  current?.dispatchEvent(new Event('close'));
}

/** Clicks on the backdrop are reported with the dialog as their target. */
function isOutside({ clientX, clientY }: PointerEvent, dialog: HTMLElement): boolean {
  const { left, right, top, bottom } = dialog.getBoundingClientRect();
  return clientX < left || clientX > right || clientY < top || clientY > bottom;
}

function finish(dialog: HTMLDialogElement, onClose: () => void): void {
  if (!dialog.isConnected) return;
  if (current === dialog) current = null;
  if (floating && dialog.contains(floating)) document.body.append(floating);
  dialog.remove();
  onClose();
}
