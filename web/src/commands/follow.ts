import type { Target } from '../editor/targets';
import { t } from '../i18n/language';
import { linkable } from '../text/titleKey';
import { closeDialog } from '../views/dialog';
import { openAddress } from '../views/openAddress';
import { type Context, requireWritable } from './context';
import { openNote } from './notes';

/** Follows what is at the caret. */
export function followAtCaret(context: Context): void {
  const { target } = context.editor;
  if (target) follow(context, target);
  else context.shell.toasts.show(t('link.none'));
}

export function follow(context: Context, { kind, value }: Target): void {
  if (context.shell.closing.begun) return;
  if (kind === 'tag') showTagged(context, value);
  else if (kind === 'note') openTitled(context, value);
  else if (!openAddress(value)) context.shell.toasts.show(t('link.notAllowed'));
}

/** Lists the notes with a tag. */
export function showTagged({ workspace, shell }: Context, name: string): void {
  closeDialog();
  if (!workspace.settings.sidebarOpen) workspace.setSettings({ sidebarOpen: true });
  shell.sidebar.search(`tag:${name}`);
}

/** Opens the note with a title; one that is missing is created, with the title as its first line. */
function openTitled(context: Context, title: string): void {
  context.index.changed();
  const note = context.index.noteTitled(title);
  if (note) {
    openNote(context, note.id);
    return;
  }
  const name = linkable(title);
  if (!name || !requireWritable(context)) return;
  const { id } = context.workspace.addNote({ text: `# ${name}\n\n` });
  openNote(context, id);
  context.editor.select(name.length + 4);
  context.shell.toasts.show(t('link.created', { title: name }));
}
