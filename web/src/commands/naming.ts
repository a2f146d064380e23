import { renameDialog } from '../views/renameDialog';
import { type Context, focusMain, requireNote, requireWritable } from './context';

/** Whether the title of the open note is a name that can be changed, and not its first line. */
export function isNamed({ workspace }: Context): boolean {
  return (workspace.activeNote?.name ?? null) !== null;
}

export function renameNote(context: Context): void {
  const { workspace } = context;
  const note = requireNote(context);
  if (!note || note.name === null || !requireWritable(context)) return;
  renameDialog({
    title: 'rename.title',
    label: 'rename.field',
    name: note.name,
    onRename: (name) => workspace.setName(note.id, name),
    onClose: () => focusMain(context),
  });
}

export function useHeading(context: Context): void {
  const note = requireNote(context);
  if (note && requireWritable(context)) context.workspace.setName(note.id, null);
}
