import { t } from '../i18n/language';
import type { Note } from '../state/model';
import { titleOf } from '../state/titleOf';
import { linkable } from '../text/titleKey';
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
  const link = linkTo(workspace.note(first));
  return [
    [
      ...(isOne ? [item('open', 'open', () => openNote(context, first))] : []),
      item('pin', pin, () => pinNotes(context, ids, !isPinned), workspace.readOnly),
      item('tag', 'rows.tag', () => tagNotes(context, ids), workspace.readOnly),
      ...(isOne ? [item('copyLink', 'rows.copyLink', () => void copyLink(context, link), !link)] : []),
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
  const { workspace, shell } = context;
  const changed = ids.filter((id) => workspace.note(id)?.pinned === !pinned);
  workspace.setPinned(changed, pinned);
  if (ids.length === 1) {
    shell.toasts.show(t(pinned ? 'note.pinned' : 'note.unpinned'));
    return;
  }
  const message = t(pinned ? 'rows.pinned' : 'rows.unpinned', { n: ids.length });
  shell.toasts.show(message, { label: 'undo', run: () => workspace.setPinned(changed, !pinned) });
}

function exportRows(context: Context, notes: ReadonlyArray<Note>): void {
  const [first = null] = notes;
  if (notes.length === 1) exportAsMarkdown(context, first);
  else exportBook(context, notes);
}

/** As it is written in a text; empty if the note has no title to call it by. */
function linkTo(note: Note | null): string {
  const title = note ? linkable(titleOf(note)) : '';
  return title && `[[${title}]]`;
}

async function copyLink(context: Context, link: string): Promise<void> {
  if (link) await copyText(context, link, t('rows.linkCopied'));
  else context.shell.toasts.show(t('rows.noLink'));
}
