import { inEveryLanguage, t } from '../i18n/language';
import { type FuzzyMatch, fuzzyMatch, wordMatch } from '../text/fuzzy';
import { type PaletteEntry, paletteDialog } from '../views/paletteDialog';
import { aliases } from './aliases';
import { type Command, type CommandTable, isAvailable, labelOf, shownKey } from './command';
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
      const alias = aliasFor(name, command, context, query);
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

interface Alias {
  readonly text: string;
  readonly match: FuzzyMatch;
}

/** What another word scores less than the name, which is what the user reads; one of another language still less. */
const OTHER_WORD = 0.3;
const OTHER_LANGUAGE = 0.8;

/** The other word for a command that a query begins best; its names in the other languages are some, too. */
function aliasFor(name: string, command: Command, context: Context, query: string): Alias | null {
  if (!query.trim()) return null;
  const key = aliases[name];
  const [, ...names] = inEveryLanguage(labelOf(command, context));
  const [own = '', ...others] = key ? inEveryLanguage(key) : [];
  let best: Alias | null = null;
  const consider = (words: ReadonlyArray<string>, less: number) => {
    for (const text of words) {
      const match = wordMatch(query, text);
      const score = (match?.score ?? 0) - less;
      if (match && (!best || score > best.match.score)) best = { text, match: { ...match, score } };
    }
  };
  consider(own.split(', '), OTHER_WORD);
  consider([...names, ...others.flatMap((words) => words.split(', '))], OTHER_LANGUAGE);
  return best;
}
