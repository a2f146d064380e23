import type { CommandTable } from './command';
import { isNamed, renameNote, useHeading } from './naming';
import { showVersions } from './noteVersions';

/** What a note was, and what it is called. */
export const versionCommands = {
  versions: {
    label: 'cmd.versions',
    available: ({ workspace }) => workspace.activeNote !== null,
    run: showVersions,
  },
  rename: { label: 'cmd.rename', available: isNamed, run: renameNote },
  useHeading: { label: 'cmd.useHeading', available: isNamed, run: useHeading },
} as const satisfies CommandTable;
