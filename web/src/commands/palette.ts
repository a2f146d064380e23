import { t } from '../i18n/language';
import { fuzzyMatch } from '../text/fuzzy';
import { type PaletteEntry, paletteDialog } from '../views/paletteDialog';
import { type CommandTable, isAvailable, labelOf, shownKey } from './command';
import { type Context, focusMain } from './context';

/** Opens the palette with every command that is available now. */
export function showPalette(context: Context, table: CommandTable): void {
  paletteDialog(
    (query) => paletteEntries(context, table, query),
    () => focusMain(context),
  );
}

/** The commands whose names match, best match first; without a query all of them, in table order. */
export function paletteEntries(context: Context, table: CommandTable, query: string): ReadonlyArray<PaletteEntry> {
  return Object.entries(table)
    .filter(([name, command]) => name !== 'palette' && isAvailable(command, context))
    .flatMap(([name, command]) => {
      const label = t(labelOf(command, context));
      const match = fuzzyMatch(query, label);
      if (!match) return [];
      const keys = shownKey(command, context);
      return [{ name, label, keys, match, run: () => command.run(context) }];
    })
    .sort((a, b) => (query.trim() ? b.match.score - a.match.score : 0))
    .map(({ match, ...entry }) => ({ ...entry, marked: match.at }));
}
