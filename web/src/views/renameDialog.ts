import { h } from '../dom/elements';
import type { Key } from '../i18n/catalogue';
import { isComposing } from '../keyboard/keys';
import { closeDialog, openDialog } from './dialog';

export interface RenameOptions {
  readonly title: Key;
  readonly label: Key;
  readonly name: string;
  /** What will be changed. */
  readonly explanation?: string;
  /** What is wrong with a name, or null. */
  readonly problemOf?: (name: string) => string | null;
  readonly onRename: (name: string) => void;
  readonly onClose: () => void;
}

/** Asks for another name; an empty one is none. */
export function renameDialog(options: RenameOptions): void {
  const { title, label, name, explanation = '', problemOf = () => null, onRename, onClose } = options;
  const problem = h('p', { class: 'quiet', attrs: { id: 'renameProblem', role: 'status' } });
  const rename = () => {
    const newName = field.value.trim();
    const found = newName ? problemOf(newName) : '';
    if (found !== null) {
      problem.textContent = found;
      field.setAttribute('aria-invalid', 'true');
      field.focus();
      return;
    }
    closeDialog();
    if (newName !== name) onRename(newName);
  };
  const field = h('input', {
    class: 'palette-field',
    tLabel: label,
    attrs: {
      type: 'text',
      autocomplete: 'off',
      spellcheck: 'false',
      maxlength: '200',
      'aria-describedby': 'renameProblem',
    },
    on: {
      input: () => {
        problem.textContent = '';
        field.removeAttribute('aria-invalid');
      },
      keydown: (event) => {
        if (event.key !== 'Enter' || isComposing(event)) return;
        event.preventDefault();
        rename();
      },
    },
  });
  field.value = name;
  openDialog({
    title,
    class: 'rename',
    content: [
      field,
      problem,
      h(
        'div',
        { class: 'dialog-foot' },
        h('span', { class: 'quiet grow' }, explanation),
        h('button', { class: 'button', t: 'cancel', attrs: { type: 'button' }, on: { click: closeDialog } }),
        h('button', { class: 'button primary', t: 'rename.do', attrs: { type: 'button' }, on: { click: rename } }),
      ),
    ],
    focus: field,
    onClose,
  });
  field.select();
}
