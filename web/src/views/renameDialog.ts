import { h } from '../dom/elements';
import { t } from '../i18n/language';
import { isComposing } from '../keyboard/keys';
import { closeDialog, openDialog } from './dialog';

export interface RenameOptions {
  readonly name: string;
  readonly isValid: (name: string) => boolean;
  readonly onRename: (name: string) => void;
  readonly onClose: () => void;
}

/** Asks for the new name of a tag. */
export function renameDialog({ name, isValid, onRename, onClose }: RenameOptions): void {
  const problem = h('p', { class: 'quiet', attrs: { id: 'renameProblem', role: 'status' } });
  const save = () => {
    const newName = field.value.trim().replace(/^#/, '');
    if (!isValid(newName)) {
      problem.textContent = t('tags.badName');
      field.setAttribute('aria-invalid', 'true');
      field.focus();
      return;
    }
    closeDialog();
    if (newName !== name) onRename(newName);
  };
  const field = h('input', {
    class: 'palette-field',
    tLabel: 'tags.newName',
    attrs: { type: 'text', autocomplete: 'off', spellcheck: 'false', 'aria-describedby': 'renameProblem' },
    on: {
      input: () => {
        problem.textContent = '';
        field.removeAttribute('aria-invalid');
      },
      keydown: (event) => {
        if (event.key !== 'Enter' || isComposing(event)) return;
        event.preventDefault();
        save();
      },
    },
  });
  field.value = name;
  openDialog({
    title: 'cmd.renameTag',
    class: 'rename',
    content: [
      field,
      problem,
      h(
        'div',
        { class: 'dialog-foot' },
        h('span', { class: 'quiet' }, t('tags.renameWhat', { name })),
        h('button', { class: 'button primary', t: 'tags.rename', attrs: { type: 'button' }, on: { click: save } }),
      ),
    ],
    focus: field,
    onClose,
  });
  field.select();
}
