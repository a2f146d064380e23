import { showSettings } from './chooseSettings';
import type { CommandTable } from './command';

/** How the page looks, and what is where in it. */
export const lookCommands = {
  settings: { label: 'cmd.settings', key: 'Mod-,', listens: true, run: showSettings },
} as const satisfies CommandTable;
