import { gotoLine, openSearchPanel } from '@codemirror/search';
import { openReplace } from '../editor/findPanel';
import { counted, t } from '../i18n/language';
import { closeDialog } from '../views/dialog';
import { type Context, requireNote } from './context';
import { closePreview } from './preview';

type EditorCommand = Parameters<Context['editor']['run']>[0];

export function find(context: Context): void {
  inText(context, openSearchPanel);
}

export function replace(context: Context): void {
  inText(context, openReplace);
}

export function goToLine(context: Context): void {
  inText(context, gotoLine);
}

const said = {
  focusMode: ['focusMode.on', 'focusMode.off'],
  typewriter: ['typewriter.on', 'typewriter.off'],
} as const;

/** Turns one of the ways of writing on or off, and says which. */
export function toggleSetting({ workspace, shell }: Context, name: keyof typeof said): void {
  const isOn = !workspace.settings[name];
  workspace.setSettings({ [name]: isOn });
  shell.toasts.show(t(said[name][isOn ? 0 : 1]), undefined, name);
}

/** Says what a paste or a drop had to leave out. */
export function reportLost({ shell }: Context, [name = '', ...others]: ReadonlyArray<string>): void {
  shell.toasts.show(others.length ? counted('paste.lostMore', others.length, { name }) : t('paste.lost', { name }));
}

/** The editor's own commands need an open note and a visible editor. */
export function inText(context: Context, command: EditorCommand): void {
  if (!requireNote(context)) return;
  closeDialog();
  if (context.shell.preview.covers) closePreview(context);
  context.editor.run(command);
}
