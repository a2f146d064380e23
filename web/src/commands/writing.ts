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

/** Says what a paste or a drop had to leave out. */
export function reportLost({ shell }: Context, [name = '', ...others]: ReadonlyArray<string>): void {
  shell.toasts.show(others.length ? counted('paste.lostMore', others.length, { name }) : t('paste.lost', { name }));
}

/** The editor's own commands need an open note and a visible editor. */
function inText(context: Context, command: EditorCommand): void {
  if (!requireNote(context)) return;
  closeDialog();
  if (context.shell.preview.mode === 'instead') closePreview(context);
  context.editor.run(command);
}
