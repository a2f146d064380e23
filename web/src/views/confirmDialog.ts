import type { Key } from '../i18n/catalogue';
import { closeDialog, openDialog } from './dialog';
import { h } from '../dom/elements';

/** Asks for confirmation before an action that is hard to undo. */
export function confirmDialog(options: {
  readonly title: Key;
  readonly question: string;
  readonly why: Key;
  readonly action: Key;
  /** The action cannot be undone at all, so a hasty Enter must not confirm it. */
  readonly careful?: boolean;
  readonly onYes: () => void;
  readonly onClose: () => void;
}): void {
  let agreed = false;
  const yes = h('button', {
    class: options.careful ? 'button danger' : 'button primary',
    t: options.action,
    attrs: { type: 'button' },
    on: {
      click: () => {
        agreed = true;
        closeDialog();
      },
    },
  });
  const cancel = h('button', {
    class: 'button',
    t: 'cancel',
    attrs: { type: 'button' },
    on: { click: closeDialog },
  });
  openDialog({
    title: options.title,
    class: 'confirm',
    content: [
      h('p', { class: 'question' }, options.question),
      h('p', { class: 'quiet', t: options.why }),
      h('div', { class: 'dialog-foot' }, cancel, yes),
    ],
    focus: options.careful ? cancel : yes,
    onClose: () => {
      if (agreed) options.onYes();
      options.onClose();
    },
  });
}
