import { counted, t } from '../i18n/language';
import { h } from '../dom/elements';
import { choiceDialog } from './choiceDialog';

export interface PaletteEntry {
  readonly name: string;
  readonly label: string;
  readonly keys: string;
  /** Offsets of the matched characters in the label. */
  readonly marked: ReadonlyArray<number>;
  readonly run: () => void;
}

/** The list of commands. */
export function paletteDialog(find: (query: string) => ReadonlyArray<PaletteEntry>, onClose: () => void): void {
  choiceDialog({
    title: 'cmd.palette',
    label: 'palette.label',
    prefix: 'palette',
    find: (query, show) => {
      show(find(query).map((entry) => ({ ...entry, aside: h('kbd', {}, entry.keys) })));
      return () => undefined;
    },
    outcome: ({ length }, query) => (length ? counted('palette.count', length) : t('palette.none', { query })),
    onClose,
  });
}
