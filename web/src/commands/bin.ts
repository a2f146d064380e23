import { counted, t } from '../i18n/language';
import { titleOf } from '../state/titleOf';
import { binDialog } from '../views/binDialog';
import { confirmDialog } from '../views/confirmDialog';
import { type Context, focusMain, requireWritable } from './context';
import { openNote } from './notes';

/** Lists deleted notes, to restore them or delete them for good. */
export function showBin(context: Context): void {
  const { workspace } = context;
  binDialog({
    workspace,
    onRestore: (id) => restore(context, id),
    onEmpty: () => confirmEmptyBin(context),
    onClose: () => focusMain(context),
  });
}

function restore(context: Context, id: string): void {
  const { workspace, shell } = context;
  if (!requireWritable(context) || !workspace.restoreNote(id)) return;
  openNote(context, id);
  const note = workspace.note(id);
  shell.toasts.show(t('bin.restored', { title: (note && titleOf(note)) || t('untitled') }));
}

/** Emptying the bin cannot be undone, so this asks first, and Enter alone does not confirm. */
function confirmEmptyBin(context: Context): void {
  const { workspace, shell } = context;
  if (!requireWritable(context)) return;
  confirmDialog({
    title: 'bin.emptyTitle',
    question: counted('bin.emptyAsk', workspace.bin.length),
    why: 'bin.emptyWhy',
    action: 'bin.emptyDo',
    careful: true,
    onYes: () => {
      workspace.emptyBin();
      shell.toasts.show(t('bin.emptied'));
    },
    onClose: () => focusMain(context),
  });
}
