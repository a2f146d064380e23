import { closeDialog } from '../views/dialog';
import type { PreviewMode, PreviewSource } from '../views/previewPane';
import { type Context, focusMain, requireNote } from './context';

/** Opens the preview in this mode, or closes it if that mode is already open. */
export function togglePreview(context: Context, mode: PreviewMode): void {
  if (!requireNote(context)) return;
  closeDialog();
  setMode(context, context.shell.preview.mode === mode ? null : mode);
}

export function closePreview(context: Context): void {
  setMode(context, null);
}

function setMode(context: Context, mode: PreviewMode | null): void {
  const { workspace, shell } = context;
  shell.preview.show(mode);
  const previewBeside = mode === 'beside';
  if (previewBeside !== workspace.settings.previewBeside) workspace.setSettings({ previewBeside });
  focusMain(context);
}

export function previewSource({ editor }: Context): PreviewSource | null {
  const { shownNote } = editor;
  return (
    shownNote && {
      text: shownNote.state.doc,
      markdown: shownNote.syntax === 'markdown',
      label: shownNote.syntax,
      top: shownNote.top,
    }
  );
}
