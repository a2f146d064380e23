import { counted, t } from '../i18n/language';
import { type CloseScope, HISTORY, neighbour, tabsInScope } from '../state/tabRow';
import { closeDialog } from '../views/dialog';
import { confirmDialog } from '../views/confirmDialog';
import { overviewDialog } from '../views/overviewDialog';
import { type Context, focusMain } from './context';
import { openNote } from './notes';

export function closeTab(context: Context, id: string): void {
  context.workspace.closeTabs([id]);
  focusMain(context);
}

export function closeCurrentTab(context: Context): void {
  closeDialog();
  const { active } = context.workspace.tabs;
  if (active !== null) closeTab(context, active);
}

/** Asks only when closing more tabs than can be reopened. */
export function requestCloseTabs(context: Context, scope: CloseScope, from?: string): void {
  const { workspace, shell } = context;
  const ids = tabsInScope(workspace.tabs, scope, from);
  if (!ids.length) {
    closeDialog();
    shell.toasts.show(t('tabs.nothingToClose'));
    return;
  }
  if (ids.length <= HISTORY) {
    closeDialog();
    closeWithUndo(context, ids);
    return;
  }
  confirmDialog({
    title: 'tabs.closeDo',
    question: counted('tabs.closeAsk', ids.length),
    why: 'tabs.closeWhy',
    action: 'tabs.closeDo',
    onYes: () => workspace.closeTabs(ids),
    onClose: () => focusMain(context),
  });
}

function closeWithUndo(context: Context, ids: ReadonlyArray<string>): void {
  const { workspace, shell } = context;
  const { open, active } = workspace.tabs;
  const closed = open.flatMap((id, index) => (ids.includes(id) ? { id, index } : []));
  workspace.closeTabs(ids);
  focusMain(context);
  shell.toasts.show(counted('tabs.closed', ids.length), {
    label: 'undo',
    isMoot: () => !workspace.tabs.closed.some(({ id }) => ids.includes(id)),
    run: () => {
      workspace.reopenTabs(closed, active);
      focusMain(context);
    },
  });
}

export function reopenClosedTab(context: Context): void {
  closeDialog();
  const { workspace, shell } = context;
  if (workspace.reopenTab() === null) shell.toasts.show(t('tabs.nothingToReopen'));
  focusMain(context);
}

export function switchTab(context: Context, step: 1 | -1): void {
  closeDialog();
  const id = neighbour(context.workspace.tabs, step);
  if (id !== null) openNote(context, id);
}

/** The focus stays where it is: in the text, or on the tab. */
export function moveTab({ workspace }: Context, id: string, index: number): void {
  workspace.moveTab(id, index);
}

export function moveActiveTab(context: Context, step: 1 | -1): void {
  const { open, active } = context.workspace.tabs;
  if (active !== null) moveTab(context, active, open.indexOf(active) + step);
}

export function showOverview(context: Context): void {
  const { workspace } = context;
  overviewDialog(
    workspace,
    {
      activate: (id) => openNote(context, id),
      close: (id) => workspace.closeTabs([id]),
    },
    () => focusMain(context),
  );
}
