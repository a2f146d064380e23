import type { CommandTable } from './command';
import { showVersions } from './noteVersions';

/** What a note was, and what it is called. */
export const versionCommands = {
  versions: {
    label: 'cmd.versions',
    available: ({ workspace }) => workspace.activeNote !== null,
    run: showVersions,
  },
} as const satisfies CommandTable;
