import { t } from '../i18n/language';
import type { Note } from '../state/model';
import { titleOf } from '../state/titleOf';
import type { MenuGroups, MenuItem } from '../views/menu';
import { type Context, focusMain, rememberPlace, requireWritable } from './context';
import { copyText } from './copies';
import { exportAsMarkdown } from './files';
import { exportBook, exportNotesAsJson } from './libraryOut';
import { deleteNote, openNote } from './notes';
import { tagNotes } from './tagNotes';

/** The menu of one or several rows in the list of notes. */
export function rowMenu(context: Context, ids: ReadonlyArray<string>): MenuGroups {
  const { workspace } = context;
  const [first] = ids;
  if (first === undefined) return [];
  const isOne = ids.length === 1;
  const isPinned = ids.every((id) => workspace.note(id)?.pinned);
  const item = (name: string, label: MenuItem['label'], run: () => void, disabled = false): MenuItem => {
    return { name, label, keys: '', disabled, run };
  };
  const pin = isOne ? (isPinned ? 'cmd.unpin' : 'cmd.pin') : isPinned ? 'rows.unpin' : 'rows.pin';
  const remove = isOne ? 'cmd.delete' : 'rows.delete';
  const notes = () => ids.flatMap((id) => workspace.note(id) ?? []);
  return [
    [
      ...(isOne ? [item('open', 'open', () => openNote(context, first))] : []),
      item('pin', pin, () => pinNotes(context, ids, !isPinned), workspace.readOnly),
      item('tag', 'rows.tag', () => tagNotes(context, ids), workspace.readOnly),
      ...(isOne ? [item('copyLink', 'rows.copyLink', () => void copyLink(context, first))] : []),
    ],
    [
      item('exportMarkdown', isOne ? 'cmd.exportMarkdown' : 'rows.exportBook', () => exportRows(context, notes())),
      item('exportJson', 'rows.exportJson', () => exportNotesAsJson(context, notes())),
    ],
    [item('delete', remove, () => deleteNotes(context, ids), workspace.readOnly)],
  ];
}

/** Deletes notes in one step, which one click undoes. */
export function deleteNotes(context: Context, ids: ReadonlyArray<string>): void {
  const [first] = ids;
  if (ids.length === 1 && first !== undefined) {
    deleteNote(context, first);
    return;
  }
  if (!requireWritable(context)) return;
  const { workspace, shell } = context;
  const { open, active } = workspace.tabs;
  const deleted = new Set(ids);
  const tabs = open.flatMap((id, index) => (deleted.has(id) ? [{ id, index }] : []));
  rememberPlace(context);
  workspace.deleteNotes(ids);
  focusMain(context);
  shell.toasts.show(t('rows.deleted', { n: ids.length }), {
    label: 'undo',
    run: () => {
      workspace.restoreNotes(ids);
      workspace.reopenTabs(tabs, active);
      focusMain(context);
    },
  });
}

function pinNotes(context: Context, ids: ReadonlyArray<string>, pinned: boolean): void {
  if (!requireWritable(context)) return;
  context.workspace.setPinned(ids, pinned);
  const one = pinned ? t('note.pinned') : t('note.unpinned');
  const many = t(pinned ? 'rows.pinned' : 'rows.unpinned', { n: ids.length });
  context.shell.toasts.show(ids.length === 1 ? one : many);
}

function exportRows(context: Context, notes: ReadonlyArray<Note>): void {
  const [first = null] = notes;
  if (notes.length === 1) exportAsMarkdown(context, first);
  else exportBook(context, notes);
}

async function copyLink(context: Context, id: string): Promise<void> {
  const note = context.workspace.note(id);
  const title = (note && titleOf(note)) || t('untitled');
  await copyText(context, `[[${title}]]`, t('rows.linkCopied'));
}
