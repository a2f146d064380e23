import { counted, t } from '../i18n/language';
import { NoteText } from '../state/noteText';
import { titleOf } from '../state/titleOf';
import { decodeText, MAXIMUM_FILE_BYTES } from '../text/decode';
import { type Format, formatOf } from '../text/names';
import { type Context, focusMain, requireWritable, rememberPlace, requireNote } from './context';
import { takeLibraries } from './libraryIn';

export interface ImportedFile {
  readonly name: string;
  readonly content: string;
  readonly format: Format;
}

const FAILURES_SHOWN = 3;
/** How many of the files opened at once get a tab. */
const MOST_TABS = 10;

export function createNote(context: Context): void {
  if (!requireWritable(context)) return;
  const note = context.workspace.addNote({ text: '' });
  openNote(context, note.id);
}

/** `words` are those that a search has found in the note. */
export function openNote(context: Context, id: string, words: ReadonlyArray<string> = []): void {
  context.workspace.openTab(id);
  if (words.length) context.editor.showHits(words);
  focusMain(context);
}

export function deleteActiveNote(context: Context): void {
  const note = requireNote(context);
  if (note) deleteNote(context, note.id);
}

/** Of the active note, unless another one is meant. */
export function togglePinned(context: Context, id?: string): void {
  const note = id === undefined ? requireNote(context) : context.workspace.note(id);
  if (!note || !requireWritable(context)) return;
  context.workspace.setPinned([note.id], !note.pinned);
  context.shell.toasts.show(t(note.pinned ? 'note.unpinned' : 'note.pinned'));
}

/** Deletes without asking, because undoing it is one click away. */
export function deleteNote(context: Context, id: string): void {
  if (!requireWritable(context)) return;
  const { workspace, shell } = context;
  const note = workspace.note(id);
  if (!note) return;
  const tab = workspace.tabs.open.indexOf(id);
  // The editor drops its state for a deleted note; if the note is restored, it opens at this position.
  rememberPlace(context);
  workspace.deleteNote(id);
  focusMain(context);
  shell.toasts.show(t('note.deleted', { title: titleOf(note) || t('untitled') }), {
    label: 'undo',
    isMoot: () => !workspace.bin.some(({ note: { id: deleted } }) => deleted === id),
    run: () => {
      workspace.restoreNote(id);
      workspace.openTab(id, tab < 0 ? undefined : tab);
      focusMain(context);
    },
  });
}

/** Turns the captured text into a note, without switching away from the current one. */
export function keepCapture(context: Context): void {
  const { workspace, shell } = context;
  const note = workspace.addNote({ text: workspace.captureDraft.trim() });
  workspace.setCaptureDraft('');
  shell.toasts.show(t('capture.done'), {
    label: 'open',
    isMoot: () => workspace.tabs.active === note.id || workspace.note(note.id) === null,
    run: () => openNote(context, note.id),
  });
}

/**
 * Opens files that the host has read; returns how many of them have tabs. The host forgets the files once
 * this returns, so their notes are posted for saving first. Throws if that fails or the window is closing;
 * the host then keeps the files.
 */
export function openNativeFiles(context: Context, files: unknown): number {
  if (context.shell.closing.begun) throw new Error('The window is closing.');
  if (!Array.isArray(files) || !requireWritable(context)) return 0;
  const { workspace } = context;
  const sound = takeLibraries(context, files.flatMap(readImportedFile));
  const ids = addFiles(context, sound, workspace.handedOver);
  workspace.setHandedOver(ids);
  // Marked only on failure, because then the host will hand these files over again.
  if (!context.saver.handOver()) throw new Error('The notes of the files could not be handed over.');
  // If the page is still alive in the next task, the host has its answer and will not hand these over again.
  setTimeout(() => {
    if (workspace.handedOver === ids) workspace.setHandedOver([]);
  });
  return Math.min(ids.length, MOST_TABS);
}

/** Opens files chosen in the page. During a quit they wait, and open if it is cancelled. */
export async function importFiles(context: Context, files: ReadonlyArray<File>): Promise<void> {
  await notClosing(context);
  if (!files.length || !requireWritable(context)) return;
  const read: ImportedFile[] = [];
  const failures: string[] = [];
  for (const file of files) {
    const { name } = file;
    if (file.size > MAXIMUM_FILE_BYTES) {
      failures.push(t('import.tooLarge', { name }));
      continue;
    }
    try {
      const content = decodeText(new Uint8Array(await file.arrayBuffer()));
      if (content === null) failures.push(t('import.binary', { name }));
      else read.push({ name, content, format: formatOf(name) });
    } catch {
      failures.push(t('import.unreadable', { name }));
    }
  }
  await notClosing(context);
  addFiles(context, takeLibraries(context, read));
  if (failures.length) {
    const shown = failures.slice(0, FAILURES_SHOWN);
    const hidden = failures.length - shown.length;
    if (hidden) shown.push(t('import.more', { n: hidden }));
    context.shell.toasts.show(shown.join('\n'));
  }
}

function notClosing({ shell }: Context): Promise<void> {
  return new Promise((resolve) => shell.closing.after(resolve));
}

/**
 * Opens a tab for each of the first files and returns the notes of all. Two files may be identical (same name in different
 * folders) and still get a note each. The exception is a file that the host hands over again because it could
 * not know whether the first attempt arrived: it reuses the note created then, if that is unchanged.
 */
function addFiles(
  context: Context,
  files: ReadonlyArray<ImportedFile>,
  handedOver: ReadonlyArray<string> = [],
): ReadonlyArray<string> {
  const { workspace } = context;
  const before = handedOver.flatMap((id) => workspace.note(id) ?? []);
  const ids = files.map(({ name, content, format }, index) => {
    const text = NoteText.of(content);
    const lineBreak = isWindowsText(content) ? '\r\n' : '\n';
    const at = before.findIndex((one) => one.name === name && one.lineBreak === lineBreak && one.text.eq(text));
    const [known] = at < 0 ? [] : before.splice(at, 1);
    const { id } = known ?? workspace.addNote({ text, name, format, lineBreak });
    if (index < MOST_TABS) workspace.openTab(id);
    return id;
  });
  const listed = files.length - MOST_TABS;
  if (listed > 0) context.shell.toasts.show(counted('import.listed', listed));
  if (files.length) focusMain(context);
  return ids;
}

function isWindowsText(content: string): boolean {
  const first = content.indexOf('\n');
  return first > 0 && content[first - 1] === '\r';
}

function readImportedFile(value: unknown): ImportedFile[] {
  const { name, content, format } = (value ?? {}) as Record<string, unknown>;
  if (typeof content !== 'string') return [];
  return [
    {
      name: typeof name === 'string' && name ? name : t('untitled'),
      content,
      format: format === 'plain' ? 'plain' : 'markdown',
    },
  ];
}
