import { h } from '../dom/elements';
import type { Key } from '../i18n/catalogue';
import { openDialog } from './dialog';
import type { Practice } from './practice';

export interface GuideSection {
  readonly title: Key;
  readonly rows: ReadonlyArray<GuideRow>;
}

/** A command with its key, or where else to find it. */
export type GuideRow =
  | { readonly label: Key; readonly keys: string }
  | { readonly label: Key; readonly elsewhere: Key };

/** The exercises and the table of keys. */
export function guideDialog(sheet: Practice, sections: ReadonlyArray<GuideSection>, onClose: () => void): void {
  const blocks = sections.map(({ title, rows }) =>
    h(
      'section',
      {},
      h('h3', { t: title }),
      h(
        'dl',
        {},
        ...rows.map((row) =>
          h(
            'div',
            { class: 'guide-row' },
            h('dt', { t: row.label }),
            h('dd', {}, 'keys' in row ? h('kbd', {}, row.keys) : h('kbd', { t: row.elsewhere })),
          ),
        ),
      ),
    ),
  );
  openDialog({
    title: 'cmd.guide',
    class: 'wide',
    content: [
      h(
        'div',
        { class: 'guide', tLabel: 'cmd.guide', attrs: { role: 'group', tabindex: '0' } },
        sheet.element,
        ...blocks,
        h('p', { class: 'quiet', t: 'guide.bin' }),
      ),
    ],
    onClose,
  });
  sheet.focus();
}
