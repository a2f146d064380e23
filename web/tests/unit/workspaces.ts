import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { Workspace } from '../../src/state/workspace';

/** A workspace with these notes, each in a tab, and their ids. */
export function workspaceWith(...texts: string[]) {
  let now = 1000;
  const workspace = new Workspace(emptyContents, false, () => now++);
  const ids = texts.map((text) => {
    const { id } = workspace.addNote({ text: Text.of(text.split('\n')) });
    workspace.openTab(id);
    return id;
  });
  return { workspace, ids };
}
