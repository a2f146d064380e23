import { h } from '../dom/elements';
import type { Key } from '../i18n/catalogue';
import { openDialog } from './dialog';

export interface SettingChoice {
  readonly value: string;
  /** A text of the catalogue, or one that is the same in every language. */
  readonly label: Key | { readonly text: string };
}

export interface Setting {
  readonly name: string;
  readonly label: Key;
  readonly value: string;
  readonly choices: ReadonlyArray<SettingChoice>;
  readonly choose: (value: string) => void;
}

/** The settings, each with its choices. What is chosen counts at once. */
export function settingsDialog(settings: ReadonlyArray<Setting>, onClose: () => void): void {
  const rows = settings.map(row);
  openDialog({
    title: 'cmd.settings',
    class: 'settings',
    content: [h('div', { class: 'setting-rows' }, ...rows.map(({ element }) => element))],
    ...(rows[0] ? { focus: rows[0].select } : {}),
    onClose,
  });
}

function row({ name, label, value, choices, choose }: Setting): { element: HTMLElement; select: HTMLSelectElement } {
  const select = h(
    'select',
    { class: `choice ${name}`, attrs: { id: `setting-${name}` }, on: { change: () => choose(select.value) } },
    ...choices.map((choice) => option(choice)),
  );
  select.value = value;
  const caption = h('label', { t: label, attrs: { for: select.id } });
  return { element: h('div', { class: 'setting' }, caption, select), select };
}

function option({ value, label }: SettingChoice): HTMLOptionElement {
  if (typeof label === 'string') return h('option', { t: label, attrs: { value } });
  return h('option', { attrs: { value } }, label.text);
}
