import type { Text } from '@codemirror/state';
import { t } from '../i18n/language';
import { Difference } from '../state/difference';
import type { Note } from '../state/model';
import { type Passage, passagesBetween } from '../state/passages';
import { versionText, versionsWithCurrent } from '../state/versions';
import { type ListedVersion, versionsDialog } from '../views/versionsDialog';
import { type Context, focusMain, requireNote } from './context';

/** Lists the versions of the open note, to compare them with its text and restore them. */
export function showVersions(context: Context): void {
  const note = requireNote(context);
  if (!note) return;
  const { workspace, editor, shell } = context;
  const current = () => workspace.note(note.id)?.text.tree ?? note.text.tree;
  const keepCurrent = () => {
    const now = workspace.note(note.id);
    if (now) workspace.setVersions(now.id, versionsWithCurrent(now, workspace.now()));
  };
  versionsDialog({
    versions: listed(note),
    readOnly: workspace.readOnly,
    passages: (version: Text) => passagesBetween(version, current()),
    onRestore: (version: Text) => {
      keepCurrent();
      editor.change(Difference.between(current(), version).changes);
      shell.toasts.show(t('versions.restored'));
    },
    onRestorePassage: ({ change }: Passage) => {
      keepCurrent();
      editor.change(change);
      shell.toasts.show(t('versions.passageRestored'));
    },
    onClose: () => focusMain(context),
  });
}

/** Versions are only added in front, so a key counts from the oldest. */
function listed(note: Note): ReadonlyArray<ListedVersion> {
  return note.versions.map(({ taken, guarded, held }, at) => {
    const text = once(() => versionText(note, at));
    const newer = () => (at === 0 ? note.text.tree : versionText(note, at - 1));
    const difference = once(() => (held instanceof Difference ? held : Difference.between(newer(), text())).extent);
    return { key: String(note.versions.length - at), taken, guarded, text, extent: difference };
  });
}

function once<Value>(make: () => Value): () => Value {
  let made: { readonly value: Value } | null = null;
  return () => {
    made ??= { value: make() };
    return made.value;
  };
}
