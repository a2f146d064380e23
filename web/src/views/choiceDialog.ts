import { isComposing } from '../keyboard/keys';
import { closeDialog, openDialog } from './dialog';
import { h } from '../dom/elements';
import type { Key } from '../i18n/catalogue';

export interface Choice {
  readonly name: string;
  readonly label: string;
  /** What stands at the end of the row. */
  readonly aside: Node;
  /** Offsets of the matched characters in the label. */
  readonly marked: ReadonlyArray<number>;
  /** The other word for it that matched instead of the label. */
  readonly alias?: { readonly text: string; readonly marked: ReadonlyArray<number> };
  /** How deep it stands below others, from 1. */
  readonly level?: number;
  readonly run: () => void;
}

export interface ChoiceOptions {
  readonly title: Key;
  readonly label: Key;
  /** Starts the ids of the list and its rows. */
  readonly prefix: string;
  /** The row to start at while nothing is typed. */
  readonly first?: number;
  /** Hands over what there is to choose from, at once or later; returns a function that cancels that. */
  readonly find: (query: string, show: (choices: ReadonlyArray<Choice>) => void) => () => void;
  readonly outcome: (choices: ReadonlyArray<Choice>, query: string) => string;
  readonly onClose: () => void;
}

/** A filter field above a list; Enter runs the current row. The focus stays in the field. */
export function choiceDialog({ title, label, prefix, first = 0, find, outcome, onClose }: ChoiceOptions): void {
  let choices: ReadonlyArray<Choice> = [];
  let current = 0;
  let isFinding = false;
  let chooseFirst = false;
  let cancel = (): void => undefined;
  const listId = `${prefix}List`;
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
      'aria-controls': listId,
      'aria-autocomplete': 'list',
    },
  });
  const list = h('div', {
    class: 'palette-list',
    tLabel: label,
    attrs: { id: listId, role: 'listbox', tabindex: '-1' },
  });
  const summary = h('p', { class: 'quiet palette-outcome', attrs: { role: 'status' } });

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
  const show = (found: ReadonlyArray<Choice>) => {
    isFinding = false;
    choices = found;
    list.replaceChildren(...choices.map((choice) => choiceRow(choice, prefix)));
    list.hidden = choices.length === 0;
    summary.textContent = outcome(choices, field.value.trim());
    point(field.value.trim() ? 0 : first);
    if (chooseFirst) choose(0);
  };
  const search = () => {
    cancel();
    isFinding = true;
    chooseFirst = false;
    cancel = find(field.value, show);
  };
  const choose = (index: number) => {
    const choice = choices[index];
    if (!choice) return;
    closeDialog();
    choice.run();
  };
  field.addEventListener('input', search);
  field.addEventListener('keydown', (event) => {
    if (isComposing(event) || event.ctrlKey || event.metaKey || event.altKey) return;
    const { length } = choices;
    const target = { ArrowDown: current + 1, ArrowUp: current - 1 }[event.key];
    if (target !== undefined && length) point((target + length) % length);
    else if (event.key === 'PageDown') point(Math.min(current + 8, length - 1));
    else if (event.key === 'PageUp') point(Math.max(current - 8, 0));
    // What is listed still belongs to what was typed before.
    else if (event.key === 'Enter' && isFinding) chooseFirst = true;
    else if (event.key === 'Enter') choose(current);
    else return;
    event.preventDefault();
  });
  list.addEventListener('click', (event) => {
    const row = (event.target as Element).closest('.palette-row');
    choose(row ? [...list.children].indexOf(row) : -1);
  });
  search();
  openDialog({
    title,
    class: 'palette',
    content: [field, list, summary],
    focus: field,
    onClose: () => {
      cancel();
      onClose();
    },
  });
  // What is not shown cannot be scrolled into view.
  point(current);
}

function choiceRow({ name, label, aside, marked, alias, level }: Choice, prefix: string): HTMLElement {
  const row = h(
    'div',
    { class: 'palette-row', attrs: { id: `${prefix}-${name}`, role: 'option' } },
    h(
      'span',
      { attrs: { dir: 'auto' } },
      ...withMarks(label, new Set(marked)),
      ...(alias ? [' ', h('span', { class: 'palette-alias' }, ...withMarks(alias.text, new Set(alias.marked)))] : []),
    ),
    aside,
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
