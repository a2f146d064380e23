import { t } from '../i18n/language';
import type { Note } from '../state/model';
import { titleOf } from '../state/titleOf';
import { type Format, fileNameFor, inFormat, shortFileName } from '../text/names';
import { toPlainText } from '../text/plain';
import { closeDialog } from '../views/dialog';
import { type Context, requireNote } from './context';
import { converted } from './copies';
import { fits } from './limits';
import type { OutgoingFile } from './requests';

/** The active note, unless another one is meant. */
export function exportAsMarkdown(context: Context, note = requireNote(context)): void {
  exportNote(context, note, 'markdown', (one) => one.text.toString());
}

export function exportAsText(context: Context): void {
  exportNote(context, requireNote(context), 'plain', (note) => converted(note, toPlainText));
}

export function saveNoteAs(context: Context): void {
  const note = requireNote(context);
  if (!note) return;
  closeDialog();
  const content = withLineBreaks(note, note.text.toString());
  if (!fits(context, 'file', content)) return;
  if (context.port.saveAs({ noteId: note.id, filename: suggestedName(note), content })) return;
  context.shell.toasts.show(t('file.failed'));
}

/**
 * Handles the answer to Save As. The host words it in Portuguese only, so the page uses its own text; the
 * host's message only distinguishes a cancelled dialog from a failure. If the note no longer exists, there is
 * no file name to remember.
 */
export function savedAs(context: Context, success: boolean, noteId: string, fileName: string, message: string): void {
  const { workspace, shell, outgoing } = context;
  const next = outgoing.has(noteId) ? outgoing.next(success) : null;
  if (next) {
    sendOut(context, next);
    return;
  }
  if (!success) {
    shell.toasts.show(t(/cancel/i.test(message) ? 'file.cancelled' : 'file.failed'));
    return;
  }
  if (fileName && !workspace.readOnly) workspace.setFileName(noteId, fileName);
  shell.toasts.show(t('file.saved', { name: fileName }));
}

/** Asks the host to save a file of a library; the answer to it sends the next. */
export function sendOut({ port, shell, outgoing }: Context, { id, filename, content }: OutgoingFile): void {
  if (port.saveAs({ noteId: id, filename, content })) return;
  outgoing.next(false);
  shell.toasts.show(t('file.failed'));
}

/** The host words its answer to an export in the interface language. */
export function exported({ shell }: Context, success: boolean, message: string): void {
  shell.toasts.show(message || t(success ? 'export.done' : 'export.failed'));
}

/** The file name the note was saved to or imported from, otherwise one derived from its title. */
export function suggestedName(note: Note): string {
  const known = knownName(note);
  return known === null ? fileNameFor(titleOf(note), note.format) : shortFileName(known);
}

/** Not after the note was renamed: then its title is what it is called. */
function knownName({ fileName, name, source }: Note): string | null {
  return fileName ?? (name === source ? name : null);
}

/** The text with the line breaks of the file it came from. */
export function withLineBreaks(note: Note, text: string): string {
  return note.lineBreak === '\n' ? text : text.replaceAll('\n', note.lineBreak);
}

function exportNote(context: Context, note: Note | null, format: Format, textOf: (note: Note) => string): void {
  if (!note) return;
  closeDialog();
  if (!fits(context, 'file', note.text.toString())) return;
  const content = withLineBreaks(note, textOf(note));
  if (!fits(context, 'file', content)) return;
  const known = knownName(note);
  const filename = known === null ? fileNameFor(titleOf(note), format) : shortFileName(inFormat(known, format));
  if (context.port.exportFile({ filename, content, format })) return;
  context.shell.toasts.show(t('export.failed'));
}
