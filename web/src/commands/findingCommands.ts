import type { Sort } from '../state/settings';
import { closeDialog } from '../views/dialog';
import { switcherDialog } from '../views/switcherDialog';
import type { CommandTable } from './command';
import { type Context, focusMain, requireWritable } from './context';
import { openNote } from './notes';

/** Commands that find notes and order them. */
export const findingCommands = {
  switcher: { label: 'cmd.switcher', key: 'Mod-Shift-o', listens: true, run: showSwitcher },
  sortEdited: { label: 'cmd.sortEdited', run: (context) => sortBy(context, 'edited') },
  sortCreated: { label: 'cmd.sortCreated', run: (context) => sortBy(context, 'created') },
  sortTitle: { label: 'cmd.sortTitle', run: (context) => sortBy(context, 'title') },
} as const satisfies CommandTable;

export function sortBy({ workspace }: Context, sort: Sort): void {
  workspace.setSettings({ sort });
}

function showSwitcher(context: Context): void {
  closeDialog();
  const { workspace } = context;
  switcherDialog(
    workspace,
    { open: (id) => openNote(context, id), create: (title) => createTitled(context, title) },
    () => focusMain(context),
  );
}

/** Creates a note with this title and the caret below it. */
function createTitled(context: Context, title: string): void {
  if (!requireWritable(context)) return;
  const { workspace } = context;
  const text = `${title}\n`;
  const { id } = workspace.addNote({ text });
  workspace.setPlace(id, { anchor: text.length, head: text.length, top: 0 });
  openNote(context, id);
}
