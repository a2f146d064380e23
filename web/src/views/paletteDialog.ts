import { counted, t } from '../i18n/language';
import { isComposing } from '../keyboard/keys';
import { closeDialog, openDialog } from './dialog';
import { h } from '../dom/elements';

export interface PaletteEntry {
  readonly name: string;
  readonly label: string;
  readonly keys: string;
  /** Offsets of the matched characters in the label. */
  readonly marked: ReadonlyArray<number>;
  /** The other word for it that matched instead of the label. */
  readonly alias?: { readonly text: string; readonly marked: ReadonlyArray<number> };
  readonly run: () => void;
}

const LIST_ID = 'paletteList';

/** A filter field above the list of commands; Enter runs the current one. The focus stays in the field. */
export function paletteDialog(find: (query: string) => ReadonlyArray<PaletteEntry>, onClose: () => void): void {
  let entries: ReadonlyArray<PaletteEntry> = [];
  let current = 0;
  const field = h('input', {
    class: 'palette-field',
    tLabel: 'palette.label',
    tPlaceholder: 'palette.label',
    attrs: {
      role: 'combobox',
      type: 'text',
      autocomplete: 'off',
      spellcheck: 'false',
      'aria-expanded': 'true',
      'aria-controls': LIST_ID,
      'aria-autocomplete': 'list',
    },
  });
  const list = h('div', {
    class: 'palette-list',
    tLabel: 'palette.label',
    attrs: { id: LIST_ID, role: 'listbox', tabindex: '-1' },
  });
  const outcome = h('p', { class: 'quiet palette-outcome', attrs: { role: 'status' } });

  const point = (index: number) => {
    current = index;
    [...list.children].forEach((row, at) => {
      row.setAttribute('aria-selected', String(at === index));
    });
    const row = list.children[index];
    if (row) field.setAttribute('aria-activedescendant', row.id);
    else field.removeAttribute('aria-activedescendant');
    row?.scrollIntoView({ block: 'nearest' });
  };
  const draw = () => {
    const query = field.value;
    entries = find(query);
    list.replaceChildren(...entries.map(entryRow));
    list.hidden = entries.length === 0;
    outcome.textContent = entries.length
      ? counted('palette.count', entries.length)
      : t('palette.none', { query: query.trim() });
    point(0);
  };
  const choose = (index: number) => {
    const entry = entries[index];
    if (!entry) return;
    closeDialog();
    entry.run();
  };
  field.addEventListener('input', draw);
  field.addEventListener('keydown', (event) => {
    if (isComposing(event) || event.ctrlKey || event.metaKey || event.altKey) return;
    const { length } = entries;
    const target = { ArrowDown: current + 1, ArrowUp: current - 1 }[event.key];
    if (target !== undefined && length) point((target + length) % length);
    else if (event.key === 'PageDown') point(Math.min(current + 8, length - 1));
    else if (event.key === 'PageUp') point(Math.max(current - 8, 0));
    else if (event.key === 'Enter') choose(current);
    else return;
    event.preventDefault();
  });
  list.addEventListener('click', (event) => {
    const row = (event.target as Element).closest('.palette-row');
    choose(row ? [...list.children].indexOf(row) : -1);
  });
  draw();
  openDialog({
    title: 'cmd.palette',
    class: 'palette',
    content: [field, list, outcome],
    focus: field,
    onClose,
  });
}

function entryRow({ name, label, keys, marked, alias }: PaletteEntry): HTMLElement {
  const row = h(
    'div',
    { class: 'palette-row', attrs: { id: `palette-${name}`, role: 'option' } },
    h(
      'span',
      {},
      ...withMarks(label, new Set(marked)),
      ...(alias ? [' ', h('span', { class: 'palette-alias' }, ...withMarks(alias.text, new Set(alias.marked)))] : []),
    ),
    h('kbd', {}, keys),
  );
  row.dataset.command = name;
  return row;
}

function withMarks(label: string, marked: ReadonlySet<number>): Array<Node | string> {
  const parts: Array<Node | string> = [];
  let offset = 0;
  for (const char of label) {
    parts.push(marked.has(offset) ? h('mark', {}, char) : char);
    offset += char.length;
  }
  return parts;
}
