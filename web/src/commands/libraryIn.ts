import { counted, t } from '../i18n/language';
import { isLibrary, type Library, readLibrary } from '../state/library';
import { mergeLibrary } from '../state/mergeLibrary';
import { extensionOf } from '../text/names';
import { confirmDialog } from '../views/confirmDialog';
import { type Context, focusMain, requireWritable } from './context';

interface OpenedFile {
  readonly name: string;
  readonly content: string;
}

/** Of the files opened, those that are no libraries. The others are brought in after asking, one after another. */
export function takeLibraries<File extends OpenedFile>(
  context: Context,
  files: ReadonlyArray<File>,
): ReadonlyArray<File> {
  const isTaken = ({ name, content }: File) => extensionOf(name) === 'json' && isLibrary(content);
  const taken = files.filter(isTaken);
  // After the notes of the other files: opening one closes a dialog.
  if (taken.length) queueMicrotask(() => bringIn(context, taken));
  return files.filter((file) => !isTaken(file));
}

function bringIn(context: Context, [file, ...rest]: ReadonlyArray<OpenedFile>): void {
  if (!file) return;
  const { workspace, shell } = context;
  const { name } = file;
  const library = readLibrary(file.content, workspace.now());
  if (typeof library === 'string') {
    shell.toasts.show(t(library === 'newer' ? 'library.newer' : 'library.damaged', { name }));
    bringIn(context, rest);
    return;
  }
  confirmDialog({
    title: 'library.title',
    question: counted('library.ask', library.notes.length + library.bin.length, { name }),
    why: 'library.why',
    action: 'library.do',
    onYes: () => merge(context, library),
    onClose: () => {
      focusMain(context);
      bringIn(context, rest);
    },
  });
}

function merge(context: Context, library: Library): void {
  if (!requireWritable(context)) return;
  const { workspace, shell } = context;
  const merged = mergeLibrary(workspace, library, (title) => t('library.conflict', { title: title || t('untitled') }));
  workspace.adopt(merged.notes, merged.bin);
  const { added, updated, both } = merged;
  const isSame = added + updated + both === 0;
  shell.toasts.show(isSame ? t('library.same') : t('library.done', { added, updated, both }));
}
