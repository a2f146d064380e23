import { keyLabel } from '../keyboard/keys';
import { closeDialog } from '../views/dialog';
import { captureDialog } from '../views/captureDialog';
import { type Context, focusMain, requireWritable } from './context';
import { keepCapture } from './notes';

export function openCapture(context: Context): void {
  if (!requireWritable(context)) return;
  captureDialog({
    workspace: context.workspace,
    saveKey: keyLabel('Mod-enter'),
    onSave: () => keepCapture(context),
    onClose: () => focusMain(context),
  });
}

export function openSearch(context: Context): void {
  setDrawer(context, 'sidebar');
}

export function toggleSidebar(context: Context): void {
  setDrawer(context, context.shell.sidebarShown ? null : 'sidebar');
}

/** Opens the sidebar; any other name closes it. */
export function setDrawer(context: Context, name: unknown, options?: { focus?: boolean }): void {
  closeDialog();
  const { workspace, shell } = context;
  const open = name === 'sidebar';
  if (shell.hasDrawer) shell.openDrawer(open);
  else workspace.setSettings({ sidebarOpen: open });
  if (!open) focusMain(context);
  else if (options?.focus !== false) shell.sidebar.focusSearch();
}
