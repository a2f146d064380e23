import type { Key } from '../i18n/catalogue';
import { type CloseScope, tabsInScope } from '../state/tabRow';
import type { MenuGroups, MenuItem } from '../views/menu';
import type { Context } from './context';
import { togglePinned } from './notes';
import { closeTab, moveTab, requestCloseTabs } from './tabs';

/** What can be done with a tab, which need not be the active one. */
export function tabMenu(context: Context, id: string): MenuGroups {
  const { tabs } = context.workspace;
  const at = tabs.open.indexOf(id);
  const item = (name: string, label: Key, available: boolean, run: () => void): MenuItem => ({
    name,
    label,
    keys: '',
    disabled: !available,
    run,
  });
  const closing = (name: string, scope: CloseScope, label: Key) =>
    item(name, label, tabsInScope(tabs, scope, id).length > 0, () => requestCloseTabs(context, scope, id));
  return [
    [
      item('close', 'cmd.closeTab', true, () => closeTab(context, id)),
      closing('closeOthers', 'others', 'cmd.closeOthers'),
      closing('closeRight', 'right', 'cmd.closeRight'),
    ],
    [
      item('pin', context.workspace.note(id)?.pinned ? 'cmd.unpin' : 'cmd.pin', true, () => togglePinned(context, id)),
      item('moveLeft', 'cmd.moveTabLeft', at > 0, () => moveTab(context, id, at - 1)),
      item('moveRight', 'cmd.moveTabRight', at < tabs.open.length - 1, () => moveTab(context, id, at + 1)),
    ],
  ];
}
