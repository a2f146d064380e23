import { showSettings } from './chooseSettings';
import type { CommandTable } from './command';
import type { Context } from './context';
import { moveActiveTab } from './tabs';

const withTab = ({ workspace }: Context): boolean => workspace.activeNote !== null;

/** How the page looks, and what is where in it. */
export const lookCommands = {
  moveTabLeft: {
    label: 'cmd.moveTabLeft',
    key: 'Mod-Shift-pageup',
    browserKey: 'Alt-Shift-pageup',
    listens: true,
    available: withTab,
    run: (context) => moveActiveTab(context, -1),
  },
  moveTabRight: {
    label: 'cmd.moveTabRight',
    key: 'Mod-Shift-pagedown',
    browserKey: 'Alt-Shift-pagedown',
    listens: true,
    available: withTab,
    run: (context) => moveActiveTab(context, 1),
  },
  settings: { label: 'cmd.settings', key: 'Mod-,', listens: true, run: showSettings },
} as const satisfies CommandTable;
