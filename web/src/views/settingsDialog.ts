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

/**
 * The settings, each with its choices. What is chosen counts at once. Returns what shows their values anew: they also
 * change by keys and in the host's menu.
 */
export function settingsDialog(
  settings: ReadonlyArray<Setting>,
  onClose: () => void,
): (settings: ReadonlyArray<Setting>) => void {
  const rows = settings.map(row);
  openDialog({
    title: 'cmd.settings',
    class: 'settings',
    content: [h('div', { class: 'setting-rows' }, ...rows.map(({ element }) => element))],
    ...(rows[0] ? { focus: rows[0].select } : {}),
    onClose,
  });
  return (changed) => {
    rows.forEach(({ select }, index) => {
      const setting = changed[index];
      if (setting) show(select, setting);
    });
  };
}

function row({ name, label, value, choices, choose }: Setting): { element: HTMLElement; select: HTMLSelectElement } {
  const select = h('select', {
    class: `choice ${name}`,
    attrs: { id: `setting-${name}` },
    on: { change: () => choose(select.value) },
  });
  show(select, { value, choices });
  const caption = h('label', { t: label, attrs: { for: select.id } });
  return { element: h('div', { class: 'setting' }, caption, select), select };
}

function show(select: HTMLSelectElement, { value, choices }: Pick<Setting, 'value' | 'choices'>): void {
  // Nothing changes in a box that is open, unless its choices do.
  const shown = [...select.options].map((option) => option.value);
  if (shown.join() !== choices.map((choice) => choice.value).join()) select.replaceChildren(...choices.map(option));
  if (select.value !== value) select.value = value;
}

function option({ value, label }: SettingChoice): HTMLOptionElement {
  if (typeof label === 'string') return h('option', { t: label, attrs: { value } });
  return h('option', { attrs: { value } }, label.text);
}
