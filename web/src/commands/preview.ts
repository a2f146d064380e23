import { closeDialog } from '../views/dialog';
import type { PreviewMode, PreviewSource } from '../views/preview';
import { type Context, focusMain, requireNote } from './context';

/** Shows the preview this way, or puts it away when it is shown so already. */
export function togglePreview(context: Context, mode: PreviewMode): void {
  if (!requireNote(context)) return;
  closeDialog();
  const { preview } = context.shell;
  preview.show(preview.mode === mode ? null : mode);
  focusMain(context);
}

export function closePreview(context: Context): void {
  context.shell.preview.show(null);
  focusMain(context);
}

export function previewSource({ editor }: Context): PreviewSource | null {
  const { onShow } = editor;
  return (
    onShow && {
      text: onShow.state.doc,
      markdown: onShow.syntax === 'markdown',
      label: onShow.syntax,
      top: onShow.top,
    }
  );
}
