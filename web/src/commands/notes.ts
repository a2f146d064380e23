import { Text } from '@codemirror/state';
import { t } from '../i18n/language';
import { toText } from '../state/read';
import { titleOf } from '../state/workspace';
import { decodeText, MAXIMUM_FILE_BYTES } from '../text/decode';
import { type Format, formatOf } from '../text/names';
import { type Context, focusMain, mayChange, rememberPlace, requireNote } from './context';

export interface ImportedFile {
  readonly name: string;
  readonly content: string;
  readonly format: Format;
}

const FAILURES_SHOWN = 3;

export function createNote(context: Context): void {
  if (!mayChange(context)) return;
  const note = context.workspace.addNote({ text: Text.empty });
  openNote(context, note.id);
}

export function openNote(context: Context, id: string): void {
  context.workspace.openTab(id);
  focusMain(context);
}

export function deleteActiveNote(context: Context): void {
  const note = requireNote(context);
  if (note) deleteNote(context, note.id);
}

export function togglePinned(context: Context): void {
  const note = requireNote(context);
  if (!note || !mayChange(context)) return;
  context.workspace.setPinned(note.id, !note.pinned);
  context.shell.toasts.show(t(note.pinned ? 'note.unpinned' : 'note.pinned'));
}

/** Deletes without asking, because the way back is one press away. */
export function deleteNote(context: Context, id: string): void {
  if (!mayChange(context)) return;
  const { workspace, shell } = context;
  const note = workspace.note(id);
  if (!note) return;
  const tab = workspace.tabs.open.indexOf(id);
  // The editor keeps nothing of a deleted note; should it come back, this is where it opens.
  rememberPlace(context);
  workspace.deleteNote(id);
  focusMain(context);
  shell.toasts.show(t('note.deleted', { title: titleOf(note) || t('untitled') }), {
    label: 'undo',
    run: () => {
      workspace.restoreNote(id);
      workspace.openTab(id, tab < 0 ? undefined : tab);
      focusMain(context);
    },
  });
}

/** Turns what was captured into a note, beside the note that is being written. */
export function keepCapture(context: Context): void {
  const { workspace, shell } = context;
  const note = workspace.addNote({ text: toText(workspace.captureDraft.trim()) });
  workspace.setCaptureDraft('');
  shell.toasts.show(t('capture.done'), { label: 'open', run: () => openNote(context, note.id) });
}

/**
 * Opens files that the host has read; returns how many tabs they have. The host forgets them once this
 * returns, so their notes are posted for saving before. Throws when that fails or the window is closing,
 * and the host keeps them.
 */
export function openNativeFiles(context: Context, files: unknown): number {
  if (context.shell.closing.begun) throw new Error('The window is closing.');
  if (!Array.isArray(files) || !mayChange(context)) return 0;
  const { workspace } = context;
  const sound = files.flatMap(readImportedFile);
  const ids = addFiles(context, sound, workspace.handedOver);
  workspace.setHandedOver(ids);
  // Left marked then, because the host will hand them over again.
  if (!context.saver.handOver()) throw new Error('The notes of the files could not be handed over.');
  // If the page lives to see another turn, the host has its answer and will not hand these over again.
  setTimeout(() => {
    if (workspace.handedOver === ids) workspace.setHandedOver([]);
  });
  return sound.length;
}

/** Opens files chosen in the page; those for which the window closes meanwhile, once it does not. */
export async function importFiles(context: Context, files: ReadonlyArray<File>): Promise<void> {
  await notClosing(context);
  if (!files.length || !mayChange(context)) return;
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
  addFiles(context, read);
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
 * Opens a tab for each file and gives their notes. Files may be alike, from different folders, and
 * still have a note each. Only one that the host hands over again, because it could not know how far
 * it had come, gets the note that it became then, if that is unchanged.
 */
function addFiles(
  context: Context,
  files: ReadonlyArray<ImportedFile>,
  handedOver: ReadonlyArray<string> = [],
): ReadonlyArray<string> {
  const { workspace } = context;
  const before = handedOver.flatMap((id) => workspace.note(id) ?? []);
  const ids = files.map(({ name, content, format }) => {
    const text = toText(content);
    const lineBreak = isWindowsText(content) ? '\r\n' : '\n';
    const at = before.findIndex((one) => one.name === name && one.lineBreak === lineBreak && one.text.eq(text));
    const [known] = at < 0 ? [] : before.splice(at, 1);
    const { id } = known ?? workspace.addNote({ text, name, format, lineBreak });
    workspace.openTab(id);
    return id;
  });
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
