import { counted, t } from '../i18n/language';
import { fuzzyMatch } from '../text/fuzzy';
import { type Heading, headingsOf } from '../text/headings';
import { type PaletteEntry, paletteDialog } from '../views/paletteDialog';
import { type Context, focusMain } from './context';

/** As many rows as are drawn at once: those around the current heading, or the best matches. */
const SHOWN = 300;

/** Lists the headings of the shown note; the one that the caret is below comes first to the keys. */
export function showOutline(context: Context): void {
  const shown = context.editor.shownNote;
  if (!shown) return;
  const { doc, selection } = shown.state;
  const headings = shown.syntax === 'markdown' ? headingsOf(doc.iterLines()) : [];
  if (!headings.length) {
    context.shell.toasts.show(t('outline.empty'));
    return;
  }
  const current = Math.max(0, headings.filter(({ from }) => from <= selection.main.head).length - 1);
  const first = Math.max(0, Math.min(current - SHOWN / 2, headings.length - SHOWN));
  const jump = (from: number) => {
    if (context.shell.preview.mode === 'instead') context.shell.preview.show(null);
    focusMain(context);
    context.editor.select(from);
  };
  paletteDialog(
    (query) =>
      query.trim() ? matching(headings, query, jump) : headings.slice(first, first + SHOWN).map(rowFor([], jump)),
    () => focusMain(context),
    {
      title: 'outline.title',
      label: 'outline.label',
      first: current - first,
      outcome: (count, query) => (count ? counted('outline.count', count) : t('outline.none', { query })),
    },
  );
}

function matching(headings: ReadonlyArray<Heading>, query: string, jump: (from: number) => void): PaletteEntry[] {
  return headings
    .flatMap((heading) => {
      const match = fuzzyMatch(query, heading.title);
      return match ? [{ heading, match }] : [];
    })
    .sort((a, b) => b.match.score - a.match.score)
    .slice(0, SHOWN)
    .map(({ heading, match }) => rowFor(match.at, jump)(heading));
}

function rowFor(marked: ReadonlyArray<number>, jump: (from: number) => void): (heading: Heading) => PaletteEntry {
  return ({ title, level, from }) => ({
    name: `heading-${from}`,
    label: title,
    keys: '',
    marked,
    level,
    run: () => jump(from),
  });
}
