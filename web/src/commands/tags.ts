import type { Key } from '../i18n/catalogue';
import { counted, t } from '../i18n/language';
import { fuzzyMatch } from '../text/fuzzy';
import { isTagName } from '../text/noteMarks';
import { tagEdits } from '../text/renames';
import type { MenuGroups } from '../views/menu';
import { paletteDialog } from '../views/paletteDialog';
import { renameDialog } from '../views/renameDialog';
import { type Context, focusMain, requireWritable } from './context';
import { showTagged } from './follow';
import { rewriteNotes } from './rewrite';

const SHOWN = 300;

/** Asks which tag is to be renamed, unless the caret is on one, and then for its new name. */
export function renameTag(context: Context): void {
  if (!requireWritable(context)) return;
  const { index, editor, shell } = context;
  const { target } = editor;
  if (target?.kind === 'tag') {
    askForName(context, target.value);
    return;
  }
  if (!index.tags.length) {
    shell.toasts.show(t('tags.none'));
    return;
  }
  paletteDialog(
    (query) =>
      index.tags
        .flatMap(({ name, count }) => {
          const match = fuzzyMatch(query, name);
          return match ? [{ name, count, match }] : [];
        })
        .sort((a, b) => (query.trim() ? b.match.score - a.match.score : 0))
        .slice(0, SHOWN)
        .map(({ name, count, match }) => ({
          name: `tag-${name}`,
          label: name,
          keys: String(count),
          marked: match.at,
          run: () => askForName(context, name),
        })),
    () => focusMain(context),
    {
      title: 'tags.renameTitle',
      label: 'tags.choose',
      first: 0,
      outcome: (count, query) => (count ? counted('tags.found', count) : t('tags.notFound', { query })),
    },
  );
}

/** The menu of a tag in the tree. */
export function tagMenu(context: Context, name: string): MenuGroups {
  const item = (id: string, label: Key, disabled: boolean, run: () => void) => ({
    name: id,
    label,
    keys: '',
    disabled,
    run,
  });
  const { readOnly } = context.workspace;
  return [
    [
      item('showTag', 'tags.show', false, () => showTagged(context, name)),
      item('renameTag', 'tags.rename', readOnly, () => requireWritable(context) && askForName(context, name)),
    ],
  ];
}

function askForName(context: Context, name: string): void {
  renameDialog({
    title: 'tags.renameTitle',
    label: 'tags.newName',
    name,
    explanation: t('tags.renameWhat', { name }),
    problemOf: (newName) => (isTagName(bare(newName)) ? null : t('tags.badName')),
    onRename: (newName) => rename(context, name, bare(newName)),
    onClose: () => focusMain(context),
  });
}

/** As it is typed in a text, or without the sign. */
function bare(name: string): string {
  return name.replace(/^#/, '');
}

function rename(context: Context, name: string, newName: string): void {
  const { index, shell } = context;
  index.whenRead(() => {
    const { count, undo } = rewriteNotes(context, index.tagged(name), {
      edits: (text) => tagEdits(text, name, newName),
      back: (text) => tagEdits(text, newName, name),
    });
    shell.toasts.show(counted('tags.renamed', count), { label: 'undo', run: undo });
  });
}
