import { syntaxOf } from '../editor/languages';
import { counted, t } from '../i18n/language';
import { addedTag, removedTag } from '../text/addTag';
import { fuzzyMatch } from '../text/fuzzy';
import { bestMatches } from '../text/nameMatches';
import { isTagName } from '../text/noteMarks';
import { tagKey } from '../text/titleKey';
import { type PaletteEntry, paletteDialog } from '../views/paletteDialog';
import { type Context, focusMain, requireWritable } from './context';
import { rewriteNotes } from './rewrite';

const SHOWN = 300;

/** Asks for a tag, which can be a new one, and adds it to the texts of notes. */
export function tagNotes(context: Context, ids: ReadonlyArray<string>): void {
  if (!requireWritable(context)) return;
  let found: ReadonlyArray<PaletteEntry> = [];
  paletteDialog(
    (query) => {
      const name = query.trim().replace(/^#/, '');
      found = knownTags(context, ids, name);
      const isNew = isTagName(name) && !context.index.tags.some((tag) => tagKey(tag.name) === tagKey(name));
      const create = { name: 'create', label: t('rows.tagNew', { name }), keys: '', marked: [] };
      return isNew ? [...found, { ...create, run: () => tag(context, ids, name) }] : found;
    },
    () => focusMain(context),
    {
      title: 'rows.tagTitle',
      label: 'rows.tagLabel',
      first: 0,
      outcome: (count, query) => {
        if (found.length) return counted('tags.found', found.length);
        return count || !query ? t('rows.tagType') : t('tags.badName');
      },
    },
  );
}

function knownTags(context: Context, ids: ReadonlyArray<string>, query: string): PaletteEntry[] {
  const { tags } = context.index;
  const counts = new Map(tags.map(({ name, count }) => [name, String(count)]));
  return bestMatches(query, tags, SHOWN).map((name) => ({
    name: `tag-${name}`,
    label: name,
    keys: counts.get(name) ?? '',
    marked: fuzzyMatch(query, name)?.at ?? [],
    run: () => tag(context, ids, name),
  }));
}

/** Only Markdown has tags. */
function tag(context: Context, ids: ReadonlyArray<string>, name: string): void {
  const { workspace, shell } = context;
  const notes = ids.flatMap((id) => workspace.note(id) ?? []).filter((note) => syntaxOf(note) === 'markdown');
  const { count, undo } = rewriteNotes(context, notes, {
    edits: (text) => addedTag(text, name),
    back: (text) => removedTag(text, name),
  });
  if (count) shell.toasts.show(counted('rows.tagged', count, { name }), { label: 'undo', run: undo });
  else shell.toasts.show(t('rows.notTagged', { name }));
}
