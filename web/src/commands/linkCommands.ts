import { toggleBacklinks } from './backlinks';
import type { CommandTable } from './command';
import type { Context } from './context';
import { followAtCaret } from './follow';
import { showOutline } from './outline';
import { renameTag } from './tags';

const withNote = ({ workspace }: Context): boolean => workspace.activeNote !== null;

/** Tags, links between notes and the outline. */
export const linkCommands = {
  followLink: {
    label: 'cmd.followLink',
    key: 'Mod-Alt-enter',
    listens: true,
    available: withNote,
    run: followAtCaret,
  },
  renameTag: { label: 'cmd.renameTag', run: renameTag },
  backlinks: {
    label: 'cmd.backlinks',
    key: 'Mod-Shift-b',
    listens: true,
    available: withNote,
    run: toggleBacklinks,
  },
  outline: { label: 'cmd.outline', key: 'Mod-Alt-o', listens: true, available: withNote, run: showOutline },
} as const satisfies CommandTable;
