import { counted, t } from '../i18n/language';
import type { Key } from '../i18n/catalogue';
import { h } from '../dom/elements';
import { type Choice, choiceDialog } from './choiceDialog';

/** A row whose end says keys or a count. */
export interface PaletteEntry extends Omit<Choice, 'aside'> {
  readonly keys: string;
}

/** What a list of something else than commands says. */
export interface PaletteLook {
  readonly title: Key;
  readonly label: Key;
  /** The row to start at while nothing is typed. */
  readonly first: number;
  readonly outcome: (count: number, query: string) => string;
}

const ofCommands: PaletteLook = {
  title: 'cmd.palette',
  label: 'palette.label',
  first: 0,
  outcome: (count, query) => (count ? counted('palette.count', count) : t('palette.none', { query })),
};

/** A list of what can be found at once, by default of commands. */
export function paletteDialog(
  find: (query: string) => ReadonlyArray<PaletteEntry>,
  onClose: () => void,
  { title, label, first, outcome }: PaletteLook = ofCommands,
): void {
  choiceDialog({
    title,
    label,
    prefix: 'palette',
    first,
    find: (query, show) => {
      show(find(query).map((entry) => ({ ...entry, aside: h('kbd', {}, entry.keys) })));
      return () => undefined;
    },
    outcome: ({ length }, query) => outcome(length, query),
    onClose,
  });
}
