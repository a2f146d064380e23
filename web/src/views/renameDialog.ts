import { h } from '../dom/elements';
import { isComposing } from '../keyboard/keys';
import { closeDialog, openDialog } from './dialog';

/** Asks for another name; an empty one is none. */
export function renameDialog(options: {
  readonly name: string;
  readonly onRename: (name: string) => void;
  readonly onClose: () => void;
}): void {
  const rename = () => {
    const name = field.value.trim();
    if (!name) {
      field.focus();
      return;
    }
    closeDialog();
    options.onRename(name);
  };
  const field = h('input', {
    class: 'rename-field',
    tLabel: 'rename.field',
    attrs: { type: 'text', maxlength: '200' },
    on: {
      keydown: (event) => {
        if (event.key !== 'Enter' || isComposing(event)) return;
        event.preventDefault();
        rename();
      },
    },
  });
  field.value = options.name;
  const action = h('button', {
    class: 'button primary',
    t: 'rename.do',
    attrs: { type: 'button' },
    on: { click: rename },
  });
  const cancel = h('button', { class: 'button', t: 'cancel', attrs: { type: 'button' }, on: { click: closeDialog } });
  openDialog({
    title: 'rename.title',
    class: 'rename',
    content: [field, h('div', { class: 'dialog-foot' }, cancel, action)],
    focus: field,
    onClose: options.onClose,
  });
  field.select();
}
