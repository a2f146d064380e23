import { inEveryLanguage, t } from '../i18n/language';
import { type FuzzyMatch, fuzzyMatch, wordMatch } from '../text/fuzzy';
import { type PaletteEntry, paletteDialog } from '../views/paletteDialog';
import { aliases } from './aliases';
import { type CommandTable, isAvailable, labelOf, shownKey } from './command';
import { type Context, focusMain } from './context';

/** Opens the palette with every command that is available now. */
export function showPalette(context: Context, table: CommandTable): void {
  paletteDialog(
    (query) => paletteEntries(context, table, query),
    () => focusMain(context),
  );
}

/**
 * The commands whose names or other words match, best match first; without a query all of them, in table order.
 */
export function paletteEntries(context: Context, table: CommandTable, query: string): ReadonlyArray<PaletteEntry> {
  return Object.entries(table)
    .filter(([name, command]) => name !== 'palette' && isAvailable(command, context))
    .flatMap(([name, command]) => {
      const label = t(labelOf(command, context));
      const match = fuzzyMatch(query, label);
      const alias = aliasFor(name, query);
      const best = alias && (!match || alias.match.score > match.score) ? alias : null;
      if (!match && !best) return [];
      const entry = { name, label, keys: shownKey(command, context), run: () => command.run(context) };
      const score = (best?.match ?? match)?.score ?? 0;
      return [
        best
          ? { score, entry: { ...entry, marked: [], alias: { text: best.text, marked: best.match.at } } }
          : { score, entry: { ...entry, marked: match?.at ?? [] } },
      ];
    })
    .sort((a, b) => (query.trim() ? b.score - a.score : 0))
    .map(({ entry }) => entry);
}

/** The other word for a command that a query begins best. */
function aliasFor(name: string, query: string): { readonly text: string; readonly match: FuzzyMatch } | null {
  const key = aliases[name];
  if (!key || !query.trim()) return null;
  let best: { readonly text: string; readonly match: FuzzyMatch } | null = null;
  for (const text of inEveryLanguage(key).flatMap((words) => words.split(', '))) {
    const match = wordMatch(query, text);
    if (match && (!best || match.score > best.match.score)) best = { text, match };
  }
  return best;
}
