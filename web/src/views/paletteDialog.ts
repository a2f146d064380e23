import { counted, t } from '../i18n/language';
import type { Key } from '../i18n/catalogue';
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
  /** How deep it stands below others, from 1. */
  readonly level?: number;
  readonly run: () => void;
}

/** What a list of something else than commands says. */
export interface PaletteLook {
  readonly title: Key;
  readonly label: Key;
  /** The row to start at while nothing is typed. */
  readonly first: number;
  readonly outcome: (count: number, query: string) => string;
}

const LIST_ID = 'paletteList';

const ofCommands: PaletteLook = {
  title: 'cmd.palette',
  label: 'palette.label',
  first: 0,
  outcome: (count, query) => (count ? counted('palette.count', count) : t('palette.none', { query })),
};

/** A filter field above the list of commands; Enter runs the current one. The focus stays in the field. */
export function paletteDialog(
  find: (query: string) => ReadonlyArray<PaletteEntry>,
  onClose: () => void,
  { title, label, first, outcome: worded }: PaletteLook = ofCommands,
): void {
  let entries: ReadonlyArray<PaletteEntry> = [];
  let current = 0;
  const field = h('input', {
    class: 'palette-field',
    tLabel: label,
    tPlaceholder: label,
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
    tLabel: label,
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
    outcome.textContent = worded(entries.length, query.trim());
    point(query.trim() ? 0 : first);
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
    title,
    class: 'palette',
    content: [field, list, outcome],
    focus: field,
    onClose,
  });
  point(current);
}

function entryRow({ name, label, keys, marked, alias, level }: PaletteEntry): HTMLElement {
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
  if (level !== undefined) row.dataset.level = String(level);
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
