import { h } from '../dom/elements';
import { t } from '../i18n/language';
import { hasMod, hasOtherMod } from '../keyboard/keys';
import type { Workspace } from '../state/workspace';
import { closeDialog, openDialog } from './dialog';

/** The quick capture dialog. What is typed goes into the workspace immediately. */
export function captureDialog(options: {
  readonly workspace: Workspace;
  readonly saveKey: string;
  readonly onSave: () => void;
  readonly onClose: () => void;
}): void {
  const { workspace } = options;
  const save = () => {
    workspace.setCaptureDraft(field.value);
    if (!field.value.trim()) {
      field.focus();
      return;
    }
    options.onSave();
    closeDialog();
  };
  const field = h('textarea', {
    class: 'capture-field',
    tLabel: 'capture.title',
    tPlaceholder: 'capture.placeholder',
    attrs: { rows: '6', spellcheck: 'true' },
    on: {
      input: () => workspace.setCaptureDraft(field.value),
      keydown: (event) => {
        if (event.key !== 'Enter' || !hasMod(event) || hasOtherMod(event)) return;
        event.preventDefault();
        save();
      },
    },
  });
  field.value = workspace.captureDraft;
  openDialog({
    title: 'capture.title',
    class: 'capture',
    content: [
      field,
      h(
        'div',
        { class: 'dialog-foot' },
        h('span', { class: 'quiet' }, t('capture.hint', { key: options.saveKey })),
        h('button', {
          class: 'button primary',
          t: 'capture.save',
          attrs: { type: 'button' },
          on: { click: save },
        }),
      ),
    ],
    focus: field,
    onClose: options.onClose,
  });
  field.setSelectionRange(field.value.length, field.value.length);
}
