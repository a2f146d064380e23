import type { NoteEditor } from '../editor/noteEditor';
import type { PracticeOptions } from '../editor/practiceEditor';
import { t } from '../i18n/language';
import type { Note } from '../state/model';
import type { NoteIndex } from '../state/noteIndex';
import type { Saver } from '../state/saver';
import type { Workspace } from '../state/workspace';
import { closeDialog } from '../views/dialog';
import type { Shell } from '../views/shell';
import type { HostPort } from './port';
import type { PendingCopies, PendingFiles, PendingShare } from './requests';

/** What commands operate on. */
export interface Context {
  readonly workspace: Workspace;
  readonly editor: NoteEditor;
  readonly shell: Shell;
  readonly saver: Saver;
  readonly port: HostPort;
  readonly copies: PendingCopies;
  readonly share: PendingShare;
  /** The files of a library on their way out. */
  readonly outgoing: PendingFiles;
  /** What any editor other than the notes' own needs to know. */
  readonly practice: Pick<PracticeOptions, 'nonce' | 'reservedKeys'>;
  readonly nextRevision: () => number;
  /** The tags and links of all notes. */
  readonly index: NoteIndex;
  /** Makes links follow the title of the shown note. */
  readonly titles: { shown(): void; settle(isQuitting?: boolean): void };
}

/** Focuses the place where the user goes on writing. */
export function focusMain({ workspace, editor, shell }: Context): void {
  const note = workspace.activeNote;
  // An empty note has nothing to preview, so it opens for writing.
  if (note?.text.length === 0 && shell.preview.covers) shell.preview.show(null);
  if (note && shell.preview.covers) shell.preview.focus();
  else if (note) editor.focus();
  else shell.focusEmpty();
}

/** Records the reading position in the open note; returns whether it moved. */
export function rememberPlace({ workspace, editor }: Context): boolean {
  try {
    const at = editor.place;
    return at !== null && workspace.setPlace(at.id, at.place);
  } catch {
    // The editor may be in the middle of an update. That must not make a save or a quit fail.
    return false;
  }
}

/** The note a command applies to; tells the user if there is none. */
export function requireNote({ workspace, shell }: Context): Note | null {
  const note = workspace.activeNote;
  if (!note) shell.toasts.show(t('note.needed'));
  return note;
}

/** Commands that change something stop here when the document is read-only. */
export function requireWritable({ workspace, shell }: Context): boolean {
  if (workspace.readOnly) shell.toasts.show(t('readonly.refused'));
  else closeDialog();
  return !workspace.readOnly;
}
