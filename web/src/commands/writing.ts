import { gotoLine, openSearchPanel } from '@codemirror/search';
import { openReplace } from '../editor/findPanel';
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

/** The editor's own commands need an open note and a visible editor. */
function inText(context: Context, command: EditorCommand): void {
  if (!requireNote(context)) return;
  closeDialog();
  if (context.shell.preview.covers) closePreview(context);
  context.editor.run(command);
}
