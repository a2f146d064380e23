import { t } from '../i18n/language';
import { libraryFiles, markShared } from '../state/library';
import type { Note } from '../state/model';
import { titleOf } from '../state/titleOf';
import { CHAPTER_BREAK, chapterOf } from '../text/book';
import { utf8Length } from '../text/names';
import { closeDialog } from '../views/dialog';
import type { Context } from './context';
import { sendOut } from './files';
import { hostLimits } from './limits';

/** All notes as JSON that can be brought in again. */
export function exportLibrary(context: Context, withBin: boolean): void {
  if (!context.workspace.readOnly) markShared(context.workspace);
  const { parts, leftOut } = libraryFiles(context.workspace.contents, withBin, hostLimits.file.bytes);
  sendAll(context, parts, '.json', leftOut);
}

/** Some of the notes as JSON. */
export function exportNotesAsJson(context: Context, notes: ReadonlyArray<Note>): void {
  const { workspace } = context;
  const ids = notes.map(({ id }) => id);
  if (!workspace.readOnly) markShared(workspace, new Set(ids));
  const marked = ids.flatMap((id) => workspace.note(id) ?? []);
  const { parts, leftOut } = libraryFiles({ notes: marked, bin: [] }, false, hostLimits.file.bytes);
  sendAll(context, parts, '.json', leftOut);
}

/** Notes in one Markdown text; all, in the order of the list, unless only some are meant. */
export function exportBook(context: Context, notes = context.workspace.notesInOrder()): void {
  const parts: string[] = [];
  let leftOut = 0;
  let [book, bytes] = ['', 0];
  for (const note of notes) {
    if (note.text.length === 0) continue;
    const chapter = chapterOf(chapterFrom(note));
    const size = utf8Length(chapter) + CHAPTER_BREAK.length;
    if (size > hostLimits.file.bytes) {
      leftOut++;
      continue;
    }
    if (bytes + size > hostLimits.file.bytes) {
      parts.push(book);
      [book, bytes] = ['', 0];
    }
    book += book ? CHAPTER_BREAK + chapter : chapter;
    bytes += size;
  }
  if (book) parts.push(book);
  sendAll(context, parts, '.md', leftOut);
}

function chapterFrom(note: Note) {
  const title = titleOf(note) || t('untitled');
  return { title, isNamed: note.name !== null, format: note.format, text: note.text.toString() };
}

function sendAll(context: Context, parts: ReadonlyArray<string>, ending: string, leftOut: number): void {
  closeDialog();
  const { shell, outgoing, workspace } = context;
  if (leftOut) shell.toasts.show(t('library.leftOut', { n: leftOut }));
  if (!parts.length || (workspace.noteCount === 0 && workspace.bin.length === 0)) {
    if (!leftOut) shell.toasts.show(t('library.nothing'));
    return;
  }
  const date = new Date(workspace.now()).toISOString().slice(0, 10);
  const name = t('library.fileName', { date });
  const first = outgoing.begin(
    parts.map((content, at) => ({
      filename: (parts.length > 1 ? t('library.part', { name, part: at + 1, parts: parts.length }) : name) + ending,
      content,
    })),
  );
  if (first) sendOut(context, first);
}
